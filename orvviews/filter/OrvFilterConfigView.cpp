#include "orvviews/filter/OrvFilterConfigView.h"

#include "frameworks/core/OrvLocalized.h"
#include "frameworks/core/OrvViewExtension.h"
#include "frameworks/core/OrvViewGeometry.h"
#include "platform/ui/Layer.h"

ORV_DEFINE_CLASS(OrvFilterConfigView, ui::View)

namespace {

constexpr double kStateSide = 44;
constexpr double kSeekbarHeight = 50;
constexpr double kFoldedStateAlpha = 0.7;
const gfx::Color kBackdropColor = gfx::Color::black().withAlpha(0.7);
constexpr double kUnfoldedDegrees = 90;

void makeRound(ui::View& view, double radius) {
    view.layer().setCornerRadius(radius);
}

}  // namespace

void OrvFilterConfigView::initWithFrame(const gfx::Rect& frame) {
    ui::View::initWithFrame(frame);
    orvInitView();
}

void OrvFilterConfigView::orvInitView() {
    const double width = orvGetSizeWidth(*this);
    auto me = weakSelf();

    resetButton_ = ui::Button::buttonWithType(static_cast<int>(ui::ButtonType::Custom));
    resetButton_->setFrame({10, 10, 55, 30});
    makeRound(*resetButton_, 15);
    // The panel lies over any photo; a dark pill keeps the white text readable.
    resetButton_->setBackgroundColor(kBackdropColor);
    resetButton_->setTitle(orvLocalized("orv_reset", "重置"), ui::ControlStateNormal);
    resetButton_->setTitleColor(gfx::Color::whiteColor(), ui::ControlStateNormal);
    resetButton_->titleLabel().setFont(gfx::Font::systemFont(16));
    resetButton_->addTarget(
        me, [this](ui::Control&, ui::Event*) { handleResetAction(); },
        ui::ControlEventTouchUpInside);
    addSubview(resetButton_);

    const gfx::Rect stateFrame{width - 50, 5, kStateSide, kStateSide};
    stateBg_ = ui::makeView(stateFrame);
    stateBg_->setBackgroundColor(kBackdropColor);
    makeRound(*stateBg_, kStateSide / 2);
    addSubview(stateBg_);

    stateButton_ = buttonWithFrame(stateFrame, "style_default_filter_config");
    orvSetBorderWidth(*stateButton_, 2, gfx::Color::black());
    stateButton_->setBackgroundColor(gfx::Color::rgb(1.0, 0.4, 0.2));
    makeRound(*stateButton_, kStateSide / 2);
    stateButton_->addTarget(
        me, [this](ui::Control&, ui::Event*) { handleShowStateAction(); },
        ui::ControlEventTouchUpInside);
    addSubview(stateButton_);

    configWrap_ = ui::makeView({10, gfx::rectGetMaxY(stateFrame) + 10, width - 20, 100});
    addSubview(configWrap_);

    hiddenDefault();
}

void OrvFilterConfigView::hiddenDefault() {
    setHidden(true);
    resetButton_->setHidden(true);
    configWrap_->setHidden(true);
    configWrap_->setAlpha(0);
    stateButton_->setAlpha(kFoldedStateAlpha);
    stateBg_->setAlpha(0);
    orvSetSizeHeight(*stateBg_, orvGetSizeHeight(*stateButton_));
}

void OrvFilterConfigView::clean() {
    for (const auto& subview : std::vector(configWrap_->subviews())) subview->removeFromSuperview();
}

void OrvFilterConfigView::setFilterParams(std::shared_ptr<VimraParameters> filterParams) {
    filterParams_ = std::move(filterParams);
    clean();
    if (!filterParams_ || !filterParams_->isInited()) {
        hiddenDefault();
        return;
    }
    setHidden(false);
    resetConfigView();
}

void OrvFilterConfigView::resetConfigView() {
    seekBars_ = {};
    double top = 0;
    for (const auto& arg : filterParams_->args()) {
        auto bar = buildSeekbarWithTop(top);
        bar->setFilterArg(arg);
        seekBars_.push_back(bar);
        configWrap_->addSubview(bar);
        top = gfx::rectGetMaxY(bar->frame());
    }
    orvSetSizeHeight(*configWrap_, top);
    animateStateBgToConfigBottom();
}

std::shared_ptr<OrvFilterSeekbar> OrvFilterConfigView::buildSeekbarWithTop(double top) {
    return ui::makeView<OrvFilterSeekbar>({20, top, orvGetSizeWidth(*this) - 40, kSeekbarHeight});
}

void OrvFilterConfigView::animateStateBgToConfigBottom() {
    auto bg = stateBg_;
    const double bottom = gfx::rectGetMaxY(configWrap_->frame());
    ui::View::animateWithDuration(kAnimationDuration,
                                  [bg, bottom] { orvSetSizeHeight(*bg, bottom); });
}

void OrvFilterConfigView::handleResetAction() {
    for (const auto& bar : seekBars_) bar->reset();
    animateStateBgToConfigBottom();
}

void OrvFilterConfigView::handleShowStateAction() {
    if (isAniming_) return;
    isAniming_ = true;
    const bool fold = !configWrap_->isHidden();
    resetButton_->setHidden(fold);
    configWrap_->setHidden(false);

    auto me = self<OrvFilterConfigView>();
    const double bgHeight =
        fold ? orvGetSizeHeight(*stateButton_) : gfx::rectGetMaxY(configWrap_->frame());
    ui::View::animateWithDuration(
        kAnimationDuration,
        [me, fold, bgHeight] {
            orvSetSizeHeight(*me->stateBg_, bgHeight);
            me->stateBg_->setAlpha(fold ? 0 : 1);
            rotationWithDegrees(*me->stateButton_, fold ? 0 : kUnfoldedDegrees);
            me->stateButton_->setAlpha(fold ? kFoldedStateAlpha : 1);
            me->configWrap_->setAlpha(fold ? 0 : 1);
        },
        [me, fold](bool) {
            if (fold) me->configWrap_->setHidden(true);
            me->isAniming_ = false;
        });
}

ui::View* OrvFilterConfigView::hitTest(gfx::Point p, ui::Event* event) {
    ui::View* hit = ui::View::hitTest(p, event);
    return hit == this ? nullptr : hit;
}
