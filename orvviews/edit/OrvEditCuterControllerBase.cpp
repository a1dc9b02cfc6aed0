#include "orvviews/edit/OrvEditCuterControllerBase.h"

#include "frameworks/core/OrvLocalized.h"
#include "frameworks/core/OrvRatioType.h"
#include "frameworks/core/OrvStatistics.h"
#include "platform/rt/Thread.h"

ORV_DEFINE_CLASS(OrvEditCuterControllerBase, OrvImageResultController)

void OrvEditCuterControllerBase::viewDidLoad() {
    OrvImageResultController::viewDidLoad();
    OrvStatistics::appendWithComponentIdt(kStatisticsIdt);
}

OrvTouchImageViewInterface* OrvEditCuterControllerBase::touchImage() const {
    return dynamic_cast<OrvTouchImageViewInterface*>(imageView().get());
}

double OrvEditCuterControllerBase::zoomScale() {
    if (zoomScale_ <= 0) zoomScale_ = 1.0;
    return zoomScale_;
}

std::vector<long> OrvEditCuterControllerBase::getRatioTypes() const {
    std::vector<long> types = !ratioTypeList_.empty()
                                  ? OrvRatioType::validRatioTypes(ratioTypeList_)
                                  : OrvRatioType::ratioTypes(ratioType_);
    return types.empty() ? OrvRatioType::orvOrvKitRatioDefaultTypes() : types;
}

long OrvEditCuterControllerBase::currentRatioType() {
    if (currentRatioType_ < 1) {
        std::vector<long> types = getRatioTypes();
        if (types.empty()) types = OrvRatioType::orvOrvKitRatioDefaultTypes();
        if (!types.empty()) setCurrentRatioType(types.front());
    }
    return currentRatioType_;
}

void OrvEditCuterControllerBase::setCurrentRatioType(long type) {
    currentRatioType_ = type;
    currentRatio_ = double(OrvRatioType::ratio(type));
    OrvStatistics::appendWithComponentIdt(OrvStatistics::componentTypeWithRatioType(type));
}

void OrvEditCuterControllerBase::setCuterResult(const std::shared_ptr<OrvResult>& result) {
    if (!result) return;
    cuterResult_ = result;
    zoomRect_ = result->cutRect();
    zoomScale_ = result->cutScale();
    setCurrentRatioType(result->cutRatioType());
}

void OrvEditCuterControllerBase::onImageCompleteAtion() {
    OrvTouchImageViewInterface* image = touchImage();
    if (!image || image->isInAniming()) return;
    if (enableShowHub) showHubWithStatus(orvLocalized("orv_save_saveToTemp", "正在处理..."));
    auto result = OrvResult::result();
    result->setImageOrientation(image->imageOrientation());
    if (currentRatio_ > 0) {
        result->setImageRatio(currentRatio_);
        result->setCutRect(image->countImageCutRect());
        result->setCutScale(image->zoomScale());
    }
    result->setCutRatioType(currentRatioType_);
    auto me = self<OrvEditCuterControllerBase>();
    rt::Thread::detach("orv-cuter-result", [me, result] { me->asyncEditWithResult(result); });
}

void OrvEditCuterControllerBase::asyncEditWithResult(const ResultPtr& result) {
    if (onlyReturnCuter_) {
        backUIThreadNotifyProcessingWithResult(result);
        return;
    }
    result->setImage(loadOrginImage());
    result->setImage(cuterImage(result->image(), result->cutRect(), result->imageOrientation()));
    asyncProcessingIfNeedSave(result);
}
