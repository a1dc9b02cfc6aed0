#include "orvviews/OrvPhotoEditMultipleComponentBase.h"

#include "frameworks/core/OrvStatistics.h"

ORV_DEFINE_CLASS(OrvPhotoEditMultipleComponentBase, OrvInputComponent)

void OrvPhotoEditMultipleComponentBase::init() {
    OrvInputComponent::init();
    OrvStatistics::appendWithComponentIdt(0x406000);
}
