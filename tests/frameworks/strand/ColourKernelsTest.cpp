// The colour filters (adjust, correction, crop, vignette) and the look catalogue: what each
// must do to the pixels, the identities that must hold to the byte, alpha, and bad input.

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "frameworks/strand/kernels/AspectCrop.h"
#include "frameworks/strand/kernels/ColorAdjust.h"
#include "frameworks/strand/kernels/ColorCorrection.h"
#include "frameworks/strand/kernels/ColorTable.h"
#include "frameworks/strand/kernels/LookCatalogue.h"
#include "frameworks/strand/kernels/Vignette.h"
#include "platform/rt/Log.h"
#include "tests/support/TestEnvironment.h"

namespace orv::strand {
namespace {

// Every colour in steps, on a 70 × 50 picture (wider than the vector step, with a tail), with
// `alpha` for every pixel (0 for none: alphas vary from 0 to 255) and premultiplied.
gfx::BitmapPtr palette(int alpha = 255, int lowest = 0, int highest = 255) {
    auto bitmap = std::make_shared<gfx::Bitmap>(70, 50);
    std::mt19937 random(3);
    std::uniform_int_distribution<int> value(lowest, highest), anyAlpha(0, 255);
    for (int y = 0; y < bitmap->height(); ++y) {
        for (int x = 0; x < bitmap->width(); ++x) {
            uint8_t* p = bitmap->mutableRow(y) + 4 * x;
            const int a = alpha ? alpha : anyAlpha(random);
            for (int c = 0; c < 3; ++c)
                p[c] = static_cast<uint8_t>((value(random) * a + 127) / 255);
            p[3] = static_cast<uint8_t>(a);
        }
    }
    return bitmap;
}

bool sameBytes(const gfx::Bitmap& a, const gfx::Bitmap& b) {
    return a.width() == b.width() && a.height() == b.height() &&
           std::equal(a.data(), a.data() + a.byteCount(), b.data());
}

double luma(const uint8_t* p) {
    return 0.2126 * p[0] + 0.7152 * p[1] + 0.0722 * p[2];
}

double meanLuma(const gfx::Bitmap& b) {
    double sum = 0;
    for (int y = 0; y < b.height(); ++y)
        for (int x = 0; x < b.width(); ++x) sum += luma(b.pixel(x, y));
    return sum / (b.width() * b.height());
}

// Mean of (channel `c` − channel `d`) over the picture.
double meanDifference(const gfx::Bitmap& b, int c, int d) {
    double sum = 0;
    for (int y = 0; y < b.height(); ++y)
        for (int x = 0; x < b.width(); ++x) sum += b.pixel(x, y)[c] - b.pixel(x, y)[d];
    return sum / (b.width() * b.height());
}

double meanChroma(const gfx::Bitmap& b) {
    double sum = 0;
    for (int y = 0; y < b.height(); ++y)
        for (int x = 0; x < b.width(); ++x) {
            const uint8_t* p = b.pixel(x, y);
            sum += std::max({p[0], p[1], p[2]}) - std::min({p[0], p[1], p[2]});
        }
    return sum / (b.width() * b.height());
}

double linear(double v) {
    v /= 255;
    return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
}

// Alpha as it was, no colour above its alpha, transparent pixels all zero.
void expectAlphaKept(const gfx::Bitmap& in, const gfx::Bitmap& out) {
    ASSERT_EQ(in.width(), out.width());
    ASSERT_EQ(in.height(), out.height());
    for (int y = 0; y < in.height(); ++y)
        for (int x = 0; x < in.width(); ++x) {
            const uint8_t *p = in.pixel(x, y), *q = out.pixel(x, y);
            ASSERT_EQ(p[3], q[3]) << x << "," << y;
            for (int c = 0; c < 3; ++c) ASSERT_LE(q[c], q[3]) << x << "," << y;
        }
}

TEST(ColorAdjustTest, ZerosLeaveEveryByte) {
    for (int alpha : {255, 0}) {
        const auto in = palette(alpha);
        EXPECT_TRUE(sameBytes(*in, *ColorAdjust::apply(*in, {})));
    }
}

TEST(ColorAdjustTest, EachItemMovesThePixelsItsWay) {
    const auto in = palette();
    const auto adjusted = [&](auto set) {
        ColorAdjustSettings s;
        set(s);
        return ColorAdjust::apply(*in, s);
    };
    EXPECT_GT(meanLuma(*adjusted([](auto& s) { s.brightness = 0.5f; })), meanLuma(*in) + 5);
    EXPECT_LT(meanLuma(*adjusted([](auto& s) { s.brightness = -0.5f; })), meanLuma(*in) - 5);
    EXPECT_GT(meanDifference(*adjusted([](auto& s) { s.temperature = 0.6f; }), 0, 2),
              meanDifference(*in, 0, 2) + 5);
    EXPECT_LT(meanDifference(*adjusted([](auto& s) { s.tint = 0.6f; }), 1, 0),
              meanDifference(*in, 1, 0) - 3);
    EXPECT_GT(meanChroma(*adjusted([](auto& s) { s.saturation = 0.5f; })), meanChroma(*in) + 5);

    const auto grey = adjusted([](auto& s) { s.saturation = -1; });
    for (int y = 0; y < grey->height(); ++y) {
        for (int x = 0; x < grey->width(); ++x) {
            const uint8_t* p = grey->pixel(x, y);
            ASSERT_TRUE(p[0] == p[1] && p[1] == p[2]) << x << "," << y;
        }
    }

    // Contrast spreads each channel around mid grey; shadows lift the dark, highlights pull
    // down the bright, and neither moves the other end much.
    const auto contrasted = adjusted([](auto& s) { s.contrast = 0.6f; });
    const auto shadows = adjusted([](auto& s) { s.shadows = 1; });
    const auto highlights = adjusted([](auto& s) { s.highlights = -1; });
    int darkChecked = 0, brightChecked = 0;
    for (int y = 0; y < in->height(); ++y) {
        for (int x = 0; x < in->width(); ++x) {
            for (int c = 0; c < 3; ++c) {
                const int before = in->pixel(x, y)[c], after = contrasted->pixel(x, y)[c];
                if (before < 100) {
                    EXPECT_LE(after, before);
                } else if (before > 155) {
                    EXPECT_GE(after, before);
                }
            }
            const double before = luma(in->pixel(x, y));
            if (before > 15 && before < 70) {
                ++darkChecked;
                EXPECT_GT(luma(shadows->pixel(x, y)), before + 4);
                EXPECT_NEAR(luma(highlights->pixel(x, y)), before, 4);
            } else if (before > 190 && before < 240) {
                ++brightChecked;
                EXPECT_LT(luma(highlights->pixel(x, y)), before - 4);
                EXPECT_NEAR(luma(shadows->pixel(x, y)), before, 4);
            }
        }
    }
    EXPECT_GT(darkChecked, 50);
    EXPECT_GT(brightChecked, 50);
}

TEST(ColorAdjustTest, ExposureIsStopsOfLinearLight) {
    const auto in = palette(255, 40, 150);  // nothing that one more stop would clip
    const auto out = ColorAdjust::apply(*in, {.exposure = 0.5f});  // +1 stop of ±2
    for (int y = 0; y < in->height(); y += 3)
        for (int x = 0; x < in->width(); x += 3)
            for (int c = 0; c < 3; ++c) {
                const double before = linear(in->pixel(x, y)[c]);
                ASSERT_NEAR(linear(out->pixel(x, y)[c]) / before, 2.0, 0.12) << x << "," << y;
            }
}

TEST(ColorAdjustTest, KeepsAlphaOnEveryPath) {
    const auto in = palette(0);
    ColorAdjustSettings all{0.4f, -0.3f, -0.5f, 0.6f, 0, 0.3f, 0.5f, 0.8f, 0.4f};
    expectAlphaKept(*in, *ColorAdjust::apply(*in, all));
    // A half-transparent pixel's colour changes like an opaque one's.
    auto half = palette(128), opaque = palette(255);
    const auto a = ColorAdjust::apply(*half, all), b = ColorAdjust::apply(*opaque, all);
    for (int x = 0; x < 70; ++x) {
        for (int c = 0; c < 3; ++c)
            EXPECT_NEAR(a->pixel(x, 0)[c], b->pixel(x, 0)[c] * 128 / 255.0, 3);
    }
}

// An affine colour map is reproduced exactly by the table's interpolation, so any error in
// finding the cell or the tetrahedron shows, on the vector path (opaque runs) and the other.
TEST(ColorTableTest, InterpolatesAnAffineMapOnEveryPath) {
    const ColorTable table([](std::array<float, 3>& c) { c = {1 - c[0], c[2], 0.25f + c[1] / 2}; });
    for (int alpha : {255, 0}) {
        const auto in = palette(alpha);
        const auto out = table.apply(*in);
        expectAlphaKept(*in, *out);
        for (int y = 0; y < in->height(); ++y)
            for (int x = 0; x < in->width(); ++x) {
                const uint8_t *p = in->pixel(x, y), *q = out->pixel(x, y);
                if (p[3] != 255) continue;
                ASSERT_NEAR(q[0], 255 - p[0], 1) << x << "," << y;
                ASSERT_NEAR(q[1], p[2], 1) << x << "," << y;
                ASSERT_NEAR(q[2], 63.75 + p[1] / 2.0, 1) << x << "," << y;
            }
    }
}

// Runs of eight opaque pixels take the vector path where there is one, runs holding any other
// pixel the plain one: both must give the same bytes, the blend, grain and shade included.
TEST(ColorTableTest, EveryPathFinishesAlike) {
    const ColorTable table([](std::array<float, 3>& c) { c = {c[1], c[2] * 0.8f, c[0]}; });
    const auto colours = palette();
    std::vector<uint8_t> in(4 * 16), out(4 * 16);
    std::copy(colours->data(), colours->data() + 32, in.begin());
    std::copy(colours->data(), colours->data() + 32, in.begin() + 32);
    in[4 * 15 + 3] = 254;  // the second run is not all opaque
    std::vector<int8_t> noise(16);
    std::vector<uint16_t> shade(16);
    for (int i = 0; i < 8; ++i) {
        noise[i] = noise[i + 8] = static_cast<int8_t>(i * 31 - 120);
        shade[i] = shade[i + 8] = static_cast<uint16_t>(150 + 13 * i);
    }
    const ColorTable::Finish finish{
        .weight = 170, .noise = noise.data(), .grain = 40, .shade = shade.data()};
    table.applyRow(in.data(), out.data(), 16, finish);
    EXPECT_TRUE(std::equal(out.begin(), out.begin() + 28, out.begin() + 32));
}

TEST(ColorCorrectionTest, NeutralIsIdentityAndARangeIsStretched) {
    const auto in = palette(0);
    EXPECT_TRUE(sameBytes(*in, *ColorCorrection::apply(*in, {})));
    // The builder's zeros (no analysis yet) leave the picture too.
    ColorCorrectionSettings zeros{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_TRUE(sameBytes(*in, *ColorCorrection::apply(*in, zeros)));

    const auto dull = palette(255, 60, 180);
    ColorCorrectionSettings levels{180, 180, 180, 180, 60, 60, 60, 60, 120, 120, 120};
    const auto out = ColorCorrection::apply(*dull, levels);
    int lowest = 255, highest = 0;
    for (int y = 0; y < out->height(); ++y)
        for (int x = 0; x < out->width(); ++x) {
            lowest = std::min<int>(lowest, out->pixel(x, y)[1]);
            highest = std::max<int>(highest, out->pixel(x, y)[1]);
            if (dull->pixel(x, y)[1] == 120) {
                EXPECT_NEAR(out->pixel(x, y)[1], 128, 1);
            }
        }
    EXPECT_EQ(lowest, 0);
    EXPECT_EQ(highest, 255);
    expectAlphaKept(*palette(0), *ColorCorrection::apply(*palette(0), levels));
}

TEST(AspectCropTest, CentredFrameOfTheRatio) {
    const auto in = palette();  // 70 × 50
    const auto square = AspectCrop::apply(*in, 1);
    ASSERT_EQ(square->width(), 50);
    ASSERT_EQ(square->height(), 50);
    EXPECT_TRUE(std::equal(square->pixel(0, 7), square->pixel(0, 7) + 4, in->pixel(10, 7)));
    const auto tall = AspectCrop::apply(*in, 0.5);
    EXPECT_EQ(tall->width(), 25);
    EXPECT_EQ(tall->height(), 50);
    const auto wide = AspectCrop::apply(*in, 7);
    EXPECT_EQ(wide->width(), 70);
    EXPECT_EQ(wide->height(), 10);
    EXPECT_TRUE(std::equal(wide->pixel(3, 0), wide->pixel(3, 0) + 4, in->pixel(3, 20)));
    for (double keep : {0.0, -1.0, std::nan("")})
        EXPECT_TRUE(sameBytes(*in, *AspectCrop::apply(*in, keep)));
}

TEST(VignetteTest, DarkensTheCornersOnly) {
    auto in = std::make_shared<gfx::Bitmap>(101, 81);
    std::fill(in->mutableData(), in->mutableData() + in->byteCount(), 200);
    EXPECT_TRUE(sameBytes(*in, *Vignette::apply(*in, {.start = 1})));
    const auto out = Vignette::apply(*in, {.start = 0.3f});
    EXPECT_TRUE(std::equal(out->pixel(50, 40), out->pixel(50, 40) + 4, in->pixel(50, 40)));
    EXPECT_LT(out->pixel(0, 0)[0], 140);
    EXPECT_LT(out->pixel(100, 80)[1], 140);
    EXPECT_LT(out->pixel(0, 0)[0], out->pixel(20, 16)[0]);  // smoothly, darker outwards
    EXPECT_LT(out->pixel(20, 16)[0], 200);
    expectAlphaKept(*in, *out);
    const auto varied = palette(0);
    expectAlphaKept(*varied, *Vignette::apply(*varied, {.start = 0}));
}

TEST(ColourKernelsTest, OddPicturesAndArgumentsAreSafe) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const gfx::BitmapPtr transparent = std::make_shared<gfx::Bitmap>(9, 9), varied = palette(0);
    const std::vector<gfx::BitmapPtr> inputs = {std::make_shared<gfx::Bitmap>(0, 0),
                                                std::make_shared<gfx::Bitmap>(1, 1), transparent,
                                                varied};
    const ColorAdjustSettings wild{nan, 7, -7, nan, 0, 3, -3, nan, 9};
    const ColorCorrectionSettings levels{nan, -5, 900, 0, 300, nan, 2, 2, nan, -1, 1e9};
    for (const auto& in : inputs) {
        for (const auto& out :
             {ColorAdjust::apply(*in, wild), ColorCorrection::apply(*in, levels),
              Vignette::apply(*in, {.start = -4}), Vignette::apply(*in, {.start = nan}),
              AspectCrop::apply(*in, 1e-9), AspectCrop::apply(*in, 1e9)}) {
            ASSERT_TRUE(out);
            const bool sameSize = out->width() == in->width() && out->height() == in->height();
            if (!sameSize) continue;
            if (in == transparent) {
                EXPECT_TRUE(sameBytes(*in, *out));
            } else if (in == varied) {
                expectAlphaKept(*in, *out);
            }
        }
    }
}

// ---- The look catalogue.

std::string writeTemp(const std::string& name, const std::string& text) {
    const std::string path = test::TestEnvironment::tempDir() + "/" + name;
    std::ofstream(path) << text;
    return path;
}

TEST(LookCatalogueTest, ShippedLooksAreManyGroupedAndFadeToNothing) {
    const auto catalogue = LookCatalogue::shared();
    ASSERT_GE(catalogue->entries().size(), 20u);
    std::set<std::string> codes, groups;
    const auto in = palette(0);
    for (const auto& entry : catalogue->entries()) {
        SCOPED_TRACE(entry.code);
        EXPECT_TRUE(codes.insert(entry.code).second);
        groups.insert(entry.group);
        EXPECT_FALSE(entry.name.empty() || entry.localName.empty() || entry.localGroup.empty());
        EXPECT_EQ(catalogue->entryWithCode(entry.code), &entry);
        const LookSettings defaults = entry.look->defaults();
        EXPECT_EQ(defaults.at("strength"), 1.0);
        LookSettings none = defaults;
        none["strength"] = 0;
        EXPECT_TRUE(sameBytes(*in, *entry.look->apply(*in, none)));
        const auto out = entry.look->apply(*in, defaults);
        EXPECT_FALSE(sameBytes(*in, *out));
        expectAlphaKept(*in, *out);
    }
    EXPECT_GE(groups.size(), 3u);
    EXPECT_LE(groups.size(), 5u);
    EXPECT_EQ(catalogue->entryWithCode("no such look"), nullptr);
}

TEST(LookCatalogueTest, ABrokenCatalogueIsLoggedAndGivesNoLooks) {
    const std::string good =
        R"({"groups": [{"name": {"en": "G", "zh-Hans": "组"}, "looks": [
             {"code": "A", "name": {"en": "A", "zh-Hans": "甲"}, "recipe": {"saturation": -1}}]}]})";
    ASSERT_EQ(LookCatalogue::fromFile(writeTemp("good.json", good))->entries().size(), 1u);

    std::vector<std::string> logged;
    const auto previous =
        rt::Log::setSink([&](rt::Log::Level, const std::string& line) { logged.push_back(line); });
    const std::string broken[] = {
        "{ not json",
        R"({"groups": [{"name": {"en": "G", "zh-Hans": "组"}, "looks": [
             {"code": "A", "name": {"en": "A", "zh-Hans": "甲"}, "recipe": {"saturation": 3}}]}]})",
        R"({"groups": [{"name": {"en": "G", "zh-Hans": "组"}, "looks": [
             {"code": "A", "name": {"en": "A", "zh-Hans": "甲"}},
             {"code": "A", "name": {"en": "B", "zh-Hans": "乙"}}]}]})",
        R"({"groups": [{"name": {"en": "G", "zh-Hans": "组"}, "looks": [
             {"code": "A", "name": {"en": "A", "zh-Hans": "甲"}, "recipe": {"curves": {"rgb": [[0, 0]]}}}]}]})",
        R"({"groups": [{"name": {"en": "G", "zh-Hans": "组"}, "looks": [
             {"code": "A", "name": {"en": "A", "zh-Hans": "甲"}, "recipe": {"saturaton": 0.2}}]}]})",
    };
    int i = 0;
    for (const std::string& text : broken) {
        const std::string path = writeTemp("broken" + std::to_string(i++) + ".json", text);
        EXPECT_TRUE(LookCatalogue::fromFile(path)->entries().empty()) << text;
        ASSERT_FALSE(logged.empty());
        EXPECT_NE(logged.back().find(path), std::string::npos) << logged.back();
    }
    EXPECT_TRUE(LookCatalogue::fromFile(test::TestEnvironment::tempDir() + "/missing.json")
                    ->entries()
                    .empty());
    EXPECT_EQ(logged.size(), std::size(broken) + 1);
    rt::Log::setSink(previous);
}

}  // namespace
}  // namespace orv::strand
