#include "tape/Signal.h"

#include "tape/Layout.h"
#include "tape/PulseOut.h"

#include <string_view>

namespace cintal {

namespace {

using detail::Sub;
using detail::U16;
using detail::U24;
using detail::U8;

std::string_view BytesOf(const Block& block) {
    return block.Data();
}

std::int64_t Signed16(std::string_view s, std::size_t off) {
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(U16(s, off)));
}

// The standard ROM loader's figures.
constexpr std::uint32_t kPilot = 2168, kSync1 = 667, kSync2 = 735, kZero = 855, kOne = 1710;
constexpr std::uint32_t kHeaderPilots = 8063, kDataPilots = 3223;

// A whole day of sound: a tape that jumps back for ever ends there.
constexpr std::uint64_t kLongest = 24ull * 3600 * kTStatesPerSecond;
// Blocks passed over without a sound before a walk is taken for a circle.
constexpr std::uint64_t kMostSilentSteps = 1'000'000;

void DirectRecording(std::string_view b, detail::PulseOut& out) {
    const std::uint64_t perSample = U16(b, 1);
    std::uint32_t used = U8(b, 5);
    if (used == 0 || used > 8) used = 8;
    const std::string_view data = Sub(b, 9, U24(b, 6));
    // Samples at one level make one pulse.
    std::uint64_t run = 0;
    bool runHigh = false;
    for (std::size_t i = 0; i < data.size(); ++i) {
        const auto byte = static_cast<std::uint8_t>(data[i]);
        const std::uint32_t bits = i + 1 == data.size() ? used : 8;
        for (std::uint32_t k = 0; k < bits; ++k) {
            const bool high = (byte & (0x80 >> k)) != 0;
            if (run > 0 && high != runHigh) {
                out.At(runHigh, run * perSample);
                run = 0;
            }
            runHigh = high;
            ++run;
        }
    }
    if (run > 0) out.At(runHigh, run * perSample);
    out.Pause(U16(b, 3));
}

} // namespace

std::uint64_t BlockSignal::Length() const {
    std::uint64_t total = 0;
    for (const Pulse& p : pulses)
        total += p.length;
    return total;
}

TapeSignal::TapeSignal(const Blocks& blocks, std::size_t first)
    : blocks(blocks), next(static_cast<std::int64_t>(first)) {}

bool TapeSignal::Next(BlockSignal& out) {
    out.pulses.clear();
    out.stop = false;
    std::uint64_t silent = 0;
    while (next >= 0 && next < blocks.Count() && played < kLongest) {
        const BlockRef block = blocks.Item(static_cast<double>(next + 1));
        out.block = static_cast<std::size_t>(next);
        next = Play(*block, next, out);
        if (!out.pulses.empty()) {
            played += out.Length();
            return true;
        }
        if (++silent > kMostSilentSteps) break;
    }
    next = -1;
    return false;
}

std::int64_t TapeSignal::Called() {
    if (callBlock >= 0) {
        const std::string_view b = BytesOf(*blocks.Item(static_cast<double>(callBlock + 1)));
        if (callNext < U16(b, 1) && 3 + 2 * std::size_t{callNext} + 1 < b.size())
            return callBlock + Signed16(b, 3 + 2 * std::size_t{callNext++});
    }
    const std::int64_t after = callBlock + 1;
    callBlock = -1;
    return after;
}

std::int64_t TapeSignal::Play(const Block& block, std::int64_t at, BlockSignal& out) {
    const std::string_view b = BytesOf(block);
    detail::PulseOut p(out.pulses, level, edgePending);
    switch (block.IdTipoBloque) {
    case 0x10: {
        const std::string_view data = Sub(b, 5, U16(b, 3));
        if (!data.empty()) {
            const std::uint32_t pilots = U8(data, 0) < 128 ? kHeaderPilots : kDataPilots;
            for (std::uint32_t i = 0; i < pilots; ++i)
                p.Edge(kPilot);
            p.Edge(kSync1);
            p.Edge(kSync2);
            p.Data(data, kZero, kOne, 8);
        }
        p.Pause(U16(b, 1));
        break;
    }
    case 0x11: {
        for (std::uint32_t i = 0, n = U16(b, 11); i < n; ++i)
            p.Edge(U16(b, 1));
        p.Edge(U16(b, 3));
        p.Edge(U16(b, 5));
        p.Data(Sub(b, 19, U24(b, 16)), U16(b, 7), U16(b, 9), U8(b, 13));
        p.Pause(U16(b, 14));
        break;
    }
    case 0x12:
        for (std::uint32_t i = 0, n = U16(b, 3); i < n; ++i)
            p.Edge(U16(b, 1));
        break;
    case 0x13:
        for (std::size_t i = 0, n = U8(b, 1); i < n && 2 + 2 * i + 1 < b.size(); ++i)
            p.Edge(U16(b, 2 + 2 * i));
        break;
    case 0x14:
        p.Data(Sub(b, 11, U24(b, 8)), U16(b, 1), U16(b, 3), U8(b, 5));
        p.Pause(U16(b, 6));
        break;
    case 0x15:
        DirectRecording(b, p);
        break;
    case 0x18:
        detail::PlayCsw(b, p);
        break;
    case 0x19:
        detail::PlayGeneralized(b, p);
        break;
    case 0x20:
        if (U16(b, 1) == 0) {
            p.Stop();
            out.stop = true;
        } else {
            p.Pause(U16(b, 1));
        }
        break;
    case 0x23:
        // A jump to itself would never end: it goes on with the next block.
        return Signed16(b, 1) == 0 ? at + 1 : at + Signed16(b, 1);
    case 0x24:
        loopStart = at + 1;
        loopLeft = U16(b, 1);
        break;
    case 0x25:
        if (loopStart >= 0 && loopLeft > 1) {
            --loopLeft;
            return loopStart;
        }
        loopStart = -1;
        break;
    case 0x26:
        callBlock = at;
        callNext = 0;
        return Called();
    case 0x27:
        if (callBlock >= 0) return Called();
        break;
    case 0x2B:
        p.SetNext(detail::SignalLevelOf(b));
        break;
    default:
        // Select, stop-in-48K, texts and information make no sound.
        break;
    }
    return at + 1;
}

std::uint64_t SignalLength(const Blocks& blocks, std::size_t first) {
    TapeSignal signal(blocks, first);
    BlockSignal block;
    std::uint64_t total = 0;
    while (signal.Next(block))
        total += block.Length();
    return total;
}

} // namespace cintal
