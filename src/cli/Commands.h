#pragma once

#include "cli/TapeCommands.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace cintal::cli {

// Runs one command line (without the program's name) and returns the exit
// status.
int Run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

} // namespace cintal::cli
