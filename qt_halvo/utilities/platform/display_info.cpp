#include "display_info_p.h"

namespace OrvantaQT::Platform {

namespace {

// Qt's qRound, so that scaled sizes come out as QSize * qreal would give them.
int RoundLikeQt(double value)
{
    return value >= 0.0 ? int(value + 0.5) : int(value - double(int(value - 1)) + 0.5) + int(value - 1);
}

bool FitsOn(const MonitorRecord& monitor, const DisplayInfo& info, std::int64_t width, std::int64_t height,
            bool* noRoom)
{
    const std::int64_t availableWidth = monitor.workWidth ? monitor.workWidth : monitor.width;
    const std::int64_t availableHeight = monitor.workHeight ? monitor.workHeight : monitor.height;
    *noRoom = availableWidth < 1 || availableHeight < 1;
    return width + 2 * std::int64_t(info.frameWidth) <= availableWidth
        && height + std::int64_t(info.captionHeight) + info.frameHeight <= availableHeight;
}

} // namespace

const DisplayInfo& CachedDisplayInfo()
{
    static const DisplayInfo info = GatherDisplayInfo();
    return info;
}

const MonitorRecord* PrimaryMonitor(const DisplayInfo& info)
{
    for (const MonitorRecord& monitor : info.monitors) {
        if (monitor.primary)
            return &monitor;
    }
    return nullptr;
}

std::uint32_t ScalingPercent(std::uint32_t systemDpi)
{
    return std::uint32_t(std::uint64_t(systemDpi) * 100 / 96);
}

std::uint32_t PhysicalDpi(std::uint64_t pixels, std::uint64_t millimetres)
{
    if (pixels == 0 || millimetres == 0)
        return 0;
    return std::uint32_t(double(pixels / millimetres) * 25.4);
}

void NormaliseFrameMetrics(DisplayInfo& info)
{
    if (info.captionHeight == 0 || info.frameHeight == 0 || info.frameWidth == 0)
        info.captionHeight = info.frameHeight = info.frameWidth = 0;
}

std::string DescribeDisplayInfo(const DisplayInfo& info)
{
    std::string monitors;
    for (const MonitorRecord& monitor : info.monitors) {
        monitors += "Resolution: " + std::to_string(monitor.width) + "x" + std::to_string(monitor.height)
            + ", work area: " + std::to_string(monitor.workWidth) + "x" + std::to_string(monitor.workHeight)
            + ", physical DPI: " + std::to_string(monitor.physicalDpi) + ".";
    }
    return "DPI: " + std::to_string(info.systemDpi) + ", scaling: " + std::to_string(info.scalingPercent)
        + "%. Monitors: " + monitors;
}

bool ConsoleFits(const DisplayInfo& info, ConsoleSize console, double factor)
{
    if (!info.valid || info.monitors.empty())
        return true;
    const std::int64_t width = RoundLikeQt(console.width * factor);
    const std::int64_t height = RoundLikeQt(console.height * factor);
    for (const MonitorRecord& monitor : info.monitors) {
        bool noRoom = false;
        const bool fits = FitsOn(monitor, info, width, height, &noRoom);
        // A monitor that reports no room at all cannot be judged: take it as fitting.
        if (noRoom || fits)
            return true;
    }
    return false;
}

ScalingChoice ChooseScaling(const DisplayInfo& info, ConsoleSize console)
{
    if (console.width < 0 || console.height < 0 || !info.valid)
        return {};
    double scale = info.scalingPercent / 100.0;
    if (ConsoleFits(info, console, scale))
        return {};
    if (scale <= 1.0)
        return {false, 1.0};
    do {
        if (ConsoleFits(info, console, scale))
            return {false, scale};
        scale -= 0.25;
    } while (scale > 1.0);
    return {false, 1.0};
}

} // namespace OrvantaQT::Platform
