#include "platform/codec/PngCodec.h"

#include <gtest/gtest.h>
#include <png.h>

#include <array>
#include <filesystem>

#include "tests/support/TestEnvironment.h"

namespace orv::codec {
namespace {

using gfx::Bitmap;
using gfx::BitmapPtr;
using gfx::PixelFormat;
using Rgba = std::array<int, 4>;

Rgba at(const BitmapPtr& b, int x, int y) {
    const uint8_t* p = b->pixel(x, y);
    return {p[0], p[1], p[2], p[3]};
}

// A PNG written with libpng directly, so the decoder meets layouts our encoder never makes.
struct RawPng {
    int width, height, colorType, bitDepth;
    bool interlaced = false;
    std::vector<std::vector<uint8_t>> rows = {};
    std::vector<png_color> palette = {};
    std::vector<uint8_t> paletteAlpha = {};
    bool hasTransColor = false;  // tRNS for grey or RGB: the one sample value that is clear
    png_color_16 transColor = {};
};

void appendBytes(png_structp png, png_bytep data, png_size_t n) {
    auto* out = static_cast<std::vector<uint8_t>*>(png_get_io_ptr(png));
    out->insert(out->end(), data, data + n);
}

std::vector<uint8_t> write(RawPng raw) {
    std::vector<uint8_t> out;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        return {};
    }
    png_set_write_fn(png, &out, appendBytes, nullptr);
    png_set_IHDR(png, info, raw.width, raw.height, raw.bitDepth, raw.colorType,
                 raw.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (!raw.palette.empty()) png_set_PLTE(png, info, raw.palette.data(), int(raw.palette.size()));
    if (!raw.paletteAlpha.empty()) {
        png_set_tRNS(png, info, raw.paletteAlpha.data(), int(raw.paletteAlpha.size()), nullptr);
    }
    if (raw.hasTransColor) png_set_tRNS(png, info, nullptr, 0, &raw.transColor);
    png_write_info(png, info);
    std::vector<png_bytep> rows;
    for (auto& r : raw.rows) rows.push_back(r.data());
    png_write_image(png, rows.data());
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return out;
}

// The chunk checksum of PNG (CRC-32, reflected, polynomial 0xEDB88320).
uint32_t crc32(const uint8_t* data, size_t n) {
    uint32_t crc = 0xFFFFFFFF;
    for (size_t i = 0; i < n; ++i) {
        crc ^= data[i];
        for (int k = 0; k < 8; ++k) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1)));
    }
    return ~crc;
}

BitmapPtr decode(const std::vector<uint8_t>& bytes) {
    return PngCodec::decode(bytes.data(), bytes.size());
}

// A 3×2 picture: opaque colours in the first row, half-transparent ones in the second.
BitmapPtr sample() {
    auto b = std::make_shared<Bitmap>(3, 2);
    const uint8_t px[] = {255, 0, 0, 255, 0, 255, 0,  255, 10, 20, 30, 255,
                          128, 0, 0, 128, 0, 40,  60, 128, 1,  1,  1,  3};
    std::copy(std::begin(px), std::end(px), b->mutableData());
    return b;
}

TEST(PngCodecTest, RoundTripKeepsOpaquePixelsAndNearlyKeepsTranslucentOnes) {
    const BitmapPtr original = sample();
    const BitmapPtr back = decode(PngCodec::encode(*original));
    ASSERT_TRUE(back);
    ASSERT_EQ(back->width(), 3);
    ASSERT_EQ(back->height(), 2);
    for (int x = 0; x < 3; ++x) EXPECT_EQ(at(back, x, 0), at(original, x, 0));
    for (int x = 0; x < 3; ++x) {
        for (int c = 0; c < 4; ++c) EXPECT_NEAR(at(back, x, 1)[c], at(original, x, 1)[c], 1);
    }
}

TEST(PngCodecTest, EncodesEveryPixelFormatAsTheSamePicture) {
    const BitmapPtr original = sample();
    const auto bgra = original->converted(PixelFormat::BGRA8888Premultiplied);
    EXPECT_EQ(PngCodec::encode(*bgra), PngCodec::encode(*original));
    const BitmapPtr opaque = decode(PngCodec::encode(*original->converted(PixelFormat::BGRX8888)));
    ASSERT_TRUE(opaque);
    EXPECT_EQ(at(opaque, 0, 1), (Rgba{128, 0, 0, 255}));
}

TEST(PngCodecTest, WritesAtomicallyAndReadsBack) {
    const std::string path = test::TestEnvironment::tempDir() + "/sample.png";
    ASSERT_TRUE(PngCodec::writeFile(*sample(), path));
    const BitmapPtr back = PngCodec::readFile(path);
    ASSERT_TRUE(back);
    EXPECT_EQ(at(back, 2, 0), (Rgba{10, 20, 30, 255}));
    int files = 0;
    for (const auto& e : std::filesystem::directory_iterator(test::TestEnvironment::tempDir())) {
        files += e.path().filename().string().rfind("sample.png", 0) == 0;
    }
    EXPECT_EQ(files, 1);  // no temporary left behind
    EXPECT_FALSE(PngCodec::writeFile(*sample(), "/nonexistent-dir/x.png"));
    EXPECT_EQ(PngCodec::readFile("/nonexistent-dir/x.png"), nullptr);
}

TEST(PngCodecTest, DecodesPaletteWithTransparency) {
    RawPng raw{2, 1, PNG_COLOR_TYPE_PALETTE, 8};
    raw.palette = {{255, 0, 0}, {0, 0, 200}};
    raw.paletteAlpha = {255, 100};
    raw.rows = {{0, 1}};
    const BitmapPtr b = decode(write(raw));
    ASSERT_TRUE(b);
    EXPECT_EQ(at(b, 0, 0), (Rgba{255, 0, 0, 255}));
    EXPECT_EQ(at(b, 1, 0), (Rgba{0, 0, 78, 100}));  // 200 × 100 / 255, premultiplied
}

TEST(PngCodecTest, DecodesSixteenBitAndLowBitGray) {
    RawPng rgb16{1, 1, PNG_COLOR_TYPE_RGB, 16};
    rgb16.rows = {{0xFF, 0xFF, 0x80, 0x00, 0x00, 0x00}};  // big-endian samples
    const BitmapPtr b = decode(write(rgb16));
    ASSERT_TRUE(b);
    EXPECT_EQ(at(b, 0, 0), (Rgba{255, 128, 0, 255}));

    RawPng gray1{8, 1, PNG_COLOR_TYPE_GRAY, 1};
    gray1.rows = {{0b10100000}};
    const BitmapPtr g = decode(write(gray1));
    ASSERT_TRUE(g);
    EXPECT_EQ(at(g, 0, 0), (Rgba{255, 255, 255, 255}));
    EXPECT_EQ(at(g, 1, 0), (Rgba{0, 0, 0, 255}));
}

TEST(PngCodecTest, DecodesGrayWithAlpha) {
    RawPng raw{2, 1, PNG_COLOR_TYPE_GRAY_ALPHA, 8};
    raw.rows = {{200, 255, 200, 0}};
    const BitmapPtr b = decode(write(raw));
    ASSERT_TRUE(b);
    EXPECT_EQ(at(b, 0, 0), (Rgba{200, 200, 200, 255}));
    EXPECT_EQ(at(b, 1, 0), (Rgba{0, 0, 0, 0}));
}

TEST(PngCodecTest, DecodesInterlaced) {
    RawPng raw{9, 9, PNG_COLOR_TYPE_RGB, 8};
    raw.interlaced = true;
    for (int y = 0; y < 9; ++y) {
        raw.rows.emplace_back();
        for (int x = 0; x < 9; ++x)
            raw.rows.back().insert(raw.rows.back().end(), {uint8_t(x * 20), uint8_t(y * 20), 7});
    }
    const BitmapPtr b = decode(write(raw));
    ASSERT_TRUE(b);
    for (int y = 0; y < 9; ++y) {
        for (int x = 0; x < 9; ++x) EXPECT_EQ(at(b, x, y), (Rgba{x * 20, y * 20, 7, 255}));
    }
}

// Every colour type at every bit depth it allows, each as a row of known pixels.
TEST(PngCodecTest, DecodesEveryColourTypeAndDepth) {
    const std::vector<png_color> palette = {{255, 0, 0}, {0, 128, 0}, {10, 20, 30}};
    RawPng gray8Clear{2, 1, PNG_COLOR_TYPE_GRAY, 8, false, {{7, 250}}};
    gray8Clear.hasTransColor = true;
    gray8Clear.transColor.gray = 7;
    RawPng rgbClear{2, 1, PNG_COLOR_TYPE_RGB, 8, false, {{1, 2, 3, 4, 5, 6}}};
    rgbClear.hasTransColor = true;
    rgbClear.transColor = {0, 4, 5, 6, 0};
    const struct {
        const char* name;
        RawPng raw;
        std::vector<Rgba> pixels;
    } cases[] = {
        {"gray 2",
         {4, 1, PNG_COLOR_TYPE_GRAY, 2, false, {{0b00011011}}},
         {{0, 0, 0, 255}, {85, 85, 85, 255}, {170, 170, 170, 255}, {255, 255, 255, 255}}},
        {"gray 4",
         {2, 1, PNG_COLOR_TYPE_GRAY, 4, false, {{0x3C}}},
         {{51, 51, 51, 255}, {204, 204, 204, 255}}},
        {"gray 8",
         {2, 1, PNG_COLOR_TYPE_GRAY, 8, false, {{7, 250}}},
         {{7, 7, 7, 255}, {250, 250, 250, 255}}},
        {"gray 16",
         {2, 1, PNG_COLOR_TYPE_GRAY, 16, false, {{0xFF, 0xFF, 0x80, 0x80}}},
         {{255, 255, 255, 255}, {128, 128, 128, 255}}},
        {"gray 8 tRNS", gray8Clear, {{0, 0, 0, 0}, {250, 250, 250, 255}}},
        {"gray+alpha 16",
         {1, 1, PNG_COLOR_TYPE_GRAY_ALPHA, 16, false, {{0xFF, 0xFF, 0x80, 0x80}}},
         {{128, 128, 128, 128}}},
        {"palette 2",
         {4, 1, PNG_COLOR_TYPE_PALETTE, 2, false, {{0b00011001}}, palette},
         {{255, 0, 0, 255}, {0, 128, 0, 255}, {10, 20, 30, 255}, {0, 128, 0, 255}}},
        {"palette 4",
         {2, 1, PNG_COLOR_TYPE_PALETTE, 4, false, {{0x21}}, palette},
         {{10, 20, 30, 255}, {0, 128, 0, 255}}},
        {"rgb 8", {1, 1, PNG_COLOR_TYPE_RGB, 8, false, {{10, 20, 30}}}, {{10, 20, 30, 255}}},
        {"rgb 8 tRNS", rgbClear, {{1, 2, 3, 255}, {0, 0, 0, 0}}},
        {"rgba 8",
         {1, 1, PNG_COLOR_TYPE_RGBA, 8, false, {{200, 100, 50, 128}}},
         {{100, 50, 25, 128}}},
        {"rgba 16",
         {1, 1, PNG_COLOR_TYPE_RGBA, 16, false, {{0xFF, 0xFF, 0, 0, 0x80, 0x80, 0x80, 0x80}}},
         {{128, 0, 64, 128}}},
    };
    for (const auto& c : cases) {
        for (bool interlaced : {false, true}) {
            RawPng raw = c.raw;
            raw.interlaced = interlaced;
            const BitmapPtr b = decode(write(raw));
            ASSERT_TRUE(b) << c.name;
            ASSERT_EQ(b->width(), int(c.pixels.size())) << c.name;
            for (int x = 0; x < b->width(); ++x) {
                EXPECT_EQ(at(b, x, 0), c.pixels[x])
                    << c.name << (interlaced ? " adam7" : "") << " x=" << x;
            }
        }
    }
}

// Interlacing with sub-byte samples: each Adam7 pass packs its own bits.
TEST(PngCodecTest, DecodesInterlacedLowBitPalette) {
    RawPng raw{9, 9, PNG_COLOR_TYPE_PALETTE, 4, true};
    for (int i = 0; i < 16; ++i) raw.palette.push_back({uint8_t(i * 16), uint8_t(255 - i), 3});
    for (int y = 0; y < 9; ++y) {
        raw.rows.emplace_back(5, 0);
        for (int x = 0; x < 9; ++x) raw.rows[y][x / 2] |= ((x + y) % 16) << (x % 2 ? 0 : 4);
    }
    const BitmapPtr b = decode(write(raw));
    ASSERT_TRUE(b);
    for (int y = 0; y < 9; ++y) {
        for (int x = 0; x < 9; ++x) {
            const int i = (x + y) % 16;
            EXPECT_EQ(at(b, x, y), (Rgba{i * 16, 255 - i, 3, 255})) << x << "," << y;
        }
    }
}

TEST(PngCodecTest, RejectsTruncatedAndCorruptData) {
    const std::vector<uint8_t> good = PngCodec::encode(*sample());
    ASSERT_TRUE(decode(good));
    for (size_t n : {size_t{0}, size_t{4}, size_t{8}, size_t{20}, size_t{40}, good.size() - 13,
                     good.size() - 1}) {
        EXPECT_EQ(PngCodec::decode(good.data(), n), nullptr) << n << " bytes";
    }
    std::vector<uint8_t> corrupt = good;
    corrupt[good.size() / 2] ^= 0x5A;  // inside the image data: its checksum no longer holds
    EXPECT_EQ(decode(corrupt), nullptr);
    std::vector<uint8_t> huge = good;
    huge[16] = 0x7F;  // a width far beyond what we accept, with a checksum that holds
    const uint32_t crc = crc32(&huge[12], 17);
    for (int i = 0; i < 4; ++i) huge[29 + i] = uint8_t(crc >> (24 - 8 * i));
    EXPECT_EQ(decode(huge), nullptr);
    EXPECT_EQ(PngCodec::decode(nullptr, 100), nullptr);
    const std::string text = "definitely not a picture";
    EXPECT_EQ(PngCodec::decode(reinterpret_cast<const uint8_t*>(text.data()), text.size()),
              nullptr);
}

}  // namespace
}  // namespace orv::codec
