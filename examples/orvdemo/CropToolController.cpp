#include "examples/orvdemo/CropToolController.h"

#include "examples/orvdemo/DemoStyle.h"
#include "frameworks/core/OrvLocalized.h"
#include "frameworks/core/OrvRatioType.h"

namespace orvdemo {

ORV_DEFINE_CLASS(CropToolController, OrvEditCuterControllerBase)

namespace {

// The demo offers the free crop and the common photo ratios, both ways round.
const std::vector<long> kRatios = {1, 2, 64, 8, 32, 4, 128};

std::string ratioTitle(long type) {
    switch (type) {
        case 1:
            return orvLocalized("orv_crop_free", "自由");
        case 2:
            return "1:1";
        case 4:
            return "2:3";
        case 8:
            return "3:4";
        case 16:
            return "9:16";
        case 32:
            return "3:2";
        case 64:
            return "4:3";
        case 128:
            return "16:9";
        default:
            return "?";
    }
}

}  // namespace

void CropToolController::init() {
    OrvEditCuterControllerBase::init();
    setRatioTypeList(kRatios);
}

void CropToolController::viewDidLoad() {
    OrvEditCuterControllerBase::viewDidLoad();
    const gfx::Size size = view()->bounds().size;
    view()->setBackgroundColor(DemoStyle::background());
    const double photoHeight = size.height - kTopBar - kRatioBar - kTurnBar;
    touchView_ = ui::makeView<OrvTouchImageView>({0, kTopBar, size.width, photoHeight});
    touchView_->setClipsToBounds(true);
    view()->addSubview(touchView_);
    buildTopBar(size.width);
    buildRatioBar(kTopBar + photoHeight, size.width);
    buildTurnBar(kTopBar + photoHeight + kRatioBar, size.width);
    std::weak_ptr<CropToolController> weak = self<CropToolController>();
    asyncLoadInputImageWithBlock([weak]() -> gfx::ImagePtr {
        auto me = weak.lock();
        return me ? me->inputImage() : nullptr;
    });
}

void CropToolController::buildTopBar(double width) {
    auto title = ui::makeView<ui::Label>({96, 0, width - 192, kTopBar});
    title->setText(orvLocalized("orv_edit_tool_cuter", "裁剪"));
    title->setFont(gfx::Font::boldSystemFont(18));
    title->setTextColor(gfx::Color::whiteColor());
    title->setTextAlignment(gfx::TextAlignment::Center);
    view()->addSubview(title);
    cancelButton_ = DemoStyle::button(orvLocalized("orv_nav_cancel", "取消"), {12, 11, 72, 34},
                                      DemoStyle::quiet(), {}, nullptr);
    std::weak_ptr<CropToolController> weak = self<CropToolController>();
    doneButton_ = DemoStyle::button(orvLocalized("orv_edit_apply", "应用"),
                                    {width - 84, 11, 72, 34}, DemoStyle::accent(), weak, [weak] {
                                        if (auto me = weak.lock()) me->onImageCompleteAtion();
                                    });
    view()->addSubview(cancelButton_);
    view()->addSubview(doneButton_);
}

void CropToolController::buildRatioBar(double top, double width) {
    std::weak_ptr<CropToolController> weak = self<CropToolController>();
    const auto types = getRatioTypes();
    const double step = (width - 12) / double(types.size());
    for (size_t i = 0; i < types.size(); ++i) {
        const long type = types[i];
        auto button =
            DemoStyle::button(ratioTitle(type), {6 + step * i + 2, top + 10, step - 4, 36},
                              DemoStyle::quiet(), weak, [weak, type] {
                                  if (auto me = weak.lock()) me->chooseRatioType(type);
                              });
        view()->addSubview(button);
        ratioButtons_[type] = button;
    }
}

void CropToolController::buildTurnBar(double top, double width) {
    std::weak_ptr<CropToolController> weak = self<CropToolController>();
    auto make = [&](const char* key, const char* text, double x, long change) {
        auto button = DemoStyle::button(orvLocalized(key, text), {x, top + 10, 104, 36},
                                        DemoStyle::quiet(), weak, [weak, change] {
                                            if (auto me = weak.lock())
                                                me->touchView_->changeImage(change);
                                        });
        view()->addSubview(button);
        return button;
    };
    const double gap = (width - 3 * 104) / 4;
    turnLeftButton_ = make("orv_crop_turn_left", "左转", gap, OrvTouchImageView::kTurnLeft);
    turnRightButton_ =
        make("orv_crop_turn_right", "右转", 2 * gap + 104, OrvTouchImageView::kTurnRight);
    mirrorButton_ =
        make("orv_crop_mirror", "镜像", 3 * gap + 208, OrvTouchImageView::kMirrorHorizontal);
}

std::shared_ptr<ui::Button> CropToolController::ratioButton(long type) const {
    auto found = ratioButtons_.find(type);
    return found == ratioButtons_.end() ? nullptr : found->second;
}

void CropToolController::loadedInputImage(const gfx::ImagePtr& image) {
    OrvEditCuterControllerBase::loadedInputImage(image);
    touchView_->setImage(image);
    chooseRatioType(currentRatioType());
}

void CropToolController::chooseRatioType(long type) {
    if (touchView_->isInAniming()) return;
    setCurrentRatioType(type);
    // The free crop (ratio 0) keeps the whole picture: no window.
    if (currentRatio() != touchView_->regionRatio()) touchView_->changeRegionRatio(currentRatio());
    for (const auto& [t, button] : ratioButtons_) {
        button->setBackgroundColor(t == type ? DemoStyle::accent() : DemoStyle::quiet());
    }
}

void CropToolController::notifyProcessingWithResult(const ResultPtr& result) {
    dismissHub();
    if (auto delegate = delegate_.lock()) delegate->onCropToolResult(*this, result);
}

}  // namespace orvdemo
