// Titles and files added and removed one at a time, and the registers
// growing with them, as the store and the boxes show it afterwards.

#include "catalogue/Records.h"
#include "../cli/CliRun.h"
#include "../tape/TestSupport.h"
#include "CatalogueFixture.h"
#include "cli/Commands.h"
#include "platform/Hashes.h"
#include "tape/Cp1252.h"

#include <QDir>

namespace cintal::test {
namespace {

class RecordsTest : public CatalogueTest, protected Tzx, protected ScriptedBoxes {
protected:
    void SetUp() override {
        CatalogueTest::SetUp();
        Create();
    }
    qint64 NewTitle(const QString& name, qint64 idPub = 0, int haveIt = 0) {
        Title(name, "1986", idPub, "Arcade", haveIt, 4);
        return LastId("Titles", "TitleId");
    }
    qint64 NewFile(qint64 title, const QString& name, const QString& ext, qint64 path) {
        Sql(db, "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex) VALUES (?, ?, ?, ?)",
            {title, name, ext, path});
        return LastId("tFiles", "FileId");
    }
    int HaveIt(qint64 title) {
        return Sql(db, "SELECT HaveIt FROM Titles WHERE TitleId = ?", {title})[0][0].toInt();
    }
};

using Texts = std::vector<std::string>;

TEST_F(RecordsTest, NewFoldersFillTheFirstGapAndSayWhichNumberTheyTook) {
    Path(1, "/juegos/a");
    Path(4, "/juegos/d");
    Open();
    ASSERT_TRUE(Records::AddPath("/juegos/b"));
    ASSERT_TRUE(Records::AddPath("/juegos/c"));
    EXPECT_EQ(Shown(), (Texts{Box("2"), Box("3")}));
    EXPECT_EQ(S(Comunes::PathTable.Dir(3)), "/juegos/c") << "the register follows at once";

    // No gap left: the next number, and nothing said.
    ASSERT_TRUE(Records::AddPath("/JUEGOS/A"));
    EXPECT_EQ(prompt.shown.size(), 2u);
    EXPECT_EQ(Rows("SELECT PathIndex, GameDir FROM Paths ORDER BY PathIndex"),
              (Texts{"1|/juegos/a", "2|/juegos/b", "3|/juegos/c", "4|/juegos/d", "5|/JUEGOS/A"}));
    EXPECT_EQ(Records::FindPathIndex("/Juegos/A"), 1) << "the lowest number wins";
    EXPECT_EQ(Records::FindPathIndex("/juegos/d"), 4);
    EXPECT_EQ(Records::FindPathIndex("/juegos/d/"), 0);

    // An empty table counts its first slot as a free one too.
    Sql(db, "DELETE FROM Paths");
    ASSERT_TRUE(Comunes::LoadPaths());
    ASSERT_TRUE(Records::AddPath("/cintas"));
    EXPECT_EQ(prompt.shown.back().text, "1");
    EXPECT_EQ(Rows("SELECT PathIndex, GameDir FROM Paths"), Texts{"1|/cintas"});
}

TEST_F(RecordsTest, PublishersTakeTheNextNumberAndTheFirstComesWithThePlaceholder) {
    Publisher(2, "Ocean");
    Publisher(5, "Dinamic");
    Open();
    EXPECT_EQ(Records::AddPublisher("  topo SOFT "), 6);
    EXPECT_EQ(Rows("SELECT IdPub, PublisherName FROM Publishers WHERE IdPub = 6"),
              Texts{"6|  topo SOFT "});

    Sql(db, "DELETE FROM Publishers");
    ASSERT_TRUE(Comunes::LoadPublishers());
    EXPECT_EQ(Records::AddPublisher("Ocean"), 1);
    EXPECT_EQ(Rows("SELECT IdPub, PublisherName FROM Publishers ORDER BY IdPub"),
              (Texts{"0|- Desconocido -", "1|Ocean"}));
    ASSERT_TRUE(Comunes::LoadPublishers());
    EXPECT_EQ(Records::AddPublisher("Dinamic"), 2);
    EXPECT_TRUE(prompt.shown.empty());
}

TEST_F(RecordsTest, AFileAddedByHandCarriesItsTapesTextsOnce) {
    Path(1, "/otra/carpeta");
    const qint64 t = NewTitle("Juego");
    Open();
    const QString folder = dir.filePath("cintas nuevas");
    QDir().mkpath(folder);
    const QString origin = QString(55, 'O');
    const Bytes tape = Tape(
        {Archive({{0, "Juego"}, {4, "Spanish"}, {7, "Carga r\xE1pida"}, {8, origin.toStdString()}}),
         Std(RomData(20))});
    const QString tzx = QDir(folder).filePath("a.b.tzx");
    WriteFile(tzx, QByteArray::fromStdString(tape));

    ASSERT_EQ(Records::AddFileToTitle(t, tzx), Records::RecordChange::Done);
    EXPECT_EQ(Rows("SELECT PathIndex, GameDir FROM Paths ORDER BY PathIndex"),
              (Texts{"1|/otra/carpeta", "2|" + S(folder)}));
    const std::string sizeText = std::to_string(tape.size());
    const char* columns = "SELECT TitleId, FileName, Extension, PathIndex, Origscreen, FileSize, "
                          "Origin, IdLang, LoadSchema, HaveIt, Memory, Players FROM tFiles";
    EXPECT_EQ(Rows(columns), Texts{std::to_string(t) + "|a.b|tzx|2|0|" + sizeText + "|" +
                                   S(origin.left(50)) + "|Spa|Carga rápida|1|NULL|NULL"});
    EXPECT_EQ(HaveIt(t), 1);
    EXPECT_TRUE(Records::FileInDB("a.b", "tzx", 2));
    EXPECT_FALSE(Records::FileInDB("a.b", "tzx", 1));

    // The same file again changes nothing.
    EXPECT_EQ(Records::AddFileToTitle(t, tzx), Records::RecordChange::Unchanged);
    EXPECT_EQ(Rows("SELECT count(*) FROM tFiles"), Texts{"1"});

    // A file that is no tape: its row all the same, with no texts and no language.
    const QString z80 = QDir(folder).filePath("JUEGO.Z80");
    WriteFile(z80, "no es una cinta");
    ASSERT_EQ(Records::AddFileToTitle(t, z80), Records::RecordChange::Done);
    EXPECT_EQ(Rows("SELECT Extension, coalesce(Origin, ''), IdLang, coalesce(LoadSchema, ''), "
                   "FileSize FROM tFiles WHERE FileName = 'JUEGO'"),
              Texts{"Z80||NULL||15"});
    // Its content's hashes come with it.
    EXPECT_EQ(Rows("SELECT Crc32, Md5 FROM tFiles WHERE FileName = 'JUEGO'"),
              Texts{"77eeca17|" + S(platform::HashBytes("no es una cinta", 15).md5)});
    EXPECT_TRUE(prompt.shown.empty());
}

TEST_F(RecordsTest, TitlesAreFoundByTheirCleanedNameAndPublisher) {
    const QString given =
        QStringLiteral("El \"Ñandú\" de Don Íñigo, edición para coleccionistas (1986)!");
    ASSERT_EQ(given.size(), 60);
    const QString stored = QString(given).replace('"', '\'').left(50);
    const qint64 three = NewTitle(stored, 3);
    NewTitle(stored, 0);
    Open();

    Comunes::CurName = given;
    EXPECT_EQ(Records::FindTitle(3), three);
    EXPECT_EQ(S(Comunes::CurName), S(stored));
    EXPECT_EQ(Records::FindTitle(7), 0);

    // Letters that Windows-1252 lacks are letters all the same.
    const QString polish =
        QStringLiteral("Zażółć \"gęślą\" jaźń, czyli przygody w Łodzi i Gdańsku");
    ASSERT_GT(polish.size(), 50);
    const qint64 pl = NewTitle(QString(polish).replace('"', '\'').left(50), 3);
    // What the name would be after Windows-1252: a title it must not find.
    NewTitle(QStringLiteral("Za?ó?? 'g??l?' ja??, czyli przygody w ?odzi i Gda?"), 3);
    Comunes::CurName = polish;
    EXPECT_EQ(Records::FindTitle(3), pl);
    EXPECT_EQ(S(Comunes::CurName), "Zażółć 'gęślą' jaźń, czyli przygody w Łodzi i Gdań");
}

TEST_F(RecordsTest, DeletingRowsFollowsTheHaveItRules) {
    const qint64 two = NewTitle("Dos archivos", 0, 1);
    const qint64 gone = NewTitle("Se borra", 0, 1);
    const qint64 a = NewFile(two, "uno", "tzx", 1);
    const qint64 b = NewFile(two, "otro", "tap", 1);
    NewFile(gone, "huerfano", "tzx", 1);
    NewFile(gone, "di \"hola\"", "tzx", 1);
    Open();

    EXPECT_EQ(Records::DelFileRecord(a, two, true), Records::RecordChange::Done);
    EXPECT_EQ(HaveIt(two), 1);
    EXPECT_EQ(Records::DelFileRecord(b, two, false), Records::RecordChange::Done);
    EXPECT_EQ(HaveIt(two), 0);
    // A row already gone touches nothing, the title included.
    Sql(db, "UPDATE Titles SET HaveIt = 1");
    EXPECT_EQ(Records::DelFileRecord(b, two, false), Records::RecordChange::Unchanged);
    EXPECT_EQ(HaveIt(two), 1);

    EXPECT_EQ(Records::DelTitleRecord(gone), Records::RecordChange::Done);
    EXPECT_EQ(Records::DelTitleRecord(gone), Records::RecordChange::Unchanged);
    EXPECT_EQ(Rows("SELECT TitleId FROM Titles"), Texts{std::to_string(two)});
    EXPECT_EQ(Rows("SELECT FileName FROM tFiles ORDER BY FileId"),
              (Texts{"huerfano", "di \"hola\""}));
    EXPECT_TRUE(Records::FileInDB("di \"hola\"", "TZX", 1));
    EXPECT_TRUE(prompt.shown.empty());
}

TEST_F(RecordsTest, AFileAtTheRootLiesInTheFolderSlashAndNoEmptyTextIsAFolder) {
    EXPECT_EQ(S(Records::FolderOf("/juego.tzx")), "/");
    EXPECT_EQ(S(Records::FolderOf("/juegos/juego.tzx")), "/juegos");
    EXPECT_EQ(S(Records::PathIn("/", "juego.tzx")), "/juego.tzx");
    EXPECT_EQ(S(Records::PathIn("/juegos", "juego.tzx")), "/juegos/juego.tzx");

    Path(2, "/juegos");
    const qint64 t = NewTitle("En la raíz");
    Open();
    // Number 1 is free: an empty text must not take it for a folder.
    EXPECT_EQ(Records::FindPathIndex(""), 0);

    // Added by hand from the root; the file has gone meanwhile.
    ASSERT_EQ(Records::AddFileToTitle(t, "/cintal-perdido.tzx"), Records::RecordChange::Done);
    EXPECT_EQ(Rows("SELECT PathIndex, GameDir FROM Paths ORDER BY PathIndex"),
              (Texts{"1|/", "2|/juegos"}));
    EXPECT_EQ(Rows("SELECT FileName, Extension, PathIndex FROM tFiles"),
              Texts{"cintal-perdido|tzx|1"});
    EXPECT_EQ(Records::FindPathIndex("/"), 1);
    EXPECT_EQ(Records::FindPathIndex(""), 0);
    ASSERT_TRUE(Records::AddPath("/nueva"));
    EXPECT_EQ(Records::FindPathIndex("/nueva"), 3);
    EXPECT_EQ(Shown(), (Texts{Box("1"), Box("no existe el archivo!!!!!")}));

    // An empty register has free slots too.
    Sql(db, "DELETE FROM Paths");
    ASSERT_TRUE(Comunes::LoadPaths());
    EXPECT_EQ(Records::FindPathIndex(""), 0);
}

// A file that stands at the root of the file system: its folder is "/", so
// that the paths built from the catalogue lead back to it.
TEST_F(RecordsTest, AFileAddedFromTheRootIsFiledUnderTheRoot) {
    NewTitle("Juego");
    Open();
    // The file system stands in a folder of the test's own.
    TempDir root;
    TestOps ops;
    ops.root = root.path.string();
    detail::FileOpsScope use(ops);
    test::WriteFile(root.File("juego.tzx"), Tape({Tzx::Archive({{0, "Juego"}})}, 1, 13));

    ASSERT_EQ(Records::AddFileToTitle(1, "/juego.tzx"), Records::RecordChange::Done);
    EXPECT_EQ(Rows("SELECT GameDir FROM Paths"), Texts{"/"});
    EXPECT_EQ(Rows("SELECT FileName, Extension FROM tFiles"), Texts{"juego|tzx"});
    EXPECT_EQ(ops.relative, Names{});
}

TEST_F(RecordsTest, AnEventsRowsAreWrittenTogetherOrNotAtAll) {
    const qint64 t = NewTitle("Juego", 0, 1);
    const qint64 f = NewFile(t, "uno", "tzx", 1);
    Path(1, "/juegos");
    Open();
    const QString folder = dir.filePath("nueva");
    QDir().mkpath(folder);
    const QString tzx = QDir(folder).filePath("dos.tzx");
    WriteFile(tzx, QByteArray::fromStdString(Tape({Std(RomData(20))})));
    // The second row of each event fails.
    Sql(db, "CREATE TRIGGER lleno BEFORE UPDATE ON Titles "
            "BEGIN SELECT RAISE(ABORT, 'disco lleno'); END");

    EXPECT_EQ(Records::DelFileRecord(f, t, false), Records::RecordChange::Failed);
    EXPECT_EQ(Records::AddFileToTitle(t, tzx), Records::RecordChange::Failed);
    const std::string error = Box("Error en el catálogo: disco lleno", "", Icon::Critical);
    EXPECT_EQ(Shown(), (Texts{error, error}));
    EXPECT_EQ(Rows("SELECT FileId, FileName FROM tFiles"), Texts{std::to_string(f) + "|uno"});
    EXPECT_EQ(Rows("SELECT PathIndex, GameDir FROM Paths"), Texts{"1|/juegos"});
    EXPECT_EQ(Records::FindPathIndex(folder), 0) << "the register follows the store";
    EXPECT_EQ(HaveIt(t), 1);

    Sql(db, "DROP TRIGGER lleno");
    EXPECT_EQ(Records::AddFileToTitle(t, tzx), Records::RecordChange::Done);
    EXPECT_EQ(Records::DelFileRecord(f, t, true), Records::RecordChange::Done);
    EXPECT_EQ(Rows("SELECT FileName, PathIndex FROM tFiles"), Texts{"dos|2"});
    EXPECT_EQ(Rows("SELECT PathIndex, GameDir FROM Paths ORDER BY PathIndex"),
              (Texts{"1|/juegos", "2|" + S(folder)}));
    EXPECT_EQ(HaveIt(t), 1);
}

TEST_F(RecordsTest, CommandLineAddSaysWhatHappenedInItsStatus) {
    const qint64 t = NewTitle("Juego");
    QString file = dir.filePath("juego.tap");
    WriteFile(file, QByteArray::fromStdString(Le(2, 2) + B({0xFF, 0xFF})));
    auto add = [&] {
        const Result r = Cli({"add", "--title", std::to_string(t), S(file), "--db", S(db)});
        Comunes::Reset();
        return std::to_string(r.status) + " " + r.out;
    };
    EXPECT_EQ(add(), "0 Archivo Agregado\n");
    EXPECT_EQ(add(), "1 Ya existe\n");
    EXPECT_EQ(Rows("SELECT TitleId, FileName, Extension, HaveIt FROM tFiles"),
              Texts{std::to_string(t) + "|juego|tap|1"});
    EXPECT_EQ(HaveIt(t), 1);

    // Names from the file system keep every letter, in the file and its folder.
    QDir().mkpath(dir.filePath("Кассеты"));
    file = dir.filePath(QStringLiteral("Кассеты/Łódź Ласточка.tap"));
    WriteFile(file, QByteArray::fromStdString(Le(2, 2) + B({0xFF, 0xFF})));
    EXPECT_EQ(add(), "0 Archivo Agregado\n");
    EXPECT_EQ(
        Rows("SELECT FileName, Extension, GameDir FROM tFiles JOIN Paths USING (PathIndex) "
             "ORDER BY FileId"),
        (Texts{"juego|tap|" + S(dir.path()), "Łódź Ласточка|tap|" + S(dir.filePath("Кассеты"))}));
}

} // namespace
} // namespace cintal::test
