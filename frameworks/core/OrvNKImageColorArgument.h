#pragma once
// The colour levels of a picture, each 0 to 255: the darkest (min), brightest (max) and middle
// (mid) values of red, green and blue, and the darkest and brightest luma. Read locally from the
// picture's histograms; the levels filter of the colour correction takes them.

#include <memory>

#include "frameworks/core/OrvKit.h"
#include "platform/gfx/Image.h"
#include "platform/rt/Object.h"

class OrvNKImageColorArgument : public rt::Object {
    ORV_DECLARE_CLASS(OrvNKImageColorArgument)
  public:
    // Min and max are the 0.5% and 99.5% percentiles (a few stray pixels don't count), mid is
    // the median; luma is Rec. 601. Transparent pixels are left out; null when none is left.
    static std::shared_ptr<OrvNKImageColorArgument> analysisWithImage(const gfx::ImagePtr& image);

    float maxR() const { return maxR_; }
    void setMaxR(float v) { maxR_ = v; }
    float maxG() const { return maxG_; }
    void setMaxG(float v) { maxG_ = v; }
    float maxB() const { return maxB_; }
    void setMaxB(float v) { maxB_ = v; }
    float maxY() const { return maxY_; }
    void setMaxY(float v) { maxY_ = v; }
    float minR() const { return minR_; }
    void setMinR(float v) { minR_ = v; }
    float minG() const { return minG_; }
    void setMinG(float v) { minG_ = v; }
    float minB() const { return minB_; }
    void setMinB(float v) { minB_ = v; }
    float minY() const { return minY_; }
    void setMinY(float v) { minY_ = v; }
    float midR() const { return midR_; }
    void setMidR(float v) { midR_ = v; }
    float midG() const { return midG_; }
    void setMidG(float v) { midG_ = v; }
    float midB() const { return midB_; }
    void setMidB(float v) { midB_ = v; }

  private:
    float maxR_ = 255, maxG_ = 255, maxB_ = 255, maxY_ = 255;
    float minR_ = 0, minG_ = 0, minB_ = 0, minY_ = 0;
    float midR_ = 128, midG_ = 128, midB_ = 128;
};
