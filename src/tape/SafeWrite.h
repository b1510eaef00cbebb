#pragma once
// Writing beside and renaming into place, so that a user's file is never
// half-written. Internal to the engine.

#include "tape/ByteSource.h"
#include "tape/StandIn.h"

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace cintal::detail {

// Every file operation by which the engine reads, saves or converts a user's
// file goes through the current FileOps. The base class works on the disk;
// tests put one of their own in place to fail any single step, or to stand
// the whole file system inside a folder of their own.
class FileOps {
public:
    virtual ~FileOps() = default;
    // True for an existing file (not a folder). Never throws.
    virtual bool Exists(const std::string& path);
    // The whole file; false when it can't be opened or read.
    virtual bool Read(const std::string& path, std::string& out);
    // The whole file as bytes held by keep, which may be shared: by default
    // what Read gives.
    virtual bool Load(const std::string& path, std::shared_ptr<const void>& keep,
                      std::string_view& bytes);
    // True when both names exist and stand for one file.
    virtual bool Same(const std::string& a, const std::string& b);
    // The names of a folder's entries; "" is the current folder.
    virtual std::vector<std::string> List(const std::string& dir);
    // Makes a file that must not exist yet, writes the bytes, pushes them
    // to the disk and closes it. A file left half-written is removed.
    virtual std::error_code CreateNew(const std::string& path, std::string_view bytes);
    // The same with the bytes a piece at a time; a write given up is
    // operation_canceled.
    virtual std::error_code CreateNewFrom(const std::string& path, const ByteSource& bytes);
    virtual std::error_code Remove(const std::string& path);
    virtual std::error_code Rename(const std::string& from, const std::string& to);
};

FileOps& CurrentFileOps();

// How the disk's FileOps pushes a written file to the disk before closing
// it. Standard C++ can only empty its own buffer into the system's, where a
// crash may still lose it; the programs put the system's own push in place
// at start-up. Null puts the buffer-only push back.
using FileFlush = bool (*)(std::FILE* file);
void SetFileFlush(FileFlush flush);

// How the disk's FileOps may show a whole file in memory without copying it
// (a mapping of the file), for a program that reads tapes and ends; false
// where it can't, and the file is read as ever. Null puts reading back.
using FileMap = bool (*)(const std::string& path, std::shared_ptr<const void>& keep,
                         std::string_view& bytes);
void SetFileMap(FileMap map);

// Puts a FileOps in place for the lifetime of a scope and then the previous one.
class FileOpsScope : public StandInScope<FileOps> {
public:
    explicit FileOpsScope(FileOps& ops);
};

// Creates a new file in dir named "TMP" + HHMMSS (+ "-1", "-2", ...) + ".tmp",
// never opening one that exists and never taking the name avoid (in any
// case); writes the bytes, pushes them to the disk and closes it. On failure
// nothing is left behind and reason says why, in Spanish.
bool WriteTempFile(const std::string& dir, std::string_view bytes, const std::string& avoid,
                   std::string& tempPath, std::string& reason);
bool WriteTempFile(const std::string& dir, const ByteSource& bytes, const std::string& avoid,
                   std::string& tempPath, std::string& reason);

// The reason of a failed file operation, in Spanish, never in the system's
// English: a code without a text of its own is told by its number.
std::string ReasonOf(std::error_code ec);

bool RemoveFile(const std::string& path, std::string& reason);
bool RenameFile(const std::string& from, const std::string& to, std::string& reason);

// Equal ignoring the case of ASCII letters: names that one file system holds
// apart and another takes for one file.
bool SameNameIgnoringCase(std::string_view a, std::string_view b);

} // namespace cintal::detail
