#include "named_event_p.h"

#include "win_text_p.h"

namespace OrvantaQT::Platform {

// A Win32 event has no way to wake only the waiters of one handle: an interrupt sets the
// shared event, and a listener of another process may take it instead, so the local
// listener must come back on its own after 1 ms.
const bool NamedEvent::kInterruptIsSignal = true;
const int NamedEvent::kListenerWaitMilliseconds = 1;

struct NamedEvent::Private
{
    HANDLE handle = nullptr;
};

NamedEvent::NamedEvent(const std::string& name)
    : d(std::make_unique<Private>())
{
    // Auto-reset, not signalled; opens the existing event when the name is taken. The
    // name goes through unchanged, so that hosts can choose "Local\" or "Global\".
    d->handle = CreateEventW(nullptr, FALSE, FALSE, Widen(name).c_str());
}

NamedEvent::~NamedEvent()
{
    if (d->handle)
        CloseHandle(d->handle);
}

bool NamedEvent::IsValid() const
{
    return d->handle != nullptr;
}

void NamedEvent::Signal()
{
    if (d->handle)
        SetEvent(d->handle);
}

NamedEvent::WaitResult NamedEvent::Wait(int timeoutMilliseconds)
{
    if (!d->handle)
        return WaitResult::Failed;
    const DWORD timeout = timeoutMilliseconds < 0 ? 0 : static_cast<DWORD>(timeoutMilliseconds);
    switch (WaitForSingleObject(d->handle, timeout)) {
    case WAIT_OBJECT_0:
        return WaitResult::Signalled;
    case WAIT_TIMEOUT:
        return WaitResult::NotSignalled;
    default:
        return WaitResult::Failed;
    }
}

void NamedEvent::Interrupt()
{
    if (d->handle)
        SetEvent(d->handle);
}

} // namespace OrvantaQT::Platform
