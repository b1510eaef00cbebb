// cintal-cli screen, basic and extract: what they print, what they write, and
// that they never write over a file.

#include "../tape/TestSupport.h"
#include "CliRun.h"
#include "cli/Commands.h"
#include "tape/Content.h"

#include <QImage>
#include <sstream>

namespace cintal::test {
namespace {

Names ListOf(const std::string& folder) {
    Names names;
    for (const auto& e : std::filesystem::directory_iterator(folder))
        names.push_back(e.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

class ContentCliTest : public ::testing::Test, protected Tzx {
protected:
    // Two programs after a code block, a screen, a picture and a pause.
    std::string Tape1() {
        const std::string path = dir.File("juego.tzx");
        WriteFile(path, Tape({Std(Head(3, "code", 4, 32768, 0)), Std(Rom(0xFF, "\x01\x02\x03\x04")),
                              Std(Head(0, "uno", 12, 10, 12)),
                              Std(Rom(0xFF, BasicLine(10, B({0xF5}) + "\"uno\""))),
                              Std(Head(0, "dos", 6, 0, 6)),
                              Std(Rom(0xFF, BasicLine(20, B({0xFB})))), Pause(0),
                              Std(Head(3, "pantalla", 6912, 16384, 0)), Std(Rom(0xFF, Screen(1))),
                              Custom("Picture         ", B({0, 0}) + "GIF89a..."),
                              Std(Head(3, "otra", 6912, 16384, 0)), Std(Rom(0xFF, Screen(2)))}));
        return path;
    }

    TempDir dir;
};

TEST_F(ContentCliTest, ScreenWritesAScrOrAPngAndNeverOverAnotherFile) {
    const std::string tape = Tape1();
    const std::string scr = dir.File("carga.scr"), png = dir.File("carga.png");
    Result r = Cli({"screen", tape, scr});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, tape + " -> " + scr + "\n");
    EXPECT_EQ(r.err, "");
    EXPECT_TRUE(SameBytes(ReadFile(scr), Screen(1)));

    // The picture in the first flash phase, pixel for pixel.
    r = Cli({"screen", tape, png});
    EXPECT_EQ(r.status, 0);
    QImage image;
    ASSERT_TRUE(image.load(QString::fromStdString(png), "PNG"));
    ASSERT_EQ(image.size(), QSize(256, 192));
    const std::vector<std::uint32_t> pixels = ScreenPixels(Screen(1));
    int wrong = 0;
    for (int y = 0; y < 192; ++y)
        for (int x = 0; x < 256; ++x)
            wrong += image.pixel(x, y) != pixels[y * 256 + x];
    EXPECT_EQ(wrong, 0);

    // What is there stays, in any case of its name.
    for (const std::string& again : {scr, dir.File("CARGA.SCR")}) {
        r = Cli({"screen", tape, again});
        EXPECT_EQ(r.status, 1);
        EXPECT_EQ(r.out, "");
        EXPECT_EQ(r.err, "cintal-cli: ya existe " + scr + "; no se sobrescribe\n");
    }
    EXPECT_TRUE(SameBytes(ReadFile(scr), Screen(1)));

    // Snapshots by their extension.
    WriteFile(dir.File("foto.SNA"), Bytes(27, '\0') + Screen(3) + Filler(49152 - 6912));
    r = Cli({"screen", dir.File("foto.SNA"), dir.File("foto.scr")});
    EXPECT_EQ(r.status, 0);
    EXPECT_TRUE(SameBytes(ReadFile(dir.File("foto.scr")), Screen(3)));

    // Nothing to give, nothing to read, and a picture kind it doesn't make.
    WriteFile(dir.File("vacia.tzx"),
              Tape({Std(Head(3, "code", 4, 32768, 0)), Std(Rom(0xFF, "abcd"))}));
    r = Cli({"screen", dir.File("vacia.tzx"), dir.File("v.scr")});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, dir.File("vacia.tzx") + ": no tiene pantalla\n");
    r = Cli({"screen", dir.File("falta.tzx"), dir.File("v.scr")});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, "cintal-cli: no se puede leer el archivo " + dir.File("falta.tzx") + "\n");
    EXPECT_EQ(Cli({"screen", tape, dir.File("v.gif")}).status, 2);
    EXPECT_EQ(Cli({"screen", tape}).status, 2);

    EXPECT_EQ(dir.List(),
              (Names{"carga.png", "carga.scr", "foto.SNA", "foto.scr", "juego.tzx", "vacia.tzx"}));
}

TEST_F(ContentCliTest, BasicListsTheFirstProgramOrTheOneAsked) {
    const std::string tape = Tape1();
    Result r = Cli({"basic", tape});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "10 PRINT \"uno\"\n");
    EXPECT_EQ(r.err, "");
    // The program's block or its header's.
    EXPECT_EQ(Cli({"basic", tape, "6"}).out, "20 CLS \n");
    EXPECT_EQ(Cli({"basic", tape, "5"}).out, "20 CLS \n");

    r = Cli({"basic", tape, "2"});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.err, tape + ": el bloque 2 no es un programa BASIC\n");
    r = Cli({"basic", tape, "14"});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, tape + ": no tiene bloque 14\n");
    r = Cli({"basic", tape, "0"});
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(r.err, "cintal-cli: número de bloque no válido: 0\n");
    EXPECT_EQ(Cli({"basic", tape, "3x"}).status, 2);
    EXPECT_EQ(Cli({"basic"}).status, 2);

    // A TAP file reads as the tape it would make.
    const Bytes header = Head(0, "tap", 6, 1, 6), data = Rom(0xFF, BasicLine(1, B({0xE2})));
    WriteFile(dir.File("juego.TAP"), Le(header.size(), 2) + header + Le(data.size(), 2) + data);
    r = Cli({"basic", dir.File("juego.TAP")});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "1 STOP \n");

    WriteFile(dir.File("sin.tzx"), Tape({Std(Rom(0xFF, "abcd"))}));
    r = Cli({"basic", dir.File("sin.tzx")});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, dir.File("sin.tzx") + ": no tiene ningún programa BASIC\n");
    r = Cli({"basic", dir.File("falta.tzx")});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, "cintal-cli: no existe el archivo " + dir.File("falta.tzx") + "\n");
}

TEST_F(ContentCliTest, ExtractWritesABlocksContentBesideAndNeverOverAnotherFile) {
    const std::string tape = Tape1();
    const std::string code = dir.File("codigo.bin");
    Result r = Cli({"extract", tape, "2", code});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, tape + ", bloque 2 (Datos) -> " + code + "\n");
    EXPECT_EQ(ReadFile(code), "\x01\x02\x03\x04");

    // Into a folder, under the name the inspector proposes.
    const std::string out = dir.File("salida");
    std::filesystem::create_directory(out);
    r = Cli({"extract", tape, "4", out});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, tape + ", bloque 4 (Programa BASIC) -> " + out + "/juego-4.bas\n");
    EXPECT_EQ(ReadFile(out + "/juego-4.bas"), "10 PRINT \"uno\"\n");
    EXPECT_EQ(Cli({"extract", tape, "9", out}).status, 0);
    EXPECT_TRUE(SameBytes(ReadFile(out + "/juego-9.scr"), Screen(1)));
    EXPECT_EQ(Cli({"extract", tape, "10", out}).status, 0);
    EXPECT_EQ(ReadFile(out + "/juego-10.gif"), "GIF89a...");

    // Never over a file that is there.
    r = Cli({"extract", tape, "12", code});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, "cintal-cli: ya existe " + code + "; no se sobrescribe\n");
    EXPECT_EQ(ReadFile(code), "\x01\x02\x03\x04");
    r = Cli({"extract", tape, "4", out});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, "cintal-cli: ya existe " + out + "/juego-4.bas; no se sobrescribe\n");

    // Blocks with nothing inside, or not there.
    r = Cli({"extract", tape, "7", dir.File("pausa.bin")});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, tape + ": el bloque 7 no tiene contenido que extraer\n");
    EXPECT_EQ(Cli({"extract", tape, "13", dir.File("x.bin")}).status, 1);
    EXPECT_EQ(Cli({"extract", tape, "2"}).status, 2);

    EXPECT_EQ(dir.List(), (Names{"codigo.bin", "juego.tzx", "salida"}));
    EXPECT_EQ(ListOf(out), (Names{"juego-10.gif", "juego-4.bas", "juego-9.scr"}));
}

} // namespace
} // namespace cintal::test
