#pragma once
// The process's heap as the system sees it.

namespace orv::rt {

class Memory {
  public:
    Memory() = delete;

    // Gives the free pages of every heap back to the system. The allocator keeps memory that
    // worker threads freed in their own heaps, so after a full-size render the process would
    // go on holding the render's temporaries; called once the big work of a task is over.
    static void releaseFreeMemory();
    // Makes every allocation of `bytes` or more a mapping of its own, given back to the system
    // as soon as it is freed. The allocator otherwise raises that bound to the size of the
    // largest block freed so far (32 MB at most) and keeps blocks below it for reuse, so a
    // process that renders full-size photos keeps their temporaries long after. Too low a bound
    // costs fresh pages on every live preview frame; 4 MB keeps a 12-megapixel session under
    // three full bitmaps and the previews as fast as before. A setting for the application to
    // make once at start, like the allocator's environment variables.
    static void returnLargeAllocationsAtOnce(long bytes = 4 << 20);
};

}  // namespace orv::rt
