#include <gtest/gtest.h>

#include "orvviews/widgets/OrvImageResultController.h"
#include "orvviews/widgets/OrvImageResultOptions.h"
#include "platform/rt/Exception.h"

namespace {

class SampleController : public OrvImageResultController {
    ORV_DECLARE_CLASS(SampleController)
};
ORV_DEFINE_CLASS(SampleController, OrvImageResultController)

class SampleSubController : public SampleController {
    ORV_DECLARE_CLASS(SampleSubController)
};
ORV_DEFINE_CLASS(SampleSubController, SampleController)

class SampleOptions : public OrvImageResultOptions {
    ORV_DECLARE_CLASS(SampleOptions)
  public:
    const orv::rt::Class* defaultComponentClazz() const override {
        return SampleController::staticClass();
    }
};
ORV_DEFINE_CLASS(SampleOptions, OrvImageResultOptions)

std::string reasonOf(const std::function<void()>& f) {
    try {
        f();
    } catch (const orv::rt::Exception& e) {
        return e.reason();
    }
    return "no exception";
}

TEST(OrvOptions, BuildGivesTheReceivingClassWithItsDefaults) {
    auto options = OrvOptions::build<SampleOptions>();
    EXPECT_EQ(options->getClass(), SampleOptions::staticClass());
    EXPECT_DOUBLE_EQ(options->outputCompress(), 0.95);
    EXPECT_FALSE(options->saveToTemp());
    EXPECT_FALSE(options->showResultPreview());
    EXPECT_FALSE(options->isAutoRemoveTemp());
}

TEST(OrvOptions, BaseWithoutDefaultClassRaises) {
    auto options = OrvOptions::build<OrvOptions>();
    EXPECT_EQ(reasonOf([&] { options->componentClazz(); }),
              "You need overwrite -(Class)defaultComponentClazz;");
    // No default, so no class can be accepted either.
    EXPECT_EQ(reasonOf([&] { options->setComponentClazz(SampleController::staticClass()); }),
              "You need overwrite -(Class)defaultComponentClazz;");
}

TEST(OrvOptions, ComponentClassKeepsItsFamily) {
    auto options = OrvOptions::build<SampleOptions>();
    EXPECT_EQ(options->componentClazz(), SampleController::staticClass());

    options->setComponentClazz(SampleSubController::staticClass());
    options->setComponentClazz(nullptr);
    EXPECT_EQ(options->componentClazz(), SampleSubController::staticClass());

    EXPECT_EQ(reasonOf([&] { options->setComponentClazz(OrvResultViewController::staticClass()); }),
              "The options of componentClazz is not kind of class: SampleController");
    EXPECT_EQ(options->componentClazz(), SampleSubController::staticClass());
}

TEST(OrvOptions, OutputCompressIsRepairedWhenRead) {
    auto options = OrvOptions::build<SampleOptions>();
    options->setOutputCompress(1.5);
    EXPECT_DOUBLE_EQ(options->outputCompress(), 1.0);
    EXPECT_DOUBLE_EQ(options->outputCompress(), 1.0);
    options->setOutputCompress(-0.2);
    EXPECT_DOUBLE_EQ(options->outputCompress(), 0.0);
}

TEST(OrvOptions, ComponentInstanceCarriesEveryField) {
    auto options = OrvOptions::build<SampleOptions>();
    options->setComponentClazz(SampleSubController::staticClass());
    options->setSaveToTemp(true);
    options->setSaveToAlbum(true);
    options->setSaveToAlbumName("Holidays");
    options->setOutputCompress(3);
    options->setShowResultPreview(true);
    options->setIsAutoRemoveTemp(true);

    auto controller = std::dynamic_pointer_cast<SampleSubController>(options->componentInstance());
    ASSERT_TRUE(controller);
    EXPECT_TRUE(controller->saveToTemp());
    EXPECT_TRUE(controller->saveToAlbum());
    EXPECT_EQ(controller->saveToAlbumName(), "Holidays");
    EXPECT_DOUBLE_EQ(controller->outputCompress(), 1.0);
    EXPECT_TRUE(controller->showResultPreview());
    EXPECT_TRUE(controller->isAutoRemoveTemp());
    EXPECT_FALSE(controller->isViewLoaded());
}

}  // namespace
