#pragma once
// The combined turn-and-crop tool: the picture turns and mirrors behind a crop window of a
// fixed output size, a look can be previewed on it, and the confirmed result is turned, cropped
// to exactly that size and given the look, in that order. A concrete screen supplies the
// zoomable image.

#include <memory>
#include <optional>
#include <string>

#include "orvviews/views/OrvTouchImageViewInterface.h"
#include "orvviews/widgets/OrvImageResultController.h"

class OrvEditTurnAndCutViewControllerBase : public OrvImageResultController {
    ORV_DECLARE_CLASS(OrvEditTurnAndCutViewControllerBase)
  public:
    static constexpr long kStatisticsIdt = 0x404000;

    void viewDidLoad() override;
    // The zoomable image, a view that offers OrvTouchImageViewInterface; none in the base.
    virtual std::shared_ptr<ui::View> imageView() const { return nullptr; }

    // The output size of the crop in pixels; zero means no crop.
    const gfx::Size& cutSize() const { return cutSize_; }
    void setCutSize(const gfx::Size& size) { cutSize_ = size; }
    const std::optional<std::string>& selectedFilterCode() const { return selectedFilterCode_; }

    // The picture fetched from the cloud, once it came; else the base's.
    gfx::ImagePtr inputImage() override;
    void loadedInputImage(const gfx::ImagePtr& image) override;

    // Previews a look on a thread of its own; false when there is nothing to do (no image view,
    // or the same look again).
    bool onSelectedFilterCode(const std::string& code);
    virtual void asyncFilterProcessing(const std::string& code);
    // The previewed picture, on the main thread.
    virtual void Filterprocessed(const gfx::ImagePtr& image);

    // Confirms; dropped while downloading, without an image view, or while it moves.
    virtual void onImageCompleteAtion();
    virtual void asyncEditWithResult(const ResultPtr& result);
    void controllerWillDestory() override;

  protected:
    OrvTouchImageViewInterface* touchImage() const;

  private:
    gfx::Size cutSize_;
    std::optional<std::string> selectedFilterCode_;
    gfx::ImagePtr cachedOriginalImage_;
};
