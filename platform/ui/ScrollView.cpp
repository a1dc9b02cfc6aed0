#include "platform/ui/ScrollView.h"

#include <algorithm>

#include "platform/rt/RunLoop.h"
#include "platform/rt/Timer.h"
#include "platform/ui/PanGestureRecognizer.h"

namespace orv::ui {

ORV_DEFINE_CLASS(ScrollView, View, GestureRecognizerDelegate)

namespace {

// A 60 Hz screen.
constexpr double kSettleStepSeconds = 1.0 / 60;

// Slow at both ends, like the platform's default animation curve.
double easeInOut(double t) {
    return t * t * (3 - 2 * t);
}

}  // namespace

void ScrollView::initWithFrame(const gfx::Rect& frame) {
    View::initWithFrame(frame);
    setClipsToBounds(true);
    pan_ = rt::make<PanGestureRecognizer>();
    pan_->setDelegate(std::weak_ptr<GestureRecognizerDelegate>(self<ScrollView>()));
    pan_->addTarget(weak_from_this(), [this](GestureRecognizer& recognizer) {
        handlePan(static_cast<PanGestureRecognizer&>(recognizer));
    });
    addGestureRecognizer(pan_);
}

void ScrollView::dealloc() {
    stopSettling();
    View::dealloc();
}

// --- Offset ----------------------------------------------------------------------------------

void ScrollView::setContentOffset(gfx::Point offset) {
    stopSettling();
    setBounds({offset, bounds().size});
}

void ScrollView::setContentOffset(gfx::Point offset, bool animated) {
    if (!animated) {
        setContentOffset(offset);
    } else if (offset == contentOffset()) {
        stopSettling();
    } else {
        settleTo(offset, SettleEnd::ScrollingAnimation);
    }
}

gfx::Point ScrollView::minimumContentOffset() const {
    return {-contentInset_.left, -contentInset_.top};
}

gfx::Point ScrollView::maximumContentOffset() const {
    const gfx::Point min = minimumContentOffset();
    const gfx::Size size = bounds().size;
    return {std::max(min.x, contentSize_.width - size.width + contentInset_.right),
            std::max(min.y, contentSize_.height - size.height + contentInset_.bottom)};
}

gfx::Point ScrollView::clampedContentOffset(gfx::Point offset) const {
    const gfx::Point min = minimumContentOffset();
    const gfx::Point max = maximumContentOffset();
    return {std::clamp(offset.x, min.x, max.x), std::clamp(offset.y, min.y, max.y)};
}

void ScrollView::setBounds(const gfx::Rect& bounds) {
    const gfx::Point old = contentOffset();
    View::setBounds(bounds);
    if (bounds.origin == old) return;
    const auto keep = self<View>();
    contentOffsetDidChange();
    if (auto listener = delegate()) listener->scrollViewDidScroll(*this);
}

void ScrollView::setScrollEnabled(bool enabled) {
    scrollEnabled_ = enabled;
    pan_->setEnabled(enabled);
}

// --- Dragging --------------------------------------------------------------------------------

bool ScrollView::gestureRecognizerShouldBegin(GestureRecognizer& recognizer) {
    if (&recognizer != pan_.get()) return true;
    return canScrollHorizontally() || canScrollVertically();
}

bool ScrollView::canScrollHorizontally() const {
    return alwaysBounceHorizontal_ ||
           contentSize_.width + contentInset_.left + contentInset_.right > bounds().size.width;
}

bool ScrollView::canScrollVertically() const {
    return alwaysBounceVertical_ ||
           contentSize_.height + contentInset_.top + contentInset_.bottom > bounds().size.height;
}

void ScrollView::handlePan(PanGestureRecognizer& pan) {
    const auto keep = self<View>();
    switch (pan.state()) {
        case GestureRecognizerState::Began:
            beginDragging();
            dragTo(pan.translationInView(this));
            break;
        case GestureRecognizerState::Changed:
            dragTo(pan.translationInView(this));
            break;
        case GestureRecognizerState::Ended:
        case GestureRecognizerState::Cancelled:
            endDragging();
            break;
        default:
            break;
    }
}

void ScrollView::beginDragging() {
    stopSettling();  // a finger catches the content wherever an animation had taken it
    dragging_ = true;
    dragStartOffset_ = contentOffset();
    if (auto listener = delegate()) listener->scrollViewWillBeginDragging(*this);
}

void ScrollView::dragTo(gfx::Point translation) {
    gfx::Point offset = dragStartOffset_;
    if (canScrollHorizontally()) offset.x -= translation.x;
    if (canScrollVertically()) offset.y -= translation.y;
    if (!bounces_) offset = clampedContentOffset(offset);
    setBounds({offset, bounds().size});
}

void ScrollView::endDragging() {
    dragging_ = false;
    const gfx::Point target = clampedContentOffset(contentOffset());
    const bool springsBack = target != contentOffset();
    if (auto listener = delegate()) listener->scrollViewDidEndDragging(*this, springsBack);
    if (springsBack) settleTo(target, SettleEnd::Deceleration);
}

// --- Settling --------------------------------------------------------------------------------

bool ScrollView::isSettling() const {
    return settleTimer_ && settleTimer_->isValid();
}

void ScrollView::settleTo(gfx::Point target, SettleEnd end) {
    stopSettling();
    settleFrom_ = contentOffset();
    settleTo_ = target;
    settleEnd_ = end;
    settleStart_ = rt::RunLoop::main().now();
    std::weak_ptr<rt::Object> weak = weak_from_this();
    settleTimer_ = rt::RunLoop::main().scheduleTimer(kSettleStepSeconds, true, [weak](rt::Timer&) {
        if (auto alive = weak.lock()) std::static_pointer_cast<ScrollView>(alive)->settleStep();
    });
}

void ScrollView::settleStep() {
    const double elapsed = rt::RunLoop::main().now() - settleStart_;
    const double t = std::clamp(elapsed / kSettleSeconds, 0.0, 1.0);
    const double k = easeInOut(t);
    setBounds({{settleFrom_.x + (settleTo_.x - settleFrom_.x) * k,
                settleFrom_.y + (settleTo_.y - settleFrom_.y) * k},
               bounds().size});
    if (t < 1 || !isSettling()) return;  // the delegate may have stopped it from didScroll
    const SettleEnd end = settleEnd_;
    stopSettling();
    auto listener = delegate();
    if (!listener) return;
    if (end == SettleEnd::Deceleration) {
        listener->scrollViewDidEndDecelerating(*this);
    } else {
        listener->scrollViewDidEndScrollingAnimation(*this);
    }
}

void ScrollView::stopSettling() {
    if (settleTimer_) settleTimer_->invalidate();
    settleTimer_.reset();
}

}  // namespace orv::ui
