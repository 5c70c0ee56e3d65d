// The named auto-reset event, on Linux and (cross-compiled, under wine) on Windows.
//   tst_named_event                    runs the tests
//   tst_named_event signal|wait <name> (child) opens the event and signals it, or waits for it

#include "plain_test.h"
#include <qt_halvo/utilities/platform/named_event_p.h>

#include <cstdlib>
#include <future>
#include <string>
#include <thread>

#if defined(_WIN32)
#include <process.h>
#define getpid _getpid
#else
#include <csignal>
#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>
#endif

using namespace OrvantaQT::Platform;
using namespace std::chrono_literals;
using Result = NamedEvent::WaitResult;

namespace {

constexpr int kLongWait = 5000; // only guards against a wait that never ends
constexpr int kShortWait = 200; // nothing expected would come later than this

// Names of their own for every run, so that neither a case left set nor a test running
// at the same time can be seen.
std::string Name(const char* purpose)
{
    return "qt_halvo_tst_named_event_" + std::to_string(getpid()) + "_" + purpose;
}

// One wait on a thread of its own, once it is (or is about to be) blocked.
std::future<Result> WaitOnAThread(NamedEvent& event, int timeout)
{
    std::future<Result> result = std::async(std::launch::async, [&event, timeout] { return event.Wait(timeout); });
    std::this_thread::sleep_for(100ms);
    return result;
}

void SignalStaysSetUntilOneWaitTakesIt()
{
    const std::string name = Name("ab");
    {
        NamedEvent waiter(name);
        {
            NamedEvent signaller(name);
            NamedEvent otherName(Name("ba"));
            CHECK(signaller.IsValid() && waiter.IsValid() && otherName.IsValid());
            CHECK(waiter.Wait(0) == Result::NotSignalled);
            // Several signals before a wait are one; the signaller may take its own.
            signaller.Signal();
            waiter.Signal();
            CHECK(otherName.Wait(0) == Result::NotSignalled);
            CHECK(waiter.Wait(kLongWait) == Result::Signalled);
            CHECK(signaller.Wait(kShortWait) == Result::NotSignalled);
            signaller.Signal();
            CHECK(signaller.Wait(0) == Result::Signalled && waiter.Wait(0) == Result::NotSignalled);
            // A waiting thread is woken.
            std::future<Result> woken = WaitOnAThread(waiter, kLongWait);
            signaller.Signal();
            CHECK(woken.get() == Result::Signalled);
        }
        // The event lives while anyone holds it open, and only so long.
        for (int i = 0; i < 2; ++i) {
            NamedEvent(name).Signal();
            CHECK(waiter.Wait(0) == Result::Signalled);
        }
        waiter.Signal();
    }
    CHECK(NamedEvent(name).Wait(0) == Result::NotSignalled);
}

// The child signals, and the signal stays set for us; the child waits, and our signal
// wakes it whether it is already waiting or not yet.
void AnotherProcessSharesTheEvent(const std::string& program)
{
    NamedEvent event(Name("child"));
    const auto child = [&program](const char* mode) {
#if defined(_WIN32) // cmd.exe takes off the outermost quotes, leaving the quoted program path
        return std::system(("\"\"" + program + "\" " + mode + " " + Name("child") + "\"").c_str());
#else
        return std::system(("'" + program + "' " + mode + " " + Name("child")).c_str());
#endif
    };
    CHECK(child("signal") == 0 && event.Wait(0) == Result::Signalled);
    std::future<int> waiting = std::async(std::launch::async, child, "wait");
    std::this_thread::sleep_for(100ms);
    event.Signal();
    CHECK(waiting.get() == 0 && event.Wait(0) == Result::NotSignalled);
}

void InterruptEndsAPendingWait()
{
    // Where another process may take an interrupt, a listener has to come back on its own.
    CHECK(NamedEvent::kListenerWaitMilliseconds == 1 || !NamedEvent::kInterruptIsSignal);
    NamedEvent event(Name("interrupt"));
    NamedEvent other(Name("interrupt"));
    std::future<Result> waiting = WaitOnAThread(event, 60000);
    CHECK(waiting.wait_for(0s) == std::future_status::timeout);
    event.Interrupt();
    CHECK(waiting.wait_for(std::chrono::milliseconds(kLongWait)) == std::future_status::ready);
    // Where it sets the event, the waiter or another user takes it.
    if (NamedEvent::kInterruptIsSignal)
        CHECK((waiting.get() == Result::Signalled) != (other.Wait(kShortWait) == Result::Signalled));
    else
        CHECK(waiting.get() == Result::NotSignalled && other.Wait(kShortWait) == Result::NotSignalled);

#if !defined(_WIN32)
    // A signal handler that runs in the waiting thread does not end the wait.
    struct sigaction action{};
    action.sa_handler = [](int) {};
    sigaction(SIGUSR1, &action, nullptr);
    Result result = Result::Failed;
    std::thread waiter([&] { result = event.Wait(kLongWait); });
    std::this_thread::sleep_for(100ms);
    pthread_kill(waiter.native_handle(), SIGUSR1);
    std::this_thread::sleep_for(100ms);
    event.Signal();
    waiter.join();
    CHECK(result == Result::Signalled);
#endif
}

void FailedCreationFailsSilently()
{
#if defined(_WIN32)
    NamedEvent event("NoSuchNamespace\\x"); // a namespace that does not exist
#else
    // Closed events give their descriptors back; without one to spare none opens.
    const int freeBefore = dup(0);
    close(freeBefore);
    NamedEvent(Name("descriptor")).Signal();
    const int freeAfter = dup(0);
    close(freeAfter);
    CHECK(freeAfter == freeBefore);
    rlimit saved{};
    getrlimit(RLIMIT_NOFILE, &saved);
    rlimit none = saved;
    none.rlim_cur = 0;
    setrlimit(RLIMIT_NOFILE, &none);
    NamedEvent event(Name("no_descriptor"));
    setrlimit(RLIMIT_NOFILE, &saved);
#endif
    CHECK(!event.IsValid());
    event.Signal();
    event.Interrupt();
    CHECK(event.Wait(kShortWait) == Result::Failed);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3) {
        NamedEvent event(argv[2]);
        const bool signal = std::string(argv[1]) == "signal";
        if (signal)
            event.Signal();
        return event.IsValid() && (signal || event.Wait(kLongWait) == Result::Signalled) ? 0 : 3;
    }
    SignalStaysSetUntilOneWaitTakesIt();
    AnotherProcessSharesTheEvent(argv[0]);
    InterruptEndsAPendingWait();
    FailedCreationFailsSilently();
    return PlainTest::Summary("tst_named_event");
}
