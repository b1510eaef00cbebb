// Names given by a DAT: the plan, the files and rows renamed, and what is
// left alone or put back.

#include "../catalogue/CatalogueFixture.h"
#include "../cli/CliRun.h"
#include "platform/Hashes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace cintal::test {
namespace {

using Lines = std::vector<std::string>;

QString Rom(const QString& game, const QByteArray& bytes) {
    const platform::ContentHashes h = platform::HashBytes(bytes.constData(), bytes.size());
    return QStringLiteral("<game name=\"%1\"><rom name=\"%1.tzx\" size=\"%2\" crc=\"%3\" "
                          "sha1=\"%4\"/></game>")
        .arg(game)
        .arg(h.size)
        .arg(h.crc32, h.sha1);
}

class DatTidyTest : public CatalogueTest {
protected:
    void SetUp() override {
        CatalogueTest::SetUp();
        Create();
        Path(1, a);
        QDir().mkpath(a + "/SCRSHOT");
        QDir().mkpath(a + "/Pokes");
        File("mm", "manic");
        WriteFile(a + "/SCRSHOT/mm.scr", QByteArray(6912, '\0'));
        File("KNIGHT", "knight");
        // Another file holds the name, in another case.
        WriteFile(a + "/knight lore (1984)(ultimate).tzx", "otra");
        File("pyjamarama", "pyjamarama");
        WriteFile(a + "/Pokes/pyjamarama.pok", "pokes");
        // A folder in the way of the side file: its rename fails.
        QDir().mkpath(a + "/Pokes/Pyjamarama (1984)(Mikro-Gen).pok");
        const platform::ContentHashes h = platform::HashBytes("dentro", 6);
        Sql(db,
            "INSERT INTO tFiles (FileName, Extension, PathIndex, InnerPath, FileSize, Crc32, Sha1) "
            "VALUES ('pack', 'zip', 1, 'dentro.tzx', ?, ?, ?)",
            {h.size, h.crc32, h.sha1});
        const QString dat = "<datafile><header><name>ZX</name></header>" +
                            Rom("Manic Miner (1983)(Bug-Byte)", "manic") +
                            Rom("Knight Lore (1984)(Ultimate)", "knight") +
                            Rom("Pyjamarama (1984)(Mikro-Gen)", "pyjamarama") +
                            Rom("Dentro", "dentro") + "</datafile>";
        WriteFile(dir.filePath("zx.dat"), dat.toUtf8());
        EXPECT_EQ(Run({"dat", "add", S(dir.filePath("zx.dat"))}).status, 0);
    }
    void File(const QString& name, const QByteArray& bytes) {
        WriteFile(a + "/" + name + ".tzx", bytes);
        Sql(db, "INSERT INTO tFiles (FileName, Extension, PathIndex) VALUES (?, 'tzx', 1)", {name});
    }
    Result Run(Lines args) {
        args.insert(args.end(), {"--db", S(db)});
        Comunes::Reset();
        return Cli(args);
    }
    std::string At(const char* name) { return S(a) + "/" + name; }
    bool Has(const char* name) { return QFileInfo::exists(a + "/" + name); }

    QString a = dir.filePath("cintas");
};

TEST_F(DatTidyTest, ThePlanThenTheRenamesWithWhatIsLeftAndWhatFailed) {
    const Lines plan = {
        "renombrar " + At("mm.tzx") + " -> " + At("Manic Miner (1983)(Bug-Byte).tzx"),
        "    con su archivo lateral " + At("SCRSHOT/mm.scr") + " -> " +
            At("SCRSHOT/Manic Miner (1983)(Bug-Byte).scr"),
        "ya existe: se deja " + At("Knight Lore (1984)(Ultimate).tzx"),
        "renombrar " + At("pyjamarama.tzx") + " -> " + At("Pyjamarama (1984)(Mikro-Gen).tzx"),
        "    con su archivo lateral " + At("Pokes/pyjamarama.pok") + " -> " +
            At("Pokes/Pyjamarama (1984)(Mikro-Gen).pok"),
        "dentro de un archivo comprimido: se deja " + At("pack.zip|dentro.tzx")};
    Result r = Run({"tidy", "--dat", "zx", "--dry-run"});
    Lines expected = plan;
    expected.insert(expected.end(), {"Renombrados: 0", "Dejados: 2", "Fallidos: 0"});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, [&] {
        std::string all;
        for (const std::string& l : expected)
            all += l + "\n";
        return all;
    }());
    EXPECT_TRUE(Has("mm.tzx"));

    // Without --yes the question is answered No: nothing is renamed.
    r = Run({"tidy", "--dat", "zx"});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.err, "[Renombrar según la DAT] Se van a renombrar 2 archivos con los nombres que "
                     "les da la DAT. ¿Desea continuar? -> No\n");
    EXPECT_TRUE(Has("mm.tzx"));

    r = Run({"tidy", "--dat", "zx", "--yes"});
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.out.find("Renombrados: 1\nDejados: 2\nFallidos: 1\n"), std::string::npos) << r.out;
    // Each file as it ended: the side files listed with the one renamed only.
    EXPECT_EQ(r.out.substr(0, r.out.find("Renombrados:")),
              "renombrado " + At("mm.tzx") + " -> " + At("Manic Miner (1983)(Bug-Byte).tzx") +
                  "\n    con su archivo lateral " + At("SCRSHOT/mm.scr") + " -> " +
                  At("SCRSHOT/Manic Miner (1983)(Bug-Byte).scr") + "\nya existe: se deja " +
                  At("Knight Lore (1984)(Ultimate).tzx") + "\nno se pudo renombrar: se deja " +
                  At("pyjamarama.tzx") + "\ndentro de un archivo comprimido: se deja " +
                  At("pack.zip|dentro.tzx") + "\n");
    EXPECT_NE(r.err.find("No se pudo renombrar " + S(a) + "/Pokes/pyjamarama.pok: "),
              std::string::npos)
        << r.err;
    EXPECT_NE(r.err.find("Los archivos conservan su nombre anterior."), std::string::npos);
    // The file and its screen took the DAT's name, the row with them; the
    // failed one is whole under its old names; nothing was overwritten.
    EXPECT_TRUE(Has("Manic Miner (1983)(Bug-Byte).tzx"));
    EXPECT_TRUE(Has("SCRSHOT/Manic Miner (1983)(Bug-Byte).scr"));
    EXPECT_FALSE(Has("mm.tzx"));
    EXPECT_TRUE(Has("pyjamarama.tzx"));
    EXPECT_TRUE(Has("Pokes/pyjamarama.pok"));
    EXPECT_FALSE(Has("Pyjamarama (1984)(Mikro-Gen).tzx"));
    EXPECT_EQ(Contents(a + "/knight lore (1984)(ultimate).tzx"), "otra");
    EXPECT_TRUE(Has("KNIGHT.tzx"));
    EXPECT_EQ(Rows("SELECT FileName FROM tFiles ORDER BY FileId"),
              Lines({"Manic Miner (1983)(Bug-Byte)", "KNIGHT", "pyjamarama", "pack"}));
}

// A run killed after renaming a file and before its row and side files
// followed, taken up by the next run; a catalogue that refuses the change
// (a full disk) puts the side files back and the run goes on.
TEST_F(DatTidyTest, ARunKilledHalfwayIsTakenUpAndAFullCatalogueChangesNothing) {
    QDir().rmdir(a + "/Pokes/Pyjamarama (1984)(Mikro-Gen).pok");
    ASSERT_TRUE(QFile::rename(a + "/mm.tzx", a + "/Manic Miner (1983)(Bug-Byte).tzx"));
    // Another file with the DAT's name but other bytes is no such run.
    ASSERT_TRUE(QFile::rename(a + "/pyjamarama.tzx", a + "/pyjamarama.bak"));
    WriteFile(a + "/Pyjamarama (1984)(Mikro-Gen).tzx", "otra cosa");
    Result r = Run({"tidy", "--dat", "zx", "--dry-run"});
    EXPECT_EQ(Split(r.out)[0], "ya renombrado en disco: se pone al día el catálogo " +
                                   At("mm.tzx") + " -> " + At("Manic Miner (1983)(Bug-Byte).tzx"));
    EXPECT_EQ(Split(r.out)[1], "    con su archivo lateral " + At("SCRSHOT/mm.scr") + " -> " +
                                   At("SCRSHOT/Manic Miner (1983)(Bug-Byte).scr"));
    EXPECT_EQ(Split(r.out)[3], "no está: se omite " + At("pyjamarama.tzx"));
    QFile::remove(a + "/Pyjamarama (1984)(Mikro-Gen).tzx");
    ASSERT_TRUE(QFile::rename(a + "/pyjamarama.bak", a + "/pyjamarama.tzx"));

    Sql(db, "CREATE TRIGGER lleno BEFORE UPDATE ON tFiles WHEN NEW.FileName LIKE 'Manic%' "
            "BEGIN SELECT RAISE(ABORT, 'disco lleno'); END");
    r = Run({"tidy", "--dat", "zx", "--yes"});
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("No se pudo renombrar el catálogo: disco lleno. Los archivos conservan "
                         "su nombre anterior."),
              std::string::npos)
        << r.err;
    EXPECT_NE(r.out.find("no se pudo renombrar: se deja " + At("mm.tzx")), std::string::npos);
    EXPECT_TRUE(Has("SCRSHOT/mm.scr")) << "the side file is put back";
    // The run went on with the next file.
    EXPECT_TRUE(Has("Pyjamarama (1984)(Mikro-Gen).tzx"));
    EXPECT_TRUE(Has("Pokes/Pyjamarama (1984)(Mikro-Gen).pok"));

    Sql(db, "DROP TRIGGER lleno");
    r = Run({"tidy", "--dat", "zx", "--yes"});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(Split(r.out)[0],
              "renombrado " + At("mm.tzx") + " -> " + At("Manic Miner (1983)(Bug-Byte).tzx"));
    EXPECT_TRUE(Has("SCRSHOT/Manic Miner (1983)(Bug-Byte).scr"));
    EXPECT_EQ(
        Rows("SELECT FileName FROM tFiles ORDER BY FileId"),
        Lines({"Manic Miner (1983)(Bug-Byte)", "KNIGHT", "Pyjamarama (1984)(Mikro-Gen)", "pack"}));
    // Run again: nothing is left to do.
    EXPECT_NE(Run({"tidy", "--dat", "zx", "--yes"}).out.find("Renombrados: 0\nDejados: 2\n"),
              std::string::npos);
}

} // namespace
} // namespace cintal::test
