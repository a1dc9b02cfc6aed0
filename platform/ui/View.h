#pragma once
// A rectangle on the screen with a layer, subviews, touches and gesture recognisers.
//
// frame is derived from center, bounds and transform, as on the platform our interfaces come
// from: setting bounds keeps the centre; reading the frame under a transform gives the bounding
// box of the transformed bounds; setting the frame under a non-identity transform keeps the
// transform and sets the centre to the frame's middle (less the transform's own translation, so
// the frame reads back as set) and the bounds size to the frame's size with the transform's
// scale removed (rotations by ±pi/2 exchange width and height; other angles, which have no
// unique answer, only lose the scale).

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/gfx/Color.h"
#include "platform/gfx/Geometry.h"
#include "platform/ui/Responder.h"

namespace orv::gfx {
class Canvas;
}

namespace orv::ui {

class Layer;
class Window;
class ViewController;
class GestureRecognizer;

// The platform's numbering of content modes.
enum class ContentMode {
    ScaleToFill = 0,
    ScaleAspectFit = 1,
    ScaleAspectFill = 2,
    Redraw = 3,
    Center = 4,
    Top = 5,
    Bottom = 6,
    Left = 7,
    Right = 8,
    TopLeft = 9,
    TopRight = 10,
    BottomLeft = 11,
    BottomRight = 12,
};

// Flexible margins and sizes, the platform's bits.
enum AutoresizingMask : unsigned {
    AutoresizingNone = 0,
    AutoresizingFlexibleLeftMargin = 1 << 0,
    AutoresizingFlexibleWidth = 1 << 1,
    AutoresizingFlexibleRightMargin = 1 << 2,
    AutoresizingFlexibleTopMargin = 1 << 3,
    AutoresizingFlexibleHeight = 1 << 4,
    AutoresizingFlexibleBottomMargin = 1 << 5,
};

class View : public Responder {
    ORV_DECLARE_CLASS(View)
  public:
    using Ptr = std::shared_ptr<View>;

    // init() is initWithFrame() with an empty frame. Subclasses override initWithFrame()
    // (calling the base first) and do their set-up there.
    void init() override;
    virtual void initWithFrame(const gfx::Rect& frame);
    void dealloc() override;

    // Geometry.
    gfx::Rect frame() const;
    virtual void setFrame(const gfx::Rect& frame);
    gfx::Rect bounds() const { return bounds_; }
    virtual void setBounds(const gfx::Rect& bounds);
    gfx::Point center() const { return center_; }
    void setCenter(gfx::Point center);
    gfx::AffineTransform transform() const { return transform_; }
    void setTransform(const gfx::AffineTransform& t);
    // From this view's bounds space to its superview's: the bounds origin offset, then the
    // transform about the centre, then the centre's place in the superview.
    gfx::AffineTransform transformToSuperview() const;

    // What the screen shows while a view animation moves a property (the model value otherwise).
    double presentationAlpha() const;
    gfx::Point presentationCenter() const;
    gfx::Rect presentationBounds() const;
    gfx::AffineTransform presentationTransform() const;
    std::optional<gfx::Color> presentationBackgroundColor() const;

    // Appearance. alpha is stored as given (100 counts as opaque); it is clamped when drawn.
    double alpha() const { return alpha_; }
    void setAlpha(double alpha);
    bool isHidden() const { return hidden_; }
    void setHidden(bool hidden);
    bool clipsToBounds() const;
    void setClipsToBounds(bool clips);
    std::optional<gfx::Color> backgroundColor() const { return backgroundColor_; }
    virtual void setBackgroundColor(std::optional<gfx::Color> color);
    ContentMode contentMode() const { return contentMode_; }
    void setContentMode(ContentMode mode);
    int tag() const { return tag_; }
    void setTag(int tag) { tag_ = tag; }
    bool isUserInteractionEnabled() const { return userInteractionEnabled_; }
    void setUserInteractionEnabled(bool enabled) { userInteractionEnabled_ = enabled; }
    bool isMultipleTouchEnabled() const { return multipleTouchEnabled_; }
    void setMultipleTouchEnabled(bool enabled) { multipleTouchEnabled_ = enabled; }
    unsigned autoresizingMask() const { return autoresizingMask_; }
    void setAutoresizingMask(unsigned mask) { autoresizingMask_ = mask; }
    bool autoresizesSubviews() const { return autoresizesSubviews_; }
    void setAutoresizesSubviews(bool on) { autoresizesSubviews_ = on; }
    Layer& layer() const { return *layer_; }

    // Hierarchy. Subviews are held strongly, the superview weakly.
    View* superview() const { return superview_; }
    const std::vector<Ptr>& subviews() const { return subviews_; }
    Window* window() const;
    void addSubview(const Ptr& view);
    void insertSubview(const Ptr& view, size_t index);
    void insertSubviewBelow(const Ptr& view, const View* sibling);
    void insertSubviewAbove(const Ptr& view, const View* sibling);
    void removeFromSuperview();
    void bringSubviewToFront(const View* view);
    void sendSubviewToBack(const View* view);
    bool isDescendantOfView(const View* view) const;
    View::Ptr viewWithTag(int tag);

    virtual void willMoveToSuperview(View* newSuperview) {}
    virtual void didMoveToSuperview() {}
    virtual void willMoveToWindow(Window* newWindow) {}
    virtual void didMoveToWindow() {}
    virtual void didAddSubview(View* subview) {}
    virtual void willRemoveSubview(View* subview) {}

    // Coordinates. A null view means the window's (screen) coordinates: the bounds space of the
    // top of the tree, which is the window for a view on screen.
    gfx::Point convertPointToView(gfx::Point p, const View* view) const;
    gfx::Point convertPointFromView(gfx::Point p, const View* view) const;
    gfx::Rect convertRectToView(const gfx::Rect& r, const View* view) const;
    gfx::Rect convertRectFromView(const gfx::Rect& r, const View* view) const;
    // From this view's bounds space to the window's, and back (full affine, transforms included).
    gfx::AffineTransform transformToWindow() const;

    // Hit testing: the deepest visible, interactive view under the point, front-most first.
    virtual View* hitTest(gfx::Point p, Event* event);
    virtual bool pointInside(gfx::Point p, Event* event) const;

    // Layout and drawing.
    void setNeedsLayout();
    bool needsLayout() const { return needsLayout_; }
    // Runs layoutSubviews() here and below wherever a layout is pending.
    void layoutIfNeeded();
    virtual void layoutSubviews() {}
    virtual gfx::Size sizeThatFits(gfx::Size size) const { return bounds_.size; }
    void sizeToFit();
    void setNeedsDisplay();
    bool needsDisplay() const { return needsDisplay_; }
    void clearNeedsDisplay() { needsDisplay_ = false; }
    // Custom drawing, called by the renderer in bounds coordinates when a subclass overrides it.
    virtual void drawRect(gfx::Canvas& canvas, const gfx::Rect& rect) {}
    virtual bool hasCustomDrawing() const { return false; }

    // Gesture recognisers attached to this view.
    void addGestureRecognizer(const std::shared_ptr<GestureRecognizer>& recognizer);
    void removeGestureRecognizer(const GestureRecognizer* recognizer);
    const std::vector<std::shared_ptr<GestureRecognizer>>& gestureRecognizers() const {
        return gestureRecognizers_;
    }

    // The controller whose root view this is (set by the controller), or null.
    ViewController* viewController() const { return viewController_; }
    void setViewController(ViewController* controller) { viewController_ = controller; }
    Responder* nextResponder() const override;

    // The view's own tear-down hook, called by a controller at its end and by views on themselves.
    virtual void viewWillDestory() {}

    // View animations (UIView animateWithDuration...). Changes made in `animations` apply to the
    // model at once; `completion` runs on the main loop after delay + duration with finished
    // false when a newer animation of the same view and property interrupted this one.
    static void animateWithDuration(double duration, std::function<void()> animations,
                                    std::function<void(bool finished)> completion = nullptr);
    static void animateWithDuration(double duration, double delay, unsigned options,
                                    std::function<void()> animations,
                                    std::function<void(bool finished)> completion);
    static void performWithoutAnimation(const std::function<void()>& changes);

  private:
    friend class Window;
    void setWindowRecursively(Window* window);
    void removeSubviewInternal(View* view);
    // Inserts (or moves, when already ours) a subview at the index `where` gives once the view
    // is out of the list.
    void placeSubview(const Ptr& view, const std::function<size_t()>& where);
    void setGeometry(gfx::Point center, const gfx::Rect& bounds);
    void autoresizeSubviews(gfx::Size oldSize);

    gfx::Rect bounds_;
    gfx::Point center_;
    gfx::AffineTransform transform_;
    double alpha_ = 1;
    bool hidden_ = false;
    std::optional<gfx::Color> backgroundColor_;
    ContentMode contentMode_ = ContentMode::ScaleToFill;
    int tag_ = 0;
    bool userInteractionEnabled_ = true;
    bool multipleTouchEnabled_ = false;
    unsigned autoresizingMask_ = AutoresizingNone;
    bool autoresizesSubviews_ = true;
    bool needsLayout_ = true;  // a new view lays out once, as on the platform
    bool needsDisplay_ = false;
    std::shared_ptr<Layer> layer_;
    View* superview_ = nullptr;
    Window* window_ = nullptr;
    std::vector<Ptr> subviews_;
    std::vector<std::shared_ptr<GestureRecognizer>> gestureRecognizers_;
    ViewController* viewController_ = nullptr;
};

// Makes a view of class T through initWithFrame().
template <class T = View>
std::shared_ptr<T> makeView(const gfx::Rect& frame = {}) {
    return rt::makeWith<T>([&](T& v) { v.initWithFrame(frame); });
}

}  // namespace orv::ui
