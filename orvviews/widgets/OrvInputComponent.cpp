#include "orvviews/widgets/OrvInputComponent.h"

ORV_DEFINE_CLASS(OrvInputComponent, OrvEditComponent)
