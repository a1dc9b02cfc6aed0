#include "examples/orvdemo/ParameterConfigView.h"

#include <cstdio>
#include <map>

#include "examples/orvdemo/DemoStyle.h"
#include "frameworks/core/OrvLocalized.h"

namespace orvdemo {

ORV_DEFINE_CLASS(ParameterConfigView, ui::View, OrvParameterConfigViewInterface, OrvSeekBarDelegate)

namespace {

constexpr double kTabHeight = 30;
constexpr double kRowHeight = 44;
constexpr double kMargin = 16;

// The built-in names of the tools' arguments; the string table may name them otherwise.
std::string argumentTitle(const std::string& key) {
    static const std::map<std::string, std::string> names{
        {"vignette", "暗角"}, {"sharpness", "锐化"}, {"mixied", "强度"}, {"brightness", "亮度"}};
    const auto found = names.find(key);
    return orvLocalized(("orv_filter_set_" + key).c_str(),
                        (found == names.end() ? key : found->second).c_str());
}

}  // namespace

void ParameterConfigView::initWithFrame(const gfx::Rect& frame) {
    ui::View::initWithFrame(frame);
    setBackgroundColor(DemoStyle::panel());
    seekBar_ = ui::makeView<OrvSeekBar>({0, 0, 200, kRowHeight});
    seekBar_->setDelegate(self<ParameterConfigView>());
    valueLabel_ = ui::makeView<ui::Label>({0, 0, 44, kRowHeight});
    valueLabel_->setTextColor(gfx::Color::whiteColor());
    valueLabel_->setFont(gfx::Font::boldSystemFont(17));
    valueLabel_->setTextAlignment(gfx::TextAlignment::Center);
    std::weak_ptr<ParameterConfigView> weak = self<ParameterConfigView>();
    resetButton_ = DemoStyle::button(
        orvLocalized("orv_reset", "重置"), {0, 0, 64, 30}, DemoStyle::quiet(), weak, [weak] {
            auto me = weak.lock();
            auto delegate = me ? me->delegate_.lock() : nullptr;
            if (delegate) {
                delegate->onOrvKitCPParameterConfigResetWithIndex(*me, me->selected_);
            }
        });
    addSubview(seekBar_);
    addSubview(valueLabel_);
    addSubview(resetButton_);
}

void ParameterConfigView::layoutSubviews() {
    const double width = bounds().size.width;
    double x = kMargin;
    for (const auto& tab : tabs_) {
        tab->setFrame({x, 10, 84, kTabHeight});
        x += 92;
    }
    const double top = 10 + kTabHeight + 8;
    resetButton_->setFrame({kMargin, top + 7, 64, 30});
    seekBar_->setFrame({kMargin + 76, top, width - 2 * kMargin - 76 - 52, kRowHeight});
    valueLabel_->setFrame({width - kMargin - 44, top, 44, kRowHeight});
    seekBar_->setProgress(seekBar_->progress());
}

void ParameterConfigView::setParams(const std::vector<std::string>& keys,
                                    unsigned long selectedIndex) {
    for (const auto& tab : tabs_) tab->removeFromSuperview();
    tabs_.clear();
    std::weak_ptr<ParameterConfigView> weak = self<ParameterConfigView>();
    for (unsigned long i = 0; i < keys.size(); ++i) {
        auto tab = DemoStyle::button(argumentTitle(keys[i]), {0, 0, 84, kTabHeight},
                                     DemoStyle::quiet(), weak, [weak, i] {
                                         if (auto me = weak.lock()) me->selectIndex(i);
                                     });
        tabs_.push_back(tab);
        addSubview(tab);
    }
    setNeedsLayout();
    selectIndex(selectedIndex);
}

void ParameterConfigView::selectIndex(unsigned long index) {
    selected_ = index;
    for (unsigned long i = 0; i < tabs_.size(); ++i) {
        tabs_[i]->setBackgroundColor(i == index ? DemoStyle::accent() : DemoStyle::quiet());
    }
    auto delegate = delegate_.lock();
    seekWithProgress(delegate ? delegate->onOrvKitCPParameterConfigValueWithIndex(*this, index)
                              : 0);
}

void ParameterConfigView::seekWithProgress(double progress) {
    seekBar_->setProgress(progress);
    showValue(seekBar_->progress());
}

void ParameterConfigView::onOrvKitICSeekBar(OrvSeekBar&, double changedProgress) {
    showValue(changedProgress);
    if (auto delegate = delegate_.lock()) {
        delegate->onOrvKitCPParameterConfigChangeWithIndex(*this, selected_, changedProgress);
    }
}

void ParameterConfigView::showValue(double progress) {
    char text[8];
    std::snprintf(text, sizeof text, "%d", static_cast<int>(progress * 100 + 0.5));
    valueLabel_->setText(text);
}

}  // namespace orvdemo
