#include "frameless_window_p.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>

#include <string>

namespace OrvantaQT::Platform {

namespace {

// The atoms in the root window's _NET_SUPPORTED list, looked for by name.
bool RootSupports(Display* display, const char* const* names, int count)
{
    const Window root = DefaultRootWindow(display);
    // A window manager that ran and left its list behind is not one that runs.
    Atom type = None;
    int format = 0;
    unsigned long items = 0, remaining = 0;
    unsigned char* data = nullptr;
    const Atom check = XInternAtom(display, "_NET_SUPPORTING_WM_CHECK", False);
    if (XGetWindowProperty(display, root, check, 0, 1, False, XA_WINDOW, &type, &format, &items, &remaining,
                           &data) != Success || !data || items != 1) {
        if (data)
            XFree(data);
        return false;
    }
    XFree(data);
    data = nullptr;

    const Atom supported = XInternAtom(display, "_NET_SUPPORTED", False);
    if (XGetWindowProperty(display, root, supported, 0, 4096, False, XA_ATOM, &type, &format, &items, &remaining,
                           &data) != Success || !data) {
        return false;
    }
    const Atom* atoms = reinterpret_cast<const Atom*>(data);
    int found = 0;
    for (int i = 0; i < count; ++i) {
        const Atom wanted = XInternAtom(display, names[i], False);
        for (unsigned long j = 0; j < items; ++j) {
            if (atoms[j] == wanted) {
                ++found;
                break;
            }
        }
    }
    XFree(data);
    return found == count;
}

} // namespace

bool PrepareFramelessWindow(std::uintptr_t)
{
    return false;
}

bool HandleFramelessMessage(void*, std::intptr_t*, FramelessHitTest, void*)
{
    return false;
}

bool WindowManagerMaximizes()
{
    Display* display = XOpenDisplay(nullptr);
    if (!display)
        return false;
    static const char* const names[] = {"_NET_WM_STATE", "_NET_WM_STATE_MAXIMIZED_VERT",
                                        "_NET_WM_STATE_MAXIMIZED_HORZ"};
    const bool maximizes = RootSupports(display, names, 3);
    XCloseDisplay(display);
    return maximizes;
}

bool CompositingManagerRunning()
{
    Display* display = XOpenDisplay(nullptr);
    if (!display)
        return false;
    const std::string name = "_NET_WM_CM_S" + std::to_string(DefaultScreen(display));
    const Atom selection = XInternAtom(display, name.c_str(), False);
    const bool running = XGetSelectionOwner(display, selection) != None;
    XCloseDisplay(display);
    return running;
}

} // namespace OrvantaQT::Platform
