#pragma once
// The image toolkit the library's screens use: reading a picture from a file, reducing it for
// the screen, changing its orientation tag, cropping, limiting and resizing, and its JPEG and
// PNG representations. Every operation returns a new image and leaves its argument alone; a
// null image gives null.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "frameworks/core/OrvKit.h"
#include "platform/codec/ImageMetadata.h"
#include "platform/gfx/Geometry.h"
#include "platform/gfx/Image.h"

// The picture in the file, at full size, with its EXIF orientation as its tag and the scale of
// an "@2x"-style name. Null for a missing, empty, truncated or unreadable file.
gfx::ImagePtr imageWithContentsOfFile(const std::string& path);
// The same, reduced while it is decoded to what orvFullScreenImageKeepOrientation keeps.
gfx::ImagePtr orvFullScreenImageWithContentsOfFile(const std::string& path);
// The same, its stored long side brought down to at most `maxLongSide` pixels (0: full size),
// and, when asked, the file's metadata from the same read.
gfx::ImagePtr orvImageWithContentsOfFileLimit(const std::string& path, int maxLongSide,
                                              codec::ImageMetadata* metadata = nullptr);
// The picture in memory (JPEG, PNG or WebP bytes).
gfx::ImagePtr imageWithData(const std::vector<uint8_t>& data);

// The long side in pixels that is enough for the main screen: its larger side in pixels.
int orvFullScreenPixelLimit();
// Reduced so that its long side is at most orvFullScreenPixelLimit(); the orientation tag and
// the scale are kept. A picture that is small enough comes back as it is.
gfx::ImagePtr orvFullScreenImageKeepOrientation(const gfx::ImagePtr& image);

// The same pixels with the given orientation tag (the tag is replaced, not combined).
gfx::ImagePtr orvChangeOrientation(const gfx::ImagePtr& image, gfx::ImageOrientation orientation);
// The same pixels tagged so that the picture shows turned a quarter to the left or right, or
// mirrored left to right or top to bottom, from whatever orientation it has.
gfx::ImagePtr orvChangeTurnLeft(const gfx::ImagePtr& image);
gfx::ImagePtr orvChangeTurnRight(const gfx::ImagePtr& image);
gfx::ImagePtr orvChangeMirrorHorizontal(const gfx::ImagePtr& image);
gfx::ImagePtr orvChangeMirrorVertical(const gfx::ImagePtr& image);
// Pixels turned so that the tag becomes up; the picture looks the same.
gfx::ImagePtr orvImageRotatedToUp(const gfx::ImagePtr& image);
// The part of the upright picture given in fractions of its size (0 to 1), upright.
gfx::ImagePtr orvImageCorpWithPrecentRect(const gfx::ImagePtr& image, const gfx::Rect& rect);
// The same, brought to exactly `outputSize` pixels (kept as cropped when that has no area).
gfx::ImagePtr orvImageCorpWithPrecentRect(const gfx::ImagePtr& image, const gfx::Rect& rect,
                                          const gfx::Size& outputSize);
// The largest centred part of the upright picture with this width-to-height ratio, upright.
// A ratio of 0 or less gives the upright picture.
gfx::ImagePtr orvImageCorpWithRatio(const gfx::ImagePtr& image, double ratio);
// Reduced so that its long side in pixels is at most `limit`; the tag is kept.
gfx::ImagePtr orvImageLimit(const gfx::ImagePtr& image, double limit);
// Cropped to `ratio` first when it is above 0 (upright then), then reduced to fit `size` in
// pixels: wholly inside it when baseLongSide is true, covering it (the short side fits) when
// false. Never enlarged. The zero-size placeholder comes back as it is, never null.
gfx::ImagePtr orvImageResize(const gfx::ImagePtr& image, const gfx::Size& size, bool baseLongSide,
                             double ratio = 0);
// An upright copy of exactly this pixel size, at scale 1.
gfx::ImagePtr orvScaleImage(const gfx::ImagePtr& image, const gfx::Size& pixelSize);

// The EXIF and colour profile of a JPEG file, read from the head of the file only (the picture
// data after it is never read). Empty for a missing file, one that is not a JPEG, and one whose
// head breaks off before the picture data starts.
codec::ImageMetadata orvMetadataWithContentsOfFile(const std::string& path);
// The metadata changed to describe the image's stored pixels (their size) and its orientation
// tag. A plain upright picture without metadata gets none.
codec::ImageMetadata orvMetadataMatchingImage(const gfx::ImagePtr& image,
                                              const codec::ImageMetadata& meta);
// JPEG bytes of the pixels as stored, at a quality from 0 to 1 (clamped), with the metadata
// embedded; the EXIF orientation written is the image's tag. Empty for a null or empty image.
std::vector<uint8_t> orvJpegDataWithCompress(const gfx::ImagePtr& image, double compress,
                                             const codec::ImageMetadata& meta = {});
// PNG bytes of the upright picture. Empty for a null or empty image.
std::vector<uint8_t> orvPngData(const gfx::ImagePtr& image);
