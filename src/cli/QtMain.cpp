#include "cli/Commands.h"
#include "platform/FileSync.h"
#include "platform/Spanish.h"

#include <QCoreApplication>
#include <iostream>

int main(int argc, char** argv) {
    // Only for the program's folder, where the catalogue lies by default.
    QCoreApplication app(argc, argv);
    cintal::UseSpanish();
    cintal::UseFileSync();
    std::ios::sync_with_stdio(false);
    std::vector<std::string> args(argv + 1, argv + argc);
    int status = cintal::cli::Run(args, std::cout, std::cerr);
    std::cout.flush();
    return status;
}
