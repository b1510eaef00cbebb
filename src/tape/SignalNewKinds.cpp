// The pulses of the CSW, generalized data and signal level blocks, from
// their fields as PulseBlocks reads them for every other use.

#include "tape/PulseBlocks.h"
#include "tape/PulseOut.h"

#include <zlib.h>

#include <algorithm>

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

// A symbol's flag says the level of its first pulse; the others change the
// level. A symbol whose first length is 0 still sets its level.
void PlaySymbol(const GeneralizedSymbol& s, PulseOut& out) {
    const std::uint32_t first = s.pulses.empty() ? 0 : s.pulses[0];
    switch (s.edge) {
    case SymbolEdge::Toggle:
        out.Edge(first);
        break;
    case SymbolEdge::Keep:
        out.Hold(first);
        break;
    default:
        out.At(s.edge == SymbolEdge::High, first);
        break;
    }
    for (std::size_t i = 1; i < s.pulses.size(); ++i)
        out.Edge(s.pulses[i]);
}

} // namespace

void PlayCsw(std::string_view b, PulseOut& out) {
    const CswBlock c = ParseCsw(b);
    // A damaged block plays what it holds; an unknown compression as RLE.
    if (c.sampleRate > 0) {
        CswPulses pulses(out, c.sampleRate);
        if (c.compression == static_cast<std::uint32_t>(CswCompression::ZRle))
            Inflate(c.data, pulses);
        else
            pulses.Feed(c.data);
    }
    out.Pause(c.pauseMs);
}

void PlayGeneralized(std::string_view b, PulseOut& out) {
    const GeneralizedBlock g = ParseGeneralized(b);
    // A pilot entry or data symbol beyond its alphabet plays nothing, and a
    // stream cut short plays as far as it goes.
    for (std::size_t i = 0; i < g.PilotEntries(); ++i) {
        const PilotEntry e = g.Pilot(i);
        if (e.symbol >= g.pilot.symbols.size()) continue;
        for (std::uint32_t k = 0; k < e.repetitions && !out.Full(); ++k)
            PlaySymbol(g.pilot.symbols[e.symbol], out);
    }
    const std::uint64_t held = g.bitsPerSymbol == 0
                                   ? g.data.count
                                   : 8 * std::uint64_t{g.dataStream.size()} / g.bitsPerSymbol;
    const std::uint64_t count = std::min<std::uint64_t>(g.data.count, held);
    for (std::uint64_t i = 0; i < count && !out.Full(); ++i) {
        const std::uint32_t symbol = g.DataSymbol(i);
        if (symbol < g.data.symbols.size()) PlaySymbol(g.data.symbols[symbol], out);
    }
    out.Pause(g.pauseMs);
}

bool SignalLevelOf(std::string_view b) {
    return ParseLevel(b).high;
}

} // namespace cintal::detail
