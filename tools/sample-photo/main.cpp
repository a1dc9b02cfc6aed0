// Makes the bundled phone-sized photo, resources/photos/dragonfly.jpg, from its source in
// Debian's lomiri-wallpapers-16.04 package: the 4224 × 3168 picture reduced to 4000 × 3000 (12
// megapixels, what a phone camera writes), saved as a camera would (quality 90, colour at half
// resolution both ways) with an EXIF block of our own, since the source carries none.
//
//     orv-sample-photo [SOURCE.jpg] OUT.jpg
//
// Every EXIF value is invented here and says so: the make is "OrvViews sample", the software
// and the description name this tool. Only the artist and copyright are the photo's own.
// Orientation stays 1 (stored upright); the other orientations are made by the tests.

#include <libexif/exif-data.h>
#include <turbojpeg.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "platform/codec/ImageMetadata.h"
#include "platform/codec/JpegCodec.h"
#include "platform/gfx/BitmapOps.h"

namespace gfx = orv::gfx;
namespace codec = orv::codec;

namespace {

constexpr const char* kDefaultSource = "/usr/share/backgrounds/Dragonfly_by_Bolly.jpg";
constexpr int kWidth = 4000, kHeight = 3000;
constexpr int kQuality = 90;

struct ExifDeleter {
    void operator()(ExifData* data) const { exif_data_unref(data); }
};

// A new entry of `components` values of `format`, zeroed, owned by the IFD.
ExifEntry* addEntry(ExifData* data, ExifIfd ifd, ExifTag tag, ExifFormat format,
                    unsigned components) {
    ExifEntry* entry = exif_entry_new();
    const unsigned size = exif_format_get_size(format) * components;
    entry->data = static_cast<unsigned char*>(std::calloc(1, size));
    entry->tag = tag;
    entry->format = format;
    entry->components = components;
    entry->size = size;
    exif_content_add_entry(data->ifd[ifd], entry);
    exif_entry_unref(entry);
    return entry;
}

void addText(ExifData* data, ExifIfd ifd, ExifTag tag, const std::string& text) {
    ExifEntry* entry = addEntry(data, ifd, tag, EXIF_FORMAT_ASCII, unsigned(text.size() + 1));
    std::memcpy(entry->data, text.c_str(), text.size() + 1);
}

void addShort(ExifData* data, ExifIfd ifd, ExifTag tag, ExifShort value) {
    ExifEntry* entry = addEntry(data, ifd, tag, EXIF_FORMAT_SHORT, 1);
    exif_set_short(entry->data, exif_data_get_byte_order(data), value);
}

void addRationals(ExifData* data, ExifIfd ifd, ExifTag tag, std::vector<ExifRational> values) {
    ExifEntry* entry = addEntry(data, ifd, tag, EXIF_FORMAT_RATIONAL, unsigned(values.size()));
    for (size_t i = 0; i < values.size(); ++i) {
        exif_set_rational(entry->data + 8 * i, exif_data_get_byte_order(data), values[i]);
    }
}

void addBytes(ExifData* data, ExifIfd ifd, ExifTag tag, ExifFormat format,
              std::vector<uint8_t> bytes) {
    ExifEntry* entry = addEntry(data, ifd, tag, format, unsigned(bytes.size()));
    std::memcpy(entry->data, bytes.data(), bytes.size());
}

// The APP1 payload ("Exif\0\0" and the TIFF block). The GPS position is a round one in the
// Alps, the date a plausible morning: neither is where or when the photo was taken.
std::vector<uint8_t> sampleExif() {
    std::unique_ptr<ExifData, ExifDeleter> data(exif_data_new());
    exif_data_set_byte_order(data.get(), EXIF_BYTE_ORDER_INTEL);
    exif_data_set_data_type(data.get(), EXIF_DATA_TYPE_COMPRESSED);
    ExifData* d = data.get();

    addText(d, EXIF_IFD_0, EXIF_TAG_IMAGE_DESCRIPTION,
            "Dragonfly by Bolly (CC BY-SA 4.0); metadata added by OrvViews tools/sample-photo");
    addText(d, EXIF_IFD_0, EXIF_TAG_MAKE, "OrvViews sample");
    addText(d, EXIF_IFD_0, EXIF_TAG_MODEL, "sample-photo 12MP");
    addShort(d, EXIF_IFD_0, EXIF_TAG_ORIENTATION, 1);
    addRationals(d, EXIF_IFD_0, EXIF_TAG_X_RESOLUTION, {{72, 1}});
    addRationals(d, EXIF_IFD_0, EXIF_TAG_Y_RESOLUTION, {{72, 1}});
    addShort(d, EXIF_IFD_0, EXIF_TAG_RESOLUTION_UNIT, 2);
    addText(d, EXIF_IFD_0, EXIF_TAG_SOFTWARE, "OrvViews tools/sample-photo");
    addText(d, EXIF_IFD_0, EXIF_TAG_DATE_TIME, "2018:09:22 10:41:07");
    addText(d, EXIF_IFD_0, EXIF_TAG_ARTIST, "Bolly");
    addText(d, EXIF_IFD_0, EXIF_TAG_COPYRIGHT, "Bolly, 2018. CC BY-SA 4.0");

    addBytes(d, EXIF_IFD_EXIF, EXIF_TAG_EXIF_VERSION, EXIF_FORMAT_UNDEFINED, {'0', '2', '3', '2'});
    addText(d, EXIF_IFD_EXIF, EXIF_TAG_DATE_TIME_ORIGINAL, "2018:09:22 10:41:07");
    addText(d, EXIF_IFD_EXIF, EXIF_TAG_DATE_TIME_DIGITIZED, "2018:09:22 10:41:07");
    addShort(d, EXIF_IFD_EXIF, EXIF_TAG_COLOR_SPACE, 1);  // sRGB

    addBytes(d, EXIF_IFD_GPS, static_cast<ExifTag>(EXIF_TAG_GPS_VERSION_ID), EXIF_FORMAT_BYTE,
             {2, 3, 0, 0});
    addText(d, EXIF_IFD_GPS, static_cast<ExifTag>(EXIF_TAG_GPS_LATITUDE_REF), "N");
    addRationals(d, EXIF_IFD_GPS, static_cast<ExifTag>(EXIF_TAG_GPS_LATITUDE),
                 {{46, 1}, {30, 1}, {0, 1}});
    addText(d, EXIF_IFD_GPS, static_cast<ExifTag>(EXIF_TAG_GPS_LONGITUDE_REF), "E");
    addRationals(d, EXIF_IFD_GPS, static_cast<ExifTag>(EXIF_TAG_GPS_LONGITUDE),
                 {{8, 1}, {15, 1}, {0, 1}});
    addBytes(d, EXIF_IFD_GPS, static_cast<ExifTag>(EXIF_TAG_GPS_ALTITUDE_REF), EXIF_FORMAT_BYTE,
             {0});
    addRationals(d, EXIF_IFD_GPS, static_cast<ExifTag>(EXIF_TAG_GPS_ALTITUDE), {{1200, 1}});

    unsigned char* bytes = nullptr;
    unsigned size = 0;
    exif_data_save_data(d, &bytes, &size);
    std::vector<uint8_t> out(bytes, bytes + size);
    std::free(bytes);
    return out;
}

// A phone camera's JPEG: colour at half resolution both ways, which the library's own encoder
// keeps only below quality 90.
std::vector<uint8_t> cameraJpeg(const gfx::Bitmap& photo) {
    tjhandle handle = tjInitCompress();
    unsigned char* jpeg = nullptr;
    unsigned long size = 0;
    std::vector<uint8_t> out;
    if (tjCompress2(handle, photo.data(), photo.width(), int(photo.rowBytes()), photo.height(),
                    TJPF_RGBA, &jpeg, &size, TJSAMP_420, kQuality, TJFLAG_ACCURATEDCT) == 0) {
        out.assign(jpeg, jpeg + size);
    }
    tjFree(jpeg);
    tjDestroy(handle);
    return out;
}

// The EXIF segment goes after the JFIF header, where cameras put it.
std::vector<uint8_t> withExif(const std::vector<uint8_t>& jpeg, const std::vector<uint8_t>& exif) {
    size_t at = 2;
    if (jpeg.size() > 6 && jpeg[2] == 0xFF && jpeg[3] == 0xE0) at = 4 + (jpeg[4] << 8 | jpeg[5]);
    const size_t length = exif.size() + 2;
    std::vector<uint8_t> out(jpeg.begin(), jpeg.begin() + long(at));
    out.insert(out.end(), {0xFF, 0xE1, uint8_t(length >> 8), uint8_t(length & 0xFF)});
    out.insert(out.end(), exif.begin(), exif.end());
    out.insert(out.end(), jpeg.begin() + long(at), jpeg.end());
    return out;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3) {
        std::fprintf(stderr, "usage: orv-sample-photo [SOURCE.jpg] OUT.jpg\n");
        return 2;
    }
    const std::string source = argc == 3 ? argv[1] : kDefaultSource;
    const std::string outPath = argv[argc - 1];

    std::ifstream in(source, std::ios::binary);
    const std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(in), {}};
    const gfx::BitmapPtr original = codec::JpegCodec::decode(bytes.data(), bytes.size());
    if (!original) {
        std::fprintf(stderr, "cannot read %s (apt-get install lomiri-wallpapers-16.04)\n",
                     source.c_str());
        return 1;
    }
    // The source is 4:3 already; anything else is cut to 4:3 around its centre first.
    const int w = std::min(original->width(), original->height() * 4 / 3), h = w * 3 / 4;
    const auto cut = gfx::BitmapOps::cropped(*original, (original->width() - w) / 2,
                                             (original->height() - h) / 2, w, h);
    const auto photo = gfx::BitmapOps::resized(*cut, kWidth, kHeight);

    codec::ImageMetadata metadata;
    metadata.setExif(sampleExif());
    metadata.setPixelSize(kWidth, kHeight);
    const std::vector<uint8_t> jpeg = withExif(cameraJpeg(*photo), metadata.exif());

    std::ofstream out(outPath, std::ios::binary);
    out.write(reinterpret_cast<const char*>(jpeg.data()), std::streamsize(jpeg.size()));
    if (!out || jpeg.size() < 1000) {
        std::fprintf(stderr, "cannot write %s\n", outPath.c_str());
        return 1;
    }
    std::printf("%s: %d x %d, %zu bytes\n", outPath.c_str(), kWidth, kHeight, jpeg.size());
    return 0;
}
