#pragma once
// A plain horizontal slider: an empty track, a white filled track and a round thumb. A touch
// anywhere on the bar moves the thumb there and keeps moving it while the finger drags; the thumb
// grows while held. The second tap of a double tap is ignored.

#include <memory>

#include "frameworks/core/OrvKit.h"
#include "orvviews/views/OrvSeekBarDelegate.h"
#include "platform/gfx/Geometry.h"
#include "platform/ui/View.h"

class OrvSeekBar : public ui::View {
    ORV_DECLARE_CLASS(OrvSeekBar)
  public:
    void initWithFrame(const gfx::Rect& frame) override;

    gfx::Size dragViewSize() const { return dragViewSize_; }
    void setDragViewSize(gfx::Size size) { dragViewSize_ = size; }
    // The thumb's centre at progress 0 and at progress 1.
    double starCenterX() const { return starCenterX_; }
    void setStarCenterX(double x) { starCenterX_ = x; }
    double endCenterX() const { return endCenterX_; }
    void setEndCenterX(double x) { endCenterX_ = x; }
    double aboveViewMaxWidth() const { return aboveViewMaxWidth_; }
    void setAboveViewMaxWidth(double width) { aboveViewMaxWidth_ = width; }
    double touchScale() const { return touchScale_; }
    void setTouchScale(double scale) { touchScale_ = scale; }

    const std::shared_ptr<ui::View>& dragView() const { return dragView_; }
    const std::shared_ptr<ui::View>& aboveView() const { return aboveView_; }
    const std::shared_ptr<ui::View>& belowView() const { return belowView_; }

    std::shared_ptr<OrvSeekBarDelegate> delegate() const { return delegate_.lock(); }
    void setDelegate(std::weak_ptr<OrvSeekBarDelegate> delegate) {
        delegate_ = std::move(delegate);
    }

    double progress() const { return progress_; }
    // Clamped to 0 to 1; places the thumb and the filled track without telling the delegate.
    void setProgress(double progress);
    // setProgress(), then tells the delegate.
    void moveWithProgress(double progress);

    // Reads the resting geometry from the views, so that it follows a changed size.
    void storeDefault();
    // The thumb at its resting size about its current centre.
    void restorePosition();

    void touchesBegan(const ui::TouchSet& touches, ui::Event* event) override;
    void touchesMoved(const ui::TouchSet& touches, ui::Event* event) override;
    void touchesEnded(const ui::TouchSet& touches, ui::Event* event) override;
    void touchesCancelled(const ui::TouchSet& touches, ui::Event* event) override;

  private:
    void orvInitView();
    // The thumb at `size` about its current centre, kept round.
    void resizeDragView(gfx::Size size);
    // The touch a handler acts on: none for the later taps of a multi-tap.
    static const ui::Touch* actingTouch(const ui::TouchSet& touches);
    // Along the whole width, not the thumb's shorter range.
    double progressOfTouch(const ui::Touch& touch) const;

    gfx::Size dragViewSize_;
    double starCenterX_ = 0;
    double endCenterX_ = 0;
    double aboveViewMaxWidth_ = 0;
    double touchScale_ = 1.2;
    std::shared_ptr<ui::View> dragView_;
    std::shared_ptr<ui::View> aboveView_;
    std::shared_ptr<ui::View> belowView_;
    std::weak_ptr<OrvSeekBarDelegate> delegate_;
    double progress_ = 0;
};
