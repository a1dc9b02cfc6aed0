#pragma once
// An option set: a plain record of settings that knows which controller class it configures and
// makes a configured instance of it.

#include <memory>

#include "platform/rt/Object.h"

class OrvComponentsViewController;

class OrvOptions : public orv::rt::Object {
    ORV_DECLARE_CLASS(OrvOptions)
  public:
    // A new option set of class T, made with plain init.
    template <class T = OrvOptions>
    static std::shared_ptr<T> build() {
        static_assert(std::is_base_of_v<OrvOptions, T>);
        return orv::rt::make<T>();
    }

    // Calls initOptions() once, after the base's init.
    void init() override;
    // The one place for defaults: subclasses call the base, then set theirs.
    virtual void initOptions() {}

    // The controller class this option set makes. The base has none and raises.
    virtual const orv::rt::Class* defaultComponentClazz() const;
    // The stored class, filled from defaultComponentClazz() at first read.
    const orv::rt::Class* componentClazz();
    // Null is ignored; a class outside defaultComponentClazz()'s family raises and is not stored.
    void setComponentClazz(const orv::rt::Class* clazz);

    // A new controller of componentClazz(), made with plain init; subclasses copy their fields
    // onto it after calling the base.
    virtual std::shared_ptr<OrvComponentsViewController> componentInstance();

  private:
    const orv::rt::Class* componentClazz_ = nullptr;
};
