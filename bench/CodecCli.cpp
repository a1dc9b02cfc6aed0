// A small command-line front to the codecs, so that the peer comparisons time a whole process
// for us as they do for the peers' tools.
//
//   orv_codec_cli make-photo                        prints the paths of the 12 MP JPEG and PPM
//   orv_codec_cli decode-screen IN.jpg [LONG] [OUT.ppm]   reduced at decode time (default 1334)
//   orv_codec_cli decode-resize IN.jpg [LONG] [OUT.ppm]   full decode, then a resample
//   orv_codec_cli encode IN.ppm OUT.jpg [QUALITY]          JPEG at QUALITY (default 0.95)
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "bench/BenchPhoto.h"
#include "platform/codec/ImageReader.h"
#include "platform/codec/JpegCodec.h"
#include "platform/gfx/BitmapOps.h"

namespace {

using namespace orv;

int usage() {
    std::fprintf(stderr,
                 "usage: orv_codec_cli make-photo | decode-screen IN [LONG] [OUT.ppm] |\n"
                 "       decode-resize IN [LONG] [OUT.ppm] | encode IN.ppm OUT.jpg [QUALITY]\n");
    return 2;
}

// The long side and width of a fit within `longSide`, keeping the aspect ratio.
gfx::BitmapPtr fullDecodeThenResize(const std::string& path, int longSide) {
    const auto bytes = codec::ImageReader::readAll(path);
    if (!bytes) return nullptr;
    const auto full = codec::JpegCodec::decode(bytes->data(), bytes->size());
    if (!full) return nullptr;
    const double scale = double(longSide) / std::max(full->width(), full->height());
    if (scale >= 1) return full;
    return gfx::BitmapOps::resized(*full, std::max(1, int(full->width() * scale + 0.5)),
                                   std::max(1, int(full->height() * scale + 0.5)));
}

int decode(const std::string& mode, int argc, char** argv) {
    const int longSide = argc > 3 ? std::atoi(argv[3]) : 1334;
    gfx::BitmapPtr bitmap;
    if (mode == "decode-screen") {
        const auto image = codec::ImageReader::readFile(argv[2], longSide);
        if (image) bitmap = image->bitmap;
    } else {
        bitmap = fullDecodeThenResize(argv[2], longSide);
    }
    if (!bitmap) return 1;
    if (argc > 4 && !bench::BenchPhoto::writePpm(*bitmap, argv[4])) return 1;
    return 0;
}

int encode(int argc, char** argv) {
    if (argc < 4) return usage();
    const auto bitmap = bench::BenchPhoto::readPpm(argv[2]);
    if (!bitmap) {
        std::fprintf(stderr, "not a binary 8-bit PPM: %s\n", argv[2]);
        return 1;
    }
    const auto jpeg = codec::JpegCodec::encode(*bitmap, argc > 4 ? std::atof(argv[4]) : 0.95);
    std::ofstream out(argv[3], std::ios::binary);
    out.write(reinterpret_cast<const char*>(jpeg.data()), std::streamsize(jpeg.size()));
    return jpeg.empty() || !out ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return usage();
    const std::string mode = argv[1];
    if (mode == "make-photo") {
        const std::string jpeg = bench::BenchPhoto::jpegPath();
        if (jpeg.empty()) return 1;
        std::printf("%s\n%s\n", jpeg.c_str(), bench::BenchPhoto::ppmPath().c_str());
        return 0;
    }
    if ((mode == "decode-screen" || mode == "decode-resize") && argc >= 3) {
        return decode(mode, argc, argv);
    }
    if (mode == "encode") return encode(argc, argv);
    return usage();
}
