// The fields of the CSW, generalized data and signal level blocks are read
// here and nowhere else in the signal, so that one reading of them can
// stand for another.

#include "tape/Layout.h"
#include "tape/PulseOut.h"

#include <zlib.h>

#include <string>

namespace cintal::detail {

namespace {

// Pulses in samples of the recording, turned into T-states with the
// fraction of each carried into the next, so that a long recording keeps
// its length.
class CswPulses {
public:
    CswPulses(PulseOut& out, std::uint32_t rate) : out(out), rate(rate) {}

    bool Full() const { return out.Full(); }

    // Reads RLE bytes; a long pulse may straddle two pieces.
    void Feed(std::string_view rle) {
        for (char c : rle) {
            const auto byte = static_cast<std::uint8_t>(c);
            if (longBytes > 0) {
                longLength |= std::uint32_t{byte} << (8 * (4 - longBytes));
                if (--longBytes == 0) Samples(longLength);
            } else if (byte == 0) {
                longBytes = 4;
                longLength = 0;
            } else {
                Samples(byte);
            }
        }
    }

private:
    void Samples(std::uint32_t n) {
        samples += n;
        const std::uint64_t end = samples * kTStatesPerSecond / rate;
        out.Edge(end - at);
        at = end;
    }

    PulseOut& out;
    std::uint64_t rate;
    std::uint64_t samples = 0, at = 0;
    int longBytes = 0;
    std::uint32_t longLength = 0;
};

// Inflates a zlib stream a piece at a time; a broken stream plays what came
// before the break.
void Inflate(std::string_view packed, CswPulses& pulses) {
    z_stream z{};
    if (inflateInit(&z) != Z_OK) return;
    z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    z.avail_in = static_cast<uInt>(packed.size());
    char buffer[16384];
    int status = Z_OK;
    while (status == Z_OK && !pulses.Full()) {
        z.next_out = reinterpret_cast<Bytef*>(buffer);
        z.avail_out = sizeof buffer;
        status = inflate(&z, Z_NO_FLUSH);
        if (status != Z_OK && status != Z_STREAM_END) break;
        pulses.Feed(std::string_view(buffer, sizeof buffer - z.avail_out));
    }
    inflateEnd(&z);
}

// The bits of the data stream of a generalized block, most significant first.
class SymbolBits {
public:
    SymbolBits(std::string_view data, std::uint32_t width) : data(data), width(width) {}
    bool Left() const { return bit + width <= 8 * std::uint64_t{data.size()}; }
    std::uint32_t Take() {
        std::uint32_t v = 0;
        for (std::uint32_t i = 0; i < width; ++i, ++bit)
            v = v << 1 | (U8(data, bit / 8) >> (7 - bit % 8) & 1);
        return v;
    }

private:
    std::string_view data;
    std::uint32_t width;
    std::uint64_t bit = 0;
};

// One symbol of an alphabet: its flag says the level of its first pulse;
// the others change the level; a length of 0 ends it early.
void PlaySymbol(std::string_view definition, std::uint32_t most, PulseOut& out) {
    const std::uint32_t first = U16(definition, 1);
    switch (U8(definition, 0) & 3) {
    case 0:
        out.Edge(first);
        break;
    case 1:
        out.Hold(first);
        break;
    default:
        out.At((U8(definition, 0) & 3) == 3, first);
        break;
    }
    for (std::uint32_t i = 1; i < most; ++i) {
        const std::uint32_t length = U16(definition, 1 + 2 * i);
        if (length == 0) break;
        out.Edge(length);
    }
}

} // namespace

void PlayCsw(std::string_view b, PulseOut& out) {
    const std::uint32_t rate = U24(b, 7);
    const std::string_view data = Sub(b, 15, U32(b, 1) >= 10 ? U32(b, 1) - 10 : 0);
    if (rate > 0) {
        CswPulses pulses(out, rate);
        if (U8(b, 10) == 2)
            Inflate(data, pulses);
        else
            pulses.Feed(data);
    }
    out.Pause(U16(b, 5));
}

void PlayGeneralized(std::string_view b, PulseOut& out) {
    const std::uint32_t totp = U32(b, 7), npp = U8(b, 11), totd = U32(b, 13), npd = U8(b, 17);
    const std::uint32_t asp = U8(b, 12) ? U8(b, 12) : 256, asd = U8(b, 18) ? U8(b, 18) : 256;
    // Nothing is read past the block's end, whatever its counts say.
    const std::size_t end = std::min<std::size_t>(b.size(), std::size_t{5} + U32(b, 1));
    std::size_t at = 19;
    if (totp > 0) {
        const std::size_t size = 1 + 2 * std::size_t{npp};
        const std::size_t alphabet = at;
        at += asp * size;
        for (std::uint32_t i = 0; i < totp && at + 3 <= end; ++i, at += 3) {
            const std::uint32_t symbol = U8(b, at), times = U16(b, at + 1);
            if (symbol >= asp) continue;
            const std::string_view definition = Sub(b, alphabet + symbol * size, size);
            for (std::uint32_t k = 0; k < times && !out.Full(); ++k)
                PlaySymbol(definition, npp, out);
        }
    }
    if (totd > 0 && at < end) {
        const std::size_t size = 1 + 2 * std::size_t{npd};
        const std::size_t alphabet = at;
        at += asd * size;
        std::uint32_t width = 0;
        while ((1u << width) < asd)
            ++width;
        const std::uint64_t bytes = (std::uint64_t{width} * totd + 7) / 8;
        SymbolBits bits(Sub(b, at, std::min<std::uint64_t>(bytes, end > at ? end - at : 0)), width);
        for (std::uint32_t i = 0; i < totd && !out.Full() && (width == 0 || bits.Left()); ++i) {
            const std::uint32_t symbol = bits.Take();
            if (symbol < asd) PlaySymbol(Sub(b, alphabet + symbol * size, size), npd, out);
        }
    }
    out.Pause(U16(b, 5));
}

bool SignalLevelOf(std::string_view b) {
    return U8(b, 5) != 0;
}

} // namespace cintal::detail
