// The screen viewer: the Spectrum's memory layout and colours checked pixel by
// pixel on screens built here, and what the viewer falls back to.

#include "platform/ScrImage.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <functional>
#include <gtest/gtest.h>

namespace cintal::test {
namespace {

constexpr QRgb InkBlack = 0xFF000000;
constexpr QRgb PaperWhite = 0xFFD7D7D7;

// A blank screen: black ink on white paper, no pixel set.
QByteArray Blank(unsigned char attr = 0x38) {
    QByteArray b(6144, '\0');
    b.append(QByteArray(768, static_cast<char>(attr)));
    return b;
}

void SetAttr(QByteArray& b, int col, int row, int attr) {
    b[6144 + row * 32 + col] = static_cast<char>(attr);
}

// The pixels of an image that differ from `paper`, as "x,y" strings.
std::vector<std::string> Inked(const QImage& image, QRgb paper) {
    std::vector<std::string> at;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != paper)
                at.push_back(std::to_string(x) + "," + std::to_string(y));
    return at;
}

bool WaitFor(const std::function<bool()>& done) {
    QElapsedTimer clock;
    clock.start();
    while (!done() && clock.elapsed() < 5000) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(5);
    }
    return done();
}

TEST(ScrImageDecode, BitmapBytesLandOnTheirRowsAcrossTheThirds) {
    // Offsets written out by hand from the ULA's layout: a byte with its
    // leftmost and rightmost bits set must light exactly two pixels.
    struct Case {
        int offset, x, y;
    };
    const Case cases[] = {
        {0x0000, 0, 0},   {0x0001, 8, 0},     {0x0100, 0, 1},    {0x0020, 0, 8},
        {0x0700, 0, 7},   {0x07E0, 0, 63},    {0x0800, 0, 64},   {0x0FE0, 0, 127},
        {0x1000, 0, 128}, {0x17FF, 248, 191}, {0x0A4D, 104, 82},
    };
    for (const Case& c : cases) {
        QByteArray b = Blank();
        b[c.offset] = static_cast<char>(0x81);
        const QImage image = ScrImage::Decode(b, false);
        ASSERT_EQ(image.size(), QSize(256, 192));
        const std::vector<std::string> want = {std::to_string(c.x) + "," + std::to_string(c.y),
                                               std::to_string(c.x + 7) + "," + std::to_string(c.y)};
        EXPECT_EQ(Inked(image, PaperWhite), want) << "offset " << c.offset;
        EXPECT_EQ(image.pixel(c.x, c.y), InkBlack);
    }
}

TEST(ScrImageDecode, AttributesColourTheirCellOnly) {
    QByteArray b = Blank();
    // Cell (5, 10): every pixel row half inked, red ink on cyan paper.
    for (int y = 80; y < 88; ++y)
        b[((y & 0xC0) << 5) | ((y & 0x07) << 8) | ((y & 0x38) << 2) | 5] = static_cast<char>(0xF0);
    SetAttr(b, 5, 10, 2 | 5 << 3);
    const QImage image = ScrImage::Decode(b, false);
    for (int y = 78; y < 90; ++y)
        for (int x = 38; x < 50; ++x) {
            const bool inCell = x >= 40 && x < 48 && y >= 80 && y < 88;
            const QRgb want = !inCell ? PaperWhite : x < 44 ? 0xFFD70000 : 0xFF00D7D7;
            EXPECT_EQ(image.pixel(x, y), want) << x << "," << y;
        }

    // Every paper colour, normal then BRIGHT, in the Spectrum's order.
    const QRgb normal[] = {0xFF000000, 0xFF0000D7, 0xFFD70000, 0xFFD700D7,
                           0xFF00D700, 0xFF00D7D7, 0xFFD7D700, 0xFFD7D7D7};
    const QRgb bright[] = {0xFF000000, 0xFF0000FF, 0xFFFF0000, 0xFFFF00FF,
                           0xFF00FF00, 0xFF00FFFF, 0xFFFFFF00, 0xFFFFFFFF};
    QByteArray colours = Blank();
    for (int i = 0; i < 8; ++i) {
        SetAttr(colours, i, 0, i << 3);
        SetAttr(colours, i, 1, 0x40 | i << 3);
        SetAttr(colours, 8 + i, 0, i); // the same as ink, over a full cell
        for (int y = 0; y < 8; ++y)
            colours[(y << 8) | (8 + i)] = static_cast<char>(0xFF);
    }
    const QImage swatch = ScrImage::Decode(colours, false);
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(swatch.pixel(i * 8 + 3, 4), normal[i]) << "paper " << i;
        EXPECT_EQ(swatch.pixel(i * 8 + 3, 12), bright[i]) << "bright paper " << i;
        EXPECT_EQ(swatch.pixel(64 + i * 8 + 3, 4), normal[i]) << "ink " << i;
    }
}

TEST(ScrImageDecode, FlashSwapsInkAndPaperInTheSecondPhaseOnly) {
    QByteArray b = Blank();
    b[0] = static_cast<char>(0x80);             // pixel (0,0) inked
    b[1] = static_cast<char>(0x80);             // pixel (8,0) inked
    SetAttr(b, 0, 0, 0x80 | 0x40 | 1 | 6 << 3); // FLASH, BRIGHT, blue on yellow
    SetAttr(b, 1, 0, 1 | 6 << 3);               // the same without FLASH
    ASSERT_TRUE(ScrImage::HasFlash(b));
    EXPECT_FALSE(ScrImage::HasFlash(Blank()));

    const QImage steady = ScrImage::Decode(b, false);
    const QImage swapped = ScrImage::Decode(b, true);
    EXPECT_EQ(steady.pixel(0, 0), 0xFF0000FFu);
    EXPECT_EQ(steady.pixel(1, 0), 0xFFFFFF00u);
    EXPECT_EQ(swapped.pixel(0, 0), 0xFFFFFF00u);
    EXPECT_EQ(swapped.pixel(1, 0), 0xFF0000FFu);
    EXPECT_EQ(swapped.pixel(7, 7), 0xFF0000FFu);
    for (const QImage* image : {&steady, &swapped}) {
        EXPECT_EQ(image->pixel(8, 0), 0xFF0000D7u);
        EXPECT_EQ(image->pixel(9, 0), 0xFFD7D700u);
    }
}

TEST(ScrImageDecode, OnlyExactlyAScreenDecodes) {
    EXPECT_TRUE(ScrImage::Decode({}, false).isNull());
    EXPECT_TRUE(ScrImage::Decode(Blank().left(6911), false).isNull());
    EXPECT_TRUE(ScrImage::Decode(Blank() + '\0', false).isNull());
    EXPECT_FALSE(ScrImage::HasFlash(QByteArray(6913, '\x80')));
}

class ScrImageViewer : public ::testing::Test {
protected:
    QString Write(const QString& name, const QByteArray& bytes) {
        const QString path = dir.filePath(name);
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
        return path;
    }

    QTemporaryDir dir;
    ScrImage viewer;
};

TEST_F(ScrImageViewer, FallsBackToTheDefaultScreenThenToBlack) {
    QByteArray own = Blank(0x07); // white on black
    own[0] = static_cast<char>(0xFF);
    QByteArray fallback = Blank(0x0A); // red on blue
    fallback[1] = static_cast<char>(0xFF);
    const QString screen = Write("juego.scr", own);
    const QString defaultScreen = Write("z80.scr", fallback);
    const QImage ownImage = ScrImage::Decode(own, false);
    const QImage fallbackImage = ScrImage::Decode(fallback, false);

    viewer.SetDefaultFile(defaultScreen);
    EXPECT_EQ(viewer.Image(), fallbackImage) << "nothing given yet";

    viewer.SetFile(screen);
    EXPECT_EQ(viewer.File(), screen);
    EXPECT_TRUE(viewer.ShowsFile());
    EXPECT_EQ(viewer.Image(), ownImage);

    for (const QString& wrong :
         {Write("corta.scr", own.left(6911)), Write("larga.scr", own + '\0'),
          Write("vacia.scr", {}), dir.filePath("no existe.scr"), dir.path(), QString()}) {
        viewer.SetFile(wrong);
        EXPECT_EQ(viewer.File(), wrong);
        EXPECT_FALSE(viewer.ShowsFile()) << wrong.toStdString();
        EXPECT_EQ(viewer.Image(), fallbackImage) << wrong.toStdString();
    }

    // The default itself unusable: black, and a good file still shows.
    viewer.SetDefaultFile(Write("z80 mal.scr", fallback.left(100)));
    EXPECT_EQ(Inked(viewer.Image(), 0xFF000000), std::vector<std::string>{});
    EXPECT_EQ(viewer.Image().size(), QSize(256, 192));
    viewer.SetFile(screen);
    EXPECT_EQ(viewer.Image(), ownImage);

    // A default that arrives while a fallback shows is used at once.
    viewer.SetDefaultFile(dir.filePath("tampoco.scr"));
    viewer.SetFile(QString());
    EXPECT_EQ(Inked(viewer.Image(), 0xFF000000), std::vector<std::string>{});
    viewer.SetDefaultFile(defaultScreen);
    EXPECT_EQ(viewer.Image(), fallbackImage);
}

TEST_F(ScrImageViewer, BlinksOnlyAShownScreenWithFlash) {
    QByteArray flashing = Blank(0x38);
    SetAttr(flashing, 31, 23, 0x80 | 0x38);
    const QString flash = Write("flash.scr", flashing);
    const QString steady = Write("quieta.scr", Blank());
    viewer.SetDefaultFile(flash);

    viewer.SetFile(steady);
    viewer.show();
    EXPECT_FALSE(viewer.Blinking());
    viewer.SetFile(flash);
    EXPECT_TRUE(viewer.Blinking());
    // The bottom right cell is all paper: white, then black once swapped.
    EXPECT_EQ(viewer.Image().pixel(255, 191), PaperWhite);
    EXPECT_TRUE(WaitFor([&] { return viewer.Image().pixel(255, 191) == InkBlack; }));
    EXPECT_EQ(viewer.Image(), ScrImage::Decode(flashing, true));
    EXPECT_TRUE(WaitFor([&] { return viewer.Image().pixel(255, 191) == PaperWhite; }));

    viewer.hide();
    EXPECT_FALSE(viewer.Blinking());
    viewer.show();
    EXPECT_TRUE(viewer.Blinking());
    viewer.SetFile(dir.filePath("falta.scr")); // the default flashes too
    EXPECT_TRUE(viewer.Blinking());
    viewer.SetFile(steady);
    EXPECT_FALSE(viewer.Blinking());
}

TEST_F(ScrImageViewer, PaintsSquarePixelsInACentredFourByThreeBox) {
    QByteArray b = Blank(0x07); // white ink on black paper
    b[0] = static_cast<char>(0x80);
    viewer.SetFile(Write("pixel.scr", b));
    viewer.resize(512, 400); // twice the screen, with 8 rows to spare above and below
    const QImage shot = viewer.grab().toImage();
    ASSERT_EQ(shot.size(), QSize(512, 400));
    for (int y = 8; y < 12; ++y)
        for (int x = 0; x < 4; ++x)
            EXPECT_EQ(shot.pixel(x, y), x < 2 && y < 10 ? 0xFFD7D7D7u : 0xFF000000u)
                << x << "," << y;
    EXPECT_NE(shot.pixel(0, 7), 0xFFD7D7D7u);
    EXPECT_EQ(shot.pixel(511, 391), 0xFF000000u);

    viewer.resize(300, 600); // narrow: full width, centred from top to bottom
    const QImage tall = viewer.grab().toImage();
    const int top = (600 - 225) / 2;
    EXPECT_EQ(tall.pixel(0, top), 0xFFD7D7D7u);
    EXPECT_NE(tall.pixel(0, top - 1), 0xFFD7D7D7u);
}

} // namespace
} // namespace cintal::test
