#include "frameworks/core/OrvWaterMarkOption.h"

ORV_DEFINE_CLASS(OrvWaterMarkOption, rt::Object)
