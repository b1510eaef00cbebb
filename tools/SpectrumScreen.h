#pragma once
// The Spectrum's screen memory as the tools draw into it: 6144 bytes of
// bitmap in the ULA's order, then a byte of colours for every 8x8 cell.

#include <cstddef>
#include <cstdint>

namespace cintal::zx {

enum Colour : std::uint8_t { Black, Blue, Red, Magenta, Green, Cyan, Yellow, White };

constexpr int kWidth = 256;
constexpr int kHeight = 192;
constexpr std::size_t kAttributes = 6144; // where the colours start

// The byte that holds pixel (x, y): the ULA orders the rows by third, then
// pixel row within the cell, then cell row.
constexpr std::size_t PixelByte(int x, int y) {
    return static_cast<std::size_t>(((y & 0xC0) << 5) | ((y & 0x07) << 8) | ((y & 0x38) << 2) |
                                    (x >> 3));
}

constexpr std::uint8_t PixelBit(int x) {
    return static_cast<std::uint8_t>(0x80 >> (x & 7));
}

constexpr std::uint8_t Attribute(int ink, int paper, bool bright = false, bool flash = false) {
    return static_cast<std::uint8_t>(ink | paper << 3 | (bright ? 0x40 : 0) | (flash ? 0x80 : 0));
}

} // namespace cintal::zx
