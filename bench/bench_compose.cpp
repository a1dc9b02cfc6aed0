// Ten stickers composed on the decoded 12-megapixel photo (the scene of bench/ComposeScene.h),
// without the codecs, and followed by the JPEG the result is saved as.

#include <benchmark/benchmark.h>

#include <optional>

#include "bench/BenchPhoto.h"
#include "bench/ComposeScene.h"
#include "frameworks/core/OrvImageExtension.h"

namespace {

using namespace orv;

struct Inputs {
    std::optional<bench::ComposeScene> scene;
    gfx::ImagePtr photo;
};

const Inputs& inputs() {
    static const Inputs made = [] {
        const std::string dir = std::string(ORV_BENCH_DATA_DIR) + "/compose";
        Inputs in;
        if (!bench::ComposeScene::writeInputs(dir).empty())
            in.scene = bench::ComposeScene::read(dir);
        in.photo = imageWithContentsOfFile(bench::BenchPhoto::jpegPath());
        return in;
    }();
    return made;
}

void composeLoop(benchmark::State& state, bool encode) {
    const Inputs& in = inputs();
    if (!in.scene || !in.photo) {
        state.SkipWithError("cannot make the inputs");
        return;
    }
    for (auto _ : state) {
        // The results are made again each time (composing empties their pictures), untimed.
        state.PauseTiming();
        auto results = in.scene->stickerResults(in.photo->size());
        state.ResumeTiming();
        auto composed = OrvStickerFactory::megerStickers(results, in.photo);
        if (encode) {
            auto jpeg = orvJpegDataWithCompress(composed, 0.92);
            benchmark::DoNotOptimize(jpeg);
        }
        benchmark::DoNotOptimize(composed);
    }
}

void MegerTenStickers12Mp(benchmark::State& state) {
    composeLoop(state, false);
}
BENCHMARK(MegerTenStickers12Mp)->Unit(benchmark::kMillisecond);

void MegerTenStickers12MpThenJpeg92(benchmark::State& state) {
    composeLoop(state, true);
}
BENCHMARK(MegerTenStickers12MpThenJpeg92)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
