// Window messages the display watcher reads from Qt's native event filter on Windows.
#pragma once

namespace OrvantaQT::Platform {

constexpr unsigned int kWmDisplayChange = 0x007E; // WM_DISPLAYCHANGE
constexpr unsigned int kWmSettingChange = 0x001A; // WM_SETTINGCHANGE

// The first members of the system's MSG, laid out the same way, so that messages can be
// read (and made, in tests) on every system.
struct WindowsMessageHeader
{
    void* window;
    unsigned int message;
};

} // namespace OrvantaQT::Platform
