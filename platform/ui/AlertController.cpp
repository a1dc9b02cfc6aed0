#include "platform/ui/AlertController.h"

#include <algorithm>
#include <cmath>

#include "platform/ui/Layer.h"
#include "platform/ui/Screen.h"

namespace orv::ui {

ORV_DEFINE_CLASS(AlertController, ViewController)

namespace {

constexpr double kAlertWidth = 270;
constexpr double kSheetMargin = 8;
constexpr double kMargin = 16;
constexpr double kButtonHeight = 44;
constexpr double kSheetButtonHeight = 56;
const gfx::Color kBlue = gfx::Color::rgb(0.0, 0.48, 1.0);
const gfx::Color kRed = gfx::Color::rgb(1.0, 0.23, 0.19);
const gfx::Color kLine = gfx::Color::white(0.8);

std::shared_ptr<Label> textLabel(const std::string& text, const gfx::Font& font, double width) {
    auto label = makeView<Label>({kMargin, 0, width - 2 * kMargin, 0});
    label->setText(text);
    label->setFont(font);
    label->setNumberOfLines(0);
    label->setTextAlignment(gfx::TextAlignment::Center);
    label->setTextColor(gfx::Color::white(0.1));
    const double height = label->sizeThatFits({width - 2 * kMargin, 1e6}).height;
    label->setFrame({kMargin, 0, width - 2 * kMargin, std::ceil(height)});
    return label;
}

}  // namespace

std::shared_ptr<AlertController> AlertController::alertControllerWithTitle(
    std::optional<std::string> title, std::optional<std::string> message,
    AlertControllerStyle style) {
    auto alert = rt::make<AlertController>();
    alert->title_ = std::move(title);
    alert->message_ = std::move(message);
    alert->style_ = style;
    return alert;
}

void AlertController::addAction(const std::shared_ptr<AlertAction>& action) {
    if (action) actions_.push_back(action);
}

std::shared_ptr<Button> AlertController::makeButton(const std::shared_ptr<AlertAction>& action) {
    auto button = Button::buttonWithType(static_cast<int>(ButtonType::Custom));
    button->setTitle(action->title(), ControlStateNormal);
    const bool cancel = action->style() == AlertActionStyle::Cancel;
    button->setTitleColor(action->style() == AlertActionStyle::Destructive ? kRed : kBlue,
                          ControlStateNormal);
    button->titleLabel().setFont(cancel ? gfx::Font::boldSystemFont(17)
                                        : gfx::Font::systemFont(17));
    button->setBackgroundColor(gfx::Color::whiteColor());
    std::weak_ptr<AlertController> weak = self<AlertController>();
    std::weak_ptr<AlertAction> weakAction = action;
    button->addTarget(
        weak,
        [weak, weakAction](Control&, Event*) {
            auto me = weak.lock();
            auto chosen = weakAction.lock();
            if (!me || !chosen) return;
            // Dismissed first, so that the action may present a screen of its own.
            me->dismissViewControllerAnimated(true, nullptr);
            chosen->perform();
        },
        ControlEventTouchUpInside);
    return button;
}

// The white box with the title and the message at its top; buttons go below `textBottom`.
std::shared_ptr<View> AlertController::makeBox(double width, double buttonsHeight, bool sheet) {
    auto box = makeView<View>({0, 0, width, 0});
    box->setBackgroundColor(kLine);
    box->layer().setCornerRadius(sheet ? 14 : 12);
    box->setClipsToBounds(true);
    double y = (title_ || message_) ? kMargin : 0;
    auto addText = [&](const std::string& text, const gfx::Font& font) {
        auto label = textLabel(text, font, width);
        label->setFrame({kMargin, y, width - 2 * kMargin, label->frame().size.height});
        box->addSubview(label);
        y += label->frame().size.height + 6;
    };
    if (title_) addText(*title_, gfx::Font::boldSystemFont(17));
    if (message_) addText(*message_, gfx::Font::systemFont(13));
    if (title_ || message_) y += kMargin - 6;
    // The text's part of the box is white; the buttons sit on hairlines of the grey below.
    auto textBack = makeView<View>({0, 0, width, y});
    textBack->setBackgroundColor(gfx::Color::whiteColor());
    box->insertSubview(textBack, 0);
    box->setFrame({0, 0, width, y + buttonsHeight});
    return box;
}

void AlertController::loadView() {
    const gfx::Rect screen = Screen::main().bounds();
    auto dimmed = makeView<View>(screen);
    dimmed->setBackgroundColor(gfx::Color::white(0, 0.4));
    setView(dimmed);
    buttons_.clear();
    for (const auto& action : actions_) buttons_.push_back(makeButton(action));

    if (style_ == AlertControllerStyle::Alert) {
        // Two buttons share a row; more stand one above the other.
        const bool row = actions_.size() == 2;
        const double buttonsHeight =
            actions_.empty()
                ? 0
                : (row ? kButtonHeight + 0.5 : actions_.size() * (kButtonHeight + 0.5));
        auto box = makeBox(kAlertWidth, buttonsHeight, false);
        double top = box->frame().size.height - buttonsHeight + 0.5;
        for (size_t i = 0; i < buttons_.size(); ++i) {
            const gfx::Rect frame =
                row ? gfx::Rect{i * (kAlertWidth / 2 + 0.25), top, kAlertWidth / 2 - 0.25,
                                kButtonHeight}
                    : gfx::Rect{0, top + i * (kButtonHeight + 0.5), kAlertWidth, kButtonHeight};
            buttons_[i]->setFrame(frame);
            box->addSubview(buttons_[i]);
        }
        box->setCenter({screen.size.width / 2, screen.size.height / 2});
        dimmed->addSubview(box);
        return;
    }
    // The sheet: the cancel action apart at the very bottom, the others in a panel above it.
    const double width = screen.size.width - 2 * kSheetMargin;
    std::vector<size_t> main;
    std::optional<size_t> cancel;
    for (size_t i = 0; i < actions_.size(); ++i) {
        if (actions_[i]->style() == AlertActionStyle::Cancel && !cancel) {
            cancel = i;
        } else {
            main.push_back(i);
        }
    }
    double bottom = screen.size.height - kSheetMargin;
    if (cancel) {
        auto& button = buttons_[*cancel];
        button->setFrame({kSheetMargin, bottom - kSheetButtonHeight, width, kSheetButtonHeight});
        button->layer().setCornerRadius(14);
        button->setClipsToBounds(true);
        dimmed->addSubview(button);
        bottom -= kSheetButtonHeight + kSheetMargin;
    }
    const double buttonsHeight = main.size() * (kSheetButtonHeight + 0.5);
    auto box = makeBox(width, buttonsHeight, true);
    double top = box->frame().size.height - buttonsHeight + 0.5;
    for (size_t k = 0; k < main.size(); ++k) {
        buttons_[main[k]]->setFrame(
            {0, top + k * (kSheetButtonHeight + 0.5), width, kSheetButtonHeight});
        box->addSubview(buttons_[main[k]]);
    }
    box->setFrame(
        {kSheetMargin, bottom - box->frame().size.height, width, box->frame().size.height});
    dimmed->addSubview(box);
}

}  // namespace orv::ui
