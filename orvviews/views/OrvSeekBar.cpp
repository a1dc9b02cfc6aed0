#include "orvviews/views/OrvSeekBar.h"

#include <algorithm>

#include "frameworks/core/OrvViewExtension.h"
#include "frameworks/core/OrvViewGeometry.h"
#include "platform/ui/Layer.h"
#include "platform/ui/Touch.h"

ORV_DEFINE_CLASS(OrvSeekBar, ui::View)

namespace {

constexpr double kTrackInset = 5;
constexpr double kTrackHeight = 2;
constexpr double kThumbSide = 20;
constexpr double kThumbBorder = 4;
const gfx::Color kThumbColor = gfx::Color::rgb(30 / 255.0, 28 / 255.0, 31 / 255.0);
// Faint enough that the white filled part stands out on any photo.
const gfx::Color kEmptyTrackColor = gfx::Color::white(1, 0.3);

void makeRound(ui::View& view) {
    view.layer().setCornerRadius(orvGetSizeWidth(view) / 2);
}

}  // namespace

void OrvSeekBar::initWithFrame(const gfx::Rect& frame) {
    ui::View::initWithFrame(frame);
    orvInitView();
}

void OrvSeekBar::orvInitView() {
    const gfx::Size size = bounds().size;
    const double trackY = (size.height - kTrackHeight) / 2;

    belowView_ = ui::makeView({kTrackInset, trackY, size.width - 2 * kTrackInset, kTrackHeight});
    belowView_->setBackgroundColor(kEmptyTrackColor);
    belowView_->layer().setCornerRadius(kTrackHeight / 2);
    addSubview(belowView_);

    aboveView_ = ui::makeView({kTrackInset + 1, trackY, 0, kTrackHeight});
    aboveView_->setBackgroundColor(gfx::Color::whiteColor());
    addSubview(aboveView_);

    dragView_ = ui::makeView({0, (size.height - kThumbSide) / 2, kThumbSide, kThumbSide});
    dragView_->setBackgroundColor(kThumbColor);
    orvSetBorderWidth(*dragView_, kThumbBorder, gfx::Color::whiteColor());
    makeRound(*dragView_);
    addSubview(dragView_);

    storeDefault();
}

void OrvSeekBar::storeDefault() {
    dragViewSize_ = orvGetSize(*dragView_);
    const double trackOffset = orvGetOriginY(*aboveView_) - orvGetOriginY(*belowView_);
    aboveViewMaxWidth_ = orvGetSizeWidth(*belowView_) - 2 * trackOffset;
    starCenterX_ = dragViewSize_.width / 2;
    endCenterX_ = orvGetSizeWidth(*this) - starCenterX_;
}

void OrvSeekBar::setProgress(double progress) {
    progress_ = std::clamp(progress, 0.0, 1.0);
    dragView_->setCenter(
        {starCenterX_ + (endCenterX_ - starCenterX_) * progress_, dragView_->center().y});
    orvSetSize(*aboveView_, {aboveViewMaxWidth_ * progress_, orvGetSizeHeight(*aboveView_)});
}

void OrvSeekBar::moveWithProgress(double progress) {
    setProgress(progress);
    if (auto listener = delegate()) listener->onOrvKitICSeekBar(*this, progress_);
}

void OrvSeekBar::resizeDragView(gfx::Size size) {
    const gfx::Point center = dragView_->center();
    orvSetSize(*dragView_, size);
    dragView_->setCenter(center);
    makeRound(*dragView_);
}

void OrvSeekBar::restorePosition() {
    resizeDragView(dragViewSize_);
}

const ui::Touch* OrvSeekBar::actingTouch(const ui::TouchSet& touches) {
    if (touches.empty() || touches.front()->tapCount() >= 2) return nullptr;
    return touches.front().get();
}

double OrvSeekBar::progressOfTouch(const ui::Touch& touch) const {
    const double width = orvGetSizeWidth(*this);
    return width > 0 ? touch.locationInView(this).x / width : 0;
}

void OrvSeekBar::touchesBegan(const ui::TouchSet& touches, ui::Event*) {
    const ui::Touch* touch = actingTouch(touches);
    if (!touch) return;
    storeDefault();
    const double progress = progressOfTouch(*touch);
    setProgress(progress);
    resizeDragView({dragViewSize_.width * touchScale_, dragViewSize_.height * touchScale_});
    moveWithProgress(progress);
}

void OrvSeekBar::touchesMoved(const ui::TouchSet& touches, ui::Event*) {
    if (const ui::Touch* touch = actingTouch(touches)) moveWithProgress(progressOfTouch(*touch));
}

void OrvSeekBar::touchesEnded(const ui::TouchSet& touches, ui::Event*) {
    if (actingTouch(touches)) restorePosition();
}

void OrvSeekBar::touchesCancelled(const ui::TouchSet& touches, ui::Event* event) {
    touchesEnded(touches, event);
}
