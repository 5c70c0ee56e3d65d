#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QString>

#include <functional>
#include <memory>

namespace Pellar {

// The root of interface hierarchies.
struct InterfaceDummyBase
{
    virtual ~InterfaceDummyBase() = default;
};

// An interface of type T, added to its bases virtually so that an implementation can
// gather several of them.
template <class T, class Base>
class Interface : public virtual Base
{
public:
    ~Interface() override = default;
};

} // namespace Pellar

namespace OrvantaQT {

// A named, system-wide event through which one process wakes another: every process
// that creates the event with the same name shares it. Signals that come before anyone
// listens are kept; several before a wake-up count as one.
class QT_HALVO_EXPORT InterProcessEvent : public virtual Pellar::Interface<InterProcessEvent, Pellar::InterfaceDummyBase>
{
public:
    InterProcessEvent() = default;
    InterProcessEvent(const InterProcessEvent&) = default;
    InterProcessEvent& operator=(const InterProcessEvent&) = default;
    // Returns only after a running listener has stopped.
    ~InterProcessEvent() override;

    virtual void Signal() = 0;

    // Listens on a thread of Qt's global thread pool and calls onSignalled there, not on
    // the GUI thread, for each signal. The listener holds its pool thread while it lives.
    virtual void StartListening(std::function<void()> onSignalled) = 0;
};

// The event of that name, created or opened. When the system refuses it, every operation
// on it does nothing.
QT_HALVO_EXPORT std::shared_ptr<InterProcessEvent> CreateInterProcessEvent(const QString& name);

} // namespace OrvantaQT
