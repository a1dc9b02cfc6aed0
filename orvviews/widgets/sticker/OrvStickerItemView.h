#pragma once
// One sticker lying on a photo. One finger drags it, two fingers turn and scale it, the handle
// in its lower right corner turns and scales it at once, the button in its upper left corner
// asks the layer to remove it. Its centre never leaves the parent. Scale lives in the bounds
// (the picture keeps its sharpness and the buttons their size); the only transform is the turn.

#include <memory>
#include <optional>
#include <vector>

#include "frameworks/core/OrvKit.h"
#include "frameworks/core/OrvSticker.h"
#include "frameworks/core/OrvStickerText.h"
#include "orvviews/widgets/sticker/OrvStickerItemViewInterface.h"
#include "platform/gfx/Color.h"
#include "platform/gfx/Geometry.h"
#include "platform/ui/Button.h"
#include "platform/ui/GestureRecognizerDelegate.h"
#include "platform/ui/ImageView.h"
#include "platform/ui/Label.h"
#include "platform/ui/PanGestureRecognizer.h"
#include "platform/ui/PinchGestureRecognizer.h"
#include "platform/ui/RotationGestureRecognizer.h"
#include "platform/ui/View.h"

class OrvStickerItemView : public ui::View,
                           public ui::GestureRecognizerDelegate,
                           public OrvStickerItemViewInterface {
    ORV_DECLARE_CLASS(OrvStickerItemView)
  public:
    // The layer passes its own bounds; setSticker() gives the item its real size.
    void initWithFrame(const gfx::Rect& frame) override;
    void dealloc() override;

    // OrvStickerItemViewInterface.
    std::shared_ptr<OrvStickerResult> resultWithRegionRect(const gfx::Rect& region) override;
    std::shared_ptr<OrvStickerItemViewDelegate> delegate() const override {
        return delegate_.lock();
    }
    void setDelegate(std::weak_ptr<OrvStickerItemViewDelegate> delegate) override {
        delegate_ = std::move(delegate);
    }
    const std::shared_ptr<OrvSticker>& sticker() const override { return sticker_; }
    void setSticker(std::shared_ptr<OrvSticker> sticker) override;
    double strokeWidth() const override { return strokeWidth_; }
    void setStrokeWidth(double width) override { strokeWidth_ = width; }
    gfx::Color strokeColor() const override { return strokeColor_; }
    void setStrokeColor(const gfx::Color& color) override { strokeColor_ = color; }
    bool selected() const override { return selected_; }
    // A held item ignores being deselected.
    void setSelected(bool selected) override;

    // Never below 0.5: a lower stored value is raised and kept.
    double minScale();
    void setMinScale(double scale) { minScale_ = scale; }

    // The centre and drawn size as fractions of `region` (the parent's bounds when empty).
    gfx::Rect centerOfParentRegin(gfx::Rect region);
    void resetImageEdge();
    void resetViewsBounds();
    void initStickerPostion();
    // The point with x in [0, parent width] and y in [0, parent height].
    gfx::Point fixedCenterPoint(gfx::Point point) const;
    void computerAngleWithPoint(gfx::Point point, gfx::Point lastPoint, gfx::Point center);
    void computerScaleWithPoint(gfx::Point point, gfx::Point lastPoint, gfx::Point center);
    void computerScaleWithScale(double scale, gfx::Point center);

    void handlePanGesture(ui::PanGestureRecognizer& recognizer);
    void handleRotationGesture(ui::RotationGestureRecognizer& recognizer);
    void handlePinchGesture(ui::PinchGestureRecognizer& recognizer);
    void handlePanGestureTransAction(gfx::Point point);
    void handlePanGestureRotatScaleAction(gfx::Point point);

    void createStickerTexts(const std::optional<OrvSticker::Texts>& texts);
    void buildStickerTextView(const std::shared_ptr<OrvStickerText>& text);

    void handleCancelButton();
    void appendGestureRecognizer();
    using ui::View::removeGestureRecognizer;
    void removeGestureRecognizer();
    void viewWillDestory() override;

    void touchesBegan(const ui::TouchSet& touches, ui::Event* event) override;
    void touchesEnded(const ui::TouchSet& touches, ui::Event* event) override;
    void touchesCancelled(const ui::TouchSet& touches, ui::Event* event) override;

    // Pan, pinch and turn may all run together.
    bool shouldRecognizeSimultaneouslyWithGestureRecognizer(ui::GestureRecognizer& recognizer,
                                                            ui::GestureRecognizer& other) override;

  protected:
    void orvInitView();

    std::shared_ptr<ui::ImageView> imageView;
    std::shared_ptr<ui::Button> cancelButton;
    std::shared_ptr<ui::Button> turnButton;
    gfx::EdgeInsets mImageEdge;
    gfx::Size mCSize;
    gfx::Size mCMargin;
    double mMaxScale = 0;
    gfx::Size mDefaultViewSize;
    double mCHypotenuse = 0;
    double mScale = 1.0;
    double mDegree = 0;
    std::vector<std::shared_ptr<ui::Label>> mTextViews;
    bool isRotatScaleAction = false;
    std::shared_ptr<ui::PanGestureRecognizer> panGesture;
    std::shared_ptr<ui::RotationGestureRecognizer> rotationGesture;
    std::shared_ptr<ui::PinchGestureRecognizer> pinchGesture;
    gfx::Point lastPotion;
    bool hasTouched = false;
    bool isInGesture = false;

  private:
    // The parent's bounds size; none without a parent.
    std::optional<gfx::Size> parentSize() const;

    bool selected_ = false;
    std::weak_ptr<OrvStickerItemViewDelegate> delegate_;
    double minScale_ = 0;
    double strokeWidth_ = 0;
    gfx::Color strokeColor_ = gfx::Color::clear();
    std::shared_ptr<OrvSticker> sticker_;
};
