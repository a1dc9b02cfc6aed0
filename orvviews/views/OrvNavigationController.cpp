#include "orvviews/views/OrvNavigationController.h"

#include "frameworks/core/OrvTSLog.h"
#include "orvviews/views/OrvViewControllerExtension.h"

ORV_DEFINE_CLASS(OrvNavigationController, ui::NavigationController)

void OrvNavigationController::dealloc() {
    const OrvControllerList children = viewControllers();
    for (const auto& child : children) controllerWillDestory(*child);
    OrvTSLog::debug("dealloc controller %s: %ld %s", title().value_or("(null)").c_str(),
                    static_cast<long>(children.size()), description().c_str());
    setViewControllers({}, false);
    ui::NavigationController::dealloc();
}
