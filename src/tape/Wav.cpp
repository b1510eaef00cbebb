#include "tape/Wav.h"

#include "tape/Content.h"

#include <algorithm>
#include <vector>

namespace cintal {

namespace {

// The sample at which a time in T-states falls, to the nearest.
std::uint64_t SampleAt(std::uint64_t time, std::uint64_t rate) {
    return (time * rate + kTStatesPerSecond / 2) / kTStatesPerSecond;
}

void PutLe(std::string& out, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i)
        out += static_cast<char>((value >> (8 * i)) & 0xFF);
}

std::string WavHeader(std::uint32_t rate, std::uint32_t dataBytes) {
    std::string h;
    h += "RIFF";
    PutLe(h, 36 + dataBytes, 4);
    h += "WAVEfmt ";
    PutLe(h, 16, 4);
    PutLe(h, 1, 2); // PCM
    PutLe(h, 1, 2); // mono
    PutLe(h, rate, 4);
    PutLe(h, rate * 2, 4);
    PutLe(h, 2, 2);
    PutLe(h, 16, 2);
    h += "data";
    PutLe(h, dataBytes, 4);
    return h;
}

} // namespace

SampleStream::SampleStream(const Blocks& blocks, std::uint32_t rate, std::size_t first,
                           bool stopAtStops)
    : signal(blocks, first), rate(rate), stopAtStops(stopAtStops) {}

bool SampleStream::NextPulse() {
    while (pulse >= block.pulses.size()) {
        if (ended || (stopAtStops && block.stop) || !signal.Next(block)) {
            ended = true;
            return false;
        }
        pulse = 0;
        starts.push_back({samples, block.block});
    }
    const Pulse& p = block.pulses[pulse++];
    time += p.length;
    const std::uint64_t end = SampleAt(time, rate);
    left = end - samples;
    samples = end;
    value = p.high ? kWavHigh : static_cast<std::int16_t>(-kWavHigh);
    return true;
}

std::size_t SampleStream::Read(std::int16_t* out, std::size_t n) {
    std::size_t done = 0;
    while (done < n) {
        if (left == 0) {
            if (!NextPulse()) break;
            continue;
        }
        const auto k = static_cast<std::size_t>(std::min<std::uint64_t>(left, n - done));
        std::fill_n(out + done, k, value);
        done += k;
        left -= k;
    }
    return done;
}

std::uint64_t SampleStream::Total(const Blocks& blocks, std::uint32_t rate, std::size_t first,
                                  bool stopAtStops) {
    TapeSignal signal(blocks, first);
    BlockSignal block;
    std::uint64_t time = 0;
    while (signal.Next(block)) {
        time += block.Length();
        if (stopAtStops && block.stop) break;
    }
    return SampleAt(time, rate);
}

bool WriteWav(const Blocks& blocks, const std::string& path, std::uint32_t rate,
              std::string& reason, const std::function<bool(double)>& progress, bool replace) {
    if (rate < 1000 || rate > 384000) {
        reason = "la frecuencia de muestreo ha de estar entre 1000 y 384000 Hz";
        return false;
    }
    const std::uint64_t total = SampleStream::Total(blocks, rate);
    if (total * 2 > 0xFFFFFFFFull - 36) {
        reason = "la cinta suena demasiado tiempo para un archivo WAV";
        return false;
    }
    const std::string header = WavHeader(rate, static_cast<std::uint32_t>(total * 2));
    SampleStream stream(blocks, rate);
    std::vector<std::int16_t> samples(1 << 16);
    std::string piece;
    bool headerGiven = false, cancelled = false;
    std::uint64_t written = 0;
    const ByteSource source = [&](std::string_view& out) {
        if (!headerGiven) {
            headerGiven = true;
            out = header;
            return true;
        }
        if (progress && !progress(total ? double(written) / double(total) : 1.0)) {
            cancelled = true;
            return false;
        }
        const std::size_t n = stream.Read(samples.data(), samples.size());
        written += n;
        // Little-endian, whatever the machine.
        piece.resize(2 * n);
        for (std::size_t i = 0; i < n; ++i) {
            const auto v = static_cast<std::uint16_t>(samples[i]);
            piece[2 * i] = static_cast<char>(v & 0xFF);
            piece[2 * i + 1] = static_cast<char>(v >> 8);
        }
        out = piece;
        return true;
    };
    if (!WriteContentFile(path, source, replace, reason)) {
        if (cancelled) reason = "se ha cancelado";
        return false;
    }
    if (progress) progress(1.0);
    return true;
}

std::string WhyCutShort(TZXTape& tape) {
    if (!tape.Status().Whole()) return tape.Status().Cause();
    std::int64_t number = 0;
    for (const BlockRef& b : tape.Blocks()) {
        ++number;
        if (b->CutShort)
            return "el archivo termina dentro de los datos del bloque " + std::to_string(number);
    }
    return {};
}

} // namespace cintal
