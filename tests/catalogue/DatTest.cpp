// DAT files: what is read from them, which file each rom is, what the
// collection has and lacks, as the command line shows it.

#include "../cli/CliRun.h"
#include "CatalogueFixture.h"
#include "catalogue/DatFile.h"
#include "catalogue/Dats.h"
#include "platform/Hashes.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QRegularExpression>

namespace cintal::test {
namespace {

using Lines = std::vector<std::string>;

platform::ContentHashes HashOf(const QByteArray& b) {
    return platform::HashBytes(b.constData(), b.size());
}

QString DatText(const QString& name, const QString& games) {
    return "<?xml version=\"1.0\"?>\n<!DOCTYPE datafile PUBLIC \"-//Logiqx//DTD ROM Management "
           "Datafile//EN\" \"http://www.logiqx.com/Dats/datafile.dtd\">\n<datafile>\n"
           "<header><name>" +
           name + "</name><version>1.0</version></header>\n" + games + "</datafile>\n";
}

QString Rom(const QString& name, const platform::ContentHashes& h, const QString& which) {
    QString attributes = " name=\"" + name + "\"";
    if (which.contains('s')) attributes += " sha1=\"" + h.sha1.toUpper() + "\"";
    if (which.contains('m')) attributes += " md5=\"" + h.md5 + "\"";
    if (which.contains('c'))
        attributes += QStringLiteral(" crc=\"%1\" size=\"%2\"").arg(h.crc32).arg(h.size);
    return "<rom" + attributes + "/>";
}

class DatTest : public CatalogueTest {
protected:
    void SetUp() override {
        CatalogueTest::SetUp();
        Create();
        Path(1, dir.path());
    }
    void File(const QString& name, const QByteArray& bytes) {
        WriteFile(dir.filePath(name + ".tzx"), bytes);
        Sql(db,
            "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex) VALUES (0, ?, 'tzx', 1)",
            {name});
    }
    Result Run(Lines args) {
        args.insert(args.end(), {"--db", S(db)});
        Comunes::Reset();
        return Cli(args);
    }
    std::string Dat(const std::string& file, const QString& text) {
        WriteFile(dir.filePath(QString::fromStdString(file)), text.toUtf8());
        return S(dir.filePath(QString::fromStdString(file)));
    }
};

TEST(DatReader, EntitiesAccentsAttributesInAnyOrderAndSeveralRoms) {
    QByteArray xml = R"x(<?xml version="1.0"?>
<datafile>
  <header>
    <name>Sinclair ZX Spectrum - Juegos &amp; más</name>
    <description>Colección de prueba</description>
    <category>TOSEC</category>
    <version>2024-05-01</version>
    <author>Nadie</author>
  </header>
  <game name="Señor &amp; Ñu (1985)(Ópera)">
    <description>Señor</description>
    <rom size="12" sha1="0123456789ABCDEF0123456789ABCDEF01234567" name="Señor (Cara A).tzx" crc="DEADBEEF"/>
    <rom md5="0123456789abcdef0123456789abcdef" name="Señor (Cara B).tzx" size="7"/>
  </game>
  <machine name="Otro"><rom name="Otro.tzx"/></machine>
</datafile>)x";
    QBuffer buffer(&xml);
    buffer.open(QIODevice::ReadOnly);
    Dat dat;
    QString why;
    ASSERT_TRUE(ReadDat(buffer, dat, why)) << S(why);
    EXPECT_EQ(Lines({S(dat.name), S(dat.description), S(dat.category), S(dat.version)}),
              Lines({"Sinclair ZX Spectrum - Juegos & más", "Colección de prueba", "TOSEC",
                     "2024-05-01"}));
    ASSERT_EQ(dat.games.size(), 2u);
    const DatGame& g = dat.games[0];
    EXPECT_EQ(S(g.name), "Señor & Ñu (1985)(Ópera)");
    ASSERT_EQ(g.roms.size(), 2u);
    EXPECT_EQ(
        Lines({S(g.roms[0].name), std::to_string(g.roms[0].size), S(g.roms[0].crc32),
               S(g.roms[0].sha1), S(g.roms[1].md5), std::to_string(g.roms[1].size)}),
        Lines({"Señor (Cara A).tzx", "12", "deadbeef", "0123456789abcdef0123456789abcdef01234567",
               "0123456789abcdef0123456789abcdef", "7"}));
    EXPECT_EQ(S(dat.games[1].name), "Otro");
    EXPECT_EQ(dat.games[1].roms[0].size, -1);

    for (const auto& [text, reason] : std::vector<std::pair<QByteArray, std::string>>{
             {xml.left(xml.indexOf("<machine")), "línea 15: el archivo termina antes de tiempo"},
             {"<html>\n<body/></html>", "línea 1: no es un archivo DAT (empieza por <html>)"},
             {"<datafile>\n<header><name>x</name></header>\n<game name=\"a\"><rom name=\"a\" "
              "crc=\"xyz\"/></game></datafile>",
              "línea 3: el crc \"xyz\" no es válido"}}) {
        QByteArray bytes = text;
        QBuffer broken(&bytes);
        broken.open(QIODevice::ReadOnly);
        EXPECT_FALSE(ReadDat(broken, dat, why));
        EXPECT_EQ(S(why), reason);
        EXPECT_TRUE(dat.games.empty());
    }
}

TEST_F(DatTest, Sha1OverMd5OverCrcAndSizeAndTheDatReplacedByName) {
    const QByteArray bytes = "contenido de la cinta";
    const platform::ContentHashes h = HashOf(bytes);
    File("cinta", bytes);
    File("otra", "otra cosa");
    platform::ContentHashes wrongSize = h, wrongSha1 = h;
    ++wrongSize.size;
    wrongSha1.sha1 = QString(40, 'a');
    const QString games = "<game name=\"Por CRC\">" + Rom("a.tzx", h, "c") + "</game>" +
                          "<game name=\"Por MD5\">" + Rom("b.tzx", h, "m") + "</game>" +
                          "<game name=\"Por SHA1\">" + Rom("c.tzx", h, "s") + "</game>" +
                          "<game name=\"Otro tamaño\">" + Rom("d.tzx", wrongSize, "c") + "</game>" +
                          "<game name=\"Otro SHA1\">" + Rom("e.tzx", wrongSha1, "sc") + "</game>";
    Result r = Run({"dat", "add", Dat("orden.dat", DatText("Orden", games))});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "1\tOrden\t1.0\t5\n");
    const std::string cinta = S(dir.filePath("cinta.tzx")), otra = S(dir.filePath("otra.tzx"));
    r = Run({"identify"});
    EXPECT_EQ(Split(r.out), Lines({"1\t" + cinta + "\tPor SHA1\tOrden", "2\t" + otra + "\t-\t-",
                                   "Identificados: 1 de 2"}));
    // Loaded again under the same name, it takes the place of the first.
    const QString withoutSha1 = QString(games).remove(games.indexOf("<game name=\"Por SHA1"),
                                                      games.indexOf("<game name=\"Otro tam") -
                                                          games.indexOf("<game name=\"Por SHA1"));
    ASSERT_EQ(Run({"dat", "add", Dat("orden2.dat", DatText("Orden", withoutSha1))}).status, 0);
    EXPECT_EQ(Split(Run({"identify"}).out)[0], "1\t" + cinta + "\tPor MD5\tOrden");
    ASSERT_EQ(Run({"dat", "add",
                   Dat("orden3.dat",
                       DatText("Orden", QString(withoutSha1)
                                            .remove(QRegularExpression("<game name=\"Por "
                                                                       "MD5\">.*?</game>"))))})
                  .status,
              0);
    EXPECT_EQ(Split(Run({"identify"}).out)[0], "1\t" + cinta + "\tPor CRC\tOrden");
    EXPECT_EQ(Run({"dat", "list"}).out, "3\tOrden\t1.0\t3\n");

    // A broken DAT leaves everything as it was.
    r = Run({"dat", "add", Dat("roto.dat", DatText("Roto", games).left(200))});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, "El archivo DAT " + S(dir.filePath("roto.dat")) +
                         " no es válido: línea 4: el archivo termina antes de tiempo. No se ha "
                         "cargado nada.\n");
    EXPECT_EQ(Run({"dat", "list"}).out, "3\tOrden\t1.0\t3\n");
    EXPECT_EQ(Run({"dat", "remove", "3"}).status, 0);
    EXPECT_EQ(Run({"dat", "remove", "3"}).err, "No hay ningún DAT con Id 3\n");
    EXPECT_EQ(Split(Run({"identify"}).out).back(), "Identificados: 0 de 2");
}

TEST_F(DatTest, TheReportListsWhatIsHadAndWhatIsMissing) {
    const QByteArray uno = "uno", dos = "dos", tres = "tres";
    File("UNO", uno);
    File("dos", dos);
    const QString games =
        "<game name=\"Uno (1984)(Ocean)\">" + Rom("Uno (1984)(Ocean).tzx", HashOf(uno), "smc") +
        "</game><game name=\"Dos; &quot;el regreso&quot;\">" + Rom("Dos.tzx", HashOf(dos), "c") +
        Rom("Dos (Cara B).tzx", HashOf(tres), "c") + "</game><game name=\"Tres\">" +
        Rom("Tres.tzx", HashOf(tres), "s") + "</game>";
    ASSERT_EQ(Run({"dat", "add", Dat("a.dat", DatText("Spectrum", games))}).status, 0);
    Result r = Run({"report", "--dat", "spectrum"});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(Split(r.out),
              Lines({"tengo\tUno (1984)(Ocean)\t" + S(dir.filePath("UNO.tzx")),
                     "falta\tDos; \"el regreso\"", "falta\tTres", "Tengo 1 de 3 (33,3 %)"}));
    // The third file turns up, its name in capitals on disk as old tape
    // sites gave them: it is found, hashed and matched all the same, and the
    // game of two roms is whole, the other had.
    WriteFile(dir.filePath("TRES.TZX"), tres);
    Sql(db, "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex) VALUES (0, 'tres', "
            "'tzx', 1)");
    r = Run({"report", "--dat", "Spectrum"});
    EXPECT_EQ(Split(r.out).back(), "Tengo 3 de 3 (100,0 %)");
    bool found = false;
    ASSERT_TRUE(Comunes::InitGlobals(db, nullptr));
    const auto report = Dats::Report("Spectrum", found);
    ASSERT_TRUE(report);
    EXPECT_EQ(S(Dats::Csv(*report)),
              "Estado;Juego;Ruta\r\nTengo;Uno (1984)(Ocean);" + S(dir.filePath("UNO.tzx")) +
                  "\r\nTengo;\"Dos; \"\"el regreso\"\"\";" + S(dir.filePath("dos.tzx")) +
                  "\r\nTengo;Tres;" + S(dir.filePath("TRES.TZX")) + "\r\n");
    EXPECT_EQ(Run({"report", "--dat", "Nada"}).err, "No hay ningún DAT llamado Nada\n");
}

// A tape the scan catalogues is known to the DATs at once, and a deleted row
// leaves the game to the other file that holds it.
TEST_F(DatTest, ScannedFilesAreKnownAtOnceAndDeletedRowsStopCounting) {
    const QByteArray tape("ZXTape!\x1a\x01\x14", 10);
    ASSERT_EQ(
        Run({"dat", "add",
             Dat("c.dat", DatText("Cintas", "<game name=\"Cinta (1990)(Nadie)\">" +
                                                Rom("Cinta.tzx", HashOf(tape), "s") + "</game>"))})
            .status,
        0);
    QDir().mkpath(dir.filePath("nueva"));
    WriteFile(dir.filePath("nueva/cinta.tzx"), tape);
    WriteFile(dir.filePath("nueva/copia.tzx"), tape);
    ASSERT_EQ(Run({"scan", S(dir.filePath("nueva"))}).status, 0);
    EXPECT_EQ(Rows("SELECT f.FileName FROM FileMatches m JOIN tFiles f ON f.FileId = m.FileId "
                   "ORDER BY f.FileId"),
              Lines({"cinta", "copia"}));
    Sql(db, "DELETE FROM tFiles WHERE FileName = 'cinta'");
    EXPECT_EQ(Split(Run({"report", "--dat", "Cintas"}).out),
              Lines({"tengo\tCinta (1990)(Nadie)\t" + S(dir.filePath("nueva/copia.tzx")),
                     "Tengo 1 de 1 (100,0 %)"}));
    // Saved with new archive information, the tape is no longer the DAT's.
    ASSERT_EQ(
        Run({"info", "--set", "iName=Otra", "--yes", S(dir.filePath("nueva/copia.tzx"))}).status,
        0);
    QFile file(dir.filePath("nueva/copia.tzx"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray saved = file.readAll();
    EXPECT_EQ(Rows("SELECT Sha1 FROM tFiles"), Lines({S(HashOf(saved).sha1)}));
    EXPECT_EQ(Rows("SELECT count(*) FROM FileMatches m JOIN tFiles f ON f.FileId = m.FileId"),
              Lines({"0"}));
}

} // namespace
} // namespace cintal::test
