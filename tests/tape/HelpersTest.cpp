// Path helpers, tape text decoding, and TAP files turned into TZX files.

#include "TestSupport.h"
#include "tape/Cp1252.h"
#include "tape/TZXFunct.h"
#include "tape/TZXTape.h"
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
    // The root is a folder like any other: what is built under it stays there.
    EXPECT_EQ(DirOf("/juego.tzx"), "");
    EXPECT_EQ(FolderOf("/juego.tzx"), "/");
    EXPECT_EQ(FolderOf(full), "/home/ana/Juegos");
    EXPECT_EQ(FolderOf("juego.tzx"), "");
    EXPECT_EQ(JoinPath(FolderOf("/juego.tzx"), "juego.tmp"), "/juego.tmp");
    EXPECT_EQ(JoinPath("/", "juego.tmp"), "/juego.tmp");
    EXPECT_EQ(JoinPath("/home/ana/", "juego.tmp"), "/home/ana/juego.tmp");
    EXPECT_EQ(JoinPath("/home/ana", "juego.tmp"), "/home/ana/juego.tmp");
    EXPECT_EQ(JoinPath("", "juego.tmp"), "juego.tmp");

    WriteFile(dir.File("juego.tzx"), "x");
    EXPECT_TRUE(FileExists(dir.File("juego.tzx")));
    EXPECT_FALSE(FileExists(dir.File("falta.tzx")));
    EXPECT_FALSE(FileExists(dir.path.string()));
    EXPECT_FALSE(FileExists(""));
}

TEST_F(HelpersTest, HexadecimalTextToDecimalText) {
    // clang-format off
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"FF", "255"}, {"0100", "256"}, {"", "0"}, {"ff", "255"}, {"aB", "171"}, {"00000000", "0"},
        {"FFFFFFFF", "4294967295"}, {"1G", "0"}, {"G1", "0"}, {"-1", "0"}, {" 1", "0"},
        {"0x10", "0"}, {"7FFF", "32767"}};
    // clang-format on
    for (const auto& [hex, decimal] : cases)
        EXPECT_EQ(TZXTape::HexToDec(hex), decimal) << '"' << hex << '"';
}

TEST_F(HelpersTest, ClearEmptiesTheRecordButKeepsTheSpeechUnit) {
    ArchiveInfo info;
    for (const auto& f : kArchiveFields)
        info.*(f.field) = f.name;
    info.fOriginalScreen = true;
    Variant* variants[] = {&info.fFileName,  &info.fEmulOvr, &info.fExtension, &info.fFileSize,
                           &info.fOrigin,    &info.fMemory,  &info.fPlayers,   &info.fTogether,
                           &info.fJoy,       &info.fAY,      &info.fMultiLoad, &info.fScore,
                           &info.fPathIndex, &info.fPath,    &info.fEstado};
    for (Variant* v : variants)
        *v = 3.0;
    info.fCurrah = std::string("Currah");
    info.Clear();
    for (const auto& f : kArchiveFields)
        EXPECT_EQ(info.*(f.field), "") << f.name;
    EXPECT_FALSE(info.fOriginalScreen);
    for (Variant* v : variants)
        EXPECT_EQ(*v, Variant(std::string()));
    EXPECT_EQ(info.fCurrah, Variant(std::string("Currah")));
    info.fCurrah = 1.0;
    info.Clear();
    EXPECT_EQ(info.fCurrah, Variant(1.0));
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
