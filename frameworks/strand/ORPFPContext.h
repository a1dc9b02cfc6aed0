#pragma once
// What a pipe's filters are made in: the look catalogue they find their looks in.

#include <memory>

#include "frameworks/core/OrvKit.h"
#include "platform/rt/Object.h"

namespace orv::strand {
class LookCatalogue;
}

class ORPFPContext : public rt::Object {
    ORV_DECLARE_CLASS(ORPFPContext)
  public:
    // The catalogue of look filters (the process's shared one unless a test sets another).
    std::shared_ptr<const orv::strand::LookCatalogue> catalogue() const;
    void setCatalogue(std::shared_ptr<const orv::strand::LookCatalogue> catalogue) {
        catalogue_ = std::move(catalogue);
    }

  private:
    std::shared_ptr<const orv::strand::LookCatalogue> catalogue_;
};
