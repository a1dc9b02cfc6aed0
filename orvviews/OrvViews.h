#pragma once
// The library's one shared object: it holds the message hub every screen talks through.

#include <memory>
#include <mutex>

#include "orvviews/popup/OrvPopupMessageInterface.h"
#include "platform/rt/Object.h"

inline constexpr double OrvViewsVersionNumber = 0.1;
inline constexpr const char* OrvViewsVersionString = "0.1.0";

class OrvViews : public orv::rt::Object {
    ORV_DECLARE_CLASS(OrvViews)
  public:
    static std::shared_ptr<OrvViews> shared();

    // Made at first read: a new OrvPopupMessage. An application may put its own hub in place at
    // any time; setting null makes the next read make a fresh default.
    std::shared_ptr<OrvPopupMessageInterface> messageHub();
    void setMessageHub(std::shared_ptr<OrvPopupMessageInterface> hub);

  private:
    std::shared_ptr<OrvPopupMessageInterface> messageHub_;
};
