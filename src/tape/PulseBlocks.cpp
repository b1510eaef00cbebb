#include "tape/PulseBlocks.h"

#include "tape/Layout.h"

#include <algorithm>
#include <initializer_list>

namespace cintal {

namespace {

using detail::U16;
using detail::U24;
using detail::U32;
using detail::U8;

// Id and the 32-bit length of the rest of the block.
constexpr std::size_t kLengthFields = 5;
constexpr std::size_t kGeneralizedTables = 19;
constexpr std::size_t kCswData = 15;

// The block as far as both its length and the bytes held go; damaged when
// the bytes held are fewer than the length says.
std::string_view Declared(std::string_view block, bool& damaged) {
    const std::uint64_t declared = kLengthFields + std::uint64_t(U32(block, 1));
    if (block.size() < declared) damaged = true;
    return block.substr(0,
                        static_cast<std::size_t>(std::min<std::uint64_t>(block.size(), declared)));
}

std::uint32_t BitsFor(std::uint32_t symbols) {
    std::uint32_t bits = 0;
    while ((1u << bits) < symbols)
        ++bits;
    return bits;
}

// The alphabet at off, when the block holds all of it.
bool ReadAlphabet(std::string_view b, std::size_t& off, GeneralizedTable& t) {
    const std::uint64_t each = 1 + 2 * std::uint64_t(t.maxPulses);
    const std::uint64_t need = t.size * each;
    if (off > b.size() || b.size() - off < need) return false;
    t.symbols.resize(t.size);
    for (GeneralizedSymbol& s : t.symbols) {
        s.edge = static_cast<SymbolEdge>(U8(b, off) & 3);
        for (std::uint32_t j = 0; j < t.maxPulses; ++j) {
            const std::uint32_t pulse = U16(b, off + 1 + 2 * j);
            if (pulse == 0) break;
            s.pulses.push_back(static_cast<std::uint16_t>(pulse));
        }
        off += static_cast<std::size_t>(each);
    }
    return true;
}

bool Is(const GeneralizedSymbol& s, std::initializer_list<std::uint16_t> pulses) {
    return s.edge == SymbolEdge::Toggle &&
           std::equal(s.pulses.begin(), s.pulses.end(), pulses.begin(), pulses.end());
}

} // namespace

PilotEntry GeneralizedBlock::Pilot(std::size_t i) const {
    return {static_cast<std::uint8_t>(U8(pilotStream, 3 * i)),
            static_cast<std::uint16_t>(U16(pilotStream, 3 * i + 1))};
}

std::uint32_t GeneralizedBlock::DataSymbol(std::uint64_t i) const {
    std::uint32_t symbol = 0;
    const std::uint64_t first = i * bitsPerSymbol;
    for (std::uint64_t bit = first; bit < first + bitsPerSymbol; ++bit) {
        const std::uint64_t byte = bit / 8;
        const std::uint32_t value =
            byte < dataStream.size() ? U8(dataStream, static_cast<std::size_t>(byte)) : 0;
        symbol = symbol << 1 | ((value >> (7 - bit % 8)) & 1);
    }
    return symbol;
}

bool GeneralizedBlock::StandardSymbols() const {
    const bool dataStandard = data.count > 0 && data.count % 8 == 0 && data.size == 2 &&
                              data.symbols.size() == 2 && Is(data.symbols[0], {855, 855}) &&
                              Is(data.symbols[1], {1710, 1710});
    const bool pilotStandard =
        pilot.count == 0 || (pilot.size == 2 && pilot.symbols.size() == 2 &&
                             Is(pilot.symbols[0], {2168}) && Is(pilot.symbols[1], {667, 735}));
    return dataStandard && pilotStandard;
}

GeneralizedBlock ParseGeneralized(std::string_view block) {
    GeneralizedBlock g;
    const std::string_view b = Declared(block, g.damaged);
    g.pauseMs = U16(b, 5);
    g.pilot.count = U32(b, 7);
    g.pilot.maxPulses = U8(b, 11);
    g.pilot.size = U8(b, 12) == 0 ? 256 : U8(b, 12);
    g.data.count = U32(b, 13);
    g.data.maxPulses = U8(b, 17);
    g.data.size = U8(b, 18) == 0 ? 256 : U8(b, 18);
    g.bitsPerSymbol = BitsFor(g.data.size);
    if (b.size() < kGeneralizedTables) {
        g.damaged = true;
        return g;
    }
    std::size_t off = kGeneralizedTables;
    if (g.pilot.count > 0) {
        const std::uint64_t need = 3 * std::uint64_t(g.pilot.count);
        if (!ReadAlphabet(b, off, g.pilot)) {
            g.damaged = true;
            return g;
        }
        // A stream cut short keeps its whole entries, and nothing follows it.
        g.pilotStream = detail::Sub(b, off, static_cast<std::size_t>(need));
        if (g.pilotStream.size() < need) {
            g.pilotStream.remove_suffix(g.pilotStream.size() % 3);
            g.damaged = true;
            return g;
        }
        off += static_cast<std::size_t>(need);
        for (std::size_t i = 0; i < g.PilotEntries(); ++i)
            if (g.Pilot(i).symbol >= g.pilot.size) g.damaged = true;
    }
    if (g.data.count > 0) {
        const std::uint64_t need = (std::uint64_t(g.data.count) * g.bitsPerSymbol + 7) / 8;
        if (!ReadAlphabet(b, off, g.data)) {
            g.damaged = true;
            return g;
        }
        g.dataOffset = off;
        g.dataStream = detail::Sub(b, off, static_cast<std::size_t>(need));
        if (g.dataStream.size() < need) g.damaged = true;
    }
    return g;
}

CswBlock ParseCsw(std::string_view block) {
    CswBlock c;
    const std::string_view b = Declared(block, c.damaged);
    c.pauseMs = U16(b, 5);
    c.sampleRate = U24(b, 7);
    c.compression = U8(b, 10);
    c.pulses = U32(b, 11);
    if (b.size() < kCswData) c.damaged = true;
    if (c.sampleRate == 0) c.damaged = true;
    if (c.compression != static_cast<std::uint32_t>(CswCompression::Rle) &&
        c.compression != static_cast<std::uint32_t>(CswCompression::ZRle))
        c.damaged = true;
    c.dataOffset = std::min(b.size(), kCswData);
    c.data = b.substr(c.dataOffset);
    return c;
}

LevelBlock ParseLevel(std::string_view block) {
    LevelBlock l;
    l.level = U8(block, 5);
    l.high = l.level != 0;
    l.damaged = U32(block, 1) != 1 || block.size() <= 5 || l.level > 1;
    return l;
}

} // namespace cintal
