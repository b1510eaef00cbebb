// Reorganising trees made here: where the files and their side files land,
// what stays behind, what the plan says beforehand, and the catalogue rows.

#include "../catalogue/CatalogueFixture.h"
#include "../cli/CliRun.h"
#include "catalogue/Files.h"
#include "cli/Commands.h"
#include "maintenance/Ordena.h"
#include "maintenance/Reorganiser.h"
#include "tape/Prompt.h"
#include "widgets/Grid.h"
#include "widgets/Grids.h"

#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <array>

namespace cintal::test {
namespace {

class ReorganiseTest : public CatalogueTest {
protected:
    void SetUp() override {
        CatalogueTest::SetUp();
        Create();
        Publisher(0, "- Desconocido -");
        Publisher(1, "Opera Soft");
        Publisher(2, "AC/DC Games");
        src = dir.filePath("coleccion");
        out = dir.filePath("destino");
        QDir().mkpath(src);
        QDir().mkpath(out);
        Path(1, src);
    }

    // A title with its file (a few bytes of its name) in src, and its row.
    qint64 Game(const QString& name, const QVariant& year, qint64 idPub, const QString& file,
                int haveIt = 1) {
        Title(name, year, idPub, "Arcade", haveIt, 0);
        const qint64 id = LastId("Titles", "TitleId");
        if (!file.isEmpty()) {
            const QFileInfo f(file);
            Sql(db,
                "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, HaveIt) VALUES "
                "(?, ?, ?, 1, 1)",
                {id, f.completeBaseName(), f.suffix()});
            WriteFile(QDir(src).filePath(file), file.toUtf8());
        }
        return id;
    }
    void Side(const QString& folder, const QString& name) {
        QDir().mkpath(QDir(src).filePath(folder));
        WriteFile(QDir(src).filePath(folder + "/" + name), name.toUtf8());
    }
    // The catalogue's titles planned into target.
    void Plan(Reorganiser& r, const QString& target, SortBy order) {
        Open();
        ASSERT_TRUE(LoadReorgTitles(false, loaded));
        r.Plan(target, order, loaded);
    }
    // The folder that the row of the file now names.
    QString RowDir(const QString& fileName) {
        const auto rows = Sql(db,
                              "SELECT GameDir FROM tFiles JOIN Paths ON tFiles.PathIndex = "
                              "Paths.PathIndex WHERE FileName = ?",
                              {fileName});
        return rows.empty() ? QString() : rows[0][0].toString();
    }
    std::vector<std::string> Lines(const Reorganiser& r) {
        std::vector<std::string> lines;
        for (const ReorgStep& s : r.steps)
            lines.push_back(S(s.Text()));
        return lines;
    }
    static bool Listed(const std::vector<std::string>& lines, const QString& line) {
        return std::find(lines.begin(), lines.end(), S(line)) != lines.end();
    }
    // The folders planned for a destination: itself and its side folders
    // when new, else the side folders other than the screens' it has.
    static void Creates(std::vector<std::string>& lines, const QString& at, bool fresh) {
        if (fresh) lines.push_back(S("crear carpeta " + at));
        for (const char* side : {"Scrshot", "Info", "Pokes", "Map", "Inlay", "Codesheet"})
            if (fresh || QString(side) != "Scrshot")
                lines.push_back(S("crear carpeta " + at + "/" + side));
    }
    bool Has(const QString& path) { return QFileInfo(path).isFile(); }
    // The command on this catalogue, its registers read afresh each time.
    Result Reorganise(std::vector<std::string> args) {
        args.insert(args.begin(), "reorganise");
        args.insert(args.end(), {"--db", S(db)});
        Comunes::Reset();
        return Cli(args);
    }
    // Titles, files moved, side files moved, left, failed.
    static std::string Counted(const Reorganiser& r) {
        const auto& c = r.counters;
        return std::to_string(c.Titulos) + " " + std::to_string(c.Movidos) + " " +
               std::to_string(c.Laterales) + " " + std::to_string(c.Omitidos) + " " +
               std::to_string(c.Fallidos);
    }

    QString src, out;
    std::vector<ReorgTitle> loaded; // what the last Plan loaded
};

TEST_F(ReorganiseTest, ByInitialTheDryRunListsWhatTheRunThenDoesAndTheRowsFollow) {
    Game("Abadía: El crimen", "1987", 1, "abadia.tzx");
    Game("3D Tanx", "1982", 0, "tanx.tzx");
    Game("ábaco", QVariant(), 0, "abaco.tzx");
    // Side folders spelled as the collection's old volume left them.
    Side("SCRSHOT", "Abadía - El crimen.scr");
    Side("info", "Abadía - El crimen.TXT");
    Side("Map", "Abadía - El crimen_map.jpg");
    Side("Pokes", "Otro juego.pok");
    // The target already has an "a" folder with its own "scrshot".
    const QString target = out + "/Programas";
    QDir().mkpath(target + "/a/scrshot");
    Reorganiser run;
    Plan(run, target, SortBy::Initial);
    ASSERT_EQ(3u, loaded.size());
    const QString a = target + "/a";
    std::vector<std::string> expected;
    Creates(expected, target + "/#", true);
    expected.push_back(S("mover " + src + "/tanx.tzx -> " + target + "/#/tanx.tzx"));
    Creates(expected, a, false);
    for (const auto& [from, to, name] :
         {std::array<const char*, 3>{"SCRSHOT", "scrshot", "Abadía - El crimen.scr"},
          {"info", "Info", "Abadía - El crimen.TXT"},
          {"Map", "Map", "Abadía - El crimen_map.jpg"}})
        expected.push_back(
            S(QStringLiteral("mover %1/%2/%3 -> %4/%5/%3").arg(src, from, name, a, to)));
    expected.push_back(S("mover " + src + "/abadia.tzx -> " + a + "/abadia.tzx"));
    Creates(expected, target + "/á", true);
    expected.push_back(S("mover " + src + "/abaco.tzx -> " + target + "/á/abaco.tzx"));
    EXPECT_EQ(expected, Lines(run));
    // The dry run touched nothing.
    EXPECT_TRUE(Has(src + "/abadia.tzx"));
    EXPECT_FALSE(QFileInfo(target + "/#").exists());
    EXPECT_EQ("3 3 3 0 0", Counted(run));

    EXPECT_EQ(Reorganiser::Result::Done, run.Run(true));
    EXPECT_EQ("3 3 3 0 0", Counted(run));
    EXPECT_EQ(QByteArray("abadia.tzx"), Contents(a + "/abadia.tzx"));
    EXPECT_TRUE(Has(a + "/scrshot/Abadía - El crimen.scr"));
    EXPECT_TRUE(Has(a + "/Map/Abadía - El crimen_map.jpg"));
    EXPECT_FALSE(QFileInfo(target + "/A").exists());
    EXPECT_FALSE(Has(src + "/abadia.tzx"));
    EXPECT_TRUE(Has(src + "/Pokes/Otro juego.pok"));
    EXPECT_TRUE(Has(target + "/#/tanx.tzx"));
    EXPECT_TRUE(QFileInfo(target + "/#/Codesheet").isDir());
    EXPECT_EQ(S(a), S(RowDir("abadia")));
    EXPECT_EQ(S(target + "/#"), S(RowDir("tanx")));
    EXPECT_EQ(S(target + "/á"), S(RowDir("abaco")));
}

TEST_F(ReorganiseTest, ByYearAndByPublisherTheFoldersFollowTheirRules) {
    for (const char* year : {"", "1969", "2021", "19??"})
        EXPECT_EQ("Sin fecha", S(Reorganiser::DestFolder(SortBy::Year, "X", year, ""))) << year;
    for (const char* year : {"1970", "2020"})
        EXPECT_EQ(year, S(Reorganiser::DestFolder(SortBy::Year, "X", year, "")));
    EXPECT_EQ("AC_DC Games", S(Reorganiser::DestFolder(SortBy::Publisher, "X", "", "AC/DC Games")));
    EXPECT_EQ("_", S(Reorganiser::DestFolder(SortBy::Publisher, "X", "", "..")));
    EXPECT_EQ("a_b__c", S(Reorganiser::FolderName("a:b?*c")));
    EXPECT_EQ(S(out), S(Reorganiser::Target(out, "")));

    Game("Rock", "1986", 2, "rock.tzx");
    Game("Viejo", "1969", 1, "viejo.tzx");
    Reorganiser byPub;
    Plan(byPub, out + "/P", SortBy::Publisher);
    ASSERT_EQ(Reorganiser::Result::Done, byPub.Run(false));
    EXPECT_TRUE(Has(out + "/P/AC_DC Games/rock.tzx"));
    EXPECT_TRUE(Has(out + "/P/Opera Soft/viejo.tzx"));
    // Without the catalogue, the rows still name the old folder.
    EXPECT_EQ(S(src), S(RowDir("rock")));

    Reorganiser byYear;
    for (ReorgTitle& t : loaded)
        for (ReorgFile& f : t.files)
            f.dir = out + "/P/" + (t.name == "Rock" ? "AC_DC Games" : "Opera Soft");
    byYear.Plan(out + "/Y", SortBy::Year, loaded);
    ASSERT_EQ(Reorganiser::Result::Done, byYear.Run(false));
    EXPECT_TRUE(Has(out + "/Y/1986/rock.tzx"));
    EXPECT_TRUE(Has(out + "/Y/Sin fecha/viejo.tzx"));
}

TEST_F(ReorganiseTest, NothingIsOverwrittenAndWhatStaysIsCounted) {
    // Two titles of one name compete for the same side file names; the
    // first takes them, the second's stay.
    Game("Ninja", "1985", 1, "ninja.tzx");
    Game("Ninja", "1986", 2, "ninja2.tzx");
    Side("Scrshot", "Ninja.scr");
    Game("Sin archivos", "1990", 1, "");
    Game("Perdido", "1990", 1, "perdido.tzx");
    QFile::remove(QDir(src).filePath("perdido.tzx"));
    Game("Ocupado", "1990", 1, "ocupado.tzx");
    // Moving an archive would take other titles' tapes along.
    Game("Comprimido", "1990", 1, "juegos.zip");
    Sql(db, "UPDATE tFiles SET InnerPath = 'cintas/juego.tzx' WHERE FileName = 'juegos'");
    const QString target = out + "/Todo";
    QDir().mkpath(target);
    WriteFile(target + "/OCUPADO.TZX", "del destino");
    WriteFile(src + "/Scrshot/../Scrshot/Ninja.scr", "primera");
    Reorganiser r;
    Plan(r, target, SortBy::Single);
    EXPECT_TRUE(Listed(Lines(r), "ya existe: se deja " + target + "/OCUPADO.TZX"));
    EXPECT_TRUE(Listed(Lines(r), "no está: se omite " + src + "/perdido.tzx"));
    EXPECT_TRUE(Listed(Lines(r), "dentro de un archivo comprimido: se deja " + src +
                                     "/juegos.zip|cintas/juego.tzx"));
    ASSERT_EQ(Reorganiser::Result::Done, r.Run(true));
    EXPECT_EQ("6 2 1 3 0", Counted(r));
    EXPECT_TRUE(Has(src + "/juegos.zip"));
    EXPECT_EQ(S(src), S(RowDir("juegos")));
    EXPECT_EQ(QByteArray("del destino"), Contents(target + "/OCUPADO.TZX"));
    EXPECT_EQ(QByteArray("ocupado.tzx"), Contents(src + "/ocupado.tzx"));
    EXPECT_EQ(S(src), S(RowDir("ocupado")));
    EXPECT_EQ(QByteArray("primera"), Contents(target + "/Scrshot/Ninja.scr"));
    EXPECT_TRUE(Has(target + "/ninja2.tzx"));
    EXPECT_EQ(S(target), S(RowDir("ninja2")));
    EXPECT_TRUE(QFileInfo(target + "/Inlay").isDir());
}

TEST_F(ReorganiseTest, NamesThatDifferOnlyInCaseAreTwoFilesAndEverySideFolderIsLookedIn) {
    // "Ninja.tzx" and "NINJA.TZX" side by side, each with its row, the
    // second's extension kept in lower case as the scan keeps it.
    Game("Ninja", "1985", 1, "Ninja.tzx");
    const qint64 second = Game("NINJA", "1986", 1, "");
    Sql(db,
        "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, HaveIt) VALUES "
        "(?, 'NINJA', 'tzx', 1, 1)",
        {second});
    WriteFile(src + "/NINJA.TZX", "segunda");
    // Two side folders in two cases, each with a screen.
    Side("SCRSHOT", "NINJA.scr");
    Side("ScrShot", "Ninja.scr");
    Reorganiser r;
    Plan(r, out, SortBy::Year);
    EXPECT_EQ(S(src + "/ScrShot/Ninja.scr"), S(FindSideFile(src, SideKind::Screen, "Ninja")));
    ASSERT_EQ(Reorganiser::Result::Done, r.Run(true));
    EXPECT_EQ("2 2 2 0 0", Counted(r));
    EXPECT_EQ(QByteArray("Ninja.tzx"), Contents(out + "/1985/Ninja.tzx"));
    EXPECT_EQ(QByteArray("segunda"), Contents(out + "/1986/NINJA.TZX"));
    EXPECT_EQ(QByteArray("Ninja.scr"), Contents(out + "/1985/Scrshot/Ninja.scr"));
    EXPECT_EQ(QByteArray("NINJA.scr"), Contents(out + "/1986/Scrshot/NINJA.scr"));
    EXPECT_TRUE(QDir(src).entryList(QDir::Files).isEmpty());
    const auto rows = Sql(db, "SELECT FileName, GameDir FROM tFiles JOIN Paths ON "
                              "tFiles.PathIndex = Paths.PathIndex ORDER BY FileId");
    ASSERT_EQ(2u, rows.size());
    EXPECT_EQ(S(out + "/1985"), S(rows[0][1].toString()));
    EXPECT_EQ(S(out + "/1986"), S(rows[1][1].toString()));
}

TEST_F(ReorganiseTest, AFileWhoseRowCannotFollowGoesBack) {
    Game("Uno", "1984", 1, "uno.tzx");
    Side("Scrshot", "Uno.scr");
    Reorganiser r;
    Plan(r, out + "/P", SortBy::Single);
    // The catalogue goes away between the plan and the run.
    Store::Close();
    ASSERT_EQ(Reorganiser::Result::Done, r.Run(true));
    EXPECT_EQ(QByteArray("uno.tzx"), Contents(src + "/uno.tzx"));
    EXPECT_FALSE(Has(out + "/P/uno.tzx"));
    // Its side files go back with it: disk and catalogue stay together.
    EXPECT_FALSE(Has(out + "/P/Scrshot/Uno.scr"));
    EXPECT_TRUE(Has(src + "/Scrshot/Uno.scr"));
    EXPECT_EQ("1 0 0 0 1", Counted(r));
    ASSERT_EQ(1u, r.notes.size());
    EXPECT_NE(std::string::npos, S(r.notes[0]).find("el archivo vuelve a su sitio"));
    EXPECT_EQ(S(src), S(RowDir("uno")));
}

TEST_F(ReorganiseTest, CommandLineAsksBeforeUsingAnExistingFolderAndPrintsThePlan) {
    Game("Uno", "1984", 1, "uno.tzx");
    Game("Dos", "1984", 1, "dos.tzx", 0);
    QDir().mkpath(out + "/Programas");
    Result r = Reorganise({S(out)});
    EXPECT_EQ(1, r.status);
    EXPECT_NE(std::string::npos, r.err.find("El directorio ya existe. ¿desea continuar?"));
    EXPECT_TRUE(Has(src + "/uno.tzx"));

    r = Reorganise({S(out), "--held-only", "--dry-run", "--order", "initial"});
    EXPECT_EQ(0, r.status);
    EXPECT_NE(std::string::npos,
              r.out.find(S("mover " + src + "/uno.tzx -> " + out + "/Programas/U/uno.tzx\n")));
    EXPECT_EQ(std::string::npos, r.out.find("dos.tzx"));
    EXPECT_TRUE(Has(src + "/uno.tzx"));

    r = Reorganise({S(out), "--yes"});
    EXPECT_EQ(0, r.status);
    EXPECT_EQ("Títulos: 2\nArchivos movidos: 2\nArchivos laterales movidos: 0\nOmitidos: 0\n"
              "Fallidos: 0\n",
              r.out);
    EXPECT_TRUE(Has(out + "/Programas/dos.tzx"));
    EXPECT_EQ(S(out + "/Programas"), S(RowDir("uno")));
    EXPECT_EQ(2, Cli({"reorganise", S(out), "--order", "size"}).status);

    // An option without its value takes nothing, and a subfolder stays inside.
    r = Reorganise({S(out), "--subfolder", "--dry-run", "--yes"});
    EXPECT_EQ(2, r.status);
    EXPECT_NE(std::string::npos, r.err.find("cintal-cli: falta el valor de --subfolder\n"));
    for (const char* outside : {"..", "../fuera", "a/b"}) {
        r = Reorganise({S(out + "/Programas"), "--subfolder", outside, "--yes"});
        EXPECT_EQ(2, r.status);
        EXPECT_EQ("cintal-cli: El subdirectorio \"" + std::string(outside) +
                      "\" no es válido: ha de ser un solo nombre de carpeta, no \".\" ni \"..\", "
                      "sin / \\ : * ? \" < > |\n",
                  r.err);
    }
    EXPECT_EQ(QDir(out).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{"Programas"});
    EXPECT_EQ(S(out + "/Programas"), S(RowDir("uno")));
}

TEST_F(ReorganiseTest, MovesThatFailAreCountedApartAndTheCommandSaysSo) {
    Game("Alfa", "1984", 1, "alfa.tzx");
    Game("Beta", "1984", 1, "beta.tzx");
    // A file in the way of the folder "B": Beta's move can't be made.
    QDir().mkpath(out + "/Programas");
    WriteFile(out + "/Programas/B", "archivo");
    const Result r = Reorganise({S(out), "--order", "initial", "--yes"});
    EXPECT_EQ(1, r.status);
    EXPECT_EQ("Títulos: 2\nArchivos movidos: 1\nArchivos laterales movidos: 0\nOmitidos: 0\n"
              "Fallidos: 1\n",
              r.out);
    EXPECT_TRUE(Has(out + "/Programas/A/alfa.tzx"));
    EXPECT_TRUE(Has(src + "/beta.tzx"));
    EXPECT_EQ(S(src), S(RowDir("beta")));
}

TEST_F(ReorganiseTest, ARerunFinishesWhatAnInterruptedOneBegan) {
    Game("Alfa", "1984", 1, "alfa.tzx");
    Game("Beta", "1984", 1, "beta.tzx");
    Game("Gamma", "1984", 1, "gamma.tzx");
    const QString target = out + "/Programas";
    QDir().mkpath(target);
    // Cut short while copying to another disk: a part copy of ours, and a
    // file of that kind of name that is not ours.
    WriteFile(target + "/alfa.tzx.cintal-part", "alf");
    WriteFile(target + "/beta.tzx.cintal-part", "de otro");
    // Stopped between a move and its row.
    ASSERT_TRUE(QFile::rename(src + "/gamma.tzx", target + "/gamma.tzx"));
    Reorganiser r;
    Plan(r, target, SortBy::Single);
    const auto lines = Lines(r);
    EXPECT_TRUE(Listed(lines, "quitar copia a medias " + target + "/alfa.tzx.cintal-part"));
    EXPECT_FALSE(Listed(lines, "quitar copia a medias " + target + "/beta.tzx.cintal-part"));
    EXPECT_TRUE(Listed(lines, "ya está en " + target + "/gamma.tzx: se corrige su fila"));
    ASSERT_EQ(Reorganiser::Result::Done, r.Run(true));
    EXPECT_EQ("3 3 0 0 0", Counted(r));
    EXPECT_FALSE(QFileInfo::exists(target + "/alfa.tzx.cintal-part"));
    EXPECT_EQ(QByteArray("alfa.tzx"), Contents(target + "/alfa.tzx"));
    EXPECT_EQ(QByteArray("de otro"), Contents(target + "/beta.tzx.cintal-part"));
    EXPECT_EQ(S(target), S(RowDir("gamma")));
}

TEST_F(ReorganiseTest, TheWindowMovesOnlyTheTitlesTheMainWindowLists) {
    const qint64 shown = Game("Visible", "1984", 1, "visible.tzx");
    const qint64 hidden = Game("Oculto", "1984", 1, "oculto.tzx");
    Open();
    Grid titles, files;
    Grids::SetupGridTitles(titles);
    Grids::SetupGridFiles(files);
    titles.SetRows(2);
    const qint64 ids[2] = {shown, hidden};
    const char* names[2] = {"Visible", "Oculto"};
    for (int row = 1; row <= 2; ++row) {
        titles.SetRowData(row, ids[row - 1]);
        titles.CellDetails(row, titles.ColumnIndex("ColName"), names[row - 1]);
        titles.CellDetails(row, titles.ColumnIndex("ColYear"), "1984");
        titles.CellDetails(row, titles.ColumnIndex("ColPublisher"), "Opera Soft");
    }
    titles.SetRowVisible(2, false);
    titles.SetRedraw(true);
    Ordena window(&titles, &files);
    window.Dir1_Click(out);
    window.OptionSortBy[3]->setChecked(true);
    EXPECT_EQ("Programas", S(window.TxtSubFolder->text()));
    EXPECT_TRUE(window.CheckCatalogo->isChecked());

    window.CommandSimular_Click();
    EXPECT_EQ(S("mover " + src + "/visible.tzx -> " + out + "/Programas/Opera Soft/visible.tzx"),
              S(window.ListPlan->item(window.ListPlan->count() - 1)->text()));
    EXPECT_FALSE(QFileInfo(out + "/Programas").exists());

    ScriptedPrompt prompt;
    PromptScope scope(prompt);
    window.CommandOrdenar_Click();
    EXPECT_TRUE(prompt.shown.empty());
    EXPECT_TRUE(Has(out + "/Programas/Opera Soft/visible.tzx"));
    EXPECT_TRUE(Has(src + "/oculto.tzx"));
    EXPECT_EQ("1", S(window.LabelMovidos->text()));
    EXPECT_EQ("1", S(window.LabelTitulos->text()));
    EXPECT_EQ(1, titles.SelectedRow());
    EXPECT_EQ(S(out + "/Programas/Opera Soft"), S(files.CellText(1, files.ColumnIndex("ColPath"))));

    // Again, into the folder that now exists: the question, and No.
    prompt.Answer(Button::No);
    window.CommandOrdenar_Click();
    ASSERT_EQ(1u, prompt.shown.size());
    EXPECT_EQ("El directorio ya existe. ¿desea continuar?", prompt.shown[0].text);
    EXPECT_EQ(Icon::Critical, prompt.shown[0].icon);
    EXPECT_EQ(Buttons::YesNo, prompt.shown[0].buttons);
    EXPECT_EQ("0", S(window.LabelFallidos->text()));

    // A subfolder that leads out of the chosen folder: nothing planned.
    window.TxtSubFolder->setText("..");
    window.CommandSimular_Click();
    ASSERT_EQ(2u, prompt.shown.size());
    EXPECT_EQ("El subdirectorio \"..\" no es válido: ha de ser un solo nombre de carpeta, no "
              "\".\" ni \"..\", sin / \\ : * ? \" < > |",
              prompt.shown[1].text);
    EXPECT_EQ(Icon::Exclamation, prompt.shown[1].icon);
    EXPECT_EQ(0, window.ListPlan->count());
}

} // namespace
} // namespace cintal::test
