#pragma once
// The sound of a tape as samples, for a WAV file or a sound card.

#include "tape/Signal.h"
#include "tape/TZXTape.h"

#include <functional>
#include <string>

namespace cintal {

inline constexpr std::uint32_t kWavRate = 44'100;
// High and low swing the same way either side of the middle.
inline constexpr std::int16_t kWavHigh = 24'000;

// Mono 16-bit samples of the signal. Each pulse ends at the sample nearest
// to where it ends in time, so that the fractions of a sample never add up.
class SampleStream {
public:
    // With stopAtStops the samples end where the tape stops, as a player
    // does; a recording goes on.
    SampleStream(const Blocks& blocks, std::uint32_t rate, std::size_t first = 0,
                 bool stopAtStops = false);

    // Fills up to n samples; fewer only at the end.
    std::size_t Read(std::int16_t* out, std::size_t n);

    struct Start {
        std::uint64_t sample;
        std::size_t block; // position in the list, from 0
    };
    // Where each block played so far began.
    const std::vector<Start>& Starts() const { return starts; }

    // The number of samples of the whole signal, a walk of its own.
    static std::uint64_t Total(const Blocks& blocks, std::uint32_t rate, std::size_t first = 0,
                               bool stopAtStops = false);

private:
    bool NextPulse();

    TapeSignal signal;
    std::uint64_t rate;
    bool stopAtStops;
    BlockSignal block;
    std::size_t pulse = 0;
    std::uint64_t time = 0;    // T-states up to the end of the current pulse
    std::uint64_t samples = 0; // samples up to the end of the current pulse
    std::uint64_t left = 0;    // samples of the current pulse still to give
    std::int16_t value = 0;
    bool ended = false;
    std::vector<Start> starts;
};

// Writes the sound of a tape as a WAV file, mono 16-bit PCM at rate Hz,
// beside and renamed into place, over a file that exists only with replace. progress
// gets the part done, from 0 to 1, and may give up the write by returning
// false. On failure nothing is left behind and reason says why, in Spanish.
bool WriteWav(const Blocks& blocks, const std::string& path, std::uint32_t rate,
              std::string& reason, const std::function<bool(double)>& progress = {},
              bool replace = false);

// Why the sound of a tape would stop short of its end, in Spanish: the read
// stopped early or the file ends inside a block's data. Empty for a whole tape.
std::string WhyCutShort(TZXTape& tape);

} // namespace cintal
