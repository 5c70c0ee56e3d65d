#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtGui/QAccessible>
#include <QtWidgets/QAccessibleWidget>
#include <QtWidgets/QWidget>

#include <functional>

namespace OrvantaQT {

// The interfaces of the library's own widgets, one function per family, each making the
// interface for objects of its classes or returning nullptr; the factory asks them in turn.
QAccessibleInterface* CheckBoxHeaderAccessible(const QString& className, QObject* object);
QAccessibleInterface* ClosableViewAccessible(const QString& className, QObject* object);
QAccessibleInterface* BusyRingAccessible(const QString& className, QObject* object);
QAccessibleInterface* SelectableContainerAccessible(const QString& className, QObject* object);
QAccessibleInterface* NotificationWidgetAccessible(const QString& className, QObject* object);
// BarChart, PieChart, PlotWidget (accessible_charts.cpp).
QAccessibleInterface* ChartAccessible(const QString& className, QObject* object);
// AutoresizedText, LinkLabel (accessible_text.cpp).
QAccessibleInterface* TextAccessible(const QString& className, QObject* object);

// Reports the changes of a widget whose setters raise no accessibility events and whose
// source stays as it is (the charts, the text labels). Every setter of those widgets ends
// in update(), so a shown widget gets a Paint after each change; a hidden one gets a Show
// before it can be seen again. On either, check() compares what screen readers were last
// told with the widget's state and raises events for the difference. Made by an interface
// and deleted with it, so only widgets a screen reader asked about pay for it; it never
// consumes an event.
class AccessibleWatch final : public QObject
{
public:
    AccessibleWatch(QWidget* widget, std::function<void()> check);

    // Checks when the event loop comes back: for notices sent before the change is stored.
    void CheckLater();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<void()> m_check;
    bool m_pending = false;
};

// A QAccessibleWidget that answers neutrally (nothing, empty, zero) once its widget is
// being destroyed, where QAccessibleWidget would use the widget without asking: a screen
// reader may still hold the interface then.
class WidgetAccessible : public QAccessibleWidget
{
public:
    using QAccessibleWidget::QAccessibleWidget;

    QWindow* window() const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* focusChild() const override;
    QVector<QPair<QAccessibleInterface*, QAccessible::Relation>> relations(QAccessible::Relation match) const override;
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QRect rect() const override;
    QString text(QAccessible::Text kind) const override;
    QAccessible::State state() const override;
    QColor foregroundColor() const override;
    QColor backgroundColor() const override;
    QStringList actionNames() const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString& name) const override;
};

// Raises an event for the widget, or for its child-th child.
void RaiseAccessibleEvent(QWidget* widget, QAccessible::Event type, int child = -1);
void RaiseValueChanged(QWidget* widget, const QVariant& value, int child = -1);

} // namespace OrvantaQT
