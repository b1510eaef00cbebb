#pragma once
// Raw TZX and TAP blocks, field by field as a tape file holds them. The demo
// collection, the tests and the benchmarks build their tapes from these, so
// that what the reader gets is what a real file would give it, not what the
// engine's writer happens to produce: a fault in the writer can't hide one in
// the reader.

#include "tape/Block.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cintal::raw {

inline void Le16(Bytes& out, std::uint32_t v) {
    out += static_cast<char>(v & 0xFF);
    out += static_cast<char>((v >> 8) & 0xFF);
}

inline void Le24(Bytes& out, std::uint32_t v) {
    Le16(out, v);
    out += static_cast<char>((v >> 16) & 0xFF);
}

inline void Le32(Bytes& out, std::uint32_t v) {
    Le16(out, v);
    Le16(out, v >> 16);
}

// The low width bytes of the value, the lowest first.
inline Bytes Le(std::uint64_t value, int width) {
    Bytes out;
    for (int i = 0; i < width; ++i)
        out += static_cast<char>((value >> (8 * i)) & 0xFF);
    return out;
}

inline Bytes Byte(std::uint32_t v) {
    return Bytes(1, static_cast<char>(v & 0xFF));
}

// --- What the Spectrum ROM saves: a flag byte, the payload, an XOR checksum.

inline Bytes RomBlock(std::uint8_t flag, std::string_view payload) {
    Bytes out;
    out.reserve(payload.size() + 2);
    out += static_cast<char>(flag);
    out += payload;
    std::uint8_t sum = flag;
    for (char c : payload)
        sum ^= static_cast<std::uint8_t>(c);
    out += static_cast<char>(sum);
    return out;
}

enum class RomType : std::uint8_t { Program = 0, NumberArray = 1, CharArray = 2, Code = 3 };

// A 19-byte header. The name is cut or padded with blanks to ten bytes.
inline Bytes RomHeader(RomType type, std::string_view name, std::uint16_t length,
                       std::uint16_t param1, std::uint16_t param2) {
    Bytes payload;
    payload += static_cast<char>(type);
    Bytes padded(name.substr(0, 10));
    padded.resize(10, ' ');
    payload += padded;
    Le16(payload, length);
    Le16(payload, param1);
    Le16(payload, param2);
    return RomBlock(0x00, payload);
}

inline Bytes RomData(std::string_view payload) {
    return RomBlock(0xFF, payload);
}

// A line of a BASIC program: its number (high byte first, unlike everything
// else), the length of what follows, the tokenised text, ENTER.
inline Bytes BasicLine(std::uint16_t number, std::string_view text) {
    Bytes out;
    out += static_cast<char>(number >> 8);
    out += static_cast<char>(number & 0xFF);
    Le16(out, static_cast<std::uint32_t>(text.size() + 1));
    out += text;
    out += '\x0D';
    return out;
}

// --- TZX blocks, id byte included.

inline Bytes TzxHeader(std::uint8_t major, std::uint8_t minor) {
    Bytes out("ZXTape!\x1A", 8);
    out += static_cast<char>(major);
    out += static_cast<char>(minor);
    return out;
}

inline Bytes Standard(std::string_view romBlock, std::uint16_t pauseMs = 1000) {
    Bytes out("\x10");
    Le16(out, pauseMs);
    Le16(out, static_cast<std::uint32_t>(romBlock.size()));
    out += romBlock;
    return out;
}

// Timings of a typical turbo loader: shorter pilot and bit pulses than the ROM's.
inline Bytes Turbo(std::string_view romBlock, std::uint16_t pauseMs = 1000) {
    Bytes out("\x11");
    Le16(out, 1710); // pilot pulse
    Le16(out, 480);  // first sync pulse
    Le16(out, 540);  // second sync pulse
    Le16(out, 570);  // zero bit
    Le16(out, 1140); // one bit
    Le16(out, 3223); // pilot tone pulses
    out += static_cast<char>(8);
    Le16(out, pauseMs);
    Le24(out, static_cast<std::uint32_t>(romBlock.size()));
    out += romBlock;
    return out;
}

inline Bytes PureTone(std::uint16_t pulseLength, std::uint16_t pulses) {
    Bytes out("\x12");
    Le16(out, pulseLength);
    Le16(out, pulses);
    return out;
}

inline Bytes Pulses(const std::vector<std::uint16_t>& lengths) {
    Bytes out("\x13");
    out += static_cast<char>(lengths.size());
    for (auto l : lengths)
        Le16(out, l);
    return out;
}

inline Bytes PureData(std::string_view data, std::uint16_t pauseMs = 0, std::uint8_t usedBits = 8) {
    Bytes out("\x14");
    Le16(out, 855);
    Le16(out, 1710);
    out += static_cast<char>(usedBits);
    Le16(out, pauseMs);
    Le24(out, static_cast<std::uint32_t>(data.size()));
    out += data;
    return out;
}

// Samples at 44.1 kHz (79 T-states each), one bit per sample.
inline Bytes DirectRecording(std::string_view samples, std::uint16_t pauseMs = 1000) {
    Bytes out("\x15");
    Le16(out, 79);
    Le16(out, pauseMs);
    out += static_cast<char>(8);
    Le24(out, static_cast<std::uint32_t>(samples.size()));
    out += samples;
    return out;
}

// A CSW recording: compression 1 is RLE, 2 Z-RLE; the pulse count is the
// decompressed stream's.
inline Bytes CswRecording(std::uint32_t sampleRate, std::uint8_t compression, std::uint32_t pulses,
                          std::string_view data, std::uint16_t pauseMs = 1000) {
    Bytes out("\x18");
    Le32(out, static_cast<std::uint32_t>(10 + data.size()));
    Le16(out, pauseMs);
    Le24(out, sampleRate);
    out += static_cast<char>(compression);
    Le32(out, pulses);
    out += data;
    return out;
}

// Pulse lengths in samples as CSW's RLE holds them: a byte each, or a 0 and
// 32 bits for one too long for a byte.
inline Bytes CswRle(const std::vector<std::uint32_t>& samples) {
    Bytes out;
    for (auto n : samples) {
        if (n > 0 && n < 256) {
            out += static_cast<char>(n);
        } else {
            out += '\0';
            Le32(out, n);
        }
    }
    return out;
}

// One symbol of a generalized data block: how its first pulse sets the
// level (0 toggles, 1 keeps, 2 low, 3 high) and its pulses in T-states.
struct GeneralizedSymbol {
    std::uint8_t flags = 0;
    std::vector<std::uint16_t> pulses;
};

// Each alphabet is written only when its stream has symbols; every symbol is
// padded with zero pulses to the longest of its alphabet.
inline Bytes Generalized(std::uint16_t pauseMs, const std::vector<GeneralizedSymbol>& pilotAlphabet,
                         const std::vector<std::pair<std::uint8_t, std::uint16_t>>& pilot,
                         const std::vector<GeneralizedSymbol>& dataAlphabet,
                         std::uint32_t dataSymbols, std::string_view data) {
    auto most = [](const std::vector<GeneralizedSymbol>& alphabet) {
        std::size_t n = 0;
        for (const auto& s : alphabet)
            n = std::max(n, s.pulses.size());
        return n;
    };
    auto table = [](Bytes& out, const std::vector<GeneralizedSymbol>& alphabet, std::size_t n) {
        for (const auto& s : alphabet) {
            out += static_cast<char>(s.flags);
            for (std::size_t i = 0; i < n; ++i)
                Le16(out, i < s.pulses.size() ? s.pulses[i] : 0);
        }
    };
    const std::size_t npp = most(pilotAlphabet), npd = most(dataAlphabet);
    Bytes body;
    Le16(body, pauseMs);
    Le32(body, static_cast<std::uint32_t>(pilot.size()));
    body += static_cast<char>(npp);
    body += static_cast<char>(pilotAlphabet.size() & 0xFF);
    Le32(body, dataSymbols);
    body += static_cast<char>(npd);
    body += static_cast<char>(dataAlphabet.size() & 0xFF);
    if (!pilot.empty()) {
        table(body, pilotAlphabet, npp);
        for (const auto& [symbol, repetitions] : pilot) {
            body += static_cast<char>(symbol);
            Le16(body, repetitions);
        }
    }
    if (dataSymbols > 0) {
        table(body, dataAlphabet, npd);
        body += data;
    }
    Bytes out("\x19");
    Le32(out, static_cast<std::uint32_t>(body.size()));
    out += body;
    return out;
}

// A ROM record as a generalized block with the ROM loader's own symbols.
inline Bytes GeneralizedRom(std::string_view romBlock, std::uint16_t pauseMs = 1000) {
    const bool header = !romBlock.empty() && static_cast<std::uint8_t>(romBlock[0]) < 128;
    return Generalized(pauseMs, {{0, {2168}}, {0, {667, 735}}},
                       {{0, static_cast<std::uint16_t>(header ? 8063 : 3223)}, {1, 1}},
                       {{0, {855, 855}}, {0, {1710, 1710}}},
                       static_cast<std::uint32_t>(8 * romBlock.size()), romBlock);
}

inline Bytes SignalLevel(std::uint8_t level) {
    Bytes out("\x2B");
    Le32(out, 1);
    out += static_cast<char>(level);
    return out;
}

inline Bytes Pause(std::uint16_t ms) {
    Bytes out("\x20");
    Le16(out, ms);
    return out;
}

inline Bytes StopTape() {
    return Pause(0);
}

inline Bytes GroupStart(std::string_view name) {
    Bytes out("\x21");
    out += static_cast<char>(name.size());
    out += name;
    return out;
}

inline Bytes GroupEnd() {
    return Bytes("\x22");
}

inline Bytes Jump(std::int16_t relative) {
    Bytes out("\x23");
    Le16(out, static_cast<std::uint16_t>(relative));
    return out;
}

inline Bytes LoopStart(std::uint16_t repetitions) {
    Bytes out("\x24");
    Le16(out, repetitions);
    return out;
}

inline Bytes LoopEnd() {
    return Bytes("\x25");
}

inline Bytes CallSequence(const std::vector<std::int16_t>& relative) {
    Bytes out("\x26");
    Le16(out, static_cast<std::uint32_t>(relative.size()));
    for (auto r : relative)
        Le16(out, static_cast<std::uint16_t>(r));
    return out;
}

inline Bytes Return() {
    return Bytes("\x27");
}

inline Bytes Select(const std::vector<std::pair<std::int16_t, std::string>>& entries) {
    Bytes body;
    body += static_cast<char>(entries.size());
    for (const auto& [relative, text] : entries) {
        Le16(body, static_cast<std::uint16_t>(relative));
        body += static_cast<char>(text.size());
        body += text;
    }
    Bytes out("\x28");
    Le16(out, static_cast<std::uint32_t>(body.size()));
    out += body;
    return out;
}

inline Bytes StopIf48K() {
    Bytes out("\x2A");
    Le32(out, 0);
    return out;
}

inline Bytes Text(std::string_view text) {
    Bytes out("\x30");
    out += static_cast<char>(text.size());
    out += text;
    return out;
}

inline Bytes MessageBlock(std::string_view text, std::uint8_t seconds) {
    Bytes out("\x31");
    out += static_cast<char>(seconds);
    out += static_cast<char>(text.size());
    out += text;
    return out;
}

// Entries are written as given: ids in any order, repeated ids, empty texts.
inline Bytes Archive(const std::vector<std::pair<std::uint8_t, std::string>>& entries) {
    Bytes body;
    body += static_cast<char>(entries.size());
    for (const auto& [id, text] : entries) {
        body += static_cast<char>(id);
        body += static_cast<char>(text.size());
        body += text;
    }
    Bytes out("\x32");
    Le16(out, static_cast<std::uint32_t>(body.size()));
    out += body;
    return out;
}

struct HardwareEntry {
    std::uint8_t type, id, info;
};

inline Bytes Hardware(const std::vector<HardwareEntry>& entries) {
    Bytes out("\x33");
    out += static_cast<char>(entries.size());
    for (const auto& e : entries) {
        out += static_cast<char>(e.type);
        out += static_cast<char>(e.id);
        out += static_cast<char>(e.info);
    }
    return out;
}

inline Bytes EmulationInfo() {
    Bytes out("\x34");
    Le16(out, 0x0004); // flags
    out += static_cast<char>(50);
    Le16(out, 50);
    out += Bytes(3, '\0');
    return out;
}

// The id is cut or padded with blanks to sixteen bytes, as the format writes it.
inline Bytes Custom(std::string_view id, std::string_view data) {
    Bytes out("\x35");
    Bytes padded(id.substr(0, 16));
    padded.resize(16, ' ');
    out += padded;
    Le32(out, static_cast<std::uint32_t>(data.size()));
    out += data;
    return out;
}

enum class SnapshotType : std::uint8_t { Z80 = 0, SNA = 1 };

inline Bytes Snapshot(SnapshotType type, std::string_view data) {
    Bytes out("\x40");
    out += static_cast<char>(type);
    Le24(out, static_cast<std::uint32_t>(data.size()));
    out += data;
    return out;
}

inline Bytes MergeMarker(std::uint8_t major, std::uint8_t minor) {
    Bytes out("\x5AXTape!\x1A", 8);
    out += static_cast<char>(major);
    out += static_cast<char>(minor);
    return out;
}

// --- TAP files: each ROM block behind its 16-bit length.

inline Bytes TapEntry(std::string_view romBlock) {
    Bytes out;
    Le16(out, static_cast<std::uint32_t>(romBlock.size()));
    out += romBlock;
    return out;
}

} // namespace cintal::raw
