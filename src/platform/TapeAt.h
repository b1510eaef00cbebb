#pragma once
// A tape named by a plain path or by "ARCHIVO.zip|INTERIOR", read the same
// way by every program and window that reads one.

#include "tape/Content.h"

#include <optional>
#include <string>

namespace cintal {
class TZXTape;
}

namespace cintal::platform {

// Reads the tape; FileName is the path given. A plain file is read by the
// engine, which tells its own troubles; a file inside an archive that can't
// be had gives false with the reason.
bool ReadTapeAt(const std::string& path, TZXTape& tape, std::string& why);

// The first screen of the file, plain or inside an archive; nothing when it
// can't be read or holds none.
std::optional<Bytes> ScreenAt(const std::string& path);

} // namespace cintal::platform
