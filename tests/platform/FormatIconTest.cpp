// The file grid's icon set: keys found as the store spells them, and a
// picture for every one.

#include "widgets/Pictures.h"

#include <QImage>
#include <QPixmap>
#include <gtest/gtest.h>

namespace cintal::test {
namespace {

TEST(FormatIcon, LooksUpKeysIgnoringCase) {
    const IconSet set = Pictures::FormatIcon();
    for (const char* key : {"tzx", "Tzx", "spa", "m128", "ob", "jUnToS"}) {
        EXPECT_TRUE(set.KeyExists(key)) << key;
        EXPECT_EQ(set.ItemIndex(key), set.ItemIndex(QString(key).toUpper())) << key;
    }
    EXPECT_TRUE(set.KeyExists(QString::fromUtf8("s\xC3\xAD")));
    // The yes mark is spelt with its accent; without it, it's another word.
    EXPECT_FALSE(set.KeyExists("SI"));
    for (const char* missing : {"", "TZ", "TZXX", "ROM", "EUS", " TAP"})
        EXPECT_FALSE(set.KeyExists(missing)) << missing;
}

TEST(FormatIcon, EveryIconIsDrawnAndTellsItselfApart) {
    const IconSet set = Pictures::FormatIcon();
    std::vector<QImage> drawn;
    for (int i = 0; i < set.Count(); ++i) {
        const QPixmap pm = set.Icon(i).pixmap(24, 24);
        ASSERT_FALSE(pm.isNull()) << set.Key(i).toStdString();
        EXPECT_EQ(pm.size(), QSize(24, 24));
        const QImage image = pm.toImage().convertToFormat(QImage::Format_ARGB32);
        int opaque = 0;
        for (int y = 0; y < 24; ++y)
            for (int x = 0; x < 24; ++x)
                opaque += qAlpha(image.pixel(x, y)) > 200;
        EXPECT_GT(opaque, 24 * 24 / 6) << set.Key(i).toStdString() << " is mostly empty";
        for (int j = 0; j < i; ++j)
            EXPECT_NE(image, drawn[static_cast<std::size_t>(j)])
                << set.Key(i).toStdString() << " looks like " << set.Key(j).toStdString();
        drawn.push_back(image);
        for (int size : {16, 48})
            EXPECT_EQ(set.Icon(i).pixmap(size, size).size(), QSize(size, size));
    }
}

} // namespace
} // namespace cintal::test
