#include "orvviews/widgets/OrvComponentsViewController.h"

#include "frameworks/core/OrvStatistics.h"
#include "platform/rt/RunLoop.h"

ORV_DEFINE_CLASS(OrvComponentsViewController, OrvViewController)

void OrvComponentsViewController::viewDidLoad() {
    OrvViewController::viewDidLoad();
    view()->setBackgroundColor(gfx::Color::white(0.2));
    buildDefaultStyleView();
}

void OrvComponentsViewController::notifyError(const std::shared_ptr<rt::Error>& error,
                                              const std::shared_ptr<OrvResult>& result) {
    if (!rt::RunLoop::isMainThread()) {
        // The hop keeps the controller, the error and the result alive until it runs.
        auto me = self<OrvComponentsViewController>();
        rt::RunLoop::main().post([me, error, result] { me->notifyError(error, result); });
        return;
    }
    if (auto delegate = errorDelegate_.lock()) {
        delegate->onComponent(self<ui::ViewController>(), result, error);
    }
}

void OrvComponentsViewController::dealloc() {
    OrvStatistics::flushData();
    OrvViewController::dealloc();
}
