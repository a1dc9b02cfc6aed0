#pragma once
// Holy light, a glow from the bright parts: the parameter tool with one filter and its sliders.

#include "orvviews/widgets/OrvFilterResultController.h"

class OrvEditHolyLightControllerBase : public OrvFilterResultController {
    ORV_DECLARE_CLASS(OrvEditHolyLightControllerBase)
  public:
    // The parameter set exists before the view is built and waits there for the picture.
    void viewDidLoad() override;
    virtual Params createFilterParams();
};
