// The screen viewer: the Spectrum's memory layout and colours checked pixel by
// pixel on screens built here, and what the viewer falls back to.

#include "widgets/ScrImage.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <functional>
#include <gtest/gtest.h>

namespace cintal::test {
namespace {

constexpr QRgb Black = 0xFF000000;
constexpr QRgb White = 0xFFD7D7D7;

// Black ink on white paper unless told otherwise, no pixel set.
QByteArray Blank(char attr = 0x38) {
    return QByteArray(6144, '\0') + QByteArray(768, attr);
}

void SetAttr(QByteArray& b, int col, int row, int attr) {
    b[6144 + row * 32 + col] = static_cast<char>(attr);
}

// The pixels that differ from `paper`, as "x,y".
std::vector<std::string> Inked(const QImage& image, QRgb paper) {
    std::vector<std::string> at;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != paper)
                at.push_back(std::to_string(x) + "," + std::to_string(y));
    return at;
}

TEST(ScrImageDecode, BitmapBytesLandOnTheirRowsAcrossTheThirds) {
    // Offsets worked out by hand from the ULA's layout; a byte with its
    // leftmost and rightmost bits set lights exactly two pixels.
    struct Case {
        int offset, x, y;
    };
    const Case cases[] = {{0x0000, 0, 0},     {0x0001, 8, 0},   {0x0100, 0, 1},   {0x0020, 0, 8},
                          {0x07E0, 0, 63},    {0x0800, 0, 64},  {0x0FE0, 0, 127}, {0x1000, 0, 128},
                          {0x17FF, 248, 191}, {0x0A4D, 104, 82}};
    for (const Case& c : cases) {
        QByteArray b = Blank();
        b[c.offset] = static_cast<char>(0x81);
        const QImage image = ScrImage::Decode(b, false);
        ASSERT_EQ(image.size(), QSize(256, 192));
        const std::string row = "," + std::to_string(c.y);
        EXPECT_EQ(Inked(image, White), (std::vector<std::string>{std::to_string(c.x) + row,
                                                                 std::to_string(c.x + 7) + row}))
            << "offset " << c.offset;
        EXPECT_EQ(image.pixel(c.x, c.y), Black);
    }
    EXPECT_TRUE(ScrImage::Decode({}, false).isNull());
    EXPECT_TRUE(ScrImage::Decode(Blank().left(6911), false).isNull());
    EXPECT_TRUE(ScrImage::Decode(Blank() + '\0', false).isNull());
}

TEST(ScrImageDecode, AttributesColourTheirCellWithBrightAndFlash) {
    // Cell (5, 1), rows 8 to 15: left half inked, red ink on cyan paper.
    QByteArray b = Blank();
    for (int line = 0; line < 8; ++line)
        b[0x0025 + (line << 8)] = static_cast<char>(0xF0);
    SetAttr(b, 5, 1, 2 | 5 << 3);
    const QImage cell = ScrImage::Decode(b, false);
    for (int y = 6; y < 18; ++y)
        for (int x = 38; x < 50; ++x) {
            const bool in = x >= 40 && x < 48 && y >= 8 && y < 16;
            EXPECT_EQ(cell.pixel(x, y), !in      ? White
                                        : x < 44 ? 0xFFD70000
                                                 : 0xFF00D7D7)
                << x << "," << y;
        }

    // Every colour as paper, as BRIGHT paper, and as ink over a full cell.
    const QRgb normal[] = {0xFF000000, 0xFF0000D7, 0xFFD70000, 0xFFD700D7,
                           0xFF00D700, 0xFF00D7D7, 0xFFD7D700, 0xFFD7D7D7};
    const QRgb bright[] = {0xFF000000, 0xFF0000FF, 0xFFFF0000, 0xFFFF00FF,
                           0xFF00FF00, 0xFF00FFFF, 0xFFFFFF00, 0xFFFFFFFF};
    QByteArray swatch = Blank();
    for (int i = 0; i < 8; ++i) {
        SetAttr(swatch, i, 0, i << 3);
        SetAttr(swatch, i, 1, 0x40 | i << 3);
        SetAttr(swatch, 8 + i, 0, i);
        swatch[8 + i] = static_cast<char>(0xFF);
    }
    const QImage colours = ScrImage::Decode(swatch, false);
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(colours.pixel(i * 8 + 3, 0), normal[i]) << "paper " << i;
        EXPECT_EQ(colours.pixel(i * 8 + 3, 12), bright[i]) << "bright paper " << i;
        EXPECT_EQ(colours.pixel(64 + i * 8 + 3, 0), normal[i]) << "ink " << i;
    }

    // FLASH swaps ink and paper in the second phase only, and only its cell.
    QByteArray flash = Blank();
    flash[0] = flash[1] = static_cast<char>(0x80);
    SetAttr(flash, 0, 0, 0x80 | 0x40 | 1 | 6 << 3);
    SetAttr(flash, 1, 0, 1 | 6 << 3);
    EXPECT_TRUE(ScrImage::HasFlash(flash));
    EXPECT_FALSE(ScrImage::HasFlash(b));
    const QImage steady = ScrImage::Decode(flash, false), swapped = ScrImage::Decode(flash, true);
    EXPECT_EQ(steady.pixel(0, 0), 0xFF0000FFu);
    EXPECT_EQ(steady.pixel(1, 0), 0xFFFFFF00u);
    EXPECT_EQ(swapped.pixel(0, 0), 0xFFFFFF00u);
    EXPECT_EQ(swapped.pixel(7, 7), 0xFF0000FFu);
    for (const QImage* image : {&steady, &swapped}) {
        EXPECT_EQ(image->pixel(8, 0), 0xFF0000D7u);
        EXPECT_EQ(image->pixel(9, 0), 0xFFD7D700u);
    }
}

class ScrImageViewer : public ::testing::Test {
protected:
    QString Write(const QString& name, const QByteArray& bytes) {
        QFile f(dir.filePath(name));
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
        return f.fileName();
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

    QTemporaryDir dir;
    ScrImage viewer;
};

TEST_F(ScrImageViewer, FallsBackToTheDefaultScreenThenToBlack) {
    const QByteArray own = Blank(0x07), fallback = Blank(0x0A);
    const QString screen = Write("juego.scr", own);
    const QString defaultScreen = Write("z80.scr", fallback);

    viewer.SetDefaultFile(defaultScreen);
    EXPECT_EQ(viewer.Image(), ScrImage::Decode(fallback, false)) << "nothing given yet";
    viewer.SetFile(screen);
    EXPECT_TRUE(viewer.ShowsFile());
    EXPECT_EQ(viewer.Image(), ScrImage::Decode(own, false));

    for (const QString& wrong :
         {Write("corta.scr", own.left(6911)), Write("larga.scr", own + '\0'),
          Write("vacia.scr", {}), dir.filePath("no existe.scr"), dir.path(), QString()}) {
        viewer.SetFile(wrong);
        EXPECT_EQ(viewer.File(), wrong);
        EXPECT_FALSE(viewer.ShowsFile()) << wrong.toStdString();
        EXPECT_EQ(viewer.Image(), ScrImage::Decode(fallback, false)) << wrong.toStdString();
    }

    // An unusable default: black, at once, and back to it as soon as it's good.
    viewer.SetDefaultFile(Write("z80 mal.scr", fallback.left(100)));
    EXPECT_EQ(viewer.Image().size(), QSize(256, 192));
    EXPECT_EQ(Inked(viewer.Image(), Black), std::vector<std::string>{});
    viewer.SetDefaultFile(defaultScreen);
    EXPECT_EQ(viewer.Image(), ScrImage::Decode(fallback, false));
}

TEST_F(ScrImageViewer, BlinksOnlyAShownScreenWithFlash) {
    QByteArray flashing = Blank();
    SetAttr(flashing, 31, 23, 0x80 | 0x38);
    const QString flash = Write("flash.scr", flashing);
    const QString steady = Write("quieta.scr", Blank());
    viewer.SetDefaultFile(flash);

    viewer.SetFile(steady);
    viewer.show();
    EXPECT_FALSE(viewer.Blinking());
    viewer.SetFile(flash);
    EXPECT_TRUE(viewer.Blinking());
    // The bottom right cell is all paper: white, black once swapped, white again.
    EXPECT_EQ(viewer.Image().pixel(255, 191), White);
    EXPECT_TRUE(WaitFor([&] { return viewer.Image().pixel(255, 191) == Black; }));
    EXPECT_EQ(viewer.Image(), ScrImage::Decode(flashing, true));
    EXPECT_TRUE(WaitFor([&] { return viewer.Image().pixel(255, 191) == White; }));

    viewer.hide();
    EXPECT_FALSE(viewer.Blinking());
    viewer.show();
    EXPECT_TRUE(viewer.Blinking());
    viewer.SetFile(dir.filePath("falta.scr")); // falls back to a flashing default
    EXPECT_TRUE(viewer.Blinking());
    viewer.SetFile(steady);
    EXPECT_FALSE(viewer.Blinking());
}

TEST_F(ScrImageViewer, PaintsSquarePixelsInACentredFourByThreeBox) {
    QByteArray b = Blank(0x07); // white ink on black paper, pixel (0,0) inked
    b[0] = static_cast<char>(0x80);
    viewer.SetFile(Write("pixel.scr", b));
    viewer.resize(512, 400); // twice the screen, 8 rows to spare above and below
    const QImage wide = viewer.grab().toImage();
    for (int y = 8; y < 12; ++y)
        for (int x = 0; x < 4; ++x)
            EXPECT_EQ(wide.pixel(x, y), x < 2 && y < 10 ? White : Black) << x << "," << y;
    EXPECT_NE(wide.pixel(0, 7), White);
    EXPECT_EQ(wide.pixel(511, 391), Black);

    viewer.resize(300, 600); // narrow: full width, centred from top to bottom
    const QImage tall = viewer.grab().toImage();
    EXPECT_EQ(tall.pixel(0, (600 - 225) / 2), White);
    EXPECT_NE(tall.pixel(0, (600 - 225) / 2 - 1), White);
}

} // namespace
} // namespace cintal::test
