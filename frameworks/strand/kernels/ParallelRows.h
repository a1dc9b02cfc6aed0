#pragma once
// Runs a loop over rows on every core: the rows are cut into bands, the calling thread takes
// one and a fixed set of filter threads the others; returns when all are done. Safe to call
// from any thread, including from inside a band (nested calls run inline).

#include <functional>

namespace orv::strand {

class ParallelRows {
  public:
    ParallelRows() = delete;
    // `body(begin, end)` for disjoint bands of [0, rows); bands of at least `minRows` rows.
    static void run(int rows, const std::function<void(int begin, int end)>& body,
                    int minRows = 16);
};

}  // namespace orv::strand
