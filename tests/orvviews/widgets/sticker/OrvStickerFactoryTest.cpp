#include "orvviews/widgets/sticker/OrvStickerFactory.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "frameworks/core/OrvWaterMarkOption.h"
#include "orvviews/widgets/OrvResultViewController.h"
#include "platform/ui/Screen.h"

namespace {

using Rgba = std::array<uint8_t, 4>;

constexpr Rgba kWhite{255, 255, 255, 255};
constexpr Rgba kRed{255, 0, 0, 255};
constexpr Rgba kBlue{0, 0, 255, 255};

gfx::ImagePtr solid(int width, int height, Rgba top, Rgba bottom = {}) {
    if (bottom[3] == 0) bottom = top;
    auto bitmap = std::make_shared<gfx::Bitmap>(width, height);
    for (int y = 0; y < height; ++y) {
        const Rgba& c = y < height / 2 ? top : bottom;
        for (int x = 0; x < width; ++x)
            std::copy(c.begin(), c.end(), bitmap->mutableRow(y) + 4 * x);
    }
    return gfx::Image::withBitmap(bitmap);
}

Rgba at(const gfx::Image& image, int x, int y) {
    const uint8_t* p = image.bitmap()->pixel(x, y);
    return {p[0], p[1], p[2], p[3]};
}

std::shared_ptr<OrvStickerResult> pictureResult(gfx::ImagePtr picture, gfx::Rect center,
                                                float degree) {
    auto sticker = OrvSticker::stickerWithType(OrvSticker::kImage);
    sticker->setSize(picture->size());
    sticker->setImage(std::move(picture));
    return OrvStickerResult::initWithSticker(sticker, center, degree);
}

// The rows that hold any pixel darker than the white photo.
std::pair<int, int> inkRows(const gfx::Image& image) {
    int first = -1, last = -1;
    for (int y = 0; y < image.bitmap()->height(); ++y) {
        for (int x = 0; x < image.bitmap()->width(); ++x) {
            if (image.bitmap()->pixel(x, y)[0] < 128) {
                if (first < 0) first = y;
                last = y;
                break;
            }
        }
    }
    return {first, last};
}

TEST(OrvStickerFactory, NothingToDrawGivesTheSameImage) {
    auto photo = solid(20, 10, kWhite);
    EXPECT_EQ(OrvStickerFactory::megerStickers({}, photo), photo);
    auto zeroSize = pictureResult(solid(4, 4, kRed), gfx::Rect(0.5, 0.5, 0, 0), 0);
    auto composed = OrvStickerFactory::megerStickers({zeroSize, nullptr}, photo);
    ASSERT_TRUE(composed);
    for (int y = 0; y < 10; ++y)
        for (int x = 0; x < 20; ++x) ASSERT_EQ(at(*composed, x, y), kWhite);
}

TEST(OrvStickerFactory, QuarterTurnTurnsClockwiseAboutTheCentre) {
    auto photo = solid(200, 100, kWhite);
    // Red over blue: turned a quarter clockwise, red lies right of the centre, blue left.
    auto result = pictureResult(solid(40, 20, kRed, kBlue), gfx::Rect(0.5, 0.5, 0.2, 0.2), 90);
    auto composed = OrvStickerFactory::megerStickers({result}, photo);
    EXPECT_EQ(at(*composed, 105, 50), kRed);
    EXPECT_EQ(at(*composed, 94, 50), kBlue);
    EXPECT_EQ(at(*composed, 105, 32), kRed);  // the width now runs along the height
    EXPECT_EQ(at(*composed, 105, 67), kRed);
    EXPECT_EQ(at(*composed, 85, 50), kWhite);  // where the unturned sticker would be
    EXPECT_FALSE(result->sticker()->image()) << "a drawn picture is let go";
}

TEST(OrvStickerFactory, StickerOffThePhotoIsClipped) {
    auto photo = solid(50, 50, kWhite);
    auto result = pictureResult(solid(20, 20, kRed), gfx::Rect(-0.1, 1.05, 0.4, 0.4), 0);
    auto composed = OrvStickerFactory::megerStickers({result}, photo);
    // It spans x −15 to 5 and y 42.5 to 62.5 of the 50 × 50 photo.
    EXPECT_EQ(at(*composed, 0, 49), kRed);
    EXPECT_EQ(at(*composed, 4, 43), kRed);
    EXPECT_EQ(at(*composed, 5, 49), kWhite);
    EXPECT_EQ(at(*composed, 0, 41), kWhite);
}

TEST(OrvStickerFactory, TextFontFollowsTheComposedSize) {
    auto compose = [](double fraction) {
        auto text = OrvStickerText::textWithType(1);
        text->setText("HH");
        text->setSize(10);
        text->setColor(gfx::Color::black());
        text->setShadowColor(gfx::Color::clear());
        text->setRect(gfx::Rect(0, 0, 1, 1));
        auto sticker = OrvSticker::stickerWithType(OrvSticker::kText);
        sticker->setSize({40, 20});
        sticker->setTexts(OrvSticker::Texts{text});
        auto result = OrvStickerResult::initWithSticker(
            sticker, gfx::Rect(0.5, 0.5, fraction * 40 / 200, fraction * 20 / 200), 0);
        return OrvStickerFactory::megerStickers({result}, solid(200, 200, kWhite));
    };
    const auto [top1, bottom1] = inkRows(*compose(1));
    const auto [top2, bottom2] = inkRows(*compose(2));
    ASSERT_GE(top1, 0);
    ASSERT_GE(top2, 0);
    const double h1 = bottom1 - top1 + 1, h2 = bottom2 - top2 + 1;
    EXPECT_NEAR(h2 / h1, 2.0, 0.35);
}

class WaterMarkTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ui::Screen::main().setScale(1);
        controller = rt::make<OrvResultViewController>();
        option = OrvWaterMarkOption::option();
        option->setMarkMargin(10);
        option->setMarkTextPadding(5);
        controller->setWaterMarkOption(option);
    }
    void TearDown() override { ui::Screen::resetMain(); }

    gfx::Point place(int type, gfx::Size stickerSize, gfx::Size block) {
        auto sticker = OrvSticker::stickerWithType(type);
        sticker->setSize(stickerSize);
        auto result = controller->createStickResult(sticker, block, {400, 300},
                                                    OrvWaterMarkOption::kTextAfterPicture);
        EXPECT_EQ(result->degree(), 0);
        EXPECT_DOUBLE_EQ(result->center().size.width, stickerSize.width / 400);
        // Rounded to 1/1000: the fractions carry the last bits of a division.
        return {std::round(result->center().origin.x * 400 * 1000) / 1000,
                std::round(result->center().origin.y * 300 * 1000) / 1000};
    }

    std::shared_ptr<OrvResultViewController> controller;
    std::shared_ptr<OrvWaterMarkOption> option;
};

TEST_F(WaterMarkTest, BlockLiesAlongTheChosenEdge) {
    // A 20 × 10 picture and a 60 × 30 text: the block is 85 × 30 with the padding.
    const gfx::Size pic{20, 10}, text{60, 30}, block{85, 30};
    option->setMarkPosition(OrvWaterMarkOption::kBottomLeft);
    EXPECT_EQ(place(1, pic, block), (gfx::Point{20, 275}));
    EXPECT_EQ(place(2, text, block), (gfx::Point{65, 275}));
    option->setMarkPosition(OrvWaterMarkOption::kTopRight);
    EXPECT_EQ(place(1, pic, block), (gfx::Point{315, 25}));
    EXPECT_EQ(place(2, text, block), (gfx::Point{360, 25}));
    option->setMarkPosition(OrvWaterMarkOption::kCenter);
    EXPECT_EQ(place(1, pic, block), (gfx::Point{167.5, 150}));
    EXPECT_EQ(place(2, text, block), (gfx::Point{212.5, 150}));
    option->setMarkPosition(42);
    EXPECT_EQ(place(1, pic, block), (gfx::Point{380, 275}));
    EXPECT_EQ(place(2, text, block), (gfx::Point{360, 275}));
}

TEST_F(WaterMarkTest, TextFirstSwapsOnlyWhenBothMarksArePresent) {
    option->setMarkTextPosition(1);
    option->setMarkPosition(OrvWaterMarkOption::kBottomRight);
    const gfx::Size pic{20, 10}, text{60, 30}, block{85, 30};
    EXPECT_EQ(place(1, pic, block), (gfx::Point{380, 275}));
    EXPECT_EQ(place(2, text, block), (gfx::Point{335, 275}));
    // The picture alone: the block is the picture and the text position plays no part.
    EXPECT_EQ(place(1, pic, pic), (gfx::Point{380, 285}));
}

TEST_F(WaterMarkTest, StampsThePictureInTheCorner) {
    option->setMarkImage(solid(20, 10, kRed));
    option->setMarkPosition(OrvWaterMarkOption::kBottomLeft);
    auto stamped = controller->addWaterMarkToImage(solid(400, 300, kWhite));
    EXPECT_EQ(at(*stamped, 10, 280), kRed);
    EXPECT_EQ(at(*stamped, 29, 289), kRed);
    EXPECT_EQ(at(*stamped, 9, 280), kWhite);
    EXPECT_EQ(at(*stamped, 30, 289), kWhite);
    EXPECT_EQ(at(*stamped, 10, 290), kWhite);

    controller->setWaterMarkOption(OrvWaterMarkOption::option());  // nothing set: not valid
    auto photo = solid(10, 10, kWhite);
    EXPECT_EQ(controller->addWaterMarkToImage(photo), photo);
}

}  // namespace
