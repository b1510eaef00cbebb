// What the blocks hold: screens on tapes and in snapshots, BASIC listings,
// checksums, and a block's content as a file, on tapes and snapshots made
// here byte by byte.

#include "tape/Content.h"
#include "TestSupport.h"
#include "tape/Blocks.h"
#include "tape/TZXTape.h"

namespace cintal::test {
namespace {

// What ContentOf says of each block, in a form a failure shows at a glance.
std::vector<std::string> Summary(TZXTape& tape) {
    std::vector<std::string> out;
    for (const BlockContent& c : ContentOf(tape.Blocks())) {
        std::string s = ContentKindName(c.kind);
        if (!c.extension.empty()) s += " ." + c.extension;
        if (c.pair) s += " " + std::to_string(c.pair);
        out.push_back(s);
    }
    return out;
}

class ContentTest : public TapeTest {
protected:
    TZXTape& Read(const Bytes& image) {
        tape.ReadImage(image);
        EXPECT_TRUE(tape.Status().Whole()) << tape.Status().Cause();
        contents = ContentOf(tape.Blocks());
        return tape;
    }
    std::string_view BytesOf(int number) {
        return ContentBytes(*tape.Blocks().Item(number), contents[number - 1]);
    }

    TZXTape tape;
    std::vector<BlockContent> contents;
};

TEST_F(ContentTest, ScreensOnATapeAndWhichOneLoadsFirst) {
    const std::vector<Bytes> blocks = {
        Std(Head(0, "loader", 4, 10, 4)),
        Std(Rom(0xFF, B({0, 10, 0, 0}))), // 1-2 a program
        Std(Head(3, "code", 6912, 32768, 0)),
        Std(Rom(0xFF, Screen(1))), // 3-4 code elsewhere
        Std(Head(3, "x", 6912, 16384, 0)),
        Pause(0),
        Group("g"),                // 5-7
        Std(Rom(0xFF, Screen(2))), // 8 the first screen
        Std(Head(3, "SCREEN$", 6912, 30000, 0)),
        Turbo(Rom(0xFF, Screen(3))),
        Std(Head(3, "Pantalla", 6912, 0, 0)),
        PureData(Rom(0xFF, Screen(4))),
        Std(Head(3, "x", 6912, 16384, 0)),
        Std(Rom(0xFF, Filler(6913))), // 13-14 one too many
        Std(Head(3, "x", 6912, 16384, 0)),
        Std(Rom(0xFF, Filler(10))), // 15-16
        Std(Rom(0xFF, Screen(5))),  // 17 its header is taken
        Std(Head(2, "my pict", 6912, 0, 0)),
        Std(Rom(0xFF, Screen(6))),                                         // 18-19 named like one
        Custom("Spectrum Screen ", B({5}) + "Carga" + B({2}) + Screen(7)), // 20
        Custom("Spectrum Screen ", B({0, 1}) + Screen(8).substr(0, 6911)), // 21 one byte short
        Std(Head(0, "screen", 6912, 0, 6912)),
        Std(Rom(0xFF, Screen(9))), // 22-23 a program
    };
    Bytes image = Tape({});
    std::size_t firstScreenEnd = 0;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        image += blocks[i];
        if (i + 1 == 8) firstScreenEnd = image.size();
    }
    Read(image);
    // clang-format off
    EXPECT_EQ(Summary(tape), (Names{
        "Cabecera .bin 2", "Programa BASIC .bas 1", "Cabecera .bin 4", "Datos .bin 3",
        "Cabecera .bin 8", "", "", "Pantalla .scr 5", "Cabecera .bin 10", "Pantalla .scr 9",
        "Cabecera .bin 12", "Pantalla .scr 11", "Cabecera .bin 14", "Datos .bin 13",
        "Cabecera .bin 16", "Datos .bin 15", "Datos .bin", "Cabecera .bin 19", "Pantalla .scr 18",
        "Pantalla .scr", "Información .bin", "Cabecera .bin 23", "Programa BASIC .bas 22"}));
    // clang-format on
    EXPECT_EQ(BytesOf(8), Screen(2));
    EXPECT_EQ(BytesOf(10), Screen(3));
    EXPECT_EQ(BytesOf(12), Screen(4));
    EXPECT_EQ(BytesOf(19), Screen(6));
    EXPECT_EQ(BytesOf(20), Screen(7));
    EXPECT_EQ(FirstScreen(tape.Blocks()), Screen(2));

    // The same from the file's bytes, whatever its name says, and from its
    // head on disk as long as the head holds the whole screen.
    EXPECT_EQ(ScreenOfFile(image, ""), Screen(2));
    EXPECT_EQ(ScreenOfFile(image, "sna"), Screen(2));
    const std::string path = dir.File("juego.tzx");
    WriteFile(path, image);
    EXPECT_EQ(ReadScreen(path), Screen(2));
    EXPECT_EQ(ReadScreen(path, firstScreenEnd), Screen(2));
    // One byte less cuts the screen's checksum off: the next screen is past the head.
    EXPECT_EQ(ReadScreen(path, firstScreenEnd - 1), std::nullopt);

    // A tape whose first screen is a custom info block.
    const Bytes custom = Tape({Std(Head(0, "x", 2, 0, 2)), Std(Rom(0xFF, "ab")),
                               Custom("Spectrum Screen ", B({0, 7}) + Screen(10)), blocks[7]});
    EXPECT_EQ(ScreenOfFile(custom, "tzx"), Screen(10));

    // A tape without a screen, a file that is no tape, and one that can't be read.
    const Bytes none = Tape({blocks[0], blocks[1], blocks[2], blocks[3], blocks[12], blocks[13]});
    EXPECT_EQ(ScreenOfFile(none, "tzx"), std::nullopt);
    EXPECT_EQ(Read(none).Blocks().Count(), 6);
    EXPECT_EQ(FirstScreen(tape.Blocks()), std::nullopt);
    EXPECT_EQ(ScreenOfFile(Screen(1) + "x", "tzx"), std::nullopt);
    EXPECT_EQ(ReadScreen(dir.File("no.tzx")), std::nullopt);
    EXPECT_EQ(Shown(), Boxes{});
}

TEST_F(ContentTest, ScreensOfTapFilesScrFilesAndCutTapes) {
    auto entry = [](const Bytes& rom) { return Le(rom.size(), 2) + rom; };
    const Bytes tap = entry(Head(0, "cargador", 2, 10, 2)) + entry(Rom(0xFF, "ab")) +
                      entry(Head(3, "s", 6912, 16384, 0)) + entry(Rom(0xFF, Screen(1)));
    EXPECT_EQ(ScreenOfFile(tap, "TAP"), Screen(1));
    EXPECT_EQ(ScreenOfFile(tap, ".tap"), Screen(1));
    EXPECT_EQ(ScreenOfFile(tap.substr(0, tap.size() - 1), "tap"), std::nullopt);
    EXPECT_EQ(ScreenOfFile(tap, "bin"), std::nullopt);

    EXPECT_EQ(ScreenOfFile(Screen(2), "SCR"), Screen(2));
    EXPECT_EQ(ScreenOfFile(Screen(2) + "x", "scr"), std::nullopt);

    // A tape cut inside its screen block, and one cut inside a length field.
    const Bytes screenTape = Tape({Std(Head(3, "s", 6912, 16384, 0)), Std(Rom(0xFF, Screen(3)))});
    for (std::size_t cut : {screenTape.size() - 1, std::size_t(10 + 24 + 3), std::size_t(11)})
        EXPECT_EQ(ScreenOfFile(screenTape.substr(0, cut), "tzx"), std::nullopt) << cut;
    Read(screenTape.substr(0, screenTape.size() - 1));
    EXPECT_EQ(Summary(tape), (Names{"Cabecera .bin 2", "Datos .bin 1"}));
    EXPECT_EQ(contents[1].checksum, Checksum::Wrong);
    EXPECT_EQ(BytesOf(2), Screen(3)); // no checksum left to take off
}

// --- Snapshots

// RAM from 16384 with runs long and short, single ED bytes and runs of them.
Bytes Ram(std::size_t size, int salt) {
    Bytes ram(size, '\0');
    for (std::size_t i = 0; i < size; ++i) {
        if (i % 300 < 120) continue;
        ram[i] = static_cast<char>(i % 7 == 0 ? 0xED : (i * 13 + salt) & 0xFF);
    }
    for (std::size_t i = 1000; i < 1010; ++i)
        ram[i] = '\xED';
    ram[2000] = '\xED';
    ram[2001] = '\xED';
    return ram;
}

// The Z80 format's compression: runs of five or more, and of two or more ED
// bytes, as ED ED count byte; the byte after a single ED is never the start
// of a run.
Bytes Pack(const Bytes& in) {
    Bytes out;
    for (std::size_t i = 0; i < in.size();) {
        const auto c = static_cast<std::uint8_t>(in[i]);
        std::size_t run = 1;
        while (i + run < in.size() && in[i + run] == in[i] && run < 255)
            ++run;
        if (run >= 5 || (c == 0xED && run >= 2)) {
            out += B({0xED, 0xED, static_cast<int>(run), c});
            i += run;
        } else {
            out += in[i++];
            if (c == 0xED && i < in.size()) out += in[i++];
        }
    }
    return out;
}

Bytes Z80v1(const Bytes& ram, bool packed) {
    Bytes header(30, '\0');
    header[6] = 0x00; // PC 0x8000: version 1
    header[7] = static_cast<char>(0x80);
    header[12] = static_cast<char>((2 << 1) | (packed ? 0x20 : 0));
    return header + (packed ? Pack(ram) + B({0, 0xED, 0xED, 0}) : ram);
}

// Version 2 (23 more header bytes) or 3 (54), pages in the order given.
Bytes Z80v23(int extra, int hardware, const std::vector<std::pair<int, Bytes>>& pages, bool packed,
             int rawPage = -1) {
    Bytes out(30, '\0');
    out += Le(extra, 2);
    Bytes more(extra, '\0');
    more[2] = static_cast<char>(hardware);
    out += more;
    for (const auto& [page, data] : pages) {
        if (!packed || page == rawPage) {
            out += Le(0xFFFF, 2) + B({page}) + data;
        } else {
            const Bytes p = Pack(data);
            out += Le(p.size(), 2) + B({page}) + p;
        }
    }
    return out;
}

TEST_F(ContentTest, ScreensOfZ80AndSnaSnapshots) {
    const Bytes ram = Ram(49152, 1);
    const Bytes screen = ram.substr(0, kScreenSize);
    ASSERT_LT(Pack(screen).size(), screen.size() * 2 / 3); // the packer does pack

    EXPECT_EQ(ScreenOfFile(Z80v1(ram, false), "z80"), screen);
    EXPECT_EQ(ScreenOfFile(Z80v1(ram, true), "Z80"), screen);

    // 48K version 2: page 8 holds 16384 and comes last.
    const std::vector<std::pair<int, Bytes>> pages48 = {
        {4, ram.substr(16384, 16384)}, {5, ram.substr(32768, 16384)}, {8, ram.substr(0, 16384)}};
    EXPECT_EQ(ScreenOfFile(Z80v23(23, 0, pages48, true), "z80"), screen);

    // 128K version 3: the banks as pages 3 to 10, bank 5 (page 8) the screen.
    std::vector<std::pair<int, Bytes>> pages128;
    const Bytes bank5 = Ram(16384, 5);
    for (int bank = 0; bank < 8; ++bank)
        pages128.push_back({bank + 3, bank == 5 ? bank5 : Ram(16384, bank + 10)});
    EXPECT_EQ(ScreenOfFile(Z80v23(54, 4, pages128, true), "z80"), bank5.substr(0, kScreenSize));
    EXPECT_EQ(ScreenOfFile(Z80v23(55, 4, pages128, true, 8), "z80"), bank5.substr(0, kScreenSize));
    EXPECT_EQ(ScreenOfFile(Z80v23(54, 4, pages128, false, 8), "z80"), bank5.substr(0, kScreenSize));

    const Bytes sna = Bytes(27, '\x11') + ram;
    EXPECT_EQ(ScreenOfFile(sna, "sna"), screen);
    EXPECT_EQ(ScreenOfFile(sna.substr(0, 27 + kScreenSize), "SNA"), screen);

    // Cut or lying snapshots give nothing, and read nothing outside.
    const Bytes packed = Z80v1(ram, true);
    EXPECT_EQ(ScreenOfFile(packed.substr(0, 30 + Pack(screen).size() - 4), "z80"), std::nullopt);
    EXPECT_EQ(ScreenOfFile(sna.substr(0, 27 + kScreenSize - 1), "sna"), std::nullopt);
    Bytes lying = Z80v23(23, 0, pages48, true);
    lying[32 + 23] = '\xFF'; // the first page's length: past the end of the file
    lying[32 + 23 + 1] = '\xFE';
    EXPECT_EQ(ScreenOfFile(lying, "z80"), std::nullopt);
    Bytes longHeader = Z80v23(23, 0, pages48, true);
    longHeader[30] = '\xFF';
    longHeader[31] = '\xFF';
    EXPECT_EQ(ScreenOfFile(longHeader, "z80"), std::nullopt);
    EXPECT_EQ(ScreenOfFile(Bytes(29, '\0'), "z80"), std::nullopt);
    EXPECT_EQ(ScreenOfFile(ram, "dsk"), std::nullopt);

    // From disk, within the head that the main window reads.
    WriteFile(dir.File("juego.Z80"), Z80v23(54, 4, pages128, true));
    EXPECT_EQ(ReadScreen(dir.File("juego.Z80")), bank5.substr(0, kScreenSize));
    WriteFile(dir.File("juego.sna"), sna);
    EXPECT_EQ(ReadScreen(dir.File("juego.sna"), 27 + kScreenSize), screen);
}

// --- BASIC

// A number's hidden form after its digits: the small integer form.
Bytes Int(int value) {
    return B({0x0E, 0, value < 0 ? 0xFF : 0}) + Le(static_cast<std::uint16_t>(value), 2) + B({0});
}

TEST_F(ContentTest, BasicListingsAsZmakebasReadsThem) {
    // Every keyword in code, in order; REM (0xEA) would take the rest of its line.
    Bytes all1, all2;
    for (int c = 0xA3; c < 0xEA; ++c)
        all1 += static_cast<char>(c);
    for (int c = 0xEB; c <= 0xFF; ++c)
        all2 += static_cast<char>(c);
    // A float's hidden form whose bytes are a quote, a line end, REM and the
    // number marker: all of them must be passed over.
    const Bytes tricky = B({0x0E, 0x81, '"', 0x0D, 0xEA, 0x0E});
    Bytes graphics;
    for (int c = 0x80; c <= 0x8F; ++c)
        graphics += static_cast<char>(c);
    Bytes udgs;
    for (int c = 0x90; c <= 0xA4; ++c)
        udgs += static_cast<char>(c);

    const Bytes program =
        BasicLine(1, all1) + BasicLine(2, all2) +
        BasicLine(10, B({0xE7}) + "0" + Int(0) + ":" + B({0xDA}) + "0" + Int(0) + ":" + B({0xD9}) +
                          "7" + Int(7) + ":" + B({0xFB})) +
        BasicLine(20, B({0xEF}) + "\"\"" + B({0xAA})) +
        BasicLine(30, B({0xFA, 0xA6}) + "=\"\"" + B({0xCB, 0xEC}) + "30" + Int(30)) +
        BasicLine(40, B({0xF1}) + "a=" + B({0xA5}) + "*10" + Int(10) + "+1.5" +
                          B({0x0E, 0x81, 0x40, 0, 0, 0}) + "-2" + tricky) +
        BasicLine(50, B({0xF9, 0xC0}) + "0" + Int(23760)) +
        BasicLine(60, B({0xCE}) + "f(x" + B({0x0E, 0, 0, 0, 0, 0}) + ")=x*2" + Int(2)) +
        BasicLine(70,
                  B({0xF5}) + "\"" + graphics + "\";" + udgs.substr(0, 19) + ";\"" + udgs + "\"") +
        BasicLine(80, B({0xF5}) + "\"say \"\"hi\"\" \x10\x02\x16\x22\x05" + B({0xF5, 0xA3}) + "\"" +
                          B({0x17}) + "\"" + B({0}) + ";\\`\x7F{}") +
        BasicLine(90, B({0xF5}) + "1" + Int(1) + ":" + B({0xEA}) +
                          " \x80\x8F\x90\xA3\xA4\xA5\xF5\xFF" + "\x7F`\\:" + B({0xF5}) +
                          "\x0E\x01\x22\"") +
        BasicLine(100, B({0xA4}) + "\"cde\":" + B({0xA3})) + BasicLine(9999, B({0xEA}));
    // The variables follow the program: a number and a string.
    const Bytes variables = B({0x61, 0, 0, 1, 0, 0}) + B({0x41}) + Le(2, 2) + "ok" + B({0x80});
    const Bytes data = program + variables;
    Read(Tape({Std(Head(0, "prueba", data.size(), 10, program.size())), Std(Rom(0xFF, data))}));
    ASSERT_EQ(contents[1].kind, ContentKind::Program);
    EXPECT_EQ(contents[1].autostart, 10);
    EXPECT_EQ(contents[1].programLength, program.size());

    const std::string expected =
        "1 SPECTRUM PLAY RNDINKEY$PIFN POINT SCREEN$ ATTR AT TAB VAL$ CODE VAL LEN SIN COS TAN "
        "ASN ACS ATN LN EXP INT SQR SGN ABS PEEK IN USR STR$ CHR$ NOT BIN OR AND <=>=<> LINE THEN "
        "TO STEP DEF FN CAT FORMAT MOVE ERASE OPEN # CLOSE # MERGE VERIFY BEEP CIRCLE INK PAPER "
        "FLASH BRIGHT INVERSE OVER OUT LPRINT LLIST STOP READ DATA RESTORE NEW BORDER CONTINUE "
        "DIM \n"
        "2 FOR GO TO GO SUB INPUT LOAD LIST LET PAUSE NEXT POKE PRINT PLOT RUN SAVE RANDOMIZE IF "
        "CLS DRAW CLEAR RETURN COPY \n"
        "10 BORDER 0: PAPER 0: INK 7: CLS \n"
        "20 LOAD \"\"SCREEN$ \n"
        "30 IF INKEY$=\"\" THEN GO TO 30\n"
        "40 LET a=RND*10+1.5-2\n"
        "50 RANDOMIZE USR 0\n"
        "60 DEF FN f(x)=x*2\n"
        R"(70 PRINT "\  \ '\' \''\ .\ :\'.\':\. \.'\: \:'\..\.:\:.\::";\a\b\c\d\e\f\g\h\i\j\k\l\m\n\o\p\q\r\s;"\a\b\c\d\e\f\g\h\i\j\k\l\m\n\o\p\q\r\s\t\u")"
        "\n"
        R"(80 PRINT "say ""hi"" \{16}\{2}\{22}\{34}\{5}\{245}\t"\{23}\{34}\{0};\\`\*{})"
        "\n"
        R"(90 PRINT 1: REM  \  \::\a\t\u\{165}\{245}\{255}\*`\\:\{245}\{14}\{1}"")"
        "\n"
        "100 PLAY \"cde\": SPECTRUM \n"
        "9999 REM \n";
    const Block& block = *tape.Blocks().Item(2);
    EXPECT_EQ(ListingOf(block, contents[1]), expected);
    const auto file = Extract(block, contents[1]);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->extension, "bas");
    EXPECT_EQ(file->bytes, expected);
    EXPECT_EQ(ListingOf(block, contents[0]), "");

    // A header that says the program is longer than its block: what the block
    // holds. A line number above 16383 ends the program where the Spectrum does.
    Read(Tape({Std(Head(0, "p", 100, 32768, 60000)),
               Std(Rom(0xFF, BasicLine(5, B({0xFB})) + BasicLine(7, B({0xE2})).substr(0, 5)))}));
    EXPECT_EQ(contents[1].autostart, -1);
    EXPECT_EQ(ListingOf(*tape.Blocks().Item(2), contents[1]), "5 CLS \n7 STOP \n");
    // The header's program length leaves out what follows, line or not.
    const Bytes two = BasicLine(5, B({0xFB})) + BasicLine(6, B({0xE2}));
    Read(Tape({Std(Head(0, "p", two.size(), 0, 6)), Std(Rom(0xFF, two))}));
    EXPECT_EQ(ListingOf(*tape.Blocks().Item(2), contents[1]), "5 CLS \n");
    EXPECT_EQ(BasicListing(BasicLine(5, B({0xFB})) + BasicLine(0x4000, B({0xE2})) +
                           BasicLine(6, B({0xE2}))),
              "5 CLS \n");
    EXPECT_EQ(BasicListing(B({0, 5, 0xFF, 0xFF, 0xF5}) + "\"x"), "5 PRINT \"x\n");
    EXPECT_EQ(BasicListing(B({0, 5, 3, 0, 0xF1, 0x0E})), "5 LET \n");
    EXPECT_EQ(BasicListing("abc"), "");
}

TEST_F(ContentTest, GeneralizedBlocksWithTheRomsSymbolsReadLikeStandardOnes) {
    const Bytes program = BasicLine(10, B({0xF5}) + "\"hola\"");
    Bytes custom = raw::GeneralizedRom(Rom(0xFF, Screen(2)));
    custom[custom.size() - 6914 - 2] = 0x60; // the 1's second pulse is no longer the ROM's
    Read(Tape({raw::GeneralizedRom(Head(0, "juego", int(program.size()), 10, int(program.size()))),
               raw::GeneralizedRom(Rom(0xFF, program)),
               raw::GeneralizedRom(Head(3, "pant", 6912, 16384, 0)),
               raw::GeneralizedRom(Rom(0xFF, Screen(1))), Std(Head(3, "pant", 6912, 16384, 0)),
               custom, Std(Rom(0xFF, Screen(3)))}));
    EXPECT_EQ(Summary(tape), (Names{"Cabecera .bin 2", "Programa BASIC .bas 1", "Cabecera .bin 4",
                                    "Pantalla .scr 3", "Cabecera .bin", "", "Datos .bin"}));
    EXPECT_EQ(ListingOf(*tape.Blocks().Item(2), contents[1]), "10 PRINT \"hola\"\n");
    EXPECT_EQ(BytesOf(4), Screen(1));
    EXPECT_EQ(contents[3].checksum, Checksum::Right);
    EXPECT_EQ(FirstScreen(tape.Blocks()), Screen(1));
}

TEST_F(ContentTest, ChecksumsOfTheThreeDataKinds) {
    Bytes bad = Rom(0xFF, Filler(100));
    bad[50] ^= 0x01;
    Bytes badHeader = Head(3, "x", 10, 0, 0);
    badHeader.back() ^= 0x40;
    Read(Tape({Std(Head(3, "x", 100, 0, 0)), Std(bad), Turbo(Rom(0xFF, Filler(300))),
               Turbo(Rom(0x7F, "abc").substr(0, 4) + "\x01"), PureData(Rom(0x00, Filler(9))),
               PureData(badHeader), Std(B({0xFF})), Std({}), Pause(100),
               Custom("Instructions    ", "x"), Std(Rom(0xFF, Filler(20))).substr(0, 15)}));
    std::vector<std::string> sums;
    for (const BlockContent& c : contents)
        sums.push_back(ChecksumText(c.checksum));
    EXPECT_EQ(sums, (Names{"correcta", "errónea", "correcta", "errónea", "correcta", "errónea", "",
                           "", "", "", "errónea"}));
    // A header with a wrong checksum is still a header.
    EXPECT_EQ(contents[5].kind, ContentKind::Header);
}

TEST_F(ContentTest, EachKindExtractsToItsFileByteForByte) {
    const Bytes gif = "GIF89a" + Filler(40);
    const Bytes jpeg = B({0xFF, 0xD8}) + Filler(30);
    const Bytes text = "Pulse una tecla\r\n\xA1Suerte!";
    const Bytes pokes = B({3}) + "Inf" + B({1, 2}) + "Vi" + B({1, 8}) + Le(30000, 2) + B({0, 3});
    const Bytes z80 = Z80v1(Ram(49152, 2), true);
    const Bytes code = Filler(500);
    // clang-format off
    Read(Tape({Std(Head(3, "code", 500, 32768, 0)), Std(Rom(0xFF, code)),
               Std(Head(3, "scr", 6912, 16384, 0)), Turbo(Rom(0xFF, Screen(1))),
               Std(Head(0, "p", 6, 0, 6)), Std(Rom(0xFF, BasicLine(1, B({0xFB})))),
               Custom("Picture         ", B({0, 3}) + "Gif" + gif),
               Custom("Picture         ", B({1, 0}) + jpeg),
               Custom("Spectrum Screen ", B({0, 7}) + Screen(2) + "x"),
               Custom("Instructions    ", text), Custom("ZX-Edit document", Filler(70)),
               Custom("POKEs           ", pokes), Custom("Otra cosa       ", Filler(9)),
               Custom("Picture         ", B({0, 9}) + "Gif"), B({0x40, 0}) + Le(z80.size(), 3) + z80,
               B({0x40, 1}) + Le(3, 3) + "sna", PureData(Filler(33)), Pause(0), Text("hola"),
               Custom("Instructions    ", ""),
               Custom("Spectrum Screen ", B({0, 7}) + Screen(3)).substr(0, 21 + 5000)}));
    const std::vector<std::pair<std::string, Bytes>> expected = {
        {"bin", Head(3, "code", 500, 32768, 0).substr(1, 17)}, {"bin", code},
        {"bin", Head(3, "scr", 6912, 16384, 0).substr(1, 17)}, {"scr", Screen(1)},
        {"bin", Head(0, "p", 6, 0, 6).substr(1, 17)}, {"bas", "1 CLS \n"}, {"gif", gif},
        {"jpg", jpeg}, {"scr", Screen(2)}, {"txt", text}, {"zed", Filler(70)}, {"pok", pokes},
        {"bin", Filler(9)},
        {"bin", B({0, 9}) + "Gif"}, // a description past the end: the body as it is
        {"z80", z80}, {"sna", "sna"}, {"bin", Filler(33).substr(1, 31)}, {"", ""}, {"", ""},
        {"", ""},
        {"bin", B({0, 7}) + Screen(3).substr(0, 4998)}, // cut short: what is there
    };
    // clang-format on
    ASSERT_EQ(contents.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        SCOPED_TRACE("bloque " + std::to_string(i + 1));
        const auto file = Extract(*tape.Blocks().Item(double(i + 1)), contents[i]);
        ASSERT_EQ(file.has_value(), !expected[i].first.empty());
        if (!file) continue;
        EXPECT_EQ(file->extension, expected[i].first);
        EXPECT_TRUE(SameBytes(file->bytes, expected[i].second));
    }
    EXPECT_EQ(ContentKindName(contents[6].kind), "Imagen");
    EXPECT_EQ(ContentKindName(contents[9].kind), "Instrucciones");
    EXPECT_EQ(ContentKindName(contents[14].kind), "Instantánea");
}

TEST_F(ContentTest, CustomIdsPaddedWithBlanksOrEndingInNulAreKnown) {
    // libspectrum's tapeconv pads "Picture" with blanks and ends it in a NUL.
    const Bytes jpeg = B({0xFF, 0xD8}) + Filler(30);
    const Bytes pokes = B({1}) + "V" + B({1, 8}) + Le(30000, 2) + B({0, 3});
    Read(Tape({Custom(Bytes("Picture        \0", 16), B({1, 4}) + "Foto" + jpeg),
               Custom(Bytes("Spectrum Screen\0", 16), B({0, 7}) + Screen(2)),
               Custom(Bytes("Instructions\0\0\0\0", 16), "Pulse una tecla"),
               Custom(Bytes("POKEs\0          ", 16), pokes)}));
    EXPECT_EQ(Summary(tape), (std::vector<std::string>{"Imagen .jpg", "Pantalla .scr",
                                                       "Instrucciones .txt", "Información .pok"}));
    const std::vector<std::pair<std::string, Bytes>> expected = {
        {"Imagen Jpeg: Foto", jpeg},
        {"Archivo scr:  Pantalla de carga", Screen(2)},
        {"Instrucciones", "Pulse una tecla"},
        {"Pokes", pokes}};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        SCOPED_TRACE("bloque " + std::to_string(i + 1));
        const Block& block = *tape.Blocks().Item(double(i + 1));
        EXPECT_EQ(block.Descr, expected[i].first);
        const auto file = Extract(block, contents[i]);
        ASSERT_TRUE(file.has_value());
        EXPECT_TRUE(SameBytes(file->bytes, expected[i].second));
    }
}

TEST_F(ContentTest, ContentFilesAreWrittenBesideAndNeverOverAnother) {
    EXPECT_EQ(ProposedName("/c/juegos/Manic Miner.tzx", 3, "scr"), "/c/juegos/Manic Miner-3.scr");
    EXPECT_EQ(ProposedName("juego.tzx", 12, "bas"), "juego-12.bas");

    std::string reason;
    const std::string path = dir.File("juego-2.scr");
    ASSERT_TRUE(WriteContentFile(path, Screen(1), false, reason)) << reason;
    EXPECT_EQ(ReadFile(path), Screen(1));
    EXPECT_EQ(ExistingFile(dir.File("JUEGO-2.SCR")), path);
    EXPECT_EQ(ExistingFile(dir.File("otro.scr")), "");

    // A file of that name in any case is left alone.
    EXPECT_FALSE(WriteContentFile(dir.File("Juego-2.SCR"), Screen(2), false, reason));
    EXPECT_EQ(reason, "ya existe " + path);
    EXPECT_EQ(ReadFile(path), Screen(1));
    EXPECT_EQ(dir.List(), Names{"juego-2.scr"});

    // Replacing is for when the user has said yes.
    ASSERT_TRUE(WriteContentFile(path, "nuevo", true, reason)) << reason;
    EXPECT_EQ(ReadFile(path), "nuevo");

    // A folder that isn't there: nothing is left behind and the reason is told.
    EXPECT_FALSE(WriteContentFile(dir.File("falta/x.bin"), "x", false, reason));
    EXPECT_EQ(reason, "no existe");
    EXPECT_EQ(dir.List(), Names{"juego-2.scr"});
}

TEST_F(ContentTest, ScreenPixelsFollowTheSpectrumsRowsAndColours) {
    Bytes s(kScreenSize, '\0');
    s[0] = '\x80';         // (0, 0)
    s[256] = '\x01';       // (7, 1): the next pixel row is 256 bytes on
    s[32] = '\x40';        // (1, 8): the next character row is 32 bytes on
    s[2048] = '\x20';      // (2, 64): the second third
    s[6144] = '\xCA';      // cell (0, 0): FLASH, BRIGHT, paper 1 (blue), ink 2 (red)
    s[6144 + 32] = '\x3C'; // cell (0, 1): paper 7, ink 4 (green)
    s[6144 + 8 * 32] = '\x07';
    const auto p = ScreenPixels(s);
    ASSERT_EQ(p.size(), 256u * 192u);
    auto at = [&](const std::vector<std::uint32_t>& v, int x, int y) { return v[y * 256 + x]; };
    EXPECT_EQ(at(p, 0, 0), 0xFFFF0000u);
    EXPECT_EQ(at(p, 1, 0), 0xFF0000FFu);
    EXPECT_EQ(at(p, 7, 1), 0xFFFF0000u);
    EXPECT_EQ(at(p, 1, 8), 0xFF00D700u);
    EXPECT_EQ(at(p, 0, 8), 0xFFD7D7D7u);
    EXPECT_EQ(at(p, 2, 64), 0xFFD7D7D7u);
    EXPECT_EQ(at(p, 3, 64), 0xFF000000u);
    const auto flashed = ScreenPixels(s, true);
    EXPECT_EQ(at(flashed, 0, 0), 0xFF0000FFu);
    EXPECT_EQ(at(flashed, 1, 0), 0xFFFF0000u);
    EXPECT_EQ(at(flashed, 1, 8), 0xFF00D700u);
    EXPECT_TRUE(ScreenPixels(s.substr(1)).empty());
}

} // namespace
} // namespace cintal::test
