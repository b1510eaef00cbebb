#pragma once

#include <functional>
#include <string_view>

namespace cintal {

// Hands out a file's bytes a piece at a time, for files too big to hold in
// memory whole: an empty piece ends them; false gives up the write.
using ByteSource = std::function<bool(std::string_view& piece)>;

} // namespace cintal
