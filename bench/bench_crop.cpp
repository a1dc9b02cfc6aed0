// The crop screen's work per frame of a gesture, on a phone-sized view over a screen-sized
// photo: a pan frame (the scroll view's offset moves), a pinch frame (zoom and offset change
// together), the mask's window moving one step of its animation, and the framed part of the
// photo worked out, as the crop tool does on confirm.
//
//     orv_bench_crop --benchmark_repetitions=5 --benchmark_report_aggregates_only=true

#include <benchmark/benchmark.h>

#include <cmath>

#include "orvviews/views/OrvTouchImageView.h"
#include "platform/rt/RunLoop.h"
#include "platform/ui/Screen.h"

namespace {

std::shared_ptr<OrvTouchImageView> makeView() {
    rt::RunLoop::main();
    ui::Screen::main().setBounds({0, 0, 390, 844});
    ui::Screen::main().setScale(3);
    auto view = ui::makeView<OrvTouchImageView>({0, 56, 390, 676});
    view->setRegionRatio(4.0 / 3.0);
    auto bitmap = std::make_shared<gfx::Bitmap>(1170, 878);
    view->setImage(gfx::Image::withBitmap(bitmap));
    return view;
}

void BM_PanFrame(benchmark::State& state) {
    auto view = makeView();
    const auto& scroll = *view->wrapView();
    const gfx::Point start = scroll.contentOffset();
    double t = 0;
    for (auto _ : state) {
        t += 0.05;
        view->wrapView()->setContentOffset(
            {start.x + 30 * std::sin(t), start.y + 20 * std::cos(t)});
    }
}
BENCHMARK(BM_PanFrame)->Unit(benchmark::kMicrosecond);

void BM_PinchFrame(benchmark::State& state) {
    auto view = makeView();
    double t = 0;
    for (auto _ : state) {
        t += 0.05;
        view->wrapView()->setZoomScale(2 + std::sin(t));
    }
}
BENCHMARK(BM_PinchFrame)->Unit(benchmark::kMicrosecond);

void BM_MaskAnimationFrame(benchmark::State& state) {
    auto view = makeView();
    const auto& mask = view->cutRegionView();
    mask->changeRegionRatio(1);
    double step = 0;
    for (auto _ : state) {
        step = step >= 1 ? 0 : step + 0.05;
        mask->applyAnimationWithStep(step);
    }
}
BENCHMARK(BM_MaskAnimationFrame)->Unit(benchmark::kMicrosecond);

void BM_CountImageCutRect(benchmark::State& state) {
    auto view = makeView();
    for (auto _ : state) benchmark::DoNotOptimize(view->countImageCutRect());
}
BENCHMARK(BM_CountImageCutRect)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
