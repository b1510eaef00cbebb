#include "tape/Content.h"

#include "tape/Blocks.h"
#include "tape/Decoders.h"
#include "tape/SafeWrite.h"
#include "tape/TZXFunct.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <utility>

namespace cintal {

namespace {

// Fields read from a block or a file: a byte past the end reads 0, so that a
// caller that checked the size first and one that didn't both stay inside.
std::uint32_t U8(std::string_view s, std::size_t off) {
    return off < s.size() ? static_cast<std::uint8_t>(s[off]) : 0u;
}
std::uint32_t U16(std::string_view s, std::size_t off) {
    return U8(s, off) | U8(s, off + 1) << 8;
}
std::uint32_t U24(std::string_view s, std::size_t off) {
    return U16(s, off) | U8(s, off + 2) << 16;
}
std::uint32_t U32(std::string_view s, std::size_t off) {
    return U24(s, off) | U8(s, off + 3) << 24;
}

// The bytes from off, at most n, that s holds.
std::string_view Sub(std::string_view s, std::size_t off, std::size_t n) {
    if (off >= s.size()) return {};
    return s.substr(off, std::min(n, s.size() - off));
}

constexpr std::size_t kHeaderLength = 19; // flag, 17 bytes, checksum
constexpr std::uint32_t kScreenAddress = 16384;

// One block as the classifier sees it.
struct Piece {
    std::string_view bytes; // the block as it is held, id byte included
    int id = 0;
    // A ROM-style record: flag, data, checksum, as the ROM saves them.
    bool rom = false;
    std::size_t romOffset = 0; // where the flag stands
    std::size_t declared = 0;  // the record's length as the block gives it

    // The record's bytes that are there.
    std::size_t Held() const {
        return romOffset <= bytes.size() ? std::min(declared, bytes.size() - romOffset) : 0;
    }
};

Piece PieceOf(std::string_view block) {
    Piece p;
    p.bytes = block;
    p.id = static_cast<int>(U8(block, 0));
    switch (p.id) {
    case 0x10:
        p.rom = block.size() >= 5;
        p.romOffset = 5;
        p.declared = U16(block, 3);
        break;
    case 0x11:
        p.rom = block.size() >= 19;
        p.romOffset = 19;
        p.declared = U24(block, 16);
        break;
    case 0x14:
        p.rom = block.size() >= 11;
        p.romOffset = 11;
        p.declared = U24(block, 8);
        break;
    default:
        break;
    }
    return p;
}

// A TAP entry: the ROM record behind its length word.
Piece TapPiece(std::string_view entry) {
    Piece p;
    p.bytes = entry;
    p.id = 0x10;
    p.rom = entry.size() >= 2;
    p.romOffset = 2;
    p.declared = U16(entry, 0);
    return p;
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Loaders that keep their screen elsewhere before they show it still name it
// so: "SCREEN$", "scr", "Pantalla", "pant 1", "Picture".
bool NamedLikeScreen(std::string_view name) {
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(), Lower);
    for (const char* word : {"scr", "pant", "pict"})
        if (lower.find(word) != std::string::npos) return true;
    return false;
}

struct Header {
    std::uint32_t type = 0;
    std::string_view name;
    std::uint32_t param1 = 0;
    std::uint32_t param2 = 0;
};

BlockContent CustomContent(const Piece& p) {
    BlockContent c;
    if (p.bytes.size() < 21) return c;
    const detail::CustomId id = detail::CustomIdOf(p.bytes.substr(1, 16));
    const std::size_t body = 21;
    const std::size_t held = std::min<std::size_t>(U32(p.bytes, 17), p.bytes.size() - body);
    if (held == 0) return c;
    const std::string_view data = p.bytes.substr(body, held);
    c.kind = ContentKind::Custom;
    c.offset = body;
    c.length = held;
    c.extension = "bin";
    if (id == detail::CustomId::Screen) {
        // Description length, description, border, then the screen.
        const std::size_t at = 2 + U8(data, 0);
        if (held >= at + kScreenSize) {
            c.kind = ContentKind::Screen;
            c.offset = body + at;
            c.length = kScreenSize;
            c.extension = "scr";
        }
    } else if (id == detail::CustomId::Picture) {
        // Format, description length, description, then the picture.
        const std::size_t at = 2 + U8(data, 1);
        if (held > at) {
            c.kind = ContentKind::Picture;
            c.offset = body + at;
            c.length = held - at;
            c.extension = U8(data, 0) == 0 ? "gif" : "jpg";
        }
    } else if (id == detail::CustomId::Text) {
        c.kind = ContentKind::Text;
        c.extension = "txt";
    } else if (id == detail::CustomId::ZxEdit) {
        c.extension = "zed";
    } else if (id == detail::CustomId::Pokes) {
        c.extension = "pok";
    }
    return c;
}

BlockContent SnapshotContent(const Piece& p) {
    BlockContent c;
    if (p.bytes.size() < 5) return c;
    const std::size_t held = std::min<std::size_t>(U24(p.bytes, 2), p.bytes.size() - 5);
    if (held == 0) return c;
    c.kind = ContentKind::Snapshot;
    c.offset = 5;
    c.length = held;
    const std::uint32_t type = U8(p.bytes, 1);
    c.extension = type == 0 ? "z80" : type == 1 ? "sna" : "bin";
    return c;
}

// Walks the blocks in order; what a data block is depends on the header
// before it.
class Classifier {
public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    // The content of the block at index; header is set to the index of the
    // header it belongs to, or kNone.
    BlockContent Next(const Piece& p, std::size_t index, std::size_t& header) {
        header = kNone;
        if (p.rom) return Rom(p, index, header);
        if (p.id == 0x15) pending = false; // data of its own, not the header's
        if (p.id == 0x35) return CustomContent(p);
        if (p.id == 0x40) return SnapshotContent(p);
        return {};
    }

private:
    BlockContent Rom(const Piece& p, std::size_t index, std::size_t& header) {
        BlockContent c;
        const std::size_t held = p.Held();
        const bool whole = held == p.declared;
        const std::string_view record = Sub(p.bytes, p.romOffset, held);
        if (p.declared >= 2) {
            std::uint8_t sum = 0;
            for (char b : record)
                sum ^= static_cast<std::uint8_t>(b);
            c.checksum = whole && sum == 0 ? Checksum::Right : Checksum::Wrong;
        }
        if (whole && p.declared == kHeaderLength && U8(record, 0) == 0) {
            c.kind = ContentKind::Header;
            c.offset = p.romOffset + 1;
            c.length = kHeaderLength - 2;
            c.extension = "bin";
            pending = true;
            pendingIndex = index;
            h.type = U8(record, 1);
            h.name = record.substr(2, 10);
            h.param1 = U16(record, 14);
            h.param2 = U16(record, 16);
            return c;
        }
        if (p.declared == 0) return c;
        const bool paired = pending;
        pending = false;
        if (p.declared < 2) return c; // a flag alone carries nothing
        c.kind = ContentKind::Data;
        c.extension = "bin";
        c.offset = p.romOffset + 1;
        // A cut record has lost its checksum: all it holds after the flag is data.
        c.length = whole ? p.declared - 2 : (held > 0 ? held - 1 : 0);
        if (c.offset > p.bytes.size()) c.offset = p.bytes.size();
        if (!paired) return c;
        header = pendingIndex;
        if (h.type == 0) {
            c.kind = ContentKind::Program;
            c.extension = "bas";
            c.programLength = std::min<std::size_t>(h.param2, c.length);
            c.autostart = h.param1 < 32768 ? static_cast<int>(h.param1) : -1;
        } else if (whole && c.length == kScreenSize &&
                   ((h.type == 3 && h.param1 == kScreenAddress) || NamedLikeScreen(h.name))) {
            c.kind = ContentKind::Screen;
            c.extension = "scr";
        }
        return c;
    }

    bool pending = false;
    std::size_t pendingIndex = 0;
    Header h;
};

// --- BASIC

// The keywords from 0xA3: SPECTRUM and PLAY of the 128K, then the 48K's.
constexpr const char* kKeywords[] = {
    "SPECTRUM", "PLAY",    "RND",     "INKEY$", "PI",     "FN",       "POINT",     "SCREEN$",
    "ATTR",     "AT",      "TAB",     "VAL$",   "CODE",   "VAL",      "LEN",       "SIN",
    "COS",      "TAN",     "ASN",     "ACS",    "ATN",    "LN",       "EXP",       "INT",
    "SQR",      "SGN",     "ABS",     "PEEK",   "IN",     "USR",      "STR$",      "CHR$",
    "NOT",      "BIN",     "OR",      "AND",    "<=",     ">=",       "<>",        "LINE",
    "THEN",     "TO",      "STEP",    "DEF FN", "CAT",    "FORMAT",   "MOVE",      "ERASE",
    "OPEN #",   "CLOSE #", "MERGE",   "VERIFY", "BEEP",   "CIRCLE",   "INK",       "PAPER",
    "FLASH",    "BRIGHT",  "INVERSE", "OVER",   "OUT",    "LPRINT",   "LLIST",     "STOP",
    "READ",     "DATA",    "RESTORE", "NEW",    "BORDER", "CONTINUE", "DIM",       "REM",
    "FOR",      "GO TO",   "GO SUB",  "INPUT",  "LOAD",   "LIST",     "LET",       "PAUSE",
    "NEXT",     "POKE",    "PRINT",   "PLOT",   "RUN",    "SAVE",     "RANDOMIZE", "IF",
    "CLS",      "DRAW",    "CLEAR",   "RETURN", "COPY"};
static_assert(std::size(kKeywords) == 0x100 - 0xA3);

constexpr std::uint8_t kFirstKeyword = 0xA3;
constexpr std::uint8_t kRem = 0xEA;
constexpr std::uint8_t kNumber = 0x0E;
constexpr std::uint8_t kLineEnd = 0x0D;

bool IsLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

void Code(std::string& out, std::uint32_t c) {
    out += "\\{";
    out += std::to_string(c);
    out += '}';
}

// How many bytes follow a control code as its parameters: INK to OVER take
// one, AT and TAB two.
std::size_t ControlParameters(std::uint8_t c) {
    if (c >= 0x10 && c <= 0x15) return 1;
    if (c == 0x16 || c == 0x17) return 2;
    return 0;
}

// A character that is not a keyword, as zmakebas writes it. Returns how many
// bytes of line from i it took.
std::size_t Character(std::string_view line, std::size_t i, std::string& out) {
    const auto c = static_cast<std::uint8_t>(line[i]);
    if (c < 0x20) {
        Code(out, c);
        std::size_t n = std::min(ControlParameters(c), line.size() - i - 1);
        for (std::size_t k = 1; k <= n; ++k)
            Code(out, static_cast<std::uint8_t>(line[i + k]));
        return 1 + n;
    }
    if (c == '\\') {
        out += "\\\\";
    } else if (c == 0x60) {
        out += '`'; // the pound sign
    } else if (c < 0x7F) {
        out += static_cast<char>(c);
    } else if (c == 0x7F) {
        out += "\\*"; // the copyright sign
    } else if (c < 0x90) {
        // Block graphics: bit 0 top right, 1 top left, 2 bottom right, 3
        // bottom left; each column as one of " ", "'", ".", ":".
        static constexpr char kColumn[] = {' ', '\'', '.', ':'};
        out += '\\';
        out += kColumn[((c >> 1) & 1) | ((c >> 2) & 2)];
        out += kColumn[(c & 1) | ((c >> 1) & 2)];
    } else if (c < 0xA5) {
        out += '\\';
        out += static_cast<char>('a' + (c - 0x90)); // user-defined graphics A to U
    } else {
        Code(out, c);
    }
    return 1;
}

// A keyword spaced as the ROM lists it: a space before the commands and
// operators that start with a letter unless one is already there, and one
// after those that end in a letter or "$", but RND, INKEY$ and PI.
void Keyword(std::uint8_t c, std::string& out) {
    const std::string_view word = kKeywords[c - kFirstKeyword];
    const bool command = c >= 0xC5 || c < 0xA5;
    if (command && IsLetter(word.front()) && !out.empty() && out.back() != ' ') out += ' ';
    out += word;
    const bool function = c >= 0xA5 && c <= 0xA7;
    if (!function && (IsLetter(word.back()) || word.back() == '$')) out += ' ';
}

void ListLine(std::string_view line, std::string& out) {
    bool quoted = false, rem = false;
    for (std::size_t i = 0; i < line.size();) {
        const auto c = static_cast<std::uint8_t>(line[i]);
        if (quoted || rem) {
            if (c == '"' && quoted) quoted = false;
            i += Character(line, i, out);
            continue;
        }
        if (c == kNumber) {
            i += 6; // the number's hidden form; its digits stand before it
            continue;
        }
        if (c >= kFirstKeyword) {
            Keyword(c, out);
            rem = c == kRem;
            ++i;
            continue;
        }
        if (c == '"') quoted = true;
        i += Character(line, i, out);
    }
}

// --- Snapshots

// The Z80 format's compression: ED ED n b stands for n bytes b. Stops once
// want bytes are out, at the end of the input, or at a run of 0 (the end
// marker of version 1).
std::optional<Bytes> Unpack(std::string_view in, std::size_t want) {
    Bytes out;
    out.reserve(want);
    std::size_t i = 0;
    while (i < in.size() && out.size() < want) {
        if (i + 3 < in.size() && U8(in, i) == 0xED && U8(in, i + 1) == 0xED) {
            const std::size_t n = U8(in, i + 2);
            if (n == 0) break;
            out.append(std::min(n, want - out.size()), in[i + 3]);
            i += 4;
        } else {
            out += in[i++];
        }
    }
    if (out.size() < want) return std::nullopt;
    return out;
}

std::optional<Bytes> Z80Screen(std::string_view f) {
    constexpr std::size_t kV1Header = 30;
    constexpr std::size_t kPage = 16384;
    if (f.size() < kV1Header) return std::nullopt;
    if (U16(f, 6) != 0) {
        // Version 1: 48K of RAM from 16384 after the header.
        std::uint32_t flags = U8(f, 12);
        if (flags == 0xFF) flags = 1;
        const std::string_view ram = f.substr(kV1Header);
        if (flags & 0x20) return Unpack(ram, kScreenSize);
        if (ram.size() < kScreenSize) return std::nullopt;
        return Bytes(ram.substr(0, kScreenSize));
    }
    // Versions 2 and 3: pages behind the longer header. Page 8 is 16384 on
    // the 48K and bank 5, the screen's, on the 128K.
    std::size_t pos = 32 + static_cast<std::size_t>(U16(f, 30));
    while (pos < f.size() && f.size() - pos >= 3) {
        const std::uint32_t length = U16(f, pos);
        const std::uint32_t page = U8(f, pos + 2);
        pos += 3;
        const bool packed = length != 0xFFFF;
        const std::size_t stored = packed ? length : kPage;
        const std::string_view data = Sub(f, pos, stored);
        if (page == 8) {
            if (packed) return Unpack(data, kScreenSize);
            if (data.size() < kScreenSize) return std::nullopt;
            return Bytes(data.substr(0, kScreenSize));
        }
        if (stored > f.size() - std::min(pos, f.size())) break;
        pos += stored;
    }
    return std::nullopt;
}

std::optional<Bytes> SnaScreen(std::string_view f) {
    constexpr std::size_t kHeader = 27;
    if (f.size() < kHeader + kScreenSize) return std::nullopt;
    return Bytes(f.substr(kHeader, kScreenSize));
}

template <typename NextPiece> std::optional<Bytes> FirstScreenOf(NextPiece next) {
    Classifier classifier;
    std::size_t index = 0, header = 0;
    while (std::optional<Piece> p = next()) {
        const BlockContent c = classifier.Next(*p, index++, header);
        if (c.kind == ContentKind::Screen) return Bytes(Sub(p->bytes, c.offset, c.length));
    }
    return std::nullopt;
}

std::optional<Bytes> TzxScreen(std::string_view image) {
    constexpr std::size_t kFirstBlock = 10;
    if (image.size() <= kFirstBlock) return std::nullopt;
    std::size_t pos = kFirstBlock;
    detail::DecodeState state;
    return FirstScreenOf([&]() -> std::optional<Piece> {
        if (pos >= image.size()) return std::nullopt;
        ++state.ordinal;
        const detail::Decoded d = detail::DecodeBlock(image, pos, state, nullptr);
        if (d.result != detail::Decode::Ok || d.size <= 0) return std::nullopt;
        const std::size_t rest = image.size() - pos;
        const std::size_t size =
            static_cast<std::uint64_t>(d.size) < rest ? static_cast<std::size_t>(d.size) : rest;
        const Piece p = PieceOf(image.substr(pos, size));
        pos += size;
        return p;
    });
}

std::optional<Bytes> TapScreen(std::string_view image) {
    std::size_t pos = 0;
    return FirstScreenOf([&]() -> std::optional<Piece> {
        if (pos >= image.size() || image.size() - pos < 2) return std::nullopt;
        const std::size_t size = std::min<std::size_t>(2 + U16(image, pos), image.size() - pos);
        const Piece p = TapPiece(image.substr(pos, size));
        pos += size;
        return p;
    });
}

std::string LowerExtension(std::string_view extension) {
    if (!extension.empty() && extension.front() == '.') extension.remove_prefix(1);
    std::string out(extension);
    std::transform(out.begin(), out.end(), out.begin(), Lower);
    return out;
}

bool ReadHead(const std::string& path, std::size_t limit, Bytes& out) {
    out.clear();
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (!f) return false;
    // The size only spares a large buffer for a small file: the loop reads
    // what the file really holds.
    std::error_code ec;
    const std::uintmax_t size = std::filesystem::file_size(path, ec);
    if (!ec && size < limit) limit = static_cast<std::size_t>(size) + 1;
    out.resize(limit);
    std::size_t got = 0;
    while (got < limit) {
        const std::size_t n = std::fread(out.data() + got, 1, limit - got, f);
        if (n == 0) break;
        got += n;
    }
    const bool ok = !std::ferror(f);
    std::fclose(f);
    out.resize(ok ? got : 0);
    return ok;
}

// The Spectrum's colours, green-red-blue bits of the ULA, at normal and at
// BRIGHT intensity; black has no bright version.
std::uint32_t Colour(std::uint32_t index, bool bright) {
    const std::uint32_t level = bright ? 0xFF : 0xD7;
    return 0xFF000000u | (index & 2 ? level << 16 : 0) | (index & 4 ? level << 8 : 0) |
           (index & 1 ? level : 0);
}

} // namespace

std::vector<BlockContent> ContentOf(const Blocks& blocks) {
    std::vector<BlockContent> out;
    out.reserve(static_cast<std::size_t>(blocks.Count()));
    Classifier classifier;
    std::size_t header = 0;
    for (const BlockRef& b : blocks) {
        const std::size_t index = out.size();
        out.push_back(classifier.Next(PieceOf(b->BlockData), index, header));
        if (header != Classifier::kNone) {
            out[header].pair = static_cast<std::int64_t>(index) + 1;
            out[index].pair = static_cast<std::int64_t>(header) + 1;
        }
    }
    return out;
}

std::string_view ContentBytes(const Block& block, const BlockContent& content) {
    return Sub(block.BlockData, content.offset, content.length);
}

std::string BasicListing(std::string_view program) {
    std::string out;
    out.reserve(program.size() * 5 / 4);
    std::size_t pos = 0;
    while (program.size() - pos >= 4) {
        const std::uint32_t number = U8(program, pos) << 8 | U8(program, pos + 1);
        if (number >= 0x4000) break; // where the Spectrum ends the program too
        const std::size_t length = U16(program, pos + 2);
        pos += 4;
        std::string_view line = Sub(program, pos, length);
        pos += line.size();
        if (!line.empty() && static_cast<std::uint8_t>(line.back()) == kLineEnd)
            line.remove_suffix(1);
        out += std::to_string(number);
        out += ' ';
        ListLine(line, out);
        out += '\n';
    }
    return out;
}

std::string ListingOf(const Block& block, const BlockContent& content) {
    if (content.kind != ContentKind::Program) return {};
    return BasicListing(ContentBytes(block, content).substr(0, content.programLength));
}

std::optional<ExtractedFile> Extract(const Block& block, const BlockContent& content) {
    if (content.kind == ContentKind::None) return std::nullopt;
    if (content.kind == ContentKind::Program)
        return ExtractedFile{ListingOf(block, content), content.extension};
    return ExtractedFile{Bytes(ContentBytes(block, content)), content.extension};
}

std::optional<Bytes> FirstScreen(const Blocks& blocks) {
    auto it = blocks.begin();
    return FirstScreenOf([&]() -> std::optional<Piece> {
        if (it == blocks.end()) return std::nullopt;
        return PieceOf((*it++)->BlockData);
    });
}

std::optional<Bytes> ScreenOfFile(std::string_view bytes, std::string_view extension) {
    if (bytes.substr(0, 7) == "ZXTape!") return TzxScreen(bytes);
    const std::string ext = LowerExtension(extension);
    if (ext == "tap") return TapScreen(bytes);
    if (ext == "z80") return Z80Screen(bytes);
    if (ext == "sna") return SnaScreen(bytes);
    if (ext == "scr" && bytes.size() == kScreenSize) return Bytes(bytes);
    return std::nullopt;
}

std::optional<Bytes> ReadScreen(const std::string& path, std::size_t limit) {
    Bytes head;
    if (!ReadHead(path, limit, head)) return std::nullopt;
    return ScreenOfFile(head, ExtensionOf(path));
}

std::vector<std::uint32_t> ScreenPixels(std::string_view screen, bool secondFlashPhase) {
    if (screen.size() != kScreenSize) return {};
    std::vector<std::uint32_t> out(static_cast<std::size_t>(kScreenWidth) * kScreenHeight);
    auto* pixel = out.data();
    for (std::size_t y = 0; y < static_cast<std::size_t>(kScreenHeight); ++y) {
        // The ULA interleaves the rows: the thirds, then the pixel row within
        // the character cell, then the character row within the third.
        const std::size_t row = ((y & 0xC0) << 5) | ((y & 0x07) << 8) | ((y & 0x38) << 2);
        const std::size_t attrs = 6144 + (y / 8) * 32;
        for (std::size_t cx = 0; cx < 32; ++cx) {
            const std::uint32_t attr = U8(screen, attrs + cx);
            const bool bright = attr & 0x40;
            std::uint32_t ink = Colour(attr & 7, bright);
            std::uint32_t paper = Colour((attr >> 3) & 7, bright);
            if ((attr & 0x80) && secondFlashPhase) std::swap(ink, paper);
            const std::uint32_t bits = U8(screen, row + cx);
            for (int b = 0; b < 8; ++b)
                *pixel++ = bits & (0x80u >> b) ? ink : paper;
        }
    }
    return out;
}

std::string ContentKindName(ContentKind kind) {
    switch (kind) {
    case ContentKind::None:
        return {};
    case ContentKind::Header:
        return "Cabecera";
    case ContentKind::Program:
        return "Programa BASIC";
    case ContentKind::Screen:
        return "Pantalla";
    case ContentKind::Data:
        return "Datos";
    case ContentKind::Picture:
        return "Imagen";
    case ContentKind::Text:
        return "Instrucciones";
    case ContentKind::Custom:
        return "Información";
    case ContentKind::Snapshot:
        return "Instantánea";
    }
    return {};
}

std::string ChecksumText(Checksum checksum) {
    switch (checksum) {
    case Checksum::None:
        return {};
    case Checksum::Right:
        return "correcta";
    case Checksum::Wrong:
        return "errónea";
    }
    return {};
}

std::string ProposedName(const std::string& tapePath, std::int64_t number,
                         const std::string& extension) {
    return JoinPath(FolderOf(tapePath),
                    FileNameOf(tapePath) + "-" + std::to_string(number) + "." + extension);
}

std::string ExistingFile(const std::string& path) {
    const std::string dir = FolderOf(path);
    std::string_view name = std::string_view(path).substr(dir.size());
    while (!name.empty() && (name.front() == '/' || name.front() == kPathSep))
        name.remove_prefix(1);
    if (name.empty()) return {};
    for (const std::string& entry : detail::CurrentFileOps().List(dir))
        if (detail::SameNameIgnoringCase(entry, name)) return JoinPath(dir, entry);
    return {};
}

bool WriteContentFile(const std::string& path, std::string_view bytes, bool replace,
                      std::string& reason) {
    auto refuse = [&](const std::string& existing) {
        reason = "ya existe " + existing;
        return false;
    };
    if (!replace) {
        const std::string existing = ExistingFile(path);
        if (!existing.empty()) return refuse(existing);
    }
    std::string temp;
    if (!detail::WriteTempFile(FolderOf(path), bytes, path, temp, reason)) return false;
    // Looked at again right before the rename, which would replace a file
    // made in the meantime.
    const std::string existing = replace ? std::string() : ExistingFile(path);
    if (!existing.empty() || !detail::RenameFile(temp, path, reason)) {
        std::string ignored;
        detail::RemoveFile(temp, ignored);
        return existing.empty() ? false : refuse(existing);
    }
    return true;
}

} // namespace cintal
