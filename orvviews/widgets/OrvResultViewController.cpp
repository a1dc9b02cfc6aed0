#include "orvviews/widgets/OrvResultViewController.h"

#include <algorithm>
#include <cstdio>

#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvLocalized.h"
#include "frameworks/core/OrvStatistics.h"
#include "frameworks/core/OrvTSAssetsManager.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "frameworks/core/OrvTSLog.h"
#include "frameworks/core/OrvWaterMarkOption.h"
#include "orvviews/widgets/sticker/OrvStickerFactory.h"
#include "platform/gfx/TextLayout.h"
#include "platform/rt/Memory.h"
#include "platform/rt/RunLoop.h"
#include "platform/ui/Screen.h"

ORV_DEFINE_CLASS(OrvResultViewController, OrvComponentsViewController)

namespace {

constexpr long kResultPipelineIdt = 0x405000;
constexpr long kTempWriteFailed = 1011;

}  // namespace

void OrvResultViewController::init() {
    OrvComponentsViewController::init();
    outputCompress_ = 0.95;
    enableShowHub = true;
}

void OrvResultViewController::viewDidLoad() {
    OrvComponentsViewController::viewDidLoad();
    if (!saveToAlbum_) return;
    auto me = self<OrvResultViewController>();
    OrvTSAssetsManager::testLibraryAuthor([me](const std::shared_ptr<rt::Error>& error) {
        if (!error) {
            me->hasAlbumAccess_ = true;
        } else {
            OrvTSAssetsManager::showAlertWithController(me, error);
        }
    });
}

double OrvResultViewController::outputCompress() {
    outputCompress_ = std::clamp(outputCompress_, 0.0, 1.0);
    return outputCompress_;
}

void OrvResultViewController::asyncProcessingIfNeedSave(const ResultPtr& result) {
    if (rt::RunLoop::isMainThread()) {
        notifyProcessingWithResult(result);
        return;
    }
    if (!asyncNotifyProcessingWithResult(result)) {
        if (saveToTemp_) {
            saveToTempWithResult(result);
        } else if (saveToAlbum_) {
            saveToAlbumWithResult(result);
        } else {
            backUIThreadNotifyProcessingWithResult(result);
        }
    }
    OrvStatistics::appendWithComponentIdt(kResultPipelineIdt);
    // The full-size render and its save are over: what they freed goes back to the system.
    rt::Memory::releaseFreeMemory();
}

void OrvResultViewController::notifyProcessingWithResult(const ResultPtr&) {
    OrvTSLog::debug(
        "You need overwrite the function of: - (void)notifyProcessingWithResult:(OrvResult "
        "*)result;");
}

bool OrvResultViewController::asyncNotifyProcessingWithResult(const ResultPtr&) {
    OrvTSLog::debug(
        "You need overwrite the function of: - (void)asyncNotifyProcessingWithResult:(OrvResult "
        "*)result;");
    return false;
}

void OrvResultViewController::backUIThreadNotifyProcessingWithResult(const ResultPtr& result) {
    auto me = self<OrvResultViewController>();
    rt::RunLoop::main().post([me, result] { me->notifyProcessingWithResult(result); });
}

void OrvResultViewController::saveToTempWithResult(const ResultPtr& result) {
    if (!result || !result->image()) return;
    bool written = false;
    {
        // The JPEG bytes live only in this scope; the full-size bitmap goes before the write.
        if (enableShowHub) showHubWithStatus(orvLocalized("orv_save_saveToTemp", "正在处理..."));
        result->setImagePath(result->buildTempFile());
        prepareMetadata(result);
        auto data = orvJpegDataWithCompress(result->image(), outputCompress(), result->metadata());
        result->setImage(nullptr);
        written =
            !data.empty() && OrvTSFileManager::writeDataAtomically(data, *result->imagePath());
    }
    if (written) {
        if (enableShowHub) {
            showHubSuccessWithStatus(orvLocalized("orv_save_saveToTemp_completed", "处理完成"));
        }
        backUIThreadNotifyProcessingWithResult(result);
        return;
    }
    if (enableShowHub) {
        showHubErrorWithStatus(orvLocalized("orv_save_saveToTemp_failed", "处理失败"));
    }
    char domain[512];
    std::snprintf(domain, sizeof domain, "CPError %s (%d): Write to temp file failed.",
                  description().c_str(), static_cast<int>(kTempWriteFailed));
    notifyError(rt::Error::errorWithDomain(domain, kTempWriteFailed), result);
}

void OrvResultViewController::saveToAlbumWithResult(const ResultPtr& result) {
    if (!result || !result->image()) {
        if (enableShowHub) {
            showHubErrorWithStatus(orvLocalized("orv_save_saveToAlbum_failed", "保存到相册失败"));
        }
        return;
    }
    if (!hasAlbumAccess_) {
        showHubErrorWithStatus(OrvTSAssetsManager::accessFailedInfo());
        return;
    }
    {
        if (enableShowHub)
            showHubWithStatus(orvLocalized("orv_save_saveToAlbum", "正在保存到相册..."));
        prepareMetadata(result);
        auto me = self<OrvResultViewController>();
        OrvTSAssetsManager::saveWithImage(
            result->image(), outputCompress(), result->metadata(), saveToAlbumName_,
            [me, result](std::shared_ptr<OrvTSAssetInterface> asset,
                         std::shared_ptr<rt::Error> error) {
                me->onAlbumSaved(result, std::move(asset), error);
            },
            nullptr);
        result->setImage(nullptr);
    }
}

void OrvResultViewController::prepareMetadata(const ResultPtr& result) {
    if (result->metadata().empty()) result->setMetadata(sourceMetadata());
    result->fixedMetadata();
}

void OrvResultViewController::onAlbumSaved(const ResultPtr& result,
                                           std::shared_ptr<OrvTSAssetInterface> asset,
                                           const std::shared_ptr<rt::Error>& error) {
    if (!error) {
        if (enableShowHub) {
            showHubSuccessWithStatus(orvLocalized("orv_save_saveToAlbum_succeed", "保存成功"));
        }
        result->setImageAsset(std::move(asset));
        backUIThreadNotifyProcessingWithResult(result);
        return;
    }
    OrvTSLog::error("%s asyncSaveToAlbumWithResult error: %s", className().c_str(),
                    error->description().c_str());
    if (enableShowHub) {
        showHubErrorWithStatus(orvLocalized("orv_save_saveToAlbum_failed", "保存到相册失败"));
    }
    notifyError(error, result);
}

namespace {

std::shared_ptr<OrvSticker> markSticker(int type) {
    auto sticker = OrvSticker::stickerWithType(type);
    sticker->setIdt(0);
    sticker->setCategoryId(0);
    sticker->setPreviewName("default");
    sticker->setStickerImageName("default");
    return sticker;
}

std::shared_ptr<OrvSticker> markTextSticker(const OrvWaterMarkOption& option) {
    auto text = OrvStickerText::textWithType(1);
    text->setText(option.markText());
    text->setAlignment(static_cast<int>(gfx::TextAlignment::Center));
    text->setSize(option.markTextSize());
    text->setColor(option.markTextColor());
    text->setShadowColor(option.markTextShadowColor());
    text->setRect(gfx::Rect(0, 0, 1, 1));
    auto sticker = markSticker(OrvSticker::kText);
    sticker->setSize(
        gfx::TextLayout::measure(option.markText(), gfx::Font::systemFont(text->size())));
    sticker->setTexts(OrvSticker::Texts{text});
    return sticker;
}

}  // namespace

gfx::ImagePtr OrvResultViewController::addWaterMarkToImage(const gfx::ImagePtr& image) const {
    if (!waterMarkOption_ || !waterMarkOption_->isValid()) return image;
    const OrvWaterMarkOption& option = *waterMarkOption_;
    const double s = ui::Screen::main().scale();
    gfx::Size block;
    std::shared_ptr<OrvSticker> picture, text;
    if (option.markImage()) {
        picture = markSticker(OrvSticker::kImage);
        picture->setImage(option.markImage());
        picture->setSize(option.markImage()->size());
        block = picture->size();
    }
    if (!option.markText().empty()) {
        text = markTextSticker(option);
        if (block.width > 0) {
            block.width += text->size().width + option.markTextPadding() * s;
            block.height = std::max(block.height, text->size().height);
        } else {
            block = text->size();
        }
    }
    const gfx::Size imageSize = image ? image->size() : gfx::Size{};
    OrvStickerFactory::Results marks;
    for (const auto& sticker : {picture, text}) {
        if (!sticker) continue;
        marks.push_back(
            createStickResult(sticker, block, imageSize, OrvWaterMarkOption::kTextAfterPicture));
    }
    return OrvStickerFactory::megerStickers(marks, image);
}

std::shared_ptr<OrvStickerResult> OrvResultViewController::createStickResult(
    const std::shared_ptr<OrvSticker>& sticker, gfx::Size displaySize, gfx::Size imageSize,
    int defaultTextPosition) const {
    const gfx::Size I = imageSize, D = displaySize, S = sticker->size();
    const double m =
        (waterMarkOption_ ? waterMarkOption_->markMargin() : 0) * ui::Screen::main().scale();
    const double xLeft = (S.width / 2 + m) / I.width;
    const double xRight = (I.width - S.width / 2 - m) / I.width;
    const double xBlockRightStart = (I.width - D.width - m + S.width / 2) / I.width;
    const double xBlockLeftEnd = (D.width - S.width / 2 + m) / I.width;
    const double xMiddleStart = (I.width / 2 - D.width / 2 + S.width / 2) / I.width;
    const double xMiddleEnd = (I.width / 2 + D.width / 2 - S.width / 2) / I.width;
    const double yBottom = (I.height - D.height / 2 - m) / I.height;
    const double yTop = (D.height / 2 + m) / I.height;

    const int position = waterMarkOption_ ? waterMarkOption_->markPosition() : 0;
    const int textPosition =
        waterMarkOption_ ? waterMarkOption_->markTextPosition() : defaultTextPosition;
    const bool swapped = D.width > S.width && textPosition != defaultTextPosition;
    // Without the swap the picture starts the block and the text ends it.
    const bool first = (sticker->type() == OrvSticker::kImage) != swapped;
    gfx::Point c;
    switch (position) {
        case OrvWaterMarkOption::kBottomLeft:
            c = {first ? xLeft : xBlockLeftEnd, yBottom};
            break;
        case OrvWaterMarkOption::kBottomRight:
            c = {first ? xBlockRightStart : xRight, yBottom};
            break;
        case OrvWaterMarkOption::kTopRight:
            c = {first ? xBlockRightStart : xRight, yTop};
            break;
        case OrvWaterMarkOption::kTopLeft:
            c = {first ? xLeft : xBlockLeftEnd, yTop};
            break;
        case OrvWaterMarkOption::kCenter:
            c = {first ? xMiddleStart : xMiddleEnd, 0.5};
            break;
        default:
            c = {swapped ? xBlockRightStart : xRight, yBottom};
            break;
    }
    return OrvStickerResult::initWithSticker(
        sticker, gfx::Rect(c, {S.width / I.width, S.height / I.height}), 0);
}
