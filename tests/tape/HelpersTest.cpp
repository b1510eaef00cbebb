// Path helpers, tape text decoding, and TAP files turned into TZX files.

#include "TestSupport.h"
#include "tape/Cp1252.h"
#include "tape/TZXFunct.h"
#include "tape/TapConvert.h"

namespace cintal::test {
namespace {

using HelpersTest = TapeTest;

TEST_F(HelpersTest, PathPartsAndExistence) {
    const std::string full = "/home/ana/Juegos/Manic Miner.v2.TZX";
    EXPECT_EQ(DirOf(full), "/home/ana/Juegos");
    EXPECT_EQ(FileNameOf(full), "Manic Miner.v2");
    EXPECT_EQ(ExtensionOf(full), "TZX");
    EXPECT_EQ(DirOf("juego.tzx"), "");
    EXPECT_EQ(FileNameOf("juego.tzx"), "juego");
    // No extension: the name is all that follows the folder.
    EXPECT_EQ(FileNameOf("/home/ana/LEEME"), "LEEME");
    EXPECT_EQ(ExtensionOf("/home/ana/LEEME"), "");
    EXPECT_EQ(FileNameOf(".tzx"), ".tzx");
    EXPECT_EQ(ExtensionOf(".tzx"), "");

    WriteFile(dir.File("juego.tzx"), "x");
    EXPECT_TRUE(FileExists(dir.File("juego.tzx")));
    EXPECT_FALSE(FileExists(dir.File("falta.tzx")));
    EXPECT_FALSE(FileExists(dir.path.string()));
    EXPECT_FALSE(FileExists(""));
}

TEST_F(HelpersTest, TapeTextsDecodeAndEncodeBackToTheSameBytes) {
    Bytes all;
    for (int i = 0; i < 256; ++i)
        all += static_cast<char>(i);
    EXPECT_EQ(Utf8ToCp1252(Cp1252ToUtf8(all)), all);
    EXPECT_EQ(Cp1252ToUtf8("A\xF1o \xA9 \xA3 \x80 Car\xE1tula"), "Año © £ € Carátula");
    EXPECT_EQ(Cp1252ToUtf8("\x81"), "\xC2\x81");
    EXPECT_EQ(Utf8ToCp1252("日本, \xFF"), "??, ?");
}

Bytes TapBlock(const Bytes& rom) {
    return Le(rom.size(), 2) + rom;
}

TEST_F(HelpersTest, TapBlocksBecomeStandardBlocksBesideTheTap) {
    const Bytes tap = TapBlock(RomHeader(0, "Juego")) + TapBlock(RomData(3));
    const Bytes tzx = Tape({Std(RomHeader(0, "Juego")), Std(RomData(3))}, 1, 13);
    Bytes out;
    ASSERT_TRUE(TapImageToTzx(tap, out));
    EXPECT_EQ(out, tzx);
    for (const Bytes& bad : {Bytes(), tap.substr(0, tap.size() - 1), tap + "x"})
        EXPECT_FALSE(TapImageToTzx(bad, out));

    const std::string source = dir.File("Juego.TAP");
    WriteFile(source, tap);
    std::string made;
    ASSERT_TRUE(ConvertTapToTzx(source, &made));
    EXPECT_EQ(made, dir.File("Juego.tzx"));
    EXPECT_EQ(ReadFile(made), tzx);
    EXPECT_EQ(dir.List(), (Names{"Juego.TAP", "Juego.tzx"}));
    EXPECT_TRUE(Shown().empty());

    // Nothing is overwritten, whatever the case of the name.
    WriteFile(dir.File("otro.tap"), tap);
    WriteFile(dir.File("otro.TZX"), "antiguo");
    EXPECT_FALSE(ConvertTapToTzx(source));
    EXPECT_FALSE(ConvertTapToTzx(dir.File("otro.tap")));
    WriteFile(dir.File("malo.tap"), tap + "x");
    EXPECT_FALSE(ConvertTapToTzx(dir.File("malo.tap")));
    const std::string title = "Convertir en TZX";
    ASSERT_EQ(Shown().size(), 3u);
    EXPECT_EQ(Shown()[0], Box("Ya existe " + made, title, Icon::Critical));
    EXPECT_EQ(Shown()[1].rfind(Box("Ya existe ", title, Icon::Critical), 0), 0u);
    EXPECT_EQ(Shown()[2],
              Box(dir.File("malo.tap") + " no es un archivo TAP válido", title, Icon::Critical));
    EXPECT_EQ(ReadFile(made), tzx);
    EXPECT_EQ(ReadFile(dir.File("otro.TZX")), "antiguo");
    EXPECT_EQ(dir.List(), (Names{"Juego.TAP", "Juego.tzx", "malo.tap", "otro.TZX", "otro.tap"}));
}

} // namespace
} // namespace cintal::test
