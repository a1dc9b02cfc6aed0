#pragma once
// What the crop tools ask of the zoomable image behind the crop window.

#include <memory>

#include "frameworks/core/OrvKit.h"
#include "orvviews/views/OrvTouchImageViewDelegate.h"
#include "platform/gfx/Geometry.h"
#include "platform/gfx/Image.h"
#include "platform/ui/ImageView.h"

class OrvTouchImageViewInterface {
    ORV_DECLARE_PROTOCOL(OrvTouchImageViewInterface)
  public:
    // The values of changeImage().
    static constexpr long kTurnLeft = 1;
    static constexpr long kTurnRight = 2;
    static constexpr long kMirrorHorizontal = 4;
    static constexpr long kMirrorVertical = 8;

    virtual ~OrvTouchImageViewInterface() = default;
    // After a change of size.
    virtual void needUpdateLayout() = 0;
    // A missing image is ignored.
    virtual void setImage(const gfx::ImagePtr& image) = 0;
    // Turns or mirrors the picture with an animation; ignored while one runs.
    virtual void changeImage(long change) = 0;
    // Moves the crop window to a new width-to-height ratio (0: none), with an animation.
    virtual void changeRegionRatio(double ratio) = 0;
    // The part of the picture in the window, in fractions; zero without a window.
    virtual gfx::Rect countImageCutRect() = 0;
    // An animation runs or the user is moving the picture.
    virtual bool inActioning() = 0;
    // Puts back a crop from countImageCutRect() at that zoom; an empty rectangle does nothing.
    virtual void restoreWithZoomRect(const gfx::Rect& rect, double zoomScale) = 0;

    virtual std::weak_ptr<OrvTouchImageViewDelegate> delegate() const = 0;
    virtual void setDelegate(std::weak_ptr<OrvTouchImageViewDelegate> delegate) = 0;
    virtual std::shared_ptr<ui::ImageView> imageView() const = 0;
    virtual bool isInAniming() const = 0;
    virtual double regionRatio() const = 0;
    // At once, without an animation.
    virtual void setRegionRatio(double ratio) = 0;
    // The orientation tag of the picture shown.
    virtual gfx::ImageOrientation imageOrientation() const = 0;
    virtual double zoomScale() const = 0;
};
