// `cintal-cli info`: the archive texts of a tape, and the same save as
// "Guardar Info" from a shell, with the bytes on disk and the file's row.

#include "../catalogue/CatalogueFixture.h"
#include "../cli/CliRun.h"
#include "../tape/TestSupport.h"

#include <QDir>
#include <sstream>

namespace cintal::test {
namespace {

class InfoCommandTest : public CatalogueTest, protected Tzx {
protected:
    static Result Cli(std::vector<std::string> args) {
        args.insert(args.begin(), "info");
        return test::Cli(args);
    }
    std::string File(const std::string& name) {
        return S(dir.filePath(QString::fromStdString(name)));
    }
};

TEST_F(InfoCommandTest, PrintsTheTextsAndSetsFieldsAsGuardarInfoDoes) {
    const std::string tape = File("juego.tzx");
    const Bytes old =
        Tape({Pause(5), Archive({{0, "Juego"}, {255, "a\rb"}}), Std(RomData(3))}, 1, 10);
    WriteFile(tape, old);
    Result r = Cli({tape});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "info\t0\tiName\tJuego\ninfo\t255\tiComments\ta\\rb\n");

    r = Cli(
        {"--set", "iName=Cañón", "--set", "iComments=Uno\\nDos", "--set", "iLang=Spanish", tape});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, tape + ": guardado, versión 1.13\n");
    EXPECT_EQ(r.err, "Formato de archivo actualizado a la versión 1.13\n");
    EXPECT_TRUE(SameBytes(ReadFile(tape),
                          Tape({Archive({{0, "Ca\xF1\xF3n"}, {4, "Spanish"}, {255, "Uno\rDos"}}),
                                Pause(5), Std(RomData(3))},
                               1, 13)));
    EXPECT_TRUE(SameBytes(ReadFile(File("juego.tmp")), old));

    EXPECT_EQ(Cli({"--set", "iNombre=X", tape}).status, 2);
    EXPECT_EQ(Cli({tape, "otra.tzx"}).status, 2);
}

TEST_F(InfoCommandTest, QuestionsAreNoUnlessYesAndNonTapesAreRefused) {
    const std::string tape = File("nueva.tzx");
    const Bytes newer = Tape({Pause(5)}, 1, 21);
    WriteFile(tape, newer);
    Result r = Cli({"--set", "iName=X", tape});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out, tape + ": no se ha modificado\n");
    EXPECT_TRUE(SameBytes(ReadFile(tape), newer));

    // A text too long for its length byte is a question too.
    r = Cli({"--set", "iAuthor=" + std::string(300, 'a'), tape});
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("El campo Autor tiene más de 255 caracteres; se guardarán los 255 "
                         "primeros. -> Cancelar"),
              std::string::npos)
        << r.err;
    EXPECT_TRUE(SameBytes(ReadFile(tape), newer));

    r = Cli({"--yes", "--set", "iAuthor=" + std::string(300, 'a'), tape});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_TRUE(
        SameBytes(ReadFile(tape), Tape({Archive({{2, std::string(255, 'a')}}), Pause(5)}, 1, 20)));

    const std::string snapshot = File("juego.z80");
    WriteFile(snapshot, "instantánea");
    r = Cli({"--yes", "--set", "iName=X", snapshot});
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("No se puede guardar"), std::string::npos) << r.err;
    EXPECT_TRUE(SameBytes(ReadFile(snapshot), "instantánea"));
}

TEST_F(InfoCommandTest, WithACatalogueTheFileRowFollowsTheTape) {
    Create();
    Path(1, dir.path());
    Title("Juego", "1986", 0, "Arcade", 1, 4);
    Sql(db, "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, HaveIt, Origin, IdLang, "
            "LoadSchema) VALUES (1, 'juego', 'tzx', 1, 1, 'Original', 'spa', 'Normal')");
    const std::string tape = File("juego.tzx");
    WriteFile(tape, Tape({Pause(5)}, 1, 13));
    Result r = Cli({"--db", S(db), "--set", "iOrigin=Re-Release", "--set", "iLang=English", tape});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(Sql(db, "SELECT Origin, IdLang, LoadSchema, FileSize FROM tFiles"),
              (std::vector<QVariantList>{
                  {"Re-Release", "Eng", "Normal", qint64(ReadFile(tape).size())}}));

    // A tape the catalogue doesn't hold is saved all the same, and said so.
    const std::string other = File("otra.tzx");
    WriteFile(other, Tape({Pause(5)}, 1, 13));
    r = Cli({"--db", S(db), "--set", "iName=Otra", other});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.err, "[Cintal] El archivo ya no está en el catálogo\n");
}

} // namespace
} // namespace cintal::test
