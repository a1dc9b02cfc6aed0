#include "frameworks/core/OrvStickerCategory.h"

ORV_DEFINE_CLASS(OrvStickerCategory, rt::Object)
