#pragma once
// A live preview of one still image through the filter pipe: the tools hand it a root view, an
// image and a filter code, and drive the returned parameters with their sliders.

#include <memory>
#include <optional>
#include <string>

#include "frameworks/core/OrvKit.h"
#include "frameworks/strand/VimraParameters.h"
#include "platform/gfx/Color.h"
#include "platform/gfx/Image.h"
#include "platform/rt/Object.h"
#include "platform/ui/View.h"

class OrvImageShower {
    ORV_DECLARE_PROTOCOL(OrvImageShower)
  public:
    virtual ~OrvImageShower() = default;

    // The initialiser: the preview fills `rootView`, behind everything else in it.
    virtual void initWithRootView(const ui::View::Ptr& rootView) = 0;
    // Shows the image as given, unfiltered, until the next render.
    virtual void setImage(const gfx::ImagePtr& image, unsigned long rotation) = 0;
    // Puts the filter of `code` into the preview. The answer is a new parameter object, the one
    // the sliders must drive from now on; null when the model carries no filter here.
    virtual std::shared_ptr<VimraParameters> changeFilter(
        const std::string& code, const std::shared_ptr<VimraParameters>& params) = 0;

    // What the preview shows around the picture (nothing set: the view's own default).
    virtual std::optional<gfx::Color> displayBackgroundColor() const = 0;
    virtual void setDisplayBackgroundColor(const gfx::Color& color) = 0;
};
