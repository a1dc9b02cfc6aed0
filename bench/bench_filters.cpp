// Every filter of the pipe on the 12-megapixel camera photo and on a screen-sized picture
// (1170 × 2532, the live preview's largest), beside a plain copy of the same pixels. Items per
// second are pixels per second.

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <memory>
#include <string>

#include "bench/BenchPhoto.h"
#include "frameworks/strand/kernels/ColorAdjust.h"
#include "frameworks/strand/kernels/ColorCorrection.h"
#include "frameworks/strand/kernels/FaceWarp.h"
#include "frameworks/strand/kernels/GaussianBlur.h"
#include "frameworks/strand/kernels/Glow.h"
#include "frameworks/strand/kernels/LocalToneMap.h"
#include "frameworks/strand/kernels/LookCatalogue.h"
#include "frameworks/strand/kernels/SelectiveBlur.h"
#include "frameworks/strand/kernels/SkinSmooth.h"
#include "frameworks/strand/kernels/UnsharpMask.h"
#include "frameworks/strand/kernels/Vignette.h"
#include "platform/codec/ImageReader.h"
#include "platform/gfx/BitmapOps.h"

namespace {

using namespace orv;
using Filter = std::function<gfx::BitmapPtr(const gfx::Bitmap&)>;

const gfx::Bitmap& photo() {
    static const gfx::BitmapPtr bitmap = [] {
        auto image = codec::ImageReader::readFile(bench::BenchPhoto::jpegPath());
        return image ? image->bitmap : std::make_shared<gfx::Bitmap>(4000, 3000);
    }();
    return *bitmap;
}

// The photo turned upright and brought to a tall phone screen's pixels.
const gfx::Bitmap& screen() {
    static const gfx::BitmapPtr bitmap = [] {
        auto upright = gfx::BitmapOps::oriented(photo(), gfx::ImageOrientation::Right);
        return gfx::BitmapOps::resized(*upright, 1170, 2532);
    }();
    return *bitmap;
}

// A face roughly in the middle of a picture, in the 68-point layout.
strand::FaceLandmarks faceIn(const gfx::Bitmap& b) {
    strand::FaceLandmarks face;
    const double cx = b.width() / 2.0, cy = b.height() / 2.0, s = b.width() / 8.0;
    for (int i = 0; i < 68; ++i) face.points.push_back({cx, cy});
    for (int i = 0; i <= 16; ++i) {  // the jaw, a half circle below the eyes
        const double a = 3.14159 * i / 16;
        face.points[i] = {cx - s * std::cos(a), cy + s * 0.2 + s * std::sin(a)};
    }
    for (int i = 0; i < 6; ++i) {
        const double a = 6.28318 * i / 6;
        face.points[36 + i] = {cx - s * 0.4 + s * 0.15 * std::cos(a), cy + s * 0.05 * std::sin(a)};
        face.points[42 + i] = {cx + s * 0.4 + s * 0.15 * std::cos(a), cy + s * 0.05 * std::sin(a)};
    }
    face.points[30] = {cx, cy + s * 0.3};
    return face;
}

void run(benchmark::State& state, const gfx::Bitmap& input, const Filter& filter) {
    for (auto _ : state) benchmark::DoNotOptimize(filter(input));
    state.SetItemsProcessed(state.iterations() * int64_t(input.width()) * input.height());
}

void registerFilter(const std::string& name, const Filter& filter) {
    benchmark::RegisterBenchmark((name + "/12MP").c_str(),
                                 [filter](benchmark::State& s) { run(s, photo(), filter); })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    benchmark::RegisterBenchmark((name + "/screen").c_str(),
                                 [filter](benchmark::State& s) { run(s, screen(), filter); })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

void registerAll() {
    registerFilter("Copy", [](const gfx::Bitmap& b) {
        auto copy = std::make_shared<gfx::Bitmap>(b.width(), b.height());
        std::memcpy(copy->mutableData(), b.data(), b.byteCount());
        return gfx::BitmapPtr(copy);
    });
    registerFilter("GaussianBlurSigma10",
                   [](const gfx::Bitmap& b) { return strand::GaussianBlur::apply(b, 10); });
    registerFilter("UnsharpMask", [](const gfx::Bitmap& b) {
        return strand::UnsharpMask::apply(b, {.sharpness = 0.5f});
    });
    registerFilter("ColorAdjust", [](const gfx::Bitmap& b) {
        strand::ColorAdjustSettings s;
        s.temperature = 0.2f, s.highlights = -0.3f, s.shadows = 0.3f, s.brightness = 0.1f;
        s.contrast = 0.2f, s.saturation = 0.3f, s.exposure = 0.1f;
        return strand::ColorAdjust::apply(b, s);
    });
    registerFilter("ColorCorrection", [](const gfx::Bitmap& b) {
        strand::ColorCorrectionSettings s;
        s.minR = 10, s.minG = 12, s.minB = 20, s.maxR = 240, s.maxG = 235, s.maxB = 230;
        s.midR = 120, s.midG = 125, s.midB = 110;
        return strand::ColorCorrection::apply(b, s);
    });
    registerFilter("Vignette", [](const gfx::Bitmap& b) {
        return strand::Vignette::apply(b, {.start = 0.5f});
    });
    registerFilter("Aperture", [](const gfx::Bitmap& b) {
        strand::ApertureSettings s;
        s.color = gfx::Color::white(1, 0.3);
        return strand::SelectiveBlur::apply(b, s);
    });
    registerFilter("Hdr", [](const gfx::Bitmap& b) {
        return strand::LocalToneMap::apply(b, {.strength = 0.5f});
    });
    registerFilter("HolyLight", [](const gfx::Bitmap& b) {
        return strand::Glow::apply(b, {.strength = 0.5f, .brightness = 0.5f});
    });
    registerFilter("SkinSmooth", [](const gfx::Bitmap& b) {
        return strand::SkinSmooth::apply(b, {.smoothing = 0.7f, .fair = 0.3f, .ruddy = 0.2f});
    });
    registerFilter("FaceWarp", [](const gfx::Bitmap& b) {
        strand::PlasticSettings s;
        s.eyeEnlarge = 0.5, s.cheekThin = 0.5, s.faces = {faceIn(b)};
        return strand::FaceWarp::apply(b, s);
    });
    const auto catalogue = strand::LookCatalogue::shared();
    if (!catalogue->entries().empty()) {
        const auto& entry = catalogue->entries().front();
        registerFilter("Look/" + entry.code, [look = entry.look](const gfx::Bitmap& b) {
            return look->apply(b, look->defaults());
        });
    }
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    registerAll();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
