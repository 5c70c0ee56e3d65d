#include "frameless_window_p.h"

#include <windows.h>

namespace OrvantaQT::Platform {

namespace {

LRESULT ToHitCode(FramelessHit hit)
{
    switch (hit) {
    case FramelessHit::Caption:
        return HTCAPTION;
    case FramelessHit::Left:
        return HTLEFT;
    case FramelessHit::Right:
        return HTRIGHT;
    case FramelessHit::Top:
        return HTTOP;
    case FramelessHit::Bottom:
        return HTBOTTOM;
    case FramelessHit::TopLeft:
        return HTTOPLEFT;
    case FramelessHit::TopRight:
        return HTTOPRIGHT;
    case FramelessHit::BottomLeft:
        return HTBOTTOMLEFT;
    case FramelessHit::BottomRight:
        return HTBOTTOMRIGHT;
    case FramelessHit::Client:
        break;
    }
    return HTCLIENT;
}

} // namespace

bool PrepareFramelessWindow(std::uintptr_t window)
{
    const HWND handle = reinterpret_cast<HWND>(window);
    if (!handle || !IsWindow(handle))
        return false;
    // The thick frame and the caption are what the system snaps, animates and maximises;
    // WM_NCCALCSIZE keeps them from being drawn.
    const LONG_PTR style = GetWindowLongPtrW(handle, GWL_STYLE);
    SetWindowLongPtrW(handle, GWL_STYLE, style | WS_THICKFRAME | WS_CAPTION | WS_MINIMIZEBOX | WS_MAXIMIZEBOX);
    SetWindowPos(handle, nullptr, 0, 0, 0, 0,
                 SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
    return true;
}

bool HandleFramelessMessage(void* message, std::intptr_t* result, FramelessHitTest hitTest, void* context)
{
    const MSG* msg = static_cast<const MSG*>(message);
    if (!msg || !result)
        return false;
    switch (msg->message) {
    case WM_NCCALCSIZE: {
        if (!msg->wParam)
            return false;
        // The client area takes the whole window. A maximised window is placed with its
        // frame off screen, so that part is cut to keep the content on the screen.
        if (IsZoomed(msg->hwnd)) {
            auto* params = reinterpret_cast<NCCALCSIZE_PARAMS*>(msg->lParam);
            const int frameX = GetSystemMetrics(SM_CXSIZEFRAME) + GetSystemMetrics(SM_CXPADDEDBORDER);
            const int frameY = GetSystemMetrics(SM_CYSIZEFRAME) + GetSystemMetrics(SM_CXPADDEDBORDER);
            params->rgrc[0].left += frameX;
            params->rgrc[0].right -= frameX;
            params->rgrc[0].top += frameY;
            params->rgrc[0].bottom -= frameY;
        }
        *result = 0;
        return true;
    }
    case WM_NCHITTEST: {
        if (!hitTest)
            return false;
        RECT window{};
        if (!GetWindowRect(msg->hwnd, &window))
            return false;
        const int x = static_cast<short>(LOWORD(msg->lParam)) - window.left;
        const int y = static_cast<short>(HIWORD(msg->lParam)) - window.top;
        *result = ToHitCode(hitTest(context, x, y));
        return true;
    }
    default:
        return false;
    }
}

bool WindowManagerMaximizes()
{
    return true;
}

bool CompositingManagerRunning()
{
    return true;
}

} // namespace OrvantaQT::Platform
