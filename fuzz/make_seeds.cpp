// Writes the seed corpora of the fuzzers: one small file for each layout a decoder handles.
// Run from the repository root: build/fuzz/fuzz/make_seeds fuzz/corpus
#include <png.h>
#include <turbojpeg.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "platform/codec/ImageMetadata.h"
#include "platform/codec/JpegCodec.h"
#include "platform/codec/WebpCodec.h"
#include "tests/support/GifWriter.h"

namespace {

using orv::codec::ImageMetadata;
using orv::codec::JpegCodec;
using orv::codec::WebpCodec;
using orv::gfx::Bitmap;
using orv::test::GifWriter;
using Bytes = std::vector<uint8_t>;

std::string root;

void save(const std::string& corpus, const std::string& name, const Bytes& bytes) {
    std::filesystem::create_directories(root + "/" + corpus);
    std::ofstream(root + "/" + corpus + "/" + name, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
}

Bitmap picture(int w, int h, bool translucent) {
    Bitmap b(w, h);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            uint8_t* p = b.mutableRow(y) + 4 * x;
            const int a = translucent ? 255 - 12 * y : 255;
            p[0] = uint8_t(x * 16 * a / 255);
            p[1] = uint8_t(y * 16 * a / 255);
            p[2] = uint8_t((x ^ y) * 16 * a / 255);
            p[3] = uint8_t(a);
        }
    }
    return b;
}

// ---- JPEG layouts TurboJPEG writes directly

Bytes tjJpeg(const Bytes& pixels, int format, int subsampling, int flags) {
    tjhandle handle = tjInitCompress();
    unsigned char* out = nullptr;
    unsigned long size = 0;
    tjCompress2(handle, pixels.data(), 16, 0, 16, format, &out, &size, subsampling, 75, flags);
    Bytes bytes(out, out + size);
    tjFree(out);
    tjDestroy(handle);
    return bytes;
}

void jpegSeeds() {
    const Bitmap rgba = picture(16, 16, false);
    const Bytes pixels(rgba.data(), rgba.data() + rgba.byteCount());
    save("jpeg", "baseline420.jpg", JpegCodec::encode(rgba, 0.5));
    save("jpeg", "baseline444.jpg", JpegCodec::encode(rgba, 0.95));
    save("jpeg", "progressive.jpg", tjJpeg(pixels, TJPF_RGBA, TJSAMP_422, TJFLAG_PROGRESSIVE));
    save("jpeg", "gray.jpg", tjJpeg(Bytes(256, 90), TJPF_GRAY, TJSAMP_GRAY, 0));
    save("jpeg", "cmyk.jpg", tjJpeg(pixels, TJPF_CMYK, TJSAMP_420, 0));
    ImageMetadata metadata;
    metadata.setExifOrientation(6);
    metadata.setPixelSize(16, 16);
    metadata.setIccProfile(Bytes(200, 7));
    save("jpeg", "metadata.jpg", JpegCodec::encode(rgba, 0.3, &metadata));
}

// ---- PNG colour types and depths, written with libpng

void appendBytes(png_structp png, png_bytep data, png_size_t n) {
    auto* out = static_cast<Bytes*>(png_get_io_ptr(png));
    out->insert(out->end(), data, data + n);
}

Bytes png(int colorType, int depth, int channels, bool interlaced, bool transparency) {
    const int w = 8, h = 8;
    Bytes out;
    png_structp p = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(p);
    png_set_write_fn(p, &out, appendBytes, nullptr);
    png_set_IHDR(p, info, w, h, depth, colorType,
                 interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (colorType == PNG_COLOR_TYPE_PALETTE) {
        png_color palette[4] = {{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {9, 9, 9}};
        png_set_PLTE(p, info, palette, 4);
        png_byte alpha[2] = {0, 128};
        if (transparency) png_set_tRNS(p, info, alpha, 2, nullptr);
    } else if (transparency) {
        png_color_16 clear = {0, 1, 1, 1, 1};
        png_set_tRNS(p, info, nullptr, 0, &clear);
    }
    png_write_info(p, info);
    const size_t rowBytes = (size_t(w) * channels * depth + 7) / 8;
    std::vector<Bytes> rows(h, Bytes(rowBytes));
    // Indices 0 to 3 for a palette whatever the depth; any pattern for the rest.
    const int mask = colorType == PNG_COLOR_TYPE_PALETTE && depth == 8 ? 0x03 : 0x33;
    for (int y = 0; y < h; ++y) {
        for (size_t i = 0; i < rowBytes; ++i) rows[y][i] = uint8_t((i * 37 + y * 11) & mask);
    }
    std::vector<png_bytep> pointers;
    for (auto& r : rows) pointers.push_back(r.data());
    png_write_image(p, pointers.data());
    png_write_end(p, nullptr);
    png_destroy_write_struct(&p, &info);
    return out;
}

void pngSeeds() {
    save("png", "gray1.png", png(PNG_COLOR_TYPE_GRAY, 1, 1, false, false));
    save("png", "gray4-adam7.png", png(PNG_COLOR_TYPE_GRAY, 4, 1, true, false));
    save("png", "gray16-trns.png", png(PNG_COLOR_TYPE_GRAY, 16, 1, false, true));
    save("png", "gray-alpha8.png", png(PNG_COLOR_TYPE_GRAY_ALPHA, 8, 2, false, false));
    save("png", "palette2-trns.png", png(PNG_COLOR_TYPE_PALETTE, 2, 1, false, true));
    save("png", "palette8-adam7.png", png(PNG_COLOR_TYPE_PALETTE, 8, 1, true, false));
    save("png", "rgb8-trns.png", png(PNG_COLOR_TYPE_RGB, 8, 3, false, true));
    save("png", "rgb16.png", png(PNG_COLOR_TYPE_RGB, 16, 3, false, false));
    save("png", "rgba8.png", png(PNG_COLOR_TYPE_RGBA, 8, 4, false, false));
    save("png", "rgba16-adam7.png", png(PNG_COLOR_TYPE_RGBA, 16, 4, true, false));
}

void webpSeeds() {
    save("webp", "lossy.webp", WebpCodec::encode(picture(16, 16, false), 0.5));
    save("webp", "lossy-alpha.webp", WebpCodec::encode(picture(16, 16, true), 0.5));
    save("webp", "lossless.webp", WebpCodec::encode(picture(16, 16, false), 1));
    save("webp", "lossless-alpha.webp", WebpCodec::encode(picture(16, 16, true), 1));
}

// ---- GIF layouts: tables, transparency, interlacing, every disposal, frames outside

void gifSeeds() {
    using Frame = GifWriter::Frame;
    const auto pattern = [](const Frame& f) {
        GifWriter::Indices indices;
        for (int i = 0; i < f.width * f.height; ++i)
            indices.push_back(uint8_t((i + i / f.width) % 4));
        return indices;
    };
    const auto gif = [&](auto&& writer, const std::vector<Frame>& frames) {
        for (const Frame& f : frames) writer.frame(f, pattern(f));
        return writer.finish();
    };
    save("gif", "still.gif", gif(GifWriter(8, 8), {{0, 0, 8, 8}}));
    save("gif", "local-table.gif",
         gif(GifWriter(8, 8, false), {{0, 0, 8, 8, 0, 2, 0, true, true}}));
    save("gif", "disposals.gif",
         gif(GifWriter(8, 8).loop(0), {{0, 0, 8, 8, DISPOSE_DO_NOT, 1},
                                       {2, 2, 4, 4, DISPOSE_BACKGROUND, 0, 5},
                                       {1, 1, 6, 6, DISPOSE_PREVIOUS, 3, 1, true},
                                       {4, 4, 8, 8, DISPOSE_DO_NOT}}));
    save("gif", "outside.gif",
         gif(GifWriter(0, 0).loop(3),
             {{2, 2, 4, 4}, {20, 20, 2, 2}, {3, 0, 9, 3, DISPOSE_PREVIOUS}}));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s CORPUS_DIR\n", argv[0]);
        return 2;
    }
    root = argv[1];
    jpegSeeds();
    pngSeeds();
    webpSeeds();
    gifSeeds();
    return 0;
}
