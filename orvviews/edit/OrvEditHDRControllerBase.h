#pragma once
// HDR: the parameter tool whose set is made only once the picture is there, with the strength
// the tone mapping starts at, so the sliders are filled after the first render.

#include "orvviews/widgets/OrvFilterResultController.h"

class OrvEditHDRControllerBase : public OrvFilterResultController {
    ORV_DECLARE_CLASS(OrvEditHDRControllerBase)
  public:
    void viewDidLoad() override;
    // Shows the picture, puts the filter in and keeps the hub open until postProcessWithImage().
    bool preProcessWithImage(const gfx::ImagePtr& image) override;
    // The set was made in preProcessWithImage(); nothing is left to do here.
    void loadedInputImage(const gfx::ImagePtr& image) override {}
    void postProcessWithImage(const gfx::ImagePtr& image) override;
};
