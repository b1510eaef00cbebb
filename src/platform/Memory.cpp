#include "platform/Memory.h"

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace cintal {

void KeepFreedMemory() {
#if defined(__GLIBC__)
    // Blocks below 64 MB come from the heap, where freed ones are reused,
    // rather than from maps of their own that go back at each free; and
    // the heap gives back its top only when 256 MB of it lie unused.
    mallopt(M_MMAP_THRESHOLD, 64 << 20);
    mallopt(M_TRIM_THRESHOLD, 256 << 20);
#endif
}

} // namespace cintal
