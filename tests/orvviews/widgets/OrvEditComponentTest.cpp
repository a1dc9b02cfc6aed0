#include <gtest/gtest.h>

#include "frameworks/core/OrvResult.h"
#include "frameworks/core/OrvStatistics.h"
#include "orvviews/OrvAlbumComponentBase.h"
#include "orvviews/OrvAlbumMultipleComponentBase.h"
#include "orvviews/OrvPhotoEditComponentBase.h"
#include "orvviews/OrvPhotoEditMultipleComponentBase.h"
#include "orvviews/views/OrvViewController.h"
#include "platform/rt/Error.h"

namespace {

class CountingController : public OrvViewController {
  public:
    int dismissals = 0;
    void dismissModalViewControllerAnimated(bool animated) override { ++dismissals; }
};

struct Call {
    std::shared_ptr<OrvResult> result;
    std::shared_ptr<orv::rt::Error> error;
    std::shared_ptr<ui::ViewController> controller;
};

TEST(OrvEditComponent, NotifyDismissesFirstThenCallsBackEachTime) {
    std::vector<Call> calls;
    auto controller = orv::rt::make<CountingController>();
    int dismissalsSeenByCallback = -1;
    auto component = OrvEditComponent::initWithSourceController<OrvEditComponent>(
        nullptr, [&](auto result, auto error, auto c) {
            dismissalsSeenByCallback = controller->dismissals;
            calls.push_back({result, error, c});
        });
    component->setAutoDismissWhenCompelted(true);

    auto result = orv::rt::make<OrvResult>();
    component->notifyResult(result, nullptr, controller);
    component->notifyResult(result, nullptr, controller);
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(dismissalsSeenByCallback, 2);
    EXPECT_EQ(calls[0].result, result);
    EXPECT_TRUE(controller->isBacked);
}

TEST(OrvEditComponent, NilControllerOnlyCallsBackAndNilBlockOnlyDismisses) {
    int callbacks = 0;
    auto component = OrvEditComponent::initWithSourceController<OrvEditComponent>(
        nullptr, [&](auto, auto, auto) { ++callbacks; });
    component->setAutoDismissWhenCompelted(true);
    component->notifyResult(nullptr, nullptr, nullptr);
    EXPECT_EQ(callbacks, 1);

    auto controller = orv::rt::make<CountingController>();
    component->setCallbackBlock(nullptr);
    component->notifyResult(nullptr, nullptr, controller);
    EXPECT_EQ(controller->dismissals, 1);
}

TEST(OrvEditComponent, ErrorRoadReordersItsArguments) {
    Call seen;
    auto component = OrvEditComponent::initWithSourceController<OrvEditComponent>(
        nullptr, [&](auto result, auto error, auto controller) {
            seen = {result, error, controller};
        });
    auto controller = orv::rt::make<CountingController>();
    auto result = orv::rt::make<OrvResult>();
    auto error = orv::rt::Error::errorWithDomain("test", 7);
    component->onComponent(controller, result, error);
    EXPECT_EQ(seen.controller, controller);
    EXPECT_EQ(seen.result, result);
    EXPECT_EQ(seen.error, error);
    EXPECT_EQ(controller->dismissals, 0);
}

class MyAvatarPicker : public OrvAlbumComponentBase {
    ORV_DECLARE_CLASS(MyAvatarPicker)
};
ORV_DEFINE_CLASS(MyAvatarPicker, OrvAlbumComponentBase)

class LOUDAVATARPicker : public OrvAlbumComponentBase {
    ORV_DECLARE_CLASS(LOUDAVATARPicker)
};
ORV_DEFINE_CLASS(LOUDAVATARPicker, OrvAlbumComponentBase)

TEST(OrvEditComponent, BasesCountTheirOwnIds) {
    OrvStatistics::resetForTesting();
    orv::rt::make<OrvPhotoEditComponentBase>();
    orv::rt::make<OrvPhotoEditMultipleComponentBase>();
    orv::rt::make<OrvAlbumComponentBase>();
    orv::rt::make<OrvAlbumMultipleComponentBase>();
    orv::rt::make<MyAvatarPicker>();
    orv::rt::make<LOUDAVATARPicker>();
    const auto counts = OrvStatistics::pendingCounts();
    EXPECT_EQ(counts.at(0x400000), 1);
    EXPECT_EQ(counts.at(0x406000), 1);
    EXPECT_EQ(counts.at(0x200000), 2);  // the plain base and the capitals-only name
    EXPECT_EQ(counts.at(0x200001), 1);
    EXPECT_EQ(counts.at(0x300000), 1);
}

}  // namespace
