#pragma once

#include <QtCore/QPointer>
#include <QtCore/QProcess>
#include <QtCore/QStringList>
#include <QtGui/QAccessible>

namespace TestSupport {

// Records the accessibility updates raised while it lives, one line each:
//   "<event> <object>[/<child>][ <detail>]"
// with the event's name (QAccessible::Event), the object's name (its class name when it has
// none), the child index when the event is for a child, and as detail the new value of a
// ValueChanged event or the changed state flags of a StateChanged event ("checked busy").
// One recorder at a time; it takes over QAccessible's update handler.
class AccessibilityRecorder
{
public:
    AccessibilityRecorder();
    ~AccessibilityRecorder();

    // The lines recorded since the last call, and forgets them; only those for objects
    // that are object or its descendants when object is given.
    QStringList Take(const QObject* object = nullptr);

private:
    static void Record(QAccessibleEvent* event);

    QAccessible::UpdateHandler m_previous;
};

// Qt passes accessibility updates on (to a recorder too) only while a screen reader's bus is
// there: a private message bus, published on the X server where Qt looks for one
// (AT_SPI_BUS), stands in for it while this object lives. Address() is empty when it could
// not start.
class ScreenReaderBus
{
public:
    ScreenReaderBus();
    ~ScreenReaderBus();

    QString Address() const;
    // What a child process run with it needs in its environment; the child then finds
    // OnScreenReaderBus() true.
    QStringList Environment() const;

private:
    QProcess m_bus;
    QString m_address;
};

// Whether this process was started with a ScreenReaderBus's environment.
bool OnScreenReaderBus();

} // namespace TestSupport
