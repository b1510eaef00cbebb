#include "cli/TapeCommands.h"
#include "platform/FileMap.h"
#include "platform/FileSync.h"
#include "platform/HandOver.h"

#include <iostream>
#include <string_view>

// The commands that only read tapes run here, on the engine alone; every
// other one runs in cintal-cli-qt, the whole command set on Qt, which stands
// beside this program and takes over with the same arguments.
int main(int argc, char** argv) {
    if (argc == 2 && std::string_view(argv[1]) == "--version") {
        std::cout << "cintal-cli " CINTAL_VERSION "\n";
        return 0;
    }
    std::vector<std::string> args(argv + 1, argv + argc);
    if (!cintal::cli::IsTapeCommand(args)) return cintal::platform::HandOver("cintal-cli-qt", argv);
    cintal::UseFileSync();
    cintal::UseFileMap();
    std::ios::sync_with_stdio(false);
    cintal::cli::KeepTapesAtExit();
    const int status = cintal::cli::RunTapeCommand(args, std::cout, std::cerr);
    std::cout.flush();
    return status;
}
