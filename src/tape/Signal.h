#pragma once
// The sound of a tape: the pulses its blocks make, one block at a time, so
// that playing can start before the rest of the tape has been worked out.

#include "tape/Blocks.h"

#include <cstdint>
#include <vector>

namespace cintal {

// The Spectrum's clock: pulse lengths count its T-states.
inline constexpr std::uint32_t kTStatesPerSecond = 3'500'000;
inline constexpr std::uint32_t kTStatesPerMs = kTStatesPerSecond / 1000;

// A stretch of the signal at one level.
struct Pulse {
    std::uint32_t length = 0; // in T-states
    bool high = false;

    bool operator==(const Pulse&) const = default;
};

// What one block of the tape plays.
struct BlockSignal {
    std::size_t block = 0; // its position in the list, from 0
    std::vector<Pulse> pulses;
    // The block stops the tape (a pause of 0 ms): a player stops here, a
    // recording goes on with the next block.
    bool stop = false;

    std::uint64_t Length() const;
};

// Walks the blocks as a tape player does: jumps, loops and calls change which
// block plays next; blocks that make no sound are passed over.
class TapeSignal {
public:
    explicit TapeSignal(const Blocks& blocks, std::size_t first = 0);

    // The next block that makes a sound or stops the tape; false at the end.
    bool Next(BlockSignal& out);

private:
    // Appends the pulses of one block and returns where the walk goes next.
    std::int64_t Play(const Block& block, std::int64_t at, BlockSignal& out);
    // The next block a call sequence plays, or the one after the call.
    std::int64_t Called();

    const Blocks& blocks;
    std::int64_t next;
    bool level = false; // the level of the last pulse given out
    bool edgePending = false;
    std::uint64_t played = 0;
    std::int64_t loopStart = -1;
    std::uint32_t loopLeft = 0;
    std::int64_t callBlock = -1;
    std::uint32_t callNext = 0;
};

// The length in T-states of the whole tape from that block, stops included.
std::uint64_t SignalLength(const Blocks& blocks, std::size_t first = 0);

} // namespace cintal
