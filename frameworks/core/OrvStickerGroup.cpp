#include "frameworks/core/OrvStickerGroup.h"

ORV_DEFINE_CLASS(OrvStickerGroup, rt::Object)
