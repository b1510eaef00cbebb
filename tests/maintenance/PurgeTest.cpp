// The purge of references to missing files: what it asks, what it deletes,
// and the command line over the same logic.

#include "maintenance/Purge.h"
#include "../catalogue/CatalogueFixture.h"
#include "../cli/CliRun.h"
#include "cli/Commands.h"
#include "tape/Prompt.h"

#include <QDir>

namespace cintal::test {
namespace {

class PurgeTest : public CatalogueTest {
protected:
    void SetUp() override {
        CatalogueTest::SetUp();
        ASSERT_TRUE(disk.isValid());
        Create();
        Path(1, disk.path());
        Path(2, disk.path() + "/desenchufado");
        Title("Juego", "1985", 0, "", 1, 0);
        Open();
    }
    void File(const QString& name, const QString& ext, qint64 pathIndex, bool onDisk) {
        Sql(db, "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex) VALUES (1, ?, ?, ?)",
            {name, ext, pathIndex});
        if (onDisk) WriteFile(disk.filePath(name + "." + ext), "x");
    }
    // Three files on disk and five references to files that are not.
    void Mixed() {
        File("uno", "tzx", 1, true);
        File("dos", "tzx", 1, false);
        File("tres", "z80", 1, true);
        File("cuatro", "tzx", 2, false);
        File("cinco", "tap", 2, false);
        File("seis", "tzx", 1, true);
        File("siete", "tzx", 99, false); // a folder outside the register
        File("ocho", "sna", 1, false);
    }
    std::vector<std::string> Names() {
        std::vector<std::string> out;
        for (const QVariantList& r : Sql(db, "SELECT FileName FROM tFiles ORDER BY FileId"))
            out.push_back(S(r[0].toString()));
        return out;
    }
    Result Cli(std::vector<std::string> args) {
        args.insert(args.end(), {"--db", S(db)});
        return test::Cli(args);
    }

    QTemporaryDir disk;
    ScriptedPrompt prompt;
    PromptScope scope{prompt};
};

TEST_F(PurgeTest, AsksWithTheCountAndDeletesOnlyMissingRowsOnYes) {
    Mixed();
    Purger purger;
    prompt.Answer(Button::Ok);
    prompt.Answer(Button::No);
    purger.Interactive();
    ASSERT_EQ(prompt.shown.size(), 2u);
    EXPECT_EQ(prompt.shown[0].text, "esto borrará las referencias a archivos inexistentes");
    EXPECT_EQ(prompt.shown[0].buttons, Buttons::Ok);
    const Message& question = prompt.shown[1];
    EXPECT_EQ(question.text,
              "Hay 5 referencias a archivos que no están en el disco, de 8. ¿Borrarlas?");
    EXPECT_EQ(question.icon, Icon::Exclamation);
    EXPECT_EQ(question.buttons, Buttons::YesNo);
    const std::string base = S(disk.path());
    EXPECT_EQ(question.details, base + "/dos.tzx\n" + base + "/desenchufado/cuatro.tzx\n" + base +
                                    "/desenchufado/cinco.tap\n(carpeta desconocida, archivo 7)\n" +
                                    base + "/ocho.sna");
    // No deletes nothing.
    EXPECT_EQ(Names().size(), 8u);

    prompt.shown.clear();
    prompt.Answer(Button::Ok);
    prompt.Answer(Button::Yes);
    purger.Interactive();
    ASSERT_EQ(prompt.shown.size(), 3u);
    EXPECT_EQ(prompt.shown[2].text, "acabado: 5 referencias borradas");
    EXPECT_EQ(Names(), (std::vector<std::string>{"uno", "tres", "seis"}));
    // The title keeps its mark, as the purge touches file rows only.
    EXPECT_EQ(Sql(db, "SELECT HaveIt FROM Titles")[0][0].toInt(), 1);
}

TEST_F(PurgeTest, AnEmptyCatalogueEndsAfterTheFirstMessageAndNothingMissingSaysSo) {
    Purger purger;
    purger.Interactive();
    ASSERT_EQ(prompt.shown.size(), 1u);
    EXPECT_EQ(prompt.shown[0].text, "esto borrará las referencias a archivos inexistentes");

    File("uno", "tzx", 1, true);
    purger.Interactive();
    ASSERT_EQ(prompt.shown.size(), 3u);
    EXPECT_EQ(prompt.shown[2].text, "acabado: 0 referencias borradas");
    EXPECT_EQ(Names().size(), 1u);
}

TEST_F(PurgeTest, FilesMovedAwayLoseTheirRowsAndFilesInAnotherCaseKeepThem) {
    // A reorganisation that left the catalogue alone: the files stand in a
    // new folder, the rows still point to the old one.
    File("uno", "tzx", 1, true);
    File("dos", "tzx", 1, true);
    QDir(disk.path()).mkdir("nuevo");
    ASSERT_TRUE(QDir(disk.path()).rename("uno.tzx", "nuevo/uno.tzx"));
    ASSERT_TRUE(QDir(disk.path()).rename("dos.tzx", "nuevo/dos.tzx"));
    // The scan keeps extensions in lower case; the disk keeps what it had.
    File("ABADIA NEGRA", "tzx", 1, false);
    WriteFile(disk.filePath("ABADIA NEGRA.TZX"), "x");
    File("laberint", "sp", 1, false);
    WriteFile(disk.filePath("LABERINT.SP"), "x");
    // Two files that differ only in case, neither of them the row's.
    File("ninja", "tzx", 1, false);
    WriteFile(disk.filePath("Ninja.tzx"), "x");
    WriteFile(disk.filePath("NINJA.tzx"), "x");
    Purger purger;
    ASSERT_TRUE(purger.Plan());
    ASSERT_EQ(purger.missing.size(), 3u);
    EXPECT_EQ(S(purger.missing[2].path), S(disk.path()) + "/ninja.tzx");
    ASSERT_TRUE(purger.Run());
    EXPECT_EQ(purger.deleted, 3);
    EXPECT_EQ(Names(), (std::vector<std::string>{"ABADIA NEGRA", "laberint"}));
}

TEST_F(PurgeTest, CommandLineListsAndDeletesOnlyWithYes) {
    Mixed();
    Result r = Cli({"purge", "--dry-run"});
    EXPECT_EQ(r.status, 0);
    const std::string base = S(disk.path());
    EXPECT_EQ(r.out, "2\t" + base + "/dos.tzx\n4\t" + base + "/desenchufado/cuatro.tzx\n5\t" +
                         base + "/desenchufado/cinco.tap\n7\t(carpeta desconocida)\n8\t" + base +
                         "/ocho.sna\n5 de 8 referencias a archivos inexistentes\n");
    EXPECT_EQ(Names().size(), 8u);

    r = Cli({"purge"});
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.out.find("0 de 8 referencias borradas\n"), std::string::npos);
    EXPECT_EQ(r.err, "No se borra nada sin --yes\n");
    EXPECT_EQ(Names().size(), 8u);

    r = Cli({"purge", "--yes"});
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(r.out.find("5 de 8 referencias borradas\n"), std::string::npos);
    EXPECT_EQ(Names(), (std::vector<std::string>{"uno", "tres", "seis"}));

    r = Cli({"purge", "--todo"});
    EXPECT_EQ(r.status, 2);
}

} // namespace
} // namespace cintal::test
