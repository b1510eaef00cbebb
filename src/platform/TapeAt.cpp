#include "platform/TapeAt.h"

#include "platform/Archive.h"
#include "tape/TZXFunct.h"
#include "tape/TZXTape.h"

#include <memory>

namespace cintal::platform {

bool ReadTapeAt(const std::string& path, TZXTape& tape, std::string& why) {
    tape.FileName = path;
    if (!SplitInner(path)) {
        tape.ReadTape();
        return true;
    }
    std::string bytes;
    if (!ReadFileOrInner(path, bytes, why)) return false;
    tape.ReadImage(std::make_shared<const std::string>(std::move(bytes)));
    return true;
}

std::optional<Bytes> ScreenAt(const std::string& path) {
    const auto at = SplitInner(path);
    if (!at) return ReadScreen(path);
    std::string bytes, why;
    if (!ReadFileOrInner(path, bytes, why)) return std::nullopt;
    return ScreenOfFile(bytes, ExtensionOf(at->inner));
}

} // namespace cintal::platform
