#include "frameworks/core/OrvTSAsset.h"

#include <algorithm>
#include <atomic>
#include <cctype>
#include <filesystem>
#include <fstream>

#include <nlohmann/json.hpp>

#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "frameworks/core/OrvTSLog.h"
#include "platform/codec/ImageType.h"

ORV_DEFINE_CLASS(OrvTSAsset, rt::Object, OrvTSAssetInterface)

namespace fs = std::filesystem;

namespace {

constexpr const char* kCloudExtension = ".cloud";

std::string lowercaseExtension(const std::string& path) {
    std::string ext = fs::path(path).extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return ext;
}

bool isImageExtension(const std::string& ext) {
    return ext == ".jpg" || ext == ".jpeg" || ext == ".png" || ext == ".webp";
}

// The extension a downloaded file gets from its first bytes; empty for types we cannot show.
std::string extensionOfFile(const std::string& path) {
    uint8_t head[16] = {};
    std::ifstream in(path, std::ios::binary);
    in.read(reinterpret_cast<char*>(head), sizeof head);
    switch (codec::imageTypeOf(head, static_cast<size_t>(in.gcount()))) {
        case codec::ImageType::JPEG:
            return ".jpg";
        case codec::ImageType::PNG:
            return ".png";
        case codec::ImageType::WebP:
            return ".webp";
        default:
            return {};
    }
}

std::shared_ptr<rt::Error> assetError(long code, const std::string& reason) {
    return rt::Error::errorWithDomain(OrvTSAsset::kErrorDomain, code,
                                      {{"NSLocalizedDescription", reason}});
}

}  // namespace

std::shared_ptr<OrvTSAsset> OrvTSAsset::assetWithPath(const std::string& path) {
    const std::string ext = lowercaseExtension(path);
    if (!isImageExtension(ext) && ext != kCloudExtension) return nullptr;
    auto asset = rt::make<OrvTSAsset>();
    asset->path_ = path;
    asset->identifier_ = path;
    return asset;
}

gfx::ImagePtr OrvTSAsset::fullResolutionImage() {
    if (isInCloud()) return nullptr;
    return imageWithContentsOfFile(path());
}

void OrvTSAsset::asyncFullResolutionImage(FullResolutionHandler handler) {
    if (!handler) return;
    if (!isInCloud()) {
        gfx::ImagePtr image = fullResolutionImage();
        if (image) {
            handler(image, 1.0, nullptr);
        } else {
            handler(nullptr, 0, assetError(kUnreadableImage, "cannot read " + path()));
        }
        return;
    }
    const auto url = cloudUrl();
    if (!url) {
        handler(nullptr, 0, assetError(kBadCloudFile, "no address in " + path()));
        return;
    }
    startDownload(*url, std::move(handler));
}

void OrvTSAsset::startDownload(const std::string& url, FullResolutionHandler handler) {
    std::lock_guard lock(mutex_);
    if (download_) download_->cancel();
    // Each download has its own hidden file, so a late answer of a cancelled one can clean up
    // after itself without touching a newer one's.
    static std::atomic<unsigned> downloads{0};
    const fs::path cloud(path_);
    const std::string part = (cloud.parent_path() / ("." + cloud.stem().string() + "." +
                                                     std::to_string(++downloads) + ".download"))
                                 .string();
    // The completion may come before downloadWithUrl() returns; it reads which task it belongs
    // to under the mutex, which is held until the slot is filled.
    auto slot = std::make_shared<std::weak_ptr<OrvNKDownloadTask>>();
    auto reached = std::make_shared<std::atomic<double>>(0.0);
    auto onProgress = [handler, reached](double progress) {
        if (progress >= 1) return;  // 1 comes with the image
        *reached = progress;
        handler(nullptr, progress, nullptr);
    };
    auto onCompletion = [self = self<OrvTSAsset>(), slot, part, reached,
                         handler](std::shared_ptr<rt::Error> error) {
        std::shared_ptr<OrvNKDownloadTask> task;
        {
            std::lock_guard lock(self->mutex_);
            task = slot->lock();
        }
        self->finishDownload(task, part, *reached, handler, std::move(error));
    };
    download_ = OrvNKNetworkEngine::sharedEngine()->downloadWithUrl(
        url, part, std::move(onProgress), std::move(onCompletion));
    *slot = download_;
}

gfx::ImagePtr OrvTSAsset::adoptDownloadedFile(const std::string& part) {
    const std::string ext = extensionOfFile(part);
    const fs::path cloud(path_);
    const std::string target = (cloud.parent_path() / (cloud.stem().string() + ext)).string();
    if (ext.empty() || ::rename(part.c_str(), target.c_str()) != 0) {
        OrvTSFileManager::deletePath(part);
        return nullptr;
    }
    gfx::ImagePtr image = imageWithContentsOfFile(target);
    if (!image) {
        OrvTSFileManager::deletePath(target);
        return nullptr;
    }
    OrvTSFileManager::deletePath(path_);
    path_ = target;
    return image;
}

void OrvTSAsset::finishDownload(const std::shared_ptr<OrvNKDownloadTask>& task,
                                const std::string& part, double progress,
                                const FullResolutionHandler& handler,
                                std::shared_ptr<rt::Error> error) {
    gfx::ImagePtr image;
    {
        std::lock_guard lock(mutex_);
        // A download that was cancelled or replaced meanwhile is dropped without a word.
        if (!task || task != download_ || task->isCancelled()) {
            OrvTSFileManager::deletePath(part);
            return;
        }
        download_.reset();
        if (!error) {
            image = adoptDownloadedFile(part);
            if (!image) error = assetError(kUnreadableImage, "the downloaded file is no picture");
        }
    }
    if (error) {
        OrvTSLog::warn("cloud image of %s not loaded: %s", identifier_.c_str(),
                       error->description().c_str());
        handler(nullptr, progress, error);
    } else {
        handler(image, 1.0, nullptr);
    }
}

void OrvTSAsset::cancelLoadFullResolutionImage() {
    std::lock_guard lock(mutex_);
    if (!download_) return;
    download_->cancel();
    download_.reset();
}

std::string OrvTSAsset::localIdentifier() const {
    return identifier_;
}

std::optional<std::string> OrvTSAsset::localFilePath() const {
    if (isInCloud()) return std::nullopt;
    return path();
}

std::string OrvTSAsset::path() const {
    std::lock_guard lock(mutex_);
    return path_;
}

bool OrvTSAsset::isInCloud() const {
    return lowercaseExtension(path()) == kCloudExtension;
}

std::optional<std::string> OrvTSAsset::cloudUrl() const {
    if (!isInCloud()) return std::nullopt;
    std::ifstream in(path());
    const auto json = nlohmann::json::parse(in, nullptr, false);
    if (!json.is_object() || !json.contains("url") || !json["url"].is_string()) {
        return std::nullopt;
    }
    return json["url"].get<std::string>();
}
