#include "widgets/ScrImage.h"

#include <QFile>
#include <QPainter>
#include <utility>

namespace cintal {

namespace {

constexpr int BitmapSize = 6144;

// Ink and paper numbers 0-7 on the green-red-blue bits of the ULA, at normal
// and at BRIGHT intensity; black has no bright version.
QRgb Colour(int index, bool bright) {
    const int level = bright ? 0xFF : 0xD7;
    return qRgb(index & 2 ? level : 0, index & 4 ? level : 0, index & 1 ? level : 0);
}

// A file is taken only when it is exactly a screen: anything else, however
// close, is some other kind of file.
QByteArray ReadScreen(const QString& path) {
    if (path.isEmpty()) return {};
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly) || f.size() != ScrImage::FileSize) return {};
    QByteArray bytes = f.read(ScrImage::FileSize + 1);
    return bytes.size() == ScrImage::FileSize ? bytes : QByteArray();
}

QImage Black() {
    QImage image(ScrImage::Width, ScrImage::Height, QImage::Format_RGB32);
    image.fill(Qt::black);
    return image;
}

} // namespace

ScrImage::ScrImage(QWidget* parent) : QWidget(parent) {
    timer.setInterval(FlashMs);
    connect(&timer, &QTimer::timeout, this, &ScrImage::Blink);
    phases[0] = phases[1] = Black();
}

QImage ScrImage::Decode(const QByteArray& bytes, bool flashPhase) {
    if (bytes.size() != FileSize) return {};
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.constData());
    QImage image(Width, Height, QImage::Format_RGB32);
    for (int y = 0; y < Height; ++y) {
        // The ULA interleaves the rows: the thirds, then the pixel row within
        // the character cell, then the character row within the third.
        const unsigned char* row =
            data + (((y & 0xC0) << 5) | ((y & 0x07) << 8) | ((y & 0x38) << 2));
        const unsigned char* attrs = data + BitmapSize + (y / 8) * 32;
        auto* out = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int cx = 0; cx < 32; ++cx) {
            const int attr = attrs[cx];
            const bool bright = attr & 0x40;
            QRgb ink = Colour(attr & 7, bright);
            QRgb paper = Colour((attr >> 3) & 7, bright);
            if ((attr & 0x80) && flashPhase) std::swap(ink, paper);
            const int bits = row[cx];
            for (int b = 0; b < 8; ++b)
                *out++ = bits & (0x80 >> b) ? ink : paper;
        }
    }
    return image;
}

bool ScrImage::HasFlash(const QByteArray& bytes) {
    if (bytes.size() != FileSize) return false;
    for (int i = BitmapSize; i < FileSize; ++i)
        if (static_cast<unsigned char>(bytes[i]) & 0x80) return true;
    return false;
}

void ScrImage::SetFile(const QString& path) {
    file = path;
    Load();
}

void ScrImage::SetDefaultFile(const QString& path) {
    defaultFile = path;
    if (!showsFile) Load();
}

void ScrImage::SetScreen(const QByteArray& screen) {
    file.clear();
    Show(screen.size() == FileSize ? screen : ReadScreen(defaultFile), screen.size() == FileSize);
}

void ScrImage::Load() {
    QByteArray bytes = ReadScreen(file);
    const bool fromFile = !bytes.isEmpty();
    if (!fromFile) bytes = ReadScreen(defaultFile);
    Show(bytes, fromFile);
}

void ScrImage::Show(const QByteArray& bytes, bool fromFile) {
    showsFile = fromFile;
    hasFlash = HasFlash(bytes);
    flashPhase = false;
    if (bytes.isEmpty()) {
        phases[0] = phases[1] = Black();
    } else {
        phases[0] = Decode(bytes, false);
        phases[1] = hasFlash ? Decode(bytes, true) : phases[0];
    }
    UpdateTimer();
    update();
}

void ScrImage::UpdateTimer() {
    // A hidden viewer has nothing to blink for; the catalogue may hide it for
    // hours while an inlay is shown.
    if (hasFlash && isVisible()) {
        if (!timer.isActive()) timer.start();
    } else {
        timer.stop();
    }
}

void ScrImage::Blink() {
    flashPhase = !flashPhase;
    update();
}

void ScrImage::paintEvent(QPaintEvent*) {
    QPainter p(this);
    // The largest 4:3 box that fits, centred; pixels stay square blocks, as
    // on the television.
    QSize fit = QSize(Width, Height).scaled(size(), Qt::KeepAspectRatio);
    const QRect target(QPoint((width() - fit.width()) / 2, (height() - fit.height()) / 2), fit);
    p.setRenderHint(QPainter::SmoothPixmapTransform, false);
    p.drawImage(target, Image());
}

void ScrImage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    UpdateTimer();
}

void ScrImage::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    UpdateTimer();
}

} // namespace cintal
