#pragma once
// The block decoders: each finds where its block ends and makes its display
// text. Internal to the engine.

#include "tape/ArchiveInfo.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace cintal::detail {

enum class Decode {
    Ok,        // size and text are set
    Unknown,   // an id without a decoder
    CutFields, // the image ends inside the block's fixed fields
};

struct DecodeState {
    bool pendingHeader = false;
    std::int64_t ordinal = 0;
};

struct Decoded {
    Decode result = Decode::Ok;
    std::int64_t size = 0; // as the block declares it; may run past the image
    std::string descr;
};

// What a custom info block carries, told by its 16-character id. Tools pad
// the name differently ("Picture" followed by blanks, or by blanks and a NUL),
// so blanks and NULs at its end don't count.
enum class CustomId { Screen, Picture, Text, ZxEdit, Pokes, Other };
CustomId CustomIdOf(std::string_view id);

// Decodes the block whose id stands at image[start]. Archive texts go to
// archive when it is not null.
Decoded DecodeBlock(std::string_view image, std::size_t start, DecodeState& state,
                    ArchiveInfo* archive);

} // namespace cintal::detail
