#pragma once
// Proof that crops come out upright whatever a camera wrote: the bundled photo saved eight times
// with the same look but each of the eight EXIF orientations (its pixels stored turned or
// mirrored accordingly), each cropped to the middle square with the crop tool, and a sheet that
// puts what the window showed beside the full-size result, one pair a file.

#include <functional>
#include <memory>
#include <string>

#include "examples/orvdemo/CropToolController.h"
#include "platform/ui/Window.h"

namespace orvdemo {

class CropOrientationTour : public rt::Object, public CropToolDelegate {
    ORV_DECLARE_CLASS(CropOrientationTour)
  public:
    using Shoot = std::function<void(const std::string& name)>;

    void setWindow(std::shared_ptr<ui::Window> window) { window_ = std::move(window); }
    void setShoot(Shoot shoot) { shoot_ = std::move(shoot); }
    // Writes the sheet to `sheet`; false, with the reason on stderr, when a crop went wrong.
    bool run(const std::string& photo, const std::string& sheet);

    void onCropToolResult(CropToolController& tool,
                          const std::shared_ptr<OrvResult>& result) override;

  private:
    // The photo as a camera would store it under that tag.
    static std::string writeTagged(const gfx::ImagePtr& upright, int orientation);
    // What the window of the tool shows, from the rendered screen.
    gfx::ImagePtr windowContent(CropToolController& tool) const;

    std::shared_ptr<ui::Window> window_;
    Shoot shoot_;
    std::shared_ptr<OrvResult> result_;
};

}  // namespace orvdemo
