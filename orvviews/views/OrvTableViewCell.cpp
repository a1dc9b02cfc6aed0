#include "orvviews/views/OrvTableViewCell.h"

ORV_DEFINE_CLASS(OrvTableViewCell, ui::TableViewCell)

void OrvTableViewCell::initWithFrame(const gfx::Rect& frame) {
    ui::TableViewCell::initWithFrame(frame);
    setBackgroundColor(gfx::Color::clear());
    contentView()->setBackgroundColor(gfx::Color::clear());
    setSelectionStyle(ui::TableViewCellSelectionStyle::None);
    orvInitView();
}
