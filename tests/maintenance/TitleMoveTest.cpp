// Moving a title's files to another title: records, rewritten tapes, the
// files that stay, and the command line that merges two titles.

#include "maintenance/TitleMove.h"
#include "../catalogue/CatalogueFixture.h"
#include "../cli/CliRun.h"
#include "TapeBytes.h"
#include "cli/Commands.h"
#include "tape/Prompt.h"
#include "tape/TZXTape.h"

namespace cintal::test {
namespace {

using Entries = std::vector<std::pair<std::uint8_t, std::string>>;

// The two blocks after the archive information, which a rewrite must keep
// byte for byte.
Bytes Body() {
    return raw::Standard(raw::RomHeader(raw::RomType::Program, "cargador", 20, 10, 20)) +
           raw::Standard(raw::RomData(Bytes(20, '\x01'))) + raw::Text("fin");
}

Bytes Tape(int minor, const Entries& archive) {
    return raw::TzxHeader(1, minor) + raw::Archive(archive) + Body();
}

class TitleMoveTest : public CatalogueTest {
protected:
    void SetUp() override {
        CatalogueTest::SetUp();
        ASSERT_TRUE(disk.isValid());
        Create();
        Publisher(0, "- Desconocido -");
        Publisher(1, "Dinamic");
        Publisher(2, "Ocean");
        Path(1, disk.path());
        Title("Viejo", "1984", 1, "", 1, 0);        // 1
        Title("Nuevo Nombre", "1987", 2, "", 1, 0); // 2
        Sql(db, "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex) VALUES (2, 'ya', "
                "'tzx', 1)");
    }
    qint64 File(const QString& name, const QString& ext, const Bytes* bytes) {
        Sql(db, "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex) VALUES (1, ?, ?, 1)",
            {name, ext});
        if (bytes) WriteFile(disk.filePath(name + "." + ext), QByteArray::fromStdString(*bytes));
        return LastId("tFiles", "FileId");
    }
    // "FileName:TitleId" of every row, in FileId order.
    std::vector<std::string> Rows() {
        std::vector<std::string> out;
        for (const QVariantList& r :
             Sql(db, "SELECT FileName, TitleId FROM tFiles ORDER BY FileId"))
            out.push_back(S(r[0].toString() + ":" + r[1].toString()));
        return out;
    }
    Bytes OnDisk(const QString& name) { return Contents(disk.filePath(name)).toStdString(); }
    Result Cli(std::vector<std::string> args) {
        args.insert(args.end(), {"--db", S(db)});
        return test::Cli(args);
    }

    QTemporaryDir disk;
    ScriptedPrompt prompt;
    PromptScope scope{prompt};
};

TEST_F(TitleMoveTest, EveryFileMovesAndTapesTakeTheNewTitle) {
    const Bytes a = Tape(13, {{0, "Viejo"}, {1, "Dinamic"}, {3, "1984"}, {0xFF, "cara A"}});
    const Bytes b = Tape(13, {{0, "Viejo"}});
    const Bytes snapshot("Z80 cualquiera\0\xff", 16);
    const Bytes cut("ZXTape!\x1a\x01", 9); // cut inside its header
    File("a", "tzx", &a);
    File("b", "TZX", &b);
    File("c", "z80", &snapshot);
    File("falta", "tzx", nullptr);
    File("cortada", "tzx", &cut);
    Open();

    TitleMover mover;
    mover.from = 1;
    mover.into = 2;
    ASSERT_TRUE(mover.LoadTarget());
    EXPECT_EQ(S(mover.name + "|" + mover.year + "|" + mover.publisher), "Nuevo Nombre|1987|Ocean");
    ASSERT_TRUE(mover.Plan());
    ASSERT_TRUE(mover.Run());

    EXPECT_EQ(Rows(),
              (std::vector<std::string>{"ya:2", "a:2", "b:2", "c:2", "falta:2", "cortada:1"}));
    ASSERT_EQ(prompt.shown.size(), 1u);
    EXPECT_EQ(prompt.shown[0].text, "No existe el archivo");
    EXPECT_EQ(mover.moved, 4);
    EXPECT_EQ(
        S(mover.Summary()), "4 archivos movidos; no se movieron:\n" +
                                S(disk.filePath("cortada.tzx")) +
                                ": la cinta no se leyó entera: " + [&] {
                                    TZXTape t;
                                    t.FileName = S(disk.filePath("cortada.tzx"));
                                    t.ReadTape();
                                    return t.Status().Cause();
                                }());

    // The archive block is rebuilt with the new texts, the comment kept;
    // every other block stays byte for byte.
    for (const QString& name : {QStringLiteral("a.tzx"), QStringLiteral("b.TZX")}) {
        const Bytes now = OnDisk(name);
        ASSERT_GT(now.size(), Body().size());
        EXPECT_EQ(now.substr(now.size() - Body().size()), Body()) << S(name);
        TZXTape t;
        t.FileName = S(disk.filePath(name));
        t.ReadTape();
        EXPECT_EQ(t.ArchiveInfo().iName, "Nuevo Nombre");
        EXPECT_EQ(t.ArchiveInfo().iYear, "1987");
        EXPECT_EQ(t.ArchiveInfo().iPublisher, "Ocean");
    }
    {
        TZXTape t;
        t.FileName = S(disk.filePath("a.tzx"));
        t.ReadTape();
        EXPECT_EQ(t.ArchiveInfo().iComments, "cara A");
    }
    EXPECT_EQ(OnDisk("c.z80"), snapshot);
    EXPECT_EQ(OnDisk("cortada.tzx"), cut);
    // The new size goes with the rewritten tape.
    EXPECT_EQ(Sql(db, "SELECT FileSize FROM tFiles WHERE FileName = 'a'")[0][0].toLongLong(),
              static_cast<qint64>(OnDisk("a.tzx").size()));
    // Neither title's mark changes.
    EXPECT_EQ(Sql(db, "SELECT HaveIt FROM Titles ORDER BY TitleId").size(), 2u);
    EXPECT_EQ(Sql(db, "SELECT HaveIt FROM Titles WHERE TitleId = 1")[0][0].toInt(), 1);
}

TEST_F(TitleMoveTest, CommandLineMergesAndDeletesTheOldTitle) {
    const Bytes a = Tape(13, {{0, "Viejo"}});
    File("a", "tzx", &a);
    // The title itself is refused, its files and tapes left as they are.
    Result r = Cli({"merge", "--from", "1", "--into", "1"});
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("Elija otro título"), std::string::npos);
    EXPECT_EQ(Rows(), (std::vector<std::string>{"ya:2", "a:1"}));
    EXPECT_EQ(OnDisk("a.tzx"), a);
    Comunes::Reset();

    r = Cli({"merge", "--from", "1", "--into", "2"});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "1 archivo movido\nTítulo 1 borrado\n");
    EXPECT_EQ(Rows(), (std::vector<std::string>{"ya:2", "a:2"}));
    EXPECT_TRUE(Sql(db, "SELECT * FROM Titles WHERE TitleId = 1").empty());

    r = Cli({"merge", "--from", "9", "--into", "2"});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, "No existe el título 9\n");
    r = Cli({"merge", "--from", "2", "--into", "9"});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, "No existe el título 9\n");
    r = Cli({"merge", "--from", "2"});
    EXPECT_EQ(r.status, 2);
    r = Cli({"merge", "--from", "--into", "2"});
    EXPECT_EQ(r.status, 2);
    EXPECT_NE(r.err.find("falta el valor de --from"), std::string::npos);
}

TEST_F(TitleMoveTest, ATitleWithoutYearOrPublisherLeavesTheTapesOwn) {
    Title("Sin Datos", QVariant(), 0, "", 1, 0); // 3
    Title("Solo Fecha", "1990", 0, "", 1, 0);    // 4
    const Bytes a = Tape(13, {{0, "Viejo"}, {1, "Dinamic"}, {3, "1984"}});
    File("a", "tzx", &a);
    auto info = [&] {
        TZXTape t;
        t.FileName = S(disk.filePath("a.tzx"));
        t.ReadTape();
        return t.ArchiveInfo().iName + "|" + t.ArchiveInfo().iPublisher + "|" +
               t.ArchiveInfo().iYear;
    };
    Result r = Cli({"merge", "--from", "1", "--into", "3"});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(info(), "Sin Datos|Dinamic|1984");
    Comunes::Reset();
    r = Cli({"merge", "--from", "3", "--into", "4"});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(info(), "Solo Fecha|Dinamic|1990");
}

TEST_F(TitleMoveTest, ATapeTheUserWontSaveKeepsItsRecordAndTheOldTitleStays) {
    // A newer version than the writer knows: the command line answers No to
    // saving it, so that tape and its record stay with the old title.
    const Bytes newer = Tape(21, {{0, "Viejo"}});
    const Bytes a = Tape(13, {{0, "Viejo"}});
    File("nueva", "tzx", &newer);
    File("a", "tzx", &a);
    Result r = Cli({"merge", "--from", "1", "--into", "2"});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out, "1 archivo movido; no se movieron:\n" + S(disk.filePath("nueva.tzx")) +
                         ": no se pudo guardar la cinta\nEl título 1 se conserva\n");
    EXPECT_EQ(Rows(), (std::vector<std::string>{"ya:2", "nueva:1", "a:2"}));
    EXPECT_EQ(OnDisk("nueva.tzx"), newer);
    EXPECT_EQ(Sql(db, "SELECT Name FROM Titles WHERE TitleId = 1")[0][0].toString(), "Viejo");

    // Yes to the question saves it as 1.20, and the old title goes.
    Comunes::Reset();
    r = Cli({"merge", "--from", "1", "--into", "2", "--yes"});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "1 archivo movido\nTítulo 1 borrado\n");
    EXPECT_EQ(Rows(), (std::vector<std::string>{"ya:2", "nueva:2", "a:2"}));
    TZXTape t;
    t.FileName = S(disk.filePath("nueva.tzx"));
    t.ReadTape();
    EXPECT_EQ(t.ArchiveInfo().iName, "Nuevo Nombre");
}

} // namespace
} // namespace cintal::test
