#pragma once
// Files inside .zip, .7z and .rar archives, read into memory and never
// written back. Standard C++ and libarchive only, so that a command that
// needs no toolkit can read a zipped tape too.
//
// A file inside an archive is written "ARCHIVO.zip|INTERIOR": the archive's
// path, a vertical bar, the inner path with "/". JoinInner and SplitInner are
// the one place that builds and reads that form.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace cintal::platform {

// An inner file larger than this is not read.
inline constexpr std::int64_t kInnerLimit = 64 * 1024 * 1024;

struct InnerLocation {
    std::string archive; // the archive's path on disk
    std::string inner;   // the path inside it, with "/"
};

std::string JoinInner(const std::string& archive, const std::string& inner);
// The archive and inner path that text names, or nothing when text is a plain
// path: a file that exists under the whole text is plain, whatever bars its
// name holds; else the first bar whose left side is an existing file splits.
std::optional<InnerLocation> SplitInner(const std::string& text);

// Whether the file's name says it is an archive the reader opens.
bool IsArchiveName(const std::string& name);

// A warning about an archive or a file inside one, by its path.
struct ArchiveWarning {
    std::string path; // the archive, or "ARCHIVO.zip|INTERIOR"
    std::string text;
};

// Reads the archive once. Every entry whose inner path `wanted` accepts is
// read into memory and given to `take`; an entry that is encrypted, too
// large, absurdly compressed or has an unsafe path is warned about instead.
// False, with a warning, when the archive can't be opened or is damaged
// (entries taken before the damage stay taken).
bool ReadArchive(const std::string& archive, const std::function<bool(const std::string&)>& wanted,
                 const std::function<void(const std::string& inner, std::string& bytes)>& take,
                 std::vector<ArchiveWarning>& warnings);

// The bytes of one file: a plain path, or "ARCHIVO.zip|INTERIOR". False, with
// the reason in Spanish, when it can't be read.
bool ReadFileOrInner(const std::string& path, std::string& bytes, std::string& why);

// The inner path as a relative path that stays under any folder: no leading
// "/", no "." or ".." parts, "\" read as "/". Empty when nothing safe is left.
std::string SafeInnerPath(const std::string& inner);

// Writes the inner file under folder, at its safe inner path, never over an
// existing file; written is the path made. False, with the reason.
bool ExtractInner(const InnerLocation& where, const std::string& folder, std::string& written,
                  std::string& why);

} // namespace cintal::platform
