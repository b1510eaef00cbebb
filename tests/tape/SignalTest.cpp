// The sound of a tape: the pulses each kind of block makes, worked out by
// hand from the format's figures, the level rules of pauses, the walk through
// loops, jumps and calls, and the WAV file made of it all.

#include "TestSupport.h"
#include "tape/Blocks.h"
#include "tape/Wav.h"

#include <zlib.h>

namespace cintal::test {
namespace {

using Lengths = std::vector<std::uint32_t>;
using Sequence = std::vector<Pulse>;

// Pulses that change the level one after another, the first at first.
Sequence Alternate(const Lengths& lengths, bool first) {
    Sequence out;
    for (std::uint32_t l : lengths) {
        out.push_back({l, first});
        first = !first;
    }
    return out;
}

void Add(Lengths& to, std::size_t n, std::uint32_t length) {
    to.insert(to.end(), n, length);
}

class SignalTest : public TapeTest {
protected:
    // The blocks as the reader would hold them, without reading a file.
    Blocks& Of(std::initializer_list<Bytes> list) {
        for (const Bytes& b : list)
            blocks.Add(static_cast<std::uint8_t>(b[0]), {}, b, double(b.size()));
        return blocks;
    }
    // Each block that sounds, with its position and its pulses.
    std::vector<BlockSignal> Played(std::size_t first = 0) {
        std::vector<BlockSignal> out;
        TapeSignal signal(blocks, first);
        for (BlockSignal b; signal.Next(b);)
            out.push_back(b);
        return out;
    }
    std::vector<std::size_t> Order() {
        std::vector<std::size_t> out;
        for (const BlockSignal& b : Played())
            out.push_back(b.block);
        return out;
    }

    Blocks blocks;
};

TEST_F(SignalTest, StandardBlockPlaysPilotSyncBitsAndPause) {
    // Flag 0xFF, one byte 0x80 and the checksum 0x7F, then 2 ms.
    Of({raw::Standard(B({0xFF, 0x80, 0x7F}), 2), raw::Standard(Rom(0, B({1})), 0)});
    Lengths l;
    Add(l, 3223, 2168);
    l.insert(l.end(), {667, 735});
    Add(l, 16, 1710);
    Add(l, 2, 1710);
    Add(l, 14, 855);
    Add(l, 2, 855);
    Add(l, 14, 1710);
    l.push_back(7000); // the last bit ended high: the whole pause is low
    const auto played = Played();
    ASSERT_EQ(played.size(), 2u);
    EXPECT_EQ(played[0].pulses, Alternate(l, true));
    // A header's flag below 128 gets the longer pilot.
    const Sequence& header = played[1].pulses;
    EXPECT_EQ(std::count(header.begin(), header.end(), Pulse{2168, header[0].high}) +
                  std::count(header.begin(), header.end(), Pulse{2168, !header[0].high}),
              8063);
    EXPECT_EQ(header.size(), 8063u + 2 + 3 * 16);
}

TEST_F(SignalTest, EveryDataKindGivesItsPulses) {
    Of({B({0x11}) + Le(1000, 2) + Le(300, 2) + Le(400, 2) + Le(500, 2) + Le(600, 2) + Le(3, 2) +
            B({4}) + Le(0, 2) + Le(2, 3) + B({0xFF, 0xA0}),
        raw::PureTone(700, 3), raw::Pulses({100, 200}), raw::PureData(B({0x40, 0xC0}), 0, 2),
        B({0x15}) + Le(100, 2) + Le(0, 2) + B({3}) + Le(2, 3) + B({0xF0, 0xA0})});
    Lengths turbo = {1000, 1000, 1000, 300, 400};
    Add(turbo, 16, 600);
    turbo.insert(turbo.end(), {600, 600, 500, 500, 600, 600, 500, 500});
    Lengths pure;
    Add(pure, 2, 855);
    Add(pure, 2, 1710);
    Add(pure, 12, 855);
    Add(pure, 4, 1710);
    const auto played = Played();
    ASSERT_EQ(played.size(), 5u);
    EXPECT_EQ(played[0].pulses, Alternate(turbo, true));
    EXPECT_EQ(played[1].pulses, Alternate({700, 700, 700}, false));
    EXPECT_EQ(played[2].pulses, Alternate({100, 200}, true));
    EXPECT_EQ(played[3].pulses, Alternate(pure, true));
    // Direct recording: each bit a sample at its own level, runs as one pulse.
    EXPECT_EQ(played[4].pulses, Alternate({400, 400, 100, 100, 100}, true));
}

TEST_F(SignalTest, PausesFinishTheLastEdgeAndThenGoLow) {
    Of({raw::Pulses({500, 600}), raw::Pause(5), raw::Pause(3), raw::PureTone(700, 1), raw::Pause(2),
        B({0x2B}) + Le(1, 4) + B({1}), raw::PureTone(800, 2), raw::StopTape(),
        raw::PureTone(900, 1)});
    const auto played = Played();
    ASSERT_EQ(played.size(), 8u);
    // The last pulse was low: 1 ms high to finish its edge, then low.
    EXPECT_EQ(played[1].pulses, (Sequence{{3500, true}, {14000, false}}));
    // After a pause the level is low already: a second one only goes on.
    EXPECT_EQ(played[2].pulses, (Sequence{{10500, false}}));
    EXPECT_EQ(played[3].pulses, (Sequence{{700, true}}));
    EXPECT_EQ(played[4].pulses, (Sequence{{7000, false}}));
    // The signal level block gives the level of the next pulse.
    EXPECT_EQ(played[5].block, 6u);
    EXPECT_EQ(played[5].pulses, Alternate({800, 800}, true));
    EXPECT_TRUE(played[6].stop);
    EXPECT_EQ(played[6].pulses, (Sequence{{0, true}}));
    EXPECT_EQ(played[7].pulses, (Sequence{{900, false}}));
    EXPECT_EQ(SignalLength(blocks), 1100 + 17500 + 10500 + 700 + 7000 + 1600 + 900);
}

TEST_F(SignalTest, LoopsJumpsAndCallsChooseWhatPlaysNext) {
    const Bytes tone = raw::PureTone(100, 1);
    Of({raw::LoopStart(3), tone, raw::Text("x"), raw::LoopEnd(), raw::Jump(2), tone,
        raw::CallSequence({2, 4, 2}), raw::Jump(5), tone, raw::Return(), tone, raw::Return(),
        raw::Select({{1, "a"}}), raw::StopIf48K(), tone, raw::Jump(-100)});
    EXPECT_EQ(Order(), (std::vector<std::size_t>{1, 1, 1, 8, 10, 8, 14}));
    // Playing from a block inside the loop plays it once.
    EXPECT_EQ(Played(5).front().block, 5u);
    // A jump back for ever over silent blocks ends.
    blocks = Blocks();
    Of({raw::Text("x"), raw::Jump(-1)});
    EXPECT_TRUE(Played().empty());
}

// The ROM loader's figures in generalized form give the standard block's
// pulses; CSW pulses are samples of the recording's rate, RLE or Z-RLE.
TEST_F(SignalTest, RecordedAndGeneralizedBlocksGiveTheirPulses) {
    const Bytes data = B({0xFF, 0x80, 0x7F});
    const Bytes pilot = B({0}) + Le(2168, 2) + Le(0, 2) + B({0}) + Le(667, 2) + Le(735, 2);
    const Bytes bits = B({0}) + Le(855, 2) + Le(855, 2) + B({0}) + Le(1710, 2) + Le(1710, 2);
    const Bytes body = Le(2, 2) + Le(2, 4) + B({2, 2}) + Le(24, 4) + B({2, 2}) + pilot + B({0}) +
                       Le(3223, 2) + B({1}) + Le(1, 2) + bits + data;
    const Bytes rle = B({35, 70, 0}) + Le(350, 4);
    Bytes packed(64, '\0');
    uLongf size = packed.size();
    compress(reinterpret_cast<Bytef*>(packed.data()), &size,
             reinterpret_cast<const Bytef*>(rle.data()), rle.size());
    packed.resize(size);
    auto csw = [](int kind, const Bytes& pulses) {
        return B({0x18}) + Le(10 + pulses.size(), 4) + Le(0, 2) + Le(35000, 3) + B({kind}) +
               Le(3, 4) + pulses;
    };
    Of({raw::Standard(data, 2), B({0x19}) + Le(body.size(), 4) + body, csw(1, rle),
        csw(2, packed)});
    const auto played = Played();
    ASSERT_EQ(played.size(), 4u);
    EXPECT_EQ(played[1].pulses, played[0].pulses);
    EXPECT_EQ(played[2].pulses, Alternate({3500, 7000, 35000}, true));
    EXPECT_EQ(played[3].pulses, Alternate({3500, 7000, 35000}, false));
}

TEST_F(SignalTest, GeneralizedSymbolsSetTheLevelByTheirFlags) {
    // Two bits a symbol: force high, force low, keep the level, change it.
    const Bytes body = Le(0, 2) + Le(0, 4) + B({0, 0}) + Le(4, 4) + B({2, 4}) + B({3}) +
                       Le(100, 2) + Le(200, 2) + B({2}) + Le(300, 2) + Le(0, 2) + B({1}) +
                       Le(400, 2) + Le(0, 2) + B({0}) + Le(500, 2) + Le(0, 2) + B({0x1B});
    Of({B({0x19}) + Le(body.size(), 4) + body});
    EXPECT_EQ(Played().at(0).pulses,
              (Sequence{{100, true}, {200, false}, {300, false}, {400, false}, {500, true}}));
}

TEST_F(SignalTest, GeneralizedPilotCutShortPlaysTheEntriesItHolds) {
    // Three pilot entries promised, one whole and a piece of the next held.
    const Bytes body = Le(0, 2) + Le(3, 4) + B({1, 1}) + Le(0, 4) + B({0, 0}) + B({0}) +
                       Le(1000, 2) + B({0}) + Le(2, 2) + B({0});
    Of({B({0x19}) + Le(body.size(), 4) + body});
    EXPECT_EQ(Played().at(0).pulses, Alternate({1000, 1000}, true));
}

TEST_F(SignalTest, PlayingEndsWhereTheTapeStopsAndKnowsWhereEachBlockBegan) {
    // 100 T-states a sample at 35,000 Hz.
    Of({raw::PureTone(3500, 2), raw::StopTape(), raw::PureTone(3500, 1)});
    std::vector<std::int16_t> samples(200);
    SampleStream playing(blocks, 35000, 0, true);
    EXPECT_EQ(playing.Read(samples.data(), samples.size()), 70u);
    EXPECT_EQ(SampleStream::Total(blocks, 35000, 0, true), 70u);
    EXPECT_EQ(std::count(samples.begin(), samples.begin() + 35, kWavHigh), 35);
    ASSERT_EQ(playing.Starts().size(), 2u);
    EXPECT_EQ(playing.Starts()[1].sample, 70u);
    EXPECT_EQ(playing.Starts()[1].block, 1u);
    // From the block after the stop, as "Reproducir" on it does.
    SampleStream after(blocks, 35000, 2, true);
    EXPECT_EQ(after.Read(samples.data(), samples.size()), 35u);
    EXPECT_EQ(samples[0], kWavHigh);
    // A recording goes on past the stop.
    EXPECT_EQ(SampleStream::Total(blocks, 35000), 105u);
}

TEST_F(SignalTest, WavCarriesFractionsAndNeverWritesOverAFile) {
    // 1000 pulses of 2168 T are 27.3168 samples each at 44,100 Hz.
    Of({raw::PureTone(2168, 1000), raw::Pause(1000)});
    const std::string path = dir.File("cinta.wav");
    std::string reason;
    ASSERT_TRUE(WriteWav(blocks, path, kWavRate, reason)) << reason;
    const Bytes wav = ReadFile(path);
    const std::uint64_t samples = ((2168000ull + 3500000) * 44100 + 1750000) / 3500000;
    ASSERT_EQ(wav.size(), 44 + 2 * samples);
    EXPECT_EQ(wav.substr(0, 4) + wav.substr(8, 8) + wav.substr(36, 4), "RIFFWAVEfmt data");
    EXPECT_EQ(wav.substr(20, 4) + wav.substr(34, 2), Le(1, 2) + Le(1, 2) + Le(16, 2));
    EXPECT_EQ(wav.substr(24, 4) + wav.substr(40, 4), Le(44100, 4) + Le(2 * samples, 4));
    auto sample = [&](std::size_t i) {
        return static_cast<std::int16_t>(static_cast<std::uint8_t>(wav[44 + 2 * i]) |
                                         static_cast<std::uint8_t>(wav[45 + 2 * i]) << 8);
    };
    // Pulse k ends at the sample nearest to k * 27.3168: 27, 55, 82, 109...
    EXPECT_EQ(sample(0), kWavHigh);
    EXPECT_EQ(sample(26), kWavHigh);
    EXPECT_EQ(sample(27), -kWavHigh);
    EXPECT_EQ(sample(54), -kWavHigh);
    EXPECT_EQ(sample(55), kWavHigh);
    EXPECT_EQ(sample(81), kWavHigh);
    EXPECT_EQ(sample(82), -kWavHigh);
    EXPECT_EQ(sample(samples - 1), -kWavHigh);

    WriteFile(dir.File("otra.WAV"), "mia");
    EXPECT_FALSE(WriteWav(blocks, dir.File("otra.wav"), kWavRate, reason));
    EXPECT_EQ(reason, "ya existe " + dir.File("otra.WAV"));
    EXPECT_EQ(ReadFile(dir.File("otra.WAV")), "mia");
    // Given up half-way, nothing is left.
    EXPECT_FALSE(WriteWav(blocks, dir.File("nueva.wav"), kWavRate, reason,
                          [](double done) { return done < 0.5; }));
    EXPECT_EQ(reason, "se ha cancelado");
    EXPECT_EQ(dir.List(), (Names{"cinta.wav", "otra.WAV"}));
}

} // namespace
} // namespace cintal::test
