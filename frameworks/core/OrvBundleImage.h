#pragma once
// Pictures of the library's own resources ("style_default_..."), by name.

#include <string>

#include "platform/gfx/Image.h"

// The image named so in the resources' style folder, at the best scale the screen can use
// ("name@2x.png" on a 2x screen, then "name@3x.png", then "name.png"); null when there is none.
orv::gfx::ImagePtr imageORVBundleNamed(const std::string& name);
// The same lookup in another folder of the resources (the packages' pictures).
orv::gfx::ImagePtr imageORVResourceNamed(const std::string& directory, const std::string& name);
