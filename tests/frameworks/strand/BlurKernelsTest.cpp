// The blur family (gaussian blur, unsharp mask, aperture, HDR, holy light): what each must do
// to a picture, and that none breaks alpha, premultiplication or odd input.

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

#include "frameworks/strand/kernels/GaussianBlur.h"
#include "frameworks/strand/kernels/Glow.h"
#include "frameworks/strand/kernels/LocalToneMap.h"
#include "frameworks/strand/kernels/SelectiveBlur.h"
#include "frameworks/strand/kernels/UnsharpMask.h"
#include "frameworks/strand/kernels/WideBlur.h"

namespace orv::strand {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

using Fill = std::function<std::array<int, 4>(int x, int y)>;

gfx::BitmapPtr picture(int width, int height, const Fill& fill) {
    auto bitmap = std::make_shared<gfx::Bitmap>(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const auto c = fill(x, y);
            std::copy(c.begin(), c.end(), bitmap->mutableRow(y) + 4 * x);
        }
    }
    return bitmap;
}

// Opaque grey noise with a bright square, so there are both texture and edges.
gfx::BitmapPtr texture(int width, int height, unsigned seed = 3) {
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> noise(0, 120);
    return picture(width, height, [&](int x, int y) {
        const bool square = x > width / 3 && x < width / 2 && y > height / 4 && y < height / 2;
        const int v = (square ? 130 : 40) + noise(random);
        return std::array<int, 4>{v, v / 2, 255 - v, 255};
    });
}

gfx::BitmapPtr solid(int width, int height, std::array<int, 4> colour) {
    return picture(width, height, [&](int, int) { return colour; });
}

int at(const gfx::Bitmap& b, int x, int y, int c) {
    return b.pixel(x, y)[c];
}

bool same(const gfx::Bitmap& a, const gfx::Bitmap& b) {
    return a.width() == b.width() && a.height() == b.height() &&
           std::memcmp(a.data(), b.data(), a.byteCount()) == 0;
}

// Mean and variance of channel c over a rectangle.
std::pair<double, double> stats(const gfx::Bitmap& b, int c, int x0, int y0, int x1, int y1) {
    double sum = 0, square = 0;
    for (int y = y0; y < y1; ++y) {
        for (int x = x0; x < x1; ++x)
            sum += at(b, x, y, c), square += at(b, x, y, c) * at(b, x, y, c);
    }
    const double n = double(x1 - x0) * (y1 - y0);
    return {sum / n, square / n - sum * sum / (n * n)};
}

// The sampled gaussian of one channel, computed plainly in double, edges repeated.
std::vector<double> exactBlur(const gfx::Bitmap& b, int c, double sigma) {
    const int w = b.width(), h = b.height(), r = int(std::ceil(5 * sigma));
    std::vector<double> kernel(2 * r + 1);
    double total = 0;
    for (int i = -r; i <= r; ++i) total += kernel[i + r] = std::exp(-i * i / (2 * sigma * sigma));
    for (double& k : kernel) k /= total;
    std::vector<double> rows(size_t(w) * h), out(rows.size());
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            for (int i = -r; i <= r; ++i) {
                rows[y * w + x] += kernel[i + r] * at(b, std::clamp(x + i, 0, w - 1), y, c);
            }
        }
    }
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            for (int i = -r; i <= r; ++i) {
                out[y * w + x] += kernel[i + r] * rows[std::clamp(y + i, 0, h - 1) * w + x];
            }
        }
    }
    return out;
}

TEST(GaussianBlurTest, MatchesTheExactGaussianAtEverySize) {
    // Small, large and very large sigmas (the last on the double-precision path).
    for (auto [w, h, sigma] :
         {std::tuple{40, 30, 0.7}, {64, 48, 3.0}, {90, 60, 12.0}, std::tuple{360, 6, 170.0}}) {
        const auto src = texture(w, h);
        const auto blurred = GaussianBlur::apply(*src, sigma);
        for (int c : {0, 2}) {
            const std::vector<double> exact = exactBlur(*src, c, sigma);
            double worst = 0;
            for (int y = 0; y < h; ++y) {
                for (int x = 0; x < w; ++x) {
                    worst = std::max(worst, std::fabs(at(*blurred, x, y, c) - exact[y * w + x]));
                }
            }
            EXPECT_LE(worst, 1.5) << "sigma " << sigma << " channel " << c;
        }
    }
}

TEST(GaussianBlurTest, KeepsMeanLowersVarianceAndIsSymmetric) {
    const auto src = texture(80, 60);
    const auto blurred = GaussianBlur::apply(*src, 2);
    const auto [mean, variance] = stats(*src, 0, 0, 0, 80, 60);
    const auto [blurredMean, blurredVariance] = stats(*blurred, 0, 0, 0, 80, 60);
    EXPECT_NEAR(blurredMean, mean, 1.0);
    EXPECT_LT(blurredVariance, variance / 4);
    // A left-right mirrored picture blurs into the mirrored blur.
    const auto mirrored = picture(80, 60, [&](int x, int y) {
        const uint8_t* p = src->pixel(79 - x, y);
        return std::array<int, 4>{p[0], p[1], p[2], p[3]};
    });
    const auto mirroredBlur = GaussianBlur::apply(*mirrored, 2);
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 80; ++x) {
            ASSERT_NEAR(at(*mirroredBlur, x, y, 0), at(*blurred, 79 - x, y, 0), 1);
        }
    }
}

TEST(GaussianBlurTest, UniformStaysExactAndTransparencyDarkensNothing) {
    for (auto colour : {std::array<int, 4>{200, 100, 50, 255}, {60, 30, 10, 128}}) {
        const auto flat = solid(37, 23, colour);
        for (double sigma : {0.5, 4.0, 40.0, 400.0}) {
            EXPECT_TRUE(same(*flat, *GaussianBlur::apply(*flat, sigma))) << sigma;
        }
    }
    // Opaque red beside transparency: wherever some alpha is left, the straight colour is red.
    const auto red = picture(40, 40, [](int x, int) {
        return x < 20 ? std::array<int, 4>{255, 0, 0, 255} : std::array<int, 4>{0, 0, 0, 0};
    });
    const auto blurred = GaussianBlur::apply(*red, 5);
    for (int x = 0; x < 40; ++x) {
        const uint8_t* p = blurred->pixel(x, 20);
        if (p[3] >= 32) {
            EXPECT_NEAR(p[0] * 255.0 / p[3], 255, 255.0 / p[3]) << x;
        }
        EXPECT_LE(p[0], p[3]);
        EXPECT_EQ(p[1], 0);
    }
    EXPECT_LT(at(*blurred, 21, 20, 3), 255);
    EXPECT_GT(at(*blurred, 21, 20, 3), 0);
}

TEST(GaussianBlurTest, PlanesAndBoxMeans) {
    // A unit impulse spreads into the gaussian: sum 1, peak 1 / (2π sigma²), symmetric.
    Plane plane{41, 41, std::vector<float>(41 * 41)};
    plane.at(20, 20) = 1;
    GaussianBlur::applyInPlace(plane, 3);
    double sum = 0;
    for (float v : plane.data) sum += v;
    EXPECT_NEAR(sum, 1, 1e-4);
    EXPECT_NEAR(plane.at(20, 20), 1 / (2 * std::numbers::pi * 9), 2e-4);
    EXPECT_NEAR(plane.at(17, 20), plane.at(23, 20), 1e-6);
    EXPECT_NEAR(plane.at(20, 17), plane.at(17, 20), 1e-6);
    // Box means against a plain count, edges repeated, windows wider than the plane too.
    for (int radius : {1, 4, 30}) {
        Plane box{13, 7, {}};
        for (int i = 0; i < 13 * 7; ++i) box.data.push_back(float((i * 37) % 11));
        const Plane source = box;
        GaussianBlur::boxMeanInPlace(box, radius);
        for (int y = 0; y < 7; ++y) {
            for (int x = 0; x < 13; ++x) {
                double total = 0;
                for (int j = -radius; j <= radius; ++j) {
                    for (int i = -radius; i <= radius; ++i) {
                        total += source.at(std::clamp(x + i, 0, 12), std::clamp(y + j, 0, 6));
                    }
                }
                ASSERT_NEAR(box.at(x, y), total / ((2 * radius + 1) * (2 * radius + 1)), 1e-4);
            }
        }
    }
}

TEST(GaussianBlurTest, WideBlurIsCloseToTheFullBlur) {
    const auto src = texture(200, 150);
    const auto full = GaussianBlur::apply(*src, 16);
    const WideBlur wide(*src, 16);
    std::vector<uint8_t> scratch;
    // Away from the borders, where the full blur leans on the repeated edge pixels.
    for (int y = 10; y < 140; ++y) {
        const uint8_t* row = wide.row(y, scratch);
        for (int x = 40; x < 4 * 190; ++x) {
            ASSERT_NEAR(row[x], full->row(y)[x], 5) << x / 4 << "," << y;
        }
    }
}

TEST(UnsharpMaskTest, NoneIsIdentityAndEdgesGainContrast) {
    const auto src = texture(50, 40);
    for (float none : {0.f, -1.f, kNaN}) EXPECT_TRUE(same(*src, *UnsharpMask::apply(*src, {none})));
    const auto step = picture(40, 8, [](int x, int) {
        const int v = x < 20 ? 60 : 190;
        return std::array<int, 4>{v, v, v, 255};
    });
    const auto sharp = UnsharpMask::apply(*step, {1});
    EXPECT_LT(at(*sharp, 19, 4, 0), 60);
    EXPECT_GT(at(*sharp, 20, 4, 0), 190);
    EXPECT_EQ(at(*sharp, 2, 4, 0), 60);
    EXPECT_EQ(at(*sharp, 37, 4, 1), 190);
    // Out of range is the nearest end of it.
    EXPECT_TRUE(same(*sharp, *UnsharpMask::apply(*step, {50})));
}

TEST(SelectiveBlurTest, FocusStaysSharpAndTheRestBlurs) {
    const auto src = texture(120, 120, 5);
    ApertureSettings circle;
    circle.blurSize = 1;
    circle.radius = 0.2f;
    const auto out = SelectiveBlur::apply(*src, circle);
    for (int y = 50; y < 70; ++y) {
        for (int x = 50; x < 70; ++x) ASSERT_EQ(at(*out, x, y, 0), at(*src, x, y, 0));
    }
    EXPECT_LT(stats(*out, 0, 0, 0, 15, 15).second, stats(*src, 0, 0, 0, 15, 15).second / 4);
    // A horizontal band through the centre: its middle row sharp, the top blurred.
    ApertureSettings band = circle;
    band.selective = 1;
    band.degree = 0;
    band.radius = 0.1f;
    const auto banded = SelectiveBlur::apply(*src, band);
    for (int x = 0; x < 120; ++x) ASSERT_EQ(at(*banded, x, 60, 2), at(*src, x, 60, 2));
    EXPECT_LT(stats(*banded, 2, 0, 0, 120, 10).second, stats(*src, 2, 0, 0, 120, 10).second / 4);
    // The mask colour fully laid over the unfocused part, without blur.
    ApertureSettings white;
    white.blurSize = 0;
    white.radius = 0.2f;
    white.color = gfx::Color::white(1, 1);
    const auto masked = SelectiveBlur::apply(*src, white);
    EXPECT_EQ(at(*masked, 0, 0, 1), 255);
    EXPECT_EQ(at(*masked, 60, 60, 1), at(*src, 60, 60, 1));
    // Laid atop a half-transparent picture, the mask takes its alpha.
    white.color = gfx::Color::rgb(0.5, 0, 1, 1);
    const auto half = SelectiveBlur::apply(*solid(50, 50, {40, 40, 40, 128}), white);
    EXPECT_EQ(std::vector<int>(half->pixel(0, 0), half->pixel(0, 0) + 4),
              (std::vector<int>{64, 0, 128, 128}));
}

TEST(LocalToneMapTest, NoneIsIdentityAndShadowsOpen) {
    const auto src = texture(300, 300);
    for (float none : {0.f, -2.f, kNaN})
        EXPECT_TRUE(same(*src, *LocalToneMap::apply(*src, {none})));
    // A dark half and a bright half: the dark one comes up, the detail in it grows.
    const auto halves = picture(300, 300, [](int x, int y) {
        const int v = (x < 150 ? 20 : 200) + ((x / 3 + y / 3) % 2) * 12;
        return std::array<int, 4>{v, v, v, 255};
    });
    const auto mapped = LocalToneMap::apply(*halves, {1});
    const auto [darkMean, darkVariance] = stats(*halves, 1, 20, 20, 130, 280);
    const auto [mappedMean, mappedVariance] = stats(*mapped, 1, 20, 20, 130, 280);
    EXPECT_GT(mappedMean, darkMean + 10);
    EXPECT_GT(mappedVariance, darkVariance);
    EXPECT_GT(stats(*mapped, 1, 170, 20, 280, 280).first, mappedMean + 50);
}

TEST(GlowTest, NoneIsIdentityAndLightBlooms) {
    const auto src = texture(200, 200);
    for (HolyLightSettings none : {HolyLightSettings{0, 1}, {1, 0}, {kNaN, kNaN}, {-1, 1}}) {
        EXPECT_TRUE(same(*src, *Glow::apply(*src, none)));
    }
    const auto lamp = picture(200, 200, [](int x, int y) {
        const bool lit = std::abs(x - 100) < 12 && std::abs(y - 100) < 12;
        return lit ? std::array<int, 4>{255, 250, 240, 255} : std::array<int, 4>{30, 30, 30, 255};
    });
    const auto glowing = Glow::apply(*lamp, {1, 1});
    EXPECT_GT(at(*glowing, 100, 118, 0), 60);  // beside the lamp
    EXPECT_LT(at(*glowing, 5, 5, 0), 40);      // far from it
    EXPECT_EQ(at(*glowing, 100, 100, 0), 255);
}

// Every filter with the settings that do the most, on pictures out of the ordinary.
TEST(BlurKernelsTest, OddPicturesAndArgumentsKeepAlphaAndPremultiplication) {
    ApertureSettings wild{kNaN, {-3, 9}, kInf, 2, -1, gfx::Color{2, -1, kNaN, 0.5}};
    // The gaussian blur blurs alpha too; the others keep it.
    struct Filter {
        std::function<gfx::BitmapPtr(const gfx::Bitmap&)> run;
        bool keepsAlpha = true;
    };
    const std::vector<Filter> filters = {
        {[](const gfx::Bitmap& b) { return GaussianBlur::apply(b, 3); }, false},
        {[](const gfx::Bitmap& b) { return GaussianBlur::apply(b, kInf); }, false},
        {[](const gfx::Bitmap& b) { return UnsharpMask::apply(b, {1}); }},
        {[](const gfx::Bitmap& b) { return SelectiveBlur::apply(b, ApertureSettings{}); }},
        {[&](const gfx::Bitmap& b) { return SelectiveBlur::apply(b, wild); }},
        {[](const gfx::Bitmap& b) { return LocalToneMap::apply(b, {1}); }},
        {[](const gfx::Bitmap& b) { return LocalToneMap::apply(b, {kInf}); }},
        {[](const gfx::Bitmap& b) {
            return Glow::apply(b, {1, 1});
        }},
    };
    std::mt19937 random(11);
    std::uniform_int_distribution<int> byte(0, 255);
    const auto translucent = picture(33, 17, [&](int x, int) {
        const int a = x < 5 ? 0 : byte(random);
        return std::array<int, 4>{byte(random) * a / 255, byte(random) * a / 255, a, a};
    });
    const std::vector<gfx::BitmapPtr> inputs = {solid(0, 0, {}), solid(1, 1, {9, 8, 7, 200}),
                                                solid(3, 2, {0, 0, 0, 0}), translucent};
    for (size_t f = 0; f < filters.size(); ++f) {
        for (const auto& input : inputs) {
            const auto out = filters[f].run(*input);
            ASSERT_EQ(out->width(), input->width());
            ASSERT_EQ(out->height(), input->height());
            for (int y = 0; y < out->height(); ++y) {
                for (int x = 0; x < out->width(); ++x) {
                    const uint8_t* p = out->pixel(x, y);
                    if (filters[f].keepsAlpha) {
                        ASSERT_EQ(p[3], at(*input, x, y, 3)) << "filter " << f;
                    }
                    ASSERT_LE(std::max({p[0], p[1], p[2]}), p[3]) << "filter " << f;
                }
            }
        }
    }
}

}  // namespace
}  // namespace orv::strand
