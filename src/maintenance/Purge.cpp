#include "maintenance/Purge.h"

#include "catalogue/Ask.h"
#include "catalogue/Breathe.h"
#include "catalogue/Comunes.h"
#include "catalogue/Records.h"
#include "catalogue/Store.h"
#include "platform/PathCase.h"
#include "platform/Spanish.h"
#include "tape/Prompt.h"
#include "tape/TZXFunct.h"

#include <QSqlQuery>

namespace cintal {

namespace {

// The paths shown with the question: enough to recognise a missing drive,
// few enough for a box.
constexpr std::size_t kShownPaths = 20;

} // namespace

bool Purger::Plan() {
    total = 0;
    deleted = 0;
    missing.clear();
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q,
                     "SELECT FileId, FileName, Extension, PathIndex FROM tFiles ORDER BY FileId"))
        return false;
    struct Raw {
        qint64 id, pathIndex;
        QString name;
    };
    std::vector<Raw> rows;
    while (q.next())
        rows.push_back({NumberOf(q.value(0)), NumberOf(q.value(3)),
                        TextOf(q.value(1)) + "." + TextOf(q.value(2))});
    q.finish();
    total = static_cast<qint64>(rows.size());
    const PathRegister& paths = Comunes::PathTable;
    platform::EntryFinder finder;
    qint64 done = 0;
    for (const Raw& r : rows) {
        // A number outside the register, or a free one, names no folder: the
        // file can't be found, so it counts as missing.
        const bool known = paths.Has(r.pathIndex) && !paths.Number(r.pathIndex).isEmpty();
        const QString dir = known ? paths.Dir(r.pathIndex) : QString();
        // The scan keeps extensions in lower case: "LABERINT.SP" is the
        // row's "LABERINT.sp", not a missing file.
        if (!known || finder.Find(dir, r.name).isEmpty())
            missing.push_back({r.id, known ? Records::PathIn(dir, r.name) : QString()});
        if (++done % 256 == 0) {
            if (progress) progress(done, total);
            Breathe();
        }
    }
    if (progress) progress(total, total);
    return true;
}

bool Purger::Run() {
    deleted = 0;
    if (missing.empty()) return true;
    if (!Store::Begin()) return false;
    for (const Row& r : missing) {
        if (!Store::Run("DELETE FROM tFiles WHERE FileId = ?", {r.FileId})) {
            Store::Rollback();
            deleted = 0;
            return false;
        }
        ++deleted;
    }
    if (!Store::Commit()) {
        Store::Rollback();
        deleted = 0;
        return false;
    }
    return true;
}

void Purger::Interactive() {
    Ask(QStringLiteral("esto borrará las referencias a archivos inexistentes"), Comunes::kAppTitle);
    if (!Plan()) return;
    if (total == 0) return;
    if (!missing.empty()) {
        Message m;
        m.text = QStringLiteral("Hay %1 referencias a archivos que no están en el disco, de %2. "
                                "¿Borrarlas?")
                     .arg(Number(static_cast<qint64>(missing.size())), Number(total))
                     .toStdString();
        m.title = Comunes::kAppTitle.toStdString();
        m.icon = Icon::Exclamation;
        m.buttons = Buttons::YesNo;
        QStringList shown;
        for (std::size_t i = 0; i < missing.size() && i < kShownPaths; ++i)
            shown
                << (missing[i].path.isEmpty()
                        ? QStringLiteral("(carpeta desconocida, archivo %1)").arg(missing[i].FileId)
                        : missing[i].path);
        if (missing.size() > kShownPaths) shown << QStringLiteral("...");
        m.details = shown.join('\n').toStdString();
        if (CurrentPrompt().Show(m) != Button::Yes) return;
        if (!Run()) return;
    }
    Ask(QStringLiteral("acabado: %1 referencias borradas").arg(Number(deleted)),
        Comunes::kAppTitle);
}

} // namespace cintal
