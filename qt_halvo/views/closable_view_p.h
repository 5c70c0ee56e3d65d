#pragma once

#include <QtCore/QMetaObject>
#include <QtCore/QObject>
#include <QtCore/QPersistentModelIndex>
#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtCore/QRect>
#include <QtCore/QVector>
#include <QtGui/QAccessible>

class QAbstractItemModel;
class QAbstractItemView;
class QItemSelectionModel;
class QPainter;
class QWidget;

namespace OrvantaQT {

class ClosableViewHelper;

// The close button as screen readers see it: an object of its own under the view, on
// whichever row shows the button.
class ClosableViewCloseButton : public QObject
{
    Q_OBJECT

public:
    ClosableViewCloseButton(ClosableViewHelper* helper, QAbstractItemView* view);
    ClosableViewHelper* Helper() const { return m_helper; }

private:
    QPointer<ClosableViewHelper> m_helper;
};

// What ClosableListView and ClosableTreeView share: the row that shows the close button,
// its place, painting, clicks, the Delete key and the button's accessibility.
class ClosableViewHelper : public QObject
{
    Q_OBJECT

public:
    // What only the view itself can do: emit its signal, and lay out its items now.
    struct Hooks
    {
        void (*requestClose)(QAbstractItemView*, const QModelIndex&);
        void (*layoutNow)(QAbstractItemView*);
    };

    ClosableViewHelper(QAbstractItemView* view, Hooks hooks);
    ~ClosableViewHelper() override;

    // Both follow the view at once, removed rows and a replaced model included.
    QModelIndex CloseButtonIndex();
    QRect CloseButtonRect();
    // Over what the view painted, after it.
    void Paint(QPainter* painter);
    // Moves to a viewport set with setViewport().
    void FollowViewport();

    // What the accessible button reads and does.
    QAbstractItemView* View() const { return m_view; }
    QRect ScreenRect();
    QString ButtonName();
    bool IsHovered() const { return m_hovered; }
    bool IsSunken() const { return m_sunken; }
    void PressButton();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Place
    {
        QPersistentModelIndex index;
        QRect row;    // the whole row, clipped to the viewport
        QRect button; // empty when no row shows the button
    };

    void Rewire();
    Place Target();
    // Moves the button to the row it belongs on now, repaints the rows it leaves and
    // enters, tells screen readers, and has the view find its hovered row again.
    void Sync();
    bool ViewportEvent(QEvent* event);
    bool ViewEvent(QEvent* event);
    // Emits CloseRequested; false when the view went with it.
    bool RequestClose(const QModelIndex& index);
    void Announce(QAccessible::Event type);

    QPointer<QAbstractItemView> m_view;
    QPointer<QWidget> m_viewport;
    Hooks m_hooks;
    ClosableViewCloseButton* m_button;
    QPointer<QAbstractItemModel> m_model;
    QPointer<QItemSelectionModel> m_selectionModel;
    QVector<QMetaObject::Connection> m_connections;
    Place m_place;
    QPoint m_pointer;
    bool m_pointerInside = false;
    bool m_hovered = false; // the pointer is on the button
    bool m_sunken = false;  // pressed on the button, and still on it
    bool m_pressing = false; // a left press on the button is going on: its release is ours
    bool m_syncQueued = false;
    QPersistentModelIndex m_pressed;
    QPersistentModelIndex m_middlePressed;
    bool m_middlePressing = false;
};

} // namespace OrvantaQT
