// Renaming a file with its side files: what lands on disk, what the row
// says, what the user is told, and what goes back when a part fails.

#include "../catalogue/CatalogueFixture.h"
#include "../cli/CliRun.h"
#include "cli/Commands.h"
#include "maintenance/Renamer.h"
#include "maintenance/frmRenombra.h"
#include "tape/Prompt.h"
#include "widgets/Grid.h"
#include "widgets/Grids.h"

#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>

namespace cintal::test {
namespace {

class RenameTest : public CatalogueTest {
protected:
    void SetUp() override {
        CatalogueTest::SetUp();
        Create();
        Publisher(0, "- Desconocido -");
        a = dir.filePath("a");
        b = dir.filePath("b");
        QDir().mkpath(a);
        QDir().mkpath(b);
        Path(1, a);
        Path(2, b);
        Title("Knight Lore", "1984", 0, "Arcade", 1, 0);
        // One name in two folders: the row of the folder renamed changes.
        for (qint64 p : {2, 1}) {
            Sql(db,
                "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex) VALUES (1, "
                "'knight', 'tzx', ?)",
                {p});
        }
        WriteFile(a + "/knight.tzx", "cinta");
        WriteFile(b + "/knight.tzx", "otra");
        QDir().mkpath(a + "/SCRSHOT");
        QDir().mkpath(a + "/Pokes");
        QDir().mkpath(a + "/map");
        WriteFile(a + "/SCRSHOT/knight.scr", QByteArray(6912, '\0'));
        WriteFile(a + "/Pokes/knight.pok", "pokes");
        WriteFile(a + "/map/knight_Map.jpg", "mapa");
        Open();
    }
    std::vector<QVariantList> Rows() {
        return Sql(db, "SELECT FileId, FileName, PathIndex, HaveIt FROM tFiles ORDER BY FileId");
    }
    bool Has(const QString& p) { return QFileInfo(p).isFile(); }
    Result Rename(const std::string& name) {
        Comunes::Reset();
        return Cli({"rename", "--file", "1", name, "--db", S(db)});
    }

    QString a, b;
    ScriptedPrompt prompt;
    PromptScope scope{prompt};
};

TEST_F(RenameTest, RenamesTheTickedSideFilesAndTheRowOfItsFolder) {
    Renamer r;
    r.Load(a, "knight.tzx", 1);
    ASSERT_EQ(3u, r.entries.size());
    EXPECT_EQ("knight.scr", S(r.entries[0].label));
    EXPECT_EQ("knight.pok", S(r.entries[1].label));
    EXPECT_EQ("knight_map.jpg", S(r.entries[2].label));
    EXPECT_EQ(S(a + "/SCRSHOT/knight.scr"), S(r.screenFile));

    EXPECT_EQ("FALLIDO", S(r.Rename("knight")));
    EXPECT_EQ("el nombre de archivo no puede ser el mismo que el de origen. Especifica otro "
              "nombre.",
              prompt.shown.back().text);
    EXPECT_EQ(Icon::Exclamation, prompt.shown.back().icon);
    EXPECT_EQ("FALLIDO", S(r.Rename("Knight: Lore")));
    EXPECT_EQ("el nombre de archivo no es válido", prompt.shown.back().text);
    WriteFile(a + "/KNIGHT LORE.TZX", "ya");
    EXPECT_EQ("FALLIDO", S(r.Rename("Knight Lore")));
    EXPECT_EQ("el nombre de archivo ya existe. Especifica otro nombre.", prompt.shown.back().text);
    EXPECT_EQ(Icon::Critical, prompt.shown.back().icon);
    QFile::remove(a + "/KNIGHT LORE.TZX");
    EXPECT_TRUE(Has(a + "/knight.tzx"));

    r.entries[1].ticked = false;
    EXPECT_EQ("Knight Lore.tzx", S(r.Rename("Knight Lore")));
    EXPECT_EQ("Archivo renombrado: Knight Lore.tzx", prompt.shown.back().text);
    EXPECT_EQ(Icon::Information, prompt.shown.back().icon);
    EXPECT_EQ(QByteArray("cinta"), Contents(a + "/Knight Lore.tzx"));
    EXPECT_TRUE(Has(a + "/SCRSHOT/Knight Lore.scr"));
    EXPECT_TRUE(Has(a + "/map/Knight Lore_Map.jpg"));
    EXPECT_TRUE(Has(a + "/Pokes/knight.pok"));
    EXPECT_TRUE(Has(b + "/knight.tzx"));
    const auto rows = Rows();
    EXPECT_EQ("knight", S(rows[0][1].toString())); // folder b
    EXPECT_EQ("Knight Lore", S(rows[1][1].toString()));
    EXPECT_EQ(1, rows[1][3].toInt());
}

TEST_F(RenameTest, ASideFileThatFailsPutsEverythingBack) {
    Renamer r;
    r.Load(a, "knight.tzx", 1);
    // A folder that holds the map's new name: the last rename fails.
    QDir().mkpath(a + "/map/Nuevo_Map.jpg");
    const QString result = r.Rename("Nuevo");
    EXPECT_EQ("FALLIDO", S(result));
    EXPECT_NE(std::string::npos, prompt.shown.back().text.find(
                                     S("No se pudo renombrar " + a + "/map/knight_Map.jpg")));
    EXPECT_TRUE(Has(a + "/knight.tzx"));
    EXPECT_TRUE(Has(a + "/SCRSHOT/knight.scr"));
    EXPECT_TRUE(Has(a + "/Pokes/knight.pok"));
    EXPECT_FALSE(Has(a + "/Nuevo.tzx"));
    EXPECT_EQ("knight", S(Rows()[1][1].toString()));
}

TEST_F(RenameTest, TheWindowAndTheCommandLine) {
    Grid titles, files;
    Grids::SetupGridTitles(titles);
    Grids::SetupGridFiles(files);
    titles.SetRows(1);
    titles.CellDetails(1, titles.ColumnIndex("ColName"), "Knight: Lore");
    titles.SetRedraw(true);
    titles.SetSelectedRow(1);
    Grids::FillFiles(1, files);
    files.SetSelectedRow(2); // the row of folder a
    ASSERT_EQ(S(a), S(files.CellText(2, files.ColumnIndex("ColPath"))));
    frmRenombra window(&titles, &files);
    EXPECT_EQ(S(a + "/knight.tzx"), S(window.windowTitle()));
    EXPECT_EQ("Knight - Lore", S(window.Text1->text()));
    ASSERT_EQ(3, window.List1->count());
    window.List1->item(0)->setCheckState(Qt::Unchecked);
    bool refreshed = false;
    window.BuscaPantalla = [&] { refreshed = true; };
    window.Command1_Click();
    EXPECT_EQ("Knight - Lore.tzx", S(window.Tag));
    EXPECT_EQ("Knight - Lore.tzx", S(files.CellText(2, files.ColumnIndex("ColFileName"))));
    EXPECT_TRUE(refreshed);
    EXPECT_TRUE(Has(a + "/SCRSHOT/knight.scr"));
    EXPECT_TRUE(Has(a + "/Pokes/Knight - Lore.pok"));

    // The other folder's file, from the command line.
    Result r = Rename("Caballero");
    EXPECT_EQ(0, r.status);
    EXPECT_EQ("Caballero.tzx\n", r.out);
    EXPECT_TRUE(Has(b + "/Caballero.tzx"));
    r = Rename("Caballero");
    EXPECT_EQ(1, r.status);
    EXPECT_NE(std::string::npos, r.err.find("el nombre de archivo no puede ser el mismo"));
}

TEST_F(RenameTest, BlankNamesAreRefusedAndTheExtensionKeepsItsCase) {
    Renamer renamer;
    renamer.Load(a, "knight.tzx", 1);
    EXPECT_EQ("FALLIDO", S(renamer.Rename("   ")));
    ASSERT_EQ(1u, prompt.shown.size());
    EXPECT_EQ("el nombre de archivo no puede quedar en blanco. Especifica otro nombre.",
              prompt.shown[0].text);
    EXPECT_EQ(Icon::Exclamation, prompt.shown[0].icon);
    EXPECT_TRUE(Has(a + "/knight.tzx"));

    for (const char* blank : {"", "   "}) {
        const Result r = Rename(blank);
        EXPECT_EQ(1, r.status);
        EXPECT_EQ("el nombre de archivo no puede quedar en blanco. Especifica otro nombre.\n",
                  r.err);
    }
    // The scan keeps extensions in lower case; the disk keeps its own.
    ASSERT_TRUE(QFile::rename(b + "/knight.tzx", b + "/KNIGHT.TZX"));
    const Result r = Rename("Caballero");
    EXPECT_EQ(0, r.status);
    EXPECT_EQ("Caballero.TZX\n", r.out);
    EXPECT_EQ("cinta|otra",
              S(QString(Contents(a + "/knight.tzx") + "|" + Contents(b + "/Caballero.TZX"))));
    EXPECT_EQ("Caballero", S(Rows()[0][1].toString()));
}

TEST_F(RenameTest, AFileInsideAnArchiveIsLeftAlone) {
    Sql(db, "UPDATE tFiles SET FileName = 'juegos', Extension = 'zip', InnerPath = 'knight.tzx' "
            "WHERE FileId = 1");
    WriteFile(b + "/juegos.zip", "archivo");
    const Result r = Rename("Knight Lore");
    EXPECT_EQ(1, r.status);
    EXPECT_EQ("El archivo está dentro de juegos.zip: no se puede renombrar\n", r.err);
    EXPECT_EQ(QByteArray("archivo"), Contents(b + "/juegos.zip"));
    EXPECT_EQ("juegos", S(Rows()[0][1].toString()));
}

} // namespace
} // namespace cintal::test
