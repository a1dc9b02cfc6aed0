#include "examples/orvdemo/TurnCutToolController.h"

#include "examples/orvdemo/DemoStyle.h"
#include "frameworks/core/OrvLocalized.h"
#include "platform/ui/Label.h"

namespace orvdemo {

ORV_DEFINE_CLASS(TurnCutToolController, OrvEditTurnAndCutViewControllerBase)

namespace {

// The looks offered, by their codes in the filter package.
const char* const kLooks[] = {"Normal", "FM02", "PT03", "BW01"};

}  // namespace

void TurnCutToolController::viewDidLoad() {
    OrvEditTurnAndCutViewControllerBase::viewDidLoad();
    const gfx::Size size = view()->bounds().size;
    view()->setBackgroundColor(DemoStyle::background());
    const double photoHeight = size.height - kTopBar - 2 * kBar;
    touchView_ = ui::makeView<OrvTouchImageView>({0, kTopBar, size.width, photoHeight});
    touchView_->setClipsToBounds(true);
    view()->addSubview(touchView_);

    auto title = ui::makeView<ui::Label>({96, 0, size.width - 192, kTopBar});
    title->setText(orvLocalized("orv_edit_tool_turn_cut", "旋转裁剪"));
    title->setFont(gfx::Font::boldSystemFont(18));
    title->setTextColor(gfx::Color::whiteColor());
    title->setTextAlignment(gfx::TextAlignment::Center);
    view()->addSubview(title);
    std::weak_ptr<TurnCutToolController> weak = self<TurnCutToolController>();
    doneButton_ =
        DemoStyle::button(orvLocalized("orv_edit_apply", "应用"), {size.width - 84, 11, 72, 34},
                          DemoStyle::accent(), weak, [weak] {
                              if (auto me = weak.lock()) me->onImageCompleteAtion();
                          });
    view()->addSubview(doneButton_);
    buildBars(kTopBar + photoHeight, size.width);
    asyncLoadInputImageWithBlock([weak]() -> gfx::ImagePtr {
        auto me = weak.lock();
        return me ? me->inputImage() : nullptr;
    });
}

void TurnCutToolController::buildBars(double top, double width) {
    std::weak_ptr<TurnCutToolController> weak = self<TurnCutToolController>();
    const double step = (width - 12) / std::size(kLooks);
    for (size_t i = 0; i < std::size(kLooks); ++i) {
        const std::string code = kLooks[i];
        auto button = DemoStyle::button(code, {6 + step * i + 3, top + 10, step - 6, 36},
                                        DemoStyle::quiet(), weak, [weak, code] {
                                            if (auto me = weak.lock()) me->chooseLook(code);
                                        });
        view()->addSubview(button);
        lookButtons_[code] = button;
    }
    turnButton_ = DemoStyle::button(
        orvLocalized("orv_crop_turn_right", "右转"), {width / 2 - 60, top + kBar + 10, 120, 36},
        DemoStyle::quiet(), weak, [weak] {
            if (auto me = weak.lock()) me->touchView_->changeImage(OrvTouchImageView::kTurnRight);
        });
    view()->addSubview(turnButton_);
}

std::shared_ptr<ui::Button> TurnCutToolController::lookButton(const std::string& code) const {
    auto found = lookButtons_.find(code);
    return found == lookButtons_.end() ? nullptr : found->second;
}

void TurnCutToolController::chooseLook(const std::string& code) {
    if (!onSelectedFilterCode(code)) return;
    for (const auto& [c, button] : lookButtons_) {
        button->setBackgroundColor(c == code ? DemoStyle::accent() : DemoStyle::quiet());
    }
}

void TurnCutToolController::loadedInputImage(const gfx::ImagePtr& image) {
    OrvEditTurnAndCutViewControllerBase::loadedInputImage(image);
    // The window has the output's proportions.
    const gfx::Size out = cutSize();
    touchView_->setRegionRatio(out.height > 0 ? out.width / out.height : 0);
    touchView_->setImage(image);
}

void TurnCutToolController::notifyProcessingWithResult(const ResultPtr& result) {
    dismissHub();
    if (onResult_) onResult_(result);
}

}  // namespace orvdemo
