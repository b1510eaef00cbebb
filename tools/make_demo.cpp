// Writes the demo collection: a few folders of invented tapes that between
// them hold every block kind the reader decodes, the versions and archive
// texts a real collection has, and the damaged files a collector meets.
// Most tapes go through the engine's own writer; the ones that the writer
// would tidy up (an archive block last or twice, a cut file, TAP files) are
// put together by hand. The output is the same on every run.
//
//   cintal-demo OUTPUT_DIR

#include "TapeBytes.h"
#include "tape/Cp1252.h"
#include "tape/Prompt.h"
#include "tape/TZXTape.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using namespace cintal;
using namespace cintal::raw;

namespace {

// --- Deterministic filler ----------------------------------------------------

// xorshift32, started from the name of what it fills, so that every tape has
// its own bytes and every run the same ones.
class Filler {
public:
    explicit Filler(std::string_view name) {
        state = 2166136261u;
        for (char c : name)
            state = (state ^ static_cast<std::uint8_t>(c)) * 16777619u;
        if (state == 0) state = 1;
    }
    std::uint32_t Next() {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        return state;
    }
    // Machine code looks like this to a reader: no structure it could use.
    Bytes Code(std::size_t n) {
        Bytes out(n, '\0');
        for (auto& c : out)
            c = static_cast<char>(Next() & 0xFF);
        return out;
    }

private:
    std::uint32_t state;
};

// --- Sinclair BASIC, tokenised as the ROM stores it ---------------------------

namespace tok {
constexpr const char* SCREEN = "\xAA";
constexpr const char* CODE = "\xAF";
constexpr const char* USR = "\xC0";
constexpr const char* INK = "\xD9";
constexpr const char* PAPER = "\xDA";
constexpr const char* BORDER = "\xE7";
constexpr const char* REM = "\xEA";
constexpr const char* LOAD = "\xEF";
constexpr const char* POKE = "\xF4";
constexpr const char* PRINT = "\xF5";
constexpr const char* RANDOMIZE = "\xF9";
constexpr const char* CLS = "\xFB";
constexpr const char* CLEAR = "\xFD";
} // namespace tok

// A number as the editor leaves it: the digits, then 0x0E and its five-byte
// small-integer form.
Bytes Num(std::uint16_t n) {
    Bytes out = std::to_string(n);
    out += '\x0E';
    out += '\0';
    out += '\0';
    Le16(out, n);
    out += '\0';
    return out;
}

class BasicProgram {
public:
    BasicProgram& Line(std::uint16_t number, const Bytes& text) {
        bytes += static_cast<char>(number >> 8); // line numbers are big-endian
        bytes += static_cast<char>(number & 0xFF);
        Le16(bytes, static_cast<std::uint32_t>(text.size() + 1));
        bytes += text;
        bytes += '\x0D';
        return *this;
    }
    const Bytes& Get() const { return bytes; }

private:
    Bytes bytes;
};

Bytes Str(const char* s) {
    return Bytes(s);
}

// The loader of nearly every commercial tape: set colours, load a screen,
// load the code, jump into it.
Bytes LoaderProgram(std::uint16_t clear, std::uint16_t start, bool screen) {
    BasicProgram p;
    p.Line(10, Str(tok::BORDER) + Num(0) + ":" + tok::PAPER + Num(0) + ":" + tok::INK + Num(7) +
                   ":" + tok::CLEAR + Num(clear));
    if (screen) p.Line(20, Str(tok::LOAD) + "\"\"" + tok::SCREEN);
    p.Line(30, Str(tok::LOAD) + "\"\"" + tok::CODE);
    p.Line(40, Str(tok::RANDOMIZE) + tok::USR + Num(start));
    return p.Get();
}

// --- Pictures -----------------------------------------------------------------

constexpr std::size_t kScreenSize = 6912;

// A loading screen: bands of colour behind a range of hills, different for
// every title. Integer arithmetic only, so that the bytes never depend on a
// floating-point library.
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
            std::size_t addr = ((y & 0xC0) << 5) | ((y & 0x07) << 8) | ((y & 0x38) << 2) | (x >> 3);
            scr[addr] = static_cast<char>(scr[addr] | (0x80 >> (x & 7)));
        }
    }
    std::uint8_t ink = 1 + f.Next() % 7;
    for (int row = 0; row < 24; ++row) {
        std::uint8_t paper = static_cast<std::uint8_t>((row / 3 + f.Next() % 2) % 8);
        std::uint8_t bright = row < 8 ? 0x40 : 0;
        for (int col = 0; col < 32; ++col)
            scr[6144 + row * 32 + col] = static_cast<char>(bright | (paper << 3) | ink);
    }
    return scr;
}

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

// --- Blocks that several tapes share -------------------------------------------

// BASIC loader, optional screen, code: six standard speed blocks.
std::vector<Bytes> StandardLoad(std::string_view name, std::uint16_t start, std::size_t codeLen,
                                bool screen = true) {
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

// A 48K .SNA: the 27-byte register header, then RAM from 16384 with a screen
// and some code in it.
Bytes Sna48(std::string_view key) {
    Filler f(key);
    Bytes regs(27, '\0');
    regs[0] = '\x3F';  // I
    regs[19] = '\x04'; // interrupts enabled
    regs[23] = '\x00'; // SP = 0xFF00, low byte
    regs[24] = '\xFF';
    regs[25] = '\x01'; // IM 1
    regs[26] = '\x07'; // white border
    Bytes ram(49152, '\0');
    ram.replace(0, kScreenSize, LoadingScreen(key));
    ram.replace(32768 - 16384, 4096, f.Code(4096));
    ram[0xFF00 - 16384] = '\x00'; // return address 0x8000 on the stack
    ram[0xFF01 - 16384] = '\x80';
    return regs + ram;
}

// TZX 1.20's generalised data block, which this program has no decoder for.
Bytes Generalized(std::string_view data) {
    Bytes body;
    Le16(body, 1000); // pause
    Le32(body, 0);    // no pilot
    body += '\0';
    body += '\0';
    Le32(body, static_cast<std::uint32_t>(data.size() * 8));
    body += '\x02'; // two pulses per symbol
    body += '\x02'; // two symbols
    for (std::uint16_t pulse : {855, 1710}) {
        body += '\0';
        Le16(body, pulse);
        Le16(body, pulse);
    }
    body += data;
    Bytes out("\x19");
    Le32(out, static_cast<std::uint32_t>(body.size()));
    return out + body;
}

// --- Writing -------------------------------------------------------------------

// Archive texts in UTF-8 here; the tape gets them in Windows-1252.
struct Info {
    std::string name{}, publisher{}, author{}, year{}, lang{}, type{}, price{}, loader{}, origin{},
        republisher{}, comments{};
};

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

// Through the engine: the archive block first, then the blocks in order.
Bytes Assemble(std::int16_t version, std::int16_t revision, const Info& info,
               const std::vector<Bytes>& blocks) {
    TZXTape t;
    for (const auto& b : blocks)
        t.Blocks().Add(static_cast<std::uint8_t>(b[0]), {}, b, static_cast<double>(b.size()));
    Fill(t.ArchiveInfo(), info);
    return t.Image(version, revision);
}

// The archive block exactly as the engine builds it, to place by hand.
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

int failures = 0;

void Write(const fs::path& dir, const std::string& name, const Bytes& bytes) {
    fs::path path = dir / name;
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) {
        std::cerr << "cintal-demo: no se puede escribir " << path.string() << "\n";
        ++failures;
    }
}

// --- The collection ------------------------------------------------------------

void Juegos(const fs::path& dir) {
    {
        Info info{.name = "Castillo Sombrío",
                  .publisher = "Zafiro Software",
                  .author = "J. Montero, L. Gil",
                  .year = "1986",
                  .lang = "Español",
                  .type = "Videoaventura",
                  .price = "875 pts",
                  .loader = "ROM",
                  .origin = "Original",
                  .comments = "Edición original en casete. © 1986 Zafiro Software"};
        auto blocks = StandardLoad("CASTILLO", 25000, 30000);
        blocks.push_back(Custom(
            "POKEs", PokesData(Cp("Pokes de la revista"),
                               {{Cp("Vidas infinitas"), {{8, 31460, 0, 53}}},
                                {Cp("Energía infinita"), {{8, 28012, 0, 61}, {8, 28013, 0, 1}}},
                                {"Sin enemigos", {{8, 40112, 201, 62}}}})));
        Write(dir, "Castillo Sombrio.tzx", Assemble(1, 10, info, blocks));
    }
    {
        // A ROM-speed loader that hands over to its own turbo routine.
        Info info{.name = "El Pequeño Minero",
                  .publisher = "Lince Soft",
                  .author = "Íñigo Arrieta",
                  .year = "1987",
                  .lang = "Español",
                  .type = "Plataformas",
                  .price = "£1.99",
                  .loader = "Cargador turbo propio",
                  .origin = "Reedición",
                  .republisher = "Budget Bytes Ltd",
                  .comments = "Reedición económica para el Reino Unido. Incluye dos niveles "
                              "nuevos."};
        Filler f("minero");
        auto blocks = StandardLoad("\x7F"
                                   "Lince 87",
                                   24000, 1200, false);
        blocks.push_back(PureTone(2168, 3223));
        blocks.push_back(Pulses({667, 735}));
        blocks.push_back(PureData(RomData(f.Code(256)), 0));
        blocks.push_back(Turbo(RomData(LoadingScreen("minero")), 0));
        blocks.push_back(Turbo(RomData(f.Code(28000))));
        Write(dir, "El Pequeno Minero.tzx", Assemble(1, 13, info, blocks));
    }
    {
        Info info{.name = "Galactic Raiders",
                  .publisher = "Northern Star Software",
                  .author = "Paul Hadley",
                  .year = "1985",
                  .lang = "English",
                  .type = "Arcade: shoot-em-up",
                  .price = "£5.95",
                  .loader = "ROM + turbo",
                  .origin = "Original",
                  .comments = "48K and 128K versions on one tape."};
        Filler f("raiders");
        auto load = StandardLoad("Raiders", 26000, 2000, true);
        std::vector<Bytes> blocks{GroupStart("Side A")};
        blocks.insert(blocks.end(), load.begin(), load.end());
        // 128K: check the model, a jingle, the large code, then over the 48K code.
        blocks.push_back(Select({{1, "128K version"}, {8, "48K version"}}));
        blocks.push_back(StopIf48K());
        blocks.push_back(LoopStart(3));
        blocks.push_back(PureTone(620, 800));
        blocks.push_back(Pulses({300, 300, 600}));
        blocks.push_back(LoopEnd());
        blocks.push_back(Turbo(RomData(f.Code(16000))));
        blocks.push_back(Jump(2));
        blocks.push_back(Turbo(RomData(f.Code(12000))));
        blocks.push_back(GroupEnd());
        blocks.push_back(StopTape());
        Write(dir, "Galactic Raiders.tzx", Assemble(1, 20, info, blocks));
    }
    {
        // Named in capitals, as the older collections did.
        Info info{.name = "Abadía Negra",
                  .publisher = "Bytes del Sur",
                  .author = "M. A. Ruiz",
                  .year = "1988",
                  .lang = "Español",
                  .type = "Videoaventura",
                  .price = "1.200 pts",
                  .origin = "Original",
                  .comments = "Cara A: juego. Cara B: tablas de puntuaciones."};
        Filler f("abadia");
        auto blocks = StandardLoad("ABADIA", 25500, 34000);
        blocks.push_back(StopTape());
        blocks.push_back(Text(Cp("Cara B")));
        blocks.push_back(Standard(RomHeader(RomType::NumberArray, "puntos", 56, 0x81, 32768)));
        blocks.push_back(Standard(RomData(f.Code(56))));
        blocks.push_back(Pause(2000));
        blocks.push_back(Standard(RomHeader(RomType::CharArray, "nombres", 83, 0xC1, 32768)));
        blocks.push_back(Standard(RomData(f.Code(83))));
        Write(dir, "ABADIA NEGRA.TZX", Assemble(1, 13, info, blocks));
    }
    {
        // Some tools append the archive block after the data.
        Info info{.name = "Torre de Marfil",
                  .publisher = "Zafiro Software",
                  .year = "1987",
                  .lang = "Español",
                  .type = "Estrategia",
                  .origin = "Original"};
        auto blocks = StandardLoad("TORRE", 27000, 22000);
        Write(dir, "Torre de Marfil.tzx", TzxHeader(1, 13) + Join(blocks) + ArchiveOf(info));
    }
    {
        // Two archive blocks: the second corrects the year and adds a comment.
        Info first{.name = "Pirata Pata de Palo",
                   .publisher = "Bytes del Sur",
                   .year = "1986",
                   .lang = "Español",
                   .type = "Aventura de texto"};
        Bytes second = Archive({{3, "1987"}, {255, Cp("Año corregido según el inlay.")}});
        auto blocks = StandardLoad("PIRATA", 24500, 18000, false);
        Write(dir, "Pirata Pata de Palo.tzx",
              TzxHeader(1, 13) + ArchiveOf(first) + blocks[0] + blocks[1] + second + blocks[2] +
                  blocks[3]);
    }
    {
        // A dump that stopped before the end of the last block.
        Info info{.name = "Ninja Nocturno",
                  .publisher = "Lince Soft",
                  .year = "1989",
                  .lang = "Español",
                  .type = "Arcade: lucha",
                  .origin = "Original",
                  .comments = "Copia incompleta: falta el final del último bloque."};
        Bytes whole = Assemble(1, 10, info, StandardLoad("NINJA", 25000, 26000));
        Write(dir, "Ninja Nocturno.tzx", whole.substr(0, whole.size() - 9000));
    }
    {
        // Both sides merged into one file; the levels are loaded as subroutines.
        Info info{.name = "Operación Tormenta",
                  .publisher = "Topacio Soft",
                  .author = "Equipo Topacio",
                  .year = "1988",
                  .lang = "Español",
                  .type = "Arcade: disparos",
                  .price = "995 pts",
                  .loader = "ROM",
                  .origin = "Original",
                  .comments = "Cinta de dos caras unida en un solo archivo."};
        Filler f("tormenta");
        auto blocks = StandardLoad("TORMENTA", 26000, 15000);
        blocks.push_back(MergeMarker(1, 13));
        blocks.push_back(CallSequence({2, 5}));
        blocks.push_back(Jump(6));
        blocks.push_back(Standard(RomHeader(RomType::Code, "nivel 1", 9000, 40000, 32768)));
        blocks.push_back(Standard(RomData(f.Code(9000))));
        blocks.push_back(Return());
        blocks.push_back(Standard(RomData(f.Code(9500))));
        blocks.push_back(Return());
        blocks.push_back(MergeMarker(1, 10));
        blocks.push_back(StopTape());
        Write(dir, "Operación Tormenta.tzx", Assemble(1, 13, info, blocks));
    }
    {
        // TZX 1.20 with a block this program can't walk over, blocks behind it.
        Info info{.name = "Mansión Misteriosa",
                  .publisher = "Topacio Soft",
                  .year = "1990",
                  .lang = "Español",
                  .type = "Videoaventura",
                  .loader = "Datos generalizados",
                  .origin = "Original"};
        Filler f("mansion");
        auto blocks = StandardLoad("MANSION", 25000, 4000, false);
        blocks.push_back(Generalized(f.Code(3000)));
        blocks.push_back(Pause(1000));
        blocks.push_back(Turbo(RomData(f.Code(20000))));
        // The writer carries a block it can't decode; only the reader stops at it.
        Write(dir, "Mansion Misteriosa.tzx", Assemble(1, 20, info, blocks));
    }
    {
        // An early dump: format 0.5, no archive block, a text block instead.
        auto blocks = StandardLoad("RANAS", 28000, 9000, false);
        blocks.insert(blocks.begin(), Text("Ranas Saltarinas - (c) 1984 Erizo"));
        Write(dir, "Ranas Saltarinas.tzx", Assemble(0, 5, {}, blocks));

        // The same game as a TAP file, whose TZX already stands beside it.
        Filler f("RANAS");
        Bytes program = LoaderProgram(27999, 28000, false);
        Write(dir, "RANAS SALTARINAS.tap",
              TapEntry(RomHeader(RomType::Program, "RANAS",
                                 static_cast<std::uint16_t>(program.size()), 10,
                                 static_cast<std::uint16_t>(program.size()))) +
                  TapEntry(RomData(program)) +
                  TapEntry(RomHeader(RomType::Code, "codigo", 9000, 28000, 32768)) +
                  TapEntry(RomData(f.Code(9000))));
    }
}

void Utilidades(const fs::path& dir) {
    {
        Info info{.name = "Ensamblador ZX",
                  .publisher = "Microbyte Ediciones",
                  .author = "Carlos Peña",
                  .year = "1985",
                  .lang = "Español",
                  .type = "Utilidad: ensamblador",
                  .price = "2.500 pts",
                  .origin = "Original",
                  .comments = "Ensamblador y monitor de código máquina.\r\nIncluye manual."};
        Bytes manual = Cp("ENSAMBLADOR ZX - MANUAL\r\r"
                          "1. Carga: LOAD \"\" y pulse ENTER.\r"
                          "2. Editor: las líneas se numeran de 10 en 10.\r"
                          "3. Ensamblar: pulse A; los errores se señalan con ?.\r"
                          "4. Grabar el código: pulse S e indique dirección y longitud.\r");
        std::vector<Bytes> blocks{
            Text(Cp("Ensamblador ZX - versión 2")),
            MessageBlock(Cp("Pare el casete tras la carga"), 5),
            Hardware({{0, 0, 0}, {0, 3, 1}, {3, 0, 0}}),
            EmulationInfo(),
        };
        auto load = StandardLoad("ENSAMB", 50000, 11000, false);
        blocks.insert(blocks.end(), load.begin(), load.end());
        blocks.push_back(Custom("Instructions", manual));
        Write(dir, "Ensamblador ZX.tzx", Assemble(1, 10, info, blocks));
    }
    {
        Info info{.name = "Editor de Textos",
                  .publisher = "Microbyte Ediciones",
                  .year = "1986",
                  .lang = "Español",
                  .type = "Utilidad: procesador de textos",
                  .origin = "Original"};
        Bytes doc = Cp("Bienvenido al Editor de Textos.\rEste documento de ejemplo se carga "
                       "con la opción L del menú.\r");
        std::vector<Bytes> blocks = StandardLoad("EDITOR", 30000, 14000, false);
        blocks.push_back(Custom("ZX-Edit document", Byte(0) + doc));
        Write(dir, "Editor de Textos.tzx", Assemble(1, 13, info, blocks));
    }
    {
        Info info{.name = "Copión 48",
                  .publisher = "Erizo Soft",
                  .year = "1985",
                  .lang = "Español",
                  .type = "Utilidad: copiador",
                  .loader = "Grabación directa",
                  .origin = "Original",
                  .comments = "Sólo para copias de seguridad."};
        Bytes samples;
        for (int i = 0; i < 4000; ++i)
            samples += static_cast<char>((i / 3) % 2 ? 0xFF : 0x00);
        std::vector<Bytes> blocks{DirectRecording(samples),
                                  Snapshot(SnapshotType::SNA, Sna48("copion"))};
        Write(dir, "Copion 48.tzx", Assemble(1, 13, info, blocks));
    }
    {
        Info info{.name = "Pinta Píxel",
                  .publisher = "Erizo Soft",
                  .author = "Ana Belén Sáez",
                  .year = "1987",
                  .lang = "Español",
                  .type = "Utilidad: gráficos",
                  .price = "1.500 pts",
                  .origin = "Original",
                  .comments = "Con la pantalla de carga y la carátula dentro de la cinta."};
        std::vector<Bytes> blocks = StandardLoad("PINTA", 32000, 12000, false);
        blocks.push_back(
            Custom("Spectrum Screen", ScreenData(Cp("Pantalla de presentación"), "pinta")));
        blocks.push_back(Custom("Spectrum Screen", ScreenData("", "pinta2")));
        blocks.push_back(Custom("Picture", PictureData(Cp("Carátula delantera"), "pinta")));
        blocks.push_back(Custom("Picture", PictureData("", "pinta-b")));
        blocks.push_back(Custom("Palette Data", Bytes("\x00\x07\x02\x05", 4)));
        Write(dir, "Pinta Pixel.tzx", Assemble(1, 13, info, blocks));
    }
    {
        Filler f("curso");
        BasicProgram p;
        p.Line(10, Str(tok::CLS) + ":" + tok::PRINT + "\"CURSO DE BASIC - LECCION 1\"");
        p.Line(20, Str(tok::REM) + "Las variables");
        p.Line(30, Str(tok::POKE) + Num(23658) + "," + Num(8));
        p.Line(40, Str(tok::LOAD) + "\"\"" + tok::CODE);
        Write(dir, "Curso de BASIC.tap",
              TapEntry(RomHeader(RomType::Program, "CURSO 1",
                                 static_cast<std::uint16_t>(p.Get().size()), 10,
                                 static_cast<std::uint16_t>(p.Get().size()))) +
                  TapEntry(RomData(p.Get())) +
                  TapEntry(RomHeader(RomType::Code, "ejemplos", 1500, 40000, 32768)) +
                  TapEntry(RomData(f.Code(1500))));
    }
}

void Varios(const fs::path& dir) {
    {
        Info info{.name = "Demo Musical",
                  .publisher = "Grupo Eco",
                  .author = "Eco & Sonia",
                  .year = "1991",
                  .lang = "Sin texto",
                  .type = "Demo",
                  .price = "Gratuito",
                  .origin = "Dominio público"};
        Filler f("demo");
        std::vector<Bytes> blocks{GroupStart("Intro")};
        auto load = StandardLoad("DEMO", 32768, 8000);
        blocks.insert(blocks.end(), load.begin(), load.end());
        blocks.push_back(GroupEnd());
        blocks.push_back(MessageBlock("Press any key", 3));
        blocks.push_back(LoopStart(4));
        blocks.push_back(PureData(f.Code(600), 100));
        blocks.push_back(PureTone(1000, 200));
        blocks.push_back(LoopEnd());
        Write(dir, "Demo Musical.tzx", Assemble(1, 13, info, blocks));
    }
    {
        Info info{.name = "Revista Microbyte nº 12",
                  .publisher = "Microbyte Ediciones",
                  .year = "1986",
                  .lang = "Español",
                  .type = "Revista en cinta",
                  .price = "450 pts",
                  .origin = "Original",
                  .comments = "Programas de los lectores: Frontón, Serpiente y Agenda."};
        std::vector<Bytes> blocks;
        for (const char* name : {"FRONTON", "SERPIENTE", "AGENDA"}) {
            blocks.push_back(GroupStart(name));
            blocks.push_back(Text(Cp("Programa enviado por un lector")));
            auto load = StandardLoad(name, 30000, 3000 + std::string(name).size() * 400, false);
            blocks.insert(blocks.end(), load.begin(), load.end());
            blocks.push_back(GroupEnd());
            blocks.push_back(Pause(1500));
        }
        Write(dir, "Revista Microbyte 12.tzx", Assemble(1, 13, info, blocks));
    }
    {
        Info info{.name = "Cinta sin programas",
                  .comments = "Sólo la información de archivo: una cinta que no carga nada."};
        Write(dir, "Cinta Vacia.tzx", Assemble(1, 13, info, {}));
    }
    {
        Filler f("tetrix");
        Bytes program = LoaderProgram(29999, 30000, true);
        Write(dir, "Tetrix.tap",
              TapEntry(RomHeader(RomType::Program, "TETRIX",
                                 static_cast<std::uint16_t>(program.size()), 10,
                                 static_cast<std::uint16_t>(program.size()))) +
                  TapEntry(RomData(program)) +
                  TapEntry(RomHeader(RomType::Code, "pantalla", kScreenSize, 16384, 32768)) +
                  TapEntry(RomData(LoadingScreen("tetrix"))) +
                  TapEntry(RomHeader(RomType::Code, "TETRIX", 7000, 30000, 32768)) +
                  TapEntry(RomData(f.Code(7000))));
    }
    {
        // The last length claims more bytes than the file holds.
        Filler f("roto");
        Bytes tap = TapEntry(RomHeader(RomType::Code, "ROTO", 5000, 32768, 32768)) +
                    TapEntry(RomData(f.Code(5000)));
        Write(dir, "Roto.tap", tap.substr(0, tap.size() - 1200));
    }
}

// Answers the engine's notes ("otro" for the blocks it has no name for) in
// silence, so that the build log stays clean.
class QuietPrompt : public Prompt {
public:
    Button Show(const Message& m) override { return DefaultAnswer(m.buttons); }
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "uso: cintal-demo CARPETA_DE_SALIDA\n";
        return 2;
    }
    QuietPrompt quiet;
    PromptScope scope(quiet);

    const fs::path root = argv[1];
    const struct {
        const char* name;
        void (*fill)(const fs::path&);
    } folders[] = {{"Juegos", Juegos}, {"Utilidades", Utilidades}, {"Varios", Varios}};
    for (const auto& folder : folders) {
        fs::path dir = root / folder.name;
        std::error_code ec;
        // Start from nothing, so that a file dropped from the list doesn't linger.
        fs::remove_all(dir, ec);
        fs::create_directories(dir, ec);
        if (ec) {
            std::cerr << "cintal-demo: no se puede crear " << dir.string() << ": " << ec.message()
                      << "\n";
            return 1;
        }
        folder.fill(dir);
    }
    return failures == 0 ? 0 : 1;
}
