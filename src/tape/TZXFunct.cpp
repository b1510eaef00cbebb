#include "tape/TZXFunct.h"

#include <algorithm>
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
    static constexpr char digits[] = "0123456789ABCDEF";
    return {'0', 'x', digits[(id >> 4) & 0xF], digits[id & 0xF]};
}

bool ReadWholeFile(const std::string& path, std::string& out) {
    out.clear();
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (!f) return false;
    // The size is only a hint: the loop reads what the file really holds.
    std::error_code ec;
    auto hint = std::filesystem::file_size(path, ec);
    // Read straight into the string, one piece more than the size says so
    // that the end is seen.
    std::size_t have = 0, want = 1 << 16;
    if (!ec && hint < (std::uintmax_t(1) << 40)) want = static_cast<std::size_t>(hint) + 1;
    bool ok = true;
    for (;;) {
        out.resize(have + want);
        const std::size_t n = std::fread(out.data() + have, 1, want, f);
        have += n;
        if (n < want) {
            ok = !std::ferror(f);
            break;
        }
        want = std::max<std::size_t>(want, 1 << 16);
    }
    out.resize(have);
    std::fclose(f);
    if (!ok) out.clear();
    return ok;
}

} // namespace cintal
