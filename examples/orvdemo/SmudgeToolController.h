#pragma once
// The demo's brush tool: the library's smudge tool in the demo's screen. It paints over the
// photo it is given, remembers the last brush, and hands its full-size result to its delegate.

#include <memory>

#include "examples/orvdemo/SmudgeToolView.h"
#include "orvviews/edit/OrvEditSmudgeControllerBase.h"

namespace orvdemo {

class SmudgeToolController;

class SmudgeToolDelegate {
    ORV_DECLARE_PROTOCOL(SmudgeToolDelegate)
  public:
    virtual ~SmudgeToolDelegate() = default;
    virtual void onSmudgeToolResult(SmudgeToolController& tool,
                                    const std::shared_ptr<OrvResult>& result) = 0;
};

class SmudgeToolController : public OrvEditSmudgeControllerBase {
    ORV_DECLARE_CLASS(SmudgeToolController)
  public:
    // Strokes that can be undone.
    static constexpr uint64_t kUndoSteps = 20;
    static constexpr long kStartSize = 2;

    void setDelegate(std::weak_ptr<SmudgeToolDelegate> delegate) {
        delegate_ = std::move(delegate);
    }
    void viewDidLoad() override;
    void loadedInputImage(const gfx::ImagePtr& image) override;
    std::shared_ptr<ui::View> smudgeView() const override;
    const std::shared_ptr<SmudgeToolView>& screen() const { return screen_; }
    // The size code (1 to 3) of the brush, with the cursor growing to it.
    void chooseSize(long code);

    void onRefreshStepStatesWithHistories(uint64_t undoCount, uint64_t redoCount) override;
    void onSmudgeActionChanged(gfx::Point location, gfx::Point viewLocation, double canvasWidth,
                               double canvasHeight) override;
    void onSmudgeActionEnd() override;
    void notifyProcessingWithResult(const ResultPtr& result) override;

  private:
    void connectButtons();
    void onBrushChosen(const std::shared_ptr<OrvBrush>& brush);

    std::weak_ptr<SmudgeToolDelegate> delegate_;
    std::shared_ptr<SmudgeToolView> screen_;
    long sizeCode_ = kStartSize;
};

}  // namespace orvdemo
