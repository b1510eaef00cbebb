#include "platform/Memory.h"

#include <cstdint>
#include <cstdlib>

#if defined(__GLIBC__)
#include <malloc.h>
#endif
#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace cintal {

namespace {
constexpr std::uintptr_t kHuge = std::uintptr_t(2) << 20;
}

void KeepFreedMemory() {
#if defined(__GLIBC__)
    // Blocks below 64 MB come from the heap, where freed ones are reused,
    // rather than from maps of their own that go back at each free; and
    // the heap gives back its top only when 256 MB of it lie unused.
    mallopt(M_MMAP_THRESHOLD, 64 << 20);
    mallopt(M_TRIM_THRESHOLD, 256 << 20);
#if defined(__linux__)
    // The heap's next 48 MB asked for in huge pages: the block is freed at
    // once, untouched, and the memory that reuses it faults 2 MB at a time.
    constexpr std::size_t kSpan = std::size_t(48) << 20;
    if (void* block = std::malloc(kSpan)) {
        const auto from = (reinterpret_cast<std::uintptr_t>(block) + kHuge - 1) & ~(kHuge - 1);
        const auto to = (reinterpret_cast<std::uintptr_t>(block) + kSpan) & ~(kHuge - 1);
        if (to > from) madvise(reinterpret_cast<void*>(from), to - from, MADV_HUGEPAGE);
        std::free(block);
    }
#endif
#endif
}

} // namespace cintal
