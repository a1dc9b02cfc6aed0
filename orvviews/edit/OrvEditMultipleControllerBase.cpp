#include "orvviews/edit/OrvEditMultipleControllerBase.h"

#include <algorithm>
#include <cmath>

#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvLocalized.h"
#include "frameworks/core/OrvNKImageAutoColorAnalysis.h"
#include "frameworks/core/OrvRatioType.h"
#include "frameworks/core/OrvStatistics.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "frameworks/core/OrvTSLog.h"
#include "frameworks/core/OrvThread.h"
#include "orvviews/shower/OrvImageShowerImpl.h"
#include "orvviews/widgets/OrvEditActionType.h"
#include "platform/rt/Error.h"
#include "platform/rt/Thread.h"
#include "platform/ui/Screen.h"

ORV_DEFINE_CLASS(OrvEditMultipleControllerBase, OrvImageResultController)

namespace {

constexpr long kEditMultipleIdt = 0x407000;
constexpr long kDefaultRatioMask = 0x1f;
// Steps are kept at this quality whatever the output quality is: a step is read again by the
// next tool, and each generation should lose as little as possible.
constexpr double kStepCompress = 0.95;
constexpr long kInputUnreadable = 1012;

std::string processingText() {
    return orvLocalized("orv_edit_processing", "正在处理...");
}

std::string autoColorErrorText() {
    return orvLocalized("orv_edit_process_error_autoColorAnalysis",
                        "设备未联网，无法使用自动校色功能");
}

bool hasFile(const std::optional<std::string>& path) {
    return path && OrvTSFileManager::isExistFileAtPath(path);
}

}  // namespace

void OrvEditMultipleControllerBase::init() {
    OrvImageResultController::init();
    ratioType_ = kDefaultRatioMask;
    histories.clear();
    brushies.clear();
}

void OrvEditMultipleControllerBase::viewDidLoad() {
    OrvStatistics::appendWithComponentIdt(kEditMultipleIdt);
    OrvImageResultController::viewDidLoad();
}

const std::vector<long>& OrvEditMultipleControllerBase::modules() {
    if (modules_.empty()) modules_ = OrvEditActionType::multipleActionTypes();
    std::erase_if(modules_, [](long type) { return !OrvEditActionType::isValid(type); });
    return modules_;
}

std::vector<long> OrvEditMultipleControllerBase::getRatioTypes() const {
    auto types = ratioTypeList_.empty() ? OrvRatioType::ratioTypes(ratioType_)
                                        : OrvRatioType::validRatioTypes(ratioTypeList_);
    if (types.empty()) types = OrvRatioType::orvOrvKitRatioDefaultTypes();
    return types;
}

double OrvEditMultipleControllerBase::limitSize() const {
    if (limitSideSize_ != 0) return static_cast<double>(limitSideSize_);
    const gfx::Size pixels = ui::Screen::main().sizeInPixels();
    return std::max(pixels.width, pixels.height);
}

// ---- the first step

gfx::ImagePtr OrvEditMultipleControllerBase::asyncLoadImage() {
    auto result = OrvResult::result();
    result->setImage(readInput(result));
    return handleImageData(result);
}

gfx::ImagePtr OrvEditMultipleControllerBase::readInput(const std::shared_ptr<OrvResult>& result) {
    const auto& path = inputTempFilePath();
    gfx::ImagePtr image;
    if (hasFile(path)) {
        // Without a ratio to crop to, the decoder can reduce the picture to the step's size
        // while it reads, which keeps a large photo from ever being whole in memory.
        const bool crops = OrvRatioType::ratio(getRatioTypes().front()) > 0;
        codec::ImageMetadata metadata;
        image = orvImageWithContentsOfFileLimit(
            *path, crops ? 0 : static_cast<int>(std::ceil(limitSize())), &metadata);
        result->setMetadata(std::move(metadata));
    } else if (inputAsset()) {
        result->setMetadata(sourceMetadata());
        image = inputAsset()->fullResolutionImage();
        // The zero-size placeholder: the photo lies in the cloud, checkImageValid() fetches it.
        if (!image) image = gfx::Image::empty();
    }
    if (!image) image = inputImage();
    if (!image && hasFile(path)) inputUnreadable_ = true;
    return image;
}

gfx::ImagePtr OrvEditMultipleControllerBase::handleImageData(
    const std::shared_ptr<OrvResult>& result) {
    if (!result->image()) return nullptr;
    const float ratio = OrvRatioType::ratio(getRatioTypes().front());
    const double limit = limitSize();
    // Steps are stored upright, so every tool and every later reader sees the same pixels.
    result->setImage(
        orvImageRotatedToUp(orvImageResize(result->image(), gfx::Size{limit, limit}, true, ratio)));
    result->setImagePath(result->buildTempFile());
    result->fixedMetadata();
    const auto data = orvJpegDataWithCompress(result->image(), kStepCompress, result->metadata());
    if (data.empty() || !OrvTSFileManager::writeDataAtomically(data, *result->imagePath())) {
        return result->image();
    }
    result->setImage(orvFullScreenImageKeepOrientation(result->image()));
    histories.push_back(*result->imagePath());
    return result->image();
}

bool OrvEditMultipleControllerBase::checkImageValid(
    const gfx::ImagePtr& image, OrvTSAssetInterface::FullResolutionHandler handler) {
    if (!image || (image->size().width > 0 && image->size().height > 0)) return true;
    auto result = OrvResult::result();
    // The asset may keep the block as long as it lives, and the session holds the asset.
    std::weak_ptr<OrvEditMultipleControllerBase> weak = self<OrvEditMultipleControllerBase>();
    inputAsset()->asyncFullResolutionImage(
        [weak, result, handler](gfx::ImagePtr full, double progress,
                                std::shared_ptr<rt::Error> error) {
            auto me = weak.lock();
            if (!me) return;
            // Once downloaded, the photo's file carries its EXIF for the first step.
            if (full && result->metadata().empty()) result->setMetadata(me->sourceMetadata());
            result->setImage(std::move(full));
            handler(me->handleImageData(result), progress, error);
        });
    return false;
}

bool OrvEditMultipleControllerBase::onInputImageMissing() {
    if (!inputUnreadable_) return false;
    showHubErrorWithStatus(orvLocalized("orv_edit_load_failed", "无法读取这张图片"));
    OrvTSLog::error("%s could not read %s", className().c_str(),
                    inputTempFilePath() ? inputTempFilePath()->c_str() : "(null)");
    notifyError(rt::Error::errorWithDomain("OrvEditMultiple: the input photo could not be read",
                                           kInputUnreadable),
                nullptr);
    return true;
}

// ---- steps

void OrvEditMultipleControllerBase::appendHistory(const std::string& path) {
    if (!OrvTSFileManager::isExistFileAtPath(path)) return;
    if (disableStepsSave_) {
        clearSteps(histories);
        histories.push_back(path);
        return;
    }
    histories.push_back(path);
    clearSteps(brushies);
    refreshStepStates();
}

void OrvEditMultipleControllerBase::clearSteps(std::vector<std::string>& steps) {
    OrvTSFileManager::deletePaths(steps);
    steps.clear();
}

std::optional<std::string> OrvEditMultipleControllerBase::lastStepTemp() const {
    if (histories.empty()) return std::nullopt;
    return histories.back();
}

void OrvEditMultipleControllerBase::onStepPreviewAction() {
    if (histories.empty()) return;
    brushies.push_back(histories.back());
    histories.pop_back();
    refreshStepStates();
    asyncLoadStepImage();
}

void OrvEditMultipleControllerBase::onStepNextAction() {
    if (brushies.empty()) return;
    histories.push_back(brushies.back());
    brushies.pop_back();
    refreshStepStates();
    asyncLoadStepImage();
}

void OrvEditMultipleControllerBase::refreshStepStates() {
    onRefreshStepStatesWithHistories(histories.size(), brushies.size());
}

void OrvEditMultipleControllerBase::asyncLoadStepImage() {
    const auto path = lastStepTemp();
    if (!hasFile(path)) return;
    showHubWithStatus(orvLocalized("orv_edit_loading", "正在读取..."));
    auto me = self<OrvEditMultipleControllerBase>();
    OrvThread::initWithStart(
        [file = *path]() -> std::shared_ptr<rt::Object> {
            // Read reduced: the screen needs no more, and the step may be photo-sized.
            return orvFullScreenImageWithContentsOfFile(file);
        },
        [me](std::shared_ptr<rt::Object> object) {
            me->dismissHub();
            me->setDisplayImage(std::dynamic_pointer_cast<gfx::Image>(object));
        });
}

// ---- auto adjust

void OrvEditMultipleControllerBase::onAutoAdjustAction() {
    onRefreshAutoAdjustButtonEnable(false);
    if (!autoAdjust) {
        autoAdjust = rt::make<OrvNKImageAutoColorAnalysis>();
    } else {
        autoAdjust->reset();
    }
    showHubWithStatus(processingText());
    // The thumbnail is the session's input, not the current step: the screen shows the input
    // corrected until a later step is shown, while the step itself is the corrected top step.
    const auto thumb = inputImage();
    const std::string input = lastStepTemp().value_or("");
    const std::string output = OrvResult::result()->buildTempFile();
    auto me = self<OrvEditMultipleControllerBase>();
    autoAdjust->analysisWithThumb(
        thumb, input, output,
        [me, thumb, input, output](std::shared_ptr<OrvNKImageColorArgument> args, long status) {
            if (status != 1) {
                OrvTSLog::error("error on auto adjust:%ld", status);
                me->onAutoAdjustFailed();
                return;
            }
            me->setDisplayImage(OrvImageShowerImpl::autoColorAnalysis(thumb, args));
            me->copyAnalysisWithInput(input, output);
        });
}

void OrvEditMultipleControllerBase::copyAnalysisWithInput(const std::string& input,
                                                          const std::string& output) {
    auto me = self<OrvEditMultipleControllerBase>();
    autoAdjust->copyAnalysisWithInput(input, output, [me](std::optional<std::string> path) {
        if (!hasFile(path)) {
            OrvTSLog::error("error on saving temp file");
            me->onAutoAdjustFailed();
            return;
        }
        me->appendHistory(*path);
        me->dismissHub();
    });
}

void OrvEditMultipleControllerBase::onAutoAdjustFailed() {
    showHubErrorWithStatus(autoColorErrorText());
    onRefreshAutoAdjustButtonEnable(true);
}

// ---- finishing

void OrvEditMultipleControllerBase::onImageCompleteAtion() {
    if (downloading) return;
    auto result = OrvResult::result();
    result->setImagePath(lastStepTemp());
    if (!hasFile(result->imagePath())) return;
    showHubWithStatus(processingText());
    auto me = self<OrvEditMultipleControllerBase>();
    rt::Thread::detach("orv-edit-multiple", [me, result] { me->asyncEditWithResult(result); });
}

void OrvEditMultipleControllerBase::asyncEditWithResult(const ResultPtr& result) {
    // The step carries the photo's EXIF; the result takes it on to the saved file.
    codec::ImageMetadata metadata;
    result->setImage(orvImageWithContentsOfFileLimit(*result->imagePath(), 0, &metadata));
    result->setMetadata(std::move(metadata));
    if (waterMarkOption()) result->setImage(addWaterMarkToImage(result->image()));
    OrvTSLog::debug("asyncEditWithResult: %s",
                    gfx::toString(result->image() ? result->image()->size() : gfx::Size{}).c_str());
    asyncProcessingIfNeedSave(result);
}

// ---- the end

void OrvEditMultipleControllerBase::controllerWillDestory() {
    OrvImageResultController::controllerWillDestory();
    // The top step may be the delivered result itself, so the undo stack stays unless asked.
    if (isAutoRemoveTemp()) clearSteps(histories);
    clearSteps(brushies);
}
