#pragma once
// The colour correction's eleven analysis values, by index: 0 maxR, 1 maxG, 2 maxB, 3 maxY,
// 4 minR, 5 minG, 6 minB, 7 minY, 8 midR, 9 midG, 10 midB.

#include <vector>

#include "frameworks/strand/ORPFPFilter.h"
#include "frameworks/strand/kernels/FilterSettings.h"

class ORPFPColorCorrectionFilter_PropertyBuilder : public rt::Object {
    ORV_DECLARE_CLASS(ORPFPColorCorrectionFilter_PropertyBuilder)
  public:
    void init() override { args_.assign(11, 0.0); }
    std::vector<double>& args() { return args_; }
    // Missing places keep the neutral levels.
    ORPFPProperty makeProperty() const;

  private:
    std::vector<double> args_;
};
