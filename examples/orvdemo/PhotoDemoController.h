#pragma once
// The demo's tool: it shows its input picture, however the picture came (in memory, as a file,
// as an album photo in the cloud), and finishes on a tap of "Done" by handing the picture
// unchanged to the saving road.

#include <memory>

#include "frameworks/core/OrvKit.h"
#include "orvviews/widgets/OrvImageResultController.h"

namespace orv::ui {
class Button;
class ImageView;
class Label;
}  // namespace orv::ui

namespace orvdemo {

class PhotoDemoController;

// What a component hears from the screen when the result is ready.
class PhotoDemoDelegate {
    ORV_DECLARE_PROTOCOL(PhotoDemoDelegate)
  public:
    virtual ~PhotoDemoDelegate() = default;
    virtual void photoDemoControllerDidFinish(PhotoDemoController& controller,
                                              const std::shared_ptr<OrvResult>& result) = 0;
};

class PhotoDemoController : public OrvImageResultController {
    ORV_DECLARE_CLASS(PhotoDemoController)
  public:
    void setDelegate(std::weak_ptr<PhotoDemoDelegate> delegate) { delegate_ = std::move(delegate); }

    void viewDidLoad() override;
    void buildDefaultStyleView() override;
    void configDefaultStyleView(const std::shared_ptr<ui::View>& view) override;
    void loadedInputImage(const gfx::ImagePtr& image) override;
    void notifyProcessingWithResult(const std::shared_ptr<OrvResult>& result) override;

    const std::shared_ptr<ui::Button>& doneButton() const { return doneButton_; }
    const std::shared_ptr<ui::ImageView>& imageView() const { return imageView_; }
    // The picture that reached the screen, or null while it loads.
    const gfx::ImagePtr& shownImage() const { return shownImage_; }
    // Builds the result on a background thread and sends it down the saving road. Ignored
    // while the input is still downloading or loading.
    virtual void onDone();

  protected:
    // The picture the result carries, made on the background thread from the full-size input.
    virtual gfx::ImagePtr editedImage(const gfx::ImagePtr& original) { return original; }

  private:
    std::weak_ptr<PhotoDemoDelegate> delegate_;
    std::shared_ptr<ui::Label> titleLabel_;
    std::shared_ptr<ui::ImageView> imageView_;
    std::shared_ptr<ui::Button> doneButton_;
    gfx::ImagePtr shownImage_;
};

}  // namespace orvdemo
