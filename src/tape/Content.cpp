#include "tape/Content.h"

#include "tape/Blocks.h"
#include "tape/Classifier.h"
#include "tape/Decoders.h"
#include "tape/PulseBlocks.h"

#include <algorithm>
#include <cstring>

namespace cintal {

namespace detail {

namespace {

constexpr std::size_t kHeaderLength = 19; // flag, 17 bytes, checksum
constexpr std::uint32_t kScreenAddress = 16384;

// Loaders that keep their screen elsewhere before they show it still name it
// so: "SCREEN$", "scr", "Pantalla", "pant 1", "Picture".
bool NamedLikeScreen(std::string_view name) {
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(), LowerAscii);
    for (const char* word : {"scr", "pant", "pict"})
        if (lower.find(word) != std::string::npos) return true;
    return false;
}

BlockContent CustomContent(const Piece& p) {
    BlockContent c;
    const BlockLayout& layout = LayoutOf(kCustomInfo);
    if (p.bytes.size() < layout.fixed) return c;
    const CustomId id = CustomIdOf(p.bytes.substr(1, 16));
    const std::size_t body = layout.fixed;
    const std::size_t held = std::min<std::size_t>(layout.Length(p.bytes), p.bytes.size() - body);
    if (held == 0) return c;
    const std::string_view data = p.bytes.substr(body, held);
    c.kind = ContentKind::Custom;
    c.offset = body;
    c.length = held;
    c.extension = "bin";
    if (id == CustomId::Screen) {
        // Description length, description, border, then the screen.
        const std::size_t at = 2 + U8(data, 0);
        if (held >= at + kScreenSize) {
            c.kind = ContentKind::Screen;
            c.offset = body + at;
            c.length = kScreenSize;
            c.extension = "scr";
        }
    } else if (id == CustomId::Picture) {
        // Format, description length, description, then the picture.
        const std::size_t at = 2 + U8(data, 1);
        if (held > at) {
            c.kind = ContentKind::Picture;
            c.offset = body + at;
            c.length = held - at;
            c.extension = U8(data, 0) == 0 ? "gif" : "jpg";
        }
    } else if (id == CustomId::Text) {
        c.kind = ContentKind::Text;
        c.extension = "txt";
    } else if (id == CustomId::ZxEdit) {
        c.extension = "zed";
    } else if (id == CustomId::Pokes) {
        c.extension = "pok";
    }
    return c;
}

BlockContent SnapshotContent(const Piece& p) {
    BlockContent c;
    const BlockLayout& layout = LayoutOf(kSnapshot);
    if (p.bytes.size() < layout.fixed) return c;
    const std::size_t held =
        std::min<std::size_t>(layout.Length(p.bytes), p.bytes.size() - layout.fixed);
    if (held == 0) return c;
    c.kind = ContentKind::Snapshot;
    c.offset = layout.fixed;
    c.length = held;
    const std::uint32_t type = U8(p.bytes, 1);
    c.extension = type == 0 ? "z80" : type == 1 ? "sna" : "bin";
    return c;
}

} // namespace

Piece PieceOf(std::string_view block) {
    Piece p;
    p.bytes = block;
    p.id = static_cast<int>(U8(block, 0));
    const BlockLayout& layout = LayoutOf(static_cast<std::uint32_t>(p.id));
    if (layout.rom) {
        p.rom = block.size() >= layout.fixed;
        p.romOffset = layout.fixed;
        p.declared = static_cast<std::size_t>(layout.Length(block));
    } else if (p.id == kGeneralized) {
        // Played with the ROM loader's symbols, the data stream is a record
        // as the ROM saves it, one bit a symbol.
        const GeneralizedBlock g = ParseGeneralized(block);
        if (g.StandardSymbols()) {
            p.rom = true;
            p.romOffset = g.dataOffset;
            p.declared = g.data.count / 8;
        }
    }
    return p;
}

Piece TapPiece(std::string_view entry) {
    Piece p;
    p.bytes = entry;
    p.id = 0x10;
    p.rom = entry.size() >= 2;
    p.romOffset = 2;
    p.declared = U16(entry, 0);
    return p;
}

BlockContent Classifier::Next(const Piece& p, std::size_t index, std::size_t& header) {
    header = kNone;
    if (p.rom) return Rom(p, index, header);
    // Recorded data of its own: whatever followed a header was not its data.
    if (p.id == 0x15 || p.id == kCswRecording || p.id == kGeneralized) pending = false;
    if (p.id == kCustomInfo) return CustomContent(p);
    if (p.id == kSnapshot) return SnapshotContent(p);
    return {};
}

namespace {

// The XOR of all the bytes, eight at a time: every data block of a listing
// goes through it.
std::uint8_t XorOf(std::string_view bytes) {
    std::uint64_t wide = 0;
    std::size_t i = 0;
    for (; i + 8 <= bytes.size(); i += 8) {
        std::uint64_t v;
        std::memcpy(&v, bytes.data() + i, 8);
        wide ^= v;
    }
    std::uint8_t sum = 0;
    for (int shift = 0; shift < 64; shift += 8)
        sum ^= static_cast<std::uint8_t>(wide >> shift);
    for (; i < bytes.size(); ++i)
        sum ^= static_cast<std::uint8_t>(bytes[i]);
    return sum;
}

} // namespace

BlockContent Classifier::Rom(const Piece& p, std::size_t index, std::size_t& header) {
    BlockContent c;
    const std::size_t held = p.Held();
    const bool whole = held == p.declared;
    const std::string_view record = Sub(p.bytes, p.romOffset, held);
    if (p.declared >= 2) {
        c.checksum = whole && XorOf(record) == 0 ? Checksum::Right : Checksum::Wrong;
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

} // namespace detail

std::vector<BlockContent> ContentOf(const Blocks& blocks) {
    std::vector<BlockContent> out;
    out.reserve(static_cast<std::size_t>(blocks.Count()));
    detail::Classifier classifier;
    std::size_t header = 0;
    for (const BlockRef& b : blocks) {
        const std::size_t index = out.size();
        out.push_back(classifier.Next(detail::PieceOf(b->Data()), index, header));
        if (header != detail::Classifier::kNone) {
            out[header].pair = static_cast<std::int64_t>(index) + 1;
            out[index].pair = static_cast<std::int64_t>(header) + 1;
        }
    }
    return out;
}

std::vector<Checksum> ChecksumsOf(const Blocks& blocks) {
    std::vector<Checksum> out;
    out.reserve(static_cast<std::size_t>(blocks.Count()));
    detail::Classifier classifier;
    std::size_t header = 0;
    for (const BlockRef& b : blocks)
        out.push_back(classifier.Next(detail::PieceOf(b->Data()), out.size(), header).checksum);
    return out;
}

std::string_view ContentBytes(const Block& block, const BlockContent& content) {
    return detail::Sub(block.Data(), content.offset, content.length);
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

} // namespace cintal
