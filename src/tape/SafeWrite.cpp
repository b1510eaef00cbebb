#include "tape/SafeWrite.h"

#include "platform/FileSync.h"
#include "tape/TZXFunct.h"

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <filesystem>

namespace cintal::detail {

namespace {

FileOps& DiskOps() {
    static FileOps disk;
    return disk;
}

FileOps* current = nullptr;

std::error_code LastError(int fallback) {
    return std::error_code(errno ? errno : fallback, std::generic_category());
}

} // namespace

bool FileOps::Exists(const std::string& path) {
    return FileExists(path);
}

bool FileOps::Read(const std::string& path, std::string& out) {
    return ReadWholeFile(path, out);
}

bool FileOps::Same(const std::string& a, const std::string& b) {
    std::error_code ec;
    return std::filesystem::equivalent(a, b, ec) && !ec;
}

std::vector<std::string> FileOps::List(const std::string& dir) {
    std::vector<std::string> names;
    std::error_code ec;
    std::filesystem::directory_iterator it(dir.empty() ? "." : dir, ec), end;
    for (; !ec && it != end; it.increment(ec))
        names.push_back(it->path().filename().string());
    return names;
}

std::error_code FileOps::CreateNew(const std::string& path, std::string_view bytes) {
    errno = 0;
    // "x": fail rather than open a file that someone else already made.
    std::FILE* f = std::fopen(path.c_str(), "wbx");
    if (!f) return LastError(EIO);
    std::error_code ec;
    if (std::fwrite(bytes.data(), 1, bytes.size(), f) != bytes.size() || !platform::SyncFile(f))
        ec = LastError(EIO);
    if (std::fclose(f) != 0 && !ec) ec = LastError(EIO);
    if (ec) std::remove(path.c_str());
    return ec;
}

std::error_code FileOps::Remove(const std::string& path) {
    std::error_code ec;
    std::filesystem::remove(path, ec);
    return ec;
}

std::error_code FileOps::Rename(const std::string& from, const std::string& to) {
    std::error_code ec;
    std::filesystem::rename(from, to, ec);
    return ec;
}

FileOps& CurrentFileOps() {
    return current ? *current : DiskOps();
}

FileOpsScope::FileOpsScope(FileOps& ops) : previous(current) {
    current = &ops;
}

FileOpsScope::~FileOpsScope() {
    current = previous;
}

std::string ReasonOf(std::error_code ec) {
    if (ec == std::errc::permission_denied || ec == std::errc::operation_not_permitted)
        return "permiso denegado";
    if (ec == std::errc::no_such_file_or_directory) return "no existe";
    if (ec == std::errc::no_space_on_device) return "no queda espacio en el disco";
    if (ec == std::errc::read_only_file_system) return "el disco es de sólo lectura";
    if (ec == std::errc::file_exists) return "ya existe";
    if (ec == std::errc::is_a_directory) return "es una carpeta";
    if (ec == std::errc::not_a_directory) return "la carpeta no existe";
    if (ec == std::errc::io_error) return "error de lectura o escritura en el disco";
    return ec.message();
}

bool SameNameIgnoringCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        char x = a[i], y = b[i];
        if (x >= 'A' && x <= 'Z') x = static_cast<char>(x - 'A' + 'a');
        if (y >= 'A' && y <= 'Z') y = static_cast<char>(y - 'A' + 'a');
        if (x != y) return false;
    }
    return true;
}

bool WriteTempFile(const std::string& dir, std::string_view bytes, const std::string& avoid,
                   std::string& tempPath, std::string& reason) {
    std::time_t now = std::time(nullptr);
    std::tm local{};
    if (std::tm* t = std::localtime(&now)) local = *t;
    char stamp[16];
    std::snprintf(stamp, sizeof stamp, "%02d%02d%02d", local.tm_hour, local.tm_min, local.tm_sec);

    FileOps& ops = CurrentFileOps();
    for (int k = 0; k < 10000; ++k) {
        std::string name = std::string("TMP") + stamp + (k ? "-" + std::to_string(k) : "") + ".tmp";
        tempPath = JoinPath(dir, name);
        if (SameNameIgnoringCase(tempPath, avoid)) continue;
        std::error_code ec = ops.CreateNew(tempPath, bytes);
        if (!ec) return true;
        // A name in use is passed over; anything else ends the attempt.
        if (ec != std::errc::file_exists && !ops.Exists(tempPath)) {
            reason = ReasonOf(ec);
            return false;
        }
    }
    reason = "no hay nombre libre para el archivo temporal";
    return false;
}

bool RemoveFile(const std::string& path, std::string& reason) {
    std::error_code ec = CurrentFileOps().Remove(path);
    if (ec) reason = ReasonOf(ec);
    return !ec;
}

bool RenameFile(const std::string& from, const std::string& to, std::string& reason) {
    std::error_code ec = CurrentFileOps().Rename(from, to);
    if (ec) reason = ReasonOf(ec);
    return !ec;
}

} // namespace cintal::detail
