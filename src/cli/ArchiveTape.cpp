#include "cli/ArchiveTape.h"

#include "platform/Archive.h"
#include "platform/TapeAt.h"

namespace cintal::cli {

bool BytesAt(const std::string& path, std::string& bytes, std::string& why) {
    return platform::ReadFileOrInner(path, bytes, why);
}

bool ReadTapeAt(const std::string& path, TZXTape& tape, std::string& why) {
    return platform::ReadTapeAt(path, tape, why);
}

std::string ArchiveOf(const std::string& path) {
    const auto at = platform::SplitInner(path);
    return at ? at->archive : std::string();
}

} // namespace cintal::cli
