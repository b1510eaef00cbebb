#include "Inlays.h"

#include "Filler.h"

#include <QBuffer>
#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QString>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace cintal::demo {

namespace {

// The Spectrum's colours, plain and BRIGHT, for the bars a monitor shows.
QRgb SpectrumRgb(int colour, bool bright) {
    const int on = bright ? 0xFF : 0xD7;
    return qRgb(colour & 2 ? on : 0, colour & 4 ? on : 0, colour & 1 ? on : 0);
}

// The engine's own colours, as the main window shows a screen.
QImage ScreenImage(const Screen& s) {
    const std::vector<std::uint32_t> pixels = ScreenPixels(s.Encode());
    QImage img(kWidth, kHeight, QImage::Format_RGB32);
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x)
            img.setPixel(x, y, pixels[static_cast<std::size_t>(y * kWidth + x)]);
    return img;
}

QFont Font(int pixels, bool bold = false, bool italic = false) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(pixels);
    font.setBold(bold);
    font.setItalic(italic);
    return font;
}

QString Q(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

// Our lettering as a path, each font pixel a square: outlined and filled like
// the logos of the time.
QPainterPath LetteringPath(std::string_view keys, QPointF at, qreal pixel) {
    QPainterPath path;
    for (std::size_t k = 0; k < keys.size(); ++k) {
        const Glyph* g = FindGlyph(keys[k]);
        for (int gy = 0; gy < 8; ++gy)
            for (int gx = 0; gx < 8; ++gx)
                if (GlyphBit(g, gx, gy))
                    path.addRect(QRectF(at.x() + (static_cast<int>(k) * 8 + gx) * pixel,
                                        at.y() + gy * pixel, pixel, pixel));
    }
    return path.simplified();
}

// The title across the box, as large as it fits, on one line or two.
void Logo(QPainter& p, const QRectF& box, const std::string& title, const QColor& top,
          const QColor& bottom) {
    const std::string keys = Lettering(title);
    std::vector<std::string> lines = Wrap(keys, 12);
    if (lines.empty()) lines = {keys};
    std::size_t longest = 1;
    for (const auto& l : lines)
        longest = std::max(longest, l.size());
    const qreal pixel = std::min(box.width() / (longest * 8.0),
                                 box.height() / (static_cast<qreal>(lines.size()) * 8.0));
    const qreal height = static_cast<qreal>(lines.size()) * 8 * pixel;
    QLinearGradient fill(0, box.center().y() - height / 2, 0, box.center().y() + height / 2);
    fill.setColorAt(0, top);
    fill.setColorAt(1, bottom);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const qreal width = TextWidth(lines[i], 1) * pixel;
        const QPointF at(box.center().x() - width / 2,
                         box.center().y() - height / 2 + static_cast<qreal>(i) * 8 * pixel);
        const QPainterPath path = LetteringPath(lines[i], at, pixel);
        p.fillPath(path.translated(pixel * 0.45, pixel * 0.45), QColor(0, 0, 0, 170));
        p.strokePath(path,
                     QPen(Qt::black, pixel * 0.5, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        p.fillPath(path, fill);
    }
}

QColor Mix(const QColor& a, const QColor& b, int percent) {
    auto m = [&](int x, int y) { return x + (y - x) * percent / 100; };
    return QColor(m(a.red(), b.red()), m(a.green(), b.green()), m(a.blue(), b.blue()));
}

// Jagged peaks along the base line of the box, in one colour.
void Mountains(QPainter& p, Filler& f, const QRectF& r, qreal base, qreal rise, const QColor& c) {
    QPolygonF hill;
    hill << QPointF(r.left(), r.bottom());
    for (qreal x = r.left(); x <= r.right() + 40; x += 40)
        hill << QPointF(x, base - rise * Between(f, 30, 100) / 100.0)
             << QPointF(x + 20, base - rise * Between(f, 10, 50) / 100.0);
    hill << QPointF(r.right(), r.bottom());
    p.setPen(Qt::NoPen);
    p.setBrush(c);
    p.drawPolygon(hill);
}

// The painting on the front of the box: sky, the scene's motif, the title.
void FrontArt(QPainter& p, const QRectF& r, const Art& art) {
    Filler f(art.title + " cover");
    p.save();
    p.setClipRect(r);
    p.setRenderHint(QPainter::Antialiasing);
    struct Sky {
        QColor top, bottom;
    };
    Sky sky{QColor(40, 20, 90), QColor(250, 140, 40)};
    switch (art.scene) {
    case Scene::Space:
    case Scene::Music:
        sky = {QColor(0, 0, 20), QColor(60, 20, 110)};
        break;
    case Scene::Castle:
    case Scene::Cavern:
        sky = {QColor(20, 0, 40), QColor(170, 40, 30)};
        break;
    case Scene::Maze:
        sky = {QColor(30, 60, 40), QColor(230, 190, 90)};
        break;
    case Scene::City:
    case Scene::Storm:
        sky = {QColor(10, 10, 60), QColor(200, 60, 120)};
        break;
    case Scene::Sea:
    case Scene::Battle:
        sky = {QColor(60, 140, 230), QColor(250, 220, 170)};
        break;
    case Scene::Computer:
        sky = {QColor(10, 40, 80), QColor(20, 120, 140)};
        break;
    default:
        break;
    }
    QLinearGradient g(r.topLeft(), r.bottomLeft());
    g.setColorAt(0, sky.top);
    g.setColorAt(0.75, sky.bottom);
    g.setColorAt(1, sky.bottom);
    p.fillRect(r, g);

    const qreal w = r.width(), h = r.height();
    const QPointF sun(r.left() + w * Between(f, 20, 80) / 100.0, r.top() + h * 0.42);
    auto glow = [&](QPointF c, qreal radius, const QColor& inner, const QColor& outer) {
        QRadialGradient rg(c, radius, c - QPointF(radius / 3, radius / 3));
        rg.setColorAt(0, inner);
        rg.setColorAt(1, outer);
        p.setPen(Qt::NoPen);
        p.setBrush(rg);
        p.drawEllipse(c, radius, radius);
    };
    auto stars = [&](int n) {
        p.setPen(Qt::NoPen);
        for (int i = 0; i < n; ++i) {
            p.setBrush(QColor(255, 255, 255, Between(f, 90, 255)));
            p.drawEllipse(QPointF(r.left() + Between(f, 0, 1000) * w / 1000,
                                  r.top() + Between(f, 0, 1000) * h / 1000),
                          Between(f, 5, 20) / 10.0, Between(f, 5, 20) / 10.0);
        }
    };
    switch (art.scene) {
    case Scene::Space: {
        stars(160);
        // The ring's far half goes behind the planet, its near half in front.
        const qreal pr = w * 0.22;
        const QRectF ring(sun.x() - pr * 1.7, sun.y() - pr * 0.35, pr * 3.4, pr * 0.7);
        const QPen band(QColor(240, 220, 160, 200), pr * 0.08, Qt::SolidLine, Qt::FlatCap);
        p.setBrush(Qt::NoBrush);
        p.setPen(band);
        p.drawArc(ring, 0, 180 * 16);
        glow(sun, pr, QColor(240, 120, 90), QColor(90, 10, 60));
        p.setBrush(Qt::NoBrush);
        p.setPen(band);
        p.drawArc(ring, 180 * 16, 180 * 16);
        QPolygonF ship;
        const QPointF c(r.left() + w * 0.7, r.top() + h * 0.66);
        ship << c + QPointF(w * 0.14, 0) << c + QPointF(-w * 0.08, -h * 0.05)
             << c + QPointF(-w * 0.04, 0) << c + QPointF(-w * 0.08, h * 0.05);
        p.setPen(QPen(QColor(20, 20, 40), 2));
        p.setBrush(QColor(200, 210, 230));
        p.drawPolygon(ship);
        break;
    }
    case Scene::Music: {
        stars(60);
        // A wall of level meters, and notes floating over it.
        static const QColor kLeds[] = {QColor(40, 220, 90), QColor(250, 220, 40),
                                       QColor(240, 60, 50)};
        const int bars = 14;
        const qreal bw = w / bars, floor = r.top() + h * 0.86, unit = h * 0.035;
        int level = 8;
        for (int b = 0; b < bars; ++b) {
            level = std::clamp(level + Between(f, -3, 3), 2, 14);
            for (int k = 0; k < level; ++k)
                p.fillRect(QRectF(r.left() + b * bw + 3, floor - (k + 1) * unit, bw - 6, unit - 3),
                           kLeds[k < 7    ? 0
                                 : k < 11 ? 1
                                          : 2]);
        }
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(255, 120, 220));
        for (int n = 0; n < 3; ++n) {
            const QPointF at(r.left() + w * (0.14 + n * 0.28),
                             r.top() + h * (0.56 + (n % 2) * 0.06));
            const qreal s = std::min(w, h) * 0.03;
            p.drawEllipse(at, s * 1.2, s);
            p.drawEllipse(at + QPointF(s * 4, -s), s * 1.2, s);
            p.drawRect(QRectF(at.x() + s, at.y() - s * 5, s * 0.35, s * 5));
            p.drawRect(QRectF(at.x() + s * 5, at.y() - s * 6, s * 0.35, s * 5));
            p.drawPolygon(QPolygonF({at + QPointF(s, -s * 5), at + QPointF(s * 5.35, -s * 6),
                                     at + QPointF(s * 5.35, -s * 5), at + QPointF(s, -s * 4)}));
        }
        break;
    }
    case Scene::Maze: {
        // A stepped temple in the jungle, its door open.
        glow(QPointF(r.left() + w * 0.25, r.top() + h * 0.4), w * 0.12, QColor(255, 250, 200),
             QColor(250, 190, 70));
        Mountains(p, f, r, r.top() + h * 0.72, h * 0.18, QColor(20, 70, 40));
        const qreal base = r.top() + h * 0.8, cx = r.left() + w * 0.55;
        for (int step = 0; step < 6; ++step) {
            const qreal half = w * (0.34 - step * 0.05), top = base - h * 0.06 * (step + 1);
            p.fillRect(QRectF(cx - half, top, half * 2, h * 0.06),
                       Mix(QColor(150, 130, 90), QColor(90, 70, 50), step * 15));
        }
        p.fillRect(QRectF(cx - w * 0.04, base - h * 0.12, w * 0.08, h * 0.12), QColor(20, 10, 5));
        p.fillRect(QRectF(r.left(), base, w, r.bottom() - base), QColor(15, 50, 25));
        break;
    }
    case Scene::Castle:
    case Scene::Cavern: {
        glow(QPointF(r.left() + w * 0.84, r.top() + h * 0.38), w * 0.08, QColor(255, 250, 220),
             QColor(230, 200, 140));
        Mountains(p, f, r, r.top() + h * 0.7, h * 0.2, QColor(60, 20, 50));
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(15, 5, 20));
        const qreal base = r.top() + h * 0.78, cx = r.left() + w * 0.5;
        p.drawRect(QRectF(cx - w * 0.25, base - h * 0.16, w * 0.5, h * 0.16));
        for (int t = 0; t < 3; ++t) {
            const qreal tx = cx + w * (t * 0.22 - 0.27), tw = w * 0.1;
            const qreal th = h * (t == 1 ? 0.36 : 0.26);
            p.drawRect(QRectF(tx, base - th, tw, th));
            QPolygonF roof;
            roof << QPointF(tx - tw * 0.2, base - th) << QPointF(tx + tw * 1.2, base - th)
                 << QPointF(tx + tw / 2, base - th - tw * 1.1);
            p.drawPolygon(roof);
            p.setBrush(QColor(255, 210, 60));
            p.drawRect(QRectF(tx + tw * 0.4, base - th * 0.7, tw * 0.2, th * 0.12));
            p.setBrush(QColor(15, 5, 20));
        }
        p.fillRect(QRectF(r.left(), base, w, r.bottom() - base), QColor(25, 35, 20));
        break;
    }
    case Scene::City:
    case Scene::Storm: {
        glow(sun, w * 0.16, QColor(255, 230, 120), QColor(240, 90, 60));
        for (qreal x = r.left(); x < r.right();) {
            const qreal bw = w * Between(f, 8, 16) / 100.0, bh = h * Between(f, 25, 55) / 100.0;
            const QRectF b(x, r.bottom() - h * 0.12 - bh, bw - 3, bh + h * 0.12);
            p.fillRect(b, QColor(20, 15, 40));
            for (qreal wy = b.top() + 8; wy < b.bottom() - 12; wy += 12)
                for (qreal wx = b.left() + 5; wx < b.right() - 6; wx += 10)
                    if (f.Next() % 3 == 0) p.fillRect(QRectF(wx, wy, 5, 6), QColor(255, 220, 90));
            x += bw;
        }
        break;
    }
    case Scene::Sea:
    case Scene::Battle: {
        glow(sun, w * 0.12, QColor(255, 250, 200), QColor(250, 170, 60));
        const qreal sea = r.top() + h * 0.58;
        QLinearGradient water(0, sea, 0, r.bottom());
        water.setColorAt(0, QColor(30, 90, 160));
        water.setColorAt(1, QColor(5, 20, 60));
        p.fillRect(QRectF(r.left(), sea, w, r.bottom() - sea), water);
        p.setPen(QPen(QColor(200, 230, 255, 160), 1.5));
        for (int i = 0; i < 40; ++i) {
            const qreal y = sea + (r.bottom() - sea) * Between(f, 2, 100) / 100.0;
            const qreal x = r.left() + w * Between(f, 0, 95) / 100.0;
            p.drawLine(QPointF(x, y), QPointF(x + w * (y - sea) / h * 0.2 + 4, y));
        }
        const int ships = art.scene == Scene::Battle ? 2 : 1;
        for (int k = 0; k < ships; ++k) {
            const qreal s = w * (0.3 - k * 0.1), x = r.left() + w * (0.2 + k * 0.45);
            const qreal y = sea + h * (0.06 - k * 0.03);
            p.setPen(Qt::NoPen);
            p.setBrush(QColor(50, 25, 15));
            QPolygonF hull;
            hull << QPointF(x, y - s * 0.18) << QPointF(x + s, y - s * 0.18)
                 << QPointF(x + s * 0.85, y) << QPointF(x + s * 0.12, y);
            p.drawPolygon(hull);
            p.fillRect(QRectF(x + s * 0.38, y - s * 0.95, s * 0.03, s * 0.8), QColor(50, 25, 15));
            p.setBrush(QColor(245, 240, 225));
            QPolygonF sail;
            sail << QPointF(x + s * 0.42, y - s * 0.9) << QPointF(x + s * 0.42, y - s * 0.25)
                 << QPointF(x + s * 0.8, y - s * 0.25);
            p.drawPolygon(sail);
            sail.clear();
            sail << QPointF(x + s * 0.36, y - s * 0.8) << QPointF(x + s * 0.36, y - s * 0.25)
                 << QPointF(x + s * 0.1, y - s * 0.25);
            p.drawPolygon(sail);
        }
        break;
    }
    case Scene::Computer: {
        const QRectF monitor(r.left() + w * 0.18, r.top() + h * 0.3, w * 0.64, h * 0.36);
        p.setPen(QPen(QColor(20, 20, 20), 3));
        p.setBrush(QColor(60, 60, 70));
        p.drawRoundedRect(monitor, 12, 12);
        const QRectF glass = monitor.adjusted(w * 0.04, w * 0.04, -w * 0.04, -w * 0.04);
        p.fillRect(glass, QColor(5, 25, 10));
        if (art.monitor.empty())
            for (int c = 0; c < 8; ++c)
                p.fillRect(
                    QRectF(glass.left() + glass.width() * c / 8, glass.top(), glass.width() / 8 + 1,
                           glass.height()),
                    SpectrumRgb(7 - c,
                                true)); // the colours in the order of their numbers, downwards
        const qreal line = glass.height() / 7;
        for (std::size_t i = 0; i < art.monitor.size() && i < 6; ++i) {
            const std::string keys = Lettering(art.monitor[i]);
            const qreal px = std::min(line / 8 * 0.8, glass.width() / 22 / 8);
            p.fillPath(LetteringPath(keys, glass.topLeft() + QPointF(8, 6 + line * i), px),
                       QColor(80, 255, 120));
        }
        p.fillRect(QRectF(r.left() + w * 0.14, r.top() + h * 0.72, w * 0.72, h * 0.08),
                   QColor(30, 30, 35));
        for (int k = 0; k < 12; ++k)
            p.fillRect(
                QRectF(r.left() + w * (0.16 + k * 0.057), r.top() + h * 0.735, w * 0.045, h * 0.05),
                QColor(90, 90, 100));
        break;
    }
    default: {
        glow(sun, w * 0.14, QColor(255, 250, 190), QColor(255, 170, 40));
        Mountains(p, f, r, r.top() + h * 0.68, h * 0.28, Mix(sky.top, sky.bottom, 45));
        Mountains(p, f, r, r.top() + h * 0.8, h * 0.2, Mix(sky.top, QColor(0, 0, 0), 40));
        break;
    }
    }

    Logo(p, QRectF(r.left() + w * 0.06, r.top() + h * 0.06, w * 0.88, h * 0.22), art.title,
         QColor(255, 240, 90), QColor(230, 40, 20));

    // The publisher's badge, and the machine band along the foot.
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF band(r.left(), r.bottom() - h * 0.08, w, h * 0.08);
    p.fillRect(band, Qt::black);
    static const QColor kStripes[] = {QColor(215, 0, 0), QColor(240, 200, 0), QColor(0, 180, 0),
                                      QColor(0, 180, 220)};
    for (int i = 0; i < 4; ++i) {
        QPolygonF s;
        const qreal x = band.right() - band.height() * (3.2 - i * 0.6);
        s << QPointF(x, band.bottom()) << QPointF(x + band.height() * 0.6, band.bottom())
          << QPointF(x + band.height() * 1.4, band.top())
          << QPointF(x + band.height() * 0.8, band.top());
        p.setPen(Qt::NoPen);
        p.setBrush(kStripes[i]);
        p.drawPolygon(s);
    }
    // The machine's name, as large as the band allows before the stripes.
    const QString machine = QStringLiteral("ZX SPECTRUM ") + Q(art.machine);
    const qreal room = band.width() - band.height() * 3.6;
    int size = static_cast<int>(band.height() * 0.45);
    while (size > 8 && QFontMetricsF(Font(size, true)).horizontalAdvance(machine) > room)
        --size;
    p.setPen(Qt::white);
    p.setFont(Font(size, true));
    p.drawText(band.adjusted(band.height() * 0.4, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
               machine);
    const QFont badge = Font(static_cast<int>(h * 0.035), true, true);
    const QRectF name = QFontMetricsF(badge).boundingRect(Q(art.publisher));
    const QRectF plate(r.left() + w * 0.05, band.top() - h * 0.09, name.width() + 24,
                       name.height() + 10);
    p.setPen(QPen(Qt::white, 2));
    p.setBrush(QColor(180, 20, 30));
    p.drawRoundedRect(plate, 6, 6);
    p.setFont(badge);
    p.drawText(plate, Qt::AlignCenter, Q(art.publisher));
    p.restore();
}

} // namespace

Bytes Jpeg(const QImage& img) {
    QByteArray data;
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    if (!img.save(&buffer, "JPG", 88)) return {};
    return Bytes(data.constData(), static_cast<std::size_t>(data.size()));
}

QImage InlayOf(const Art& art, InlayShape shape) {
    const QSize size = shape == InlayShape::Unfolded ? QSize(900, 600)
                       : shape == InlayShape::Front  ? QSize(460, 700)
                                                     : QSize(640, 480);
    QImage img(size, QImage::Format_RGB32);
    img.fill(Qt::white);
    QPainter p(&img);
    if (shape != InlayShape::Unfolded) {
        FrontArt(p, QRectF(QPointF(0, 0), QSizeF(size)), art);
        return img;
    }
    // The back: a screen shot, the story, how to load it.
    const QRectF back(0, 0, 330, 600), spine(330, 0, 64, 600), front(394, 0, 506, 600);
    p.fillRect(back, QColor(20, 20, 35));
    p.setPen(QColor(255, 220, 80));
    p.setFont(Font(22, true));
    p.drawText(QRectF(20, 14, 290, 34), Qt::AlignCenter, Q(art.title));
    p.fillRect(QRectF(33, 56, 264, 200), Qt::white);
    p.drawImage(QRectF(37, 60, 256, 192), ScreenImage(LoadingScreenOf(art)));
    p.setPen(QColor(230, 230, 230));
    p.setFont(Font(13));
    p.drawText(QRectF(22, 272, 286, 200), Qt::TextWordWrap | Qt::AlignJustify, Q(art.blurb));
    p.setPen(QColor(120, 220, 255));
    p.setFont(Font(12, true));
    p.drawText(QRectF(22, 480, 286, 60), Qt::TextWordWrap,
               QStringLiteral("CARGA: teclee LOAD \"\" y pulse ENTER. Ponga en marcha el casete."));
    p.setPen(QColor(160, 160, 170));
    p.setFont(Font(10));
    p.drawText(QRectF(22, 545, 286, 40), Qt::TextWordWrap,
               QStringLiteral("© %1 %2. Prohibida la copia, el alquiler y el préstamo de este "
                              "programa.")
                   .arg(Q(art.year), Q(art.publisher)));
    // The spine: the title read from bottom to top.
    p.fillRect(spine, QColor(180, 20, 30));
    p.save();
    p.translate(spine.center());
    p.rotate(-90);
    Logo(p, QRectF(-280, -24, 440, 48), art.title, QColor(255, 255, 255), QColor(255, 220, 120));
    p.setPen(Qt::white);
    p.setFont(Font(14, true));
    p.drawText(QRectF(170, -20, 110, 40), Qt::AlignCenter, Q(art.year));
    p.restore();
    FrontArt(p, front, art);
    return img;
}

QImage MapOf(const Art& art, MapKind kind, QSize size) {
    Filler f(art.title + " map");
    QImage img(size, QImage::Format_RGB32);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    const qreal w = size.width(), h = size.height();
    const QRectF heading(w * 0.2, 8, w * 0.6, h * 0.1);
    if (kind == MapKind::Track) {
        QLinearGradient sand(0, 0, 0, h);
        sand.setColorAt(0, QColor(240, 210, 140));
        sand.setColorAt(1, QColor(210, 160, 90));
        p.fillRect(img.rect(), sand);
        p.setPen(Qt::NoPen);
        for (int i = 0; i < 400; ++i) {
            p.setBrush(QColor(170, 120, 60, 90));
            p.drawEllipse(
                QPointF(Between(f, 0, static_cast<int>(w)), Between(f, 0, static_cast<int>(h))),
                1.5, 1.5);
        }
        // The course: points around an ellipse pushed in and out, joined smoothly.
        const QPointF c(w / 2, h * 0.56);
        std::vector<QPointF> pts;
        static constexpr int kCos[] = {100,  97,  87,  71,  50,  26,  0, -26, -50, -71, -87, -97,
                                       -100, -97, -87, -71, -50, -26, 0, 26,  50,  71,  87,  97};
        for (int i = 0; i < 24; ++i) {
            const int k = Between(f, 70, 100);
            pts.push_back(c + QPointF(w * 0.42 * kCos[i] * k / 10000.0,
                                      h * 0.34 * kCos[(i + 18) % 24] * k / 10000.0));
        }
        QPainterPath course;
        course.moveTo((pts[0] + pts[1]) / 2);
        for (std::size_t i = 1; i <= pts.size(); ++i)
            course.quadTo(pts[i % pts.size()],
                          (pts[i % pts.size()] + pts[(i + 1) % pts.size()]) / 2);
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(QColor(200, 30, 30), 30, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        p.drawPath(course);
        p.setPen(QPen(QColor(70, 70, 75), 24, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        p.drawPath(course);
        QPen centre(Qt::white, 2, Qt::CustomDashLine);
        centre.setDashPattern({6, 6});
        p.setPen(centre);
        p.drawPath(course);
        p.setFont(Font(16, true));
        for (int i = 0; i < 6; ++i) {
            const QPointF at = pts[static_cast<std::size_t>(i * 4 + 2)];
            p.setPen(QPen(Qt::black, 2));
            p.setBrush(QColor(255, 230, 0));
            p.drawEllipse(at, 15, 15);
            p.drawText(QRectF(at.x() - 15, at.y() - 15, 30, 30), Qt::AlignCenter,
                       QString::number(i + 1));
        }
        const QPointF start = (pts[0] + pts[1]) / 2;
        for (int i = 0; i < 8; ++i)
            p.fillRect(QRectF(start.x() - 16 + (i % 4) * 8, start.y() - 8 + (i / 4) * 8, 8, 8),
                       (i + i / 4) % 2 ? Qt::black : Qt::white);
        p.setPen(Qt::black);
        p.setFont(Font(14, true));
        p.drawText(QRectF(w * 0.02, h * 0.92, w * 0.96, h * 0.07), Qt::AlignRight,
                   QStringLiteral("Cuadros: salida y meta. Círculos: controles de paso."));
        Logo(p, heading, art.title, QColor(255, 255, 255), QColor(240, 160, 40));
        return img;
    }

    p.fillRect(img.rect(), QColor(30, 34, 48));
    p.setPen(QPen(QColor(45, 50, 70), 1));
    for (int x = 0; x < size.width(); x += 16)
        p.drawLine(x, 0, x, size.height());
    for (int y = 0; y < size.height(); y += 16)
        p.drawLine(0, y, size.width(), y);
    Logo(p, heading, "MAPA DE " + art.title, QColor(255, 255, 255), QColor(120, 220, 255));

    const int cols = static_cast<int>(w / 150), rows = static_cast<int>((h * 0.78) / 110);
    const qreal cw = (w - 40) / cols, ch = (h * 0.78) / rows, top = h * 0.14;
    auto room = [&](int i, int j) {
        return QRectF(20 + i * cw + 8, top + j * ch + 8, cw - 16, ch - 16);
    };
    // Ways between rooms: a tree over the grid, so that every room is reached.
    std::vector<int> joined(static_cast<std::size_t>(cols * rows), 0);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(200, 170, 90));
    for (int j = 0; j < rows; ++j)
        for (int i = 0; i < cols; ++i) {
            const bool east = i < cols - 1, south = j < rows - 1;
            const bool goEast = east && (!south || f.Next() % 2);
            if (goEast || (east && f.Next() % 4 == 0)) {
                const QRectF a = room(i, j);
                p.drawRect(QRectF(a.right() - 2, a.center().y() - 6, 20, 12));
            }
            if ((south && !goEast) || (south && f.Next() % 5 == 0)) {
                const QRectF a = room(i, j);
                p.drawRect(QRectF(a.center().x() - 6, a.bottom() - 2, 12, 20));
            }
        }
    static const QColor kWalls[] = {QColor(0, 200, 200), QColor(220, 0, 220), QColor(0, 200, 0),
                                    QColor(220, 200, 0), QColor(220, 60, 40)};
    p.setFont(Font(11, true));
    for (int j = 0; j < rows; ++j)
        for (int i = 0; i < cols; ++i) {
            const QRectF a = room(i, j);
            const QColor wall = kWalls[f.Next() % 5];
            p.setPen(QPen(wall, 3));
            p.setBrush(Qt::black);
            p.drawRect(a);
            // Floors to walk on and ladders between them.
            p.setPen(Qt::NoPen);
            p.setBrush(wall.darker(130));
            const int floors = Between(f, 1, 3);
            for (int k = 1; k <= floors; ++k) {
                const qreal y = a.top() + a.height() * k / (floors + 1);
                const qreal x0 = a.left() + a.width() * Between(f, 0, 30) / 100.0;
                p.drawRect(QRectF(x0, y, a.width() * Between(f, 40, 70) / 100.0, 4));
                if (k < floors || f.Next() % 2) {
                    const qreal lx = x0 + 12;
                    p.fillRect(QRectF(lx, y, 2, a.height() / (floors + 1)), QColor(230, 230, 230));
                    p.fillRect(QRectF(lx + 10, y, 2, a.height() / (floors + 1)),
                               QColor(230, 230, 230));
                    for (qreal ry = y + 5; ry < y + a.height() / (floors + 1); ry += 6)
                        p.fillRect(QRectF(lx, ry, 12, 1.5), QColor(230, 230, 230));
                }
            }
            p.setBrush(QColor(255, 60, 60));
            if (f.Next() % 3 == 0)
                p.drawEllipse(
                    QPointF(a.left() + a.width() * Between(f, 50, 85) / 100.0, a.bottom() - 10), 5,
                    5);
            if (f.Next() % 4 == 0) {
                p.setBrush(QColor(255, 230, 0));
                const QPointF k(a.left() + a.width() * Between(f, 15, 80) / 100.0, a.top() + 14);
                p.drawPolygon(QPolygonF({k + QPointF(0, -6), k + QPointF(5, 0), k + QPointF(0, 6),
                                         k + QPointF(-5, 0)}));
            }
            p.setPen(QColor(200, 200, 200));
            p.drawText(a.adjusted(4, 2, -4, -2), Qt::AlignRight | Qt::AlignTop,
                       QString::number(j * cols + i + 1));
        }
    p.setFont(Font(13, true));
    p.setPen(QColor(120, 255, 120));
    p.drawText(room(0, 0).adjusted(6, 0, 0, -4), Qt::AlignLeft | Qt::AlignBottom,
               QStringLiteral("INICIO"));
    p.setPen(QColor(255, 120, 120));
    p.drawText(room(cols - 1, rows - 1).adjusted(6, 0, 0, -4), Qt::AlignLeft | Qt::AlignBottom,
               QStringLiteral("FIN"));
    p.setFont(Font(13));
    p.setPen(QColor(230, 230, 230));
    p.drawText(QRectF(20, h - 30, w - 40, 24), Qt::AlignLeft | Qt::AlignVCenter,
               QStringLiteral("◆ Llave     ● Guardián     Los números son los de las "
                              "pantallas del juego."));
    return img;
}

QImage CodeSheetOf(const Art& art, CodeKind kind) {
    Filler f(art.title + " codes");
    const QSize size(520, 780);
    QImage img(size, QImage::Format_RGB32);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(img.rect(), QColor(70, 12, 14));
    p.setPen(QPen(QColor(86, 20, 22), 1));
    for (int d = -size.height(); d < size.width(); d += 6)
        p.drawLine(d, 0, d + size.height(), size.height());
    Logo(p, QRectF(30, 18, 460, 70), art.title, QColor(255, 200, 120), QColor(240, 90, 40));
    p.setPen(QColor(250, 200, 180));
    p.setFont(Font(20, true));
    p.drawText(QRectF(0, 92, 520, 30), Qt::AlignCenter, QStringLiteral("HOJA DE CÓDIGOS"));
    p.setFont(Font(12));
    p.drawText(QRectF(30, 124, 460, 48), Qt::TextWordWrap | Qt::AlignCenter,
               QStringLiteral("Al empezar, el programa le pedirá el código de una casilla: "
                              "búsquela por su letra y su número y teclee lo que ve en ella."));
    const int cols = 8, rows = 16;
    const qreal x0 = 60, y0 = 182, cw = 54, ch = 33;
    p.setFont(Font(14, true));
    for (int i = 0; i < cols; ++i) {
        p.fillRect(QRectF(x0 + i * cw, y0, cw - 2, 24), QColor(40, 5, 8));
        p.setPen(QColor(255, 220, 200));
        p.drawText(QRectF(x0 + i * cw, y0, cw - 2, 24), Qt::AlignCenter,
                   QString(QLatin1Char(static_cast<char>('A' + i))));
    }
    static const char kSymbols[] = "ABCDEFHKMNPRSTWXYZ2345679";
    static const QColor kInks[] = {QColor(220, 30, 30), QColor(240, 210, 0),   QColor(0, 160, 60),
                                   QColor(30, 90, 220), QColor(240, 240, 240), QColor(200, 0, 200)};
    for (int j = 0; j < rows; ++j) {
        const qreal y = y0 + 26 + j * ch;
        p.fillRect(QRectF(x0 - 36, y, 34, ch - 2), QColor(40, 5, 8));
        p.setPen(QColor(255, 220, 200));
        p.setFont(Font(14, true));
        p.drawText(QRectF(x0 - 36, y, 34, ch - 2), Qt::AlignCenter, QString::number(j + 1));
        for (int i = 0; i < cols; ++i) {
            const QRectF cell(x0 + i * cw, y, cw - 2, ch - 2);
            p.fillRect(cell, (i + j) % 2 ? QColor(150, 70, 70) : QColor(135, 60, 62));
            if (kind == CodeKind::Letters) {
                QString code;
                for (int k = 0; k < 4; ++k)
                    code += QLatin1Char(kSymbols[f.Next() % (sizeof kSymbols - 1)]);
                p.setPen(QColor(45, 5, 8));
                p.setFont(Font(13, true));
                p.drawText(cell, Qt::AlignCenter, code);
            } else {
                for (int k = 0; k < 3; ++k) {
                    p.setPen(QPen(QColor(30, 0, 0), 1));
                    p.setBrush(kInks[f.Next() % 6]);
                    p.drawRect(QRectF(cell.left() + 6 + k * 15, cell.top() + 9, 11, 12));
                }
            }
        }
    }
    p.setPen(QColor(220, 170, 160));
    p.setFont(Font(11));
    p.drawText(QRectF(30, 740, 460, 30), Qt::TextWordWrap | Qt::AlignCenter,
               QStringLiteral("© %1 %2. Sin esta hoja no podrá jugar: no la pierda.")
                   .arg(Q(art.year), Q(art.publisher)));
    return img;
}

} // namespace cintal::demo
