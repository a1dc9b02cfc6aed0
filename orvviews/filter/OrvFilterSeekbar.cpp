#include "orvviews/filter/OrvFilterSeekbar.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>

#include "frameworks/core/OrvLocalized.h"
#include "frameworks/core/OrvViewExtension.h"
#include "frameworks/core/OrvViewGeometry.h"

ORV_DEFINE_CLASS(OrvFilterSeekbar, ui::View, OrvSeekBarDelegate)

namespace {

constexpr double kLabelWidth = 40;
constexpr double kTitleHeight = 16;
constexpr double kNumberHeight = 24;

// The built-in names of the arguments the filters publish; the string table overrides them.
const std::map<std::string, std::string>& defaultArgNames() {
    static const std::map<std::string, std::string> names = {
        {"blurSize", "模糊"},     {"aperture", "光圈"},    {"selective", "形状"},
        {"centerX", "横向"},      {"centerY", "纵向"},     {"radius", "半径"},
        {"degree", "角度"},       {"mixied", "混合"},      {"brightness", "亮度"},
        {"vignette", "暗角"},     {"sharpness", "锐度"},   {"contrast", "对比度"},
        {"saturation", "饱和度"}, {"exposure", "曝光"},    {"shadows", "阴影"},
        {"highlights", "高光"},   {"temperature", "色温"}, {"tint", "色调"},
        {"sharpen", "锐化"},      {"smoothing", "磨皮"},   {"whitening", "美白"},
        {"ruddy", "红润"},        {"eyeSize", "大眼"},     {"chinSize", "瘦脸"},
        {"retouch", "美颜"},      {"strength", "强度"},    {"grain", "颗粒"},
    };
    return names;
}

// An argument no table knows shows its own key.
std::string argTitle(const std::string& key) {
    const auto& names = defaultArgNames();
    const auto it = names.find(key);
    const std::string fallback = it == names.end() ? key : it->second;
    return orvLocalized(("orv_filter_set_" + key).c_str(), fallback.c_str());
}

std::shared_ptr<ui::Label> whiteLabel(const gfx::Rect& frame, double fontSize) {
    auto label = ui::makeView<ui::Label>(frame);
    initWithFrame(*label, frame, fontSize, gfx::Color::whiteColor(), gfx::TextAlignment::Center);
    return label;
}

}  // namespace

void OrvFilterSeekbar::initWithFrame(const gfx::Rect& frame) {
    ui::View::initWithFrame(frame);
    orvInitView();
}

void OrvFilterSeekbar::orvInitView() {
    const gfx::Size size = bounds().size;
    // The name over the number, the pair centred on the bar's height.
    const double titleY = (size.height - kTitleHeight - kNumberHeight) / 2;
    titleView_ = whiteLabel({size.width - kLabelWidth, titleY, kLabelWidth, kTitleHeight}, 12);
    addSubview(titleView_);
    numberView_ = whiteLabel(
        {size.width - kLabelWidth, titleY + kTitleHeight, kLabelWidth, kNumberHeight}, 18);
    addSubview(numberView_);

    seekBar_ = ui::makeView<OrvSeekBar>({0, 10, orvGetOriginX(*titleView_) - 20, size.height - 20});
    seekBar_->setDelegate(self<OrvFilterSeekbar>());
    addSubview(seekBar_);
}

void OrvFilterSeekbar::setFilterArg(std::shared_ptr<VimraParameterArg> filterArg) {
    filterArg_ = std::move(filterArg);
    if (filterArg_) {
        seekBar_->setProgress(filterArg_->precent());
        titleView_->setText(argTitle(filterArg_->key()));
    }
    setProgress(seekBar_->progress());
}

void OrvFilterSeekbar::setProgress(double progress) {
    progress = std::clamp(progress, 0.0, 1.0);
    if (filterArg_) filterArg_->setPrecent(progress);
    // The nudge keeps a place like 0.29, which is 28.999... times 100, from showing as 28.
    const auto percent = static_cast<long>(std::trunc(progress * 100 + 1e-9));
    char number[8];
    std::snprintf(number, sizeof number, "%02ld", percent);
    numberView_->setText(number);
}

void OrvFilterSeekbar::reset() {
    if (filterArg_) filterArg_->reset();
    setFilterArg(filterArg_);
}

void OrvFilterSeekbar::onOrvKitICSeekBar(OrvSeekBar&, double changedProgress) {
    setProgress(changedProgress);
}
