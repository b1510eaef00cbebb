// cintal-cli as installed, run as a program: it answers the tape commands on
// its own and hands every other one to the program beside it, and either way
// the outputs and the exit status are those of the whole command set.

#include "../tape/TestSupport.h"
#include "CliRun.h"

#include <cstdlib>

namespace cintal::test {
namespace {

Result Program(const std::vector<std::string>& args, const TempDir& dir) {
    std::string line = "\"" CINTAL_CLI "\"";
    for (const std::string& a : args)
        line += " \"" + a + "\"";
    line += " >\"" + dir.File("out") + "\" 2>\"" + dir.File("err") + "\"";
    int status = std::system(line.c_str());
#ifndef _WIN32
    status = status >> 8 & 0xFF; // the exit status out of the wait status
#endif
    return {status, ReadFile(dir.File("out")), ReadFile(dir.File("err"))};
}

class ProgramTest : public ::testing::Test, protected Tzx {
protected:
    TempDir dir, outputs;
};

TEST_F(ProgramTest, EveryCommandGivesWhatTheWholeCommandSetGives) {
    const std::string tape = dir.File("juego.tzx");
    WriteFile(
        tape,
        Tape({Std(RomHeader(0, "Juego")), Std(RomData(10)), Archive({{0, "Ca\xF1\xF3n"}})}, 1, 13));
    // Big enough to be mapped rather than read.
    const std::string big = dir.File("grande.tzx");
    WriteFile(big, Tape({Std(RomHeader(3, "Datos")), PureData(Filler(2 << 20)), Pause(0)}));
    const std::vector<std::vector<std::string>> lines = {{"list", tape, dir.File("falta.tzx"), big},
                                                         {"info", tape},
                                                         {"basic", tape},
                                                         {"screen", tape, dir.File("p.scr")},
                                                         {"screen", tape, dir.File("p.png")},
                                                         {"titles", "--db", dir.File("falta.db")},
                                                         {"info", "--set", "iNombre=X", tape},
                                                         {"orden"},
                                                         {}};
    for (const auto& args : lines) {
        SCOPED_TRACE(args.empty() ? "" : args[0]);
        const Result expected = Cli(args), got = Program(args, outputs);
        EXPECT_EQ(got.status, expected.status);
        EXPECT_EQ(got.out, expected.out);
        EXPECT_EQ(got.err, expected.err);
    }
}

} // namespace
} // namespace cintal::test
