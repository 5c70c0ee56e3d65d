// The process's scale factor and graphics back-end, chosen before the application object
// exists, and grabbing widgets at the right device pixel ratio.
//
// A host calls, in this order: InitGraphicalBackend(), EnableHiDpiScaling(), then
// constructs its OrvantaQT::Application.
#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtGui/QPixmap>

class QWidget;

namespace OrvantaQT {

// Measures the displays and keeps the system's scale factor when a window of
// minimumConsoleSize (scaled) fits on a monitor; otherwise lowers the factor in quarters
// until it does, through "QT_SCALE_FACTOR". A negative side means: system scaling.
QT_HALVO_EXPORT void EnableHiDpiScaling(const QSize& minimumConsoleSize);

// The factor set through "QT_SCALE_FACTOR", read once; 1.0 when unset or unreadable.
QT_HALVO_EXPORT double GetQtScaleFactor();

// "minConsoleWidth" and "minConsoleHeight" of the current stylesheet constants; (0, 0)
// when they are not declared.
QT_HALVO_EXPORT QSize GetMinimumConsoleSize();

// Picks the OpenGL flavour on Windows unless "QT_OPENGL" already does.
QT_HALVO_EXPORT void InitGraphicalBackend();

// "angle", "desktopGl" or "software".
QT_HALVO_EXPORT QString GetOpenGLImplementation();

// The widget and its children at its device pixel ratio, transparent where it paints
// nothing (its window background is left out).
QT_HALVO_EXPORT QPixmap GrabHiDpiPixmap(QWidget* widget);

} // namespace OrvantaQT
