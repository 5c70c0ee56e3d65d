#include "real_input.h"

#include <QtCore/QByteArray>
#include <QtGui/QCursor>
#include <QtTest/QTest>

#include <X11/Xatom.h>
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
    (void)QTest::qWaitFor([&] { return QCursor::pos() == global; }, 500);
    QTest::qWait(30);
}

::Atom Intern(const char* name)
{
    return XInternAtom(TestDisplay(), name, False);
}

} // namespace

FakeWindowManagerClaims::FakeWindowManagerClaims()
{
    Display* display = TestDisplay();
    const ::Window root = DefaultRootWindow(display);
    ::Window check = XCreateSimpleWindow(display, root, 0, 0, 1, 1, 0, 0, 0);
    m_check = check;
    XChangeProperty(display, root, Intern("_NET_SUPPORTING_WM_CHECK"), XA_WINDOW, 32, PropModeReplace,
                    reinterpret_cast<unsigned char*>(&check), 1);
    ::Atom supported[] = {Intern("_NET_WM_STATE"), Intern("_NET_WM_STATE_MAXIMIZED_VERT"),
                          Intern("_NET_WM_STATE_MAXIMIZED_HORZ")};
    XChangeProperty(display, root, Intern("_NET_SUPPORTED"), XA_ATOM, 32, PropModeReplace,
                    reinterpret_cast<unsigned char*>(supported), 3);
    XSync(display, False);
}

FakeWindowManagerClaims::~FakeWindowManagerClaims()
{
    Display* display = TestDisplay();
    const ::Window root = DefaultRootWindow(display);
    XDeleteProperty(display, root, Intern("_NET_SUPPORTING_WM_CHECK"));
    XDeleteProperty(display, root, Intern("_NET_SUPPORTED"));
    XDestroyWindow(display, m_check);
    XSync(display, False);
}

FakeCompositor::FakeCompositor()
{
    Display* display = TestDisplay();
    m_owner = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 1, 1, 0, 0, 0);
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(DefaultScreen(display));
    XSetSelectionOwner(display, Intern(name.constData()), m_owner, CurrentTime);
    XSync(display, False);
}

FakeCompositor::~FakeCompositor()
{
    Display* display = TestDisplay();
    XDestroyWindow(display, m_owner);
    XSync(display, False);
}

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
