#include "orvviews/views/OrvSmudgeImageViewWrap.h"

#include "frameworks/core/OrvBrushLocalPackage.h"
#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvViewGeometry.h"
#include "orvviews/widgets/smudge/OrvSmudgeProcessor.h"
#include "platform/gfx/ImageContext.h"
#include "platform/rt/DispatchQueue.h"
#include "platform/ui/Screen.h"
#include "platform/ui/Touch.h"

ORV_DEFINE_CLASS(OrvSmudgeImageViewWrap, ui::View, OrvSmudgeImageViewInterface)

void OrvSmudgeImageViewWrap::initWithFrame(const gfx::Rect& frame) {
    ui::View::initWithFrame(frame);
    orvInitView();
}

void OrvSmudgeImageViewWrap::orvInitView() {
    backgroundImageView_ = ui::makeView<ui::ImageView>(bounds());
    addSubview(backgroundImageView_);
    smudgeImageView_ = ui::makeView<ui::ImageView>(bounds());
    addSubview(smudgeImageView_);
}

gfx::Rect OrvSmudgeImageViewWrap::getPreferImageRect(gfx::Size imageSize, gfx::Size maxSize) {
    const double r = imageSize.height / imageSize.width;
    const double maxRatio = maxSize.height / maxSize.width;
    if (r > maxRatio) {
        const double width = maxSize.height / r;
        return {0.5 * maxSize.width - 0.5 * width, 0, width, maxSize.height};
    }
    const double height = maxSize.width * r;
    return {0, 0.5 * maxSize.height - 0.5 * height, maxSize.width, height};
}

double OrvSmudgeImageViewWrap::getBrushSizeValue(long sizeCode) {
    switch (sizeCode) {
        case kBrushSizeLarge:
            return 0.2;
        case kBrushSizeMedium:
            return 0.15;
        default:
            return 0.1;
    }
}

void OrvSmudgeImageViewWrap::setImage(const gfx::ImagePtr& image) {
    originalImage_ = image;
    if (!image) return;
    gfx::Size viewSize;
    rt::mainQueue().sync([&] { viewSize = orvGetSize(*this); });
    const gfx::Rect rect = getPreferImageRect(image->size(), viewSize);
    const double scale = ui::Screen::main().scale();
    gfx::ImagePtr scaled =
        orvScaleImage(image, {rect.size.width * scale, rect.size.height * scale});
    rt::mainQueue().sync([&] {
        backgroundImageView_->setImage(scaled);
        backgroundImageView_->setFrame(rect);
        smudgeImageView_->setImage(scaled);
        smudgeImageView_->setFrame(rect);
    });
    prepareForSmudge(scaled);
}

void OrvSmudgeImageViewWrap::prepareForSmudge(const gfx::ImagePtr& image) {
    smudgeProcessor = getSmudgeProcessor();
    smudgeProcessor->setImage(image);
    smudgeProcessor->setMaxUndoCount(mMaxUndoCount_);
    updateBrushSettings();
}

std::shared_ptr<OrvSimpleProcessor> OrvSmudgeImageViewWrap::getSmudgeProcessor() {
    if (!smudgeProcessor) smudgeProcessor = rt::make<OrvSmudgeProcessor>();
    return smudgeProcessor;
}

void OrvSmudgeImageViewWrap::updateBrushSettings() {
    if (!smudgeProcessor) return;
    auto package = OrvBrushLocalPackage::package();
    if (!mBrush_) mBrush_ = package->brushWithCode(std::nullopt);
    if (!package->loadBrushData(mBrush_)) return;
    smudgeProcessor->setCurrentBrush(mBrush_);
    smudgeProcessor->setBrushSize(getBrushSizeValue(mBrushSize_));
}

void OrvSmudgeImageViewWrap::setBrush(const std::shared_ptr<OrvBrush>& brush) {
    if (!brush) return;
    mBrush_ = brush;
    updateBrushSettings();
}

void OrvSmudgeImageViewWrap::setBrushSize(long sizeCode) {
    mBrushSize_ = sizeCode;
    if (smudgeProcessor) smudgeProcessor->setBrushSize(getBrushSizeValue(sizeCode));
}

void OrvSmudgeImageViewWrap::setBrushCustomSize(double size) {
    mBrushCustomSize_ = size;
    if (smudgeProcessor) smudgeProcessor->setBrushSize(size);
}

void OrvSmudgeImageViewWrap::setMaxUndoCount(uint64_t count) {
    mMaxUndoCount_ = count;
    if (smudgeProcessor) smudgeProcessor->setMaxUndoCount(count);
}

void OrvSmudgeImageViewWrap::touchesBegan(const ui::TouchSet&, ui::Event*) {
    if (smudgeProcessor) smudgeProcessor->touchesBegan();
}

void OrvSmudgeImageViewWrap::touchesMoved(const ui::TouchSet& touches, ui::Event*) {
    if (!smudgeProcessor) return;
    for (const auto& touch : touches) {
        const gfx::Point current = touch->locationInView(smudgeImageView_.get());
        const gfx::Point previous = touch->previousLocationInView(smudgeImageView_.get());
        const gfx::Size canvasSize = smudgeImageView_->frame().size;
        if (auto delegate = delegate_.lock()) {
            const gfx::Point inWrap = smudgeImageView_->convertPointToView(current, this);
            delegate->onSmudgeActionChanged(current, inWrap, canvasSize.width, canvasSize.height);
        }
        if (smudgeProcessor->originIVSize() == gfx::Size{}) {
            smudgeProcessor->setOriginIVSize(canvasSize);
        }
        smudgeImageView_->setImage(smudgeProcessor->drawAtCurrentPoint(current, previous));
    }
}

// A cancelled stroke stays on the canvas without an entry of its own; the next saved state
// includes it.
void OrvSmudgeImageViewWrap::touchesEnded(const ui::TouchSet&, ui::Event*) {
    if (!smudgeProcessor) return;
    smudgeProcessor->saveCurrentAsHistory();
    notifySmudgeActionChange();
    if (auto delegate = delegate_.lock()) delegate->onSmudgeActionEnd();
}

uint64_t OrvSmudgeImageViewWrap::getUndoCount() const {
    return smudgeProcessor ? smudgeProcessor->getUndoCount() : 0;
}

uint64_t OrvSmudgeImageViewWrap::getRedoCount() const {
    return smudgeProcessor ? smudgeProcessor->getRedoCount() : 0;
}

void OrvSmudgeImageViewWrap::undo() {
    if (!smudgeProcessor) return;
    if (getUndoCount() != 0) smudgeImageView_->setImage(smudgeProcessor->getUndoData());
    notifySmudgeActionChange();
}

void OrvSmudgeImageViewWrap::redo() {
    if (!smudgeProcessor) return;
    if (getRedoCount() != 0) smudgeImageView_->setImage(smudgeProcessor->getRedoData());
    notifySmudgeActionChange();
}

void OrvSmudgeImageViewWrap::notifySmudgeActionChange() {
    if (auto delegate = delegate_.lock()) {
        delegate->onRefreshStepStatesWithHistories(getUndoCount(), getRedoCount());
    }
}

void OrvSmudgeImageViewWrap::showOriginal(bool original) {
    if (smudgeProcessor) smudgeImageView_->setImage(smudgeProcessor->getPreviewImage(!original));
}

void OrvSmudgeImageViewWrap::needUpdateLayout() {
    smudgeImageView_->setFrame(bounds());
}

gfx::ImagePtr OrvSmudgeImageViewWrap::getSmudgeImage() {
    return smudgeProcessor ? smudgeProcessor->getSmudgeImage() : nullptr;
}

// The canvas starts as the displayed copy of the picture, so stretching all of it over the full
// picture would blur what the user never touched. Only the pixels that strokes changed go over
// it; the rest of the picture keeps its full resolution.
gfx::ImagePtr OrvSmudgeImageViewWrap::getCanvasImage(const gfx::ImagePtr& image) {
    if (!smudgeProcessor) return mergeImage(image, nullptr);
    return mergeImage(image, smudgeProcessor->getChangedImage());
}

gfx::ImagePtr OrvSmudgeImageViewWrap::mergeImage(const gfx::ImagePtr& image,
                                                 const gfx::ImagePtr& mask) {
    if (!image) return nullptr;
    const gfx::Size size = image->size();
    gfx::ImageContext context(size, false, 1);
    const gfx::Rect rect{0, 0, size.width, size.height};
    context.drawImageInRect(*image, rect);
    if (mask) context.drawImageInRect(*mask, rect);
    return context.endImage();
}

void OrvSmudgeImageViewWrap::destroy() {
    if (smudgeProcessor) smudgeProcessor->destroy();
    smudgeImageView_->setImage(nullptr);
    originalImage_.reset();
}

void OrvSmudgeImageViewWrap::destroyHistory() {
    if (smudgeProcessor) smudgeProcessor->destroyHistory();
    smudgeImageView_->setImage(nullptr);
    originalImage_.reset();
}
