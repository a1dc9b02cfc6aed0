#include "frameworks/strand/kernels/FilterKernels.h"

#include <algorithm>

#include "frameworks/strand/ORPFPConstants.h"
#include "frameworks/strand/kernels/AspectCrop.h"
#include "frameworks/strand/kernels/ColorAdjust.h"
#include "frameworks/strand/kernels/ColorCorrection.h"
#include "frameworks/strand/kernels/FaceWarp.h"
#include "frameworks/strand/kernels/GaussianBlur.h"
#include "frameworks/strand/kernels/Glow.h"
#include "frameworks/strand/kernels/LocalToneMap.h"
#include "frameworks/strand/kernels/LookCatalogue.h"
#include "frameworks/strand/kernels/SelectiveBlur.h"
#include "frameworks/strand/kernels/SkinSmooth.h"
#include "frameworks/strand/kernels/UnsharpMask.h"
#include "frameworks/strand/kernels/Vignette.h"

namespace orv::strand {

namespace {

// The plain gaussian blur has no parameter of its own: its strength follows the picture, a
// sigma of 1% of the shorter side, so a thumbnail and the full photo look alike.
constexpr double kGaussianSigmaOfShorterSide = 0.01;

using Kernel = gfx::BitmapPtr (*)(const gfx::Bitmap&, const ORPFPProperty&);

// Runs `kernel` with the settings the property holds (the defaults without a property); null,
// so that the input passes, when the property is of another kind.
template <class Settings, gfx::BitmapPtr (*kernel)(const gfx::Bitmap&, const Settings&)>
gfx::BitmapPtr withSettings(const gfx::Bitmap& input, const ORPFPProperty& property) {
    if (!property) return kernel(input, Settings{});
    const Settings* settings = ORPFPPropertyOf<Settings>::in(property);
    return settings ? kernel(input, *settings) : nullptr;
}

gfx::BitmapPtr gaussian(const gfx::Bitmap& input, const ORPFPProperty&) {
    const int shorter = std::min(input.width(), input.height());
    return GaussianBlur::apply(input, kGaussianSigmaOfShorterSide * shorter);
}

gfx::BitmapPtr aspectCrop(const gfx::Bitmap& input, const ORPFPProperty& property) {
    const LookSettings* settings = ORPFPPropertyOf<LookSettings>::in(property);
    if (property && !settings) return nullptr;
    double ratio = 0;
    if (settings) {
        if (auto it = settings->find("ratio"); it != settings->end()) ratio = it->second;
    }
    return AspectCrop::apply(input, ratio);
}

struct NamedKernel {
    std::string_view name;
    Kernel kernel;
};

// The tool filters of the image filter type, by their name.
constexpr NamedKernel kToolFilters[] = {
    {ORPFPOrvkitImageFilter_NAME_Aperture, withSettings<ApertureSettings, SelectiveBlur::apply>},
    {ORPFPOrvkitImageFilter_NAME_HDR, withSettings<HdrSettings, LocalToneMap::apply>},
    {ORPFPOrvkitImageFilter_NAME_HolyLight, withSettings<HolyLightSettings, Glow::apply>},
    {ORPFPOrvkitImageFilter_NAME_Vignette, withSettings<VignetteSettings, Vignette::apply>},
    {ORPFPOrvkitImageFilter_NAME_Sharpen, withSettings<SharpenSettings, UnsharpMask::apply>},
    {ORPFPOrvkitImageFilter_NAME_SkinHazy, withSettings<SkinSettings, SkinSmooth::apply>},
    {ORPFPOrvkitImageFilter_NAME_Gaussian, gaussian},
    {ORPFPOrvkitImageFilter_NAME_AspectCrop, aspectCrop},
};

// The other filter types, by their type name.
constexpr NamedKernel kTypes[] = {
    {ORPFPColorAdjustFilter_TYPE_NAME, withSettings<ColorAdjustSettings, ColorAdjust::apply>},
    {ORPFPOrvkitFaceEditPlasticFilter_TYPE_NAME, withSettings<PlasticSettings, FaceWarp::apply>},
    {ORPFPColorCorrectionFilter_TYPE_NAME,
     withSettings<ColorCorrectionSettings, ColorCorrection::apply>},
};

Kernel find(const auto& table, const std::string& name) {
    for (const NamedKernel& entry : table) {
        if (entry.name == name) return entry.kernel;
    }
    return nullptr;
}

const Look* lookNamed(const std::string& name, const LookCatalogue* catalogue) {
    const LookCatalogue::Entry* entry = catalogue ? catalogue->entryWithCode(name) : nullptr;
    return entry ? entry->look.get() : nullptr;
}

// A look with the property's values over the look's defaults.
gfx::BitmapPtr applyLook(const std::string& name, const ORPFPProperty& property,
                         const LookCatalogue* catalogue, const gfx::Bitmap& input) {
    const Look* look = lookNamed(name, catalogue);
    if (!look) return nullptr;
    LookSettings settings = look->defaults();
    if (property) {
        const LookSettings* given = ORPFPPropertyOf<LookSettings>::in(property);
        if (!given) return nullptr;
        for (const auto& [key, value] : *given) settings[key] = value;
    }
    return look->apply(input, settings);
}

}  // namespace

gfx::BitmapPtr FilterKernels::apply(const std::string& typeName, const std::string& name,
                                    const ORPFPProperty& property, const LookCatalogue* catalogue,
                                    const gfx::BitmapPtr& input) {
    if (!input) return input;
    gfx::BitmapPtr out;
    if (typeName == ORPFPOrvkitImageFilter_TYPE_NAME) {
        Kernel kernel = find(kToolFilters, name);
        out = kernel ? kernel(*input, property) : applyLook(name, property, catalogue, *input);
    } else if (Kernel kernel = find(kTypes, typeName)) {
        out = kernel(*input, property);
    }
    return out ? out : input;
}

bool FilterKernels::needsCatalogue(const std::string& typeName, const std::string& name) {
    return typeName == ORPFPOrvkitImageFilter_TYPE_NAME && !find(kToolFilters, name);
}

ORPFPProperty FilterKernels::defaultProperty(const std::string& name,
                                             const LookCatalogue* catalogue) {
    const Look* look = lookNamed(name, catalogue);
    return look ? ORPFPPropertyOf<LookSettings>::make(look->defaults()) : nullptr;
}

}  // namespace orv::strand
