#include "window_activation_p.h"

#include <windows.h>

namespace OrvantaQT::Platform {

bool ActivateNativeWindow(std::uintptr_t window)
{
    const HWND handle = reinterpret_cast<HWND>(window);
    if (!handle || !IsWindow(handle))
        return false;
    ShowWindow(handle, IsIconic(handle) ? SW_RESTORE : SW_SHOW);
    // Windows gives the foreground only to the process that has it (or was allowed by it);
    // sharing the input state of the foreground thread for the moment counts as having it.
    const HWND foreground = GetForegroundWindow();
    const DWORD foregroundThread = foreground ? GetWindowThreadProcessId(foreground, nullptr) : 0;
    const DWORD thisThread = GetCurrentThreadId();
    const bool attached = foregroundThread != 0 && foregroundThread != thisThread
        && AttachThreadInput(foregroundThread, thisThread, TRUE);
    BringWindowToTop(handle);
    const bool activated = SetForegroundWindow(handle) != 0;
    SetActiveWindow(handle);
    if (attached)
        AttachThreadInput(foregroundThread, thisThread, FALSE);
    return activated || GetForegroundWindow() == handle;
}

bool AllowOtherProcessesToActivate()
{
    return AllowSetForegroundWindow(ASFW_ANY) != 0;
}

} // namespace OrvantaQT::Platform
