#include "real_input.h"

#include <QtCore/QByteArray>
#include <QtGui/QCursor>
#include <QtTest/QTest>

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

namespace TestSupport {

namespace {

Display* TestDisplay()
{
    static Display* display = XOpenDisplay(nullptr);
    return display;
}

// Until Qt's idea of the pointer has caught up with the server's (a window manager's grab
// may hold events back for a moment), and a little after, for what the event causes.
void Settle(const QPoint& global)
{
    QTest::qWaitFor([&] { return QCursor::pos() == global; }, 500);
    QTest::qWait(30);
}

} // namespace

bool WindowManagerRuns()
{
    return !qEnvironmentVariableIsEmpty("QT_HALVO_WINDOW_MANAGER");
}

void RealMouseMove(const QPoint& global)
{
    Display* display = TestDisplay();
    if (!display)
        return;
    XTestFakeMotionEvent(display, -1, global.x(), global.y(), CurrentTime);
    XFlush(display);
    Settle(global);
}

void RealMousePress(const QPoint& global)
{
    RealMouseMove(global);
    if (Display* display = TestDisplay()) {
        XTestFakeButtonEvent(display, 1, True, CurrentTime);
        XFlush(display);
        QTest::qWait(30);
    }
}

void RealMouseRelease(const QPoint& global)
{
    RealMouseMove(global);
    if (Display* display = TestDisplay()) {
        XTestFakeButtonEvent(display, 1, False, CurrentTime);
        XFlush(display);
        QTest::qWait(50);
    }
}

void RealDrag(const QPoint& from, const QPoint& to, int steps)
{
    RealMousePress(from);
    for (int i = 1; i <= steps; ++i)
        RealMouseMove(from + (to - from) * i / steps);
    RealMouseRelease(to);
}

} // namespace TestSupport
