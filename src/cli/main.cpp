#include "cli/Commands.h"
#include "platform/FileSync.h"
#include "platform/Spanish.h"

#include <QCoreApplication>
#include <iostream>
#include <string_view>

int main(int argc, char** argv) {
    if (argc == 2 && std::string_view(argv[1]) == "--version") {
        std::cout << "cintal-cli " CINTAL_VERSION "\n";
        return 0;
    }
    // For the program's folder, which decides where the catalogue lies by default.
    QCoreApplication app(argc, argv);
    cintal::UseSpanish();
    cintal::UseFileSync();
    std::ios::sync_with_stdio(false);
    std::vector<std::string> args(argv + 1, argv + argc);
    int status = cintal::cli::Run(args, std::cout, std::cerr);
    std::cout.flush();
    return status;
}
