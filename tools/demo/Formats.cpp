#include "Formats.h"

#include "Filler.h"
#include "SpectrumScreen.h"

#include "tape/Content.h"
#include "tape/Cp1252.h"
#include "tape/TZXTape.h"

#include <QByteArray>

#include <algorithm>

namespace cintal::demo {

using namespace raw;

namespace {

// A small GIF in four colours. The LZW stream sends a clear code after every
// second pixel, which keeps the codes three bits wide: larger than a real
// encoder's output, but any decoder reads it.
Bytes Gif(std::uint16_t width, std::uint16_t height, std::string_view key) {
    Filler f(key);
    Bytes out("GIF89a");
    Le16(out, width);
    Le16(out, height);
    out += '\x81'; // a global table of four colours
    out += '\0';
    out += '\0';
    const std::uint8_t palette[4][3] = {{0, 0, 0}, {215, 0, 0}, {215, 215, 0}, {255, 255, 255}};
    for (const auto& c : palette)
        for (std::uint8_t v : c)
            out += static_cast<char>(v);
    out += '\x2C';
    Le16(out, 0);
    Le16(out, 0);
    Le16(out, width);
    Le16(out, height);
    out += '\0';
    out += '\x02'; // minimum code size

    Bytes stream;
    std::uint32_t acc = 0;
    int bits = 0;
    auto put = [&](std::uint32_t code) {
        acc |= code << bits;
        bits += 3;
        while (bits >= 8) {
            stream += static_cast<char>(acc & 0xFF);
            acc >>= 8;
            bits -= 8;
        }
    };
    constexpr std::uint32_t kClear = 4, kEnd = 5;
    std::uint32_t stripe = f.Next() % 4;
    for (std::uint32_t i = 0; i < std::uint32_t(width) * height; ++i) {
        if (i % 2 == 0) put(kClear);
        std::uint32_t x = i % width, y = i / width;
        put(((x / 4 + y / 4 + stripe) % 4));
    }
    put(kEnd);
    if (bits > 0) stream += static_cast<char>(acc & 0xFF);
    for (std::size_t at = 0; at < stream.size(); at += 255) {
        std::size_t n = std::min<std::size_t>(255, stream.size() - at);
        out += static_cast<char>(n);
        out += stream.substr(at, n);
    }
    out += '\0';
    out += '\x3B';
    return out;
}

// The .Z80 run-length scheme: ED ED count byte for runs of five or more, and
// for any run of ED; the byte after a lone ED is never the start of a run.
Bytes Z80Pack(std::string_view data) {
    Bytes out;
    std::size_t i = 0;
    while (i < data.size()) {
        const char b = data[i];
        std::size_t run = 1;
        while (i + run < data.size() && data[i + run] == b && run < 255)
            ++run;
        if (run >= 5 || (b == '\xED' && run >= 2)) {
            out += "\xED\xED";
            out += static_cast<char>(run);
            out += b;
            i += run;
            continue;
        }
        out += b;
        ++i;
        if (b == '\xED' && i < data.size()) out += data[i++];
    }
    return out;
}

// The first 30 bytes of every .Z80 file; pc 0 announces the longer header of
// versions 2 and 3.
Bytes Z80Registers(std::uint16_t pc, bool packed) {
    Bytes h(30, '\0');
    h[0] = '\x44'; // A
    h[1] = '\x81'; // F
    h[6] = static_cast<char>(pc & 0xFF);
    h[7] = static_cast<char>(pc >> 8);
    h[8] = '\x00'; // SP = 0xFF00
    h[9] = '\xFF';
    h[10] = '\x3F';                                            // I
    h[11] = '\x2A';                                            // R
    h[12] = static_cast<char>((1 << 1) | (packed ? 0x20 : 0)); // blue border
    h[27] = '\x01';                                            // IFF1
    h[28] = '\x01';                                            // IFF2
    h[29] = '\x01';                                            // IM 1, no issue 2 emulation
    return h;
}

void Fill(ArchiveInfo& a, const Info& i) {
    a.iName = Utf8ToCp1252(i.name);
    a.iPublisher = Utf8ToCp1252(i.publisher);
    a.iAuthor = Utf8ToCp1252(i.author);
    a.iYear = Utf8ToCp1252(i.year);
    a.iLang = Utf8ToCp1252(i.lang);
    a.iType = Utf8ToCp1252(i.type);
    a.iPrice = Utf8ToCp1252(i.price);
    a.iSchema = Utf8ToCp1252(i.loader);
    a.iOrigin = Utf8ToCp1252(i.origin);
    a.iRePublisher = Utf8ToCp1252(i.republisher);
    a.iComments = Utf8ToCp1252(i.comments);
}

} // namespace

Bytes Num(std::uint16_t n) {
    Bytes out = std::to_string(n);
    out += '\x0E';
    out += '\0';
    out += '\0';
    Le16(out, n);
    out += '\0';
    return out;
}

Bytes Str(const char* s) {
    return Bytes(s);
}

Bytes LoaderProgram(std::uint16_t clear, std::uint16_t start, bool screen) {
    BasicProgram p;
    p.Line(10, Str(tok::BORDER) + Num(0) + ":" + tok::PAPER + Num(0) + ":" + tok::INK + Num(7) +
                   ":" + tok::CLEAR + Num(clear));
    if (screen) p.Line(20, Str(tok::LOAD) + "\"\"" + tok::SCREEN);
    p.Line(30, Str(tok::LOAD) + "\"\"" + tok::CODE);
    p.Line(40, Str(tok::RANDOMIZE) + tok::USR + Num(start));
    return p.Get();
}

Bytes LoadingScreen(std::string_view title) {
    Filler f(title);
    Bytes scr(kScreenSize, '\0');
    int peaks[33];
    for (int& p : peaks)
        p = 70 + static_cast<int>(f.Next() % 90);
    for (int y = 0; y < 192; ++y) {
        for (int x = 0; x < 256; ++x) {
            int a = peaks[x / 8], b = peaks[x / 8 + 1];
            int ground = a + (b - a) * (x % 8) / 8;
            bool hill = y > 191 - ground;
            bool dither = ((x ^ y) & 1) && y > 191 - ground - 6;
            if (!hill && !dither) continue;
            scr[zx::PixelByte(x, y)] |= static_cast<char>(zx::PixelBit(x));
        }
    }
    std::uint8_t ink = 1 + f.Next() % 7;
    for (int row = 0; row < 24; ++row) {
        std::uint8_t paper = static_cast<std::uint8_t>((row / 3 + f.Next() % 2) % 8);
        for (int col = 0; col < 32; ++col)
            scr[zx::kAttributes + row * 32 + col] =
                static_cast<char>(zx::Attribute(ink, paper, row < 8));
    }
    return scr;
}

std::vector<Bytes> StandardLoad(std::string_view name, std::uint16_t start, std::size_t codeLen,
                                bool screen) {
    Filler f(name);
    Bytes program = LoaderProgram(static_cast<std::uint16_t>(start - 1), start, screen);
    std::vector<Bytes> out;
    out.push_back(
        Standard(RomHeader(RomType::Program, name, static_cast<std::uint16_t>(program.size()), 10,
                           static_cast<std::uint16_t>(program.size()))));
    out.push_back(Standard(RomData(program)));
    if (screen) {
        out.push_back(Standard(RomHeader(RomType::Code, "pantalla", kScreenSize, 16384, 32768)));
        out.push_back(Standard(RomData(LoadingScreen(name))));
    }
    out.push_back(Standard(
        RomHeader(RomType::Code, "codigo", static_cast<std::uint16_t>(codeLen), start, 32768)));
    out.push_back(Standard(RomData(f.Code(codeLen)), 0));
    return out;
}

Bytes PokesData(
    std::string_view description,
    const std::vector<std::pair<std::string, std::vector<std::array<int, 4>>>>& trainers) {
    Bytes out = Byte(description.size());
    out += description;
    out += Byte(trainers.size());
    for (const auto& [name, pokes] : trainers) {
        out += Byte(name.size());
        out += name;
        out += Byte(pokes.size());
        for (const auto& p : pokes) { // bank, address, value, original
            out += Byte(p[0]);
            Le16(out, p[1]);
            out += Byte(p[2]);
            out += Byte(p[3]);
        }
    }
    return out;
}

Bytes ScreenData(std::string_view description, std::string_view key) {
    Bytes out = Byte(description.size());
    out += description;
    out += '\0'; // border
    out += LoadingScreen(key);
    return out;
}

Bytes PictureData(std::string_view description, std::string_view key) {
    Bytes out = Byte(0); // GIF
    out += Byte(description.size());
    out += description;
    out += Gif(64, 48, key);
    return out;
}

Bytes Ram48(const Bytes& screen, std::string_view key) {
    Filler f(key);
    Bytes ram(49152, '\0');
    ram.replace(0, kScreenSize, screen);
    ram.replace(32768 - 16384, 4096, f.Code(4096));
    ram[0xFF00 - 16384] = '\x00'; // return address 0x8000 on the stack
    ram[0xFF01 - 16384] = '\x80';
    return ram;
}

Bytes SnaOf(const Bytes& ram) {
    Bytes regs(27, '\0');
    regs[0] = '\x3F';  // I
    regs[19] = '\x04'; // interrupts enabled
    regs[23] = '\x00'; // SP = 0xFF00, low byte
    regs[24] = '\xFF';
    regs[25] = '\x01'; // IM 1
    regs[26] = '\x07'; // white border
    return regs + ram;
}

Bytes Sna48(std::string_view key) {
    return SnaOf(Ram48(LoadingScreen(key), key));
}

Bytes Z80v1(const Bytes& ram) {
    return Z80Registers(0x8000, true) + Z80Pack(ram) + Bytes("\x00\xED\xED\x00", 4);
}

Bytes Z80v3(const std::vector<std::pair<int, Bytes>>& pages, bool is128) {
    Bytes ext;
    Le16(ext, 0x8000);                       // PC
    ext += static_cast<char>(is128 ? 4 : 0); // hardware: 128K or 48K
    ext += is128 ? '\x10' : '\0';            // last OUT to 0x7FFD: ROM 1, bank 0
    ext += '\0';                             // Interface I not paged
    ext += is128 ? '\x04' : '\0';            // AY sound in use
    ext += '\x07';                           // last OUT to 0xFFFD
    for (int r = 0; r < 16; ++r)             // AY registers: a quiet chip
        ext += r == 7 ? '\x3F' : '\0';
    ext += Bytes(54 - ext.size(), '\0');
    ext[61 - 32] = '\xFF'; // ROM at 0 and at 8192 (offsets in the file, less the 32 before)
    ext[62 - 32] = '\xFF';
    Bytes out = Z80Registers(0, true);
    Le16(out, 54);
    out += ext;
    for (const auto& [page, data] : pages) {
        const Bytes packed = Z80Pack(data);
        Le16(out, static_cast<std::uint32_t>(packed.size()));
        out += static_cast<char>(page);
        out += packed;
    }
    return out;
}

std::vector<std::pair<int, Bytes>> Pages48(const Bytes& ram) {
    return {{8, ram.substr(0, 16384)}, {4, ram.substr(16384, 16384)}, {5, ram.substr(32768)}};
}

std::vector<std::pair<int, Bytes>> Pages128(const Bytes& screen, std::string_view key) {
    Filler f(key);
    std::vector<std::pair<int, Bytes>> pages;
    for (int bank = 0; bank < 8; ++bank) {
        Bytes data(16384, '\0');
        if (bank == 5) data.replace(0, kScreenSize, screen);
        if (bank == 2) data.replace(0, 6000, f.Code(6000));
        if (bank == 1 || bank == 3) data.replace(0, 3000, f.Code(3000)); // levels
        pages.push_back({bank + 3, data});
    }
    return pages;
}

Bytes Slt(const Bytes& ram, const Bytes& screen, std::string_view key) {
    Filler f(key);
    Bytes out = Z80v3(Pages48(ram), false);
    out += Bytes("\0\0\0SLT", 6);
    std::vector<std::pair<std::pair<int, int>, Bytes>> entries; // (type, number), data
    for (int level = 1; level <= 3; ++level) {
        Bytes data(9000 + level * 500, '\0');
        data.replace(0, 2000, f.Code(2000));
        entries.push_back({{1, level}, Z80Pack(data)});
    }
    entries.push_back({{3, 0}, screen}); // the loading screen, as it is
    for (const auto& [id, data] : entries) {
        Le16(out, static_cast<std::uint32_t>(id.first));
        Le16(out, static_cast<std::uint32_t>(id.second));
        Le32(out, static_cast<std::uint32_t>(data.size()));
    }
    out += Bytes(8, '\0'); // end of the table
    for (const auto& entry : entries)
        out += entry.second;
    return out;
}

Bytes Sp(const Bytes& ram) {
    Bytes h("SP");
    Le16(h, 49152);
    Le16(h, 16384);
    for (int r = 0; r < 10; ++r) // BC DE HL AF IX IY BC' DE' HL' AF'
        Le16(h, r == 3 ? 0x4481 : 0);
    h += '\x2A';     // R
    h += '\x3F';     // I
    Le16(h, 0xFF00); // SP
    Le16(h, 0x8000); // PC
    Le16(h, 0);
    h += '\x04'; // green border
    h += '\0';
    Le16(h, 0x0001); // interrupts enabled, IM 1
    return h + ram;
}

Bytes Voc(const std::vector<Bytes>& romBlocks) {
    constexpr int kRateByte = 211; // 256 - 1000000 / 22222
    Bytes samples;
    bool high = false;
    long long owed = 0; // T-states times two not yet turned into samples
    auto pulse = [&](int tstates) {
        // 3.5 MHz over 22222 Hz: 157.5 T-states, or 315 halves, to a sample.
        owed += static_cast<long long>(tstates) * 2;
        const long long n = owed / 315;
        owed -= n * 315;
        samples.append(static_cast<std::size_t>(n), high ? '\xC0' : '\x40');
        high = !high;
    };
    for (const Bytes& block : romBlocks) {
        const int pilot = static_cast<std::uint8_t>(block[0]) < 0x80 ? 1600 : 800;
        for (int i = 0; i < pilot; ++i)
            pulse(2168);
        pulse(667);
        pulse(735);
        for (char c : block)
            for (int bit = 7; bit >= 0; --bit) {
                const int len = (static_cast<std::uint8_t>(c) >> bit) & 1 ? 1710 : 855;
                pulse(len);
                pulse(len);
            }
        samples.append(11111, '\x80'); // half a second of silence
    }
    Bytes out("Creative Voice File\x1A");
    Le16(out, 26);     // header size
    Le16(out, 0x010A); // version 1.10
    Le16(out, 0x1129); // its check: ~version + 0x1234
    out += '\x01';     // sound data
    Le24(out, static_cast<std::uint32_t>(samples.size() + 2));
    out += static_cast<char>(kRateByte);
    out += '\0'; // 8-bit, unpacked
    out += samples;
    out += '\0'; // terminator
    return out;
}

Bytes Plus3Header(RomType type, std::uint16_t length, std::uint16_t param1, std::uint16_t param2) {
    Bytes h("PLUS3DOS\x1A\x01\x00", 11);
    Le32(h, length + 128u);
    h += static_cast<char>(type);
    Le16(h, length);
    Le16(h, param1);
    Le16(h, param2);
    h.resize(127, '\0');
    std::uint8_t sum = 0;
    for (char c : h)
        sum = static_cast<std::uint8_t>(sum + static_cast<std::uint8_t>(c));
    return h + static_cast<char>(sum);
}

Bytes PlusThreeDisk(const std::vector<std::pair<std::string, Bytes>>& files) {
    constexpr int kTracks = 40, kSectors = 9, kSector = 512;
    std::vector<Bytes> sectors(kTracks * kSectors, Bytes(kSector, '\xE5'));
    // +3 format, one side, 40 tracks of 9 sectors of 512 bytes, a reserved track,
    // 1K blocks, two of them for the directory, and the gaps.
    const Bytes layout("\x00\x00\x28\x09\x02\x01\x03\x02\x2A\x52", 10);
    sectors[0].replace(0, layout.size(), layout);
    auto block = [&](int n, const Bytes& data) { // 1K: two sectors from track 1
        for (int half = 0; half < 2; ++half) {
            const std::size_t from = static_cast<std::size_t>(half) * kSector;
            if (from >= data.size()) break;
            Bytes piece = data.substr(from, kSector);
            piece.resize(kSector, '\x1A');
            sectors[kSectors + n * 2 + half] = piece;
        }
    };
    Bytes directory(2048, '\xE5');
    int next = 2; // blocks 0 and 1 are the directory
    for (std::size_t e = 0; e < files.size(); ++e) {
        const auto& [name, data] = files[e];
        const int blocks = static_cast<int>((data.size() + 1023) / 1024);
        Bytes entry(32, '\0');
        const std::size_t dot = name.find('.');
        Bytes base = name.substr(0, dot),
              ext = dot == std::string::npos ? "" : name.substr(dot + 1);
        base.resize(8, ' ');
        ext.resize(3, ' ');
        entry.replace(1, 8, base);
        entry.replace(9, 3, ext);
        entry[15] = static_cast<char>(std::min<std::size_t>(128, (data.size() + 127) / 128));
        for (int b = 0; b < blocks; ++b) {
            entry[16 + b] = static_cast<char>(next);
            block(next++, data.substr(static_cast<std::size_t>(b) * 1024, 1024));
        }
        directory.replace(e * 32, 32, entry);
    }
    block(0, directory.substr(0, 1024));
    block(1, directory.substr(1024));

    Bytes out("MV - CPCEMU Disk-File\r\nDisk-Info\r\n");
    out += "Cintal        "; // the program that made it, 14 bytes
    out += static_cast<char>(kTracks);
    out += '\x01';
    Le16(out, 256 + kSectors * kSector);
    out.resize(256, '\0');
    for (int t = 0; t < kTracks; ++t) {
        Bytes info("Track-Info\r\n");
        info += Bytes(4, '\0');
        info += static_cast<char>(t);
        info += '\0';
        info += Bytes(2, '\0');
        info += '\x02'; // 512-byte sectors
        info += static_cast<char>(kSectors);
        info += '\x2A'; // gap
        info += '\xE5'; // filler
        for (int s = 0; s < kSectors; ++s) {
            info += static_cast<char>(t);
            info += '\0';
            info += static_cast<char>(s + 1);
            info += '\x02';
            info += Bytes(4, '\0');
        }
        info.resize(256, '\0');
        out += info;
        for (int s = 0; s < kSectors; ++s)
            out += sectors[static_cast<std::size_t>(t * kSectors + s)];
    }
    return out;
}

Bytes TrDosDisk(const std::string& label,
                const std::vector<std::tuple<std::string, char, std::uint16_t, Bytes>>& files) {
    Bytes catalogue(16 * 256, '\0');
    Bytes body;
    int sector = 0, track = 1;
    for (std::size_t i = 0; i < files.size(); ++i) {
        const auto& [name, type, param, data] = files[i];
        const int count = static_cast<int>((data.size() + 255) / 256);
        Bytes entry = name.substr(0, 8);
        entry.resize(8, ' ');
        entry += type;
        Le16(entry, param);
        Le16(entry, static_cast<std::uint32_t>(data.size()));
        entry += static_cast<char>(count);
        entry += static_cast<char>(sector);
        entry += static_cast<char>(track);
        catalogue.replace(i * 16, 16, entry);
        Bytes padded = data;
        padded.resize(static_cast<std::size_t>(count) * 256, '\0');
        body += padded;
        sector += count;
        track += sector / 16;
        sector %= 16;
    }
    const int used = static_cast<int>(body.size() / 256);
    Bytes& info = catalogue; // its ninth sector describes the disk
    const std::size_t at = 8 * 256;
    info[at + 0xE1] = static_cast<char>(sector);
    info[at + 0xE2] = static_cast<char>(track);
    info[at + 0xE3] = '\x16'; // 80 tracks, two sides
    info[at + 0xE4] = static_cast<char>(files.size());
    const int free = 2544 - used;
    info[at + 0xE5] = static_cast<char>(free & 0xFF);
    info[at + 0xE6] = static_cast<char>(free >> 8);
    info[at + 0xE7] = '\x10'; // TR-DOS
    for (int i = 0; i < 9; ++i)
        info[at + 0xEA + i] = ' ';
    Bytes name = label.substr(0, 8);
    name.resize(8, ' ');
    info.replace(at + 0xF5, 8, name);
    return catalogue + body;
}

Bytes CswOf(std::string_view romBlock, bool zrle) {
    // At 44100 Hz a ROM pilot pulse is 27 samples; a short pilot is enough here.
    std::vector<std::uint32_t> samples(1000, 27);
    samples.push_back(8);
    samples.push_back(9);
    for (char c : romBlock)
        for (int bit = 7; bit >= 0; --bit) {
            const std::uint32_t n = (static_cast<std::uint8_t>(c) >> bit) & 1 ? 21 : 11;
            samples.push_back(n);
            samples.push_back(n);
        }
    const auto pulses = static_cast<std::uint32_t>(samples.size());
    Bytes rle = CswRle(samples);
    if (!zrle) return CswRecording(44100, 1, pulses, rle);
    // qCompress puts the length in four bytes before the zlib stream.
    const QByteArray z = qCompress(QByteArray(rle.data(), qsizetype(rle.size())), 9);
    return CswRecording(44100, 2, pulses, std::string_view(z.constData() + 4, z.size() - 4));
}

Bytes Assemble(std::int16_t version, std::int16_t revision, const Info& info,
               const std::vector<Bytes>& blocks) {
    TZXTape t;
    for (const auto& b : blocks)
        t.Blocks().Add(static_cast<std::uint8_t>(b[0]), {}, b, static_cast<double>(b.size()));
    Fill(t.ArchiveInfo(), info);
    return t.Image(version, revision);
}

Bytes ArchiveOf(const Info& info) {
    TZXTape t;
    Fill(t.ArchiveInfo(), info);
    return t.BloqueInfo();
}

Bytes Join(const std::vector<Bytes>& parts) {
    Bytes out;
    for (const auto& p : parts)
        out += p;
    return out;
}

Bytes Cp(const char* utf8) {
    return Utf8ToCp1252(utf8);
}

} // namespace cintal::demo
