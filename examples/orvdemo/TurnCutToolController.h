#pragma once
// The demo's turn-and-crop tool: a square crop of a fixed output size, turn and mirror buttons,
// and a row of looks previewed on the photo; the saved result is turned, cropped to that size
// and given the look. The result goes to `onResult`.

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "orvviews/edit/OrvEditTurnAndCutViewControllerBase.h"
#include "orvviews/views/OrvTouchImageView.h"
#include "platform/ui/Button.h"

namespace orvdemo {

class TurnCutToolController : public OrvEditTurnAndCutViewControllerBase {
    ORV_DECLARE_CLASS(TurnCutToolController)
  public:
    using ResultHandler = std::function<void(const std::shared_ptr<OrvResult>& result)>;
    static constexpr double kTopBar = 56;
    static constexpr double kBar = 56;

    void setOnResult(ResultHandler handler) { onResult_ = std::move(handler); }
    void viewDidLoad() override;
    void loadedInputImage(const gfx::ImagePtr& image) override;
    std::shared_ptr<ui::View> imageView() const override { return touchView_; }
    void notifyProcessingWithResult(const ResultPtr& result) override;

    const std::shared_ptr<OrvTouchImageView>& touchView() const { return touchView_; }
    std::shared_ptr<ui::Button> lookButton(const std::string& code) const;
    std::shared_ptr<ui::Button> turnButton() const { return turnButton_; }
    std::shared_ptr<ui::Button> doneButton() const { return doneButton_; }

  private:
    void buildBars(double top, double width);
    void chooseLook(const std::string& code);

    ResultHandler onResult_;
    std::shared_ptr<OrvTouchImageView> touchView_;
    std::map<std::string, std::shared_ptr<ui::Button>> lookButtons_;
    std::shared_ptr<ui::Button> turnButton_;
    std::shared_ptr<ui::Button> doneButton_;
};

}  // namespace orvdemo
