#pragma once
// Which kernel runs a pipe filter, by its type and name, with the property it was given.

#include <memory>
#include <string>

#include "frameworks/strand/ORPFPFilter.h"
#include "platform/gfx/Bitmap.h"

namespace orv::strand {

class LookCatalogue;

class FilterKernels {
  public:
    FilterKernels() = delete;
    // The filtered picture, or `input` itself when no kernel answers to the type and name or
    // the property is of another kind. Tool filters without a property run at their defaults.
    static gfx::BitmapPtr apply(const std::string& typeName, const std::string& name,
                                const ORPFPProperty& property, const LookCatalogue* catalogue,
                                const gfx::BitmapPtr& input);
    // True for a look (an image filter that is no tool filter): only looks read the catalogue,
    // so tool filters never wait for it to load.
    static bool needsCatalogue(const std::string& typeName, const std::string& name);
    // A look's published defaults as a property (null for a name that is no look).
    static ORPFPProperty defaultProperty(const std::string& name, const LookCatalogue* catalogue);
};

}  // namespace orv::strand
