#include "frameworks/strand/ORPFPOrvkitImageFilter_HolyLightPropertyBuilder.h"

ORV_DEFINE_CLASS(ORPFPOrvkitImageFilter_HolyLightPropertyBuilder, rt::Object)
