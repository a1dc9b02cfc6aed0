#pragma once
#include <memory>

#include "examples/orvdemo/PhotoDemoController.h"
#include "examples/orvdemo/PhotoDemoOptions.h"
#include "orvviews/OrvPhotoEditComponentBase.h"

namespace orvdemo {

// Shows the photo demo screen in a navigation controller over the source screen, with the
// component's input, and reports the saved result back.
class PhotoDemoComponent : public OrvPhotoEditComponentBase, public PhotoDemoDelegate {
    ORV_DECLARE_CLASS(PhotoDemoComponent)
  public:
    const std::shared_ptr<PhotoDemoOptions>& options() const { return options_; }
    void setOptions(std::shared_ptr<PhotoDemoOptions> options) { options_ = std::move(options); }

    void showComponent() override;
    void photoDemoControllerDidFinish(PhotoDemoController& controller,
                                      const std::shared_ptr<OrvResult>& result) override;

    // The screen while it is shown.
    std::shared_ptr<PhotoDemoController> controller() const { return controller_.lock(); }

  private:
    std::shared_ptr<PhotoDemoOptions> options_;
    std::weak_ptr<PhotoDemoController> controller_;
};

}  // namespace orvdemo
