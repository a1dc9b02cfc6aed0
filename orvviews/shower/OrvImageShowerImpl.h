#pragma once
// The image shower: a live preview of one image through a filter pipe of its own, re-rendered
// whenever a slider moves one of the filter's parameters. Each filter lives at a fixed position
// of the pipe, chosen by the model number of its parameters, so that the filters always run in
// the same order whatever order the tools add them in.
//
// The class side renders one image through one filter without a view (for saving and for
// thumbnails); each call has a pipe of its own, so it is safe on any thread.

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "frameworks/core/OrvNKImageColorArgument.h"
#include "frameworks/strand/ORPFPDisplayView.h"
#include "frameworks/strand/ORPFPImage.h"
#include "frameworks/strand/ORPFilterPipe.h"
#include "frameworks/strand/VimraParameterArg.h"
#include "frameworks/strand/VimraParameters.h"
#include "frameworks/strand/VimraParametersListener.h"
#include "orvviews/shower/OrvImageShower.h"
#include "platform/gfx/Geometry.h"

class OrvImageShowerImpl : public rt::Object,
                           public OrvImageShower,
                           public VimraParametersListener {
    ORV_DECLARE_CLASS(OrvImageShowerImpl)
  public:
    using Params = std::shared_ptr<VimraParameters>;
    using Arg = std::shared_ptr<VimraParameterArg>;
    using Builder = std::shared_ptr<rt::Object>;

    void initWithRootView(const ui::View::Ptr& rootView) override;
    void setup(const ui::View::Ptr& rootView);
    void setImage(const gfx::ImagePtr& image, unsigned long rotation) override;
    Params changeFilter(const std::string& code, const Params& params) override;
    std::optional<gfx::Color> displayBackgroundColor() const override {
        return displayBackgroundColor_;
    }
    void setDisplayBackgroundColor(const gfx::Color& color) override;

    // Shows the original image through the pipe (nothing before an image is set).
    void update();

    void onVimraParametersUpdate(long model, const std::string& code, const Arg& arg) override;

    // Build the filter for the parameters at the position of their model.
    void imageFilter(const Params& params);
    void apertureFilter(const Params& params);
    void hdrFilter(const Params& params);
    void adjustFilter(const Params& params);
    void holyLightFilter(const Params& params);
    void vignetteFilter(const Params& params);
    void sharpenFilter(const Params& params);
    void skinEditFilter(const Params& params);

    // Apply one argument to the builder `obj` and send its property to the filter.
    void updateImageFilter(long model, const Arg& arg, const Builder& obj);
    void updateAperture(long model, const Arg& arg, const Builder& obj);
    void updateHDR(long model, const Arg& arg, const Builder& obj);
    void updateAdjust(long model, const Arg& arg, const Builder& obj);
    void updateHolyLight(long model, const Arg& arg, const Builder& obj);
    void updateVignette(long model, const Arg& arg, const Builder& obj);
    void updateSharpen(long model, const Arg& arg, const Builder& obj);
    void updateSkin(const Arg& arg);

    const std::shared_ptr<ORPFilterPipe>& pipeline() const { return pipeline_; }
    std::shared_ptr<ORPFPDisplayView> displayView() const { return displayView_.lock(); }
    // The pipe position of a model number; -1 for a model without one.
    long positionOfModel(long model) const;

    void dealloc() override;

    // One-shot rendering: a new image, or null for a null image or parameters (and, for
    // filterImage, an unknown code outside model 3). "Normal" gives back the very image.
    static gfx::ImagePtr filterImage(const gfx::ImagePtr& image,
                                     const std::optional<std::string>& code, Params params);
    // Levels from a colour analysis applied to the image.
    static gfx::ImagePtr autoColorAnalysis(const gfx::ImagePtr& image,
                                           const std::shared_ptr<OrvNKImageColorArgument>& args);
    static gfx::ImagePtr imageFilter(const gfx::ImagePtr& image, const Params& params);
    static gfx::ImagePtr skinEditFilter(const gfx::ImagePtr& image, const Params& params);
    static gfx::ImagePtr adjustFilter(const gfx::ImagePtr& image, const Params& params);
    static gfx::ImagePtr hdrFilter(const gfx::ImagePtr& image, const Params& params);
    static gfx::ImagePtr vignetteFilter(const gfx::ImagePtr& image, const Params& params);
    static gfx::ImagePtr apertureFilter(const gfx::ImagePtr& image, const Params& params);
    static gfx::ImagePtr holyLightFilter(const gfx::ImagePtr& image, const Params& params);
    static gfx::ImagePtr sharpenFilter(const gfx::ImagePtr& image, const Params& params);
    static gfx::ImagePtr blurFilter(const gfx::ImagePtr& image, const Params& params);

  private:
    // Adds a tool filter named `name` at the position of the params' model, and keeps its
    // builder under that model.
    void addToolFilter(const Params& params, const char* typeName, const char* name,
                       const Builder& builder, const ORPFPProperty& property);
    // The filter at the position of `model`, told the property (nothing without either).
    void sendProperty(long model, const ORPFPProperty& property) const;

    gfx::Size displaySize;  // zero; the display view sizes itself
    std::string code;       // not read: the parameters carry the code
    std::weak_ptr<ORPFPDisplayView> displayView_;
    std::shared_ptr<ORPFilterPipe> pipeline_;
    gfx::ImagePtr oriImage;
    std::shared_ptr<ORPFPImage> oriFPImage;
    std::map<long, long> filterDict;
    std::map<long, Builder> propertyDict;
    std::optional<gfx::Color> displayBackgroundColor_;
};
