#pragma once
// The metadata that travels with a photo: its EXIF block (orientation, camera, dates) and its
// colour profile. Read from a JPEG, edited so that it agrees with new pixels, and written into
// the JPEG that is saved.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/gfx/Image.h"

namespace orv::codec {

class ImageMetadata {
  public:
    // The APP1 EXIF and APP2 ICC segments of a JPEG. Data that is not a JPEG, or an EXIF block
    // that cannot be parsed, gives an empty record (a broken block is dropped, not carried on).
    static ImageMetadata fromJpeg(const uint8_t* data, size_t size);

    bool empty() const { return exif_.empty() && icc_.empty(); }

    // EXIF orientation 1 to 8; 1 when there is none or the value is out of range.
    int exifOrientation() const;
    // Sets the orientation (1 to 8), creating an EXIF block when there is none.
    void setExifOrientation(int value);
    // Records the pixel size of the image the metadata describes, and drops the embedded
    // thumbnail, which no longer shows the same pixels. Without an EXIF block there is nothing
    // to keep in agreement (the JPEG header carries the size), so none is made.
    void setPixelSize(int width, int height);

    // The APP1 payload, starting with "Exif\0\0"; empty when there is none.
    const std::vector<uint8_t>& exif() const { return exif_; }
    void setExif(std::vector<uint8_t> exif) { exif_ = std::move(exif); }
    // The ICC profile, joined from its APP2 chunks; empty when there is none.
    const std::vector<uint8_t>& iccProfile() const { return icc_; }
    void setIccProfile(std::vector<uint8_t> icc) { icc_ = std::move(icc); }

    // The platform orientation of an EXIF value (anything outside 1 to 8 is up), and back.
    static gfx::ImageOrientation orientationFromExif(int value);
    static int exifFromOrientation(gfx::ImageOrientation orientation);

  private:
    std::vector<uint8_t> exif_;
    std::vector<uint8_t> icc_;
};

}  // namespace orv::codec
