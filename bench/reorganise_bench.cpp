// Reorganising 10,000 files with 20,000 side files (a screen and a text
// each) from 100 folders into folders by initial, with the catalogue
// updated; and the dry run of the same plan.

#include "catalogue/Comunes.h"
#include "catalogue/Store.h"
#include "maintenance/Reorganiser.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace cintal;

namespace {

constexpr int kFolders = 100;
constexpr int kFiles = 10000;

QTemporaryDir* workDir = nullptr;
int made = 0;

QString Name(int n) {
    static const char* words[] = {"Castillo", "Dragón", "Galaxia", "Misión", "Turbo",
                                  "Abadía",   "Ciudad", "Zorro",   "Ninja",  "3D"};
    return QString::fromUtf8(words[n % 10]) + QStringLiteral(" %1").arg(n);
}

bool Write(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

// A new collection and its catalogue; the folder the run fills.
QString Fresh(benchmark::State& state) {
    Comunes::Reset();
    const QString base = workDir->filePath(QStringLiteral("run%1").arg(made++));
    const QString db = base + "/cintal.mdb";
    QDir().mkpath(base);
    QString reason;
    if (!Store::CreateEmpty(db, &reason) || !Comunes::InitGlobals(db, &reason)) {
        state.SkipWithError(("catálogo: " + reason).toStdString().c_str());
        return {};
    }
    Store::Begin();
    Store::Run("INSERT INTO Publishers (IdPub, PublisherName) VALUES (0, '- Desconocido -')");
    for (int d = 0; d < kFolders; ++d) {
        const QString folder = QStringLiteral("%1/coleccion/serie%2").arg(base).arg(d);
        QDir().mkpath(folder + "/SCRSHOT");
        QDir().mkpath(folder + "/info");
        Store::Run("INSERT INTO Paths (PathIndex, GameDir) VALUES (?, ?)", {d + 1, folder});
    }
    for (int i = 0; i < kFiles; ++i) {
        const QString folder = QStringLiteral("%1/coleccion/serie%2").arg(base).arg(i % kFolders);
        const QString name = Name(i);
        Store::Run("INSERT INTO Titles (TitleId, Name, Year, IdPub, HaveIt) VALUES (?, ?, ?, 0, 1)",
                   {i + 1, name, 1982 + i % 10});
        Store::Run("INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, HaveIt) VALUES "
                   "(?, ?, 'tzx', ?, 1)",
                   {i + 1, QStringLiteral("juego%1").arg(i), i % kFolders + 1});
        if (!Write(QStringLiteral("%1/juego%2.tzx").arg(folder).arg(i), QByteArray(2048, 'x')) ||
            !Write(folder + "/SCRSHOT/" + name + ".scr", QByteArray(6912, 0)) ||
            !Write(folder + "/info/" + name + ".txt", "texto")) {
            state.SkipWithError("no se pudo escribir la colección");
            return {};
        }
    }
    Store::Commit();
    Comunes::LoadPaths();
    return base + "/destino";
}

void BM_ReorganiseByInitial(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        const QString target = Fresh(state);
        if (target.isEmpty()) break;
        state.ResumeTiming();
        std::vector<ReorgTitle> titles;
        LoadReorgTitles(false, titles);
        Reorganiser r;
        r.Plan(target, SortBy::Initial, titles);
        r.Run(true);
        if (r.counters.Movidos != kFiles || r.counters.Laterales != 2 * kFiles)
            state.SkipWithError("contadores inesperados");
    }
}
BENCHMARK(BM_ReorganiseByInitial)->Unit(benchmark::kSecond)->Iterations(1);

void BM_DryRunByInitial(benchmark::State& state) {
    const QString target = Fresh(state);
    if (target.isEmpty()) return;
    for (auto _ : state) {
        std::vector<ReorgTitle> titles;
        LoadReorgTitles(false, titles);
        Reorganiser r;
        r.Plan(target, SortBy::Initial, titles);
        if (r.counters.Movidos != kFiles || r.counters.Laterales != 2 * kFiles)
            state.SkipWithError("contadores inesperados");
    }
}
BENCHMARK(BM_DryRunByInitial)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    workDir = &dir;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    Store::Close();
    return 0;
}
