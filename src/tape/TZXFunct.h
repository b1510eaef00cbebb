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
// The folder: what stands before the last separator. Empty for a file at the
// root ("/juego.tzx") as for a bare name: to build a path beside a file, use
// FolderOf.
std::string DirOf(std::string_view path);
// The folder as a path that leads to it: DirOf, except that the root keeps
// its separator ("/juego.tzx" gives "/"). Empty only for a bare name.
std::string FolderOf(std::string_view path);
// True when the path names an existing file. Never throws.
bool FileExists(std::string_view path);

// Reads a whole file; false when it can't be opened or read.
bool ReadWholeFile(const std::string& path, std::string& out);

// A folder and a name joined with one separator: "/" and "juego.tmp" give
// "/juego.tmp". An empty folder is the current one.
std::string JoinPath(const std::string& dir, const std::string& name);

// A block kind as the listings show it: "0x5A".
std::string Hex2(int id);

// The separator the helpers put between a folder and a name.
inline constexpr char kPathSep = '/';

} // namespace cintal
