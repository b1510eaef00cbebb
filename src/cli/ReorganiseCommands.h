#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace cintal::cli {

// `reorganise FOLDER [--subfolder NAME] [--order single|initial|year|publisher]
// [--held-only] [--dry-run] [--no-catalogue] [--yes] [--db FILE]`: the
// catalogue's titles, with their side files, moved into a new tree below
// FOLDER. The plan with --dry-run, otherwise the counters.
int Reorganise(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

} // namespace cintal::cli

namespace cintal::cli {

// `rename --file FILEID NEW [--db FILE]`: the file of that row, with all its
// side files, renamed to the base name NEW, and its row with it.
int Rename(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

} // namespace cintal::cli
