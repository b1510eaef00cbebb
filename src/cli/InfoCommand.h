#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace cintal::cli {

// `info [--set CAMPO=TEXTO]... [--yes] [--db CATÁLOGO] CINTA.tzx`: the archive
// texts of a tape, or those fields changed and the tape saved as "Guardar
// Info" saves it, with the file's catalogue row when a catalogue is given.
int InfoCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

} // namespace cintal::cli
