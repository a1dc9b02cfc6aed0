#pragma once
// Short names for the platform namespaces, used throughout the frameworks and the library.
namespace orv::rt {}
namespace orv::gfx {}
namespace orv::ui {}
namespace orv::codec {}

namespace rt = orv::rt;
namespace gfx = orv::gfx;
namespace ui = orv::ui;
namespace codec = orv::codec;
