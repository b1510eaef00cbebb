#pragma once
// cintal-cli run in the test's process: its exit status and what it wrote.

#include "cli/Commands.h"

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

} // namespace cintal::test
