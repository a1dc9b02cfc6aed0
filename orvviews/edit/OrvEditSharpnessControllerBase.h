#pragma once
// Sharpness: the parameter tool with one filter and its sliders.

#include "orvviews/widgets/OrvFilterResultController.h"

class OrvEditSharpnessControllerBase : public OrvFilterResultController {
    ORV_DECLARE_CLASS(OrvEditSharpnessControllerBase)
  public:
    // The parameter set exists before the view is built and waits there for the picture.
    void viewDidLoad() override;
    virtual Params createFilterParams();
};
