// The sound of a 30-minute tape of standard blocks: the whole WAV file
// written to disk at 44,100 Hz, its samples without the disk, and what
// playing waits for before the first samples (the whole length, for the
// time shown, and the first 4,096 samples).

#include "TapeBytes.h"
#include "tape/Prompt.h"
#include "tape/TZXTape.h"
#include "tape/Wav.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using namespace cintal;

namespace {

// Pairs of a header and 8,000 bytes of data, about 56 s each: 32 of them
// play for 30 minutes.
TZXTape& ThirtyMinutes() {
    static TZXTape tape;
    if (tape.Blocks().Count() == 0) {
        Bytes image = raw::TzxHeader(1, 20);
        std::uint32_t s = 12345;
        for (int pair = 0; pair < 32; ++pair) {
            image += raw::Standard(raw::RomHeader(raw::RomType::Code, "bench", 8000, 32768, 0));
            Bytes data(8000, '\0');
            for (char& c : data) {
                s = s * 1103515245 + 12345;
                c = static_cast<char>(s >> 16);
            }
            image += raw::Standard(raw::RomData(data));
        }
        tape.ReadImage(image);
    }
    return tape;
}

void BM_WavFileOf30Minutes(benchmark::State& state) {
    // The engine's notes are kept, not printed, so that the figures stay readable.
    ScriptedPrompt quiet;
    PromptScope scope(quiet);
    TZXTape& tape = ThirtyMinutes();
    const fs::path dir = fs::temp_directory_path() / "cintal-wav-bench";
    fs::create_directories(dir);
    const std::string path = (dir / "cinta.wav").string();
    for (auto _ : state) {
        fs::remove(path);
        std::string reason;
        if (!WriteWav(tape.Blocks(), path, kWavRate, reason)) state.SkipWithError(reason.c_str());
    }
    state.counters["seconds_of_sound"] = double(SignalLength(tape.Blocks())) / kTStatesPerSecond;
    state.counters["MB"] = double(fs::file_size(path)) / 1e6;
    fs::remove_all(dir);
}
BENCHMARK(BM_WavFileOf30Minutes)->Unit(benchmark::kMillisecond);

void BM_SamplesOf30Minutes(benchmark::State& state) {
    TZXTape& tape = ThirtyMinutes();
    std::vector<std::int16_t> buffer(1 << 16);
    for (auto _ : state) {
        SampleStream stream(tape.Blocks(), kWavRate);
        std::uint64_t n = 0;
        while (std::size_t got = stream.Read(buffer.data(), buffer.size()))
            n += got;
        benchmark::DoNotOptimize(n);
    }
}
BENCHMARK(BM_SamplesOf30Minutes)->Unit(benchmark::kMillisecond);

void BM_PlayingStartsOn30Minutes(benchmark::State& state) {
    TZXTape& tape = ThirtyMinutes();
    std::vector<std::int16_t> buffer(4096);
    for (auto _ : state) {
        const std::uint64_t total = SampleStream::Total(tape.Blocks(), kWavRate, 0, true);
        SampleStream stream(tape.Blocks(), kWavRate, 0, true);
        benchmark::DoNotOptimize(stream.Read(buffer.data(), buffer.size()) + total);
    }
}
BENCHMARK(BM_PlayingStartsOn30Minutes)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
