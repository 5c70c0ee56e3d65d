#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QPointer>

class QAbstractScrollArea;
class QScroller;
class QTimer;

namespace OrvantaQT {

// Kinetic scrolling and the scrolling a user expects around it, for one scroll area:
//  - touch and left-mouse drags scroll the viewport through QScroller and fling on
//    release. A drag that starts on a button scrolls; a press and release without a drag
//    still clicks it; while a fling runs, the first press only stops it (what is under it
//    is not clicked). The distances below are logical pixels on every screen. The content
//    stops at its ends (no overshoot).
//  - a child that gets the focus from the keyboard (Tab, Backtab, a shortcut) or the
//    program (setFocus()) is scrolled into view, with a margin; a click's focus is not.
//  - while something is dragged over the area (drag and drop) near one of its edges, the
//    area scrolls towards that edge; the timer runs only while the drag hovers there and
//    there is content left to scroll that way.
// It is an event filter of the area's viewport, and of the application while the area
// shows (focus and drops go to the children), that never takes an event. It is a child of
// the area and goes with it; deleted alone, it takes the kinetic scrolling with it. It
// serves the viewport the area has when it is made.
class QT_HALVO_EXPORT ScrollAreaController : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int dragStartDistance READ GetDragStartDistance WRITE SetDragStartDistance)
    Q_PROPERTY(int focusMargin READ GetFocusMargin WRITE SetFocusMargin)
    Q_PROPERTY(int autoScrollMargin READ GetAutoScrollMargin WRITE SetAutoScrollMargin)
    Q_PROPERTY(int autoScrollStep READ GetAutoScrollStep WRITE SetAutoScrollStep)

public:
    // Use SetScroller(), which keeps one controller per area. A null area is logged and
    // leaves the controller idle.
    explicit ScrollAreaController(QAbstractScrollArea* area);
    ~ScrollAreaController() override;

    // The area's controller, if it has one.
    static ScrollAreaController* Of(const QAbstractScrollArea* area);

    QAbstractScrollArea* GetScrollArea() const;
    // The viewport's QScroller; null without an area.
    QScroller* GetScroller() const;

    // How far a press must move before it scrolls instead of clicking, in logical pixels:
    // QApplication::startDragDistance() by default. A negative value is logged and ignored.
    int GetDragStartDistance() const;
    void SetDragStartDistance(int pixels);

    // Room kept around a child scrolled into view for the focus: 8 by default.
    int GetFocusMargin() const;
    void SetFocusMargin(int pixels);

    // The band along each edge where a drag and drop hover scrolls: 24 by default; 0
    // turns that scrolling off.
    int GetAutoScrollMargin() const;
    void SetAutoScrollMargin(int pixels);
    // How far one tick of that scrolling goes at the edge itself, in pixels: 12 by
    // default; less further in. Ticks come 60 times a second.
    int GetAutoScrollStep() const;
    void SetAutoScrollStep(int pixels);

    // Whether the drag and drop scrolling is on its way now.
    bool IsAutoScrolling() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ApplyScrollerProperties();
    // Installs the application filter and follows the window's screen.
    void WatchWhileShown();
    void EnsureFocusVisible(QWidget* focus);
    void UpdateAutoScroll(const QPoint& viewportPos);
    void StopAutoScroll();
    void AutoScrollTick();

    QPointer<QAbstractScrollArea> m_area;
    QPointer<QWidget> m_viewport;
    QMetaObject::Connection m_screenWatch;
    int m_dragStartDistance;
    int m_focusMargin = 8;
    int m_autoScrollMargin = 24;
    int m_autoScrollStep = 12;
    QTimer* m_autoScrollTimer;
    // The application filter while shown, for the children's events; the viewport's own
    // come through the viewport filter.
    QObject* m_childEvents;
    // The scroll of one tick, from where the drag hovers.
    QPoint m_autoScrollDelta;
};

// Gives the area kinetic scrolling and the rest of what ScrollAreaController does, and
// returns its controller; an area that has one keeps it. A null area is logged and gives
// null.
QT_HALVO_EXPORT ScrollAreaController* SetScroller(QAbstractScrollArea* area);

} // namespace OrvantaQT
