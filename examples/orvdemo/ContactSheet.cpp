#include "examples/orvdemo/ContactSheet.h"

#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "platform/gfx/AttributedString.h"
#include "platform/gfx/TextLayout.h"

namespace orvdemo {

ContactSheet::ContactSheet(gfx::Size size) : context_(size, true, 1) {
    context_.setFillColor(gfx::Color::rgb(0.11, 0.12, 0.15));
    context_.fillRect(gfx::Rect({0, 0}, size));
}

void ContactSheet::drawLabel(const std::string& text, const gfx::Rect& rect, double fontSize) {
    gfx::TextAttributes attributes;
    attributes.font = gfx::Font::systemFont(fontSize);
    attributes.foregroundColor = gfx::Color::white(0.9);
    attributes.paragraphStyle = gfx::ParagraphStyle{
        .alignment = gfx::TextAlignment::Center, .lineBreakMode = gfx::LineBreakMode::TruncateTail};
    gfx::TextLayout(gfx::AttributedString(text, attributes), rect.size, 1).draw(context_, rect);
}

bool ContactSheet::write(const std::string& path) {
    const auto png = orvPngData(context_.endImage());
    return !png.empty() && OrvTSFileManager::writeDataAtomically(png, path);
}

}  // namespace orvdemo
