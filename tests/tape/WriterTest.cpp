// Saving: what lands on disk, the backup beside it, the version rules and
// the refusals that keep a file whole.

#include "TestSupport.h"
#include "tape/TZXTape.h"

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <functional>

namespace cintal::test {
namespace {

class WriterTest : public TapeTest {
protected:
    // Writes `image` as `name` in the test's folder and reads it.
    std::string Load(TZXTape& tape, const Bytes& image, const std::string& name = "juego.tzx") {
        const std::string path = dir.File(name);
        WriteFile(path, image);
        tape.FileName = path;
        tape.ReadTape();
        Forget();
        return path;
    }
};

std::string Refusal(int ordinal, int byte) {
    return Box("No se puede guardar: el archivo no se leyó completo (bloque " +
                   std::to_string(ordinal) + ", byte " + std::to_string(byte) +
                   "). Guardarlo perdería bloques; el archivo no se ha modificado.",
               "Guardar", Icon::Critical);
}

TEST_F(WriterTest, SaveRebuildsTheArchiveFirstAndKeepsEveryOtherBlockByteForByte) {
    const auto kinds = EveryKind();
    Bytes image = Tape({}, 1, 13, '\0'); // a wrong marker byte is put right
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        image += kinds[i].bytes;
        if (i == 4)
            image += Archive({{255, "Comentario"}, {10, "perdido"}, {0, "Primero"}, {4, " "}});
    }
    image += Archive({{0, "Juego"}, {1, "Ed \xA9"}});
    TZXTape tape;
    const std::string path = Load(tape, image);
    // Ids go out in their order; one blank is nothing but two are a text;
    // a text too long for its length byte is cut on disk only.
    ArchiveInfo& info = tape.ArchiveInfo();
    info.iYear = "1984";
    info.iAuthor = "  ";
    info.iOrigin = std::string(300, 'o');
    tape.Blocks().Item(1)->Descr = "derivado, no se escribe";
    ASSERT_TRUE(tape.Save(path, false));

    Bytes expected = Tape({Archive({{0, "Juego"},
                                    {1, "Ed \xA9"},
                                    {2, "  "},
                                    {3, "1984"},
                                    {8, std::string(255, 'o')},
                                    {255, "Comentario"}})},
                          1, 13);
    for (const auto& k : kinds)
        expected += k.bytes;
    EXPECT_TRUE(SameBytes(ReadFile(path), expected));
    EXPECT_TRUE(SameBytes(ReadFile(dir.File("juego.tmp")), image));
    EXPECT_EQ(dir.List(), (Names{"juego.tmp", "juego.tzx"}));
    EXPECT_TRUE(Shown().empty());
    EXPECT_EQ(info.iOrigin.size(), 300u);
    // The list is not touched: its archive blocks stay where they stood.
    EXPECT_EQ(tape.Blocks().Count(), std::int64_t(kinds.size() + 2));
    EXPECT_EQ(tape.Blocks().Item(6)->IdTipoBloque, 0x32);
}

TEST_F(WriterTest, SavingTwiceKeepsOneBackupAndLeavesTemporaryNamesInUseAlone) {
    TZXTape tape;
    const std::string path = Load(tape, Tape({Pause(1), Archive({{0, "Juego"}})}, 1, 13));
    // Every name the next seconds could give, and the first suffix of each.
    Names taken = {"juego.tmp", "juego.tzx"};
    for (std::time_t t = std::time(nullptr), end = t + 3; t < end; ++t) {
        std::tm tm{};
        localtime_r(&t, &tm);
        char stamp[16];
        std::strftime(stamp, sizeof stamp, "%H%M%S", &tm);
        for (const char* suffix : {"", "-1"}) {
            taken.push_back(std::string("TMP") + stamp + suffix + ".tmp");
            WriteFile(dir.File(taken.back()), "ocupado");
        }
    }
    ASSERT_TRUE(tape.Save(path, false));
    const Bytes first = ReadFile(path);
    EXPECT_EQ(first, Tape({Archive({{0, "Juego"}}), Pause(1)}, 1, 13));

    // With every text empty no archive block is written, though the list holds one.
    tape.ArchiveInfo().Clear();
    ASSERT_TRUE(tape.Save(path, false));
    EXPECT_EQ(ReadFile(path), Tape({Pause(1)}, 1, 13));
    EXPECT_EQ(ReadFile(dir.File("juego.tmp")), first);
    for (std::size_t i = 2; i < taken.size(); ++i)
        EXPECT_EQ(ReadFile(dir.File(taken[i])), "ocupado") << taken[i];
    std::sort(taken.begin(), taken.end());
    EXPECT_EQ(dir.List(), taken);
}

TEST_F(WriterTest, VersionRulesWithTheUsersAnswers) {
    const std::string ask = Box("La versión del archivo es superior a la versión soportada. Si "
                                "guarda los cambios puede perderse información. ¿Desea continuar?",
                                "", Icon::Critical, Buttons::YesNo);
    const std::string raised =
        Box("Formato de archivo actualizado a la versión 1.13", "", Icon::Exclamation);
    const std::string marked =
        Box("Formato de archivo actualizado a la versión 1.20", "", Icon::Exclamation);
    struct Case {
        int v, r;
        bool update;
        std::vector<Button> answers;
        int savedV, savedR; // 0.0: nothing written
        Boxes boxes;
    };
    // clang-format off
    const std::vector<Case> cases = {
        {1, 10, false, {}, 1, 10, {}},        {1, 10, true, {}, 1, 13, {raised}},
        {1, 13, true, {}, 1, 13, {}},         {0, 5, true, {}, 1, 13, {raised}},
        {0, 5, false, {}, 0, 5, {}},          {1, 14, true, {}, 1, 14, {}},
        {1, 20, true, {}, 1, 20, {}},         {1, 21, false, {Button::Yes}, 1, 20, {ask, marked}},
        {2, 0, true, {Button::Yes}, 1, 20, {ask, marked}}, {1, 22, true, {Button::No}, 0, 0, {ask}}};
    // clang-format on
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.v) + "." + std::to_string(c.r));
        const std::string name = "v" + std::to_string(c.v) + std::to_string(c.r);
        const Bytes image = Tape({Pause(1), Std(RomData(2))}, c.v, c.r);
        TZXTape tape;
        const std::string path = Load(tape, image, name + ".tzx");
        tape.Blocks().Remove(1);
        for (Button b : c.answers)
            prompt.Answer(b);

        const bool written = tape.Save(path, c.update);
        EXPECT_EQ(Shown(), c.boxes);
        EXPECT_EQ(written, c.savedV + c.savedR > 0);
        if (written) {
            EXPECT_EQ(ReadFile(path), Tape({Std(RomData(2))}, c.savedV, c.savedR));
            EXPECT_EQ(tape.FileVersion * 100 + tape.FileRevision, c.savedV * 100 + c.savedR);
        } else { // No throws the edit away and writes nothing
            EXPECT_FALSE(std::filesystem::exists(dir.File(name + ".tmp")));
            EXPECT_EQ(ReadFile(path), image);
            EXPECT_EQ(tape.Blocks().Count(), 2);
        }
    }
}

TEST_F(WriterTest, RefusesATapeNotReadWholeAndLeavesTheFileAlone) {
    const std::vector<std::pair<Bytes, std::string>> cases = {
        {Tape({Pause(5), Tone(), B({0x60}) + Le(0, 4), Pause(6)}, 1, 10), Refusal(3, 19)},
        {Tape({Pause(5), Std(RomData(4)).substr(0, 3)}, 1, 10), Refusal(2, 14)}};
    for (const auto& [image, box] : cases) {
        SCOPED_TRACE(box);
        TZXTape tape;
        const std::string path = Load(tape, image);
        EXPECT_FALSE(tape.Save(path, true)); // before any upgrade is announced
        EXPECT_EQ(Shown(), Boxes{box});
        EXPECT_EQ(ReadFile(path), image);
        EXPECT_EQ(dir.List(), Names{"juego.tzx"});
    }

    // A read that left blocks out on purpose is not the whole tape either.
    const Bytes image = Tape({Text("nota"), Pause(1)}, 1, 13);
    TZXTape tape;
    const std::string path = Load(tape, image);
    tape.ReadOnlyData();
    EXPECT_FALSE(tape.Save(path, false));
    ASSERT_EQ(prompt.shown.size(), 1u);
    EXPECT_EQ(prompt.shown[0].text.rfind("No se puede guardar: el archivo no se leyó completo", 0),
              0u);
    EXPECT_EQ(prompt.shown[0].icon, Icon::Critical);
    EXPECT_EQ(ReadFile(path), image);
}

TEST_F(WriterTest, ACutLastBlockIsSavedAsItStandsOnlyWhileItStaysLast) {
    const Bytes image = Tape({Pause(5), Std(RomData(100)).substr(0, 20)}, 1, 13);
    TZXTape tape;
    const std::string path = Load(tape, image);
    ASSERT_TRUE(tape.Save(path, false));
    EXPECT_EQ(ReadFile(path), image);

    tape.ReadTape();
    tape.Blocks().Move(2, true);
    Forget();
    EXPECT_FALSE(tape.Save(path, false));
    EXPECT_EQ(Shown(), Boxes{Refusal(2, 14)});

    tape.ReadTape();
    tape.Blocks().Add(0x20, "", Pause(9), 3);
    Forget();
    EXPECT_FALSE(tape.Save(path, false));
    EXPECT_EQ(Shown(), Boxes{Refusal(2, 14)});
    EXPECT_EQ(ReadFile(path), image);

    tape.ReadTape();
    tape.Blocks().Remove(2);
    EXPECT_TRUE(tape.Save(path, false));
    EXPECT_EQ(ReadFile(path), Tape({Pause(5)}, 1, 13));
}

TEST_F(WriterTest, ATapeNamedLikeABackupKeepsItsOwnBackupBesideIt) {
    // "juego.tmp" would be its own backup; "juego.tmp.tmp" too, and so on. A
    // name that differs only in case is the same file where the collection
    // came from.
    const Bytes first = Tape({Pause(1), Merge()}, 1, 13);
    const Bytes saved = Tape({Pause(1)}, 1, 13);
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"juego.tmp", "juego.tmp.tmp"},
        {"copia.tmp.tmp", "copia.tmp.tmp.tmp"},
        {"CASO.TMP", "CASO.tmp.tmp"}};
    WriteFile(dir.File("CASO.tmp"), "otro archivo");
    for (const auto& [name, backup] : cases) {
        SCOPED_TRACE(name);
        TZXTape tape;
        const std::string path = Load(tape, first, name);
        tape.Blocks().Remove(2);
        ASSERT_TRUE(tape.Save(path, false));
        EXPECT_TRUE(SameBytes(ReadFile(path), saved));
        EXPECT_TRUE(SameBytes(ReadFile(dir.File(backup)), first));
        // Saved again: still one backup, the file as it was before this save.
        tape.ArchiveInfo().iName = "Juego";
        ASSERT_TRUE(tape.Save(path, false));
        EXPECT_TRUE(SameBytes(ReadFile(path), Tape({Archive({{0, "Juego"}}), Pause(1)}, 1, 13)));
        EXPECT_TRUE(SameBytes(ReadFile(dir.File(backup)), saved));
        EXPECT_TRUE(Shown().empty());
    }
    EXPECT_EQ(ReadFile(dir.File("CASO.tmp")), "otro archivo");
    EXPECT_EQ(dir.List(), (Names{"CASO.TMP", "CASO.tmp", "CASO.tmp.tmp", "copia.tmp.tmp",
                                 "copia.tmp.tmp.tmp", "juego.tmp", "juego.tmp.tmp"}));
}

TEST_F(WriterTest, AStepThatFailsLeavesTheFileAsItWas) {
    const Bytes original = Tape({Pause(1), Merge()}, 1, 13);
    const std::string path = dir.File("juego.tzx"), backup = dir.File("juego.tmp");
    auto failing = [](std::string op, std::string from, std::errc err) {
        return [=](const std::string& o, const std::string& f, const std::string&) {
            const bool temp = f.find("/TMP") != std::string::npos;
            const bool match = o == op && (from == "TMP" ? temp : f == from);
            return match ? std::make_error_code(err) : std::error_code();
        };
    };
    auto reason = [&](const std::string& why) {
        return Box("No se puede guardar " + path + ": " + why, "Guardar", Icon::Critical);
    };
    struct Case {
        std::string what;
        std::function<std::error_code(const std::string&, const std::string&, const std::string&)>
            fail;
        Boxes boxes;
        bool oldBackupStays;
    };
    // clang-format off
    const std::vector<Case> cases = {
        {"temporary file", failing("create", "TMP", std::errc::no_space_on_device),
         {reason("no queda espacio en el disco")}, true},
        {"old backup", failing("remove", backup, std::errc::permission_denied),
         {reason("no se puede borrar la copia " + backup)}, true},
        {"tape to backup", failing("rename", path, std::errc::permission_denied),
         {reason("permiso denegado")}, false},
        {"temporary file to tape", failing("rename", "TMP", std::errc::io_error),
         {reason("error de lectura o escritura en el disco")}, false}};
    // clang-format on
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        TZXTape tape;
        Load(tape, original);
        WriteFile(backup, "copia anterior");
        tape.Blocks().Remove(2);
        TestOps ops;
        ops.fail = c.fail;
        detail::FileOpsScope use(ops);
        EXPECT_FALSE(tape.Save(path, false));
        EXPECT_EQ(Shown(), c.boxes);
        EXPECT_TRUE(SameBytes(ReadFile(path), original));
        EXPECT_EQ(dir.List(),
                  c.oldBackupStays ? (Names{"juego.tmp", "juego.tzx"}) : Names{"juego.tzx"});
        if (c.oldBackupStays) {
            EXPECT_EQ(ReadFile(backup), "copia anterior");
        }
    }

    // When the tape can't even be put back, the box says where it is, whole.
    TZXTape tape;
    Load(tape, original);
    tape.Blocks().Remove(2);
    TestOps ops;
    ops.fail = [&](const std::string& op, const std::string& from, const std::string&) {
        return op == "rename" && from != path ? std::make_error_code(std::errc::io_error)
                                              : std::error_code();
    };
    detail::FileOpsScope use(ops);
    EXPECT_FALSE(tape.Save(path, false));
    EXPECT_EQ(Shown(), Boxes{reason("error de lectura o escritura en el disco. El archivo tal "
                                    "como estaba queda en " +
                                    backup)});
    EXPECT_TRUE(SameBytes(ReadFile(backup), original));
    EXPECT_EQ(dir.List(), Names{"juego.tmp"});

    // A tape whose folder is a file, or is gone, is no file to replace.
    Forget();
    WriteFile(dir.File("carpeta"), "x");
    EXPECT_FALSE(tape.Save(dir.File("carpeta/juego.tzx"), false));
    EXPECT_EQ(Shown(), Boxes{Box("No se puede guardar " + dir.File("carpeta/juego.tzx") +
                                     ": el archivo no existe",
                                 "Guardar", Icon::Critical)});
}

TEST_F(WriterTest, TheNewFileIsPushedToTheDiskBeforeItReplacesTheTape) {
    // How far each file written stood when it was pushed. A push that fails
    // stops the save before the tape is touched.
    static std::vector<long> pushed;
    static bool refuse = false;
    pushed.clear();
    detail::SetFileFlush([](std::FILE* f) {
        pushed.push_back(std::ftell(f));
        errno = EIO;
        return !refuse;
    });
    const Bytes original = Tape({Pause(1), Merge()}, 1, 13);
    TZXTape tape;
    const std::string path = Load(tape, original);
    tape.Blocks().Remove(2);
    refuse = true;
    EXPECT_FALSE(tape.Save(path, false));
    EXPECT_EQ(Shown(), Boxes{Box("No se puede guardar " + path +
                                     ": error de lectura o escritura en el disco",
                                 "Guardar", Icon::Critical)});
    EXPECT_EQ(dir.List(), Names{"juego.tzx"});
    refuse = false;
    EXPECT_TRUE(tape.Save(path, false));
    detail::SetFileFlush(nullptr);
    const long size = static_cast<long>(Tape({Pause(1)}, 1, 13).size());
    EXPECT_EQ(pushed, (std::vector<long>{size, size}));
    EXPECT_TRUE(SameBytes(ReadFile(path), Tape({Pause(1)}, 1, 13)));
}

TEST_F(WriterTest, ATapeAtTheRootKeepsItsTemporaryFileAndBackupThere) {
    // The file system stands in a folder of the test's own; anything the save
    // puts in the current folder instead is refused and noted.
    TempDir root;
    TestOps ops;
    ops.root = root.path.string();
    detail::FileOpsScope use(ops);
    const Bytes original = Tape({Pause(1), Merge()}, 1, 13);
    WriteFile(root.File("juego.tzx"), original);
    TZXTape tape;
    tape.FileName = "/juego.tzx";
    tape.ReadTape();
    ASSERT_EQ(tape.Blocks().Count(), 2);
    tape.Blocks().Remove(2);
    EXPECT_TRUE(tape.Save(tape.FileName, false));
    EXPECT_TRUE(Shown().empty());
    EXPECT_EQ(ops.relative, Names{});
    EXPECT_TRUE(SameBytes(ReadFile(root.File("juego.tzx")), Tape({Pause(1)}, 1, 13)));
    EXPECT_TRUE(SameBytes(ReadFile(root.File("juego.tmp")), original));
    EXPECT_EQ(root.List(), (Names{"juego.tmp", "juego.tzx"}));
}

} // namespace
} // namespace cintal::test
