#pragma once
#include "orvviews/widgets/OrvInputComponent.h"

// Base of the components that edit one photo; it counts each one made.
class OrvPhotoEditComponentBase : public OrvInputComponent {
    ORV_DECLARE_CLASS(OrvPhotoEditComponentBase)
  public:
    void init() override;
};
