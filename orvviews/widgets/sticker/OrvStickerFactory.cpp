#include "orvviews/widgets/sticker/OrvStickerFactory.h"

#include <algorithm>

#include "frameworks/core/OrvDevice.h"
#include "frameworks/core/OrvStickerLocalPackage.h"
#include "frameworks/core/OrvTSMath.h"
#include "platform/gfx/AttributedString.h"
#include "platform/gfx/TextLayout.h"

namespace {

bool isZero(gfx::Size s) {
    return s.width == 0 && s.height == 0;
}

// The larger of the two ratios, leaving out one whose divisor is zero: a zero side says
// nothing about how much the sticker grew.
double largerRatio(double w, double divisorW, double h, double divisorH) {
    double ratio = 0;
    if (divisorW != 0) ratio = std::max(ratio, w / divisorW);
    if (divisorH != 0) ratio = std::max(ratio, h / divisorH);
    return ratio > 0 ? ratio : 1;
}

gfx::TextAlignment alignmentOf(int value) {
    return value >= 0 && value <= 4 ? static_cast<gfx::TextAlignment>(value)
                                    : gfx::TextAlignment::Natural;
}

// Draws the characters of a text into `r`, the newer way (the full attribute set) unless the
// system predates attributed drawing.
void drawCharacters(const OrvStickerText& text, const gfx::Font& font, const gfx::Rect& r,
                    gfx::ImageContext& context) {
    gfx::TextAttributes attributes;
    if (orvSystemFloatVersion() < 7.0) {
        attributes.paragraphStyle =
            gfx::ParagraphStyle{alignmentOf(text.alignment()), gfx::LineBreakMode::TruncateTail, 0,
                                gfx::WritingDirection::Natural};
    } else if (text.textStyleDic()) {
        attributes = *text.textStyleDic();
    }
    attributes.font = font;
    attributes.foregroundColor = text.color();
    const gfx::TextLayout layout(gfx::AttributedString(text.text(), attributes), r.size);
    layout.draw(context, r);
}

}  // namespace

gfx::ImagePtr OrvStickerFactory::megerStickers(const Results& stickers,
                                               const gfx::ImagePtr& image) {
    if (stickers.empty() || !image) return image;
    const gfx::Size size = image->size();
    if (size.width <= 0 || size.height <= 0) return image;

    gfx::ImageContext context(size, false, 1);
    context.drawImageInRect(*image, gfx::Rect({0, 0}, size));
    for (const auto& result : stickers) appendLayout(result, size, context);
    return context.endImage();
}

void OrvStickerFactory::appendLayout(const std::shared_ptr<OrvStickerResult>& result,
                                     gfx::Size size, gfx::ImageContext& context) {
    if (!result || !result->sticker() || isZero(size)) return;
    const gfx::Rect& center = result->center();
    const gfx::Size laySize{size.width * center.size.width, size.height * center.size.height};
    if (isZero(laySize)) return;
    appendImageLayout(result, size, context, laySize);
    appendTextLayout(result, size, context, laySize);
}

void OrvStickerFactory::appendImageLayout(const std::shared_ptr<OrvStickerResult>& result,
                                          gfx::Size size, gfx::ImageContext& context,
                                          gfx::Size laySize) {
    if (!result || !result->sticker()) return;
    const std::shared_ptr<OrvSticker>& sticker = result->sticker();
    if (sticker->idt() != 0 || !sticker->image()) {
        OrvStickerLocalPackage::package()->loadStickerData(sticker);
    }
    const gfx::ImagePtr picture = sticker->image();
    if (!picture || !picture->bitmap()) return;

    const gfx::Point p{result->center().origin.x * size.width,
                       result->center().origin.y * size.height};
    // The flip sets the picture upright for drawImage, and under it the negated angle turns
    // clockwise on the photo as the view turned on the screen.
    context.saveGState();
    context.scaleCTM(1, -1);
    context.translateCTM(p.x, -p.y);
    context.rotateCTM(-OrvTSMath::radianFromDegrees(result->degree()));
    context.translateCTM(-laySize.width * 0.5, -laySize.height * 0.5);
    context.drawImage(gfx::Rect(0, 0, laySize.width, laySize.height), *picture->bitmap());
    context.restoreGState();
    sticker->setImage(nullptr);
}

void OrvStickerFactory::appendTextLayout(const std::shared_ptr<OrvStickerResult>& result,
                                         gfx::Size size, gfx::ImageContext& context,
                                         gfx::Size laySize) {
    const std::shared_ptr<OrvSticker>& sticker = result->sticker();
    if (!sticker->texts()) return;
    const gfx::Rect& center = result->center();
    const gfx::Rect parent(center.origin.x * size.width - laySize.width * 0.5,
                           center.origin.y * size.height - laySize.height * 0.5, laySize.width,
                           laySize.height);
    const double fontScale =
        largerRatio(laySize.width, sticker->size().width, laySize.height, sticker->size().height);
    const double angle = (result->degree() / 180.0) * 3.141592653589793;
    for (const auto& text : *sticker->texts()) {
        appenTextLayout(text, parent, context, fontScale, angle);
    }
}

void OrvStickerFactory::appenTextLayout(const std::shared_ptr<OrvStickerText>& text,
                                        const gfx::Rect& parentRect, gfx::ImageContext& context,
                                        double fontScale, double degree) {
    if (!text || gfx::rectIsEmpty(parentRect) || gfx::rectIsEmpty(text->rect())) return;
    const gfx::Rect& rect = text->rect();
    const gfx::Rect r(parentRect.origin.x + parentRect.size.width * rect.origin.x,
                      parentRect.origin.y + parentRect.size.height * rect.origin.y,
                      parentRect.size.width * rect.size.width,
                      parentRect.size.height * rect.size.height);
    // A text shown at some box on the screen keeps its font in proportion to that box.
    if (!isZero(text->rectSize())) {
        fontScale = largerRatio(parentRect.size.width, text->rectSize().width / rect.size.width,
                                parentRect.size.height, text->rectSize().height / rect.size.height);
    }
    const gfx::Font base = text->textStyleDic() && text->textStyleDic()->font
                               ? *text->textStyleDic()->font
                               : gfx::Font::systemFont(text->size());
    const gfx::Font font = base.withSize(base.pointSize * fontScale);

    // The text turns about the centre of its own box, not about the sticker's centre.
    const gfx::Point c{gfx::rectGetMidX(r), gfx::rectGetMidY(r)};
    context.saveGState();
    context.setShadow({fontScale, fontScale}, 0, text->shadowColor());
    context.concatCTM(gfx::AffineTransform::translation(c.x, c.y));
    context.concatCTM(gfx::AffineTransform::rotation(degree));
    context.concatCTM(gfx::AffineTransform::translation(-c.x, -c.y));
    if (text->textImage()) {
        context.drawImageInRect(*text->textImage(), r);
    } else {
        drawCharacters(*text, font, r, context);
    }
    context.restoreGState();
}
