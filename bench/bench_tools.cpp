// The editor's four one-slider tools (vignette, sharpness, holy light, HDR) as a user meets them:
//   - Slider/<tool>: one slider move in the live preview of a screen-sized photo (1170 × 878 on
//     a 390 × 844 point screen at 3x), from setPrecent through the pipe to the display view's
//     pixels as the next frame draws them. The parts: Slider/<tool>/undrawn stops before the
//     drawing, and Draw/only draws an unchanged picture (its colour conversion cached).
//   - Apply/<tool>/12MP: the full-size rendering the tool saves, on the 12-megapixel photo.
//   - Step/<tool>/12MP: a whole edit of the photo file: decode the JPEG, apply, encode the JPEG
//     at 0.95. Step/None is the decode and encode alone.
// Each tool runs with the arguments it gives itself, at their defaults.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "bench/BenchPhoto.h"
#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/strand/ORPFPConstants.h"
#include "orvviews/shower/OrvImageShowerImpl.h"
#include "platform/gfx/BitmapOps.h"
#include "platform/ui/Renderer.h"
#include "platform/ui/Screen.h"

namespace {

using namespace orv;
using Params = std::shared_ptr<VimraParameters>;

constexpr long kToolModel = 14;

struct Tool {
    const char* label;
    const char* code;
};

const Tool kTools[] = {
    {"Vignette", ORPFPOrvkitImageFilter_NAME_Vignette},
    {"Sharpen", ORPFPOrvkitImageFilter_NAME_Sharpen},
    {"HolyLight", ORPFPOrvkitImageFilter_NAME_HolyLight},
    {"Hdr", ORPFPOrvkitImageFilter_NAME_HDR},
};

// The bundled phone photo when it is there, else the generated stand-in of the same size.
std::string photoPath() {
    static const std::string path = [] {
        const std::string bundled = std::string(ORV_SOURCE_RESOURCES) + "/photos/dragonfly.jpg";
        return std::filesystem::exists(bundled) ? bundled : bench::BenchPhoto::jpegPath();
    }();
    return path;
}

const gfx::ImagePtr& photo() {
    static const gfx::ImagePtr image = imageWithContentsOfFile(photoPath());
    return image;
}

// What the editor shows: the photo reduced to the screen's 1170 pixels.
const gfx::ImagePtr& screenPhoto() {
    static const gfx::ImagePtr image = [] {
        if (!photo()) return gfx::ImagePtr();
        const gfx::Bitmap& full = *photo()->bitmap();
        const int height = full.height() * 1170 / full.width();
        return gfx::Image::withBitmap(gfx::BitmapOps::resized(full, 1170, height));
    }();
    return image;
}

// The parameters a tool hands to the shower: HDR's one slider is appended by the tool itself.
Params callerParams(const char* code) {
    auto params = VimraParameters::parameterWithCode(code, kToolModel);
    if (std::string(code) == ORPFPOrvkitImageFilter_NAME_HDR) {
        params->appendFloatArgWithKey("mixied", 0.5);
    }
    return params;
}

std::shared_ptr<OrvImageShowerImpl> makeShower(const ui::View::Ptr& root) {
    return rt::makeWith<OrvImageShowerImpl>(
        [&](OrvImageShowerImpl& s) { s.initWithRootView(root); });
}

// The arguments the tool renders the saved photo with: the shower's own, at their defaults.
Params toolParams(const char* code) {
    return makeShower(nullptr)->changeFilter(code, callerParams(code));
}

void usePhoneScreen() {
    ui::Screen::main().setBounds({0, 0, 390, 844});
    ui::Screen::main().setScale(3);
}

// With `draw` false the frame is not drawn: what is left is the pipe and the view's update.
void slider(benchmark::State& state, const char* code, bool draw) {
    if (!screenPhoto()) return state.SkipWithError("no photo");
    usePhoneScreen();
    auto root = ui::makeView<ui::View>(ui::Screen::main().bounds());
    auto shower = makeShower(root);
    shower->setImage(screenPhoto(), 0);
    const Params params = shower->changeFilter(code, callerParams(code));
    auto view = shower->displayView();
    if (!params || params->args().empty() || !view) return state.SkipWithError("no slider");
    const auto& arg = params->args().front();  // the one slider (holy light's strength)

    // Between two positions, so that every move changes the filter's settings.
    double position = 0.3;
    arg->setPrecent(position);
    const auto before = view->image();
    arg->setPrecent(0.7);
    if (view->image() == before) return state.SkipWithError("the preview did not change");

    for (auto _ : state) {
        position = position == 0.3 ? 0.7 : 0.3;
        arg->setPrecent(position);
        if (draw) benchmark::DoNotOptimize(ui::Renderer::renderView(*view));
    }
    state.SetItemsProcessed(state.iterations() * int64_t(screenPhoto()->bitmap()->width()) *
                            screenPhoto()->bitmap()->height());
}

void drawOnly(benchmark::State& state) {
    if (!screenPhoto()) return state.SkipWithError("no photo");
    usePhoneScreen();
    auto root = ui::makeView<ui::View>(ui::Screen::main().bounds());
    auto shower = makeShower(root);
    shower->setImage(screenPhoto(), 0);
    auto view = shower->displayView();
    for (auto _ : state) benchmark::DoNotOptimize(ui::Renderer::renderView(*view));
}

void apply(benchmark::State& state, const char* code) {
    if (!photo()) return state.SkipWithError("no photo");
    const Params params = toolParams(code);
    for (auto _ : state) {
        benchmark::DoNotOptimize(OrvImageShowerImpl::filterImage(photo(), code, params));
    }
    state.SetItemsProcessed(state.iterations() * int64_t(photo()->bitmap()->width()) *
                            photo()->bitmap()->height());
}

void step(benchmark::State& state, const char* code) {
    if (!photo()) return state.SkipWithError("no photo");
    const Params params = code ? toolParams(code) : nullptr;
    for (auto _ : state) {
        auto image = imageWithContentsOfFile(photoPath());
        if (code) image = OrvImageShowerImpl::filterImage(image, code, params);
        const auto jpeg = orvJpegDataWithCompress(image, 0.95);
        if (jpeg.empty()) return state.SkipWithError("encoding failed");
        benchmark::DoNotOptimize(jpeg.data());
    }
}

void registerAll() {
    for (const Tool& tool : kTools) {
        benchmark::RegisterBenchmark((std::string("Slider/") + tool.label).c_str(), slider,
                                     tool.code, true)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    }
    for (const Tool& tool : kTools) {
        benchmark::RegisterBenchmark((std::string("Slider/") + tool.label + "/undrawn").c_str(),
                                     slider, tool.code, false)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    }
    benchmark::RegisterBenchmark("Draw/only", drawOnly)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    for (const Tool& tool : kTools) {
        benchmark::RegisterBenchmark((std::string("Apply/") + tool.label + "/12MP").c_str(), apply,
                                     tool.code)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    }
    for (const Tool& tool : kTools) {
        benchmark::RegisterBenchmark((std::string("Step/") + tool.label + "/12MP").c_str(), step,
                                     tool.code)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    }
    benchmark::RegisterBenchmark("Step/None/12MP", step, nullptr)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    registerAll();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
