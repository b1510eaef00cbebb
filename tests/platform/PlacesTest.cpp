// Where the catalogue and the settings go: beside a copy run from where it
// was put, in the user's folders for an installed program.

#include "platform/Places.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace cintal::test {
namespace {

TEST(PlacesTest, BesideAPortableCopyInTheUsersFoldersWhenInstalled) {
    QTemporaryDir root;
    ASSERT_TRUE(root.isValid());
    const QByteArray oldData = qgetenv("XDG_DATA_HOME"), oldConfig = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_DATA_HOME", root.filePath("datos").toUtf8());
    qputenv("XDG_CONFIG_HOME", root.filePath("ajustes").toUtf8());
    QDir(root.path()).mkpath("portable");
    QDir(root.path()).mkpath("usr/bin");
    QDir(root.path()).mkpath("usr/share/cintal");

    const Places::Folders portable = Places::For(root.filePath("portable"));
    EXPECT_TRUE(portable.beside);
    EXPECT_EQ(portable.data, root.filePath("portable"));
    EXPECT_EQ(portable.config, root.filePath("portable"));

    // Even where it may write: an installed program isn't a portable copy.
    const Places::Folders installed = Places::For(root.filePath("usr/bin"));
    EXPECT_FALSE(installed.beside);
    EXPECT_EQ(installed.data, root.filePath("datos/cintal"));
    EXPECT_EQ(installed.config, root.filePath("ajustes/cintal"));

    // A catalogue already beside it is the one it keeps using.
    QFile mdb(root.filePath("usr/bin/cintal.mdb"));
    ASSERT_TRUE(mdb.open(QIODevice::WriteOnly));
    mdb.close();
    EXPECT_EQ(Places::For(root.filePath("usr/bin")).data, root.filePath("usr/bin"));

    for (const auto& [name, old] :
         {std::pair{"XDG_DATA_HOME", oldData}, {"XDG_CONFIG_HOME", oldConfig}})
        old.isNull() ? qunsetenv(name) : qputenv(name, old);
}

} // namespace
} // namespace cintal::test
