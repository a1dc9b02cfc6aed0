// Codec timings on a 12-megapixel photo: reading it at screen size (reduced while decoding)
// against a full decode and a resample, and writing it as a high-quality JPEG.
#include <benchmark/benchmark.h>

#include <algorithm>

#include "bench/BenchPhoto.h"
#include "platform/codec/ImageReader.h"
#include "platform/codec/JpegCodec.h"
#include "platform/gfx/BitmapOps.h"

namespace {

using namespace orv;

constexpr int kScreenLongSide = 1334;

const std::vector<uint8_t>& photoJpeg() {
    static const std::vector<uint8_t> bytes =
        codec::ImageReader::readAll(bench::BenchPhoto::jpegPath()).value_or(std::vector<uint8_t>{});
    return bytes;
}

void JpegScreenSizeRead(benchmark::State& state) {
    const auto& jpeg = photoJpeg();
    for (auto _ : state) {
        const auto image = codec::ImageReader::decode(jpeg.data(), jpeg.size(), kScreenLongSide);
        if (!image) state.SkipWithError("cannot decode the photo");
        benchmark::DoNotOptimize(image);
    }
}
BENCHMARK(JpegScreenSizeRead)->Unit(benchmark::kMillisecond);

void JpegFullDecodeThenResize(benchmark::State& state) {
    const auto& jpeg = photoJpeg();
    for (auto _ : state) {
        const auto full = codec::JpegCodec::decode(jpeg.data(), jpeg.size());
        if (!full) {
            state.SkipWithError("cannot decode the photo");
            break;
        }
        const double scale = double(kScreenLongSide) / std::max(full->width(), full->height());
        auto small = gfx::BitmapOps::resized(*full, int(full->width() * scale + 0.5),
                                             int(full->height() * scale + 0.5));
        benchmark::DoNotOptimize(small);
    }
}
BENCHMARK(JpegFullDecodeThenResize)->Unit(benchmark::kMillisecond);

void JpegEncode12MpAtQuality95(benchmark::State& state) {
    const auto bitmap = bench::BenchPhoto::readPpm(bench::BenchPhoto::ppmPath());
    if (!bitmap) {
        state.SkipWithError("cannot read the photo");
        return;
    }
    for (auto _ : state) {
        auto jpeg = codec::JpegCodec::encode(*bitmap, 0.95);
        benchmark::DoNotOptimize(jpeg);
    }
}
BENCHMARK(JpegEncode12MpAtQuality95)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
