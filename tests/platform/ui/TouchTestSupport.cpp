#include "tests/platform/ui/TouchTestSupport.h"

#include "platform/ui/Event.h"
#include "platform/ui/Touch.h"

namespace orv::ui::test {

ORV_DEFINE_CLASS(RecordingView, View)

void RecordingView::touchesBegan(const TouchSet& touches, Event* event) {
    for (const auto& t : touches) tapCounts.push_back(t->tapCount());
    record("began", touches, event);
}

void RecordingView::touchesMoved(const TouchSet& touches, Event* event) {
    record("moved", touches, event);
}

void RecordingView::touchesEnded(const TouchSet& touches, Event* event) {
    record("ended", touches, event);
}

void RecordingView::touchesCancelled(const TouchSet& touches, Event* event) {
    record("cancelled", touches, event);
}

void RecordingView::record(const std::string& what, const TouchSet& touches, Event* event) {
    if (log) log->push_back(name + " " + what);
    locations.push_back(touches.front()->locationInView(this));
    allTouchCounts.push_back(event ? event->allTouches().size() : 0);
}

void TouchTest::SetUp() {
    window = makeView<Window>({0, 0, 400, 400});
    injector = EventInjector::injectorForWindow(window);
}

std::shared_ptr<RecordingView> TouchTest::addRecordingView(const gfx::Rect& frame,
                                                           const std::string& name, View* parent) {
    auto view = makeView<RecordingView>(frame);
    view->name = name;
    view->log = log;
    (parent ? parent : window.get())->addSubview(view);
    return view;
}

void TouchTest::logStates(GestureRecognizer& recognizer, const std::string& name) {
    recognizer.addTarget([log = log, name](GestureRecognizer& r) {
        log->push_back(name + ":" + std::to_string(static_cast<int>(r.state())));
    });
}

std::vector<std::string> TouchTest::takeLog() {
    auto taken = std::move(*log);
    log->clear();
    return taken;
}

}  // namespace orv::ui::test
