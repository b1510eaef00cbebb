#pragma once
// cintal-cli run in the test's process: its exit status and what it wrote.

#include "cli/Commands.h"

#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace cintal::test {

struct Result {
    int status;
    std::string out;
    std::string err;
};

inline Result Cli(const std::vector<std::string>& args) {
    std::ostringstream out, err;
    const int status = cli::Run(args, out, err);
    return {status, out.str(), err.str()};
}

// The same with the time the run took blanked out, as it changes from run to run.
inline Result CliWithoutTime(const std::vector<std::string>& args) {
    Result r = Cli(args);
    r.out = std::regex_replace(r.out, std::regex("Tiempo empleado: \\d+:\\d\\d:\\d\\d\n"),
                               "Tiempo empleado: -\n");
    return r;
}

// What a command wrote, a line each.
inline std::vector<std::string> Split(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t from = 0;
    for (std::size_t at; (at = text.find('\n', from)) != std::string::npos; from = at + 1)
        lines.push_back(text.substr(from, at - from));
    return lines;
}

} // namespace cintal::test
