// Writes the demo collection: a few folders of invented tapes that between
// them hold every block kind the reader decodes, the versions and archive
// texts a real collection has, and the damaged files a collector meets.
// Most tapes go through the engine's own writer; the ones that the writer
// would tidy up (an archive block last or twice, a cut file, TAP files) are
// put together by hand. Beside the tapes lie snapshots, disk images and a
// recording in the other formats a collection holds, and the side folders
// with the loading screens, inlays, maps and code sheets of most titles, all
// drawn here. The output is the same on every run.
//
//   cintal-demo OUTPUT_DIR

#include "TapeBytes.h"
#include "tape/Cp1252.h"
#include "tape/Prompt.h"
#include "tape/TZXTape.h"

#include <QBuffer>
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QString>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace fs = std::filesystem;
using namespace cintal;
using namespace cintal::raw;

namespace {

// --- Deterministic filler ----------------------------------------------------

// xorshift32, started from the name of what it fills, so that every tape has
// its own bytes and every run the same ones.
class Filler {
public:
    explicit Filler(std::string_view name) {
        state = 2166136261u;
        for (char c : name)
            state = (state ^ static_cast<std::uint8_t>(c)) * 16777619u;
        if (state == 0) state = 1;
    }
    std::uint32_t Next() {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        return state;
    }
    // Machine code looks like this to a reader: no structure it could use.
    Bytes Code(std::size_t n) {
        Bytes out(n, '\0');
        for (auto& c : out)
            c = static_cast<char>(Next() & 0xFF);
        return out;
    }

private:
    std::uint32_t state;
};

// --- Sinclair BASIC, tokenised as the ROM stores it ---------------------------

namespace tok {
constexpr const char* SCREEN = "\xAA";
constexpr const char* CODE = "\xAF";
constexpr const char* USR = "\xC0";
constexpr const char* INK = "\xD9";
constexpr const char* PAPER = "\xDA";
constexpr const char* BORDER = "\xE7";
constexpr const char* REM = "\xEA";
constexpr const char* LOAD = "\xEF";
constexpr const char* POKE = "\xF4";
constexpr const char* PRINT = "\xF5";
constexpr const char* RANDOMIZE = "\xF9";
constexpr const char* CLS = "\xFB";
constexpr const char* CLEAR = "\xFD";
} // namespace tok

// A number as the editor leaves it: the digits, then 0x0E and its five-byte
// small-integer form.
Bytes Num(std::uint16_t n) {
    Bytes out = std::to_string(n);
    out += '\x0E';
    out += '\0';
    out += '\0';
    Le16(out, n);
    out += '\0';
    return out;
}

class BasicProgram {
public:
    BasicProgram& Line(std::uint16_t number, const Bytes& text) {
        bytes += static_cast<char>(number >> 8); // line numbers are big-endian
        bytes += static_cast<char>(number & 0xFF);
        Le16(bytes, static_cast<std::uint32_t>(text.size() + 1));
        bytes += text;
        bytes += '\x0D';
        return *this;
    }
    const Bytes& Get() const { return bytes; }

private:
    Bytes bytes;
};

Bytes Str(const char* s) {
    return Bytes(s);
}

// The loader of nearly every commercial tape: set colours, load a screen,
// load the code, jump into it.
Bytes LoaderProgram(std::uint16_t clear, std::uint16_t start, bool screen) {
    BasicProgram p;
    p.Line(10, Str(tok::BORDER) + Num(0) + ":" + tok::PAPER + Num(0) + ":" + tok::INK + Num(7) +
                   ":" + tok::CLEAR + Num(clear));
    if (screen) p.Line(20, Str(tok::LOAD) + "\"\"" + tok::SCREEN);
    p.Line(30, Str(tok::LOAD) + "\"\"" + tok::CODE);
    p.Line(40, Str(tok::RANDOMIZE) + tok::USR + Num(start));
    return p.Get();
}

// --- Pictures -----------------------------------------------------------------

constexpr std::size_t kScreenSize = 6912;

// A loading screen: bands of colour behind a range of hills, different for
// every title. Integer arithmetic only, so that the bytes never depend on a
// floating-point library.
Bytes LoadingScreen(std::string_view title) {
    Filler f(title);
    Bytes scr(kScreenSize, '\0');
    int peaks[33];
    for (int& p : peaks)
        p = 70 + static_cast<int>(f.Next() % 90);
    for (int y = 0; y < 192; ++y) {
        for (int x = 0; x < 256; ++x) {
            int a = peaks[x / 8], b = peaks[x / 8 + 1];
            int ground = a + (b - a) * (x % 8) / 8;
            bool hill = y > 191 - ground;
            bool dither = ((x ^ y) & 1) && y > 191 - ground - 6;
            if (!hill && !dither) continue;
            std::size_t addr = ((y & 0xC0) << 5) | ((y & 0x07) << 8) | ((y & 0x38) << 2) | (x >> 3);
            scr[addr] = static_cast<char>(scr[addr] | (0x80 >> (x & 7)));
        }
    }
    std::uint8_t ink = 1 + f.Next() % 7;
    for (int row = 0; row < 24; ++row) {
        std::uint8_t paper = static_cast<std::uint8_t>((row / 3 + f.Next() % 2) % 8);
        std::uint8_t bright = row < 8 ? 0x40 : 0;
        for (int col = 0; col < 32; ++col)
            scr[6144 + row * 32 + col] = static_cast<char>(bright | (paper << 3) | ink);
    }
    return scr;
}

// A small GIF in four colours. The LZW stream sends a clear code after every
// second pixel, which keeps the codes three bits wide: larger than a real
// encoder's output, but any decoder reads it.
Bytes Gif(std::uint16_t width, std::uint16_t height, std::string_view key) {
    Filler f(key);
    Bytes out("GIF89a");
    Le16(out, width);
    Le16(out, height);
    out += '\x81'; // a global table of four colours
    out += '\0';
    out += '\0';
    const std::uint8_t palette[4][3] = {{0, 0, 0}, {215, 0, 0}, {215, 215, 0}, {255, 255, 255}};
    for (const auto& c : palette)
        for (std::uint8_t v : c)
            out += static_cast<char>(v);
    out += '\x2C';
    Le16(out, 0);
    Le16(out, 0);
    Le16(out, width);
    Le16(out, height);
    out += '\0';
    out += '\x02'; // minimum code size

    Bytes stream;
    std::uint32_t acc = 0;
    int bits = 0;
    auto put = [&](std::uint32_t code) {
        acc |= code << bits;
        bits += 3;
        while (bits >= 8) {
            stream += static_cast<char>(acc & 0xFF);
            acc >>= 8;
            bits -= 8;
        }
    };
    constexpr std::uint32_t kClear = 4, kEnd = 5;
    std::uint32_t stripe = f.Next() % 4;
    for (std::uint32_t i = 0; i < std::uint32_t(width) * height; ++i) {
        if (i % 2 == 0) put(kClear);
        std::uint32_t x = i % width, y = i / width;
        put(((x / 4 + y / 4 + stripe) % 4));
    }
    put(kEnd);
    if (bits > 0) stream += static_cast<char>(acc & 0xFF);
    for (std::size_t at = 0; at < stream.size(); at += 255) {
        std::size_t n = std::min<std::size_t>(255, stream.size() - at);
        out += static_cast<char>(n);
        out += stream.substr(at, n);
    }
    out += '\0';
    out += '\x3B';
    return out;
}

// --- Loading screens for the side folders ----------------------------------------

// Each title's screen is drawn from a scene and its name, with the limits the
// machine had: one ink and one paper in every 8x8 cell. Integer arithmetic
// only, as above.

enum Colour : std::uint8_t { Black, Blue, Red, Magenta, Green, Cyan, Yellow, White };

constexpr int kWidth = 256;
constexpr int kHeight = 192;

// Pixels of one element of a picture, before they get a colour.
class Canvas {
public:
    Canvas() : pixels(kWidth * kHeight, 0) {}
    void Plot(int x, int y, bool on = true) {
        if (x < 0 || x >= kWidth || y < 0 || y >= kHeight) return;
        pixels[y * kWidth + x] = on;
    }
    bool At(int x, int y) const {
        return x >= 0 && x < kWidth && y >= 0 && y < kHeight && pixels[y * kWidth + x];
    }
    void Fill(int x, int y, int w, int h, bool on = true) {
        for (int j = y; j < y + h; ++j)
            for (int i = x; i < x + w; ++i)
                Plot(i, j, on);
    }
    // Sets the pixels of the box for which rule(x, y) holds.
    template <class Rule> void Shade(int x, int y, int w, int h, Rule rule) {
        for (int j = y; j < y + h; ++j)
            for (int i = x; i < x + w; ++i)
                if (rule(i, j)) Plot(i, j);
    }
    void Disc(int cx, int cy, int r, bool on = true) {
        for (int y = -r; y <= r; ++y)
            for (int x = -r; x <= r; ++x)
                if (x * x + y * y <= r * r + r) Plot(cx + x, cy + y, on);
    }
    void Triangle(int x0, int y0, int x1, int y1, int x2, int y2) {
        auto edge = [](int ax, int ay, int bx, int by, int px, int py) {
            return (bx - ax) * (py - ay) - (by - ay) * (px - ax);
        };
        const int area = edge(x0, y0, x1, y1, x2, y2);
        if (area == 0) return;
        for (int y = std::min({y0, y1, y2}); y <= std::max({y0, y1, y2}); ++y)
            for (int x = std::min({x0, x1, x2}); x <= std::max({x0, x1, x2}); ++x) {
                const int a = edge(x0, y0, x1, y1, x, y), b = edge(x1, y1, x2, y2, x, y),
                          c = edge(x2, y2, x0, y0, x, y);
                if ((a >= 0 && b >= 0 && c >= 0) || (a <= 0 && b <= 0 && c <= 0)) Plot(x, y);
            }
    }
    void Line(int x0, int y0, int x1, int y1, int thick = 1) {
        const int steps = std::max({std::abs(x1 - x0), std::abs(y1 - y0), 1});
        for (int s = 0; s <= steps; ++s)
            Fill(x0 + (x1 - x0) * s / steps, y0 + (y1 - y0) * s / steps, thick, thick);
    }
    bool Any(int col, int row) const {
        for (int y = row * 8; y < row * 8 + 8; ++y)
            for (int x = col * 8; x < col * 8 + 8; ++x)
                if (At(x, y)) return true;
        return false;
    }

private:
    std::vector<std::uint8_t> pixels;
};

// Dithers of four strengths, as a character set of the time had them.
bool Dither(int x, int y, int level) {
    switch (level) {
    case 0:
        return false;
    case 1:
        return x % 2 == 0 && y % 2 == 0;
    case 2:
        return (x + y) % 2 == 0;
    case 3:
        return !(x % 2 == 1 && y % 2 == 1);
    default:
        return true;
    }
}

class Screen {
public:
    Screen() { attrs.fill(White); }

    void Attr(int col, int row, Colour ink, Colour paper, bool bright = false, bool flash = false) {
        if (col < 0 || col >= 32 || row < 0 || row >= 24) return;
        attrs[row * 32 + col] =
            static_cast<std::uint8_t>(ink | paper << 3 | (bright ? 0x40 : 0) | (flash ? 0x80 : 0));
    }
    void Attrs(int col0, int row0, int col1, int row1, Colour ink, Colour paper,
               bool bright = false) {
        for (int r = row0; r <= row1; ++r)
            for (int c = col0; c <= col1; ++c)
                Attr(c, r, ink, paper, bright);
    }
    void Paper(int col, int row, Colour paper, bool bright) {
        if (col < 0 || col >= 32 || row < 0 || row >= 24) return;
        std::uint8_t& a = attrs[row * 32 + col];
        a = static_cast<std::uint8_t>((a & 0x87) | paper << 3 | (bright ? 0x40 : 0));
    }
    void Flash(int col, int row) {
        if (col >= 0 && col < 32 && row >= 0 && row < 24) attrs[row * 32 + col] |= 0x80;
    }
    // Adds an element: its pixels, and its ink in every cell that it touches,
    // which is where the colours clash on the real machine too.
    // Without a brightness, each cell keeps its own.
    void Stamp(const Canvas& layer, Colour ink, std::optional<bool> bright) {
        for (int row = 0; row < 24; ++row)
            for (int col = 0; col < 32; ++col) {
                if (!layer.Any(col, row)) continue;
                std::uint8_t& a = attrs[row * 32 + col];
                const int keep = bright ? 0xB8 : 0xF8;
                a = static_cast<std::uint8_t>((a & keep) | ink | (bright && *bright ? 0x40 : 0));
            }
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x)
                if (layer.At(x, y)) pixels.Plot(x, y);
    }
    // Clears pixels, leaving the colours alone: windows, gates, furrows.
    void Erase(const Canvas& holes) {
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x)
                if (holes.At(x, y)) pixels.Plot(x, y, false);
    }
    Canvas& Pixels() { return pixels; }
    const Canvas& Pixels() const { return pixels; }
    std::uint8_t AttrAt(int col, int row) const { return attrs[row * 32 + col]; }

    // The bytes of a .scr file: the bitmap in the ULA's order (third, pixel
    // row within the cell, cell row), then the attributes.
    Bytes Encode() const {
        Bytes out(kScreenSize, '\0');
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x)
                if (pixels.At(x, y)) {
                    const int addr =
                        ((y & 0xC0) << 5) | ((y & 0x07) << 8) | ((y & 0x38) << 2) | (x >> 3);
                    out[addr] = static_cast<char>(out[addr] | (0x80 >> (x & 7)));
                }
        for (int i = 0; i < 768; ++i)
            out[6144 + i] = static_cast<char>(attrs[i]);
        return out;
    }

private:
    Canvas pixels;
    std::array<std::uint8_t, 768> attrs{};
};

// --- Lettering -------------------------------------------------------------------

// A font of our own: capitals seven pixels high with stems two pixels wide,
// so that they hold up when scaled. Bit 7 is the leftmost pixel. The Ñ uses
// the top row for its tilde; "n" and "o" stand for the Ñ and the "º".
struct Glyph {
    char key;
    std::uint8_t rows[8];
};
constexpr Glyph kFont[] = {
    {'A', {0x7C, 0xC6, 0xC6, 0xFE, 0xC6, 0xC6, 0xC6, 0x00}},
    {'B', {0xFC, 0xC6, 0xC6, 0xFC, 0xC6, 0xC6, 0xFC, 0x00}},
    {'C', {0x7E, 0xC0, 0xC0, 0xC0, 0xC0, 0xC0, 0x7E, 0x00}},
    {'D', {0xF8, 0xCC, 0xC6, 0xC6, 0xC6, 0xCC, 0xF8, 0x00}},
    {'E', {0xFE, 0xC0, 0xC0, 0xF8, 0xC0, 0xC0, 0xFE, 0x00}},
    {'F', {0xFE, 0xC0, 0xC0, 0xF8, 0xC0, 0xC0, 0xC0, 0x00}},
    {'G', {0x7E, 0xC0, 0xC0, 0xCE, 0xC6, 0xC6, 0x7C, 0x00}},
    {'H', {0xC6, 0xC6, 0xC6, 0xFE, 0xC6, 0xC6, 0xC6, 0x00}},
    {'I', {0xFC, 0x30, 0x30, 0x30, 0x30, 0x30, 0xFC, 0x00}},
    {'J', {0x3E, 0x06, 0x06, 0x06, 0xC6, 0xC6, 0x7C, 0x00}},
    {'K', {0xC6, 0xCC, 0xD8, 0xF0, 0xD8, 0xCC, 0xC6, 0x00}},
    {'L', {0xC0, 0xC0, 0xC0, 0xC0, 0xC0, 0xC0, 0xFE, 0x00}},
    {'M', {0xC6, 0xEE, 0xFE, 0xD6, 0xC6, 0xC6, 0xC6, 0x00}},
    {'N', {0xC6, 0xE6, 0xF6, 0xDE, 0xCE, 0xC6, 0xC6, 0x00}},
    {'O', {0x7C, 0xC6, 0xC6, 0xC6, 0xC6, 0xC6, 0x7C, 0x00}},
    {'P', {0xFC, 0xC6, 0xC6, 0xFC, 0xC0, 0xC0, 0xC0, 0x00}},
    {'Q', {0x7C, 0xC6, 0xC6, 0xC6, 0xD6, 0xCC, 0x76, 0x00}},
    {'R', {0xFC, 0xC6, 0xC6, 0xFC, 0xD8, 0xCC, 0xC6, 0x00}},
    {'S', {0x7E, 0xC0, 0xC0, 0x7C, 0x06, 0x06, 0xFC, 0x00}},
    {'T', {0xFC, 0x30, 0x30, 0x30, 0x30, 0x30, 0x30, 0x00}},
    {'U', {0xC6, 0xC6, 0xC6, 0xC6, 0xC6, 0xC6, 0x7C, 0x00}},
    {'V', {0xC6, 0xC6, 0xC6, 0xC6, 0x6C, 0x38, 0x10, 0x00}},
    {'W', {0xC6, 0xC6, 0xC6, 0xD6, 0xFE, 0xEE, 0xC6, 0x00}},
    {'X', {0xC6, 0xC6, 0x6C, 0x38, 0x6C, 0xC6, 0xC6, 0x00}},
    {'Y', {0xCC, 0xCC, 0x78, 0x30, 0x30, 0x30, 0x30, 0x00}},
    {'Z', {0xFE, 0x06, 0x0C, 0x18, 0x30, 0x60, 0xFE, 0x00}},
    {'0', {0x7C, 0xCE, 0xD6, 0xD6, 0xE6, 0xC6, 0x7C, 0x00}},
    {'1', {0x30, 0x70, 0x30, 0x30, 0x30, 0x30, 0xFC, 0x00}},
    {'2', {0x7C, 0xC6, 0x06, 0x3C, 0x60, 0xC0, 0xFE, 0x00}},
    {'3', {0xFC, 0x06, 0x06, 0x3C, 0x06, 0x06, 0xFC, 0x00}},
    {'4', {0x1C, 0x3C, 0x6C, 0xCC, 0xFE, 0x0C, 0x0C, 0x00}},
    {'5', {0xFE, 0xC0, 0xFC, 0x06, 0x06, 0xC6, 0x7C, 0x00}},
    {'6', {0x7C, 0xC0, 0xC0, 0xFC, 0xC6, 0xC6, 0x7C, 0x00}},
    {'7', {0xFE, 0x06, 0x0C, 0x18, 0x30, 0x30, 0x30, 0x00}},
    {'8', {0x7C, 0xC6, 0xC6, 0x7C, 0xC6, 0xC6, 0x7C, 0x00}},
    {'9', {0x7C, 0xC6, 0xC6, 0x7E, 0x06, 0x06, 0x7C, 0x00}},
    {'-', {0x00, 0x00, 0x00, 0x7C, 0x00, 0x00, 0x00, 0x00}},
    {'.', {0x00, 0x00, 0x00, 0x00, 0x00, 0x60, 0x60, 0x00}},
    {',', {0x00, 0x00, 0x00, 0x00, 0x60, 0x60, 0xC0, 0x00}},
    {':', {0x00, 0x60, 0x60, 0x00, 0x60, 0x60, 0x00, 0x00}},
    {'!', {0x30, 0x30, 0x30, 0x30, 0x30, 0x00, 0x30, 0x00}},
    {'?', {0x7C, 0xC6, 0x0C, 0x18, 0x18, 0x00, 0x18, 0x00}},
    {'\'', {0x30, 0x30, 0x60, 0x00, 0x00, 0x00, 0x00, 0x00}},
    {'&', {0x70, 0xD8, 0x70, 0x76, 0xDC, 0xCC, 0x76, 0x00}},
    {'/', {0x06, 0x0C, 0x18, 0x30, 0x60, 0xC0, 0x00, 0x00}},
    {'(', {0x18, 0x30, 0x60, 0x60, 0x60, 0x30, 0x18, 0x00}},
    {')', {0x60, 0x30, 0x18, 0x18, 0x18, 0x30, 0x60, 0x00}},
    {'*', {0x00, 0x54, 0x38, 0xFE, 0x38, 0x54, 0x00, 0x00}},
    {'o', {0x78, 0xCC, 0x78, 0x00, 0xFC, 0x00, 0x00, 0x00}},
    {'n', {0x32, 0x4C, 0xC6, 0xE6, 0xF6, 0xDE, 0xCE, 0xC6}},
};

const Glyph* FindGlyph(char key) {
    for (const Glyph& g : kFont)
        if (g.key == key) return &g;
    return nullptr;
}

// Screens and inlays of the time were lettered in capitals without accents;
// only the Ñ kept its mark.
std::string Lettering(std::string_view utf8) {
    const QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()))
                             .normalized(QString::NormalizationForm_D)
                             .toUpper();
    std::string out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == u'N' && i + 1 < text.size() && text[i + 1] == QChar(0x0303)) {
            out += 'n';
            ++i;
        } else if (c == QChar(0x00BA)) {
            out += 'o';
        } else if (c == QChar(0x00A9)) {
            out += "(C)";
        } else if (c.category() != QChar::Mark_NonSpacing) {
            const char a = c.toLatin1();
            out += a != ' ' && FindGlyph(a) ? a : ' ';
        }
    }
    return out;
}

bool GlyphBit(const Glyph* g, int x, int y) {
    return g && x >= 0 && x < 8 && y >= 0 && y < 8 && (g->rows[y] & (0x80 >> x));
}

enum class Letters { Solid, Lined, Hollow };

// Text already folded by Lettering, each font pixel a square of scale pixels.
void Letter(Canvas& c, int x, int y, std::string_view keys, int scale,
            Letters style = Letters::Solid) {
    for (std::size_t k = 0; k < keys.size(); ++k) {
        const Glyph* g = FindGlyph(keys[k]);
        for (int gy = 0; gy < 8; ++gy)
            for (int gx = 0; gx < 8; ++gx) {
                if (!GlyphBit(g, gx, gy)) continue;
                for (int j = 0; j < scale; ++j)
                    for (int i = 0; i < scale; ++i) {
                        bool on = true;
                        if (style == Letters::Lined && scale > 1) on = j < scale - 1;
                        if (style == Letters::Hollow)
                            on = (i == 0 && !GlyphBit(g, gx - 1, gy)) ||
                                 (i == scale - 1 && !GlyphBit(g, gx + 1, gy)) ||
                                 (j == 0 && !GlyphBit(g, gx, gy - 1)) ||
                                 (j == scale - 1 && !GlyphBit(g, gx, gy + 1));
                        if (on)
                            c.Plot(x + (static_cast<int>(k) * 8 + gx) * scale + i,
                                   y + gy * scale + j);
                    }
            }
    }
}

int TextWidth(std::string_view keys, int scale) {
    return keys.empty() ? 0 : (static_cast<int>(keys.size()) * 8 - 1) * scale;
}

// Words onto lines of at most width characters; empty when a word is longer.
std::vector<std::string> Wrap(const std::string& keys, std::size_t width) {
    std::vector<std::string> lines;
    std::size_t at = 0;
    while (at < keys.size()) {
        while (at < keys.size() && keys[at] == ' ')
            ++at;
        if (at >= keys.size()) break;
        std::size_t end = std::min(keys.size(), at + width);
        if (end < keys.size() && keys[end] != ' ') {
            const std::size_t space = keys.rfind(' ', end);
            if (space == std::string::npos || space <= at) return {};
            end = space;
        }
        std::string line = keys.substr(at, end - at);
        while (!line.empty() && line.back() == ' ')
            line.pop_back();
        lines.push_back(line);
        at = end;
    }
    return lines;
}

struct TitleLines {
    std::vector<std::string> lines;
    int scale = 1;
};

// The largest lettering that fits the width: one line if it can, two if not.
TitleLines FitTitle(const std::string& keys, int width) {
    for (auto [scale, most] : {std::pair{3, 1}, {2, 2}, {1, 3}}) {
        auto lines = Wrap(keys, static_cast<std::size_t>((width + scale) / (8 * scale)));
        if (!lines.empty() && static_cast<int>(lines.size()) <= most) return {lines, scale};
    }
    return {{keys.substr(0, 31)}, 1};
}

// --- Scenes --------------------------------------------------------------------

enum class Scene {
    Hills,
    Storm,
    Space,
    Castle,
    City,
    Floor,
    Sea,
    Battle,
    Computer,
    Music,
    Road,
    Blocks,
    Cavern,
    Maze
};

// The character rows a scene may paint, both included.
struct Area {
    int r0, r1;
    int Top() const { return r0 * 8; }
    int Bottom() const { return (r1 + 1) * 8; }
    int Rows() const { return r1 - r0 + 1; }
};

int Between(Filler& f, int lo, int hi) {
    return lo + static_cast<int>(f.Next() % static_cast<std::uint32_t>(hi - lo + 1));
}

// From a to b as t goes from 0 to span, slow at both ends: 3t² - 2t³.
int Ease(int a, int b, int t, int span) {
    const long long s = static_cast<long long>(t) * t * (3LL * span - 2LL * t);
    return a + static_cast<int>((b - a) * s / (static_cast<long long>(span) * span * span));
}

// A line of hills: a height for every column, peaks every step pixels.
std::vector<int> Ridge(Filler& f, int step, int lo, int hi) {
    std::vector<int> peaks(kWidth / step + 2);
    for (int& p : peaks)
        p = Between(f, lo, hi);
    std::vector<int> h(kWidth);
    for (int x = 0; x < kWidth; ++x)
        h[x] = Ease(peaks[x / step], peaks[x / step + 1], x % step, step);
    return h;
}

bool CellFull(const Canvas& c, int col, int row) {
    for (int y = row * 8; y < row * 8 + 8; ++y)
        for (int x = col * 8; x < col * 8 + 8; ++x)
            if (!c.At(x, y)) return false;
    return true;
}

// A little figure, eight pixels wide: miners, explorers, heroes of mazes.
constexpr std::uint8_t kFigure[] = {0x38, 0x38, 0x10, 0x7C, 0xBA, 0xBA, 0x38, 0x28, 0x28, 0x6C};

void Figure(Canvas& c, int x, int y) {
    for (int j = 0; j < static_cast<int>(std::size(kFigure)); ++j)
        for (int i = 0; i < 8; ++i)
            if (kFigure[j] & (0x80 >> i)) c.Plot(x + i, y + j);
}

void Hills(Screen& s, Filler& f, Area a, bool storm) {
    static constexpr Colour kDusk[] = {Blue, Magenta, Red, Yellow};
    static constexpr Colour kDay[] = {Blue, Blue, Cyan, Cyan};
    static constexpr Colour kNight[] = {Black, Black, Blue, Blue};
    const Colour* sky = storm ? kNight : f.Next() % 2 ? kDusk : kDay;
    const bool bright = !storm;
    const int horizon = a.r0 + a.Rows() * 2 / 3;
    const int hp = horizon * 8;
    for (int r = a.r0; r < horizon; ++r)
        s.Attrs(0, r, 31, r, storm ? Cyan : White, sky[(r - a.r0) * 4 / (horizon - a.r0)], bright);
    for (int r = horizon; r <= a.r1; ++r)
        s.Attrs(0, r, 31, r, storm ? Black : Green, storm ? Blue : Yellow, bright);

    const int sunX = Between(f, 40, 216);
    if (storm) {
        Canvas rain;
        rain.Shade(0, a.Top(), kWidth, hp - a.Top(),
                   [](int x, int y) { return ((x - y / 2) % 10 + 10) % 10 == 0 && y % 7 < 4; });
        s.Stamp(rain, Cyan, false);
    } else {
        const int r = Between(f, 9, 12);
        Canvas sun;
        sun.Disc(sunX, std::max(a.Top() + r + 3, hp - 60), r);
        s.Stamp(sun, Yellow, true);
        Canvas birds;
        for (int i = 0; i < 3; ++i) {
            const int bx = (sunX + 60 + i * 14) % 200 + 20, by = a.Top() + 6 + (i % 2) * 7;
            birds.Line(bx, by, bx + 3, by + 2);
            birds.Line(bx + 3, by + 2, bx + 6, by);
        }
        s.Stamp(birds, Black, bright);
    }

    Canvas far, near;
    const std::vector<int> farRidge = Ridge(f, 32, 12, 34), nearRidge = Ridge(f, 16, 2, 12);
    for (int x = 0; x < kWidth; ++x) {
        far.Shade(x, hp - farRidge[x], 1, farRidge[x],
                  [](int i, int j) { return Dither(i, j, 2); });
        near.Fill(x, hp - nearRidge[x], 1, a.Bottom() - hp + nearRidge[x]);
    }
    s.Stamp(far, storm ? Black : Green, bright);
    s.Stamp(near, storm ? Black : Green, bright);
    // Furrows, further apart as they come nearer.
    Canvas furrows;
    for (int k = 0, d = 10; hp + d < a.Bottom(); ++k, d += 3 + k)
        furrows.Fill(0, hp + d, kWidth, 1);
    s.Erase(furrows);

    if (storm) {
        Canvas bolt;
        int x = sunX, y = a.Top();
        while (y < hp - 24) {
            const int nx = x + Between(f, -8, 8), ny = y + Between(f, 6, 10);
            bolt.Line(x, y, nx, ny, 2);
            x = nx;
            y = ny;
        }
        s.Stamp(bolt, White, true);
        int flashed = 0;
        for (int row = a.r0; row <= a.r1 && flashed < 3; row += 2)
            for (int col = 0; col < 32; ++col)
                if (bolt.Any(col, row)) {
                    s.Flash(col, row);
                    ++flashed;
                    break;
                }
    }
}

void Space(Screen& s, Filler& f, Area a) {
    s.Attrs(0, a.r0, 31, a.r1, White, Black);
    static constexpr Colour kPlanets[] = {Red, Magenta, Green, Cyan};
    const Colour planetInk = kPlanets[f.Next() % 4];
    const int pr = std::min(Between(f, 18, 28), a.Rows() * 4 - 6);
    const bool left = f.Next() % 2;
    const int pcx = left ? Between(f, 50, 90) : Between(f, 166, 206);
    const int pcy = a.Top() + a.Rows() * 4 + Between(f, -6, 6);
    Canvas planet;
    // Lit from the upper left: solid there, thinning towards the far edge.
    const int lx = pcx - pr / 2, ly = pcy - pr / 2, reach = (pr * 3 / 2) * (pr * 3 / 2);
    planet.Shade(pcx - pr, pcy - pr, 2 * pr + 1, 2 * pr + 1, [&](int x, int y) {
        const int dx = x - pcx, dy = y - pcy;
        if (dx * dx + dy * dy > pr * pr + pr) return false;
        const int d = (x - lx) * (x - lx) + (y - ly) * (y - ly);
        return Dither(x, y, std::clamp(4 - d * 4 / reach, 1, 4));
    });
    // A ring, hidden where it passes behind the planet.
    const long long ra = pr * 17 / 10, rb = pr * 4 / 10;
    planet.Shade(pcx - static_cast<int>(ra), pcy - static_cast<int>(rb),
                 static_cast<int>(2 * ra + 1), static_cast<int>(2 * rb + 1), [&](int x, int y) {
                     const long long dx = x - pcx, dy = y - pcy;
                     const long long e = dx * dx * rb * rb + dy * dy * ra * ra,
                                     full = ra * ra * rb * rb;
                     if (e > full || e * 100 < full * 64) return false;
                     return !(dy < 0 && dx * dx + dy * dy <= pr * pr);
                 });
    s.Stamp(planet, planetInk, true);

    static constexpr Colour kStars[] = {White, Cyan, Yellow};
    std::vector<std::pair<int, int>> starCells;
    for (int i = 0; i < 70; ++i) {
        const int x = Between(f, 0, 255), y = Between(f, a.Top(), a.Bottom() - 1);
        if (std::abs(x - pcx) < ra + 8 && std::abs(y - pcy) < pr + 8) continue;
        Canvas star;
        star.Plot(x, y);
        if (i % 9 == 0) {
            star.Plot(x - 1, y);
            star.Plot(x + 1, y);
            star.Plot(x, y - 1);
            star.Plot(x, y + 1);
        }
        s.Stamp(star, kStars[i % 3], i % 2 == 0);
        starCells.push_back({x / 8, y / 8});
    }
    for (std::size_t i = 0; i < starCells.size(); i += 17)
        s.Flash(starCells[i].first, starCells[i].second);

    // A fighter heading for the planet, firing.
    const int dir = left ? -1 : 1;
    const int sx = left ? Between(f, 170, 210) : Between(f, 46, 86);
    const int sy = a.Top() + Between(f, 16, a.Rows() * 8 - 16);
    Canvas ship;
    ship.Triangle(sx - dir * 12, sy - 4, sx - dir * 12, sy + 4, sx + dir * 14, sy);
    ship.Triangle(sx - dir * 8, sy, sx - dir * 14, sy - 11, sx + dir * 2, sy);
    ship.Triangle(sx - dir * 8, sy, sx - dir * 14, sy + 11, sx + dir * 2, sy);
    s.Stamp(ship, White, true);
    Canvas laser;
    for (int k = 0; k < 3; ++k)
        laser.Fill(sx + dir * (24 + k * 14) - (dir < 0 ? 8 : 0), sy, 8, 1);
    s.Stamp(laser, Yellow, true);
}

void Castle(Screen& s, Filler& f, Area a) {
    static constexpr Colour kSkies[] = {Blue, Blue, Magenta, Red}; // never black: the castle is
    const Colour sky = kSkies[f.Next() % 4];
    const int groundRow = a.r1 - 1;
    const int gy = groundRow * 8;
    s.Attrs(0, a.r0, 31, groundRow - 1, White, sky);
    s.Attrs(0, groundRow, 31, a.r1, Black, Green);

    const int c0 = Between(f, 7, 10), c1 = Between(f, 21, 24), mid = (c0 + c1 + 1) / 2;
    const bool cones = f.Next() % 2;
    // The keep as tall as the sky allows, its roof and banner included.
    const int room = gy - a.Top() - (cones ? 42 : 22);
    const int wallTop = gy - std::min(room / 2, Between(f, 28, 40));
    Canvas body, holes;
    body.Fill(c0 * 8, wallTop, (c1 - c0 + 1) * 8, gy - wallTop);
    for (int x = c0 * 8; x < (c1 + 1) * 8; x += 8)
        body.Fill(x, wallTop - 4, 4, 4);
    struct Tower {
        int col, cells, height;
    };
    const Tower towers[] = {{c0 - 2, 2, std::min(room - 8, Between(f, 52, 64))},
                            {mid - 2, 4, room},
                            {c1 + 1, 2, std::min(room - 8, Between(f, 48, 64))}};
    std::vector<std::pair<int, int>> windows;
    for (const Tower& t : towers) {
        const int x = t.col * 8, w = t.cells * 8, top = gy - t.height;
        body.Fill(x, top, w, t.height);
        if (cones) {
            body.Triangle(x - 3, top, x + w + 2, top, x + w / 2, top - w * 3 / 4 - 2);
        } else {
            for (int bx = x; bx < x + w; bx += 6)
                body.Fill(bx, top - 4, 3, 4);
        }
        for (int row = (top + 7) / 8 + 1; row < groundRow - 3; row += 2)
            windows.push_back({t.col + t.cells / 2 - (t.cells > 2 ? 1 : 0), row});
    }
    // A banner on the keep.
    const int pole = mid * 8, poleTop = gy - room - (cones ? 38 : 16);
    body.Fill(pole, poleTop, 1, 16);
    body.Fill(pole + 1, poleTop, 7, 4);
    // The gate, with its arch.
    holes.Fill(mid * 8 - 6, gy - 12, 12, 12);
    holes.Disc(mid * 8, gy - 12, 6);
    for (auto [col, row] : windows)
        holes.Fill(col * 8 + 3, row * 8 + 1, 2, 5);
    s.Stamp(body, Black, false);
    s.Erase(holes);
    for (std::size_t i = 0; i < windows.size(); ++i) {
        s.Paper(windows[i].first, windows[i].second, Yellow, true);
        if (i % 3 == 1) s.Flash(windows[i].first, windows[i].second);
    }

    const bool moonLeft = f.Next() % 2;
    Canvas moon;
    const int mx = moonLeft ? 28 : 228, my = a.Top() + 14;
    moon.Disc(mx, my, 9);
    moon.Disc(mx + (moonLeft ? 5 : -5), my - 3, 8, false);
    s.Stamp(moon, White, std::nullopt);
    for (int i = 0; i < 40; ++i) {
        const int x = Between(f, 0, 255), y = Between(f, a.Top(), wallTop - 8);
        if (body.Any(x / 8, y / 8) || moon.Any(x / 8, y / 8)) continue;
        s.Pixels().Plot(x, y);
    }
    // The path down from the gate.
    s.Pixels().Shade(0, gy, kWidth, a.Bottom() - gy, [&](int x, int y) {
        const int half = 6 + (y - gy) * 2;
        return std::abs(x - mid * 8) < half && Dither(x, y, 1);
    });
}

void City(Screen& s, Filler& f, Area a) {
    static constexpr Colour kSunset[] = {Blue, Magenta, Red, Red};
    static constexpr Colour kNight[] = {Black, Black, Blue, Blue};
    const bool night = f.Next() % 2;
    const Colour* sky = night ? kNight : kSunset;
    for (int r = a.r0; r <= a.r1; ++r)
        s.Attrs(0, r, 31, r, White, sky[(r - a.r0) * 4 / a.Rows()], !night);

    Canvas orb;
    const int ox = Between(f, 40, 216), oy = a.Top() + Between(f, 14, 24);
    orb.Disc(ox, oy, night ? 8 : 14);
    s.Stamp(orb, night ? White : Yellow, !night);
    if (night)
        for (int i = 0; i < 30; ++i) {
            const int x = Between(f, 0, 255), y = Between(f, a.Top(), a.Top() + 30);
            if (!orb.Any(x / 8, y / 8)) s.Pixels().Plot(x, y);
        }

    Canvas towers, holes;
    for (int x = 0; x < kWidth;) {
        const int w = Between(f, 2, 5) * 8 - 2;
        const int h = Between(f, 28, a.Rows() * 8 - 30);
        const int top = a.Bottom() - h;
        towers.Fill(x, top, w, h);
        if (f.Next() % 3 == 0) towers.Fill(x + w / 2, top - 8, 1, 8);
        holes.Shade(x + 1, top + 3, w - 2, h - 12,
                    [&](int i, int j) { return (i - x) % 4 >= 2 && (j - top) % 6 >= 3; });
        x += w + 2;
    }
    s.Stamp(towers, Black, !night);
    s.Erase(holes);
    int lit = 0;
    for (int row = a.r0; row <= a.r1 - 1; ++row)
        for (int col = 0; col < 32; ++col)
            if (CellFull(towers, col, row) && f.Next() % 5 == 0) {
                s.Paper(col, row, Yellow, true);
                if (lit++ % 6 == 2) s.Flash(col, row);
            }
}

void Floor(Screen& s, Filler& f, Area a) {
    static constexpr Colour kTints[] = {Cyan, Green, Yellow, Magenta};
    const Colour tint = kTints[f.Next() % 4];
    const int horizon = a.r0 + a.Rows() * 2 / 5;
    const int hp = horizon * 8;
    s.Attrs(0, a.r0, 31, horizon - 1, White, Black);
    for (int r = horizon; r <= a.r1; ++r) {
        static constexpr Colour kRamp[] = {Blue, Magenta, Red};
        const int k = r - horizon;
        s.Attrs(0, r, 31, r, k < 3 ? kRamp[k] : tint, Black, k >= 3);
    }
    // A chequered floor to the horizon: depth from the row, squares from depth.
    s.Pixels().Shade(0, hp, kWidth, a.Bottom() - hp, [&](int x, int y) {
        const int d = y - hp + 1;
        const int z = 1024 / d;
        const int wx = (x - 128) * z / 32 + 4096;
        return ((wx / 16 + z / 4) & 1) != 0;
    });
    for (int i = 0; i < 25; ++i)
        s.Pixels().Plot(Between(f, 0, 255), Between(f, a.Top(), hp - 4));

    // The tower, standing on the floor.
    Canvas tower, holes;
    const int base = hp + (a.Bottom() - hp) * 2 / 3, top = a.Top() + 10, x = 116, w = 24;
    tower.Fill(x, top, w, base - top);
    tower.Fill(x - 4, top - 2, w + 8, 4);
    for (int bx = x - 4; bx < x + w + 4; bx += 6)
        tower.Fill(bx, top - 7, 3, 5);
    for (int wy = top + 10; wy < base - 16; wy += 16)
        holes.Fill(x + 10, wy, 4, 7);
    s.Stamp(tower, White, true);
    s.Erase(holes);
    Canvas orb;
    orb.Shade(0, a.Top(), kWidth, hp - a.Top(), [&](int px, int py) {
        const int cx = 52, cy = a.Top() + 22, dx = px - cx, dy = py - cy;
        const int d = dx * dx + dy * dy;
        return d <= 150 && Dither(px, py, d < 40 ? 4 : d < 90 ? 3 : 2);
    });
    s.Stamp(orb, tint, true);
}

void Sea(Screen& s, Filler& f, Area a, int ships) {
    const bool night = f.Next() % 2;
    const int horizon = a.r0 + a.Rows() / 2;
    const int hp = horizon * 8;
    s.Attrs(0, a.r0, 31, horizon - 1, White, night ? Blue : Cyan, !night);
    s.Attrs(0, horizon, 31, a.r1, night ? White : Cyan, Blue, true);
    Canvas orb;
    const int ox = Between(f, 30, 226);
    orb.Disc(ox, a.Top() + 16, night ? 8 : 11);
    s.Stamp(orb, night ? White : Yellow, !night);
    // Glints on the water, longer and further apart towards the front.
    s.Pixels().Shade(0, hp + 2, kWidth, a.Bottom() - hp - 2, [&](int x, int y) {
        const int d = y - hp;
        if (d % (2 + d / 8) != 0) return false;
        const int period = 12 + d / 2, len = 2 + d / 6;
        return (x + y * 7) % period < len || (std::abs(x - ox) < 4 + d / 4 && x % 3 == 0);
    });

    Canvas fleet, smoke;
    for (int k = 0; k < ships; ++k) {
        const int x = ships == 1 ? Between(f, 60, 150) : 24 + k * 130 + Between(f, 0, 30);
        const int wl = hp + 8 + k * 6, m = 1 + (k == ships - 1 ? 1 : 0);
        fleet.Triangle(x, wl - 6 * m, x + 22 * m, wl - 6 * m, x + 18 * m, wl);
        fleet.Triangle(x, wl - 6 * m, x + 18 * m, wl, x + 3 * m, wl);
        fleet.Line(x + 8 * m, wl - 6 * m, x + 8 * m, wl - 28 * m);
        fleet.Line(x + 15 * m, wl - 6 * m, x + 15 * m, wl - 22 * m);
        fleet.Triangle(x + 9 * m, wl - 27 * m, x + 9 * m, wl - 10 * m, x + 14 * m, wl - 10 * m);
        fleet.Triangle(x + 16 * m, wl - 21 * m, x + 16 * m, wl - 9 * m, x + 21 * m, wl - 9 * m);
        fleet.Fill(x + 8 * m, wl - 31 * m, 4 * m, 2 * m);
        if (ships > 1) smoke.Disc(x + 11 * m + 26, wl - 6, 3 + k);
    }
    s.Stamp(fleet, Black, std::nullopt);
    if (ships > 1) s.Stamp(smoke, White, true);
}

void Computer(Screen& s, Filler& f, Area a, const std::vector<std::string>& lines) {
    static constexpr Colour kDesks[] = {Blue, Magenta, Blue};
    s.Attrs(0, a.r0, 31, a.r1, White, kDesks[f.Next() % 3]);
    const int c0 = 5, c1 = 26, m0 = a.r0, m1 = a.r1 - 4;
    Canvas frame;
    frame.Fill(c0 * 8 + 3, m0 * 8 + 3, (c1 - c0 + 1) * 8 - 6, 2);
    frame.Fill(c0 * 8 + 3, m1 * 8 + 3, (c1 - c0 + 1) * 8 - 6, 2);
    frame.Fill(c0 * 8 + 3, m0 * 8 + 3, 2, (m1 - m0) * 8 + 2);
    frame.Fill(c1 * 8 + 3, m0 * 8 + 3, 2, (m1 - m0) * 8 + 2);
    frame.Fill(120, (m1 + 1) * 8, 16, 8);
    s.Stamp(frame, White, true);
    s.Attrs(c0 + 1, m0 + 1, c1 - 1, m1 - 1, Green, Black, true);
    if (lines.empty()) {
        static constexpr Colour kBars[] = {White, Yellow, Cyan, Green, Magenta, Red, Blue, Black};
        for (int c = c0 + 1; c < c1; ++c)
            s.Attrs(c, m0 + 1, c, m1 - 1, White, kBars[(c - c0 - 1) * 8 / (c1 - c0 - 1)], true);
    } else {
        Canvas text;
        int row = m0 + 1;
        for (std::size_t i = 0; i < lines.size() && row < m1; ++i, ++row)
            Letter(text, (c0 + 2) * 8, row * 8, Lettering(lines[i]), 1);
        s.Stamp(text, Green, true);
        if (row < m1) {
            s.Pixels().Fill((c0 + 2) * 8, row * 8, 7, 7);
            s.Flash(c0 + 2, row);
        }
    }
    // The keyboard, four rows of keys.
    s.Attrs(c0 - 1, a.r1 - 2, c1 + 1, a.r1, White, Black);
    Canvas keys;
    const int ky = (a.r1 - 2) * 8;
    for (int r = 0; r < 4; ++r)
        for (int k = 0; k < 10; ++k)
            keys.Fill((c0 - 1) * 8 + 4 + r * 3 + k * 18, ky + 2 + r * 6, 14, 4);
    s.Stamp(keys, White, true);
}

void Music(Screen& s, Filler& f, Area a) {
    s.Attrs(0, a.r0, 31, a.r1, White, Black, true);
    const int floorRow = a.r0 + 3, most = a.r1 - floorRow + 1;
    int h = most / 2;
    for (int b = 0; b < 16; ++b) {
        h = std::clamp(h + Between(f, -3, 3), 1, most - 1);
        for (int k = 0; k < h; ++k) {
            const int row = a.r1 - k;
            const Colour c = k < most * 2 / 5 ? Green : k < most * 3 / 4 ? Yellow : Red;
            s.Pixels().Fill(b * 16 + 1, row * 8 + 1, 14, 5);
            s.Attr(b * 2, row, c, Black, true);
            s.Attr(b * 2 + 1, row, c, Black, true);
        }
        const int peak = a.r1 - h - 1;
        if (peak >= floorRow) {
            s.Pixels().Fill(b * 16 + 1, peak * 8 + 6, 14, 2);
            s.Attr(b * 2, peak, White, Black, true, b % 5 == 2);
            s.Attr(b * 2 + 1, peak, White, Black, true, b % 5 == 2);
        }
    }
    // Quavers over the bars.
    Canvas notes;
    for (int n = 0; n < 3; ++n) {
        const int x = 30 + n * 80 + Between(f, 0, 20), y = a.Top() + 18;
        notes.Disc(x, y, 3);
        notes.Disc(x + 14, y - 3, 3);
        notes.Fill(x + 3, y - 14, 1, 14);
        notes.Fill(x + 17, y - 17, 1, 14);
        notes.Line(x + 3, y - 14, x + 17, y - 17, 2);
    }
    s.Stamp(notes, Magenta, true);
}

void Road(Screen& s, Filler& f, Area a) {
    const int horizon = a.r0 + a.Rows() / 3;
    const int hp = horizon * 8;
    s.Attrs(0, a.r0, 31, horizon - 1, Blue, Cyan, true);
    s.Attrs(0, horizon, 31, a.r1, Black, Yellow, true);
    Canvas sun, hillsFar;
    sun.Disc(Between(f, 30, 90), a.Top() + 10, 7);
    s.Stamp(sun, Red, true);
    for (int k = 0; k < 4; ++k) {
        const int x = 120 + k * 36 + Between(f, 0, 12), w = Between(f, 18, 30);
        hillsFar.Triangle(x - w, hp - 1, x + w, hp - 1, x, hp - Between(f, 8, 14));
    }
    s.Stamp(hillsFar, Blue, true);
    const int depth = a.Bottom() - hp;
    s.Pixels().Shade(0, hp, kWidth, depth, [&](int x, int y) {
        const int d = y - hp;
        const int half = 3 + d * 110 / depth, off = std::abs(x - 128);
        if (off >= half) return (x * 7 + y * 13) % 23 == 0; // sand
        const int z = 4000 / (d + 8);
        if (off >= half - std::max(1, half / 10)) return (z / 6) % 2 == 0; // kerbs
        if (off < std::max(1, half / 24)) return (z / 9) % 2 == 0;         // centre line
        return true;
    });
    // A car seen from behind, cut out of the road so that its colour is the sand's.
    Canvas car, keep;
    const int by = a.Bottom() - 8;
    car.Fill(108, by - 14, 40, 12);
    car.Fill(116, by - 22, 24, 8);
    keep.Fill(120, by - 20, 16, 5);
    keep.Fill(108, by - 4, 8, 4);
    keep.Fill(140, by - 4, 8, 4);
    keep.Fill(112, by - 10, 6, 2);
    keep.Fill(138, by - 10, 6, 2);
    Canvas cut;
    cut.Shade(100, by - 26, 60, 28, [&](int x, int y) { return car.At(x, y) && !keep.At(x, y); });
    s.Erase(cut);
}

void Blocks(Screen& s, Filler& f, Area a) {
    s.Attrs(0, a.r0, 31, a.r1, White, Black);
    static constexpr Colour kPieces[] = {Red, Magenta, Green, Cyan, Yellow, Blue};
    // The walls, in bricks.
    for (int col : {9, 22}) {
        s.Attrs(col, a.r0, col, a.r1, Red, Black, true);
        s.Pixels().Shade(col * 8, a.Top(), 8, a.Bottom() - a.Top(), [](int x, int y) {
            return !(y % 4 == 3 || (x + (y / 4 % 2) * 4) % 8 == 7);
        });
    }
    auto block = [&](int col, int row, Colour c, bool flash) {
        s.Attr(col, row, Black, c, true, flash);
        s.Pixels().Shade(col * 8, row * 8, 8, 8, [](int x, int y) {
            return x % 8 == 7 || y % 8 == 7 || (x % 8 == 1 && y % 8 == 1);
        });
    };
    const int full = a.r1 - 1, stack = Between(f, 3, 5);
    for (int row = a.r1; row > a.r1 - stack; --row)
        for (int col = 10; col <= 21; ++col)
            if (row == full || f.Next() % 5 != 0)
                block(col, row, kPieces[f.Next() % 6], row == full);
    // A piece on its way down.
    static constexpr int kShapes[][4][2] = {{{0, 0}, {1, 0}, {2, 0}, {1, 1}},
                                            {{0, 0}, {0, 1}, {0, 2}, {1, 2}},
                                            {{1, 0}, {2, 0}, {0, 1}, {1, 1}},
                                            {{0, 0}, {1, 0}, {0, 1}, {1, 1}}};
    const auto& shape = kShapes[f.Next() % 4];
    const Colour c = kPieces[f.Next() % 6];
    const int pc = Between(f, 12, 17), pr = a.r0 + 1;
    for (const auto& cell : shape)
        block(pc + cell[0], pr + cell[1], c, false);
    const auto& next = kShapes[f.Next() % 4];
    for (const auto& cell : next)
        block(25 + cell[0], a.r0 + 4 + cell[1], kPieces[f.Next() % 6], false);
    Canvas text;
    Letter(text, 8, a.Top() + 8, "PUNTOS", 1);
    Letter(text, 8, a.Top() + 20, std::to_string(Between(f, 10, 99) * 250), 1);
    Letter(text, 8, a.Top() + 40, "NIVEL " + std::to_string(Between(f, 2, 9)), 1);
    Letter(text, 196, a.Top() + 16, "SIGUE", 1);
    s.Stamp(text, Yellow, true);
}

void Cavern(Screen& s, Filler& f, Area a, Colour rock) {
    s.Attrs(0, a.r0, 31, a.r1, rock, Black, true);
    s.Attrs(0, a.r1, 31, a.r1, Yellow, Red, true);
    s.Pixels().Shade(0, a.r1 * 8, kWidth, 8, [](int x, int y) {
        return (x + 2 * (y % 8)) % 7 < 2 || (y % 8 < 2 && (x / 3) % 3 != 0);
    });
    for (int col = 3; col < 32; col += 7)
        s.Flash(col, a.r1);
    Canvas stone;
    stone.Fill(0, a.Top(), kWidth, 4);
    for (int x = 0; x < kWidth;) {
        const int w = Between(f, 8, 18), len = Between(f, 8, a.Rows() * 3);
        stone.Triangle(x, a.Top() + 3, x + w, a.Top() + 3, x + w / 2, a.Top() + 3 + len);
        x += w;
    }
    const int base = a.r1 * 8 - 1;
    for (int x = 0; x < kWidth;) {
        const int w = Between(f, 10, 22), len = Between(f, 4, a.Rows() * 2);
        stone.Triangle(x, base, x + w, base, x + w / 2, base - len);
        x += w + Between(f, 0, 12);
    }
    stone.Fill(0, base - 2, kWidth, 3);
    // Ledges to stand on, and someone standing on one.
    const int ledgeY = a.Top() + a.Rows() * 4, lx = Between(f, 20, 60);
    stone.Fill(lx, ledgeY, 72, 4);
    stone.Fill(lx + 110, ledgeY + 18, 56, 4);
    s.Stamp(stone, rock, true);
    Canvas who;
    Figure(who, lx + 30, ledgeY - 10);
    s.Stamp(who, White, true);
    Canvas gems;
    for (int i = 0; i < 5; ++i) {
        const int gx = Between(f, 8, 248), gy = Between(f, a.Top() + 30, base - 30);
        if (stone.Any(gx / 8, gy / 8) || who.Any(gx / 8, gy / 8)) continue;
        gems.Triangle(gx - 3, gy, gx + 3, gy, gx, gy - 4);
        gems.Triangle(gx - 3, gy, gx + 3, gy, gx, gy + 4);
    }
    s.Stamp(gems, Cyan, true);
}

void Maze(Screen& s, Filler& f, Area a, Colour wall, Colour ground) {
    s.Attrs(0, a.r0, 31, a.r1, wall, ground, true);
    const int cols = 14, rows = (a.Rows() * 8 - 8) / 16;
    const int x0 = 16, y0 = a.Top() + 4;
    Canvas walls;
    walls.Fill(x0, y0, cols * 16 + 2, 2);
    walls.Fill(x0, y0 + rows * 16, cols * 16 + 2, 2);
    walls.Fill(x0, y0, 2, rows * 16 + 2);
    walls.Fill(x0 + cols * 16, y0, 2, rows * 16 + 2);
    // Each cell opens north or east: a maze with one way between any two cells.
    for (int j = 0; j < rows; ++j)
        for (int i = 0; i < cols; ++i) {
            bool east = i<cols - 1, north = j> 0;
            if (east && north) (f.Next() % 2 ? east : north) = false;
            if (!east && i < cols - 1) walls.Fill(x0 + (i + 1) * 16, y0 + j * 16, 2, 18);
            if (!north && j > 0) walls.Fill(x0 + i * 16, y0 + j * 16, 18, 2);
        }
    Canvas gaps;
    gaps.Fill(x0, y0 + (rows - 1) * 16 + 2, 2, 14);
    gaps.Fill(x0 + cols * 16, y0 + 2, 2, 14);
    s.Stamp(walls, wall, true);
    s.Erase(gaps);
    for (int y = y0 + 2; y < y0 + 16; y += 8)
        s.Flash((x0 + cols * 16) / 8, y / 8);
    Canvas hero;
    Figure(hero, x0 + 4, y0 + (rows - 1) * 16 + 4);
    s.Stamp(hero, White, true);
}

// --- A whole screen ---------------------------------------------------------------

// What the pictures of a title are drawn from.
struct Art {
    std::string title; // as the catalogue stores it: the side files are named after it
    std::string publisher;
    std::string year;
    Scene scene;
    std::vector<std::string> monitor{}; // what a computer in the scene shows
    std::string blurb{};                // the back of the inlay
    std::string machine = "48K";
};

void Paint(Screen& s, Filler& f, const Art& art, Area a) {
    switch (art.scene) {
    case Scene::Hills:
        return Hills(s, f, a, false);
    case Scene::Storm:
        return Hills(s, f, a, true);
    case Scene::Space:
        return Space(s, f, a);
    case Scene::Castle:
        return Castle(s, f, a);
    case Scene::City:
        return City(s, f, a);
    case Scene::Floor:
        return Floor(s, f, a);
    case Scene::Sea:
        return Sea(s, f, a, 1);
    case Scene::Battle:
        return Sea(s, f, a, 2);
    case Scene::Computer:
        return Computer(s, f, a, art.monitor);
    case Scene::Music:
        return Music(s, f, a);
    case Scene::Road:
        return Road(s, f, a);
    case Scene::Blocks:
        return Blocks(s, f, a);
    case Scene::Cavern: {
        // The rock's colour from the letters of the name, so that caves differ.
        unsigned letters = 0;
        for (char c : art.title)
            letters += static_cast<std::uint8_t>(c);
        return Cavern(s, f, a, std::array{Red, Magenta, Green, Yellow}[letters % 4]);
    }
    case Scene::Maze:
        return f.Next() % 2 ? Maze(s, f, a, Black, Green) : Maze(s, f, a, Yellow, Red);
    }
}

// The title in large letters above or below the scene, the publisher's line
// at the foot.
Screen LoadingScreenOf(const Art& art) {
    Filler f(art.title);
    Screen s;
    s.Attrs(0, 0, 31, 23, White, Black);
    const TitleLines title = FitTitle(Lettering(art.title), 240);
    const int rows = static_cast<int>(title.lines.size()) * title.scale;
    const bool onTop = f.Next() % 4 != 0;
    const int band = onTop ? 1 : 22 - rows;
    const Area scene = onTop ? Area{rows + 2, 21} : Area{0, band - 2};
    const int credits = onTop ? 22 : 23;

    static constexpr Colour kInks[] = {Red, Magenta, Yellow, Green, Cyan, White};
    const int scheme = static_cast<int>(f.Next() % 3), start = static_cast<int>(f.Next() % 6);
    const Colour paper = f.Next() % 3 == 0 ? Blue : Black;
    s.Attrs(0, band - 1, 31, band + rows, White, paper, true);
    for (int r = 0; r < rows; ++r) {
        Colour ink = scheme == 0   ? kInks[(start + r) % 6]
                     : scheme == 1 ? kInks[start]
                                   : kInks[(start + (r * 2 >= rows ? 1 : 0)) % 6];
        s.Attrs(0, band + r, 31, band + r, ink, paper, true);
    }
    const Letters style = title.scale == 1 ? Letters::Solid : static_cast<Letters>(f.Next() % 3);
    for (std::size_t i = 0; i < title.lines.size(); ++i) {
        const std::string& line = title.lines[i];
        Letter(s.Pixels(), (kWidth - TextWidth(line, title.scale)) / 2,
               (band + static_cast<int>(i) * title.scale) * 8, line, title.scale, style);
    }
    if (f.Next() % 2) {
        s.Pixels().Shade(0, (band - 1) * 8 + 5, kWidth, 1, [](int x, int) { return x % 4 < 2; });
        s.Pixels().Shade(0, (band + rows) * 8 + 2, kWidth, 1, [](int x, int) { return x % 4 < 2; });
    }

    Paint(s, f, art, scene);

    std::string foot = Lettering("© " + art.year + " " + art.publisher);
    foot = foot.substr(0, 32);
    s.Attrs(0, credits, 31, credits, onTop ? Yellow : White, Black, true);
    Letter(s.Pixels(), (kWidth - TextWidth(foot, 1)) / 2, credits * 8, foot, 1);
    return s;
}

// --- Inlays, maps and code sheets ---------------------------------------------------

// The Spectrum's colours, plain and BRIGHT, for screens shown inside a picture.
QRgb SpectrumRgb(int colour, bool bright) {
    const int on = bright ? 0xFF : 0xD7;
    return qRgb(colour & 2 ? on : 0, colour & 4 ? on : 0, colour & 1 ? on : 0);
}

QImage ScreenImage(const Screen& s) {
    QImage img(kWidth, kHeight, QImage::Format_RGB32);
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x) {
            const std::uint8_t a = s.AttrAt(x / 8, y / 8);
            const int colour = s.Pixels().At(x, y) ? a & 7 : (a >> 3) & 7;
            img.setPixel(x, y, SpectrumRgb(colour, a & 0x40));
        }
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

Bytes Jpeg(const QImage& img) {
    QByteArray data;
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    if (!img.save(&buffer, "JPG", 88)) return {};
    return Bytes(data.constData(), static_cast<std::size_t>(data.size()));
}

enum class InlayShape {
    Unfolded, // back, spine and front side by side: wide
    Front,    // the front alone: tall
    Box       // a box front, four by three
};

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

enum class MapKind { Rooms, Track };

// A plan of the game: its rooms and the ways between them, or the course of
// a race.
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

enum class CodeKind { Letters, Colours };

// The sheet that came in the box: the game asks for the code in a square
// before it starts. Printed dark, so that a photocopy of it reads badly.
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

// --- Blocks that several tapes share -------------------------------------------

// BASIC loader, optional screen, code: six standard speed blocks.
std::vector<Bytes> StandardLoad(std::string_view name, std::uint16_t start, std::size_t codeLen,
                                bool screen = true) {
    Filler f(name);
    Bytes program = LoaderProgram(static_cast<std::uint16_t>(start - 1), start, screen);
    std::vector<Bytes> out;
    out.push_back(
        Standard(RomHeader(RomType::Program, name, static_cast<std::uint16_t>(program.size()), 10,
                           static_cast<std::uint16_t>(program.size()))));
    out.push_back(Standard(RomData(program)));
    if (screen) {
        out.push_back(Standard(RomHeader(RomType::Code, "pantalla", kScreenSize, 16384, 32768)));
        out.push_back(Standard(RomData(LoadingScreen(name))));
    }
    out.push_back(Standard(
        RomHeader(RomType::Code, "codigo", static_cast<std::uint16_t>(codeLen), start, 32768)));
    out.push_back(Standard(RomData(f.Code(codeLen)), 0));
    return out;
}

Bytes PokesData(
    std::string_view description,
    const std::vector<std::pair<std::string, std::vector<std::array<int, 4>>>>& trainers) {
    Bytes out = Byte(description.size());
    out += description;
    out += Byte(trainers.size());
    for (const auto& [name, pokes] : trainers) {
        out += Byte(name.size());
        out += name;
        out += Byte(pokes.size());
        for (const auto& p : pokes) { // bank, address, value, original
            out += Byte(p[0]);
            Le16(out, p[1]);
            out += Byte(p[2]);
            out += Byte(p[3]);
        }
    }
    return out;
}

Bytes ScreenData(std::string_view description, std::string_view key) {
    Bytes out = Byte(description.size());
    out += description;
    out += '\0'; // border
    out += LoadingScreen(key);
    return out;
}

Bytes PictureData(std::string_view description, std::string_view key) {
    Bytes out = Byte(0); // GIF
    out += Byte(description.size());
    out += description;
    out += Gif(64, 48, key);
    return out;
}

// --- Snapshots, disks and sound -----------------------------------------------------

// 48K of RAM from 16384: the screen, then some code and a return address
// on the stack.
Bytes Ram48(const Bytes& screen, std::string_view key) {
    Filler f(key);
    Bytes ram(49152, '\0');
    ram.replace(0, kScreenSize, screen);
    ram.replace(32768 - 16384, 4096, f.Code(4096));
    ram[0xFF00 - 16384] = '\x00'; // return address 0x8000 on the stack
    ram[0xFF01 - 16384] = '\x80';
    return ram;
}

// A 48K .SNA: the 27-byte register header, then RAM from 16384.
Bytes SnaOf(const Bytes& ram) {
    Bytes regs(27, '\0');
    regs[0] = '\x3F';  // I
    regs[19] = '\x04'; // interrupts enabled
    regs[23] = '\x00'; // SP = 0xFF00, low byte
    regs[24] = '\xFF';
    regs[25] = '\x01'; // IM 1
    regs[26] = '\x07'; // white border
    return regs + ram;
}

Bytes Sna48(std::string_view key) {
    return SnaOf(Ram48(LoadingScreen(key), key));
}

// The .Z80 run-length scheme: ED ED count byte for runs of five or more, and
// for any run of ED; the byte after a lone ED is never the start of a run.
Bytes Z80Pack(std::string_view data) {
    Bytes out;
    std::size_t i = 0;
    while (i < data.size()) {
        const char b = data[i];
        std::size_t run = 1;
        while (i + run < data.size() && data[i + run] == b && run < 255)
            ++run;
        if (run >= 5 || (b == '\xED' && run >= 2)) {
            out += "\xED\xED";
            out += static_cast<char>(run);
            out += b;
            i += run;
            continue;
        }
        out += b;
        ++i;
        if (b == '\xED' && i < data.size()) out += data[i++];
    }
    return out;
}

// The first 30 bytes of every .Z80 file; pc 0 announces the longer header of
// versions 2 and 3.
Bytes Z80Registers(std::uint16_t pc, bool packed) {
    Bytes h(30, '\0');
    h[0] = '\x44'; // A
    h[1] = '\x81'; // F
    h[6] = static_cast<char>(pc & 0xFF);
    h[7] = static_cast<char>(pc >> 8);
    h[8] = '\x00'; // SP = 0xFF00
    h[9] = '\xFF';
    h[10] = '\x3F';                                            // I
    h[11] = '\x2A';                                            // R
    h[12] = static_cast<char>((1 << 1) | (packed ? 0x20 : 0)); // blue border
    h[27] = '\x01';                                            // IFF1
    h[28] = '\x01';                                            // IFF2
    h[29] = '\x01';                                            // IM 1, no issue 2 emulation
    return h;
}

// Version 1: one packed 48K block and its end mark.
Bytes Z80v1(const Bytes& ram) {
    return Z80Registers(0x8000, true) + Z80Pack(ram) + Bytes("\x00\xED\xED\x00", 4);
}

// Version 3: the 54-byte extension, then the memory pages one by one.
Bytes Z80v3(const std::vector<std::pair<int, Bytes>>& pages, bool is128) {
    Bytes ext;
    Le16(ext, 0x8000);                       // PC
    ext += static_cast<char>(is128 ? 4 : 0); // hardware: 128K or 48K
    ext += is128 ? '\x10' : '\0';            // last OUT to 0x7FFD: ROM 1, bank 0
    ext += '\0';                             // Interface I not paged
    ext += is128 ? '\x04' : '\0';            // AY sound in use
    ext += '\x07';                           // last OUT to 0xFFFD
    for (int r = 0; r < 16; ++r)             // AY registers: a quiet chip
        ext += r == 7 ? '\x3F' : '\0';
    ext += Bytes(54 - ext.size(), '\0');
    ext[61 - 32] = '\xFF'; // ROM at 0 and at 8192 (offsets in the file, less the 32 before)
    ext[62 - 32] = '\xFF';
    Bytes out = Z80Registers(0, true);
    Le16(out, 54);
    out += ext;
    for (const auto& [page, data] : pages) {
        const Bytes packed = Z80Pack(data);
        Le16(out, static_cast<std::uint32_t>(packed.size()));
        out += static_cast<char>(page);
        out += packed;
    }
    return out;
}

// 48K in the pages of version 3: 8 holds 0x4000, 4 holds 0x8000, 5 holds 0xC000.
std::vector<std::pair<int, Bytes>> Pages48(const Bytes& ram) {
    return {{8, ram.substr(0, 16384)}, {4, ram.substr(16384, 16384)}, {5, ram.substr(32768)}};
}

// 128K: banks 0 to 7 are pages 3 to 10; bank 5 is the screen, bank 2 the code.
std::vector<std::pair<int, Bytes>> Pages128(const Bytes& screen, std::string_view key) {
    Filler f(key);
    std::vector<std::pair<int, Bytes>> pages;
    for (int bank = 0; bank < 8; ++bank) {
        Bytes data(16384, '\0');
        if (bank == 5) data.replace(0, kScreenSize, screen);
        if (bank == 2) data.replace(0, 6000, f.Code(6000));
        if (bank == 1 || bank == 3) data.replace(0, 3000, f.Code(3000)); // levels
        pages.push_back({bank + 3, data});
    }
    return pages;
}

// A Super Level Loader file: a version 3 snapshot, then "SLT" behind an empty
// page header, a table of what follows, and the levels packed as pages are.
Bytes Slt(const Bytes& ram, const Bytes& screen, std::string_view key) {
    Filler f(key);
    Bytes out = Z80v3(Pages48(ram), false);
    out += Bytes("\0\0\0SLT", 6);
    std::vector<std::pair<std::pair<int, int>, Bytes>> entries; // (type, number), data
    for (int level = 1; level <= 3; ++level) {
        Bytes data(9000 + level * 500, '\0');
        data.replace(0, 2000, f.Code(2000));
        entries.push_back({{1, level}, Z80Pack(data)});
    }
    entries.push_back({{3, 0}, screen}); // the loading screen, as it is
    for (const auto& [id, data] : entries) {
        Le16(out, static_cast<std::uint32_t>(id.first));
        Le16(out, static_cast<std::uint32_t>(id.second));
        Le32(out, static_cast<std::uint32_t>(data.size()));
    }
    out += Bytes(8, '\0'); // end of the table
    for (const auto& entry : entries)
        out += entry.second;
    return out;
}

// The .SP format: "SP", length and start of the memory image, the registers,
// the border and a status word, then the 48K.
Bytes Sp(const Bytes& ram) {
    Bytes h("SP");
    Le16(h, 49152);
    Le16(h, 16384);
    for (int r = 0; r < 10; ++r) // BC DE HL AF IX IY BC' DE' HL' AF'
        Le16(h, r == 3 ? 0x4481 : 0);
    h += '\x2A';     // R
    h += '\x3F';     // I
    Le16(h, 0xFF00); // SP
    Le16(h, 0x8000); // PC
    Le16(h, 0);
    h += '\x04'; // green border
    h += '\0';
    Le16(h, 0x0001); // interrupts enabled, IM 1
    return h + ram;
}

// A Creative Voice file of a tape signal: each block as the ROM saves it,
// in square waves at 22 kHz.
Bytes Voc(const std::vector<Bytes>& romBlocks) {
    constexpr int kRateByte = 211; // 256 - 1000000 / 22222
    Bytes samples;
    bool high = false;
    long long owed = 0; // T-states times two not yet turned into samples
    auto pulse = [&](int tstates) {
        // 3.5 MHz over 22222 Hz: 157.5 T-states, or 315 halves, to a sample.
        owed += static_cast<long long>(tstates) * 2;
        const long long n = owed / 315;
        owed -= n * 315;
        samples.append(static_cast<std::size_t>(n), high ? '\xC0' : '\x40');
        high = !high;
    };
    for (const Bytes& block : romBlocks) {
        const int pilot = static_cast<std::uint8_t>(block[0]) < 0x80 ? 1600 : 800;
        for (int i = 0; i < pilot; ++i)
            pulse(2168);
        pulse(667);
        pulse(735);
        for (char c : block)
            for (int bit = 7; bit >= 0; --bit) {
                const int len = (static_cast<std::uint8_t>(c) >> bit) & 1 ? 1710 : 855;
                pulse(len);
                pulse(len);
            }
        samples.append(11111, '\x80'); // half a second of silence
    }
    Bytes out("Creative Voice File\x1A");
    Le16(out, 26);     // header size
    Le16(out, 0x010A); // version 1.10
    Le16(out, 0x1129); // its check: ~version + 0x1234
    out += '\x01';     // sound data
    Le24(out, static_cast<std::uint32_t>(samples.size() + 2));
    out += static_cast<char>(kRateByte);
    out += '\0'; // 8-bit, unpacked
    out += samples;
    out += '\0'; // terminator
    return out;
}

// The 128-byte header +3DOS puts in front of every file on disk.
Bytes Plus3Header(RomType type, std::uint16_t length, std::uint16_t param1, std::uint16_t param2) {
    Bytes h("PLUS3DOS\x1A\x01\x00", 11);
    Le32(h, length + 128u);
    h += static_cast<char>(type);
    Le16(h, length);
    Le16(h, param1);
    Le16(h, param2);
    h.resize(127, '\0');
    std::uint8_t sum = 0;
    for (char c : h)
        sum = static_cast<std::uint8_t>(sum + static_cast<std::uint8_t>(c));
    return h + static_cast<char>(sum);
}

// A +3 disk in the "MV - CPCEMU" format: 40 tracks of nine 512-byte sectors.
// Track 0 describes the disk in its first bytes; the directory and the files follow
// in 1K blocks from track 1.
Bytes PlusThreeDisk(const std::vector<std::pair<std::string, Bytes>>& files) {
    constexpr int kTracks = 40, kSectors = 9, kSector = 512;
    std::vector<Bytes> sectors(kTracks * kSectors, Bytes(kSector, '\xE5'));
    // +3 format, one side, 40 tracks of 9 sectors of 512 bytes, a reserved track,
    // 1K blocks, two of them for the directory, and the gaps.
    const Bytes layout("\x00\x00\x28\x09\x02\x01\x03\x02\x2A\x52", 10);
    sectors[0].replace(0, layout.size(), layout);
    auto block = [&](int n, const Bytes& data) { // 1K: two sectors from track 1
        for (int half = 0; half < 2; ++half) {
            const std::size_t from = static_cast<std::size_t>(half) * kSector;
            if (from >= data.size()) break;
            Bytes piece = data.substr(from, kSector);
            piece.resize(kSector, '\x1A');
            sectors[kSectors + n * 2 + half] = piece;
        }
    };
    Bytes directory(2048, '\xE5');
    int next = 2; // blocks 0 and 1 are the directory
    for (std::size_t e = 0; e < files.size(); ++e) {
        const auto& [name, data] = files[e];
        const int blocks = static_cast<int>((data.size() + 1023) / 1024);
        Bytes entry(32, '\0');
        const std::size_t dot = name.find('.');
        Bytes base = name.substr(0, dot),
              ext = dot == std::string::npos ? "" : name.substr(dot + 1);
        base.resize(8, ' ');
        ext.resize(3, ' ');
        entry.replace(1, 8, base);
        entry.replace(9, 3, ext);
        entry[15] = static_cast<char>(std::min<std::size_t>(128, (data.size() + 127) / 128));
        for (int b = 0; b < blocks; ++b) {
            entry[16 + b] = static_cast<char>(next);
            block(next++, data.substr(static_cast<std::size_t>(b) * 1024, 1024));
        }
        directory.replace(e * 32, 32, entry);
    }
    block(0, directory.substr(0, 1024));
    block(1, directory.substr(1024));

    Bytes out("MV - CPCEMU Disk-File\r\nDisk-Info\r\n");
    out += "Cintal        "; // the program that made it, 14 bytes
    out += static_cast<char>(kTracks);
    out += '\x01';
    Le16(out, 256 + kSectors * kSector);
    out.resize(256, '\0');
    for (int t = 0; t < kTracks; ++t) {
        Bytes info("Track-Info\r\n");
        info += Bytes(4, '\0');
        info += static_cast<char>(t);
        info += '\0';
        info += Bytes(2, '\0');
        info += '\x02'; // 512-byte sectors
        info += static_cast<char>(kSectors);
        info += '\x2A'; // gap
        info += '\xE5'; // filler
        for (int s = 0; s < kSectors; ++s) {
            info += static_cast<char>(t);
            info += '\0';
            info += static_cast<char>(s + 1);
            info += '\x02';
            info += Bytes(4, '\0');
        }
        info.resize(256, '\0');
        out += info;
        for (int s = 0; s < kSectors; ++s)
            out += sectors[static_cast<std::size_t>(t * kSectors + s)];
    }
    return out;
}

// A TR-DOS image cut after its last file: the catalogue of track 0, the
// disk's description in its ninth sector, the files from track 1.
Bytes TrDosDisk(const std::string& label,
                const std::vector<std::tuple<std::string, char, std::uint16_t, Bytes>>& files) {
    Bytes catalogue(16 * 256, '\0');
    Bytes body;
    int sector = 0, track = 1;
    for (std::size_t i = 0; i < files.size(); ++i) {
        const auto& [name, type, param, data] = files[i];
        const int count = static_cast<int>((data.size() + 255) / 256);
        Bytes entry = name.substr(0, 8);
        entry.resize(8, ' ');
        entry += type;
        Le16(entry, param);
        Le16(entry, static_cast<std::uint32_t>(data.size()));
        entry += static_cast<char>(count);
        entry += static_cast<char>(sector);
        entry += static_cast<char>(track);
        catalogue.replace(i * 16, 16, entry);
        Bytes padded = data;
        padded.resize(static_cast<std::size_t>(count) * 256, '\0');
        body += padded;
        sector += count;
        track += sector / 16;
        sector %= 16;
    }
    const int used = static_cast<int>(body.size() / 256);
    Bytes& info = catalogue; // its ninth sector describes the disk
    const std::size_t at = 8 * 256;
    info[at + 0xE1] = static_cast<char>(sector);
    info[at + 0xE2] = static_cast<char>(track);
    info[at + 0xE3] = '\x16'; // 80 tracks, two sides
    info[at + 0xE4] = static_cast<char>(files.size());
    const int free = 2544 - used;
    info[at + 0xE5] = static_cast<char>(free & 0xFF);
    info[at + 0xE6] = static_cast<char>(free >> 8);
    info[at + 0xE7] = '\x10'; // TR-DOS
    for (int i = 0; i < 9; ++i)
        info[at + 0xEA + i] = ' ';
    Bytes name = label.substr(0, 8);
    name.resize(8, ' ');
    info.replace(at + 0xF5, 8, name);
    return catalogue + body;
}

// TZX 1.20's generalised data block, which this program has no decoder for.
Bytes Generalized(std::string_view data) {
    Bytes body;
    Le16(body, 1000); // pause
    Le32(body, 0);    // no pilot
    body += '\0';
    body += '\0';
    Le32(body, static_cast<std::uint32_t>(data.size() * 8));
    body += '\x02'; // two pulses per symbol
    body += '\x02'; // two symbols
    for (std::uint16_t pulse : {855, 1710}) {
        body += '\0';
        Le16(body, pulse);
        Le16(body, pulse);
    }
    body += data;
    Bytes out("\x19");
    Le32(out, static_cast<std::uint32_t>(body.size()));
    return out + body;
}

// --- Writing -------------------------------------------------------------------

// Archive texts in UTF-8 here; the tape gets them in Windows-1252.
struct Info {
    std::string name{}, publisher{}, author{}, year{}, lang{}, type{}, price{}, loader{}, origin{},
        republisher{}, comments{};
};

void Fill(ArchiveInfo& a, const Info& i) {
    a.iName = Utf8ToCp1252(i.name);
    a.iPublisher = Utf8ToCp1252(i.publisher);
    a.iAuthor = Utf8ToCp1252(i.author);
    a.iYear = Utf8ToCp1252(i.year);
    a.iLang = Utf8ToCp1252(i.lang);
    a.iType = Utf8ToCp1252(i.type);
    a.iPrice = Utf8ToCp1252(i.price);
    a.iSchema = Utf8ToCp1252(i.loader);
    a.iOrigin = Utf8ToCp1252(i.origin);
    a.iRePublisher = Utf8ToCp1252(i.republisher);
    a.iComments = Utf8ToCp1252(i.comments);
}

// Through the engine: the archive block first, then the blocks in order.
Bytes Assemble(std::int16_t version, std::int16_t revision, const Info& info,
               const std::vector<Bytes>& blocks) {
    TZXTape t;
    for (const auto& b : blocks)
        t.Blocks().Add(static_cast<std::uint8_t>(b[0]), {}, b, static_cast<double>(b.size()));
    Fill(t.ArchiveInfo(), info);
    return t.Image(version, revision);
}

// The archive block exactly as the engine builds it, to place by hand.
Bytes ArchiveOf(const Info& info) {
    TZXTape t;
    Fill(t.ArchiveInfo(), info);
    return t.BloqueInfo();
}

Bytes Join(const std::vector<Bytes>& parts) {
    Bytes out;
    for (const auto& p : parts)
        out += p;
    return out;
}

Bytes Cp(const char* utf8) {
    return Utf8ToCp1252(utf8);
}

int failures = 0;

void Write(const fs::path& dir, const std::string& name, const Bytes& bytes) {
    fs::path path = dir / name;
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) {
        std::cerr << "cintal-demo: no se puede escribir " << path.string() << "\n";
        ++failures;
    }
}

// --- Side files ------------------------------------------------------------------

enum class Side { Screens, Inlays, Maps, Codes };

// The side folders as each demo folder spells them. The collection was put
// together on a system that ignores case, and the program finds them so.
fs::path SideDir(const fs::path& dir, Side side) {
    struct Spelling {
        const char* folder;
        const char* names[4];
    };
    static const Spelling kSpellings[] = {
        {"Juegos", {"scrshot", "Inlay", "Map", "Codesheet"}},
        {"Utilidades", {"SCRSHOT", "inlay", "Map", "Codesheet"}},
        {"Varios", {"ScrShot", "Inlay", "map", "Codesheet"}},
        {"Discos", {"scrshot", "INLAY", "Map", "CODESHEET"}},
    };
    const char* name = kSpellings[0].names[static_cast<int>(side)];
    for (const Spelling& s : kSpellings)
        if (dir.filename() == s.folder) name = s.names[static_cast<int>(side)];
    std::error_code ec;
    fs::create_directories(dir / name, ec);
    return dir / name;
}

// The title as its side files are named: ": " becomes " - ", "?" goes.
std::string SideBase(std::string title) {
    for (std::size_t at = title.find(": "); at != std::string::npos; at = title.find(": ", at))
        title.replace(at, 2, " - ");
    std::erase(title, '?');
    return title;
}

void Picture(const fs::path& dir, const std::string& name, const QImage& img) {
    const Bytes jpeg = Jpeg(img);
    if (jpeg.empty()) {
        std::cerr << "cintal-demo: no se puede hacer el JPEG " << name << "\n";
        ++failures;
        return;
    }
    Write(dir, name, jpeg);
}

// Each writer takes the file name from the title unless it is given one.
void ScreenFile(const fs::path& dir, const Art& art, const std::string& name = {}) {
    Write(SideDir(dir, Side::Screens), name.empty() ? SideBase(art.title) + ".scr" : name,
          LoadingScreenOf(art).Encode());
}

void InlayFile(const fs::path& dir, const Art& art, InlayShape shape,
               const std::string& name = {}) {
    Picture(SideDir(dir, Side::Inlays), name.empty() ? SideBase(art.title) + ".jpg" : name,
            InlayOf(art, shape));
}

void MapFile(const fs::path& dir, const Art& art, MapKind kind, QSize size) {
    Picture(SideDir(dir, Side::Maps), SideBase(art.title) + "_Map.jpg", MapOf(art, kind, size));
}

void CodeSheetFile(const fs::path& dir, const Art& art, CodeKind kind) {
    Picture(SideDir(dir, Side::Codes), SideBase(art.title) + "_Codesheet.jpg",
            CodeSheetOf(art, kind));
}

Art ArtOf(const Info& info, Scene scene) {
    return Art{.title = info.name,
               .publisher = info.publisher,
               .year = info.year,
               .scene = scene,
               .blurb = info.comments};
}

// --- The collection ------------------------------------------------------------

void Juegos(const fs::path& dir) {
    {
        Info info{.name = "Castillo Sombrío",
                  .publisher = "Zafiro Software",
                  .author = "J. Montero, L. Gil",
                  .year = "1986",
                  .lang = "Español",
                  .type = "Videoaventura",
                  .price = "875 pts",
                  .loader = "ROM",
                  .origin = "Original",
                  .comments = "Edición original en casete. © 1986 Zafiro Software"};
        auto blocks = StandardLoad("CASTILLO", 25000, 30000);
        blocks.push_back(Custom(
            "POKEs", PokesData(Cp("Pokes de la revista"),
                               {{Cp("Vidas infinitas"), {{8, 31460, 0, 53}}},
                                {Cp("Energía infinita"), {{8, 28012, 0, 61}, {8, 28013, 0, 1}}},
                                {"Sin enemigos", {{8, 40112, 201, 62}}}})));
        Write(dir, "Castillo Sombrio.tzx", Assemble(1, 10, info, blocks));
        // Its screen lies beside the snapshot in Varios, not here.
        InlayFile(dir, ArtOf(info, Scene::Castle), InlayShape::Front);
    }
    {
        // A ROM-speed loader that hands over to its own turbo routine.
        Info info{.name = "El Pequeño Minero",
                  .publisher = "Lince Soft",
                  .author = "Íñigo Arrieta",
                  .year = "1987",
                  .lang = "Español",
                  .type = "Plataformas",
                  .price = "£1.99",
                  .loader = "Cargador turbo propio",
                  .origin = "Reedición",
                  .republisher = "Budget Bytes Ltd",
                  .comments = "Reedición económica para el Reino Unido. Incluye dos niveles "
                              "nuevos."};
        Filler f("minero");
        auto blocks = StandardLoad("\x7F"
                                   "Lince 87",
                                   24000, 1200, false);
        blocks.push_back(PureTone(2168, 3223));
        blocks.push_back(Pulses({667, 735}));
        blocks.push_back(PureData(RomData(f.Code(256)), 0));
        blocks.push_back(Turbo(RomData(LoadingScreen("minero")), 0));
        blocks.push_back(Turbo(RomData(f.Code(28000))));
        Write(dir, "El Pequeno Minero.tzx", Assemble(1, 13, info, blocks));
        ScreenFile(dir, ArtOf(info, Scene::Cavern));
    }
    {
        Info info{.name = "Galactic Raiders",
                  .publisher = "Northern Star Software",
                  .author = "Paul Hadley",
                  .year = "1985",
                  .lang = "English",
                  .type = "Arcade: shoot-em-up",
                  .price = "£5.95",
                  .loader = "ROM + turbo",
                  .origin = "Original",
                  .comments = "48K and 128K versions on one tape."};
        Filler f("raiders");
        auto load = StandardLoad("Raiders", 26000, 2000, true);
        std::vector<Bytes> blocks{GroupStart("Side A")};
        blocks.insert(blocks.end(), load.begin(), load.end());
        // 128K: check the model, a jingle, the large code, then over the 48K code.
        blocks.push_back(Select({{1, "128K version"}, {8, "48K version"}}));
        blocks.push_back(StopIf48K());
        blocks.push_back(LoopStart(3));
        blocks.push_back(PureTone(620, 800));
        blocks.push_back(Pulses({300, 300, 600}));
        blocks.push_back(LoopEnd());
        blocks.push_back(Turbo(RomData(f.Code(16000))));
        blocks.push_back(Jump(2));
        blocks.push_back(Turbo(RomData(f.Code(12000))));
        blocks.push_back(GroupEnd());
        blocks.push_back(StopTape());
        Write(dir, "Galactic Raiders.tzx", Assemble(1, 20, info, blocks));
        // Side files named in capitals, as a collection copied from an old disk has them.
        Art art = ArtOf(info, Scene::Space);
        art.machine = "48K / 128K";
        ScreenFile(dir, art, "GALACTIC RAIDERS.SCR");
        InlayFile(dir, art, InlayShape::Front, "GALACTIC RAIDERS.JPG");
    }
    {
        // Named in capitals, as the older collections did.
        Info info{.name = "Abadía Negra",
                  .publisher = "Bytes del Sur",
                  .author = "M. A. Ruiz",
                  .year = "1988",
                  .lang = "Español",
                  .type = "Videoaventura",
                  .price = "1.200 pts",
                  .origin = "Original",
                  .comments = "Cara A: juego. Cara B: tablas de puntuaciones."};
        Filler f("abadia");
        auto blocks = StandardLoad("ABADIA", 25500, 34000);
        blocks.push_back(StopTape());
        blocks.push_back(Text(Cp("Cara B")));
        blocks.push_back(Standard(RomHeader(RomType::NumberArray, "puntos", 56, 0x81, 32768)));
        blocks.push_back(Standard(RomData(f.Code(56))));
        blocks.push_back(Pause(2000));
        blocks.push_back(Standard(RomHeader(RomType::CharArray, "nombres", 83, 0xC1, 32768)));
        blocks.push_back(Standard(RomData(f.Code(83))));
        Write(dir, "ABADIA NEGRA.TZX", Assemble(1, 13, info, blocks));
        const Art art = ArtOf(info, Scene::Castle);
        ScreenFile(dir, art);
        MapFile(dir, art, MapKind::Rooms, QSize(1200, 400));
    }
    {
        // Some tools append the archive block after the data.
        Info info{.name = "Torre de Marfil",
                  .publisher = "Zafiro Software",
                  .year = "1987",
                  .lang = "Español",
                  .type = "Estrategia",
                  .origin = "Original"};
        auto blocks = StandardLoad("TORRE", 27000, 22000);
        Write(dir, "Torre de Marfil.tzx", TzxHeader(1, 13) + Join(blocks) + ArchiveOf(info));
        ScreenFile(dir, ArtOf(info, Scene::Floor));
    }
    {
        // Two archive blocks: the second corrects the year and adds a comment.
        Info first{.name = "Pirata Pata de Palo",
                   .publisher = "Bytes del Sur",
                   .year = "1986",
                   .lang = "Español",
                   .type = "Aventura de texto"};
        Bytes second = Archive({{3, "1987"}, {255, Cp("Año corregido según el inlay.")}});
        auto blocks = StandardLoad("PIRATA", 24500, 18000, false);
        Write(dir, "Pirata Pata de Palo.tzx",
              TzxHeader(1, 13) + ArchiveOf(first) + blocks[0] + blocks[1] + second + blocks[2] +
                  blocks[3]);
        Art art = ArtOf(first, Scene::Sea);
        art.blurb = "El capitán Pata de Palo ha perdido su barco, su loro y el mapa del tesoro. "
                    "Recorra la isla, hable con sus gentes y descubra quién se los llevó. "
                    "Una aventura de texto con más de cien localidades.";
        ScreenFile(dir, art);
        InlayFile(dir, art, InlayShape::Unfolded);
    }
    {
        // A dump that stopped before the end of the last block.
        Info info{.name = "Ninja Nocturno",
                  .publisher = "Lince Soft",
                  .year = "1989",
                  .lang = "Español",
                  .type = "Arcade: lucha",
                  .origin = "Original",
                  .comments = "Copia incompleta: falta el final del último bloque."};
        Bytes whole = Assemble(1, 10, info, StandardLoad("NINJA", 25000, 26000));
        Write(dir, "Ninja Nocturno.tzx", whole.substr(0, whole.size() - 9000));
        ScreenFile(dir, ArtOf(info, Scene::City));
    }
    {
        // Both sides merged into one file; the levels are loaded as subroutines.
        Info info{.name = "Operación Tormenta",
                  .publisher = "Topacio Soft",
                  .author = "Equipo Topacio",
                  .year = "1988",
                  .lang = "Español",
                  .type = "Arcade: disparos",
                  .price = "995 pts",
                  .loader = "ROM",
                  .origin = "Original",
                  .comments = "Cinta de dos caras unida en un solo archivo."};
        Filler f("tormenta");
        auto blocks = StandardLoad("TORMENTA", 26000, 15000);
        blocks.push_back(MergeMarker(1, 13));
        blocks.push_back(CallSequence({2, 5}));
        blocks.push_back(Jump(6));
        blocks.push_back(Standard(RomHeader(RomType::Code, "nivel 1", 9000, 40000, 32768)));
        blocks.push_back(Standard(RomData(f.Code(9000))));
        blocks.push_back(Return());
        blocks.push_back(Standard(RomData(f.Code(9500))));
        blocks.push_back(Return());
        blocks.push_back(MergeMarker(1, 10));
        blocks.push_back(StopTape());
        Write(dir, "Operación Tormenta.tzx", Assemble(1, 13, info, blocks));
        ScreenFile(dir, ArtOf(info, Scene::Storm));
    }
    {
        // TZX 1.20 with a block this program can't walk over, blocks behind it.
        Info info{.name = "Mansión Misteriosa",
                  .publisher = "Topacio Soft",
                  .year = "1990",
                  .lang = "Español",
                  .type = "Videoaventura",
                  .loader = "Datos generalizados",
                  .origin = "Original"};
        Filler f("mansion");
        auto blocks = StandardLoad("MANSION", 25000, 4000, false);
        blocks.push_back(Generalized(f.Code(3000)));
        blocks.push_back(Pause(1000));
        blocks.push_back(Turbo(RomData(f.Code(20000))));
        // The writer carries a block it can't decode; only the reader stops at it.
        Write(dir, "Mansion Misteriosa.tzx", Assemble(1, 20, info, blocks));
        const Art art = ArtOf(info, Scene::Castle);
        ScreenFile(dir, art);
        MapFile(dir, art, MapKind::Rooms, QSize(960, 480));
    }
    {
        // An early dump: format 0.5, no archive block, a text block instead.
        auto blocks = StandardLoad("RANAS", 28000, 9000, false);
        blocks.insert(blocks.begin(), Text("Ranas Saltarinas - (c) 1984 Erizo"));
        Write(dir, "Ranas Saltarinas.tzx", Assemble(0, 5, {}, blocks));
        // One screen for both files of the title: the program matches the TAP's
        // capitals to it.
        ScreenFile(dir, Art{.title = "Ranas Saltarinas",
                            .publisher = "Erizo",
                            .year = "1984",
                            .scene = Scene::Hills});

        // The same game as a TAP file, whose TZX already stands beside it.
        Filler f("RANAS");
        Bytes program = LoaderProgram(27999, 28000, false);
        Write(dir, "RANAS SALTARINAS.tap",
              TapEntry(RomHeader(RomType::Program, "RANAS",
                                 static_cast<std::uint16_t>(program.size()), 10,
                                 static_cast<std::uint16_t>(program.size()))) +
                  TapEntry(RomData(program)) +
                  TapEntry(RomHeader(RomType::Code, "codigo", 9000, 28000, 32768)) +
                  TapEntry(RomData(f.Code(9000))));
    }
    // Snapshots of games whose tapes the collection lacks. Their titles and
    // details are in the catalogue; the screen in each snapshot is the one
    // the game was showing.
    {
        const Art art{.title = "Misión: Rescate?",
                      .publisher = "Lince Soft",
                      .year = "1987",
                      .scene = Scene::City,
                      .blurb = "Tres rehenes, un helicóptero y una ciudad tomada por la banda de "
                               "los Cuervos. Tiene hasta el amanecer para sacarlos de allí. "
                               "¿Lo conseguirá? Doce pisos, cuarenta pantallas y un final que "
                               "nadie ha visto todavía."};
        Write(dir, "Mision Rescate.z80", Z80v1(Ram48(LoadingScreenOf(art).Encode(), "rescate")));
        ScreenFile(dir, art);
        InlayFile(dir, art, InlayShape::Unfolded);
        MapFile(dir, art, MapKind::Rooms, QSize(1050, 450));
        CodeSheetFile(dir, art, CodeKind::Letters);
    }
    {
        const Art art{.title = "Dragón de Fuego",
                      .publisher = "Bytes del Sur",
                      .year = "1986",
                      .scene = Scene::Cavern};
        Write(dir, "Dragon de Fuego.sna", SnaOf(Ram48(LoadingScreenOf(art).Encode(), "dragon")));
        ScreenFile(dir, art);
    }
    {
        const Art art{.title = "Comando Tigre",
                      .publisher = "Topacio Soft",
                      .year = "1989",
                      .scene = Scene::Hills,
                      .blurb = "La selva esconde la base del coronel Vargas. Dos comandos, "
                               "munición para una noche y ningún camino de vuelta. Para uno o "
                               "dos jugadores, con música para el chip de sonido del 128K.",
                      .machine = "128K"};
        Write(dir, "Comando Tigre.z80",
              Z80v3(Pages128(LoadingScreenOf(art).Encode(), "tigre"), true));
        ScreenFile(dir, art);
        InlayFile(dir, art, InlayShape::Unfolded);
        CodeSheetFile(dir, art, CodeKind::Colours);
    }
    {
        const Art art{.title = "Cavernas Abisales",
                      .publisher = "Erizo Soft",
                      .year = "1990",
                      .scene = Scene::Cavern};
        const Bytes screen = LoadingScreenOf(art).Encode();
        Write(dir, "Cavernas Abisales.slt", Slt(Ram48(screen, "cavernas"), screen, "cavernas"));
        ScreenFile(dir, art);
        MapFile(dir, art, MapKind::Rooms, QSize(900, 450));
    }
    {
        // A name cut to eight capitals, as the disks of the time kept them.
        const Art art{.title = "Laberinto del Minotauro",
                      .publisher = "Microbyte Ediciones",
                      .year = "1984",
                      .scene = Scene::Maze};
        Write(dir, "LABERINT.SP", Sp(Ram48(LoadingScreenOf(art).Encode(), "laberinto")));
        ScreenFile(dir, art);
    }
}

void Utilidades(const fs::path& dir) {
    {
        Info info{.name = "Ensamblador ZX",
                  .publisher = "Microbyte Ediciones",
                  .author = "Carlos Peña",
                  .year = "1985",
                  .lang = "Español",
                  .type = "Utilidad: ensamblador",
                  .price = "2.500 pts",
                  .origin = "Original",
                  .comments = "Ensamblador y monitor de código máquina.\r\nIncluye manual."};
        Bytes manual = Cp("ENSAMBLADOR ZX - MANUAL\r\r"
                          "1. Carga: LOAD \"\" y pulse ENTER.\r"
                          "2. Editor: las líneas se numeran de 10 en 10.\r"
                          "3. Ensamblar: pulse A; los errores se señalan con ?.\r"
                          "4. Grabar el código: pulse S e indique dirección y longitud.\r");
        std::vector<Bytes> blocks{
            Text(Cp("Ensamblador ZX - versión 2")),
            MessageBlock(Cp("Pare el casete tras la carga"), 5),
            Hardware({{0, 0, 0}, {0, 3, 1}, {3, 0, 0}}),
            EmulationInfo(),
        };
        auto load = StandardLoad("ENSAMB", 50000, 11000, false);
        blocks.insert(blocks.end(), load.begin(), load.end());
        blocks.push_back(Custom("Instructions", manual));
        Write(dir, "Ensamblador ZX.tzx", Assemble(1, 10, info, blocks));
        Art art = ArtOf(info, Scene::Computer);
        art.monitor = {"ORG 50000", "LD HL,16384", "LD DE,16385", "LD BC,6911",
                       "LD (HL),L", "LDIR",        "RET"};
        art.blurb = "Ensamblador de dos pasadas y monitor de código máquina en una sola carga. "
                    "Etiquetas de hasta seis letras, expresiones, volcado en hexadecimal y "
                    "desensamblado de la ROM. Con manual de cuarenta páginas.";
        ScreenFile(dir, art);
        InlayFile(dir, art, InlayShape::Unfolded);
    }
    {
        Info info{.name = "Editor de Textos",
                  .publisher = "Microbyte Ediciones",
                  .year = "1986",
                  .lang = "Español",
                  .type = "Utilidad: procesador de textos",
                  .origin = "Original"};
        Bytes doc = Cp("Bienvenido al Editor de Textos.\rEste documento de ejemplo se carga "
                       "con la opción L del menú.\r");
        std::vector<Bytes> blocks = StandardLoad("EDITOR", 30000, 14000, false);
        blocks.push_back(Custom("ZX-Edit document", Byte(0) + doc));
        Write(dir, "Editor de Textos.tzx", Assemble(1, 13, info, blocks));
    }
    {
        Info info{.name = "Copión 48",
                  .publisher = "Erizo Soft",
                  .year = "1985",
                  .lang = "Español",
                  .type = "Utilidad: copiador",
                  .loader = "Grabación directa",
                  .origin = "Original",
                  .comments = "Sólo para copias de seguridad."};
        Bytes samples;
        for (int i = 0; i < 4000; ++i)
            samples += static_cast<char>((i / 3) % 2 ? 0xFF : 0x00);
        std::vector<Bytes> blocks{DirectRecording(samples),
                                  Snapshot(SnapshotType::SNA, Sna48("copion"))};
        Write(dir, "Copion 48.tzx", Assemble(1, 13, info, blocks));
        Art art = ArtOf(info, Scene::Computer);
        art.monitor = {"COPION 48",     "", "BLOQUE 1 DE 4",  "BYTES: pantalla",
                       "LONGITUD 6912", "", "PULSE UNA TECLA"};
        ScreenFile(dir, art);
    }
    {
        Info info{.name = "Pinta Píxel",
                  .publisher = "Erizo Soft",
                  .author = "Ana Belén Sáez",
                  .year = "1987",
                  .lang = "Español",
                  .type = "Utilidad: gráficos",
                  .price = "1.500 pts",
                  .origin = "Original",
                  .comments = "Con la pantalla de carga y la carátula dentro de la cinta."};
        std::vector<Bytes> blocks = StandardLoad("PINTA", 32000, 12000, false);
        blocks.push_back(
            Custom("Spectrum Screen", ScreenData(Cp("Pantalla de presentación"), "pinta")));
        blocks.push_back(Custom("Spectrum Screen", ScreenData("", "pinta2")));
        blocks.push_back(Custom("Picture", PictureData(Cp("Carátula delantera"), "pinta")));
        blocks.push_back(Custom("Picture", PictureData("", "pinta-b")));
        blocks.push_back(Custom("Palette Data", Bytes("\x00\x07\x02\x05", 4)));
        Write(dir, "Pinta Pixel.tzx", Assemble(1, 13, info, blocks));
        const Art art = ArtOf(info, Scene::Computer); // nothing on its screen but the colours
        ScreenFile(dir, art);
        InlayFile(dir, art, InlayShape::Front);
    }
    {
        Filler f("curso");
        BasicProgram p;
        p.Line(10, Str(tok::CLS) + ":" + tok::PRINT + "\"CURSO DE BASIC - LECCION 1\"");
        p.Line(20, Str(tok::REM) + "Las variables");
        p.Line(30, Str(tok::POKE) + Num(23658) + "," + Num(8));
        p.Line(40, Str(tok::LOAD) + "\"\"" + tok::CODE);
        Write(dir, "Curso de BASIC.tap",
              TapEntry(RomHeader(RomType::Program, "CURSO 1",
                                 static_cast<std::uint16_t>(p.Get().size()), 10,
                                 static_cast<std::uint16_t>(p.Get().size()))) +
                  TapEntry(RomData(p.Get())) +
                  TapEntry(RomHeader(RomType::Code, "ejemplos", 1500, 40000, 32768)) +
                  TapEntry(RomData(f.Code(1500))));
    }
}

void Varios(const fs::path& dir) {
    {
        // A tape that carries its own loading screen and has no screen file
        // beside it: the main window shows the screen from inside the tape.
        Info info{.name = "Tesoro del Faraón",
                  .publisher = "Grupo Eco",
                  .year = "1985",
                  .lang = "Español",
                  .type = "Arcade",
                  .origin = "Original"};
        const Art art{.title = "Tesoro del Faraón",
                      .publisher = "Grupo Eco",
                      .year = "1985",
                      .scene = Scene::Storm};
        auto blocks = StandardLoad("FARAON", 26000, 12000, false);
        blocks.insert(blocks.begin() + 2,
                      {Standard(RomHeader(RomType::Code, "pantalla", kScreenSize, 16384, 32768)),
                       Standard(RomData(LoadingScreenOf(art).Encode()))});
        Write(dir, "Tesoro del Faraon.tzx", Assemble(1, 13, info, blocks));
    }
    {
        // Ranas Saltarinas again, from another archive: a newer format, its
        // title text spelled otherwise, a pause more and one byte of the code
        // changed (its checksum no longer adds up). The two tapes are what
        // "Comparar cintas" is for.
        auto blocks = StandardLoad("RANAS", 28000, 9000, false);
        blocks.insert(blocks.begin(), Text("Ranas Saltarinas (c) 1984 Erizo Soft"));
        blocks.insert(blocks.begin() + 3, Pause(2000));
        blocks.back()[4000] = static_cast<char>(blocks.back()[4000] ^ 0x10);
        Write(dir, "Ranas Saltarinas.tzx", Assemble(1, 13, {}, blocks));
    }
    {
        Info info{.name = "Demo Musical",
                  .publisher = "Grupo Eco",
                  .author = "Eco & Sonia",
                  .year = "1991",
                  .lang = "Sin texto",
                  .type = "Demo",
                  .price = "Gratuito",
                  .origin = "Dominio público"};
        Filler f("demo");
        std::vector<Bytes> blocks{GroupStart("Intro")};
        auto load = StandardLoad("DEMO", 32768, 8000);
        blocks.insert(blocks.end(), load.begin(), load.end());
        blocks.push_back(GroupEnd());
        blocks.push_back(MessageBlock("Press any key", 3));
        blocks.push_back(LoopStart(4));
        blocks.push_back(PureData(f.Code(600), 100));
        blocks.push_back(PureTone(1000, 200));
        blocks.push_back(LoopEnd());
        Write(dir, "Demo Musical.tzx", Assemble(1, 13, info, blocks));
        const Art art = ArtOf(info, Scene::Music);
        ScreenFile(dir, art);
        InlayFile(dir, art, InlayShape::Box);
    }
    {
        Info info{.name = "Revista Microbyte nº 12",
                  .publisher = "Microbyte Ediciones",
                  .year = "1986",
                  .lang = "Español",
                  .type = "Revista en cinta",
                  .price = "450 pts",
                  .origin = "Original",
                  .comments = "Programas de los lectores: Frontón, Serpiente y Agenda."};
        std::vector<Bytes> blocks;
        for (const char* name : {"FRONTON", "SERPIENTE", "AGENDA"}) {
            blocks.push_back(GroupStart(name));
            blocks.push_back(Text(Cp("Programa enviado por un lector")));
            auto load = StandardLoad(name, 30000, 3000 + std::string(name).size() * 400, false);
            blocks.insert(blocks.end(), load.begin(), load.end());
            blocks.push_back(GroupEnd());
            blocks.push_back(Pause(1500));
        }
        Write(dir, "Revista Microbyte 12.tzx", Assemble(1, 13, info, blocks));
        Art art = ArtOf(info, Scene::Computer);
        art.monitor = {"MICROBYTE Nº 12", "", "1 FRONTON",  "2 SERPIENTE",
                       "3 AGENDA",        "", "ELIJA (1-3)"};
        ScreenFile(dir, art);
    }
    {
        Info info{.name = "Cinta sin programas",
                  .comments = "Sólo la información de archivo: una cinta que no carga nada."};
        Write(dir, "Cinta Vacia.tzx", Assemble(1, 13, info, {}));
    }
    {
        Filler f("tetrix");
        Bytes program = LoaderProgram(29999, 30000, true);
        Write(dir, "Tetrix.tap",
              TapEntry(RomHeader(RomType::Program, "TETRIX",
                                 static_cast<std::uint16_t>(program.size()), 10,
                                 static_cast<std::uint16_t>(program.size()))) +
                  TapEntry(RomData(program)) +
                  TapEntry(RomHeader(RomType::Code, "pantalla", kScreenSize, 16384, 32768)) +
                  TapEntry(RomData(LoadingScreen("tetrix"))) +
                  TapEntry(RomHeader(RomType::Code, "TETRIX", 7000, 30000, 32768)) +
                  TapEntry(RomData(f.Code(7000))));
        ScreenFile(dir, Art{.title = "Tetrix",
                            .publisher = "Grupo Eco",
                            .year = "1990",
                            .scene = Scene::Blocks});
    }
    {
        // The last length claims more bytes than the file holds.
        Filler f("roto");
        Bytes tap = TapEntry(RomHeader(RomType::Code, "ROTO", 5000, 32768, 32768)) +
                    TapEntry(RomData(f.Code(5000)));
        Write(dir, "Roto.tap", tap.substr(0, tap.size() - 1200));
    }
    {
        // A title with files in two folders: its tape is in Juegos, this
        // snapshot here, and only here is its screen.
        const Art art{.title = "Castillo Sombrío",
                      .publisher = "Zafiro Software",
                      .year = "1986",
                      .scene = Scene::Castle};
        Write(dir, "Castillo Sombrio.z80",
              Z80v3(Pages48(Ram48(LoadingScreenOf(art).Encode(), "castillo")), false));
        ScreenFile(dir, art);
    }
    {
        // The tape of a magazine's cover recorded as sound: a BASIC loader.
        const Art art{.title = "Rally del Desierto",
                      .publisher = "Zafiro Software",
                      .year = "1988",
                      .scene = Scene::Road};
        const Bytes program = LoaderProgram(29999, 30000, false);
        Write(dir, "Rally del Desierto.voc",
              Voc({RomHeader(RomType::Program, "RALLY", static_cast<std::uint16_t>(program.size()),
                             10, static_cast<std::uint16_t>(program.size())),
                   RomData(program)}));
        ScreenFile(dir, art);
        MapFile(dir, art, MapKind::Track, QSize(1000, 500));
    }
    // The screen of a title whose snapshot is lost: the catalogue still has
    // its file row.
    ScreenFile(dir, Art{.title = "Nave Fantasma",
                        .publisher = "Zafiro Software",
                        .year = "1988",
                        .scene = Scene::Sea});
}

void Discos(const fs::path& dir) {
    {
        // A +3 disk: a BASIC loader that loads the screen and then the code.
        const Art art{.title = "El Templo Perdido",
                      .publisher = "Topacio Soft",
                      .year = "1990",
                      .scene = Scene::Maze,
                      .machine = "+3"};
        const Bytes screen = LoadingScreenOf(art).Encode();
        Filler f("templo");
        BasicProgram p;
        p.Line(10, Str(tok::BORDER) + Num(0) + ":" + tok::CLEAR + Num(29999));
        p.Line(20, Str(tok::LOAD) + "\"SCREEN\"" + tok::SCREEN);
        p.Line(30, Str(tok::LOAD) + "\"TEMPLO.BIN\"" + tok::CODE);
        p.Line(40, Str(tok::RANDOMIZE) + tok::USR + Num(30000));
        const auto size = [](const Bytes& b) { return static_cast<std::uint16_t>(b.size()); };
        const Bytes code = f.Code(6000);
        Write(dir, "El Templo Perdido.dsk",
              PlusThreeDisk(
                  {{"DISK",
                    Plus3Header(RomType::Program, size(p.Get()), 10, size(p.Get())) + p.Get()},
                   {"SCREEN", Plus3Header(RomType::Code, size(screen), 16384, 0) + screen},
                   {"TEMPLO.BIN", Plus3Header(RomType::Code, size(code), 30000, 0) + code}}));
        ScreenFile(dir, art);
        InlayFile(dir, art, InlayShape::Front);
        CodeSheetFile(dir, art, CodeKind::Letters);
    }
    {
        // TR-DOS: "boot" runs first; a BASIC file ends in 0x80 0xAA and its
        // start line.
        const Art art{.title = "Batalla Naval",
                      .publisher = "Lince Soft",
                      .year = "1991",
                      .scene = Scene::Battle,
                      .machine = "128K"};
        const Bytes screen = LoadingScreenOf(art).Encode();
        Filler f("naval");
        BasicProgram p;
        p.Line(10, Str(tok::BORDER) + Num(0) + ":" + tok::CLEAR + Num(29999));
        p.Line(20, Str(tok::RANDOMIZE) + tok::USR + Num(15619) + ":" + tok::REM + ":" + tok::LOAD +
                       "\"pantalla\"" + tok::CODE);
        p.Line(30, Str(tok::RANDOMIZE) + tok::USR + Num(15619) + ":" + tok::REM + ":" + tok::LOAD +
                       "\"naval\"" + tok::CODE);
        p.Line(40, Str(tok::RANDOMIZE) + tok::USR + Num(30000));
        Bytes boot = p.Get() + "\x80\xAA";
        Le16(boot, 10);
        Write(dir, "Batalla Naval.trd",
              TrDosDisk("NAVAL", {{"boot", 'B', static_cast<std::uint16_t>(p.Get().size()), boot},
                                  {"pantalla", 'C', 16384, screen},
                                  {"naval", 'C', 30000, f.Code(8000)}}));
        ScreenFile(dir, art);
    }
}

// Answers the engine's notes ("otro" for the blocks it has no name for) in
// silence, so that the build log stays clean.
class QuietPrompt : public Prompt {
public:
    Button Show(const Message& m) override { return DefaultAnswer(m.buttons); }
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "uso: cintal-demo CARPETA_DE_SALIDA\n";
        return 2;
    }
    // The pictures are drawn with fonts but without a screen. What Qt says
    // about the desktop session it doesn't find is of no use in a build log.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QtMessageHandler previous =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QGuiApplication app(argc, argv);
    qInstallMessageHandler(previous);
    QuietPrompt quiet;
    PromptScope scope(quiet);

    const fs::path root = argv[1];
    const struct {
        const char* name;
        void (*fill)(const fs::path&);
    } folders[] = {
        {"Juegos", Juegos}, {"Utilidades", Utilidades}, {"Varios", Varios}, {"Discos", Discos}};
    for (const auto& folder : folders) {
        fs::path dir = root / folder.name;
        std::error_code ec;
        // Start from nothing, so that a file dropped from the list doesn't linger.
        fs::remove_all(dir, ec);
        fs::create_directories(dir, ec);
        if (ec) {
            std::cerr << "cintal-demo: no se puede crear " << dir.string() << ": " << ec.message()
                      << "\n";
            return 1;
        }
        folder.fill(dir);
    }
    return failures == 0 ? 0 : 1;
}
