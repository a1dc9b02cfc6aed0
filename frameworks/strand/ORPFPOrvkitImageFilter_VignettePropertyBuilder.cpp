#include "frameworks/strand/ORPFPOrvkitImageFilter_VignettePropertyBuilder.h"

ORV_DEFINE_CLASS(ORPFPOrvkitImageFilter_VignettePropertyBuilder, rt::Object)
