#pragma once
// A synthetic tape that holds what real tapes hold: header and data pairs
// with a loading screen, turbo and pure data, tones, pauses, groups, texts and
// custom info, about 950 bytes a block on average.

#include "TapeBytes.h"

#include <cstdint>
#include <string>

namespace cintal::bench {

using namespace cintal::raw;

inline Bytes Noise(std::size_t n, std::uint32_t start) {
    Bytes out(n, '\0');
    std::uint32_t s = start | 1;
    for (auto& c : out) {
        s ^= s << 13;
        s ^= s >> 17;
        s ^= s << 5;
        c = static_cast<char>(s);
    }
    return out;
}

inline Bytes SyntheticTape(std::int64_t blocks) {
    const Bytes pool = Noise(1 << 16, 0x5EED);
    auto code = [&](std::size_t n, std::int64_t i) {
        return pool.substr(static_cast<std::size_t>(i * 131) % (pool.size() - n), n);
    };
    Bytes img = TzxHeader(1, 13);
    img += Archive({{0, "Synthetic"}, {1, "Cintal"}, {3, "2024"}});
    img.reserve(static_cast<std::size_t>(blocks) * 1000);
    for (std::int64_t i = 0; i < blocks; ++i) {
        std::size_t vary = static_cast<std::size_t>(i % 7);
        switch (i % 16) {
        case 0:
            img += Standard(RomHeader(RomType::Program, "loader", 300, 10, 300));
            break;
        case 1:
            img += Standard(RomData(code(300, i)));
            break;
        case 2:
            img += Standard(RomHeader(RomType::Code, "screen", 6912, 16384, 32768));
            break;
        case 3:
            img += Standard(RomData(code(6912, i)));
            break;
        case 4:
            img += Standard(RomHeader(RomType::Code, "code", 2500, 25000, 32768));
            break;
        case 5:
            img += Standard(RomData(code(1000 + vary * 500, i)));
            break;
        case 6:
            img += Pause(1000);
            break;
        case 7:
            img += PureTone(2168, 3223);
            break;
        case 8:
            img += Pulses({667, 735});
            break;
        case 9:
            img += Turbo(RomData(code(2000 + vary * 1000, i)));
            break;
        case 10:
            img += Text("Synthetic tape for the benchmark");
            break;
        case 11:
            img += GroupStart("Level " + std::to_string(i));
            break;
        case 12:
            img += PureData(code(256, i));
            break;
        case 13:
            img += GroupEnd();
            break;
        case 14:
            img += Custom("POKEs", code(40, i));
            break;
        case 15:
            img += MergeMarker(1, 13);
            break;
        }
    }
    return img;
}

} // namespace cintal::bench
