#include "cli/Commands.h"

#include <iostream>

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    std::vector<std::string> args(argv + 1, argv + argc);
    int status = cintal::cli::Run(args, std::cout, std::cerr);
    std::cout.flush();
    return status;
}
