#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace cintal::cli {

// `wav CINTA SALIDA.wav [--rate HZ]`: the sound of a tape (TZX or TAP) as a
// new WAV file.
int WavCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

} // namespace cintal::cli
