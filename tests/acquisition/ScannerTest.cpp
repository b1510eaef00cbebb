// The disk scan over folder trees made here: what lands in the catalogue, the
// counters the collector watches, and the boxes kept as warnings.

#include "acquisition/Scanner.h"
#include "../catalogue/CatalogueFixture.h"
#include "../cli/CliRun.h"
#include "TapeBytes.h"
#include "acquisition/BuscarDirs.h"
#include "catalogue/Records.h"
#include "tape/Prompt.h"
#include "views/Principal.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QTimer>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace cintal::test {
namespace {

using Texts = std::vector<std::string>;
using Entries = std::vector<std::pair<std::uint8_t, std::string>>;

// The archive block first, as tools write it, then a small BASIC program.
Bytes Tape(const Entries& archive = {}) {
    Bytes t = raw::TzxHeader(1, 20);
    if (!archive.empty()) t += raw::Archive(archive);
    t += raw::Standard(raw::RomHeader(raw::RomType::Program, "cargador", 20, 10, 20));
    t += raw::Standard(raw::RomData(Bytes(20, '\x01')));
    return t;
}

Bytes Named(const std::string& name, const std::string& publisher) {
    return Tape({{0, name}, {1, publisher}});
}

// A block id that no version of the format has.
const Bytes kUnknownBlock("\x60\x01\x02\x03", 4);

std::string UnknownAt(const Bytes& before, int ordinal) {
    return "Bloque desconocido: 96 en  byte " + std::to_string(before.size() + 1) + " , bloque " +
           std::to_string(ordinal);
}

// Total, processed, new, existing, omitted, publishers.
std::string Counts(const ScanCounters& c) {
    return std::to_string(c.Total) + " " + std::to_string(c.Parcial) + " " +
           std::to_string(c.Creada) + " " + std::to_string(c.Agregada) + " " +
           std::to_string(c.Omitida) + " " + std::to_string(c.NwComp);
}

class ScanTest : public CatalogueTest {
protected:
    void SetUp() override {
        CatalogueTest::SetUp();
        ASSERT_TRUE(disk.isValid());
        Create();
        Open();
    }
    QString Put(const QString& relative, const Bytes& bytes) {
        const QString path = root + '/' + relative;
        QDir().mkpath(QFileInfo(path).path());
        WriteFile(path, QByteArray::fromStdString(bytes));
        return path;
    }
    std::string At(const QString& relative) const { return S(root + '/' + relative); }
    // Paths below the tree, "." for its base.
    Texts Relative(const QStringList& paths) const {
        Texts out;
        for (const QString& p : paths)
            out.push_back(p == root ? "." : S(p.mid(root.size() + 1)));
        return out;
    }
    Scanner::Result Scan() { return scanner.Run(root); }

    ScriptedPrompt prompt;
    PromptScope scope{prompt};
    QTemporaryDir disk;
    QString root = disk.path();
    Scanner scanner;
};

TEST_F(ScanTest, ASecondRunOverTheSameTreeAddsNothing) {
    Put("a/Tres.tzx", Named("Tres", "Dinamic"));
    Put("a/uno.tzx", Named("UNO", "OCEAN "));
    Put("a/z/z.tzx", Named("Dos", "Ocean"));
    Put("b/b1.tzx", Named("Uno", "ocean"));
    Put("nota.txt", "texto");
    Put("juego.tap", raw::TapEntry(raw::RomData("x")));
    Put(".oculto.tzx", Named("Oculto", "Nadie"));
    QDir().mkpath(root + "/vacia");

    ASSERT_EQ(Scan(), Scanner::Result::Done);
    EXPECT_EQ(Relative(scanner.List1), (Texts{".", "a", "a/z", "b", "vacia"}));
    EXPECT_EQ(Relative(scanner.List2), (Texts{"a/Tres.tzx", "a/uno.tzx", "a/z/z.tzx", "b/b1.tzx"}));
    EXPECT_EQ(Counts(scanner.counters), "4 4 3 1 0 2");
    // The second file of a title under one publisher, spelt otherwise, joins it.
    EXPECT_EQ(Rows("SELECT TitleId, Name, IdPub, HaveIt FROM Titles ORDER BY TitleId"),
              (Texts{"1|Tres|1|1", "2|UNO|2|1", "3|Dos|2|1"}));
    EXPECT_EQ(Rows("SELECT FileName, TitleId, PathIndex FROM tFiles ORDER BY FileId"),
              (Texts{"Tres|1|1", "uno|2|1", "z|3|2", "b1|2|3"}));
    // Folders without tapes, the base among them, are not registered.
    EXPECT_EQ(Rows("SELECT * FROM Paths ORDER BY PathIndex"),
              (Texts{"1|" + At("a"), "2|" + At("a/z"), "3|" + At("b")}));
    EXPECT_EQ(Rows("SELECT * FROM Publishers ORDER BY IdPub"),
              (Texts{"0|- Desconocido -", "1|Dinamic", "2|OCEAN"}));

    // The folder as typed, with a separator at its end, is the same folder.
    const Texts before = AllRows();
    ASSERT_EQ(scanner.Run(root + '/'), Scanner::Result::Done);
    EXPECT_EQ(Counts(scanner.counters), "4 8 3 1 4 2");
    EXPECT_EQ(AllRows(), before);
    EXPECT_TRUE(scanner.warnings.empty());
    EXPECT_TRUE(prompt.shown.empty());
}

TEST_F(ScanTest, TitlesAndPublishersAreFoundInTheRegisterIgnoringCaseAndTrailingBlanks) {
    Publisher(0, "- Desconocido -");
    Publisher(1, "Bug-Byte");
    Publisher(2, "Ocean");
    Publisher(3, "Érbe");
    Publisher(5, "Topo");
    Title("Manic Miner", "1983", 1, "Arc", 0, 0);
    Title("Sin Editor", "", 0, "", 0, 0);
    Title("Cañón", "", 3, "", 0, 0);
    Open();
    Put("1.tzx", Named("MANIC MINER", "BUG-BYTE  "));
    Put("2.tzx", Named("Manic Miner", "ocean"));
    Put("3.tzx", Tape({{0, "sin editor"}}));
    Put("4.tzx", Named("Sin editor", "- DESCONOCIDO -"));
    Put("5.tzx", Named("Nuevo", ""));
    // The register folds every letter; the store folds A to Z only, so an
    // accented title in capitals is a title of its own.
    Put("6.tzx", Named("CA\xD1\xD3N", "\xC9RBE"));
    // Blanks alone name no publisher, and never the unused number 4.
    Put("7.tzx", Named("Sin editor", "   "));

    ASSERT_EQ(Scan(), Scanner::Result::Done);
    EXPECT_EQ(Counts(scanner.counters), "7 7 3 4 0 0");
    // The same name under another publisher is another title; no publisher is
    // IdPub 0, never a number of its own.
    EXPECT_EQ(Rows("SELECT TitleId, Name, IdPub, HaveIt FROM Titles ORDER BY TitleId"),
              (Texts{"1|Manic Miner|1|1", "2|Sin Editor|0|1", "3|Cañón|3|0", "4|Manic Miner|2|1",
                     "5|Nuevo|0|1", "6|CAÑÓN|3|1"}));
    EXPECT_EQ(Rows("SELECT FileName, TitleId FROM tFiles ORDER BY FileName"),
              (Texts{"1|1", "2|4", "3|2", "4|2", "5|5", "6|6", "7|2"}));
    EXPECT_EQ(Rows("SELECT count(*) FROM Publishers"), Texts{"5"});
}

TEST_F(ScanTest, RowsOfANewTitleAndOfAFileJoiningItByTheCutName) {
    const Bytes first =
        Tape({{0, "La leyenda del \"Se\xF1or\" de las mazmorras perdidas: segunda parte"},
              {1, "Dinamic"},
              {2, "Jos\xE9 P\xE9rez"},
              {3, "1985/86"},
              {4, "Spanish"},
              {5, "Arcade"},
              {6, "1.99"},
              {7, "Speedlock 2"},
              {8, "Original Release, edicion limitada con manual y poster"},
              {9, "Erbe Software"},
              {255, "Comentario"}});
    const Bytes second =
        Tape({{0, "La leyenda del \"Se\xF1or\" de las mazmorras perdidas: tercera parte"},
              {1, "Dinamic"},
              {3, "1987"}});
    Put("Sub/JUEGO.TZX", first);
    Put("Sub/otro.tzx", second);

    ASSERT_EQ(Scan(), Scanner::Result::Done);
    EXPECT_EQ(Counts(scanner.counters), "2 2 1 1 0 1");
    EXPECT_EQ(Rows("SELECT TitleId, Name, Year, IdPub, Type, HaveIt, Author, Estado FROM Titles"),
              Texts{"1|La leyenda del 'Señor' de las mazmorras perdidas: |1985|1|Arc|1|José "
                    "Pérez|0"});
    EXPECT_EQ(Rows("SELECT TitleId, FileName, Extension, PathIndex, FileSize, Origin, IdLang, "
                   "LoadSchema, HaveIt FROM tFiles ORDER BY FileId"),
              (Texts{"1|JUEGO|tzx|1|" + std::to_string(first.size()) +
                         "|Original Release, edicion limitada con manual y po|Spa|Speedlock 2|1",
                     "1|otro|tzx|1|" + std::to_string(second.size()) + "||NULL||1"}));
    EXPECT_EQ(Rows("SELECT * FROM Paths"), Texts{"1|" + At("Sub")});
    // The re-publisher is not a publisher of the title.
    EXPECT_EQ(Rows("SELECT * FROM Publishers ORDER BY IdPub"),
              (Texts{"0|- Desconocido -", "1|Dinamic"}));
}

TEST_F(ScanTest, FilesWithoutInformationTakeTheirNameAndFilesAddedByHandAreOmitted) {
    Title("A mano", "", 0, "", 0, 0);
    Open();
    const QString hand = Put("MANO.TZX", Named("Otro nombre", "Otra"));
    ASSERT_EQ(Records::AddFileToTitle(1, hand), Records::RecordChange::Done);
    const Bytes bare = Tape();
    Put("sin info.tzx", bare);
    Put("basura.tzx", "esto no es una cinta");
    Put("corto.tzx", "ZX");

    ASSERT_EQ(Scan(), Scanner::Result::Done);
    EXPECT_EQ(Counts(scanner.counters), "4 4 3 0 1 0");
    EXPECT_EQ(Rows("SELECT TitleId, Name, IdPub, HaveIt FROM Titles ORDER BY TitleId"),
              (Texts{"1|A mano|0|1", "2|basura|0|1", "3|corto|0|1", "4|sin info|0|1"}));
    EXPECT_EQ(Rows("SELECT FileName, Extension, TitleId, FileSize FROM tFiles ORDER BY FileId"),
              (Texts{"MANO|TZX|1|" + std::to_string(Named("Otro nombre", "Otra").size()),
                     "basura|tzx|2|20", "corto|tzx|3|2",
                     "sin info|tzx|4|" + std::to_string(bare.size())}));
    EXPECT_TRUE(Rows("SELECT * FROM Publishers").empty());
}

TEST_F(ScanTest, HiddenFoldersAndLinksAreNotWalkedAndTheMaskIgnoresCase) {
    Put("real/JUEGO.TZX", Named("Juego", ""));
    Put("real/Mixto.TzX", Named("Mixto", ""));
    Put("real/.escondido.tzx", Named("Escondido", ""));
    Put(".oculta/a.tzx", Named("Oculta", ""));
    QTemporaryDir outside;
    WriteFile(outside.filePath("fuera.tzx"), QByteArray::fromStdString(Named("Fuera", "")));
    ASSERT_TRUE(QFile::link(root + "/real", root + "/enlace"));
    ASSERT_TRUE(QFile::link(outside.path(), root + "/fuera"));
    // A link back up would never end if links were followed.
    ASSERT_TRUE(QFile::link(root, root + "/real/bucle"));

    ASSERT_EQ(Scan(), Scanner::Result::Done);
    EXPECT_EQ(Relative(scanner.List1), (Texts{".", "real"}));
    EXPECT_EQ(Relative(scanner.List2), (Texts{"real/JUEGO.TZX", "real/Mixto.TzX"}));
    EXPECT_EQ(Rows("SELECT FileName, Extension, PathIndex, HaveIt FROM tFiles ORDER BY FileId"),
              (Texts{"JUEGO|tzx|1|1", "Mixto|tzx|1|1"}));
    EXPECT_EQ(Rows("SELECT Name, HaveIt FROM Titles ORDER BY TitleId"),
              (Texts{"Juego|1", "Mixto|1"}));
    EXPECT_EQ(Rows("SELECT * FROM Paths"), Texts{"1|" + At("real")});
}

TEST_F(ScanTest, NamesThatDifferOnlyInCaseAreTwoFilesAndNamesNotInUtf8AreWarnedAbout) {
    Put("n/Ninja.tzx", Named("Ninja", ""));
    Put("n/NINJA.TZX", Named("Ninja", ""));
    // Bytes of another code page: a name the store can't hold.
    const std::string bad = S(root) + "/n/Caf\xE9.tzx";
    std::ofstream(bad, std::ios::binary) << Named("Cafe", "");
    std::filesystem::create_directory(S(root) + "/Ca\xF1"
                                                "ada");
    ASSERT_EQ(Scan(), Scanner::Result::Done);
    EXPECT_EQ(Counts(scanner.counters), "3 3 1 1 0 0");
    EXPECT_EQ(Rows("SELECT FileName, Extension, TitleId FROM tFiles ORDER BY FileId"),
              (Texts{"NINJA|tzx|1", "Ninja|tzx|1"}));
    // The third is the number of the first folder registered.
    ASSERT_EQ(scanner.warnings.size(), 3u);
    EXPECT_EQ(S(scanner.warnings[0].path), S(root) + "/Ca\\xf1ada");
    EXPECT_EQ(S(scanner.warnings[0].text), "el nombre no es UTF-8 válido: no se recorre");
    EXPECT_EQ(S(scanner.warnings[1].path), At("n") + "/Caf\\xe9.tzx");
    EXPECT_EQ(S(scanner.warnings[1].text), "el nombre no es UTF-8 válido: no se puede catalogar");

    // A second run knows both files.
    scanner.counters = {};
    ASSERT_EQ(Scan(), Scanner::Result::Done);
    EXPECT_EQ(Counts(scanner.counters), "3 3 0 0 2 0");
    // Qt can't name them, so the temporary folder couldn't remove them.
    std::filesystem::remove(bad);
    std::filesystem::remove(S(root) + "/Ca\xF1"
                                      "ada");
}

TEST_F(ScanTest, BoxesOfReadingAndRegisteringAreKeptAsWarningsWithThePath) {
    Path(1, "/lejos/uno");
    Path(3, "/lejos/tres");
    Open();
    const Bytes readable = Named("Roto", "Ocean");
    const QString broken = Put("roto.tzx", readable + kUnknownBlock);
    Put("sano.tzx", Named("Sano", "Ocean"));

    ASSERT_EQ(Scan(), Scanner::Result::Done);
    EXPECT_TRUE(prompt.shown.empty());
    // The new folder fills the gap in the numbers, which the register tells.
    std::vector<std::pair<std::string, std::string>> got;
    for (const ScanWarning& w : scanner.warnings)
        got.emplace_back(S(w.path), S(w.text));
    EXPECT_EQ(got, (std::vector<std::pair<std::string, std::string>>{
                       {S(broken), "2"}, {S(broken), UnknownAt(readable, 4)}}));
    EXPECT_EQ(S(scanner.Estado), "Terminado: 2 avisos");
    // What was read before the unknown block still names the title.
    EXPECT_EQ(Rows("SELECT FileName, PathIndex, TitleId FROM tFiles ORDER BY FileId"),
              (Texts{"roto|2|1", "sano|2|2"}));
    EXPECT_EQ(Rows("SELECT Name FROM Titles ORDER BY TitleId"), (Texts{"Roto", "Sano"}));

    ASSERT_EQ(Scan(), Scanner::Result::Done);
    EXPECT_TRUE(scanner.warnings.empty());
}

TEST_F(ScanTest, AStoreFailureEndsTheRunAndKeepsTheFilesDoneBeforeIt) {
    Put("a.tzx", Named("Uno", "Ocean"));
    Put("b.tzx", Named("Dos", "Dinamic"));
    Put("c.tzx", Named("Tres", "Topo"));
    Sql(db, "CREATE TRIGGER lleno BEFORE INSERT ON tFiles WHEN NEW.FileName = 'b' "
            "BEGIN SELECT RAISE(ABORT, 'disco lleno'); END");

    EXPECT_EQ(Scan(), Scanner::Result::StoreFailed);
    ASSERT_EQ(prompt.shown.size(), 1u);
    EXPECT_EQ(prompt.shown[0].text, "Error en el catálogo: disco lleno");
    EXPECT_EQ(prompt.shown[0].icon, Icon::Critical);
    EXPECT_EQ(S(scanner.Estado), "Error en el catálogo");
    // Nothing of the failed file stays, its publisher included.
    EXPECT_EQ(Counts(scanner.counters), "3 1 1 0 0 1");
    EXPECT_EQ(Rows("SELECT TitleId, Name, IdPub FROM Titles"), Texts{"1|Uno|1"});
    EXPECT_EQ(Rows("SELECT FileName, TitleId FROM tFiles"), Texts{"a|1"});
    EXPECT_EQ(Rows("SELECT * FROM Paths"), Texts{"1|" + S(root)});
    EXPECT_EQ(Rows("SELECT * FROM Publishers ORDER BY IdPub"),
              (Texts{"0|- Desconocido -", "1|Ocean"}));
    EXPECT_EQ(Comunes::PublisherNames, (std::vector<QString>{"- Desconocido -", "Ocean"}));

    // Once the store works again a run takes up the files left.
    Sql(db, "DROP TRIGGER lleno");
    EXPECT_EQ(Scan(), Scanner::Result::Done);
    EXPECT_EQ(Rows("SELECT TitleId, Name, IdPub FROM Titles ORDER BY TitleId"),
              (Texts{"1|Uno|1", "2|Dos|2", "3|Tres|3"}));
    EXPECT_EQ(Rows("SELECT * FROM Publishers ORDER BY IdPub"),
              (Texts{"0|- Desconocido -", "1|Ocean", "2|Dinamic", "3|Topo"}));
    EXPECT_EQ(prompt.shown.size(), 1u);
}

TEST_F(ScanTest, CliScanPrintsTheCountersThenTheWarningsAndFailsOnAStoreFailure) {
    const Bytes readable = Named("Roto", "Ocean");
    const QString broken = Put("x/roto.tzx", readable + kUnknownBlock);
    Put("x/sano.tzx", Named("Sano", "Ocean"));
    Result r = CliWithoutTime({"scan", S(root), "--db", S(db)});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "Total encontrados: 2\nTotal procesados: 2\nArchivos comprimidos: 0\n"
                     "Cintas dentro de comprimidos: 0\nA entradas nuevas: 2\n"
                     "A entradas existentes: 0\nArchivos omitidos: 0\nCompañías agregadas: 1\n"
                     "Tiempo empleado: -\nTerminado: 2 avisos\n");
    // The first folder of an empty register tells its number, as a gap would.
    EXPECT_EQ(r.err, S(broken) + ": 1\n" + S(broken) + ": " + UnknownAt(readable, 4) + "\n");

    Put("x/z-nuevo.tzx", Named("Nuevo", "Ocean"));
    Sql(db, "CREATE TRIGGER lleno BEFORE INSERT ON tFiles BEGIN SELECT RAISE(ABORT, 'disco "
            "lleno'); END");
    r = CliWithoutTime({"scan", S(root), "--db", S(db)});
    EXPECT_EQ(r.status, 2);
    EXPECT_NE(r.out.find("Total procesados: 2\n"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("Archivos omitidos: 2\n"), std::string::npos) << r.out;
    EXPECT_EQ(r.err, "Error en el catálogo: disco lleno\n");

    r = CliWithoutTime({"scan", At("no-existe"), "--db", S(db)});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, "No existe la carpeta " + At("no-existe") + "\n");
}

TEST_F(ScanTest, TheWindowSavesItsFolderAndAddsUpItsCountersOverRuns) {
    Put("a.tzx", Named("Uno", "Ocean"));
    Put("s/b.tzx", Named("Uno", "Ocean"));
    const Bytes readable = Named("Dos", "");
    const QString broken = Put("s/c.tzx", readable + kUnknownBlock);
    SaveSetting("Caminos", "Ruta", root + "/ya-no-existe");
    {
        BuscarDirs gone;
        EXPECT_EQ(gone.Dir1Path(), QDir::homePath());
        gone.Dir1_Click(root);
    }
    EXPECT_EQ(GetSetting("Caminos", "Unidad"), QDir::rootPath());
    EXPECT_EQ(GetSetting("Caminos", "Ruta"), root);

    BuscarDirs w;
    ASSERT_EQ(w.Dir1Path(), root);
    auto labels = [&] {
        return S(QStringList{w.LabelTotal->text(), w.LabelParcial->text(), w.LabelCreada->text(),
                             w.LabelAgregada->text(), w.LabelOmitida->text(), w.LabelNwComp->text()}
                     .join(' '));
    };
    w.CommandSelecciona_Click();
    EXPECT_EQ(labels(), "3 3 2 1 0 1");
    EXPECT_EQ(S(w.LabelEstado->text()), "Terminado: 2 avisos");
    EXPECT_EQ(w.List1->count(), 2);
    EXPECT_EQ(w.List2->count(), 3);
    ASSERT_EQ(w.Avisos->count(), 2);
    EXPECT_EQ(S(w.Avisos->item(1)->text()), S(broken) + ": " + UnknownAt(readable, 4));
    EXPECT_EQ(w.ProgressBar1->value(), w.ProgressBar1->maximum());

    w.CommandSelecciona_Click();
    EXPECT_EQ(labels(), "3 6 2 1 3 1");
    EXPECT_EQ(w.List2->count(), 3);
    EXPECT_EQ(w.Avisos->count(), 0);
}

TEST_F(ScanTest, NamesFromTheFileSystemStayUnicodeIntoTheStoreAndOnScreen) {
    // Tapes without archive information are named after their files.
    Put(QStringLiteral("Łódź/Zażółć gęślą.tzx"), Tape());
    Put(QStringLiteral("Łódź/Ласточка.tzx"), Tape());
    Put(QStringLiteral("Łódź/Картошка.tzx"), Tape());
    Put(QStringLiteral("Кассеты/ЛАСТОЧКА.tzx"), Tape());
    // The quote and the length rules count characters, not bytes: the cut
    // never splits a character, one outside the basic plane included.
    const QString longName = QStringLiteral("Пёс \"Барбос\" и необычный кросс, повесть ") +
                             QString(9, QChar(0x0436)) + QStringLiteral("🎮 и ещё");
    ASSERT_EQ(longName.left(49).size(), 49);
    ASSERT_TRUE(longName.at(49).isHighSurrogate());
    Put("Кассеты/" + longName + ".tzx", Tape());

    ASSERT_EQ(Scan(), Scanner::Result::Done);
    EXPECT_EQ(Relative(scanner.List1), (Texts{".", "Łódź", "Кассеты"}));
    EXPECT_EQ(Counts(scanner.counters), "5 5 5 0 0 0");
    const QString cut = QString(longName).replace('"', '\'').left(51);
    // The store folds A to Z only: Cyrillic capitals make a title of their own.
    EXPECT_EQ(Rows("SELECT TitleId, Name, IdPub, HaveIt FROM Titles ORDER BY TitleId"),
              (Texts{"1|Zażółć gęślą|0|1", "2|Картошка|0|1", "3|Ласточка|0|1", "4|ЛАСТОЧКА|0|1",
                     "5|" + S(cut) + "|0|1"}));
    EXPECT_EQ(Rows("SELECT FileName, TitleId, PathIndex, HaveIt FROM tFiles ORDER BY FileId"),
              (Texts{"Zażółć gęślą|1|1|1", "Картошка|2|1|1", "Ласточка|3|1|1", "ЛАСТОЧКА|4|2|1",
                     S(longName) + "|5|2|1"}));
    EXPECT_EQ(Rows("SELECT * FROM Paths ORDER BY PathIndex"),
              (Texts{"1|" + At("Łódź"), "2|" + At("Кассеты")}));

    // A second file of the same name joins its title, found by the whole name.
    Put(QStringLiteral("Otra/Ласточка.tzx"), Tape());
    Put("Otra/" + longName + ".TZX", Tape());
    ASSERT_EQ(Scan(), Scanner::Result::Done);
    EXPECT_EQ(Counts(scanner.counters), "7 12 5 2 5 0");
    EXPECT_EQ(Rows("SELECT FileName, TitleId FROM tFiles WHERE PathIndex = 3 ORDER BY FileId"),
              (Texts{"Ласточка|3", S(longName) + "|5"}));

    // What the collector reads: the title list of the command line.
    Comunes::Reset();
    const Result r = Cli({"titles", "--db", S(db)});
    ASSERT_EQ(r.status, 0);
    Texts lines;
    std::istringstream in(r.out);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    std::sort(lines.begin(), lines.end());
    Texts expected;
    for (const QString& name : {QStringLiteral("Zażółć gęślą"), QStringLiteral("Картошка"),
                                QStringLiteral("Ласточка"), QStringLiteral("ЛАСТОЧКА"), cut})
        expected.push_back("0\t" + S(name) + "\t\t\t\t1");
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(lines, expected);

    // And the main window: the title's files with their names and folders.
    Principal frm;
    ASSERT_TRUE(frm.Form_Load(db));
    Grid* titles = frm.GridTitles;
    for (int r = 1; r <= titles->Rows(); ++r)
        if (titles->CellText(r, titles->ColumnIndex("ColName")) == QStringLiteral("Ласточка"))
            titles->SetSelectedRow(r);
    Grid* files = frm.GridFiles;
    ASSERT_EQ(files->Rows(), 2);
    Texts shown;
    for (int r = 1; r <= 2; ++r)
        shown.push_back(S(files->CellText(r, files->ColumnIndex("ColFileName")) + "|" +
                          files->CellText(r, files->ColumnIndex("ColPath"))));
    EXPECT_EQ(shown, (Texts{"Ласточка.tzx|" + At("Łódź"), "Ласточка.tzx|" + At("Otra")}));
}

TEST_F(ScanTest, FoldersAndFilesAreListedInNameOrderIgnoringCase) {
    Put("Zeta/Zorro.tzx", Tape());
    Put("Zeta/abeja.tzx", Tape());
    Put("alfa/B.tzx", Tape());
    Put("alfa/a.tzx", Tape());
    Put("alfa/Beta/x.tzx", Tape());
    Put("alfa/aguila/x.tzx", Tape());

    ASSERT_EQ(Scan(), Scanner::Result::Done);
    EXPECT_EQ(Relative(scanner.List1), (Texts{".", "alfa", "alfa/aguila", "alfa/Beta", "Zeta"}));
    EXPECT_EQ(Relative(scanner.List2),
              (Texts{"alfa/a.tzx", "alfa/B.tzx", "alfa/aguila/x.tzx", "alfa/Beta/x.tzx",
                     "Zeta/abeja.tzx", "Zeta/Zorro.tzx"}));
}

TEST_F(ScanTest, TheWindowShowsFoldersFilesAndTheTotalAsTheWalkGoes) {
    Put("a/1.tzx", Named("Uno", ""));
    Put("a/2.tzx", Named("Dos", ""));
    Put("b/3.tzx", Named("Tres", ""));
    QDir().mkpath(root + "/c");
    BuscarDirs w;
    w.Dir1_Click(root);
    // What the window shows each time the scan tells it something.
    Texts seen;
    const auto show = w.scanner.onProgress;
    w.scanner.onProgress = [&](const Scanner& s) {
        show(s);
        seen.push_back(S(w.LabelEstado->text() + ' ' + w.LabelTotal->text() + ' ' +
                         QString::number(w.List1->count()) + ' ' +
                         QString::number(w.List2->count())));
    };
    w.CommandSelecciona_Click();
    const Texts walk(seen.begin(), seen.begin() + std::min<std::size_t>(seen.size(), 9));
    EXPECT_EQ(walk, (Texts{"Procesando directorios... 0 1 0", "Procesando directorios... 0 2 0",
                           "Procesando directorios... 0 3 0", "Procesando directorios... 0 4 0",
                           "Buscando archivos... 0 4 0", "Buscando archivos... 1 4 1",
                           "Buscando archivos... 2 4 2", "Buscando archivos... 3 4 3",
                           "Procesando archivos... 3 4 3"}));
    EXPECT_EQ(S(w.List1->item(0)->text()), S(root));
    EXPECT_EQ(S(w.List2->item(2)->text()), At("b/3.tzx"));
    EXPECT_EQ(S(w.LabelParcial->text()), "3");

    // With no tape anywhere the folders walked still stand in the list.
    QTemporaryDir empty;
    QDir().mkpath(empty.filePath("x/y"));
    seen.clear();
    w.Dir1_Click(empty.path());
    w.CommandSelecciona_Click();
    EXPECT_EQ(S(w.LabelEstado->text()), "No hay archivos que agregar");
    EXPECT_EQ(S(w.LabelTotal->text()), "0");
    ASSERT_EQ(w.List1->count(), 3);
    EXPECT_EQ(S(w.List1->item(0)->text()), S(empty.path()));
    EXPECT_EQ(S(w.List1->item(2)->text()), S(empty.filePath("x/y")));
    EXPECT_EQ(w.List2->count(), 0);
}

TEST_F(ScanTest, TheSearchCommandRefillsTheTitleListWhenTheWindowCloses) {
    Put("a.tzx", Named("Uno", "Ocean"));
    Put("b.tzx", Named("Dos", "Ocean"));
    SaveSetting("Caminos", "Ruta", root);
    Principal frm;
    ASSERT_TRUE(frm.Form_Load(db));
    ASSERT_EQ(frm.GridTitles->Rows(), 0);
    // The window is modal: it is driven from inside its own loop.
    QTimer drive;
    QObject::connect(&drive, &QTimer::timeout, [&] {
        auto* w = frm.findChild<BuscarDirs*>();
        if (!w || !w->isVisible()) return;
        drive.stop();
        w->CommandSelecciona_Click();
        w->accept();
    });
    drive.start(10);
    frm.CmdSearch_Click();
    EXPECT_EQ(frm.GridTitles->Rows(), 2);
}

} // namespace
} // namespace cintal::test
