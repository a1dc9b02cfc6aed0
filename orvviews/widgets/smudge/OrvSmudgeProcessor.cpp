#include "orvviews/widgets/smudge/OrvSmudgeProcessor.h"

#include <cmath>
#include <cstdlib>

ORV_DEFINE_CLASS(OrvSmudgeProcessor, OrvSimpleProcessor)

namespace {

// A random number from 0 to 1.
float randomUnit() {
    return float(std::rand()) / 2147483648.0f;
}

}  // namespace

void OrvSmudgeProcessor::setCurrentBrush(const std::shared_ptr<OrvBrush>& brush) {
    OrvSimpleProcessor::setCurrentBrush(brush);
    if (brush && brush->brushType() == OrvBrush::kMosaic) mosaicImageRef = generateMosaicImage();
}

gfx::BitmapPtr OrvSmudgeProcessor::generateMosaicImage() {
    const int width = imageWidth() / kMosaicReduction;
    const int height = imageHeight() / kMosaicReduction;
    auto context = createBitmapContextWithWidth(width, height);
    if (originalImage && originalImage->bitmap()) {
        context->drawImage({0, 0, double(width), double(height)}, *originalImage->bitmap());
    }
    return context->makeImage();
}

void OrvSmudgeProcessor::drawAtPoint(gfx::Point point, float orientation, float scale,
                                     float alpha) {
    if (!currentBrush()) return;
    switch (currentBrush()->brushType()) {
        case OrvBrush::kMosaic:
        case OrvBrush::kEraser:
            paintWithClassicMode(point, scale);
            break;
        case OrvBrush::kStamp:
            drawStampAt(point, orientation, scale, alpha);
            break;
        default:
            break;
    }
}

void OrvSmudgeProcessor::paintWithClassicMode(gfx::Point point, float scale) {
    if (byteOffsetOfPoint(point) < 0) return;
    if (currentBrush()->brushType() == OrvBrush::kEraser) {
        eraseAt(point, scale);
    } else {
        mosaicAt(point, scale);
    }
}

void OrvSmudgeProcessor::placeBrushOnCanvas(gfx::Point point, double scale, double angle) {
    const gfx::Size brush = brushImageSize();
    smudgeContext->translateCTM(point.x, imageHeight() - point.y);
    smudgeContext->scaleCTM(scale, scale);
    if (angle != 0) smudgeContext->rotateCTM(angle);
    smudgeContext->translateCTM(-brush.width / 2, -brush.height / 2);
}

void OrvSmudgeProcessor::eraseAt(gfx::Point point, double scale) {
    if (byteOffsetOfPoint(point) < 0 || !brushImage || !brushImage->bitmap()) return;
    const gfx::Size brush = brushImageSize();
    smudgeContext->saveGState();
    placeBrushOnCanvas(point, scale, 0);
    smudgeContext->setBlendMode(gfx::BlendMode::DestinationOut);
    smudgeContext->drawImage({0, 0, brush.width, brush.height}, *brushImage->bitmap());
    smudgeContext->restoreGState();
}

void OrvSmudgeProcessor::mosaicAt(gfx::Point point, double scale) {
    if (byteOffsetOfPoint(point) < 0 || !brushImage || !brushImage->bitmap() || !mosaicImageRef ||
        scale <= 0) {
        return;
    }
    const gfx::Size brush = brushImageSize();
    const double w = brush.width, h = brush.height;
    brushContext->saveGState();
    brushContext->setBlendMode(gfx::BlendMode::Copy);
    brushContext->drawImage({0, 0, w, h}, *brushImage->bitmap());
    brushContext->setInterpolationQuality(gfx::InterpolationQuality::None);
    brushContext->setBlendMode(gfx::BlendMode::SourceIn);
    // The whole reduced picture enlarged to the brush's scale, placed so that the part under
    // the point lands in the scratch bitmap: the two scalings cancel, so blocks stay about 30
    // canvas pixels wide and on one grid at every brush size.
    const gfx::Rect mosaicRect{w / 2 - point.x / scale, h / 2 - (imageHeight() - point.y) / scale,
                               imageWidth() / scale, imageHeight() / scale};
    brushContext->drawImage(mosaicRect, *mosaicImageRef);
    gfx::BitmapPtr scratch = brushSnapshot();
    brushContext->restoreGState();

    smudgeContext->saveGState();
    smudgeContext->setShouldAntialias(false);
    placeBrushOnCanvas(point, scale, 0);
    smudgeContext->setBlendMode(gfx::BlendMode::Normal);
    smudgeContext->drawImage({0, 0, w, h}, *scratch);
    smudgeContext->restoreGState();
}

void OrvSmudgeProcessor::drawStampAt(gfx::Point point, double orientation, double scale,
                                     double alpha) {
    const OrvBrush& brush = *currentBrush();
    double angle = orientation;
    switch (brush.rotateType()) {
        case OrvBrush::kRotateRandom:
            angle = double(randomUnit() * 2.0f) * M_PI;
            break;
        case OrvBrush::kRotateJitter:
            angle = orientation + (randomUnit() - 0.5) * M_PI / 3.0;
            break;
        case OrvBrush::kRotateNone:
            angle = 0;
            break;
        default:
            break;
    }
    if (brush.positionType() == OrvBrush::kPositionRandom) {
        // Scattered by up to half the brush's own width either way. A width below a pixel
        // throws the stamp far off the canvas, where the bounds test drops it.
        const int k = int(brushImageSize().width * brushScale());
        const long long r1 = std::rand(), r2 = std::rand();
        point.x += std::trunc(double(k > 0 ? r1 % k : r1) - 0.5 * k);
        point.y += std::trunc(double(k > 0 ? r2 % k : r2) - 0.5 * k);
    }
    if (brush.sizeType() == OrvBrush::kSizeRandom) {
        const double r = randomUnit();
        scale *= r;
        alpha *= 1 - 0.25 * r;
    }
    stampAt(point, angle, scale, alpha);
}

void OrvSmudgeProcessor::stampAt(gfx::Point point, double angle, double scale, double alpha) {
    const long long offset = byteOffsetOfPoint(point);
    if (offset < 0 || !brushImage || !brushImage->bitmap() || scale <= 0) return;
    const gfx::Size brush = brushImageSize();
    const double w = brush.width, h = brush.height;
    brushContext->setBlendMode(gfx::BlendMode::Copy);
    brushContext->drawImage({0, 0, w, h}, *brushImage->bitmap());
    // The colour comes from the untouched source, never from what earlier stamps painted; its
    // bytes are premultiplied and used as they stand.
    const uint8_t* source = originalData.data() + offset;
    brushContext->setFillColor(
        gfx::Color::rgb(source[0] / 255.0, source[1] / 255.0, source[2] / 255.0, alpha));
    brushContext->setBlendMode(gfx::BlendMode::SourceIn);
    brushContext->fillRect({0, 0, w, h});
    gfx::BitmapPtr scratch = brushSnapshot();

    smudgeContext->saveGState();
    placeBrushOnCanvas(point, scale, angle);
    smudgeContext->setBlendMode(gfx::BlendMode::Normal);
    smudgeContext->drawImage({0, 0, w, h}, *scratch);
    smudgeContext->restoreGState();
}

void OrvSmudgeProcessor::destroy() {
    OrvSimpleProcessor::destroy();
    mosaicImageRef.reset();
}
