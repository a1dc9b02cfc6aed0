#include "examples/orvdemo/PhotoDemoController.h"

#include "frameworks/core/OrvResult.h"
#include "platform/rt/Thread.h"
#include "platform/ui/Button.h"
#include "platform/ui/ImageView.h"
#include "platform/ui/Label.h"
#include "platform/ui/Layer.h"

namespace orvdemo {

ORV_DEFINE_CLASS(PhotoDemoController, OrvImageResultController)

void PhotoDemoController::viewDidLoad() {
    OrvImageResultController::viewDidLoad();
    std::weak_ptr<PhotoDemoController> weak = self<PhotoDemoController>();
    asyncLoadInputImageWithBlock([weak]() -> gfx::ImagePtr {
        auto me = weak.lock();
        return me ? me->inputImage() : nullptr;
    });
}

void PhotoDemoController::buildDefaultStyleView() {
    const gfx::Rect bounds = view()->bounds();
    const double width = bounds.size.width;
    titleLabel_ = ui::makeView<ui::Label>({20, 40, width - 40, 36});
    titleLabel_->setText("OrvViews · 照片 Photo");
    titleLabel_->setFont(gfx::Font::boldSystemFont(22));
    titleLabel_->setTextColor(gfx::Color::whiteColor());
    titleLabel_->setTextAlignment(gfx::TextAlignment::Center);

    imageView_ = ui::makeView<ui::ImageView>({16, 90, width - 32, bounds.size.height - 220});
    imageView_->setContentMode(ui::ContentMode::ScaleAspectFit);

    doneButton_ = ui::Button::buttonWithType(0);
    doneButton_->setFrame({(width - 160) / 2, bounds.size.height - 100, 160, 48});
    doneButton_->setTitle("完成 Done", ui::ControlStateNormal);
    doneButton_->setTitleColor(gfx::Color::whiteColor(), ui::ControlStateNormal);
    doneButton_->setBackgroundColor(gfx::Color::rgb(0.16, 0.49, 0.98));
    doneButton_->layer().setCornerRadius(24);
    std::weak_ptr<PhotoDemoController> weak = self<PhotoDemoController>();
    doneButton_->addTarget(
        weak,
        [weak](ui::Control&, ui::Event*) {
            if (auto me = weak.lock()) me->onDone();
        },
        ui::ControlEventTouchUpInside);

    view()->addSubview(titleLabel_);
    view()->addSubview(imageView_);
    view()->addSubview(doneButton_);
    configDefaultStyleView(view());
}

void PhotoDemoController::configDefaultStyleView(const std::shared_ptr<ui::View>& view) {
    view->setBackgroundColor(gfx::Color::rgb(0.13, 0.14, 0.18));
}

void PhotoDemoController::loadedInputImage(const gfx::ImagePtr& image) {
    shownImage_ = image;
    imageView_->setImage(image);
}

void PhotoDemoController::onDone() {
    if (downloading || !shownImage_) return;
    auto me = self<PhotoDemoController>();
    rt::Thread::detach("photo-demo-edit", [me] {
        auto result = OrvResult::result();
        result->setImage(me->editedImage(me->loadOrginImage()));
        me->asyncProcessingIfNeedSave(result);
    });
}

void PhotoDemoController::notifyProcessingWithResult(const std::shared_ptr<OrvResult>& result) {
    if (auto delegate = delegate_.lock()) delegate->photoDemoControllerDidFinish(*this, result);
}

}  // namespace orvdemo
