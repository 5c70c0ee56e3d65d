// What tests of windows need of the X server. Input through its test extension: the pointer really moves and the button is
// really pressed, so a window manager sees it as the user's (QTest's events reach Qt only).
#pragma once

#include <QtCore/QDebug>
#include <QtCore/QPoint>
#include <QtTest/QTest>
#include <QtWidgets/QWidget>

namespace TestSupport {

// Whether a window manager was started for this run (QT_HALVO_WINDOW_MANAGER).
bool WindowManagerRuns();

// Waits until the window system has put the window where it was asked to be (a window
// manager answers a moment later); false, with a warning of where it is, when it has not
// within 3 s.
inline bool SettledAt(QWidget* window, const QRect& geometry)
{
    if (QTest::qWaitFor([&] { return window->geometry() == geometry; }, 3000))
        return true;
    qWarning() << "the window is at" << window->geometry() << "instead of" << geometry;
    return false;
}

// Moves the pointer to a global position; the event loop then runs until Qt has seen it.
void RealMouseMove(const QPoint& global);
void RealMousePress(const QPoint& global);
void RealMouseRelease(const QPoint& global);
// Press at from, move in steps to to, release there.
void RealDrag(const QPoint& from, const QPoint& to, int steps = 8);

// Root window properties that say a window manager runs which maximises, while none does:
// the case of a window manager that ignores a frameless window's request.
class FakeWindowManagerClaims
{
public:
    FakeWindowManagerClaims();
    ~FakeWindowManagerClaims();

private:
    unsigned long m_check;
};

// Owns the compositing manager's selection while it lives, as a compositor would.
class FakeCompositor
{
public:
    FakeCompositor();
    ~FakeCompositor();

private:
    unsigned long m_owner;
};

} // namespace TestSupport
