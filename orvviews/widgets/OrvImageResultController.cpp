#include "orvviews/widgets/OrvImageResultController.h"

ORV_DEFINE_CLASS(OrvImageResultController, OrvResultViewController)
