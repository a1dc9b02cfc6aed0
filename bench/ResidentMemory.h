#pragma once
// The process's resident memory, read from /proc, and a sampler that keeps its peak while a
// piece of work runs on other threads.

#include <atomic>
#include <thread>

namespace orv::bench {

long residentKiB();

class ResidentSampler {
  public:
    // Samples every millisecond from construction to destruction.
    ResidentSampler();
    ~ResidentSampler();
    long peakKiB() const { return peak_; }

  private:
    void loop();
    std::atomic<bool> running_{true};
    std::atomic<long> peak_{0};
    std::thread thread_;
};

}  // namespace orv::bench
