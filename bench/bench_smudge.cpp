// The brush canvas on a phone of 390 × 844 points at 3x (a 1170 × 2532 canvas):
//   - one touch move that lays 10 stamps of a 60-point brush, with the snapshot the view shows,
//     and its two halves (the stamps alone, the snapshot alone);
//   - the end of a stroke on the main thread, and the PNG write that follows on a queue;
//   - the same 10 dabs of the same size laid by libmypaint on its own surface, for comparison
//     (dabs only: it has no snapshot to make).
// The brush is the library's soft round one (hardness 0.5 for libmypaint's dabs).
//
//     orv_bench_smudge --benchmark_repetitions=5 --benchmark_report_aggregates_only=true

#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <memory>
#include <thread>

#include "frameworks/core/OrvBrushLocalPackage.h"
#include "orvviews/widgets/smudge/OrvSmudgeProcessor.h"
#include "platform/ui/Screen.h"

#if ORV_HAVE_MYPAINT
extern "C" {
#include <libmypaint/mypaint-fixed-tiled-surface.h>
}
#endif

namespace {

constexpr int kCanvasWidth = 1170;
constexpr int kCanvasHeight = 2532;
constexpr double kScreenWidth = 390;
constexpr double kScreenHeight = 844;
constexpr double kBrushPoints = 60;
constexpr int kStampsPerMove = 10;

// A photo-like canvas: gradients with some texture, opaque.
gfx::ImagePtr makeCanvasPicture() {
    auto bitmap = std::make_shared<gfx::Bitmap>(kCanvasWidth, kCanvasHeight);
    for (int y = 0; y < kCanvasHeight; ++y) {
        uint8_t* row = bitmap->mutableRow(y);
        for (int x = 0; x < kCanvasWidth; ++x) {
            row[4 * x] = uint8_t(x * 255 / kCanvasWidth);
            row[4 * x + 1] = uint8_t(y * 255 / kCanvasHeight);
            row[4 * x + 2] = uint8_t((x ^ y) & 0x3f) + 100;
            row[4 * x + 3] = 255;
        }
    }
    return gfx::Image::withBitmap(bitmap);
}

std::shared_ptr<OrvSmudgeProcessor> makeProcessor(const char* brushCode) {
    ui::Screen::main().setBounds({0, 0, kScreenWidth, kScreenHeight});
    ui::Screen::main().setScale(3);
    auto processor = rt::make<OrvSmudgeProcessor>();
    processor->setImage(makeCanvasPicture());
    auto brush = OrvBrushLocalPackage::package()->brushWithCode(std::string(brushCode));
    OrvBrushLocalPackage::package()->loadBrushData(brush);
    processor->setCurrentBrush(brush);
    processor->setBrushSize(kBrushPoints / kScreenWidth);
    processor->setOriginIVSize({kScreenWidth, kScreenHeight});
    processor->setMaxUndoCount(50);
    return processor;
}

// The length of a move that lays exactly kStampsPerMove stamps.
double moveLength(const OrvSimpleProcessor& processor) {
    const double template_ = 128 * processor.brushSize();
    return (kStampsPerMove - 0.5) * template_ * 0.8;
}

// Round and round a circle, so that stamps turn with the stroke as they do under a finger.
void BM_TouchMove(benchmark::State& state, const char* brushCode) {
    auto processor = makeProcessor(brushCode);
    constexpr double kRadius = 150;
    const double turn = moveLength(*processor) / kRadius;
    const auto at = [&](double angle) {
        return gfx::Point{195 + kRadius * std::cos(angle), 422 + kRadius * std::sin(angle)};
    };
    double angle = 0;
    processor->touchesBegan();
    for (auto _ : state) {
        benchmark::DoNotOptimize(processor->drawAtCurrentPoint(at(angle + turn), at(angle)));
        angle += turn;
    }
    processor->destroy();
}
BENCHMARK_CAPTURE(BM_TouchMove, stamp, "round_soft")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_TouchMove, mosaic, "mosaic")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_TouchMove, eraser, "eraser")->Unit(benchmark::kMillisecond);

// The stamps of a move without its snapshot: upright (a stroke straight down) and turned.
void BM_StampsOnly(benchmark::State& state) {
    auto processor = makeProcessor("round_soft");
    const float scale = float(processor->brushScale());
    const float angle = float(state.range(0)) * float(M_PI) / 180;
    for (auto _ : state) {
        for (int i = 0; i < kStampsPerMove; ++i) {
            processor->drawAtPoint({585, 400.0 + 47 * i}, angle, scale, 0.8f);
        }
    }
    processor->destroy();
}
BENCHMARK(BM_StampsOnly)->Arg(0)->Arg(30)->Unit(benchmark::kMillisecond);

void BM_Snapshot(benchmark::State& state) {
    auto processor = makeProcessor("round_soft");
    for (auto _ : state) benchmark::DoNotOptimize(processor->getSmudgeImage());
    processor->destroy();
}
BENCHMARK(BM_Snapshot)->Unit(benchmark::kMillisecond);

// The main thread's share of the end of a stroke: snapshot, log, and the queue's pass started.
// A stroke a few tenths of a second apart, as a user paints; the writes of earlier strokes run
// on the queue meanwhile.
void BM_StrokeEnd(benchmark::State& state) {
    auto processor = makeProcessor("round_soft");
    const double step = moveLength(*processor);
    double x = 40;
    for (auto _ : state) {
        state.PauseTiming();
        x = x + step > kScreenWidth - 40 ? 40 : x + step;
        processor->touchesBegan();
        processor->drawAtCurrentPoint({x, 600}, {x, 200});
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        state.ResumeTiming();
        processor->saveCurrentAsHistory();
    }
    processor->destroy();
}
BENCHMARK(BM_StrokeEnd)->Unit(benchmark::kMillisecond)->Iterations(20);

// The queue's share: one history entry written as PNG.
void BM_HistoryPngWrite(benchmark::State& state) {
    auto processor = makeProcessor("round_soft");
    gfx::ImagePtr canvas = processor->getSmudgeImage();
    for (auto _ : state) {
        auto log = OrvSmudgeLog::initWithImage(canvas);
        log->runCacheJob();
        state.PauseTiming();
        log->destroy();
        state.ResumeTiming();
    }
    processor->destroy();
}
BENCHMARK(BM_HistoryPngWrite)->Unit(benchmark::kMillisecond);

#if ORV_HAVE_MYPAINT
// libmypaint laying the same dabs: 10 soft dabs of the same diameter in one atomic block (its
// dabs are rendered when the block ends).
void BM_MyPaintDabs(benchmark::State& state) {
    MyPaintFixedTiledSurface* surface =
        mypaint_fixed_tiled_surface_new(kCanvasWidth, kCanvasHeight);
    MyPaintSurface* base = reinterpret_cast<MyPaintSurface*>(surface);
    const float radius = float(kBrushPoints * 3 / 2);
    // Our spacing: 0.8 of the brush picture's width times the size, in points, at 3x.
    const float spacing = float(0.8 * 128 * (kBrushPoints / kScreenWidth) * 3);
    double y = 300;
    for (auto _ : state) {
        mypaint_surface_begin_atomic(base);
        for (int i = 0; i < kStampsPerMove; ++i) {
            y = y + spacing > kCanvasHeight - 300 ? 300 : y + spacing;
            mypaint_surface_draw_dab(base, 585, float(y), radius, 0.8f, 0.4f, 0.2f, 0.8f, 0.5f,
                                     1.0f, 1.0f, 0.0f, 0.0f, 0.0f);
        }
        MyPaintRectangle roi;
        mypaint_surface_end_atomic(base, &roi);
    }
    mypaint_surface_unref(base);
}
BENCHMARK(BM_MyPaintDabs)->Unit(benchmark::kMillisecond);
#endif

}  // namespace

BENCHMARK_MAIN();
