#include "platform/Archive.h"

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <system_error>

namespace cintal::platform {

namespace fs = std::filesystem;

namespace {

// Below this an inner file is read whatever its ratio: small files of zeros
// compress very well and are harmless.
constexpr std::int64_t kRatioFloor = 1024 * 1024;
// Tapes shrink to a half or a tenth; two hundredfold is no tape.
constexpr std::int64_t kRatioLimit = 200;

struct Closer {
    void operator()(archive* a) const { archive_read_free(a); }
};
using Reader = std::unique_ptr<archive, Closer>;

std::string Lower(std::string s) {
    for (char& c : s)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return s;
}

bool IsFile(const std::string& path) {
    std::error_code ec;
    return fs::is_regular_file(fs::path(path), ec);
}

std::int64_t SizeOf(const std::string& path) {
    std::error_code ec;
    const auto size = fs::file_size(fs::path(path), ec);
    return ec ? 0 : static_cast<std::int64_t>(size);
}

Reader OpenReader(const std::string& archive) {
    Reader a(archive_read_new());
    archive_read_support_format_zip(a.get());
    archive_read_support_format_7zip(a.get());
    archive_read_support_format_rar(a.get());
    archive_read_support_format_rar5(a.get());
    if (archive_read_open_filename(a.get(), archive.c_str(), 64 * 1024) != ARCHIVE_OK) return {};
    return a;
}

std::string InnerName(archive_entry* e) {
    const char* utf8 = archive_entry_pathname_utf8(e);
    std::string name = utf8 ? utf8 : (archive_entry_pathname(e) ? archive_entry_pathname(e) : "");
    std::replace(name.begin(), name.end(), '\\', '/');
    return name;
}

bool Unsafe(const std::string& inner) {
    return inner.empty() || SafeInnerPath(inner) != inner;
}

std::string Bytes(std::int64_t n) {
    return std::to_string(n) + " bytes";
}

} // namespace

std::string JoinInner(const std::string& archive, const std::string& inner) {
    return archive + '|' + inner;
}

std::optional<InnerLocation> SplitInner(const std::string& text) {
    if (text.find('|') == std::string::npos || IsFile(text)) return std::nullopt;
    for (std::size_t bar = text.find('|'); bar != std::string::npos;
         bar = text.find('|', bar + 1)) {
        const std::string left = text.substr(0, bar);
        if (IsFile(left)) return InnerLocation{left, text.substr(bar + 1)};
    }
    return std::nullopt;
}

bool IsArchiveName(const std::string& name) {
    const std::string lower = Lower(name);
    for (const char* ext : {".zip", ".7z", ".rar"}) {
        const std::string e = ext;
        if (lower.size() > e.size() && lower.compare(lower.size() - e.size(), e.size(), e) == 0)
            return true;
    }
    return false;
}

std::string SafeInnerPath(const std::string& inner) {
    std::string safe, part;
    auto flush = [&] {
        if (part.empty() || part == "." || part == "..") {
            part.clear();
            return;
        }
        if (!safe.empty()) safe += '/';
        safe += part;
        part.clear();
    };
    for (char c : inner) {
        if (c == '/' || c == '\\')
            flush();
        else
            part += c;
    }
    flush();
    // A part of ".." anywhere makes the whole path suspect: nothing is kept.
    std::string check = inner;
    std::replace(check.begin(), check.end(), '\\', '/');
    if (("/" + check + "/").find("/../") != std::string::npos) return {};
    return safe;
}

bool ReadArchive(const std::string& archive, const std::function<bool(const std::string&)>& wanted,
                 const std::function<void(const std::string& inner, std::string& bytes)>& take,
                 std::vector<ArchiveWarning>& warnings) {
    Reader a = OpenReader(archive);
    if (!a) {
        warnings.push_back({archive, "el archivo comprimido está dañado o no se reconoce"});
        return false;
    }
    const std::int64_t archiveSize = std::max<std::int64_t>(SizeOf(archive), 1);
    archive_entry* e = nullptr;
    bool warnedEncrypted = false;
    for (;;) {
        const int r = archive_read_next_header(a.get(), &e);
        if (r == ARCHIVE_EOF) return true;
        if (r < ARCHIVE_WARN) {
            if (archive_read_has_encrypted_entries(a.get()) > 0)
                warnings.push_back({archive, "el archivo comprimido está cifrado: no se lee"});
            else
                warnings.push_back({archive, "el archivo comprimido está dañado"});
            return false;
        }
        if (archive_entry_filetype(e) != AE_IFREG) continue;
        const std::string inner = InnerName(e);
        if (!wanted(inner)) continue;
        const std::string where = JoinInner(archive, inner);
        if (Unsafe(inner)) {
            warnings.push_back({where, "la ruta interior no es válida: no se lee"});
            continue;
        }
        if (archive_entry_is_encrypted(e)) {
            if (!warnedEncrypted)
                warnings.push_back({archive, "el archivo comprimido está cifrado: no se lee"});
            warnedEncrypted = true;
            continue;
        }
        const std::int64_t declared = archive_entry_size_is_set(e) ? archive_entry_size(e) : 0;
        auto tooLarge = [&](std::int64_t size) {
            if (size > kInnerLimit) {
                warnings.push_back(
                    {where, "ocupa más de 64 MB descomprimido (" + Bytes(size) + "): no se lee"});
                return true;
            }
            if (size > kRatioFloor && size / archiveSize > kRatioLimit) {
                warnings.push_back({where, "se descomprime a un tamaño desproporcionado (" +
                                               Bytes(size) + "): no se lee"});
                return true;
            }
            return false;
        };
        if (tooLarge(declared)) continue;
        // The declared size may lie: the reading itself stops at the limits.
        std::string bytes;
        bytes.reserve(static_cast<std::size_t>(std::clamp<std::int64_t>(declared, 0, kInnerLimit)));
        char buffer[64 * 1024];
        bool failed = false, refused = false;
        for (;;) {
            const la_ssize_t n = archive_read_data(a.get(), buffer, sizeof buffer);
            if (n == 0) break;
            if (n < 0) {
                failed = true;
                break;
            }
            bytes.append(buffer, static_cast<std::size_t>(n));
            if (tooLarge(static_cast<std::int64_t>(bytes.size()))) {
                refused = true;
                break;
            }
        }
        if (refused) continue;
        if (failed) {
            warnings.push_back({archive, "el archivo comprimido está dañado"});
            return false;
        }
        take(inner, bytes);
    }
}

bool ReadFileOrInner(const std::string& path, std::string& bytes, std::string& why) {
    const std::optional<InnerLocation> at = SplitInner(path);
    if (!at) {
        std::ifstream in(fs::path(path), std::ios::binary);
        if (!in) {
            why = "no se puede leer el archivo";
            return false;
        }
        bytes.assign(std::istreambuf_iterator<char>(in), {});
        if (in.bad()) {
            why = "no se puede leer el archivo";
            return false;
        }
        return true;
    }
    std::vector<ArchiveWarning> warnings;
    bool found = false;
    const bool whole = ReadArchive(
        at->archive, [&](const std::string& inner) { return !found && inner == at->inner; },
        [&](const std::string&, std::string& read) {
            bytes.swap(read);
            found = true;
        },
        warnings);
    if (found) return true;
    // What the reader said of this file, or of the whole archive.
    for (const ArchiveWarning& w : warnings) {
        if (w.path == path || w.path == at->archive) {
            why = w.text;
            return false;
        }
    }
    why = whole ? "no está dentro del archivo comprimido" : "el archivo comprimido está dañado";
    return false;
}

bool ExtractInner(const InnerLocation& where, const std::string& folder, std::string& written,
                  std::string& why) {
    const std::string safe = SafeInnerPath(where.inner);
    if (safe.empty()) {
        why = "la ruta interior no es válida";
        return false;
    }
    std::string bytes;
    if (!ReadFileOrInner(JoinInner(where.archive, where.inner), bytes, why)) return false;
    const fs::path target = fs::path(folder) / fs::path(safe);
    std::error_code ec;
    if (fs::exists(target, ec)) {
        why = "ya existe " + target.string() + "; no se sobrescribe";
        return false;
    }
    fs::create_directories(target.parent_path(), ec);
    std::ofstream out(target, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.flush();
    if (!out) {
        why = "no se puede escribir " + target.string();
        return false;
    }
    written = target.string();
    return true;
}

} // namespace cintal::platform
