// The catalogue file and the registers read from it.

#include "../tape/TestSupport.h"
#include "CatalogueFixture.h"
#include "catalogue/Titles.h"

#include <QFileInfo>
#include <QSettings>

namespace cintal::test {
namespace {

using StoreTest = CatalogueTest;

qint64 Insert(const QString& sql, const QVariantList& values) {
    QSqlQuery q = Store::NewQuery();
    EXPECT_TRUE(Store::Exec(q, sql, values));
    return Store::LastInsertId(q);
}

TEST_F(StoreTest, OpenRefusesAnythingButACatalogueAndLeavesItAsItWas) {
    QString reason;
    EXPECT_FALSE(Store::Open(db, &reason));
    EXPECT_EQ(S(reason), "no existe el archivo");
    EXPECT_FALSE(QFileInfo::exists(db)) << "the driver would have made an empty file";

    WriteFile(db, QByteArray("PK\x03\x04 no es una base de datos", 30));
    const QByteArray garbage = Contents(db);
    EXPECT_FALSE(Store::Open(db, &reason));
    EXPECT_FALSE(reason.isEmpty());
    EXPECT_FALSE(Store::IsOpen());
    EXPECT_EQ(Contents(db), garbage);

    for (const char* table : {"Titles", "tFiles", "Paths", "Publishers"}) {
        SCOPED_TRACE(table);
        QFile::remove(db);
        Create();
        Sql(db, QStringLiteral("DROP TABLE %1").arg(table));
        const QByteArray before = Contents(db);
        EXPECT_FALSE(Store::Open(db, &reason));
        EXPECT_EQ(S(reason), std::string("falta la tabla ") + table);
        EXPECT_FALSE(Store::IsOpen());
        EXPECT_EQ(Contents(db), before);
    }

    QFile::remove(db);
    Create();
    EXPECT_TRUE(Store::Open(db, &reason)) << S(reason);
}

TEST_F(StoreTest, KeysAreNeverGivenTwiceAndQuotesInNamesAreValues) {
    Create();
    ASSERT_TRUE(Store::Open(db, nullptr));
    for (const char* name : {"Uno", "Dos", "Tres"})
        Insert("INSERT INTO Titles (Name) VALUES (?)", {name});
    Insert("INSERT INTO tFiles (TitleId, FileName) VALUES (?, ?)", {3, "tres"});
    ASSERT_TRUE(Store::Run("DELETE FROM Titles"));
    ASSERT_TRUE(Store::Run("DELETE FROM tFiles"));

    // A new run, as after emptying the store and scanning again.
    Store::Close();
    ASSERT_TRUE(Store::Open(db, nullptr));
    EXPECT_EQ(Insert("INSERT INTO Titles (Name) VALUES (?)", {"Cuatro"}), 4);
    EXPECT_EQ(Insert("INSERT INTO tFiles (TitleId, FileName) VALUES (?, ?)", {4, "cuatro"}), 2);

    // Quotes in names are values, not query text.
    const QString odd = QStringLiteral("Rock 'n' Roll \"Special\"\"); DROP TABLE Titles; --");
    const qint64 id = Insert("INSERT INTO Titles (Name) VALUES (?)", {odd});
    QSqlQuery q = Store::NewQuery();
    ASSERT_TRUE(Store::Exec(q, "SELECT TitleId, Name FROM Titles WHERE Name = ?", {odd}));
    ASSERT_TRUE(q.next());
    EXPECT_EQ(q.value(0).toLongLong(), id);
    EXPECT_EQ(q.value(1).toString(), odd);

    // What writers of titles store: apostrophes for double quotes, 50 characters.
    EXPECT_EQ(S(StoredTitleName("El \"Gran\" Juego")), "El 'Gran' Juego");
    EXPECT_EQ(StoredTitleName(QString(60, QChar(u'ñ'))), QString(50, QChar(u'ñ')));
}

TEST_F(StoreTest, NamesOfFilesTitlesAndFoldersMatchIgnoringCase) {
    Create();
    Publisher(1, "Ocean Software");
    Path(1, "/juegos/Ocean");
    Title("Batman", "1986", 1, "Arcade", 1, 4);
    Sql(db, "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex) VALUES (1, ?, ?, 1)",
        {"Batman - Side A", "TZX"});
    ASSERT_TRUE(Store::Open(db, nullptr));

    auto found = [](const QString& sql, const QVariantList& values) {
        QSqlQuery q = Store::NewQuery();
        return Store::Exec(q, sql, values) && q.next();
    };
    EXPECT_TRUE(found("SELECT * FROM Titles WHERE Name = ? AND IdPub = ?", {"BATMAN", 1}));
    EXPECT_TRUE(found("SELECT * FROM Publishers WHERE PublisherName = ?", {"OCEAN software"}));
    EXPECT_TRUE(found("SELECT * FROM Paths WHERE GameDir = ?", {"/Juegos/OCEAN"}));
    EXPECT_TRUE(found("SELECT * FROM tFiles WHERE FileName = ? AND Extension = ? AND PathIndex = ?",
                      {"batman - side a", "tzx", 1}));
    EXPECT_FALSE(found("SELECT * FROM Titles WHERE Name = ?", {"Batman II"}));
}

using RegisterTest = CatalogueTest;

TEST_F(RegisterTest, KeysWithGapsLeaveEmptySlotsAndEachLoadStartsAfresh) {
    Create();
    Publisher(2, "Ocean");
    Publisher(5, "Dinamic");
    Path(1, "/juegos/a");
    Path(4, "/juegos/d");
    QString reason;
    ASSERT_TRUE(Comunes::InitGlobals(db, &reason)) << S(reason);

    const std::vector<QString> names = {"", "", "Ocean", "", "", "Dinamic"};
    EXPECT_EQ(Comunes::PublisherNames, names);
    EXPECT_EQ(S(Comunes::PublisherName(6)), "");
    EXPECT_EQ(S(Comunes::PublisherName(-1)), "");
    const auto& paths = Comunes::PathTable;
    EXPECT_EQ(paths.Count(), 5);
    EXPECT_EQ(paths.number, (std::vector<QString>{"", "1", "", "", "4"}));
    EXPECT_EQ(paths.dir, (std::vector<QString>{"", "/juegos/a", "", "", "/juegos/d"}));

    // IdPub 0 reads its name from slot 0, like any other number.
    Publisher(0, "Sin editor");
    ASSERT_TRUE(Comunes::LoadPublishers());
    EXPECT_EQ(S(Comunes::PublisherNames[0]), "Sin editor");

    Sql(db, "DELETE FROM Publishers");
    Sql(db, "DELETE FROM Paths");
    ASSERT_TRUE(Comunes::LoadPublishers());
    ASSERT_TRUE(Comunes::LoadPaths());
    EXPECT_EQ(Comunes::PublisherNames, std::vector<QString>{""});
    EXPECT_EQ(paths.number, (std::vector<QString>{"", ""}));
    EXPECT_EQ(paths.dir, (std::vector<QString>{"", ""}));
}

TEST_F(RegisterTest, EmulatorPathIsTheSettingOrTheBuiltInOne) {
    Create();
    ASSERT_TRUE(Comunes::InitGlobals(db, nullptr));
    EXPECT_TRUE(Comunes::EmulPath.endsWith("\\spectaculator.exe")) << S(Comunes::EmulPath);
    Comunes::Reset();
    SaveSetting("Emulador", "defaultemulpath", "/usr/bin/fuse");
    ASSERT_TRUE(Comunes::InitGlobals(db, nullptr));
    EXPECT_EQ(S(Comunes::EmulPath), "/usr/bin/fuse");
}

TEST(SettingsTest, KeysDifferingOnlyInCaseAreOneKey) {
    QTemporaryDir dir;
    UseSettingsFile(dir.filePath("cintal.ini"));
    EXPECT_EQ(S(GetSetting("Conf", "HaveIt", "0")), "0");
    SaveSetting("Emulador", "VBSpecPath", "/a/vbspec");
    SaveSetting("Emulador", "vbspecPath", "/b/vbspec");
    EXPECT_EQ(S(GetSetting("Emulador", "VBSPECPATH")), "/b/vbspec");
    EXPECT_EQ(S(GetSetting("Conf", "VBSpecPath", "nada")), "nada");
    QSettings file(dir.filePath("cintal.ini"), QSettings::IniFormat);
    EXPECT_EQ(file.allKeys().size(), 1);
    UseSettingsFile({});
}

TEST_F(StoreTest, AnOldCatalogueIsUpgradedInPlaceOnceAndSaysSo) {
    Create();
    for (const char* column : {"InnerPath", "Crc32", "Md5", "Sha1", "DiskSize", "DiskTime"})
        Sql(db, QStringLiteral("ALTER TABLE tFiles DROP COLUMN %1").arg(column));
    for (const char* table : {"Dats", "DatGames", "DatRoms", "FileMatches"})
        Sql(db, QStringLiteral("DROP TABLE %1").arg(table));
    Sql(db, "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex) VALUES (1, 'Uno', "
            "'tzx', 1)");
    ScriptedBoxes boxes;
    QString reason;
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(Store::Open(db, &reason)) << S(reason);
        Store::Close();
    }
    EXPECT_EQ(boxes.Shown(),
              (Boxes{Box("El catálogo se ha puesto al día: ahora guarda los archivos que hay "
                         "dentro de archivos comprimidos y el tamaño, CRC32, MD5 y SHA1 de cada "
                         "archivo.",
                         {}, Icon::Information)}));
    EXPECT_EQ(Rows("SELECT FileName, InnerPath, Sha1, DiskTime FROM tFiles"),
              (std::vector<std::string>{"Uno|NULL|NULL|NULL"}));
    EXPECT_EQ(Rows("SELECT count(*) FROM Dats JOIN DatRoms JOIN FileMatches"),
              (std::vector<std::string>{"0"}));
}

} // namespace
} // namespace cintal::test
