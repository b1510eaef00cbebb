#pragma once
// The demo's source of bytes that must look arbitrary and yet come out the
// same on every run.

#include "tape/Block.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace cintal::demo {

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

// From lo to hi, both included.
inline int Between(Filler& f, int lo, int hi) {
    return lo + static_cast<int>(f.Next() % static_cast<std::uint32_t>(hi - lo + 1));
}

} // namespace cintal::demo
