#pragma once
// Each file row's content hashes in the store, kept against the size and
// modification time the file had on disk when they were taken, and the
// grouping of the rows that hold the same content.

#include "platform/Hashes.h"
#include "platform/PathCase.h"

#include <QString>
#include <functional>
#include <optional>
#include <vector>

namespace cintal {

// The size and modification time (ms since the epoch) of a file on disk; for
// a file inside an archive, the archive's. Size -1 when there is no file.
struct DiskStamp {
    qint64 size = -1;
    qint64 time = 0;
    bool operator==(const DiskStamp&) const = default;
};

// A file row as the hashes and the duplicates see it.
struct HashedFile {
    qint64 fileId = 0;
    qint64 titleId = 0;
    qint64 size = 0;
    QString crc32, md5, sha1;
    QString path;  // as on disk: "ARCHIVO.zip|INTERIOR" inside an archive
    QString title; // the title's name, empty when the row has none
};

struct DuplicateGroup {
    qint64 size = 0;
    QString sha1;
    std::vector<const HashedFile*> files; // by FileId
};

namespace FileHashes {

DiskStamp StampOf(const QString& path);

// The path of a row's file: its folder, name and extension, and the inner
// path after a bar for a file inside an archive. A loop over many rows
// passes one finder, so that a folder is listed once, not once per row.
QString RowPath(qint64 pathIndex, const QString& fileName, const QString& extension,
                const QString& inner, platform::EntryFinder* finder = nullptr);

// Writes the row's hashes, its FileSize and the stamp they go with. False
// after a store failure.
bool Save(qint64 fileId, const platform::ContentHashes& hashes, const DiskStamp& stamp);

// Hashes again every row whose file changed on disk since, or that has none
// yet. Files that can't be read are told to `unreadable` and keep what they
// had. progress, if given, hears how many rows of how many were looked at.
// False after a store failure.
bool Refresh(const std::function<void(const QString& path, const QString& why)>& unreadable,
             const std::function<void(qint64 done, qint64 total)>& progress = {});

// Every file row with its hashes, path and title, by FileId; nothing after a
// store failure.
std::optional<std::vector<HashedFile>> Load();

} // namespace FileHashes

// The groups of two or more files of the same size and SHA1 (rows without
// hashes stand apart), by size and then SHA1.
std::vector<DuplicateGroup> GroupDuplicates(const std::vector<HashedFile>& files);

} // namespace cintal
