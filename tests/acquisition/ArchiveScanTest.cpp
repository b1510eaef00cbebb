// Tapes inside archives: the scan, their hashes, and the command line on them.

#include "../catalogue/CatalogueFixture.h"
#include "TapeBytes.h"
#include "ZipBytes.h"
#include "acquisition/BuscarDirs.h"
#include "acquisition/Scanner.h"
#include "catalogue/Settings.h"
#include "cli/Commands.h"
#include "platform/Hashes.h"
#include "tape/Prompt.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <sstream>

namespace cintal::test {
namespace {

using Texts = std::vector<std::string>;

Bytes Tape(const std::vector<std::pair<std::uint8_t, std::string>>& archive, int blocks = 1) {
    Bytes t = raw::TzxHeader(1, 20);
    if (!archive.empty()) t += raw::Archive(archive);
    for (int i = 0; i < blocks; ++i)
        t += raw::Standard(raw::RomData(Bytes(20, static_cast<char>(i + 1))));
    return t;
}

std::string Sha1(const Bytes& b) {
    return platform::HashBytes(b.data(), static_cast<qint64>(b.size())).sha1.toStdString();
}

struct Output {
    int status;
    std::string out, err;
};

Output Cli(const std::vector<std::string>& args) {
    std::ostringstream out, err;
    const int status = cli::Run(args, out, err);
    return {status, out.str(), err.str()};
}

class ArchiveScanTest : public CatalogueTest {
protected:
    std::string At(const std::string& relative) const { return S(root) + '/' + relative; }
    std::string Put(const std::string& relative, const Bytes& bytes) {
        QDir().mkpath(QFileInfo(QString::fromStdString(At(relative))).path());
        WriteFile(QString::fromStdString(At(relative)), QByteArray::fromStdString(bytes));
        return At(relative);
    }
    std::string Zip(const std::string& relative, const std::vector<ZipEntry>& entries) {
        QDir().mkpath(QFileInfo(QString::fromStdString(At(relative))).path());
        EXPECT_TRUE(WriteZip(At(relative), entries));
        return At(relative);
    }

    ScriptedPrompt prompt;
    PromptScope scope{prompt};
    QTemporaryDir disk;
    QString root = disk.path();
};

TEST_F(ArchiveScanTest, TapesInsideArchivesBecomeRowsWithHashesAndASecondScanReadsNothing) {
    Create();
    QString reason;
    ASSERT_TRUE(Comunes::InitGlobals(db, &reason)) << S(reason);
    const Bytes uno = Tape({{0, "Juego Uno"}, {1, "Ocean"}});
    const Bytes dos = Tape({});
    Zip("Uno.tzx.zip", {{"Uno.tzx", uno}});
    Zip("sub/Varios.zip", {{"cintas/Dos.tzx", dos}, {"Uno.tzx", uno}, {"leeme.txt", "nada"}});
    Put("Roto.zip", "PK no es un archivo comprimido");
    const std::string cuatro = Put("Cuatro.tzx", Tape({{0, "Cuatro"}}));

    Scanner scanner;
    ASSERT_EQ(scanner.Run(root), Scanner::Result::Done);
    const ScanCounters& c = scanner.counters;
    // Found: four files on disk and three tapes inside the archives.
    EXPECT_EQ(Texts({std::to_string(c.Total), std::to_string(c.Parcial), std::to_string(c.Creada),
                     std::to_string(c.Agregada), std::to_string(c.Comprimidos),
                     std::to_string(c.Interiores)}),
              (Texts{"7", "7", "3", "1", "3", "3"}));
    EXPECT_EQ(
        Rows("SELECT f.FileName, f.Extension, f.InnerPath, f.FileSize, t.Name, f.HaveIt "
             "FROM tFiles f JOIN Titles t ON t.TitleId = f.TitleId ORDER BY f.FileId"),
        (Texts{"Cuatro|tzx|NULL|" + std::to_string(Tape({{0, "Cuatro"}}).size()) + "|Cuatro|1",
               "Uno.tzx|zip|Uno.tzx|" + std::to_string(uno.size()) + "|Juego Uno|1",
               "Varios|zip|cintas/Dos.tzx|" + std::to_string(dos.size()) + "|Dos|1",
               "Varios|zip|Uno.tzx|" + std::to_string(uno.size()) + "|Juego Uno|1"}));
    EXPECT_EQ(Rows("SELECT DISTINCT Sha1 FROM tFiles WHERE InnerPath = 'Uno.tzx'"),
              Texts{Sha1(uno)});
    // The first folder of an empty register tells its number.
    Texts warned;
    for (const ScanWarning& w : scanner.warnings)
        warned.push_back(S(w.path) + ": " + S(w.text));
    EXPECT_EQ(warned,
              (Texts{cuatro + ": 1", At("Roto.zip") + ": el archivo comprimido está dañado o no se "
                                                      "reconoce"}));

    // Nothing changed: nothing added, no archive opened again (an unreadable
    // one aside, which has no rows to go by).
    const Texts before = Rows("SELECT * FROM tFiles ORDER BY FileId");
    ASSERT_EQ(scanner.Run(root), Scanner::Result::Done);
    EXPECT_EQ(c.Total, 7);
    EXPECT_EQ(c.Creada + c.Agregada, 4);
    EXPECT_EQ(c.Omitida, 4);
    EXPECT_EQ(Rows("SELECT * FROM tFiles ORDER BY FileId"), before);

    // A file that changed on disk is hashed again.
    const Bytes changed = Tape({{0, "Cuatro"}}, 2);
    Put("Cuatro.tzx", changed);
    ASSERT_EQ(scanner.Run(root), Scanner::Result::Done);
    EXPECT_EQ(Rows("SELECT FileSize, Sha1 FROM tFiles WHERE FileName = 'Cuatro'"),
              Texts{std::to_string(changed.size()) + "|" + Sha1(changed)});
    EXPECT_TRUE(prompt.shown.empty());
}

TEST_F(ArchiveScanTest, CommandsReadAZippedTapeListItsHashesAndGroupItsDuplicates) {
    Create();
    const Bytes a = Tape({{0, "Alfa"}}), b = Tape({{0, "Beta"}}, 2);
    Put("A.tzx", a);
    Put("B.TZX", b); // the catalogue keeps the extension in lower case; the disk doesn't
    const std::string zip = Zip("Copia.zip", {{"cinta/A.tzx", a}});
    const std::string inner = zip + "|cinta/A.tzx";
    ASSERT_EQ(Cli({"scan", S(root), "--db", S(db)}).status, 0);

    auto line = [](int id, const Bytes& bytes, const std::string& path) {
        const platform::ContentHashes h = platform::HashBytes(bytes.data(), qint64(bytes.size()));
        return std::to_string(id) + '\t' + std::to_string(bytes.size()) + '\t' + S(h.crc32) + '\t' +
               S(h.md5) + '\t' + S(h.sha1) + '\t' + path + '\n';
    };
    const Output hashes = Cli({"hashes", "--db", S(db)});
    EXPECT_EQ(hashes.status, 0);
    EXPECT_EQ(hashes.out, line(1, a, At("A.tzx")) + line(2, b, At("B.TZX")) + line(3, a, inner));
    const Output dups = Cli({"duplicates", "--db", S(db)});
    EXPECT_EQ(dups.status, 0);
    EXPECT_EQ(dups.out, "Grupo 1: 2 archivos, " + std::to_string(a.size()) + " bytes, " + Sha1(a) +
                            "\n\t1\t" + At("A.tzx") + "\n\t3\t" + inner + "\n");

    // Read like the plain file it copies.
    const Output plain = Cli({"list", At("A.tzx")}), zipped = Cli({"list", inner});
    EXPECT_EQ(zipped.status, 0);
    EXPECT_EQ(zipped.out, "Archivo " + inner + plain.out.substr(plain.out.find(" - versión")));
    EXPECT_EQ(Cli({"info", inner}).out, "info\t0\tiName\tAlfa\n");
    EXPECT_EQ(Cli({"compare", inner, At("A.tzx")}).status, 0);
    const Output missing = Cli({"list", zip + "|Nada.tzx"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err,
              "cintal-cli: " + zip + "|Nada.tzx: no está dentro del archivo comprimido\n");

    // Nothing is written inside an archive.
    const QByteArray before = Contents(QString::fromStdString(zip));
    const Output set = Cli({"info", "--set", "iName=Otro", "--yes", inner});
    EXPECT_EQ(set.status, 1);
    EXPECT_EQ(set.err, "cintal-cli: El archivo está dentro de Copia.zip: no se puede modificar\n");
    EXPECT_EQ(Contents(QString::fromStdString(zip)), before);
}

TEST_F(ArchiveScanTest, TheWindowCountsArchivesAndTheTapesInside) {
    Create();
    QString reason;
    ASSERT_TRUE(Comunes::InitGlobals(db, &reason)) << S(reason);
    Zip("sub/Varios.zip", {{"cintas/Dos.tzx", Tape({})}, {"Uno.tzx", Tape({{0, "Uno"}})}});
    Zip("Tres.zip", {{"Tres.tzx", Tape({{0, "Tres"}})}});
    SaveSetting("Caminos", "Ruta", root);
    BuscarDirs w;
    w.CommandSelecciona_Click();
    EXPECT_EQ(S(w.LabelComprimidos->text() + " " + w.LabelInteriores->text()), "2 3");
}

} // namespace
} // namespace cintal::test
