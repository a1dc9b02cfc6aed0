#pragma once
// What the library asks of the device it runs on. A headless build has no notched phone and a
// modern system, so every version branch takes its newer path.

bool orvIsDeviceiPhoneX();
double orvSystemFloatVersion();
