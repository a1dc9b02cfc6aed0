#include "orvviews/views/OrvTouchImageView.h"

#include <algorithm>
#include <cmath>

#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvStatistics.h"
#include "frameworks/core/OrvTSLog.h"
#include "frameworks/core/OrvViewGeometry.h"
#include "platform/ui/TapGestureRecognizer.h"

ORV_DEFINE_CLASS(OrvTouchImageView, ui::View, ui::ScrollViewDelegate, OrvTouchImageViewInterface)

namespace {

// A ratio that is not a positive number means no window.
double usableRatio(double ratio) {
    if (std::isfinite(ratio) && ratio >= 0) return ratio;
    OrvTSLog::warn("crop ratio %g taken as no window", ratio);
    return 0;
}

double clampedFraction(double value) {
    return std::isfinite(value) ? std::clamp(value, 0.0, 1.0) : 0;
}

}  // namespace

std::shared_ptr<OrvTouchImageView> OrvTouchImageView::me() {
    return std::static_pointer_cast<OrvTouchImageView>(shared_from_this());
}

void OrvTouchImageView::initWithFrame(const gfx::Rect& frame) {
    ui::View::initWithFrame(frame);
    wrapView_ = ui::makeView<ui::ScrollView>(bounds());
    wrapView_->setMultipleTouchEnabled(true);
    wrapView_->setShowsHorizontalScrollIndicator(false);
    wrapView_->setShowsVerticalScrollIndicator(false);
    wrapView_->setAlwaysBounceHorizontal(true);
    wrapView_->setAlwaysBounceVertical(true);
    wrapView_->setMinimumZoomScale(1.0);
    wrapView_->setZoomScale(1.0);
    wrapView_->setMaximumZoomScale(kMaximumZoom);
    wrapView_->setDelegate(std::static_pointer_cast<ui::ScrollViewDelegate>(me()));
    addSubview(wrapView_);
    imageWrapView_ = ui::makeView<ui::View>(bounds());
    wrapView_->addSubview(imageWrapView_);
    imageView_ = ui::makeView<ui::ImageView>(bounds());
    imageView_->setContentMode(ui::ContentMode::ScaleAspectFit);
    imageWrapView_->addSubview(imageView_);
    bindDoubelCilck();
}

void OrvTouchImageView::bindDoubelCilck() {
    auto doubleTap = rt::make<ui::TapGestureRecognizer>();
    doubleTap->setNumberOfTapsRequired(2);
    std::weak_ptr<OrvTouchImageView> weak = me();
    doubleTap->addTarget(weak, [weak](ui::GestureRecognizer& g) {
        if (auto self = weak.lock()) self->doubleGesture(static_cast<ui::TapGestureRecognizer&>(g));
    });
    wrapView_->addGestureRecognizer(doubleTap);
}

void OrvTouchImageView::doubleGesture(ui::TapGestureRecognizer&) {
    const bool atMinimum = wrapView_->zoomScale() == wrapView_->minimumZoomScale();
    wrapView_->setZoomScale(
        atMinimum ? wrapView_->maximumZoomScale() : wrapView_->minimumZoomScale(), true);
}

const std::shared_ptr<OrvMaskRegionView>& OrvTouchImageView::cutRegionView() {
    if (!cutRegionView_) {
        cutRegionView_ = ui::makeView<OrvMaskRegionView>(wrapView_->bounds());
        cutRegionView_->setFrame(wrapView_->frame());
        insertSubviewAbove(cutRegionView_, wrapView_.get());
        cutRegionView_->setEdgeSideColor(gfx::Color::white(1, 0.5));
        cutRegionView_->setEdgeSideWidth(2.0);
    }
    return cutRegionView_;
}

void OrvTouchImageView::setRegionRatio(double ratio) {
    ratio = usableRatio(ratio);
    regionRatio_ = ratio;
    cutRegionView()->setRegionRatio(ratio);
}

gfx::ImageOrientation OrvTouchImageView::imageOrientation() const {
    const auto& image = imageView_->image();
    return image ? image->orientation() : gfx::ImageOrientation::Up;
}

gfx::Rect OrvTouchImageView::contentRectWithSize(gfx::Size size) {
    gfx::Rect region;
    if (regionRatio_ > 0) region = cutRegionView()->regionRect();
    return contentRectWithSize(size, region);
}

gfx::Rect OrvTouchImageView::contentRectWithSize(gfx::Size size, const gfx::Rect& region) {
    gfx::Rect q;
    if (!gfx::rectIsEmpty(region)) {
        q.size = convertViewSizeScaleAspectFillWithSize(region.size, size);
        // Insets of the window's margins let the picture's edges reach the window's edges.
        wrapView_->setContentInset(
            {region.origin.y, region.origin.x, region.origin.y, region.origin.x});
        wrapView_->setContentOffset({(q.size.width - region.size.width) * 0.5 - region.origin.x,
                                     (q.size.height - region.size.height) * 0.5 - region.origin.y});
        imageView_->setContentMode(ui::ContentMode::ScaleAspectFill);
    } else {
        q = convertScaleAspectFitWithSize(*wrapView_, size);
        // Measured against the scroll view's bounds, whose origin is the offset.
        q.origin.x -= wrapView_->bounds().origin.x;
        q.origin.y -= wrapView_->bounds().origin.y;
        wrapView_->setContentInset({q.origin.y, q.origin.x, q.origin.y, q.origin.x});
        // The insets centre the picture at the offset that shows them.
        wrapView_->setContentOffset({-q.origin.x, -q.origin.y});
        imageView_->setContentMode(ui::ContentMode::ScaleAspectFit);
    }
    wrapView_->setContentSize(q.size);
    return q;
}

void OrvTouchImageView::setImage(const gfx::ImagePtr& image) {
    if (!image) return;
    const gfx::Rect q = contentRectWithSize(image->size());
    imageView_->setFrame({0, 0, q.size.width, q.size.height});
    imageWrapView_->setFrame({0, 0, q.size.width, q.size.height});
    imageView_->setImage(image);
}

void OrvTouchImageView::needUpdateLayout() {
    const gfx::Rect b = bounds();
    wrapView_->setFrame(b);
    imageWrapView_->setFrame(b);
    imageView_->setFrame(b);
    if (cutRegionView_) {
        cutRegionView_->setFrame(b);
        cutRegionView_->needUpdateLayout();
    }
}

void OrvTouchImageView::setAnimingState(bool animating) {
    isInAniming_ = animating;
    if (auto delegate = delegate_.lock()) delegate->onOrvKitICTouchImageView(*this, animating);
}

void OrvTouchImageView::changeRegionRatio(double ratio) {
    ratio = usableRatio(ratio);
    if (isInAniming_ || ratio == regionRatio_) return;
    regionRatio_ = ratio;
    setAnimingState(true);
    gfx::Rect region = cutRegionView()->changeRegionRatio(ratio);
    if (ratio <= 0) region = {};
    auto self = me();
    ui::View::animateWithDuration(
        kAnimationSeconds,
        [self, region] {
            self->wrapView_->setZoomScale(self->wrapView_->minimumZoomScale());
            const auto& image = self->imageView_->image();
            const gfx::Size size = image ? image->size() : self->imageView_->bounds().size;
            const gfx::Rect q = self->contentRectWithSize(size, region);
            if (q.size == self->imageView_->frame().size) {
                // Nudged, so that the animation has a change to make.
                orvSetSize(*self->imageView_,
                           {float(q.size.width + 0.01), float(q.size.height + 0.01)});
            }
            orvSetSize(*self->imageView_, q.size);
            orvSetSize(*self->imageWrapView_, q.size);
        },
        [self](bool) { self->setAnimingState(false); });
}

void OrvTouchImageView::changeImage(long change) {
    if (isInAniming_) return;
    setAnimingState(true);
    auto self = me();
    ui::View::animateWithDuration(
        kAnimationSeconds,
        [self, change] {
            self->wrapView_->setZoomScale(self->wrapView_->minimumZoomScale());
            switch (change) {
                case kTurnLeft:
                    self->resizeWithTrun(true);
                    break;
                case kTurnRight:
                    self->resizeWithTrun(false);
                    break;
                case kMirrorHorizontal:
                    self->mirrorWithHorizontal(true);
                    break;
                case kMirrorVertical:
                    self->mirrorWithHorizontal(false);
                    break;
                default:
                    break;
            }
        },
        [self, change](bool) {
            switch (change) {
                case kTurnLeft:
                    self->resizeCompletedWithTrun(true);
                    break;
                case kTurnRight:
                    self->resizeCompletedWithTrun(false);
                    break;
                case kMirrorHorizontal:
                    self->mirrorCompletedWithHorizontal(true);
                    break;
                case kMirrorVertical:
                    self->mirrorCompletedWithHorizontal(false);
                    break;
                default:
                    break;
            }
            self->setAnimingState(false);
        });
    appendStatistics(change);
}

void OrvTouchImageView::appendStatistics(long change) {
    switch (change) {
        case kTurnLeft:
            OrvStatistics::appendWithComponentIdt(0x401011);
            break;
        case kTurnRight:
            OrvStatistics::appendWithComponentIdt(0x401012);
            break;
        case kMirrorHorizontal:
            OrvStatistics::appendWithComponentIdt(0x401021);
            break;
        case kMirrorVertical:
            OrvStatistics::appendWithComponentIdt(0x401022);
            break;
        default:
            break;
    }
}

void OrvTouchImageView::resizeWithTrun(bool left) {
    const gfx::Size size = imageView_->bounds().size;
    const gfx::Rect q = contentRectWithSize({size.height, size.width});
    imageView_->setTransform(gfx::AffineTransform::rotation(left ? -M_PI / 2 : M_PI / 2));
    imageView_->setFrame({0, 0, q.size.width, q.size.height});
}

void OrvTouchImageView::resizeCompletedWithTrun(bool left) {
    imageView_->setTransform(gfx::AffineTransform::identity());
    const auto& image = imageView_->image();
    imageView_->setImage(left ? orvChangeTurnLeft(image) : orvChangeTurnRight(image));
    const gfx::Size size = imageView_->bounds().size;
    imageView_->setFrame({0, 0, size.height, size.width});
    orvSetSize(*imageWrapView_, {size.height, size.width});
}

// A flip about the picture's middle; the platform's perspective turn is drawn flat here, as a
// mirror image growing out of its edge-on middle.
void OrvTouchImageView::mirrorWithHorizontal(bool horizontal) {
    contentRectWithSize(imageView_->bounds().size);
    imageView_->setTransform(horizontal ? gfx::AffineTransform::scale(-1, 1)
                                        : gfx::AffineTransform::scale(1, -1));
}

void OrvTouchImageView::mirrorCompletedWithHorizontal(bool horizontal) {
    imageView_->setTransform(gfx::AffineTransform::identity());
    const auto& image = imageView_->image();
    imageView_->setImage(horizontal ? orvChangeMirrorHorizontal(image)
                                    : orvChangeMirrorVertical(image));
}

gfx::Rect OrvTouchImageView::countImageCutRect() {
    if (regionRatio_ <= 0 || !cutRegionView_) return {};
    const double zoom = wrapView_->zoomScale();
    const double width = imageView_->frame().size.width * zoom;
    const double height = imageView_->frame().size.height * zoom;
    if (!(width > 0) || !(height > 0)) return {};
    const gfx::Point offset = wrapView_->contentOffset();
    const gfx::EdgeInsets inset = wrapView_->contentInset();
    const gfx::Rect region = cutRegionView_->regionRect();
    return {(offset.x + inset.left) / width, (offset.y + inset.top) / height,
            region.size.width / width, region.size.height / height};
}

void OrvTouchImageView::restoreWithZoomRect(const gfx::Rect& given, double zoomScale) {
    if (gfx::rectIsEmpty(given) || !std::isfinite(zoomScale)) return;
    // A crop saved from elsewhere may reach past the picture: its corner is kept on it.
    const gfx::Rect rect{clampedFraction(given.origin.x), clampedFraction(given.origin.y),
                         given.size.width, given.size.height};
    if (rect.origin != given.origin) {
        OrvTSLog::warn("crop (%g, %g) starts off the picture; moved onto it", given.origin.x,
                       given.origin.y);
    }
    wrapView_->setZoomScale(zoomScale);
    const double width = imageView_->frame().size.width * zoomScale;
    const double height = imageView_->frame().size.height * zoomScale;
    const gfx::EdgeInsets inset = wrapView_->contentInset();
    wrapView_->setContentOffset(
        {rect.origin.x * width - inset.left, rect.origin.y * height - inset.top});
}

bool OrvTouchImageView::inActioning() {
    return isInAniming_ || wrapView_->isDragging() || wrapView_->isZooming() ||
           wrapView_->isSettling();
}
