#pragma once
// The automatic colour correction: the levels of a colour analysis applied to a picture. The
// editor's live preview and its full-size copy both go through here, so they agree.

#include <memory>

#include "frameworks/core/OrvNKImageColorArgument.h"
#include "platform/gfx/Image.h"

// A new, upright picture with each channel stretched to the analysis's levels; null for a null
// image or null levels. The input's pixels are shared with the pipe, not copied, when the
// image is upright already, so a caller that drops the input afterwards holds one bitmap.
gfx::ImagePtr orvColorCorrectedImage(const gfx::ImagePtr& image,
                                     const std::shared_ptr<OrvNKImageColorArgument>& args);
