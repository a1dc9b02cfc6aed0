#include "orvviews/shower/OrvImageShowerImpl.h"

#include <functional>

#include "frameworks/core/OrvImageColorCorrection.h"
#include "frameworks/strand/ORPConfig.h"
#include "frameworks/strand/ORPFPColorAdjustFilter_PropertyBuilder.h"
#include "frameworks/strand/ORPFPConstants.h"
#include "frameworks/strand/ORPFPOrvkitFaceEditPlasticFilter_PropertyBuilder.h"
#include "frameworks/strand/ORPFPOrvkitImageFilter_AperturePropertyBuilder.h"
#include "frameworks/strand/ORPFPOrvkitImageFilter_HDRPropertyBuilder.h"
#include "frameworks/strand/ORPFPOrvkitImageFilter_HolyLightPropertyBuilder.h"
#include "frameworks/strand/ORPFPOrvkitImageFilter_PropertyBuilder.h"
#include "frameworks/strand/ORPFPOrvkitImageFilter_SharpenPropertyBuilder.h"
#include "frameworks/strand/ORPFPOrvkitImageFilter_SkinHazyPropertyBuilder.h"
#include "frameworks/strand/ORPFPOrvkitImageFilter_VignettePropertyBuilder.h"

ORV_DEFINE_CLASS(OrvImageShowerImpl, rt::Object, OrvImageShower, VimraParametersListener)

namespace {

using Params = OrvImageShowerImpl::Params;
using Arg = OrvImageShowerImpl::Arg;
using Builder = OrvImageShowerImpl::Builder;
using ApertureBuilder = ORPFPOrvkitImageFilter_AperturePropertyBuilder;
using HdrBuilder = ORPFPOrvkitImageFilter_HDRPropertyBuilder;
using HolyLightBuilder = ORPFPOrvkitImageFilter_HolyLightPropertyBuilder;
using VignetteBuilder = ORPFPOrvkitImageFilter_VignettePropertyBuilder;
using SharpenBuilder = ORPFPOrvkitImageFilter_SharpenPropertyBuilder;
using AdjustBuilder = ORPFPColorAdjustFilter_PropertyBuilder;
using AdjustItem = ORPFPColorAdjustFilter_PropertyItem;
using SkinBuilder = ORPFPOrvkitImageFilter_SkinHazyPropertyBuilder;
using PlasticBuilder = ORPFPOrvkitFaceEditPlasticFilter_PropertyBuilder;
using LookBuilder = ORPFPOrvkitImageFilter_PropertyBuilder;

constexpr const char* kNormal = "Normal";
constexpr long kImageModel = 3;
constexpr long kToolModel = 14;
constexpr long kSkinModel = 8;
constexpr long kPlasticModel = 6;

// Positions of the private pipe of a one-shot rendering.
constexpr long kOneShotFirst = 2;
constexpr long kOneShotLate = 5;
constexpr long kOneShotSkin = 15;
constexpr long kOneShotPlastic = 13;

// The value of an argument the parameters may lack.
double valueOf(const VimraParameters& params, const std::string& key, double missing = 0) {
    auto arg = params.argWithKey(key);
    return arg ? arg->value() : missing;
}

float floatOf(const VimraParameters& params, const std::string& key) {
    return static_cast<float>(valueOf(params, key));
}

std::shared_ptr<ORPFPFilter> makeFilter(const ORPFilterPipe& pipe, const char* typeName,
                                        const std::optional<std::string>& name) {
    auto filter = ORPFPFilter::init(pipe.getContext(), typeName);
    if (name) {
        auto config = rt::make<ORPConfig>();
        config->setString(*name, ORPFPOrvkitImageFilter_CONFIG_NAME);
        filter->setConfig(config);
    }
    return filter;
}

// A missing filter or property is simply not told anything.
void send(const std::shared_ptr<ORPFPFilter>& filter, const ORPFPProperty& property) {
    if (filter && property) filter->setProperty(property, ORPFPOrvkitImageFilter_PROP_PARAM);
}

// --- Builders from parameters: the values go to their fields unscaled. ---

std::shared_ptr<ApertureBuilder> apertureBuilder(const VimraParameters& params) {
    auto builder = rt::make<ApertureBuilder>();
    builder->setBlurSize(floatOf(params, "blurSize"));
    builder->setColor(gfx::Color::white(1, valueOf(params, "aperture", 1)));
    builder->setSelective(floatOf(params, "selective"));
    builder->setCenter({valueOf(params, "centerX", 0.5), valueOf(params, "centerY", 0.5)});
    builder->setRadius(floatOf(params, "radius"));
    builder->setDegree(floatOf(params, "degree"));
    return builder;
}

std::shared_ptr<HdrBuilder> hdrBuilder(const VimraParameters& params) {
    auto builder = rt::make<HdrBuilder>();
    builder->setStrength(floatOf(params, "mixied"));
    return builder;
}

std::shared_ptr<HolyLightBuilder> holyLightBuilder(const VimraParameters& params) {
    auto builder = rt::make<HolyLightBuilder>();
    builder->setStrength(floatOf(params, "mixied"));
    builder->setBrightness(floatOf(params, "brightness"));
    return builder;
}

std::shared_ptr<VignetteBuilder> vignetteBuilder(const VimraParameters& params) {
    auto builder = rt::make<VignetteBuilder>();
    builder->setStart(floatOf(params, "vignette"));
    return builder;
}

std::shared_ptr<SharpenBuilder> sharpenBuilder(const VimraParameters& params) {
    auto builder = rt::make<SharpenBuilder>();
    builder->setSharpness(floatOf(params, "sharpness"));
    return builder;
}

// The items in the order the filter applies them; a key the caller did not append yields 0.
std::shared_ptr<AdjustBuilder> adjustBuilder(const VimraParameters& params) {
    auto builder = rt::make<AdjustBuilder>();
    auto value = [&](const char* key) { return floatOf(params, key); };
    builder->items() = {
        AdjustItem::init(ORPFPColorAdjustFilter_PROP_TYPE_WhiteBalance, value("temperature"),
                         value("tint")),
        AdjustItem::init(ORPFPColorAdjustFilter_PROP_TYPE_HighlightShadow, value("highlights"),
                         value("shadows")),
        AdjustItem::init(ORPFPColorAdjustFilter_PROP_TYPE_Sharpen, value("sharpen")),
        AdjustItem::init(ORPFPColorAdjustFilter_PROP_TYPE_Brightness, value("brightness")),
        AdjustItem::init(ORPFPColorAdjustFilter_PROP_TYPE_Contrast, value("contrast")),
        AdjustItem::init(ORPFPColorAdjustFilter_PROP_TYPE_Saturation, value("saturation")),
        AdjustItem::init(ORPFPColorAdjustFilter_PROP_TYPE_Exposure, value("exposure")),
    };
    return builder;
}

// Replaces value `which` of the item named `name` (items are immutable).
void replaceAdjustValue(AdjustBuilder& builder, const std::string& name, size_t which,
                        float value) {
    for (auto& item : builder.items()) {
        if (!item || item->name() != name) continue;
        if (item->values().size() < 2) {
            item = AdjustItem::init(name, value);
            return;
        }
        float values[2] = {item->values()[0], item->values()[1]};
        values[which] = value;
        item = AdjustItem::init(name, values[0], values[1]);
        return;
    }
}

// One skin argument to its field; "retouch" and other keys belong to the tool only.
void routeSkinArg(SkinBuilder* skin, PlasticBuilder* plastic, const VimraParameterArg& arg) {
    const std::string& key = arg.key();
    const double value = arg.value();
    if (skin && key == "smoothing") skin->setSmoothing(static_cast<float>(value));
    if (skin && key == "whitening") skin->setFair(static_cast<float>(value));
    if (skin && key == "ruddy") skin->setRuddy(static_cast<float>(value));
    if (plastic && key == "eyeSize") plastic->setEyeEnlarge(value);
    if (plastic && key == "chinSize") plastic->setCheekThin(value);
}

// --- The tool filters of model 14, in the order their codes are tested. ---

void appendFixed(VimraParameters& out, std::initializer_list<std::pair<const char*, double>> list) {
    for (const auto& [key, value] : list) out.appendFloatArgWithKey(key, value);
}

// Copies the caller's arguments, dropping their ranges and indexes.
void copyPlain(VimraParameters& out, const VimraParameters& in) {
    for (const auto& arg : in.args()) out.appendFloatArgWithKey(arg->key(), arg->value());
}

void copyWithRanges(VimraParameters& out, const VimraParameters& in) {
    for (const auto& arg : in.args()) {
        out.appendFloatArgWithKey(arg->key(), arg->value(), arg->minFloatValue(),
                                  arg->maxFloatValue());
    }
}

struct ToolFilter {
    const char* code;
    // Fills the new parameter object; the fixed lists ignore what the caller held.
    void (*arguments)(VimraParameters& out, const VimraParameters& in);
    void (OrvImageShowerImpl::*build)(const Params&);
    // Null for the skin edit, whose update reads builders of its own models.
    void (OrvImageShowerImpl::*update)(long, const Arg&, const Builder&);
};

const ToolFilter kToolFilters[] = {
    {ORPFPOrvkitImageFilter_NAME_Aperture,
     [](VimraParameters& out, const VimraParameters&) {
         appendFixed(out, {{"blurSize", 0.5},
                           {"aperture", 0},
                           {"selective", 0},
                           {"centerX", 0.5},
                           {"centerY", 0.5},
                           {"radius", 0.4},
                           {"degree", 0.5}});
     },
     &OrvImageShowerImpl::apertureFilter, &OrvImageShowerImpl::updateAperture},
    {ORPFPOrvkitImageFilter_NAME_HDR, copyPlain, &OrvImageShowerImpl::hdrFilter,
     &OrvImageShowerImpl::updateHDR},
    {ORPFPColorAdjustFilter_NAME_Adjust, copyWithRanges, &OrvImageShowerImpl::adjustFilter,
     &OrvImageShowerImpl::updateAdjust},
    {ORPFPOrvkitImageFilter_NAME_HolyLight,
     [](VimraParameters& out, const VimraParameters&) {
         appendFixed(out, {{"mixied", 0.5}, {"brightness", 0.5}});
     },
     &OrvImageShowerImpl::holyLightFilter, &OrvImageShowerImpl::updateHolyLight},
    {ORPFPOrvkitImageFilter_NAME_Vignette,
     [](VimraParameters& out, const VimraParameters&) {
         appendFixed(out, {{"vignette", 0.5}});
     },
     &OrvImageShowerImpl::vignetteFilter, &OrvImageShowerImpl::updateVignette},
    {ORPFPOrvkitImageFilter_NAME_Sharpen,
     [](VimraParameters& out, const VimraParameters&) {
         appendFixed(out, {{"sharpness", 0.5}});
     },
     &OrvImageShowerImpl::sharpenFilter, &OrvImageShowerImpl::updateSharpen},
    {ORPFPOrvkitImageFilter_NAME_SkinEdit, copyPlain, &OrvImageShowerImpl::skinEditFilter, nullptr},
};

const ToolFilter* toolFilterFor(const std::string& code) {
    for (const auto& tool : kToolFilters) {
        if (code == tool.code) return &tool;
    }
    return nullptr;
}

// --- One-shot rendering through a private pipe. ---

// One filter at `position`, told `property` when there is one.
gfx::ImagePtr runOneFilter(const gfx::ImagePtr& image, long position, const char* typeName,
                           const std::optional<std::string>& name, const ORPFPProperty& property) {
    return ORPFilterPipe::runOnce(image, [&](ORPFilterPipe& pipe) {
        auto filter = makeFilter(pipe, typeName, name);
        pipe.addFilter(filter, position);
        send(filter, property);
    });
}

}  // namespace

// --- The live preview. ---

void OrvImageShowerImpl::initWithRootView(const ui::View::Ptr& rootView) {
    rt::Object::init();
    displaySize = {0, 0};
    setup(rootView);
    filterDict = {{2, 10}, {3, 11},  {4, 12},  {6, 13},  {7, 14}, {8, 15},
                  {9, 16}, {11, 17}, {12, 18}, {14, 19}, {15, 20}};
    propertyDict.clear();
}

void OrvImageShowerImpl::setup(const ui::View::Ptr& rootView) {
    pipeline_ = rt::make<ORPFilterPipe>();
    pipeline_->open();
    auto view = rt::make<ORPFPDisplayView>();
    if (rootView) {
        // Fills the root and follows its size, behind whatever the tool puts there.
        view->setFrame(rootView->bounds());
        view->setAutoresizingMask(ui::AutoresizingFlexibleWidth | ui::AutoresizingFlexibleHeight);
        rootView->addSubview(view);
        rootView->sendSubviewToBack(view.get());
    }
    displayView_ = view;
    view->setup();
}

void OrvImageShowerImpl::setDisplayBackgroundColor(const gfx::Color& color) {
    displayBackgroundColor_ = color;
    if (auto view = displayView_.lock()) view->setClearColor(color);
}

void OrvImageShowerImpl::setImage(const gfx::ImagePtr& image, unsigned long /*rotation*/) {
    // The rotation is not applied: the image is shown as given, unfiltered, until the next
    // parameter change renders it through the pipe.
    oriImage = image;
    oriFPImage = ORPFPImage::initWithUIImage(image);
    if (auto view = displayView_.lock()) view->update(oriFPImage);
}

void OrvImageShowerImpl::update() {
    if (!oriImage) return;
    auto output = pipeline_->process(oriFPImage);
    if (auto view = displayView_.lock()) view->update(output);
}

long OrvImageShowerImpl::positionOfModel(long model) const {
    auto found = filterDict.find(model);
    return found == filterDict.end() ? -1 : found->second;
}

Params OrvImageShowerImpl::changeFilter(const std::string& code, const Params& params) {
    const long model = params ? params->model() : kImageModel;
    auto result = VimraParameters::parameterWithCode(code, model);
    if (model == kImageModel) {
        imageFilter(result);
    } else if (model == kToolModel) {
        // A code without a tool filter here ("_IEBGaussian" among them) builds nothing.
        if (const ToolFilter* tool = toolFilterFor(code)) {
            tool->arguments(*result, *params);
            result->setListener(weakSelf<OrvImageShowerImpl>());
            (this->*tool->build)(result);
        }
    } else {
        return nullptr;
    }
    update();
    return result;
}

void OrvImageShowerImpl::onVimraParametersUpdate(long model, const std::string& code,
                                                 const Arg& arg) {
    if (!arg) return;
    auto found = propertyDict.find(model);
    Builder obj = found == propertyDict.end() ? nullptr : found->second;
    if (model == kImageModel) {
        updateImageFilter(model, arg, obj);
    } else if (model == kToolModel) {
        if (const ToolFilter* tool = toolFilterFor(code)) {
            if (tool->update) {
                (this->*tool->update)(model, arg, obj);
            } else {
                updateSkin(arg);
            }
        }
    }
    update();
}

// --- Building the filters. ---

void OrvImageShowerImpl::imageFilter(const Params& params) {
    const long model = params->model();
    const long position = positionOfModel(model);
    // The filter bar swaps its filter, so the old one goes first.
    if (pipeline_->getFilter(position)) pipeline_->deleteFilterAt(position);
    if (params->code() == kNormal) return;

    auto filter = makeFilter(*pipeline_, ORPFPOrvkitImageFilter_TYPE_NAME, params->code());
    pipeline_->addFilter(filter, position);
    auto builder =
        LookBuilder::initWithProperty(filter->getProperty(ORPFPOrvkitImageFilter_PROP_PARAM));
    send(filter, builder->makeProperty());
    for (const auto& [key, value] : builder->propertyDic()) {
        params->appendFloatArgWithKey(key, static_cast<float>(value));
    }
    params->setListener(weakSelf<OrvImageShowerImpl>());
    propertyDict[model] = builder;
}

void OrvImageShowerImpl::addToolFilter(const Params& params, const char* typeName, const char* name,
                                       const Builder& builder, const ORPFPProperty& property) {
    const long position = positionOfModel(params->model());
    if (position < 0) return;
    auto filter =
        makeFilter(*pipeline_, typeName, name ? std::optional<std::string>(name) : std::nullopt);
    pipeline_->addFilter(filter, position);
    propertyDict[params->model()] = builder;
    send(filter, property);
}

void OrvImageShowerImpl::apertureFilter(const Params& params) {
    auto builder = apertureBuilder(*params);
    addToolFilter(params, ORPFPOrvkitImageFilter_TYPE_NAME, ORPFPOrvkitImageFilter_NAME_Aperture,
                  builder, builder->makeProperty());
}

void OrvImageShowerImpl::hdrFilter(const Params& params) {
    auto builder = hdrBuilder(*params);
    addToolFilter(params, ORPFPOrvkitImageFilter_TYPE_NAME, ORPFPOrvkitImageFilter_NAME_HDR,
                  builder, builder->makeProperty());
}

void OrvImageShowerImpl::adjustFilter(const Params& params) {
    auto builder = adjustBuilder(*params);
    addToolFilter(params, ORPFPColorAdjustFilter_TYPE_NAME, nullptr, builder,
                  builder->makeProperty());
}

void OrvImageShowerImpl::holyLightFilter(const Params& params) {
    auto builder = holyLightBuilder(*params);
    addToolFilter(params, ORPFPOrvkitImageFilter_TYPE_NAME, ORPFPOrvkitImageFilter_NAME_HolyLight,
                  builder, builder->makeProperty());
}

void OrvImageShowerImpl::vignetteFilter(const Params& params) {
    auto builder = vignetteBuilder(*params);
    addToolFilter(params, ORPFPOrvkitImageFilter_TYPE_NAME, ORPFPOrvkitImageFilter_NAME_Vignette,
                  builder, builder->makeProperty());
}

void OrvImageShowerImpl::sharpenFilter(const Params& params) {
    auto builder = sharpenBuilder(*params);
    addToolFilter(params, ORPFPOrvkitImageFilter_TYPE_NAME, ORPFPOrvkitImageFilter_NAME_Sharpen,
                  builder, builder->makeProperty());
}

void OrvImageShowerImpl::skinEditFilter(const Params& params) {
    // Skin smoothing and face plastic live at models of their own, whatever the caller's.
    auto skin = rt::make<SkinBuilder>();
    auto plastic = rt::make<PlasticBuilder>();
    for (const auto& arg : params->args()) routeSkinArg(skin.get(), plastic.get(), *arg);

    auto skinFilter = makeFilter(*pipeline_, ORPFPOrvkitImageFilter_TYPE_NAME,
                                 ORPFPOrvkitImageFilter_NAME_SkinHazy);
    auto plasticFilter =
        makeFilter(*pipeline_, ORPFPOrvkitFaceEditPlasticFilter_TYPE_NAME, std::nullopt);
    pipeline_->addFilter(skinFilter, positionOfModel(kSkinModel));
    pipeline_->addFilter(plasticFilter, positionOfModel(kPlasticModel));
    propertyDict[kSkinModel] = skin;
    propertyDict[kPlasticModel] = plastic;
    send(skinFilter, skin->makeProperty());
    send(plasticFilter, plastic->makeProperty());
}

// --- Applying one argument. ---

void OrvImageShowerImpl::sendProperty(long model, const ORPFPProperty& property) const {
    send(pipeline_->getFilter(positionOfModel(model)), property);
}

void OrvImageShowerImpl::updateImageFilter(long model, const Arg& arg, const Builder& obj) {
    auto builder = rt::cast<LookBuilder>(obj);
    if (!builder) return;
    auto& dic = builder->propertyDic();
    if (auto entry = dic.find(arg->key()); entry != dic.end()) {
        entry->second = static_cast<float>(arg->value());
    }
    sendProperty(model, builder->makeProperty());
}

void OrvImageShowerImpl::updateAperture(long model, const Arg& arg, const Builder& obj) {
    auto builder = rt::cast<ApertureBuilder>(obj);
    if (!builder) return;
    const std::string& key = arg->key();
    const double value = arg->value();
    if (key == "aperture") {
        builder->setColor(gfx::Color::white(1, value));
    } else if (key == "centerX" || key == "centerY") {
        gfx::Point center = builder->center();
        (key == "centerX" ? center.x : center.y) = value;
        builder->setCenter(center);
    } else if (key == "radius") {
        builder->setRadius(static_cast<float>(value));
    } else if (key == "blurSize") {
        builder->setBlurSize(static_cast<float>(value));
    } else if (key == "degree") {
        builder->setDegree(static_cast<float>(value));
    } else if (key == "selective") {
        builder->setSelective(static_cast<float>(value));
    }
    sendProperty(model, builder->makeProperty());
}

void OrvImageShowerImpl::updateHDR(long model, const Arg& arg, const Builder& obj) {
    // The HDR tool has one slider, so the key is not consulted.
    auto builder = rt::cast<HdrBuilder>(obj);
    if (!builder) return;
    builder->setStrength(static_cast<float>(arg->value()));
    sendProperty(model, builder->makeProperty());
}

void OrvImageShowerImpl::updateAdjust(long model, const Arg& arg, const Builder& obj) {
    auto builder = rt::cast<AdjustBuilder>(obj);
    if (!builder) return;
    const std::string& key = arg->key();
    const auto value = static_cast<float>(arg->value());
    if (key == "temperature" || key == "tint") {
        replaceAdjustValue(*builder, ORPFPColorAdjustFilter_PROP_TYPE_WhiteBalance,
                           key == "temperature" ? 0 : 1, value);
    } else if (key == "highlights" || key == "shadows") {
        replaceAdjustValue(*builder, ORPFPColorAdjustFilter_PROP_TYPE_HighlightShadow,
                           key == "highlights" ? 0 : 1, value);
    } else if (key == ORPFPColorAdjustFilter_PROP_TYPE_Sharpen ||
               key == ORPFPColorAdjustFilter_PROP_TYPE_Brightness ||
               key == ORPFPColorAdjustFilter_PROP_TYPE_Contrast ||
               key == ORPFPColorAdjustFilter_PROP_TYPE_Saturation ||
               key == ORPFPColorAdjustFilter_PROP_TYPE_Exposure) {
        // The single items are named by their keys.
        for (auto& item : builder->items()) {
            if (item && item->name() == key) item = AdjustItem::init(key, value);
        }
    }
    // The adjust filter always lives at the tool model's position.
    sendProperty(kToolModel, builder->makeProperty());
}

void OrvImageShowerImpl::updateHolyLight(long model, const Arg& arg, const Builder& obj) {
    auto builder = rt::cast<HolyLightBuilder>(obj);
    if (!builder) return;
    if (arg->key() == "mixied") builder->setStrength(static_cast<float>(arg->value()));
    if (arg->key() == "brightness") builder->setBrightness(static_cast<float>(arg->value()));
    sendProperty(model, builder->makeProperty());
}

void OrvImageShowerImpl::updateVignette(long model, const Arg& arg, const Builder& obj) {
    // One slider again: any argument moves the start.
    auto builder = rt::cast<VignetteBuilder>(obj);
    if (!builder) return;
    builder->setStart(static_cast<float>(arg->value()));
    sendProperty(model, builder->makeProperty());
}

void OrvImageShowerImpl::updateSharpen(long model, const Arg& arg, const Builder& obj) {
    auto builder = rt::cast<SharpenBuilder>(obj);
    if (!builder) return;
    if (arg->key() == "sharpness") builder->setSharpness(static_cast<float>(arg->value()));
    sendProperty(model, builder->makeProperty());
}

void OrvImageShowerImpl::updateSkin(const Arg& arg) {
    auto builderAt = [&](long model) {
        auto found = propertyDict.find(model);
        return found == propertyDict.end() ? nullptr : found->second;
    };
    auto skin = rt::cast<SkinBuilder>(builderAt(kSkinModel));
    auto plastic = rt::cast<PlasticBuilder>(builderAt(kPlasticModel));
    routeSkinArg(skin.get(), plastic.get(), *arg);
    // Both filters hear every change, whichever field it touched.
    if (skin) sendProperty(kSkinModel, skin->makeProperty());
    if (plastic) sendProperty(kPlasticModel, plastic->makeProperty());
}

void OrvImageShowerImpl::dealloc() {
    if (pipeline_) {
        pipeline_->clearFilters();
        pipeline_->close();
    }
    if (auto view = displayView_.lock()) view->teardown();
    displayView_.reset();
    rt::Object::dealloc();
}

// --- One-shot rendering. ---

gfx::ImagePtr OrvImageShowerImpl::filterImage(const gfx::ImagePtr& image,
                                              const std::optional<std::string>& code,
                                              Params params) {
    if (!image || !code) return nullptr;
    if (!params) params = VimraParameters::parameterWithCode(*code, kImageModel);
    gfx::ImagePtr result;
    if (params->model() == kImageModel) result = imageFilter(image, params);

    using OneShot = gfx::ImagePtr (*)(const gfx::ImagePtr&, const Params&);
    static const std::pair<const char*, OneShot> kCodes[] = {
        {ORPFPOrvkitImageFilter_NAME_SkinEdit, &OrvImageShowerImpl::skinEditFilter},
        {ORPFPColorAdjustFilter_NAME_Adjust, &OrvImageShowerImpl::adjustFilter},
        {ORPFPOrvkitImageFilter_NAME_HDR, &OrvImageShowerImpl::hdrFilter},
        {ORPFPOrvkitImageFilter_NAME_Vignette, &OrvImageShowerImpl::vignetteFilter},
        {ORPFPOrvkitImageFilter_NAME_Aperture, &OrvImageShowerImpl::apertureFilter},
        {ORPFPOrvkitImageFilter_NAME_HolyLight, &OrvImageShowerImpl::holyLightFilter},
        {ORPFPOrvkitImageFilter_NAME_Sharpen, &OrvImageShowerImpl::sharpenFilter},
        {ORPFPOrvkitImageFilter_NAME_Gaussian, &OrvImageShowerImpl::blurFilter},
    };
    if (*code == kNormal) return image;
    for (const auto& [name, render] : kCodes) {
        if (*code == name) return render(image, params);
    }
    return result;
}

gfx::ImagePtr OrvImageShowerImpl::imageFilter(const gfx::ImagePtr& image, const Params& params) {
    const std::string name = params ? params->code() : std::string();
    if (name == kNormal) return image;
    // The look runs with its own defaults; the parameters only name it.
    return runOneFilter(image, kOneShotFirst, ORPFPOrvkitImageFilter_TYPE_NAME, name, nullptr);
}

gfx::ImagePtr OrvImageShowerImpl::blurFilter(const gfx::ImagePtr& image, const Params& params) {
    if (!image || !params) return nullptr;
    return runOneFilter(image, kOneShotFirst, ORPFPOrvkitImageFilter_TYPE_NAME,
                        ORPFPOrvkitImageFilter_NAME_Gaussian, nullptr);
}

gfx::ImagePtr OrvImageShowerImpl::apertureFilter(const gfx::ImagePtr& image, const Params& params) {
    if (!image || !params) return nullptr;
    return runOneFilter(image, kOneShotFirst, ORPFPOrvkitImageFilter_TYPE_NAME,
                        ORPFPOrvkitImageFilter_NAME_Aperture,
                        apertureBuilder(*params)->makeProperty());
}

gfx::ImagePtr OrvImageShowerImpl::holyLightFilter(const gfx::ImagePtr& image,
                                                  const Params& params) {
    if (!image || !params) return nullptr;
    return runOneFilter(image, kOneShotFirst, ORPFPOrvkitImageFilter_TYPE_NAME,
                        ORPFPOrvkitImageFilter_NAME_HolyLight,
                        holyLightBuilder(*params)->makeProperty());
}

gfx::ImagePtr OrvImageShowerImpl::sharpenFilter(const gfx::ImagePtr& image, const Params& params) {
    if (!image || !params) return nullptr;
    return runOneFilter(image, kOneShotFirst, ORPFPOrvkitImageFilter_TYPE_NAME,
                        ORPFPOrvkitImageFilter_NAME_Sharpen,
                        sharpenBuilder(*params)->makeProperty());
}

gfx::ImagePtr OrvImageShowerImpl::hdrFilter(const gfx::ImagePtr& image, const Params& params) {
    if (!image || !params) return nullptr;
    return runOneFilter(image, kOneShotLate, ORPFPOrvkitImageFilter_TYPE_NAME,
                        ORPFPOrvkitImageFilter_NAME_HDR, hdrBuilder(*params)->makeProperty());
}

gfx::ImagePtr OrvImageShowerImpl::vignetteFilter(const gfx::ImagePtr& image, const Params& params) {
    if (!image || !params) return nullptr;
    return runOneFilter(image, kOneShotLate, ORPFPOrvkitImageFilter_TYPE_NAME,
                        ORPFPOrvkitImageFilter_NAME_Vignette,
                        vignetteBuilder(*params)->makeProperty());
}

gfx::ImagePtr OrvImageShowerImpl::adjustFilter(const gfx::ImagePtr& image, const Params& params) {
    if (!image || !params) return nullptr;
    return runOneFilter(image, kOneShotLate, ORPFPColorAdjustFilter_TYPE_NAME, std::nullopt,
                        adjustBuilder(*params)->makeProperty());
}

gfx::ImagePtr OrvImageShowerImpl::skinEditFilter(const gfx::ImagePtr& image, const Params& params) {
    if (!image || !params) return nullptr;
    auto skin = rt::make<SkinBuilder>();
    auto plastic = rt::make<PlasticBuilder>();
    for (const auto& arg : params->args()) routeSkinArg(skin.get(), plastic.get(), *arg);
    return ORPFilterPipe::runOnce(image, [&](ORPFilterPipe& pipe) {
        auto skinFilter = makeFilter(pipe, ORPFPOrvkitImageFilter_TYPE_NAME,
                                     ORPFPOrvkitImageFilter_NAME_SkinHazy);
        auto plasticFilter =
            makeFilter(pipe, ORPFPOrvkitFaceEditPlasticFilter_TYPE_NAME, std::nullopt);
        pipe.addFilter(skinFilter, kOneShotSkin);
        pipe.addFilter(plasticFilter, kOneShotPlastic);
        send(skinFilter, skin->makeProperty());
        send(plasticFilter, plastic->makeProperty());
    });
}

gfx::ImagePtr OrvImageShowerImpl::autoColorAnalysis(
    const gfx::ImagePtr& image, const std::shared_ptr<OrvNKImageColorArgument>& args) {
    return orvColorCorrectedImage(image, args);
}
