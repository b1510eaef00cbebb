#include "cli/WavCommand.h"

#include "cli/Arguments.h"
#include "cli/ContentCommands.h"
#include "tape/TZXTape.h"
#include "tape/Wav.h"

#include <ostream>

namespace cintal::cli {

namespace {

const char* kWavUsage = "Uso: cintal-cli wav CINTA SALIDA.wav [--rate HZ]\n";

// Samples per second as given, or 0 when it isn't a rate a WAV can have.
std::uint32_t RateOf(const std::string& text) {
    if (text.empty() || text.size() > 6) return 0;
    std::uint32_t n = 0;
    for (char c : text) {
        if (c < '0' || c > '9') return 0;
        n = n * 10 + static_cast<std::uint32_t>(c - '0');
    }
    return n >= 1000 && n <= 384000 ? n : 0;
}

std::string Minutes(std::uint64_t samples, std::uint32_t rate) {
    const std::uint64_t seconds = (samples + rate / 2) / rate;
    const std::string s = std::to_string(seconds % 60);
    return std::to_string(seconds / 60) + ":" + (s.size() < 2 ? "0" : "") + s;
}

} // namespace

int WavCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    Arguments a;
    if (const int status = Stop(a.Parse(args, {{{"--rate", true}}, 2, 2, kWavUsage}, out, err));
        status >= 0)
        return status;
    const std::uint32_t rate = a.Has("--rate") ? RateOf(a.Value("--rate")) : kWavRate;
    if (rate == 0) {
        err << "cintal-cli: frecuencia no válida: " << a.Value("--rate")
            << " (ha de ser un número de hercios entre 1000 y 384000)\n"
            << kWavUsage;
        return 2;
    }
    const std::string& file = a.words[0];
    const std::string& target = a.words[1];
    TZXTape tape;
    if (!LoadTape(file, tape, err)) return 1;
    // Part of a tape would load as far as it goes and then fail on the machine.
    if (const std::string why = WhyCutShort(tape); !why.empty()) {
        err << file << ": no se puede leer entera (" << why
            << "); no se ha escrito el archivo WAV\n";
        return 1;
    }
    std::string reason;
    if (!WriteWav(tape.Blocks(), target, rate, reason)) {
        err << "cintal-cli: no se puede escribir " << target << ": " << reason << "\n";
        return 1;
    }
    out << file << " -> " << target << " ("
        << Minutes(SampleStream::Total(tape.Blocks(), rate), rate) << ", " << rate << " Hz)\n";
    return 0;
}

} // namespace cintal::cli
