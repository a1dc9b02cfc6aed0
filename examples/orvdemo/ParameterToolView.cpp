#include "examples/orvdemo/ParameterToolView.h"

#include "examples/orvdemo/DemoStyle.h"
#include "frameworks/core/OrvLocalized.h"

namespace orvdemo {

ORV_DEFINE_CLASS(ParameterToolView, ui::View, OrvFilterResultViewInterface)

namespace {

constexpr double kBarHeight = 56;
constexpr double kPanelHeight = 110;

}  // namespace

void ParameterToolView::initWithFrame(const gfx::Rect& frame) {
    ui::View::initWithFrame(frame);
    setBackgroundColor(DemoStyle::background());
    titleLabel_ = ui::makeView<ui::Label>({});
    titleLabel_->setTextColor(gfx::Color::whiteColor());
    titleLabel_->setFont(gfx::Font::boldSystemFont(18));
    titleLabel_->setTextAlignment(gfx::TextAlignment::Center);
    surface_ = ui::makeView<ui::View>({});
    surface_->setBackgroundColor(DemoStyle::background());
    surface_->setClipsToBounds(true);
    config_ = ui::makeView<ParameterConfigView>({});
    // The buttons' actions are the tool's; whoever opens the tool connects them.
    cancelButton_ = DemoStyle::button(orvLocalized("orv_nav_cancel", "取消"), {0, 0, 72, 34},
                                      DemoStyle::quiet(), {}, nullptr);
    doneButton_ = DemoStyle::button(orvLocalized("orv_edit_apply", "应用"), {0, 0, 72, 34},
                                    DemoStyle::accent(), {}, nullptr);
    for (const auto& view : std::initializer_list<std::shared_ptr<ui::View>>{
             surface_, config_, titleLabel_, cancelButton_, doneButton_}) {
        addSubview(view);
    }
}

void ParameterToolView::layoutSubviews() {
    const gfx::Size size = bounds().size;
    cancelButton_->setFrame({12, 11, 72, 34});
    doneButton_->setFrame({size.width - 84, 11, 72, 34});
    titleLabel_->setFrame({96, 0, size.width - 192, kBarHeight});
    surface_->setFrame({0, kBarHeight, size.width, size.height - kBarHeight - kPanelHeight});
    config_->setFrame({0, size.height - kPanelHeight, size.width, kPanelHeight});
}

}  // namespace orvdemo
