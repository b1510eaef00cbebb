// Tapes read from inside archives, and what a file is known by.

#include "platform/Archive.h"
#include "ZipBytes.h"
#include "platform/Hashes.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <filesystem>
#include <fstream>

namespace cintal::test {
namespace {

using platform::ArchiveWarning;

struct Read {
    std::vector<std::string> taken;  // "inner=bytes"
    std::vector<std::string> warned; // "path: text"
    bool whole = false;
};

Read ReadAll(const std::string& archive) {
    Read r;
    std::vector<ArchiveWarning> warnings;
    r.whole = platform::ReadArchive(
        archive, [](const std::string&) { return true; },
        [&](const std::string& inner, std::string& bytes) {
            r.taken.push_back(inner + "=" + bytes);
        },
        warnings);
    for (const ArchiveWarning& w : warnings)
        r.warned.push_back(w.path + ": " + w.text);
    return r;
}

class ArchiveTest : public ::testing::Test {
protected:
    std::string At(const std::string& name) const {
        return dir.filePath(QString::fromStdString(name)).toStdString();
    }
    QTemporaryDir dir;
};

TEST_F(ArchiveTest, ReadsInnerFoldersAndNeverLetsAPathOut) {
    const std::string zip = At("Juegos.zip");
    ASSERT_TRUE(WriteZip(zip, {{"Uno.tzx", "uno"},
                               {"cinta/Dos.tzx", "dos"},
                               {"../Fuera.tzx", "fuera"},
                               {"/raiz/Abs.tzx", "abs"}}));
    const Read r = ReadAll(zip);
    EXPECT_TRUE(r.whole);
    EXPECT_EQ(r.taken, (std::vector<std::string>{"Uno.tzx=uno", "cinta/Dos.tzx=dos"}));
    EXPECT_EQ(r.warned, (std::vector<std::string>{
                            zip + "|../Fuera.tzx: la ruta interior no es válida: no se lee",
                            zip + "|/raiz/Abs.tzx: la ruta interior no es válida: no se lee"}));

    // The one spelling of a file inside an archive, both ways.
    const std::string inner = platform::JoinInner(zip, "cinta/Dos.tzx");
    EXPECT_EQ(inner, zip + "|cinta/Dos.tzx");
    const auto at = platform::SplitInner(inner);
    ASSERT_TRUE(at);
    EXPECT_EQ(at->archive, zip);
    EXPECT_EQ(at->inner, "cinta/Dos.tzx");
    EXPECT_FALSE(platform::SplitInner(zip));
    std::string bytes, why;
    EXPECT_TRUE(platform::ReadFileOrInner(inner, bytes, why));
    EXPECT_EQ(bytes, "dos");
    EXPECT_FALSE(platform::ReadFileOrInner(zip + "|Tres.tzx", bytes, why));
    EXPECT_EQ(why, "no está dentro del archivo comprimido");

    // Extracted under the folder given, whatever the inner path says.
    const std::string tmp = At("tmp");
    std::string written;
    ASSERT_TRUE(platform::ExtractInner(*at, tmp, written, why)) << why;
    EXPECT_EQ(written, tmp + "/cinta/Dos.tzx");
    EXPECT_FALSE(platform::ExtractInner({zip, "../Fuera.tzx"}, tmp, written, why));
    EXPECT_EQ(why, "la ruta interior no es válida");
    EXPECT_FALSE(std::filesystem::exists(At("Fuera.tzx")));
    EXPECT_EQ(platform::SafeInnerPath("/raiz/./Abs.tzx"), "raiz/Abs.tzx");
    EXPECT_EQ(platform::SafeInnerPath("a/../../b.tzx"), "");
}

TEST_F(ArchiveTest, DamagedEncryptedAndOversizedArchivesAreWarnedByName) {
    const std::string damaged = At("Roto.zip");
    ASSERT_TRUE(WriteZip(damaged, {{"Uno.tzx", std::string(3000, 'a')}}));
    std::filesystem::resize_file(damaged, 40);
    const Read d = ReadAll(damaged);
    EXPECT_FALSE(d.whole);
    EXPECT_TRUE(d.taken.empty());
    ASSERT_EQ(d.warned.size(), 1u);
    EXPECT_EQ(d.warned[0].rfind(damaged + ": el archivo comprimido está dañado", 0), 0u)
        << d.warned[0];

    const std::string locked = At("Cifrado.zip");
    ASSERT_TRUE(WriteZip(locked, {{"Uno.tzx", "uno"}, {"Dos.tzx", "dos"}}, ZipKind::Encrypted));
    const Read e = ReadAll(locked);
    EXPECT_TRUE(e.taken.empty());
    EXPECT_EQ(e.warned, (std::vector<std::string>{
                            locked + ": el archivo comprimido está cifrado: no se lee"}));

    // Stored, so that only the size refuses it; the zeros beside it expand
    // far beyond any tape's ratio.
    const std::string big = At("Grande.zip");
    ASSERT_TRUE(WriteZip(big, {{"Grande.tzx", std::string(platform::kInnerLimit + 1, 'x')}},
                         ZipKind::Stored));
    const std::string bomb = At("Bomba.zip");
    ASSERT_TRUE(WriteZip(bomb, {{"Ceros.tzx", std::string(8 << 20, '\0')}, {"Bien.tzx", "bien"}}));
    EXPECT_EQ(ReadAll(big).warned,
              (std::vector<std::string>{big + "|Grande.tzx: ocupa más de 64 MB descomprimido "
                                              "(67108865 bytes): no se lee"}));
    const Read b = ReadAll(bomb);
    EXPECT_EQ(b.taken, (std::vector<std::string>{"Bien.tzx=bien"}));
    EXPECT_EQ(b.warned,
              (std::vector<std::string>{bomb + "|Ceros.tzx: se descomprime a un tamaño "
                                               "desproporcionado (8388608 bytes): no se lee"}));
}

TEST(HashesTest, AllFourFiguresFromOneRead) {
    const std::string text = "123456789";
    const platform::ContentHashes h = platform::HashBytes(text.data(), 9);
    EXPECT_EQ(h.size, 9);
    EXPECT_EQ(h.crc32.toStdString(), "cbf43926");
    EXPECT_EQ(h.md5.toStdString(), "25f9e794323b453885f5181f1b624d0b");
    EXPECT_EQ(h.sha1.toStdString(), "f7c3bc1d808e04732adf679965ccc34ca7ae3441");
    const platform::ContentHashes empty = platform::HashBytes("", 0);
    EXPECT_EQ(empty.crc32.toStdString(), "00000000");
    EXPECT_EQ(empty.sha1.toStdString(), "da39a3ee5e6b4b0d3255bfef95601890afd80709");

    QTemporaryDir dir;
    const QString file = dir.filePath("nueve.tzx");
    std::ofstream(file.toStdString()) << text;
    platform::ContentHashes read;
    ASSERT_TRUE(platform::HashFile(file, read));
    EXPECT_EQ(read.md5, h.md5);
    EXPECT_FALSE(platform::HashFile(dir.filePath("no.tzx"), read));
}

} // namespace
} // namespace cintal::test
