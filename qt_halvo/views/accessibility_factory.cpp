#include <qt_halvo/views/accessibility_factory.h>

#include "accessibility_factory_p.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

namespace OrvantaQT {

namespace {

QAccessibleInterface* LibraryAccessibleFactory(const QString& className, QObject* object)
{
    if (!object || !className.startsWith(QLatin1String("OrvantaQT::")))
        return nullptr;
    for (const auto make : {BusyRingAccessible, SelectableContainerAccessible, NotificationWidgetAccessible,
                            ChartAccessible, TextAccessible, CheckBoxHeaderAccessible, ClosableViewAccessible}) {
        if (QAccessibleInterface* accessible = make(className, object))
            return accessible;
    }
    return nullptr;
}

} // namespace

AccessibleWatch::AccessibleWatch(QWidget* widget, std::function<void()> check)
    : m_check(std::move(check))
{
    widget->installEventFilter(this);
}

void AccessibleWatch::CheckLater()
{
    if (std::exchange(m_pending, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_pending = false;
            m_check();
        },
        Qt::QueuedConnection);
}

bool AccessibleWatch::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Paint || event->type() == QEvent::Show)
        m_check();
    return false;
}

QWindow* WidgetAccessible::window() const
{
    return isValid() ? QAccessibleWidget::window() : nullptr;
}

QAccessibleInterface* WidgetAccessible::parent() const
{
    return isValid() ? QAccessibleWidget::parent() : nullptr;
}

QAccessibleInterface* WidgetAccessible::focusChild() const
{
    return isValid() ? QAccessibleWidget::focusChild() : nullptr;
}

QVector<QPair<QAccessibleInterface*, QAccessible::Relation>> WidgetAccessible::relations(QAccessible::Relation match) const
{
    return isValid() ? QAccessibleWidget::relations(match) : QVector<QPair<QAccessibleInterface*, QAccessible::Relation>>();
}

int WidgetAccessible::childCount() const
{
    return isValid() ? QAccessibleWidget::childCount() : 0;
}

QAccessibleInterface* WidgetAccessible::child(int index) const
{
    return isValid() ? QAccessibleWidget::child(index) : nullptr;
}

int WidgetAccessible::indexOfChild(const QAccessibleInterface* child) const
{
    return isValid() ? QAccessibleWidget::indexOfChild(child) : -1;
}

QAccessibleInterface* WidgetAccessible::childAt(int x, int y) const
{
    return isValid() ? QAccessibleWidget::childAt(x, y) : nullptr;
}

QRect WidgetAccessible::rect() const
{
    return isValid() ? QAccessibleWidget::rect() : QRect();
}

QString WidgetAccessible::text(QAccessible::Text kind) const
{
    return isValid() ? QAccessibleWidget::text(kind) : QString();
}

QAccessible::State WidgetAccessible::state() const
{
    if (isValid())
        return QAccessibleWidget::state();
    QAccessible::State gone;
    gone.invisible = true;
    return gone;
}

QColor WidgetAccessible::foregroundColor() const
{
    return isValid() ? QAccessibleWidget::foregroundColor() : QColor();
}

QColor WidgetAccessible::backgroundColor() const
{
    return isValid() ? QAccessibleWidget::backgroundColor() : QColor();
}

QStringList WidgetAccessible::actionNames() const
{
    return isValid() ? QAccessibleWidget::actionNames() : QStringList();
}

void WidgetAccessible::doAction(const QString& name)
{
    if (isValid())
        QAccessibleWidget::doAction(name);
}

QStringList WidgetAccessible::keyBindingsForAction(const QString& name) const
{
    return isValid() ? QAccessibleWidget::keyBindingsForAction(name) : QStringList();
}

void RaiseAccessibleEvent(QWidget* widget, QAccessible::Event type, int child)
{
    QAccessibleEvent event(widget, type);
    event.setChild(child);
    QAccessible::updateAccessibility(&event);
}

void RaiseValueChanged(QWidget* widget, const QVariant& value, int child)
{
    QAccessibleValueChangeEvent event(widget, value);
    event.setChild(child);
    QAccessible::updateAccessibility(&event);
}

// Qt keeps one copy of a factory however often it is installed, and forgets them all when
// the application object goes: hence no flag of our own, so that an application made
// again gets the factory again.
void InstallAccessibilityFactory()
{
    QAccessible::installFactory(LibraryAccessibleFactory);
}

// With the application object, so that hosts need not call it; Application's own
// constructor stays as it is. Qt runs it at once when the library is loaded after the
// application object is made.
Q_COREAPP_STARTUP_FUNCTION(InstallAccessibilityFactory)

} // namespace OrvantaQT
