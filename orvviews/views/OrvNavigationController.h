#pragma once
#include "frameworks/core/OrvKit.h"
#include "platform/ui/NavigationController.h"

// The navigation container the library presents its screens in. At its end it tells each of
// its controllers first, so that they can let go of what holds them.
class OrvNavigationController : public ui::NavigationController {
    ORV_DECLARE_CLASS(OrvNavigationController)
  public:
    void dealloc() override;
};
