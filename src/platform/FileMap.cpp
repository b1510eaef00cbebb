#include "platform/FileMap.h"

#include "tape/SafeWrite.h"

#ifndef _WIN32
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace cintal {

namespace {

#ifndef _WIN32
// Below this a copy costs less than setting a mapping up.
constexpr off_t kLeastMapped = 1 << 20;

bool MapFile(const std::string& path, std::shared_ptr<const void>& keep, std::string_view& bytes) {
    const int fd = open(path.c_str(), O_RDONLY);
    if (fd < 0) return false;
    struct stat st {};
    void* at = MAP_FAILED;
    if (fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && st.st_size >= kLeastMapped)
        at = mmap(nullptr, static_cast<std::size_t>(st.st_size), PROT_READ, MAP_PRIVATE, fd, 0);
    close(fd);
    if (at == MAP_FAILED) return false;
    const auto size = static_cast<std::size_t>(st.st_size);
    madvise(at, size, MADV_SEQUENTIAL);
    keep = std::shared_ptr<const void>(
        at, [size](const void* p) { munmap(const_cast<void*>(p), size); });
    bytes = std::string_view(static_cast<const char*>(at), size);
    return true;
}
#endif

} // namespace

void UseFileMap() {
#ifndef _WIN32
    detail::SetFileMap(&MapFile);
#endif
}

} // namespace cintal
