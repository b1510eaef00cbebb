#include "maintenance/Renamer.h"

#include "catalogue/Ask.h"
#include "catalogue/Comunes.h"
#include "catalogue/Files.h"
#include "catalogue/Records.h"
#include "catalogue/Store.h"
#include "maintenance/Reorganiser.h"
#include "platform/MoveFile.h"
#include "platform/PathCase.h"
#include "tape/Prompt.h"

#include <QFileInfo>
#include <utility>

namespace cintal {

void Renamer::Load(const QString& dir, const QString& fullName, qint64 index,
                   const QString& innerPath) {
    folder = dir;
    inner = innerPath;
    oldFull = fullName;
    pathIndex = index;
    const int dot = fullName.lastIndexOf(u'.');
    oldBase = dot < 0 ? fullName : fullName.left(dot);
    extension = dot < 0 ? QString() : fullName.mid(dot + 1);
    entries.clear();
    screenFile.clear();
    platform::EntryFinder own;
    platform::EntryFinder& find = finder ? *finder : own;
    for (const SideFile& k : RenamedSideFiles()) {
        const QString found = find.FindInFolders(folder, QString::fromLatin1(k.folder),
                                                 oldBase + QLatin1String(k.ending));
        if (found.isEmpty()) continue;
        RenameEntry e;
        e.label = oldBase + QString::fromLatin1(k.ending).toLower();
        e.source = found;
        e.folder = QFileInfo(found).path();
        e.ending = QFileInfo(found).fileName().mid(oldBase.size());
        entries.push_back(e);
        if (k.kind == SideKind::Screen) screenFile = found;
    }
}

bool Renamer::RenombraFileInDB(const QString& newBase) {
    // The folder is part of a file's identity: two folders may hold one name.
    QuietErrors quiet;
    return Store::Run("UPDATE tFiles SET FileName = ?, HaveIt = 1 WHERE FileId = (SELECT FileId "
                      "FROM tFiles WHERE FileName = ? AND Extension = ? AND PathIndex = ? "
                      "ORDER BY FileName = ? COLLATE BINARY DESC, FileId LIMIT 1)",
                      {newBase, oldBase, extension, pathIndex, oldBase});
}

Renamer::Outcome Renamer::Apply(const QString& newBase, QString& newName, QString& why) {
    if (!inner.isEmpty()) return Outcome::Inner;
    if (newBase.trimmed().isEmpty()) return Outcome::Blank;
    platform::EntryFinder own;
    platform::EntryFinder& find = finder ? *finder : own;
    const QString file = renamedAs.isEmpty() ? find.Find(folder, oldFull) : QString();
    // The extension keeps its case on disk; the catalogue holds it in lower
    // case.
    const QString onDisk = file.isEmpty() ? oldFull : QFileInfo(file).fileName();
    const qsizetype dot = onDisk.lastIndexOf(u'.');
    newName = renamedAs.isEmpty() ? newBase + (dot < 0 ? QString() : onDisk.mid(dot)) : renamedAs;
    if (newName == onDisk) return Outcome::Same;
    if (Reorganiser::FolderName(newBase) != newBase) return Outcome::Invalid;
    // Every rename, file first, then the ticked side files in list order.
    std::vector<std::pair<QString, QString>> moves;
    if (renamedAs.isEmpty())
        moves.push_back({file.isEmpty() ? Records::PathIn(folder, oldFull) : file,
                         Records::PathIn(folder, newName)});
    for (const RenameEntry& e : entries)
        if (e.ticked) moves.push_back({e.source, Records::PathIn(e.folder, newBase + e.ending)});
    for (const auto& [from, to] : moves) {
        const QFileInfo target(to);
        const QStringList taken =
            find.Listing(target.path()).AllCases(target.fileName(), platform::EntryKind::File);
        const QString there =
            taken.isEmpty() ? QString() : Records::PathIn(target.path(), taken.front());
        // Only a change of case finds the file itself there.
        if (!there.isEmpty() && there != from) {
            why = there;
            return Outcome::Taken;
        }
    }
    std::size_t done = 0;
    QString failed;
    for (; done < moves.size(); ++done) {
        if (!platform::MoveNoReplace(moves[done].first, moves[done].second, &why)) {
            failed = moves[done].first;
            break;
        }
    }
    if (failed.isEmpty() && !RenombraFileInDB(newBase)) {
        failed = QStringLiteral("el catálogo");
        why = Store::LastError();
    }
    if (failed.isEmpty()) {
        for (const auto& [from, to] : moves)
            find.Moved(from, to);
        return Outcome::Done;
    }
    // Back to the old names, the last renamed first.
    while (done > 0) {
        --done;
        QString ignored;
        platform::MoveNoReplace(moves[done].second, moves[done].first, &ignored);
    }
    why = QStringLiteral("No se pudo renombrar %1: %2. Los archivos conservan su nombre anterior.")
              .arg(failed, why);
    return Outcome::Failed;
}

QString Renamer::Rename(const QString& newBase) {
    QString newName, why;
    switch (Apply(newBase, newName, why)) {
    case Outcome::Inner:
        Ask("El archivo está dentro de " + oldFull + ": no se puede renombrar", {},
            Icon::Exclamation);
        break;
    case Outcome::Done:
        Ask(("Archivo renombrado: " + newName).toStdString(), {}, Icon::Information);
        return newName;
    case Outcome::Blank:
        Ask("el nombre de archivo no puede quedar en blanco. Especifica otro nombre.", {},
            Icon::Exclamation);
        break;
    case Outcome::Same:
        Ask("el nombre de archivo no puede ser el mismo que el de origen. Especifica otro nombre.",
            {}, Icon::Exclamation);
        break;
    case Outcome::Invalid:
        Ask("el nombre de archivo no es válido", {}, Icon::Exclamation);
        break;
    case Outcome::Taken:
        Ask("el nombre de archivo ya existe. Especifica otro nombre.", {}, Icon::Critical);
        break;
    case Outcome::Failed:
        Ask(why.toStdString());
        break;
    }
    return kFallido;
}

} // namespace cintal
