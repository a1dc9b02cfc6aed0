#include "platform/ui/NavigationBar.h"

#include <algorithm>

#include "platform/gfx/Canvas.h"
#include "platform/gfx/TextLayout.h"
#include "platform/ui/Touch.h"

namespace orv::ui {

ORV_DEFINE_CLASS(NavigationBar, View)

namespace {

constexpr double kMargin = 8;   // from the bar's edges to the buttons
constexpr double kPadding = 8;  // around a button's title or image
const char* const kBackArrow = "\u2039";

gfx::TextStyle buttonStyle(const BarButtonItem* item, const gfx::Color& tint) {
    gfx::TextStyle style;
    style.font = gfx::Font::systemFont(17);
    style.color = tint;
    style.numberOfLines = 1;
    style.lineBreak = gfx::LineBreakMode::TruncateTail;
    if (!item) return style;
    const bool enabled = item->isEnabled();
    const auto attributes = item->titleTextAttributes(enabled ? 0 : 2);
    const auto normal = item->titleTextAttributes(0);
    if (attributes.font)
        style.font = *attributes.font;
    else if (normal.font)
        style.font = *normal.font;
    if (attributes.foregroundColor)
        style.color = *attributes.foregroundColor;
    else if (normal.foregroundColor)
        style.color = *normal.foregroundColor;
    if (!enabled && !attributes.foregroundColor) style.color = style.color.withAlpha(0.35);
    return style;
}

}  // namespace

void NavigationBar::initWithFrame(const gfx::Rect& frame) {
    View::initWithFrame(frame);
    setBackgroundColor(gfx::Color::white(0.97));
}

void NavigationBar::dealloc() {
    if (top_) top_->setChangeObserver(nullptr);
    View::dealloc();
}

void NavigationBar::setItems(NavigationItem::Ptr top, NavigationItem::Ptr below) {
    if (top_ && top_ != top) top_->setChangeObserver(nullptr);
    top_ = std::move(top);
    below_ = std::move(below);
    observe(top_);
    setNeedsDisplay();
}

void NavigationBar::observe(const NavigationItem::Ptr& item) {
    if (!item) return;
    item->setChangeObserver([weak = weakSelf<NavigationBar>()] {
        if (auto bar = weak.lock()) bar->setNeedsDisplay();
    });
}

void NavigationBar::setTintColor(const gfx::Color& color) {
    tint_ = color;
    setNeedsDisplay();
}

// --- Buttons ------------------------------------------------------------------------------

std::optional<std::string> NavigationBar::backTitle() const {
    if (!below_ || !top_ || top_->hidesBackButton()) return std::nullopt;
    std::optional<std::string> name;
    if (const auto& back = below_->backBarButtonItem()) name = back->title();
    if (!name) name = below_->title();
    return name && !name->empty() ? std::string(kBackArrow) + " " + *name : kBackArrow;
}

std::optional<NavigationBar::Button> NavigationBar::buttonFor(const BarButtonItem::Ptr& item,
                                                              bool left) const {
    Button button;
    button.item = item;
    if (item) {
        button.title = item->title().value_or("");
    } else if (auto back = backTitle()) {
        button.title = *back;
    } else {
        return std::nullopt;
    }
    const gfx::Size barSize = bounds().size;
    double width = 0;
    if (item && item->image()) {
        width = item->image()->size().width;
    } else {
        width = gfx::TextLayout(button.title, buttonStyle(item.get(), tint_), {0, barSize.height})
                    .size()
                    .width;
    }
    width += 2 * kPadding;
    const double x = left ? kMargin : barSize.width - kMargin - width;
    button.frame = gfx::Rect(x, 0, width, barSize.height);
    return button;
}

std::optional<NavigationBar::Button> NavigationBar::leftButton() const {
    if (!top_) return std::nullopt;
    return buttonFor(top_->leftBarButtonItem(), true);
}

std::optional<NavigationBar::Button> NavigationBar::rightButton() const {
    if (!top_ || !top_->rightBarButtonItem()) return std::nullopt;
    return buttonFor(top_->rightBarButtonItem(), false);
}

void NavigationBar::press(const Button& button) const {
    if (button.item) {
        button.item->perform();
    } else if (backAction_) {
        auto action = backAction_;  // popping may replace this bar's items
        action();
    }
}

void NavigationBar::touchesEnded(const TouchSet& touches, Event* event) {
    if (touches.empty()) return;
    const gfx::Point p = touches.front()->locationInView(this);
    for (const auto& button : {leftButton(), rightButton()}) {
        if (button && gfx::rectContainsPoint(button->frame, p)) {
            press(*button);
            return;
        }
    }
}

// --- Drawing ------------------------------------------------------------------------------

void NavigationBar::drawRect(gfx::Canvas& canvas, const gfx::Rect& rect) {
    const gfx::Size size = bounds().size;
    canvas.fillRect(gfx::Rect(0, size.height - 0.5, size.width, 0.5), gfx::Color::white(0.7));

    double sideWidth = 0;
    for (const auto& button : {leftButton(), rightButton()}) {
        if (!button) continue;
        sideWidth = std::max(sideWidth, button->frame.size.width + kMargin);
        const auto& image = button->item ? button->item->image() : nullptr;
        if (image) {
            const gfx::Size s = image->size();
            canvas.drawImage(*image, gfx::Rect(gfx::rectGetMidX(button->frame) - s.width / 2,
                                               (size.height - s.height) / 2, s.width, s.height));
            continue;
        }
        gfx::TextStyle style = buttonStyle(button->item.get(), tint_);
        style.alignment = gfx::TextAlignment::Center;
        gfx::TextLayout text(button->title, style, {button->frame.size.width, size.height});
        const double h = text.size().height;
        text.draw(canvas, gfx::Rect(button->frame.origin.x, (size.height - h) / 2,
                                    button->frame.size.width, h));
    }

    if (!top_ || !top_->title() || top_->title()->empty()) return;
    gfx::TextStyle style;
    style.font = gfx::Font::boldSystemFont(17);
    style.alignment = gfx::TextAlignment::Center;
    style.numberOfLines = 1;
    style.lineBreak = gfx::LineBreakMode::TruncateTail;
    const double width = std::max(0.0, size.width - 2 * sideWidth);
    gfx::TextLayout title(*top_->title(), style, {width, size.height});
    const double h = title.size().height;
    title.draw(canvas, gfx::Rect(sideWidth, (size.height - h) / 2, width, h));
}

}  // namespace orv::ui
