#pragma once
// What a scroll view tells its delegate. Every call is optional; the defaults do nothing.

#include "platform/rt/Object.h"

namespace orv::ui {

class ScrollView;
class View;

class ScrollViewDelegate {
    ORV_DECLARE_PROTOCOL(ScrollViewDelegate)
  public:
    virtual ~ScrollViewDelegate() = default;

    // After every change of contentOffset, by a finger, an animation step or code.
    virtual void scrollViewDidScroll(ScrollView& scrollView) {}
    // A finger has started to move the content.
    virtual void scrollViewWillBeginDragging(ScrollView& scrollView) {}
    // The finger lifted. willDecelerate is true when the content now springs back inside its
    // range; scrollViewDidEndDecelerating follows when it is there.
    virtual void scrollViewDidEndDragging(ScrollView& scrollView, bool willDecelerate) {}
    virtual void scrollViewDidEndDecelerating(ScrollView& scrollView) {}
    // An animated setContentOffset (or a scroll to a row) has arrived.
    virtual void scrollViewDidEndScrollingAnimation(ScrollView& scrollView) {}

    // The view the zoom scale applies to, asked whenever the scroll view zooms; null means the
    // scroll view does not zoom. The delegate keeps the view alive (normally as a subview).
    virtual View* viewForZoomingInScrollView(ScrollView& scrollView) { return nullptr; }
    // Two fingers have started to pinch the content.
    virtual void scrollViewWillBeginZooming(ScrollView& scrollView, View* view) {}
    // After every change of zoomScale, by fingers, an animation step or code.
    virtual void scrollViewDidZoom(ScrollView& scrollView) {}
    // A pinch or an animated zoom is over and the scale has come to rest at `scale`, back
    // inside the limits.
    virtual void scrollViewDidEndZooming(ScrollView& scrollView, View* view, double scale) {}
};

}  // namespace orv::ui
