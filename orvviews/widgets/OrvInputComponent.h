#pragma once
#include <optional>
#include <string>

#include "frameworks/core/OrvTSAssetInterface.h"
#include "orvviews/widgets/OrvEditComponent.h"
#include "platform/gfx/Image.h"

// A component that carries an input picture to its screen: as a file, an album asset or an
// image in memory.
class OrvInputComponent : public OrvEditComponent {
    ORV_DECLARE_CLASS(OrvInputComponent)
  public:
    const std::optional<std::string>& inputTempFilePath() const { return inputTempFilePath_; }
    void setInputTempFilePath(std::optional<std::string> path) {
        inputTempFilePath_ = std::move(path);
    }
    const std::shared_ptr<OrvTSAssetInterface>& inputAsset() const { return inputAsset_; }
    void setInputAsset(std::shared_ptr<OrvTSAssetInterface> asset) {
        inputAsset_ = std::move(asset);
    }
    const gfx::ImagePtr& inputImage() const { return inputImage_; }
    void setInputImage(gfx::ImagePtr image) { inputImage_ = std::move(image); }

  private:
    std::optional<std::string> inputTempFilePath_;
    std::shared_ptr<OrvTSAssetInterface> inputAsset_;
    gfx::ImagePtr inputImage_;
};
