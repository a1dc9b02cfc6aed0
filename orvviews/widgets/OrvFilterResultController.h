#pragma once
// The base of every tool that changes a picture by one filter with a row of sliders. The
// preview runs live on the screen-sized input through an image shower; on completion the same
// parameter set, and nothing else, is applied once more to the full-size input on a background
// thread and sent down the result road.

#include <memory>

#include "frameworks/strand/VimraParameters.h"
#include "orvviews/filter/OrvParameterConfigDelegate.h"
#include "orvviews/widgets/OrvFilterResultControllerDelegate.h"
#include "orvviews/widgets/OrvFilterResultViewInterface.h"
#include "orvviews/widgets/OrvImageResultController.h"

class OrvImageShower;

class OrvFilterResultController : public OrvImageResultController,
                                  public OrvParameterConfigDelegate {
    ORV_DECLARE_CLASS(OrvFilterResultController)
  public:
    using Params = std::shared_ptr<VimraParameters>;
    // The model number of a tool filter's parameters.
    static constexpr long kToolModel = 14;

    // The tool's view, once built; null without a usable viewClazz.
    const std::shared_ptr<ui::View>& defaultStyleView() const { return defaultStyleView_; }
    // The view class: null unless it is a view conforming to OrvFilterResultViewInterface.
    const rt::Class* viewClazz() const;
    void setViewClazz(const rt::Class* clazz) { viewClazz_ = clazz; }

    const std::weak_ptr<OrvFilterResultControllerDelegate>& delegate() const { return delegate_; }
    // Also the error delegate when the object is one, so that one object hears both roads.
    void setDelegate(std::weak_ptr<OrvFilterResultControllerDelegate> delegate);

    const Params& filterParams() const { return filterParams_; }
    // With a shower, the filter goes into the preview and the set the shower answers replaces
    // the one given: from then on the sliders move the object the preview listens to.
    void setFilterParams(Params params);
    // Stores a set without touching the preview; enableSkinFilter() applies it later.
    void setSkinFilterParams(Params params) { filterParams_ = std::move(params); }
    void enableSkinFilter();

    // Passed to the shower only; the getters stay empty on purpose.
    std::optional<gfx::Color> displayBackgroundColor() const { return std::nullopt; }
    void setDisplayBackgroundColor(const std::optional<gfx::Color>& color);
    gfx::ImagePtr displayImage() const { return nullptr; }
    void setDisplayImage(const gfx::ImagePtr& image);

    void buildDefaultStyleView() override;
    void configDefaultStyleView(const std::shared_ptr<ui::View>& view) override;
    // Makes the live preview on the view, once.
    void initSurfaceView(const std::shared_ptr<ui::View>& view);
    void loadedInputImage(const gfx::ImagePtr& image) override;
    // Fills the sliders from the parameter set, when it has arguments.
    void refreshConfigView();
    void bindWithConfigParams(const std::vector<std::string>& keys, unsigned long selectedIndex);

    void onOrvKitCPParameterConfigChangeWithIndex(ui::View& view, unsigned long index,
                                                  double progress) override;
    double onOrvKitCPParameterConfigValueWithIndex(ui::View& view, unsigned long index) override;
    double onOrvKitCPParameterConfigValueWithKey(ui::View& view, const std::string& key) override;
    void onOrvKitCPParameterConfigResetWithIndex(ui::View& view, unsigned long index) override;

    // Renders the full-size result off the main thread; nothing without a view.
    virtual void onImageCompleteAtion();
    virtual void asyncEditWithResult(const ResultPtr& result);

    void notifyProcessingWithResult(const ResultPtr& result) override;
    bool asyncNotifyProcessingWithResult(const ResultPtr& result) override;

    // The preview, for screens and tests.
    const std::shared_ptr<OrvImageShower>& imageShower() const { return imageShower_; }

    void dealloc() override;

  private:
    // The argument at `index` of an inited set, or null.
    std::shared_ptr<VimraParameterArg> argAt(unsigned long index) const;
    OrvFilterResultViewInterface* styleInterface() const;

    std::shared_ptr<ui::View> defaultStyleView_;
    std::shared_ptr<OrvImageShower> imageShower_;
    std::weak_ptr<OrvFilterResultControllerDelegate> delegate_;
    const rt::Class* viewClazz_ = nullptr;
    Params filterParams_;
};
