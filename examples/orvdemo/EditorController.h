#pragma once
// The demo's photo editor: the picture, undo, redo and auto adjust under it, a bar of the tools
// this application has, and cancel and done at the top. A tool opens over the current step on
// the navigation stack, saves to a temporary file, and its file becomes the next step.

#include <map>
#include <memory>

#include "examples/orvdemo/CropToolController.h"
#include "examples/orvdemo/SmudgeToolController.h"
#include "frameworks/core/OrvKit.h"
#include "orvviews/edit/OrvEditMultipleControllerBase.h"
#include "orvviews/widgets/OrvComponentErrorDelegate.h"
#include "orvviews/widgets/OrvFilterResultController.h"
#include "platform/ui/Button.h"
#include "platform/ui/ImageView.h"

namespace orvdemo {

class EditorController;

// What the component hears when the editor has delivered the photo.
class EditorDelegate {
    ORV_DECLARE_PROTOCOL(EditorDelegate)
  public:
    virtual ~EditorDelegate() = default;
    virtual void editorDidFinish(EditorController& editor,
                                 const std::shared_ptr<OrvResult>& result) = 0;
};

class EditorController : public OrvEditMultipleControllerBase,
                         public OrvFilterResultControllerDelegate,
                         public SmudgeToolDelegate,
                         public CropToolDelegate,
                         public OrvComponentErrorDelegate {
    ORV_DECLARE_CLASS(EditorController)
  public:
    void init() override;
    void setDelegate(std::weak_ptr<EditorDelegate> delegate) { delegate_ = std::move(delegate); }

    void viewDidLoad() override;
    void buildDefaultStyleView() override;
    void loadedInputImage(const gfx::ImagePtr& image) override { setDisplayImage(image); }
    void setDisplayImage(const gfx::ImagePtr& image) override;
    void onRefreshStepStatesWithHistories(size_t histories, size_t brushies) override;
    void onRefreshAutoAdjustButtonEnable(bool enable) override;
    void onEditWithAction(long action) override;
    void notifyProcessingWithResult(const ResultPtr& result) override;

    // A tool's file, or its failure.
    void onOrvKitFilterResult(OrvFilterResultController& tool, const ResultPtr& result) override;
    void onSmudgeToolResult(SmudgeToolController& tool, const ResultPtr& result) override;
    void onCropToolResult(CropToolController& tool, const ResultPtr& result) override;
    void onComponent(const std::shared_ptr<ui::ViewController>& controller,
                     const std::shared_ptr<OrvResult>& result,
                     const std::shared_ptr<rt::Error>& error) override;

    // The one-filter tool of an action, dressed in the demo's screen; null for other actions.
    static std::shared_ptr<OrvFilterResultController> makeParameterTool(long action);
    // The tool the user is in, while it is open.
    std::shared_ptr<OrvImageResultController> openTool() const { return openTool_.lock(); }

    const std::shared_ptr<ui::ImageView>& photoView() const { return photoView_; }
    const std::shared_ptr<ui::Button>& undoButton() const { return undoButton_; }
    const std::shared_ptr<ui::Button>& redoButton() const { return redoButton_; }
    const std::shared_ptr<ui::Button>& autoButton() const { return autoButton_; }
    const std::shared_ptr<ui::Button>& doneButton() const { return doneButton_; }
    std::shared_ptr<ui::Button> toolButton(long action) const;

  private:
    void buildStepBar(double top);
    void buildToolBar(double top);
    void closeTool();
    // Opens a tool over the current step, which saves to a temporary file.
    void openToolOnStep(const std::shared_ptr<OrvImageResultController>& tool,
                        const std::string& step);
    std::shared_ptr<OrvImageResultController> makeTool(long action);
    void connectParameterTool(const std::shared_ptr<OrvFilterResultController>& tool, long action);
    void connectSmudgeTool(const std::shared_ptr<SmudgeToolController>& tool);
    void connectCancel(ui::Button& cancel);
    void takeToolResult(const ResultPtr& result);

    std::weak_ptr<EditorDelegate> delegate_;
    std::weak_ptr<OrvImageResultController> openTool_;
    std::shared_ptr<ui::ImageView> photoView_;
    std::shared_ptr<ui::Button> undoButton_;
    std::shared_ptr<ui::Button> redoButton_;
    std::shared_ptr<ui::Button> autoButton_;
    std::shared_ptr<ui::Button> doneButton_;
    std::map<long, std::shared_ptr<ui::Button>> toolButtons_;
};

}  // namespace orvdemo
