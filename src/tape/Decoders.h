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

// Decodes the block whose id stands at image[start]. Archive texts go to
// archive when it is not null.
Decoded DecodeBlock(std::string_view image, std::size_t start, DecodeState& state,
                    ArchiveInfo* archive);

} // namespace cintal::detail
