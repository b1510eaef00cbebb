#pragma once
// Writing beside and renaming into place, so that a user's file is never
// half-written. Internal to the engine.

#include <string>
#include <string_view>

namespace cintal::detail {

// Creates a new file in dir named prefix + HHMMSS (+ "-1", "-2", ...) + ".tmp",
// never opening one that exists and never taking the name avoid; writes the
// bytes, pushes them to the disk and closes it. On failure nothing is left
// behind and reason says why, in Spanish.
bool WriteTempFile(const std::string& dir, std::string_view bytes, const std::string& avoid,
                   std::string& tempPath, std::string& reason);

// A folder and a name joined; an empty folder is the current one.
std::string JoinPath(const std::string& dir, const std::string& name);

// The reason of a failed file operation, in Spanish.
std::string ReasonOf(int err);

bool RemoveFile(const std::string& path, std::string& reason);
bool RenameFile(const std::string& from, const std::string& to, std::string& reason);

} // namespace cintal::detail
