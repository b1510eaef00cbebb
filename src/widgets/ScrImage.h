#pragma once
// A viewer of ZX Spectrum screen files: 6912 bytes, a 256x192 bitmap and its
// 32x24 colour attributes.

#include "tape/Content.h"

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QTimer>
#include <QWidget>

namespace cintal {

class ScrImage : public QWidget {
    Q_OBJECT
public:
    static constexpr int Width = kScreenWidth;
    static constexpr int Height = kScreenHeight;
    static constexpr int FileSize = static_cast<int>(kScreenSize);
    // The Spectrum's FLASH period: 16 frames of 50 Hz, give or take.
    static constexpr int FlashMs = 320;

    explicit ScrImage(QWidget* parent = nullptr);

    // Shows the screen in that file; a file that is not a screen shows the
    // default one, and if that fails too, black.
    void SetFile(const QString& path);
    QString File() const { return file; }
    // Shows a screen held in memory, such as one read from inside a tape;
    // anything but 6912 bytes shows the default screen. File() is then empty.
    void SetScreen(const QByteArray& screen);
    // The screen shown when a file can't be; takes effect at once if a
    // fallback is showing.
    void SetDefaultFile(const QString& path);
    QString DefaultFile() const { return defaultFile; }

    // The screen as shown now, in the current FLASH phase.
    const QImage& Image() const { return phases[flashPhase ? 1 : 0]; }
    // Whether the shown screen came from File() rather than a fallback.
    bool ShowsFile() const { return showsFile; }
    // Whether FLASH cells are being blinked.
    bool Blinking() const { return timer.isActive(); }

    // The screen in those bytes, with the ink and paper of FLASH cells
    // swapped when flashPhase is true. A null image unless there are 6912.
    static QImage Decode(const QByteArray& bytes, bool flashPhase);
    static bool HasFlash(const QByteArray& bytes);

    QSize sizeHint() const override { return {Width, Height}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void Load();
    void Show(const QByteArray& bytes, bool fromFile);
    void UpdateTimer();
    void Blink();

    QString file;
    QString defaultFile;
    bool showsFile = false;
    bool hasFlash = false;
    bool flashPhase = false;
    QImage phases[2];
    QTimer timer;
};

} // namespace cintal
