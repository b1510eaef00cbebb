// The file grid's icon set: the keys the grid asks for, found as the store
// spells them, and a picture for every one.

#include "widgets/Pictures.h"

#include <QImage>
#include <QPixmap>
#include <gtest/gtest.h>

namespace cintal::test {
namespace {

TEST(FormatIcon, HasEveryKeyInItsPlace) {
    const IconSet set = Pictures::FormatIcon();
    const QStringList keys = {
        "TZX",  "Z80",  "TAP",    "VOC",    "SLT",  "DSK",
        "SNA",  "SP",   "TRD",    "M48",    "M128", "ANY",
        "1JUG", "2JUG", "JUNTOS", "SCREEN", "YUG",  "SWE",
        "SPA",  "SLO",  "SLK",    "SER",    "RUS",  "POR",
        "POL",  "GRK",  "ITA",    "GER",    "FRE",  "ENG",
        "DUT",  "CZE",  "CRO",    "BOS",    "UNK",  QString::fromUtf8("S\xC3\x8D"),
        "NO",   "OO",   "OH",     "OR",     "OU",   "OI",
        "OM",   "OC",   "OB",     "OT"};
    ASSERT_EQ(set.Count(), 46);
    for (int i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(set.Key(i), keys[i]) << i;
        EXPECT_EQ(set.ItemIndex(keys[i]), i) << keys[i].toStdString();
    }
}

TEST(FormatIcon, LooksUpKeysIgnoringCase) {
    const IconSet set = Pictures::FormatIcon();
    EXPECT_EQ(set.ItemIndex("tzx"), 0);
    EXPECT_EQ(set.ItemIndex("Tzx"), 0);
    EXPECT_EQ(set.ItemIndex("spa"), set.ItemIndex("SPA"));
    EXPECT_EQ(set.ItemIndex("m128"), 10);
    EXPECT_EQ(set.ItemIndex("ob"), 44);
    EXPECT_TRUE(set.KeyExists("jUnToS"));
    EXPECT_EQ(set.ItemIndex(QString::fromUtf8("s\xC3\xAD")), 35);
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
