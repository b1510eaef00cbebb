#include "widgets/Pictures.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <cmath>
#include <functional>
#include <initializer_list>
#include <utility>

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

// A closed outline through the corners given, in order.
QPainterPath Outline(const QPolygonF& corners) {
    QPainterPath path;
    path.addPolygon(corners);
    path.closeSubpath();
    return path;
}

// count corners evenly around centre from the angle start, each at the
// distance radius gives for its number.
QPolygonF Around(QPointF centre, int count, double start,
                 const std::function<double(int)>& radius) {
    QPolygonF corners;
    for (int i = 0; i < count; ++i) {
        const double a = start + i * 2 * M_PI / count;
        corners << centre + radius(i) * QPointF(std::cos(a), std::sin(a));
    }
    return corners;
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

// Text fitted into a box at the size the icon is drawn, so that the glyphs are
// hinted for real pixels, and squeezed sideways when a code is too wide:
// "128K" keeps the height of "SP".
void FitText(QPainter& p, const QRectF& box, const QString& text, const QColor& colour,
             qreal height) {
    const QTransform world = p.transform();
    const QRectF dev = world.mapRect(box);
    QFont f(QStringLiteral("DejaVu Sans"));
    f.setBold(true);
    f.setPixelSize(std::max(1, qRound(height * world.m22())));
    const QRectF ink = QFontMetricsF(f).tightBoundingRect(text);
    const qreal squeeze = ink.width() > dev.width() ? dev.width() / ink.width() : 1.0;
    p.save();
    p.resetTransform();
    p.translate(dev.center());
    p.scale(squeeze, 1);
    p.setFont(f);
    p.setPen(colour);
    p.drawText(-ink.center(), text);
    p.restore();
}

QColor Rgb(QRgb rgb) {
    return QColor::fromRgb(rgb);
}

// File formats: a badge in the format's colour with its letters. The outline
// tells the medium: tapes rounded, snapshots as a pill, disks with the cut
// corner of a floppy.
enum class Medium { Tape, Snapshot, Disk };
struct FormatLook {
    const char* key;
    Medium medium;
    QRgb colour;
};
constexpr FormatLook Formats[] = {
    {"TZX", Medium::Tape, 0x1565C0},     {"Z80", Medium::Snapshot, 0xC62828},
    {"TAP", Medium::Tape, 0x2E7D32},     {"VOC", Medium::Tape, 0x6A1B9A},
    {"SLT", Medium::Snapshot, 0xEF6C00}, {"DSK", Medium::Disk, 0x00838F},
    {"SNA", Medium::Snapshot, 0xAD1457}, {"SP", Medium::Snapshot, 0x6D4C41},
    {"TRD", Medium::Disk, 0x455A64},
};

QIcon FormatBadge(const FormatLook& look) {
    return Make([&](QPainter& p) {
        const QColor fill = Rgb(look.colour);
        p.setPen(QPen(fill.darker(150), 1));
        p.setBrush(fill);
        const QRectF r(0.5, 2, 15, 12);
        switch (look.medium) {
        case Medium::Tape:
            p.drawRoundedRect(r, 2, 2);
            break;
        case Medium::Snapshot:
            p.drawRoundedRect(r, 4.5, 4.5);
            break;
        case Medium::Disk:
            p.drawPolygon(
                QPolygonF({r.topLeft(), QPointF(r.right() - 3, r.top()),
                           QPointF(r.right(), r.top() + 3), r.bottomRight(), r.bottomLeft()}));
            break;
        }
        FitText(p, r.adjusted(1, 0, -1, 0), QString::fromLatin1(look.key), Qt::white, 9);
    });
}

// Memory: a chip with its legs, labelled with the size.
struct MemoryLook {
    const char* key;
    const char* label;
    QRgb body;
};
constexpr MemoryLook Memories[] = {
    {"M48", "48K", 0x1A237E},
    {"M128", "128K", 0x8E0000},
    {"ANY", "ANY", 0x424242},
};

QIcon MemoryChip(const MemoryLook& look) {
    return Make([&](QPainter& p) {
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(0x9E, 0x9E, 0x9E));
        for (qreal x : {2.6, 5.6, 8.6, 11.6}) {
            p.drawRect(QRectF(x, 1, 1.8, 2.5));
            p.drawRect(QRectF(x, 12.5, 1.8, 2.5));
        }
        const QColor body = Rgb(look.body);
        p.setPen(QPen(body.darker(160), 0.8));
        p.setBrush(body);
        const QRectF r(0.5, 3.2, 15, 9.6);
        p.drawRoundedRect(r, 1.2, 1.2);
        FitText(p, r.adjusted(0.8, 0, -0.8, 0), QString::fromLatin1(look.label), Qt::white, 8);
    });
}

// Players: little figures, a head over rounded shoulders. Two players take
// turns, one behind the other; two playing together stand side by side.
struct Figure {
    qreal x, y, scale;
    QRgb colour;
};
struct PeopleLook {
    const char* key;
    int count;
    Figure figures[2];
};
constexpr PeopleLook People[] = {
    {"1JUG", 1, {{8, 1, 1.45, 0x1E88E5}, {}}},
    {"2JUG", 2, {{5.4, 0.6, 1.15, 0x90A4AE}, {10, 3, 1.15, 0x1E88E5}}},
    {"JUNTOS", 2, {{4.2, 2.5, 1.05, 0x43A047}, {11.8, 2.5, 1.05, 0xFB8C00}}},
};

void DrawFigure(QPainter& p, const Figure& f) {
    const QColor c = Rgb(f.colour);
    p.setPen(QPen(c.darker(150), 0.7));
    p.setBrush(c);
    const qreal s = f.scale;
    p.drawEllipse(QPointF(f.x, f.y + 2.3 * s), 2.1 * s, 2.1 * s);
    p.drawChord(QRectF(f.x - 3.6 * s, f.y + 5 * s, 7.2 * s, 7.2 * s), 0, 180 * 16);
}

QIcon PeopleMark(const PeopleLook& look) {
    return Make([&](QPainter& p) {
        for (int i = 0; i < look.count; ++i)
            DrawFigure(p, look.figures[i]);
    });
}

// A loading screen: a small television showing the Spectrum's stripe.
QIcon ScreenMark() {
    return Make([](QPainter& p) {
        p.setPen(QPen(QColor(0x21, 0x21, 0x21), 0.8));
        p.setBrush(QColor(0x42, 0x42, 0x42));
        p.drawRoundedRect(QRectF(0.5, 1.5, 15, 11), 1.5, 1.5);
        p.setBrush(QColor(0x0D, 0x0D, 0x40));
        p.drawRect(QRectF(2, 3, 12, 8));
        p.setPen(Qt::NoPen);
        const QRgb stripe[] = {0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF};
        p.save();
        p.setClipRect(QRectF(2, 3, 12, 8));
        for (int i = 0; i < 4; ++i) {
            const qreal x = 7 + i * 1.6;
            p.setBrush(Rgb(stripe[i]));
            p.drawPolygon(QPolygonF(
                {QPointF(x, 11), QPointF(x + 1.6, 11), QPointF(x + 9.6, 3), QPointF(x + 8, 3)}));
        }
        p.restore();
        p.setBrush(QColor(0x42, 0x42, 0x42));
        p.drawRect(QRectF(5, 12.5, 6, 1.2));
        p.drawRect(QRectF(3.5, 13.7, 9, 1.3));
    });
}

// Languages: the flag where a few stripes or a cross say it; where the real
// flag's detail would be mush at 24 px, a card with the code under a band of
// the flag's colours.
enum class FlagKind { Stripes, NordicCross, Union, Card, Unknown };
struct LanguageLook {
    const char* key;
    FlagKind kind;
    Qt::Orientation stripes;
    QRgb colours[3];
    int weights[3];
    QRgb emblem; // a disc on the first stripe's edge, 0 for none
};
constexpr QRgb White = 0xFFFFFF;
constexpr LanguageLook Languages[] = {
    {"YUG", FlagKind::Card, Qt::Vertical, {0x0C4076, White, 0xC6363C}, {1, 1, 1}, 0},
    {"SWE", FlagKind::NordicCross, Qt::Vertical, {0x006AA7, 0xFECC00}, {}, 0},
    {"SPA", FlagKind::Stripes, Qt::Vertical, {0xC60B1E, 0xFFC400, 0xC60B1E}, {1, 2, 1}, 0},
    {"SLO", FlagKind::Card, Qt::Vertical, {White, 0x005DA4, 0xED1C24}, {1, 1, 1}, 0},
    {"SLK", FlagKind::Card, Qt::Vertical, {White, 0x0B4EA2, 0xEE1C25}, {1, 1, 1}, 0},
    {"SER", FlagKind::Card, Qt::Vertical, {0xC6363C, 0x0C4076, White}, {1, 1, 1}, 0},
    {"RUS", FlagKind::Stripes, Qt::Vertical, {White, 0x0039A6, 0xD52B1E}, {1, 1, 1}, 0},
    {"POR", FlagKind::Stripes, Qt::Horizontal, {0x046A38, 0xDA291C}, {2, 3}, 0xFFE900},
    {"POL", FlagKind::Stripes, Qt::Vertical, {White, 0xDC143C}, {1, 1}, 0},
    {"GRK", FlagKind::Card, Qt::Vertical, {0x0D5EAF, White, 0x0D5EAF}, {1, 1, 1}, 0},
    {"ITA", FlagKind::Stripes, Qt::Horizontal, {0x009246, White, 0xCE2B37}, {1, 1, 1}, 0},
    {"GER", FlagKind::Stripes, Qt::Vertical, {0x000000, 0xDD0000, 0xFFCE00}, {1, 1, 1}, 0},
    {"FRE", FlagKind::Stripes, Qt::Horizontal, {0x0055A4, White, 0xEF4135}, {1, 1, 1}, 0},
    {"ENG", FlagKind::Union, Qt::Vertical, {0x012169, White, 0xC8102E}, {}, 0},
    {"DUT", FlagKind::Stripes, Qt::Vertical, {0xAE1C28, White, 0x21468B}, {1, 1, 1}, 0},
    {"CZE", FlagKind::Card, Qt::Vertical, {White, 0xD7141A, 0x11457E}, {1, 1, 1}, 0},
    {"CRO", FlagKind::Card, Qt::Vertical, {0xFF0000, White, 0x171796}, {1, 1, 1}, 0},
    {"BOS", FlagKind::Card, Qt::Vertical, {0x002395, 0xFECB00, 0x002395}, {1, 1, 1}, 0},
    {"UNK", FlagKind::Unknown, Qt::Vertical, {0x9E9E9E}, {}, 0},
};

// Stripes follow each other along `stripes`: Qt::Vertical stacks them top to
// bottom, Qt::Horizontal lays them left to right.
void DrawStripes(QPainter& p, const QRectF& r, const LanguageLook& look) {
    int total = 0;
    for (int w : look.weights)
        total += w;
    qreal at = 0;
    p.setPen(Qt::NoPen);
    for (int i = 0; i < 3 && look.weights[i] > 0; ++i) {
        const qreal part = look.weights[i] / static_cast<qreal>(total);
        p.setBrush(Rgb(look.colours[i]));
        if (look.stripes == Qt::Vertical)
            p.drawRect(QRectF(r.left(), r.top() + at * r.height(), r.width(), part * r.height()));
        else
            p.drawRect(QRectF(r.left() + at * r.width(), r.top(), part * r.width(), r.height()));
        at += part;
        if (i == 0 && look.emblem) {
            const QPointF centre(r.left() + at * r.width(), r.center().y());
            p.setPen(QPen(QColor(0x7A, 0x5C, 0x00), 0.5));
            p.setBrush(Rgb(look.emblem));
            p.drawEllipse(centre, 2.6, 2.6);
            p.setPen(Qt::NoPen);
        }
    }
}

void DrawUnion(QPainter& p, const QRectF& r, const LanguageLook& look) {
    p.setPen(Qt::NoPen);
    p.setBrush(Rgb(look.colours[0]));
    p.drawRect(r);
    const QColor white = Rgb(look.colours[1]), red = Rgb(look.colours[2]);
    for (const auto& [pen, width] : {std::pair{white, 2.6}, std::pair{red, 1.0}}) {
        p.setPen(QPen(pen, width, Qt::SolidLine, Qt::FlatCap));
        p.drawLine(r.topLeft(), r.bottomRight());
        p.drawLine(r.bottomLeft(), r.topRight());
    }
    p.setPen(Qt::NoPen);
    const QPointF c = r.center();
    p.setBrush(white);
    p.drawRect(QRectF(c.x() - 2.2, r.top(), 4.4, r.height()));
    p.drawRect(QRectF(r.left(), c.y() - 2.2, r.width(), 4.4));
    p.setBrush(red);
    p.drawRect(QRectF(c.x() - 1.2, r.top(), 2.4, r.height()));
    p.drawRect(QRectF(r.left(), c.y() - 1.2, r.width(), 2.4));
}

QIcon LanguageMark(const LanguageLook& look) {
    return Make([&](QPainter& p) {
        const QRectF r(0.5, 3, 15, 10);
        p.save();
        p.setClipRect(r);
        switch (look.kind) {
        case FlagKind::Stripes:
            DrawStripes(p, r, look);
            break;
        case FlagKind::NordicCross:
            p.setPen(Qt::NoPen);
            p.setBrush(Rgb(look.colours[0]));
            p.drawRect(r);
            p.setBrush(Rgb(look.colours[1]));
            p.drawRect(QRectF(r.left() + 4, r.top(), 2.4, r.height()));
            p.drawRect(QRectF(r.left(), r.center().y() - 1.2, r.width(), 2.4));
            break;
        case FlagKind::Union:
            DrawUnion(p, r, look);
            break;
        case FlagKind::Card:
            p.fillRect(r, Qt::white);
            for (int i = 0; i < 3; ++i)
                p.fillRect(QRectF(r.left() + i * 5, r.top(), 5, 2.5), Rgb(look.colours[i]));
            FitText(p, QRectF(r.left() + 0.6, r.top() + 2.5, r.width() - 1.2, r.height() - 2.5),
                    QString::fromLatin1(look.key), QColor(0x26, 0x32, 0x38), 7.5);
            break;
        case FlagKind::Unknown:
            p.fillRect(r, Rgb(look.colours[0]));
            FitText(p, r, QStringLiteral("?"), Qt::white, 9);
            break;
        }
        p.restore();
        p.setPen(QPen(QColor(0, 0, 0, 110), 0.6));
        p.setBrush(Qt::NoBrush);
        p.drawRect(r);
    });
}

// Yes and no: a tick and a cross, drawn as strokes with a dark edge so that
// they stand out on a white row and on a grey one.
struct AnswerLook {
    const char* key;
    QRgb colour;
    int strokes, points;
    QPointF at[2][3];
};
constexpr AnswerLook Answers[] = {
    {"SÍ", 0x2E7D32, 1, 3, {{{2.5, 8.5}, {6.3, 12.3}, {13.5, 3.7}}}},
    {"NO", 0xD32F2F, 2, 2, {{{3.5, 3.5}, {12.5, 12.5}}, {{12.5, 3.5}, {3.5, 12.5}}}},
};

QIcon AnswerMark(const AnswerLook& look) {
    return Make([&](QPainter& p) {
        const QColor c = Rgb(look.colour);
        p.setBrush(Qt::NoBrush);
        for (const auto& [colour, width] : {std::pair{c.darker(160), 3.6}, std::pair{c, 2.4}}) {
            p.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            for (int i = 0; i < look.strokes; ++i)
                p.drawPolyline(look.at[i], look.points);
        }
    });
}

// Origins: a round badge with a letter, a colour for each.
struct OriginLook {
    const char* key;
    const char* letter;
    QRgb colour;
};
constexpr OriginLook Origins[] = {
    {"OO", "O", 0xF9A825}, {"OH", "H", 0x8E24AA}, {"OR", "R", 0x00897B},
    {"OU", "?", 0x9E9E9E}, {"OI", "I", 0xFB8C00}, {"OM", "M", 0x1E88E5},
    {"OC", "C", 0x6D4C41}, {"OB", "B", 0xB71C1C}, {"OT", "T", 0x3949AB},
};

QIcon OriginBadge(const OriginLook& look) {
    return Make([&](QPainter& p) {
        Disc(p, Rgb(look.colour));
        FitText(p, QRectF(3, 3, 10, 10), QString::fromLatin1(look.letter), Qt::white, 9.5);
    });
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
        p.setPen(QPen(QColor(0xF5, 0x7F, 0x17), 1));
        p.setBrush(QColor(0xFF, 0xCA, 0x28));
        p.drawPath(
            Outline(Around({8, 8.5}, 10, -M_PI / 2, [](int i) { return i % 2 ? 3.2 : 7.5; })));
    }));
    set.Add(Make([](QPainter& p) { // invalid or corrupt
        Square(p, QColor(0x75, 0x75, 0x75));
        p.setPen(QPen(QColor(0xFF, 0xEB, 0x3B), 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        p.drawPolyline(QPolygonF({QPointF(3, 5), QPointF(7, 9), QPointF(9, 6), QPointF(13, 11)}));
    }));
    return set;
}

IconSet FormatIcon() {
    IconSet set;
    for (const auto& look : Formats)
        set.Add(FormatBadge(look), QString::fromLatin1(look.key));
    for (const auto& look : Memories)
        set.Add(MemoryChip(look), QString::fromLatin1(look.key));
    for (const auto& look : People)
        set.Add(PeopleMark(look), QString::fromLatin1(look.key));
    set.Add(ScreenMark(), QStringLiteral("SCREEN"));
    for (const auto& look : Languages)
        set.Add(LanguageMark(look), QString::fromLatin1(look.key));
    for (const auto& look : Answers)
        set.Add(AnswerMark(look), QString::fromUtf8(look.key));
    for (const auto& look : Origins)
        set.Add(OriginBadge(look), QString::fromLatin1(look.key));
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

namespace {

// A sheet of paper with a folded corner: the base of the file pictures.
void Sheet(QPainter& p, const QColor& fill) {
    p.setPen(QPen(QColor(0x54, 0x6E, 0x7A), 0.8));
    p.setBrush(fill);
    p.drawPath(Outline({{3, 1}, {10, 1}, {13, 4}, {13, 15}, {3, 15}}));
    p.drawLine(QPointF(10, 1), QPointF(10, 4));
    p.drawLine(QPointF(10, 4), QPointF(13, 4));
}

void Folder(QPainter& p) {
    p.setPen(QPen(QColor(0xB2, 0x8B, 0x00), 0.8));
    p.setBrush(QColor(0xFF, 0xCA, 0x28));
    p.drawPath(Outline({{0.5, 3}, {5.5, 3}, {7, 4.5}, {14.5, 4.5}, {14.5, 13.5}, {0.5, 13.5}}));
}

} // namespace

QIcon ToolPicture(Tool tool) {
    switch (tool) {
    case Tool::Search: // a folder under a magnifying glass
        return Make([](QPainter& p) {
            Folder(p);
            p.setPen(QPen(QColor(0x37, 0x47, 0x4F), 1.6));
            p.setBrush(QColor(0xE1, 0xF5, 0xFE));
            p.drawEllipse(QPointF(9, 8), 3.6, 3.6);
            p.setPen(QPen(QColor(0x37, 0x47, 0x4F), 2.2, Qt::SolidLine, Qt::RoundCap));
            p.drawLine(QPointF(11.8, 10.8), QPointF(15, 14.5));
        });
    case Tool::Modify: // the record's card
        return Make([](QPainter& p) {
            Disc(p, QColor(0x1E, 0x88, 0xE5));
            Letter(p, QStringLiteral("i"), Qt::white, 11);
        });
    case Tool::Reorder: // files moving into folders
        return Make([](QPainter& p) {
            Folder(p);
            p.setPen(
                QPen(QColor(0x2E, 0x7D, 0x32), 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            p.drawLine(QPointF(4, 9), QPointF(11, 9));
            p.drawPolyline(QPolygonF({QPointF(8.5, 6.5), QPointF(11, 9), QPointF(8.5, 11.5)}));
        });
    case Tool::Options: // a cog
        return Make([](QPainter& p) {
            QPainterPath cog =
                Outline(Around({8, 8}, 16, 0, [](int i) { return (i / 2) % 2 ? 5.2 : 7.2; }));
            cog.addEllipse(QPointF(8, 8), 2.2, 2.2);
            cog.setFillRule(Qt::OddEvenFill);
            p.setPen(QPen(QColor(0x37, 0x47, 0x4F), 0.8));
            p.setBrush(QColor(0x90, 0xA4, 0xAE));
            p.drawPath(cog);
        });
    case Tool::Empty: // a bin
        return Make([](QPainter& p) {
            p.setPen(QPen(QColor(0x8E, 0x24, 0x24), 0.9));
            p.setBrush(QColor(0xEF, 0x53, 0x50));
            p.drawRect(QRectF(3.5, 4.5, 9, 10.5));
            p.drawRect(QRectF(2, 2.5, 12, 2));
            p.drawRect(QRectF(6, 1, 4, 1.5));
            p.setPen(QPen(Qt::white, 1));
            for (double x : {6.0, 8.0, 10.0})
                p.drawLine(QPointF(x, 6.5), QPointF(x, 13));
        });
    case Tool::Compare: // two tapes
        return Make([](QPainter& p) {
            p.save();
            p.translate(-2, -2);
            p.scale(0.8, 0.8);
            Cassette(p, QColor(0x90, 0xA4, 0xAE), QColor(0x37, 0x47, 0x4F));
            p.restore();
            p.translate(3, 3);
            p.scale(0.8, 0.8);
            Cassette(p, QColor(0x42, 0x42, 0x42), QColor(0x21, 0x21, 0x21));
        });
    case Tool::Duplicates: // two equal sheets
        return Make([](QPainter& p) {
            p.save();
            p.translate(-2.5, -0.5);
            p.scale(0.85, 0.85);
            Sheet(p, QColor(0xEC, 0xEF, 0xF1));
            p.restore();
            p.translate(2.5, 2);
            p.scale(0.85, 0.85);
            Sheet(p, Qt::white);
            p.setPen(QPen(QColor(0x6A, 0x1B, 0x9A), 1.8, Qt::SolidLine, Qt::RoundCap));
            p.drawLine(QPointF(5.5, 7), QPointF(10.5, 7));
            p.drawLine(QPointF(5.5, 10.5), QPointF(10.5, 10.5));
        });
    case Tool::Identify: // a tape, known
        return Make([](QPainter& p) {
            p.save();
            p.translate(0, -2);
            p.scale(0.85, 0.85);
            Cassette(p, QColor(0x42, 0x42, 0x42), QColor(0x21, 0x21, 0x21));
            p.restore();
            p.setPen(QPen(QColor(0x1B, 0x5E, 0x20), 0.8));
            p.setBrush(QColor(0x43, 0xA0, 0x47));
            p.drawEllipse(QRectF(7.5, 7.5, 8, 8));
            p.setPen(QPen(Qt::white, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            p.setBrush(Qt::NoBrush);
            p.drawPolyline(QPolygonF({QPointF(9.6, 11.6), QPointF(11.1, 13.1), QPointF(13.6, 10)}));
        });
    case Tool::ImportWeb: // a page from the web
        return Make([](QPainter& p) {
            Sheet(p, Qt::white);
            p.setPen(QPen(QColor(0x00, 0x89, 0x7B), 1));
            p.setBrush(QColor(0xB2, 0xDF, 0xDB));
            p.drawEllipse(QPointF(8, 10), 3.5, 3.5);
            p.drawLine(QPointF(4.5, 10), QPointF(11.5, 10));
            p.drawEllipse(QPointF(8, 10), 1.5, 3.5);
        });
    case Tool::ImportFrom: // records dropping into a tray
        return Make([](QPainter& p) {
            p.setPen(QPen(QColor(0x37, 0x47, 0x4F), 0.8));
            p.setBrush(QColor(0x90, 0xA4, 0xAE));
            p.drawPath(Outline(
                {{1, 9}, {4.5, 9}, {5.5, 11}, {10.5, 11}, {11.5, 9}, {15, 9}, {15, 15}, {1, 15}}));
            p.setPen(Qt::NoPen);
            p.setBrush(QColor(0x2E, 0x7D, 0x32));
            p.drawRect(QRectF(6.6, 0.5, 2.8, 5));
            p.drawPolygon(QPolygonF({QPointF(3.8, 5.2), QPointF(12.2, 5.2), QPointF(8, 10)}));
        });
    case Tool::CopyToCatalogue: // towards the catalogue pane
    case Tool::CopyToTape:      // towards the tape pane
        return Make([tool](QPainter& p) {
            const double tip = tool == Tool::CopyToCatalogue ? 2 : 14, tail = 16 - tip;
            p.setPen(QPen(QColor(0x1B, 0x5E, 0x20), 1));
            p.setBrush(QColor(0x43, 0xA0, 0x47));
            p.drawPolygon(
                QPolygonF({QPointF(tip, 8), QPointF(8, 2.5), QPointF(8, 5.5), QPointF(tail, 5.5),
                           QPointF(tail, 10.5), QPointF(8, 10.5), QPointF(8, 13.5)}));
        });
    case Tool::BlockUp:
    case Tool::BlockDown:
        return Make([tool](QPainter& p) {
            p.setPen(QPen(QColor(0x0D, 0x47, 0xA1), 1));
            p.setBrush(QColor(0x1E, 0x88, 0xE5));
            if (tool == Tool::BlockUp)
                p.drawPolygon(QPolygonF({QPointF(8, 3), QPointF(14, 13), QPointF(2, 13)}));
            else
                p.drawPolygon(QPolygonF({QPointF(2, 3), QPointF(14, 3), QPointF(8, 13)}));
        });
    case Tool::SaveTape: // a cassette with a down stroke: the tape is written
        return Make([](QPainter& p) {
            p.setPen(QPen(QColor(0x37, 0x47, 0x4F), 1));
            p.setBrush(QColor(0x54, 0x6E, 0x7A));
            p.drawRoundedRect(QRectF(1.5, 4.5, 13, 9), 1.5, 1.5);
            p.setBrush(Qt::white);
            p.drawEllipse(QPointF(5, 9), 1.6, 1.6);
            p.drawEllipse(QPointF(11, 9), 1.6, 1.6);
            p.setPen(QPen(QColor(0xE5, 0x39, 0x35), 2, Qt::SolidLine, Qt::RoundCap));
            p.drawLine(QPointF(8, 0.5), QPointF(8, 4));
        });
    case Tool::DeleteBlock: // a red cross
        return Make([](QPainter& p) {
            p.setPen(QPen(QColor(0xC6, 0x28, 0x28), 2.4, Qt::SolidLine, Qt::RoundCap));
            p.drawLine(QPointF(4, 4), QPointF(12, 12));
            p.drawLine(QPointF(12, 4), QPointF(4, 12));
        });
    }
    return {};
}

} // namespace cintal::Pictures
