#include "platform/ui/Renderer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <numbers>

#include "platform/codec/PngCodec.h"
#include "platform/gfx/Bitmap.h"
#include "platform/gfx/Canvas.h"
#include "platform/gfx/Path.h"
#include "platform/ui/Animation.h"
#include "platform/ui/ImageView.h"
#include "platform/ui/Label.h"
#include "platform/ui/Layer.h"
#include "platform/ui/ShapeLayer.h"
#include "platform/ui/Window.h"
#include "tests/platform/ui/ViewTestSupport.h"
#include "tests/support/TestEnvironment.h"

namespace orv::ui::test {
namespace {

using gfx::Color;
using gfx::Rect;
using Pixel = std::array<int, 4>;

constexpr Pixel kWhite{255, 255, 255, 255};
constexpr Pixel kRed{255, 0, 0, 255};

// A white window at scale 2, pixels read back at points.
class RendererTest : public ViewTest {
  protected:
    void SetUp() override {
        ViewTest::SetUp();
        window = makeView<Window>({0, 0, 200, 200});
        window->setBackgroundColor(Color::whiteColor());
    }

    Pixel at(double x, double y) {
        if (!bitmap) bitmap = Renderer::render(*window);
        const double scale = Screen::main().scale();
        const uint8_t* p = bitmap->pixel(int(x * scale), int(y * scale));
        return {p[0], p[1], p[2], p[3]};
    }
    void rerender() { bitmap.reset(); }

    std::shared_ptr<View> addView(const Rect& frame, const Color& color, View* parent = nullptr) {
        auto v = makeView(frame);
        v->setBackgroundColor(color);
        (parent ? parent : window.get())->addSubview(v);
        return v;
    }

    std::shared_ptr<Window> window;
    gfx::BitmapPtr bitmap;
};

// Draws a green square at (10, 10) of its bounds space.
class GreenSquareView : public View {
    ORV_DECLARE_CLASS(GreenSquareView)
  public:
    bool hasCustomDrawing() const override { return true; }
    void drawRect(gfx::Canvas& canvas, const gfx::Rect&) override {
        canvas.fillRect({10, 10, 10, 10}, Color::rgb(0, 1, 0));
    }
};
ORV_DEFINE_CLASS(GreenSquareView, View)

MATCHER_P(Near, expected, "") {
    for (int i = 0; i < 4; ++i) {
        if (std::abs(arg[i] - expected[i]) > 2) return false;
    }
    return true;
}

TEST_F(RendererTest, DrawsAtTheScreenScale) {
    const auto pixels = Renderer::render(*window);
    EXPECT_EQ(pixels->width(), 400);
    EXPECT_EQ(pixels->height(), 400);
    EXPECT_EQ(at(100, 100), kWhite);
}

TEST_F(RendererTest, TranslucencyBlendsOverWhatIsBelow) {
    addView({0, 0, 50, 50}, Color::rgb(0, 0, 1, 0.5));
    auto faded = addView({100, 0, 50, 50}, Color::red());
    faded->setAlpha(0.5);
    auto overOpaque = addView({0, 100, 50, 50}, Color::red());
    overOpaque->setAlpha(100);  // stored as given, drawn opaque
    EXPECT_THAT(at(25, 25), Near(Pixel{128, 128, 255, 255}));
    EXPECT_THAT(at(125, 25), Near(Pixel{255, 128, 128, 255}));
    EXPECT_EQ(at(25, 125), kRed);
}

TEST_F(RendererTest, ATranslucentViewIsCompositedAsOneSheet) {
    auto group = addView({0, 0, 100, 100}, Color::clear());
    group->setAlpha(0.5);
    addView({0, 0, 60, 60}, Color::red(), group.get());
    addView({40, 40, 60, 60}, Color::red(), group.get());
    // Where the children overlap the colour is the same as where they don't.
    EXPECT_EQ(at(50, 50), at(10, 10));
    EXPECT_THAT(at(50, 50), Near(Pixel{255, 128, 128, 255}));
}

TEST_F(RendererTest, ARotatedSquareCoversItsTurnedShape) {
    auto square = addView({80, 80, 40, 40}, Color::rgb(0, 1, 0));
    square->setTransform(gfx::AffineTransform::rotation(std::numbers::pi / 4));
    EXPECT_EQ(at(100, 100), (Pixel{0, 255, 0, 255}));
    EXPECT_EQ(at(100, 125), (Pixel{0, 255, 0, 255}));  // a tip, beyond the square unturned
    EXPECT_EQ(at(82, 82), kWhite);                     // a corner of the square unturned

    // Translucent and turned, it is laid back without shifting or smearing.
    square->setAlpha(0.5);
    square->setCenter({100.25, 100.25});
    rerender();
    EXPECT_THAT(at(100, 100), Near(Pixel{128, 255, 128, 255}));
    EXPECT_EQ(at(82, 82), kWhite);
}

TEST_F(RendererTest, ClippingCutsSubviewsAtTheBounds) {
    auto parent = addView({20, 20, 50, 50}, Color::rgb(0, 0, 1));
    addView({30, 30, 50, 50}, Color::red(), parent.get());
    EXPECT_EQ(at(80, 80), kRed);
    parent->setClipsToBounds(true);
    rerender();
    EXPECT_EQ(at(80, 80), kWhite);
    EXPECT_EQ(at(60, 60), kRed);
    EXPECT_EQ(at(25, 25), (Pixel{0, 0, 255, 255}));
}

TEST_F(RendererTest, RoundedCornersClipToo) {
    auto parent = addView({0, 0, 100, 100}, Color::rgb(0, 0, 1));
    parent->layer().setCornerRadius(50);
    parent->setClipsToBounds(true);
    addView({0, 0, 100, 100}, Color::red(), parent.get());
    EXPECT_EQ(at(2, 2), kWhite);
    EXPECT_EQ(at(50, 50), kRed);
}

TEST_F(RendererTest, BordersAreDrawnInsideTheEdgeAboveSubviews) {
    auto framed = addView({100, 100, 40, 40}, Color::rgb(0, 0, 1));
    framed->layer().setBorderWidth(4);
    framed->layer().setBorderColor(Color::black());
    addView({0, 0, 40, 40}, Color::red(), framed.get());
    EXPECT_EQ(at(101, 101), (Pixel{0, 0, 0, 255}));
    EXPECT_EQ(at(103.5, 120), (Pixel{0, 0, 0, 255}));
    EXPECT_EQ(at(105, 105), kRed);
    EXPECT_EQ(at(99.5, 99.5), kWhite);
}

TEST_F(RendererTest, AShapeLayerStrokesOnlyUpToItsStrokeEnd) {
    auto host = addView({50, 50, 100, 100}, Color::clear());
    auto ring = rt::make<ShapeLayer>();
    ring->setFrame({20, 20, 60, 60});
    ring->setPath(
        gfx::Path::arc({30, 30}, 30, -std::numbers::pi / 2, 3 * std::numbers::pi / 2, true));
    ring->setFillColor(std::nullopt);
    ring->setStrokeColor(Color::red());
    ring->setLineWidth(4);
    ring->setLineCap(gfx::LineCap::Round);
    ring->setStrokeEnd(0.5);
    host->layer().addSublayer(ring);
    // Clockwise from the top: the right half only.
    EXPECT_EQ(at(130, 100), kRed);
    EXPECT_EQ(at(70, 100), kWhite);
    EXPECT_EQ(at(100, 100), kWhite);  // not filled

    ring->setStrokeEnd(1);
    rerender();
    EXPECT_EQ(at(70, 100), kRed);
}

TEST_F(RendererTest, RunningAnimationsShowTheirPresentValues) {
    auto faded = addView({0, 0, 50, 50}, Color::red());
    View::animateWithDuration(1, [&] { faded->setAlpha(0); });
    runFor(0.5);
    EXPECT_THAT(at(25, 25), Near(Pixel{255, 128, 128, 255}));

    auto ring = rt::make<ShapeLayer>();
    ring->setFrame({100, 100, 60, 60});
    ring->setPath(
        gfx::Path::arc({30, 30}, 30, -std::numbers::pi / 2, 3 * std::numbers::pi / 2, true));
    ring->setFillColor(std::nullopt);
    ring->setStrokeColor(Color::red());
    ring->setLineWidth(4);
    auto grow = BasicAnimation::withKeyPath("strokeEnd");
    grow->setFromValue(0);
    grow->setToValue(1);
    grow->setDuration(2);
    ring->addAnimation(grow, "grow");
    window->layer().addSublayer(ring);
    runFor(0.5);  // a quarter of the way: the top right arc only
    rerender();
    EXPECT_EQ(at(130 - 30 * std::sqrt(0.5), 130 - 30 * std::sqrt(0.5)), kWhite);
    EXPECT_EQ(at(130 + 30 * std::sqrt(0.5), 130 - 30 * std::sqrt(0.5)), kRed);
    EXPECT_EQ(at(130 + 30 * std::sqrt(0.5), 130 + 30 * std::sqrt(0.5)), kWhite);
}

TEST_F(RendererTest, AMaskKeepsOnlyWhereItsAlphaIs) {
    auto masked = addView({0, 0, 100, 100}, Color::red());
    auto maskBitmap = std::make_shared<gfx::Bitmap>(2, 1);
    uint8_t* p = maskBitmap->mutableData();
    p[3] = 255;  // left pixel opaque, right one transparent
    auto mask = rt::make<Layer>();
    mask->setFrame({0, 0, 100, 100});
    mask->setContents(gfx::Image::withBitmap(maskBitmap));
    masked->layer().setMask(mask);
    EXPECT_EQ(at(10, 50), kRed);
    EXPECT_EQ(at(90, 50), kWhite);
}

TEST_F(RendererTest, ImageViewsPlaceAndTintTheirPicture) {
    auto pixels = std::make_shared<gfx::Bitmap>(2, 1);
    uint8_t* p = pixels->mutableData();
    p[0] = 0, p[1] = 0, p[2] = 255, p[3] = 255;  // blue, then transparent
    auto image = gfx::Image::withBitmap(pixels, 1);
    auto fit = ImageView::withImage(image);
    fit->setFrame({0, 0, 100, 100});
    fit->setContentMode(ContentMode::ScaleAspectFit);  // 100 × 50 in the middle
    window->addSubview(fit);
    EXPECT_EQ(at(20, 50), (Pixel{0, 0, 255, 255}));
    EXPECT_EQ(at(20, 10), kWhite);
    EXPECT_EQ(at(80, 50), kWhite);

    fit->setRendersAsTemplate(true);
    fit->setTintColor(Color::red());
    rerender();
    EXPECT_EQ(at(20, 50), kRed);
    EXPECT_FALSE(fit->isUserInteractionEnabled());
}

TEST_F(RendererTest, LabelsDrawTheirTextCentredVertically) {
    auto label = makeView<Label>({0, 0, 200, 100});
    label->setText("\u2588\u2588\u2588\u2588");
    label->setFont(gfx::Font::systemFont(20));
    label->setTextAlignment(gfx::TextAlignment::Center);
    window->addSubview(label);
    bool inkNearMiddle = false;
    for (int x = 60; x <= 140 && !inkNearMiddle; x += 2) inkNearMiddle = at(x, 50)[0] < 128;
    EXPECT_TRUE(inkNearMiddle);
    for (int x = 0; x < 200; x += 10) {
        EXPECT_EQ(at(x, 5), kWhite);
        EXPECT_EQ(at(x, 95), kWhite);
    }
}

TEST_F(RendererTest, HiddenViewsAndCustomDrawing) {
    auto hidden = addView({0, 0, 50, 50}, Color::red());
    hidden->setHidden(true);
    auto custom = makeView<GreenSquareView>({100, 100, 50, 50});
    custom->setBounds({10, 10, 50, 50});  // the drawing moves with the bounds origin
    window->addSubview(custom);
    custom->setNeedsDisplay();
    EXPECT_EQ(at(25, 25), kWhite);
    EXPECT_EQ(at(105, 105), (Pixel{0, 255, 0, 255}));
    EXPECT_EQ(at(115, 115), kWhite);
    EXPECT_FALSE(custom->needsDisplay());
}

TEST_F(RendererTest, WritesAPng) {
    addView({0, 0, 50, 50}, Color::red());
    const std::string path = orv::test::TestEnvironment::tempDir() + "/window.png";
    ASSERT_TRUE(Renderer::writePNG(*window, path));
    const auto back = codec::PngCodec::readFile(path);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->width(), 400);
    EXPECT_EQ(back->pixel(10, 10)[0], 255);
    EXPECT_EQ(back->pixel(10, 10)[1], 0);
}

}  // namespace
}  // namespace orv::ui::test
