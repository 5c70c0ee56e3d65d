// Window messages the display watcher reads from Qt's native event filter on Windows.
#pragma once

namespace OrvantaQT::Platform {

constexpr unsigned int kWmDisplayChange = 0x007E; // WM_DISPLAYCHANGE
constexpr unsigned int kWmSettingChange = 0x001A; // WM_SETTINGCHANGE

} // namespace OrvantaQT::Platform
