#include "orvviews/edit/OrvEditSmudgeControllerBase.h"

#include "frameworks/core/OrvBrushLocalPackage.h"
#include "frameworks/core/OrvLocalized.h"
#include "frameworks/core/OrvStatistics.h"
#include "orvviews/views/OrvViewControllerExtension.h"
#include "platform/rt/Thread.h"

ORV_DEFINE_CLASS(OrvEditSmudgeControllerBase, OrvImageResultController, OrvSmudgeImageViewDelegate)

void OrvEditSmudgeControllerBase::viewDidLoad() {
    OrvImageResultController::viewDidLoad();
    OrvStatistics::appendWithComponentIdt(kStatisticsIdt);
}

OrvSmudgeImageViewInterface* OrvEditSmudgeControllerBase::smudgeInterface() const {
    return dynamic_cast<OrvSmudgeImageViewInterface*>(smudgeView().get());
}

bool OrvEditSmudgeControllerBase::selectBrushCode(const std::string& code) {
    auto brush = OrvBrushLocalPackage::package()->brushWithCode(code);
    if (!brush) return false;
    if (auto* canvas = smudgeInterface()) canvas->setBrush(brush);
    return true;
}

void OrvEditSmudgeControllerBase::onUndoAction() {
    if (auto* canvas = smudgeInterface()) canvas->undo();
}

void OrvEditSmudgeControllerBase::onRedoAction() {
    if (auto* canvas = smudgeInterface()) canvas->redo();
}

void OrvEditSmudgeControllerBase::onOriginalActionStart() {
    if (auto* canvas = smudgeInterface()) canvas->showOriginal(true);
}

void OrvEditSmudgeControllerBase::onOriginalActionEnd() {
    if (auto* canvas = smudgeInterface()) canvas->showOriginal(false);
}

void OrvEditSmudgeControllerBase::onImageCompleteAction() {
    if (!smudgeView()) {
        orvBackActionHadAnimated(*this);
        return;
    }
    showHubWithStatus(orvLocalized("orv_edit_processing", "正在处理..."));
    auto result = OrvResult::result();
    auto me = self<OrvEditSmudgeControllerBase>();
    rt::Thread::detach("orv-smudge-result", [me, result] { me->asyncEditWithResult(result); });
}

void OrvEditSmudgeControllerBase::asyncEditWithResult(const ResultPtr& result) {
    result->setImage(loadOrginImage());
    if (auto* canvas = smudgeInterface()) result->setImage(canvas->getCanvasImage(result->image()));
    asyncProcessingIfNeedSave(result);
}

void OrvEditSmudgeControllerBase::dealloc() {
    if (auto* canvas = smudgeInterface()) canvas->destroy();
    OrvImageResultController::dealloc();
}
