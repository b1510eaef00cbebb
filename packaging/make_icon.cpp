// Draws the program's icon, a cassette with the Spectrum's four stripes, as
// a scalable SVG and as PNGs of the usual sizes, from one set of shapes, so
// that the sizes can't drift apart. Qt's painter needs no display for this.

#include <QColor>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QRectF>
#include <QString>
#include <cstdio>
#include <vector>

namespace {

constexpr double kSide = 64; // the drawing's own units

struct Shape {
    enum Kind { Rect, Circle, Polygon } kind;
    QPolygonF points; // Rect: top left and size; Circle: centre and (radius, 0)
    double radius;    // of a rectangle's corners
    QColor fill;
    QColor stroke; // invalid for none
    double strokeWidth;
};

std::vector<Shape> Cassette() {
    const QColor dark(0x26, 0x32, 0x38), black(0x10, 0x10, 0x10), grey(0x37, 0x47, 0x4F);
    const QColor paper(0xEC, 0xEF, 0xF1), white(0xFA, 0xFA, 0xFA);
    std::vector<Shape> s;
    auto rect = [&](double x, double y, double w, double h, double r, QColor fill,
                    QColor stroke = {}, double width = 0) {
        s.push_back({Shape::Rect, QPolygonF{QPointF(x, y), QPointF(w, h)}, r, fill, stroke, width});
    };
    auto circle = [&](double x, double y, double r, QColor fill, QColor stroke = {},
                      double width = 0) {
        s.push_back(
            {Shape::Circle, QPolygonF{QPointF(x, y), QPointF(r, 0)}, 0, fill, stroke, width});
    };
    rect(4, 10, 56, 44, 4, dark, black, 1.5);
    rect(8, 14, 48, 26, 2, paper);
    rect(18, 19, 28, 11, 5.5, grey);
    for (double x : {25.0, 39.0}) {
        circle(x, 24.5, 4, white, black, 0.8);
        circle(x, 24.5, 1.4, dark);
    }
    rect(8, 33, 48, 5, 0, black);
    const QColor stripes[] = {QColor(0xD8, 0x00, 0x00), QColor(0xD8, 0xD8, 0x00),
                              QColor(0x00, 0xD8, 0x00), QColor(0x00, 0xD8, 0xD8)};
    for (int i = 0; i < 4; ++i) {
        const double x = 34 + 4 * i;
        s.push_back(
            {Shape::Polygon,
             QPolygonF{QPointF(x, 38), QPointF(x + 4, 38), QPointF(x + 9, 33), QPointF(x + 5, 33)},
             0, stripes[i], QColor(), 0});
    }
    s.push_back({Shape::Polygon,
                 QPolygonF{QPointF(16, 54), QPointF(20, 45), QPointF(44, 45), QPointF(48, 54)}, 0,
                 grey, QColor(), 0});
    for (double x : {24.0, 40.0})
        circle(x, 50, 1.6, black);
    return s;
}

QString Hex(const QColor& c) {
    return c.name(QColor::HexRgb);
}

QString Svg(const std::vector<Shape>& shapes) {
    QString out =
        QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"64\" height=\"64\" "
                       "viewBox=\"0 0 64 64\">\n");
    for (const Shape& s : shapes) {
        QString paint = QStringLiteral("fill=\"%1\"").arg(Hex(s.fill));
        if (s.stroke.isValid())
            paint += QStringLiteral(" stroke=\"%1\" stroke-width=\"%2\"")
                         .arg(Hex(s.stroke))
                         .arg(s.strokeWidth);
        switch (s.kind) {
        case Shape::Rect:
            out += QStringLiteral(
                       "  <rect x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\" rx=\"%5\" %6/>\n")
                       .arg(s.points[0].x())
                       .arg(s.points[0].y())
                       .arg(s.points[1].x())
                       .arg(s.points[1].y())
                       .arg(s.radius)
                       .arg(paint);
            break;
        case Shape::Circle:
            out += QStringLiteral("  <circle cx=\"%1\" cy=\"%2\" r=\"%3\" %4/>\n")
                       .arg(s.points[0].x())
                       .arg(s.points[0].y())
                       .arg(s.points[1].x())
                       .arg(paint);
            break;
        case Shape::Polygon: {
            QStringList pts;
            for (const QPointF& p : s.points)
                pts << QStringLiteral("%1,%2").arg(p.x()).arg(p.y());
            out += QStringLiteral("  <polygon points=\"%1\" %2/>\n").arg(pts.join(' '), paint);
            break;
        }
        }
    }
    return out + QStringLiteral("</svg>\n");
}

QImage Png(const std::vector<Shape>& shapes, int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size / kSide, size / kSide);
    for (const Shape& s : shapes) {
        p.setBrush(s.fill);
        p.setPen(s.stroke.isValid() ? QPen(s.stroke, s.strokeWidth) : QPen(Qt::NoPen));
        switch (s.kind) {
        case Shape::Rect:
            p.drawRoundedRect(QRectF(s.points[0], QSizeF(s.points[1].x(), s.points[1].y())),
                              s.radius, s.radius);
            break;
        case Shape::Circle:
            p.drawEllipse(s.points[0], s.points[1].x(), s.points[1].x());
            break;
        case Shape::Polygon:
            p.drawPolygon(s.points);
            break;
        }
    }
    return image;
}

} // namespace

// make_icon FOLDER: FOLDER/scalable/apps/cintal.svg and FOLDER/NxN/apps/cintal.png.
int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "Uso: make_icon CARPETA\n");
        return 2;
    }
    const QDir root(QString::fromLocal8Bit(argv[1]));
    const std::vector<Shape> shapes = Cassette();
    const QString svgDir = root.filePath(QStringLiteral("scalable/apps"));
    QDir().mkpath(svgDir);
    QFile svg(QDir(svgDir).filePath(QStringLiteral("cintal.svg")));
    if (!svg.open(QIODevice::WriteOnly) || svg.write(Svg(shapes).toUtf8()) < 0) return 1;
    for (int size : {16, 24, 32, 48, 64, 128, 256}) {
        const QString dir = root.filePath(QStringLiteral("%1x%1/apps").arg(size));
        QDir().mkpath(dir);
        if (!Png(shapes, size).save(QDir(dir).filePath(QStringLiteral("cintal.png")))) return 1;
    }
    return 0;
}
