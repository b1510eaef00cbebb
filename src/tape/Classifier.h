#pragma once
// How the content reader sees blocks: the pieces it classifies, from a tape's
// blocks or from a TAP file's entries, and the walk that tells what each one
// holds. Internal to the engine.

#include "tape/Content.h"
#include "tape/Layout.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace cintal::detail {

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

Piece PieceOf(std::string_view block);
// A TAP entry: the ROM record behind its length word.
Piece TapPiece(std::string_view entry);

inline char LowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Walks the blocks in order; what a data block is depends on the header
// before it.
class Classifier {
public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    // The content of the block at index; header is set to the index of the
    // header it belongs to, or kNone.
    BlockContent Next(const Piece& p, std::size_t index, std::size_t& header);

private:
    struct Header {
        std::uint32_t type = 0;
        std::string_view name;
        std::uint32_t param1 = 0;
        std::uint32_t param2 = 0;
    };

    BlockContent Rom(const Piece& p, std::size_t index, std::size_t& header);

    bool pending = false;
    std::size_t pendingIndex = 0;
    Header h;
};

} // namespace cintal::detail
