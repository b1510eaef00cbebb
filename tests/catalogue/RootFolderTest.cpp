// A file that stands at the root of the file system: its folder is "/", so
// that the paths built from the catalogue lead back to it.

#include "../tape/TestSupport.h"
#include "CatalogueFixture.h"
#include "catalogue/Records.h"

#include <QDir>

namespace cintal::test {
namespace {

using RootFolderTest = CatalogueTest;

TEST_F(RootFolderTest, AFileAddedFromTheRootIsFiledUnderTheRoot) {
    Create();
    Title("Juego", "1986", 0, "Arcade", 0, 4);
    QString reason;
    ASSERT_TRUE(Comunes::InitGlobals(db, &reason)) << S(reason);
    // The file system stands in a folder of the test's own.
    TempDir root;
    TestOps ops;
    ops.root = root.path.string();
    detail::FileOpsScope use(ops);
    cintal::test::WriteFile(root.File("juego.tzx"), Tape({Tzx::Archive({{0, "Juego"}})}, 1, 13));

    ASSERT_EQ(Records::AddFileToTitle(1, "/juego.tzx"), Records::RecordChange::Done);
    const auto paths = Sql(db, "SELECT GameDir FROM Paths");
    ASSERT_EQ(paths.size(), 1u);
    const QString folder = paths[0][0].toString();
    EXPECT_EQ(folder, "/");
    EXPECT_EQ(QDir(folder).filePath("juego.tzx"), "/juego.tzx");
    EXPECT_EQ(Sql(db, "SELECT FileName || '.' || Extension FROM tFiles")[0][0].toString(),
              "juego.tzx");
    EXPECT_EQ(ops.relative, Names{});
}

} // namespace
} // namespace cintal::test
