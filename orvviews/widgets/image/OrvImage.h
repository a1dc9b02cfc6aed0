#pragma once
// The library's picture classes' base: a platform image that knows its encoded type, with the
// helpers for resource files named by scale ("name@2x.png") and for EXIF orientations.
//
// Its initialisers are for subclasses to provide; here they only say so in the log.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "frameworks/core/OrvKit.h"
#include "platform/codec/ImageSource.h"
#include "platform/gfx/Image.h"

class OrvImage : public gfx::Image {
    ORV_DECLARE_CLASS(OrvImage)
  public:
    using Data = codec::ImageSource::Data;

    uint64_t imageType() const { return imageType_; }

    // The scales to try resource variants at, best first for the main screen; fixed at the
    // first call in the process.
    static const std::vector<double>& getBundlePreferredScales();
    // `name` (without extension) with the scale suffix, "@2x" or "@1.5x"; the name alone at
    // scale 1, when it is empty or a folder ("…/"). None for none.
    static std::optional<std::string> getResFilename(const std::optional<std::string>& name,
                                                     double byScale);
    // The scale a "@2x"-style suffix gives the file name; 1 without one.
    static double getScaleFromFilename(const std::string& name);
    static gfx::ImageOrientation UIImageOrientationFromEXIFValue(long value);

    // Each returns false (no image) unless a subclass reads the data.
    virtual bool initWithContentsOfFile(const std::string& path);
    virtual bool initWithData(const Data& data);
    virtual bool initWithData(const Data& data, double scale);

  protected:
    // The name's last component without its extension, and that extension ("" when none).
    static std::string stringByDeletingPathExtension(const std::string& name);
    static std::string pathExtension(const std::string& name);

    uint64_t imageType_ = 0;
};
