// cintal-cli as a collector runs it from a shell, timed as whole processes:
// the start of a tape command on a tape of two blocks, where nothing but the
// start counts, and the listing of a tape of 30,000 blocks side by side with
// tzxlist (from fuse-emulator-utils), each run of one the same moment as a
// run of the other so that the load of a shared machine falls on both.
// The comparison is skipped where tzxlist isn't installed.

#include "SyntheticTape.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <vector>

extern char** environ;

namespace fs = std::filesystem;
using namespace cintal;
using namespace cintal::bench;

namespace {

constexpr const char* kTzxlist = "/usr/bin/tzxlist";

struct TempTape {
    fs::path path;
    explicit TempTape(const Bytes& bytes) {
        std::string tmpl = (fs::temp_directory_path() / "cintal-cli-bench-XXXXXX").string();
        if (!mkdtemp(tmpl.data())) return;
        path = fs::path(tmpl) / "cinta.tzx";
        std::ofstream(path, std::ios::binary).write(bytes.data(), std::streamsize(bytes.size()));
    }
    ~TempTape() {
        std::error_code ec;
        if (!path.empty()) fs::remove_all(path.parent_path(), ec);
    }
};

// Runs a program to its end with its output thrown away; its time in
// seconds, or a negative number when it didn't run or failed.
double Run(std::vector<std::string> args) {
    std::vector<char*> argv;
    for (std::string& a : args)
        argv.push_back(a.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    const auto start = std::chrono::steady_clock::now();
    pid_t pid = 0;
    int status = 0;
    const bool ran = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ) == 0 &&
                     waitpid(pid, &status, 0) == pid;
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    posix_spawn_file_actions_destroy(&actions);
    return ran && WIFEXITED(status) && WEXITSTATUS(status) == 0 ? took.count() : -1;
}

void BM_TapeCommandStart(benchmark::State& state) {
    TempTape tape(TzxHeader(1, 20) + Standard(RomHeader(RomType::Program, "juego", 10, 10, 10)) +
                  Standard(RomData(Bytes(10, '\x01'))));
    for (auto _ : state) {
        const double took = Run({CINTAL_CLI, "list", tape.path.string()});
        if (took < 0) {
            state.SkipWithError("cintal-cli list failed");
            break;
        }
        state.SetIterationTime(took);
    }
}

void BM_ListAgainstTzxlist(benchmark::State& state) {
    if (!fs::exists(kTzxlist)) {
        state.SkipWithError("tzxlist is not installed");
        return;
    }
    TempTape tape(SyntheticTape(state.range(0)));
    double cintal = 0, tzxlist = 0;
    for (auto _ : state) {
        const double a = Run({CINTAL_CLI, "list", tape.path.string()});
        const double b = Run({kTzxlist, tape.path.string()});
        if (a < 0 || b < 0) {
            state.SkipWithError(a < 0 ? "cintal-cli list failed" : "tzxlist failed");
            break;
        }
        cintal += a;
        tzxlist += b;
        state.SetIterationTime(a);
    }
    const double n = static_cast<double>(state.iterations());
    state.counters["cintal_ms"] = 1e3 * cintal / n;
    state.counters["tzxlist_ms"] = 1e3 * tzxlist / n;
    state.counters["times_faster"] = cintal > 0 ? tzxlist / cintal : 0;
}

} // namespace

BENCHMARK(BM_TapeCommandStart)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ListAgainstTzxlist)->Arg(30000)->UseManualTime()->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
