#include "orvviews/widgets/smudge/OrvSimpleProcessor.h"

#include <cmath>
#include <limits>

#include "platform/rt/DispatchQueue.h"
#include "platform/rt/Memory.h"
#include "platform/ui/Screen.h"

ORV_DEFINE_CLASS(OrvSimpleProcessor, rt::Object)

namespace {

// A segment never lays more stamps than this: a brush far smaller than a pixel dragged across
// the screen would otherwise stamp millions of times for nothing visible.
constexpr int kMaxStepsPerSegment = 4096;

gfx::Rect canvasRect(int width, int height) {
    return {0, 0, double(width), double(height)};
}

}  // namespace

std::unique_ptr<gfx::BitmapContext> OrvSimpleProcessor::createBitmapContextWithWidth(int width,
                                                                                     int height) {
    return std::make_unique<gfx::BitmapContext>(width, height);
}

std::unique_ptr<gfx::BitmapContext> OrvSimpleProcessor::createBitmapContextWithSizeOfImage(
    const gfx::ImagePtr& image, bool drawImage) {
    const gfx::BitmapPtr& bitmap = image ? image->bitmap() : nullptr;
    const int width = bitmap ? bitmap->width() : 0;
    const int height = bitmap ? bitmap->height() : 0;
    auto context = createBitmapContextWithWidth(width, height);
    if (drawImage && bitmap) context->drawImage(canvasRect(width, height), *bitmap);
    return context;
}

std::vector<uint8_t> OrvSimpleProcessor::getRGBADataFromImage(const gfx::ImagePtr& image) {
    const gfx::BitmapPtr& bitmap = image ? image->bitmap() : nullptr;
    if (!bitmap || bitmap->width() <= 0 || bitmap->height() <= 0) return {};
    std::vector<uint8_t> data(size_t(bitmap->width()) * bitmap->height() * 4);
    gfx::BitmapContext context(data.data(), bitmap->width(), bitmap->height());
    context.drawImage(canvasRect(bitmap->width(), bitmap->height()), *bitmap);
    return data;
}

void OrvSimpleProcessor::setImage(const gfx::ImagePtr& image) {
    originalImage = image;
    smudgeContext = createBitmapContextWithSizeOfImage(image, true);
    // A snapshot follows every touch move: copy only what the strokes changed.
    smudgeContext->setRecyclesSnapshots(true);
    imageWidth_ = smudgeContext->width();
    imageHeight_ = smudgeContext->height();
    imageDataSize = imageWidth_ * imageHeight_ * 4;
    originalData = getRGBADataFromImage(image);
    prevPrevTouchPointExists_ = false;
}

void OrvSimpleProcessor::setCurrentBrush(const std::shared_ptr<OrvBrush>& brush) {
    currentBrush_ = brush;
    brushImage = brush ? brush->image() : nullptr;
    brushContext = createBitmapContextWithSizeOfImage(brushImage, false);
    brushContext->setRecyclesSnapshots(true);  // one snapshot a stamp
}

void OrvSimpleProcessor::setBrushSize(double size) {
    brushSize_ = size;
    if (!currentBrush_) return;
    const ui::Screen& screen = ui::Screen::main();
    const float screenPixels = float(screen.bounds().size.width * screen.scale());
    const double width = brushImageSize().width;
    brushScale_ = width > 0 ? screenPixels * size / width : 0;
}

gfx::Size OrvSimpleProcessor::brushImageSize() const {
    return brushImage ? brushImage->size() : gfx::Size{};
}

double OrvSimpleProcessor::getMaxTemplateDistance(double templateSize) {
    return templateSize * double(0.8f);
}

void OrvSimpleProcessor::touchesBegan() {
    prevPrevTouchPointExists_ = false;
}

gfx::ImagePtr OrvSimpleProcessor::drawAtCurrentPoint(gfx::Point current, gfx::Point from) {
    gfx::Point before = from;
    if (prevPrevTouchPointExists_) {
        before = prevPrevTouchPoint_;
    } else {
        prevPrevTouchPointExists_ = true;
    }
    const float templateSize = float(brushImageSize().width * brushSize_);
    const double dx = current.x - from.x, dy = current.y - from.y;
    const float distance = powf(float(dx * dx + dy * dy), 0.5f);
    const float maxDistance = float(getMaxTemplateDistance(templateSize));
    // A brush of no width has nothing to space; one stamp marks the segment.
    const float rawSteps = maxDistance > 0 ? distance / maxDistance + 1 : 1;
    const int steps = rawSteps < kMaxStepsPerSegment ? int(rawSteps) : kMaxStepsPerSegment;

    float scale = float(brushScale_);
    if (currentBrush_ && (currentBrush_->brushType() == OrvBrush::kMosaic ||
                          currentBrush_->brushType() == OrvBrush::kEraser)) {
        scale /= 2;
    }
    float alpha = 1.0f - 0.5f / (1.0f + distance / templateSize);
    if (!std::isfinite(alpha)) alpha = 0.5f;

    // Without the on-screen size a point is a pixel.
    const double factorX = originIVSize_.width > 0 ? imageWidth_ / originIVSize_.width : 1;
    const double factorY = originIVSize_.height > 0 ? imageHeight_ / originIVSize_.height : 1;
    float lastX = float(from.x), lastY = float(from.y);
    for (int i = 1; i <= steps; ++i) {
        const float t = float(i) / float(steps);
        const float u = t * (1 - t);
        const float x = float(from.x + (current.x - from.x) * t + u * (from.x - before.x));
        const float y = float(from.y + (current.y - from.y) * t + u * (from.y - before.y));
        // x before y: the angle is measured from the y axis, which the stamps expect.
        const float angle = atan2f(x - lastX, y - lastY);
        lastX = x;
        lastY = y;
        drawAtPoint({x * factorX, y * factorY}, angle, scale, alpha);
    }
    prevPrevTouchPoint_ = from;
    return getSmudgeImage();
}

long long OrvSimpleProcessor::byteOffsetOfPoint(gfx::Point point) const {
    constexpr double kLimit = std::numeric_limits<int32_t>::max();
    if (!(std::abs(point.x) < kLimit && std::abs(point.y) < kLimit)) return -1;
    const long long offset =
        (static_cast<long long>(imageWidth_) * static_cast<long long>(std::trunc(point.y)) +
         static_cast<long long>(std::trunc(point.x))) *
        4;
    return offset >= 0 && offset < imageDataSize ? offset : -1;
}

void OrvSimpleProcessor::saveCurrentAsHistory() {
    gfx::ImagePtr snapshot = getSmudgeImage();
    if (!undoHistory_) undoHistory_ = std::make_unique<History>();
    undoHistory_->push_back(OrvSmudgeLog::initWithImage(std::move(snapshot)));
    organizeHistory();
    runCacheJob();
}

void OrvSimpleProcessor::organizeHistory() {
    // The dropped entry keeps its file: only a later sweep of the temporary folder takes it.
    if (undoHistory_ && undoHistory_->size() > maxUndoCount_) {
        undoHistory_->erase(undoHistory_->begin());
    }
    destroySnapArray(redoHistory_.get());
}

void OrvSimpleProcessor::runCacheJob() {
    if (!undoHistory_) return;
    // The pass walks a copy: the main thread goes on changing the list meanwhile.
    rt::globalQueue(rt::QueuePriority::High).async([logs = *undoHistory_] {
        bool wrote = false;
        for (const auto& log : logs) {
            if (log->cached()) continue;
            log->runCacheJob();
            wrote = true;
        }
        // Each write leaves canvas-sized blocks free in this thread's heap; hand them back, or
        // a long session keeps them all.
        if (wrote) rt::Memory::releaseFreeMemory();
    });
}

gfx::ImagePtr OrvSimpleProcessor::getUndoData() {
    if (!undoHistory_ || undoHistory_->empty()) return nullptr;
    std::shared_ptr<OrvSmudgeLog> last = undoHistory_->back();
    undoHistory_->pop_back();
    if (undoHistory_->empty()) {
        clearSmudgeContext();
        setImage(originalImage);
    } else {
        updateSmudgeContextWithImage(undoHistory_->back()->image());
    }
    if (!redoHistory_) redoHistory_ = std::make_unique<History>();
    redoHistory_->push_back(std::move(last));
    return getSmudgeImage();
}

gfx::ImagePtr OrvSimpleProcessor::getRedoData() {
    if (!redoHistory_ || redoHistory_->empty()) return nullptr;
    std::shared_ptr<OrvSmudgeLog> last = redoHistory_->back();
    redoHistory_->pop_back();
    updateSmudgeContextWithImage(last->image());
    if (!undoHistory_) undoHistory_ = std::make_unique<History>();
    undoHistory_->push_back(std::move(last));
    return getSmudgeImage();
}

gfx::ImagePtr OrvSimpleProcessor::getSmudgeImage() {
    if (!smudgeContext) return nullptr;
    return gfx::Image::withBitmap(smudgeContext->makeImage());
}

gfx::ImagePtr OrvSimpleProcessor::getChangedImage() const {
    if (!smudgeContext || originalData.size() != size_t(imageDataSize)) return nullptr;
    auto changed = std::make_shared<gfx::Bitmap>(imageWidth_, imageHeight_);
    const auto* canvas = reinterpret_cast<const uint32_t*>(smudgeContext->data());
    const auto* source = reinterpret_cast<const uint32_t*>(originalData.data());
    auto* out = reinterpret_cast<uint32_t*>(changed->mutableData());
    const size_t count = size_t(imageWidth_) * imageHeight_;
    for (size_t i = 0; i < count; ++i) out[i] = canvas[i] == source[i] ? 0 : canvas[i];
    return gfx::Image::withBitmap(std::move(changed));
}

gfx::ImagePtr OrvSimpleProcessor::getPreviewImage(bool preview) {
    return preview ? getSmudgeImage() : originalImage;
}

void OrvSimpleProcessor::clearSmudgeContext() {
    if (smudgeContext) smudgeContext->clearRect(canvasRect(imageWidth_, imageHeight_));
}

void OrvSimpleProcessor::updateSmudgeContextWithImage(const gfx::ImagePtr& image) {
    if (!smudgeContext) return;
    clearSmudgeContext();
    // A vanished history file leaves the canvas cleared.
    if (image && image->bitmap()) {
        smudgeContext->drawImage(canvasRect(imageWidth_, imageHeight_), *image->bitmap());
    }
}

void OrvSimpleProcessor::destroySnapArray(History* history) {
    if (!history) return;
    for (const auto& log : *history) log->destroy();
    history->clear();
}

void OrvSimpleProcessor::destroyHistory() {
    destroySnapArray(undoHistory_.get());
    destroySnapArray(redoHistory_.get());
}

void OrvSimpleProcessor::destroy() {
    smudgeContext.reset();
    originalData.clear();
    originalData.shrink_to_fit();
    brushContext.reset();
    destroyHistory();
}
