// Reading and saving speed of the tape engine on synthetic tapes of 1,000,
// 10,000 and 100,000 blocks (and 300,000 for reading, well past the caches),
// and the comparison of two tapes of 10,000 blocks.
// The blocks follow what real tapes hold: header and data pairs with a loading
// screen, turbo and pure data, tones, pauses, groups, texts and custom info,
// about 950 bytes a block on average. Figures per block stay flat across the
// sizes when the time is linear.

#include "TapeBytes.h"
#include "tape/Compare.h"
#include "tape/Prompt.h"
#include "tape/TZXTape.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>

namespace fs = std::filesystem;
using namespace cintal;
using namespace cintal::raw;

namespace {

// Boxes would stop a benchmark; none is expected, and any that comes is
// answered without being kept.
class QuietPrompt : public Prompt {
public:
    Button Show(const Message& m) override { return DefaultAnswer(m.buttons); }
};

Bytes Noise(std::size_t n, std::uint32_t start) {
    Bytes out(n, '\0');
    std::uint32_t s = start | 1;
    for (auto& c : out) {
        s ^= s << 13;
        s ^= s >> 17;
        s ^= s << 5;
        c = static_cast<char>(s);
    }
    return out;
}

Bytes SyntheticTape(std::int64_t blocks) {
    const Bytes pool = Noise(1 << 16, 0x5EED);
    auto code = [&](std::size_t n, std::int64_t i) {
        return pool.substr(static_cast<std::size_t>(i * 131) % (pool.size() - n), n);
    };
    Bytes img = TzxHeader(1, 13);
    img += Archive({{0, "Synthetic"}, {1, "Cintal"}, {3, "2024"}});
    img.reserve(static_cast<std::size_t>(blocks) * 1000);
    for (std::int64_t i = 0; i < blocks; ++i) {
        std::size_t vary = static_cast<std::size_t>(i % 7);
        switch (i % 16) {
        case 0:
            img += Standard(RomHeader(RomType::Program, "loader", 300, 10, 300));
            break;
        case 1:
            img += Standard(RomData(code(300, i)));
            break;
        case 2:
            img += Standard(RomHeader(RomType::Code, "screen", 6912, 16384, 32768));
            break;
        case 3:
            img += Standard(RomData(code(6912, i)));
            break;
        case 4:
            img += Standard(RomHeader(RomType::Code, "code", 2500, 25000, 32768));
            break;
        case 5:
            img += Standard(RomData(code(1000 + vary * 500, i)));
            break;
        case 6:
            img += Pause(1000);
            break;
        case 7:
            img += PureTone(2168, 3223);
            break;
        case 8:
            img += Pulses({667, 735});
            break;
        case 9:
            img += Turbo(RomData(code(2000 + vary * 1000, i)));
            break;
        case 10:
            img += Text("Synthetic tape for the benchmark");
            break;
        case 11:
            img += GroupStart("Level " + std::to_string(i));
            break;
        case 12:
            img += PureData(code(256, i));
            break;
        case 13:
            img += GroupEnd();
            break;
        case 14:
            img += Custom("POKEs", code(40, i));
            break;
        case 15:
            img += MergeMarker(1, 13);
            break;
        }
    }
    return img;
}

// One image per size, made once and shared by the benchmarks.
const Bytes& TapeOf(std::int64_t blocks) {
    static std::map<std::int64_t, Bytes> made;
    auto it = made.find(blocks);
    if (it == made.end()) it = made.emplace(blocks, SyntheticTape(blocks)).first;
    return it->second;
}

void Report(benchmark::State& state, std::size_t bytes, std::int64_t blocks) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(bytes));
    state.counters["blocks"] = benchmark::Counter(static_cast<double>(blocks),
                                                  benchmark::Counter::kIsIterationInvariantRate);
    state.counters["MB"] = static_cast<double>(bytes) / 1e6;
}

void BM_Read(benchmark::State& state) {
    QuietPrompt quiet;
    PromptScope scope(quiet);
    const std::int64_t blocks = state.range(0);
    const Bytes& img = TapeOf(blocks);
    for (auto _ : state) {
        TZXTape t;
        t.ReadImage(img);
        benchmark::DoNotOptimize(t.Blocks().Count());
        if (!t.Status().Whole() || t.Blocks().Count() != blocks + 1) {
            state.SkipWithError("the synthetic tape was not read whole");
            break;
        }
    }
    Report(state, img.size(), blocks);
}

void BM_Image(benchmark::State& state) {
    QuietPrompt quiet;
    PromptScope scope(quiet);
    const std::int64_t blocks = state.range(0);
    TZXTape t;
    t.ReadImage(TapeOf(blocks));
    std::size_t size = 0;
    for (auto _ : state) {
        Bytes img = t.Image(1, 13);
        size = img.size();
        benchmark::DoNotOptimize(img.data());
    }
    Report(state, size, blocks);
}

// A temporary folder that goes away with the benchmark.
struct TempDir {
    fs::path path;
    TempDir() {
        std::string tmpl = (fs::temp_directory_path() / "cintal-bench-XXXXXX").string();
        if (mkdtemp(tmpl.data())) path = tmpl;
    }
    ~TempDir() {
        std::error_code ec;
        if (!path.empty()) fs::remove_all(path, ec);
    }
};

bool WriteFile(const fs::path& path, const Bytes& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(out);
}

// The whole save: assembly, the temporary file flushed to disk, the backup
// and the two renames.
void BM_Save(benchmark::State& state) {
    QuietPrompt quiet;
    PromptScope scope(quiet);
    const std::int64_t blocks = state.range(0);
    const Bytes& img = TapeOf(blocks);
    TempDir dir;
    const fs::path file = dir.path / "cinta.tzx";
    if (dir.path.empty() || !WriteFile(file, img)) {
        state.SkipWithError("no temporary folder");
        return;
    }
    TZXTape t;
    t.FileName = file.string();
    t.ReadTape();
    for (auto _ : state) {
        if (!t.Save(t.FileName, false)) {
            state.SkipWithError("Save failed");
            break;
        }
    }
    Report(state, img.size(), blocks);
}

// Reading from disk, for comparison with the reads from memory.
void BM_ReadFile(benchmark::State& state) {
    QuietPrompt quiet;
    PromptScope scope(quiet);
    const std::int64_t blocks = state.range(0);
    const Bytes& img = TapeOf(blocks);
    TempDir dir;
    const fs::path file = dir.path / "cinta.tzx";
    if (dir.path.empty() || !WriteFile(file, img)) {
        state.SkipWithError("no temporary folder");
        return;
    }
    for (auto _ : state) {
        TZXTape t;
        t.FileName = file.string();
        t.ReadTape();
        benchmark::DoNotOptimize(t.Blocks().Count());
    }
    Report(state, img.size(), blocks);
}

// The clean-up of redundant blocks on a tape made of merges: each merged
// tape left its marker and its archive block, between blocks that stay.
void BM_CleanRedundant(benchmark::State& state) {
    QuietPrompt quiet;
    PromptScope scope(quiet);
    const std::int64_t markers = state.range(0);
    Bytes img = TzxHeader(1, 13);
    for (std::int64_t i = 0; i < markers; ++i) {
        img += MergeMarker(1, 13);
        if (i % 10 == 0) img += Archive({{0, "Parte " + std::to_string(i)}});
        img += Pause(1000);
    }
    const std::int64_t archives = (markers + 9) / 10;
    for (auto _ : state) {
        state.PauseTiming();
        auto t = std::make_unique<TZXTape>();
        t->ReadImage(img);
        state.ResumeTiming();
        const std::int64_t removed = t->Blocks().CheckRedundantBlocks();
        state.PauseTiming();
        const bool right = removed == markers + archives - 1 && t->Blocks().Count() == markers + 1;
        t.reset();
        state.ResumeTiming();
        if (!right) {
            state.SkipWithError("the clean-up removed the wrong blocks");
            break;
        }
    }
    state.counters["markers"] = static_cast<double>(markers);
}

// Two tapes of 10,000 blocks side by side. Arg 0: B is A with 100
// differences spread over it, a third of them one byte changed inside a
// block, a third a new pause, a third a block removed. Arg 1: every block of
// B differs from every block of A (one byte at its end). Arg 2: B is A
// backwards, the hardest shape for the search, where each block has its like
// on the other side but the order is the opposite.
void BM_Compare(benchmark::State& state) {
    QuietPrompt quiet;
    PromptScope scope(quiet);
    const std::int64_t blocks = 10000;
    TZXTape a, b;
    a.ReadImage(TapeOf(blocks));
    Blocks& list = b.Blocks();
    if (state.range(0) == 2) {
        for (std::int64_t i = a.Blocks().Count(); i >= 1; --i) {
            const BlockRef x = a.Blocks().Item(static_cast<double>(i));
            list.Add(x->IdTipoBloque, x->Descr, x->BlockData, static_cast<double>(x->LenghtTot));
        }
    } else {
        b.ReadImage(TapeOf(blocks));
    }
    if (state.range(0) == 1) {
        for (const BlockRef& x : list)
            x->BlockData.back() = static_cast<char>(x->BlockData.back() ^ 0x55);
    } else if (state.range(0) == 0) {
        const int differences = 100;
        for (int d = 0; d < differences; ++d) {
            // Spread from the second block on, past archive info and merge markers.
            std::int64_t at = 2 + d * (list.Count() - 2) / differences;
            while (list.Item(static_cast<double>(at))->IdTipoBloque == 0x5A)
                ++at;
            if (d % 3 == 0) {
                Bytes& data = list.Item(static_cast<double>(at))->BlockData;
                data[data.size() / 2] = static_cast<char>(data[data.size() / 2] ^ 0x5A);
            } else if (d % 3 == 1) {
                list.Add(0x20, "Pausa", Pause(static_cast<std::uint16_t>(d + 1)), 3, {},
                         static_cast<double>(at));
            } else {
                list.Remove(static_cast<double>(at));
            }
        }
    }
    Comparison c;
    for (auto _ : state) {
        c = CompareTapes(a, b);
        benchmark::DoNotOptimize(c.rows.data());
    }
    if (static_cast<std::int64_t>(c.rows.size()) !=
        a.Blocks().Count() + b.Blocks().Count() - c.equal - c.changed) {
        state.SkipWithError("some block is missing from the rows");
        return;
    }
    state.counters["equal"] = static_cast<double>(c.equal);
    state.counters["changed"] = static_cast<double>(c.changed);
    state.counters["onlyA"] = static_cast<double>(c.onlyA);
    state.counters["onlyB"] = static_cast<double>(c.onlyB);
}

} // namespace

BENCHMARK(BM_Compare)->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CleanRedundant)->Arg(3000)->Arg(30000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Read)->Arg(1000)->Arg(10000)->Arg(100000)->Arg(300000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Image)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Save)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ReadFile)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();

BENCHMARK_MAIN();
