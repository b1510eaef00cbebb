// Reading and saving speed of the tape engine on synthetic tapes of 1,000,
// 10,000 and 100,000 blocks (and 300,000 for reading, well past the caches),
// and the comparison of two tapes of 10,000 blocks.
// The blocks follow what real tapes hold: header and data pairs with a loading
// screen, turbo and pure data, tones, pauses, groups, texts and custom info,
// about 950 bytes a block on average. Figures per block stay flat across the
// sizes when the time is linear.
//
// With them, the content reader: the listing of a 40 KB BASIC program, and the
// look for a screen in the head of a file that the main window makes for
// each file of a selected title.

#include "SyntheticTape.h"
#include "TapeBytes.h"
#include "tape/Compare.h"
#include "tape/Content.h"
#include "tape/Prompt.h"
#include "tape/TZXTape.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using namespace cintal;
using namespace cintal::raw;
using namespace cintal::bench;

namespace {

// Boxes would stop a benchmark; none is expected, and any that comes is
// answered without being kept.
class QuietPrompt : public Prompt {
public:
    Button Show(const Message& m) override { return DefaultAnswer(m.buttons); }
};

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
    // As a file read leaves it: the bytes in memory, which the tape keeps.
    const auto shared = std::make_shared<const Bytes>(img);
    for (auto _ : state) {
        TZXTape t;
        t.ReadImage(shared);
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
            list.Add(x->IdTipoBloque, x->Descr, Bytes(x->Data()),
                     static_cast<double>(x->LenghtTot));
        }
    } else {
        b.ReadImage(TapeOf(blocks));
    }
    if (state.range(0) == 1) {
        for (const BlockRef& x : list) {
            Bytes data(x->Data());
            data.back() = static_cast<char>(data.back() ^ 0x55);
            x->SetData(std::move(data));
        }
    } else if (state.range(0) == 0) {
        const int differences = 100;
        for (int d = 0; d < differences; ++d) {
            // Spread from the second block on, past archive info and merge markers.
            std::int64_t at = 2 + d * (list.Count() - 2) / differences;
            while (list.Item(static_cast<double>(at))->IdTipoBloque == 0x5A)
                ++at;
            if (d % 3 == 0) {
                const BlockRef x = list.Item(static_cast<double>(at));
                Bytes data(x->Data());
                data[data.size() / 2] = static_cast<char>(data[data.size() / 2] ^ 0x5A);
                x->SetData(std::move(data));
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

// --- What the blocks hold

// A BASIC program as games carry them: colour set-up, PRINT AT with strings
// and embedded colours, arithmetic with hidden numbers, jumps, REMs, DATA
// lines full of numbers, user-defined graphics.
Bytes BasicProgram(std::size_t atLeast) {
    auto number = [](int v) {
        Bytes out = std::to_string(v);
        out += '\x0E';
        out += '\0';
        out += '\0';
        Le16(out, static_cast<std::uint32_t>(v));
        out += '\0';
        return out;
    };
    Bytes program;
    for (int line = 10; program.size() < atLeast; line += 10) {
        Bytes text;
        switch (line / 10 % 6) {
        case 0:
            text = "\xE7" + number(0) + ":\xDA" + number(0) + ":\xD9" + number(7) + ":\xFB";
            break;
        case 1:
            text = "\xF5\xAC" + number(line % 22) + "," + number(5) +
                   ";\x10\x02\"Pulse una tecla "
                   "\x90\x91\x92\";\xD9" +
                   number(2) + ";\"\x83\x8C\"";
            break;
        case 2:
            text = "\xF1x=x+" + number(1) + ":\xFA x>" + number(255) + "\xCB\xF1x=" + number(0);
            break;
        case 3:
            text = "\xEA ** Rutina de movimiento ** \x7F 1985";
            break;
        case 4:
            text = "\xE4";
            for (int k = 0; k < 8; ++k)
                text += (k ? "," : "") + number(line * 7 + k * 31);
            break;
        case 5:
            text = "\xFA\xA6=\"q\"\xCB\xEC" + number(line - 50) + ":\xF9\xC0" + number(32768);
            break;
        }
        program += static_cast<char>(line >> 8);
        program += static_cast<char>(line & 0xFF);
        Le16(program, static_cast<std::uint32_t>(text.size() + 1));
        program += text;
        program += '\x0D';
    }
    return program;
}

// The listing of a 40 KB program from its tape: the blocks' contents, then
// the program's text.
void BM_BasicListing(benchmark::State& state) {
    QuietPrompt quiet;
    PromptScope scope(quiet);
    const Bytes program = BasicProgram(40 * 1024);
    const auto size = static_cast<std::uint16_t>(program.size());
    TZXTape t;
    t.ReadImage(TzxHeader(1, 13) + Standard(RomHeader(RomType::Program, "juego", size, 10, size)) +
                Standard(RomData(program)));
    std::size_t listed = 0, lines = 0;
    for (auto _ : state) {
        const std::vector<BlockContent> contents = ContentOf(t.Blocks());
        const std::string listing = ListingOf(*t.Blocks().Item(2), contents[1]);
        if (listed == 0)
            lines = static_cast<std::size_t>(std::count(listing.begin(), listing.end(), '\n'));
        listed = listing.size();
        benchmark::DoNotOptimize(listing.data());
    }
    if (listed < program.size() / 2) state.SkipWithError("the program was not listed");
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(program.size()));
    state.counters["KB"] = static_cast<double>(program.size()) / 1024;
    state.counters["lines"] = static_cast<double>(lines);
}

// The Z80 format's compression, for the snapshots below.
Bytes PackZ80(std::string_view in) {
    Bytes out;
    for (std::size_t i = 0; i < in.size();) {
        std::size_t run = 1;
        while (i + run < in.size() && in[i + run] == in[i] && run < 255)
            ++run;
        const bool ed = static_cast<std::uint8_t>(in[i]) == 0xED;
        if (run >= 5 || (ed && run >= 2)) {
            out += "\xED\xED";
            out += static_cast<char>(run);
            out += in[i];
            i += run;
        } else {
            out += in[i++];
            if (ed && i < in.size()) out += in[i++];
        }
    }
    return out;
}

// Screen memory as a picture has it: runs of paper with detail between.
Bytes Picture(std::uint32_t salt) {
    Bytes screen = Noise(kScreenSize, salt);
    for (std::size_t i = 0; i < screen.size(); ++i)
        if (i % 96 < 48) screen[i] = 0;
    return screen;
}

enum ScreenFile { TapeScreenFirst, TapeScreenLate, TapeWithout, Z80v3, Sna };

// Files of a collection as the main window meets them, each about 1 MB on
// disk or a whole snapshot.
Bytes ScreenFileOf(ScreenFile kind) {
    const Bytes pool = Noise(1 << 16, 0xC0DE);
    Bytes img = TzxHeader(1, 13);
    auto loader = [&] {
        img += Standard(RomHeader(RomType::Program, "loader", 300, 10, 300));
        img += Standard(RomData(pool.substr(0, 300)));
    };
    auto screen = [&] {
        img += Standard(RomHeader(RomType::Code, "screen", 6912, 16384, 32768));
        img += Standard(RomData(Picture(7)));
    };
    auto code = [&](std::size_t bytes) {
        while (bytes > 0) {
            const std::size_t n = std::min<std::size_t>(bytes, 40000);
            img +=
                Standard(RomHeader(RomType::Code, "code", static_cast<std::uint16_t>(n), 24000, 0));
            img += Turbo(RomData((pool + pool).substr(bytes % 1000, n)));
            img += Pause(1000);
            bytes -= n;
        }
    };
    switch (kind) {
    case TapeScreenFirst:
        loader();
        screen();
        code(1000000);
        return img;
    case TapeScreenLate: // the screen's last byte 1 KB short of the limit
        loader();
        code(kScreenReadLimit - img.size() - 6912 - 60 - 1024);
        screen();
        code(1000000 - img.size());
        return img;
    case TapeWithout:
        loader();
        code(1000000);
        return img;
    case Z80v3: {
        Bytes z80(30, '\0');
        Le16(z80, 54);
        Bytes extra(54, '\0');
        extra[2] = 4; // 128K
        z80 += extra;
        for (int bank = 0; bank < 8; ++bank) {
            const Bytes ram = bank == 5 ? Picture(7) + Noise(16384 - kScreenSize, 5)
                                        : Noise(16384, static_cast<std::uint32_t>(bank + 1));
            const Bytes packed = PackZ80(ram);
            Le16(z80, static_cast<std::uint32_t>(packed.size()));
            z80 += static_cast<char>(bank + 3);
            z80 += packed;
        }
        return z80;
    }
    case Sna:
        return Bytes(27, '\0') + Picture(7) + Noise(49152 - kScreenSize, 9);
    }
    return {};
}

// ReadScreen from disk (the page cache warm, as for a title selected again),
// reading at most the first 256 KB of each file.
void BM_ReadScreen(benchmark::State& state) {
    const auto kind = static_cast<ScreenFile>(state.range(0));
    static const char* const names[] = {"primera.tzx", "tardia.tzx", "sin.tzx", "juego.z80",
                                        "juego.sna"};
    TempDir dir;
    const fs::path file = dir.path / names[kind];
    const Bytes bytes = ScreenFileOf(kind);
    if (dir.path.empty() || !WriteFile(file, bytes)) {
        state.SkipWithError("no temporary folder");
        return;
    }
    const bool expected = kind != TapeWithout;
    for (auto _ : state) {
        const std::optional<Bytes> screen = ReadScreen(file.string());
        if (screen.has_value() != expected || (screen && *screen != Picture(7))) {
            state.SkipWithError("the wrong screen");
            break;
        }
        benchmark::DoNotOptimize(screen);
    }
    state.counters["KB"] = static_cast<double>(bytes.size()) / 1024;
}

// Twenty tapes of 1 MB without a screen, the worst a title selection meets:
// each is read up to the limit and walked to its end.
void BM_ReadScreen20(benchmark::State& state) {
    TempDir dir;
    const Bytes bytes = ScreenFileOf(TapeWithout);
    std::vector<std::string> files;
    for (int i = 0; i < 20; ++i) {
        files.push_back((dir.path / ("cinta" + std::to_string(i) + ".tzx")).string());
        if (dir.path.empty() || !WriteFile(files.back(), bytes)) {
            state.SkipWithError("no temporary folder");
            return;
        }
    }
    for (auto _ : state)
        for (const std::string& f : files)
            benchmark::DoNotOptimize(ReadScreen(f));
}

} // namespace

BENCHMARK(BM_Compare)->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BasicListing)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadScreen)
    ->Arg(TapeScreenFirst)
    ->Arg(TapeScreenLate)
    ->Arg(TapeWithout)
    ->Arg(Z80v3)
    ->Arg(Sna)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(BM_ReadScreen20)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_CleanRedundant)->Arg(3000)->Arg(30000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Read)->Arg(1000)->Arg(10000)->Arg(100000)->Arg(300000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Image)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Save)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ReadFile)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();

BENCHMARK_MAIN();
