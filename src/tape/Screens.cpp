#include "tape/Content.h"

#include "tape/Blocks.h"
#include "tape/Classifier.h"
#include "tape/Decoders.h"
#include "tape/TZXFunct.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <utility>

namespace cintal {

namespace {

using detail::Classifier;
using detail::Piece;
using detail::Sub;
using detail::U16;
using detail::U8;

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
        const Piece p = detail::PieceOf(image.substr(pos, size));
        pos += size;
        return p;
    });
}

std::optional<Bytes> TapScreen(std::string_view image) {
    std::size_t pos = 0;
    return FirstScreenOf([&]() -> std::optional<Piece> {
        if (pos >= image.size() || image.size() - pos < 2) return std::nullopt;
        const std::size_t size = std::min<std::size_t>(2 + U16(image, pos), image.size() - pos);
        const Piece p = detail::TapPiece(image.substr(pos, size));
        pos += size;
        return p;
    });
}

std::string LowerExtension(std::string_view extension) {
    if (!extension.empty() && extension.front() == '.') extension.remove_prefix(1);
    std::string out(extension);
    std::transform(out.begin(), out.end(), out.begin(), detail::LowerAscii);
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

std::optional<Bytes> FirstScreen(const Blocks& blocks) {
    auto it = blocks.begin();
    return FirstScreenOf([&]() -> std::optional<Piece> {
        if (it == blocks.end()) return std::nullopt;
        return detail::PieceOf((*it++)->Data());
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

} // namespace cintal
