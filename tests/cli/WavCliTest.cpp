// cintal-cli wav: the file it writes, and what it refuses.

#include "../tape/TestSupport.h"
#include "CliRun.h"

namespace cintal::test {
namespace {

TEST(WavCliTest, WritesTheSoundOfATapeAndRefusesWhatItMustNot) {
    TempDir dir;
    const std::string tape = dir.File("juego.tzx"), tap = dir.File("juego.tap");
    WriteFile(tape, Tape({raw::PureTone(3500, 700), raw::Pause(700)}));
    WriteFile(tap, raw::TapEntry(raw::RomBlock(0xFF, "\x01")));

    Result r = Cli({"wav", tape, dir.File("juego.wav")});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, tape + " -> " + dir.File("juego.wav") + " (0:01, 44100 Hz)\n");
    // 1.4 s at 44,100 and at 22,050 samples a second, 2 bytes each.
    EXPECT_EQ(ReadFile(dir.File("juego.wav")).size(), 44u + 2 * 61740);
    r = Cli({"wav", "--rate", "22050", tape, dir.File("lento.wav")});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(ReadFile(dir.File("lento.wav")).size(), 44u + 2 * 30870);
    // A TAP plays its record as a standard block, with 1 s after it.
    EXPECT_EQ(Cli({"wav", tap, dir.File("tap.wav")}).status, 0);
    // Flag 0xFF, 0x01 and the checksum 0xFE: 16 ones, 7 zeros, a one, 7 ones, a zero.
    const std::size_t tapT = 3223 * 2168 + 667 + 735 + 32 * 1710 + 16 * 855 + 3500000;
    EXPECT_EQ(ReadFile(dir.File("tap.wav")).size(), 44 + 2 * ((tapT * 441 + 17500) / 35000));

    r = Cli({"wav", tape, dir.File("JUEGO.WAV")});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, "cintal-cli: no se puede escribir " + dir.File("JUEGO.WAV") + ": ya existe " +
                         dir.File("juego.wav") + "\n");

    EXPECT_EQ(Cli({"wav", tape}).status, 2);
    r = Cli({"wav", tape, dir.File("x.wav"), "--rate", "44k"});
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(r.err, "cintal-cli: frecuencia no válida: 44k (ha de ser un número de hercios "
                     "entre 1000 y 384000)\nUso: cintal-cli wav CINTA SALIDA.wav [--rate HZ]\n");

    // The file ends inside the data of its second block.
    Bytes cut = Tape({raw::PureTone(3500, 10), raw::Standard(raw::RomBlock(0xFF, "abcdef"))});
    cut.resize(cut.size() - 3);
    WriteFile(dir.File("cortada.tzx"), cut);
    r = Cli({"wav", dir.File("cortada.tzx"), dir.File("cortada.wav")});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, dir.File("cortada.tzx") +
                         ": no se puede leer entera (el archivo termina dentro de los datos del "
                         "bloque 2); no "
                         "se ha escrito el archivo WAV\n");
    EXPECT_EQ(dir.List(), (Names{"cortada.tzx", "juego.tap", "juego.tzx", "juego.wav", "lento.wav",
                                 "tap.wav"}));
}

} // namespace
} // namespace cintal::test
