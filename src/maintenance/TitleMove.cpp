#include "maintenance/TitleMove.h"

#include "catalogue/Ask.h"
#include "catalogue/Breathe.h"
#include "catalogue/Comunes.h"
#include "catalogue/Records.h"
#include "catalogue/Store.h"
#include "platform/PathCase.h"
#include "platform/Spanish.h"
#include "tape/Prompt.h"
#include "tape/TZXFunct.h"
#include "tape/TZXTape.h"

#include <QFileInfo>
#include <QSqlQuery>

namespace cintal {

bool TitleMover::LoadTarget() {
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT Name, Year, IdPub FROM Titles WHERE TitleId = ?", {into}))
        return false;
    if (!q.next()) return false;
    name = TextOf(q.value(0));
    year = TextOf(q.value(1));
    publisher = Comunes::PublisherName(NumberOf(q.value(2)));
    return true;
}

bool TitleMover::Plan() {
    steps.clear();
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q,
                     "SELECT FileId, FileName, Extension, PathIndex FROM tFiles WHERE TitleId = ? "
                     "ORDER BY FileId",
                     {from}))
        return false;
    const PathRegister& paths = Comunes::PathTable;
    while (q.next()) {
        Step s;
        s.FileId = NumberOf(q.value(0));
        const QString extension = TextOf(q.value(2));
        const qint64 index = NumberOf(q.value(3));
        if (paths.Has(index) && !paths.Number(index).isEmpty())
            s.path = Records::PathIn(paths.Dir(index), TextOf(q.value(1)) + "." + extension);
        s.tape = extension.compare(QLatin1String("tzx"), Qt::CaseInsensitive) == 0;
        steps.push_back(s);
    }
    return true;
}

bool TitleMover::Run() {
    moved = 0;
    failures.clear();
    if (from == into) {
        Ask(QStringLiteral("Elija otro título"), Comunes::kAppTitle, Icon::Exclamation);
        return false;
    }
    for (const Step& s : steps) {
        // Record first, file after, as one step: a tape that stays as it was
        // takes its record back.
        if (!Store::Run("UPDATE tFiles SET TitleId = ? WHERE FileId = ?", {into, s.FileId}))
            return false;
        // The row's file as the disk spells it: the scan kept the extension
        // in lower case.
        const QString found = s.path.isEmpty() ? QString()
                                               : platform::FindEntry(QFileInfo(s.path).path(),
                                                                     QFileInfo(s.path).fileName());
        const std::string path = found.toStdString();
        if (found.isEmpty()) {
            Ask(QStringLiteral("No existe el archivo"), Comunes::kAppTitle);
            ++moved;
            continue;
        }
        if (s.tape) {
            QString reason;
            TZXTape tape;
            tape.FileName = path;
            tape.ReadTape();
            if (!tape.SafeToSave()) {
                const std::string cause = tape.Status().Cause();
                reason = cause.empty()
                             ? QStringLiteral("la cinta no se leyó entera")
                             : "la cinta no se leyó entera: " + QString::fromStdString(cause);
            } else {
                ArchiveInfo& info = tape.ArchiveInfo();
                info.iName = Comunes::ToTape(name);
                // A title without a year or a publisher has nothing to give:
                // the tape keeps its own.
                if (!year.trimmed().isEmpty()) info.iYear = Comunes::ToTape(year);
                if (!publisher.trimmed().isEmpty() && publisher != Comunes::PublisherName(0))
                    info.iPublisher = Comunes::ToTape(publisher);
                if (!tape.Save(tape.FileName, true))
                    reason = QStringLiteral("no se pudo guardar la cinta");
            }
            if (!reason.isEmpty()) {
                Store::Run("UPDATE tFiles SET TitleId = ? WHERE FileId = ?", {from, s.FileId});
                failures.push_back({s.path, reason});
                continue;
            }
            Store::Run("UPDATE tFiles SET FileSize = ? WHERE FileId = ?",
                       {QFileInfo(found).size(), s.FileId});
        }
        ++moved;
        Breathe();
    }
    return true;
}

QString TitleMover::Summary() const {
    QString text = moved == 1 ? QStringLiteral("1 archivo movido")
                              : QStringLiteral("%1 archivos movidos").arg(Number(moved));
    if (!failures.empty()) {
        text += QStringLiteral("; no se movieron:");
        for (const Failure& f : failures)
            text += "\n" + f.path + ": " + f.reason;
    }
    return text;
}

} // namespace cintal
