#include "orvviews/widgets/OrvResultOptions.h"

#include <algorithm>

#include "orvviews/widgets/OrvResultViewController.h"

ORV_DEFINE_CLASS(OrvResultOptions, OrvOptions)

void OrvResultOptions::initOptions() {
    OrvOptions::initOptions();
    outputCompress_ = 0.95;
}

double OrvResultOptions::outputCompress() {
    outputCompress_ = std::clamp(outputCompress_, 0.0, 1.0);
    return outputCompress_;
}

std::shared_ptr<OrvComponentsViewController> OrvResultOptions::componentInstance() {
    auto controller = OrvOptions::componentInstance();
    if (auto result = std::dynamic_pointer_cast<OrvResultViewController>(controller)) {
        result->setSaveToAlbum(saveToAlbum_);
        result->setSaveToTemp(saveToTemp_);
        result->setSaveToAlbumName(saveToAlbumName_);
        result->setOutputCompress(outputCompress());
    }
    return controller;
}
