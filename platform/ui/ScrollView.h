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
// Zooming is meant to come as an extension of this class: a zoom scale applied to the zooming
// view, a pinch recogniser beside the pan and the delegate asked for the view. The range of the
// offset is computed only from contentSize and contentInset (minimumContentOffset(),
// maximumContentOffset()), so a zoom that keeps contentSize up to date needs nothing else here.

#include <memory>

#include "platform/ui/GestureRecognizerDelegate.h"
#include "platform/ui/ScrollViewDelegate.h"
#include "platform/ui/View.h"

namespace orv::rt {
class Timer;
}

namespace orv::ui {

class PanGestureRecognizer;

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

    // A finger is moving the content.
    bool isDragging() const { return dragging_; }
    // An animated offset change or a spring back is running.
    bool isSettling() const;

    const std::shared_ptr<PanGestureRecognizer>& panGestureRecognizer() const { return pan_; }

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
    enum class SettleEnd { ScrollingAnimation, Deceleration };

    void handlePan(PanGestureRecognizer& pan);
    void beginDragging();
    void dragTo(gfx::Point translation);
    void endDragging();
    bool canScrollHorizontally() const;
    bool canScrollVertically() const;
    void settleTo(gfx::Point target, SettleEnd end);
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
    std::weak_ptr<ScrollViewDelegate> delegate_;

    // The running settle: from where to where since when, and what to report at its end.
    std::shared_ptr<rt::Timer> settleTimer_;
    gfx::Point settleFrom_;
    gfx::Point settleTo_;
    double settleStart_ = 0;
    SettleEnd settleEnd_ = SettleEnd::ScrollingAnimation;
};

}  // namespace orv::ui
