#include "views/Pictures.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <cmath>
#include <functional>

namespace cintal::Pictures {

namespace {

using Draw = std::function<void(QPainter&)>;

// Draws on a 16-unit canvas at every size the icon is asked for, so that it
// stays sharp at 16 px and on high-density screens.
QIcon Make(const Draw& draw) {
    QIcon icon;
    for (int size : {16, 24, 32, 48}) {
        QPixmap pm(size, size);
        pm.fill(Qt::transparent);
        QPainter p(&pm);
        p.setRenderHint(QPainter::Antialiasing);
        p.scale(size / 16.0, size / 16.0);
        draw(p);
        p.end();
        icon.addPixmap(pm);
    }
    return icon;
}

void Disc(QPainter& p, const QColor& fill) {
    p.setPen(QPen(fill.darker(140), 1));
    p.setBrush(fill);
    p.drawEllipse(QRectF(1, 1, 14, 14));
}

void Square(QPainter& p, const QColor& fill) {
    p.setPen(QPen(fill.darker(140), 1));
    p.setBrush(fill);
    p.drawRoundedRect(QRectF(1.5, 1.5, 13, 13), 2.5, 2.5);
}

void Letter(QPainter& p, const QString& text, const QColor& colour, qreal size = 10) {
    QFont f(QStringLiteral("DejaVu Sans"));
    f.setBold(true);
    f.setPixelSize(static_cast<int>(size));
    p.setFont(f);
    p.setPen(colour);
    p.drawText(QRectF(0, 0, 16, 16), Qt::AlignCenter, text);
}

void Cassette(QPainter& p, const QColor& body, const QColor& line) {
    p.setPen(QPen(line, 1));
    p.setBrush(body);
    p.drawRoundedRect(QRectF(0.5, 3.5, 15, 10), 1.5, 1.5);
    p.setBrush(Qt::white);
    p.drawRect(QRectF(3, 5.5, 10, 4));
    p.setBrush(line);
    p.drawEllipse(QPointF(5.5, 7.5), 1.3, 1.3);
    p.drawEllipse(QPointF(10.5, 7.5), 1.3, 1.3);
    p.setBrush(Qt::NoBrush);
    p.drawLine(QPointF(4, 13.5), QPointF(5.5, 11));
    p.drawLine(QPointF(5.5, 11), QPointF(10.5, 11));
    p.drawLine(QPointF(10.5, 11), QPointF(12, 13.5));
}

} // namespace

IconSet ImageListFrom() {
    IconSet set;
    // 0 Desconocido
    set.Add(Make([](QPainter& p) {
        Disc(p, QColor(0x9E, 0x9E, 0x9E));
        Letter(p, QStringLiteral("?"), Qt::white, 11);
    }));
    // 1 No existe TZX: a tape struck out
    set.Add(Make([](QPainter& p) {
        Cassette(p, QColor(0xD7, 0xCC, 0xC8), QColor(0x5D, 0x40, 0x37));
        p.setPen(QPen(QColor(0xD3, 0x2F, 0x2F), 2.2, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(2.5, 2.5), QPointF(13.5, 13.5));
        p.drawLine(QPointF(13.5, 2.5), QPointF(2.5, 13.5));
    }));
    // 2 Desaparecido: a tape that is only an outline
    set.Add(Make([](QPainter& p) {
        p.setPen(QPen(QColor(0x6D, 0x4C, 0x41), 1.2, Qt::DashLine));
        p.setBrush(Qt::NoBrush);
        p.drawRoundedRect(QRectF(0.8, 3.5, 14.4, 10), 1.5, 1.5);
        Letter(p, QStringLiteral("?"), QColor(0x6D, 0x4C, 0x41), 9);
    }));
    // 3 Distribución prohibida: no entry
    set.Add(Make([](QPainter& p) {
        Disc(p, QColor(0xE5, 0x39, 0x35));
        p.setPen(Qt::NoPen);
        p.setBrush(Qt::white);
        p.drawRect(QRectF(3.5, 6.8, 9, 2.4));
    }));
    // 4 TZX perfecto: a tick
    set.Add(Make([](QPainter& p) {
        Disc(p, QColor(0x43, 0xA0, 0x47));
        p.setPen(QPen(Qt::white, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        QPainterPath tick;
        tick.moveTo(4.2, 8.3);
        tick.lineTo(7, 11);
        tick.lineTo(11.8, 5.2);
        p.setBrush(Qt::NoBrush);
        p.drawPath(tick);
    }));
    // 5 Basic
    set.Add(Make([](QPainter& p) {
        Square(p, QColor(0x1E, 0x88, 0xE5));
        Letter(p, QStringLiteral("B"), Qt::white);
    }));
    // 6 traducido
    set.Add(Make([](QPainter& p) {
        Square(p, QColor(0xFB, 0x8C, 0x00));
        Letter(p, QStringLiteral("T"), Qt::white);
    }));
    // 7 to 12: the further sources of a record's information
    set.Add(Make([](QPainter& p) { // a tape
        Cassette(p, QColor(0x42, 0x42, 0x42), QColor(0x21, 0x21, 0x21));
    }));
    set.Add(Make([](QPainter& p) { // the web archive
        Disc(p, QColor(0x00, 0x89, 0x7B));
        Letter(p, QStringLiteral("W"), Qt::white, 9);
    }));
    set.Add(Make([](QPainter& p) { // a database
        p.setPen(QPen(QColor(0x4A, 0x14, 0x8C), 1));
        p.setBrush(QColor(0x8E, 0x24, 0xAA));
        p.drawRect(QRectF(3, 3.5, 10, 9));
        p.drawEllipse(QRectF(3, 1.5, 10, 4));
        p.drawEllipse(QRectF(3, 10.5, 10, 4));
    }));
    set.Add(Make([](QPainter& p) { // by hand
        Square(p, QColor(0x6D, 0x4C, 0x41));
        Letter(p, QStringLiteral("M"), Qt::white, 9);
    }));
    set.Add(Make([](QPainter& p) { // original edition: a star
        QPainterPath star;
        for (int i = 0; i < 10; ++i) {
            const double a = -M_PI / 2 + i * M_PI / 5;
            const double r = i % 2 ? 3.2 : 7.5;
            const QPointF pt(8 + r * std::cos(a), 8.5 + r * std::sin(a));
            if (i == 0)
                star.moveTo(pt);
            else
                star.lineTo(pt);
        }
        star.closeSubpath();
        p.setPen(QPen(QColor(0xF5, 0x7F, 0x17), 1));
        p.setBrush(QColor(0xFF, 0xCA, 0x28));
        p.drawPath(star);
    }));
    set.Add(Make([](QPainter& p) { // invalid or corrupt
        Square(p, QColor(0x75, 0x75, 0x75));
        p.setPen(QPen(QColor(0xFF, 0xEB, 0x3B), 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        p.drawPolyline(QPolygonF({QPointF(3, 5), QPointF(7, 9), QPointF(9, 6), QPointF(13, 11)}));
    }));
    return set;
}

QIcon AppIcon() {
    return Make([](QPainter& p) {
        Cassette(p, QColor(0x26, 0x32, 0x38), QColor(0x10, 0x10, 0x10));
        // The four colours of the Spectrum's stripe across the label.
        const QColor stripe[] = {QColor(0xD8, 0x00, 0x00), QColor(0xD8, 0xD8, 0x00),
                                 QColor(0x00, 0xD8, 0x00), QColor(0x00, 0xD8, 0xD8)};
        p.setPen(Qt::NoPen);
        for (int i = 0; i < 4; ++i) {
            p.setBrush(stripe[i]);
            p.drawRect(QRectF(3 + i * 2.5, 9.6, 2.5, 1.2));
        }
    });
}

} // namespace cintal::Pictures
