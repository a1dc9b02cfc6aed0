#include "frameworks/strand/ORPFPOrvkitImageFilter_HDRPropertyBuilder.h"

ORV_DEFINE_CLASS(ORPFPOrvkitImageFilter_HDRPropertyBuilder, rt::Object)
