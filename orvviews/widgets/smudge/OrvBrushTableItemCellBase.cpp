#include "orvviews/widgets/smudge/OrvBrushTableItemCellBase.h"

#include "frameworks/core/OrvBrushLocalPackage.h"
#include "frameworks/core/OrvBundleImage.h"

ORV_DEFINE_CLASS(OrvBrushTableItemCellBase, OrvTableViewCell, OrvBrushTableItemCellInterface)

void OrvBrushTableItemCellBase::setMode(const std::shared_ptr<OrvBrush>& brush) {
    mode_ = brush;
    viewNeedRest();
    if (!brush) return;
    if (brush->code() == orvEraserBrushCode) {
        handleTypeEraser(brush);
    } else if (brush->brushType() == OrvBrush::kOnline) {
        handleTypeOnlie(brush);
    } else {
        handleTypeBrush(brush);
    }
}

void OrvBrushTableItemCellBase::handleTypeBrush(const std::shared_ptr<OrvBrush>&) {
    OrvBrushLocalPackage::package()->loadThumbWithBrush(mode_, thumbView());
}

void OrvBrushTableItemCellBase::handleBlockView(const std::shared_ptr<ui::ImageView>& view,
                                                const std::string& icon) {
    auto thumb = thumbView();
    if (!thumb) return;
    thumb->setContentMode(ui::ContentMode::Center);
    thumb->setImage(imageORVBundleNamed(icon));
}

void OrvBrushTableItemCellBase::viewNeedRest() {
    auto thumb = thumbView();
    if (!thumb) return;
    thumb->setContentMode(ui::ContentMode::ScaleAspectFill);
    thumb->setImage(nullptr);
    OrvBrushLocalPackage::package()->cancelLoadImage(thumb);
}
