#pragma once

#include "tape/ArchiveInfo.h"

#include <cstdint>
#include <string>

namespace cintal {

// A record of a file. Model only: nothing in Cintal fills one.
struct FileInfo {
    std::string fName;
    std::int16_t fYear = 0;
    std::string fExtension;
    Variant fFileName;
    std::int16_t fFileSize = 0;
    std::string fOrigin;
    std::string iLang;
    std::int16_t fOriginalString = 0;
};

} // namespace cintal
