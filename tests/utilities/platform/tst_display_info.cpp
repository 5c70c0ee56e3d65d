// The display information: the rules shared by all systems, then what is gathered from
// Windows (cross-compiled, under wine) or from the X server of with_xvfb.sh.
//   tst_display_info                                                   on Windows
//   tst_display_info <width> <height> <work area left top width height> <DPI>     on X

#include "plain_test.h"
#include <qt_halvo/utilities/platform/display_info_p.h>

#include <cstdlib>
#include <future>

#if defined(_WIN32)
#include <windows.h>
#endif

using namespace OrvantaQT::Platform;

static DisplayInfo At(std::uint32_t dpi, std::vector<MonitorRecord> monitors, std::int32_t caption = 0,
                      std::int32_t frameHeight = 0, std::int32_t frameWidth = 0)
{
    return {dpi, ScalingPercent(dpi), std::move(monitors), caption, frameHeight, frameWidth, true};
}

int main([[maybe_unused]] int argc, [[maybe_unused]] char** argv)
{
    // Pixels per millimetre are an integer: 1920 pixels on 527 mm are 3 per mm, 76 DPI.
    CHECK(PhysicalDpi(1920, 527) == 76 && PhysicalDpi(3840, 600) == 152 && PhysicalDpi(100, 1000) == 0);
    CHECK(PhysicalDpi(0, 527) == 0 && PhysicalDpi(1920, 0) == 0);
    CHECK(ScalingPercent(96) == 100 && ScalingPercent(144) == 150 && ScalingPercent(97) == 101);
    for (int zero = 0; zero < 4; ++zero) { // window decorations are known all together or not at all
        DisplayInfo info = At(96, {}, zero == 0 ? 0 : 31, zero == 1 ? 0 : 8, zero == 2 ? 0 : 6);
        NormaliseFrameMetrics(info);
        CHECK(info.captionHeight + info.frameHeight + info.frameWidth == (zero == 3 ? 45 : 0));
    }
    const MonitorRecord small{1280, 1024, 1280, 984};
    DisplayInfo two = At(144, {{1920, 1080, 1920, 1040, 96}, small});
    CHECK(DescribeDisplayInfo(two) == "DPI: 144, scaling: 150%. Monitors: Resolution: 1920x1080, work area: 1920x1040, "
                                      "physical DPI: 96.Resolution: 1280x1024, work area: 1280x984, physical DPI: 0.");
    two.monitors[1].primary = true;
    CHECK(PrimaryMonitor(two) == &two.monitors[1]);

    // The factor ChooseScaling sets, 0 for the system's own; at 100 %, 1.0 says it does not fit at all.
    DisplayInfo invalid = At(192, {small});
    invalid.valid = false;
    CHECK(ConsoleFits(invalid, {5000, 5000}, 2.0));
    const DisplayInfo large = At(192, {{1920, 1080, 1920, 1040}});
    const DisplayInfo wide = At(144, {{1366, 768, 1366, 728}, {2560, 1440, 2560, 1400}});
    const DisplayInfo decorated = At(96, {{1000, 800, 1000, 800}}, 30, 8, 6);
    const struct { DisplayInfo displays; ConsoleSize console; double factor; } rows[] = {
        // The work area counts, to the pixel.
        {At(96, {small}), {1280, 984}, 0}, {At(96, {small}), {1281, 984}, 1.0}, {At(96, {small}), {1280, 985}, 1.0},
        // Lowered in quarters: at 200 % 2.0 and 1.75 are too large, 1.5 fits; at 125 % only 1.0 does.
        {large, {1200, 600}, 1.5}, {large, {900, 500}, 0}, {At(120, {{1920, 1080, 1920, 1040}}), {1600, 900}, 1.0},
        {wide, {1600, 900}, 0}, {wide, {1900, 1000}, 1.25}, // any monitor may take it
        // Without a work area, side by side, the monitor's size; a monitor without room is not judged.
        {At(96, {{1920, 1080, 0, 0}}), {1921, 1080}, 1.0}, {At(96, {{1920, 1080, 0, 0}}), {1920, 1081}, 1.0},
        {At(96, {{1920, 1080, 0, 1000}}), {1921, 1000}, 1.0}, {At(96, {{1920, 1080, 0, 1000}}), {1920, 1001}, 1.0},
        {At(96, {small, {0, 0, 0, 0}}), {5000, 5000}, 0},
        // Two frame widths across; the caption and one frame height down.
        {decorated, {988, 762}, 0}, {decorated, {989, 762}, 1.0}, {decorated, {988, 763}, 1.0},
        // Scaled sides round half up: 102 * 1.25 = 127.5 gives 128, 101 * 1.25 = 126.25 gives 126.
        {At(120, {{128, 128, 128, 128}}), {102, 102}, 0}, {At(120, {{127, 127, 127, 127}}), {102, 102}, 1.0},
        {At(120, {{127, 127, 127, 127}}), {101, 101}, 0},
        // A negative side, no monitor or no information: the system scales.
        {At(192, {small}), {-1, 600}, 0}, {At(192, {small}), {600, -1}, 0}, {At(192, {}), {5000, 5000}, 0},
        {invalid, {5000, 5000}, 0},
    };
    for (const auto& row : rows) {
        const ScalingChoice choice = ChooseScaling(row.displays, row.console);
        if ((choice.systemScaling ? 0.0 : choice.factor) != row.factor)
            std::cout << row.console.width << "x" << row.console.height << " gave " << choice.factor << std::endl;
        CHECK((choice.systemScaling ? 0.0 : choice.factor) == row.factor);
    }

    // The first calls of the cache come from two threads at once; both get one record.
    std::future<const DisplayInfo*> other = std::async(std::launch::async, [] { return &CachedDisplayInfo(); });
    CHECK(&CachedDisplayInfo() == other.get());

    // Gathered, the primary monitor is as the system tells anyone.
    const DisplayInfo info = GatherDisplayInfo();
    std::cout << DescribeDisplayInfo(info) << std::endl;
    const MonitorRecord* primary = PrimaryMonitor(info);
#if defined(_WIN32)
    // In physical pixels: gathering made the process DPI-aware (as wine starts programs).
    CHECK(IsProcessDPIAware() && info.monitors.size() == std::size_t(GetSystemMetrics(SM_CMONITORS)));
    MONITORINFO system{sizeof(MONITORINFO), {}, {}, 0};
    GetMonitorInfoW(MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY), &system);
    const RECT &all = system.rcMonitor, &work = system.rcWork;
    const MonitorRecord expected{std::uint32_t(all.right - all.left), std::uint32_t(all.bottom - all.top),
                                 std::uint32_t(work.right - work.left), std::uint32_t(work.bottom - work.top), 0, work.left, work.top};
    HDC screen = GetDC(nullptr);
    const std::uint32_t dpi = std::uint32_t(GetDeviceCaps(screen, LOGPIXELSX));
    CHECK(info.monitors.size() != 1 // then the screen is that monitor
          || info.monitors[0].physicalDpi == PhysicalDpi(GetDeviceCaps(screen, HORZRES), GetDeviceCaps(screen, HORZSIZE)));
    ReleaseDC(nullptr, screen);
    const int frame = GetSystemMetrics(SM_CYFRAME);
    CHECK(info.frameHeight == frame && info.frameWidth == GetSystemMetrics(SM_CXFRAME)
          && info.captionHeight == frame + 2 * GetSystemMetrics(SM_CXBORDER) + GetSystemMetrics(SM_CYSIZE));
#else
    // The one screen; X11 has no decorations of its own.
    if (argc != 8)
        return 2;
    const auto number = [argv](int i) { return std::atoi(argv[i]); };
    const MonitorRecord expected{std::uint32_t(number(1)), std::uint32_t(number(2)), std::uint32_t(number(5)),
                                 std::uint32_t(number(6)), 0, number(3), number(4)};
    const std::uint32_t dpi = std::uint32_t(number(7));
    CHECK(info.monitors.size() == 1 && info.captionHeight == 0 && info.frameHeight == 0 && info.frameWidth == 0);
#endif
    CHECK(info.valid && info.systemDpi == dpi && info.scalingPercent == ScalingPercent(dpi) && primary);
    CHECK(primary && primary->width == expected.width && primary->height == expected.height && primary->workLeft == expected.workLeft);
    CHECK(primary && primary->workWidth == expected.workWidth && primary->workHeight == expected.workHeight
          && primary->workTop == expected.workTop);
#if !defined(_WIN32)
    unsetenv("DISPLAY"); // nothing to measure
    CHECK(!GatherDisplayInfo().valid);
#endif
    CHECK(CachedDisplayInfo().valid); // what was measured first stays
    return PlainTest::Summary("tst_display_info");
}
