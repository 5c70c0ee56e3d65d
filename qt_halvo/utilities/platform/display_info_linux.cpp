// The displays of an X server: the system DPI from the X resources, one record per
// active monitor from XRandR, work areas from the window manager. X11 has no caption
// and frame metrics of its own, so those stay 0.

#include "display_info_p.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xresource.h>
#include <X11/extensions/Xrandr.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>

namespace OrvantaQT::Platform {

namespace {

constexpr std::uint32_t kDefaultDpi = 96;

struct Rectangle
{
    long x = 0;
    long y = 0;
    long width = 0;
    long height = 0;
};

struct DisplayCloser
{
    void operator()(Display* display) const { XCloseDisplay(display); }
};
using DisplayConnection = std::unique_ptr<Display, DisplayCloser>;

// Xft.dpi, as desktops set it for their scaling; 96 when unset or unreadable.
std::uint32_t SystemDpi(Display* display)
{
    const char* resources = XResourceManagerString(display);
    if (!resources)
        return kDefaultDpi;
    XrmInitialize();
    XrmDatabase database = XrmGetStringDatabase(resources);
    if (!database)
        return kDefaultDpi;
    char* type = nullptr;
    XrmValue value{};
    std::uint32_t dpi = kDefaultDpi;
    if (XrmGetResource(database, "Xft.dpi", "Xft.Dpi", &type, &value) && value.addr) {
        const double read = std::strtod(value.addr, nullptr);
        if (read >= 1.0 && read < 100000.0)
            dpi = std::uint32_t(read);
    }
    XrmDestroyDatabase(database);
    return dpi;
}

// A CARDINAL array property of the root window.
std::vector<long> CardinalProperty(Display* display, Window root, const char* name)
{
    const Atom atom = XInternAtom(display, name, True);
    if (atom == None)
        return {};
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long remaining = 0;
    unsigned char* data = nullptr;
    std::vector<long> values;
    if (XGetWindowProperty(display, root, atom, 0, 1024, False, XA_CARDINAL, &type, &format, &count, &remaining,
                           &data) == Success
        && type == XA_CARDINAL && format == 32 && data) {
        // Format 32 comes as longs, whatever their size.
        const long* items = reinterpret_cast<const long*>(data);
        values.assign(items, items + count);
    }
    if (data)
        XFree(data);
    return values;
}

// The work area of the current desktop as the window manager publishes it, if it does.
std::optional<Rectangle> WorkArea(Display* display, Window root)
{
    const std::vector<long> areas = CardinalProperty(display, root, "_NET_WORKAREA");
    const std::vector<long> current = CardinalProperty(display, root, "_NET_CURRENT_DESKTOP");
    const std::size_t desktop = current.empty() ? 0 : std::size_t(current.front());
    if (areas.size() < (desktop + 1) * 4)
        return std::nullopt;
    const long* area = areas.data() + desktop * 4;
    return Rectangle{area[0], area[1], area[2], area[3]};
}

MonitorRecord Record(const Rectangle& monitor, long millimetres, const std::optional<Rectangle>& workArea, bool primary)
{
    MonitorRecord record;
    record.width = std::uint32_t(monitor.width);
    record.height = std::uint32_t(monitor.height);
    record.workWidth = record.width;
    record.workHeight = record.height;
    record.workLeft = std::int32_t(monitor.x);
    record.workTop = std::int32_t(monitor.y);
    record.primary = primary;
    if (workArea) {
        const long left = std::max(monitor.x, workArea->x);
        const long top = std::max(monitor.y, workArea->y);
        const long right = std::min(monitor.x + monitor.width, workArea->x + workArea->width);
        const long bottom = std::min(monitor.y + monitor.height, workArea->y + workArea->height);
        if (right > left && bottom > top) {
            record.workWidth = std::uint32_t(right - left);
            record.workHeight = std::uint32_t(bottom - top);
            record.workLeft = std::int32_t(left);
            record.workTop = std::int32_t(top);
        }
    }
    record.physicalDpi = PhysicalDpi(std::uint64_t(std::max(0L, monitor.width)), std::uint64_t(std::max(0L, millimetres)));
    return record;
}

bool HasMonitorList(Display* display)
{
    int eventBase = 0;
    int errorBase = 0;
    int major = 0;
    int minor = 0;
    return XRRQueryExtension(display, &eventBase, &errorBase) && XRRQueryVersion(display, &major, &minor)
        && (major > 1 || (major == 1 && minor >= 5));
}

std::vector<MonitorRecord> Monitors(Display* display, Window root)
{
    const std::optional<Rectangle> workArea = WorkArea(display, root);
    std::vector<MonitorRecord> records;
    const auto keep = [&records](const MonitorRecord& record) {
        if (record.width > 0 && record.height > 0)
            records.push_back(record);
    };
    if (HasMonitorList(display)) {
        int count = 0;
        XRRMonitorInfo* monitors = XRRGetMonitors(display, root, True, &count);
        for (int i = 0; i < count; ++i) {
            const XRRMonitorInfo& monitor = monitors[i];
            keep(Record({monitor.x, monitor.y, monitor.width, monitor.height}, monitor.mwidth, workArea, monitor.primary));
        }
        if (monitors)
            XRRFreeMonitors(monitors);
        // Without a primary output set, the first monitor stands for it, as on most desktops.
        if (!records.empty() && std::none_of(records.begin(), records.end(), [](const MonitorRecord& r) { return r.primary; }))
            records.front().primary = true;
    }
    if (records.empty()) {
        // No XRandR 1.5: the screen stands for the monitor.
        const int screen = DefaultScreen(display);
        keep(Record({0, 0, DisplayWidth(display, screen), DisplayHeight(display, screen)},
                    DisplayWidthMM(display, screen), workArea, true));
    }
    return records;
}

} // namespace

DisplayInfo GatherDisplayInfo()
{
    DisplayInfo info;
    const DisplayConnection display(XOpenDisplay(nullptr));
    if (!display)
        return info;
    info.systemDpi = SystemDpi(display.get());
    info.scalingPercent = ScalingPercent(info.systemDpi);
    info.monitors = Monitors(display.get(), DefaultRootWindow(display.get()));
    NormaliseFrameMetrics(info);
    info.valid = info.systemDpi != 0 && !info.monitors.empty();
    return info;
}

} // namespace OrvantaQT::Platform
