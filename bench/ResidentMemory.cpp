#include "bench/ResidentMemory.h"

#include <unistd.h>

#include <chrono>
#include <fstream>

namespace orv::bench {

long residentKiB() {
    std::ifstream statm("/proc/self/statm");
    long size = 0, resident = 0;
    statm >> size >> resident;
    return resident * (::sysconf(_SC_PAGESIZE) / 1024);
}

ResidentSampler::ResidentSampler() : thread_([this] { loop(); }) {}

ResidentSampler::~ResidentSampler() {
    running_ = false;
    thread_.join();
}

void ResidentSampler::loop() {
    while (running_) {
        const long now = residentKiB();
        if (now > peak_) peak_ = now;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

}  // namespace orv::bench
