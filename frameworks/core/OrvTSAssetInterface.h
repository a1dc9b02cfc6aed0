#pragma once
// A photo of the album. Its full image may be on the device or only "in the cloud", in which
// case it has to be downloaded first.

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "frameworks/core/OrvKit.h"
#include "platform/gfx/Image.h"
#include "platform/rt/Error.h"
#include "platform/rt/Object.h"

class OrvTSAssetInterface {
    ORV_DECLARE_PROTOCOL(OrvTSAssetInterface)
  public:
    // (image, progress from 0 to 1, error); called many times on any thread, the image only
    // with the last call.
    using FullResolutionHandler =
        std::function<void(gfx::ImagePtr, double, std::shared_ptr<rt::Error>)>;

    virtual ~OrvTSAssetInterface() = default;

    // The full image, synchronously; null while only a cloud copy exists.
    virtual gfx::ImagePtr fullResolutionImage() = 0;
    // Starts a download of the full image (or answers at once when it is already here).
    virtual void asyncFullResolutionImage(FullResolutionHandler handler) = 0;
    // Stops a running download; its handler hears nothing more.
    virtual void cancelLoadFullResolutionImage() = 0;

    // A name that stays the same for the asset's life (its path in the album).
    virtual std::string localIdentifier() const = 0;
    // The file on this device that holds the full image, for what the pixels alone don't carry
    // (the photo's EXIF); null while only a cloud copy exists, or when no file holds it.
    virtual std::optional<std::string> localFilePath() const { return std::nullopt; }
};
