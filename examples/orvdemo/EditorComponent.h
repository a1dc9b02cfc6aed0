#pragma once
#include <memory>

#include "examples/orvdemo/EditorController.h"
#include "examples/orvdemo/EditorOptions.h"
#include "orvviews/OrvPhotoEditMultipleComponentBase.h"

namespace orvdemo {

// Shows the demo's editor in a navigation controller over the source screen, with the
// component's input, and reports the finished photo back.
class EditorComponent : public OrvPhotoEditMultipleComponentBase, public EditorDelegate {
    ORV_DECLARE_CLASS(EditorComponent)
  public:
    const std::shared_ptr<EditorOptions>& options() const { return options_; }
    void setOptions(std::shared_ptr<EditorOptions> options) { options_ = std::move(options); }

    void showComponent() override;
    void editorDidFinish(EditorController& editor,
                         const std::shared_ptr<OrvResult>& result) override;

    // The editor while it is shown.
    std::shared_ptr<EditorController> controller() const { return controller_.lock(); }

  private:
    std::shared_ptr<EditorOptions> options_;
    std::weak_ptr<EditorController> controller_;
};

}  // namespace orvdemo
