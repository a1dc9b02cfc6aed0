#pragma once
// The demo's main job: a scripted editing session on a phone-sized photo, driven by touches as
// a user would drive it. The editor opens on a copy of the photo; vignette, HDR, undo, redo,
// auto adjust, sharpness, a crop and brushes follow; finishing saves the full-size photo. Each step
// prints the time it took and the size of its file, and a picture of every screen state is taken.

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "examples/orvdemo/CropToolController.h"
#include "examples/orvdemo/EditorComponent.h"
#include "examples/orvdemo/SmudgeToolController.h"
#include "platform/ui/Window.h"

namespace orvdemo {

class EditingTour {
  public:
    using Shoot = std::function<void(const std::string& name)>;

    EditingTour(std::shared_ptr<ui::Window> window, ui::ViewController* home, Shoot shoot)
        : window_(std::move(window)), home_(home), shoot_(std::move(shoot)) {}

    // Edits `photo` and writes the result to `output`; false, with the reason on stderr, when a
    // step did not happen as a user would expect.
    bool run(const std::string& photo, const std::string& output);

  private:
    bool open(const std::string& photo);
    // Opens a one-filter tool from the bar, moves its slider to `progress`, and applies it.
    bool applyTool(long action, const std::string& name, double progress);
    bool undoRedo();
    // Taps the tool's apply button and waits until its result is the editor's newest step.
    // Screens are named "<shot>-saving" and "editor-after-<step>".
    bool applyAndReturn(ui::View& done, size_t stepsBefore, const std::string& shot,
                        const std::string& step);
    // Paints over the photo with a stamp, a mosaic and an eraser, undoes, redoes, compares and
    // applies.
    bool paintWithBrushes();
    // Crops to 4:3 after a pinch and a drag, turned right once and mirrored.
    bool cropPhoto();
    bool chooseBrush(SmudgeToolController& tool, const std::string& code, long size);
    // A finger drawn along a wave from `from` to `to`, in window points.
    void paintWave(gfx::Point from, gfx::Point to, double amplitude);
    bool autoAdjust();
    bool finish(const std::string& output);

    void tap(ui::View& view);
    // A line of the session's log: what happened, how long it took, the size of the new step.
    void report(const char* what, std::chrono::steady_clock::time_point since);
    bool fail(const std::string& why);

    std::shared_ptr<ui::Window> window_;
    ui::ViewController* home_;
    Shoot shoot_;
    std::shared_ptr<EditorComponent> component_;
    std::shared_ptr<EditorController> editor_;
    std::shared_ptr<OrvResult> delivered_;
    bool called_ = false;
};

}  // namespace orvdemo
