#include "platform/ui/Renderer.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "platform/codec/PngCodec.h"
#include "platform/gfx/Canvas.h"
#include "platform/gfx/Image.h"
#include "platform/ui/Layer.h"
#include "platform/ui/Screen.h"
#include "platform/ui/View.h"
#include "platform/ui/Window.h"

namespace orv::ui {

ORV_DEFINE_CLASS(Renderer, rt::Object)

namespace {

// Below half a step of 8-bit alpha nothing of a layer would show.
constexpr double kInvisible = 0.5 / 255;

// A canvas with the transform in force tracked beside it, so that a group drawn off screen can
// start from the same place and be laid back pixel for pixel.
class Surface {
  public:
    explicit Surface(gfx::Canvas& canvas) : canvas_(canvas) {}
    gfx::Canvas& canvas() { return canvas_; }
    const gfx::AffineTransform& ctm() const { return ctm_; }

    void save() {
        canvas_.save();
        saved_.push_back(ctm_);
    }
    void restore() {
        canvas_.restore();
        ctm_ = saved_.back();
        saved_.pop_back();
    }
    void concat(const gfx::AffineTransform& t) {
        canvas_.concat(t);
        ctm_ = t.concat(ctm_);
    }
    // A transparent canvas of the same size and scale (a Surface over it starts from ctm()).
    std::unique_ptr<gfx::Canvas> makeLayer() const {
        return std::make_unique<gfx::Canvas>(canvas_.size(), canvas_.scale());
    }
    // Lays a bitmap of this surface's pixel size back over it, with `alpha`.
    void composite(const gfx::BitmapPtr& pixels, double alpha) {
        const double scale = canvas_.scale();
        save();
        concat(ctm_.inverted());
        canvas_.setAlpha(alpha);
        canvas_.drawImage(*gfx::Image::withBitmap(pixels, scale),
                          {0, 0, pixels->width() / scale, pixels->height() / scale});
        restore();
    }

  private:
    gfx::Canvas& canvas_;
    gfx::AffineTransform ctm_;
    std::vector<gfx::AffineTransform> saved_;
};

// The content's pixels kept only as far as the mask's alpha reaches (both premultiplied).
gfx::BitmapPtr applyMask(const gfx::Bitmap& content, const gfx::Bitmap& mask) {
    auto out = std::make_shared<gfx::Bitmap>(content.width(), content.height());
    for (int y = 0; y < content.height(); ++y) {
        const uint8_t* src = content.row(y);
        const uint8_t* m = mask.row(y);
        uint8_t* dst = out->mutableRow(y);
        for (int x = 0; x < content.width() * 4; x += 4) {
            const unsigned a = m[x + 3];
            for (int c = 0; c < 4; ++c)
                dst[x + c] = static_cast<uint8_t>((src[x + c] * a + 127) / 255);
        }
    }
    return out;
}

gfx::Rect boundsOf(const Layer& layer) {
    const View* view = layer.delegateView();
    return view ? view->presentationBounds() : layer.bounds();
}

// From the layer's bounds space to its parent's: bounds centre to the origin, the transform,
// then the position.
gfx::AffineTransform placement(const Layer& layer) {
    const View* view = layer.delegateView();
    const gfx::Rect b = boundsOf(layer);
    const gfx::Point position = view ? view->presentationCenter() : layer.position();
    const gfx::AffineTransform model =
        view ? view->presentationTransform() : layer.affineTransform();
    return gfx::AffineTransform::translation(-(b.origin.x + b.size.width / 2),
                                             -(b.origin.y + b.size.height / 2))
        .concat(layer.presentationTransform(model))
        .concat(gfx::AffineTransform::translation(position.x, position.y));
}

void drawTree(Surface& surface, const Layer& layer);

void drawBorder(gfx::Canvas& canvas, const Layer& layer, const gfx::Rect& bounds) {
    const gfx::Color color = layer.borderColor();
    if (layer.borderWidth() <= 0 || color.a <= 0) return;
    canvas.strokeRectInside(bounds, layer.borderWidth(), layer.cornerRadius(), color);
}

// Everything of one layer in its bounds space: own content, sublayers, subviews, border.
void drawContent(Surface& surface, const Layer& layer) {
    gfx::Canvas& canvas = surface.canvas();
    View* view = layer.delegateView();
    const gfx::Rect bounds = boundsOf(layer);
    layer.drawInCanvas(canvas);

    const bool clips = layer.masksToBounds();
    if (clips) {
        surface.save();
        if (layer.cornerRadius() > 0) {
            canvas.clipToRoundedRect(bounds, layer.cornerRadius());
        } else {
            canvas.clipToRect(bounds);
        }
    }
    if (view && view->hasCustomDrawing()) {
        surface.save();
        view->drawRect(canvas, bounds);
        surface.restore();
        view->clearNeedsDisplay();
    }
    // Copies: drawing code may change the lists.
    const auto sublayers = layer.sublayers();
    for (const Layer::Ptr& sublayer : sublayers) drawTree(surface, *sublayer);
    if (view) {
        const auto subviews = view->subviews();
        for (const View::Ptr& subview : subviews) drawTree(surface, subview->layer());
    }
    if (clips) surface.restore();
    drawBorder(canvas, layer, bounds);
}

// Content drawn apart, cut by the mask, then laid on the surface with the opacity: so a
// translucent layer shows as one sheet, not as its overlapping parts.
void drawIsolated(Surface& surface, const Layer& layer, double opacity) {
    auto group = surface.makeLayer();
    Surface groupSurface(*group);
    groupSurface.concat(surface.ctm());
    drawContent(groupSurface, layer);
    gfx::BitmapPtr pixels = group->snapshot();
    if (const Layer::Ptr& mask = layer.mask()) {
        auto maskCanvas = surface.makeLayer();
        Surface maskSurface(*maskCanvas);
        maskSurface.concat(surface.ctm());
        drawTree(maskSurface, *mask);
        pixels = applyMask(*pixels, *maskCanvas->snapshot());
    }
    surface.composite(pixels, opacity);
}

void drawLayer(Surface& surface, const Layer& layer, double opacity) {
    if (opacity < 1 || layer.mask()) {
        drawIsolated(surface, layer, opacity);
    } else {
        drawContent(surface, layer);
    }
}

// A layer placed in its parent's bounds space.
void drawTree(Surface& surface, const Layer& layer) {
    const View* view = layer.delegateView();
    if (view ? view->isHidden() : layer.isHidden()) return;
    const double opacity = std::clamp(layer.presentationOpacity(), 0.0, 1.0);
    if (opacity < kInvisible) return;
    surface.save();
    surface.concat(placement(layer));
    drawLayer(surface, layer, opacity);
    surface.restore();
}

// The top of a tree: its bounds space is the picture's, whatever its own place and transform.
gfx::BitmapPtr renderRoot(View& view, gfx::Size size) {
    view.layoutIfNeeded();
    gfx::Canvas canvas(size, Screen::main().scale());
    Surface surface(canvas);
    const gfx::Rect bounds = view.presentationBounds();
    surface.concat(gfx::AffineTransform::translation(-bounds.origin.x, -bounds.origin.y));
    drawLayer(surface, view.layer(), 1);
    return canvas.snapshot();
}

}  // namespace

gfx::BitmapPtr Renderer::render(Window& window) {
    return renderRoot(window, window.bounds().size);
}

gfx::BitmapPtr Renderer::renderView(View& view) {
    return renderRoot(view, view.bounds().size);
}

bool Renderer::writePNG(Window& window, const std::string& path) {
    const gfx::BitmapPtr pixels = render(window);
    return pixels && codec::PngCodec::writeFile(*pixels, path);
}

}  // namespace orv::ui
