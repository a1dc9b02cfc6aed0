#include "orvviews/shower/OrvImageShowerImpl.h"

#include <gtest/gtest.h>

#include <vector>

#include "frameworks/strand/ORPFPConstants.h"
#include "frameworks/strand/kernels/LookCatalogue.h"

namespace {

using Params = std::shared_ptr<VimraParameters>;
using orv::strand::ColorAdjustSettings;
using orv::strand::SkinSettings;

gfx::ImagePtr makeImage(int width = 32, int height = 24) {
    auto bitmap = std::make_shared<gfx::Bitmap>(width, height);
    for (int y = 0; y < height; ++y) {
        uint8_t* row = bitmap->mutableRow(y);
        for (int x = 0; x < width; ++x) {
            row[4 * x] = static_cast<uint8_t>(40 + x * 180 / width);
            row[4 * x + 1] = static_cast<uint8_t>(30 + y * 200 / height);
            row[4 * x + 2] = static_cast<uint8_t>((x * 7 + y * 13) % 256);
            row[4 * x + 3] = 255;
        }
    }
    return gfx::Image::withBitmap(bitmap);
}

std::vector<uint8_t> pixelsOf(const gfx::BitmapPtr& bitmap) {
    if (!bitmap) return {};
    return {bitmap->data(), bitmap->data() + bitmap->byteCount()};
}

std::vector<uint8_t> pixelsOf(const gfx::ImagePtr& image) {
    return image ? pixelsOf(image->bitmap()) : std::vector<uint8_t>{};
}

Params toolParams(const char* code, std::vector<std::pair<const char*, double>> args = {}) {
    auto params = VimraParameters::parameterWithCode(code, 14);
    for (const auto& [key, value] : args) params->appendFloatArgWithKey(key, value);
    return params;
}

std::string firstLookCode() {
    const auto& entries = orv::strand::LookCatalogue::shared()->entries();
    return entries.empty() ? std::string() : entries.front().code;
}

class OrvImageShowerImplTest : public ::testing::Test {
  protected:
    void SetUp() override {
        root = ui::makeView<ui::View>({0, 0, 64, 48});
        root->addSubview(ui::makeView<ui::View>({0, 0, 10, 10}));  // a tool's own control
        shower = rt::makeWith<OrvImageShowerImpl>(
            [&](OrvImageShowerImpl& s) { s.initWithRootView(root); });
    }

    std::shared_ptr<ORPFPFilter> filterAt(long position) const {
        return shower->pipeline()->getFilter(position);
    }
    template <class Settings>
    const Settings* settingsAt(long position) const {
        auto filter = filterAt(position);
        return filter ? ORPFPPropertyOf<Settings>::in(
                            filter->getProperty(ORPFPOrvkitImageFilter_PROP_PARAM))
                      : nullptr;
    }
    const ORPFPImage* shown() const { return shower->displayView()->image().get(); }

    ui::View::Ptr root;
    std::shared_ptr<OrvImageShowerImpl> shower;
};

TEST_F(OrvImageShowerImplTest, DisplayViewFillsTheRootBehindItsControls) {
    auto view = shower->displayView();
    ASSERT_TRUE(view);
    EXPECT_EQ(root->subviews().front().get(), view.get());
    EXPECT_EQ(view->frame(), root->bounds());
    EXPECT_EQ(view->autoresizingMask(),
              ui::AutoresizingFlexibleWidth | ui::AutoresizingFlexibleHeight);
    shower->setDisplayBackgroundColor(gfx::Color::red());
    EXPECT_EQ(view->backgroundColor(), gfx::Color::red());

    shower->update();  // no image yet: nothing is drawn
    EXPECT_FALSE(view->image());
}

TEST_F(OrvImageShowerImplTest, ToolBranchesReturnANewObjectWithTheirOwnArguments) {
    auto caller = toolParams(ORPFPOrvkitImageFilter_NAME_HolyLight, {{"ignored", 0.9}});
    auto holy = shower->changeFilter(ORPFPOrvkitImageFilter_NAME_HolyLight, caller);
    ASSERT_TRUE(holy);
    EXPECT_NE(holy, caller);
    EXPECT_EQ(holy->argKeys(), (std::vector<std::string>{"mixied", "brightness"}));
    EXPECT_EQ(holy->argWithKey("brightness")->value(), 0.5);
    EXPECT_EQ(holy->listener().get(), shower.get());
    EXPECT_EQ(filterAt(19)->name(), ORPFPOrvkitImageFilter_NAME_HolyLight);

    auto adjustCaller = toolParams(ORPFPColorAdjustFilter_NAME_Adjust);
    adjustCaller->appendFloatArgWithKey("brightness", 0.25, -1, 1);
    adjustCaller->appendFloatArgWithKey("temperature", -0.5, -1, 1);
    auto adjust = shower->changeFilter(ORPFPColorAdjustFilter_NAME_Adjust, adjustCaller);
    EXPECT_EQ(adjust->argWithKey("temperature")->minFloatValue(), -1);  // ranges kept
    const auto* settings = settingsAt<ColorAdjustSettings>(19);
    ASSERT_TRUE(settings);
    EXPECT_FLOAT_EQ(settings->brightness, 0.25f);
    EXPECT_FLOAT_EQ(settings->temperature, -0.5f);
    EXPECT_EQ(settings->contrast, 0);

    // Models without a filter here change nothing.
    EXPECT_FALSE(shower->changeFilter("_IECHdr", VimraParameters::parameterWithCode("_IECHdr", 0)));
    EXPECT_FALSE(shower->changeFilter("_IECHdr", VimraParameters::parameterWithCode("_IECHdr", 7)));
    EXPECT_FALSE(filterAt(14));
}

TEST_F(OrvImageShowerImplTest, GaussianAtTheToolModelBuildsNothing) {
    auto result =
        shower->changeFilter(ORPFPOrvkitImageFilter_NAME_Gaussian,
                             toolParams(ORPFPOrvkitImageFilter_NAME_Gaussian, {{"x", 1}}));
    ASSERT_TRUE(result);
    EXPECT_TRUE(result->args().empty());
    EXPECT_FALSE(result->listener());
    EXPECT_FALSE(filterAt(19));
}

TEST_F(OrvImageShowerImplTest, NormalRemovesTheFilterBarLook) {
    const std::string code = firstLookCode();
    ASSERT_FALSE(code.empty()) << "the look catalogue is missing";
    auto look = shower->changeFilter(code, nullptr);
    ASSERT_TRUE(look && filterAt(11));
    EXPECT_EQ(look->model(), 3);
    EXPECT_TRUE(look->argWithKey("strength"));
    EXPECT_EQ(look->listener().get(), shower.get());

    auto normal = shower->changeFilter("Normal", nullptr);
    EXPECT_FALSE(filterAt(11));
    EXPECT_TRUE(normal->args().empty());
    EXPECT_FALSE(normal->listener());
}

TEST_F(OrvImageShowerImplTest, SliderMovesRenderAndNilArgumentsDoNot) {
    auto image = makeImage();
    shower->setImage(image, 0);
    EXPECT_EQ(pixelsOf(shown()->bitmap()), pixelsOf(image));

    auto vignette = shower->changeFilter(ORPFPOrvkitImageFilter_NAME_Vignette,
                                         toolParams(ORPFPOrvkitImageFilter_NAME_Vignette));
    const ORPFPImage* before = shown();
    vignette->argWithKey("vignette")->setPrecent(0);
    ASSERT_NE(shown(), before);
    EXPECT_NE(pixelsOf(shown()->bitmap()), pixelsOf(image));  // the corners darkened
    EXPECT_FLOAT_EQ(settingsAt<orv::strand::VignetteSettings>(19)->start, 0);

    const ORPFPImage* after = shown();
    shower->onVimraParametersUpdate(14, ORPFPOrvkitImageFilter_NAME_Vignette, nullptr);
    EXPECT_EQ(shown(), after);

    // A new image shows unfiltered until the next render.
    shower->setImage(image, 3);
    EXPECT_EQ(pixelsOf(shown()->bitmap()), pixelsOf(image));
}

TEST_F(OrvImageShowerImplTest, VignetteTakesAnyKeySharpenAndAdjustReadTheirs) {
    const char* vignette = ORPFPOrvkitImageFilter_NAME_Vignette;
    shower->changeFilter(vignette, toolParams(vignette));
    shower->onVimraParametersUpdate(14, vignette, VimraParameterArg::argWithKey("other", 0.2));
    EXPECT_FLOAT_EQ(settingsAt<orv::strand::VignetteSettings>(19)->start, 0.2f);

    auto other = rt::makeWith<OrvImageShowerImpl>(
        [&](OrvImageShowerImpl& s) { s.initWithRootView(ui::makeView<ui::View>()); });
    const char* sharpen = ORPFPOrvkitImageFilter_NAME_Sharpen;
    other->changeFilter(sharpen, toolParams(sharpen));
    other->onVimraParametersUpdate(14, sharpen, VimraParameterArg::argWithKey("other", 0.2));
    auto sharpness = [&] {
        return ORPFPPropertyOf<orv::strand::SharpenSettings>::in(
                   other->pipeline()->getFilter(19)->getProperty(ORPFPOrvkitImageFilter_PROP_PARAM))
            ->sharpness;
    };
    EXPECT_FLOAT_EQ(sharpness(), 0.5f);
    other->onVimraParametersUpdate(14, sharpen, VimraParameterArg::argWithKey("sharpness", 0.8));
    EXPECT_FLOAT_EQ(sharpness(), 0.8f);

    // Adjust: a pair key replaces one value of its item, a single key its own item.
    auto adjust = rt::makeWith<OrvImageShowerImpl>(
        [&](OrvImageShowerImpl& s) { s.initWithRootView(ui::makeView<ui::View>()); });
    const char* code = ORPFPColorAdjustFilter_NAME_Adjust;
    adjust->changeFilter(code, toolParams(code, {{"temperature", 0.4}, {"contrast", 0.1}}));
    adjust->onVimraParametersUpdate(14, code, VimraParameterArg::argWithKey("tint", -0.3));
    adjust->onVimraParametersUpdate(14, code, VimraParameterArg::argWithKey("exposure", 0.6));
    const auto* settings = ORPFPPropertyOf<ColorAdjustSettings>::in(
        adjust->pipeline()->getFilter(19)->getProperty(ORPFPOrvkitImageFilter_PROP_PARAM));
    ASSERT_TRUE(settings);
    EXPECT_FLOAT_EQ(settings->temperature, 0.4f);
    EXPECT_FLOAT_EQ(settings->tint, -0.3f);
    EXPECT_FLOAT_EQ(settings->contrast, 0.1f);
    EXPECT_FLOAT_EQ(settings->exposure, 0.6f);
}

TEST_F(OrvImageShowerImplTest, RetouchResendsBothSkinProperties) {
    const char* code = ORPFPOrvkitImageFilter_NAME_SkinEdit;
    auto skin = shower->changeFilter(
        code, toolParams(code, {{"smoothing", 0.6}, {"eyeSize", 0.4}, {"retouch", 0.5}}));
    ASSERT_TRUE(skin->argWithKey("retouch"));
    ASSERT_TRUE(filterAt(15) && filterAt(13));
    EXPECT_FLOAT_EQ(settingsAt<SkinSettings>(15)->smoothing, 0.6f);

    filterAt(15)->setProperty(nullptr, ORPFPOrvkitImageFilter_PROP_PARAM);
    filterAt(13)->setProperty(nullptr, ORPFPOrvkitImageFilter_PROP_PARAM);
    skin->argWithKey("retouch")->setPrecent(1);
    ASSERT_TRUE(settingsAt<SkinSettings>(15));
    EXPECT_FLOAT_EQ(settingsAt<SkinSettings>(15)->smoothing, 0.6f);
    EXPECT_DOUBLE_EQ(settingsAt<orv::strand::PlasticSettings>(13)->eyeEnlarge, 0.4);
}

TEST_F(OrvImageShowerImplTest, DeallocClosesThePipeAndTearsTheViewDown) {
    shower->setImage(makeImage(), 0);
    shower->changeFilter(ORPFPOrvkitImageFilter_NAME_Sharpen,
                         toolParams(ORPFPOrvkitImageFilter_NAME_Sharpen));
    auto pipe = shower->pipeline();
    auto view = shower->displayView();
    shower.reset();
    EXPECT_FALSE(pipe->isOpen());
    EXPECT_FALSE(pipe->getFilter(19));
    EXPECT_FALSE(view->image());
}

TEST(OrvImageShowerImplOneShot, FilterImageFollowsTheCodeTable) {
    auto image = makeImage();
    EXPECT_FALSE(OrvImageShowerImpl::filterImage(nullptr, "Normal", nullptr));
    EXPECT_FALSE(OrvImageShowerImpl::filterImage(image, std::nullopt, nullptr));
    EXPECT_EQ(OrvImageShowerImpl::filterImage(image, "Normal", nullptr), image);
    EXPECT_EQ(OrvImageShowerImpl::filterImage(image, "Normal", toolParams("Normal")), image);
    EXPECT_FALSE(OrvImageShowerImpl::filterImage(image, "_IEBUnknown", toolParams("_IEBUnknown")));
    EXPECT_FALSE(OrvImageShowerImpl::hdrFilter(image, nullptr));

    // A plain look code without parameters runs the look at its defaults.
    const std::string look = firstLookCode();
    ASSERT_FALSE(look.empty()) << "the look catalogue is missing";
    auto looked = OrvImageShowerImpl::filterImage(image, look, nullptr);
    ASSERT_TRUE(looked);
    EXPECT_NE(pixelsOf(looked), pixelsOf(image));

    // HDR without parameters has strength 0, which leaves the picture as it was.
    const char* hdr = ORPFPOrvkitImageFilter_NAME_HDR;
    auto flat = OrvImageShowerImpl::filterImage(image, hdr, nullptr);
    ASSERT_TRUE(flat);
    EXPECT_NE(flat, image);
    EXPECT_EQ(pixelsOf(flat), pixelsOf(image));
    auto strong = OrvImageShowerImpl::filterImage(image, hdr, toolParams(hdr, {{"mixied", 1}}));
    EXPECT_NE(pixelsOf(strong), pixelsOf(image));
}

TEST(OrvImageShowerImplOneShot, AutoColorAnalysisAppliesTheLevels) {
    auto image = makeImage();
    EXPECT_FALSE(OrvImageShowerImpl::autoColorAnalysis(image, nullptr));
    auto levels = rt::make<OrvNKImageColorArgument>();
    levels->setMinR(60);
    levels->setMaxR(200);
    auto corrected = OrvImageShowerImpl::autoColorAnalysis(image, levels);
    ASSERT_TRUE(corrected && corrected->bitmap());
    // Red is stretched from 60..200 to the full range: the darkest red goes darker.
    EXPECT_LT(corrected->bitmap()->pixel(0, 0)[0], image->bitmap()->pixel(0, 0)[0]);
    EXPECT_EQ(corrected->bitmap()->pixel(5, 5)[3], 255);
}

}  // namespace
