#include "frameworks/strand/ORPFPOrvkitImageFilter_SharpenPropertyBuilder.h"

ORV_DEFINE_CLASS(ORPFPOrvkitImageFilter_SharpenPropertyBuilder, rt::Object)
