#include "orvviews/OrvPhotoEditComponentBase.h"

#include "frameworks/core/OrvStatistics.h"

ORV_DEFINE_CLASS(OrvPhotoEditComponentBase, OrvInputComponent)

void OrvPhotoEditComponentBase::init() {
    OrvInputComponent::init();
    OrvStatistics::appendWithComponentIdt(0x400000);
}
