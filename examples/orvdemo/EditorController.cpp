#include "examples/orvdemo/EditorController.h"

#include "examples/orvdemo/DemoStyle.h"
#include "examples/orvdemo/ParameterToolView.h"
#include "frameworks/core/OrvLocalized.h"
#include "frameworks/core/OrvTSLog.h"
#include "orvviews/edit/OrvEditHDRControllerBase.h"
#include "orvviews/edit/OrvEditHolyLightControllerBase.h"
#include "orvviews/edit/OrvEditSharpnessControllerBase.h"
#include "orvviews/edit/OrvEditVignetteControllerBase.h"
#include "orvviews/views/OrvViewControllerExtension.h"
#include "orvviews/widgets/OrvEditActionType.h"
#include "platform/rt/Error.h"
#include "platform/ui/Label.h"

namespace orvdemo {

ORV_DEFINE_CLASS(EditorController, OrvEditMultipleControllerBase, OrvFilterResultControllerDelegate,
                 SmudgeToolDelegate, CropToolDelegate, OrvComponentErrorDelegate)

namespace {

struct ToolEntry {
    long action;
    const char* key;
    const char* title;
    const rt::Class* (*clazz)();
};

// The tools this application has, in the order of its tool bar.
const ToolEntry kTools[] = {
    {OrvEditActionTypeCuter, "orv_edit_tool_cuter", "裁剪", &CropToolController::staticClass},
    {OrvEditActionTypeHDR, "orv_edit_tool_hdr", "HDR", &OrvEditHDRControllerBase::staticClass},
    {OrvEditActionTypeHolyLight, "orv_edit_tool_holy", "柔光",
     &OrvEditHolyLightControllerBase::staticClass},
    {OrvEditActionTypeVignette, "orv_edit_tool_vignette", "暗角",
     &OrvEditVignetteControllerBase::staticClass},
    {OrvEditActionTypeSharpness, "orv_edit_tool_sharpness", "锐化",
     &OrvEditSharpnessControllerBase::staticClass},
    {OrvEditActionTypeSmudge, "orv_edit_tool_smudge", "涂抹", &SmudgeToolController::staticClass},
};

const ToolEntry* toolFor(long action) {
    for (const auto& tool : kTools) {
        if (tool.action == action) return &tool;
    }
    return nullptr;
}

std::string toolTitle(const ToolEntry& tool) {
    return orvLocalized(tool.key, tool.title);
}

constexpr double kTopBar = 56;
constexpr double kStepBar = 52;
constexpr double kToolBar = 64;

}  // namespace

void EditorController::init() {
    OrvEditMultipleControllerBase::init();
    std::vector<long> offered;
    for (const auto& tool : kTools) offered.push_back(tool.action);
    setModules(offered);
}

void EditorController::viewDidLoad() {
    OrvEditMultipleControllerBase::viewDidLoad();
    std::weak_ptr<EditorController> weak = self<EditorController>();
    asyncLoadInputImageWithBlock([weak]() -> gfx::ImagePtr {
        auto me = weak.lock();
        return me ? me->asyncLoadImage() : nullptr;
    });
}

// ---- the screen

void EditorController::buildDefaultStyleView() {
    const gfx::Size size = view()->bounds().size;
    view()->setBackgroundColor(DemoStyle::background());
    std::weak_ptr<EditorController> weak = self<EditorController>();
    auto call = [weak](void (EditorController::*action)()) {
        return [weak, action] {
            if (auto me = weak.lock()) ((*me).*action)();
        };
    };

    auto title = ui::makeView<ui::Label>({96, 0, size.width - 192, kTopBar});
    title->setText(orvLocalized("orv_edit_title", "编辑"));
    title->setFont(gfx::Font::boldSystemFont(18));
    title->setTextColor(gfx::Color::whiteColor());
    title->setTextAlignment(gfx::TextAlignment::Center);
    view()->addSubview(title);
    view()->addSubview(DemoStyle::button(orvLocalized("orv_nav_cancel", "取消"), {12, 11, 72, 34},
                                         DemoStyle::quiet(), weak,
                                         call(&EditorController::cancelAction)));
    doneButton_ =
        DemoStyle::button(orvLocalized("orv_edit_done", "完成"), {size.width - 84, 11, 72, 34},
                          DemoStyle::accent(), weak, call(&EditorController::onImageCompleteAtion));
    view()->addSubview(doneButton_);

    const double photoHeight = size.height - kTopBar - kStepBar - kToolBar;
    photoView_ = ui::makeView<ui::ImageView>({0, kTopBar, size.width, photoHeight});
    photoView_->setContentMode(ui::ContentMode::ScaleAspectFit);
    view()->addSubview(photoView_);
    buildStepBar(kTopBar + photoHeight);
    buildToolBar(size.height - kToolBar);
}

void EditorController::buildStepBar(double top) {
    std::weak_ptr<EditorController> weak = self<EditorController>();
    auto make = [&](const char* key, const char* text, double x, double width, auto action) {
        auto button = DemoStyle::button(orvLocalized(key, text), {x, top + 9, width, 34},
                                        DemoStyle::quiet(), weak, [weak, action] {
                                            if (auto me = weak.lock()) ((*me).*action)();
                                        });
        view()->addSubview(button);
        return button;
    };
    undoButton_ = make("orv_edit_undo", "撤销", 12, 76, &EditorController::onStepPreviewAction);
    redoButton_ = make("orv_edit_redo", "重做", 96, 76, &EditorController::onStepNextAction);
    autoButton_ = make("orv_edit_auto_adjust", "自动校色", view()->bounds().size.width - 132, 120,
                       &EditorController::onAutoAdjustAction);
    onRefreshStepStatesWithHistories(0, 0);
}

void EditorController::buildToolBar(double top) {
    auto bar = ui::makeView<ui::View>({0, top, view()->bounds().size.width, kToolBar});
    bar->setBackgroundColor(DemoStyle::panel());
    view()->addSubview(bar);
    std::weak_ptr<EditorController> weak = self<EditorController>();
    const auto& offered = modules();
    const double width = (bar->bounds().size.width - 12) / std::max<size_t>(1, offered.size());
    double x = 6;
    for (long action : offered) {
        const ToolEntry* tool = toolFor(action);
        if (!tool) continue;
        auto button = DemoStyle::button(toolTitle(*tool), {x + 3, 12, width - 6, 40},
                                        DemoStyle::quiet(), weak, [weak, action] {
                                            if (auto me = weak.lock()) me->onEditWithAction(action);
                                        });
        bar->addSubview(button);
        toolButtons_[action] = button;
        x += width;
    }
}

std::shared_ptr<ui::Button> EditorController::toolButton(long action) const {
    auto found = toolButtons_.find(action);
    return found == toolButtons_.end() ? nullptr : found->second;
}

void EditorController::setDisplayImage(const gfx::ImagePtr& image) {
    OrvEditMultipleControllerBase::setDisplayImage(image);
    if (photoView_) photoView_->setImage(image);
}

void EditorController::onRefreshStepStatesWithHistories(size_t histories, size_t brushies) {
    // The first step is the photo itself: there is nothing to undo below it.
    undoButton_->setEnabled(histories > 1);
    redoButton_->setEnabled(brushies > 0);
}

void EditorController::onRefreshAutoAdjustButtonEnable(bool enable) {
    autoButton_->setEnabled(enable);
}

// ---- tools

std::shared_ptr<OrvFilterResultController> EditorController::makeParameterTool(long action) {
    const ToolEntry* entry = toolFor(action);
    if (!entry) return nullptr;
    auto tool = rt::cast<OrvFilterResultController>(entry->clazz()->instantiate());
    tool->setViewClazz(ParameterToolView::staticClass());
    return tool;
}

std::shared_ptr<OrvImageResultController> EditorController::makeTool(long action) {
    if (action == OrvEditActionTypeCuter) {
        auto tool = rt::make<CropToolController>();
        tool->setDelegate(std::static_pointer_cast<CropToolDelegate>(self<EditorController>()));
        return tool;
    }
    if (action == OrvEditActionTypeSmudge) {
        auto tool = rt::make<SmudgeToolController>();
        tool->setDelegate(std::static_pointer_cast<SmudgeToolDelegate>(self<EditorController>()));
        return tool;
    }
    auto tool = makeParameterTool(action);
    if (tool) {
        tool->setDelegate(
            std::static_pointer_cast<OrvFilterResultControllerDelegate>(self<EditorController>()));
    }
    return tool;
}

void EditorController::onEditWithAction(long action) {
    const auto step = lastStepTemp();
    if (!step || openTool()) return;
    auto tool = makeTool(action);
    if (!tool) return;
    tool->setInputTempFilePath(step);
    tool->setSaveToTemp(true);
    tool->setErrorDelegate(
        std::static_pointer_cast<OrvComponentErrorDelegate>(self<EditorController>()));
    tool->view();  // builds the tool's screen, so that its buttons can be connected
    if (auto parameter = std::dynamic_pointer_cast<OrvFilterResultController>(tool)) {
        connectParameterTool(parameter, action);
    } else if (auto smudge = std::dynamic_pointer_cast<SmudgeToolController>(tool)) {
        connectCancel(*smudge->screen()->cancelButton());
    } else if (auto crop = std::dynamic_pointer_cast<CropToolController>(tool)) {
        connectCancel(*crop->cancelButton());
    }
    openTool_ = tool;
    ::orvPushViewController(*this, tool, true);
}

void EditorController::connectParameterTool(const std::shared_ptr<OrvFilterResultController>& tool,
                                            long action) {
    auto screen = std::dynamic_pointer_cast<ParameterToolView>(tool->defaultStyleView());
    if (!screen) return;
    screen->titleLabel()->setText(toolTitle(*toolFor(action)));
    std::weak_ptr<OrvFilterResultController> weakTool = tool;
    screen->doneButton()->addTarget(
        weakTool,
        [weakTool](ui::Control&, ui::Event*) {
            if (auto t = weakTool.lock()) t->onImageCompleteAtion();
        },
        ui::ControlEventTouchUpInside);
    connectCancel(*screen->cancelButton());
}

void EditorController::connectCancel(ui::Button& cancel) {
    std::weak_ptr<EditorController> weak = self<EditorController>();
    cancel.addTarget(
        weak,
        [weak](ui::Control&, ui::Event*) {
            if (auto me = weak.lock()) me->closeTool();
        },
        ui::ControlEventTouchUpInside);
}

void EditorController::closeTool() {
    if (!openTool()) return;
    openTool_.reset();
    ::orvPopViewControllerAnimated(*this, true);
}

void EditorController::onOrvKitFilterResult(OrvFilterResultController&, const ResultPtr& result) {
    takeToolResult(result);
}

void EditorController::onSmudgeToolResult(SmudgeToolController&, const ResultPtr& result) {
    takeToolResult(result);
}

void EditorController::onCropToolResult(CropToolController&, const ResultPtr& result) {
    takeToolResult(result);
}

void EditorController::takeToolResult(const ResultPtr& result) {
    if (result && result->imagePath()) {
        appendHistory(*result->imagePath());
        setDisplayImage(result->loadResultImage());
    }
    closeTool();
}

void EditorController::onComponent(const std::shared_ptr<ui::ViewController>&,
                                   const std::shared_ptr<OrvResult>&,
                                   const std::shared_ptr<rt::Error>& error) {
    // The saving road has put its message on the hub; the session keeps its steps.
    OrvTSLog::warn("a tool failed: %s", error ? error->description().c_str() : "(no error)");
    closeTool();
}

void EditorController::notifyProcessingWithResult(const ResultPtr& result) {
    dismissHub();
    if (auto delegate = delegate_.lock()) delegate->editorDidFinish(*this, result);
}

}  // namespace orvdemo
