#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace cintal {
class TZXTape;
}

namespace cintal::cli {

// A Spectrum screen as a 256x192 PNG picture, or nothing when it can't be made.
using PngMaker = std::string (*)(const std::string& screen);

// Reads a TZX tape, or a TAP file turned into one in memory. False, with the
// reason on standard error, when nothing could be read.
bool LoadTape(const std::string& file, TZXTape& tape, std::ostream& err);

// `screen ARCHIVO SALIDA.scr|SALIDA.png`: the first screen of a tape or a
// snapshot, as a Spectrum screen file or, through png, as a PNG picture.
int ScreenCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                  PngMaker png);

// `basic CINTA [BLOQUE]`: the listing of the tape's first BASIC program, or
// of the program in block BLOQUE (its header's number will do too).
int BasicCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// `extract CINTA BLOQUE SALIDA`: a block's content written to a new file.
int ExtractCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

} // namespace cintal::cli
