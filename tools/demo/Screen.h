#pragma once
// The Spectrum's screen as the demo draws it: pixels in layers, colours by
// the character cell, and a font of our own for the lettering.

#include "SpectrumScreen.h"
#include "tape/Block.h"
#include "tape/Content.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cintal::demo {

// Each title's screen is drawn from a scene and its name, with the limits the
// machine had: one ink and one paper in every 8x8 cell. Integer arithmetic
// only, as above.

using namespace zx;

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
bool Dither(int x, int y, int level);

class Screen {
public:
    Screen() { attrs.fill(White); }

    void Attr(int col, int row, Colour ink, Colour paper, bool bright = false, bool flash = false) {
        if (col < 0 || col >= 32 || row < 0 || row >= 24) return;
        attrs[row * 32 + col] = Attribute(ink, paper, bright, flash);
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
                if (pixels.At(x, y)) out[PixelByte(x, y)] |= static_cast<char>(PixelBit(x));
        for (int i = 0; i < 768; ++i)
            out[kAttributes + i] = static_cast<char>(attrs[i]);
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

const Glyph* FindGlyph(char key);

// Screens and inlays of the time were lettered in capitals without accents;
// only the Ñ kept its mark.
std::string Lettering(std::string_view utf8);

bool GlyphBit(const Glyph* g, int x, int y);

enum class Letters { Solid, Lined, Hollow };

// Text already folded by Lettering, each font pixel a square of scale pixels.
void Letter(Canvas& c, int x, int y, std::string_view keys, int scale,
            Letters style = Letters::Solid);

int TextWidth(std::string_view keys, int scale);

// Words onto lines of at most width characters; empty when a word is longer.
std::vector<std::string> Wrap(const std::string& keys, std::size_t width);

struct TitleLines {
    std::vector<std::string> lines;
    int scale = 1;
};

// The largest lettering that fits the width: one line if it can, two if not.
TitleLines FitTitle(const std::string& keys, int width);

} // namespace cintal::demo
