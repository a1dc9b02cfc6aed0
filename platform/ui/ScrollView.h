#pragma once
// A view that shows a larger content through its bounds: contentOffset is the bounds' origin,
// so subviews placed in content coordinates move as it changes. It clips to its bounds.
//
// A finger drag (the view's own pan recogniser) moves the offset by the finger's translation,
// read in this view's coordinates so that a rotated scroll view scrolls along its own axes. An
// axis moves only when the content is longer than the view on it (or alwaysBounce says so);
// with bounces the offset may leave its range under the finger and springs back over
// kSettleSeconds when the finger lifts, without bounces it never leaves it. There is no
// momentum: the content stops where the finger lifts.
//
// The pan cancels the touches of the subviews once it begins, so a tap still reaches a subview
// (a button, a table's row) while a drag scrolls. The scroll view is its pan's delegate; that is
// how a view with nothing to scroll lets drags through to what lies behind.
//
// Zooming. The delegate names the view to zoom (viewForZoomingInScrollView); with one, and
// maximumZoomScale above minimumZoomScale, two fingers scale it. The zooming view gets the
// transform scale(zoomScale) with its frame origin kept at (0, 0) in content space, and
// contentSize follows its frame, so the offset's range needs no special case for zooming.
// Choices where the behaviour was open:
// - The pinch and the pan do not recognise together; whichever begins first owns the fingers.
//   A pinch begins after 4 points of change in the fingers' distance, a pan after 10 points of
//   travel of their centroid, so two fingers coming down together nearly always pinch. The
//   pinch then pans as well: the content point that was under the fingers' midpoint when they
//   came down stays under it while the midpoint moves, and the scale is the fingers' distance
//   over their distance then (so it jumps by the hysteresis when the pinch begins, as the
//   content jumps to a dragging finger). A drag that is already under way stays a drag when a
//   second finger comes down (the pan takes any number of fingers); lifting and pinching again
//   zooms.
// - While pinching, bouncesZoom lets the scale go past the limits with a resistance that halves
//   the motion at first and never lets it go more than half a limit beyond; without it the
//   scale stops at the limits. bounces governs the offset during a pinch as during a drag.
// - When the fingers lift, scale and offset settle together over kSettleSeconds: the scale back
//   into its limits about the point last under the fingers, the offset into its range.
//   scrollViewDidEndZooming follows when they are there (at once when nothing has to move).
//   A drag cannot begin while the scale is still coming back (it would leave it out of range);
//   a new pinch can.
// - setZoomScale keeps the middle of the visible area fixed where the offset's range allows;
//   zoomToRect fits the rect in the bounds (insets are not subtracted) and centres it. Both
//   clamp scale and offset, change nothing without a view for zooming or when already there,
//   and when animated end with scrollViewDidEndZooming. Setting the limits does not move the
//   current scale.
// - The pinch recogniser stays attached and refuses to begin while zooming is impossible;
//   pinchGestureRecognizer() answers null then, as the platform does.
// - A scroll view takes several touches (multipleTouchEnabled), which a pinch needs.

#include <memory>

#include "platform/ui/GestureRecognizerDelegate.h"
#include "platform/ui/ScrollViewDelegate.h"
#include "platform/ui/View.h"

namespace orv::rt {
class Timer;
}

namespace orv::ui {

class PanGestureRecognizer;
class PinchGestureRecognizer;

class ScrollView : public View, public GestureRecognizerDelegate {
    ORV_DECLARE_CLASS(ScrollView)
  public:
    // Length of an animated setContentOffset and of the spring back after a drag.
    static constexpr double kSettleSeconds = 0.3;

    void initWithFrame(const gfx::Rect& frame) override;
    void dealloc() override;

    gfx::Size contentSize() const { return contentSize_; }
    void setContentSize(gfx::Size size) { contentSize_ = size; }
    gfx::Point contentOffset() const { return bounds().origin; }
    // Not clamped, as on the platform. A plain set stops an animation in flight.
    void setContentOffset(gfx::Point offset);
    void setContentOffset(gfx::Point offset, bool animated);
    gfx::EdgeInsets contentInset() const { return contentInset_; }
    void setContentInset(const gfx::EdgeInsets& insets) { contentInset_ = insets; }
    // The offsets at which the content rests: -inset at the start, contentSize - bounds + inset
    // at the end (never before the start).
    gfx::Point minimumContentOffset() const;
    gfx::Point maximumContentOffset() const;

    bool isScrollEnabled() const { return scrollEnabled_; }
    void setScrollEnabled(bool enabled);
    bool bounces() const { return bounces_; }
    void setBounces(bool bounces) { bounces_ = bounces; }
    bool alwaysBounceVertical() const { return alwaysBounceVertical_; }
    void setAlwaysBounceVertical(bool on) { alwaysBounceVertical_ = on; }
    bool alwaysBounceHorizontal() const { return alwaysBounceHorizontal_; }
    void setAlwaysBounceHorizontal(bool on) { alwaysBounceHorizontal_ = on; }
    // Stored; no indicator is drawn.
    bool showsHorizontalScrollIndicator() const { return showsHorizontalScrollIndicator_; }
    void setShowsHorizontalScrollIndicator(bool on) { showsHorizontalScrollIndicator_ = on; }
    bool showsVerticalScrollIndicator() const { return showsVerticalScrollIndicator_; }
    void setShowsVerticalScrollIndicator(bool on) { showsVerticalScrollIndicator_ = on; }

    double zoomScale() const { return zoomScale_; }
    void setZoomScale(double scale) { setZoomScale(scale, false); }
    void setZoomScale(double scale, bool animated);
    double minimumZoomScale() const { return minimumZoomScale_; }
    void setMinimumZoomScale(double scale) { minimumZoomScale_ = scale; }
    double maximumZoomScale() const { return maximumZoomScale_; }
    void setMaximumZoomScale(double scale) { maximumZoomScale_ = scale; }
    bool bouncesZoom() const { return bouncesZoom_; }
    void setBouncesZoom(bool bounces) { bouncesZoom_ = bounces; }
    // `rect` is in the zooming view's own coordinates.
    void zoomToRect(const gfx::Rect& rect, bool animated);
    // The delegate's view for zooming, or null.
    View* viewForZooming() const;

    // A finger is moving the content.
    bool isDragging() const { return dragging_; }
    // Two fingers are pinching the content.
    bool isZooming() const { return zooming_; }
    // An animated offset or zoom change, or a spring back, is running.
    bool isSettling() const;

    const std::shared_ptr<PanGestureRecognizer>& panGestureRecognizer() const { return pan_; }
    // Null while the scroll view cannot zoom.
    std::shared_ptr<PinchGestureRecognizer> pinchGestureRecognizer() const;

    std::shared_ptr<ScrollViewDelegate> delegate() const { return delegate_.lock(); }
    void setDelegate(std::weak_ptr<ScrollViewDelegate> delegate) {
        delegate_ = std::move(delegate);
    }

    // A change of the bounds' origin is a scroll: subclasses and the delegate hear of it.
    void setBounds(const gfx::Rect& bounds) override;

    bool gestureRecognizerShouldBegin(GestureRecognizer& recognizer) override;

  protected:
    // Called after every change of contentOffset, before the delegate's scrollViewDidScroll.
    virtual void contentOffsetDidChange() {}
    // The offset brought inside its range on both axes.
    gfx::Point clampedContentOffset(gfx::Point offset) const;

  private:
    enum class SettleEnd { ScrollingAnimation, Deceleration, Zooming };

    void handlePan(PanGestureRecognizer& pan);
    void beginDragging();
    void dragTo(gfx::Point translation);
    void endDragging();
    bool canScrollHorizontally() const;
    bool canScrollVertically() const;
    gfx::Point maximumContentOffset(gfx::Size contentSize) const;
    gfx::Point clampedContentOffset(gfx::Point offset, gfx::Size contentSize) const;

    bool canZoom() const;
    void handlePinch(PinchGestureRecognizer& pinch);
    void beginZooming(PinchGestureRecognizer& pinch);
    void pinchTo(PinchGestureRecognizer& pinch);
    void endZooming();
    double clampedZoomScale(double scale) const;
    // What a pinch asking for `scale` gets: held back past the limits, or clamped to them.
    double resistedZoomScale(double scale) const;
    gfx::Size zoomedContentSize(double scale) const;
    // The offset at which `anchor`, a content point at zoom scale 1, shows at `visiblePoint`
    // (measured from the top left of the visible area) when the scale is `scale`.
    static gfx::Point offsetKeeping(gfx::Point anchor, gfx::Point visiblePoint, double scale);
    // Zooms about the anchor to the clamped scale and offset, now or by settling.
    void zoomKeeping(gfx::Point anchor, gfx::Point visiblePoint, double scale, bool animated);
    // Scale and offset at once, unclamped, with the delegate told.
    void applyZoom(double scale, gfx::Point offset);

    void settleTo(gfx::Point target, SettleEnd end);
    void settleTo(gfx::Point target, double targetScale, SettleEnd end);
    void settleStep();
    void stopSettling();

    gfx::Size contentSize_;
    gfx::EdgeInsets contentInset_;
    bool scrollEnabled_ = true;
    bool bounces_ = true;
    bool alwaysBounceVertical_ = false;
    bool alwaysBounceHorizontal_ = false;
    bool showsHorizontalScrollIndicator_ = true;
    bool showsVerticalScrollIndicator_ = true;
    bool dragging_ = false;
    gfx::Point dragStartOffset_;
    std::shared_ptr<PanGestureRecognizer> pan_;
    double zoomScale_ = 1;
    double minimumZoomScale_ = 1;
    double maximumZoomScale_ = 1;
    bool bouncesZoom_ = true;
    bool zooming_ = false;
    double pinchStartScale_ = 1;
    gfx::Point pinchAnchor_;        // content under the fingers at scale 1
    gfx::Point pinchVisiblePoint_;  // where the fingers' midpoint last was in the visible area
    std::shared_ptr<PinchGestureRecognizer> pinch_;
    std::weak_ptr<ScrollViewDelegate> delegate_;

    // The running settle: from where to where since when, and what to report at its end.
    std::shared_ptr<rt::Timer> settleTimer_;
    gfx::Point settleFrom_;
    gfx::Point settleTo_;
    double settleFromScale_ = 1;
    double settleToScale_ = 1;
    double settleStart_ = 0;
    SettleEnd settleEnd_ = SettleEnd::ScrollingAnimation;
};

}  // namespace orv::ui
