#include "frameworks/core/OrvTSAssetsManager.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <mutex>

#include <nlohmann/json.hpp>

#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvLocalized.h"
#include "frameworks/core/OrvTSAlertController.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "frameworks/core/OrvTSLog.h"
#include "platform/rt/DispatchQueue.h"

namespace fs = std::filesystem;

namespace {

std::mutex& rootMutex() {
    static std::mutex m;
    return m;
}

std::optional<std::string>& rootOverride() {
    static std::optional<std::string> root;
    return root;
}

// Held while a new file name is chosen and written, so that two saves in the same second
// cannot pick the same name.
std::mutex& namingMutex() {
    static std::mutex m;
    return m;
}

std::shared_ptr<rt::Error> albumError(long code, const std::string& reason) {
    OrvTSLog::warn("album: %s", reason.c_str());
    return rt::Error::errorWithDomain(OrvTSAssetsManager::kErrorDomain, code,
                                      {{"NSLocalizedDescription", reason}});
}

// True when a file can really be made in the folder: access() answers yes to root for any
// folder, so a probe file settles it.
bool canWriteInto(const std::string& folder) {
    if (::access(folder.c_str(), W_OK) != 0) return false;
    std::string probe = folder + "/.orv-probe-XXXXXX";
    const int fd = ::mkstemp(probe.data());
    if (fd < 0) return false;
    ::close(fd);
    ::unlink(probe.c_str());
    return true;
}

// "IMG_<yyyyMMdd_HHmmss>_<n><extension>" whose stem no picture or cloud file of the folder
// uses yet (a cloud file's stem becomes its downloaded picture's).
std::string newAssetPath(const std::string& folder, const std::string& extension) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    char stamp[32];
    std::strftime(stamp, sizeof stamp, "%Y%m%d_%H%M%S", &local);
    for (int n = 1;; ++n) {
        const std::string stem = folder + "/IMG_" + stamp + "_" + std::to_string(n);
        static constexpr const char* kKinds[] = {".jpg", ".jpeg", ".png", ".webp", ".cloud"};
        const bool taken = std::any_of(std::begin(kKinds), std::end(kKinds), [&](const char* ext) {
            return OrvTSFileManager::isExistFileAtPath(stem + ext);
        });
        if (!taken) return stem + extension;
    }
}

bool isVisible(const fs::directory_entry& entry) {
    return entry.path().filename().string().rfind('.', 0) != 0;
}

}  // namespace

std::string OrvTSAssetsManager::albumRoot() {
    {
        std::lock_guard lock(rootMutex());
        if (rootOverride()) return *rootOverride();
    }
    if (const char* path = std::getenv("ORV_ALBUM_PATH"); path && *path) return path;
    const char* home = std::getenv("HOME");
    return std::string(home && *home ? home : "/tmp") + "/Pictures/OrvViews";
}

void OrvTSAssetsManager::setAlbumRoot(std::optional<std::string> path) {
    std::lock_guard lock(rootMutex());
    rootOverride() = std::move(path);
}

std::string OrvTSAssetsManager::defaultAlbumName() {
    return "Camera Roll";
}

std::string OrvTSAssetsManager::albumPath(const std::optional<std::string>& name) {
    return albumRoot() + "/" + name.value_or(defaultAlbumName());
}

void OrvTSAssetsManager::testLibraryAuthor(const AccessBlock& block) {
    const std::string root = albumRoot();
    std::shared_ptr<rt::Error> error;
    if (!OrvTSFileManager::createDirectoryAtPath(root) || !canWriteInto(root)) {
        error = albumError(kNoAccess, "cannot write into " + root);
    }
    if (block) block(error);
}

void OrvTSAssetsManager::showAlertWithController(
    const std::shared_ptr<ui::ViewController>& controller,
    const std::shared_ptr<rt::Error>& error) {
    if (!controller) return;
    auto alert =
        OrvTSAlertController::alertWithTitle(accessFailedInfo(), error ? error->description() : "");
    controller->presentViewController(alert, true, nullptr);
}

std::string OrvTSAssetsManager::accessFailedInfo() {
    return orvLocalized("orv_album_access_failed", "无法访问相册，请检查相册文件夹的权限");
}

void OrvTSAssetsManager::saveWithImage(const gfx::ImagePtr& image, double compress,
                                       const codec::ImageMetadata& metadata,
                                       const std::optional<std::string>& toAblum,
                                       SaveCompletion completion,
                                       AlbumCompletion ablumCompletionBlock) {
    rt::globalQueue().async([image, compress, metadata, folder = albumPath(toAblum),
                             completion = std::move(completion),
                             albumCompletion = std::move(ablumCompletionBlock)] {
        auto fail = [&](long code, const std::string& reason) {
            if (completion) completion(nullptr, albumError(code, reason));
        };
        if (!image) return fail(kNoImage, "no image to save");
        if (!OrvTSFileManager::createDirectoryAtPath(folder)) {
            auto error = albumError(kWriteFailed, "cannot make the album " + folder);
            if (albumCompletion) albumCompletion(folder, error);
            if (completion) completion(nullptr, error);
            return;
        }
        const auto jpeg = orvJpegDataWithCompress(image, std::clamp(compress, 0.0, 1.0), metadata);
        if (jpeg.empty()) return fail(kEncodeFailed, "the image could not be encoded");
        std::string path;
        {
            std::lock_guard lock(namingMutex());
            path = newAssetPath(folder, ".jpg");
            if (!OrvTSFileManager::writeDataAtomically(jpeg, path)) {
                return fail(kWriteFailed, "cannot write " + path);
            }
        }
        if (albumCompletion) albumCompletion(folder, nullptr);
        if (completion) completion(OrvTSAsset::assetWithPath(path), nullptr);
    });
}

std::vector<std::string> OrvTSAssetsManager::albumNames() {
    std::vector<std::string> names;
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(albumRoot(), ec)) {
        if (entry.is_directory(ec) && isVisible(entry)) {
            names.push_back(entry.path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::shared_ptr<OrvTSAsset>> OrvTSAssetsManager::assetsInAlbum(
    const std::optional<std::string>& name) {
    std::vector<std::string> paths;
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(albumPath(name), ec)) {
        if (entry.is_regular_file(ec) && isVisible(entry)) paths.push_back(entry.path().string());
    }
    std::sort(paths.begin(), paths.end());
    std::vector<std::shared_ptr<OrvTSAsset>> assets;
    for (const auto& path : paths) {
        if (auto asset = OrvTSAsset::assetWithPath(path)) assets.push_back(std::move(asset));
    }
    return assets;
}

std::shared_ptr<OrvTSAsset> OrvTSAssetsManager::addCloudAsset(
    const std::string& url, const std::optional<std::string>& album) {
    const std::string folder = albumPath(album);
    if (!OrvTSFileManager::createDirectoryAtPath(folder)) return nullptr;
    const std::string text = nlohmann::json{{"url", url}}.dump();
    std::lock_guard lock(namingMutex());
    const std::string path = newAssetPath(folder, ".cloud");
    if (!OrvTSFileManager::writeDataAtomically({text.begin(), text.end()}, path)) return nullptr;
    return OrvTSAsset::assetWithPath(path);
}
