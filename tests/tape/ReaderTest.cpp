// How a read ends: short files, foreign files, unknown and cut blocks, the
// version warning, and what a second read leaves behind.

#include "TestSupport.h"
#include "tape/TZXTape.h"

namespace cintal::test {
namespace {

using ReaderTest = TapeTest;

TEST_F(ReaderTest, WhereAReadStops) {
    struct Case {
        Bytes image;
        std::int64_t blocks;
        ReadStatus status; // stop, ordinal, position of the id byte
        Boxes boxes;
    };
    // clang-format off
    const std::vector<Case> cases = {
        {"ZXTape!", 0, {ReadStop::TooShort}, {}},
        {"ZXTape!\x1A", 0, {ReadStop::ShortHeader}, {}},
        {"ZXTape!\x1A\x01", 0, {ReadStop::ShortHeader}, {}},
        {"ZXTapf!\x1A\x01\x14" + Pause(0), 0, {ReadStop::NoSignature}, {}},
        {Tape({}, 1, 13), 0, {ReadStop::None}, {}},
        {Tape({Pause(5), Tone(), B({0x60}) + Le(3, 4) + "abc", Pause(6)}), 2,
         {ReadStop::UnknownBlock, 3, 19}, {Box("Bloque desconocido: 96 en  byte 19 , bloque 3")}},
        // The C64 kinds have a name but no decoder.
        {Tape({B({0x16}) + Le(0, 4)}), 0,
         {ReadStop::UnknownBlock, 1, 11}, {Box("Bloque desconocido: 22 en  byte 11 , bloque 1")}}};
    // clang-format on
    for (const auto& c : cases) {
        SCOPED_TRACE(c.image.substr(0, 12));
        Forget();
        TZXTape tape;
        tape.FileVersion = tape.FileRevision = 7; // kept until a header is read
        tape.ReadImage(c.image);
        EXPECT_EQ(tape.Blocks().Count(), c.blocks);
        EXPECT_EQ(tape.Status().stop, c.status.stop);
        EXPECT_EQ(tape.Status().ordinal, c.status.ordinal);
        EXPECT_EQ(tape.Status().position, c.status.position);
        const bool header = c.image.size() >= 10 && c.image.rfind("ZXTape!", 0) == 0;
        EXPECT_EQ(tape.FileVersion * 100 + tape.FileRevision,
                  header ? c.image[8] * 100 + c.image[9] : 707);
        EXPECT_EQ(Shown(), c.boxes);
    }
}

TEST_F(ReaderTest, CutInsideFieldsDropsTheBlockCutInsideDataKeepsIt) {
    // Each block with the number of its bytes that are fields; the rest is
    // data. Every entry of an archive block counts as a field.
    // clang-format off
    const std::vector<std::pair<Bytes, std::size_t>> blocks = {
        {Std(RomData(4)), 5}, {Turbo(RomData(4)), 19}, {PureData(Filler(4)), 11},
        {Direct(Filler(4)), 9}, {Pulses(2), 2}, {Pause(7), 3}, {Group("grupo"), 2}, {Jump(1), 3},
        {Text("texto"), 2}, {Msg("mensaje"), 3}, {Snapshot(Filler(4)), 5},
        {Custom("POKEs           ", Filler(4)), 21},
        {Archive({{0, "Juego"}, {1, "Editorial"}}), 22},
        {raw::CswRecording(44100, 1, 4, B({1, 2, 3, 4})), 5}, {raw::GeneralizedRom(RomData(4)), 5},
        {raw::SignalLevel(0), 5}};
    // clang-format on
    for (const auto& [block, fields] : blocks) {
        for (std::size_t keep = 1; keep < block.size(); ++keep) {
            SCOPED_TRACE(std::to_string(int(block[0])) + ", bytes " + std::to_string(keep));
            TZXTape tape;
            tape.ReadImage(Tape({Pause(1), block.substr(0, keep)}));
            if (keep < fields) {
                EXPECT_EQ(tape.Blocks().Count(), 1);
                EXPECT_EQ(tape.Status().stop, ReadStop::CutFields);
                EXPECT_EQ(tape.Status().ordinal, 2);
                EXPECT_EQ(tape.Status().position, 14);
                continue;
            }
            ASSERT_EQ(tape.Blocks().Count(), 2);
            const auto last = tape.Blocks().Item(2);
            EXPECT_EQ(last->Data(), block.substr(0, keep));
            EXPECT_EQ(last->LenghtTot, std::int64_t(block.size()));
            EXPECT_TRUE(last->CutShort);
            EXPECT_FALSE(tape.Blocks().Item(1)->CutShort);
            if (block[0] == 0x10 && keep > fields) {
                EXPECT_EQ(last->Descr, "Datos - 4 bytes");
            }
        }
    }
    EXPECT_TRUE(Shown().empty());
}

TEST_F(ReaderTest, VersionWarningOnlyForVersionsAboveTheSupportedOne) {
    const std::vector<std::tuple<int, int, bool>> cases = {
        {0, 5, false}, {1, 0, false}, {1, 13, false}, {1, 20, false},
        {1, 21, true}, {2, 0, true},  {10, 1, true}};
    for (const auto& [v, r, warns] : cases) {
        const std::string version = std::to_string(v) + "." + std::to_string(r);
        SCOPED_TRACE(version);
        Forget();
        TZXTape tape;
        tape.ReadImage(Tape({Pause(1)}, v, r));
        EXPECT_EQ(tape.Blocks().Count(), 1);
        EXPECT_EQ(Shown(), warns ? Boxes{Box("El archivo TZX indica una versión " + version +
                                                 ". Esta aplicación soporta hasta la revisión "
                                                 "1.20 del formato TZX, por lo que el archivo "
                                                 "puede no ser compatible",
                                             "Versión incompatible", Icon::Critical)}
                                 : Boxes{});
    }
}

TEST_F(ReaderTest, ReadingAgainReplacesBlocksAndArchiveTexts) {
    const std::string path = dir.File("juego.tzx");
    WriteFile(path, Tape({Archive({{0, "Juego"}, {255, "Notas"}}), Pause(1), Std(RomData(3))}));
    TZXTape tape;
    tape.FileName = path;
    tape.ReadTape();
    tape.ReadTape();
    EXPECT_EQ(tape.Blocks().Count(), 3);
    EXPECT_EQ(tape.ArchiveInfo().iName, "Juego");

    WriteFile(path, Tape({Pause(2)}));
    tape.ReadTape();
    ASSERT_EQ(tape.Blocks().Count(), 1);
    EXPECT_EQ(tape.Blocks().Item(1)->Descr, "Pausa de 2 mseg.");
    EXPECT_EQ(tape.ArchiveInfo().iName + tape.ArchiveInfo().iComments, "");
    EXPECT_TRUE(Shown().empty());

    std::filesystem::remove(path);
    tape.ReadTape();
    EXPECT_EQ(tape.Blocks().Count(), 0);
    EXPECT_EQ(tape.Status().stop, ReadStop::Missing);
    EXPECT_EQ(Shown(), Boxes{Box("no existe el archivo!!!!!")});
}

TEST_F(ReaderTest, ReadOnlyDataKeepsTheSignalAndFlowBlocksOnly) {
    const auto kinds = EveryKind();
    Bytes image = Tape({});
    for (const auto& k : kinds)
        image += k.bytes;
    image += Archive({{0, "Juego"}, {255, "Notas"}});
    const std::string path = dir.File("juego.tzx");
    WriteFile(path, image);
    TZXTape tape;
    tape.FileName = path;
    tape.ReadOnlyData();

    // The signal and flow blocks stay, each as the full read gives it; the
    // blocks left out still count, so a jump shows the same target.
    std::vector<int> ids;
    auto k = kinds.begin();
    for (const auto& block : tape.Blocks()) {
        ids.push_back(block->IdTipoBloque);
        while (k != kinds.end() && k->bytes != block->Data())
            ++k;
        ASSERT_NE(k, kinds.end()) << block->Descr;
        EXPECT_EQ(block->Descr, k->descr);
        ++k;
    }
    EXPECT_EQ(ids,
              (std::vector<int>{0x10, 0x20, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10,
                                0x11, 0x11, 0x12, 0x13, 0x14, 0x15, 0x20, 0x21, 0x22, 0x24, 0x25,
                                0x23, 0x23, 0x23, 0x23, 0x26, 0x27, 0x18, 0x18, 0x19, 0x19, 0x2B}));
    // The archive texts are not stored, and the read says it left blocks out.
    EXPECT_EQ(tape.ArchiveInfo().iName + tape.ArchiveInfo().iComments, "");
    EXPECT_EQ(tape.Status().stop, ReadStop::OnlyData);
    EXPECT_EQ(Shown(), (Boxes{Box("otro"), Box("otro")}));
}

} // namespace
} // namespace cintal::test
