#include <qt_halvo/application/inter_process_event.h>

#include <qt_halvo/utilities/logging_p.h>
#include <qt_halvo/utilities/platform/named_event_p.h>

#include <QtConcurrent/QtConcurrentRun>

#include <atomic>
#include <exception>
#include <thread>

namespace OrvantaQT {

namespace {

using Platform::NamedEvent;

class InterProcessEventImpl final : public InterProcessEvent
{
public:
    explicit InterProcessEventImpl(const QString& name)
        : m_name(name)
        , m_event(name.toStdString())
    {
        if (!m_event.IsValid())
            QTH_LOG_ERROR("InterProcessEvent: the event \"%s\" cannot be created", qPrintable(name));
    }

    ~InterProcessEventImpl() override
    {
        if (m_idle.load())
            return;
        m_stopRequested.store(true);
        m_event.Interrupt();
        while (!m_idle.load())
            std::this_thread::yield();
    }

    void Signal() override { m_event.Signal(); }

    void StartListening(std::function<void()> onSignalled) override
    {
        if (!onSignalled)
            QTH_LOG_ERROR("InterProcessEvent: \"%s\" has an empty callback; its signals are only taken",
                          qPrintable(m_name));
        // Marked before the task starts, so that the destructor waits for a task that is
        // queued but not yet running.
        m_idle.store(false);
        QtConcurrent::run([this, onSignalled] { Listen(onSignalled); });
    }

private:
    void Listen(const std::function<void()>& onSignalled)
    {
        while (!m_stopRequested.load()) {
            if (m_event.Wait(NamedEvent::kListenerWaitMilliseconds) != NamedEvent::WaitResult::Signalled
                || m_stopRequested.load())
                continue;
            Call(onSignalled);
        }
        m_idle.store(true);
    }

    // A callback that throws must not end the loop: the destructor waits for its end.
    void Call(const std::function<void()>& onSignalled)
    {
        if (!onSignalled)
            return;
        try {
            onSignalled();
        } catch (const std::exception& exception) {
            QTH_LOG_ERROR("InterProcessEvent: the callback of \"%s\" threw: %s", qPrintable(m_name), exception.what());
        } catch (...) {
            QTH_LOG_ERROR("InterProcessEvent: the callback of \"%s\" threw an exception", qPrintable(m_name));
        }
    }

    const QString m_name;
    std::atomic<bool> m_idle{true};
    std::atomic<bool> m_stopRequested{false};
    NamedEvent m_event;
};

} // namespace

InterProcessEvent::~InterProcessEvent() = default;

std::shared_ptr<InterProcessEvent> CreateInterProcessEvent(const QString& name)
{
    return std::make_shared<InterProcessEventImpl>(name);
}

} // namespace OrvantaQT
