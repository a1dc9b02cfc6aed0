#pragma once
// The album: a folder tree in which every folder is an album of photos. The default album is
// made on demand, like any named one. Access means the folder can be created and written.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "frameworks/core/OrvKit.h"
#include "frameworks/core/OrvTSAsset.h"
#include "platform/codec/ImageMetadata.h"
#include "platform/gfx/Image.h"
#include "platform/rt/Error.h"
#include "platform/ui/ViewController.h"

class OrvTSAssetsManager {
  public:
    OrvTSAssetsManager() = delete;

    static constexpr const char* kErrorDomain = "OrvTSAssetsManager";
    enum ErrorCode : long { kNoAccess = 1, kEncodeFailed = 2, kWriteFailed = 3, kNoImage = 4 };

    using AccessBlock = std::function<void(std::shared_ptr<rt::Error>)>;
    using SaveCompletion =
        std::function<void(std::shared_ptr<OrvTSAssetInterface>, std::shared_ptr<rt::Error>)>;
    using AlbumCompletion = std::function<void(std::string albumPath, std::shared_ptr<rt::Error>)>;

    // The root of the album tree: $ORV_ALBUM_PATH, else ~/Pictures/OrvViews. Tests move it.
    static std::string albumRoot();
    static void setAlbumRoot(std::optional<std::string> path);  // null goes back to the default
    // The album a null name means.
    static std::string defaultAlbumName();  // "Camera Roll"
    static std::string albumPath(const std::optional<std::string>& name);

    // Calls `block` at once with null when the root exists (or can be made) and a file can
    // really be created in it, and with kNoAccess otherwise.
    static void testLibraryAuthor(const AccessBlock& block);
    // Presents an alert on `controller` with accessFailedInfo() and the error's text. Main
    // thread.
    static void showAlertWithController(const std::shared_ptr<ui::ViewController>& controller,
                                        const std::shared_ptr<rt::Error>& error);
    // "无法访问相册..." (localised), the text for a failed access.
    static std::string accessFailedInfo();

    // Encodes the image as JPEG (quality clamped to 0 to 1) with the metadata (its EXIF
    // orientation becomes the image's tag), writes it atomically as a new file
    // "IMG_<yyyyMMdd_HHmmss>_<n>.jpg" of the album (made when missing), and calls `completion`
    // with the new asset or with an error, on a background thread. `albumCompletion`, when
    // given, hears the album's folder first (with the error when the folder cannot be made).
    static void saveWithImage(const gfx::ImagePtr& image, double compress,
                              const codec::ImageMetadata& metadata,
                              const std::optional<std::string>& toAblum, SaveCompletion completion,
                              AlbumCompletion ablumCompletionBlock);

    // Album names (folder names), sorted; the assets of one album, oldest file name first.
    static std::vector<std::string> albumNames();
    static std::vector<std::shared_ptr<OrvTSAsset>> assetsInAlbum(
        const std::optional<std::string>& name);
    // Places a cloud asset (a ".cloud" file naming `url`) in the album and returns it; null
    // when the file cannot be written.
    static std::shared_ptr<OrvTSAsset> addCloudAsset(const std::string& url,
                                                     const std::optional<std::string>& album);
};
