#pragma once
// The network engine: downloads over HTTP(S) with libcurl, each on its own thread, with
// progress and cancel. A download goes to a hidden file beside its destination and is renamed
// into place only when it is complete, so the destination is either absent or whole.

#include <atomic>
#include <functional>
#include <memory>
#include <string>

#include "frameworks/core/OrvKit.h"
#include "platform/rt/Error.h"
#include "platform/rt/Object.h"

// One running download.
class OrvNKDownloadTask : public rt::Object {
    ORV_DECLARE_CLASS(OrvNKDownloadTask)
  public:
    // After cancel() no callback of the task runs any more (one already running finishes).
    // The transfer stops at its next progress check and its partial file is removed.
    void cancel() { cancelled_ = true; }
    bool isCancelled() const { return cancelled_; }
    // True once the download's thread is done with the task: after the completion, or after a
    // cancelled transfer has stopped and cleaned up.
    bool isFinished() const { return finished_; }

  private:
    friend class OrvNKNetworkEngine;
    std::atomic<bool> cancelled_{false};
    std::atomic<bool> finished_{false};
};

class OrvNKNetworkEngine : public rt::Object {
    ORV_DECLARE_CLASS(OrvNKNetworkEngine)
  public:
    // Progress in 0 to 1 (0 while the size is unknown); called many times, on the download's
    // thread, and never after the completion. A successful download reports 1 last.
    using Progress = std::function<void(double)>;
    // Null on success; otherwise an error of the domain "OrvNKNetworkEngine" whose code is the
    // HTTP status (400 and above) or a negative transport code (minus libcurl's code). Called
    // once, on the download's thread; not called after cancel().
    using Completion = std::function<void(std::shared_ptr<rt::Error>)>;

    static constexpr const char* kErrorDomain = "OrvNKNetworkEngine";

    static std::shared_ptr<OrvNKNetworkEngine> sharedEngine();

    // Redirects are followed. The destination's folder must exist.
    std::shared_ptr<OrvNKDownloadTask> downloadWithUrl(const std::string& url,
                                                       const std::string& destinationPath,
                                                       Progress progress, Completion completion);

    // Seconds without any byte before a download fails (default 30).
    void setStallTimeout(long seconds) { stallTimeout_ = seconds; }

  private:
    void run(const std::shared_ptr<OrvNKDownloadTask>& task, const std::string& url,
             const std::string& destinationPath, const Progress& progress,
             const Completion& completion);
    std::atomic<long> stallTimeout_{30};
};
