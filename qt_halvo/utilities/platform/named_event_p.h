// A named, system-wide auto-reset event, without Qt: every process that opens the same
// name shares it. A signal sets it; one wait (here or in another process) takes it and
// resets it; signals that come while it is set merge into one; a signal nobody waits
// for stays set until someone waits.
#pragma once

#include <memory>
#include <string>

namespace OrvantaQT::Platform {

class NamedEvent
{
public:
    enum class WaitResult { Signalled, NotSignalled, Failed };

    // Creates the event or opens the existing one of that name (UTF-8). Check IsValid().
    explicit NamedEvent(const std::string& name);
    ~NamedEvent();
    NamedEvent(const NamedEvent&) = delete;
    NamedEvent& operator=(const NamedEvent&) = delete;

    bool IsValid() const;
    void Signal();

    // Takes the event if it is set, waiting up to timeoutMilliseconds for it. Returns
    // NotSignalled on the time-out, and also early after Interrupt().
    WaitResult Wait(int timeoutMilliseconds);

    // Makes this object's current waits return soon, so that a listener can see that it
    // should stop. See kInterruptIsSignal for what that costs other processes.
    void Interrupt();

    // Whether Interrupt() sets the event (and so may wake another process's listener,
    // or leave the event set) instead of waking only this object's waiters.
    static const bool kInterruptIsSignal;

    // How long one wait of a listening loop may last and still stop within 1 ms of an
    // Interrupt(): 1 where an interrupt can be taken by another process.
    static const int kListenerWaitMilliseconds;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace OrvantaQT::Platform
