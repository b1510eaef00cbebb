#pragma once
// Path helpers shared by the whole program. Paths use "/" (and "\" too when
// built for Windows).

#include <string>
#include <string_view>

namespace cintal {

// The file's name without folder or extension.
std::string FileNameOf(std::string_view path);
// What follows the last "." (not counting a "." in first place), in its case.
std::string ExtensionOf(std::string_view path);
// The folder: what stands before the last separator.
std::string DirOf(std::string_view path);
// True when the path names an existing file. Never throws.
bool FileExists(std::string_view path);

// Reads a whole file; false when it can't be opened or read.
bool ReadWholeFile(const std::string& path, std::string& out);

// The separator the helpers put between a folder and a name.
inline constexpr char kPathSep = '/';

} // namespace cintal
