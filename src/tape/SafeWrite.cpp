#include "tape/SafeWrite.h"

#include "platform/FileSync.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <system_error>

namespace cintal::detail {

std::string ReasonOf(int err) {
    switch (err) {
    case EACCES:
    case EPERM:
        return "permiso denegado";
    case ENOENT:
        return "no existe";
    case ENOSPC:
        return "no queda espacio en el disco";
    case EROFS:
        return "el disco es de sólo lectura";
    case EEXIST:
        return "ya existe";
    case EISDIR:
        return "es una carpeta";
    case ENOTDIR:
        return "la carpeta no existe";
    case EIO:
        return "error de lectura o escritura en el disco";
    default:
        return std::strerror(err);
    }
}

std::string JoinPath(const std::string& dir, const std::string& name) {
    return dir.empty() ? name : dir + '/' + name;
}

bool WriteTempFile(const std::string& dir, std::string_view bytes, const std::string& avoid,
                   std::string& tempPath, std::string& reason) {
    std::time_t now = std::time(nullptr);
    std::tm local{};
    if (std::tm* t = std::localtime(&now)) local = *t;
    char stamp[16];
    std::snprintf(stamp, sizeof stamp, "%02d%02d%02d", local.tm_hour, local.tm_min, local.tm_sec);

    std::FILE* f = nullptr;
    for (int k = 0; k < 10000 && !f; ++k) {
        std::string name = std::string("TMP") + stamp + (k ? "-" + std::to_string(k) : "") + ".tmp";
        tempPath = JoinPath(dir, name);
        if (tempPath == avoid) continue;
        // "x": fail rather than open a file that someone else already made.
        f = std::fopen(tempPath.c_str(), "wbx");
        if (!f) {
            int err = errno;
            std::error_code ec;
            if (err != EEXIST && !std::filesystem::exists(tempPath, ec)) {
                reason = ReasonOf(err);
                return false;
            }
        }
    }
    if (!f) {
        reason = "no hay nombre libre para el archivo temporal";
        return false;
    }
    bool ok = std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
    int err = ok ? 0 : errno;
    if (ok && !platform::SyncFile(f)) {
        ok = false;
        err = errno;
    }
    if (std::fclose(f) != 0 && ok) {
        ok = false;
        err = errno;
    }
    if (!ok) {
        reason = ReasonOf(err ? err : EIO);
        std::remove(tempPath.c_str());
    }
    return ok;
}

bool RemoveFile(const std::string& path, std::string& reason) {
    std::error_code ec;
    std::filesystem::remove(path, ec);
    if (ec) reason = ReasonOf(ec.value());
    return !ec;
}

bool RenameFile(const std::string& from, const std::string& to, std::string& reason) {
    std::error_code ec;
    std::filesystem::rename(from, to, ec);
    if (ec) reason = ReasonOf(ec.value());
    return !ec;
}

} // namespace cintal::detail
