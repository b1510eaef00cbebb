#pragma once
// The bytes of the demo's files, format by format: the BASIC and the blocks
// of its tapes, whole tapes through the engine's writer, and the snapshots,
// disk images and recording that lie beside them.

#include "TapeBytes.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace cintal::demo {

// --- Sinclair BASIC, tokenised as the ROM stores it

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
Bytes Num(std::uint16_t n);

class BasicProgram {
public:
    BasicProgram& Line(std::uint16_t number, const Bytes& text) {
        bytes += raw::BasicLine(number, text);
        return *this;
    }
    const Bytes& Get() const { return bytes; }

private:
    Bytes bytes;
};

Bytes Str(const char* s);

// The loader of nearly every commercial tape: set colours, load a screen,
// load the code, jump into it.
Bytes LoaderProgram(std::uint16_t clear, std::uint16_t start, bool screen);

// --- What the tapes carry

// A loading screen: bands of colour behind a range of hills, different for
// every title. Integer arithmetic only, so that the bytes never depend on a
// floating-point library.
Bytes LoadingScreen(std::string_view title);

// BASIC loader, optional screen, code: six standard speed blocks.
std::vector<Bytes> StandardLoad(std::string_view name, std::uint16_t start, std::size_t codeLen,
                                bool screen = true);

Bytes PokesData(
    std::string_view description,
    const std::vector<std::pair<std::string, std::vector<std::array<int, 4>>>>& trainers);

Bytes ScreenData(std::string_view description, std::string_view key);

Bytes PictureData(std::string_view description, std::string_view key);

// A ROM record recorded as a CSW block at 44100 Hz, RLE or Z-RLE.
Bytes CswOf(std::string_view romBlock, bool zrle);

// --- Snapshots, disks and sound

// 48K of RAM from 16384: the screen, then some code and a return address
// on the stack.
Bytes Ram48(const Bytes& screen, std::string_view key);

// A 48K .SNA: the 27-byte register header, then RAM from 16384.
Bytes SnaOf(const Bytes& ram);

Bytes Sna48(std::string_view key);

// Version 1: one packed 48K block and its end mark.
Bytes Z80v1(const Bytes& ram);

// Version 3: the 54-byte extension, then the memory pages one by one.
Bytes Z80v3(const std::vector<std::pair<int, Bytes>>& pages, bool is128);

// 48K in the pages of version 3: 8 holds 0x4000, 4 holds 0x8000, 5 holds 0xC000.
std::vector<std::pair<int, Bytes>> Pages48(const Bytes& ram);

// 128K: banks 0 to 7 are pages 3 to 10; bank 5 is the screen, bank 2 the code.
std::vector<std::pair<int, Bytes>> Pages128(const Bytes& screen, std::string_view key);

// A Super Level Loader file: a version 3 snapshot, then "SLT" behind an empty
// page header, a table of what follows, and the levels packed as pages are.
Bytes Slt(const Bytes& ram, const Bytes& screen, std::string_view key);

// The .SP format: "SP", length and start of the memory image, the registers,
// the border and a status word, then the 48K.
Bytes Sp(const Bytes& ram);

// A Creative Voice file of a tape signal: each block as the ROM saves it,
// in square waves at 22 kHz.
Bytes Voc(const std::vector<Bytes>& romBlocks);

// The 128-byte header +3DOS puts in front of every file on disk.
Bytes Plus3Header(raw::RomType type, std::uint16_t length, std::uint16_t param1,
                  std::uint16_t param2);

// A +3 disk in the "MV - CPCEMU" format: 40 tracks of nine 512-byte sectors.
// Track 0 describes the disk in its first bytes; the directory and the files follow
// in 1K blocks from track 1.
Bytes PlusThreeDisk(const std::vector<std::pair<std::string, Bytes>>& files);

// A TR-DOS image cut after its last file: the catalogue of track 0, the
// disk's description in its ninth sector, the files from track 1.
Bytes TrDosDisk(const std::string& label,
                const std::vector<std::tuple<std::string, char, std::uint16_t, Bytes>>& files);

// --- Whole tapes

// Archive texts in UTF-8 here; the tape gets them in Windows-1252.
struct Info {
    std::string name{}, publisher{}, author{}, year{}, lang{}, type{}, price{}, loader{}, origin{},
        republisher{}, comments{};
};

// Through the engine: the archive block first, then the blocks in order.
Bytes Assemble(std::int16_t version, std::int16_t revision, const Info& info,
               const std::vector<Bytes>& blocks);

// The archive block exactly as the engine builds it, to place by hand.
Bytes ArchiveOf(const Info& info);

Bytes Join(const std::vector<Bytes>& parts);

Bytes Cp(const char* utf8);

} // namespace cintal::demo
