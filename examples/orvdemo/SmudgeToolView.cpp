#include "examples/orvdemo/SmudgeToolView.h"

#include "examples/orvdemo/DemoStyle.h"
#include "frameworks/core/OrvLocalized.h"
#include "platform/ui/Layer.h"

namespace orvdemo {

ORV_DEFINE_CLASS(SmudgeToolView, OrvSmudgeViewBase)

void SmudgeToolView::initWithFrame(const gfx::Rect& frame) {
    OrvSmudgeViewBase::initWithFrame(frame);
    const gfx::Size size = frame.size;
    setBackgroundColor(DemoStyle::background());
    titleLabel_ = ui::makeView<ui::Label>({96, 0, size.width - 192, kTopBar});
    titleLabel_->setTextColor(gfx::Color::whiteColor());
    titleLabel_->setFont(gfx::Font::boldSystemFont(18));
    titleLabel_->setTextAlignment(gfx::TextAlignment::Center);
    addSubview(titleLabel_);
    // The buttons' actions are the tool's; whoever opens the tool connects them.
    cancelButton_ = DemoStyle::button(orvLocalized("orv_nav_cancel", "取消"), {12, 11, 72, 34},
                                      DemoStyle::quiet(), {}, nullptr);
    doneButton_ =
        DemoStyle::button(orvLocalized("orv_edit_apply", "应用"), {size.width - 84, 11, 72, 34},
                          DemoStyle::accent(), {}, nullptr);
    addSubview(cancelButton_);
    addSubview(doneButton_);

    const double canvasHeight = size.height - kTopBar - kControls - kBrushBar;
    wrap_ = ui::makeView<OrvSmudgeImageViewWrap>({0, kTopBar, size.width, canvasHeight});
    wrap_->setClipsToBounds(true);
    addSubview(wrap_);
    cursor_ = ui::makeView<ui::View>({});
    cursor_->setUserInteractionEnabled(false);
    cursor_->setBackgroundColor(gfx::Color::white(1, 0.35));
    cursor_->layer().setBorderWidth(1.5);
    cursor_->layer().setBorderColor(gfx::Color::whiteColor());
    cursor_->setHidden(true);
    wrap_->addSubview(cursor_);

    buildControls(kTopBar + canvasHeight);
    brushBar_ = ui::makeView<BrushBarView>({0, size.height - kBrushBar, size.width, kBrushBar});
    addSubview(brushBar_);
}

void SmudgeToolView::buildControls(double top) {
    auto make = [&](const char* key, const char* text, double x, double width) {
        auto button = DemoStyle::button(orvLocalized(key, text), {x, top + 9, width, 34},
                                        DemoStyle::quiet(), {}, nullptr);
        addSubview(button);
        return button;
    };
    undoButton_ = make("orv_edit_undo", "撤销", 10, 60);
    redoButton_ = make("orv_edit_redo", "重做", 76, 60);
    compareButton_ = make("orv_edit_compare", "对比", 142, 60);
    const std::pair<const char*, const char*> sizes[] = {{"orv_edit_brush_small", "小"},
                                                         {"orv_edit_brush_medium", "中"},
                                                         {"orv_edit_brush_large", "大"}};
    for (long code = 1; code <= 3; ++code) {
        const auto& [key, text] = sizes[code - 1];
        sizeButtons_[code - 1] = make(key, text, bounds().size.width - 10 - 40 * (4 - code), 34);
    }
}

void SmudgeToolView::showSizeChosen(long code) {
    for (long c = 1; c <= 3; ++c) {
        sizeButton(c)->setBackgroundColor(c == code ? DemoStyle::accent() : DemoStyle::quiet());
    }
}

}  // namespace orvdemo
