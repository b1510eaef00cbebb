// Writes "z80.scr", the screen Cintal shows for a title that has no loading
// screen of its own. Everything on it is drawn here, pixel by pixel, so that
// the program ships with nothing taken from elsewhere, and so that a user can
// tell at a glance that this is not the game's screen.

#include "SpectrumScreen.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace {

using namespace cintal::zx;

class Screen {
public:
    void Plot(int x, int y) {
        if (x < 0 || x >= kWidth || y < 0 || y >= kHeight) return;
        bytes[PixelByte(x, y)] |= PixelBit(x);
    }
    void Fill(int x, int y, int w, int h) {
        for (int j = y; j < y + h; ++j)
            for (int i = x; i < x + w; ++i)
                Plot(i, j);
    }
    // Lines two pixels thick read better once the screen is scaled up.
    void HLine(int x0, int x1, int y) { Fill(x0, y, x1 - x0 + 1, 2); }
    void VLine(int x, int y0, int y1) { Fill(x, y0, 2, y1 - y0 + 1); }
    void Box(int x0, int y0, int x1, int y1) {
        HLine(x0 + 2, x1 - 2, y0);
        HLine(x0 + 2, x1 - 2, y1 - 1);
        VLine(x0, y0 + 2, y1 - 2);
        VLine(x1 - 1, y0 + 2, y1 - 2);
        Plot(x0 + 1, y0 + 1);
        Plot(x1 - 1 - 1, y0 + 1);
        Plot(x0 + 1, y1 - 2);
        Plot(x1 - 2, y1 - 2);
    }
    void Ring(int cx, int cy, int r) {
        for (int y = -r; y <= r; ++y)
            for (int x = -r; x <= r; ++x) {
                const int d = x * x + y * y;
                if (d <= r * r + r && d >= (r - 2) * (r - 2) + (r - 2)) Plot(cx + x, cy + y);
            }
    }
    void Disc(int cx, int cy, int r) {
        for (int y = -r; y <= r; ++y)
            for (int x = -r; x <= r; ++x)
                if (x * x + y * y <= r * r + r) Plot(cx + x, cy + y);
    }
    void Line(int x0, int y0, int x1, int y1) {
        const int steps = std::max(std::abs(x1 - x0), std::abs(y1 - y0));
        for (int s = 0; s <= steps; ++s) {
            const int x = x0 + (x1 - x0) * s / std::max(steps, 1);
            const int y = y0 + (y1 - y0) * s / std::max(steps, 1);
            Fill(x, y, 2, 2);
        }
    }
    void Attr(int col, int row, Colour ink, Colour paper, bool bright, bool flash = false) {
        if (col < 0 || col >= 32 || row < 0 || row >= 24) return;
        bytes[kAttributes + row * 32 + col] = Attribute(ink, paper, bright, flash);
    }
    void AttrBlock(int col0, int row0, int col1, int row1, Colour ink, Colour paper, bool bright) {
        for (int r = row0; r <= row1; ++r)
            for (int c = col0; c <= col1; ++c)
                Attr(c, r, ink, paper, bright);
    }
    void SetPixels(int col, int row, const char* const rows[8]) {
        for (int y = 0; y < 8; ++y)
            for (int x = 0; x < 8; ++x)
                if (rows[y][x] == '#') Plot(col * 8 + x, row * 8 + y);
    }
    // Cells whose pixels are set by a rule rather than drawn.
    template <class Rule> void Pattern(int col, int row, Rule rule) {
        for (int y = 0; y < 8; ++y)
            for (int x = 0; x < 8; ++x)
                if (rule(x, y)) Plot(col * 8 + x, row * 8 + y);
    }

    const std::array<std::uint8_t, 6912>& Bytes() const { return bytes; }

private:
    std::array<std::uint8_t, 6912> bytes{};
};

// The name in blocks of 5x5 pixels, six blocks wide and seven high.
struct BigLetter {
    char c;
    const char* rows[7];
};
constexpr BigLetter BigLetters[] = {
    {'C', {" #####", "##    ", "##    ", "##    ", "##    ", "##    ", " #####"}},
    {'I', {"######", "  ##  ", "  ##  ", "  ##  ", "  ##  ", "  ##  ", "######"}},
    {'N', {"##  ##", "### ##", "######", "## ###", "##  ##", "##  ##", "##  ##"}},
    {'T', {"######", "  ##  ", "  ##  ", "  ##  ", "  ##  ", "  ##  ", "  ##  "}},
    {'A', {" #### ", "##  ##", "##  ##", "######", "##  ##", "##  ##", "##  ##"}},
    {'L', {"##    ", "##    ", "##    ", "##    ", "##    ", "##    ", "######"}},
};

// A character cell's worth of letters, bold enough to survive the scaling.
struct SmallLetter {
    char c;
    const char* rows[8];
};
constexpr SmallLetter SmallLetters[] = {
    {'S',
     {"..####..", ".##..##.", ".##.....", "..####..", ".....##.", ".##..##.", "..####..",
      "........"}},
    {'i',
     {"...##...", "........", "..###...", "...##...", "...##...", "...##...", "..####..",
      "........"}},
    {'n',
     {"........", "........", ".#####..", ".##..##.", ".##..##.", ".##..##.", ".##..##.",
      "........"}},
    {'p',
     {"........", "........", ".#####..", ".##..##.", ".##..##.", ".#####..", ".##.....",
      ".##....."}},
    {'a',
     {"........", "........", "..####..", ".....##.", "..#####.", ".##..##.", "..#####.",
      "........"}},
    {'t',
     {"........", "..##....", ".#####..", "..##....", "..##....", "..##....", "...###..",
      "........"}},
    {'l',
     {"..###...", "...##...", "...##...", "...##...", "...##...", "...##...", "..####..",
      "........"}},
};

void BigText(Screen& s, int x, int y, const std::string& text) {
    constexpr int Block = 5;
    for (char c : text) {
        for (const auto& letter : BigLetters) {
            if (letter.c != c) continue;
            for (int r = 0; r < 7; ++r)
                for (int k = 0; k < 6; ++k)
                    if (letter.rows[r][k] == '#')
                        s.Fill(x + k * Block, y + r * Block, Block, Block);
        }
        x += 7 * Block;
    }
}

void SmallText(Screen& s, int col, int row, const std::string& text) {
    for (char c : text) {
        for (const auto& letter : SmallLetters)
            if (letter.c == c) s.SetPixels(col, row, letter.rows);
        ++col;
    }
}

// A compact cassette: shell, label, the window with its two reels, and the
// head opening along the bottom edge.
void Cassette(Screen& s) {
    constexpr int x0 = 74, y0 = 74, x1 = 182, y1 = 134;
    s.Box(x0, y0, x1, y1);
    for (int x : {x0 + 4, x1 - 6})
        for (int y : {y0 + 4, y1 - 6})
            s.Fill(x, y, 2, 2);
    // The label fills whole character cells, so that its colours stop at its edge.
    s.Box(88, 80, 168, 112);
    s.Box(100, 88, 156, 106);
    for (int cx : {112, 144}) {
        s.Ring(cx, 97, 6);
        // The hub's teeth.
        s.Fill(cx - 1, 93, 2, 2);
        s.Fill(cx - 1, 100, 2, 2);
        s.Fill(cx - 4, 96, 2, 2);
        s.Fill(cx + 3, 96, 2, 2);
    }
    // Tape wound on the left reel, seen through the window.
    s.Ring(112, 97, 9);
    s.Line(96, y1 - 1, 102, 122);
    s.Line(102, 122, 154, 122);
    s.Line(154, 122, 160, y1 - 1);
    s.Disc(112, 128, 2);
    s.Disc(144, 128, 2);
}

// The four colours of the Spectrum's stripe, running up to the right across
// the bottom right corner. Each cell straddles two of the bands, so its paper
// is the band below the diagonal and its ink the band above.
void Stripe(Screen& s) {
    constexpr Colour bands[] = {Red, Yellow, Green, Cyan};
    auto band = [&](int k) { return k >= 0 && k < 4 ? bands[k] : Black; };
    for (int row = 0; row < 24; ++row)
        for (int col = 0; col < 32; ++col) {
            const int k = col + row - 49;
            if (k < -1 || k > 3) continue;
            s.Attr(col, row, band(k + 1), band(k), true);
            s.Pattern(col, row, [](int x, int y) { return x + y >= 8; });
        }
}

Screen Draw() {
    Screen s;
    s.AttrBlock(0, 0, 31, 23, White, Black, false);

    // The name, each character row of it a colour of its own.
    BigText(s, 26, 10, "CINTAL");
    constexpr Colour title[] = {Magenta, Red, Yellow, Green, Cyan};
    for (int row = 1; row <= 5; ++row)
        s.AttrBlock(0, row, 31, row, title[row - 1], Black, true);

    Cassette(s);
    s.AttrBlock(9, 9, 22, 16, White, Black, true);
    s.AttrBlock(11, 10, 20, 13, Yellow, Blue, true);

    SmallText(s, 10, 19, "Sin pantalla");
    for (int col = 10; col < 22; ++col)
        s.Attr(col, 19, White, Red, true, true);

    Stripe(s);
    return s;
}

} // namespace

int main(int argc, char** argv) {
    const std::string path = argc > 1 ? argv[1] : "z80.scr";
    const Screen s = Draw();
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(s.Bytes().data()),
              static_cast<std::streamsize>(s.Bytes().size()));
    out.close();
    if (!out) {
        std::fprintf(stderr, "No se pudo escribir %s\n", path.c_str());
        return 1;
    }
    return 0;
}
