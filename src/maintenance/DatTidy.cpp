#include "maintenance/DatTidy.h"

#include "catalogue/Ask.h"
#include "catalogue/Comunes.h"
#include "catalogue/FileHashes.h"
#include "catalogue/Records.h"
#include "catalogue/Store.h"
#include "maintenance/Renamer.h"
#include "maintenance/Reorganiser.h"
#include "platform/Archive.h"
#include "platform/Hashes.h"
#include "platform/PathCase.h"
#include "platform/Spanish.h"

#include <QFileInfo>

namespace cintal {

QString TidyStep::Text() const {
    switch (kind) {
    case Kind::Rename:
        return QStringLiteral("renombrar %1 -> %2").arg(source, dest);
    case Kind::Named:
        return QStringLiteral("ya tiene su nombre: se deja %1").arg(source);
    case Kind::Taken:
        return QStringLiteral("ya existe: se deja %1").arg(dest);
    case Kind::Inside:
        return QStringLiteral("dentro de un archivo comprimido: se deja %1").arg(source);
    case Kind::Missing:
        return QStringLiteral("no está: se omite %1").arg(source);
    case Kind::Invalid:
        return QStringLiteral("nombre no válido: se deja %1").arg(source);
    case Kind::Unrecorded:
        return QStringLiteral("ya renombrado en disco: se pone al día el catálogo %1 -> %2")
            .arg(source, dest);
    case Kind::Renamed:
        return QStringLiteral("renombrado %1 -> %2").arg(source, dest);
    case Kind::Failed:
        return QStringLiteral("no se pudo renombrar: se deja %1").arg(source);
    }
    return {};
}

namespace {

// The path that already holds name in folder, in any case, or that an earlier
// step of the plan gives out; empty when the name is free. A change of case
// only finds the file itself, self.
QString Taken(platform::EntryFinder& finder, const QSet<QString>& claimed, const QString& folder,
              const QString& name, const QString& self) {
    const QString path = Records::PathIn(folder, name);
    if (claimed.contains(path.toCaseFolded())) return path;
    const QStringList there = finder.Listing(folder).AllCases(name, platform::EntryKind::File);
    if (there.isEmpty()) return {};
    const QString existing = Records::PathIn(folder, there.front());
    return existing == self ? QString() : existing;
}

// Whether the file at path holds the bytes whose SHA1 the row keeps.
bool HoldsRowContent(const QString& path, const QString& sha1) {
    std::string bytes, why;
    return !sha1.isEmpty() && platform::ReadFileOrInner(path.toStdString(), bytes, why) &&
           platform::HashBytes(bytes.data(), static_cast<qint64>(bytes.size())).sha1 ==
               sha1.toLower();
}

} // namespace

QStringList TidyStep::Lines() const {
    QStringList lines{Text()};
    for (const auto& [from, to] : sides)
        lines << QStringLiteral("    con su archivo lateral %1 -> %2").arg(from, to);
    return lines;
}

bool DatTidy::Confirm() const {
    const QString question =
        planned == 1
            ? QStringLiteral("Se va a renombrar 1 archivo con el nombre que le da la DAT. "
                             "¿Desea continuar?")
            : QStringLiteral("Se van a renombrar %1 archivos con los nombres que les da la DAT. "
                             "¿Desea continuar?")
                  .arg(Number(planned));
    return Ask(question, kTidyTitle, Icon::Question, Buttons::YesNo) == Button::Yes;
}

bool DatTidy::Plan(const QString& datName, bool& found) {
    steps.clear();
    notes.clear();
    planned = renamed = left = failed = 0;
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT DatId FROM Dats WHERE Name = ? ORDER BY DatId DESC", {datName}))
        return false;
    found = q.next();
    if (!found) return true;
    const qint64 datId = NumberOf(q.value(0));
    q.finish();
    if (!Store::Exec(q,
                     // Each file's strongest rom of the DAT, in one pass over its matches.
                     "SELECT f.FileId, f.PathIndex, f.FileName, f.Extension, f.InnerPath, "
                     "r.Name, f.Sha1 FROM (SELECT FileId, RomId, row_number() OVER (PARTITION BY "
                     "FileId ORDER BY Rank DESC, RomId) AS Nth FROM FileMatches WHERE DatId = ?) m "
                     "JOIN tFiles f ON f.FileId = m.FileId JOIN DatRoms r ON r.RomId = m.RomId "
                     "WHERE m.Nth = 1 ORDER BY f.FileId",
                     {datId}))
        return false;
    QSet<QString> claimed; // the new paths, folded, that the plan gives out
    platform::EntryFinder finder;
    while (q.next()) {
        TidyStep s;
        s.fileId = NumberOf(q.value(0));
        s.pathIndex = NumberOf(q.value(1));
        s.folder = Comunes::PathTable.Dir(s.pathIndex);
        const QString name = TextOf(q.value(2)), extension = TextOf(q.value(3));
        const QString inner = TextOf(q.value(4));
        s.fullName = extension.isEmpty() ? name : name + u'.' + extension;
        s.source = FileHashes::RowPath(s.pathIndex, name, extension, inner, &finder);
        const QString romName = TextOf(q.value(5));
        const qsizetype dot = romName.lastIndexOf(u'.');
        s.newBase = dot <= 0 ? romName : romName.left(dot);
        const QString onDisk = inner.isEmpty() ? finder.Find(s.folder, s.fullName) : "";
        const QString diskName = QFileInfo(onDisk).fileName();
        const qsizetype diskDot = diskName.lastIndexOf(u'.');
        const QString newName = s.newBase + (diskDot < 0 ? QString() : diskName.mid(diskDot));
        s.dest = Records::PathIn(s.folder, newName);
        const bool validName =
            !s.newBase.trimmed().isEmpty() && Reorganiser::FolderName(s.newBase) == s.newBase;
        if (!inner.isEmpty()) {
            s.kind = TidyStep::Kind::Inside;
        } else if (onDisk.isEmpty()) {
            s.kind = TidyStep::Kind::Missing;
            // A run killed after renaming the file and before its row
            // followed: the DAT's name holds the row's bytes.
            const QString already =
                validName ? finder.Find(s.folder, s.newBase + s.fullName.mid(name.size())) : "";
            if (!already.isEmpty() && !claimed.contains(already.toCaseFolded()) &&
                HoldsRowContent(already, TextOf(q.value(6)))) {
                s.kind = TidyStep::Kind::Unrecorded;
                s.dest = already;
            }
        } else if (!validName) {
            s.kind = TidyStep::Kind::Invalid;
        } else if (newName == diskName) {
            s.kind = TidyStep::Kind::Named;
        } else {
            s.kind = Taken(finder, claimed, s.folder, newName, onDisk).isEmpty()
                         ? TidyStep::Kind::Rename
                         : TidyStep::Kind::Taken;
        }
        if (s.kind == TidyStep::Kind::Rename || s.kind == TidyStep::Kind::Unrecorded) {
            // Its side files take the name with it: the plan shows them, and
            // a name taken for any of them leaves the whole file.
            Renamer renamer;
            renamer.finder = &finder;
            renamer.Load(s.folder, s.fullName, s.pathIndex);
            for (const RenameEntry& e : renamer.entries) {
                const QString side = s.newBase + e.ending;
                if (const QString there = Taken(finder, claimed, e.folder, side, e.source);
                    !there.isEmpty()) {
                    s.kind = TidyStep::Kind::Taken;
                    s.dest = there;
                    s.sides.clear();
                    break;
                }
                s.sides.push_back({e.source, Records::PathIn(e.folder, side)});
            }
        }
        const bool acts = s.kind == TidyStep::Kind::Rename || s.kind == TidyStep::Kind::Unrecorded;
        if (acts) {
            claimed.insert(s.dest.toCaseFolded());
            for (const auto& side : s.sides)
                claimed.insert(side.second.toCaseFolded());
            ++planned;
        } else if (s.kind != TidyStep::Kind::Named) {
            ++left;
        }
        steps.push_back(std::move(s));
    }
    return true;
}

void DatTidy::Run() {
    left = 0;
    platform::EntryFinder finder;
    qint64 tried = 0;
    for (TidyStep& s : steps) {
        if (s.kind != TidyStep::Kind::Rename && s.kind != TidyStep::Kind::Unrecorded) {
            if (s.kind != TidyStep::Kind::Named) ++left;
            continue;
        }
        Renamer renamer;
        renamer.finder = &finder;
        renamer.Load(s.folder, s.fullName, s.pathIndex);
        if (s.kind == TidyStep::Kind::Unrecorded) renamer.renamedAs = QFileInfo(s.dest).fileName();
        QString newName, why;
        switch (renamer.Apply(s.newBase, newName, why)) {
        case Renamer::Outcome::Done:
            s.kind = TidyStep::Kind::Renamed;
            ++renamed;
            break;
        case Renamer::Outcome::Taken:
            // A side file's name may be the one taken.
            s.kind = TidyStep::Kind::Taken;
            s.dest = why;
            s.sides.clear();
            ++left;
            break;
        case Renamer::Outcome::Failed:
            s.kind = TidyStep::Kind::Failed;
            s.sides.clear();
            ++failed;
            notes.push_back(why);
            break;
        default:
            s.kind = TidyStep::Kind::Invalid;
            s.sides.clear();
            ++left;
            break;
        }
        if (onProgress) onProgress(++tried, planned);
    }
}

} // namespace cintal
