#pragma once
// One filter of the pipe: a type (image filter, colour adjust, face plastic, colour
// correction), for the image filter a name from its config (a tool filter's code or a look's
// code), and its property (what a builder's makeProperty made). Applying it turns one picture
// into a new one; a filter it cannot run (an unknown name, a property of the wrong kind) gives
// the picture back as it was.

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "frameworks/core/OrvKit.h"
#include "frameworks/strand/ORPConfig.h"
#include "frameworks/strand/ORPFPContext.h"
#include "platform/gfx/Bitmap.h"
#include "platform/rt/Object.h"

// The value makeProperty yields: an immutable copy of a builder's settings.
using ORPFPProperty = std::shared_ptr<const rt::Object>;

template <class Settings>
class ORPFPPropertyOf : public rt::Object {
  public:
    explicit ORPFPPropertyOf(Settings s) : value(std::move(s)) {}
    static ORPFPProperty make(Settings s) {
        return std::make_shared<const ORPFPPropertyOf>(std::move(s));
    }
    // The settings held by the property; null when it holds another kind.
    static const Settings* in(const ORPFPProperty& property) {
        auto* p = dynamic_cast<const ORPFPPropertyOf*>(property.get());
        return p ? &p->value : nullptr;
    }
    const Settings value;
};

class ORPFPFilter : public rt::Object {
    ORV_DECLARE_CLASS(ORPFPFilter)
  public:
    using rt::Object::init;  // the static init forms below would hide it from rt::make
    static std::shared_ptr<ORPFPFilter> init(const std::shared_ptr<ORPFPContext>& context,
                                             const std::string& withName);

    const std::string& typeName() const { return typeName_; }
    // The image filter's name from the config; empty for the other types.
    const std::string& name() const { return name_; }

    void setConfig(const std::shared_ptr<ORPConfig>& config);
    // The property under `key`: what was set, else the filter's defaults (a look filter's
    // published parameters), else null.
    ORPFPProperty getProperty(const std::string& key) const;
    void setProperty(ORPFPProperty property, const std::string& forKey);

    // The filtered pixels (the same bitmap when the filter cannot run).
    gfx::BitmapPtr apply(const gfx::BitmapPtr& input) const;

  private:
    // The context's catalogue for a look, null for the other filters.
    std::shared_ptr<const orv::strand::LookCatalogue> catalogue() const;

    std::shared_ptr<ORPFPContext> context_;
    std::string typeName_;
    std::string name_;
    std::map<std::string, ORPFPProperty> properties_;
};
