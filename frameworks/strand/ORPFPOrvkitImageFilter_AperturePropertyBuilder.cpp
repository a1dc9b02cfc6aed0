#include "frameworks/strand/ORPFPOrvkitImageFilter_AperturePropertyBuilder.h"

ORV_DEFINE_CLASS(ORPFPOrvkitImageFilter_AperturePropertyBuilder, rt::Object)
