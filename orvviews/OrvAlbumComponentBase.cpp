#include "orvviews/OrvAlbumComponentBase.h"

#include "frameworks/core/OrvStatistics.h"

ORV_DEFINE_CLASS(OrvAlbumComponentBase, OrvEditComponent)

void OrvAlbumComponentBase::init() {
    OrvEditComponent::init();
    // An avatar picker is told apart by its class name, case-sensitively.
    const bool avatar = className().find("vatar") != std::string::npos;
    OrvStatistics::appendWithComponentIdt(avatar ? 0x300000 : 0x200000);
}
