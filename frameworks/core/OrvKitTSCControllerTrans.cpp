#include "frameworks/core/OrvKitTSCControllerTrans.h"

ORV_DEFINE_CLASS(OrvKitTSCControllerTrans, orv::rt::Object)
