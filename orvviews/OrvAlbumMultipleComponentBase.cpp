#include "orvviews/OrvAlbumMultipleComponentBase.h"

#include "frameworks/core/OrvStatistics.h"

ORV_DEFINE_CLASS(OrvAlbumMultipleComponentBase, OrvEditComponent)

void OrvAlbumMultipleComponentBase::init() {
    OrvEditComponent::init();
    OrvStatistics::appendWithComponentIdt(0x200001);
}
