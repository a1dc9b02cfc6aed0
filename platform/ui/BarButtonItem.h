#pragma once
// A button of a navigation bar: a title or an image, a style, and an action on a weakly held
// target. The target only decides whether the action may still run: once it has gone, the item
// is inert, so a bar that outlives its controller cannot call into a dead one.

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/gfx/Color.h"
#include "platform/gfx/Font.h"
#include "platform/gfx/Image.h"
#include "platform/rt/Object.h"

namespace orv::ui {

// The platform's numbering of bar button styles.
enum BarButtonItemStyle : int {
    BarButtonItemStylePlain = 0,
    BarButtonItemStyleBordered = 1,
    BarButtonItemStyleDone = 2,
};

class BarButtonItem : public rt::Object {
    ORV_DECLARE_CLASS(BarButtonItem)
  public:
    using Ptr = std::shared_ptr<BarButtonItem>;
    using Action = std::function<void()>;

    // What the title is drawn with in one control state; unset fields fall back to the bar's.
    struct TitleAttributes {
        std::optional<gfx::Color> foregroundColor;
        std::optional<gfx::Font> font;
        bool operator==(const TitleAttributes&) const = default;
    };

    // The initialisers. A null target means "no target": the action then always runs.
    void initWithTitle(std::optional<std::string> title, int style,
                       const std::shared_ptr<rt::Object>& target, Action action);
    void initWithImage(gfx::ImagePtr image, int style, const std::shared_ptr<rt::Object>& target,
                       Action action);
    static Ptr itemWithTitle(std::optional<std::string> title, int style,
                             const std::shared_ptr<rt::Object>& target, Action action);

    const std::optional<std::string>& title() const { return title_; }
    void setTitle(std::optional<std::string> title) { title_ = std::move(title); }
    int style() const { return style_; }
    void setStyle(int style) { style_ = style; }
    const gfx::ImagePtr& image() const { return image_; }
    void setImage(gfx::ImagePtr image) { image_ = std::move(image); }
    bool isEnabled() const { return enabled_; }
    void setEnabled(bool enabled) { enabled_ = enabled; }
    int tag() const { return tag_; }
    void setTag(int tag) { tag_ = tag; }

    std::shared_ptr<rt::Object> target() const { return target_.lock(); }
    void setTarget(const std::shared_ptr<rt::Object>& target);
    const Action& action() const { return action_; }
    void setAction(Action action) { action_ = std::move(action); }

    // Attributes per control state (0 normal, 1 highlighted, 2 disabled, 4 selected); a state
    // without its own attributes answers the empty set.
    TitleAttributes titleTextAttributes(unsigned state) const;
    void setTitleTextAttributes(const TitleAttributes& attributes, unsigned state);

    // Runs the action, as a tap on the item does. Nothing happens when the item is disabled,
    // has no action, or its target has been released. Returns whether the action ran.
    bool perform() const;

  private:
    std::optional<std::string> title_;
    int style_ = BarButtonItemStylePlain;
    gfx::ImagePtr image_;
    bool enabled_ = true;
    int tag_ = 0;
    std::weak_ptr<rt::Object> target_;
    bool hasTarget_ = false;
    Action action_;
    std::map<unsigned, TitleAttributes> titleAttributes_;
};

}  // namespace orv::ui
