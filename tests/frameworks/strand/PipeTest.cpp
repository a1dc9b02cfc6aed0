#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <thread>
#include <vector>

#include "frameworks/strand/ORPFPColorAdjustFilter_PropertyBuilder.h"
#include "frameworks/strand/ORPFPColorCorrectionFilter_PropertyBuilder.h"
#include "frameworks/strand/ORPFPConstants.h"
#include "frameworks/strand/ORPFPOrvkitImageFilter_PropertyBuilder.h"
#include "frameworks/strand/ORPFPOrvkitImageFilter_VignettePropertyBuilder.h"
#include "frameworks/strand/ORPFilterPipe.h"
#include "frameworks/strand/VimraParameters.h"
#include "frameworks/strand/kernels/AspectCrop.h"
#include "frameworks/strand/kernels/LookCatalogue.h"
#include "frameworks/strand/kernels/ParallelRows.h"
#include "frameworks/strand/kernels/Vignette.h"

namespace {

using orv::strand::ColorAdjustSettings;
using orv::strand::ColorCorrectionSettings;
using orv::strand::LookSettings;

class Recorder : public VimraParametersListener {
  public:
    void onVimraParametersUpdate(long model, const std::string& code,
                                 const std::shared_ptr<VimraParameterArg>& arg) override {
        heard.push_back(std::to_string(model) + " " + code + " " + arg->key());
    }
    std::vector<std::string> heard;
};

TEST(VimraParameters, PrecentIsThePlaceInTheRangeAndTellsTheListener) {
    auto params = VimraParameters::parameterWithCode("_IECAdjust", 14);
    EXPECT_FALSE(params->isInited());
    params->appendFloatArgWithKey("brightness", 0.5, -1, 1);
    params->appendFloatArgWithKey("contrast", 0.25);
    EXPECT_TRUE(params->isInited());
    auto brightness = params->argWithKey("brightness");
    auto contrast = params->argWithKey("contrast");
    EXPECT_DOUBLE_EQ(brightness->precent(), 0.75);
    EXPECT_DOUBLE_EQ(contrast->precent(), 0.25);  // the default range is 0 to 1

    auto recorder = std::make_shared<Recorder>();
    params->setListener(recorder);
    brightness->setPrecent(0.25);
    EXPECT_DOUBLE_EQ(brightness->value(), -0.5);
    brightness->setPrecent(7);
    EXPECT_DOUBLE_EQ(brightness->value(), 1);
    params->stepArgWithKey("contrast", -0.5);
    EXPECT_DOUBLE_EQ(contrast->value(), 0);
    EXPECT_EQ(recorder->heard,
              (std::vector<std::string>{"14 _IECAdjust brightness", "14 _IECAdjust brightness",
                                        "14 _IECAdjust contrast"}));

    // Resets go back to the appended values and stay quiet.
    params->resetWithKey("brightness");
    EXPECT_DOUBLE_EQ(brightness->value(), 0.5);
    EXPECT_DOUBLE_EQ(contrast->value(), 0);
    params->reset();
    EXPECT_DOUBLE_EQ(contrast->value(), 0.25);
    EXPECT_EQ(recorder->heard.size(), 3u);

    // An empty range has its place at 0; a listener that is gone is not called.
    params->appendFloatArgWithKey("flat", 3, 3, 3);
    EXPECT_EQ(params->argWithKey("flat")->precent(), 0);
    recorder.reset();
    params->setArgWithKey("flat", 0.5);
    EXPECT_EQ(params->argWithKey("flat")->value(), 3);
}

TEST(VimraParameters, TheIndexFormInsertsAndANegativeIndexAppends) {
    auto params = VimraParameters::parameterWithCode("_IESSkinEdit", 14);
    params->appendFloatArgWithKey("smoothing", 0.5, -1);
    params->appendFloatArgWithKey("whitening", 0.5, 9);
    params->appendFloatArgWithKey("retouch", 0.5, 0);
    params->appendFloatArgWithKey("ruddy", 0.5, 2);
    EXPECT_EQ(params->argKeys(),
              (std::vector<std::string>{"retouch", "smoothing", "ruddy", "whitening"}));
}

TEST(PropertyBuilders, MakeTheSettingsOfTheirItems) {
    auto adjust = rt::make<ORPFPColorAdjustFilter_PropertyBuilder>();
    using Item = ORPFPColorAdjustFilter_PropertyItem;
    adjust->items() = {Item::init(ORPFPColorAdjustFilter_PROP_TYPE_WhiteBalance, 0.1f, 0.2f),
                       Item::init(ORPFPColorAdjustFilter_PROP_TYPE_HighlightShadow, 0.3f, -0.4f),
                       Item::init(ORPFPColorAdjustFilter_PROP_TYPE_Saturation, -1.0f), nullptr};
    const ORPFPProperty adjusted = adjust->makeProperty();
    const auto* s = ORPFPPropertyOf<ColorAdjustSettings>::in(adjusted);
    ASSERT_NE(s, nullptr);
    EXPECT_EQ((std::array{s->temperature, s->tint, s->highlights, s->shadows, s->saturation,
                          s->brightness}),
              (std::array{0.1f, 0.2f, 0.3f, -0.4f, -1.0f, 0.0f}));

    auto correction = rt::make<ORPFPColorCorrectionFilter_PropertyBuilder>();
    for (size_t i = 0; i < correction->args().size(); ++i) correction->args()[i] = 10.0 + i;
    const ORPFPProperty corrected = correction->makeProperty();
    const auto* c = ORPFPPropertyOf<ColorCorrectionSettings>::in(corrected);
    ASSERT_NE(c, nullptr);
    EXPECT_EQ((std::array{c->maxR, c->maxY, c->minR, c->minY, c->midR, c->midB}),
              (std::array{10.0f, 13.0f, 14.0f, 17.0f, 18.0f, 20.0f}));

    auto look = ORPFPOrvkitImageFilter_PropertyBuilder::initWithProperty(
        ORPFPPropertyOf<LookSettings>::make({{"strength", 0.7}}));
    EXPECT_EQ(look->propertyDic(), (LookSettings{{"strength", 0.7}}));
    EXPECT_TRUE(
        ORPFPOrvkitImageFilter_PropertyBuilder::initWithProperty(adjusted)->propertyDic().empty());
}

gfx::BitmapPtr gradient(int width, int height) {
    auto bitmap = std::make_shared<gfx::Bitmap>(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            uint8_t* p = bitmap->mutableRow(y) + 4 * x;
            p[0] = static_cast<uint8_t>(255 * x / width);
            p[1] = static_cast<uint8_t>(255 * y / height);
            p[2] = 128;
            p[3] = 255;
        }
    }
    return bitmap;
}

bool samePixels(const gfx::Bitmap& a, const gfx::Bitmap& b) {
    return a.width() == b.width() && a.height() == b.height() &&
           std::equal(a.data(), a.data() + a.byteCount(), b.data());
}

class FilterPipe : public ::testing::Test {
  protected:
    void SetUp() override {
        pipe = rt::make<ORPFilterPipe>();
        pipe->open();
        image = ORPFPImage::withBitmap(gradient(90, 40));
    }

    std::shared_ptr<ORPFPFilter> imageFilter(const std::string& name) {
        auto filter = ORPFPFilter::init(pipe->getContext(), ORPFPOrvkitImageFilter_TYPE_NAME);
        auto config = rt::make<ORPConfig>();
        config->setString(name, ORPFPOrvkitImageFilter_CONFIG_NAME);
        filter->setConfig(config);
        return filter;
    }
    std::shared_ptr<ORPFPFilter> crop(double ratio) {
        auto filter = imageFilter(ORPFPOrvkitImageFilter_NAME_AspectCrop);
        filter->setProperty(ORPFPPropertyOf<LookSettings>::make({{"ratio", ratio}}),
                            ORPFPOrvkitImageFilter_PROP_PARAM);
        return filter;
    }
    std::shared_ptr<ORPFPFilter> vignette() {
        auto builder = rt::make<ORPFPOrvkitImageFilter_VignettePropertyBuilder>();
        builder->setStart(0.2f);
        auto filter = imageFilter(ORPFPOrvkitImageFilter_NAME_Vignette);
        filter->setProperty(builder->makeProperty(), ORPFPOrvkitImageFilter_PROP_PARAM);
        return filter;
    }

    std::shared_ptr<ORPFilterPipe> pipe;
    std::shared_ptr<ORPFPImage> image;
};

TEST_F(FilterPipe, AppliesTheFiltersInOrderOfPosition) {
    pipe->addFilter(vignette(), 12);
    pipe->addFilter(crop(1), 3);
    auto out = pipe->process(image);
    orv::strand::VignetteSettings settings;
    settings.start = 0.2f;
    auto expected = orv::strand::Vignette::apply(
        *orv::strand::AspectCrop::apply(*image->bitmap(), 1), settings);
    ASSERT_TRUE(out && out->bitmap());
    EXPECT_EQ(out->bitmap()->width(), 40);
    EXPECT_TRUE(samePixels(*out->bitmap(), *expected));

    // Another filter at an occupied position replaces the one there.
    pipe->addFilter(crop(2), 12);
    out = pipe->process(image);
    EXPECT_TRUE(samePixels(
        *out->bitmap(),
        *orv::strand::AspectCrop::apply(*orv::strand::AspectCrop::apply(*image->bitmap(), 1), 2)));
    pipe->deleteFilterAt(3);
    EXPECT_EQ(pipe->getFilter(3), nullptr);
    EXPECT_EQ(pipe->process(image)->bitmap()->width(), 80);
}

TEST_F(FilterPipe, PassesThroughWhatItCannotFilter) {
    // An unknown name, an unknown type and a property of the wrong kind leave the pixels.
    pipe->addFilter(imageFilter("no such look"), 1);
    pipe->addFilter(ORPFPFilter::init(pipe->getContext(), "no such type"), 2);
    auto wrongKind = imageFilter(ORPFPOrvkitImageFilter_NAME_Vignette);
    wrongKind->setProperty(ORPFPPropertyOf<LookSettings>::make({}),
                           ORPFPOrvkitImageFilter_PROP_PARAM);
    pipe->addFilter(wrongKind, 3);
    EXPECT_EQ(pipe->process(image), image);

    pipe->addFilter(crop(1), 4);
    EXPECT_EQ(pipe->process(ORPFPImage::withBitmap(std::make_shared<gfx::Bitmap>(0, 0)))
                  ->bitmap()
                  ->width(),
              0);
    EXPECT_EQ(pipe->process(ORPFPImage::initWithUIImage(gfx::Image::empty()))->bitmap(), nullptr);
    pipe->close();
    EXPECT_EQ(pipe->getFilter(4), nullptr);
    pipe->addFilter(crop(1), 4);
    EXPECT_EQ(pipe->process(image), image);  // closed
}

TEST_F(FilterPipe, ALookFilterPublishesItsDefaults) {
    auto catalogue = orv::strand::LookCatalogue::shared();
    ASSERT_FALSE(catalogue->entries().empty());
    const std::string code = catalogue->entries().front().code;
    auto filter = imageFilter(code);
    auto builder = ORPFPOrvkitImageFilter_PropertyBuilder::initWithProperty(
        filter->getProperty(ORPFPOrvkitImageFilter_PROP_PARAM));
    EXPECT_EQ(builder->propertyDic().count("strength"), 1u);
    EXPECT_EQ(imageFilter("no such look")->getProperty(ORPFPOrvkitImageFilter_PROP_PARAM), nullptr);

    pipe->addFilter(filter, 1);
    EXPECT_FALSE(samePixels(*pipe->process(image)->bitmap(), *image->bitmap()));
}

TEST(ORPFPImage, TakesThePictureUprightInPremultipliedRGBA) {
    std::vector<uint8_t> bgra{10, 20, 30, 255, 40, 50, 60, 255};  // B, G, R, A; 2 × 1
    auto bitmap =
        std::make_shared<gfx::Bitmap>(2, 1, gfx::PixelFormat::BGRA8888Premultiplied, 8, bgra);
    auto image = ORPFPImage::initWithUIImage(
        gfx::Image::withBitmap(bitmap, 2, gfx::ImageOrientation::Right));
    const auto& b = image->bitmap();
    ASSERT_TRUE(b);
    EXPECT_EQ(b->format(), gfx::PixelFormat::RGBA8888Premultiplied);
    EXPECT_EQ(b->width(), 1);
    EXPECT_EQ(b->height(), 2);
    EXPECT_EQ(b->pixel(0, 0)[0], 30);  // turned a quarter clockwise: the left pixel on top
    EXPECT_EQ(b->pixel(0, 1)[2], 40);
    EXPECT_EQ(image->getUIImage()->scale(), 2);
}

TEST(ParallelRows, CoversEveryRowOnceFromManyThreadsAtOnce) {
    constexpr int kRows = 1000;
    auto cover = [](std::array<std::atomic<int>, kRows>& hits) {
        orv::strand::ParallelRows::run(
            kRows,
            [&](int begin, int end) {
                for (int y = begin; y < end; ++y) {
                    // A nested call runs inline over its own rows.
                    orv::strand::ParallelRows::run(
                        3, [&](int b, int e) { hits[y] += e - b; }, 1);
                }
            },
            7);
    };
    std::vector<std::array<std::atomic<int>, kRows>> hits(4);
    std::vector<std::thread> threads;
    for (auto& h : hits) threads.emplace_back([&] { cover(h); });
    for (auto& t : threads) t.join();
    for (const auto& h : hits) {
        for (int y = 0; y < kRows; ++y) ASSERT_EQ(h[y].load(), 3) << "row " << y;
    }
    int calls = 0;
    orv::strand::ParallelRows::run(0, [&](int, int) { ++calls; });
    EXPECT_EQ(calls, 0);
}

}  // namespace
