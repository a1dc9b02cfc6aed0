#pragma once
// The demo's filter screen: a photo in an image shower with a look applied, and the panel of
// sliders for the look's parameters over it.

#include <memory>
#include <string>

#include "frameworks/core/OrvKit.h"
#include "orvviews/filter/OrvFilterConfigView.h"
#include "orvviews/shower/OrvImageShowerImpl.h"
#include "orvviews/views/OrvViewController.h"

namespace orvdemo {

class FilterDemoController : public OrvViewController {
    ORV_DECLARE_CLASS(FilterDemoController)
  public:
    // What the screen shows; set before it loads.
    void setPhoto(gfx::ImagePtr photo) { photo_ = std::move(photo); }
    void setFilterCode(std::string code) { filterCode_ = std::move(code); }

    void viewDidLoad() override;

    const std::shared_ptr<OrvFilterConfigView>& configView() const { return configView_; }
    const std::shared_ptr<VimraParameters>& params() const { return params_; }

  private:
    gfx::ImagePtr photo_;
    std::string filterCode_;
    std::shared_ptr<ui::View> photoView_;
    std::shared_ptr<OrvImageShowerImpl> shower_;
    std::shared_ptr<OrvFilterConfigView> configView_;
    std::shared_ptr<VimraParameters> params_;
};

}  // namespace orvdemo
