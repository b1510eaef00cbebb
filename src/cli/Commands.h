#pragma once

#include "tape/Prompt.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace cintal {
class TZXTape;
}

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

// Runs one command line (without the program's name) and returns the exit
// status.
int Run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// The listing of one tape already read, as `list` prints it.
std::string ListTape(TZXTape& tape, const std::string& file);

// A tape text decoded for a terminal: tabs, line ends and backslashes escaped.
std::string Printable(const std::string& cp1252);

} // namespace cintal::cli
