#include "platform/ui/TableViewCell.h"

#include <algorithm>

#include "platform/ui/Label.h"

namespace orv::ui {

ORV_DEFINE_CLASS(TableViewCell, View)

namespace {

const gfx::Color kSelectedBackgroundColor = gfx::Color::white(0.85);
const gfx::Color kSeparatorColor = gfx::Color::white(0.78);
constexpr double kSeparatorHeight = 0.5;
// Where the text and the separator start, as on the platform.
constexpr double kLeadingMargin = 15;

}  // namespace

void TableViewCell::initWithStyle(TableViewCellStyle style,
                                  std::optional<std::string> reuseIdentifier) {
    style_ = style;
    reuseIdentifier_ = std::move(reuseIdentifier);
    initWithFrame({0, 0, kDefaultWidth, kDefaultHeight});
}

void TableViewCell::initWithFrame(const gfx::Rect& frame) {
    View::initWithFrame(frame);
    setBackgroundColor(gfx::Color::whiteColor());
    selectedBackgroundView_ = addFillingView();
    selectedBackgroundView_->setBackgroundColor(kSelectedBackgroundColor);
    selectedBackgroundView_->setAlpha(0);
    contentView_ = addFillingView();

    const gfx::Size size = bounds().size;
    separatorView_ = makeView({kLeadingMargin, size.height - kSeparatorHeight,
                               size.width - kLeadingMargin, kSeparatorHeight});
    separatorView_->setBackgroundColor(kSeparatorColor);
    separatorView_->setAutoresizingMask(AutoresizingFlexibleWidth | AutoresizingFlexibleTopMargin);
    separatorView_->setHidden(true);
    addSubview(separatorView_);
}

std::shared_ptr<View> TableViewCell::addFillingView() {
    auto view = makeView(bounds());
    view->setAutoresizingMask(AutoresizingFlexibleWidth | AutoresizingFlexibleHeight);
    addSubview(view);
    return view;
}

const std::shared_ptr<Label>& TableViewCell::textLabel() {
    if (!textLabel_) {
        const gfx::Rect box = contentView_->bounds();
        textLabel_ =
            makeView<Label>({kLeadingMargin, 0, std::max(0.0, box.size.width - 2 * kLeadingMargin),
                             box.size.height});
        textLabel_->setAutoresizingMask(AutoresizingFlexibleWidth | AutoresizingFlexibleHeight);
        contentView_->addSubview(textLabel_);
    }
    return textLabel_;
}

void TableViewCell::setSelectionStyle(TableViewCellSelectionStyle style) {
    selectionStyle_ = style;
    showSelection(false);
}

void TableViewCell::setSelected(bool selected, bool animated) {
    selected_ = selected;
    showSelection(animated);
}

void TableViewCell::showSelection(bool animated) {
    const bool shows = selected_ && selectionStyle_ != TableViewCellSelectionStyle::None;
    const double alpha = shows ? 1 : 0;
    if (!animated) {
        selectedBackgroundView_->setAlpha(alpha);
        return;
    }
    auto background = selectedBackgroundView_;
    animateWithDuration(kSelectionFadeSeconds,
                        [background, alpha] { background->setAlpha(alpha); });
}

void TableViewCell::setSeparatorHidden(bool hidden) {
    separatorView_->setHidden(hidden);
}

}  // namespace orv::ui
