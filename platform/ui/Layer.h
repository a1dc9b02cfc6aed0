#pragma once
// The drawable part of a view (and free-standing sublayers such as shape layers): border,
// corner radius, clipping, contents, a mask, sublayers and keyed animations.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/gfx/Color.h"
#include "platform/gfx/Geometry.h"
#include "platform/gfx/Image.h"
#include "platform/rt/Object.h"

namespace orv::gfx {
class Canvas;
}

namespace orv::ui {

class View;
class Animation;

class Layer : public rt::Object {
    ORV_DECLARE_CLASS(Layer)
  public:
    using Ptr = std::shared_ptr<Layer>;

    void dealloc() override;

    // The view this layer backs, or null for a free-standing layer.
    View* delegateView() const { return view_; }

    // Geometry of a free-standing layer (a view's layer follows its view's frame instead).
    gfx::Rect frame() const;
    void setFrame(const gfx::Rect& frame);
    // Bounds from the origin with the frame's size, or the view's bounds; position is the
    // centre of the frame (the anchor point is always the middle), or the view's centre.
    gfx::Rect bounds() const;
    gfx::Point position() const;
    void setPosition(gfx::Point p);
    gfx::AffineTransform affineTransform() const { return transform_; }
    void setAffineTransform(const gfx::AffineTransform& t) { transform_ = t; }
    double opacity() const { return opacity_; }
    void setOpacity(double opacity) { opacity_ = opacity; }
    bool isHidden() const { return hidden_; }
    void setHidden(bool hidden) { hidden_ = hidden; }

    std::optional<gfx::Color> backgroundColor() const { return backgroundColor_; }
    void setBackgroundColor(std::optional<gfx::Color> c) { backgroundColor_ = c; }
    double borderWidth() const { return borderWidth_; }
    void setBorderWidth(double w) { borderWidth_ = w; }
    gfx::Color borderColor() const { return borderColor_; }
    void setBorderColor(const gfx::Color& c) { borderColor_ = c; }
    double cornerRadius() const { return cornerRadius_; }
    void setCornerRadius(double r) { cornerRadius_ = r; }
    bool masksToBounds() const { return masksToBounds_; }
    void setMasksToBounds(bool m) { masksToBounds_ = m; }
    bool allowsEdgeAntialiasing() const { return allowsEdgeAntialiasing_; }
    void setAllowsEdgeAntialiasing(bool on) { allowsEdgeAntialiasing_ = on; }
    // A picture drawn to fill the bounds (used by free-standing layers).
    gfx::ImagePtr contents() const { return contents_; }
    void setContents(gfx::ImagePtr image) { contents_ = std::move(image); }
    // Only where the mask's alpha is non-zero is this layer drawn.
    Ptr mask() const { return mask_; }
    void setMask(Ptr mask) { mask_ = std::move(mask); }

    // Sublayers are drawn above the view's own content and below its subviews.
    void addSublayer(const Ptr& layer);
    void removeFromSuperlayer();
    Layer* superlayer() const { return superlayer_; }
    const std::vector<Ptr>& sublayers() const { return sublayers_; }

    // Keyed animations. Adding under a key that is in use replaces that animation.
    void addAnimation(std::shared_ptr<Animation> animation, const std::string& key);
    std::shared_ptr<Animation> animationForKey(const std::string& key) const;
    void removeAnimationForKey(const std::string& key);
    void removeAllAnimations();
    std::vector<std::string> animationKeys() const;

    // What the running animations make of a key path's model value now.
    double presentationValue(const std::string& keyPath, double modelValue) const;
    // The model transform with the running "transform.rotation" and "transform.scale" applied.
    gfx::AffineTransform presentationTransform(const gfx::AffineTransform& model) const;
    // This layer's opacity now (for a view's layer: the view's alpha, animations included).
    double presentationOpacity() const;

    // Draws this layer's own content (background, contents, subclass drawing) in its bounds;
    // the renderer handles transforms, opacity, clipping, border and sublayers around it.
    virtual void drawInCanvas(gfx::Canvas& canvas) const;

  private:
    friend class View;
    struct RunningAnimation {
        std::string key;
        std::shared_ptr<Animation> animation;
        double beginTime = 0;
        uint64_t serial = 0;
    };
    void animationTimeIsUp(uint64_t serial);
    void stopAnimation(const RunningAnimation& running, bool finished);

    View* view_ = nullptr;
    gfx::Rect frame_;
    gfx::AffineTransform transform_;
    double opacity_ = 1;
    bool hidden_ = false;
    std::optional<gfx::Color> backgroundColor_;
    double borderWidth_ = 0;
    gfx::Color borderColor_ = gfx::Color::black();
    double cornerRadius_ = 0;
    bool masksToBounds_ = false;
    bool allowsEdgeAntialiasing_ = false;
    gfx::ImagePtr contents_;
    Ptr mask_;
    Layer* superlayer_ = nullptr;
    std::vector<Ptr> sublayers_;
    std::vector<RunningAnimation> animations_;
    uint64_t nextSerial_ = 1;
};

}  // namespace orv::ui
