// Opening the tape inspector on a large tape: the read, the block list
// filled into its grid, and the archive texts shown in their boxes, as the
// selection of a file does it. Tapes of 1,000 and 10,000 blocks in the mix a
// real tape has (header and data pairs, pauses, tones, groups and texts).

#include "TapeBytes.h"
#include "inspector/Info.h"
#include "tape/Prompt.h"

#include <QApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <fstream>

using namespace cintal;
using namespace cintal::raw;

namespace {

Bytes LargeTape(int blocks) {
    Bytes img = TzxHeader(1, 13);
    img += Archive({{0, "Cinta grande"}, {1, "Cintal"}, {3, "1986"}, {255, "Uno\rDos\rTres"}});
    const Bytes payload(1200, '\x5A');
    for (int i = 0; i < blocks; ++i) {
        switch (i % 8) {
        case 0:
            img += Standard(RomHeader(RomType::Code, "bloque", 1200, 32768, 32768));
            break;
        case 1:
            img += Standard(RomData(payload));
            break;
        case 2:
            img += Pause(1000);
            break;
        case 3:
            img += PureTone(2168, 3223);
            break;
        case 4:
            img += GroupStart("Nivel " + std::to_string(i));
            break;
        case 5:
            img += GroupEnd();
            break;
        case 6:
            img += Text("Cargando la parte " + std::to_string(i));
            break;
        default:
            img += Turbo(RomData(payload));
            break;
        }
    }
    return img;
}

void OpenInspector(benchmark::State& state) {
    ScriptedPrompt quiet; // opening a tape asks nothing; any box gets its default
    PromptScope scope(quiet);
    QTemporaryDir dir;
    const QString path = dir.filePath("grande.tzx");
    const Bytes image = LargeTape(static_cast<int>(state.range(0)));
    std::ofstream(path.toStdString(), std::ios::binary)
        .write(image.data(), static_cast<std::streamsize>(image.size()));
    Info window(nullptr, nullptr);
    window.Form_Load();
    // Shown, so that each opening also pays for painting what it changed.
    window.show();
    QApplication::processEvents();
    for (auto _ : state) {
        window.OpenFile(path);
        window.repaint();
        benchmark::DoNotOptimize(window.GridTZX->Rows());
    }
    state.counters["bloques"] = static_cast<double>(window.GridTZX->Rows());
}
BENCHMARK(OpenInspector)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
