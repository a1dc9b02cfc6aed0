#include "orvviews/widgets/OrvImageResultController.h"

#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvLocalized.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "frameworks/core/OrvTSLog.h"
#include "frameworks/core/OrvThread.h"
#include "platform/rt/RunLoop.h"
#include "platform/ui/ImageView.h"

ORV_DEFINE_CLASS(OrvImageResultController, OrvResultViewController)

namespace {

constexpr double kPreviewFade = 0.3;
constexpr uint8_t kPreviewGrey = 55;

std::string downloadingText() {
    return orvLocalized("orv_downloading_image", "从iCloud下载图片...");
}

// An opaque one-pixel picture of the preview's grey, stretched over the button.
gfx::ImagePtr previewBackground() {
    auto bitmap = std::make_shared<gfx::Bitmap>(1, 1);
    uint8_t* pixel = bitmap->mutableData();
    pixel[0] = pixel[1] = pixel[2] = kPreviewGrey;
    pixel[3] = 255;
    return gfx::Image::withBitmap(bitmap);
}

bool hasArea(const gfx::ImagePtr& image) {
    const gfx::Size size = image->size();
    return size.width > 0 && size.height > 0;
}

}  // namespace

// ---- input

gfx::ImagePtr OrvImageResultController::inputImage() {
    std::lock_guard lock(inputMutex_);
    if (inputImage_) return inputImage_;
    if (inputTempFilePath_ && OrvTSFileManager::isExistFileAtPath(inputTempFilePath_)) {
        inputImage_ = orvFullScreenImageWithContentsOfFile(*inputTempFilePath_);
        return inputImage_;
    }
    if (inputAsset_) {
        inputImage_ = orvFullScreenImageKeepOrientation(inputAsset_->fullResolutionImage());
        // Our platform is always "8 or above": a missing local copy becomes the zero-size
        // placeholder, the sign of a photo that lies in the cloud.
        if (!inputImage_) inputImage_ = gfx::Image::empty();
    }
    return inputImage_;
}

void OrvImageResultController::setInputImage(gfx::ImagePtr image) {
    std::lock_guard lock(inputMutex_);
    inputImage_ = std::move(image);
}

gfx::ImagePtr OrvImageResultController::loadOrginImage() {
    gfx::ImagePtr image;
    if (inputTempFilePath_ && OrvTSFileManager::isExistFileAtPath(inputTempFilePath_)) {
        image = imageWithContentsOfFile(*inputTempFilePath_);
    }
    if (!image && inputAsset_) image = inputAsset_->fullResolutionImage();
    if (!image) image = inputImage();
    return image;
}

codec::ImageMetadata OrvImageResultController::sourceMetadata() {
    if (inputTempFilePath_ && OrvTSFileManager::isExistFileAtPath(inputTempFilePath_)) {
        return orvMetadataWithContentsOfFile(*inputTempFilePath_);
    }
    const auto file = inputAsset_ ? inputAsset_->localFilePath() : std::nullopt;
    return file ? orvMetadataWithContentsOfFile(*file) : codec::ImageMetadata{};
}

// ---- loading

void OrvImageResultController::asyncLoadInputImageWithBlock(LoadBlock block) {
    if (enableShowHub) showHubWithStatus(orvLocalized("orv_loading_image", "读取图片..."));
    auto me = self<OrvImageResultController>();
    OrvThread::initWithStart(
        [block = std::move(block)]() -> std::shared_ptr<rt::Object> { return block(); },
        [me](std::shared_ptr<rt::Object> object) {
            auto image = std::dynamic_pointer_cast<gfx::Image>(object);
            if (!image) {
                me->dismissHub();
                if (me->onInputImageMissing()) return;
                me->orvThrowWithReason("Did not find inputImage!");
            }
            me->onAsyncImageLoaded(image);
        });
}

void OrvImageResultController::onAsyncImageLoaded(const gfx::ImagePtr& image) {
    auto handler = makeDownloadHandler();
    if (!inputAsset_) {
        imageWillDisplay(image);
        return;
    }
    // Raised before the check starts the download, so that no early callback is mistaken for
    // one that arrives after a cancel; a valid picture lowers it again.
    downloading = true;
    if (checkImageValid(image, handler)) {
        downloading = false;
        imageWillDisplay(image);
        return;
    }
    showHubProgress(0, downloadingText());
}

bool OrvImageResultController::checkImageValid(const gfx::ImagePtr& image,
                                               OrvTSAssetInterface::FullResolutionHandler handler) {
    if (!image || hasArea(image)) return true;
    inputAsset_->asyncFullResolutionImage(
        [handler](gfx::ImagePtr full, double progress, std::shared_ptr<rt::Error> error) {
            handler(orvFullScreenImageKeepOrientation(full), progress, error);
        });
    return false;
}

OrvTSAssetInterface::FullResolutionHandler OrvImageResultController::makeDownloadHandler() {
    std::weak_ptr<OrvImageResultController> weak = self<OrvImageResultController>();
    return [weak](gfx::ImagePtr image, double progress, std::shared_ptr<rt::Error> error) {
        if (auto me = weak.lock()) me->onDownload(image, progress, error);
    };
}

void OrvImageResultController::onDownload(const gfx::ImagePtr& image, double progress,
                                          const std::shared_ptr<rt::Error>& error) {
    if (!downloading) return;
    if (error) {
        downloading = false;
        dismissHub();
        orvThrowWithReason("Error on downloading image:" + error->description());
    }
    if (progress < 1 || !image) {
        showHubProgress(static_cast<float>(progress), downloadingText());
        return;
    }
    downloading = false;
    downloadedFromServer = true;
    updateImageWithDownloadedData(image);
}

void OrvImageResultController::updateImageWithDownloadedData(const gfx::ImagePtr& image) {
    auto me = self<OrvImageResultController>();
    rt::RunLoop::main().post([me, image] { me->imageWillDisplay(image); });
}

void OrvImageResultController::imageWillDisplay(const gfx::ImagePtr& image) {
    if (!preProcessWithImage(image)) dismissHub();
    loadedInputImage(image);
}

void OrvImageResultController::loadedInputImage(const gfx::ImagePtr& image) {
    OrvTSLog::debug("you need overwrite - (void)loadedInputImage:(UIImage *)image; - %s",
                    image ? image->description().c_str() : "(null)");
}

// ---- cropping

gfx::ImagePtr OrvImageResultController::cuterImage(const gfx::ImagePtr& image,
                                                   const gfx::Rect& cutRect,
                                                   gfx::ImageOrientation imageOrientation,
                                                   double cutRatio) {
    if (!image) return nullptr;
    auto turned = orvChangeOrientation(image, imageOrientation);
    if (!gfx::rectIsEmpty(cutRect)) return orvImageCorpWithPrecentRect(turned, cutRect);
    if (cutRatio > 0) return orvImageCorpWithRatio(turned, cutRatio);
    return orvImageRotatedToUp(turned);
}

// ---- preview

const std::shared_ptr<ui::Button>& OrvImageResultController::preview() {
    if (preview_) return preview_;
    preview_ = ui::makeView<ui::Button>(view()->bounds());
    preview_->imageView().setContentMode(ui::ContentMode::ScaleAspectFit);
    std::weak_ptr<OrvImageResultController> weak = self<OrvImageResultController>();
    preview_->addTarget(
        weak,
        [weak](ui::Control&, ui::Event*) {
            if (auto me = weak.lock()) me->onPreviewClose();
        },
        ui::ControlEventTouchUpInside);
    preview_->setBackgroundImage(previewBackground(), ui::ControlStateNormal);
    view()->addSubview(preview_);
    preview_->setAlpha(0);
    preview_->setHidden(true);
    return preview_;
}

bool OrvImageResultController::showResultPreview(const ResultPtr& result) {
    if (!result || !showResultPreview_) return false;
    preview()->setImage(result->loadResultImage(), ui::ControlStateNormal);
    showPreviewWithState(true);
    dismissHub();
    return true;
}

void OrvImageResultController::onPreviewClose() {
    showPreviewWithState(false);
}

void OrvImageResultController::showPreviewWithState(bool state) {
    auto button = preview();
    button->setHidden(false);
    ui::View::animateWithDuration(
        kPreviewFade, [button, state] { button->setAlpha(state ? 1 : 0); },
        [button, state](bool finished) {
            // A fade-out cut short by a new fade-in must not hide the preview being shown.
            if (!state && finished) button->setHidden(true);
        });
}

// ---- leaving

void OrvImageResultController::viewWillDisappear(bool animated) {
    OrvResultViewController::viewWillDisappear(animated);
    if (downloading && inputAsset_) {
        downloading = false;
        inputAsset_->cancelLoadFullResolutionImage();
    }
    dismissHub();
}

void OrvImageResultController::controllerWillDestory() {
    OrvResultViewController::controllerWillDestory();
    if (isAutoRemoveTemp_) OrvTSFileManager::deletePath(inputTempFilePath_);
}

void OrvImageResultController::dealloc() {
    controllerWillDestory();
    OrvResultViewController::dealloc();
}
