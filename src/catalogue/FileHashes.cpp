#include "catalogue/FileHashes.h"

#include "catalogue/Breathe.h"
#include "catalogue/Comunes.h"
#include "catalogue/Dats.h"
#include "catalogue/Records.h"
#include "catalogue/Store.h"
#include "platform/Archive.h"
#include "platform/PathCase.h"

#include <QDateTime>
#include <QFileInfo>
#include <algorithm>

namespace cintal::FileHashes {

DiskStamp StampOf(const QString& path) {
    const std::optional<platform::InnerLocation> at = platform::SplitInner(path.toStdString());
    const QFileInfo info(at ? QString::fromStdString(at->archive) : path);
    if (!info.isFile()) return {};
    return {info.size(), info.lastModified().toMSecsSinceEpoch()};
}

QString RowPath(qint64 pathIndex, const QString& fileName, const QString& extension,
                const QString& inner, platform::EntryFinder* finder) {
    // The catalogue keeps extensions in lower case; the disk may not ("JUEGO.TZX").
    const QString dir = Comunes::PathTable.Dir(pathIndex);
    const QString name = extension.isEmpty() ? fileName : fileName + '.' + extension;
    QString file = finder ? finder->Find(dir, name) : platform::FindEntry(dir, name);
    if (file.isEmpty()) file = Records::PathIn(dir, name);
    if (inner.isEmpty()) return file;
    return QString::fromStdString(platform::JoinInner(file.toStdString(), inner.toStdString()));
}

bool Save(qint64 fileId, const platform::ContentHashes& h, const DiskStamp& stamp) {
    // What the file is follows its hashes.
    return Store::Run("UPDATE tFiles SET FileSize = ?, Crc32 = ?, Md5 = ?, Sha1 = ?, DiskSize = ?, "
                      "DiskTime = ? WHERE FileId = ?",
                      {h.size, h.crc32, h.md5, h.sha1, stamp.size, stamp.time, fileId}) &&
           Dats::IdentifyFile(fileId, h);
}

bool Refresh(const std::function<void(const QString& path, const QString& why)>& unreadable,
             const std::function<void(qint64 done, qint64 total)>& progress) {
    struct Row {
        qint64 fileId;
        QString path;
        DiskStamp stamp;
        bool hashed;
    };
    std::vector<Row> rows;
    {
        QSqlQuery q = Store::NewQuery();
        if (!Store::Exec(q, "SELECT FileId, PathIndex, FileName, Extension, InnerPath, DiskSize, "
                            "DiskTime, Sha1 FROM tFiles ORDER BY FileId"))
            return false;
        platform::EntryFinder finder;
        while (q.next())
            rows.push_back({NumberOf(q.value(0)),
                            RowPath(NumberOf(q.value(1)), TextOf(q.value(2)), TextOf(q.value(3)),
                                    TextOf(q.value(4)), &finder),
                            {q.value(5).isNull() ? -1 : NumberOf(q.value(5)), NumberOf(q.value(6))},
                            !TextOf(q.value(7)).isEmpty()});
    }
    qint64 done = 0;
    const auto total = static_cast<qint64>(rows.size());
    for (const Row& r : rows) {
        if (progress) progress(done++, total);
        const DiskStamp now = StampOf(r.path);
        if (r.hashed && now == r.stamp) continue;
        std::string bytes, why;
        if (now.size < 0 || !platform::ReadFileOrInner(r.path.toStdString(), bytes, why)) {
            unreadable(r.path, now.size < 0 ? QStringLiteral("no existe el archivo")
                                            : QString::fromStdString(why));
            continue;
        }
        if (!Save(r.fileId, platform::HashBytes(bytes.data(), static_cast<qint64>(bytes.size())),
                  now))
            return false;
        Breathe();
    }
    if (progress) progress(total, total);
    return true;
}

std::optional<std::vector<HashedFile>> Load() {
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT f.FileId, f.TitleId, f.FileSize, f.Crc32, f.Md5, f.Sha1, "
                        "f.PathIndex, f.FileName, f.Extension, f.InnerPath, t.Name "
                        "FROM tFiles f LEFT JOIN Titles t ON t.TitleId = f.TitleId "
                        "ORDER BY f.FileId"))
        return std::nullopt;
    std::vector<HashedFile> files;
    platform::EntryFinder finder;
    while (q.next()) {
        HashedFile f;
        f.fileId = NumberOf(q.value(0));
        f.titleId = NumberOf(q.value(1));
        f.size = NumberOf(q.value(2));
        f.crc32 = TextOf(q.value(3));
        f.md5 = TextOf(q.value(4));
        f.sha1 = TextOf(q.value(5));
        f.path = RowPath(NumberOf(q.value(6)), TextOf(q.value(7)), TextOf(q.value(8)),
                         TextOf(q.value(9)), &finder);
        f.title = TextOf(q.value(10));
        files.push_back(std::move(f));
    }
    return files;
}

} // namespace cintal::FileHashes

namespace cintal {

std::vector<DuplicateGroup> GroupDuplicates(const std::vector<HashedFile>& files) {
    std::vector<const HashedFile*> order;
    order.reserve(files.size());
    for (const HashedFile& f : files)
        if (!f.sha1.isEmpty()) order.push_back(&f);
    std::sort(order.begin(), order.end(), [](const HashedFile* a, const HashedFile* b) {
        if (a->size != b->size) return a->size < b->size;
        if (const int c = a->sha1.compare(b->sha1); c != 0) return c < 0;
        return a->fileId < b->fileId;
    });
    std::vector<DuplicateGroup> groups;
    for (std::size_t i = 0; i < order.size();) {
        std::size_t j = i + 1;
        while (j < order.size() && order[j]->size == order[i]->size &&
               order[j]->sha1 == order[i]->sha1)
            ++j;
        if (j - i > 1)
            groups.push_back(
                {order[i]->size, order[i]->sha1, {order.begin() + i, order.begin() + j}});
        i = j;
    }
    return groups;
}

} // namespace cintal
