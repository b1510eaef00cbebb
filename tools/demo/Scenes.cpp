#include "Scenes.h"

#include "Filler.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace cintal::demo {

namespace {

// The character rows a scene may paint, both included.
struct Area {
    int r0, r1;
    int Top() const { return r0 * 8; }
    int Bottom() const { return (r1 + 1) * 8; }
    int Rows() const { return r1 - r0 + 1; }
};

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

} // namespace

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

} // namespace cintal::demo
