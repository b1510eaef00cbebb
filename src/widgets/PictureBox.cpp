#include "widgets/PictureBox.h"

#include <QMouseEvent>
#include <QPainter>

namespace cintal {

PictureBox::PictureBox(QWidget* parent) : QWidget(parent) {}

void PictureBox::ClearPicture() {
    picture = QImage();
    placed = QRect();
    update();
}

void PictureBox::DrawPicture(const QImage& image, const QRect& twips) {
    picture = image;
    placed = twips;
    update();
}

void PictureBox::paintEvent(QPaintEvent*) {
    if (picture.isNull()) return;
    QPainter p(this);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    const QRectF target(placed.x() / 15.0, placed.y() / 15.0, placed.width() / 15.0,
                        placed.height() / 15.0);
    p.drawImage(target, picture);
}

void PictureBox::mouseDoubleClickEvent(QMouseEvent* e) {
    e->accept();
    emit DoubleClicked();
}

} // namespace cintal
