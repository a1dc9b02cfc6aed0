#pragma once
// A window on the manual clock with an event injector, views that log their touches, and
// helpers that log what gesture recognisers report, all into one ordered log.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/ui/EventInjector.h"
#include "platform/ui/GestureRecognizer.h"
#include "platform/ui/View.h"
#include "platform/ui/Window.h"

namespace orv::ui::test {

using TouchLog = std::shared_ptr<std::vector<std::string>>;

// Logs "<name> began|moved|ended|cancelled" and keeps the tap count and locations it saw.
class RecordingView : public View {
    ORV_DECLARE_CLASS(RecordingView)
  public:
    void touchesBegan(const TouchSet& touches, Event* event) override;
    void touchesMoved(const TouchSet& touches, Event* event) override;
    void touchesEnded(const TouchSet& touches, Event* event) override;
    void touchesCancelled(const TouchSet& touches, Event* event) override;

    std::string name = "view";
    TouchLog log;
    std::vector<int> tapCounts;          // at each touch-down
    std::vector<gfx::Point> locations;   // in this view's coordinates, every call
    std::vector<size_t> allTouchCounts;  // event->allTouches().size(), every call

  private:
    void record(const std::string& what, const TouchSet& touches, Event* event);
};

class TouchTest : public ::testing::Test {
  protected:
    void SetUp() override;

    std::shared_ptr<RecordingView> addRecordingView(const gfx::Rect& frame,
                                                    const std::string& name = "view",
                                                    View* parent = nullptr);
    // Logs "<name>:<state>" for each report of the recogniser.
    void logStates(GestureRecognizer& recognizer, const std::string& name);
    std::vector<std::string> takeLog();

    TouchLog log = std::make_shared<std::vector<std::string>>();
    std::shared_ptr<Window> window;
    std::shared_ptr<EventInjector> injector;
};

}  // namespace orv::ui::test
