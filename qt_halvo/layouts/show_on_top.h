#pragma once

#include <qt_halvo/qt_halvo_global.h>

class QWidget;

namespace OrvantaQT {

// Brings the widget's window to the front and gives it the focus, as reliably as the window
// system allows: un-minimises it, shows, raises and activates it, and asks the window system
// itself (X11: _NET_ACTIVE_WINDOW from a pager; Windows: the foreground-window rules), since
// window managers ignore a plain activation by a program in the background. Null logs.
QT_HALVO_EXPORT void ShowOnTop(QWidget* widget);

// For a process about to wake another one (a second instance handing over to the first):
// lets the other process take the foreground. Only Windows needs it.
QT_HALVO_EXPORT void AllowOtherProcessesToShowOnTop();

} // namespace OrvantaQT
