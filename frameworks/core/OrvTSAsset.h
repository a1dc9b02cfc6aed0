#pragma once
// A photo of the folder album. A local asset is an image file in an album folder. A cloud asset
// is a small JSON file "<name>.cloud" holding {"url": "..."}: its full image lies at that HTTP
// address until it is downloaded, after which the file "<name>.jpg" (or the type served) takes
// the place of the JSON file. The asset's identifier stays the path it was made with.

#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "frameworks/core/OrvNKNetworkEngine.h"
#include "frameworks/core/OrvTSAssetInterface.h"

class OrvTSAsset : public rt::Object, public OrvTSAssetInterface {
    ORV_DECLARE_CLASS(OrvTSAsset)
  public:
    // Failures of the asset itself; a failed transfer reports the network engine's error.
    static constexpr const char* kErrorDomain = "OrvTSAsset";
    enum ErrorCode : long { kUnreadableImage = 1, kBadCloudFile = 2 };

    // The asset of an image file or of a ".cloud" file; null for any other path.
    static std::shared_ptr<OrvTSAsset> assetWithPath(const std::string& path);

    gfx::ImagePtr fullResolutionImage() override;
    // A local asset answers at once on the calling thread. A cloud asset downloads on the
    // network engine's thread, reporting progress below 1 along the way; on success the file
    // takes the place of the ".cloud" file and the asset becomes local. A second call while a
    // download runs cancels the first (its handler hears nothing more).
    void asyncFullResolutionImage(FullResolutionHandler handler) override;
    void cancelLoadFullResolutionImage() override;
    std::string localIdentifier() const override;
    std::optional<std::string> localFilePath() const override;

    // The file that holds the full image now (the ".cloud" file for an asset in the cloud).
    std::string path() const;
    bool isInCloud() const;
    // The address of the cloud copy; null for a local asset.
    std::optional<std::string> cloudUrl() const;

  private:
    void startDownload(const std::string& url, FullResolutionHandler handler);
    // The downloaded file under its final name, decoded; null (file removed) when it is not a
    // picture we can read.
    gfx::ImagePtr adoptDownloadedFile(const std::string& part);
    void finishDownload(const std::shared_ptr<OrvNKDownloadTask>& task, const std::string& part,
                        double progress, const FullResolutionHandler& handler,
                        std::shared_ptr<rt::Error> error);
    mutable std::mutex mutex_;
    std::string path_;
    std::string identifier_;
    std::shared_ptr<OrvNKDownloadTask> download_;
};
