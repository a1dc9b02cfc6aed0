// Memory of a whole editing session on a 12-megapixel photo: the editor opens the photo at full
// size, ten steps follow (the four one-filter tools in turn, an undo and a redo, an auto
// adjust), and the top step is saved. A step is a file, so the process should never hold more
// than a few full-size bitmaps however long the session runs: the figure to watch is the peak
// above the resident size before the editor opened, in full bitmaps (width x height x 4).
//
// The application is expected to make large allocations return to the system when freed, as
// the demo does (rt::Memory::returnLargeAllocationsAtOnce); --allocator-defaults measures the
// session without that setting.
//
//     orv_bench_session_peak [--allocator-defaults] [photo.jpg]

#include <chrono>
#include <cstdio>
#include <functional>

#include "bench/ResidentMemory.h"
#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "orvviews/edit/OrvEditHDRControllerBase.h"
#include "orvviews/edit/OrvEditHolyLightControllerBase.h"
#include "orvviews/edit/OrvEditMultipleControllerBase.h"
#include "orvviews/edit/OrvEditSharpnessControllerBase.h"
#include "orvviews/edit/OrvEditVignetteControllerBase.h"
#include "platform/codec/ImageReader.h"
#include "platform/rt/Bundle.h"
#include "platform/rt/Memory.h"
#include "platform/rt/RunLoop.h"
#include "platform/ui/Screen.h"
#include "platform/ui/Window.h"

namespace {

using Clock = std::chrono::steady_clock;

// The least a screen needs: a surface for the preview, no sliders (the bench moves them).
class SurfaceView : public ui::View, public OrvFilterResultViewInterface {
    ORV_DECLARE_CLASS(SurfaceView)
  public:
    std::shared_ptr<ui::View> imageView() const override { return surface_; }
    std::shared_ptr<OrvParameterConfigViewInterface> configView() const override { return nullptr; }
    void initWithFrame(const gfx::Rect& frame) override {
        ui::View::initWithFrame(frame);
        surface_ = ui::makeView<ui::View>({0, 0, 375, 500});
        addSubview(surface_);
    }

  private:
    std::shared_ptr<ui::View> surface_;
};
ORV_DEFINE_CLASS(SurfaceView, ui::View, OrvFilterResultViewInterface)

class Editor : public OrvEditMultipleControllerBase, public OrvFilterResultControllerDelegate {
  public:
    bool shown = false;
    bool toolDone = false;

    void viewDidLoad() override {
        OrvEditMultipleControllerBase::viewDidLoad();
        asyncLoadInputImageWithBlock([this] { return asyncLoadImage(); });
    }
    void loadedInputImage(const gfx::ImagePtr& image) override { setDisplayImage(image); }
    void setDisplayImage(const gfx::ImagePtr& image) override {
        OrvEditMultipleControllerBase::setDisplayImage(image);
        shown = true;
    }
    void onOrvKitFilterResult(OrvFilterResultController&, const ResultPtr& result) override {
        if (result->imagePath()) appendHistory(*result->imagePath());
        toolDone = true;
    }
    void notifyProcessingWithResult(const ResultPtr& result) override { delivered = result; }
    ResultPtr delivered;
};

bool waitFor(const std::function<bool()>& done) {
    return orv::rt::RunLoop::main().runUntil(done, 120);
}

// One tool over the current step: the preview, a slider moved, the full-size result as a file.
long baselineKiB = 0;

// The peak of one step above the resident size before the editor opened.
bool measured(const char* what, const std::function<bool()>& step) {
    orv::bench::ResidentSampler sampler;
    const bool ok = step();
    std::printf("  %-12s peak above the start %7.1f MiB, after it %7.1f MiB\n", what,
                (sampler.peakKiB() - baselineKiB) / 1024.0,
                (orv::bench::residentKiB() - baselineKiB) / 1024.0);
    return ok;
}

template <class Tool>
bool runTool(Editor& editor, double progress) {
    auto tool = orv::rt::make<Tool>();
    tool->setViewClazz(SurfaceView::staticClass());
    tool->setInputTempFilePath(editor.lastStepTemp());
    tool->setSaveToTemp(true);
    tool->setDelegate(std::static_pointer_cast<OrvFilterResultControllerDelegate>(
        editor.template self<Editor>()));
    tool->view();
    if (!waitFor([&] { return tool->filterParams() && tool->filterParams()->isInited(); })) {
        return false;
    }
    tool->filterParams()->args().front()->setPrecent(progress);
    editor.toolDone = false;
    tool->onImageCompleteAtion();
    const bool done = waitFor([&] { return editor.toolDone; });
    std::weak_ptr<Tool> weak = tool;
    tool.reset();
    orv::rt::RunLoop::main().runUntil([&] { return weak.expired(); }, 2);
    if (!weak.expired()) std::printf("  (the tool outlived its step)\n");
    return done;
}

template <class Tool>
bool toolStep(Editor& editor, double progress) {
    return measured(
        Tool::staticClass()->name().substr(7, Tool::staticClass()->name().size() - 21).c_str(),
        [&] { return runTool<Tool>(editor, progress); });
}

}  // namespace

int main(int argc, char** argv) {
    bool defaults = false;
    std::string photo = orv::rt::Bundle::main().resourcePath() + "/photos/dragonfly.jpg";
    for (int i = 1; i < argc; ++i) {
        if (std::string(argv[i]) == "--allocator-defaults") {
            defaults = true;
        } else {
            photo = argv[i];
        }
    }
    if (!defaults) orv::rt::Memory::returnLargeAllocationsAtOnce();
    orv::rt::RunLoop::main();
    auto window = ui::makeView<ui::Window>(ui::Screen::main().bounds());
    window->makeKeyAndVisible();
    int width = 0, height = 0;
    {
        const auto decoded = orv::codec::ImageReader::readFile(photo);
        if (!decoded) {
            std::fprintf(stderr, "cannot read %s\n", photo.c_str());
            return 1;
        }
        width = decoded->bitmap->width();
        height = decoded->bitmap->height();
    }
    const double bitmapMiB = width * 4.0 * height / (1 << 20);
    // The editor removes its input at the end, as it would an application's own copy.
    const std::string input = OrvTSFileManager::newTemporaryPath(".jpg");
    const auto bytes = OrvTSFileManager::readDataAtPath(photo);
    if (!bytes || !OrvTSFileManager::writeDataAtomically(*bytes, input)) return 1;

    const long before = orv::bench::residentKiB();
    baselineKiB = before;
    long peak = 0;
    size_t steps = 0;
    bool ok = true;
    const auto start = Clock::now();
    {
        orv::bench::ResidentSampler sampler;
        auto editor = orv::rt::make<Editor>();
        editor->setLimitSideSize(8192);
        editor->setSaveToTemp(true);
        editor->setInputTempFilePath(input);
        editor->setIsAutoRemoveTemp(true);
        window->setRootViewController(editor);
        ok = measured("Open", [&] { return waitFor([&] { return editor->shown; }); });
        for (int round = 0; ok && round < 2; ++round) {
            ok = toolStep<OrvEditVignetteControllerBase>(*editor, 0.2) &&
                 toolStep<OrvEditHDRControllerBase>(*editor, 0.7) &&
                 toolStep<OrvEditHolyLightControllerBase>(*editor, 0.6) &&
                 toolStep<OrvEditSharpnessControllerBase>(*editor, 0.8);
        }
        ok = ok && toolStep<OrvEditSharpnessControllerBase>(*editor, 0.5);
        if (ok) {
            editor->onStepPreviewAction();
            editor->onStepNextAction();
            const size_t count = editor->historiesCount();
            ok = measured("AutoAdjust", [&] {
                editor->onAutoAdjustAction();
                return waitFor([&] { return editor->historiesCount() == count + 1; });
            });
        }
        steps = editor->historiesCount() - 1;
        if (ok) {
            ok = measured("Finish", [&] {
                editor->onImageCompleteAtion();
                return waitFor([&] { return editor->delivered != nullptr; });
            });
            if (ok) OrvTSFileManager::deletePath(editor->delivered->imagePath());
        }
        window->setRootViewController(nullptr);
        editor.reset();
        orv::rt::RunLoop::main().runFor(0.1);
        peak = sampler.peakKiB();
    }
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    std::printf(
        "editing session on %s (%dx%d, full bitmap %.1f MiB): %zu steps, an undo and "
        "a redo, saved, in %.1f s\n",
        photo.c_str(), width, height, bitmapMiB, steps, seconds);
    std::printf("  allocator                   %s\n",
                defaults ? "defaults" : "large allocations returned at once");
    std::printf("  resident before the editor  %7.1f MiB\n", before / 1024.0);
    std::printf("  peak during the session     %7.1f MiB\n", peak / 1024.0);
    std::printf("  peak above the start        %7.1f MiB = %.2f full bitmaps\n",
                (peak - before) / 1024.0, (peak - before) / 1024.0 / bitmapMiB);
    return ok ? 0 : 1;
}
