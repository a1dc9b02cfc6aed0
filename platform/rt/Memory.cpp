#include "platform/rt/Memory.h"

#include <cstddef>  // defines __GLIBC__ on the C library that has it

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace orv::rt {

void Memory::releaseFreeMemory() {
#if defined(__GLIBC__)
    ::malloc_trim(0);
#endif
}

void Memory::returnLargeAllocationsAtOnce(long bytes) {
#if defined(__GLIBC__)
    ::mallopt(M_MMAP_THRESHOLD, static_cast<int>(bytes));
#endif
}

}  // namespace orv::rt
