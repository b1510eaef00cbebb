#pragma once
// A tape named by a plain path or by "ARCHIVO.zip|INTERIOR", read the same
// way by every command that reads one.

#include <string>

namespace cintal {
class TZXTape;
}

namespace cintal::cli {

// The file's bytes, from disk or from inside its archive. False with the
// reason when they can't be had.
bool BytesAt(const std::string& path, std::string& bytes, std::string& why);

// Reads the tape; FileName is the path given. A plain file is read by the
// engine, which tells its own troubles; a file inside an archive that can't
// be had gives false with the reason.
bool ReadTapeAt(const std::string& path, TZXTape& tape, std::string& why);

// The archive that holds the file, or empty for a plain path.
std::string ArchiveOf(const std::string& path);

} // namespace cintal::cli
