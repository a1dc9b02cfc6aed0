#pragma once
// The base of screens that work on one input picture. The picture comes in memory, as a file or
// as an album photo that may still lie in the cloud; it is loaded off the main thread (and
// downloaded with progress when needed) and handed to the subclass on the main thread. The class
// also crops and turns finished pictures for its subclasses, and can show a result full-screen
// in place of delivering it.

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "frameworks/core/OrvTSAssetInterface.h"
#include "orvviews/widgets/OrvResultViewController.h"
#include "platform/ui/Button.h"

class OrvImageResultController : public OrvResultViewController {
    ORV_DECLARE_CLASS(OrvImageResultController)
  public:
    using LoadBlock = std::function<gfx::ImagePtr()>;

    // The picture for display. When none is set it is made at first read: from the file
    // (reduced for the screen), else from the asset's full image (reduced), else the zero-size
    // placeholder that marks an asset still in the cloud. May be read on any thread.
    virtual gfx::ImagePtr inputImage();
    void setInputImage(gfx::ImagePtr image);
    const std::optional<std::string>& inputTempFilePath() const { return inputTempFilePath_; }
    void setInputTempFilePath(std::optional<std::string> path) {
        inputTempFilePath_ = std::move(path);
    }
    const std::shared_ptr<OrvTSAssetInterface>& inputAsset() const { return inputAsset_; }
    void setInputAsset(std::shared_ptr<OrvTSAssetInterface> asset) {
        inputAsset_ = std::move(asset);
    }
    bool showResultPreview() const { return showResultPreview_; }
    void setShowResultPreview(bool on) { showResultPreview_ = on; }
    bool isAutoRemoveTemp() const { return isAutoRemoveTemp_; }
    void setIsAutoRemoveTemp(bool on) { isAutoRemoveTemp_ = on; }
    // The full-screen result preview, built at first use.
    const std::shared_ptr<ui::Button>& preview();

    // Starts the load: `block` runs on a background thread and its picture reaches
    // loadedInputImage() on the main thread.
    void asyncLoadInputImageWithBlock(LoadBlock block);
    // The input at the best resolution there is, for the background thread that builds the
    // result: the file, else the asset's full image, else inputImage().
    gfx::ImagePtr loadOrginImage();

    // The picture with `orientation` as its tag, then cropped to the fractions of `cutRect`
    // when it is not empty, else to `cutRatio` when that is above 0, else turned upright.
    gfx::ImagePtr cuterImage(const gfx::ImagePtr& image, const gfx::Rect& cutRect,
                             gfx::ImageOrientation imageOrientation, double cutRatio = 0);

    // Shows the result full-screen when the option is on; true when the preview took it.
    bool showResultPreview(const ResultPtr& result);
    void showPreviewWithState(bool state);
    virtual void onPreviewClose();

    // The picture is ready, on the main thread.
    virtual void loadedInputImage(const gfx::ImagePtr& image);
    // Before loadedInputImage(); true keeps the hub open until postProcessWithImage().
    virtual bool preProcessWithImage(const gfx::ImagePtr& image) { return false; }
    virtual void postProcessWithImage(const gfx::ImagePtr& image) { dismissHub(); }
    // True for a usable picture (null, or both sides above 0). Otherwise starts the asset's
    // download, whose callbacks go to `handler` with their picture reduced for the screen.
    virtual bool checkImageValid(const gfx::ImagePtr& image,
                                 OrvTSAssetInterface::FullResolutionHandler handler);

    // The EXIF of inputTempFilePath when that file exists, else of the asset's file on this
    // device; none otherwise.
    codec::ImageMetadata sourceMetadata() override;

    void viewWillDisappear(bool animated) override;
    void controllerWillDestory() override;
    void dealloc() override;

  protected:
    // A cloud download is running.
    std::atomic<bool> downloading{false};
    // The picture that reached the subclass came from a cloud download.
    std::atomic<bool> downloadedFromServer{false};

    virtual void onAsyncImageLoaded(const gfx::ImagePtr& image);
    // The load gave no picture. False raises the missing-input exception, which is right when
    // the integrator gave no input at all; a subclass that can tell an unreadable input from a
    // missing one reports it and answers true.
    virtual bool onInputImageMissing() { return false; }
    virtual void updateImageWithDownloadedData(const gfx::ImagePtr& image);
    virtual void imageWillDisplay(const gfx::ImagePtr& image);

  private:
    OrvTSAssetInterface::FullResolutionHandler makeDownloadHandler();
    void onDownload(const gfx::ImagePtr& image, double progress,
                    const std::shared_ptr<rt::Error>& error);

    std::mutex inputMutex_;
    gfx::ImagePtr inputImage_;
    std::optional<std::string> inputTempFilePath_;
    std::shared_ptr<OrvTSAssetInterface> inputAsset_;
    bool showResultPreview_ = false;
    bool isAutoRemoveTemp_ = false;
    std::shared_ptr<ui::Button> preview_;
};
