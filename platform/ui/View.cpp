#include "platform/ui/View.h"

#include <algorithm>
#include <cmath>

#include "platform/ui/GestureRecognizer.h"
#include "platform/ui/Layer.h"
#include "platform/ui/ViewAnimator.h"
#include "platform/ui/ViewController.h"
#include "platform/ui/Window.h"

namespace orv::ui {

ORV_DEFINE_CLASS(View, Responder)

namespace {

using Property = ViewAnimator::Property;
using Values = ViewAnimator::Values;

Values pack(double v) {
    return {v};
}
Values pack(gfx::Point p) {
    return {p.x, p.y};
}
Values pack(const gfx::Rect& r) {
    return {r.origin.x, r.origin.y, r.size.width, r.size.height};
}
Values pack(const gfx::AffineTransform& t) {
    return {t.a, t.b, t.c, t.d, t.tx, t.ty};
}
// Colours travel premultiplied, so that a fade from no colour keeps the hue of the other end.
Values pack(const std::optional<gfx::Color>& c) {
    if (!c) return {};
    return {c->r * c->a, c->g * c->a, c->b * c->a, c->a};
}

std::optional<gfx::Color> unpackColor(const Values& v) {
    if (v[3] <= 0) return gfx::Color::clear();
    return gfx::Color{v[0] / v[3], v[1] / v[3], v[2] / v[3], v[3]};
}

void report(const View& view, Property property, const Values& from, const Values& to) {
    ViewAnimator::shared().propertyChanged(view, property, from, to);
}

bool isLinearIdentity(const gfx::AffineTransform& t) {
    return t.a == 1 && t.b == 0 && t.c == 0 && t.d == 1;
}

// The bounds size whose transformed bounding box is `frameSize`: exact for scales and quarter
// turns; other angles have no unique answer, so only the transform's scale is taken out.
gfx::Size untransformedSize(gfx::Size frameSize, const gfx::AffineTransform& t) {
    if (isLinearIdentity(t)) return frameSize;
    const double a = std::fabs(t.a), b = std::fabs(t.b), c = std::fabs(t.c), d = std::fabs(t.d);
    const double det = a * d - b * c;
    if (std::fabs(det) > 1e-6) {
        const double w = (d * frameSize.width - c * frameSize.height) / det;
        const double h = (a * frameSize.height - b * frameSize.width) / det;
        if (w >= -1e-9 && h >= -1e-9) return {std::max(0.0, w), std::max(0.0, h)};
    }
    const double sx = std::hypot(t.a, t.b), sy = std::hypot(t.c, t.d);
    return {sx > 0 ? frameSize.width / sx : 0, sy > 0 ? frameSize.height / sy : 0};
}

gfx::Rect frameOf(gfx::Point center, gfx::Size size, const gfx::AffineTransform& t) {
    gfx::Rect local{-size.width / 2, -size.height / 2, size.width, size.height};
    if (!t.isIdentity()) local = gfx::applyTransform(local, t);
    return gfx::rectOffset(local, center.x, center.y);
}

// One axis of the autoresizing rule: the flexible parts (leading margin, length, trailing
// margin) share the change of the superview's length in proportion to their present lengths,
// or equally when those are all zero.
void resizeAxis(double& origin, double& length, double oldParent, double newParent, bool flexLead,
                bool flexLength, bool flexTrail) {
    const double delta = newParent - oldParent;
    const int count = int(flexLead) + int(flexLength) + int(flexTrail);
    if (delta == 0 || count == 0) return;
    const double lead = flexLead ? std::max(0.0, origin) : 0;
    const double len = flexLength ? std::max(0.0, length) : 0;
    const double trail = flexTrail ? std::max(0.0, oldParent - origin - length) : 0;
    const double sum = lead + len + trail;
    auto share = [&](bool flexible, double part) {
        if (!flexible) return 0.0;
        return sum > 0 ? delta * part / sum : delta / count;
    };
    origin += share(flexLead, lead);
    length += share(flexLength, len);
}

}  // namespace

void View::init() {
    Responder::init();
    initWithFrame({});
}

void View::initWithFrame(const gfx::Rect& frame) {
    layer_ = rt::make<Layer>();
    layer_->view_ = this;
    const gfx::Rect f = gfx::rectStandardize(frame);
    bounds_ = {0, 0, f.size.width, f.size.height};
    center_ = {gfx::rectGetMidX(f), gfx::rectGetMidY(f)};
}

void View::dealloc() {
    ViewAnimator::shared().forgetView(*this);
    for (const Ptr& subview : subviews_) {
        subview->superview_ = nullptr;
        subview->setWindowRecursively(nullptr);
    }
    subviews_.clear();
    for (const auto& recognizer : gestureRecognizers_) recognizer->setView(nullptr);
    gestureRecognizers_.clear();
    if (layer_) layer_->view_ = nullptr;
    Responder::dealloc();
}

// --- Geometry -------------------------------------------------------------------------------

gfx::Rect View::frame() const {
    return frameOf(center_, bounds_.size, transform_);
}

void View::setFrame(const gfx::Rect& frame) {
    const gfx::Rect f = gfx::rectStandardize(frame);
    const gfx::Size size = untransformedSize(f.size, transform_);
    // The transform's own translation moves the frame, so it is taken out of the centre.
    const gfx::Point center{gfx::rectGetMidX(f) - transform_.tx,
                            gfx::rectGetMidY(f) - transform_.ty};
    setGeometry(center, {bounds_.origin, size});
}

void View::setBounds(const gfx::Rect& bounds) {
    setGeometry(center_, bounds);
}

void View::setCenter(gfx::Point center) {
    setGeometry(center, bounds_);
}

void View::setGeometry(gfx::Point center, const gfx::Rect& bounds) {
    if (center != center_) report(*this, Property::Center, pack(center_), pack(center));
    if (bounds != bounds_) report(*this, Property::Bounds, pack(bounds_), pack(bounds));
    const gfx::Size oldSize = bounds_.size;
    center_ = center;
    bounds_ = bounds;
    if (oldSize != bounds_.size) {
        setNeedsLayout();
        if (autoresizesSubviews_) autoresizeSubviews(oldSize);
    }
}

void View::autoresizeSubviews(gfx::Size oldSize) {
    for (const Ptr& subview : subviews_) {
        const unsigned mask = subview->autoresizingMask_;
        if (mask == AutoresizingNone) continue;
        gfx::Rect f = subview->frame();
        resizeAxis(f.origin.x, f.size.width, oldSize.width, bounds_.size.width,
                   mask & AutoresizingFlexibleLeftMargin, mask & AutoresizingFlexibleWidth,
                   mask & AutoresizingFlexibleRightMargin);
        resizeAxis(f.origin.y, f.size.height, oldSize.height, bounds_.size.height,
                   mask & AutoresizingFlexibleTopMargin, mask & AutoresizingFlexibleHeight,
                   mask & AutoresizingFlexibleBottomMargin);
        subview->setFrame(f);
    }
}

void View::setTransform(const gfx::AffineTransform& t) {
    if (t != transform_) report(*this, Property::Transform, pack(transform_), pack(t));
    transform_ = t;
}

gfx::AffineTransform View::transformToSuperview() const {
    const double bx = bounds_.origin.x + bounds_.size.width / 2;
    const double by = bounds_.origin.y + bounds_.size.height / 2;
    return gfx::AffineTransform::translation(-bx, -by)
        .concat(transform_)
        .concat(gfx::AffineTransform::translation(center_.x, center_.y));
}

gfx::AffineTransform View::transformToWindow() const {
    gfx::AffineTransform t;
    for (const View* v = this; v->superview_ != nullptr; v = v->superview_) {
        t = t.concat(v->transformToSuperview());
    }
    return t;
}

// --- Presentation values ---------------------------------------------------------------------

double View::presentationAlpha() const {
    auto v = ViewAnimator::shared().presentationValue(*this, Property::Alpha);
    return v ? (*v)[0] : alpha_;
}

gfx::Point View::presentationCenter() const {
    auto v = ViewAnimator::shared().presentationValue(*this, Property::Center);
    return v ? gfx::Point{(*v)[0], (*v)[1]} : center_;
}

gfx::Rect View::presentationBounds() const {
    auto v = ViewAnimator::shared().presentationValue(*this, Property::Bounds);
    return v ? gfx::Rect{(*v)[0], (*v)[1], (*v)[2], (*v)[3]} : bounds_;
}

gfx::AffineTransform View::presentationTransform() const {
    auto v = ViewAnimator::shared().presentationValue(*this, Property::Transform);
    return v ? gfx::AffineTransform{(*v)[0], (*v)[1], (*v)[2], (*v)[3], (*v)[4], (*v)[5]}
             : transform_;
}

std::optional<gfx::Color> View::presentationBackgroundColor() const {
    auto v = ViewAnimator::shared().presentationValue(*this, Property::BackgroundColor);
    return v ? unpackColor(*v) : layer_->backgroundColor();
}

// --- Appearance ------------------------------------------------------------------------------

void View::setAlpha(double alpha) {
    if (alpha != alpha_) report(*this, Property::Alpha, pack(alpha_), pack(alpha));
    alpha_ = alpha;
}

void View::setHidden(bool hidden) {
    hidden_ = hidden;
}

bool View::clipsToBounds() const {
    return layer_->masksToBounds();
}

void View::setClipsToBounds(bool clips) {
    layer_->setMasksToBounds(clips);
}

void View::setBackgroundColor(std::optional<gfx::Color> color) {
    if (color != backgroundColor_) {
        report(*this, Property::BackgroundColor, pack(backgroundColor_), pack(color));
    }
    backgroundColor_ = color;
    layer_->setBackgroundColor(color);
}

void View::setContentMode(ContentMode mode) {
    contentMode_ = mode;
    setNeedsDisplay();
}

// --- Hierarchy -------------------------------------------------------------------------------

Window* View::window() const {
    return window_;
}

void View::addSubview(const Ptr& view) {
    placeSubview(view, [this] { return subviews_.size(); });
}

void View::insertSubview(const Ptr& view, size_t index) {
    placeSubview(view, [this, index] { return std::min(index, subviews_.size()); });
}

void View::insertSubviewBelow(const Ptr& view, const View* sibling) {
    placeSubview(view, [this, sibling] {
        auto it = std::find_if(subviews_.begin(), subviews_.end(),
                               [sibling](const Ptr& v) { return v.get() == sibling; });
        return static_cast<size_t>(it - subviews_.begin());
    });
}

void View::insertSubviewAbove(const Ptr& view, const View* sibling) {
    placeSubview(view, [this, sibling] {
        auto it = std::find_if(subviews_.begin(), subviews_.end(),
                               [sibling](const Ptr& v) { return v.get() == sibling; });
        return it == subviews_.end() ? subviews_.size()
                                     : static_cast<size_t>(it - subviews_.begin()) + 1;
    });
}

void View::placeSubview(const Ptr& view, const std::function<size_t()>& where) {
    if (!view || view.get() == this || isDescendantOfView(view.get())) return;
    if (view->superview_ == this) {  // a new place in the same list: no hooks
        removeSubviewInternal(view.get());
        subviews_.insert(subviews_.begin() + static_cast<long>(where()), view);
        return;
    }
    const Ptr keep = view;
    view->willMoveToSuperview(this);
    if (View* old = view->superview_) {
        old->willRemoveSubview(view.get());
        old->removeSubviewInternal(view.get());
        old->setNeedsLayout();
    }
    subviews_.insert(subviews_.begin() + static_cast<long>(where()), view);
    view->superview_ = this;
    view->setWindowRecursively(window_);
    view->setNeedsLayout();
    setNeedsLayout();
    didAddSubview(view.get());
    view->didMoveToSuperview();
}

void View::removeSubviewInternal(View* view) {
    std::erase_if(subviews_, [view](const Ptr& v) { return v.get() == view; });
}

void View::removeFromSuperview() {
    View* parent = superview_;
    if (!parent) return;
    const Ptr keep = self<View>();
    parent->willRemoveSubview(this);
    willMoveToSuperview(nullptr);
    parent->removeSubviewInternal(this);
    superview_ = nullptr;
    setWindowRecursively(nullptr);
    parent->setNeedsLayout();
    didMoveToSuperview();
}

void View::setWindowRecursively(Window* window) {
    if (window_ == window) return;
    if (static_cast<const View*>(window_) == this) return;  // a window stays its own window
    willMoveToWindow(window);
    if (!window && isFirstResponder()) resignFirstResponder();
    window_ = window;
    const auto subviews = subviews_;
    for (const Ptr& subview : subviews) subview->setWindowRecursively(window);
    if (window_ && needsLayout_) window_->setNeedsLayoutPass();
    didMoveToWindow();
}

void View::bringSubviewToFront(const View* view) {
    auto it = std::find_if(subviews_.begin(), subviews_.end(),
                           [view](const Ptr& v) { return v.get() == view; });
    if (it != subviews_.end()) std::rotate(it, it + 1, subviews_.end());
}

void View::sendSubviewToBack(const View* view) {
    auto it = std::find_if(subviews_.begin(), subviews_.end(),
                           [view](const Ptr& v) { return v.get() == view; });
    if (it != subviews_.end()) std::rotate(subviews_.begin(), it, it + 1);
}

bool View::isDescendantOfView(const View* view) const {
    for (const View* v = this; v != nullptr; v = v->superview_) {
        if (v == view) return true;
    }
    return false;
}

View::Ptr View::viewWithTag(int tag) {
    if (tag_ == tag) return self<View>();
    for (const Ptr& subview : subviews_) {
        if (Ptr found = subview->viewWithTag(tag)) return found;
    }
    return nullptr;
}

Responder* View::nextResponder() const {
    if (viewController_) return viewController_;
    return superview_;
}

// --- Coordinates -----------------------------------------------------------------------------

gfx::Point View::convertPointToView(gfx::Point p, const View* view) const {
    const gfx::Point inWindow = gfx::applyTransform(p, transformToWindow());
    if (!view) return inWindow;
    return gfx::applyTransform(inWindow, view->transformToWindow().inverted());
}

gfx::Point View::convertPointFromView(gfx::Point p, const View* view) const {
    if (view) return view->convertPointToView(p, this);
    return gfx::applyTransform(p, transformToWindow().inverted());
}

gfx::Rect View::convertRectToView(const gfx::Rect& r, const View* view) const {
    gfx::AffineTransform t = transformToWindow();
    if (view) t = t.concat(view->transformToWindow().inverted());
    return gfx::applyTransform(r, t);
}

gfx::Rect View::convertRectFromView(const gfx::Rect& r, const View* view) const {
    if (view) return view->convertRectToView(r, this);
    return gfx::applyTransform(r, transformToWindow().inverted());
}

// --- Hit testing -----------------------------------------------------------------------------

View* View::hitTest(gfx::Point p, Event* event) {
    if (hidden_ || !userInteractionEnabled_ || alpha_ < 0.01) return nullptr;
    if (!pointInside(p, event)) return nullptr;
    for (size_t i = subviews_.size(); i-- > 0;) {
        const Ptr subview = subviews_[i];
        const gfx::Point q = gfx::applyTransform(p, subview->transformToSuperview().inverted());
        if (View* hit = subview->hitTest(q, event)) return hit;
    }
    return this;
}

bool View::pointInside(gfx::Point p, Event* event) const {
    return gfx::rectContainsPoint(bounds_, p);
}

// --- Layout and drawing ----------------------------------------------------------------------

void View::setNeedsLayout() {
    needsLayout_ = true;
    if (window_) window_->setNeedsLayoutPass();
}

void View::layoutIfNeeded() {
    if (needsLayout_) {
        needsLayout_ = false;
        layoutSubviews();
    }
    const auto subviews = subviews_;  // layoutSubviews() may change the list
    for (const Ptr& subview : subviews) subview->layoutIfNeeded();
}

void View::sizeToFit() {
    const gfx::Size size = sizeThatFits(bounds_.size);
    setFrame({frame().origin, size});
}

void View::setNeedsDisplay() {
    needsDisplay_ = true;
}

// --- Gesture recognisers ---------------------------------------------------------------------

void View::addGestureRecognizer(const std::shared_ptr<GestureRecognizer>& recognizer) {
    if (!recognizer || recognizer->view() == this) return;
    // A recogniser belongs to one view at a time.
    if (View* previous = recognizer->view()) previous->removeGestureRecognizer(recognizer.get());
    gestureRecognizers_.push_back(recognizer);
    recognizer->setView(this);
}

void View::removeGestureRecognizer(const GestureRecognizer* recognizer) {
    auto it = std::find_if(gestureRecognizers_.begin(), gestureRecognizers_.end(),
                           [recognizer](const auto& r) { return r.get() == recognizer; });
    if (it == gestureRecognizers_.end()) return;
    const auto keep = *it;
    gestureRecognizers_.erase(it);
    keep->setView(nullptr);
}

// --- Animations ------------------------------------------------------------------------------

void View::animateWithDuration(double duration, std::function<void()> animations,
                               std::function<void(bool finished)> completion) {
    animateWithDuration(duration, 0, 0, std::move(animations), std::move(completion));
}

void View::animateWithDuration(double duration, double delay, unsigned options,
                               std::function<void()> animations,
                               std::function<void(bool finished)> completion) {
    ViewAnimator::shared().animate(duration, delay, options, animations, std::move(completion));
}

void View::performWithoutAnimation(const std::function<void()>& changes) {
    ViewAnimator::shared().withoutAnimation(changes);
}

}  // namespace orv::ui
