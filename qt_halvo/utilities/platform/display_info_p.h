// What the displays are like, without Qt: one implementation per system, plus the pure
// rules shared by all (display_info.cpp).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace OrvantaQT::Platform {

struct MonitorRecord
{
    std::uint32_t width = 0;       // of the monitor, in pixels
    std::uint32_t height = 0;
    std::uint32_t workWidth = 0;   // of its work area (without task bars and docks)
    std::uint32_t workHeight = 0;
    std::uint32_t physicalDpi = 0; // from its size in millimetres; 0 when unknown
    std::int32_t workLeft = 0;     // top-left of the work area, in the desktop's pixels
    std::int32_t workTop = 0;
    bool primary = false;
};

struct DisplayInfo
{
    std::uint32_t systemDpi = 0;
    std::uint32_t scalingPercent = 0;
    std::vector<MonitorRecord> monitors; // only monitors with a non-zero size
    std::int32_t captionHeight = 0;      // window decorations; all three 0 where unknown
    std::int32_t frameHeight = 0;
    std::int32_t frameWidth = 0;
    bool valid = false; // the system DPI was read and at least one monitor kept
};

// Measures the displays (the system's own implementation). Opens and closes its own
// connection to the display system; an invalid record when there is none.
DisplayInfo GatherDisplayInfo();

// The displays as measured on the first call, for the life of the process. Thread-safe.
const DisplayInfo& CachedDisplayInfo();

// The primary monitor's record; null when none is marked primary.
const MonitorRecord* PrimaryMonitor(const DisplayInfo& info);

// System DPI / 96 * 100, truncated: 96 gives 100, 120 gives 125, 144 gives 150.
std::uint32_t ScalingPercent(std::uint32_t systemDpi);

// Pixels per millimetre as an integer division, times 25.4, truncated; 0 when either
// value is 0. The early integer division is intended: 1920 pixels on 527 mm give 76.
std::uint32_t PhysicalDpi(std::uint64_t pixels, std::uint64_t millimetres);

// Caption and frame metrics are all kept or all zero.
void NormaliseFrameMetrics(DisplayInfo& info);

// "Resolution: 1920x1080, work area: 1920x1040, physical DPI: 96." for each monitor,
// then "DPI: 96, scaling: 100%. Monitors: " and the monitor texts.
std::string DescribeDisplayInfo(const DisplayInfo& info);

struct ConsoleSize
{
    int width = 0;
    int height = 0;
};

// Whether a window of the console's minimum size, scaled by factor, fits on one of the
// monitors with its frame and caption. Without valid information it fits.
bool ConsoleFits(const DisplayInfo& info, ConsoleSize console, double factor);

struct ScalingChoice
{
    bool systemScaling = true; // use the system's own factor
    double factor = 1.0;       // otherwise this one, lowered in quarters until the console fits
};

ScalingChoice ChooseScaling(const DisplayInfo& info, ConsoleSize console);

} // namespace OrvantaQT::Platform
