// The listing import over listing pages written here line by line, as the
// archive saves them: what lands in the catalogue, the counters and the
// warnings the collector reads, the window and the command line.

#include "../catalogue/CatalogueFixture.h"
#include "../cli/CliRun.h"
#include "../tape/TestSupport.h"
#include "acquisition/BuscarDirs.h"
#include "acquisition/FrmAgregarDesde.h"
#include "acquisition/FrmWosIn.h"
#include "acquisition/WosImporter.h"
#include "views/Principal.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <regex>
#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace cintal::test {
namespace {

using Texts = std::vector<std::string>;

std::string Pad(std::string text, std::size_t width) {
    text.resize(width, ' ');
    return text;
}

// The width a browser shows: an entity is one character.
std::size_t Shown(const std::string& text) {
    return std::regex_replace(text, std::regex("&#?\\w+;"), "_").size();
}

// An entry with its link: 112 characters once the link's tags are gone. Texts
// are Windows-1252.
std::string Row(const std::string& title, const std::string& year, const std::string& publisher,
                const std::string& type = "Arcade", const std::string& gap = "") {
    return "<A HREF=\"../infoseek/0000123.html\">" + title + "</A>" +
           std::string(43 - Shown(title), ' ') + Pad(gap, 9) + Pad(year, 4) + ' ' + publisher +
           std::string(36 - Shown(publisher), ' ') + " Eng 48K    " + Pad(type, 7);
}
// Lines of each class the pages mark.
const auto Plain = [](const std::string& row) { return row + '\n'; };
const auto Bold = [](const std::string& row) { return "<B>" + row + "</B>\n"; };
const auto Italic = [](const std::string& row) { return "<I>" + row + "</I>\n"; };
const auto Blue = [](const std::string& row) {
    return "<FONT COLOR=\"BLUE\">" + row + "</FONT>\n";
};
const auto Red = [](const std::string& row) { return "<FONT COLOR=\"RED\">" + row + "</FONT>\n"; };

// A page: three lines of mark-up, the table's heading on the fourth line, the
// entries from the fifth, and "</PRE>" right behind the last line feed.
std::string Page(const std::string& lines) {
    return "<HTML>\n<BODY>\n<PRE>\n" + Pad("Title", 52) + Pad("Year Publisher", 66) + '\n' + lines +
           "</PRE>\n</BODY>\n</HTML>\n";
}

class WosTest : public CatalogueTest, protected ScriptedBoxes {
protected:
    void SetUp() override {
        CatalogueTest::SetUp();
        ASSERT_TRUE(disk.isValid());
        Create();
        Open();
        Put("legend.html", "<HTML></HTML>\n");
    }
    QString Put(const QString& relative, const std::string& bytes) {
        const QString path = root + '/' + relative;
        QDir().mkpath(QFileInfo(path).path());
        WriteFile(path, QByteArray::fromStdString(bytes));
        return path;
    }
    std::string At(const QString& relative) const { return S(root + '/' + relative); }
    Texts Titles() {
        return Rows("SELECT Name, Year, IdPub, Type, Estado, Currah, OrigenInfo, HaveIt FROM "
                    "Titles ORDER BY TitleId");
    }
    Texts Warnings() const {
        Texts out;
        for (const ScanWarning& w : importer.warnings)
            out.push_back(S(w.path) + ": " + S(w.text));
        return out;
    }
    // Pages found, titles new, titles existing, publishers added.
    std::string Counts() const {
        const WosCounters& c = importer.counters;
        return std::to_string(c.Paginas) + " " + std::to_string(c.Nuevos) + " " +
               std::to_string(c.Existentes) + " " + std::to_string(c.NwComp);
    }
    WosImporter::Result Import() { return importer.Run(root); }

    QTemporaryDir disk;
    QString root = disk.path();
    WosImporter importer;
};

TEST_F(WosTest, EachLineClassGivesItsEstadoAndTheColumnsStayInPlace) {
    const std::string speech = Row("Alien 8", "1985", "Ultimate", "Arcade", " (speech)");
    Put("games/a.html",
        Page(Bold(Row("Abu Simbel Profanation", "1985", "Dinamic")) + Italic(speech) +
             Blue(Row("Amazonas", "1988", "Topo Soft", "Aventur")) +
             Red(Row("Ant Attack", "1983", "Quicksilva")) +
             Plain(Row("Astro Blaster", "1984", "Ocean", "Shoot")) +
             Bold(Row("Avenger", "1986", "Gremlin"))));

    // The records as the parser cuts them: the marker and the speech flag
    // behind the visible columns, the marker's blanks standing in for it.
    WosPageInfo info;
    const QString records = ParseWosPage(root + "/games/a.html", &info);
    EXPECT_TRUE(info.found && info.table && info.leftOut.empty());
    ASSERT_EQ(records.size(), 6 * 120);
    const std::string tail = " Eng 48K    Arcade ";
    EXPECT_EQ(S(records.mid(120, 120)),
              Pad("Alien 8", 52) + "1985 " + Pad("Ultimate", 36) + tail + "     1\r\n");
    EXPECT_EQ(S(records.mid(0, 120)), Pad("Abu Simbel Profanation", 52) + "1985 " +
                                          Pad("Dinamic", 36) + tail + " STP 0\r\n");
    EXPECT_EQ(S(records.mid(360, 120)),
              Pad("Ant Attack", 52) + "1983 " + Pad("Quicksilva", 36) + tail + " DND 0\r\n");

    ASSERT_EQ(Import(), WosImporter::Result::Done);
    EXPECT_EQ(
        Titles(),
        (Texts{"Abu Simbel Profanation|1985|1|Arcade|1|0|1|0", "Alien 8|1985|2|Arcade|4|1|1|0",
               "Amazonas|1988|3|Aventur|2|0|1|0", "Ant Attack|1983|4|Arcade|3|0|1|0",
               "Astro Blaster|1984|5|Shoot|4|0|1|0", "Avenger|1986|6|Arcade|1|0|1|0"}));
    EXPECT_EQ(Rows("SELECT * FROM Publishers ORDER BY IdPub"),
              (Texts{"0|- Desconocido -", "1|Dinamic", "2|Ultimate", "3|Topo Soft", "4|Quicksilva",
                     "5|Ocean", "6|Gremlin"}));
    // The register in memory grew with the table.
    EXPECT_EQ(Comunes::PublisherNames,
              (std::vector<QString>{"- Desconocido -", "Dinamic", "Ultimate", "Topo Soft",
                                    "Quicksilva", "Ocean", "Gremlin"}));
    EXPECT_EQ(Comunes::FindPublisher("GREMLIN"), 6);
    EXPECT_EQ(Counts(), "1 6 0 6");
    EXPECT_TRUE(importer.warnings.empty());
    EXPECT_TRUE(prompt.shown.empty());
    // Nothing but titles: no file and no folder.
    EXPECT_TRUE(Rows("SELECT * FROM tFiles").empty());
    EXPECT_TRUE(Rows("SELECT * FROM Paths").empty());
}

TEST_F(WosTest, TheLastLineOfATableKeepsItsColumnsInEveryClass) {
    // "</PRE>" follows the last line feed: the cut takes that and the line's
    // last character, a closing tag's or a blank of the type column.
    const std::string first = Plain(Row("Primero", "1980", "Uno"));
    Put("games/b.html", Page(first + Bold(Row("Negrita", "1981", "Dos", "Puzzle"))));
    Put("games/c.html", Page(first + Italic(Row("Cursiva", "1982", "Tres", "Aventur"))));
    Put("games/d.html", Page(first + Blue(Row("Azul", "1983", "Cuatro", "Arcade", " (speech)"))));
    Put("games/e.html", Page(first + Red(Row("Rojo", "1984", "Cinco", "Sport"))));
    Put("games/f.html", Page(first + Plain(Row("Llano", "1985", "Seis", "Arcade"))));

    ASSERT_EQ(Import(), WosImporter::Result::Done);
    EXPECT_EQ(Titles(), (Texts{"Primero|1980|1|Arcade|4|0|1|0", "Negrita|1981|2|Puzzle|1|0|1|0",
                               "Cursiva|1982|3|Aventur|4|0|1|0", "Azul|1983|4|Arcade|2|1|1|0",
                               "Rojo|1984|5|Sport|3|0|1|0", "Llano|1985|6|Arcade|4|0|1|0"}));
    EXPECT_EQ(Counts(), "5 6 4 6");
    EXPECT_TRUE(importer.warnings.empty());
}

TEST_F(WosTest, TheFirstFoldersForceTheirCodesAndTheFirstEntrySeenWins) {
    Put("tr-games/m.html", Page(Bold(Row("Manic Miner", "1983", "Bug-Byte"))));
    Put("type-ins/m.html", Page(Plain(Row("Mi Programa", "1984", "MicroHobby", "Utility")) +
                                Red(Row("Manic Miner", "1983", "Bug-Byte"))));
    // The same title under another publisher is another title.
    Put("games/m.html", Page(Blue(Row("Manic Miner", "1983", "Bug-Byte")) +
                             Italic(Row("Manic Miner", "1984", "Software Projects"))));
    // The page of other first characters comes after the letters.
    Put("games/1.html", Page(Plain(Row("3D Tank Duel", "1984", "Real Time"))));
    Put("textadv/a.html", Page(Italic(Row("Aventura Original", "1989", "Aventuras AD"))));
    Texts labels;
    importer.onProgress = [&](const WosImporter& w) {
        labels.push_back(std::to_string(w.pagesDone) + "/" + std::to_string(w.pagesTotal) + " " +
                         S(w.Label1));
    };

    ASSERT_EQ(Import(), WosImporter::Result::Done);
    EXPECT_EQ(Titles(),
              (Texts{"Manic Miner|1983|1|Arcade|6|0|1|0", "Mi Programa|1984|2|Utility|5|0|1|0",
                     "Manic Miner|1984|3|Arcade|4|0|1|0", "3D Tank Duel|1984|4|Arcade|4|0|1|0",
                     "Aventura Original|1989|5|Arcade|4|0|1|0"}));
    // Missing letters are passed over in silence.
    EXPECT_EQ(Counts(), "5 5 2 5");
    EXPECT_TRUE(importer.warnings.empty());
    // The label names the letter just finished, and keeps it over "1.html".
    ASSERT_EQ(labels.size(), 136u);
    EXPECT_EQ(labels[0], "0/135 ");
    EXPECT_EQ(labels[1], "1/135 Importando Basic letra a");
    EXPECT_EQ(labels[27], "27/135 Importando Basic letra z");
    EXPECT_EQ(labels[28], "28/135 Importando Basic letra a");
    EXPECT_EQ(labels[55], "55/135 Importando utilidades letra a");
    EXPECT_EQ(labels[82], "82/135 Importando juegos letra a");
    EXPECT_EQ(labels[109], "109/135 Importando aventuras letra a");
    EXPECT_EQ(labels[135], "135/135 Importando aventuras letra z");
}

TEST_F(WosTest, PublishersAndTitlesAreFoundIgnoringCaseAndTextIsWindows1252) {
    Publisher(0, "- Desconocido -");
    Publisher(1, "Ocean");
    Publisher(2, "\xC3\x89rbe");
    Title("Batman", "1986", 1, "Arcade", 1, 0);
    Open();
    Put("utils/b.html", Page(Plain(Row("BATMAN", "1990", "OCEAN")) +
                             Bold(Row("Barbarian \"The Warrior\"", "1987", "Palace")) +
                             Plain(Row("Bola de Cristal", "", "")) +
                             Plain(Row("Bruce Lee", "1984", "- desconocido -")) +
                             Plain(Row("Barbarian 'The Warrior'", "1988", "palace"))));
    Put("utils/c.html", Page(Italic(Row("Ca\xF1\xF3n Espa\xF1ol", "1989", "\xC9RBE", "Acci\xF3n")) +
                             Italic(Row("CA\xD1\xD3N ESPA\xD1OL", "1989", "\xE9rbe"))));

    ASSERT_EQ(Import(), WosImporter::Result::Done);
    // The title the collector has is left as it was, owned and with its code.
    // Double quotes become apostrophes, so the second Barbarian is the first.
    // The store folds A to Z only: the title in accented capitals is new.
    EXPECT_EQ(
        Titles(),
        (Texts{"Batman|1986|1|Arcade|0|NULL|0|1", "Barbarian 'The Warrior'|1987|3|Arcade|1|0|1|0",
               "Bola de Cristal||0|Arcade|4|0|1|0", "Bruce Lee|1984|0|Arcade|4|0|1|0",
               "Cañón Español|1989|2|Acción|4|0|1|0", "CAÑÓN ESPAÑOL|1989|2|Arcade|4|0|1|0"}));
    EXPECT_EQ(Rows("SELECT * FROM Publishers ORDER BY IdPub"),
              (Texts{"0|- Desconocido -", "1|Ocean", "2|Érbe", "3|Palace"}));
    EXPECT_EQ(Counts(), "2 5 2 1");
}

TEST_F(WosTest, PagesAndLinesThatCannotBeReadAreWarnedAndTheRestIsImported) {
    Put("games/g.html",
        Page(Plain(Row("Gauntlet", "1987", "U.S. Gold")) +
             Plain(Row("Ghostbusters", "1984", "Activision") + ' ') + "<FONT COLOR=\"GREEN\">" +
             Row("Green Beret", "1986", "Imagine") + "</FONT>\n" +
             std::regex_replace(Plain(Row("Gyroscope", "1985", "Melbourne House")),
                                std::regex("</A>"), "</a>") +
             Bold(Row("Gyruss", "1984", "Parker", "Shoot"))));
    const QString noTable = Put("games/h.html", "<HTML><BODY><P>No encontrado</P></BODY></HTML>\n");
    Put("games/i.html", Page(""));
    // A short line ends the table: what follows it is not read.
    Put("games/k.html", Page(Plain(Row("Knight Lore", "1984", "Ultimate")) + "\n" +
                             Plain(Row("Kung-Fu Master", "1986", "U.S. Gold"))));

    ASSERT_EQ(Import(), WosImporter::Result::Done);
    EXPECT_EQ(
        Warnings(),
        (Texts{At("games/g.html") + ": la línea 6 no tiene el ancho de la tabla y no se importa",
               At("games/g.html") + ": la línea 7 no tiene el ancho de la tabla y no se importa",
               At("games/g.html") + ": la línea 8 no tiene el ancho de la tabla y no se importa",
               S(noTable) + ": no tiene tabla <PRE>"}));
    // The entry after the lines left out keeps its columns.
    EXPECT_EQ(Titles(), (Texts{"Gauntlet|1987|1|Arcade|4|0|1|0", "Gyruss|1984|2|Shoot|1|0|1|0",
                               "Knight Lore|1984|3|Arcade|4|0|1|0"}));
    EXPECT_EQ(Counts(), "4 3 0 3");
    EXPECT_TRUE(prompt.shown.empty());
}

TEST_F(WosTest, PagesSavedOnWindowsAndEntitiesKeepTheirColumns) {
    Put("games/x.html",
        std::regex_replace(Page(Plain(Row("Xenon &amp; Co", "1988", "Melbourne House")) +
                                Bold(Row("&lt;Xyzzy&gt;", "1989", "Ocean &amp; Imagine")) +
                                Plain(Row("X&eacute;nia &#8364;&#150;&nbsp;2", "1990", "Erbe")) +
                                Plain(Row("Xor & Xor", "1991", "Logotron"))),
                           std::regex("\n"), "\r\n"));

    ASSERT_EQ(Import(), WosImporter::Result::Done);
    // An ampersand that starts no entity stays as it is written.
    EXPECT_EQ(Titles(),
              (Texts{"Xenon & Co|1988|1|Arcade|4|0|1|0", "<Xyzzy>|1989|2|Arcade|1|0|1|0",
                     "Xénia €– 2|1990|3|Arcade|4|0|1|0", "Xor & Xor|1991|4|Arcade|4|0|1|0"}));
    EXPECT_EQ(Rows("SELECT PublisherName FROM Publishers WHERE IdPub = 2"),
              Texts{"Ocean & Imagine"});
    EXPECT_EQ(Counts(), "1 4 0 4");
    EXPECT_TRUE(importer.warnings.empty());
}

TEST_F(WosTest, OnlyFilesOfAReasonableSizeAreReadAsPages) {
    Put("games/a.html", Page(Plain(Row("Amaurote", "1987", "Mastertronic"))));
    // Neither a pipe nor a device may hold the import, nor fill the memory.
    const QString big = Put("games/g.html", Page(Plain(Row("Gigante", "1987", "Ocean"))));
    QFile(big).resize(kWosPageLimit + 1);
    const QString device = root + "/games/l.html";
    ASSERT_TRUE(QFile::link("/dev/zero", device));
#ifdef Q_OS_UNIX
    const QString pipe = root + "/games/f.html";
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0644), 0);
#endif

    ASSERT_EQ(Import(), WosImporter::Result::Done);
    Texts expected;
#ifdef Q_OS_UNIX
    expected.push_back(S(pipe) + ": no es un archivo normal y no se lee");
#endif
    expected.push_back(S(big) + ": mide más de 16 MB y no se lee");
    expected.push_back(S(device) + ": no es un archivo normal y no se lee");
    EXPECT_EQ(Warnings(), expected);
    EXPECT_EQ(Titles(), Texts{"Amaurote|1987|1|Arcade|4|0|1|0"});
    EXPECT_EQ(Counts(), "1 1 0 1");
}

TEST_F(WosTest, ASecondRunAddsNothing) {
    Title("Knight Lore", "1984", 0, "Arcade", 1, 0);
    Open();
    Put("tr-games/k.html", Page(Bold(Row("Kick Off", "1989", "Anco"))));
    Put("games/k.html",
        Page(Plain(Row("Knight Lore", "1984", "")) + Blue(Row("Kick Off", "1989", "Anco")) +
             Red(Row("Knightmare", "1987", "Activision"))));
    Put("textadv/k.html", Page(Italic(Row("Kentilla", "1984", "Micromega")) + "roto\n"));

    ASSERT_EQ(Import(), WosImporter::Result::Done);
    EXPECT_EQ(Counts(), "3 3 2 3");
    const Texts before = AllRows();
    ASSERT_EQ(Import(), WosImporter::Result::Done);
    EXPECT_EQ(Counts(), "3 0 5 0");
    EXPECT_EQ(AllRows(), before);
    EXPECT_TRUE(importer.warnings.empty());
}

TEST_F(WosTest, AStoreFailureEndsTheRunAndKeepsTheTitlesAddedBeforeIt) {
    Put("games/u.html",
        Page(Plain(Row("Uno", "1984", "Ocean")) + Plain(Row("Dos", "1985", "Dinamic")) +
             Plain(Row("Tres", "1986", "Topo"))));
    Sql(db, "CREATE TRIGGER lleno BEFORE INSERT ON Titles WHEN NEW.Name = 'Dos' "
            "BEGIN SELECT RAISE(ABORT, 'disco lleno'); END");

    EXPECT_EQ(Import(), WosImporter::Result::StoreFailed);
    EXPECT_EQ(Shown(), Texts{Box("Error en el catálogo: disco lleno", "", Icon::Critical)});
    EXPECT_EQ(S(importer.Label1), "Error en el catálogo: disco lleno");
    // The failed title's publisher went with it, in the store and in memory.
    EXPECT_EQ(Titles(), Texts{"Uno|1984|1|Arcade|4|0|1|0"});
    EXPECT_EQ(Rows("SELECT * FROM Publishers ORDER BY IdPub"),
              (Texts{"0|- Desconocido -", "1|Ocean"}));
    EXPECT_EQ(Comunes::PublisherNames, (std::vector<QString>{"- Desconocido -", "Ocean"}));
    EXPECT_EQ(Counts(), "1 1 0 1");

    Sql(db, "DROP TRIGGER lleno");
    ASSERT_EQ(Import(), WosImporter::Result::Done);
    EXPECT_EQ(Titles(), (Texts{"Uno|1984|1|Arcade|4|0|1|0", "Dos|1985|2|Arcade|4|0|1|0",
                               "Tres|1986|3|Arcade|4|0|1|0"}));
    EXPECT_EQ(prompt.shown.size(), 1u);
}

TEST_F(WosTest, CliImportPrintsTheCountersThenTheWarnings) {
    Put("games/a.html", Page(Plain(Row("Uno", "1984", "Ocean")) + Plain(Row("Dos", "1985", "")) +
                             Plain(Row("Mal", "1985", "") + "  ")));
    auto import = [&](const std::string& folder) {
        return CliWithoutTime({"import", folder, "--db", S(db)});
    };
    Result r = import(S(root));
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "Páginas leídas: 1\nTítulos nuevos: 2\nTítulos existentes: 0\n"
                     "Compañías agregadas: 1\nTiempo empleado: -\n");
    EXPECT_EQ(r.err,
              At("games/a.html") + ": la línea 7 no tiene el ancho de la tabla y no se importa\n");

    r = import(S(root));
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(r.out.find("Títulos nuevos: 0\nTítulos existentes: 2\n"), std::string::npos) << r.out;

    Put("games/b.html", Page(Plain(Row("Bomba", "1984", "Ocean"))));
    Sql(db, "CREATE TRIGGER lleno BEFORE INSERT ON Titles BEGIN SELECT RAISE(ABORT, 'disco "
            "lleno'); END");
    r = import(S(root));
    EXPECT_EQ(r.status, 2);
    EXPECT_NE(r.out.find("Títulos existentes: 2\n"), std::string::npos) << r.out;
    EXPECT_EQ(r.err, "Error en el catálogo: disco lleno\n" + At("games/a.html") +
                         ": la línea 7 no tiene el ancho de la tabla y no se importa\n");

    r = import(At("games"));
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.err, "La carpeta " + At("games") + " no tiene legend.html\n");
    r = import(At("no-existe"));
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, "No existe la carpeta " + At("no-existe") + "\n");
}

TEST_F(WosTest, TheWindowTestsItsFolderChoosesFoldersAndShowsTheRun) {
    Put("tr-games/t.html", Page(Bold(Row("Tecleado", "1984", "Revista"))));
    Put("games/j.html",
        Page(Plain(Row("Juego", "1985", "Ocean")) + Plain(Row("Juego", "1985", "Ocean")) +
             Plain(Row("Mal", "1985", "") + ' ')));
    Put("textadv/h.html", "<HTML></HTML>\n");
    SaveSetting("Caminos", "RutaWos", root + "/ya-no-existe");
    {
        // Neither the program's folder nor the last one holds the pages.
        FrmWosIn gone;
        EXPECT_EQ(gone.Dir1Path(), QDir(QCoreApplication::applicationDirPath()).absolutePath());
        EXPECT_FALSE(gone.CommandSelecciona->isEnabled());
        EXPECT_EQ(gone.Label1->text(), "");
    }
    SaveSetting("Caminos", "RutaWos", root);
    FrmWosIn w;
    EXPECT_EQ(w.Dir1Path(), root);
    ASSERT_EQ(w.File1->count(), 1);
    EXPECT_EQ(S(w.File1->item(0)->text()), "legend.html");
    EXPECT_TRUE(w.CommandSelecciona->isEnabled());
    w.Dir1_Click(root + "/games");
    EXPECT_EQ(w.File1->count(), 0);
    EXPECT_FALSE(w.CommandSelecciona->isEnabled());
    w.Dir1_Click(root);
    EXPECT_TRUE(w.CommandSelecciona->isEnabled());

    auto enabled = [&] {
        std::string on;
        for (QCheckBox* c : w.Check1)
            on += c->isEnabled() ? '1' : '0';
        return on;
    };
    EXPECT_EQ(enabled(), "1011101000");
    EXPECT_TRUE(w.Option1[0]->isChecked());
    w.Option1[1]->click();
    EXPECT_EQ(enabled(), "0000000000");
    w.Option1[0]->click();
    EXPECT_EQ(enabled(), "1011101000");

    // "TRD" unticked: the folder of "tr-games" is not read.
    w.Check1[6]->setChecked(false);
    w.CommandSelecciona_Click();
    EXPECT_EQ(GetSetting("Caminos", "RutaWos"), root);
    EXPECT_EQ(Titles(), Texts{"Juego|1985|1|Arcade|4|0|1|0"});
    auto labels = [&] {
        return S(QStringList{w.LabelPaginas->text(), w.LabelNuevos->text(),
                             w.LabelExistentes->text(), w.LabelNwComp->text()}
                     .join(' '));
    };
    EXPECT_EQ(labels(), "2 1 1 1");
    EXPECT_EQ(S(w.Label1->text()), "Importando aventuras letra z");
    EXPECT_EQ(w.ProgressBar1->maximum(), 4 * 27);
    EXPECT_EQ(w.ProgressBar1->value(), 4 * 27);
    ASSERT_EQ(w.Avisos->count(), 2);
    EXPECT_EQ(S(w.Avisos->item(0)->text()),
              "games/j.html: la línea 7 no tiene el ancho de la tabla y no se importa");
    EXPECT_EQ(S(w.Avisos->item(1)->text()), "textadv/h.html: no tiene tabla <PRE>");

    // "Sólo nuevos" puts the kinds out of play: every folder is read.
    w.Option1[1]->click();
    w.CommandSelecciona_Click();
    EXPECT_EQ(labels(), "3 1 2 1");
    EXPECT_EQ(w.ProgressBar1->maximum(), 5 * 27);
    EXPECT_EQ(Titles(), (Texts{"Juego|1985|1|Arcade|4|0|1|0", "Tecleado|1984|2|Arcade|6|0|1|0"}));
}

TEST_F(WosTest, TheToolbarOpensTheImportAndTheCommonEntryAndRefillsTheTitles) {
    Put("games/z.html",
        Page(Plain(Row("Zorro", "1985", "U.S. Gold")) + Plain(Row("Zaxxon", "1985", "U.S. Gold"))));
    Put("games/a.html", Page(Plain(Row("\xC1guila Roja", "1986", "Topo"))));
    Put("games/b.html", Page(Plain(Row("Bomba", "1985", "Topo"))));
    QTemporaryDir tapes;
    WriteFile(tapes.filePath("cinta.tzx"), QByteArray("ZXTape!\x1A\x01\x14", 10));
    Principal frm;
    ASSERT_TRUE(frm.Form_Load(db));
    EXPECT_TRUE(frm.ImportaWOS->isVisible() && frm.ImportaWOS->isEnabled());
    EXPECT_FALSE(frm.ImportaWOS->icon().isNull());
    EXPECT_TRUE(frm.CmdImportar->isVisible() && frm.CmdImportar->isEnabled());
    EXPECT_EQ(S(frm.CmdImportar->toolTip()), "Importar registros");
    Texts opened;
    frm.RunModal = [&](QDialog& window) {
        opened.push_back(S(window.windowTitle()));
        if (auto* entry = qobject_cast<FrmAgregarDesde*>(&window)) {
            EXPECT_FALSE(entry->Command3->isEnabled());
            entry->Command1_Click();
            entry->Command2_Click();
        } else if (auto* wos = qobject_cast<FrmWosIn*>(&window)) {
            wos->Dir1_Click(root);
            wos->CommandSelecciona_Click();
        } else if (auto* scan = qobject_cast<BuscarDirs*>(&window)) {
            scan->Dir1_Click(tapes.path());
            scan->CommandSelecciona_Click();
        }
    };
    auto names = [&] {
        Texts out;
        Grid* g = frm.GridTitles;
        for (int r = 1; r <= g->Rows(); ++r)
            out.push_back(S(g->CellText(r, g->ColumnIndex("ColName"))));
        return out;
    };

    frm.ImportaWOS_Click();
    EXPECT_EQ(opened, Texts{"Importa listado WOS"});
    // In name order as the user reads it: the accented letter beside its own.
    EXPECT_EQ(names(), (Texts{"Águila Roja", "Bomba", "Zaxxon", "Zorro"}));

    opened.clear();
    Put("games/c.html", Page(Plain(Row("Cobra", "1986", "Ocean"))));
    frm.CmdImportar_Click();
    EXPECT_EQ(opened, (Texts{"Importar registros", "Agregar archivos", "Importa listado WOS"}));
    EXPECT_EQ(names(), (Texts{"Águila Roja", "Bomba", "cinta", "Cobra", "Zaxxon", "Zorro"}));
}

} // namespace
} // namespace cintal::test
