#include "frameworks/strand/ORPFPDisplayView.h"

#include <gtest/gtest.h>

#include <array>

#include "platform/ui/Renderer.h"
#include "tests/support/ScreenFixture.h"

namespace {

using DisplayView = orv::test::ScreenFixture;

std::array<int, 4> at(const gfx::Bitmap& b, double x, double y) {
    const uint8_t* p = b.pixel(static_cast<int>(x * 2), static_cast<int>(y * 2));  // scale 2
    return {p[0], p[1], p[2], p[3]};
}

TEST_F(DisplayView, ShowsThePictureFittedOverItsClearColour) {
    auto view = ui::makeView<ORPFPDisplayView>(window->bounds());
    window->addSubview(view);
    view->setup();
    view->setClearColor(gfx::Color::rgb(0, 0, 1));
    // A red picture twice as wide as high: on a 375 × 667 screen it fills the width, centred.
    auto red = std::make_shared<gfx::Bitmap>(40, 20);
    for (size_t i = 0; i < red->byteCount(); i += 4) {
        red->mutableData()[i] = 255;
        red->mutableData()[i + 3] = 255;
    }
    view->update(ORPFPImage::withBitmap(red));
    window->makeKeyAndVisible();
    EXPECT_TRUE(view->needsDisplay());
    auto pixels = ui::Renderer::render(*window);
    const double top = (667 - 375 / 2.0) / 2;
    EXPECT_EQ(at(*pixels, 187, 333), (std::array<int, 4>{255, 0, 0, 255}));
    EXPECT_EQ(at(*pixels, 2, top + 3), (std::array<int, 4>{255, 0, 0, 255}));
    EXPECT_EQ(at(*pixels, 187, top - 3), (std::array<int, 4>{0, 0, 255, 255}));

    view->teardown();
    EXPECT_EQ(view->image(), nullptr);
    EXPECT_EQ(at(*ui::Renderer::render(*window), 187, 333), (std::array<int, 4>{0, 0, 255, 255}));
}

}  // namespace
