#pragma once

#include <QImage>
#include <QRect>
#include <QWidget>

namespace cintal {

// A picture area: holds one picture drawn at a place given in twips (15 to a
// logical pixel), and a Tag with the path it came from.
class PictureBox : public QWidget {
    Q_OBJECT
public:
    explicit PictureBox(QWidget* parent = nullptr);

    void ClearPicture();
    void DrawPicture(const QImage& image, const QRect& twips);
    bool HasPicture() const { return !picture.isNull(); }
    QRect DrawnRect() const { return placed; }

    QString Tag;

signals:
    void DoubleClicked();

protected:
    void paintEvent(QPaintEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;

private:
    QImage picture;
    QRect placed;
};

} // namespace cintal
