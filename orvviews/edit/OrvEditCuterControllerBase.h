#pragma once
// The crop tool: the user picks a ratio, moves and zooms the picture behind the crop window,
// turns or mirrors it, and confirms; the tool crops the full-size original upright and sends it
// down the result road, or only returns the crop settings for the host to apply later. A
// concrete screen supplies the zoomable image and the ratio buttons.

#include <memory>
#include <vector>

#include "orvviews/views/OrvTouchImageViewInterface.h"
#include "orvviews/widgets/OrvImageResultController.h"

class OrvEditCuterControllerBase : public OrvImageResultController {
    ORV_DECLARE_CLASS(OrvEditCuterControllerBase)
  public:
    static constexpr long kStatisticsIdt = 0x401000;

    void viewDidLoad() override;
    // The zoomable image, a view that offers OrvTouchImageViewInterface; none in the base.
    virtual std::shared_ptr<ui::View> imageView() const { return nullptr; }

    // Bits of OrvRatioType; an explicit ratioTypeList goes first.
    long ratioType() const { return ratioType_; }
    void setRatioType(long mask) { ratioType_ = mask; }
    const std::vector<long>& ratioTypeList() const { return ratioTypeList_; }
    void setRatioTypeList(std::vector<long> types) { ratioTypeList_ = std::move(types); }
    bool onlyReturnCuter() const { return onlyReturnCuter_; }
    void setOnlyReturnCuter(bool on) { onlyReturnCuter_ = on; }
    // A crop to restore, from an earlier result's settings.
    const std::shared_ptr<OrvResult>& cuterResult() const { return cuterResult_; }
    void setCuterResult(const std::shared_ptr<OrvResult>& result);
    const gfx::Rect& zoomRect() const { return zoomRect_; }
    void setZoomRect(const gfx::Rect& rect) { zoomRect_ = rect; }
    // A zoom at or below 0 reads as 1, and is stored so.
    double zoomScale();
    void setZoomScale(double scale) { zoomScale_ = scale; }
    gfx::ImageOrientation imageOrientation() const { return imageOrientation_; }
    void setImageOrientation(gfx::ImageOrientation orientation) { imageOrientation_ = orientation; }

    // The ratio types offered: the valid ones of the list, else those of the mask, else the
    // default list.
    std::vector<long> getRatioTypes() const;
    // The first offered type until one is chosen (choosing it then).
    long currentRatioType();
    void setCurrentRatioType(long type);
    double currentRatio() const { return currentRatio_; }

    // Confirms; dropped without an image view or while it animates.
    virtual void onImageCompleteAtion();
    virtual void asyncEditWithResult(const ResultPtr& result);

  protected:
    OrvTouchImageViewInterface* touchImage() const;

  private:
    long ratioType_ = 0;
    std::vector<long> ratioTypeList_;
    bool onlyReturnCuter_ = false;
    std::shared_ptr<OrvResult> cuterResult_;
    gfx::Rect zoomRect_;
    double zoomScale_ = 1.0;
    long currentRatioType_ = 0;
    double currentRatio_ = 0;
    gfx::ImageOrientation imageOrientation_ = gfx::ImageOrientation::Up;
};
