#include "widgets/ScrImage.h"

#include <QFile>
#include <QPainter>
#include <cstring>

namespace cintal {

namespace {

constexpr int BitmapSize = 6144;

// A file is taken only when it is exactly a screen: anything else, however
// close, is some other kind of file.
QByteArray ReadScreenFile(const QString& path) {
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
    const std::vector<std::uint32_t> pixels = ScreenPixels(
        std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())), flashPhase);
    if (pixels.empty()) return {};
    // The engine's pixels are 0xFFRRGGBB, as RGB32 holds them.
    QImage image(Width, Height, QImage::Format_RGB32);
    for (int y = 0; y < Height; ++y)
        std::memcpy(image.scanLine(y), pixels.data() + static_cast<std::size_t>(y) * Width,
                    sizeof(std::uint32_t) * Width);
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
    Show(screen.size() == FileSize ? screen : ReadScreenFile(defaultFile),
         screen.size() == FileSize);
}

void ScrImage::Load() {
    QByteArray bytes = ReadScreenFile(file);
    const bool fromFile = !bytes.isEmpty();
    if (!fromFile) bytes = ReadScreenFile(defaultFile);
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
