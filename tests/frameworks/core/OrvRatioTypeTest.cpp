#include "frameworks/core/OrvRatioType.h"

#include <gtest/gtest.h>

#include "frameworks/core/OrvKit.h"
#include "platform/ui/Screen.h"

namespace {

using T = OrvRatioType;
using Types = std::vector<long>;

TEST(OrvRatioTypeTest, MasksAndListsKeepOnlyKnownTypes) {
    EXPECT_EQ(T::ratioTypes(T::kDefaultMask), (Types{1, 2, 4, 8, 16}));
    EXPECT_EQ(T::orvOrvKitRatioDefaultTypes(), T::ratioTypes(31));
    EXPECT_EQ(T::ratioTypes(0x1A0 | 0x400), (Types{32, 128}));  // 256 and 1024 are no types
    EXPECT_TRUE(T::ratioTypes(0).empty());
    EXPECT_EQ(T::validRatioTypes({64, 3, 2, 0, 64, -8, 512, 1}), (Types{64, 2, 1}));
}

TEST(OrvRatioTypeTest, RatiosAreWidthOverHeightAndFindTheirTypeAgain) {
    const std::pair<long, float> ratios[] = {{2, 1.f},       {4, 2.f / 3}, {8, 0.75f},
                                             {16, 9.f / 16}, {32, 1.5f},   {64, 4.f / 3},
                                             {128, 16.f / 9}};
    for (const auto& [type, ratio] : ratios) {
        EXPECT_FLOAT_EQ(T::ratio(type), ratio) << type;
        EXPECT_EQ(T::radioType(ratio), type);
    }
    EXPECT_EQ(T::ratio(1), 0);
    EXPECT_EQ(T::ratio(3), 0);
    EXPECT_EQ(T::radioType(0), T::kFull);
    EXPECT_EQ(T::radioType(-2), T::kFull);
    // A ratio and its inverse find the turned type of each other.
    EXPECT_EQ(T::radioType(1.16f), T::k4x3);
    EXPECT_EQ(T::radioType(1 / 1.16f), T::k3x4);
    EXPECT_EQ(T::firstRatio(0), 0);
    EXPECT_EQ(T::firstRatio(T::kFull | T::k1x1), 0);
    EXPECT_FLOAT_EQ(T::firstRatio(T::k4x3 | T::k2x3), 2.f / 3);
}

TEST(OrvRatioTypeTest, NextTypeCyclesThroughTheMask) {
    long type = 0;
    Types seen;
    for (int i = 0; i < 4; ++i) seen.push_back(type = T::nextRatioType(2 | 8 | 64, type));
    EXPECT_EQ(seen, (Types{2, 8, 64, 2}));
    EXPECT_EQ(T::nextRatioType(2 | 8, 128), 2);
    EXPECT_EQ(T::nextRatioType(0, 1), 0);
}

TEST(OrvRatioTypeTest, ScreenRatioIsShortOverLongSide) {
    ui::Screen::main().setBounds({0, 0, 800, 600});
    EXPECT_DOUBLE_EQ(T::minScreenRatio(), 0.75);
    ui::Screen::main().setBounds({0, 0, 375, 667});
    EXPECT_DOUBLE_EQ(T::minScreenRatio(), 375.0 / 667);
    ui::Screen::resetMain();
}

}  // namespace
