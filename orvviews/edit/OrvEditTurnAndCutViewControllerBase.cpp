#include "orvviews/edit/OrvEditTurnAndCutViewControllerBase.h"

#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvLocalized.h"
#include "frameworks/core/OrvStatistics.h"
#include "orvviews/shower/OrvImageShowerImpl.h"
#include "platform/rt/RunLoop.h"
#include "platform/rt/Thread.h"

ORV_DEFINE_CLASS(OrvEditTurnAndCutViewControllerBase, OrvImageResultController)

void OrvEditTurnAndCutViewControllerBase::viewDidLoad() {
    OrvImageResultController::viewDidLoad();
    OrvStatistics::appendWithComponentIdt(kStatisticsIdt);
}

OrvTouchImageViewInterface* OrvEditTurnAndCutViewControllerBase::touchImage() const {
    return dynamic_cast<OrvTouchImageViewInterface*>(imageView().get());
}

gfx::ImagePtr OrvEditTurnAndCutViewControllerBase::inputImage() {
    return cachedOriginalImage_ ? cachedOriginalImage_ : OrvImageResultController::inputImage();
}

void OrvEditTurnAndCutViewControllerBase::loadedInputImage(const gfx::ImagePtr& image) {
    OrvImageResultController::loadedInputImage(image);
    // Not fetched again for each look previewed.
    if (downloadedFromServer) cachedOriginalImage_ = image;
}

bool OrvEditTurnAndCutViewControllerBase::onSelectedFilterCode(const std::string& code) {
    if (!touchImage()) return false;
    if (selectedFilterCode_ && *selectedFilterCode_ == code) return false;
    selectedFilterCode_ = code;
    if (enableShowHub) showHubWithStatus(orvLocalized("orv_save_saveToTemp", "正在处理..."));
    auto me = self<OrvEditTurnAndCutViewControllerBase>();
    rt::Thread::detach("orv-turn-cut-filter", [me, code] { me->asyncFilterProcessing(code); });
    return true;
}

void OrvEditTurnAndCutViewControllerBase::asyncFilterProcessing(const std::string& code) {
    gfx::ImagePtr image = OrvImageShowerImpl::filterImage(inputImage(), code, nullptr);
    auto me = self<OrvEditTurnAndCutViewControllerBase>();
    rt::RunLoop::main().post([me, image] { me->Filterprocessed(image); });
}

// Straight on the inner picture view: the zoomable image keeps its layout and orientation.
void OrvEditTurnAndCutViewControllerBase::Filterprocessed(const gfx::ImagePtr& image) {
    if (auto* touch = touchImage(); touch && touch->imageView()) {
        touch->imageView()->setImage(image ? orvChangeOrientation(image, touch->imageOrientation())
                                           : image);
    }
    dismissHub();
}

void OrvEditTurnAndCutViewControllerBase::onImageCompleteAtion() {
    OrvTouchImageViewInterface* image = touchImage();
    if (downloading || !image || image->inActioning()) return;
    if (enableShowHub) showHubWithStatus(orvLocalized("orv_save_saveToTemp", "正在处理..."));
    auto result = OrvResult::result();
    result->setCutRect(image->countImageCutRect());
    result->setCutSize(cutSize_);
    result->setImageOrientation(image->imageOrientation());
    result->setFilterCode(selectedFilterCode_);
    auto me = self<OrvEditTurnAndCutViewControllerBase>();
    rt::Thread::detach("orv-turn-cut-result", [me, result] { me->asyncEditWithResult(result); });
}

void OrvEditTurnAndCutViewControllerBase::asyncEditWithResult(const ResultPtr& result) {
    result->setImage(loadOrginImage());
    // The turn first: the crop was measured on the turned picture.
    result->setImage(orvChangeOrientation(result->image(), result->imageOrientation()));
    if (cutSize_.width > 0 && cutSize_.height > 0) {
        result->setImage(
            orvImageCorpWithPrecentRect(result->image(), result->cutRect(), result->cutSize()));
    }
    if (result->filterCode()) {
        result->setImage(
            OrvImageShowerImpl::filterImage(result->image(), result->filterCode(), nullptr));
    }
    asyncProcessingIfNeedSave(result);
}

void OrvEditTurnAndCutViewControllerBase::controllerWillDestory() {
    cachedOriginalImage_.reset();
    OrvImageResultController::controllerWillDestory();
}
