#include "orvviews/widgets/OrvFilterResultController.h"

#include "frameworks/core/OrvDevice.h"
#include "frameworks/core/OrvLocalized.h"
#include "frameworks/core/OrvViewGeometry.h"
#include "frameworks/strand/ORPFPImage.h"
#include "orvviews/shower/OrvImageShowerImpl.h"
#include "platform/rt/Thread.h"
#include "platform/ui/Application.h"
#include "platform/ui/Screen.h"

ORV_DEFINE_CLASS(OrvFilterResultController, OrvImageResultController, OrvParameterConfigDelegate)

namespace {

// The notched phone keeps its sensor strip and home bar free.
constexpr double kNotchTop = 44;
constexpr double kNotchBars = 78;

}  // namespace

const rt::Class* OrvFilterResultController::viewClazz() const {
    if (!viewClazz_ || !viewClazz_->isSubclassOf(ui::View::staticClass()) ||
        !viewClazz_->conformsTo(OrvFilterResultViewInterface::protocol())) {
        return nullptr;
    }
    return viewClazz_;
}

void OrvFilterResultController::setDelegate(
    std::weak_ptr<OrvFilterResultControllerDelegate> delegate) {
    delegate_ = delegate;
    setErrorDelegate(std::dynamic_pointer_cast<OrvComponentErrorDelegate>(delegate.lock()));
}

OrvFilterResultViewInterface* OrvFilterResultController::styleInterface() const {
    return dynamic_cast<OrvFilterResultViewInterface*>(defaultStyleView_.get());
}

// ---- building

void OrvFilterResultController::buildDefaultStyleView() {
    if (defaultStyleView_) return;
    const double screenHeight = ui::Screen::main().bounds().size.height;
    double top = 0;
    double height = ui::Application::shared().isStatusBarHidden()
                        ? screenHeight
                        : screenHeight - ui::Application::kStatusBarHeight;
    if (orvIsDeviceiPhoneX()) {
        height = screenHeight - kNotchBars;
        top = kNotchTop;
    }
    const rt::Class* clazz = viewClazz();
    if (clazz) {
        defaultStyleView_ = rt::cast<ui::View>(clazz->instantiate());
        // Made through the class registry, so the frame comes after; the view lays itself out.
        if (defaultStyleView_)
            defaultStyleView_->setFrame({0, top, orvGetSizeWidth(*view()), height});
    }
    configDefaultStyleView(defaultStyleView_);
    std::weak_ptr<OrvFilterResultController> weak = self<OrvFilterResultController>();
    asyncLoadInputImageWithBlock([weak]() -> gfx::ImagePtr {
        auto me = weak.lock();
        return me ? me->inputImage() : nullptr;
    });
}

void OrvFilterResultController::configDefaultStyleView(const std::shared_ptr<ui::View>& view) {
    auto* style = dynamic_cast<OrvFilterResultViewInterface*>(view.get());
    if (!style) return;
    if (auto config = style->configView()) {
        config->setDelegate(std::weak_ptr<OrvParameterConfigDelegate>(
            std::static_pointer_cast<OrvParameterConfigDelegate>(
                self<OrvFilterResultController>())));
    }
    this->view()->addSubview(view);
    initSurfaceView(style->imageView());
    refreshConfigView();
}

void OrvFilterResultController::initSurfaceView(const std::shared_ptr<ui::View>& view) {
    if (!view || imageShower_) return;
    auto shower = rt::make<OrvImageShowerImpl>();
    shower->initWithRootView(view);
    imageShower_ = shower;
    view->setUserInteractionEnabled(true);
    setDisplayBackgroundColor(view->backgroundColor());
}

// ---- parameters

void OrvFilterResultController::setFilterParams(Params params) {
    filterParams_ = std::move(params);
    if (!imageShower_) return;
    filterParams_ = imageShower_->changeFilter(
        filterParams_ ? filterParams_->code() : std::string(), filterParams_);
}

void OrvFilterResultController::enableSkinFilter() {
    setFilterParams(filterParams_);
}

void OrvFilterResultController::setDisplayBackgroundColor(const std::optional<gfx::Color>& color) {
    if (imageShower_ && color) imageShower_->setDisplayBackgroundColor(*color);
}

void OrvFilterResultController::setDisplayImage(const gfx::ImagePtr& image) {
    if (!imageShower_ || !image) return;
    imageShower_->setImage(image,
                           ORPFPImage::rotationModeWithImageOrientation(image->orientation()));
}

void OrvFilterResultController::loadedInputImage(const gfx::ImagePtr& image) {
    if (!defaultStyleView_) return;
    setDisplayImage(image);
    setFilterParams(filterParams_);
    refreshConfigView();
}

void OrvFilterResultController::refreshConfigView() {
    if (filterParams_ && filterParams_->isInited()) {
        bindWithConfigParams(filterParams_->argKeys(), 0);
    }
}

void OrvFilterResultController::bindWithConfigParams(const std::vector<std::string>& keys,
                                                     unsigned long selectedIndex) {
    auto* style = styleInterface();
    if (auto config = style ? style->configView() : nullptr) config->setParams(keys, selectedIndex);
}

// ---- slider traffic

std::shared_ptr<VimraParameterArg> OrvFilterResultController::argAt(unsigned long index) const {
    if (!filterParams_ || !filterParams_->isInited()) return nullptr;
    const auto& args = filterParams_->args();
    return index < args.size() ? args[index] : nullptr;
}

void OrvFilterResultController::onOrvKitCPParameterConfigChangeWithIndex(ui::View&,
                                                                         unsigned long index,
                                                                         double progress) {
    if (auto arg = argAt(index)) arg->setPrecent(progress);
}

double OrvFilterResultController::onOrvKitCPParameterConfigValueWithIndex(ui::View&,
                                                                          unsigned long index) {
    auto arg = argAt(index);
    return arg ? arg->precent() : 0;
}

double OrvFilterResultController::onOrvKitCPParameterConfigValueWithKey(ui::View&,
                                                                        const std::string& key) {
    if (!filterParams_ || !filterParams_->isInited()) return 0;
    auto arg = filterParams_->argWithKey(key);
    return arg ? arg->value() : 0;
}

void OrvFilterResultController::onOrvKitCPParameterConfigResetWithIndex(ui::View&,
                                                                        unsigned long index) {
    auto arg = argAt(index);
    if (!arg) return;
    arg->reset();
    auto* style = styleInterface();
    if (auto config = style ? style->configView() : nullptr)
        config->seekWithProgress(arg->precent());
}

// ---- the result

void OrvFilterResultController::onImageCompleteAtion() {
    if (!defaultStyleView_) return;
    if (enableShowHub) showHubWithStatus(orvLocalized("orv_edit_processing", "正在处理..."));
    auto result = OrvResult::result();
    result->setFilterParams(filterParams_);
    auto me = self<OrvFilterResultController>();
    rt::Thread::detach("orv-filter-result", [me, result] { me->asyncEditWithResult(result); });
}

void OrvFilterResultController::asyncEditWithResult(const ResultPtr& result) {
    result->setImage(loadOrginImage());
    if (const auto& params = result->filterParams()) {
        result->setImage(OrvImageShowerImpl::filterImage(result->image(), params->code(), params));
    }
    asyncProcessingIfNeedSave(result);
}

void OrvFilterResultController::notifyProcessingWithResult(const ResultPtr& result) {
    if (showResultPreview(result)) return;
    if (enableShowHub) showHubSuccessWithStatus(orvLocalized("orv_edit_processed", "处理完成"));
    if (auto delegate = delegate_.lock()) delegate->onOrvKitFilterResult(*this, result);
}

bool OrvFilterResultController::asyncNotifyProcessingWithResult(const ResultPtr& result) {
    auto delegate = delegate_.lock();
    return delegate && delegate->onAsyncOrvKitFilterResult(*this, result);
}

void OrvFilterResultController::dealloc() {
    imageShower_.reset();
    OrvImageResultController::dealloc();
}
