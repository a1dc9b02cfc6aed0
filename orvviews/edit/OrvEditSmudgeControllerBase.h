#pragma once
// The brush tool screen: paints over the picture with stamp, mosaic and eraser brushes, with
// undo, redo and a compare button, and makes the finished picture at full size. A concrete
// screen supplies the canvas view, lays out its buttons and hands the result on by overriding
// notifyProcessingWithResult().

#include <memory>
#include <string>

#include "frameworks/core/OrvBrush.h"
#include "orvviews/views/OrvSmudgeImageViewInterface.h"
#include "orvviews/widgets/OrvImageResultController.h"

class OrvEditSmudgeControllerBase : public OrvImageResultController,
                                    public OrvSmudgeImageViewDelegate {
    ORV_DECLARE_CLASS(OrvEditSmudgeControllerBase)
  public:
    static constexpr long kStatisticsIdt = 0x409500;

    void viewDidLoad() override;

    const std::shared_ptr<OrvBrush>& brush() const { return brush_; }
    void setBrush(std::shared_ptr<OrvBrush> brush) { brush_ = std::move(brush); }
    // The canvas view, a view that offers OrvSmudgeImageViewInterface; none in the base.
    virtual std::shared_ptr<ui::View> smudgeView() const { return nullptr; }

    // Paints with the brush of that code from now on; false for a code the library lacks.
    bool selectBrushCode(const std::string& code);
    void onUndoAction();
    void onRedoAction();
    // A compare button: the picture as it was while held.
    void onOriginalActionStart();
    void onOriginalActionEnd();
    // Makes the picture on a thread of its own, with the hub up; without a canvas it goes back.
    virtual void onImageCompleteAction();
    // The full-size picture with the canvas over it, sent down the result road.
    virtual void asyncEditWithResult(const ResultPtr& result);

    // OrvSmudgeImageViewDelegate: for a concrete screen to override.
    void onRefreshStepStatesWithHistories(uint64_t undoCount, uint64_t redoCount) override {}
    void onSmudgeActionChanged(gfx::Point location, gfx::Point viewLocation, double canvasWidth,
                               double canvasHeight) override {}
    void onSmudgeActionEnd() override {}

    void dealloc() override;

  protected:
    OrvSmudgeImageViewInterface* smudgeInterface() const;

  private:
    std::shared_ptr<OrvBrush> brush_;
};
