#include <QCoreApplication>
#include <gtest/gtest.h>

// The store's driver is a plugin, and Qt finds plugins only with an
// application object alive.
int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
