#pragma once
// The demo's crop tool: the library's crop tool in the demo's screen. The photo lies behind the
// crop window; a row of ratio buttons under it, turn and mirror buttons, and cancel and apply at
// the top. The full-size crop goes to its delegate.

#include <map>
#include <memory>

#include "orvviews/edit/OrvEditCuterControllerBase.h"
#include "orvviews/views/OrvTouchImageView.h"
#include "platform/ui/Button.h"
#include "platform/ui/Label.h"

namespace orvdemo {

class CropToolController;

class CropToolDelegate {
    ORV_DECLARE_PROTOCOL(CropToolDelegate)
  public:
    virtual ~CropToolDelegate() = default;
    virtual void onCropToolResult(CropToolController& tool,
                                  const std::shared_ptr<OrvResult>& result) = 0;
};

class CropToolController : public OrvEditCuterControllerBase {
    ORV_DECLARE_CLASS(CropToolController)
  public:
    static constexpr double kTopBar = 56;
    static constexpr double kRatioBar = 56;
    static constexpr double kTurnBar = 56;

    void init() override;
    void setDelegate(std::weak_ptr<CropToolDelegate> delegate) { delegate_ = std::move(delegate); }
    void viewDidLoad() override;
    void loadedInputImage(const gfx::ImagePtr& image) override;
    std::shared_ptr<ui::View> imageView() const override { return touchView_; }
    void notifyProcessingWithResult(const ResultPtr& result) override;

    // Picks a ratio, as its button does.
    void chooseRatioType(long type);
    const std::shared_ptr<OrvTouchImageView>& touchView() const { return touchView_; }
    std::shared_ptr<ui::Button> ratioButton(long type) const;
    const std::shared_ptr<ui::Button>& cancelButton() const { return cancelButton_; }
    const std::shared_ptr<ui::Button>& doneButton() const { return doneButton_; }
    const std::shared_ptr<ui::Button>& turnLeftButton() const { return turnLeftButton_; }
    const std::shared_ptr<ui::Button>& turnRightButton() const { return turnRightButton_; }
    const std::shared_ptr<ui::Button>& mirrorButton() const { return mirrorButton_; }

  private:
    void buildTopBar(double width);
    void buildRatioBar(double top, double width);
    void buildTurnBar(double top, double width);

    std::weak_ptr<CropToolDelegate> delegate_;
    std::shared_ptr<OrvTouchImageView> touchView_;
    std::map<long, std::shared_ptr<ui::Button>> ratioButtons_;
    std::shared_ptr<ui::Button> cancelButton_;
    std::shared_ptr<ui::Button> doneButton_;
    std::shared_ptr<ui::Button> turnLeftButton_;
    std::shared_ptr<ui::Button> turnRightButton_;
    std::shared_ptr<ui::Button> mirrorButton_;
};

}  // namespace orvdemo
