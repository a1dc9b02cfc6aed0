#include "platform/ui/ScrollView.h"

#include <algorithm>
#include <limits>

#include "platform/rt/RunLoop.h"
#include "platform/rt/Timer.h"
#include "platform/ui/PanGestureRecognizer.h"
#include "platform/ui/PinchGestureRecognizer.h"

namespace orv::ui {

ORV_DEFINE_CLASS(ScrollView, View, GestureRecognizerDelegate)

namespace {

// A 60 Hz screen.
constexpr double kSettleStepSeconds = 1.0 / 60;

// How far past a zoom limit a pinch may take the scale, as a fraction of the limit.
constexpr double kZoomOvershoot = 0.5;

// Slow at both ends, like the platform's default animation curve.
double easeInOut(double t) {
    return t * t * (3 - 2 * t);
}

// Exactly `to` at k = 1, so that a settle ends where it was asked to.
double lerp(double from, double to, double k) {
    return from * (1 - k) + to * k;
}

gfx::Point lerp(gfx::Point from, gfx::Point to, double k) {
    return {lerp(from.x, to.x, k), lerp(from.y, to.y, k)};
}

// A ratio past a limit (1 at the limit, above 1 beyond it) held back: half the motion at first,
// never more than kZoomOvershoot.
double resistedRatio(double ratio) {
    const double excess = ratio - 1;
    return 1 + kZoomOvershoot * excess / (excess + 2 * kZoomOvershoot);
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
    pinch_ = rt::make<PinchGestureRecognizer>();
    pinch_->setDelegate(std::weak_ptr<GestureRecognizerDelegate>(self<ScrollView>()));
    pinch_->addTarget(weak_from_this(), [this](GestureRecognizer& recognizer) {
        handlePinch(static_cast<PinchGestureRecognizer&>(recognizer));
    });
    addGestureRecognizer(pinch_);
    setMultipleTouchEnabled(true);
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
    return maximumContentOffset(contentSize_);
}

gfx::Point ScrollView::maximumContentOffset(gfx::Size contentSize) const {
    const gfx::Point min = minimumContentOffset();
    const gfx::Size size = bounds().size;
    return {std::max(min.x, contentSize.width - size.width + contentInset_.right),
            std::max(min.y, contentSize.height - size.height + contentInset_.bottom)};
}

gfx::Point ScrollView::clampedContentOffset(gfx::Point offset) const {
    return clampedContentOffset(offset, contentSize_);
}

// Against the content size a zoom is heading for, which may not be contentSize_ yet.
gfx::Point ScrollView::clampedContentOffset(gfx::Point offset, gfx::Size contentSize) const {
    const gfx::Point min = minimumContentOffset();
    const gfx::Point max = maximumContentOffset(contentSize);
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
    if (&recognizer == pinch_.get()) return canZoom();
    if (&recognizer != pan_.get()) return true;
    // A drag caught the content where it is; a scale past its limits would stay there.
    if (zoomScale_ != clampedZoomScale(zoomScale_)) return false;
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

// --- Zooming ---------------------------------------------------------------------------------

View* ScrollView::viewForZooming() const {
    auto listener = delegate();
    return listener ? listener->viewForZoomingInScrollView(const_cast<ScrollView&>(*this))
                    : nullptr;
}

bool ScrollView::canZoom() const {
    return maximumZoomScale_ > minimumZoomScale_ && viewForZooming();
}

std::shared_ptr<PinchGestureRecognizer> ScrollView::pinchGestureRecognizer() const {
    return canZoom() ? pinch_ : nullptr;
}

void ScrollView::setZoomScale(double scale, bool animated) {
    if (!viewForZooming()) return;
    const gfx::Size size = bounds().size;
    const gfx::Point middle{size.width / 2, size.height / 2};
    const gfx::Point offset = contentOffset();
    const gfx::Point anchor{(offset.x + middle.x) / zoomScale_, (offset.y + middle.y) / zoomScale_};
    zoomKeeping(anchor, middle, scale, animated);
}

void ScrollView::zoomToRect(const gfx::Rect& rect, bool animated) {
    View* view = viewForZooming();
    if (!view) return;
    const gfx::Size size = bounds().size;
    // An empty side leaves the other to decide; the clamp below catches both being empty.
    const auto fit = [](double room, double length) {
        return length > 0 ? room / length : std::numeric_limits<double>::infinity();
    };
    const double scale =
        std::min(fit(size.width, rect.size.width), fit(size.height, rect.size.height));
    const gfx::Point origin = view->bounds().origin;
    const gfx::Point anchor{rect.origin.x - origin.x + rect.size.width / 2,
                            rect.origin.y - origin.y + rect.size.height / 2};
    zoomKeeping(anchor, {size.width / 2, size.height / 2}, scale, animated);
}

void ScrollView::zoomKeeping(gfx::Point anchor, gfx::Point visiblePoint, double scale,
                             bool animated) {
    const double target = clampedZoomScale(scale);
    const gfx::Point offset = clampedContentOffset(offsetKeeping(anchor, visiblePoint, target),
                                                   zoomedContentSize(target));
    if (target == zoomScale_ && offset == contentOffset()) {
        stopSettling();
    } else if (animated) {
        settleTo(offset, target, SettleEnd::Zooming);
    } else {
        stopSettling();
        applyZoom(target, offset);
    }
}

gfx::Point ScrollView::offsetKeeping(gfx::Point anchor, gfx::Point visiblePoint, double scale) {
    return {anchor.x * scale - visiblePoint.x, anchor.y * scale - visiblePoint.y};
}

double ScrollView::clampedZoomScale(double scale) const {
    return std::clamp(scale, minimumZoomScale_, std::max(minimumZoomScale_, maximumZoomScale_));
}

double ScrollView::resistedZoomScale(double scale) const {
    if (!bouncesZoom_) return clampedZoomScale(scale);
    if (scale > maximumZoomScale_)
        return maximumZoomScale_ * resistedRatio(scale / maximumZoomScale_);
    if (scale < minimumZoomScale_)
        return minimumZoomScale_ / resistedRatio(minimumZoomScale_ / scale);
    return scale;
}

gfx::Size ScrollView::zoomedContentSize(double scale) const {
    View* view = viewForZooming();
    if (!view) return contentSize_;
    const gfx::Size size = view->bounds().size;
    return {size.width * scale, size.height * scale};
}

void ScrollView::applyZoom(double scale, gfx::Point offset) {
    const auto keep = self<View>();
    if (View* view = viewForZooming()) {
        const auto keepView = view->self<View>();
        zoomScale_ = scale;
        view->setTransform(gfx::AffineTransform::scale(scale, scale));
        contentSize_ = zoomedContentSize(scale);
        // The transform scales about the centre; moving the centre puts the frame at the origin.
        view->setCenter({contentSize_.width / 2, contentSize_.height / 2});
        setBounds({offset, bounds().size});
        if (auto listener = delegate()) listener->scrollViewDidZoom(*this);
    } else {
        setBounds({offset, bounds().size});  // the delegate gave the view up mid-animation
    }
}

// --- Pinching --------------------------------------------------------------------------------

void ScrollView::handlePinch(PinchGestureRecognizer& pinch) {
    const auto keep = self<View>();
    switch (pinch.state()) {
        case GestureRecognizerState::Began:
            beginZooming(pinch);
            pinchTo(pinch);
            break;
        case GestureRecognizerState::Changed:
            pinchTo(pinch);
            break;
        case GestureRecognizerState::Ended:
        case GestureRecognizerState::Cancelled:
            endZooming();
            break;
        default:
            break;
    }
}

void ScrollView::beginZooming(PinchGestureRecognizer& pinch) {
    stopSettling();
    zooming_ = true;
    pinchStartScale_ = zoomScale_;
    // The scale counts from where the fingers came down, and so does the point held under them.
    const gfx::Point at = pinch.startLocationInView(this);
    pinchAnchor_ = {at.x / zoomScale_, at.y / zoomScale_};
    if (auto listener = delegate()) listener->scrollViewWillBeginZooming(*this, viewForZooming());
}

void ScrollView::pinchTo(PinchGestureRecognizer& pinch) {
    const gfx::Point at = pinch.locationInView(this);
    const gfx::Point offset = contentOffset();
    pinchVisiblePoint_ = {at.x - offset.x, at.y - offset.y};
    const double scale = resistedZoomScale(pinchStartScale_ * pinch.scale());
    gfx::Point target = offsetKeeping(pinchAnchor_, pinchVisiblePoint_, scale);
    if (!bounces_) target = clampedContentOffset(target, zoomedContentSize(scale));
    applyZoom(scale, target);
}

void ScrollView::endZooming() {
    zooming_ = false;
    const double scale = clampedZoomScale(zoomScale_);
    const gfx::Point offset = clampedContentOffset(
        offsetKeeping(pinchAnchor_, pinchVisiblePoint_, scale), zoomedContentSize(scale));
    if (scale != zoomScale_ || offset != contentOffset()) {
        settleTo(offset, scale, SettleEnd::Zooming);
    } else if (auto listener = delegate()) {
        listener->scrollViewDidEndZooming(*this, viewForZooming(), scale);
    }
}

// --- Settling --------------------------------------------------------------------------------

bool ScrollView::isSettling() const {
    return settleTimer_ && settleTimer_->isValid();
}

void ScrollView::settleTo(gfx::Point target, SettleEnd end) {
    settleTo(target, zoomScale_, end);
}

void ScrollView::settleTo(gfx::Point target, double targetScale, SettleEnd end) {
    stopSettling();
    settleFrom_ = contentOffset();
    settleTo_ = target;
    settleFromScale_ = zoomScale_;
    settleToScale_ = targetScale;
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
    const gfx::Point offset = lerp(settleFrom_, settleTo_, k);
    if (settleFromScale_ != settleToScale_) {
        applyZoom(lerp(settleFromScale_, settleToScale_, k), offset);
    } else {
        setBounds({offset, bounds().size});
    }
    if (t < 1 || !isSettling()) return;  // the delegate may have stopped it from didScroll
    const SettleEnd end = settleEnd_;
    stopSettling();
    auto listener = delegate();
    if (!listener) return;
    switch (end) {
        case SettleEnd::Deceleration:
            listener->scrollViewDidEndDecelerating(*this);
            break;
        case SettleEnd::ScrollingAnimation:
            listener->scrollViewDidEndScrollingAnimation(*this);
            break;
        case SettleEnd::Zooming:
            listener->scrollViewDidEndZooming(*this, viewForZooming(), zoomScale_);
            break;
    }
}

void ScrollView::stopSettling() {
    if (settleTimer_) settleTimer_->invalidate();
    settleTimer_.reset();
}

}  // namespace orv::ui
