#include "frameworks/core/OrvDevice.h"

#include "platform/ui/Application.h"

bool orvIsDeviceiPhoneX() {
    return orv::ui::Application::shared().isDeviceIPhoneX();
}
double orvSystemFloatVersion() {
    return orv::ui::Application::shared().systemVersion();
}
