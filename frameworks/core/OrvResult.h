#pragma once
// The record that travels from a tool back to the application: the picture in work, how it was
// cut and filtered, the stickers to merge, and where it was finally saved.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "frameworks/core/OrvKit.h"
#include "frameworks/core/OrvTSAssetInterface.h"
#include "platform/codec/ImageMetadata.h"
#include "platform/gfx/Geometry.h"
#include "platform/gfx/Image.h"
#include "platform/rt/Object.h"

class VimraParameters;
class OrvStickerResult;

class OrvResult : public rt::Object {
    ORV_DECLARE_CLASS(OrvResult)
  public:
    static std::shared_ptr<OrvResult> result() { return rt::make<OrvResult>(); }

    // The picture in work; the saving road clears it before it writes.
    gfx::ImagePtr image() const { return image_; }
    void setImage(gfx::ImagePtr image) { image_ = std::move(image); }
    // The temporary file that holds the picture once it was saved.
    const std::optional<std::string>& imagePath() const { return imagePath_; }
    void setImagePath(std::optional<std::string> path) { imagePath_ = std::move(path); }
    // The photo made in the album.
    const std::shared_ptr<OrvTSAssetInterface>& imageAsset() const { return imageAsset_; }
    void setImageAsset(std::shared_ptr<OrvTSAssetInterface> asset) {
        imageAsset_ = std::move(asset);
    }
    // Written with the JPEG: what the source photo carried (camera, dates, colour profile).
    const codec::ImageMetadata& metadata() const { return metadata_; }
    void setMetadata(codec::ImageMetadata metadata) { metadata_ = std::move(metadata); }

    const std::optional<std::string>& filterCode() const { return filterCode_; }
    void setFilterCode(std::optional<std::string> code) { filterCode_ = std::move(code); }
    const std::shared_ptr<VimraParameters>& filterParams() const { return filterParams_; }
    void setFilterParams(std::shared_ptr<VimraParameters> params) {
        filterParams_ = std::move(params);
    }

    gfx::ImageOrientation imageOrientation() const { return imageOrientation_; }
    void setImageOrientation(gfx::ImageOrientation orientation) { imageOrientation_ = orientation; }
    // The crop in fractions of the picture (0 to 1).
    const gfx::Rect& cutRect() const { return cutRect_; }
    void setCutRect(const gfx::Rect& rect) { cutRect_ = rect; }
    const gfx::Size& cutSize() const { return cutSize_; }
    void setCutSize(const gfx::Size& size) { cutSize_ = size; }
    double cutScale() const { return cutScale_; }
    void setCutScale(double scale) { cutScale_ = scale; }
    long cutRatioType() const { return cutRatioType_; }
    void setCutRatioType(long type) { cutRatioType_ = type; }
    // The wanted width-to-height ratio of the output; above 0 means crop to it.
    double imageRatio() const { return imageRatio_; }
    void setImageRatio(double ratio) { imageRatio_ = ratio; }

    const std::vector<std::shared_ptr<OrvStickerResult>>& stickers() const { return stickers_; }
    void setStickers(std::vector<std::shared_ptr<OrvStickerResult>> stickers) {
        stickers_ = std::move(stickers);
    }

    // A new path in the library's temporary folder for one file to write.
    std::string buildTempFile() const;
    // Makes the metadata describe the final pixels: their size and the picture's orientation
    // tag (up after a rotation). A plain upright picture without metadata gets none.
    void fixedMetadata();
    // The picture for display: `image` while it is set, else the saved file reduced for the
    // screen, else the album photo reduced for the screen.
    gfx::ImagePtr loadResultImage() const;

  private:
    gfx::ImagePtr image_;
    std::optional<std::string> imagePath_;
    std::shared_ptr<OrvTSAssetInterface> imageAsset_;
    codec::ImageMetadata metadata_;
    std::optional<std::string> filterCode_;
    std::shared_ptr<VimraParameters> filterParams_;
    gfx::ImageOrientation imageOrientation_ = gfx::ImageOrientation::Up;
    gfx::Rect cutRect_;
    gfx::Size cutSize_;
    double cutScale_ = 0;
    long cutRatioType_ = 0;
    double imageRatio_ = 0;
    std::vector<std::shared_ptr<OrvStickerResult>> stickers_;
};
