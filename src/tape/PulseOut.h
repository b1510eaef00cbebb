#pragma once
// How the blocks of a tape lay down their pulses. Internal to the engine.

#include "tape/Signal.h"

#include <algorithm>
#include <string_view>

namespace cintal::detail {

class PulseOut {
public:
    // The level and whether an edge waits to be finished carry from one block
    // to the next.
    PulseOut(std::vector<Pulse>& pulses, bool& level, bool& edgePending)
        : pulses(pulses), level(level), edgePending(edgePending) {}

    // A pulse that changes the level at its start.
    void Edge(std::uint64_t length) {
        level = !level;
        Hold(length);
    }
    // A pulse at the level given, whatever the level before.
    void At(bool high, std::uint64_t length) {
        level = high;
        Hold(length);
    }
    // A pulse that goes on at the level of the last one.
    void Hold(std::uint64_t length) {
        if (Full()) return;
        // A length beyond what one pulse holds goes out as several at one level.
        do {
            const auto piece = static_cast<std::uint32_t>(std::min<std::uint64_t>(length, kMax));
            pulses.push_back({piece, level});
            length -= piece;
        } while (length > 0);
        edgePending = true;
    }
    // A block that would give more pulses than any real recording is cut
    // there, so that no file can take all the memory.
    bool Full() const { return pulses.size() >= kMostPulses; }

    // The level of the next pulse, as a 0x2B block gives it: tape2pulses
    // plays the next pulse at that level, and so does this.
    void SetNext(bool high) { level = !high; }

    // The pause after a block: the last edge holds its new level for at least
    // 1 ms, and the rest of the pause is low. A pause right after another
    // one only goes on low.
    void Pause(std::uint32_t ms) {
        if (ms == 0) return;
        const std::uint64_t length = std::uint64_t{ms} * kTStatesPerMs;
        if (!edgePending) {
            if (level)
                At(false, length);
            else
                Hold(length);
        } else if (!level) {
            Edge(kTStatesPerMs);
            if (length > kTStatesPerMs) Edge(length - kTStatesPerMs);
        } else {
            Edge(length);
        }
        edgePending = false;
    }

    // Stopping the tape gives a last edge of no length: tape2pulses does the
    // same, and the level the next block starts from agrees with it.
    void Stop() {
        Edge(0);
        edgePending = false;
    }

    // The bits of data, the most significant first, each bit two pulses of
    // its length; the last byte plays only its used bits.
    void Data(std::string_view data, std::uint32_t zero, std::uint32_t one, std::uint32_t used) {
        if (used == 0 || used > 8) used = 8;
        for (std::size_t i = 0; i < data.size() && !Full(); ++i) {
            const auto byte = static_cast<std::uint8_t>(data[i]);
            const std::uint32_t bits = i + 1 == data.size() ? used : 8;
            for (std::uint32_t b = 0; b < bits; ++b) {
                const std::uint32_t length = byte & (0x80 >> b) ? one : zero;
                Edge(length);
                Edge(length);
            }
        }
    }

    std::vector<Pulse>& pulses;

private:
    static constexpr std::uint64_t kMax = 0xFFFFFFFFu;
    static constexpr std::size_t kMostPulses = std::size_t{1} << 24;
    bool& level;
    bool& edgePending;
};

// The blocks that came with revision 1.20: the pulses of a CSW recording
// (0x18) and of generalized data (0x19), and the level of a 0x2B block.
void PlayCsw(std::string_view block, PulseOut& out);
void PlayGeneralized(std::string_view block, PulseOut& out);
bool SignalLevelOf(std::string_view block);

} // namespace cintal::detail
