#include "orvviews/widgets/OrvResultViewController.h"

#include <algorithm>
#include <cstdio>

#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvLocalized.h"
#include "frameworks/core/OrvStatistics.h"
#include "frameworks/core/OrvTSAssetsManager.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "frameworks/core/OrvTSLog.h"
#include "platform/rt/RunLoop.h"

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
        result->fixedMetadata();
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
        result->fixedMetadata();
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
