#pragma once
// Usage counters: how often each screen and flow was opened, by its fixed id. They never change
// what the library does; flushData() adds the counts so far to a JSON file and starts again.

#include <map>
#include <mutex>
#include <string>

class OrvStatistics {
  public:
    static void appendWithComponentIdt(long idt);
    // The counter of a crop ratio chosen (one of OrvRatioType's bits).
    static long componentTypeWithRatioType(long ratioType) { return 0x401100 | (ratioType & 0xff); }
    static void flushData();

    // Counts not yet flushed, by id (tests read them).
    static std::map<long, long> pendingCounts();
    // The file the counts go to: $ORV_STATISTICS_PATH, else beside the user defaults file.
    static std::string storePath();
    static void resetForTesting();
};
