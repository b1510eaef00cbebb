// The listing import over a generated tree of listing pages, 5 folders of 27
// pages with 40,000 entries in all, written once in a temporary folder: into
// an empty catalogue, then again once every title is there.

#include "CatalogueBenchMain.h"
#include "ListingPages.h"
#include "acquisition/WosImporter.h"
#include "catalogue/Comunes.h"
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

constexpr int kEntries = 40000;
// Entries past this many repeat an earlier title and publisher on another
// page: the import finds them there.
constexpr int kTitles = 39000;
constexpr int kPublishers = 2000;

QTemporaryDir* workDir = nullptr;

listing::Entry EntryOf(int n) {
    static const char* words[] = {"Castillo", "Dragón", "Galaxia", "Misión", "Turbo",
                                  "Abadía",   "Ciudad", "Zorro",   "Ninja",  "Cañón"};
    static const char* houses[] = {"Dinamic", "Ocean",    "Topo",    "Opera",   "Zigurat",
                                   "Erbe",    "Ultimate", "Imagine", "Gremlin", "Hewson"};
    static const char* types[] = {"Arcade", "Aventur", "Puzzle", "Sport", "Utility", "Shoot"};
    const int t = n < kTitles ? n : (n - kTitles) * 37 % kTitles;
    listing::Entry e;
    e.title = Utf8ToCp1252(std::string(words[t % 10]) + " " + words[(t / 10) % 10] + " " +
                           words[(t / 100) % 10] + " " + std::to_string(t / 1000));
    const int p = t % kPublishers;
    e.publisher = std::string(houses[p % 10]) + " Soft " + std::to_string(p / 10);
    // The same house in capitals on some of its entries.
    if (n % 13 == 0)
        for (char& c : e.publisher)
            c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    e.year = std::to_string(1982 + t % 12);
    e.type = types[t % 6];
    e.memory = t % 4 ? "48K" : "128K";
    e.style = static_cast<listing::Style>(n % 10 < 5 ? n % 10 : 0);
    e.speech = n % 50 == 0;
    e.id = n + 1;
    return e;
}

QString Listing() {
    static QString root;
    if (!root.isEmpty()) return root;
    const QString base = workDir->filePath("listados");
    std::vector<std::vector<listing::Entry>> pages(5 * 27);
    for (int n = 0; n < kEntries; ++n)
        pages[static_cast<std::size_t>((n % 5) * 27 + (n / 5) % 27)].push_back(EntryOf(n));
    auto write = [](const QString& path, const std::string& bytes) {
        QFile f(path);
        return f.open(QIODevice::WriteOnly) &&
               f.write(bytes.data(), static_cast<qint64>(bytes.size())) ==
                   static_cast<qint64>(bytes.size());
    };
    if (!QDir().mkpath(base) || !write(base + "/legend.html", listing::Legend())) return {};
    for (int f = 0; f < 5; ++f) {
        const QString folder = base + '/' + QString::fromStdString(listing::Folders()[f]);
        QDir().mkpath(folder);
        for (int p = 0; p < 27; ++p) {
            const std::string name = p < 26 ? std::string(1, static_cast<char>('a' + p)) : "1";
            if (!write(folder + '/' + QString::fromStdString(name) + ".html",
                       listing::Page(name, pages[static_cast<std::size_t>(f * 27 + p)])))
                return {};
        }
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

bool Expect(benchmark::State& state, const WosImporter& w, WosImporter::Result result,
            qint64 nuevos, qint64 existentes, qint64 publishers) {
    const WosCounters& c = w.counters;
    if (result == WosImporter::Result::Done && c.Paginas == 135 && c.Nuevos == nuevos &&
        c.Existentes == existentes && c.NwComp == publishers && w.warnings.empty())
        return true;
    state.SkipWithError(QStringLiteral("contadores inesperados: %1 %2 %3 %4, %5 avisos")
                            .arg(c.Paginas)
                            .arg(c.Nuevos)
                            .arg(c.Existentes)
                            .arg(c.NwComp)
                            .arg(w.warnings.size())
                            .toStdString()
                            .c_str());
    return false;
}

void Rate(benchmark::State& state) {
    state.counters["entries/s"] =
        benchmark::Counter(static_cast<double>(kEntries) * static_cast<double>(state.iterations()),
                           benchmark::Counter::kIsRate);
}

void BM_ImportIntoEmptyCatalogue(benchmark::State& state) {
    const QString root = Listing();
    if (root.isEmpty()) return state.SkipWithError("no se pudieron escribir los listados");
    for (auto _ : state) {
        state.PauseTiming();
        if (!Fresh(state)) break;
        WosImporter importer;
        state.ResumeTiming();
        const WosImporter::Result result = importer.Run(root);
        state.PauseTiming();
        if (!Expect(state, importer, result, kTitles, kEntries - kTitles, kPublishers)) break;
        state.ResumeTiming();
    }
    Rate(state);
}

void BM_ImportAgainWhenAllIsThere(benchmark::State& state) {
    const QString root = Listing();
    if (root.isEmpty()) return state.SkipWithError("no se pudieron escribir los listados");
    if (!Fresh(state)) return;
    WosImporter first;
    if (!Expect(state, first, first.Run(root), kTitles, kEntries - kTitles, kPublishers)) return;
    for (auto _ : state) {
        WosImporter again;
        const WosImporter::Result result = again.Run(root);
        state.PauseTiming();
        if (!Expect(state, again, result, 0, kEntries, 0)) break;
        state.ResumeTiming();
    }
    Rate(state);
}

BENCHMARK(BM_ImportIntoEmptyCatalogue)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(BM_ImportAgainWhenAllIsThere)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    return cintal::bench::RunCatalogueBenchmarks(argc, argv, workDir);
}
