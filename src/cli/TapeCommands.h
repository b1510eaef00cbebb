#pragma once
// The commands that only read tapes. They need nothing but the engine, so
// that cintal-cli answers them alone, at once, without loading the toolkit
// the rest of the command set runs on.

#include "cli/Arguments.h"
#include "tape/Prompt.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace cintal {
class TZXTape;
struct ArchiveInfo;
} // namespace cintal

namespace cintal::cli {

// Boxes become lines on standard error; questions are answered from the
// command's flags.
class CliPrompt : public Prompt {
public:
    CliPrompt(std::ostream& err, bool yes) : err(err), yes(yes) {}
    Button Show(const Message& message) override;

private:
    std::ostream& err;
    bool yes;
};

// Whether RunTapeCommand answers this command line (without the program's
// name): list, compare, basic, extract, screen into a .scr file, and info
// without --set.
bool IsTapeCommand(const std::vector<std::string>& args);
int RunTapeCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// Read-only commands may leave the last tape they read unfreed: for a
// program that ends right after them.
void KeepTapesAtExit();

// The listing of one tape already read, as `list` prints it.
std::string ListTape(TZXTape& tape, const std::string& file);

// The archive information's texts, one "info" line each, as list and info
// print them.
std::string ArchiveLines(const ArchiveInfo& info);

// The options and words info takes, with or without --set.
const CommandSpec& InfoSpec();

// A tape text decoded for a terminal: tabs, line ends and backslashes escaped.
std::string Printable(const std::string& cp1252);

} // namespace cintal::cli
