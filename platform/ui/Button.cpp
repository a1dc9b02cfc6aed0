#include "platform/ui/Button.h"

#include <algorithm>

#include "platform/ui/ImageView.h"
#include "platform/ui/Label.h"

namespace orv::ui {

ORV_DEFINE_CLASS(Button, Control)

namespace {

constexpr double kDefaultTitleSize = 15;

bool isSet(const std::optional<std::string>& v) {
    return v.has_value();
}
bool isSet(const std::optional<gfx::Color>& v) {
    return v.has_value();
}
bool isSet(const gfx::ImagePtr& v) {
    return v != nullptr;
}

template <class V>
std::shared_ptr<V> passiveSubview() {
    auto view = makeView<V>();
    view->setUserInteractionEnabled(false);
    return view;
}

}  // namespace

std::shared_ptr<Button> Button::buttonWithType(int type) {
    auto button = makeView<Button>();
    button->buttonType_ = type;
    button->showCurrentContent();
    return button;
}

void Button::initWithFrame(const gfx::Rect& frame) {
    Control::initWithFrame(frame);
    backgroundView_ = passiveSubview<ImageView>();
    backgroundView_->setContentMode(ContentMode::ScaleToFill);
    imageView_ = passiveSubview<ImageView>();
    imageView_->setContentMode(ContentMode::Center);
    titleLabel_ = passiveSubview<Label>();
    titleLabel_->setFont(gfx::Font::systemFont(kDefaultTitleSize));
    titleLabel_->setTextAlignment(gfx::TextAlignment::Center);
    addSubview(backgroundView_);
    addSubview(imageView_);
    addSubview(titleLabel_);
    showCurrentContent();
}

void Button::setTitle(std::optional<std::string> title, unsigned state) {
    content_[state].title = std::move(title);
    showCurrentContent();
}

std::optional<std::string> Button::titleForState(unsigned state) const {
    return lookup(state, &Content::title);
}

void Button::setTitleColor(std::optional<gfx::Color> color, unsigned state) {
    content_[state].titleColor = color;
    showCurrentContent();
}

std::optional<gfx::Color> Button::titleColorForState(unsigned state) const {
    return lookup(state, &Content::titleColor);
}

void Button::setImage(gfx::ImagePtr image, unsigned state) {
    content_[state].image = std::move(image);
    showCurrentContent();
}

gfx::ImagePtr Button::imageForState(unsigned state) const {
    return lookup(state, &Content::image);
}

void Button::setBackgroundImage(gfx::ImagePtr image, unsigned state) {
    content_[state].backgroundImage = std::move(image);
    showCurrentContent();
}

gfx::ImagePtr Button::backgroundImageForState(unsigned state) const {
    return lookup(state, &Content::backgroundImage);
}

gfx::Color Button::currentTitleColor() const {
    if (auto color = titleColorForState(state())) return *color;
    // A system button's title takes the tint; a custom one's is white.
    return buttonType_ == static_cast<int>(ButtonType::System) ? ImageView::defaultTintColor()
                                                               : gfx::Color::whiteColor();
}

void Button::layoutSubviews() {
    Control::layoutSubviews();
    const gfx::Rect b = bounds();
    backgroundView_->setFrame(b);
    const gfx::Size image = imageSize();
    const gfx::Size title = titleSize({std::max(0.0, b.size.width - image.width), b.size.height});
    double x = b.origin.x + (b.size.width - image.width - title.width) / 2;
    const double midY = b.origin.y + b.size.height / 2;
    imageView_->setFrame({x, midY - image.height / 2, image.width, image.height});
    x += image.width;
    titleLabel_->setFrame({x, midY - title.height / 2, title.width, title.height});
}

gfx::Size Button::sizeThatFits(gfx::Size size) const {
    const gfx::Size image = imageSize();
    const gfx::Size title = titleSize({std::max(0.0, size.width - image.width), size.height});
    gfx::Size fit{image.width + title.width, std::max(image.height, title.height)};
    if (auto background = currentBackgroundImage()) {
        fit.width = std::max(fit.width, background->size().width);
        fit.height = std::max(fit.height, background->size().height);
    }
    return fit;
}

void Button::stateDidChange() {
    Control::stateDidChange();
    showCurrentContent();
}

template <class T>
T Button::lookup(unsigned state, T Content::*field) const {
    for (unsigned s : {state, unsigned{ControlStateNormal}}) {
        auto it = content_.find(s);
        if (it != content_.end() && isSet(it->second.*field)) return it->second.*field;
    }
    return T{};
}

void Button::showCurrentContent() {
    if (!titleLabel_) return;  // not built yet
    const auto title = currentTitle();
    titleLabel_->setText(title.value_or(""));
    titleLabel_->setHidden(!title || title->empty());
    titleLabel_->setTextColor(currentTitleColor());
    imageView_->setImage(currentImage());
    imageView_->setHidden(!currentImage());
    backgroundView_->setImage(currentBackgroundImage());
    backgroundView_->setHidden(!currentBackgroundImage());
    setNeedsLayout();
}

gfx::Size Button::titleSize(gfx::Size limit) const {
    if (titleLabel_->isHidden()) return {};
    const gfx::Size fit = titleLabel_->sizeThatFits(limit);
    return {std::min(fit.width, limit.width), fit.height};
}

gfx::Size Button::imageSize() const {
    const auto image = currentImage();
    return image ? image->size() : gfx::Size{};
}

}  // namespace orv::ui
