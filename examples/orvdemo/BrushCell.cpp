#include "examples/orvdemo/BrushCell.h"

#include <cmath>

#include "examples/orvdemo/DemoStyle.h"
#include "platform/ui/Layer.h"

namespace orvdemo {

ORV_DEFINE_CLASS(BrushCell, OrvBrushTableItemCellBase)

namespace {

constexpr double kTileSide = 44;
const gfx::Color kTile = gfx::Color::white(0.93);

}  // namespace

void BrushCell::orvInitView() {
    upright_ = ui::makeView<ui::View>({});
    upright_->setUserInteractionEnabled(false);
    tile_ = ui::makeView<ui::View>({0, 0, kTileSide, kTileSide});
    tile_->setBackgroundColor(kTile);
    tile_->layer().setCornerRadius(kTileSide / 2);
    tile_->setClipsToBounds(true);
    thumb_ = ui::makeView<ui::ImageView>({4, 4, kTileSide - 8, kTileSide - 8});
    tile_->addSubview(thumb_);
    name_ = ui::makeView<ui::Label>({});
    name_->setFont(gfx::Font::systemFont(10));
    name_->setTextColor(gfx::Color::white(0.85));
    name_->setTextAlignment(gfx::TextAlignment::Center);
    upright_->addSubview(tile_);
    upright_->addSubview(name_);
    contentView()->addSubview(upright_);
}

// The cell lies across the strip: its height is the strip's step, its width the strip's depth.
void BrushCell::layoutSubviews() {
    OrvBrushTableItemCellBase::layoutSubviews();
    const gfx::Size size = bounds().size;
    upright_->setTransform(gfx::AffineTransform::identity());
    upright_->setFrame(
        {(size.width - size.height) / 2, (size.height - size.width) / 2, size.height, size.width});
    upright_->setTransform(gfx::AffineTransform::rotation(M_PI / 2));
    const double width = size.height;
    tile_->setFrame({(width - kTileSide) / 2, 6, kTileSide, kTileSide});
    name_->setFrame({0, 6 + kTileSide + 2, width, 14});
}

void BrushCell::setMode(const std::shared_ptr<OrvBrush>& brush) {
    OrvBrushTableItemCellBase::setMode(brush);
    name_->setText(brush ? brush->name() : "");
}

void BrushCell::handleTypeEraser(const std::shared_ptr<OrvBrush>&) {
    handleBlockView(thumb_, kEraserIcon);
}

void BrushCell::handleTypeOnlie(const std::shared_ptr<OrvBrush>&) {
    handleBlockView(thumb_, kOnlineIcon);
}

void BrushCell::setSelected(bool selected, bool animated) {
    OrvBrushTableItemCellBase::setSelected(selected, animated);
    tile_->layer().setBorderWidth(selected ? 3 : 0);
    tile_->layer().setBorderColor(DemoStyle::accent());
}

}  // namespace orvdemo
