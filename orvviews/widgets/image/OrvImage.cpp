#include "orvviews/widgets/image/OrvImage.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <regex>

#include "frameworks/core/OrvTSLog.h"
#include "platform/ui/Screen.h"

ORV_DEFINE_CLASS(OrvImage, gfx::Image)

namespace {

// The float epsilon: scales this close to 1 are 1.
constexpr double kScaleTolerance = 1.1920928955078125e-7;

bool isFolderOrEmpty(const std::string& name) {
    return name.empty() || name.back() == '/';
}

// A number as the platform prints it: the shortest text that reads back the same, no ".0".
std::string shortestNumber(double value) {
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    return std::string(text, end);
}

}  // namespace

const std::vector<double>& OrvImage::getBundlePreferredScales() {
    static const std::vector<double> scales = [] {
        const double s = ui::Screen::main().scale();
        if (s <= 1) return std::vector<double>{1, 2, 3};
        if (s <= 2) return std::vector<double>{2, 3, 1};
        return std::vector<double>{3, 2, 1};
    }();
    return scales;
}

std::optional<std::string> OrvImage::getResFilename(const std::optional<std::string>& name,
                                                    double byScale) {
    if (!name) return std::nullopt;
    if (std::fabs(byScale - 1.0) <= kScaleTolerance || isFolderOrEmpty(*name)) return name;
    return *name + "@" + shortestNumber(byScale) + "x";
}

double OrvImage::getScaleFromFilename(const std::string& name) {
    if (isFolderOrEmpty(name)) return 1.0;
    static const std::regex suffix("@[0-9]+\\.?[0-9]*x$",
                                   std::regex::ECMAScript | std::regex::multiline);
    const std::string base = stringByDeletingPathExtension(name);
    double scale = 1.0;
    for (std::sregex_iterator it(base.begin(), base.end(), suffix), end; it != end; ++it) {
        if (it->length() < 3) continue;
        scale = std::strtod(name.substr(it->position() + 1, it->length() - 2).c_str(), nullptr);
    }
    return scale;
}

gfx::ImageOrientation OrvImage::UIImageOrientationFromEXIFValue(long value) {
    using O = gfx::ImageOrientation;
    switch (value) {
        case 2:
            return O::UpMirrored;
        case 3:
            return O::Down;
        case 4:
            return O::DownMirrored;
        case 5:
            return O::LeftMirrored;
        case 6:
            return O::Right;
        case 7:
            return O::RightMirrored;
        case 8:
            return O::Left;
        default:
            return O::Up;
    }
}

bool OrvImage::initWithContentsOfFile(const std::string& path) {
    OrvTSLog::debug("you need overwrite - (instancetype)initWithContentsOfFile:(NSString *)path;");
    return false;
}

bool OrvImage::initWithData(const Data& data) {
    OrvTSLog::debug("you need overwrite - (instancetype)initWithData:(NSData *)data;");
    return false;
}

bool OrvImage::initWithData(const Data& data, double scale) {
    OrvTSLog::debug(
        "you need overwrite - (instancetype)initWithData:(NSData *)data scale:(CGFloat)scale;");
    return false;
}

std::string OrvImage::stringByDeletingPathExtension(const std::string& name) {
    const std::string ext = pathExtension(name);
    return ext.empty() ? name : name.substr(0, name.size() - ext.size() - 1);
}

std::string OrvImage::pathExtension(const std::string& name) {
    // A leading dot names a hidden file, not an extension.
    const std::string ext = std::filesystem::path(name).extension().string();
    return ext.size() > 1 ? ext.substr(1) : std::string();
}
