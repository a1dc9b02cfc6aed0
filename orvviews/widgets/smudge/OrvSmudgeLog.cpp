#include "orvviews/widgets/smudge/OrvSmudgeLog.h"

#include <chrono>
#include <cstdio>

#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "platform/codec/PngCodec.h"

ORV_DEFINE_CLASS(OrvSmudgeLog, rt::Object)

std::shared_ptr<OrvSmudgeLog> OrvSmudgeLog::initWithImage(gfx::ImagePtr image) {
    auto log = rt::make<OrvSmudgeLog>();
    log->image_ = std::move(image);
    log->cacheTempFilePath_ = buildTempFile();
    return log;
}

std::string OrvSmudgeLog::buildTempFile() {
    static std::mutex lastMutex;
    static long long lastMicros = 0;
    std::string dir = OrvTSFileManager::temporaryDirectory();
    if (dir.empty() || dir.back() != '/') dir += '/';
    long long micros = std::chrono::duration_cast<std::chrono::microseconds>(
                           std::chrono::system_clock::now().time_since_epoch())
                           .count();
    {
        std::lock_guard lock(lastMutex);
        if (micros <= lastMicros) micros = lastMicros + 1;
        lastMicros = micros;
    }
    char name[64];
    std::snprintf(name, sizeof name, "smudgeCache_%f.tmp", static_cast<double>(micros) / 1e6);
    return dir + name;
}

gfx::ImagePtr OrvSmudgeLog::image() {
    std::lock_guard lock(mutex_);
    if (cached_ && !image_ && cacheTempFilePath_ &&
        OrvTSFileManager::isExistFileAtPath(cacheTempFilePath_)) {
        return imageWithContentsOfFile(*cacheTempFilePath_);
    }
    return image_;
}

bool OrvSmudgeLog::cached() {
    std::lock_guard lock(mutex_);
    return cached_;
}

void OrvSmudgeLog::runCacheJob() {
    std::lock_guard lock(mutex_);
    if (cached_ || !image_ || !image_->bitmap() || !cacheTempFilePath_) return;
    if (codec::PngCodec::writeFile(*image_->bitmap(), *cacheTempFilePath_)) {
        cached_ = true;
        image_.reset();
    }
}

void OrvSmudgeLog::destroy() {
    std::lock_guard lock(mutex_);
    OrvTSFileManager::deletePath(cacheTempFilePath_);
    image_.reset();
    cached_ = false;
    cacheTempFilePath_.reset();
}
