#pragma once

#include "cli/Arguments.h"
#include "cli/Commands.h"

#include <initializer_list>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

class QString;

namespace cintal::cli {

// Opens the catalogue for a command (the program's own when db is empty),
// or says on err why it can't.
bool OpenCatalogue(QString db, std::ostream& err);

// The opening of a command that changes rows it names by their ids: the
// arguments read, each id a positive number, the questions answered by
// --yes and the catalogue open. It lives as long as the command, and the
// answers with it.
class CatalogueChange {
public:
    explicit CatalogueChange(std::ostream& err) : err(err) {}
    // -1 to go on, else the exit status, with the reason on err.
    int Open(const std::vector<std::string>& args, const CommandSpec& spec,
             std::initializer_list<const char*> idOptions, std::ostream& out);

    Arguments a;
    // The ids of idOptions, in their order.
    std::vector<long long> ids;

private:
    std::ostream& err;
    std::optional<CliPrompt> prompt;
    std::optional<PromptScope> scope;
};

// `init [--db FILE]`: an empty catalogue, never over an existing file.
int Init(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
// `titles [--db FILE]`: the title rows as the grid shows them, in name order.
int Titles(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// `add --title ID FILE [--db FILE]`: a file added to a title, as by hand.
int Add(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// `scan FOLDER [--db FILE]`: the disk scan, its counters on standard output
// and its warnings on standard error.
int Scan(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// `import FOLDER [--db FILE]`: the listing import from the saved pages below
// the folder, its counters on standard output and its warnings on standard
// error.
int Import(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// "hashes [--db FILE]": the hashes of every file row, taken again first for
// the files that changed on disk.
int Hashes(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
// "duplicates [--db FILE]": the groups of rows with the same content.
int Duplicates(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

} // namespace cintal::cli
