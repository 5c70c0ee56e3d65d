#include "display_info_p.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace OrvantaQT::Platform {

namespace {

void BecomeDpiAware()
{
    // Looked up at run time: the call does not exist on every Windows version. Without it
    // the measurements below would be in scaled, not physical, pixels.
    using SetProcessDpiAwareFunction = BOOL(WINAPI*)();
    HMODULE user32 = LoadLibraryA("User32.dll");
    if (!user32)
        return;
    auto setProcessDpiAware =
        reinterpret_cast<SetProcessDpiAwareFunction>(reinterpret_cast<void*>(GetProcAddress(user32, "SetProcessDPIAware")));
    if (setProcessDpiAware)
        setProcessDpiAware();
    // User32 stays loaded by the process itself; this only drops our extra reference.
    FreeLibrary(user32);
}

std::uint32_t ReadSystemDpi()
{
    HDC screen = GetDC(nullptr);
    if (!screen)
        return 0;
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return dpi > 0 ? std::uint32_t(dpi) : 0;
}

std::uint32_t Extent(LONG low, LONG high)
{
    return high > low ? std::uint32_t(std::int64_t(high) - low) : 0;
}

std::uint32_t ReadPhysicalDpi(const char* deviceName)
{
    HDC device = CreateDCA(deviceName, nullptr, nullptr, nullptr);
    if (!device)
        return 0;
    const int pixels = GetDeviceCaps(device, HORZRES);
    const int millimetres = GetDeviceCaps(device, HORZSIZE);
    DeleteDC(device);
    if (pixels <= 0 || millimetres <= 0)
        return 0;
    return PhysicalDpi(std::uint64_t(pixels), std::uint64_t(millimetres));
}

BOOL CALLBACK AddMonitor(HMONITOR monitor, HDC, LPRECT, LPARAM data)
{
    auto* monitors = reinterpret_cast<std::vector<MonitorRecord>*>(data);
    MONITORINFOEXA info = {};
    info.cbSize = sizeof info;
    // A monitor that cannot be described is skipped; the enumeration goes on.
    if (!GetMonitorInfoA(monitor, &info))
        return TRUE;
    MonitorRecord record;
    record.width = Extent(info.rcMonitor.left, info.rcMonitor.right);
    record.height = Extent(info.rcMonitor.top, info.rcMonitor.bottom);
    if (record.width == 0 || record.height == 0)
        return TRUE;
    record.workWidth = Extent(info.rcWork.left, info.rcWork.right);
    record.workHeight = Extent(info.rcWork.top, info.rcWork.bottom);
    record.workLeft = info.rcWork.left;
    record.workTop = info.rcWork.top;
    record.primary = (info.dwFlags & MONITORINFOF_PRIMARY) != 0;
    record.physicalDpi = ReadPhysicalDpi(info.szDevice);
    monitors->push_back(record);
    return TRUE;
}

} // namespace

DisplayInfo GatherDisplayInfo()
{
    BecomeDpiAware();

    DisplayInfo info;
    info.systemDpi = ReadSystemDpi();
    info.scalingPercent = ScalingPercent(info.systemDpi);
    EnumDisplayMonitors(nullptr, nullptr, &AddMonitor, reinterpret_cast<LPARAM>(&info.monitors));
    info.valid = info.systemDpi != 0 && !info.monitors.empty();

    const int frameHeight = GetSystemMetrics(SM_CYFRAME);
    info.captionHeight = frameHeight + 2 * GetSystemMetrics(SM_CXBORDER) + GetSystemMetrics(SM_CYSIZE);
    info.frameHeight = frameHeight;
    info.frameWidth = GetSystemMetrics(SM_CXFRAME);
    NormaliseFrameMetrics(info);
    return info;
}

} // namespace OrvantaQT::Platform
