#pragma once
// A photo the user pans and zooms behind a crop window. It answers which part of the picture
// lies in the window (countImageCutRect, in fractions), and turns and mirrors the picture: an
// animation first, then a new orientation tag on the same pixels. Nothing is cropped here.
//
// Built of three nested views: the scroll view that pans and zooms (zoom 1 to 3), the view it
// zooms, and the picture in it; the crop mask lies above the scroll view, made at first need.
// With a window the picture covers it and its edges can be pulled to the window's edges; without
// one it fits the view. A double tap zooms in fully, or back out from any other zoom.

#include <memory>

#include "orvviews/views/OrvMaskRegionView.h"
#include "orvviews/views/OrvTouchImageViewInterface.h"
#include "platform/ui/ScrollView.h"
#include "platform/ui/ScrollViewDelegate.h"

namespace orv::ui {
class TapGestureRecognizer;
}

class OrvTouchImageView : public ui::View,
                          public ui::ScrollViewDelegate,
                          public OrvTouchImageViewInterface {
    ORV_DECLARE_CLASS(OrvTouchImageView)
  public:
    static constexpr double kMaximumZoom = 3.0;
    static constexpr double kAnimationSeconds = 0.3;

    void initWithFrame(const gfx::Rect& frame) override;

    // OrvTouchImageViewInterface
    void needUpdateLayout() override;
    void setImage(const gfx::ImagePtr& image) override;
    void changeImage(long change) override;
    void changeRegionRatio(double ratio) override;
    gfx::Rect countImageCutRect() override;
    bool inActioning() override;
    void restoreWithZoomRect(const gfx::Rect& rect, double zoomScale) override;
    std::weak_ptr<OrvTouchImageViewDelegate> delegate() const override { return delegate_; }
    void setDelegate(std::weak_ptr<OrvTouchImageViewDelegate> delegate) override {
        delegate_ = std::move(delegate);
    }
    std::shared_ptr<ui::ImageView> imageView() const override { return imageView_; }
    bool isInAniming() const override { return isInAniming_; }
    double regionRatio() const override { return regionRatio_; }
    void setRegionRatio(double ratio) override;
    gfx::ImageOrientation imageOrientation() const override;
    double zoomScale() const override { return wrapView_->zoomScale(); }

    const std::shared_ptr<ui::ScrollView>& wrapView() const { return wrapView_; }
    const std::shared_ptr<ui::View>& imageWrapView() const { return imageWrapView_; }
    // The mask, made at first need above the scroll view.
    const std::shared_ptr<OrvMaskRegionView>& cutRegionView();

    // Lays the picture of size `size` out for the window (or the whole view) and gives its
    // rectangle: the scroll view's insets, offset and content size follow.
    gfx::Rect contentRectWithSize(gfx::Size size);
    gfx::Rect contentRectWithSize(gfx::Size size, const gfx::Rect& regionRect);

    void bindDoubelCilck();
    void doubleGesture(ui::TapGestureRecognizer& gesture);
    void setAnimingState(bool animating);
    void resizeWithTrun(bool left);
    void resizeCompletedWithTrun(bool left);
    void mirrorWithHorizontal(bool horizontal);
    void mirrorCompletedWithHorizontal(bool horizontal);
    // Counts a turn or mirror.
    static void appendStatistics(long change);

    // ScrollViewDelegate
    ui::View* viewForZoomingInScrollView(ui::ScrollView& scrollView) override {
        return imageWrapView_.get();
    }

  private:
    std::shared_ptr<OrvTouchImageView> me();

    std::shared_ptr<ui::ScrollView> wrapView_;
    std::shared_ptr<ui::View> imageWrapView_;
    std::shared_ptr<ui::ImageView> imageView_;
    std::shared_ptr<OrvMaskRegionView> cutRegionView_;
    bool isInAniming_ = false;
    std::weak_ptr<OrvTouchImageViewDelegate> delegate_;
    double regionRatio_ = 0;
};
