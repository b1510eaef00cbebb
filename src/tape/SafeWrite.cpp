#include "tape/SafeWrite.h"

#include "tape/TZXFunct.h"

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <string>
#include <utility>

namespace cintal::detail {

namespace {

FileMap mapFile = nullptr;

class Disk : public FileOps {
public:
    bool Load(const std::string& path, std::shared_ptr<const void>& keep,
              std::string_view& bytes) override {
        return (mapFile && mapFile(path, keep, bytes)) || FileOps::Load(path, keep, bytes);
    }
};

FileOps& DiskOps() {
    static Disk disk;
    return disk;
}

FileOps* current = nullptr;

bool FlushBuffer(std::FILE* file) {
    return std::fflush(file) == 0;
}

FileFlush flushFile = &FlushBuffer;

std::error_code LastError(int fallback) {
    return std::error_code(errno ? errno : fallback, std::generic_category());
}

std::error_code WriteNew(const std::string& path, const ByteSource& bytes) {
    errno = 0;
    // "x": fail rather than open a file that someone else already made.
    std::FILE* f = std::fopen(path.c_str(), "wbx");
    if (!f) return LastError(EIO);
    std::error_code ec;
    for (std::string_view piece;;) {
        if (!bytes(piece)) {
            ec = std::make_error_code(std::errc::operation_canceled);
            break;
        }
        errno = 0;
        if (piece.empty()) break;
        if (std::fwrite(piece.data(), 1, piece.size(), f) != piece.size()) {
            ec = LastError(EIO);
            break;
        }
    }
    if (!ec && !flushFile(f)) ec = LastError(EIO);
    if (std::fclose(f) != 0 && !ec) ec = LastError(EIO);
    if (ec) std::remove(path.c_str());
    return ec;
}

} // namespace

bool FileOps::Exists(const std::string& path) {
    return FileExists(path);
}

bool FileOps::Read(const std::string& path, std::string& out) {
    return ReadWholeFile(path, out);
}

bool FileOps::Load(const std::string& path, std::shared_ptr<const void>& keep,
                   std::string_view& bytes) {
    auto read = std::make_shared<std::string>();
    if (!Read(path, *read)) return false;
    bytes = *read;
    keep = std::move(read);
    return true;
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
    bool given = false;
    return WriteNew(path, [&](std::string_view& piece) {
        piece = given ? std::string_view() : bytes;
        given = true;
        return true;
    });
}

std::error_code FileOps::CreateNewFrom(const std::string& path, const ByteSource& bytes) {
    return WriteNew(path, bytes);
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

void SetFileFlush(FileFlush flush) {
    flushFile = flush ? flush : &FlushBuffer;
}

void SetFileMap(FileMap map) {
    mapFile = map;
}

FileOps& CurrentFileOps() {
    return current ? *current : DiskOps();
}

FileOpsScope::FileOpsScope(FileOps& ops) : StandInScope(current, ops) {}

std::string ReasonOf(std::error_code ec) {
    // The system's own texts are in English whatever the user's language.
    using std::errc;
    static const std::pair<errc, const char*> kReasons[] = {
        {errc::permission_denied, "permiso denegado"},
        {errc::operation_not_permitted, "permiso denegado"},
        {errc::no_such_file_or_directory, "no existe"},
        {errc::no_space_on_device, "no queda espacio en el disco"},
        {errc::read_only_file_system, "el disco es de sólo lectura"},
        {errc::file_exists, "ya existe"},
        {errc::is_a_directory, "es una carpeta"},
        {errc::not_a_directory, "la carpeta no existe"},
        {errc::io_error, "error de lectura o escritura en el disco"},
        {errc::directory_not_empty, "la carpeta no está vacía"},
        {errc::cross_device_link, "está en otro disco"},
        {errc::file_too_large, "el archivo es demasiado grande"},
        {errc::filename_too_long, "el nombre es demasiado largo"},
        {errc::too_many_files_open, "hay demasiados archivos abiertos"},
        {errc::too_many_files_open_in_system, "hay demasiados archivos abiertos"},
        {errc::too_many_links, "hay demasiados enlaces"},
        {errc::too_many_symbolic_link_levels, "hay demasiados enlaces simbólicos"},
        {errc::not_enough_memory, "no queda memoria"},
        {errc::device_or_resource_busy, "el dispositivo o el recurso está ocupado"},
        {errc::text_file_busy, "el archivo está en uso"},
        {errc::resource_unavailable_try_again, "el recurso no está disponible ahora"},
        {errc::no_such_device, "el dispositivo no existe"},
        {errc::no_such_device_or_address, "el dispositivo no existe"},
        {errc::invalid_argument, "argumento no válido"},
        {errc::bad_file_descriptor, "el archivo no está abierto"},
        {errc::broken_pipe, "la tubería está rota"},
        {errc::interrupted, "la operación se ha interrumpido"},
        {errc::function_not_supported, "el sistema no admite esta operación"},
        {errc::operation_not_supported, "el sistema no admite esta operación"},
        {errc::not_supported, "el sistema no admite esta operación"},
        {errc::timed_out, "se ha agotado el tiempo de espera"},
        {errc::invalid_seek, "no se puede posicionar en el archivo"},
        {errc::executable_format_error, "no es un programa que se pueda ejecutar"},
        {errc::argument_list_too_long, "la lista de argumentos es demasiado larga"},
        {errc::value_too_large, "el valor es demasiado grande"},
        {errc::no_lock_available, "no se puede bloquear el archivo"},
        {errc::resource_deadlock_would_occur, "no se puede bloquear el archivo"},
        {errc::connection_refused, "conexión rechazada"},
        {errc::connection_reset, "la conexión se ha cortado"},
        {errc::network_unreachable, "no hay conexión con la red"},
        {errc::host_unreachable, "no hay conexión con el equipo"},
        {errc::no_child_process, "no existe el proceso"},
        {errc::no_such_process, "no existe el proceso"},
        {errc::illegal_byte_sequence, "el nombre tiene caracteres no válidos"},
        {errc::operation_canceled, "la operación se ha cancelado"},
    };
    if (!ec) return "sin error";
    for (const auto& [code, text] : kReasons)
        if (ec == code) return text;
    return "error del sistema número " + std::to_string(ec.value());
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

namespace {

template <class Create>
bool WriteTemp(const std::string& dir, const std::string& avoid, std::string& tempPath,
               std::string& reason, Create create) {
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
        std::error_code ec = create(ops, tempPath);
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

} // namespace

bool WriteTempFile(const std::string& dir, std::string_view bytes, const std::string& avoid,
                   std::string& tempPath, std::string& reason) {
    return WriteTemp(dir, avoid, tempPath, reason, [&](FileOps& ops, const std::string& path) {
        return ops.CreateNew(path, bytes);
    });
}

bool WriteTempFile(const std::string& dir, const ByteSource& bytes, const std::string& avoid,
                   std::string& tempPath, std::string& reason) {
    return WriteTemp(dir, avoid, tempPath, reason, [&](FileOps& ops, const std::string& path) {
        return ops.CreateNewFrom(path, bytes);
    });
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
