#include "orvviews/widgets/OrvResultViewController.h"

ORV_DEFINE_CLASS(OrvResultViewController, OrvComponentsViewController)

void OrvResultViewController::init() {
    OrvComponentsViewController::init();
    outputCompress_ = 0.95;
}
