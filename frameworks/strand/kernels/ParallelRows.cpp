#include "frameworks/strand/kernels/ParallelRows.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/rt/NoDestructor.h"

namespace orv::strand {

namespace {

// True on the filter threads and on a caller while it runs a band: a nested call runs inline,
// so no band ever waits for another and concurrent callers cannot deadlock.
thread_local bool tInBand = false;

// One call of run(): its bands are taken one by one by whoever comes first.
struct Job {
    const std::function<void(int, int)>* body = nullptr;
    int rows = 0;
    int bands = 0;
    std::atomic<int> next{0};
    std::mutex mutex;
    std::condition_variable finished;
    int done = 0;              // under mutex
    std::exception_ptr error;  // the first band's exception, under mutex

    // Runs one unclaimed band; false when all are claimed.
    bool runOne() {
        const int band = next.fetch_add(1, std::memory_order_relaxed);
        if (band >= bands) return false;
        std::exception_ptr failure;
        try {
            (*body)(static_cast<int>(int64_t{rows} * band / bands),
                    static_cast<int>(int64_t{rows} * (band + 1) / bands));
        } catch (...) {
            failure = std::current_exception();
        }
        std::lock_guard lock(mutex);
        if (failure && !error) error = failure;
        if (++done == bands) finished.notify_all();
        return true;
    }
};

// The process's filter threads: as many as the cores less the caller's own, at least one.
class Pool {
  public:
    Pool() {
        const unsigned cores = std::thread::hardware_concurrency();
        const int count = std::max(1, static_cast<int>(cores) - 1);
        for (int i = 0; i < count; ++i) std::thread([this] { work(); }).detach();
        threads_ = count;
    }

    int threads() const { return threads_; }

    void submit(const std::shared_ptr<Job>& job) {
        {
            std::lock_guard lock(mutex_);
            jobs_.push_back(job);
        }
        ready_.notify_all();
    }

    void withdraw(const std::shared_ptr<Job>& job) {
        std::lock_guard lock(mutex_);
        jobs_.erase(std::remove(jobs_.begin(), jobs_.end(), job), jobs_.end());
    }

  private:
    void work() {
        tInBand = true;
        for (;;) {
            std::shared_ptr<Job> job;
            {
                std::unique_lock lock(mutex_);
                ready_.wait(lock, [&] { return !jobs_.empty(); });
                job = jobs_.front();
            }
            if (!job->runOne()) withdraw(job);
        }
    }

    int threads_ = 0;
    std::mutex mutex_;
    std::condition_variable ready_;
    std::deque<std::shared_ptr<Job>> jobs_;
};

Pool& pool() {
    static rt::NoDestructor<Pool> instance;
    return *instance;
}

}  // namespace

void ParallelRows::run(int rows, const std::function<void(int begin, int end)>& body, int minRows) {
    if (rows <= 0) return;
    // A few bands a thread, so that a thread slowed by other work does not hold up the rest.
    const int maxBands = tInBand ? 1 : 4 * (pool().threads() + 1);
    const int bands = std::clamp(rows / std::max(1, minRows), 1, maxBands);
    if (bands == 1) {
        body(0, rows);
        return;
    }
    auto job = std::make_shared<Job>();
    job->body = &body;
    job->rows = rows;
    job->bands = bands;
    pool().submit(job);
    tInBand = true;
    while (job->runOne()) {
    }
    tInBand = false;
    pool().withdraw(job);
    std::unique_lock lock(job->mutex);
    job->finished.wait(lock, [&] { return job->done == job->bands; });
    if (job->error) std::rethrow_exception(job->error);
}

}  // namespace orv::strand
