#include "cli/ArchiveTape.h"

#include "platform/Archive.h"
#include "tape/TZXTape.h"

#include <memory>

namespace cintal::cli {

bool BytesAt(const std::string& path, std::string& bytes, std::string& why) {
    return platform::ReadFileOrInner(path, bytes, why);
}

bool ReadTapeAt(const std::string& path, TZXTape& tape, std::string& why) {
    tape.FileName = path;
    if (!platform::SplitInner(path)) {
        tape.ReadTape();
        return true;
    }
    std::string bytes;
    if (!BytesAt(path, bytes, why)) return false;
    tape.ReadImage(std::make_shared<const std::string>(std::move(bytes)));
    return true;
}

std::string ArchiveOf(const std::string& path) {
    const auto at = platform::SplitInner(path);
    return at ? at->archive : std::string();
}

} // namespace cintal::cli
