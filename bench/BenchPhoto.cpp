#include "bench/BenchPhoto.h"

#include <turbojpeg.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>

#include "platform/codec/ImageReader.h"
#include "platform/gfx/BitmapOps.h"
#include "platform/rt/Log.h"

namespace orv::bench {

namespace {

namespace fs = std::filesystem;
using gfx::Bitmap;
using gfx::BitmapPtr;

const std::string kDataDir = ORV_BENCH_DATA_DIR;

// The bundled phone photo, else another bundled photo, else a sample picture that ships with
// the system.
std::string sourcePhoto() {
    const fs::path bundled = fs::path(ORV_SOURCE_RESOURCES) / "photos";
    if (fs::exists(bundled / "dragonfly.jpg")) return (bundled / "dragonfly.jpg").string();
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(bundled, error)) {
        const std::string ext = entry.path().extension().string();
        if (ext == ".jpg" || ext == ".jpeg" || ext == ".png") return entry.path().string();
    }
    return "/usr/lib/python3/dist-packages/skimage/data/astronaut.png";
}

// Deterministic grain of a few levels, the noise a camera sensor leaves in every photo.
void addGrain(Bitmap& bitmap) {
    uint32_t state = 12345;
    for (int y = 0; y < bitmap.height(); ++y) {
        uint8_t* p = bitmap.mutableRow(y);
        for (int i = 0; i < 4 * bitmap.width(); ++i) {
            if (i % 4 == 3) continue;
            state = state * 1664525u + 1013904223u;
            const int v = p[i] + int(state >> 29) - 4;
            p[i] = uint8_t(v < 0 ? 0 : v > 255 ? 255 : v);
        }
    }
}

// The source cut to 4:3 around its centre and brought to 4000 × 3000. A source that had to be
// enlarged gets grain; a phone-sized photo has its own.
BitmapPtr makePhoto() {
    const auto source = codec::ImageReader::readFile(sourcePhoto());
    if (!source) return nullptr;
    const Bitmap& b = *source->bitmap;
    if (b.width() == BenchPhoto::kWidth && b.height() == BenchPhoto::kHeight) {
        return source->bitmap;
    }
    const int w = std::min(b.width(), b.height() * 4 / 3), h = w * 3 / 4;
    const auto cut = gfx::BitmapOps::cropped(b, (b.width() - w) / 2, (b.height() - h) / 2, w, h);
    const auto big =
        cut ? gfx::BitmapOps::resized(*cut, BenchPhoto::kWidth, BenchPhoto::kHeight) : nullptr;
    if (!big) return nullptr;
    auto grained = std::make_shared<Bitmap>(*big);
    addGrain(*grained);
    return grained;
}

bool writeBytes(const std::vector<uint8_t>& bytes, const std::string& path) {
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    return bool(out);
}

// The JPEG a phone camera writes: quality 92 with colour at half resolution both ways.
std::vector<uint8_t> cameraJpeg(const Bitmap& photo) {
    tjhandle handle = tjInitCompress();
    unsigned char* out = nullptr;
    unsigned long size = 0;
    std::vector<uint8_t> bytes;
    if (tjCompress2(handle, photo.data(), photo.width(), int(photo.rowBytes()), photo.height(),
                    TJPF_RGBA, &out, &size, TJSAMP_420, 92, 0) == 0) {
        bytes.assign(out, out + size);
    }
    tjFree(out);
    tjDestroy(handle);
    return bytes;
}

// Makes both files when either is missing.
bool ensureFiles(const std::string& jpeg, const std::string& ppm) {
    if (fs::exists(jpeg) && fs::exists(ppm)) return true;
    fs::create_directories(kDataDir);
    const BitmapPtr photo = makePhoto();
    if (!photo) {
        rt::Log::errorf("bench: cannot read %s", sourcePhoto().c_str());
        return false;
    }
    return writeBytes(cameraJpeg(*photo), jpeg) && BenchPhoto::writePpm(*photo, ppm);
}

// The files are named after their source, so that a new bundled photo is not shadowed by the
// files made from the one before.
std::string ensured(const std::string& extension) {
    const std::string stem = kDataDir + "/" + fs::path(sourcePhoto()).stem().string() + "-12mp";
    if (!ensureFiles(stem + ".jpg", stem + ".ppm")) return {};
    return stem + extension;
}

}  // namespace

std::string BenchPhoto::jpegPath() {
    return ensured(".jpg");
}

std::string BenchPhoto::ppmPath() {
    return ensured(".ppm");
}

BitmapPtr BenchPhoto::readPpm(const std::string& path) {
    // Row by row, as the peer tools read it: no second copy of the file.
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                         std::fclose);
    int width = 0, height = 0, maxValue = 0;
    if (!file || std::fscanf(file.get(), "P6 %d %d %d", &width, &height, &maxValue) != 3 ||
        std::fgetc(file.get()) == EOF || maxValue != 255 || width <= 0 || height <= 0 ||
        width > 1 << 15 || height > 1 << 15) {
        return nullptr;
    }
    // Grown row by row rather than zero-filled first: one pass over 48 MB instead of two.
    std::vector<uint8_t> pixels;
    pixels.reserve(4 * size_t(width) * height);
    std::vector<uint8_t> in(3 * size_t(width)), out(4 * size_t(width));
    for (int y = 0; y < height; ++y) {
        if (std::fread(in.data(), 1, in.size(), file.get()) != in.size()) return nullptr;
        for (int x = 0; x < width; ++x) {
            out[4 * x] = in[3 * x], out[4 * x + 1] = in[3 * x + 1], out[4 * x + 2] = in[3 * x + 2];
            out[4 * x + 3] = 255;
        }
        pixels.insert(pixels.end(), out.begin(), out.end());
    }
    return std::make_shared<Bitmap>(width, height, gfx::PixelFormat::RGBA8888Premultiplied, 0,
                                    std::move(pixels));
}

bool BenchPhoto::writePpm(const Bitmap& bitmap, const std::string& path) {
    const auto rgba = bitmap.converted(gfx::PixelFormat::RGBA8888Premultiplied);
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "wb"),
                                                         std::fclose);
    if (!file) return false;
    std::fprintf(file.get(), "P6\n%d %d\n255\n", rgba->width(), rgba->height());
    std::vector<uint8_t> row(3 * size_t(rgba->width()));
    for (int y = 0; y < rgba->height(); ++y) {
        const uint8_t* src = rgba->row(y);
        for (size_t i = 0; i < row.size(); i += 3, src += 4) {
            row[i] = src[0], row[i + 1] = src[1], row[i + 2] = src[2];
        }
        if (std::fwrite(row.data(), 1, row.size(), file.get()) != row.size()) return false;
    }
    return std::fflush(file.get()) == 0;
}

}  // namespace orv::bench
