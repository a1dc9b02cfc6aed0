#include "examples/orvdemo/EditingTour.h"

#include <cstdio>
#include <filesystem>

#include "examples/orvdemo/ParameterToolView.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "orvviews/popup/OrvPopupProgress.h"
#include "orvviews/widgets/OrvEditActionType.h"
#include "platform/rt/Error.h"
#include "platform/rt/RunLoop.h"
#include "platform/ui/EventInjector.h"

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
                      applyTool(OrvEditActionTypeSharpness, "sharpness", 0.8) && finish(output);
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
    auto tool = editor_->openTool();
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

    const auto start = Clock::now();
    tap(*screen->doneButton());
    loop().runFor(0.05);
    shoot_(name + "-saving");
    if (!waitFor([&] { return editor_->historiesCount() == before + 1 && !editor_->openTool(); })) {
        return fail(name + " did not come back with a step");
    }
    report(name.c_str(), start);
    loop().runFor(1.5);
    shoot_("editor-after-" + name);
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

bool EditingTour::waitFor(const std::function<bool()>& done, double seconds) {
    // Work off the main thread takes real time, animations take the stepped clock's: both go on.
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    while (!done()) {
        if (Clock::now() > end) return false;
        loop().runUntil(done, 0.02);
        loop().runFor(1.0 / 30);
    }
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
