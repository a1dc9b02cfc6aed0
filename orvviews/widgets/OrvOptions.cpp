#include "orvviews/widgets/OrvOptions.h"

#include "orvviews/widgets/OrvComponentsViewController.h"

ORV_DEFINE_CLASS(OrvOptions, orv::rt::Object)

void OrvOptions::init() {
    orv::rt::Object::init();
    initOptions();
}

const orv::rt::Class* OrvOptions::defaultComponentClazz() const {
    orvThrowWithReason("You need overwrite -(Class)defaultComponentClazz;");
}

const orv::rt::Class* OrvOptions::componentClazz() {
    if (!componentClazz_) componentClazz_ = defaultComponentClazz();
    return componentClazz_;
}

void OrvOptions::setComponentClazz(const orv::rt::Class* clazz) {
    if (!clazz) return;
    const orv::rt::Class* family = defaultComponentClazz();
    if (!clazz->isSubclassOf(family)) {
        orvThrowWithReason("The options of componentClazz is not kind of class: " + family->name());
    }
    componentClazz_ = clazz;
}

std::shared_ptr<OrvComponentsViewController> OrvOptions::componentInstance() {
    const orv::rt::Class* clazz = componentClazz();
    return orv::rt::cast<OrvComponentsViewController>(clazz ? clazz->instantiate() : nullptr);
}
