#pragma once
// The main() of the benchmarks that work on a catalogue: an application
// object, a scratch folder for catalogues and settings, and boxes answered
// quietly, so that no run touches the user's own.

#include "catalogue/Comunes.h"
#include "catalogue/Settings.h"
#include "tape/Prompt.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace cintal::bench {

inline int RunCatalogueBenchmarks(int argc, char** argv, QTemporaryDir*& workDir) {
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    workDir = &dir;
    UseSettingsFile(dir.filePath("ajustes.ini"));
    ScriptedPrompt quiet;
    PromptScope scope(quiet);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    Comunes::Reset();
    return 0;
}

} // namespace cintal::bench
