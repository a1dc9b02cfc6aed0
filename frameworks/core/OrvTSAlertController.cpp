#include "frameworks/core/OrvTSAlertController.h"

#include <algorithm>

#include "frameworks/core/OrvLocalized.h"
#include "platform/ui/Layer.h"
#include "platform/ui/Screen.h"

ORV_DEFINE_CLASS(OrvTSAlertController, ui::ViewController)

namespace {
constexpr double kBoxWidth = 270;
constexpr double kMargin = 16;
constexpr double kTitleHeight = 24;
constexpr double kButtonHeight = 44;
}  // namespace

std::shared_ptr<OrvTSAlertController> OrvTSAlertController::alertWithTitle(std::string title,
                                                                           std::string message) {
    auto alert = rt::make<OrvTSAlertController>();
    alert->alertTitle_ = std::move(title);
    alert->message_ = std::move(message);
    return alert;
}

void OrvTSAlertController::loadView() {
    const gfx::Rect screen = ui::Screen::main().bounds();
    auto dimmed = ui::makeView<ui::View>(screen);
    dimmed->setBackgroundColor(gfx::Color::white(0, 0.4));
    setView(dimmed);

    const double inner = kBoxWidth - 2 * kMargin;
    const gfx::Font messageFont = gfx::Font::systemFont(13);
    messageLabel_ = makeLabel(message_, messageFont, {kMargin, 0, inner, 0});
    messageLabel_->setNumberOfLines(0);
    const double messageHeight =
        std::min(messageLabel_->sizeThatFits({inner, 1e6}).height, screen.size.height / 2);
    const double messageTop = kMargin + kTitleHeight + 8;
    messageLabel_->setFrame({kMargin, messageTop, inner, messageHeight});
    titleLabel_ = makeLabel(alertTitle_, gfx::Font::boldSystemFont(17),
                            {kMargin, kMargin, inner, kTitleHeight});

    const double buttonTop = messageTop + messageHeight + kMargin;
    const double boxHeight = buttonTop + kButtonHeight;
    auto box = ui::makeView<ui::View>({0, 0, kBoxWidth, boxHeight});
    box->setCenter({screen.size.width / 2, screen.size.height / 2});
    box->setBackgroundColor(gfx::Color::whiteColor());
    box->layer().setCornerRadius(12);
    box->setClipsToBounds(true);
    box->addSubview(titleLabel_);
    box->addSubview(messageLabel_);
    makeOkButton({0, buttonTop, kBoxWidth, kButtonHeight});
    box->addSubview(okButton_);
    dimmed->addSubview(box);
}

std::shared_ptr<ui::Label> OrvTSAlertController::makeLabel(const std::string& text,
                                                           const gfx::Font& font,
                                                           const gfx::Rect& frame) const {
    auto label = ui::makeView<ui::Label>(frame);
    label->setText(text);
    label->setFont(font);
    label->setTextAlignment(gfx::TextAlignment::Center);
    return label;
}

void OrvTSAlertController::makeOkButton(const gfx::Rect& frame) {
    okButton_ = ui::Button::buttonWithType(static_cast<int>(ui::ButtonType::Custom));
    okButton_->setFrame(frame);
    okButton_->setTitle(orvLocalized("orv_alert_ok", "好的"), ui::ControlStateNormal);
    okButton_->setTitleColor(gfx::Color::rgb(0.0, 0.48, 1.0), ui::ControlStateNormal);
    std::weak_ptr<OrvTSAlertController> weak = self<OrvTSAlertController>();
    okButton_->addTarget(
        weak,
        [weak](ui::Control&, ui::Event*) {
            if (auto me = weak.lock()) me->dismissViewControllerAnimated(true, nullptr);
        },
        ui::ControlEventTouchUpInside);
}
