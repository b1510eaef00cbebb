#pragma once

#include "tape/Block.h"

#include <string>
#include <string_view>

namespace cintal {

// Turns a TAP image into a TZX 1.13 image: each TAP block becomes a standard
// speed block with a pause of 1000 ms. False when the lengths don't add up to
// the size exactly, or there is no block.
bool TapImageToTzx(std::string_view tap, Bytes& tzx);

// Converts FILE.tap into FILE.tzx beside it, written beside and renamed into
// place. Reports refusals through the prompt. On success fills the new path.
bool ConvertTapToTzx(const std::string& tapPath, std::string* tzxPath = nullptr);

} // namespace cintal
