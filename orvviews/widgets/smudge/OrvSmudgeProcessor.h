#pragma once
// The canvas of the smudge tool, with its three brushes:
//   stamp   the brush shape filled with the colour the source picture has under the stamp's
//           centre, so a stroke repaints the picture in brush marks;
//   eraser  the brush shape cut out of the canvas, so the picture below shows through;
//   mosaic  a blocky copy of the source (reduced by 30 each way, enlarged without smoothing)
//           revealed through the brush shape, on a grid that stays put as the brush moves.
// Eraser and mosaic neither turn nor fade; stamps follow the brush's rotate, position and size
// rules.

#include "orvviews/widgets/smudge/OrvSimpleProcessor.h"

class OrvSmudgeProcessor : public OrvSimpleProcessor {
    ORV_DECLARE_CLASS(OrvSmudgeProcessor)
  public:
    // The source is reduced by this factor each way for the mosaic.
    static constexpr int kMosaicReduction = 30;

    // A mosaic brush also builds the reduced picture from the picture installed now, so install
    // the picture first.
    void setCurrentBrush(const std::shared_ptr<OrvBrush>& brush) override;
    void drawAtPoint(gfx::Point point, float orientation, float scale, float alpha) override;
    void destroy() override;

    // The source picture reduced by kMosaicReduction each way (an empty bitmap for a picture
    // smaller than that).
    gfx::BitmapPtr generateMosaicImage();
    // Eraser and mosaic at a canvas point (y down).
    void paintWithClassicMode(gfx::Point point, float scale);
    void eraseAt(gfx::Point point, double scale);
    void mosaicAt(gfx::Point point, double scale);
    // A stamp after the brush's random rules: angle, scatter, then size and alpha.
    void drawStampAt(gfx::Point point, double orientation, double scale, double alpha);
    void stampAt(gfx::Point point, double angle, double scale, double alpha);

    const gfx::BitmapPtr& mosaicImage() const { return mosaicImageRef; }

  private:
    // The scratch bitmap, taken after the brush context has been drawn in.
    gfx::BitmapPtr brushSnapshot() const { return brushContext->makeImage(); }
    // Moves the canvas's user space so that the brush picture, drawn at (0, 0, w, h), is centred
    // on the point at `scale`, turned by `angle`.
    void placeBrushOnCanvas(gfx::Point point, double scale, double angle);

    gfx::BitmapPtr mosaicImageRef;
};
