#pragma once
// What the tape tests share: tapes assembled field by field as a TZX file
// holds them (with the raw builders of TapeBytes.h, apart from the engine's
// writer), a scratch folder per test, and the boxes a user would have seen.

#include "TapeBytes.h"
#include "tape/Block.h"
#include "tape/Prompt.h"
#include "tape/SafeWrite.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace cintal::test {

using raw::Le;

inline Bytes B(std::initializer_list<int> values) {
    Bytes out;
    for (int v : values)
        out += static_cast<char>(v);
    return out;
}

// Payload bytes that run through every value, zero and the top half included.
inline Bytes Filler(std::size_t n) {
    Bytes out(n, '\0');
    for (std::size_t i = 0; i < n; ++i)
        out[i] = static_cast<char>((i * 37) & 0xFF);
    return out;
}

struct Kind {
    Bytes bytes;
    std::string descr; // what the inspector shows for it at its place
};

// Blocks of every kind the reader decodes, with their fields in file order.
struct Tzx {
    // A ROM header (flag 0, type, 10-byte name, three words, checksum) and a
    // ROM data block (flag, payload, checksum).
    static Bytes RomHeader(int type, std::string name) {
        name.resize(10, ' ');
        return B({0, type}) + name + Le(6912, 2) + Le(16384, 2) + Le(32768, 2) + B({0x5C});
    }
    static Bytes RomData(std::size_t n) { return B({0xFF}) + Filler(n) + B({0x3A}); }

    static Bytes Std(const Bytes& d) { return raw::Standard(d); }
    static Bytes Turbo(const Bytes& d) { return B({0x11}) + Filler(15) + Le(d.size(), 3) + d; }
    static Bytes Tone() { return raw::PureTone(2168, 3223); }
    static Bytes Pulses(int n) { return B({0x13, n}) + Filler(2 * n); }
    static Bytes PureData(const Bytes& d) { return B({0x14}) + Filler(7) + Le(d.size(), 3) + d; }
    static Bytes Direct(const Bytes& d) { return B({0x15}) + Filler(5) + Le(d.size(), 3) + d; }
    static Bytes Pause(int ms) { return raw::Pause(static_cast<std::uint16_t>(ms)); }
    static Bytes Group(const std::string& name) { return raw::GroupStart(name); }
    static Bytes Jump(std::int16_t rel) { return raw::Jump(rel); }
    static Bytes Call() { return B({0x26}) + Le(2, 2) + Le(1, 2) + Le(0xFFFF, 2); }
    static Bytes Select() { return B({0x28}) + Le(7, 2) + B({1}) + Le(1, 2) + B({3}) + "Uno"; }
    static Bytes Text(const std::string& t) { return raw::Text(t); }
    static Bytes Msg(const std::string& t) { return raw::MessageBlock(t, 5); }
    static Bytes Hardware(int n) { return B({0x33, n}) + Filler(3 * n); }
    static Bytes Custom(const std::string& id16, const Bytes& d) {
        EXPECT_EQ(id16.size(), 16u);
        return raw::Custom(id16, d);
    }
    static Bytes Snapshot(const Bytes& d) { return raw::Snapshot(raw::SnapshotType::Z80, d); }
    static Bytes Merge() { return raw::MergeMarker(1, 13); }
    // A record as the ROM saves it: flag, payload and the XOR of both; a
    // header of that record with its fields.
    static Bytes Rom(int flag, const Bytes& payload) {
        return raw::RomBlock(static_cast<std::uint8_t>(flag), payload);
    }
    static Bytes Head(int type, const std::string& name, int length, int param1, int param2) {
        return raw::RomHeader(
            static_cast<raw::RomType>(type), name, static_cast<std::uint16_t>(length),
            static_cast<std::uint16_t>(param1), static_cast<std::uint16_t>(param2));
    }
    // 6912 bytes of a screen of its own for each salt, so that one can't pass
    // for another.
    static Bytes Screen(int salt) {
        Bytes out(6912, '\0');
        for (std::size_t i = 0; i < out.size(); ++i)
            out[i] = static_cast<char>((i * (2 * salt + 1) + i / 251 + salt) & 0xFF);
        return out;
    }
    static Bytes BasicLine(int number, const Bytes& text) {
        return raw::BasicLine(static_cast<std::uint16_t>(number), text);
    }
    // The length word is the format's unless one is forced: the reader must go
    // by the entries.
    static Bytes Archive(const std::vector<std::pair<int, std::string>>& entries, int word = -1) {
        std::vector<std::pair<std::uint8_t, std::string>> ids;
        for (const auto& [id, text] : entries)
            ids.emplace_back(static_cast<std::uint8_t>(id), text);
        Bytes out = raw::Archive(ids);
        if (word >= 0) out.replace(1, 2, Le(word, 2));
        return out;
    }

    // Every kind but the archive block, each with its text at that place.
    static std::vector<Kind> EveryKind() {
        const std::string dots = "      ................... ";
        // clang-format off
        return {
            {Std(RomHeader(0, "Manic\x7F\x7D\x1FMi")), "BASIC: Manic?}?Mi      "},
            {Pause(0), "Detener la cinta"}, // the pending header survives it
            {Std(RomData(300)), "      Datos - 300 bytes"}, {Std(RomData(5)), "Datos - 5 bytes"},
            {Std(RomHeader(3, "Pantalla")), "CODE:  Pantalla  "},
            {Std(RomData(6912)), "      Datos - 6912 bytes"},
            {Std(RomHeader(1, "matriz")), "Num/Char array - 17 bytes"},
            {Std(RomData(20)), "Datos - 20 bytes"}, {Std({}), ""},
            {Std(B({0, 0}) + "nueve 9bX"), "BASIC:       "}, // too short for a name
            {Std(B({0xFF})), "      Datos - 0 bytes"},
            {Turbo(RomData(98)), "Turbo block - 98 bytes"}, {Turbo({}), "Turbo block - -2 bytes"},
            {Tone(), " Pure tone"}, {Pulses(3), " Seq. of pulses"},
            {PureData(Filler(50)), " Pure Data block - 50 bytes"},
            {Direct(Filler(70000)), "Direct recording: 70000"}, {Pause(500), "Pausa de 500 mseg."},
            {Group("Ni\xF1o 2"), "Ni\xF1o 2"}, {B({0x22}), dots},
            {B({0x24}) + Le(3, 2), "3 repeticiones"}, {B({0x25}), dots},
            {Jump(-2), "Bloque:21"}, // ordinal 23
            {Jump(-24), "**SALTO A BLOQUE ERRONEO**"}, {Jump(-24), "Bloque:1"},
            {Jump(100), "Bloque:126"}, {Call(), "-->>"}, {B({0x27}), "RETURN"}, {Select(), "-->>"},
            {B({0x2A}) + Le(0, 4), "-- STOP --"},
            {Text("Cargando \xA9 1984"), "Cargando \xA9 1984"}, {Msg("Pulse PLAY"), "Pulse PLAY"},
            {Hardware(2), ""}, {B({0x34}) + Filler(8), ""},
            {Custom("POKEs           ", Filler(12)), "Pokes"}, {Snapshot(Filler(40)), "SNAPSHOT"},
            {Merge(), "XXXXXXXXXXXXXX"},
            {raw::CswRecording(44100, 1, 3, raw::CswRle({10, 300, 20}), 0),
             "CSW 44100 Hz, RLE, 3 pulsos"},
            {raw::CswRecording(22050, 2, 1000, Filler(20)), "CSW 22050 Hz, Z-RLE, 1000 pulsos"},
            {raw::GeneralizedRom(RomData(10)),
             "Datos: 96 s\xEDmbolos, piloto/sinc.: 2, pausa de 1000 mseg."},
            {raw::Generalized(0, {}, {}, {{0, {500, 500}}, {1, {800}}, {2, {90, 20, 30}}}, 1,
                              B({0x40})),
             "Datos: 1 s\xEDmbolo, piloto/sinc.: 0, pausa de 0 mseg."},
            {raw::SignalLevel(1), "Nivel alto"}};
        // clang-format on
    }
};

// A tape image: header, then the blocks as given.
inline Bytes Tape(std::initializer_list<Bytes> blocks, int version = 1, int revision = 20,
                  char marker = 0x1A) {
    Bytes out =
        raw::TzxHeader(static_cast<std::uint8_t>(version), static_cast<std::uint8_t>(revision));
    out[7] = marker;
    for (const auto& b : blocks)
        out += b;
    return out;
}

// Sizes and the first difference, not two dumps of a whole tape.
inline ::testing::AssertionResult SameBytes(const Bytes& actual, const Bytes& expected) {
    if (actual == expected) return ::testing::AssertionSuccess();
    const auto diff = std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
    return ::testing::AssertionFailure()
           << "sizes " << actual.size() << " and " << expected.size() << ", first difference at "
           << (diff.first - actual.begin());
}

inline void WriteFile(const std::string& path, const Bytes& bytes) {
    std::ofstream(path, std::ios::binary).write(bytes.data(), std::streamsize(bytes.size()));
}
inline Bytes ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

using Names = std::vector<std::string>;
using Boxes = std::vector<std::string>;

// A folder of its own for each test, removed with everything in it.
struct TempDir {
    std::filesystem::path path = std::filesystem::temp_directory_path() /
                                 ("cintal-tape-" + std::to_string(std::random_device{}()) +
                                  std::to_string(std::random_device{}()));
    TempDir() { std::filesystem::create_directories(path); }
    ~TempDir() {
        std::error_code ec;
        std::filesystem::remove_all(path, ec);
    }
    std::string File(const std::string& name) const { return (path / name).string(); }
    Names List() const {
        Names names;
        for (const auto& e : std::filesystem::directory_iterator(path))
            names.push_back(e.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
};

// The engine's file operations as a test wants them. With a root, the file
// system stands inside that folder ("/juego.tzx" is root/juego.tzx) and a
// relative path, which would land wherever the program runs, is refused and
// noted. Before each change on disk, fail may return the error that the step
// is to give; it sees the paths as the engine gave them.
struct TestOps : detail::FileOps {
    std::string root;
    std::function<std::error_code(const std::string& op, const std::string& from,
                                  const std::string& to)>
        fail;
    std::vector<std::string> relative;

    std::string Map(const std::string& path) {
        if (root.empty()) return path;
        if (path.empty() || path[0] != '/') {
            relative.push_back(path);
            return {};
        }
        return root + path;
    }
    std::error_code Failure(const std::string& op, const std::string& from,
                            const std::string& to = {}) {
        return fail ? fail(op, from, to) : std::error_code();
    }
    static std::error_code Refused() { return std::make_error_code(std::errc::invalid_argument); }

    bool Exists(const std::string& path) override {
        std::string p = Map(path);
        return !p.empty() && FileOps::Exists(p);
    }
    bool Read(const std::string& path, std::string& out) override {
        std::string p = Map(path);
        return !p.empty() && FileOps::Read(p, out);
    }
    bool Same(const std::string& a, const std::string& b) override {
        std::string x = Map(a), y = Map(b);
        return !x.empty() && !y.empty() && FileOps::Same(x, y);
    }
    std::vector<std::string> List(const std::string& dir) override {
        std::string p = Map(dir.empty() ? "." : dir);
        return p.empty() ? std::vector<std::string>() : FileOps::List(p);
    }
    std::error_code CreateNew(const std::string& path, std::string_view bytes) override {
        std::string p = Map(path);
        if (p.empty()) return Refused();
        if (auto ec = Failure("create", path)) return ec;
        return FileOps::CreateNew(p, bytes);
    }
    std::error_code CreateNewFrom(const std::string& path, const ByteSource& bytes) override {
        std::string p = Map(path);
        if (p.empty()) return Refused();
        if (auto ec = Failure("create", path)) return ec;
        return FileOps::CreateNewFrom(p, bytes);
    }
    std::error_code Remove(const std::string& path) override {
        std::string p = Map(path);
        if (p.empty()) return Refused();
        if (auto ec = Failure("remove", path)) return ec;
        return FileOps::Remove(p);
    }
    std::error_code Rename(const std::string& from, const std::string& to) override {
        std::string a = Map(from), b = Map(to);
        if (a.empty() || b.empty()) return Refused();
        if (auto ec = Failure("rename", from, to)) return ec;
        return FileOps::Rename(a, b);
    }
};

// A box as one line, so that a failing comparison shows all of it.
inline std::string Box(const std::string& text, const std::string& title = {},
                       Icon icon = Icon::None, Buttons buttons = Buttons::Ok) {
    static const char* icons[] = {"None", "Information", "Exclamation", "Critical", "Question"};
    static const char* sets[] = {"Ok", "YesNo", "YesNoCancel", "OkCancel"};
    return std::string("[") + icons[int(icon)] + "/" + sets[int(buttons)] + "] \"" + title + "\" " +
           text;
}

// Boxes answered from a script and recorded, for the life of a test.
struct ScriptedBoxes {
    Boxes Shown() const {
        Boxes out;
        for (const auto& m : prompt.shown)
            out.push_back(Box(m.text, m.title, m.icon, m.buttons));
        return out;
    }
    void Forget() { prompt.shown.clear(); }

    ScriptedPrompt prompt;
    PromptScope scope{prompt};
};

class TapeTest : public ::testing::Test, protected Tzx, protected ScriptedBoxes {
protected:
    TempDir dir;
};

} // namespace cintal::test
