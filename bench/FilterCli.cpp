// A command-line front to the filters, so that the peer comparisons time a whole process for us
// as they do for the peers' tools.
//
//   orv_filter_cli gaussblur SIGMA IN.ppm OUT.ppm
//   orv_filter_cli sharpen IN.ppm OUT.ppm        the sharpen tool's default (0.5)
//   orv_filter_cli tool NAME VALUE IN.jpg OUT    a whole edit of a photo file as the editor
//       makes it: decode, the tool's filter with its slider at VALUE, then a JPEG at 0.95 that
//       keeps the photo's EXIF (OUT.jpg), or the pixels alone (OUT.ppm, to measure the effect).
//       NAME is vignette, sharpen, holy or hdr.
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "bench/BenchPhoto.h"
#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/strand/ORPFPConstants.h"
#include "frameworks/strand/kernels/GaussianBlur.h"
#include "frameworks/strand/kernels/UnsharpMask.h"
#include "orvviews/shower/OrvImageShowerImpl.h"
#include "platform/codec/ImageReader.h"

namespace {

using namespace orv;

int usage() {
    std::fprintf(stderr,
                 "usage: orv_filter_cli gaussblur SIGMA IN.ppm OUT.ppm | sharpen IN.ppm OUT.ppm |\n"
                 "       tool vignette|sharpen|holy|hdr VALUE IN.jpg OUT.jpg|OUT.ppm\n");
    return 2;
}

// The tool's code and the key of its slider.
struct ToolName {
    const char* name;
    const char* code;
    const char* key;
};

const ToolName kTools[] = {
    {"vignette", ORPFPOrvkitImageFilter_NAME_Vignette, "vignette"},
    {"sharpen", ORPFPOrvkitImageFilter_NAME_Sharpen, "sharpness"},
    {"holy", ORPFPOrvkitImageFilter_NAME_HolyLight, "mixied"},
    {"hdr", ORPFPOrvkitImageFilter_NAME_HDR, "mixied"},
};

const ToolName* toolNamed(const std::string& name) {
    for (const ToolName& tool : kTools) {
        if (name == tool.name) return &tool;
    }
    return nullptr;
}

bool endsWith(const std::string& s, const std::string& tail) {
    return s.size() >= tail.size() && s.compare(s.size() - tail.size(), tail.size(), tail) == 0;
}

int tool(int argc, char** argv) {
    const ToolName* named = argc == 6 ? toolNamed(argv[2]) : nullptr;
    if (!named) return usage();
    const char *code = named->code, *key = named->key;
    const std::string in = argv[4], out = argv[5];

    // The same arguments the tool's screen hands to the saving step, its slider moved.
    auto shower = rt::makeWith<OrvImageShowerImpl>(
        [](OrvImageShowerImpl& s) { s.initWithRootView(nullptr); });
    auto caller = VimraParameters::parameterWithCode(code, 14);
    // HDR's one slider is appended by its tool; the other tools come with theirs.
    if (std::string(code) == ORPFPOrvkitImageFilter_NAME_HDR)
        caller->appendFloatArgWithKey(key, 0.5);
    auto params = shower->changeFilter(code, caller);
    if (!params || !params->argWithKey(key)) return usage();
    params->argWithKey(key)->setValue(std::atof(argv[3]));

    // Read once: the pixels and the EXIF both come from these bytes.
    const auto bytes = codec::ImageReader::readAll(in);
    const auto image = bytes ? imageWithData(*bytes) : nullptr;
    if (!image) {
        std::fprintf(stderr, "cannot read %s\n", in.c_str());
        return 1;
    }
    const auto edited = OrvImageShowerImpl::filterImage(image, code, params);
    if (!edited) return 1;
    if (endsWith(out, ".ppm")) return bench::BenchPhoto::writePpm(*edited->bitmap(), out) ? 0 : 1;

    const auto metadata = codec::ImageMetadata::fromJpeg(bytes->data(), bytes->size());
    const auto jpeg = orvJpegDataWithCompress(edited, 0.95, metadata);
    std::ofstream file(out, std::ios::binary);
    file.write(reinterpret_cast<const char*>(jpeg.data()), std::streamsize(jpeg.size()));
    return jpeg.empty() || !file ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string mode = argc > 1 ? argv[1] : "";
    if (mode == "tool") return tool(argc, argv);
    const int first = mode == "gaussblur" ? 3 : 2;
    if ((mode != "gaussblur" && mode != "sharpen") || argc < first + 2) return usage();
    const auto input = bench::BenchPhoto::readPpm(argv[first]);
    if (!input) {
        std::fprintf(stderr, "not a binary 8-bit PPM: %s\n", argv[first]);
        return 1;
    }
    const gfx::BitmapPtr output = mode == "gaussblur"
                                      ? strand::GaussianBlur::apply(*input, std::atof(argv[2]))
                                      : strand::UnsharpMask::apply(*input, {.sharpness = 0.5f});
    return bench::BenchPhoto::writePpm(*output, argv[first + 1]) ? 0 : 1;
}
