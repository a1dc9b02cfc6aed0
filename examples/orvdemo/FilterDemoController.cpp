#include "examples/orvdemo/FilterDemoController.h"

#include "platform/ui/Label.h"

namespace orvdemo {

ORV_DEFINE_CLASS(FilterDemoController, OrvViewController)

void FilterDemoController::viewDidLoad() {
    OrvViewController::viewDidLoad();
    const gfx::Rect bounds = view()->bounds();
    view()->setBackgroundColor(gfx::Color::rgb(0.13, 0.14, 0.18));

    auto title = ui::makeView<ui::Label>({20, 40, bounds.size.width - 40, 36});
    title->setText("OrvViews · 滤镜 Filters");
    title->setFont(gfx::Font::boldSystemFont(22));
    title->setTextColor(gfx::Color::whiteColor());
    title->setTextAlignment(gfx::TextAlignment::Center);
    view()->addSubview(title);

    photoView_ = ui::makeView<ui::View>({0, 90, bounds.size.width, bounds.size.height - 90});
    view()->addSubview(photoView_);
    shower_ = rt::make<OrvImageShowerImpl>();
    shower_->initWithRootView(photoView_);
    shower_->setDisplayBackgroundColor(gfx::Color::rgb(0.13, 0.14, 0.18));
    shower_->setImage(photo_, 0);
    params_ = shower_->changeFilter(filterCode_, nullptr);

    configView_ =
        ui::makeView<OrvFilterConfigView>({0, bounds.size.height - 250, bounds.size.width, 250});
    view()->addSubview(configView_);
    configView_->setFilterParams(params_);
}

}  // namespace orvdemo
