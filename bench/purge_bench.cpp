// The purge over a catalogue of 100,000 file rows in 100 folders, of which
// 10,000 name files that are not on disk: counting them, then deleting them.

#include "CatalogueBenchMain.h"
#include "catalogue/Comunes.h"
#include "catalogue/Settings.h"
#include "catalogue/Store.h"
#include "maintenance/Purge.h"
#include "tape/Prompt.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace cintal;

namespace {

constexpr int kFolders = 100;
constexpr int kRows = 100000;
constexpr int kMissing = 10000;

QTemporaryDir* workDir = nullptr;

// Every tenth row names a file that was never written.
bool Catalogue(benchmark::State& state) {
    static int made = 0;
    Comunes::Reset();
    const QString db = workDir->filePath(QStringLiteral("cintal%1.mdb").arg(made++));
    const QString root = workDir->filePath(QStringLiteral("coleccion"));
    QString reason;
    if (!Store::CreateEmpty(db, &reason) || !Comunes::InitGlobals(db, &reason)) {
        state.SkipWithError(("catálogo: " + reason).toStdString().c_str());
        return false;
    }
    Store::Begin();
    for (int f = 1; f <= kFolders; ++f) {
        const QString folder = root + QStringLiteral("/carpeta%1").arg(f);
        QDir().mkpath(folder);
        Store::Run("INSERT INTO Paths (PathIndex, GameDir) VALUES (?, ?)", {f, folder});
    }
    for (int i = 0; i < kRows; ++i) {
        const int folder = 1 + i % kFolders;
        const QString name = QStringLiteral("juego%1").arg(i);
        Store::Run("INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex) VALUES (1, ?, "
                   "'tzx', ?)",
                   {name, folder});
        if (i % 10 != 0 && made == 1) {
            QFile file(root + QStringLiteral("/carpeta%1/").arg(folder) + name + ".tzx");
            file.open(QIODevice::WriteOnly);
        }
    }
    Store::Commit();
    return Comunes::LoadPaths();
}

void BM_PurgeMissingReferences(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        if (!Catalogue(state)) break;
        state.ResumeTiming();
        Purger purger;
        const bool ok = purger.Plan() && purger.Run();
        state.PauseTiming();
        if (!ok || purger.total != kRows || purger.deleted != kMissing) {
            state.SkipWithError(QStringLiteral("filas inesperadas: %1 %2")
                                    .arg(purger.total)
                                    .arg(purger.deleted)
                                    .toStdString()
                                    .c_str());
            break;
        }
        state.ResumeTiming();
    }
    state.counters["rows/s"] =
        benchmark::Counter(static_cast<double>(kRows) * static_cast<double>(state.iterations()),
                           benchmark::Counter::kIsRate);
}

BENCHMARK(BM_PurgeMissingReferences)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    return cintal::bench::RunCatalogueBenchmarks(argc, argv, workDir);
}
