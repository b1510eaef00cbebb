// The title grid on a large catalogue: filling it, sorting it, filtering it,
// and the whole start-up to a shown window. Built on a catalogue of synthetic
// titles made once in a temporary folder.

#include "catalogue/Comunes.h"
#include "catalogue/Settings.h"
#include "catalogue/Store.h"
#include "catalogue/Titles.h"
#include "tape/Prompt.h"
#include "views/Principal.h"
#include "widgets/Grids.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>

#ifdef __linux__
#include <sys/resource.h>
#endif

using namespace cintal;

namespace {

constexpr int kTitles = 100000;

QTemporaryDir* workDir = nullptr;

QString Catalogue() {
    static QString path;
    if (!path.isEmpty()) return path;
    path = workDir->filePath("cintal.mdb");
    QString reason;
    Store::CreateEmpty(path, &reason);
    Store::Open(path, &reason);
    Store::Begin();
    for (int p = 1; p <= 400; ++p)
        Store::Run("INSERT INTO Publishers (IdPub, PublisherName) VALUES (?, ?)",
                   {p, QStringLiteral("Editorial %1").arg(p)});
    const char* words[] = {"Castillo", "Ábaco",  "Galaxia", "Dragón", "Misión",
                           "zorro",    "Abadía", "Turbo",   "Ñu",     "Ciudad"};
    unsigned state = 7;
    auto rnd = [&](unsigned n) {
        state = state * 1103515245u + 12345u;
        return (state >> 16) % n;
    };
    for (int i = 0; i < kTitles; ++i) {
        const QString name = QStringLiteral("%1 %2 %3")
                                 .arg(QString::fromUtf8(words[rnd(10)]))
                                 .arg(QString::fromUtf8(words[rnd(10)]))
                                 .arg(rnd(5000));
        Store::Run("INSERT INTO Titles (Name, Year, IdPub, Type, HaveIt, Estado) "
                   "VALUES (?, ?, ?, ?, ?, ?)",
                   {name, QString::number(1982 + rnd(12)), 1 + rnd(400), "Arcade", rnd(3) ? 1 : 0,
                    static_cast<int>(rnd(7))});
    }
    // A file for each title the collection has, and half of them known to a
    // DAT, for the filter of titles with unidentified files.
    Store::Run("INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, HaveIt) "
               "SELECT TitleId, Name, 'tzx', 1, 1 FROM Titles WHERE HaveIt = 1");
    Store::Run("INSERT INTO FileMatches (FileId, DatId, RomId, Rank) "
               "SELECT FileId, 1, FileId, 3 FROM tFiles WHERE FileId % 2 = 0");
    Store::Commit();
    Store::Close();
    return path;
}

struct Window {
    Principal w;
    Window() {
        Comunes::Reset();
        QString reason;
        Comunes::InitGlobals(Catalogue(), &reason);
        Grids::SetupGridTitles(*w.GridTitles);
        Grids::SetupGridFiles(*w.GridFiles);
    }
};

void BM_FillTitles(benchmark::State& state) {
    Window win;
    for (auto _ : state)
        Grids::FillTitles(win.w.Parts(), kOrderByName);
    state.counters["titulos"] = win.w.GridTitles->Rows();
}

void BM_SortGrid(benchmark::State& state) {
    Window win;
    Grids::FillTitles(win.w.Parts(), kOrderByName);
    const int col = win.w.GridTitles->ColumnIndex("ColPublisher");
    for (auto _ : state)
        Grids::SortGrid(col, *win.w.GridTitles);
}

// The first click on a column after a fill, when nothing of that column's
// order is known yet: by name order after start-up, by the store's own
// order after a disk scan.
void SortFirstClick(benchmark::State& state, const QString& clause) {
    Window win;
    const int col = win.w.GridTitles->ColumnIndex("ColPublisher");
    for (auto _ : state) {
        state.PauseTiming();
        Grids::FillTitles(win.w.Parts(), clause);
        win.w.GridTitles->SetColumnTag(col, QString());
        state.ResumeTiming();
        Grids::SortGrid(col, *win.w.GridTitles);
    }
}
void BM_SortGridFirstClick(benchmark::State& state) {
    SortFirstClick(state, kOrderByName);
}
void BM_SortGridFirstClickAfterScan(benchmark::State& state) {
    SortFirstClick(state, QString());
}

void BM_FilterTitles(benchmark::State& state) {
    Window win;
    Grids::FillTitles(win.w.Parts(), kOrderByName);
    bool on = false;
    for (auto _ : state) {
        on = !on;
        QSignalBlocker block(win.w.ChckHaveIt);
        win.w.ChckHaveIt->setChecked(on);
        benchmark::DoNotOptimize(Grids::FilterTitles(*win.w.GridTitles));
    }
}

void BM_FilterUnidentified(benchmark::State& state) {
    Window win;
    Grids::FillTitles(win.w.Parts(), kOrderByName);
    QSignalBlocker block(win.w.ChckSinIdentificar);
    int shown = 0;
    for (auto _ : state) {
        win.w.ChckSinIdentificar->setChecked(true);
        shown = Grids::FilterTitles(*win.w.GridTitles);
        state.PauseTiming();
        win.w.ChckSinIdentificar->setChecked(false);
        Grids::FilterTitles(*win.w.GridTitles);
        state.ResumeTiming();
    }
    state.counters["mostrados"] = shown;
}

// From nothing to the main window shown over 100,000 titles.
void BM_StartUp(benchmark::State& state) {
    const QString db = Catalogue();
    for (auto _ : state) {
        Comunes::Reset();
        auto w = std::make_unique<Principal>();
        w->Form_Load(db);
        w->show();
        QApplication::processEvents();
        state.PauseTiming();
        w.reset();
        state.ResumeTiming();
    }
#ifdef __linux__
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["pico_MB"] = usage.ru_maxrss / 1024.0;
#endif
}

// The grid row that shows the title with that key, or 0.
int RowOfTitle(const Grid& g, qint64 title) {
    for (int r = 1; r <= g.Rows(); ++r)
        if (g.CellText(r, g.ColumnIndex("ColTitleId")) == QString::number(title)) return r;
    return 0;
}

// A title with 20 files in 3 folders, its screen beside the last folder and
// an inlay beside the first: the whole selection, side files included.
void BM_SelectTitle(benchmark::State& state) {
    Window win;
    QDir root(workDir->path());
    QStringList dirs;
    static qint64 title = 0;
    if (!title) {
        Store::Begin();
        for (int d = 0; d < 3; ++d) {
            const QString dir = root.filePath(QStringLiteral("coleccion%1").arg(d));
            QDir().mkpath(dir);
            Store::Run("INSERT INTO Paths (PathIndex, GameDir) VALUES (?, ?)", {1000 + d, dir});
        }
        QSqlQuery q = Store::NewQuery();
        Store::Exec(q,
                    "INSERT INTO Titles (Name, Year, IdPub, Type, HaveIt, Estado) "
                    "VALUES (?, '1986', 1, 'Arcade', 1, 4)",
                    {QStringLiteral("Aaa Con Veinte Archivos")});
        title = Store::LastInsertId(q);
        for (int f = 0; f < 20; ++f)
            Store::Run("INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, Memory, "
                       "Players, FileSize, Origin, IdLang, HaveIt) "
                       "VALUES (?, ?, 'tzx', ?, 48, 1, 49152, 'Original Release', 'SPA', 1)",
                       {title, QStringLiteral("archivo%1").arg(f), 1000 + f % 3});
        Store::Commit();
        QDir().mkpath(root.filePath("coleccion2/scrshot"));
        QFile scr(root.filePath("coleccion2/scrshot/Aaa Con Veinte Archivos.scr"));
        scr.open(QIODevice::WriteOnly);
        scr.write(QByteArray(6912, '\x38'));
        scr.close();
        QDir().mkpath(root.filePath("coleccion0/Inlay"));
        QImage inlay(600, 400, QImage::Format_RGB32);
        inlay.fill(Qt::darkBlue);
        inlay.save(root.filePath("coleccion0/Inlay/Aaa Con Veinte Archivos.jpg"), "JPG");
        Comunes::LoadPaths();
    }
    Grids::FillTitles(win.w.Parts(), kOrderByName);
    win.w.OptDatos[1]->setChecked(true);
    Grid& g = *win.w.GridTitles;
    const int row = RowOfTitle(g, title);
    for (auto _ : state) {
        g.ClearSelection();
        g.SetSelectedRow(row);
    }
    state.counters["archivos"] = win.w.GridFiles->Rows();
    state.counters["encarte"] = win.w.ImgCaratula->HasPicture();
    state.counters["pantalla"] = win.w.SCRImage1->ShowsFile();
    state.counters["opt1"] = win.w.OptDatos[1]->isEnabled();
}

// A title with 20 tapes of 1 MB in one folder, no screen file beside them
// and no screen inside them either: the look inside reads the head of every
// one before it gives up, the worst a selection meets.
void BM_SelectTitleScreenFromTapes(benchmark::State& state) {
    Window win;
    QDir root(workDir->path());
    static qint64 title = 0;
    if (!title) {
        const QString dir = root.filePath(QStringLiteral("cintas"));
        QDir().mkpath(dir);
        // Data blocks of 1,000 bytes with no header: nothing a screen.
        QByteArray tape("ZXTape!\x1A\x01\x0D", 10);
        const QByteArray block = QByteArray("\x10\xE8\x03\xE8\x03", 5) + QByteArray(1000, '\x21');
        while (tape.size() < (1 << 20))
            tape += block;
        Store::Begin();
        Store::Run("INSERT INTO Paths (PathIndex, GameDir) VALUES (?, ?)", {2000, dir});
        QSqlQuery q = Store::NewQuery();
        Store::Exec(q,
                    "INSERT INTO Titles (Name, Year, IdPub, Type, HaveIt, Estado) "
                    "VALUES (?, '1986', 1, 'Arcade', 1, 4)",
                    {QStringLiteral("Aaa Sin Pantalla")});
        title = Store::LastInsertId(q);
        for (int f = 0; f < 20; ++f) {
            const QString name = QStringLiteral("cinta%1").arg(f);
            Store::Run("INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, HaveIt) "
                       "VALUES (?, ?, 'tzx', 2000, 1)",
                       {title, name});
            QFile file(QDir(dir).filePath(name + ".tzx"));
            file.open(QIODevice::WriteOnly);
            file.write(tape);
        }
        Store::Commit();
        Comunes::LoadPaths();
    }
    Grids::FillTitles(win.w.Parts(), kOrderByName);
    Grid& g = *win.w.GridTitles;
    const int row = RowOfTitle(g, title);
    for (auto _ : state) {
        g.ClearSelection();
        g.SetSelectedRow(row);
    }
    state.counters["archivos"] = win.w.GridFiles->Rows();
    state.counters["de_la_cinta"] = win.w.LabelScreenSource->isVisibleTo(&win.w);
}

BENCHMARK(BM_FillTitles)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_SortGrid)->Unit(benchmark::kMillisecond)->Iterations(6);
BENCHMARK(BM_SortGridFirstClick)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_SortGridFirstClickAfterScan)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_FilterTitles)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_FilterUnidentified)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_SelectTitle)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_SelectTitleScreenFromTapes)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_StartUp)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM",
            qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    QTemporaryDir dir;
    workDir = &dir;
    // --catalogo=RUTA only writes the catalogue there (never over a file),
    // to start build/cintal on it and measure from outside.
    const QString option = QStringLiteral("--catalogo=");
    for (int i = 1; i < argc; ++i) {
        const QString arg = QString::fromLocal8Bit(argv[i]);
        if (!arg.startsWith(option)) continue;
        const QString target = arg.mid(option.size());
        if (QFile::exists(target) || !QFile::copy(Catalogue(), target)) {
            std::fprintf(stderr, "No se puede escribir el catálogo en %s\n", qPrintable(target));
            return 1;
        }
        return 0;
    }
    UseSettingsFile(dir.filePath("ajustes.ini"));
    ScriptedPrompt quiet;
    PromptScope scope(quiet);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    Comunes::Reset();
    return 0;
}
