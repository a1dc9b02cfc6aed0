#pragma once
// The main screen of the photo editor: one picture through any number of tool visits, with
// undo and redo over whole tool results. Every state of the picture is a JPEG in a temporary
// file and the two stacks hold only paths, so memory holds one display-sized picture however
// long the session runs. A concrete editor lists the tools (modules), opens the one the user
// picks over the current step with saveToTemp on, and hands the file the tool writes to
// appendHistory(); finishing sends the top step down the result road.

#include <atomic>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orvviews/widgets/OrvImageResultController.h"

class OrvNKImageAutoColorAnalysis;

class OrvEditMultipleControllerBase : public OrvImageResultController {
    ORV_DECLARE_CLASS(OrvEditMultipleControllerBase)
  public:
    void init() override;
    void viewDidLoad() override;

    // Longest side of a step in pixels; 0 means the screen's longest side in pixels.
    unsigned long limitSideSize() const { return limitSideSize_; }
    void setLimitSideSize(unsigned long size) { limitSideSize_ = size; }
    // Kept for concrete editors; the session itself does not read it.
    bool limitForScreen() const { return limitForScreen_; }
    void setLimitForScreen(bool on) { limitForScreen_ = on; }
    // Bit mask of ratio types; the first type's ratio crops the picture at the first load.
    long ratioType() const { return ratioType_; }
    void setRatioType(long type) { ratioType_ = type; }
    // Explicit ratio types, which go before the mask when not empty.
    const std::vector<long>& ratioTypeList() const { return ratioTypeList_; }
    void setRatioTypeList(std::vector<long> list) { ratioTypeList_ = std::move(list); }
    // Keeps only the latest step (and deletes the others) when storage is tight.
    bool disableStepsSave() const { return disableStepsSave_; }
    void setDisableStepsSave(bool on) { disableStepsSave_ = on; }
    // The tools to offer: the default list when none is set, without unknown numbers; the
    // repaired list is stored back.
    const std::vector<long>& modules();
    void setModules(std::vector<long> modules) { modules_ = std::move(modules); }
    const gfx::ImagePtr& displayImage() const { return displayImage_; }
    // Shows the picture; a concrete editor overrides it and calls the base.
    virtual void setDisplayImage(const gfx::ImagePtr& image) { displayImage_ = image; }

    // ---- hooks for a concrete editor
    // The user picked a tool: open it over lastStepTemp() with saveToTemp on, and hand its
    // file to appendHistory() when it is done.
    virtual void onEditWithAction(long action) {}
    // The sizes of the two stacks; undo makes sense with more than one step.
    virtual void onRefreshStepStatesWithHistories(size_t histories, size_t brushies) {}
    virtual void onRefreshAutoAdjustButtonEnable(bool enable) {}

    // ---- for a concrete editor to call
    // The background body for asyncLoadInputImageWithBlock(): reads the input and makes the
    // first step from it.
    gfx::ImagePtr asyncLoadImage();
    // A tool's output becomes the next step; a path with no file is ignored.
    void appendHistory(const std::string& path);
    // Undo and redo: move the top path from one stack to the other and show the new top.
    void onStepPreviewAction();
    void onStepNextAction();
    // Corrects the colours automatically from the session's input picture; the corrected
    // current step becomes the next step.
    void onAutoAdjustAction();
    // Sends the top step down the result road (with the water mark, when one is set).
    void onImageCompleteAtion();
    void refreshStepStates();
    // The current step's file, or nothing when every step was undone.
    std::optional<std::string> lastStepTemp() const;
    std::vector<long> getRatioTypes() const;
    double limitSize() const;

    // The sizes of the stacks, for screens and tests.
    size_t historiesCount() const { return histories.size(); }
    size_t brushiesCount() const { return brushies.size(); }

    bool checkImageValid(const gfx::ImagePtr& image,
                         OrvTSAssetInterface::FullResolutionHandler handler) override;
    void controllerWillDestory() override;

  protected:
    // Makes the first step of the result's picture: cropped to the first ratio, reduced to
    // limitSize(), upright, written as a JPEG. Answers the picture for the screen.
    gfx::ImagePtr handleImageData(const std::shared_ptr<OrvResult>& result);
    // Deletes the files of the paths and empties the list.
    static void clearSteps(std::vector<std::string>& steps);
    // Reads the top step off the main thread and shows it.
    void asyncLoadStepImage();
    // Writes the corrected step `input` to `output` and appends it.
    void copyAnalysisWithInput(const std::string& input, const std::string& output);
    // On its own thread: the top step at full step size, marked, down the result road.
    virtual void asyncEditWithResult(const ResultPtr& result);
    // An unreadable input ends on the hub and the error road instead of the missing-input
    // exception, which stays for a session given no input at all.
    bool onInputImageMissing() override;

    // The undo stack (its last path is the current step) and the redo stack (undone steps).
    std::vector<std::string> histories;
    std::vector<std::string> brushies;
    std::shared_ptr<OrvNKImageAutoColorAnalysis> autoAdjust;

  private:
    gfx::ImagePtr readInput(const std::shared_ptr<OrvResult>& result);
    void onAutoAdjustFailed();

    unsigned long limitSideSize_ = 0;
    bool limitForScreen_ = false;
    long ratioType_ = 0;
    std::vector<long> ratioTypeList_;
    bool disableStepsSave_ = false;
    std::vector<long> modules_;
    gfx::ImagePtr displayImage_;
    // An input file was there but could not be read.
    std::atomic<bool> inputUnreadable_{false};
};
