#include "platform/FileSync.h"

#include "tape/SafeWrite.h"

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace cintal::platform {

bool SyncFile(std::FILE* file) {
    if (std::fflush(file) != 0) return false;
#ifdef _WIN32
    return _commit(_fileno(file)) == 0;
#else
    return fsync(fileno(file)) == 0;
#endif
}

} // namespace cintal::platform

namespace cintal {

void UseFileSync() {
    detail::SetFileFlush(&platform::SyncFile);
}

} // namespace cintal
