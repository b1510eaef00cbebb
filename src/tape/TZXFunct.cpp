#include "tape/TZXFunct.h"

#include <cstdio>
#include <filesystem>
#include <system_error>

namespace cintal {

namespace {

bool IsSep(char c) {
#ifdef _WIN32
    return c == '/' || c == '\\';
#else
    return c == '/';
#endif
}

std::size_t LastSep(std::string_view path) {
    for (std::size_t i = path.size(); i-- > 0;)
        if (IsSep(path[i])) return i;
    return std::string_view::npos;
}

// The last "." that is not the path's first character.
std::size_t LastDot(std::string_view path) {
    for (std::size_t i = path.size(); i-- > 1;)
        if (path[i] == '.') return i;
    return std::string_view::npos;
}

} // namespace

std::string FileNameOf(std::string_view path) {
    std::size_t dot = LastDot(path);
    std::string_view stem = dot == std::string_view::npos ? path : path.substr(0, dot);
    std::size_t sep = LastSep(stem);
    return std::string(sep == std::string_view::npos ? stem : stem.substr(sep + 1));
}

std::string ExtensionOf(std::string_view path) {
    std::size_t dot = LastDot(path);
    return dot == std::string_view::npos ? std::string() : std::string(path.substr(dot + 1));
}

std::string DirOf(std::string_view path) {
    std::size_t sep = LastSep(path);
    return sep == std::string_view::npos ? std::string() : std::string(path.substr(0, sep));
}

std::string FolderOf(std::string_view path) {
    std::size_t sep = LastSep(path);
    if (sep == std::string_view::npos) return {};
    // Without its separator the root would be no folder at all, and a
    // drive's root on Windows ("C:") that drive's current folder.
    bool root = sep == 0;
#ifdef _WIN32
    root = root || (sep == 2 && path[1] == ':');
#endif
    return std::string(path.substr(0, root ? sep + 1 : sep));
}

bool FileExists(std::string_view path) {
    if (path.empty()) return false;
    std::error_code ec;
    return std::filesystem::is_regular_file(std::filesystem::path(path), ec) && !ec;
}

std::string JoinPath(const std::string& dir, const std::string& name) {
    if (dir.empty()) return name;
    return IsSep(dir.back()) ? dir + name : dir + kPathSep + name;
}

std::string Hex2(int id) {
    char buf[8];
    std::snprintf(buf, sizeof buf, "0x%02X", id & 0xFF);
    return buf;
}

bool ReadWholeFile(const std::string& path, std::string& out) {
    out.clear();
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (!f) return false;
    // The size is only a hint: the loop reads what the file really holds.
    std::error_code ec;
    auto hint = std::filesystem::file_size(path, ec);
    if (!ec && hint < (std::uintmax_t(1) << 40)) out.reserve(static_cast<std::size_t>(hint));
    char buf[1 << 16];
    bool ok = true;
    for (;;) {
        std::size_t n = std::fread(buf, 1, sizeof buf, f);
        out.append(buf, n);
        if (n < sizeof buf) {
            ok = !std::ferror(f);
            break;
        }
    }
    std::fclose(f);
    if (!ok) out.clear();
    return ok;
}

} // namespace cintal
