// The disk scan over a collection of 10,000 tapes in 200 folders, written
// once in a temporary folder: into an empty catalogue, then again over the
// same folder once every file is catalogued; the same with each tape in a zip
// of its own. Beside them, the hashes of a file and the duplicates of a large
// catalogue.

#include "CatalogueBenchMain.h"
#include "TapeBytes.h"
#include "ZipBytes.h"
#include "acquisition/Scanner.h"
#include "catalogue/Comunes.h"
#include "catalogue/FileHashes.h"
#include "catalogue/Settings.h"
#include "catalogue/Store.h"
#include "tape/Cp1252.h"
#include "tape/Prompt.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace cintal;

namespace {

constexpr int kFolders = 200;
constexpr int kFiles = 10000;
// Files past this many repeat an earlier name and publisher in another
// folder, so that they join a title that the scan has just made.
constexpr int kTitles = 7000;
constexpr int kPublishers = 200;

QTemporaryDir* workDir = nullptr;

std::string Cp(const char* utf8) {
    return Utf8ToCp1252(utf8);
}

// A game as a tape preserves it: archive information, a BASIC loader and
// its code behind a turbo loader.
Bytes Tape(int n, bool repeat) {
    static const char* words[] = {"Castillo", "Dragón", "Galaxia", "Misión", "Turbo",
                                  "Abadía",   "Ciudad", "Zorro",   "Ninja",  "Cañón"};
    static const char* houses[] = {"Dinamic", "Ocean",    "Topo",    "Opera",   "Zigurat",
                                   "Erbe",    "Ultimate", "Imagine", "Gremlin", "Hewson"};
    const std::string name =
        Cp(words[n % 10]) + " " + Cp(words[(n / 10) % 10]) + " " + std::to_string(n / 100);
    const int p = n % kPublishers;
    std::string publisher = std::string(houses[p % 10]) + " Soft " + std::to_string(p / 10);
    // The same house written otherwise on a later tape.
    if (repeat) {
        for (char& c : publisher)
            c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        publisher += "  ";
    }
    Bytes t = raw::TzxHeader(1, 20);
    t += raw::Archive({{0, name},
                       {1, publisher},
                       {2, Cp("José Autor ") + std::to_string(n % 50)},
                       {3, std::to_string(1982 + n % 10)},
                       {4, "Spanish"},
                       {5, "Arcade"},
                       {8, "Original Release"}});
    t += raw::Standard(raw::RomHeader(raw::RomType::Program, "cargador", 120, 10, 120));
    t += raw::Standard(raw::RomData(Bytes(120, static_cast<char>(n))));
    t += raw::Standard(raw::RomHeader(raw::RomType::Code, name, 1024, 32768, 0));
    t += raw::Turbo(raw::RomData(Bytes(1024, static_cast<char>(n * 7))));
    return t;
}

QString Collection() {
    static QString root;
    if (!root.isEmpty()) return root;
    const QString base = workDir->filePath("coleccion");
    for (int i = 0; i < kFiles; ++i) {
        const QString folder =
            QStringLiteral("%1/serie%2").arg(base).arg(i % kFolders, 3, 10, QLatin1Char('0'));
        if (i < kFolders) QDir().mkpath(folder);
        QFile f(QStringLiteral("%1/juego%2.tzx").arg(folder).arg(i, 5, 10, QLatin1Char('0')));
        const Bytes bytes = Tape(i % kTitles, i >= kTitles);
        if (!f.open(QIODevice::WriteOnly) ||
            f.write(bytes.data(), static_cast<qint64>(bytes.size())) !=
                static_cast<qint64>(bytes.size()))
            return {};
    }
    root = base;
    return root;
}

// Each tape of the collection in a zip of its own.
QString Zipped() {
    static QString root;
    if (!root.isEmpty()) return root;
    const QString base = workDir->filePath("comprimidos");
    for (int i = 0; i < kFiles; ++i) {
        const QString folder =
            QStringLiteral("%1/serie%2").arg(base).arg(i % kFolders, 3, 10, QLatin1Char('0'));
        if (i < kFolders) QDir().mkpath(folder);
        const QString name = QStringLiteral("juego%1").arg(i, 5, 10, QLatin1Char('0'));
        if (!test::WriteZip(QStringLiteral("%1/%2.zip").arg(folder, name).toStdString(),
                            {{name.toStdString() + ".tzx", Tape(i % kTitles, i >= kTitles)}}))
            return {};
    }
    root = base;
    return root;
}

// A new, empty catalogue opened as the program opens it.
bool Fresh(benchmark::State& state) {
    static int made = 0;
    Comunes::Reset();
    const QString db = workDir->filePath(QStringLiteral("cintal%1.mdb").arg(made++));
    QString reason;
    if (Store::CreateEmpty(db, &reason) && Comunes::InitGlobals(db, &reason)) return true;
    state.SkipWithError(("catálogo: " + reason).toStdString().c_str());
    return false;
}

bool Expect(benchmark::State& state, const Scanner& s, Scanner::Result result, qint64 creada,
            qint64 agregada, qint64 omitida) {
    const ScanCounters& c = s.counters;
    // A zip is found, and so is the tape inside it.
    const qint64 found = c.Comprimidos > 0 ? 2 * kFiles : kFiles;
    if (result == Scanner::Result::Done && c.Total == found && c.Parcial == found &&
        c.Creada == creada && c.Agregada == agregada && c.Omitida == omitida)
        return true;
    state.SkipWithError(QStringLiteral("contadores inesperados: %1 %2 %3 %4 %5")
                            .arg(c.Total)
                            .arg(c.Parcial)
                            .arg(c.Creada)
                            .arg(c.Agregada)
                            .arg(c.Omitida)
                            .toStdString()
                            .c_str());
    return false;
}

void ScanIntoEmptyCatalogue(benchmark::State& state, const QString& root) {
    if (root.isEmpty()) return state.SkipWithError("no se pudo escribir la colección");
    for (auto _ : state) {
        state.PauseTiming();
        if (!Fresh(state)) break;
        Scanner scanner;
        state.ResumeTiming();
        const Scanner::Result result = scanner.Run(root);
        state.PauseTiming();
        const bool ok = Expect(state, scanner, result, kTitles, kFiles - kTitles, 0) &&
                        scanner.counters.NwComp == kPublishers;
        state.ResumeTiming();
        if (!ok) break;
    }
    state.counters["files/s"] =
        benchmark::Counter(static_cast<double>(kFiles) * static_cast<double>(state.iterations()),
                           benchmark::Counter::kIsRate);
}

void ScanAgainWhenAllIsCatalogued(benchmark::State& state, const QString& root) {
    if (root.isEmpty()) return state.SkipWithError("no se pudo escribir la colección");
    if (!Fresh(state)) return;
    Scanner first;
    if (!Expect(state, first, first.Run(root), kTitles, kFiles - kTitles, 0)) return;
    for (auto _ : state) {
        Scanner again;
        const Scanner::Result result = again.Run(root);
        state.PauseTiming();
        const bool ok = Expect(state, again, result, 0, 0, kFiles);
        state.ResumeTiming();
        if (!ok) break;
    }
    state.counters["files/s"] =
        benchmark::Counter(static_cast<double>(kFiles) * static_cast<double>(state.iterations()),
                           benchmark::Counter::kIsRate);
}

void BM_ScanIntoEmptyCatalogue(benchmark::State& state) {
    ScanIntoEmptyCatalogue(state, Collection());
}
void BM_ScanAgainWhenAllIsCatalogued(benchmark::State& state) {
    ScanAgainWhenAllIsCatalogued(state, Collection());
}
void BM_ScanZippedIntoEmptyCatalogue(benchmark::State& state) {
    ScanIntoEmptyCatalogue(state, Zipped());
}
void BM_ScanZippedAgain(benchmark::State& state) {
    ScanAgainWhenAllIsCatalogued(state, Zipped());
}

// Size, CRC32, MD5 and SHA1 of 64 MB in one pass.
void BM_Hashing(benchmark::State& state) {
    const std::string data(64 << 20, '\x5a');
    for (auto _ : state)
        benchmark::DoNotOptimize(platform::HashBytes(data.data(), qint64(data.size())));
    state.SetBytesProcessed(qint64(data.size()) * state.iterations());
}

// "Archivos repetidos" on 100,000 file rows, one in five a copy of another:
// read from the store and grouped.
void BM_Duplicates(benchmark::State& state) {
    constexpr int kRows = 100000;
    if (!Fresh(state)) return;
    Store::Begin();
    Store::Run("INSERT INTO Paths (PathIndex, GameDir) VALUES (1, '/coleccion')");
    for (int i = 0; i < kRows; ++i) {
        const int content = i % 5 == 4 ? i - 1 : i;
        Store::Run("INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, FileSize, Sha1) "
                   "VALUES (?, ?, 'tzx', 1, ?, ?)",
                   {i / 2, QStringLiteral("juego%1").arg(i), 1400 + content % 100,
                    QStringLiteral("%1").arg(content, 40, 16, QLatin1Char('0'))});
    }
    Store::Commit();
    std::size_t groups = 0;
    for (auto _ : state) {
        const auto files = FileHashes::Load();
        if (!files) return state.SkipWithError("no se pudo leer el catálogo");
        groups = GroupDuplicates(*files).size();
    }
    if (groups != kRows / 5) state.SkipWithError("grupos inesperados");
}

BENCHMARK(BM_ScanIntoEmptyCatalogue)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(BM_ScanAgainWhenAllIsCatalogued)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->UseRealTime();
BENCHMARK(BM_ScanZippedIntoEmptyCatalogue)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->UseRealTime();
BENCHMARK(BM_ScanZippedAgain)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(BM_Hashing)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_Duplicates)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    return cintal::bench::RunCatalogueBenchmarks(argc, argv, workDir);
}
