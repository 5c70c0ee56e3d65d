// Bringing a window to the front past the window system's focus-stealing rules, without
// Qt: one implementation per system.
#pragma once

#include <cstdint>

namespace OrvantaQT::Platform {

// Asks the window system to raise the native window (an X11 window id or an HWND) and give
// it the input focus. X11: a _NET_ACTIVE_WINDOW request to the window manager, marked as
// coming from a pager so that focus-stealing prevention lets it through, and a raise for
// when no window manager runs. Windows: restores it when minimised and takes the
// foreground through the input of the thread that has it. False when the request could
// not be made.
bool ActivateNativeWindow(std::uintptr_t window);

// Lets any other process take the foreground (Windows: AllowSetForegroundWindow), for a
// process that is about to wake another one; X11 has no such rule and returns true.
bool AllowOtherProcessesToActivate();

} // namespace OrvantaQT::Platform
