#include "examples/orvdemo/FilterContactSheet.h"

#include <cmath>
#include <vector>

#include "examples/orvdemo/ContactSheet.h"
#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvNKImageColorArgument.h"
#include "frameworks/strand/ORPFPConstants.h"
#include "frameworks/strand/ORPFPOrvkitImageFilter_PropertyBuilder.h"
#include "frameworks/strand/ORPFilterPipe.h"
#include "frameworks/strand/VimraParameters.h"
#include "frameworks/strand/kernels/LookCatalogue.h"
#include "orvviews/shower/OrvImageShowerImpl.h"

namespace orvdemo {

namespace {

constexpr double kTile = 220, kLabel = 40, kGap = 12;
constexpr int kColumns = 6;

struct Tile {
    std::string name;
    gfx::ImagePtr image;
};

// A tool filter as its tool starts it: the code with its arguments at their defaults.
gfx::ImagePtr toolFilter(const gfx::ImagePtr& photo, const std::string& code,
                         std::vector<std::pair<std::string, double>> args) {
    auto params = VimraParameters::parameterWithCode(code, 14);
    for (const auto& [key, value] : args) params->appendFloatArgWithKey(key, value);
    return OrvImageShowerImpl::filterImage(photo, code, params);
}

// The camera's 4:3 crop goes straight through a pipe: no tool shows it on its own.
gfx::ImagePtr cameraCrop(const gfx::ImagePtr& photo) {
    auto pipe = rt::make<ORPFilterPipe>();
    pipe->open();
    auto filter = ORPFPFilter::init(pipe->getContext(), ORPFPOrvkitImageFilter_TYPE_NAME);
    auto config = rt::make<ORPConfig>();
    config->setString(ORPFPOrvkitImageFilter_NAME_AspectCrop, ORPFPOrvkitImageFilter_CONFIG_NAME);
    filter->setConfig(config);
    auto builder = ORPFPOrvkitImageFilter_PropertyBuilder::initWithProperty(nullptr);
    builder->propertyDic()["ratio"] = 4.0 / 3.0;
    filter->setProperty(builder->makeProperty(), ORPFPOrvkitImageFilter_PROP_PARAM);
    pipe->addFilter(filter, 2);
    auto out = pipe->process(ORPFPImage::initWithUIImage(photo))->getUIImage();
    pipe->clearFilters();
    pipe->close();
    return out;
}

std::vector<Tile> tiles(const gfx::ImagePtr& photo) {
    std::vector<Tile> all{{"Original 原图", photo}};
    for (const auto& entry : orv::strand::LookCatalogue::shared()->entries()) {
        all.push_back({entry.name + " " + entry.localName,
                       OrvImageShowerImpl::filterImage(photo, entry.code, nullptr)});
    }
    all.push_back({"Aperture 光圈", toolFilter(photo, ORPFPOrvkitImageFilter_NAME_Aperture,
                                               {{"blurSize", 0.5},
                                                {"aperture", 0},
                                                {"selective", 0},
                                                {"centerX", 0.5},
                                                {"centerY", 0.4},
                                                {"radius", 0.3},
                                                {"degree", 0.5}})});
    all.push_back({"HDR", toolFilter(photo, ORPFPOrvkitImageFilter_NAME_HDR, {{"mixied", 0.5}})});
    all.push_back({"Holy light 柔光", toolFilter(photo, ORPFPOrvkitImageFilter_NAME_HolyLight,
                                                 {{"mixied", 0.5}, {"brightness", 0.5}})});
    all.push_back({"Vignette 暗角",
                   toolFilter(photo, ORPFPOrvkitImageFilter_NAME_Vignette, {{"vignette", 0.5}})});
    all.push_back({"Sharpen 锐化",
                   toolFilter(photo, ORPFPOrvkitImageFilter_NAME_Sharpen, {{"sharpness", 0.5}})});
    all.push_back({"Blur 模糊", toolFilter(photo, ORPFPOrvkitImageFilter_NAME_Gaussian, {})});
    all.push_back({"Adjust 调整", toolFilter(photo, ORPFPColorAdjustFilter_NAME_Adjust,
                                             {{"temperature", 0.2},
                                              {"highlights", -0.3},
                                              {"shadows", 0.3},
                                              {"contrast", 0.2},
                                              {"saturation", 0.3}})});
    all.push_back({"Skin 美颜", toolFilter(photo, ORPFPOrvkitImageFilter_NAME_SkinEdit,
                                           {{"smoothing", 0.7},
                                            {"whitening", 0.4},
                                            {"ruddy", 0.3},
                                            {"eyeSize", 0.5},
                                            {"chinSize", 0.5}})});
    all.push_back(
        {"Auto colour 自动校色", OrvImageShowerImpl::autoColorAnalysis(
                                     photo, OrvNKImageColorArgument::analysisWithImage(photo))});
    all.push_back({"Crop 4:3 裁剪", cameraCrop(photo)});
    return all;
}

// The picture fitted in the tile's square, centred.
gfx::Rect fitted(const gfx::Image& image, const gfx::Rect& square) {
    const gfx::Size size = image.size();
    const double s = std::min(square.size.width / size.width, square.size.height / size.height);
    const gfx::Size fit{size.width * s, size.height * s};
    return {square.origin.x + (square.size.width - fit.width) / 2,
            square.origin.y + (square.size.height - fit.height) / 2, fit.width, fit.height};
}

}  // namespace

int FilterContactSheet::write(const gfx::ImagePtr& photo, const std::string& path) {
    if (!photo || !photo->bitmap()) return 0;
    const std::vector<Tile> all = tiles(photo);
    const int rows = (static_cast<int>(all.size()) + kColumns - 1) / kColumns;
    const gfx::Size size{kColumns * (kTile + kGap) + kGap, rows * (kTile + kLabel + kGap) + kGap};
    ContactSheet sheet(size);
    for (size_t i = 0; i < all.size(); ++i) {
        const double x = kGap + (i % kColumns) * (kTile + kGap);
        const double y = kGap + (i / kColumns) * (kTile + kLabel + kGap);
        const gfx::Rect square(x, y, kTile, kTile);
        if (all[i].image && all[i].image->bitmap()) {
            sheet.context().drawImageInRect(*all[i].image, fitted(*all[i].image, square));
        }
        sheet.drawLabel(all[i].name, gfx::Rect(x, y + kTile + 8, kTile, kLabel - 8), 15);
    }
    return sheet.write(path) ? static_cast<int>(all.size()) : 0;
}

}  // namespace orvdemo
