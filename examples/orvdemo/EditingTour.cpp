#include "examples/orvdemo/EditingTour.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>

#include "examples/orvdemo/DemoWait.h"
#include "examples/orvdemo/ParameterToolView.h"
#include "frameworks/core/OrvBrushLocalPackage.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "orvviews/popup/OrvPopupProgress.h"
#include "orvviews/widgets/OrvEditActionType.h"
#include "platform/rt/Error.h"
#include "platform/rt/RunLoop.h"
#include "platform/ui/EventInjector.h"
#include "platform/ui/TableViewCell.h"

namespace orvdemo {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {

orv::rt::RunLoop& loop() {
    return orv::rt::RunLoop::main();
}

double megabytes(const std::optional<std::string>& path) {
    std::error_code error;
    const auto size = path ? fs::file_size(*path, error) : 0;
    return error ? 0 : size / 1e6;
}

// Files in the library's temporary folder.
size_t temporaryFiles() {
    std::error_code error;
    size_t count = 0;
    for (auto it = fs::directory_iterator(OrvTSFileManager::temporaryDirectory(), error);
         !error && it != fs::directory_iterator(); it.increment(error)) {
        ++count;
    }
    return count;
}

}  // namespace

bool EditingTour::run(const std::string& photo, const std::string& output) {
    // The editor removes its input when it ends, as an application's picked photo would be a
    // copy of its own; the bundled photo stays untouched.
    const std::string copy = OrvTSFileManager::newTemporaryPath(".jpg");
    const size_t filesBefore = temporaryFiles();
    std::error_code error;
    fs::copy_file(photo, copy, error);
    if (error) return fail("could not copy the photo: " + error.message());
    const bool done = open(copy) && applyTool(OrvEditActionTypeVignette, "vignette", 0.05) &&
                      applyTool(OrvEditActionTypeHDR, "hdr", 0.9) && undoRedo() && autoAdjust() &&
                      applyTool(OrvEditActionTypeSharpness, "sharpness", 0.8) && cropPhoto() &&
                      paintWithBrushes() && finish(output);
    if (!done) return false;
    const size_t left = temporaryFiles() - filesBefore;
    std::printf("  temporary files left behind: %zu\n", left);
    return left == 0 || fail("the session left files in the temporary folder");
}

bool EditingTour::open(const std::string& photo) {
    auto options = OrvOptions::build<EditorOptions>();
    options->setSaveToTemp(true);
    options->setIsAutoRemoveTemp(true);
    // Steps at the photo's own size, so that the photo comes back at full resolution.
    options->setLimitSideSize(8192);
    component_ = OrvEditComponent::initWithSourceController<EditorComponent>(
        home_, [this](const std::shared_ptr<OrvResult>& result, const std::shared_ptr<rt::Error>&,
                      const std::shared_ptr<ui::ViewController>&) {
            called_ = true;
            delivered_ = result;
        });
    component_->setOptions(options);
    component_->setAutoDismissWhenCompelted(true);
    component_->setInputTempFilePath(photo);
    const auto start = Clock::now();
    component_->showComponent();
    editor_ = component_->controller();
    if (!editor_) return fail("the editor did not appear");
    loop().runFor(0.1);
    shoot_("editor-loading");
    if (!waitFor([&] { return editor_->historiesCount() == 1 && editor_->displayImage(); })) {
        return fail("the photo never became the first step");
    }
    report("open", start);
    loop().runFor(0.5);
    shoot_("editor-open");
    return true;
}

bool EditingTour::applyTool(long action, const std::string& name, double progress) {
    const size_t before = editor_->historiesCount();
    tap(*editor_->toolButton(action));
    auto tool = std::dynamic_pointer_cast<OrvFilterResultController>(editor_->openTool());
    if (!tool) return fail(name + " did not open");
    if (!waitFor([&] { return tool->filterParams() && tool->filterParams()->isInited(); })) {
        return fail(name + " never showed the photo");
    }
    loop().runFor(0.6);
    shoot_(name + "-open");

    // The slider, dragged by hand from where it rests to where the user wants it.
    auto screen = std::dynamic_pointer_cast<ParameterToolView>(tool->defaultStyleView());
    const auto& bar = screen->config()->seekBar();
    const gfx::Rect frame = bar->convertRectToView(bar->bounds(), nullptr);
    const double y = gfx::rectGetMidY(frame);
    auto injector = ui::EventInjector::injectorForWindow(window_);
    injector->drag({{frame.origin.x + frame.size.width * bar->progress(), y},
                    {frame.origin.x + frame.size.width * progress, y}},
                   0.5);
    loop().runFor(0.3);
    shoot_(name + "-slider");

    return applyAndReturn(*screen->doneButton(), before, name, name);
}

bool EditingTour::cropPhoto() {
    const size_t before = editor_->historiesCount();
    tap(*editor_->toolButton(OrvEditActionTypeCuter));
    auto tool = std::dynamic_pointer_cast<CropToolController>(editor_->openTool());
    if (!tool) return fail("the crop tool did not open");
    const auto& touch = tool->touchView();
    if (!waitFor([&] { return touch->imageView()->image() != nullptr; })) {
        return fail("the crop tool never showed the photo");
    }
    loop().runFor(0.6);
    shoot_("crop-open");
    auto idle = [&] { return waitFor([&] { return !touch->inActioning(); }, 10); };

    tap(*tool->ratioButton(64));  // 4:3
    loop().runFor(0.5);
    if (!idle() || touch->regionRatio() <= 1.3) return fail("4:3 did not frame the photo");
    shoot_("crop-4-3");
    const gfx::Rect frame = touch->convertRectToView(touch->bounds(), nullptr);
    const gfx::Point middle{gfx::rectGetMidX(frame), gfx::rectGetMidY(frame)};
    auto injector = ui::EventInjector::injectorForWindow(window_);
    injector->pinch(middle, 60, 130, 0.6);
    loop().runFor(0.6);
    if (!idle() || touch->zoomScale() <= 1.5) return fail("the pinch did not zoom");
    shoot_("crop-zoomed");
    injector->drag({middle, {middle.x + 50, middle.y + 30}}, 0.5);
    loop().runFor(0.6);
    idle();
    shoot_("crop-moved");
    tap(*tool->turnRightButton());
    loop().runFor(0.6);
    if (!idle() || touch->imageOrientation() != gfx::ImageOrientation::Right) {
        return fail("the photo did not turn right");
    }
    shoot_("crop-turned");
    tap(*tool->mirrorButton());
    loop().runFor(0.6);
    if (!idle()) return fail("the mirror never ended");
    shoot_("crop-mirrored");
    const gfx::Rect cut = touch->countImageCutRect();
    std::printf("  crop window on the photo: (%.3f, %.3f, %.3f, %.3f), zoom %.2f\n", cut.origin.x,
                cut.origin.y, cut.size.width, cut.size.height, touch->zoomScale());

    return applyAndReturn(*tool->doneButton(), before, "crop", "crop");
}

bool EditingTour::paintWithBrushes() {
    const size_t before = editor_->historiesCount();
    tap(*editor_->toolButton(OrvEditActionTypeSmudge));
    auto tool = std::dynamic_pointer_cast<SmudgeToolController>(editor_->openTool());
    if (!tool) return fail("the brush tool did not open");
    const auto& screen = *tool->screen();
    const auto& wrap = screen.wrap();
    if (!waitFor([&] { return wrap->getSmudgeImage() != nullptr; })) {
        return fail("the brush tool never showed the photo");
    }
    loop().runFor(0.6);
    shoot_("brush-open");

    // The picture lies across the middle of the canvas; strokes stay inside it.
    const gfx::Rect canvas =
        wrap->smudgeImageView()->convertRectToView(wrap->smudgeImageView()->bounds(), nullptr);
    const auto at = [&](double u, double v) {
        return gfx::Point{canvas.origin.x + u * canvas.size.width,
                          canvas.origin.y + v * canvas.size.height};
    };
    struct Stroke {
        const char* code;
        long size;
        gfx::Point from, to;
        double amplitude;
    };
    const Stroke strokes[] = {
        {"stamp_heart", 2, at(0.08, 0.22), at(0.92, 0.3), 18},
        {"round_hard", 1, at(0.05, 0.45), at(0.5, 0.4), 12},
        {"mosaic", 3, at(0.1, 0.62), at(0.9, 0.7), 22},
        {orvEraserBrushCode, 3, at(0.62, 0.08), at(0.7, 0.92), 14},
    };
    for (const Stroke& stroke : strokes) {
        if (!chooseBrush(*tool, stroke.code, stroke.size)) return false;
        const auto start = Clock::now();
        const uint64_t undo = wrap->getUndoCount();
        paintWave(stroke.from, stroke.to, stroke.amplitude);
        if (wrap->getUndoCount() != undo + 1)
            return fail(std::string(stroke.code) + " left no stroke");
        std::printf("  %-12s %6.2f s\n", stroke.code,
                    std::chrono::duration<double>(Clock::now() - start).count());
        shoot_(std::string("brush-") + stroke.code);
    }

    tap(*screen.undoButton());
    loop().runFor(0.2);
    if (wrap->getRedoCount() != 1) return fail("undo took no stroke back");
    shoot_("brush-undo");
    tap(*screen.redoButton());
    loop().runFor(0.2);
    if (wrap->getRedoCount() != 0) return fail("redo brought no stroke back");
    shoot_("brush-redo");

    // Compare while held: the photo as it came.
    auto injector = ui::EventInjector::injectorForWindow(window_);
    const gfx::Rect compare =
        screen.compareButton()->convertRectToView(screen.compareButton()->bounds(), nullptr);
    injector->touchDown(1, {gfx::rectGetMidX(compare), gfx::rectGetMidY(compare)});
    loop().runFor(0.2);
    shoot_("brush-compare");
    injector->touchUp(1);
    loop().runFor(0.2);

    return applyAndReturn(*screen.doneButton(), before, "brush", "brushes");
}

bool EditingTour::chooseBrush(SmudgeToolController& tool, const std::string& code, long size) {
    const auto& table = tool.screen()->brushBar()->table();
    const auto& brushes = table->brushes();
    const auto found = std::find_if(brushes.begin(), brushes.end(),
                                    [&](const auto& brush) { return brush->code() == code; });
    if (found == brushes.end()) return fail("no brush " + code + " in the bar");
    const auto path = ui::IndexPath::forRow(found - brushes.begin(), 0);
    table->scrollToRowAtIndexPath(path, ui::TableViewScrollPosition::Middle, true);
    loop().runFor(0.5);
    auto cell = table->cellForRowAtIndexPath(path);
    if (!cell) return fail("the brush " + code + " is not on screen");
    tap(*cell);
    tap(*tool.screen()->sizeButton(size));
    loop().runFor(0.3);
    shoot_("brush-choose-" + code);
    loop().runFor(1.0);  // the size cursor fades
    return true;
}

void EditingTour::paintWave(gfx::Point from, gfx::Point to, double amplitude) {
    std::vector<gfx::Point> path;
    constexpr int kPoints = 40;
    const double dx = to.x - from.x, dy = to.y - from.y;
    const double length = std::hypot(dx, dy);
    for (int i = 0; i <= kPoints; ++i) {
        const double t = double(i) / kPoints;
        // Across the line, one and a half waves.
        const double off = amplitude * std::sin(t * 3 * M_PI);
        path.push_back({from.x + dx * t - dy / length * off, from.y + dy * t + dx / length * off});
    }
    ui::EventInjector::injectorForWindow(window_)->drag(path, 0.8);
    loop().runFor(0.2);
}

bool EditingTour::applyAndReturn(ui::View& done, size_t stepsBefore, const std::string& shot,
                                 const std::string& step) {
    const auto start = Clock::now();
    tap(done);
    loop().runFor(0.05);
    shoot_(shot + "-saving");
    if (!waitFor(
            [&] { return editor_->historiesCount() == stepsBefore + 1 && !editor_->openTool(); })) {
        return fail(step + " did not come back with a step");
    }
    report(step.c_str(), start);
    loop().runFor(1.5);
    shoot_("editor-after-" + step);
    return true;
}

bool EditingTour::undoRedo() {
    const size_t steps = editor_->historiesCount();
    const auto shown = editor_->displayImage();
    auto start = Clock::now();
    tap(*editor_->undoButton());
    if (!waitFor([&] { return editor_->displayImage() != shown; })) {
        return fail("undo did not show the step before");
    }
    report("undo", start);
    loop().runFor(0.5);
    shoot_("editor-undo");
    start = Clock::now();
    tap(*editor_->redoButton());
    const auto undone = editor_->displayImage();
    if (!waitFor(
            [&] { return editor_->brushiesCount() == 0 && editor_->displayImage() != undone; })) {
        return fail("redo did not bring the step back");
    }
    report("redo", start);
    if (editor_->historiesCount() != steps) return fail("redo did not restore the stack");
    loop().runFor(0.5);
    shoot_("editor-redo");
    return true;
}

bool EditingTour::autoAdjust() {
    const size_t before = editor_->historiesCount();
    const auto start = Clock::now();
    tap(*editor_->autoButton());
    loop().runFor(0.05);
    shoot_("auto-adjust-working");
    if (!waitFor([&] { return editor_->historiesCount() == before + 1; })) {
        return fail("auto adjust added no step");
    }
    report("auto adjust", start);
    loop().runFor(1.5);
    shoot_("editor-after-auto-adjust");
    return true;
}

bool EditingTour::finish(const std::string& output) {
    const auto steps = editor_->historiesCount();
    const auto start = Clock::now();
    tap(*editor_->doneButton());
    loop().runFor(0.05);
    shoot_("editor-finishing");
    if (!waitFor([&] { return called_; })) return fail("the photo never came back");
    if (!delivered_ || !delivered_->imagePath()) return fail("the result has no file");
    const auto path = *delivered_->imagePath();
    std::printf("  %-12s %6.2f s  %6.2f MB  (%zu steps)\n", "finish",
                std::chrono::duration<double>(Clock::now() - start).count(), megabytes(path),
                steps);
    loop().runFor(1.0);
    shoot_("editor-done");
    // The result is the application's: it takes it out of the library's temporary folder.
    std::error_code error;
    fs::copy_file(path, output, fs::copy_options::overwrite_existing, error);
    OrvTSFileManager::deletePath(path);
    if (error) return fail("could not copy the result: " + error.message());
    editor_.reset();
    component_.reset();
    delivered_.reset();
    loop().runFor(0.5);
    std::printf("  saved %s\n", output.c_str());
    return true;
}

void EditingTour::tap(ui::View& view) {
    // The hub takes the touches while it shows, as it does on a phone: a user waits for it.
    waitFor([] { return OrvPopupProgress::sharedView()->superview() == nullptr; }, 30);
    auto injector = ui::EventInjector::injectorForWindow(window_);
    const gfx::Rect frame = view.convertRectToView(view.bounds(), nullptr);
    injector->tap({gfx::rectGetMidX(frame), gfx::rectGetMidY(frame)});
}

void EditingTour::report(const char* what, Clock::time_point since) {
    std::printf("  %-12s %6.2f s  %6.2f MB\n", what,
                std::chrono::duration<double>(Clock::now() - since).count(),
                megabytes(editor_->lastStepTemp()));
}

bool EditingTour::fail(const std::string& why) {
    std::fprintf(stderr, "demo failed: %s\n", why.c_str());
    return false;
}

}  // namespace orvdemo
