// Two tapes aligned block by block: which rows come out equal, changed or on
// one side only, where the blocks that take no part stand, and the summary
// lines a collector reads.

#include "tape/Compare.h"
#include "TestSupport.h"
#include "tape/TZXTape.h"

#include <memory>

namespace cintal::test {
namespace {

class CompareTest : public TapeTest {
protected:
    std::unique_ptr<TZXTape> Read(const std::vector<Bytes>& blocks) {
        Bytes image = Tape({});
        for (const auto& b : blocks)
            image += b;
        auto tape = std::make_unique<TZXTape>();
        tape->ReadImage(image);
        EXPECT_TRUE(tape->Status().Whole());
        return tape;
    }

    // The rows in short: "=2/3" equal, "~" changed, "<" and ">" one side,
    // "." left out; "-" for an empty side.
    static std::string Rows(const Comparison& c) {
        std::string out;
        for (const auto& r : c.rows) {
            out += out.empty() ? "" : " ";
            out += "=~<>."[static_cast<int>(r.kind)];
            out += (r.a ? std::to_string(r.a) : "-") + "/" + (r.b ? std::to_string(r.b) : "-");
        }
        return out;
    }

    std::string Compared(const std::vector<Bytes>& a, const std::vector<Bytes>& b) {
        auto ta = Read(a), tb = Read(b);
        const Comparison c = CompareTapes(*ta, *tb);
        return Rows(c) + " | " + CompareSummary(c);
    }

    // A short game: loader, code, a pause, screen header and screen.
    static std::vector<Bytes> Game() {
        return {Std(RomHeader(0, "Juego")), Std(RomData(300)), Pause(1000),
                Std(RomHeader(3, "Pantalla")), Std(RomData(6912))};
    }
    static std::vector<Bytes> With(std::vector<Bytes> blocks, std::size_t at, const Bytes& b) {
        blocks.insert(blocks.begin() + std::ptrdiff_t(at), b);
        return blocks;
    }
    static std::vector<Bytes> Without(std::vector<Bytes> blocks, std::size_t at) {
        blocks.erase(blocks.begin() + std::ptrdiff_t(at));
        return blocks;
    }
    static std::vector<Bytes> Replaced(std::vector<Bytes> blocks, std::size_t at, const Bytes& b) {
        blocks[at] = b;
        return blocks;
    }
    // The same block with one byte deep inside it changed.
    static Bytes Touched(Bytes b) {
        b[b.size() / 2] = static_cast<char>(b[b.size() / 2] ^ 0x40);
        return b;
    }
};

TEST_F(CompareTest, IdenticalEmptyAndOneSidedTapes) {
    const std::string zero = "Iguales: 0  Distintos: 0  Sólo en A: 0  Sólo en B: 0";
    EXPECT_EQ(Compared(Game(), Game()),
              "=1/1 =2/2 =3/3 =4/4 =5/5 | Iguales: 5  Distintos: 0  Sólo en A: 0  Sólo en B: 0");
    auto tape = Read(Game());
    EXPECT_EQ(Rows(CompareTapes(*tape, *tape)), "=1/1 =2/2 =3/3 =4/4 =5/5");

    auto empty = Read({}), other = Read({});
    const Comparison none = CompareTapes(*empty, *other);
    EXPECT_EQ(Rows(none), "");
    EXPECT_EQ(CompareSummary(none), zero);
    EXPECT_EQ(ArchiveInfoSummary(none), "La información de archivo es igual");

    EXPECT_EQ(Compared({}, Game()),
              ">-/1 >-/2 >-/3 >-/4 >-/5 | Iguales: 0  Distintos: 0  Sólo en A: 0  Sólo en B: 5");
    EXPECT_EQ(Compared(Game(), {}),
              "<1/- <2/- <3/- <4/- <5/- | Iguales: 0  Distintos: 0  Sólo en A: 5  Sólo en B: 0");
    EXPECT_TRUE(Shown().empty());
}

TEST_F(CompareTest, OneBlockChangedInsertedOrRemoved) {
    const auto game = Game();
    struct Case {
        const char* what;
        std::vector<Bytes> b;
        std::string rows;
    };
    // clang-format off
    const std::vector<Case> cases = {
        {"one byte inside the code", Replaced(game, 1, Touched(game[1])),
         "=1/1 ~2/2 =3/3 =4/4 =5/5 | Iguales: 4  Distintos: 1  Sólo en A: 0  Sólo en B: 0"},
        {"a longer screen, last", Replaced(game, 4, Std(RomData(6913))),
         "=1/1 =2/2 =3/3 =4/4 ~5/5 | Iguales: 4  Distintos: 1  Sólo en A: 0  Sólo en B: 0"},
        {"the first header", Replaced(game, 0, Std(RomHeader(0, "Otro"))),
         "~1/1 =2/2 =3/3 =4/4 =5/5 | Iguales: 4  Distintos: 1  Sólo en A: 0  Sólo en B: 0"},
        {"a pause inserted", With(game, 2, Pause(500)),
         "=1/1 =2/2 >-/3 =3/4 =4/5 =5/6 | Iguales: 5  Distintos: 0  Sólo en A: 0  Sólo en B: 1"},
        {"a text inserted first", With(game, 0, Text("Hola")),
         ">-/1 =1/2 =2/3 =3/4 =4/5 =5/6 | Iguales: 5  Distintos: 0  Sólo en A: 0  Sólo en B: 1"},
        {"the code removed", Without(game, 1),
         "=1/1 <2/- =3/2 =4/3 =5/4 | Iguales: 4  Distintos: 0  Sólo en A: 1  Sólo en B: 0"},
        {"the screen removed", Without(game, 4),
         "=1/1 =2/2 =3/3 =4/4 <5/- | Iguales: 4  Distintos: 0  Sólo en A: 1  Sólo en B: 0"},
        // A new pause before a changed header pairs the headers, not the
        // header with the pause.
        {"a pause before a changed header", With(Replaced(game, 3, Std(RomHeader(3, "Otra"))), 3,
                                                 Pause(0)),
         "=1/1 =2/2 =3/3 >-/4 ~4/5 =5/6 | Iguales: 4  Distintos: 1  Sólo en A: 0  Sólo en B: 1"},
        // Blocks of other kinds in the same place are not "changed".
        {"the pause turned into a tone", Replaced(game, 2, Tone()),
         "=1/1 =2/2 <3/- >-/3 =4/4 =5/5 | Iguales: 4  Distintos: 0  Sólo en A: 1  Sólo en B: 1"},
        // Moved: one of the two stays equal, the other counts on each side.
        {"the pause moved to the end", With(Without(game, 2), 4, Pause(1000)),
         "=1/1 =2/2 <3/- =4/3 =5/4 >-/5 | Iguales: 4  Distintos: 0  Sólo en A: 1  Sólo en B: 1"},
    };
    // clang-format on
    for (const auto& c : cases)
        EXPECT_EQ(Compared(game, c.b), c.rows) << c.what;
}

TEST_F(CompareTest, ArchiveInfoAndMergeMarkersStandApartAndCountNowhere) {
    const Bytes info = Archive({{0, "Juego"}, {1, "Ocean"}});
    // The same texts in another order: other bytes, the same archive info.
    const Bytes sameTexts = Archive({{1, "Ocean"}, {0, "Juego"}});
    const std::vector<Bytes> a = {Merge(), info, Std(RomHeader(0, "Juego")), Std(RomData(10)),
                                  Pause(0)};
    std::vector<Bytes> b = {Std(RomHeader(0, "Juego")), sameTexts, Std(RomData(10)), Pause(0),
                            Merge()};
    auto ta = Read(a), tb = Read(b);
    Comparison c = CompareTapes(*ta, *tb);
    EXPECT_EQ(Rows(c), ".1/- .2/- =3/1 .-/2 =4/3 =5/4 .-/5");
    EXPECT_EQ(CompareSummary(c), "Iguales: 3  Distintos: 0  Sólo en A: 0  Sólo en B: 0");
    EXPECT_EQ(ArchiveInfoSummary(c), "La información de archivo es igual");

    // One text differs; a left-out block in the middle of a change keeps its place.
    b = {Std(RomHeader(0, "Juego")), Archive({{0, "Juego"}, {1, "Ocean"}, {3, "1986"}}),
         Std(RomData(11)), Pause(0)};
    tb = Read(b);
    c = CompareTapes(*ta, *tb);
    EXPECT_EQ(Rows(c), ".1/- .2/- =3/1 .-/2 ~4/3 =5/4");
    EXPECT_EQ(CompareSummary(c), "Iguales: 2  Distintos: 1  Sólo en A: 0  Sólo en B: 0");
    EXPECT_EQ(ArchiveInfoSummary(c), "La información de archivo es distinta");

    // Tapes made only of them have nothing to compare.
    ta = Read({Merge(), info});
    tb = Read({info});
    c = CompareTapes(*ta, *tb);
    EXPECT_EQ(Rows(c), ".1/- .2/- .-/1");
    EXPECT_EQ(CompareSummary(c), "Iguales: 0  Distintos: 0  Sólo en A: 0  Sólo en B: 0");
}

TEST_F(CompareTest, ATapeAgainstItselfAfterTheCleanUp) {
    const std::vector<Bytes> blocks = {
        Merge(), Archive({{0, "Parte 1"}}), Std(RomHeader(0, "Juego")),   Std(RomData(300)),
        Merge(), Archive({{0, "Parte 2"}}), Std(RomHeader(3, "Nivel 2")), Std(RomData(2000))};
    auto before = Read(blocks), after = Read(blocks);
    EXPECT_EQ(after->Blocks().CheckRedundantBlocks(), 3);
    EXPECT_EQ(Shown(), Boxes{Box("Eliminados 3 bloques sobrantes.", "", Icon::Information)});
    const Comparison c = CompareTapes(*before, *after);
    EXPECT_EQ(Rows(c), ".1/- .2/- =3/1 =4/2 .5/- .6/- .-/3 =7/4 =8/5");
    EXPECT_EQ(CompareSummary(c), "Iguales: 4  Distintos: 0  Sólo en A: 0  Sólo en B: 0");
    EXPECT_EQ(ArchiveInfoSummary(c), "La información de archivo es igual");
}

TEST_F(CompareTest, DifferentLengthsAndLongRunsOfDifferences) {
    // A tape of 1,200 blocks: headers, data that differ, and equal pauses.
    std::vector<Bytes> a;
    for (int i = 0; i < 400; ++i) {
        a.push_back(Std(RomHeader(3, "Nivel " + std::to_string(i))));
        a.push_back(Std(RomData(50 + std::size_t(i))));
        a.push_back(Pause(1000));
    }
    // In the middle a run of 600 blocks that all differ, same kinds; at the
    // end 100 blocks more; and a run of 300 new ones at the start.
    std::vector<Bytes> b = a;
    for (std::size_t i = 300; i < 900; ++i)
        b[i] = Touched(b[i]);
    for (int i = 0; i < 100; ++i)
        b.push_back(Text("extra " + std::to_string(i)));
    b.insert(b.begin(), 300, Pause(7));

    auto ta = Read(a), tb = Read(b);
    const Comparison c = CompareTapes(*ta, *tb);
    EXPECT_EQ(CompareSummary(c), "Iguales: 600  Distintos: 600  Sólo en A: 0  Sólo en B: 400");
    ASSERT_EQ(c.rows.size(), 1600u);
    for (std::size_t r = 0; r < c.rows.size(); ++r) {
        const auto& row = c.rows[r];
        const RowKind kind = r < 300    ? RowKind::OnlyB
                             : r < 600  ? RowKind::Equal
                             : r < 1200 ? RowKind::Changed
                             : r < 1500 ? RowKind::Equal
                                        : RowKind::OnlyB;
        ASSERT_EQ(row.kind, kind) << r;
        ASSERT_EQ(row.b, std::int64_t(r) + 1) << r;
        ASSERT_EQ(row.a, r < 300 || r >= 1500 ? 0 : std::int64_t(r) - 299) << r;
    }

    // The other way round, the same rows seen from the other side.
    const Comparison back = CompareTapes(*tb, *ta);
    EXPECT_EQ(CompareSummary(back), "Iguales: 600  Distintos: 600  Sólo en A: 400  Sólo en B: 0");
}

// Small random tapes over few distinct blocks, where there are many ways to
// align and the head and tail rarely settle it; the equal rows must be as
// many as the longest common subsequence that a plain table finds.
TEST_F(CompareTest, TheAlignmentIsALongestCommonSubsequence) {
    const std::vector<Bytes> pool = {Std(RomData(3)), Std(RomData(4)),    Std(RomHeader(0, "A")),
                                     Pause(0),        Pause(9),           Tone(),
                                     Merge(),         Archive({{0, "x"}})};
    std::mt19937 random(1234);
    for (int round = 0; round < 3000; ++round) {
        std::vector<Bytes> lists[2];
        for (auto& list : lists) {
            const int length = int(random() % 25);
            const std::size_t kinds = 2 + random() % (pool.size() - 1);
            for (int i = 0; i < length; ++i)
                list.push_back(pool[random() % kinds]);
        }
        auto ta = Read(lists[0]), tb = Read(lists[1]);
        const Comparison c = CompareTapes(*ta, *tb);
        SCOPED_TRACE(Rows(c));

        // The blocks that take part, and the table of common lengths.
        std::vector<Bytes> in[2];
        for (int s = 0; s < 2; ++s)
            for (const auto& b : lists[s])
                if (b[0] != 0x32 && b[0] != 0x5A) in[s].push_back(b);
        std::vector<std::vector<int>> lcs(in[0].size() + 1, std::vector<int>(in[1].size() + 1));
        for (std::size_t i = in[0].size(); i-- > 0;)
            for (std::size_t j = in[1].size(); j-- > 0;)
                lcs[i][j] = in[0][i] == in[1][j] ? lcs[i + 1][j + 1] + 1
                                                 : std::max(lcs[i + 1][j], lcs[i][j + 1]);
        ASSERT_EQ(c.equal, lcs[0][0]) << round;

        std::int64_t nextA = 1, nextB = 1, counted = 0;
        for (const auto& r : c.rows) {
            if (r.a) {
                ASSERT_EQ(r.a, nextA++) << round;
            }
            if (r.b) {
                ASSERT_EQ(r.b, nextB++) << round;
            }
            const Bytes* x = r.a ? &lists[0][std::size_t(r.a - 1)] : nullptr;
            const Bytes* y = r.b ? &lists[1][std::size_t(r.b - 1)] : nullptr;
            const bool left = (x && ((*x)[0] == 0x32 || (*x)[0] == 0x5A)) ||
                              (y && ((*y)[0] == 0x32 || (*y)[0] == 0x5A));
            ASSERT_EQ(r.kind == RowKind::Left, left) << round;
            switch (r.kind) {
            case RowKind::Equal:
                ASSERT_TRUE(x && y && *x == *y) << round;
                break;
            case RowKind::Changed:
                ASSERT_TRUE(x && y && *x != *y && (*x)[0] == (*y)[0]) << round;
                break;
            case RowKind::OnlyA:
            case RowKind::OnlyB:
                ASSERT_TRUE((r.kind == RowKind::OnlyA) == (x != nullptr) && !(x && y)) << round;
                break;
            case RowKind::Left:
                ASSERT_TRUE(!(x && y)) << round;
                break;
            }
            counted += r.kind != RowKind::Left;
        }
        ASSERT_EQ(nextA - 1, std::int64_t(lists[0].size())) << round;
        ASSERT_EQ(nextB - 1, std::int64_t(lists[1].size())) << round;
        ASSERT_EQ(counted, c.equal + c.changed + c.onlyA + c.onlyB) << round;
    }
}

} // namespace
} // namespace cintal::test
