#include "examples/orvdemo/HubDemoController.h"

#include "platform/ui/Button.h"
#include "platform/ui/Label.h"
#include "platform/ui/Layer.h"

namespace orvdemo {

ORV_DEFINE_CLASS(HubDemoController, OrvImageResultController)

namespace {

std::shared_ptr<ui::Label> makeLabel(const gfx::Rect& frame, const std::string& text,
                                     const gfx::Font& font, const gfx::Color& color) {
    auto label = ui::makeView<ui::Label>(frame);
    label->setText(text);
    label->setFont(font);
    label->setTextColor(color);
    label->setTextAlignment(gfx::TextAlignment::Center);
    label->setNumberOfLines(0);
    return label;
}

}  // namespace

void HubDemoController::buildDefaultStyleView() {
    const gfx::Rect bounds = view()->bounds();
    const double width = bounds.size.width;
    titleLabel_ = makeLabel({20, 80, width - 40, 40}, "OrvViews", gfx::Font::boldSystemFont(28),
                            gfx::Color::whiteColor());
    detailLabel_ = makeLabel({30, 130, width - 60, 60}, "消息中心演示 · Message hub demo",
                             gfx::Font::systemFont(16), gfx::Color::white(0.8));

    doneButton_ = ui::Button::buttonWithType(0);
    doneButton_->setFrame({(width - 160) / 2, bounds.size.height - 110, 160, 48});
    doneButton_->setTitle("完成 Done", ui::ControlStateNormal);
    doneButton_->setTitleColor(gfx::Color::whiteColor(), ui::ControlStateNormal);
    doneButton_->setBackgroundColor(gfx::Color::rgb(0.16, 0.49, 0.98));
    doneButton_->layer().setCornerRadius(24);
    std::weak_ptr<HubDemoController> weak = self<HubDemoController>();
    doneButton_->addTarget(
        weak,
        [weak](ui::Control&, ui::Event*) {
            if (auto me = weak.lock()) me->onDone();
        },
        ui::ControlEventTouchUpInside);

    view()->addSubview(titleLabel_);
    view()->addSubview(detailLabel_);
    view()->addSubview(doneButton_);
    configDefaultStyleView(view());
}

void HubDemoController::configDefaultStyleView(const std::shared_ptr<ui::View>& view) {
    view->setBackgroundColor(gfx::Color::rgb(0.13, 0.14, 0.18));
}

void HubDemoController::onDone() {
    if (auto delegate = delegate_.lock()) delegate->hubDemoControllerDidFinish(*this);
}

}  // namespace orvdemo
