#include "frameworks/strand/ORPFPContext.h"

#include "frameworks/strand/kernels/LookCatalogue.h"

ORV_DEFINE_CLASS(ORPFPContext, rt::Object)

std::shared_ptr<const orv::strand::LookCatalogue> ORPFPContext::catalogue() const {
    return catalogue_ ? catalogue_ : orv::strand::LookCatalogue::shared();
}
