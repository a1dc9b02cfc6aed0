#include "frameworks/strand/ORPFPOrvkitImageFilter_SkinHazyPropertyBuilder.h"

ORV_DEFINE_CLASS(ORPFPOrvkitImageFilter_SkinHazyPropertyBuilder, rt::Object)
