#pragma once
// A contact sheet of the filter set: one photo through every look of the catalogue and every
// tool filter at its default parameters, each tile labelled with the filter's name, as one PNG.

#include <string>

#include "frameworks/core/OrvKit.h"
#include "platform/gfx/Image.h"

namespace orvdemo {

class FilterContactSheet {
  public:
    FilterContactSheet() = delete;
    // Writes the sheet to `path`; the number of tiles, or 0 when it could not be written.
    static int write(const gfx::ImagePtr& photo, const std::string& path);
};

}  // namespace orvdemo
