#include "examples/orvdemo/SmudgeToolController.h"

#include "frameworks/core/OrvLocalized.h"
#include "orvviews/widgets/OrvEditActionType.h"
#include "platform/ui/Screen.h"

namespace orvdemo {

ORV_DEFINE_CLASS(SmudgeToolController, OrvEditSmudgeControllerBase)

namespace {

// The cursor is twelve times the number given, so this makes it as wide as a stamp.
double cursorUnits(long sizeCode) {
    return OrvSmudgeImageViewWrap::getBrushSizeValue(sizeCode) *
           ui::Screen::main().bounds().size.width / OrvSmudgeViewBase::kCursorFactor;
}

}  // namespace

void SmudgeToolController::viewDidLoad() {
    OrvEditSmudgeControllerBase::viewDidLoad();
    screen_ = ui::makeView<SmudgeToolView>(view()->bounds());
    view()->addSubview(screen_);
    screen_->titleLabel()->setText(orvLocalized("orv_edit_tool_smudge", "涂抹"));
    screen_->wrap()->setDelegate(
        std::static_pointer_cast<OrvSmudgeImageViewDelegate>(self<SmudgeToolController>()));
    screen_->wrap()->setMaxUndoCount(kUndoSteps);
    connectButtons();
    onRefreshStepStatesWithHistories(0, 0);
    screen_->showSizeChosen(sizeCode_);

    std::weak_ptr<SmudgeToolController> weak = self<SmudgeToolController>();
    const auto& bar = screen_->brushBar();
    bar->setOnSelected([weak](const std::shared_ptr<OrvBrush>& brush) {
        if (auto me = weak.lock()) me->onBrushChosen(brush);
    });
    bar->setAction(OrvEditActionTypeSmudge);
    bar->setSaveLastBrush(true);
    bar->loadBrushes();
    asyncLoadInputImageWithBlock([weak]() -> gfx::ImagePtr {
        auto me = weak.lock();
        return me ? me->inputImage() : nullptr;
    });
}

void SmudgeToolController::connectButtons() {
    std::weak_ptr<SmudgeToolController> weak = self<SmudgeToolController>();
    auto on = [&](const std::shared_ptr<ui::Button>& button, unsigned events, auto action) {
        button->addTarget(
            weak,
            [weak, action](ui::Control&, ui::Event*) {
                if (auto me = weak.lock()) action(*me);
            },
            events);
    };
    on(screen_->doneButton(), ui::ControlEventTouchUpInside,
       [](SmudgeToolController& me) { me.onImageCompleteAction(); });
    on(screen_->undoButton(), ui::ControlEventTouchUpInside,
       [](SmudgeToolController& me) { me.onUndoAction(); });
    on(screen_->redoButton(), ui::ControlEventTouchUpInside,
       [](SmudgeToolController& me) { me.onRedoAction(); });
    on(screen_->compareButton(), ui::ControlEventTouchDown,
       [](SmudgeToolController& me) { me.onOriginalActionStart(); });
    on(screen_->compareButton(),
       ui::ControlEventTouchUpInside | ui::ControlEventTouchUpOutside | ui::ControlEventTouchCancel,
       [](SmudgeToolController& me) { me.onOriginalActionEnd(); });
    for (long code = 1; code <= 3; ++code) {
        on(screen_->sizeButton(code), ui::ControlEventTouchUpInside,
           [code](SmudgeToolController& me) { me.chooseSize(code); });
    }
}

void SmudgeToolController::loadedInputImage(const gfx::ImagePtr& image) {
    OrvEditSmudgeControllerBase::loadedInputImage(image);
    screen_->wrap()->setImage(image);
    // The brush the bar chose came before the picture; the size goes after it.
    screen_->wrap()->setBrushSize(sizeCode_);
}

std::shared_ptr<ui::View> SmudgeToolController::smudgeView() const {
    return screen_ ? screen_->wrap() : nullptr;
}

void SmudgeToolController::onBrushChosen(const std::shared_ptr<OrvBrush>& brush) {
    setBrush(brush);
    if (!selectBrushCode(brush->code())) return;
    screen_->wrap()->setBrushSize(sizeCode_);
}

void SmudgeToolController::chooseSize(long code) {
    screen_->showBrushSizeAnim(cursorUnits(sizeCode_), cursorUnits(code));
    sizeCode_ = code;
    screen_->wrap()->setBrushSize(code);
    screen_->showSizeChosen(code);
}

void SmudgeToolController::onRefreshStepStatesWithHistories(uint64_t undoCount,
                                                            uint64_t redoCount) {
    screen_->undoButton()->setEnabled(undoCount > 0);
    screen_->redoButton()->setEnabled(redoCount > 0);
}

void SmudgeToolController::onSmudgeActionChanged(gfx::Point, gfx::Point viewLocation, double,
                                                 double) {
    screen_->showBrushSizeCursor(viewLocation);
}

void SmudgeToolController::onSmudgeActionEnd() {
    screen_->hideBrushSizeCursor();
}

void SmudgeToolController::notifyProcessingWithResult(const ResultPtr& result) {
    dismissHub();
    if (auto delegate = delegate_.lock()) delegate->onSmudgeToolResult(*this, result);
}

}  // namespace orvdemo
