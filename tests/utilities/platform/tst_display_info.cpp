// The display information: the rules shared by all systems, then gathering on the real
// system: Windows (cross-compiled, under wine) or the X server of the test.
//   tst_display_info [--screen <width>x<height>]
// On Linux --screen says what the X server in DISPLAY has (one screen of that size);
// without it only the consistency of what is gathered is checked.

#include "plain_test.h"
#include <qt_halvo/utilities/platform/display_info_p.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#if defined(_WIN32)
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif

using namespace OrvantaQT::Platform;

namespace {

bool operator==(const ScalingChoice& a, const ScalingChoice& b)
{
    return a.systemScaling == b.systemScaling && a.factor == b.factor;
}

const ScalingChoice kSystemScaling{true, 1.0};

MonitorRecord Monitor(std::uint32_t width, std::uint32_t height, std::uint32_t workWidth, std::uint32_t workHeight,
                      std::uint32_t physicalDpi = 96)
{
    MonitorRecord monitor;
    monitor.width = width;
    monitor.height = height;
    monitor.workWidth = workWidth;
    monitor.workHeight = workHeight;
    monitor.physicalDpi = physicalDpi;
    return monitor;
}

// Valid information with no window decorations, so that sizes compare directly.
DisplayInfo Displays(std::uint32_t systemDpi, std::vector<MonitorRecord> monitors)
{
    DisplayInfo info;
    info.systemDpi = systemDpi;
    info.scalingPercent = ScalingPercent(systemDpi);
    info.monitors = std::move(monitors);
    info.valid = true;
    return info;
}

void PhysicalDpiDividesFirst()
{
    CHECK(PhysicalDpi(1920, 527) == 76); // 3 pixels per millimetre, not 3.64
    CHECK(PhysicalDpi(3840, 600) == 152);
    CHECK(PhysicalDpi(100, 1000) == 0);
    CHECK(PhysicalDpi(0, 527) == 0);
    CHECK(PhysicalDpi(1920, 0) == 0);
    CHECK(PhysicalDpi(0, 0) == 0);
}

void ScalingPercentTruncates()
{
    CHECK(ScalingPercent(96) == 100);
    CHECK(ScalingPercent(120) == 125);
    CHECK(ScalingPercent(144) == 150);
    CHECK(ScalingPercent(192) == 200);
    CHECK(ScalingPercent(97) == 101);
    CHECK(ScalingPercent(0) == 0);
}

void FrameMetricsAreAllOrNothing()
{
    DisplayInfo info;
    info.captionHeight = 31;
    info.frameHeight = 8;
    info.frameWidth = 8;
    NormaliseFrameMetrics(info);
    CHECK(info.captionHeight == 31 && info.frameHeight == 8 && info.frameWidth == 8);

    for (int zero = 0; zero < 3; ++zero) {
        DisplayInfo partial;
        partial.captionHeight = zero == 0 ? 0 : 31;
        partial.frameHeight = zero == 1 ? 0 : 8;
        partial.frameWidth = zero == 2 ? 0 : 8;
        NormaliseFrameMetrics(partial);
        CHECK(partial.captionHeight == 0 && partial.frameHeight == 0 && partial.frameWidth == 0);
    }
}

void DescriptionListsEveryMonitor()
{
    DisplayInfo info = Displays(144, {Monitor(1920, 1080, 1920, 1040, 96), Monitor(1280, 1024, 1280, 984, 0)});
    CHECK(DescribeDisplayInfo(info)
          == "DPI: 144, scaling: 150%. Monitors: "
             "Resolution: 1920x1080, work area: 1920x1040, physical DPI: 96."
             "Resolution: 1280x1024, work area: 1280x984, physical DPI: 0.");
    CHECK(DescribeDisplayInfo(DisplayInfo()) == "DPI: 0, scaling: 0%. Monitors: ");
}

void ScalingIsLoweredUntilTheConsoleFits()
{
    // 100 %: nothing to lower.
    const DisplayInfo at100 = Displays(96, {Monitor(1280, 1024, 1280, 984)});
    CHECK(!ConsoleFits(at100, {1400, 800}, 1.0));
    CHECK(ChooseScaling(at100, {1400, 800}) == (ScalingChoice{false, 1.0}));
    CHECK(ChooseScaling(at100, {1280, 984}) == kSystemScaling);

    // 200 %: 2.0 and 1.75 are too large, 1.5 fits.
    const DisplayInfo at200 = Displays(192, {Monitor(1920, 1080, 1920, 1040)});
    CHECK(!ConsoleFits(at200, {1200, 600}, 2.0));
    CHECK(!ConsoleFits(at200, {1200, 600}, 1.75));
    CHECK(ConsoleFits(at200, {1200, 600}, 1.5));
    CHECK(ChooseScaling(at200, {1200, 600}) == (ScalingChoice{false, 1.5}));
    CHECK(ChooseScaling(at200, {900, 500}) == kSystemScaling);

    // 125 %: no factor down to 1.0 fits.
    const DisplayInfo at125 = Displays(120, {Monitor(1920, 1080, 1920, 1040)});
    CHECK(!ConsoleFits(at125, {2000, 1000}, 1.25));
    CHECK(ChooseScaling(at125, {2000, 1000}) == (ScalingChoice{false, 1.0}));
    // Fitting only at 1.0 is the same answer, reached by the loop's end.
    CHECK(ChooseScaling(at125, {1600, 900}) == (ScalingChoice{false, 1.0}));

    // 150 % with two monitors: the second, larger one decides.
    const DisplayInfo twoMonitors =
        Displays(144, {Monitor(1366, 768, 1366, 728), Monitor(2560, 1440, 2560, 1400)});
    CHECK(ChooseScaling(twoMonitors, {1600, 900}) == kSystemScaling);
    CHECK(ChooseScaling(twoMonitors, {1900, 1000}) == (ScalingChoice{false, 1.25}));
}

void WorkAreaFallsBackToTheMonitor()
{
    // A zero work area means the whole monitor, side by side.
    const DisplayInfo noWorkArea = Displays(96, {Monitor(1920, 1080, 0, 0)});
    CHECK(ConsoleFits(noWorkArea, {1920, 1080}, 1.0));
    CHECK(!ConsoleFits(noWorkArea, {1921, 1080}, 1.0));
    CHECK(!ConsoleFits(noWorkArea, {1920, 1081}, 1.0));

    const DisplayInfo noWorkWidth = Displays(96, {Monitor(1920, 1080, 0, 1000)});
    CHECK(ConsoleFits(noWorkWidth, {1920, 1000}, 1.0));
    CHECK(!ConsoleFits(noWorkWidth, {1920, 1001}, 1.0));

    // A monitor with no room at all cannot be judged and is taken as fitting.
    const DisplayInfo noRoom = Displays(96, {Monitor(1280, 1024, 1280, 1024), Monitor(0, 0, 0, 0)});
    CHECK(ConsoleFits(noRoom, {5000, 5000}, 1.0));
}

void WithoutUsableInformationTheSystemScales()
{
    const DisplayInfo small = Displays(192, {Monitor(1280, 1024, 1280, 984)});
    CHECK(!ConsoleFits(small, {1000, 1000}, 2.0));
    CHECK(ChooseScaling(small, {-1, 600}) == kSystemScaling);
    CHECK(ChooseScaling(small, {600, -1}) == kSystemScaling);

    DisplayInfo invalid = small;
    invalid.valid = false;
    CHECK(ConsoleFits(invalid, {5000, 5000}, 2.0));
    CHECK(ChooseScaling(invalid, {5000, 5000}) == kSystemScaling);
    CHECK(ChooseScaling(DisplayInfo(), {5000, 5000}) == kSystemScaling);

    const DisplayInfo noMonitors = Displays(192, {});
    CHECK(ConsoleFits(noMonitors, {5000, 5000}, 2.0));
}

void DecorationsAndRoundingCount()
{
    DisplayInfo info = Displays(96, {Monitor(1000, 800, 1000, 800)});
    info.captionHeight = 30;
    info.frameHeight = 8;
    info.frameWidth = 8;
    // Width: two frame widths; height: the caption and one frame height.
    CHECK(ConsoleFits(info, {984, 762}, 1.0));
    CHECK(!ConsoleFits(info, {985, 762}, 1.0));
    CHECK(!ConsoleFits(info, {984, 763}, 1.0));

    // Scaled sides are rounded half up, not truncated: 102 * 1.25 = 127.5 gives 128.
    const DisplayInfo exact = Displays(120, {Monitor(128, 128, 128, 128)});
    const DisplayInfo oneLess = Displays(120, {Monitor(127, 127, 127, 127)});
    CHECK(ConsoleFits(exact, {102, 102}, 1.25));
    CHECK(!ConsoleFits(oneLess, {102, 102}, 1.25));
    CHECK(ConsoleFits(oneLess, {101, 101}, 1.25)); // 126.25 gives 126
}

// Every kept monitor has a size; the decorations are all known or all zero.
void CheckConsistent(const DisplayInfo& info)
{
    CHECK(info.scalingPercent == ScalingPercent(info.systemDpi));
    CHECK(info.valid == (info.systemDpi != 0 && !info.monitors.empty()));
    for (const MonitorRecord& monitor : info.monitors) {
        CHECK(monitor.width > 0 && monitor.height > 0);
        CHECK(monitor.workWidth <= monitor.width && monitor.workHeight <= monitor.height);
    }
    const bool allZero = info.captionHeight == 0 && info.frameHeight == 0 && info.frameWidth == 0;
    const bool noneZero = info.captionHeight != 0 && info.frameHeight != 0 && info.frameWidth != 0;
    CHECK(allZero || noneZero);
}

void CachedOnceForAllThreads()
{
    // The first calls come from several threads at once.
    constexpr int kThreads = 8;
    std::vector<const DisplayInfo*> seen(kThreads, nullptr);
    std::vector<std::thread> threads;
    for (int index = 0; index < kThreads; ++index)
        threads.emplace_back([&seen, index] { seen[std::size_t(index)] = &CachedDisplayInfo(); });
    for (std::thread& thread : threads)
        thread.join();
    const DisplayInfo* cached = &CachedDisplayInfo();
    for (const DisplayInfo* info : seen)
        CHECK(info == cached);
    CHECK(&CachedDisplayInfo() == cached);
}

#if defined(_WIN32)

struct SystemMonitor
{
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t workWidth = 0;
    std::uint32_t workHeight = 0;
    std::int32_t workLeft = 0;
    std::int32_t workTop = 0;
    bool primary = false;
};

BOOL CALLBACK CollectMonitor(HMONITOR monitor, HDC, LPRECT, LPARAM data)
{
    MONITORINFO info = {};
    info.cbSize = sizeof info;
    if (GetMonitorInfoW(monitor, &info)) {
        SystemMonitor record;
        record.width = std::uint32_t(info.rcMonitor.right - info.rcMonitor.left);
        record.height = std::uint32_t(info.rcMonitor.bottom - info.rcMonitor.top);
        record.workWidth = std::uint32_t(info.rcWork.right - info.rcWork.left);
        record.workHeight = std::uint32_t(info.rcWork.bottom - info.rcWork.top);
        record.workLeft = info.rcWork.left;
        record.workTop = info.rcWork.top;
        record.primary = (info.dwFlags & MONITORINFOF_PRIMARY) != 0;
        if (record.width && record.height)
            reinterpret_cast<std::vector<SystemMonitor>*>(data)->push_back(record);
    }
    return TRUE;
}

void GatheredFromWin32()
{
    const DisplayInfo info = GatherDisplayInfo();
    std::cout << DescribeDisplayInfo(info) << std::endl;
    CHECK(info.valid);
    CHECK(info.systemDpi > 0);
    CHECK(!info.monitors.empty());
    CheckConsistent(info);
    CHECK(ConsoleFits(info, {100, 100}, 1.0));
    CHECK(!ConsoleFits(info, {1000000, 1000000}, 1.0));

    // Gathering made the process DPI-aware for good (wine starts programs aware already).
    CHECK(IsProcessDPIAware());

    // The same values as the system gives to anyone asking, monitor by monitor.
    HDC screen = GetDC(nullptr);
    CHECK(info.systemDpi == std::uint32_t(GetDeviceCaps(screen, LOGPIXELSX)));
    // With one monitor the screen is that monitor.
    if (info.monitors.size() == 1) {
        const int pixels = GetDeviceCaps(screen, HORZRES);
        const int millimetres = GetDeviceCaps(screen, HORZSIZE);
        CHECK(info.monitors[0].physicalDpi == PhysicalDpi(std::uint64_t(pixels), std::uint64_t(millimetres)));
    }
    ReleaseDC(nullptr, screen);
    std::vector<SystemMonitor> monitors;
    EnumDisplayMonitors(nullptr, nullptr, &CollectMonitor, reinterpret_cast<LPARAM>(&monitors));
    CHECK(info.monitors.size() == monitors.size());
    for (std::size_t index = 0; index < info.monitors.size() && index < monitors.size(); ++index) {
        CHECK(info.monitors[index].width == monitors[index].width);
        CHECK(info.monitors[index].height == monitors[index].height);
        CHECK(info.monitors[index].workWidth == monitors[index].workWidth);
        CHECK(info.monitors[index].workHeight == monitors[index].workHeight);
        CHECK(info.monitors[index].workLeft == monitors[index].workLeft);
        CHECK(info.monitors[index].workTop == monitors[index].workTop);
        CHECK(info.monitors[index].primary == monitors[index].primary);
    }
    CHECK(PrimaryMonitor(info) != nullptr);

    const int frameHeight = GetSystemMetrics(SM_CYFRAME);
    const int frameWidth = GetSystemMetrics(SM_CXFRAME);
    const int captionHeight = frameHeight + 2 * GetSystemMetrics(SM_CXBORDER) + GetSystemMetrics(SM_CYSIZE);
    if (frameHeight && frameWidth && captionHeight) {
        CHECK(info.frameHeight == frameHeight);
        CHECK(info.frameWidth == frameWidth);
        CHECK(info.captionHeight == captionHeight);
    } else {
        CHECK(info.frameHeight == 0 && info.frameWidth == 0 && info.captionHeight == 0);
    }

    // Measured again, the displays have not changed.
    const DisplayInfo cached = CachedDisplayInfo();
    CHECK(DescribeDisplayInfo(cached) == DescribeDisplayInfo(info));
}

#else

bool ParseScreen(const std::string& text, std::uint32_t* width, std::uint32_t* height)
{
    unsigned long w = 0;
    unsigned long h = 0;
    char end = 0;
    if (std::sscanf(text.c_str(), "%lux%lu%c", &w, &h, &end) != 2 || w == 0 || h == 0)
        return false;
    *width = std::uint32_t(w);
    *height = std::uint32_t(h);
    return true;
}

void GatheredFromX(bool screenGiven, std::uint32_t width, std::uint32_t height)
{
    const DisplayInfo info = GatherDisplayInfo();
    std::cout << DescribeDisplayInfo(info) << std::endl;
    CheckConsistent(info);
    if (screenGiven) {
        CHECK(info.valid);
        CHECK(info.monitors.size() == 1);
        if (!info.monitors.empty()) {
            CHECK(info.monitors[0].width == width);
            CHECK(info.monitors[0].height == height);
        }
        // The only monitor is the primary one; its work area is what the window manager
        // publishes (the test can set one), else the whole monitor.
        const MonitorRecord* primary = PrimaryMonitor(info);
        CHECK(primary != nullptr);
        long area[4] = {0, 0, long(width), long(height)};
        if (const char* published = std::getenv("QT_HALVO_XVFB_WORKAREA"))
            CHECK(std::sscanf(published, "%ld, %ld, %ld, %ld", &area[0], &area[1], &area[2], &area[3]) == 4);
        if (primary) {
            CHECK(primary->workLeft == area[0] && primary->workTop == area[1]);
            CHECK(primary->workWidth == std::uint32_t(area[2]) && primary->workHeight == std::uint32_t(area[3]));
        }
    }

    // Without a display there is nothing to measure.
    unsetenv("DISPLAY");
    const DisplayInfo none = GatherDisplayInfo();
    CHECK(!none.valid);
    CheckConsistent(none);
    // What was measured first is kept for the life of the process.
    CHECK(&CachedDisplayInfo() == &CachedDisplayInfo());
    CHECK(CachedDisplayInfo().valid == info.valid);
}

#endif

} // namespace

int main(int argc, char** argv)
{
#if !defined(_WIN32)
    bool screenGiven = false;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
#endif
    if (argc == 3 && std::string(argv[1]) == "--screen") {
#if !defined(_WIN32)
        screenGiven = ParseScreen(argv[2], &width, &height);
        if (!screenGiven) {
            std::cout << "--screen wants <width>x<height>, not " << argv[2] << std::endl;
            return 2;
        }
#endif
    } else if (argc != 1) {
        std::cout << "usage: tst_display_info [--screen <width>x<height>]" << std::endl;
        return 2;
    }

    PhysicalDpiDividesFirst();
    ScalingPercentTruncates();
    FrameMetricsAreAllOrNothing();
    DescriptionListsEveryMonitor();
    ScalingIsLoweredUntilTheConsoleFits();
    WorkAreaFallsBackToTheMonitor();
    WithoutUsableInformationTheSystemScales();
    DecorationsAndRoundingCount();

    // First use of the cache, before anything else measures the displays.
    CachedOnceForAllThreads();
#if defined(_WIN32)
    GatheredFromWin32();
#else
    GatheredFromX(screenGiven, width, height);
#endif
    return PlainTest::Summary("tst_display_info");
}
