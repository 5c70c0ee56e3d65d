// The named auto-reset event, on Linux and (cross-compiled, under wine) on Windows.
//   tst_named_event                    runs the tests
//   tst_named_event signal <name>      (child) opens the event and signals it
//   tst_named_event wait <name>        (child) opens the event and waits for one signal

#include "plain_test.h"
#include <qt_halvo/utilities/platform/named_event_p.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <thread>

#if defined(_WIN32)
#include <process.h>
#else
#include <sys/resource.h>
#include <unistd.h>
#endif

using namespace OrvantaQT::Platform;
using Result = NamedEvent::WaitResult;
using Clock = std::chrono::steady_clock;

namespace {

// Generous: only guards against a wait that never ends.
constexpr int kLongWait = 5000;
// How long a wait that must time out lasts: nothing would arrive later than this.
constexpr int kShortWait = 200;

std::string program;

int ProcessId()
{
#if defined(_WIN32)
    return _getpid();
#else
    return int(getpid());
#endif
}

// Names of their own for every case and every run, so that neither a case left set nor
// a test running at the same time can be seen.
std::string UniqueName(const char* purpose)
{
    return "qt_halvo_tst_named_event_" + std::to_string(ProcessId()) + "_" + purpose;
}

// An event the system cannot create: on Windows one named in a namespace that does not
// exist; on Linux, where names are not sure to fail, one made without a file descriptor
// to spare.
std::unique_ptr<NamedEvent> CreateFailingEvent()
{
#if defined(_WIN32)
    return std::make_unique<NamedEvent>("NoSuchNamespace\\x");
#else
    rlimit saved{};
    if (getrlimit(RLIMIT_NOFILE, &saved) != 0)
        return nullptr;
    rlimit none = saved;
    none.rlim_cur = 0;
    if (setrlimit(RLIMIT_NOFILE, &none) != 0)
        return nullptr;
    auto event = std::make_unique<NamedEvent>(UniqueName("no_descriptors"));
    setrlimit(RLIMIT_NOFILE, &saved);
    return event;
#endif
}

int RunChild(const std::string& mode, const std::string& name)
{
    const std::string command =
#if defined(_WIN32)
        // cmd.exe takes off the outermost quotes, leaving the quoted program path.
        "\"\"" + program + "\" " + mode + " " + name + "\"";
#else
        "'" + program + "' " + mode + " " + name;
#endif
    return std::system(command.c_str());
}

void SignalWaitsForAWaiter()
{
    const std::string name = UniqueName("stays_set");
    NamedEvent signaller(name);
    NamedEvent waiter(name);
    CHECK(signaller.IsValid());
    CHECK(waiter.IsValid());
    CHECK(waiter.Wait(0) == Result::NotSignalled);

    signaller.Signal();
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    CHECK(waiter.Wait(kLongWait) == Result::Signalled);
    // Auto-reset: the wait took it.
    CHECK(waiter.Wait(kShortWait) == Result::NotSignalled);
    CHECK(signaller.Wait(0) == Result::NotSignalled);

    // The signalling object itself may take its own signal too.
    signaller.Signal();
    CHECK(signaller.Wait(kLongWait) == Result::Signalled);
    CHECK(waiter.Wait(0) == Result::NotSignalled);

    // The event lives on while another object holds it open.
    {
        NamedEvent shortLived(name);
        CHECK(shortLived.IsValid());
        shortLived.Signal();
    }
    CHECK(waiter.Wait(kLongWait) == Result::Signalled);
}

void SignalsBeforeAWaitMerge()
{
    const std::string name = UniqueName("merge");
    NamedEvent first(name);
    NamedEvent second(name);
    first.Signal();
    second.Signal();
    first.Signal();
    CHECK(first.Wait(kLongWait) == Result::Signalled);
    CHECK(second.Wait(kShortWait) == Result::NotSignalled);
    CHECK(first.Wait(0) == Result::NotSignalled);
}

void EachSignalWakesOneWaiter()
{
    const std::string name = UniqueName("one_waiter");
    NamedEvent signaller(name);
    std::atomic<int> ready{0};
    std::atomic<int> woken{0};
    Result results[2] = {Result::Failed, Result::Failed};
    auto wait = [&](int index) {
        NamedEvent waiter(name);
        ++ready;
        results[index] = waiter.Wait(kLongWait);
        if (results[index] == Result::Signalled)
            ++woken;
    };
    std::thread one(wait, 0);
    std::thread two(wait, 1);
    while (ready < 2)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    // Both are now (or are about to be) blocked in their waits.
    std::this_thread::sleep_for(std::chrono::milliseconds(100));

    signaller.Signal();
    const Clock::time_point deadline = Clock::now() + std::chrono::milliseconds(kLongWait);
    while (woken < 1 && Clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    CHECK(woken == 1);
    // A second waiter woken by the same signal would show up well within this.
    std::this_thread::sleep_for(std::chrono::milliseconds(kShortWait));
    CHECK(woken == 1);

    signaller.Signal();
    one.join();
    two.join();
    CHECK(woken == 2);
    CHECK(results[0] == Result::Signalled);
    CHECK(results[1] == Result::Signalled);
    CHECK(signaller.Wait(0) == Result::NotSignalled);
}

void AnotherProcessSharesTheEvent()
{
    // The child signals; the signal stays set for us until we wait.
    const std::string fromChild = UniqueName("from_child");
    NamedEvent waiter(fromChild);
    CHECK(waiter.IsValid());
    CHECK(RunChild("signal", fromChild) == 0);
    CHECK(waiter.Wait(kLongWait) == Result::Signalled);
    CHECK(waiter.Wait(0) == Result::NotSignalled);

    // The child waits; our signal wakes it whether it is already waiting or not yet.
    const std::string toChild = UniqueName("to_child");
    NamedEvent signaller(toChild);
    CHECK(signaller.IsValid());
    int childResult = -1;
    std::thread child([&] { childResult = RunChild("wait", toChild); });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    signaller.Signal();
    child.join();
    CHECK(childResult == 0);
    // The child took it.
    CHECK(signaller.Wait(0) == Result::NotSignalled);
}

void InterruptEndsAPendingWait()
{
    CHECK(NamedEvent::kListenerWaitMilliseconds > 0);
    // An interrupt another process may take leaves the local listener only its own
    // time-out to notice that it should stop.
    if (NamedEvent::kInterruptIsSignal)
        CHECK(NamedEvent::kListenerWaitMilliseconds == 1);

    const std::string name = UniqueName("interrupt");
    NamedEvent event(name);
    std::atomic<bool> waiting{false};
    std::atomic<bool> returned{false};
    Result result = Result::Failed;
    Clock::time_point returnedAt;
    std::thread waiter([&] {
        waiting = true;
        result = event.Wait(kLongWait);
        returnedAt = Clock::now();
        returned = true;
    });
    while (!waiting)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    CHECK(!returned);
    const Clock::time_point interruptedAt = Clock::now();
    event.Interrupt();
    waiter.join();
    CHECK(returnedAt - interruptedAt < std::chrono::seconds(1));
    if (NamedEvent::kInterruptIsSignal)
        CHECK(result == Result::Signalled || result == Result::NotSignalled);
    else
        CHECK(result == Result::NotSignalled);

    // Whether the interrupt reaches the event's other users.
    const std::string otherName = UniqueName("interrupt_others");
    NamedEvent interrupted(otherName);
    NamedEvent other(otherName);
    interrupted.Interrupt();
    if (NamedEvent::kInterruptIsSignal)
        CHECK(other.Wait(kLongWait) == Result::Signalled);
    else
        CHECK(other.Wait(kShortWait) == Result::NotSignalled);
}

// The way the library listens: short waits, a stop flag, and an interrupt to stop.
void ListeningLoopSeesSignalsAndStops()
{
    const std::string name = UniqueName("listener");
    NamedEvent listening(name);
    NamedEvent signaller(name);
    std::atomic<bool> stopRequested{false};
    std::atomic<int> calls{0};
    std::thread listener([&] {
        while (!stopRequested) {
            if (listening.Wait(NamedEvent::kListenerWaitMilliseconds) == Result::Signalled && !stopRequested)
                ++calls;
        }
    });

    signaller.Signal();
    const Clock::time_point deadline = Clock::now() + std::chrono::milliseconds(kLongWait);
    while (calls < 1 && Clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    CHECK(calls == 1);
    signaller.Signal();
    while (calls < 2 && Clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    CHECK(calls == 2);

    const Clock::time_point stoppedAt = Clock::now();
    stopRequested = true;
    listening.Interrupt();
    listener.join();
    CHECK(Clock::now() - stoppedAt < std::chrono::seconds(1));
    CHECK(calls == 2);
}

void FailedCreationFailsSilently()
{
    std::unique_ptr<NamedEvent> event = CreateFailingEvent();
    CHECK(event != nullptr);
    if (!event)
        return;
    CHECK(!event->IsValid());
    event->Signal();
    event->Interrupt();
    CHECK(event->Wait(0) == Result::Failed);
    CHECK(event->Wait(kShortWait) == Result::Failed);
    CHECK(!event->IsValid());
}

} // namespace

int main(int argc, char** argv)
{
    program = argv[0];
    if (argc == 3) {
        const std::string mode = argv[1];
        NamedEvent event(argv[2]);
        if (!event.IsValid())
            return 3;
        if (mode == "signal") {
            event.Signal();
            return 0;
        }
        if (mode == "wait")
            return event.Wait(kLongWait) == Result::Signalled ? 0 : 4;
        return 2;
    }
    if (argc != 1) {
        std::cout << "usage: tst_named_event [signal|wait <name>]" << std::endl;
        return 2;
    }

    SignalWaitsForAWaiter();
    SignalsBeforeAWaitMerge();
    EachSignalWakesOneWaiter();
    AnotherProcessSharesTheEvent();
    InterruptEndsAPendingWait();
    ListeningLoopSeesSignalsAndStops();
    FailedCreationFailsSilently();
    return PlainTest::Summary("tst_named_event");
}
