#include "frameworks/core/OrvNKNetworkEngine.h"

#include <curl/curl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <mutex>

#include "frameworks/core/OrvTSLog.h"
#include "platform/rt/Thread.h"

ORV_DEFINE_CLASS(OrvNKDownloadTask, rt::Object)
ORV_DEFINE_CLASS(OrvNKNetworkEngine, rt::Object)

namespace {

constexpr double kProgressStep = 0.01;
constexpr curl_off_t kProgressBytes = 64 * 1024;

// The hidden ".<name>.XXXXXX.part" file a download is written to; removed unless committed.
class PartFile {
  public:
    explicit PartFile(const std::string& destination) {
        const std::filesystem::path dest(destination);
        path_ = (dest.parent_path() / ("." + dest.filename().string() + ".XXXXXX.part")).string();
        const int fd = ::mkstemps(path_.data(), 5);
        if (fd < 0) {
            path_.clear();
            return;
        }
        ::fchmod(fd, 0644);
        file_ = ::fdopen(fd, "wb");
        if (!file_) ::close(fd);
    }
    ~PartFile() { discard(); }
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;

    FILE* file() const { return file_; }
    // Flushes to the disk and closes; false when any byte may be missing.
    bool close() {
        if (!file_) return false;
        bool ok = std::fflush(file_) == 0 && ::fsync(::fileno(file_)) == 0;
        ok = std::fclose(file_) == 0 && ok;
        file_ = nullptr;
        return ok;
    }
    void discard() {
        close();
        if (!path_.empty()) ::unlink(path_.c_str());
        path_.clear();
    }
    bool commit(const std::string& destination) {
        if (::rename(path_.c_str(), destination.c_str()) != 0) return false;
        path_.clear();
        return true;
    }

  private:
    std::string path_;
    FILE* file_ = nullptr;
};

struct Transfer {
    const OrvNKDownloadTask* task;
    const OrvNKNetworkEngine::Progress* progress;
    double lastFraction = -1;
    curl_off_t lastBytes = 0;
};

// Reports progress in steps of about 1% or 64 KiB, and stops the transfer once cancelled.
int onTransferInfo(void* data, curl_off_t total, curl_off_t now, curl_off_t, curl_off_t) {
    auto& transfer = *static_cast<Transfer*>(data);
    if (transfer.task->isCancelled()) return 1;
    const double fraction = total > 0 ? static_cast<double>(now) / static_cast<double>(total) : 0;
    // 1 is reported once, when the file is in place.
    if (fraction >= 1) return 0;
    const bool stepped = fraction - transfer.lastFraction >= kProgressStep ||
                         now - transfer.lastBytes >= kProgressBytes;
    if (stepped && *transfer.progress) {
        transfer.lastFraction = fraction;
        transfer.lastBytes = now;
        (*transfer.progress)(fraction);
    }
    return 0;
}

std::shared_ptr<rt::Error> downloadError(long code, const std::string& reason,
                                         const std::string& url) {
    OrvTSLog::warn("download of %s failed: %s", url.c_str(), reason.c_str());
    return rt::Error::errorWithDomain(OrvNKNetworkEngine::kErrorDomain, code,
                                      {{"NSLocalizedDescription", reason}, {"url", url}});
}

}  // namespace

std::shared_ptr<OrvNKNetworkEngine> OrvNKNetworkEngine::sharedEngine() {
    static const auto engine = rt::make<OrvNKNetworkEngine>();
    return engine;
}

std::shared_ptr<OrvNKDownloadTask> OrvNKNetworkEngine::downloadWithUrl(
    const std::string& url, const std::string& destinationPath, Progress progress,
    Completion completion) {
    static std::once_flag curlReady;
    std::call_once(curlReady, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
    auto task = rt::make<OrvNKDownloadTask>();
    rt::Thread::detach("OrvNKDownload",
                       [self = self<OrvNKNetworkEngine>(), task, url, destinationPath,
                        progress = std::move(progress), completion = std::move(completion)] {
                           self->run(task, url, destinationPath, progress, completion);
                           task->finished_ = true;
                       });
    return task;
}

void OrvNKNetworkEngine::run(const std::shared_ptr<OrvNKDownloadTask>& task, const std::string& url,
                             const std::string& destinationPath, const Progress& progress,
                             const Completion& completion) {
    PartFile part(destinationPath);
    if (!part.file()) {
        if (!task->isCancelled() && completion)
            completion(downloadError(-CURLE_WRITE_ERROR, "cannot create " + destinationPath, url));
        return;
    }
    std::unique_ptr<CURL, void (*)(CURL*)> curl(curl_easy_init(), curl_easy_cleanup);
    Transfer transfer{task.get(), &progress};
    char reason[CURL_ERROR_SIZE] = "";
    curl_easy_setopt(curl.get(), CURLOPT_URL, url.c_str());
    curl_easy_setopt(curl.get(), CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(curl.get(), CURLOPT_MAXREDIRS, 10L);
    curl_easy_setopt(curl.get(), CURLOPT_FAILONERROR, 1L);
    curl_easy_setopt(curl.get(), CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl.get(), CURLOPT_ERRORBUFFER, reason);
    curl_easy_setopt(curl.get(), CURLOPT_WRITEDATA, part.file());
    curl_easy_setopt(curl.get(), CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(curl.get(), CURLOPT_XFERINFOFUNCTION, onTransferInfo);
    curl_easy_setopt(curl.get(), CURLOPT_XFERINFODATA, &transfer);
    curl_easy_setopt(curl.get(), CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(curl.get(), CURLOPT_LOW_SPEED_TIME, stallTimeout_.load());
    curl_easy_setopt(curl.get(), CURLOPT_CONNECTTIMEOUT, stallTimeout_.load());
    const CURLcode result = curl_easy_perform(curl.get());
    long status = 0;
    curl_easy_getinfo(curl.get(), CURLINFO_RESPONSE_CODE, &status);
    const bool written = part.close();
    if (task->isCancelled()) return;

    std::shared_ptr<rt::Error> error;
    if (status >= 400) {
        error = downloadError(status, "HTTP status " + std::to_string(status), url);
    } else if (result != CURLE_OK) {
        error = downloadError(-static_cast<long>(result),
                              *reason ? reason : curl_easy_strerror(result), url);
    } else if (!written || !part.commit(destinationPath)) {
        error = downloadError(-CURLE_WRITE_ERROR, "cannot write " + destinationPath, url);
    }
    // Nothing of a failed download is left by the time anyone hears of it.
    if (error) part.discard();
    if (task->isCancelled()) return;
    if (!error && progress) progress(1.0);
    if (completion) completion(error);
}
