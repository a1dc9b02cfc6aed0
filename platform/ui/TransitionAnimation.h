#pragma once
// A transition of a whole layer's content (the platform's CATransition): a type such as "fade",
// "push", "moveIn" or "reveal" and a direction such as "fromRight". Headless it draws nothing
// itself; it takes its time on the layer like any animation, and controllers read it back.

#include <string>

#include "platform/ui/Animation.h"

namespace orv::ui {

inline constexpr const char* kTransitionFade = "fade";
inline constexpr const char* kTransitionMoveIn = "moveIn";
inline constexpr const char* kTransitionPush = "push";
inline constexpr const char* kTransitionReveal = "reveal";
inline constexpr const char* kTransitionFromRight = "fromRight";
inline constexpr const char* kTransitionFromLeft = "fromLeft";
inline constexpr const char* kTransitionFromTop = "fromTop";
inline constexpr const char* kTransitionFromBottom = "fromBottom";

class TransitionAnimation : public Animation {
    ORV_DECLARE_CLASS(TransitionAnimation)
  public:
    const std::string& type() const { return type_; }
    void setType(std::string type) { type_ = std::move(type); }
    const std::string& subtype() const { return subtype_; }
    void setSubtype(std::string subtype) { subtype_ = std::move(subtype); }

  private:
    std::string type_ = kTransitionFade;
    std::string subtype_;
};

}  // namespace orv::ui
