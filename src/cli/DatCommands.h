#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace cintal::cli {

// "dat add FILE", "dat list", "dat remove ID", "identify", "report --dat NAME"
// and "tidy --dat NAME": the DAT files and what the collection is by them.
bool IsDatCommand(const std::string& command);
int DatCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

} // namespace cintal::cli
