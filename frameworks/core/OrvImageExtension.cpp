#include "frameworks/core/OrvImageExtension.h"

#include "frameworks/core/OrvTSLog.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>

#include "platform/codec/ImageReader.h"
#include "platform/codec/JpegCodec.h"
#include "platform/codec/JpegSegments.h"
#include "platform/codec/PngCodec.h"
#include "platform/gfx/BitmapOps.h"
#include "platform/ui/Screen.h"

namespace {

using gfx::BitmapOps;
using gfx::ImageOrientation;
using gfx::ImagePtr;

// Null and the zero-size placeholder have no pixels to work on; every operation hands them
// back as they are.
bool hasPixels(const ImagePtr& image) {
    if (!image || !image->bitmap()) return false;
    return image->bitmap()->width() > 0 && image->bitmap()->height() > 0;
}

// "photo@2x.png" is drawn at scale 2, "photo@1.5x.jpg" at 1.5; any other name at 1.
double scaleFromFileName(const std::string& path) {
    static const std::regex suffix("@([0-9]+\\.?[0-9]*)x$");
    const std::string stem = std::filesystem::path(path).stem().string();
    std::smatch match;
    if (!std::regex_search(stem, match, suffix)) return 1;
    const double scale = std::strtod(match[1].str().c_str(), nullptr);
    return scale > 0 ? scale : 1;
}

ImagePtr imageFromFile(const std::string& path, int maxLongSide,
                       codec::ImageMetadata* metadata = nullptr) {
    auto decoded = codec::ImageReader::readFile(path, maxLongSide);
    if (!decoded || !decoded->bitmap) return nullptr;
    if (metadata) *metadata = std::move(decoded->metadata);
    return gfx::Image::withBitmap(decoded->bitmap, scaleFromFileName(path), decoded->orientation);
}

// The stored pixels turned by the image's tag, so that they show the picture upright.
gfx::BitmapPtr uprightBitmap(const gfx::Image& image) {
    if (image.orientation() == ImageOrientation::Up) return image.bitmap();
    return BitmapOps::oriented(*image.bitmap(), image.orientation());
}

struct PixelSize {
    int width;
    int height;
};

// The pixel size as shown: the stored size with width and height exchanged for quarter turns.
PixelSize uprightPixelSize(const gfx::Image& image) {
    const int w = image.bitmap()->width(), h = image.bitmap()->height();
    return gfx::isQuarterTurn(image.orientation()) ? PixelSize{h, w} : PixelSize{w, h};
}

// The stored bitmap scaled by `factor` (below 1), the tag and the scale kept.
ImagePtr reducedBy(const ImagePtr& image, double factor) {
    if (factor >= 1) return image;
    const gfx::Bitmap& bitmap = *image->bitmap();
    const int w = std::max(1, static_cast<int>(std::lround(bitmap.width() * factor)));
    const int h = std::max(1, static_cast<int>(std::lround(bitmap.height() * factor)));
    return gfx::Image::withBitmap(BitmapOps::resized(bitmap, w, h), image->scale(),
                                  image->orientation());
}

// The upright picture cut to a rectangle of pixels; null when nothing of it is inside.
// The stored pixels behind an upright box (x, y, width, height): where the orientation puts the
// box's corners, as pixel edges of the stored bitmap of size w × h.
struct StoredBox {
    int x, y, width, height;
};
StoredBox storedBox(ImageOrientation orientation, int w, int h, int x, int y, int width,
                    int height) {
    const int x1 = x + width, y1 = y + height;
    switch (orientation) {
        case ImageOrientation::Up:
            return {x, y, width, height};
        case ImageOrientation::Down:
            return {w - x1, h - y1, width, height};
        case ImageOrientation::UpMirrored:
            return {w - x1, y, width, height};
        case ImageOrientation::DownMirrored:
            return {x, h - y1, width, height};
        case ImageOrientation::Left:
            return {w - y1, x, height, width};
        case ImageOrientation::Right:
            return {y, h - x1, height, width};
        case ImageOrientation::LeftMirrored:
            return {y, x, height, width};
        case ImageOrientation::RightMirrored:
            return {w - y1, h - x1, height, width};
    }
    return {x, y, width, height};
}

// The stored pixels are cut first and only the piece is turned upright: a crop of a big photo
// never turns the whole of it.
ImagePtr uprightCrop(const ImagePtr& image, int x, int y, int width, int height) {
    const gfx::Bitmap& bitmap = *image->bitmap();
    const StoredBox box =
        storedBox(image->orientation(), bitmap.width(), bitmap.height(), x, y, width, height);
    if (box.x == 0 && box.y == 0 && box.width == bitmap.width() && box.height == bitmap.height()) {
        return orvImageRotatedToUp(image);
    }
    auto cropped = BitmapOps::cropped(bitmap, box.x, box.y, box.width, box.height);
    if (!cropped) return nullptr;
    return orvImageRotatedToUp(
        gfx::Image::withBitmap(std::move(cropped), image->scale(), image->orientation()));
}

// A camera's EXIF block, thumbnail included, fits in one segment of at most 64 KiB; only a large
// colour profile makes the head longer.
constexpr size_t kFirstHeadRead = 64 * 1024;

// The file's first bytes up to and including the start of the picture data, read in growing
// pieces; empty when the file is not a JPEG or ends before its picture data.
std::vector<uint8_t> jpegHead(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::vector<uint8_t> head;
    for (size_t want = kFirstHeadRead; in; want *= 2) {
        const size_t have = head.size();
        head.resize(want);
        in.read(reinterpret_cast<char*>(head.data() + have),
                static_cast<std::streamsize>(want - have));
        head.resize(have + static_cast<size_t>(in.gcount()));
        const size_t scan = codec::JpegSegments::walk(head.data(), head.size());
        if (scan > 0) return head;
        if (head.size() < 2 || head[0] != 0xFF || head[1] != 0xD8) break;
    }
    return {};
}

}  // namespace

gfx::ImagePtr imageWithContentsOfFile(const std::string& path) {
    return imageFromFile(path, 0);
}

gfx::ImagePtr orvFullScreenImageWithContentsOfFile(const std::string& path) {
    return imageFromFile(path, orvFullScreenPixelLimit());
}

gfx::ImagePtr orvImageWithContentsOfFileLimit(const std::string& path, int maxLongSide,
                                              codec::ImageMetadata* metadata) {
    return imageFromFile(path, maxLongSide, metadata);
}

gfx::ImagePtr imageWithData(const std::vector<uint8_t>& data) {
    auto decoded = codec::ImageReader::decode(data.data(), data.size());
    if (!decoded || !decoded->bitmap) return nullptr;
    return gfx::Image::withBitmap(decoded->bitmap, 1, decoded->orientation);
}

int orvFullScreenPixelLimit() {
    const ui::Screen& screen = ui::Screen::main();
    const gfx::Size size = screen.bounds().size;
    return static_cast<int>(std::lround(std::max(size.width, size.height) * screen.scale()));
}

gfx::ImagePtr orvFullScreenImageKeepOrientation(const gfx::ImagePtr& image) {
    return orvImageLimit(image, orvFullScreenPixelLimit());
}

gfx::ImagePtr orvChangeOrientation(const gfx::ImagePtr& image, gfx::ImageOrientation orientation) {
    if (!hasPixels(image) || image->orientation() == orientation) return image;
    return gfx::Image::withBitmap(image->bitmap(), image->scale(), orientation);
}

namespace {

enum class OrientationChange { TurnLeft, TurnRight, MirrorHorizontal, MirrorVertical };

// What each change makes of each orientation, in the tags' numbering (up, down, left, right,
// then the four mirrored), so that the picture shows as the turn or mirror animation left it.
ImageOrientation changedOrientation(ImageOrientation from, OrientationChange change) {
    static constexpr int kTable[8][4] = {
        {2, 3, 4, 5}, {3, 2, 5, 4}, {1, 0, 7, 6}, {0, 1, 6, 7},
        {6, 7, 0, 1}, {7, 6, 1, 0}, {5, 4, 3, 2}, {4, 5, 2, 3},
    };
    return ImageOrientation(kTable[int(from)][int(change)]);
}

gfx::ImagePtr changed(const gfx::ImagePtr& image, OrientationChange change) {
    if (!hasPixels(image)) return image;
    return orvChangeOrientation(image, changedOrientation(image->orientation(), change));
}

}  // namespace

gfx::ImagePtr orvChangeTurnLeft(const gfx::ImagePtr& image) {
    return changed(image, OrientationChange::TurnLeft);
}

gfx::ImagePtr orvChangeTurnRight(const gfx::ImagePtr& image) {
    return changed(image, OrientationChange::TurnRight);
}

gfx::ImagePtr orvChangeMirrorHorizontal(const gfx::ImagePtr& image) {
    return changed(image, OrientationChange::MirrorHorizontal);
}

gfx::ImagePtr orvChangeMirrorVertical(const gfx::ImagePtr& image) {
    return changed(image, OrientationChange::MirrorVertical);
}

gfx::ImagePtr orvImageRotatedToUp(const gfx::ImagePtr& image) {
    if (!hasPixels(image) || image->orientation() == ImageOrientation::Up) return image;
    return gfx::Image::withBitmap(uprightBitmap(*image), image->scale());
}

gfx::ImagePtr orvImageCorpWithPrecentRect(const gfx::ImagePtr& image, const gfx::Rect& rect) {
    if (!hasPixels(image)) return image;
    const PixelSize size = uprightPixelSize(*image);
    const auto px = [](double fraction, double length) {
        return static_cast<int>(std::lround(std::clamp(fraction, 0.0, 1.0) * length));
    };
    // A rectangle that rounds to no pixels still keeps one: a crop never comes back empty.
    const int x0 = std::min(px(gfx::rectGetMinX(rect), size.width), size.width - 1);
    const int y0 = std::min(px(gfx::rectGetMinY(rect), size.height), size.height - 1);
    const int x1 = std::max(px(gfx::rectGetMaxX(rect), size.width), x0 + 1);
    const int y1 = std::max(px(gfx::rectGetMaxY(rect), size.height), y0 + 1);
    if (x1 - x0 !=
            px(gfx::rectGetMaxX(rect), size.width) - px(gfx::rectGetMinX(rect), size.width) ||
        y1 - y0 !=
            px(gfx::rectGetMaxY(rect), size.height) - px(gfx::rectGetMinY(rect), size.height)) {
        OrvTSLog::warn("crop (%g, %g, %g, %g) holds no whole pixel of a %dx%d picture; kept %dx%d",
                       rect.origin.x, rect.origin.y, rect.size.width, rect.size.height, size.width,
                       size.height, x1 - x0, y1 - y0);
    }
    return uprightCrop(image, x0, y0, x1 - x0, y1 - y0);
}

gfx::ImagePtr orvImageCorpWithPrecentRect(const gfx::ImagePtr& image, const gfx::Rect& rect,
                                          const gfx::Size& outputSize) {
    gfx::ImagePtr cropped = orvImageCorpWithPrecentRect(image, rect);
    if (!hasPixels(cropped) || !(outputSize.width >= 1) || !(outputSize.height >= 1)) {
        return cropped;
    }
    return orvScaleImage(cropped, outputSize);
}

gfx::ImagePtr orvImageCorpWithRatio(const gfx::ImagePtr& image, double ratio) {
    if (!hasPixels(image) || ratio <= 0) return orvImageRotatedToUp(image);
    const PixelSize size = uprightPixelSize(*image);
    const double width = std::min<double>(size.width, size.height * ratio);
    const double height = std::min<double>(size.height, size.width / ratio);
    const int w = std::clamp(static_cast<int>(std::lround(width)), 1, size.width);
    const int h = std::clamp(static_cast<int>(std::lround(height)), 1, size.height);
    return uprightCrop(image, (size.width - w) / 2, (size.height - h) / 2, w, h);
}

gfx::ImagePtr orvImageLimit(const gfx::ImagePtr& image, double limit) {
    if (!hasPixels(image) || limit < 1) return image;
    const PixelSize size = uprightPixelSize(*image);
    // Whole pixels: a limit of 1333.5 allows 1333, not a rounded-up 1334.
    return reducedBy(image, std::floor(limit) / std::max(size.width, size.height));
}

gfx::ImagePtr orvImageResize(const gfx::ImagePtr& image, const gfx::Size& size, bool baseLongSide,
                             double ratio) {
    const ImagePtr cut = ratio > 0 ? orvImageCorpWithRatio(image, ratio) : image;
    if (!hasPixels(cut) || size.width <= 0 || size.height <= 0) return cut;
    const PixelSize own = uprightPixelSize(*cut);
    const double fitWidth = size.width / own.width, fitHeight = size.height / own.height;
    // Inside the box, the long side decides; covering it, the short side does.
    return reducedBy(cut,
                     baseLongSide ? std::min(fitWidth, fitHeight) : std::max(fitWidth, fitHeight));
}

gfx::ImagePtr orvScaleImage(const gfx::ImagePtr& image, const gfx::Size& pixelSize) {
    if (!hasPixels(image)) return image;
    const int w = static_cast<int>(std::lround(pixelSize.width));
    const int h = static_cast<int>(std::lround(pixelSize.height));
    if (w < 1 || h < 1) return nullptr;
    // Resized as stored, then turned: the turn works on the smaller picture.
    const bool turn = gfx::isQuarterTurn(image->orientation());
    const int storedWidth = turn ? h : w, storedHeight = turn ? w : h;
    const gfx::BitmapPtr& bitmap = image->bitmap();
    const bool same = bitmap->width() == storedWidth && bitmap->height() == storedHeight;
    auto stored = same ? bitmap : BitmapOps::resized(*bitmap, storedWidth, storedHeight);
    return orvImageRotatedToUp(gfx::Image::withBitmap(stored, 1, image->orientation()));
}

codec::ImageMetadata orvMetadataWithContentsOfFile(const std::string& path) {
    const std::vector<uint8_t> head = jpegHead(path);
    return codec::ImageMetadata::fromJpeg(head.data(), head.size());
}

codec::ImageMetadata orvMetadataMatchingImage(const gfx::ImagePtr& image,
                                              const codec::ImageMetadata& meta) {
    // An upright picture with nothing to carry goes out without an invented EXIF block.
    if (!hasPixels(image) || (meta.empty() && image->orientation() == ImageOrientation::Up)) {
        return meta;
    }
    codec::ImageMetadata matching = meta;
    matching.setExifOrientation(codec::ImageMetadata::exifFromOrientation(image->orientation()));
    matching.setPixelSize(image->bitmap()->width(), image->bitmap()->height());
    return matching;
}

std::vector<uint8_t> orvJpegDataWithCompress(const gfx::ImagePtr& image, double compress,
                                             const codec::ImageMetadata& meta) {
    if (!hasPixels(image)) return {};
    const codec::ImageMetadata written = orvMetadataMatchingImage(image, meta);
    return codec::JpegCodec::encode(*image->bitmap(), compress,
                                    written.empty() ? nullptr : &written);
}

std::vector<uint8_t> orvPngData(const gfx::ImagePtr& image) {
    if (!hasPixels(image)) return {};
    return codec::PngCodec::encode(*uprightBitmap(*image));
}
