// Bringing a window to the front: on X11 the request a window manager gets, on Windows the
// foreground and the restored window.
#include <qt_halvo/utilities/platform/window_activation_p.h>

#include "plain_test.h"

using OrvantaQT::Platform::ActivateNativeWindow;
using OrvantaQT::Platform::AllowOtherProcessesToActivate;

#ifdef _WIN32
#include <windows.h>

namespace {

HWND NewWindow(const char* title)
{
    const HWND window = CreateWindowExA(0, "STATIC", title, WS_OVERLAPPEDWINDOW, 100, 100, 300, 200, nullptr,
                                        nullptr, GetModuleHandleA(nullptr), nullptr);
    ShowWindow(window, SW_SHOW);
    return window;
}

void Pump()
{
    MSG message;
    for (int i = 0; i < 20; ++i) {
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
        Sleep(10);
    }
}

} // namespace

int main()
{
    CHECK(!ActivateNativeWindow(0));
    CHECK(!ActivateNativeWindow(12345)); // not a window
    CHECK(AllowOtherProcessesToActivate());

    const HWND first = NewWindow("first");
    const HWND second = NewWindow("second");
    SetForegroundWindow(second);
    Pump();
    CHECK(ActivateNativeWindow(reinterpret_cast<std::uintptr_t>(first)));
    Pump();
    CHECK(GetForegroundWindow() == first);

    ShowWindow(first, SW_MINIMIZE);
    Pump();
    CHECK(IsIconic(first));
    CHECK(ActivateNativeWindow(reinterpret_cast<std::uintptr_t>(first)));
    Pump();
    CHECK(!IsIconic(first));
    CHECK(GetForegroundWindow() == first);
    DestroyWindow(first);
    DestroyWindow(second);
    return PlainTest::Summary("tst_window_activation");
}

#else
#include <X11/Xlib.h>

int main()
{
    CHECK(!ActivateNativeWindow(0));
    CHECK(AllowOtherProcessesToActivate());

    // This connection plays the window manager: it takes the requests for the root window.
    Display* manager = XOpenDisplay(nullptr);
    CHECK(manager != nullptr);
    if (!manager)
        return PlainTest::Summary("tst_window_activation");
    const Window root = DefaultRootWindow(manager);
    XSelectInput(manager, root, SubstructureRedirectMask | SubstructureNotifyMask);
    const Window window = XCreateSimpleWindow(manager, root, 10, 10, 100, 100, 0, 0, 0);
    XSync(manager, False);

    CHECK(ActivateNativeWindow(window));

    const Atom activeWindow = XInternAtom(manager, "_NET_ACTIVE_WINDOW", False);
    bool asked = false;
    while (XPending(manager) > 0) {
        XEvent event;
        XNextEvent(manager, &event);
        if (event.type == ClientMessage && event.xclient.message_type == activeWindow) {
            asked = true;
            CHECK(event.xclient.window == window);
            CHECK(event.xclient.format == 32);
            CHECK(event.xclient.data.l[0] == 2); // from a pager
        }
    }
    CHECK(asked);
    XDestroyWindow(manager, window);
    XCloseDisplay(manager);
    return PlainTest::Summary("tst_window_activation");
}
#endif
