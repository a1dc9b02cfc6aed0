#include "orvviews/widgets/sticker/OrvStickerItemView.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "frameworks/core/OrvTSMath.h"
#include "frameworks/core/OrvViewExtension.h"
#include "frameworks/core/OrvViewGeometry.h"
#include "platform/gfx/TextLayout.h"
#include "platform/ui/Layer.h"

ORV_DEFINE_CLASS(OrvStickerItemView, ui::View, ui::GestureRecognizerDelegate,
                 OrvStickerItemViewInterface)

namespace {

constexpr double kButtonSide = 36;

bool isState(const ui::GestureRecognizer& recognizer, ui::GestureRecognizerState state) {
    return recognizer.state() == state;
}

}  // namespace

void OrvStickerItemView::initWithFrame(const gfx::Rect& frame) {
    ui::View::initWithFrame(frame);
    orvInitView();
}

void OrvStickerItemView::dealloc() {
    viewWillDestory();
    ui::View::dealloc();
}

void OrvStickerItemView::orvInitView() {
    mScale = 1.0;

    imageView = ui::makeView<ui::ImageView>(bounds());
    imageView->setContentMode(ui::ContentMode::ScaleAspectFit);
    // The picture turns with the item; smooth edges keep it from looking jagged.
    imageView->layer().setAllowsEdgeAntialiasing(true);
    addSubview(imageView);

    cancelButton =
        buttonWithFrame({0, 0, kButtonSide, kButtonSide}, "style_default_edit_drag_cancel");
    cancelButton->addTarget(
        weakSelf(), [this](ui::Control&, ui::Event*) { handleCancelButton(); },
        ui::ControlEventTouchUpInside);
    addSubview(cancelButton);

    const gfx::Size size = bounds().size;
    turnButton = buttonWithFrame(
        {size.width - kButtonSide, size.height - kButtonSide, kButtonSide, kButtonSide},
        "style_default_edit_drag_rotate_scale");
    addSubview(turnButton);

    resetImageEdge();
    appendGestureRecognizer();
}

void OrvStickerItemView::resetImageEdge() {
    // Half a button on each side, so that each button's centre sits on a corner of the picture.
    mImageEdge.left = std::trunc(orvGetSizeWidth(*cancelButton) / 2);
    mImageEdge.right = std::trunc(orvGetSizeWidth(*turnButton) / 2);
    mImageEdge.top = std::trunc(orvGetSizeHeight(*cancelButton) / 2);
    mImageEdge.bottom = std::trunc(orvGetSizeHeight(*turnButton) / 2);
    mCMargin = {mImageEdge.left + mImageEdge.right, mImageEdge.top + mImageEdge.bottom};
    orvSetOrigin(*imageView, {mImageEdge.left, mImageEdge.top});
    orvSetSize(*this, orvGetSize(*this));
    resetViewsBounds();
}

void OrvStickerItemView::resetViewsBounds() {
    const gfx::Size size = bounds().size;
    orvSetSize(*imageView, {size.width - mCMargin.width, size.height - mCMargin.height});
    orvSetOrigin(*turnButton, {size.width - orvGetSizeWidth(*turnButton),
                               size.height - orvGetSizeHeight(*turnButton)});
}

void OrvStickerItemView::setSticker(std::shared_ptr<OrvSticker> sticker) {
    if (!sticker) return;
    sticker_ = std::move(sticker);
    if (sticker_->type() == OrvSticker::kText) turnButton->setHidden(true);
    mCSize = sticker_->size();
    imageView->setImage(sticker_->image());
    // The image view keeps its own reference; the package loads the picture again to compose.
    if (sticker_->idt() != 0) sticker_->setImage(nullptr);
    initStickerPostion();
}

std::optional<gfx::Size> OrvStickerItemView::parentSize() const {
    if (!superview()) return std::nullopt;
    return superview()->bounds().size;
}

void OrvStickerItemView::initStickerPostion() {
    const auto parent = parentSize();
    if (mCSize == gfx::Size{} || !parent) return;

    mCHypotenuse = OrvTSMath::distanceOfPointX1(0, 0, mCSize.width, mCSize.height);
    // The height adds the margin's width too; the buttons are square, so it comes to the same.
    mDefaultViewSize = {mCSize.width + mCMargin.width, mCSize.height + mCMargin.width};
    mMaxScale = std::min((parent->width - mCMargin.width) / mCSize.width,
                         (parent->height - mCMargin.height) / mCSize.height);
    if (mMaxScale < minScale()) mMaxScale = minScale();

    orvSetSize(*this, mDefaultViewSize);
    resetViewsBounds();
    // Scale 1 even when that overflows the parent: the next scale step pulls it to the limit.
    orvSetOrigin(*this, {(parent->width - mDefaultViewSize.width) * 0.5,
                         (parent->height - mDefaultViewSize.height) * 0.5});

    if (sticker_ && sticker_->type() == OrvSticker::kText) createStickerTexts(sticker_->texts());
}

void OrvStickerItemView::createStickerTexts(const std::optional<OrvSticker::Texts>& texts) {
    if (!texts) return;
    // The labels of an earlier sticker go with it.
    for (const auto& label : mTextViews) label->removeFromSuperview();
    mTextViews = {};
    for (const auto& text : *texts) buildStickerTextView(text);
}

void OrvStickerItemView::buildStickerTextView(const std::shared_ptr<OrvStickerText>& text) {
    if (!text) return;
    gfx::Rect frame{mImageEdge.left, mImageEdge.top, mCSize.width, mCSize.height};
    const gfx::Rect& place = text->rect();
    if (!gfx::rectIsEmpty(place)) {
        frame.origin.x += std::trunc(mCSize.width * place.origin.x);
        frame.origin.y += std::trunc(mCSize.height * place.origin.y);
        frame.size = {std::trunc(mCSize.width * place.size.width),
                      std::trunc(mCSize.height * place.size.height)};
    }

    auto label = ui::makeView<ui::Label>(frame);
    ::initWithFrame(*label, frame, text->size(), text->color(),
                    static_cast<gfx::TextAlignment>(text->alignment()));
    // However large the text comes out, it stays centred on its place.
    const gfx::Point center = label->center();
    setMultipleText(*label, text->text(), frame.size);
    label->setCenter(center);
    label->setNumberOfLines(1);
    label->setLineBreakMode(gfx::LineBreakMode::TruncateTail);
    shadowDefault(*label);

    insertSubviewBelow(label, cancelButton.get());
    mTextViews.push_back(label);
}

double OrvStickerItemView::minScale() {
    if (minScale_ < 0.5) minScale_ = 0.5;
    return minScale_;
}

void OrvStickerItemView::setSelected(bool selected) {
    if (!selected && hasTouched) return;
    selected_ = selected;
    orvSetBorderWidth(*imageView, strokeWidth_, selected ? strokeColor_ : gfx::Color::clear());
    cancelButton->setHidden(!selected);
    if (sticker_ && sticker_->type() == OrvSticker::kImage) turnButton->setHidden(!selected);
}

void OrvStickerItemView::handleCancelButton() {
    if (sticker_) sticker_->setImage(nullptr);
    if (auto listener = delegate()) listener->onClosedStickerItemView(*this);
}

std::shared_ptr<OrvStickerResult> OrvStickerItemView::resultWithRegionRect(
    const gfx::Rect& region) {
    return OrvStickerResult::initWithSticker(sticker_, centerOfParentRegin(region),
                                             static_cast<float>(mDegree));
}

gfx::Rect OrvStickerItemView::centerOfParentRegin(gfx::Rect region) {
    if (!superview()) return region;
    if (gfx::rectIsEmpty(region)) region = superview()->bounds();
    // The drawn picture: unrounded scale, no margins.
    gfx::Rect q{center().x, center().y, mCSize.width * mScale, mCSize.height * mScale};
    q = gfx::rectOffset(q, -region.origin.x, -region.origin.y);
    q.origin.x /= region.size.width;
    q.size.width /= region.size.width;
    q.origin.y /= region.size.height;
    q.size.height /= region.size.height;
    return q;
}

gfx::Point OrvStickerItemView::fixedCenterPoint(gfx::Point point) const {
    const auto parent = parentSize();
    if (!parent) return point;
    return {std::clamp(point.x, 0.0, parent->width), std::clamp(point.y, 0.0, parent->height)};
}

void OrvStickerItemView::computerAngleWithPoint(gfx::Point point, gfx::Point lastPoint,
                                                gfx::Point center) {
    const double a0 = OrvTSMath::degreesWithPoint(lastPoint, center);
    const double a1 = OrvTSMath::degreesWithPoint(point, center);
    mDegree = OrvTSMath::numberFloat(mDegree + 360.0 + (a1 - a0), 360);
    rotationWithDegrees(*this, mDegree);
}

void OrvStickerItemView::computerScaleWithPoint(gfx::Point point, gfx::Point lastPoint,
                                                gfx::Point center) {
    const double d0 = OrvTSMath::distanceOfEndPoint(lastPoint, center);
    const double d1 = OrvTSMath::distanceOfEndPoint(point, center);
    if (d1 - d0 == 0) return;
    computerScaleWithScale((d1 - d0) / mCHypotenuse, center);
}

void OrvStickerItemView::computerScaleWithScale(double scale, gfx::Point center) {
    // Twice the change: the handle sits half a diagonal from the centre, so it follows the
    // finger. Pinching goes through here too and runs twice as fast as the fingers.
    mScale += 2.0 * scale;
    mScale = std::max(minScale(), std::min(mScale, mMaxScale));
    const gfx::Size size{std::trunc(mCSize.width * mScale + mCMargin.width),
                         std::trunc(mCSize.height * mScale + mCMargin.height)};
    const gfx::Point fixed = fixedCenterPoint(center);
    setBounds({0, 0, size.width, size.height});
    setCenter(fixed);
    resetViewsBounds();
}

void OrvStickerItemView::handlePanGesture(ui::PanGestureRecognizer& recognizer) {
    isInGesture = true;
    const gfx::Point p = recognizer.locationInView(superview());
    if (isState(recognizer, ui::GestureRecognizerState::Began)) {
        if (!turnButton->isHidden()) {
            isRotatScaleAction =
                gfx::rectContainsPoint(turnButton->frame(), recognizer.locationInView(this));
        }
    } else if (isState(recognizer, ui::GestureRecognizerState::Changed)) {
        if (isRotatScaleAction) {
            handlePanGestureRotatScaleAction(p);
        } else {
            handlePanGestureTransAction(p);
        }
    } else {
        hasTouched = false;
    }
    lastPotion = p;
}

void OrvStickerItemView::handlePanGestureTransAction(gfx::Point point) {
    const gfx::Point c = center();
    setCenter(fixedCenterPoint({c.x + point.x - lastPotion.x, c.y + point.y - lastPotion.y}));
}

void OrvStickerItemView::handlePanGestureRotatScaleAction(gfx::Point point) {
    const gfx::Point c = center();
    computerAngleWithPoint(point, lastPotion, c);
    computerScaleWithPoint(point, lastPotion, c);
}

void OrvStickerItemView::handleRotationGesture(ui::RotationGestureRecognizer& recognizer) {
    isInGesture = true;
    if (isState(recognizer, ui::GestureRecognizerState::Changed)) {
        mDegree = OrvTSMath::numberFloat(
            mDegree + 360.0 + OrvTSMath::degreesFromRadian(recognizer.rotation()), 360);
        rotationWithDegrees(*this, mDegree);
    } else {
        hasTouched = isState(recognizer, ui::GestureRecognizerState::Began);
    }
    recognizer.setRotation(0);
}

void OrvStickerItemView::handlePinchGesture(ui::PinchGestureRecognizer& recognizer) {
    isInGesture = true;
    if (isState(recognizer, ui::GestureRecognizerState::Changed)) {
        computerScaleWithScale(recognizer.scale() - 1.0, center());
    } else {
        hasTouched = isState(recognizer, ui::GestureRecognizerState::Began);
    }
    recognizer.setScale(1.0);
}

void OrvStickerItemView::appendGestureRecognizer() {
    const auto target = weakSelf();
    const std::weak_ptr<ui::GestureRecognizerDelegate> simultaneous = self<OrvStickerItemView>();

    panGesture = rt::make<ui::PanGestureRecognizer>();
    panGesture->setMaximumNumberOfTouches(1);
    panGesture->addTarget(target, [this](ui::GestureRecognizer& g) {
        handlePanGesture(static_cast<ui::PanGestureRecognizer&>(g));
    });
    addGestureRecognizer(panGesture);

    rotationGesture = rt::make<ui::RotationGestureRecognizer>();
    rotationGesture->setDelegate(simultaneous);
    rotationGesture->addTarget(target, [this](ui::GestureRecognizer& g) {
        handleRotationGesture(static_cast<ui::RotationGestureRecognizer&>(g));
    });
    addGestureRecognizer(rotationGesture);

    pinchGesture = rt::make<ui::PinchGestureRecognizer>();
    pinchGesture->setDelegate(simultaneous);
    pinchGesture->addTarget(target, [this](ui::GestureRecognizer& g) {
        handlePinchGesture(static_cast<ui::PinchGestureRecognizer&>(g));
    });
    addGestureRecognizer(pinchGesture);
}

void OrvStickerItemView::removeGestureRecognizer() {
    for (const ui::GestureRecognizer* recognizer :
         std::initializer_list<const ui::GestureRecognizer*>{
             panGesture.get(), rotationGesture.get(), pinchGesture.get()}) {
        if (recognizer) removeGestureRecognizer(recognizer);
    }
}

void OrvStickerItemView::viewWillDestory() {
    removeGestureRecognizer();
}

void OrvStickerItemView::touchesBegan(const ui::TouchSet&, ui::Event*) {
    isInGesture = false;
    hasTouched = true;
    if (auto listener = delegate()) listener->onSelectedStickerItemView(*this);
}

void OrvStickerItemView::touchesEnded(const ui::TouchSet&, ui::Event*) {
    // A plain tap lets go at once; after a gesture, the gesture's own end lets go.
    hasTouched = isInGesture;
}

void OrvStickerItemView::touchesCancelled(const ui::TouchSet& touches, ui::Event* event) {
    touchesEnded(touches, event);
}

bool OrvStickerItemView::shouldRecognizeSimultaneouslyWithGestureRecognizer(
    ui::GestureRecognizer&, ui::GestureRecognizer&) {
    return true;
}
