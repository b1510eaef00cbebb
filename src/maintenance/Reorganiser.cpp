#include "maintenance/Reorganiser.h"

#include "catalogue/Breathe.h"
#include "catalogue/Comunes.h"
#include "catalogue/Files.h"
#include "catalogue/Records.h"
#include "catalogue/Store.h"
#include "platform/Archive.h"
#include "platform/MoveFile.h"
#include "platform/PathCase.h"
#include "tape/Prompt.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlQuery>

namespace cintal {

namespace {

QString Join(const QString& dir, const QString& name) {
    return Records::PathIn(dir, name);
}

} // namespace

QString ReorgStep::Text() const {
    switch (kind) {
    case Kind::MakeFolder:
        return QStringLiteral("crear carpeta %1").arg(dest);
    case Kind::Move:
        return QStringLiteral("mover %1 -> %2").arg(source, dest);
    case Kind::Exists:
        return QStringLiteral("ya existe: se deja %1").arg(dest);
    case Kind::Missing:
        return QStringLiteral("no está: se omite %1").arg(source);
    case Kind::RemovePart:
        return QStringLiteral("quitar copia a medias %1").arg(dest);
    case Kind::FixRow:
        return QStringLiteral("ya está en %1: se corrige su fila").arg(dest);
    case Kind::InArchive:
        return QStringLiteral("dentro de un archivo comprimido: se deja %1").arg(source);
    }
    return {};
}

QString Reorganiser::Target(const QString& parent, const QString& subFolder) {
    if (subFolder.isEmpty()) return parent;
    return Join(parent, subFolder);
}

QString Reorganiser::SubFolderRefusal(const QString& subFolder) {
    if (subFolder.isEmpty() ||
        (!subFolder.trimmed().isEmpty() && FolderName(subFolder) == subFolder))
        return {};
    return QStringLiteral("El subdirectorio \"%1\" no es válido: ha de ser un solo nombre de "
                          "carpeta, no \".\" ni \"..\", sin / \\ : * ? \" < > |")
        .arg(subFolder);
}

QString Reorganiser::FolderName(const QString& text) {
    // What Linux or a FAT or NTFS volume refuses in a name.
    static const QString refused = QStringLiteral("/\\:*?\"<>|");
    QString name = text;
    for (QChar& c : name)
        if (refused.contains(c) || c.unicode() < 0x20 || c.unicode() == 0x7F) c = u'_';
    if (name.isEmpty() || name == QLatin1String(".") || name == QLatin1String(".."))
        return QStringLiteral("_");
    return name;
}

QString Reorganiser::DestFolder(SortBy order, const QString& name, const QString& year,
                                const QString& publisher) {
    switch (order) {
    case SortBy::Single:
        return {};
    case SortBy::Initial: {
        QString shown = name;
        shown.replace(QStringLiteral(": "), QStringLiteral(" - "));
        if (shown.isEmpty()) return QStringLiteral("#");
        const QChar first = shown.front();
        if (first.isHighSurrogate() && shown.size() > 1) {
            const char32_t code = QChar::surrogateToUcs4(first, shown[1]);
            return QChar::isLetter(code) ? shown.left(2) : QStringLiteral("#");
        }
        return first.isLetter() ? QString(first) : QStringLiteral("#");
    }
    case SortBy::Year: {
        bool ok = false;
        const int y = year.trimmed().toInt(&ok);
        if (!ok || y < 1970 || y > 2020) return QStringLiteral("Sin fecha");
        return FolderName(year);
    }
    case SortBy::Publisher:
        return FolderName(publisher);
    }
    return {};
}

platform::FolderListing& Reorganiser::Listing(const QString& dir) {
    auto it = listings.find(dir);
    if (it == listings.end()) it = listings.insert(dir, platform::FolderListing(dir));
    return *it;
}

QString Reorganiser::FindEntry(const QString& dir, const QString& name, bool wantDir) {
    const QString found =
        Listing(dir).Find(name, wantDir ? platform::EntryKind::Folder : platform::EntryKind::File);
    return found.isEmpty() ? QString() : Join(dir, found);
}

QString Reorganiser::ResolveFolder(const QString& parent, const QString& name, int title) {
    // A folder that stands in any case is used, never a second one beside it.
    const QStringList there = Listing(parent).AllCases(name, platform::EntryKind::Folder);
    if (!there.isEmpty()) return Join(parent, there.front());
    const QString path = Join(parent, name);
    ReorgStep step;
    step.kind = ReorgStep::Kind::MakeFolder;
    step.dest = path;
    step.title = title;
    steps.push_back(step);
    Listing(parent).Add(name, platform::EntryKind::Folder);
    listings.insert(path, {});
    return path;
}

void Reorganiser::PlanMove(const QString& source, const QString& destDir, bool side, qint64 fileId,
                           int title) {
    ReorgStep step;
    step.source = source;
    step.side = side;
    step.FileId = fileId;
    step.title = title;
    const QString fileName = QFileInfo(source).fileName();
    const QString there = Listing(destDir).Taken(fileName);
    if (!there.isEmpty()) {
        step.kind = ReorgStep::Kind::Exists;
        step.dest = Join(destDir, there);
        steps.push_back(step);
        return;
    }
    step.kind = ReorgStep::Kind::Move;
    step.dest = Join(destDir, fileName);
    // A move across volumes that was cut short left its copy in the way.
    const QString part = platform::PartFile(step.dest);
    if (platform::IsLeftoverPart(source, part)) {
        ReorgStep remove = step;
        remove.kind = ReorgStep::Kind::RemovePart;
        remove.dest = part;
        steps.push_back(remove);
    }
    steps.push_back(step);
    claimed.insert(step.dest);
    Listing(QFileInfo(source).path()).Remove(fileName);
    Listing(destDir).Add(fileName, platform::EntryKind::File);
}

QString Reorganiser::AlreadyMoved(const QString& destDir, const QString& fileName) {
    const QString there = FindEntry(destDir, fileName, false);
    if (there.isEmpty() || claimed.contains(there)) return {};
    // A row that names the file there makes it that row's file.
    const QString name = QFileInfo(there).fileName();
    const qsizetype dot = name.lastIndexOf(u'.');
    const qint64 index = Records::FindPathIndex(destDir);
    if (index != 0 && (dot < 0 || Records::FileInDB(name.left(dot), name.mid(dot + 1), index)))
        return {};
    return there;
}

void Reorganiser::Plan(const QString& targetFolder, SortBy order,
                       const std::vector<ReorgTitle>& titles) {
    steps.clear();
    notes.clear();
    listings.clear();
    claimed.clear();
    counters = {};
    failure.clear();
    titlesTotal = static_cast<int>(titles.size());
    target = targetFolder;

    const QFileInfo t(target);
    if (!t.isDir()) ResolveFolder(t.path(), t.fileName(), -1);

    for (int i = 0; i < titlesTotal; ++i) {
        const ReorgTitle& title = titles[static_cast<std::size_t>(i)];
        const QString below = DestFolder(order, title.name, title.year, title.publisher);
        const QString dest = below.isEmpty() ? target : ResolveFolder(target, below, i);
        QHash<QString, QString> sideDirs;
        for (const QString& side : SideFolders())
            sideDirs.insert(side, ResolveFolder(dest, side, i));
        const QString base = SideBaseName(title.name);
        for (const ReorgFile& file : title.files) {
            for (const SideFile& s : SideFiles()) {
                // "SCRSHOT" and "ScrShot" may stand side by side: both are looked in.
                const QString name = QString::fromLatin1(s.folder);
                QStringList folders;
                std::vector<const platform::FolderListing*> inside;
                for (const QString& f :
                     Listing(file.dir).AllCases(name, platform::EntryKind::Folder)) {
                    folders << Join(file.dir, f);
                    Listing(folders.back());
                }
                // Taken once all are read: reading one may move the others.
                for (const QString& f : std::as_const(folders))
                    inside.push_back(&listings.find(f).value());
                const auto [at, found] = platform::FolderListing::FindIn(
                    inside, base + QLatin1String(s.ending), platform::EntryKind::File);
                // A side file that isn't there is no fault: most titles lack some.
                if (at >= 0) PlanMove(Join(folders[at], found), sideDirs.value(name), true, 0, i);
            }
            if (!file.inner.isEmpty()) {
                ReorgStep left;
                left.kind = ReorgStep::Kind::InArchive;
                left.source = QString::fromStdString(platform::JoinInner(
                    Join(file.dir, file.fileName).toStdString(), file.inner.toStdString()));
                left.FileId = file.FileId;
                left.title = i;
                steps.push_back(left);
                continue;
            }
            const QString source = FindEntry(file.dir, file.fileName, false);
            if (source.isEmpty()) {
                ReorgStep missing;
                missing.kind = ReorgStep::Kind::Missing;
                missing.source = Join(file.dir, file.fileName);
                missing.FileId = file.FileId;
                missing.title = i;
                // A run stopped between a file's move and its row's update
                // left the file in its new place: the row follows it now.
                const QString there = file.FileId ? AlreadyMoved(dest, file.fileName) : QString();
                if (!there.isEmpty()) {
                    missing.kind = ReorgStep::Kind::FixRow;
                    missing.dest = there;
                    claimed.insert(there);
                }
                steps.push_back(missing);
                continue;
            }
            PlanMove(source, dest, false, file.FileId, i);
        }
        counters.Titulos = i + 1;
        if (onProgress && (i % 64 == 63 || i + 1 == titlesTotal)) onProgress(*this);
    }
    for (const ReorgStep& s : steps) {
        if (s.kind == ReorgStep::Kind::Exists || s.kind == ReorgStep::Kind::Missing ||
            s.kind == ReorgStep::Kind::InArchive)
            ++counters.Omitidos;
        else if (s.kind == ReorgStep::Kind::Move || s.kind == ReorgStep::Kind::FixRow)
            ++(s.side ? counters.Laterales : counters.Movidos);
    }
}

bool Reorganiser::PointRow(qint64 fileId, const QString& dir) {
    QuietErrors quiet;
    if (!Store::Begin()) return false;
    if (Records::FindPathIndex(dir) == 0 && !Records::AddPath(dir)) {
        Store::Rollback();
        Records::ReloadRegisters();
        return false;
    }
    const qint64 index = Records::FindPathIndex(dir);
    if (!Store::Run("UPDATE tFiles SET PathIndex = ? WHERE FileId = ?", {index, fileId}) ||
        !Store::Commit()) {
        Store::Rollback();
        Records::ReloadRegisters();
        return false;
    }
    return true;
}

Reorganiser::Result Reorganiser::Run(bool updateCatalogue) {
    counters = {};
    notes.clear();
    failure.clear();
    bool moved = false;
    int lastTitle = -1;
    auto titleDone = [&](int upTo) {
        while (lastTitle < upTo) {
            ++lastTitle;
            if (lastTitle >= 0) counters.Titulos = lastTitle + 1;
            Breathe();
            if (onProgress) onProgress(*this);
        }
    };
    // The side files moved for the file whose own move comes next: if that
    // file can't take its new place, they go back with it.
    std::vector<const ReorgStep*> sidesMoved;
    auto putSidesBack = [&] {
        for (auto it = sidesMoved.rbegin(); it != sidesMoved.rend(); ++it) {
            QString why;
            if (platform::MoveNoReplace((*it)->dest, (*it)->source, &why))
                --counters.Laterales;
            else
                notes.push_back(
                    QStringLiteral("%1 queda en %2: %3").arg((*it)->source, (*it)->dest, why));
        }
        sidesMoved.clear();
    };
    for (const ReorgStep& s : steps) {
        if (s.title > lastTitle + 1) titleDone(s.title - 1);
        switch (s.kind) {
        case ReorgStep::Kind::MakeFolder: {
            if (QFileInfo(s.dest).isDir()) break;
            QString reason;
            if (platform::MakeFolder(s.dest, &reason)) break;
            const QString text =
                QStringLiteral("No se puede crear la carpeta %1: %2").arg(s.dest, reason);
            if (!moved) {
                failure = text;
                Ask(text.toStdString(), {}, Icon::Critical);
                return Result::FolderFailed;
            }
            notes.push_back(text);
            break;
        }
        case ReorgStep::Kind::Exists:
        case ReorgStep::Kind::Missing:
        case ReorgStep::Kind::InArchive:
            if (!s.side) sidesMoved.clear();
            ++counters.Omitidos;
            notes.push_back(s.Text());
            break;
        case ReorgStep::Kind::RemovePart: {
            QString reason;
            // If it is no longer a leftover of ours it stays, and the move
            // that follows tells.
            if (!platform::RemoveLeftoverPart(s.source, s.dest, &reason))
                notes.push_back(QStringLiteral("%1: %2").arg(s.dest, reason));
            break;
        }
        case ReorgStep::Kind::FixRow:
            sidesMoved.clear();
            if (!updateCatalogue) {
                ++counters.Omitidos;
                notes.push_back(QStringLiteral("%1: ya está en %2; su fila no se corrige sin "
                                               "actualizar el catálogo")
                                    .arg(s.source, s.dest));
            } else if (PointRow(s.FileId, QFileInfo(s.dest).path())) {
                ++counters.Movidos;
            } else {
                ++counters.Fallidos;
                notes.push_back(QStringLiteral("%1: ya está en %2, pero el catálogo no se pudo "
                                               "actualizar (%3)")
                                    .arg(s.source, s.dest, Store::LastError()));
            }
            break;
        case ReorgStep::Kind::Move: {
            moved = true;
            QString reason;
            if (!platform::MoveNoReplace(s.source, s.dest, &reason)) {
                ++counters.Fallidos;
                notes.push_back(QStringLiteral("%1: %2").arg(s.source, reason));
                if (!s.side) putSidesBack();
                break;
            }
            if (s.side) {
                ++counters.Laterales;
                sidesMoved.push_back(&s);
                break;
            }
            if (updateCatalogue && s.FileId && !PointRow(s.FileId, QFileInfo(s.dest).path())) {
                // The row stays where it was, so the file goes back beside it.
                QString back;
                const bool restored = platform::MoveNoReplace(s.dest, s.source, &back);
                ++counters.Fallidos;
                notes.push_back(restored
                                    ? QStringLiteral("%1: el catálogo no se pudo actualizar (%2); "
                                                     "el archivo vuelve a su sitio")
                                          .arg(s.source, Store::LastError())
                                    : QStringLiteral("%1: el catálogo no se pudo actualizar (%2) "
                                                     "y el archivo queda en %3")
                                          .arg(s.source, Store::LastError(), s.dest));
                if (restored) putSidesBack();
                sidesMoved.clear();
                break;
            }
            sidesMoved.clear();
            ++counters.Movidos;
            break;
        }
        }
    }
    titleDone(titlesTotal - 1);
    return Result::Done;
}

} // namespace cintal

namespace cintal {

bool LoadReorgTitles(bool heldOnly, std::vector<ReorgTitle>& titles) {
    titles.clear();
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q,
                     QStringLiteral("SELECT TitleId, Name, Year, IdPub FROM Titles%1 ORDER BY Name")
                         .arg(heldOnly ? QStringLiteral(" WHERE HaveIt <> 0") : QString())))
        return false;
    QHash<qint64, std::size_t> byId;
    while (q.next()) {
        ReorgTitle t;
        t.TitleId = NumberOf(q.value(0));
        t.name = TextOf(q.value(1));
        t.year = TextOf(q.value(2));
        t.publisher = Comunes::PublisherName(NumberOf(q.value(3)));
        byId.insert(t.TitleId, titles.size());
        titles.push_back(std::move(t));
    }
    QSqlQuery f = Store::NewQuery();
    if (!Store::Exec(f, QStringLiteral("SELECT FileId, TitleId, FileName, Extension, PathIndex, "
                                       "InnerPath FROM tFiles ORDER BY FileId")))
        return false;
    while (f.next()) {
        const auto it = byId.constFind(NumberOf(f.value(1)));
        if (it == byId.constEnd()) continue;
        ReorgFile file;
        file.FileId = NumberOf(f.value(0));
        file.fileName = TextOf(f.value(2)) + "." + TextOf(f.value(3));
        file.dir = Comunes::PathTable.Dir(NumberOf(f.value(4)));
        file.inner = TextOf(f.value(5));
        titles[*it].files.push_back(file);
    }
    return true;
}

} // namespace cintal

namespace cintal {

bool LoadReorgFiles(ReorgTitle& title) {
    std::vector<FileRow> rows;
    if (!LoadFileRows(title.TitleId, rows)) return false;
    title.files.clear();
    for (const FileRow& r : rows)
        title.files.push_back({r.FileId, Comunes::PathTable.Dir(r.PathIndex),
                               r.FileName + "." + r.Extension, r.InnerPath});
    return true;
}

} // namespace cintal
