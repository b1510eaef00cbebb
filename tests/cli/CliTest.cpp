// cintal-cli as a collector uses it from a shell: what it prints, what it
// leaves on disk, and its exit status.

#include "../tape/TestSupport.h"
#include "CliRun.h"
#include "cli/Commands.h"

#include <sstream>

namespace cintal::test {
namespace {

// A ROM record with its last byte made the XOR of the others, as SAVE makes it.
Bytes WithSum(Bytes rom) {
    std::uint8_t sum = 0;
    for (std::size_t i = 0; i + 1 < rom.size(); ++i)
        sum ^= static_cast<std::uint8_t>(rom[i]);
    rom.back() = static_cast<char>(sum);
    return rom;
}

class CliTest : public ::testing::Test, protected Tzx {
protected:
    TempDir dir;
};

TEST_F(CliTest, ListShowsBlocksPositionsChecksumsArchiveTextsAndWhereAReadStopped) {
    const std::string whole = dir.File("juego.tzx");
    WriteFile(whole, Tape({Std(RomHeader(0, "Juego")), Pause(0), Std(WithSum(RomData(10))), Call(),
                           Archive({{255, "L\xEDnea 1\r\nTab\there \\"}, {0, "Ca\xF1\xF3n"}}),
                           Std(RomData(100)).substr(0, 20)}));
    Result r = Cli({"list", whole});
    EXPECT_EQ(r.status, 0);
    // Positions count from 11; a cut last block ends where it says it ends,
    // and its checksum is gone with its last byte.
    EXPECT_EQ(r.out, "Archivo " + whole +
                         " - versión 1.20\n"
                         "1\t0x10\tBloque estandar\tBASIC: Juego           \t11\t34\tmal\n"
                         "2\t0x20\tPausa/detención\tDetener la cinta\t35\t37\t\n"
                         "3\t0x10\tBloque estandar\t      Datos - 10 bytes\t38\t54\tok\n"
                         "4\t0x26\t\t-->>\t55\t61\t\n"
                         "5\t0x32\tInfo de archivo\tCañón\t62\t93\t\n"
                         "6\t0x10\tBloque estandar\tDatos - 100 bytes\t94\t200\tmal\n"
                         "info\t0\tiName\tCañón\n"
                         "info\t255\tiComments\tLínea 1\\r\\nTab\\there \\\\\n");
    // The box that a call block brings comes out on standard error.
    EXPECT_EQ(r.err, "otro\n");

    const std::string broken = dir.File("roto.tzx");
    WriteFile(broken, Tape({Pause(10), B({0x60, 1, 2, 3})}, 1, 13));
    r = Cli({"list", broken});
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.out.find("1\t0x20\tPausa/detención\tPausa de 10 mseg.\t11\t13\t\n"
                         "incompleto\t2\t14\tbloque desconocido 0x60\n"),
              std::string::npos)
        << r.out;
    EXPECT_EQ(r.err, "Bloque desconocido: 96 en  byte 14 , bloque 2\n");
}

TEST_F(CliTest, CleanRemovesRedundantBlocksAndAsksBeforeDowngradingANewerTape) {
    const std::string path = dir.File("a.tzx");
    const Bytes original =
        Tape({Merge(), Archive({{0, "Uno"}}), Pause(5), Archive({{0, "Dos"}})}, 1, 21);
    WriteFile(path, original);

    // Without --yes the 1.21 tape is left alone.
    Result r = Cli({"clean", path});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, path + ": no se ha modificado (versión 1.21 superior a la soportada; use "
                            "--yes para guardarlo como 1.20)\n");
    EXPECT_TRUE(SameBytes(ReadFile(path), original));

    r = Cli({"clean", "--yes", path});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, path + ": guardado, 2 bloques eliminados, versión 1.20\n");
    EXPECT_TRUE(SameBytes(ReadFile(path), Tape({Archive({{0, "Dos"}}), Pause(5)}, 1, 20)));
    EXPECT_TRUE(SameBytes(ReadFile(dir.File("a.tmp")), original));

    r = Cli({"clean", path});
    EXPECT_EQ(r.out, path + ": sin cambios\n");

    // A tape that was not read whole is never written.
    const std::string cut = dir.File("b.tzx");
    const Bytes cutBytes = Tape({Merge(), B({0x60, 0})});
    WriteFile(cut, cutBytes);
    r = Cli({"clean", "--yes", cut});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out, cut + ": no se ha modificado (bloque desconocido 0x60)\n");
    EXPECT_TRUE(SameBytes(ReadFile(cut), cutBytes));

    // A tape named like a backup keeps its own backup beside it.
    const std::string tmp = dir.File("juego.tmp");
    WriteFile(tmp, Tape({Merge(), Pause(5)}, 1, 13));
    r = Cli({"clean", tmp});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, tmp + ": guardado, 1 bloques eliminados, versión 1.13\n");
    EXPECT_TRUE(SameBytes(ReadFile(tmp), Tape({Pause(5)}, 1, 13)));
    EXPECT_TRUE(SameBytes(ReadFile(dir.File("juego.tmp.tmp")), Tape({Merge(), Pause(5)}, 1, 13)));
    EXPECT_EQ(dir.List(), (Names{"a.tmp", "a.tzx", "b.tzx", "juego.tmp", "juego.tmp.tmp"}));
}

TEST_F(CliTest, TapesAtTheRootAreCleanedAndConvertedThere) {
    // The file system stands in the test's folder; the current folder is
    // never touched.
    TestOps ops;
    ops.root = dir.path.string();
    detail::FileOpsScope use(ops);
    const Bytes original = Tape({Merge(), Pause(5)}, 1, 13);
    WriteFile(dir.File("juego.tzx"), original);
    Result r = Cli({"clean", "/juego.tzx"});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "/juego.tzx: guardado, 1 bloques eliminados, versión 1.13\n");
    EXPECT_TRUE(SameBytes(ReadFile(dir.File("juego.tzx")), Tape({Pause(5)}, 1, 13)));
    EXPECT_TRUE(SameBytes(ReadFile(dir.File("juego.tmp")), original));

    const Bytes block = Le(3, 2) + B({0xFF, 1, 2});
    WriteFile(dir.File("nuevo.tap"), block);
    WriteFile(dir.File("otro.tap"), block);
    WriteFile(dir.File("OTRO.TZX"), "x");
    r = Cli({"tap2tzx", "/nuevo.tap", "/otro.tap"});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out, "/nuevo.tap -> /nuevo.tzx\n");
    EXPECT_EQ(r.err, "[Convertir en TZX] Ya existe /OTRO.TZX\n");
    EXPECT_TRUE(
        SameBytes(ReadFile(dir.File("nuevo.tzx")), Tape({B({0x10}) + Le(1000, 2) + block}, 1, 13)));
    EXPECT_EQ(ReadFile(dir.File("OTRO.TZX")), "x");
    EXPECT_EQ(ops.relative, Names{});
    EXPECT_EQ(dir.List(),
              (Names{"OTRO.TZX", "juego.tmp", "juego.tzx", "nuevo.tap", "nuevo.tzx", "otro.tap"}));
}

TEST_F(CliTest, CompareListsTheAlignedBlocksAndExitsByWhatDiffers) {
    const std::string a = dir.File("a.tzx"), b = dir.File("b.tzx"), c = dir.File("c.tzx");
    WriteFile(a, Tape({Std(RomHeader(0, "Juego")), Std(RomData(10)), Archive({{0, "Juego"}}),
                       Pause(0), Text("Fin\t\xA9")}));
    WriteFile(b, Tape({Std(RomHeader(0, "Juego")), Std(RomData(12)), Pause(0), Tone(),
                       Archive({{0, "Juego"}})}));
    Result r = Cli({"compare", a, b});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out, "=\t1\t0x10\tBASIC: Juego           \t1\t0x10\tBASIC: Juego           \n"
                     "~\t2\t0x10\t      Datos - 10 bytes\t2\t0x10\t      Datos - 12 bytes\n"
                     " \t3\t0x32\tJuego\t\t\t\n"
                     "=\t4\t0x20\tDetener la cinta\t3\t0x20\tDetener la cinta\n"
                     "<\t5\t0x30\tFin\\t©\t\t\t\n"
                     ">\t\t\t\t4\t0x12\t Pure tone\n"
                     " \t\t\t\t5\t0x32\tJuego\n"
                     "Iguales: 2  Distintos: 1  Sólo en A: 1  Sólo en B: 1\n"
                     "La información de archivo es igual\n");
    EXPECT_EQ(r.err, "");

    // Only the archive texts differ: no block does, so nothing differs.
    WriteFile(c, Tape({Std(RomHeader(0, "Juego")), Std(RomData(10)), Pause(0), Text("Fin\t\xA9"),
                       Archive({{0, "Juego"}, {3, "1984"}})},
                      1, 13));
    r = Cli({"compare", a, c});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out.substr(r.out.find("Iguales")),
              "Iguales: 4  Distintos: 0  Sólo en A: 0  Sólo en B: 0\n"
              "La información de archivo es distinta\n");

    // A tape not read whole is not compared.
    const std::string broken = dir.File("roto.tzx"), missing = dir.File("no.tzx");
    WriteFile(broken, Tape({Pause(10), B({0x60, 1, 2, 3})}));
    r = Cli({"compare", broken, missing});
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.err, "Bloque desconocido: 96 en  byte 14 , bloque 2\n"
                     "cintal-cli: " +
                         broken +
                         ": no se puede leer entero (bloque desconocido 0x60)\n"
                         "no existe el archivo!!!!!\n"
                         "cintal-cli: " +
                         missing + ": no se puede leer entero (el archivo no existe)\n");

    EXPECT_EQ(Cli({"compare", a}).status, 2);
    EXPECT_EQ(Cli({"compare", a, b, c}).status, 2);
    EXPECT_EQ(Cli({"compare", "--yes", a, b}).status, 2);
}

TEST_F(CliTest, UsageErrorsExplainThemselves) {
    EXPECT_EQ(Cli({}).status, 2);
    EXPECT_EQ(Cli({"borrar", "x"}).status, 2);
    EXPECT_EQ(Cli({"list"}).status, 2);
    EXPECT_EQ(Cli({"list", "--rapido", "x"}).status, 2);
    Result help = Cli({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.out.find("Uso: cintal-cli"), std::string::npos);

    // An option never takes the next option as its value.
    const Result bare = Cli({"titles", "--db", "--help"});
    EXPECT_EQ(bare.status, 2);
    EXPECT_EQ(bare.err,
              "cintal-cli: falta el valor de --db\nUso: cintal-cli titles [--db ARCHIVO]\n");
    EXPECT_EQ(Cli({"purge", "--db"}).status, 2);
    // A file that is no catalogue is a store failure for every command.
    const std::string foreign = dir.File("ajeno.mdb");
    WriteFile(foreign, "no es un catálogo");
    WriteFile(dir.File("juego.tzx"), Tape({Std(RomHeader(0, "Juego"))}));
    EXPECT_EQ(Cli({"titles", "--db", foreign}).status, 2);
    EXPECT_EQ(Cli({"add", "--title", "1", dir.File("juego.tzx"), "--db", foreign}).status, 2);
    EXPECT_EQ(Cli({"purge", "--db", foreign}).status, 2);
}

} // namespace
} // namespace cintal::test
