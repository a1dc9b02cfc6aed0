#include "frameworks/core/OrvResult.h"

ORV_DEFINE_CLASS(OrvResult, orv::rt::Object)
