#include "catalogue/Records.h"

#include "catalogue/Comunes.h"
#include "catalogue/FileHashes.h"
#include "catalogue/Store.h"
#include "catalogue/Titles.h"
#include "platform/PathCase.h"
#include "tape/Prompt.h"
#include "tape/SafeWrite.h"
#include "tape/TZXFunct.h"

#include <QFile>
#include <QFileInfo>

namespace cintal::Records {

// The registers that these operations keep up to date.
using namespace Comunes;

namespace {

// Ends a command that hit a store failure: nothing half-done stays in memory.
bool Failed() {
    Store::Rollback();
    ReloadRegisters();
    return false;
}

} // namespace

void ReloadRegisters() {
    QuietErrors quiet; // the failure that brought us here has been shown already
    LoadPaths();
    LoadPublishers();
}

qint64 AddPublisher(const QString& name) {
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT count(*) FROM Publishers")) return -1;
    const bool empty = q.next() && NumberOf(q.value(0)) == 0;
    q.finish();
    if (empty) {
        if (!Store::Begin()) return -1;
        if (!Store::Run("INSERT INTO Publishers (IdPub, PublisherName) VALUES (0, ?)",
                        {kUnknownPublisher}) ||
            !Store::Run("INSERT INTO Publishers (IdPub, PublisherName) VALUES (1, ?)", {name}) ||
            !Store::Commit()) {
            Failed();
            return -1;
        }
        return 1;
    }
    const qint64 id = static_cast<qint64>(PublisherNames.size());
    if (!Store::Run("INSERT INTO Publishers (IdPub, PublisherName) VALUES (?, ?)", {id, name})) {
        ReloadRegisters();
        return -1;
    }
    return id;
}

QString FolderOf(const QString& path) {
    const QString dir = QString::fromStdString(DirOf(path.toStdString()));
    if (dir.isEmpty() && path.size() > 1 && path.startsWith(QChar(kPathSep)))
        return QString(QChar(kPathSep));
    return dir;
}

QString PathIn(const QString& dir, const QString& name) {
    if (dir.endsWith(QChar(kPathSep))) return dir + name;
    return dir + QChar(kPathSep) + name;
}

qint64 FindPathIndex(const QString& dir) {
    if (dir.isEmpty()) return 0;
    return PathTable.lowered.value(dir.toLower(), 0);
}

bool AddPath(const QString& dir) {
    const int top = PathTable.Count() - 1;
    qint64 number = 0;
    if (top < 1) {
        number = 1;
    } else {
        for (int n = 1; n <= top && !number; ++n) {
            if (PathTable.Number(n).isEmpty()) {
                number = n;
                Ask(std::to_string(n));
            }
        }
        if (!number) number = top + 1;
    }
    if (!Store::Run("INSERT INTO Paths (PathIndex, GameDir) VALUES (?, ?)", {number, dir}))
        return Failed();
    return LoadPaths();
}

std::optional<qint64> FileRowAt(const QString& path) {
    const std::string p = path.toStdString();
    const qint64 pathIndex = FindPathIndex(QString::fromStdString(DirOf(p)));
    if (pathIndex == 0) return 0;
    return FileRowOf(QString::fromStdString(FileNameOf(p)), QString::fromStdString(ExtensionOf(p)),
                     pathIndex);
}

qint64 TitleOfFile(qint64 fileId) {
    QSqlQuery* q = Store::Cached("SELECT TitleId FROM tFiles WHERE FileId = ?", {fileId});
    if (!q) return 0;
    const qint64 titleId = q->next() ? NumberOf(q->value(0)) : 0;
    q->finish();
    return titleId;
}

std::optional<qint64> FileRowOf(const QString& name, const QString& extension, qint64 pathIndex) {
    // The store compares names ignoring case, the disk may not: "Ninja.tzx"
    // and "NINJA.TZX" in one folder are two files with a row each.
    QSqlQuery* q = Store::Cached("SELECT FileId, FileName, Extension FROM tFiles WHERE "
                                 "FileName = ? AND Extension = ? AND PathIndex = ? ORDER BY FileId",
                                 {name, extension, pathIndex});
    if (!q) return std::nullopt;
    qint64 found = 0;
    std::vector<std::pair<qint64, QString>> others;
    while (found == 0 && q->next()) {
        const QString rowName = TextOf(q->value(1));
        if (rowName == name)
            found = NumberOf(q->value(0));
        else
            others.push_back({NumberOf(q->value(0)), rowName + '.' + TextOf(q->value(2))});
    }
    q->finish();
    // A row spelled otherwise stands for this file when the disk finds this
    // file for it, as it does when the folder holds no file of the row's own
    // spelling.
    const QString dir = PathTable.Dir(pathIndex);
    for (const auto& [id, other] : others) {
        if (found != 0) break;
        const QString onDisk = platform::FindEntry(dir, other);
        if (!onDisk.isEmpty() && QString::fromStdString(FileNameOf(onDisk.toStdString())) == name)
            found = id;
    }
    return found;
}

bool FileInDB(const QString& name, const QString& extension, qint64 pathIndex) {
    return FileRowOf(name, extension, pathIndex).value_or(0) != 0;
}

RecordChange AddFileToTitle(qint64 titleId, const QString& path) {
    CurTape = std::make_unique<TZXTape>();
    // A failure before the transaction, or in AddPath, has nothing left to
    // roll back.
    auto stopped = [] {
        CurTape.reset();
        return RecordChange::Failed;
    };
    auto failed = [&] {
        Failed();
        return stopped();
    };
    // The folder, the file's row and the title's mark stand or fall together.
    if (!Store::Begin()) return stopped();
    const std::string p = path.toStdString();
    const QString folder = FolderOf(path);
    if (FindPathIndex(folder) == 0 && !AddPath(folder)) return stopped();
    const qint64 pathIndex = FindPathIndex(folder);
    const QString name = QString::fromStdString(FileNameOf(p));
    const QString extension = QString::fromStdString(ExtensionOf(p));
    const std::optional<qint64> known = FileRowOf(name, extension, pathIndex);
    if (!known) return failed();
    if (*known != 0) {
        CurTape.reset();
        if (!Store::Commit()) Failed();
        return RecordChange::Unchanged;
    }
    CurTape->FileName = p;
    CurTape->ReadTape();
    const ArchiveInfo& info = CurTape->ArchiveInfo();
    const QString lang = FromTape(info.iLang);
    // A file that can't be read keeps no hashes; a later scan takes them.
    platform::ContentHashes h;
    const bool hashed = platform::HashFile(path, h);
    const DiskStamp stamp = FileHashes::StampOf(path);
    auto kept = [&](const QVariant& v) { return hashed ? v : QVariant(); };
    const bool ok =
        Store::Run("INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, Origscreen, "
                   "FileSize, Origin, IdLang, LoadSchema, HaveIt, Crc32, Md5, Sha1, DiskSize, "
                   "DiskTime) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, 1, ?, ?, ?, ?, ?)",
                   {titleId, name, extension, pathIndex, info.fOriginalScreen ? 1 : 0,
                    QFileInfo(path).size(), FromTape(info.iOrigin).left(50),
                    lang.isEmpty() ? QVariant() : QVariant(lang.left(3)), FromTape(info.iSchema),
                    kept(h.crc32), kept(h.md5), kept(h.sha1), kept(stamp.size),
                    kept(stamp.time)}) &&
        Store::Run("UPDATE Titles SET HaveIt = 1 WHERE TitleId = ?", {titleId}) && Store::Commit();
    if (!ok) return failed();
    CurTape.reset();
    return RecordChange::Done;
}

qint64 FindTitle(qint64 idPub) {
    CurName = StoredTitleName(CurName);
    QSqlQuery* q = Store::Cached("SELECT TitleId FROM Titles WHERE Name = ? AND IdPub = ? LIMIT 1",
                                 {CurName, idPub});
    if (!q) return 0;
    const qint64 id = q->next() ? NumberOf(q->value(0)) : 0;
    q->finish();
    return id;
}

RecordChange DelFileRecord(qint64 fileId, qint64 titleId, bool moreFiles) {
    auto failed = [] {
        Failed();
        return RecordChange::Failed;
    };
    if (!Store::Begin()) return RecordChange::Failed;
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "DELETE FROM tFiles WHERE FileId = ?", {fileId})) return failed();
    if (q.numRowsAffected() < 1) {
        q.finish();
        if (!Store::Commit()) Failed();
        return RecordChange::Unchanged;
    }
    if (!moreFiles && !Store::Run("UPDATE Titles SET HaveIt = 0 WHERE TitleId = ?", {titleId}))
        return failed();
    return Store::Commit() ? RecordChange::Done : failed();
}

RecordChange DelTitleRecord(qint64 titleId) {
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "DELETE FROM Titles WHERE TitleId = ?", {titleId})) {
        Failed();
        return RecordChange::Failed;
    }
    return q.numRowsAffected() > 0 ? RecordChange::Done : RecordChange::Unchanged;
}

bool EmptyTitles() {
    if (!Store::Run("DELETE FROM Titles")) return Failed();
    return true;
}

} // namespace cintal::Records

namespace cintal {

namespace {
QString Plus(QString text) {
    return text.replace(QLatin1Char(' '), QLatin1Char('+'));
}
} // namespace

QString InfoseekAddress(const QString& title, const QString& publisher) {
    QString address = "https://www.worldofspectrum.org/infoseek.cgi?regexp=^" + Plus(title);
    const QString pub = Plus(publisher);
    if (!pub.isEmpty() && pub != QLatin1String("-+Desconocida+-")) address += "&pub=^" + pub;
    return address;
}

QString TipShopAddress(const QString& title) {
    return "https://www.the-tipshop.co.uk/cgi-bin/search.pl?name=" + Plus(title);
}

void DeleteFileFromDisk(const QString& path) {
    QFile file(path);
    if (file.exists()) {
        // Forced: a read-only file goes too.
        file.setPermissions(file.permissions() | QFileDevice::WriteOwner | QFileDevice::WriteUser);
        std::string reason;
        if (!detail::RemoveFile(path.toStdString(), reason)) {
            Ask(("No se pudo borrar el archivo " + path).toStdString() + ": " + reason, {},
                Icon::Critical);
            return;
        }
    }
    Ask("Archivo borrado", {}, Icon::Information);
}

} // namespace cintal
