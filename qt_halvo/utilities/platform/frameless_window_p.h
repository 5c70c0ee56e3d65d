// What a window without the system's frame needs from the window system, without Qt: one
// implementation per system.
#pragma once

#include <cstdint>

namespace OrvantaQT::Platform {

// Where a point of a frameless window falls, as the window's own hit test says.
enum class FramelessHit { Client, Caption, Left, Right, Top, Bottom, TopLeft, TopRight, BottomLeft, BottomRight };

// The window's hit test for a point in device pixels relative to its top-left corner.
using FramelessHitTest = FramelessHit (*)(void* context, int x, int y);

// Makes a native window (an HWND) frameless in the way that keeps the system's own moving,
// resizing, snapping and maximise animations: it keeps a thick frame and a caption in its
// styles, and HandleFramelessMessage() then takes the frame away. X11 needs nothing: false.
bool PrepareFramelessWindow(std::uintptr_t window);

// For the native events of a prepared window (a Windows MSG): answers WM_NCCALCSIZE (no
// frame; when maximised, the part the system would put off screen is cut) and
// WM_NCHITTEST (through hitTest, so that the system drags, resizes and snaps). True with
// *result set when the message was answered. Always false on X11.
bool HandleFramelessMessage(void* message, std::intptr_t* result, FramelessHitTest hitTest, void* context);

// Whether a window manager runs that maximises windows when asked (X11: one that says it
// supports _NET_WM_STATE_MAXIMIZED_VERT and _HORZ). Windows always does.
bool WindowManagerMaximizes();

// Whether windows with transparent parts are composited over what lies below (X11: a
// compositing manager owns _NET_WM_CM_S<screen>); otherwise their transparent parts are
// black. Windows always composites.
bool CompositingManagerRunning();

} // namespace OrvantaQT::Platform
