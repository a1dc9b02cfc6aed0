#pragma once
// A view that shows the pipe's output, fitted inside its bounds with its proportions kept, over
// its clear colour.

#include <memory>

#include "frameworks/core/OrvKit.h"
#include "frameworks/strand/ORPFPImage.h"
#include "platform/gfx/Color.h"
#include "platform/ui/View.h"

class ORPFPDisplayView : public ui::View {
    ORV_DECLARE_CLASS(ORPFPDisplayView)
  public:
    void setup();
    void teardown();  // forgets the picture
    void update(const std::shared_ptr<ORPFPImage>& image);
    void setClearColor(const gfx::Color& color);
    // The picture shown now (null before the first update).
    const std::shared_ptr<ORPFPImage>& image() const { return image_; }

    void drawRect(gfx::Canvas& canvas, const gfx::Rect& rect) override;
    bool hasCustomDrawing() const override { return true; }

  private:
    std::shared_ptr<ORPFPImage> image_;
    gfx::ImagePtr shown_;
};
