#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace cintal::cli {

// `purge [--dry-run] [--yes] [--db FILE]`: lists the rows whose file is
// missing and, with --yes, deletes them.
int Purge(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// `merge --from ID --into ID [--db FILE]`: moves the files of one title to
// another and deletes the first.
int Merge(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

} // namespace cintal::cli
