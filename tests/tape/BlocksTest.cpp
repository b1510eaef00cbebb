// Editing the block list: inserting, moving, removing with its warnings, the
// clean-up of redundant blocks, and new blocks made from files.

#include "TestSupport.h"
#include "tape/TZXTape.h"

namespace cintal::test {
namespace {

using BlocksTest = TapeTest;

std::string Descrs(const Blocks& list) {
    std::string out;
    for (const auto& b : list)
        out += b->Descr;
    return out;
}

TEST_F(BlocksTest, AddAndMovePlaceBlocksByPosition) {
    Blocks list;
    list.Add(0x20, "b", Pause(1), 3, "", 1); // no position 1 yet: appends
    list.Add(0x20, "c", Pause(1), 3);
    list.Add(0x20, "a", Pause(1), 3, "", 1);
    list.Add(0x20, "x", Pause(1), 3, "", 3);
    const auto y = list.Add(0x15, "y", Direct("d"), 10, "", 9);
    EXPECT_EQ(Descrs(list), "abxcy");
    EXPECT_EQ(y->TipoBloque, "Grabaci\xF3n directa");
    EXPECT_EQ(list.Item(0), nullptr);
    EXPECT_EQ(list.Item(6), nullptr);
    list.Remove(0);
    list.Remove(6);
    for (auto [n, up] : {std::pair{1, true}, {5, false}, {0, false}, {6, true}})
        EXPECT_EQ(list.Move(n, up), nullptr) << n;
    EXPECT_EQ(Descrs(list), "abxcy");
    EXPECT_TRUE(Shown().empty());

    const auto moved = list.Move(5, true);
    ASSERT_NE(moved, nullptr);
    EXPECT_EQ(Descrs(list), "abxyc");
    EXPECT_EQ(list.Item(4), moved);
    EXPECT_NE(moved, y); // a new object: what the caller held is out of the list
    EXPECT_EQ(moved->Data(), y->Data());
    EXPECT_EQ(moved->LenghtTot, 10);
    EXPECT_EQ(moved->TipoBloque, y->TipoBloque);
    list.Move(1, false);
    EXPECT_EQ(Descrs(list), "baxyc");
    EXPECT_EQ(Shown(), Boxes(2, Box("comprobar si es especial")));
}

TEST_F(BlocksTest, RemoveWarnsForGroupsLoopsAndCalls) {
    Blocks list;
    for (int kind : {0x21, 0x22, 0x24, 0x25, 0x26, 0x27, 0x10, 0x20})
        list.Add(kind, "", {}, 0);
    list.Add(0x22, "fin", B({0x22}), 1);
    Forget();
    while (list.Count() > 1)
        list.Remove(1);
    const std::string special = Box("comprobar si es especial");
    EXPECT_EQ(Shown(), (Boxes{Box("va a eliminar un bloque de tipo \"Inicio de grupo\". Debe "
                                  "eliminar también el correspondiente bloque \"Final de grupo\""),
                              Box("va a eliminar un bloque de tipo \"Final de grupo\". Debe "
                                  "eliminar también el correspondiente bloque \"Inicio de grupo\""),
                              special, special, special, special}));
    EXPECT_EQ(Descrs(list), "fin"); // the partner of a group is left alone
}

TEST_F(BlocksTest, RedundantBlocksLeaveTheLastArchiveAndNoMergeMarker) {
    Blocks list;
    list.Add(0x5A, "m1", Merge(), 10);
    list.Add(0x32, "i1", Archive({{0, "a"}}), 6);
    list.Add(0x10, "d", Std(RomData(1)), 8);
    list.Add(0x32, "i2", Archive({{0, "b"}}), 6);
    list.Add(0x5A, "m2", Merge(), 10);
    list.Add(0x32, "i3", Archive({{0, "c"}}), 6);
    EXPECT_EQ(list.CheckRedundantBlocks(), 4);
    EXPECT_EQ(Descrs(list), "di3");
    EXPECT_EQ(list.CheckRedundantBlocks(), 0);
    EXPECT_EQ(Shown(), (Boxes{Box("Eliminados 4 bloques sobrantes.", "", Icon::Information),
                              Box("Eliminados 0 bloques sobrantes.", "", Icon::Information)}));

    Forget();
    list.Add(0x21, "g1", Group("g"), 3, "", 1);
    list.Add(0x21, "g2", Group("g"), 3);
    EXPECT_EQ(list.DelBlockDupe(0x21), 1);
    EXPECT_EQ(Descrs(list), "di3g2");
    EXPECT_EQ(list.DelBlockDupe(0x5A), 0);
    EXPECT_EQ(Shown().size(), 1u); // through Remove, with its warning
}

TEST_F(BlocksTest, CleanUpOfATapeOfManyMergesKeepsWhatStaysInOrder) {
    Blocks list;
    std::string kept;
    for (int i = 0; i < 1000; ++i) {
        list.Add(0x5A, "m", Merge(), 10);
        if (i % 3 == 0) list.Add(0x32, "i" + std::to_string(i) + ",", Archive({{0, "x"}}), 6);
        list.Add(0x20, std::to_string(i) + ",", Pause(1), 3);
        kept += (i == 999 ? "i999," : "") + std::to_string(i) + ",";
    }
    Forget();
    EXPECT_EQ(list.CheckRedundantBlocks(), 1000 + 333);
    EXPECT_EQ(Descrs(list), kept);
    EXPECT_EQ(Shown(), Boxes{Box("Eliminados 1333 bloques sobrantes.", "", Icon::Information)});

    // Each block taken out warns as Remove would; the last of its kind stays.
    Forget();
    for (const char* name : {"a", "b", "c"})
        list.Add(0x21, name, Group(name), 3, "", 2);
    EXPECT_EQ(list.DelBlockDupe(0x21), 2);
    EXPECT_EQ(Descrs(list).substr(0, 3), "0,a");
    EXPECT_EQ(Descrs(list).size(), kept.size() + 1);
    EXPECT_EQ(Shown(), Boxes(2, Box("va a eliminar un bloque de tipo \"Inicio de grupo\". Debe "
                                    "eliminar también el correspondiente bloque \"Final de "
                                    "grupo\"")));
}

TEST_F(BlocksTest, NewBlocksMadeFromFiles) {
    struct Case {
        std::string name;
        int att, kind;
        std::string descr; // after the call, in the caller's variable too
        Bytes data;
    };
    const Bytes file = B({0, 0xFF, 0x35, 0x1A}) + Filler(60);
    const std::string pic = "Picture         ", scr = "Spectrum Screen ", longText(300, 'd');
    // clang-format off
    const std::vector<Case> cases = {
        {"pantalla.scr", 2, 0x35, "Hola", Custom(scr, B({4}) + "Hola" + B({0}) + file)},
        {"portada.gif", 1, 0x35, "Imagen Gif:Hola", Custom(pic, B({0, 15}) + "Imagen Gif:Hola" + file)},
        {"portada.jpg", 1, 0x35, "Imagen Jpeg: Hola",
         Custom(pic, B({1, 17}) + "Imagen Jpeg: Hola" + file)},
        {"portada.jpeg", 1, 0x35, "Hola", Custom(pic, B({1, 4}) + "Hola" + file)},
        {"manual.zed", 5, 0x35, "Hola", Custom("ZX-Edit document", B({4}) + "Hola" + file)},
        {"leeme.txt", 3, 0x35, "Hola", Custom("Instructions    ", file)},
        // The one-byte length holds 255 at most; the list keeps the whole text.
        {"larga.scr", 2, 0x35, longText,
         Custom(scr, B({255}) + longText.substr(0, 255) + B({0}) + file)},
        // Upper-case extensions, missing files, .pok files, attachment 4 and
        // other kinds still enter the list, with nothing to write.
        {"PANTALLA.SCR", 2, 0x35, "Hola", ""}, {"falta.scr", 2, 0x35, "Hola", ""},
        {"trucos.pok", 2, 0x35, "Hola", ""}, {"otra.scr", 4, 0x35, "Hola", ""},
        {"texto.scr", 2, 0x30, "Hola", ""}};
    // clang-format on
    TZXTape tape;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        if (c.name != "falta.scr") WriteFile(dir.File(c.name), file);
        std::string descr = c.descr == longText ? longText : "Hola";
        double before = 0;
        tape.Blocks().MakeNewBlock(c.kind, dir.File(c.name), before, descr, 0, c.att);
        EXPECT_EQ(before, 1);
        EXPECT_EQ(descr, c.descr);
        const auto b = tape.Blocks().Item(1);
        EXPECT_EQ(b->Descr, c.descr);
        EXPECT_TRUE(SameBytes(Bytes(b->Data()), c.data));
        EXPECT_EQ(b->LenghtTot, std::int64_t(c.data.size()));
        const Boxes notes = {Box("comprobar que no hay otra info"), Box("esto falla!")};
        EXPECT_EQ(Shown(), c.name == "leeme.txt" ? notes : Boxes{});
        Forget();
    }
    EXPECT_EQ(tape.Blocks().Count(), std::int64_t(cases.size()));
}

} // namespace
} // namespace cintal::test
