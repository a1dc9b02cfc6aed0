#pragma once
#include "orvviews/widgets/OrvInputComponent.h"

// Base of the components that the multi-step editor; it counts each one made.
class OrvPhotoEditMultipleComponentBase : public OrvInputComponent {
    ORV_DECLARE_CLASS(OrvPhotoEditMultipleComponentBase)
  public:
    void init() override;
};
