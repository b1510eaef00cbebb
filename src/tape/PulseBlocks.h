#pragma once
// The blocks that describe a signal by its pulses rather than by bytes at
// fixed timings, taken apart: a generalized data block (0x19), with its two
// alphabets of symbols, the pilot/sync stream of (symbol, repetitions)
// entries and the packed data stream; a CSW recording (0x18); and the signal
// level block (0x2B) that sets the level of the next pulse. What makes
// a block's text, what finds a ROM record in it and what plays it all read it
// through here.
//
// Nothing is trusted: every table is checked against the bytes the block
// holds, and what doesn't fit is left out and marks the block as damaged.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace cintal {

// How a symbol's first pulse sets the level (its flag byte, bits 0-1).
enum class SymbolEdge : std::uint8_t { Toggle = 0, Keep = 1, Low = 2, High = 3 };

struct GeneralizedSymbol {
    SymbolEdge edge = SymbolEdge::Toggle;
    // Pulse lengths in T-states, up to the first 0, which ends a symbol early.
    std::vector<std::uint16_t> pulses;
};

// One alphabet and the stream written with it.
struct GeneralizedTable {
    std::uint32_t count = 0;                // symbols in the stream (TOTP or TOTD)
    std::uint32_t maxPulses = 0;            // most pulses in one symbol (NPP or NPD)
    std::uint32_t size = 0;                 // symbols in the alphabet (ASP or ASD), 1 to 256
    std::vector<GeneralizedSymbol> symbols; // empty when count is 0 or it doesn't fit
};

struct PilotEntry {
    std::uint8_t symbol = 0;
    std::uint16_t repetitions = 0;
};

struct GeneralizedBlock {
    std::uint32_t pauseMs = 0;
    GeneralizedTable pilot;
    GeneralizedTable data;
    std::uint32_t bitsPerSymbol = 0; // of the data stream: ceil(log2(data.size))
    // Where the data stream stands in the block (id byte at 0), and its bytes
    // as far as the block holds them.
    std::size_t dataOffset = 0;
    std::string_view dataStream;
    // The fields or tables promise more than the block holds, or the pilot
    // stream names a symbol its alphabet lacks.
    bool damaged = false;
    std::string_view pilotStream; // 3 bytes an entry

    std::size_t PilotEntries() const { return pilotStream.size() / 3; }
    PilotEntry Pilot(std::size_t i) const;
    // The data stream's symbol i, most significant bit first; 0 past its end.
    // It may be beyond the alphabet when the alphabet is not a power of two.
    std::uint32_t DataSymbol(std::uint64_t i) const;
    // The symbols are those of the ROM's loader: data symbols {855, 855} for
    // a 0 and {1710, 1710} for a 1, whole bytes, and a pilot/sync alphabet, if
    // any, of {2168} and {667, 735}. The data stream is then a ROM record.
    bool StandardSymbols() const;
};

// The block whose id byte is block[0], as far as it is there.
GeneralizedBlock ParseGeneralized(std::string_view block);

// A CSW recording block (0x18): its header and its pulses as they stand.
enum class CswCompression : std::uint8_t { Rle = 1, ZRle = 2 };

struct CswBlock {
    std::uint32_t pauseMs = 0;
    std::uint32_t sampleRate = 0;  // Hz
    std::uint32_t compression = 0; // a CswCompression, unless damaged
    std::uint32_t pulses = 0;      // once decompressed, as the block says
    std::size_t dataOffset = 0;
    std::string_view data; // RLE or Z-RLE, as far as the block holds it
    // The length can't hold the header, the rate is 0, the compression
    // unknown, or the block holds less than it says.
    bool damaged = false;
};

CswBlock ParseCsw(std::string_view block);

// A signal level block (0x2B): the level of the next pulse.
struct LevelBlock {
    std::uint32_t level = 0; // the byte as it stands: 0 low, 1 high
    bool high = false;       // any other value than 0 counts as high
    // The length isn't 1, the byte isn't there, or it is neither 0 nor 1.
    bool damaged = false;
};

LevelBlock ParseLevel(std::string_view block);

} // namespace cintal
