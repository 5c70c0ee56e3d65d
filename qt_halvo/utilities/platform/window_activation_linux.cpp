#include "window_activation_p.h"

#include <X11/Xlib.h>

namespace OrvantaQT::Platform {

bool ActivateNativeWindow(std::uintptr_t window)
{
    if (window == 0)
        return false;
    Display* display = XOpenDisplay(nullptr);
    if (!display)
        return false;
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.display = display;
    event.xclient.window = static_cast<Window>(window);
    event.xclient.message_type = XInternAtom(display, "_NET_ACTIVE_WINDOW", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = 2; // source: a pager, which window managers obey
    event.xclient.data.l[1] = CurrentTime;
    event.xclient.data.l[2] = 0;
    const Status sent = XSendEvent(display, DefaultRootWindow(display), False,
                                   SubstructureRedirectMask | SubstructureNotifyMask, &event);
    XRaiseWindow(display, static_cast<Window>(window));
    XSync(display, False);
    XCloseDisplay(display);
    return sent != 0;
}

bool AllowOtherProcessesToActivate()
{
    return true;
}

} // namespace OrvantaQT::Platform
