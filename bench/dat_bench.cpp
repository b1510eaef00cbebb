// DAT files on a catalogue of 20,000 hashed files: a DAT of 20,000 games read
// and loaded (its files identified with it), every file identified again,
// and the have and missing report of the DAT.

#include "CatalogueBenchMain.h"
#include "catalogue/Comunes.h"
#include "catalogue/DatFile.h"
#include "catalogue/Dats.h"
#include "catalogue/Store.h"
#include "maintenance/DatTidy.h"

#include <QCryptographicHash>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace cintal;

namespace {

constexpr int kEntries = 20000;

QTemporaryDir* workDir = nullptr;

QString Hex(const char* kind, int i, QCryptographicHash::Algorithm algorithm) {
    return QString::fromLatin1(
        QCryptographicHash::hash(QByteArray(kind) + QByteArray::number(i), algorithm).toHex());
}

// Files 0..19,999; the DAT knows 0..14,999 by SHA1 and 15,000..29,999 by CRC
// and size, so that three quarters of the files are known and a quarter of
// the games missing.
bool Prepare(benchmark::State& state, QString& datPath) {
    static bool made = false;
    const QString db = workDir->filePath("dats.mdb");
    datPath = workDir->filePath("grande.dat");
    if (made) return true;
    Comunes::Reset();
    QString reason;
    if (!Store::CreateEmpty(db, &reason) || !Comunes::InitGlobals(db, &reason)) {
        state.SkipWithError(("catálogo: " + reason).toStdString().c_str());
        return false;
    }
    Store::Run("INSERT INTO Paths (PathIndex, GameDir) VALUES (1, ?)", {workDir->path()});
    Store::Begin();
    for (int i = 0; i < kEntries; ++i)
        Store::Run("INSERT INTO tFiles (FileName, Extension, PathIndex, FileSize, Crc32, Md5, "
                   "Sha1) VALUES (?, 'tzx', 1, ?, ?, ?, ?)",
                   {QStringLiteral("juego%1").arg(i), 1000 + i,
                    Hex("c", i, QCryptographicHash::Md5).left(8),
                    Hex("m", i, QCryptographicHash::Md5), Hex("s", i, QCryptographicHash::Sha1)});
    Store::Commit();
    QFile dat(datPath);
    dat.open(QIODevice::WriteOnly);
    dat.write("<?xml version=\"1.0\"?>\n<datafile>\n<header><name>Grande</name>"
              "<version>1</version></header>\n");
    for (int i = 0; i < kEntries; ++i) {
        const int file = i < 15000 ? i : i + 5000;
        QString rom = QStringLiteral("<game name=\"Juego %1 (1985)(Señor &amp; Cía)\"><rom "
                                     "name=\"Juego %1 (1985)(Señor &amp; Cía).tzx\" size=\"%2\" "
                                     "crc=\"%3\"")
                          .arg(i)
                          .arg(1000 + file)
                          .arg(Hex("c", file, QCryptographicHash::Md5).left(8));
        if (i < 15000) rom += " sha1=\"" + Hex("s", file, QCryptographicHash::Sha1) + "\"";
        dat.write((rom + "/></game>\n").toUtf8());
    }
    dat.write("</datafile>\n");
    dat.close();
    Dat loaded;
    if (!ReadDatFile(datPath, loaded, reason) || !Dats::Add(loaded)) {
        state.SkipWithError(("DAT: " + reason).toStdString().c_str());
        return false;
    }
    made = true;
    return true;
}

void BM_LoadDat20000(benchmark::State& state) {
    QString path;
    if (!Prepare(state, path)) return;
    for (auto _ : state) {
        Dat dat;
        QString why;
        if (!ReadDatFile(path, dat, why) || !Dats::Add(dat)) state.SkipWithError("carga");
    }
}
BENCHMARK(BM_LoadDat20000)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_Identify20000Files(benchmark::State& state) {
    QString path;
    if (!Prepare(state, path)) return;
    for (auto _ : state)
        if (!Dats::Identify()) state.SkipWithError("identificación");
}
BENCHMARK(BM_Identify20000Files)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_HaveAndMissing20000(benchmark::State& state) {
    QString path;
    if (!Prepare(state, path)) return;
    for (auto _ : state) {
        bool found = false;
        const auto report = Dats::Report("Grande", found);
        if (!report || report->have != 15000) state.SkipWithError("informe");
    }
}
BENCHMARK(BM_HaveAndMissing20000)->Unit(benchmark::kMillisecond)->Iterations(3);

// The catalogue's files on disk, in one folder, for the plan of names.
bool WriteFiles() {
    static bool written = false;
    for (int i = 0; !written && i < kEntries; ++i) {
        QFile f(workDir->filePath(QStringLiteral("juego%1.tzx").arg(i)));
        f.open(QIODevice::WriteOnly);
    }
    written = true;
    // The folder was added after the catalogue's paths were read.
    Comunes::Reset();
    QString reason;
    return Comunes::InitGlobals(workDir->filePath("dats.mdb"), &reason);
}

// The plan of names for 20,000 files of one folder, all on disk.
void BM_TidyPlan20000(benchmark::State& state) {
    QString path;
    if (!Prepare(state, path)) return;
    if (!WriteFiles()) return;
    qint64 planned = 0;
    for (auto _ : state) {
        DatTidy tidy;
        bool found = false;
        if (!tidy.Plan("Grande", found) || !found) state.SkipWithError("plan");
        planned = tidy.planned;
    }
    state.counters["renombres"] = static_cast<double>(planned);
}
BENCHMARK(BM_TidyPlan20000)->Unit(benchmark::kMillisecond)->Iterations(3);

// The renames of that plan: 15,000 files and their rows. Once, as it spends
// the plan.
void BM_TidyRun15000(benchmark::State& state) {
    QString path;
    if (!Prepare(state, path) || !WriteFiles()) return;
    for (auto _ : state) {
        state.PauseTiming();
        DatTidy tidy;
        bool found = false;
        if (!tidy.Plan("Grande", found) || !found) state.SkipWithError("plan");
        state.ResumeTiming();
        tidy.Run();
        state.counters["renombrados"] = static_cast<double>(tidy.renamed);
    }
}
BENCHMARK(BM_TidyRun15000)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

int main(int argc, char** argv) {
    return cintal::bench::RunCatalogueBenchmarks(argc, argv, workDir);
}
