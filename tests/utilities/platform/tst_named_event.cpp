// The named auto-reset event, on Linux and (cross-compiled, under wine) on Windows.
//   tst_named_event          runs the tests
//   tst_named_event <name>   (a child) waits for the event to be signalled

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
#include <sys/resource.h>
#include <unistd.h>
#endif

using namespace OrvantaQT::Platform;
using namespace std::chrono_literals;
using Result = NamedEvent::WaitResult;

constexpr int kLongWait = 5000; // only guards against a wait that never ends
constexpr int kShortWait = 200; // nothing expected would come later than this

// Names of this run only: no case left set, and no test running at the same time, is seen.
static std::string Name(const char* purpose)
{
    return "qt_halvo_tst_named_event_" + std::to_string(getpid()) + "_" + purpose;
}

int main(int argc, char** argv)
{
    if (argc == 2)
        return NamedEvent(argv[1]).Wait(kLongWait) == Result::Signalled ? 0 : 1;
    {
        NamedEvent waiter(Name("ab"));
        {
            NamedEvent signaller(Name("ab"));
            NamedEvent otherName(Name("ba"));
            CHECK(signaller.IsValid() && waiter.IsValid() && otherName.IsValid() && waiter.Wait(0) == Result::NotSignalled);
            // Several signals before a wait are one; the signaller may take its own.
            signaller.Signal();
            waiter.Signal();
            CHECK(otherName.Wait(0) == Result::NotSignalled && waiter.Wait(kLongWait) == Result::Signalled);
            CHECK(signaller.Wait(kShortWait) == Result::NotSignalled);
            signaller.Signal();
            CHECK(signaller.Wait(0) == Result::Signalled && waiter.Wait(0) == Result::NotSignalled);
        }
        // The event lives while anyone holds it open, and only so long.
        for (int i = 0; i < 2; ++i) {
            NamedEvent(Name("ab")).Signal();
            CHECK(waiter.Wait(0) == Result::Signalled);
        }
        waiter.Signal();
    }
    CHECK(NamedEvent(Name("ab")).Wait(0) == Result::NotSignalled);

    // Another process waits; a signal wakes it whether it is already waiting or not yet.
    NamedEvent shared(Name("child"));
#if defined(_WIN32) // cmd.exe takes off the outermost quotes, leaving the quoted program path
    const std::string command = "\"\"" + std::string(argv[0]) + "\" " + Name("child") + "\"";
#else
    const std::string command = "'" + std::string(argv[0]) + "' " + Name("child");
#endif
    std::future<int> child = std::async(std::launch::async, [&command] { return std::system(command.c_str()); });
    std::this_thread::sleep_for(100ms);
    shared.Signal();
    CHECK(child.get() == 0 && shared.Wait(0) == Result::NotSignalled);

    // An interrupt ends a pending wait. Where it sets the event, and so another process may
    // take it, a listener has to come back on its own; elsewhere no other user sees it.
    NamedEvent event(Name("interrupt"));
    NamedEvent other(Name("interrupt"));
    std::future<Result> waiting = std::async(std::launch::async, [&event] { return event.Wait(60000); });
    CHECK(waiting.wait_for(100ms) == std::future_status::timeout);
    event.Interrupt();
    CHECK(waiting.wait_for(std::chrono::milliseconds(kLongWait)) == std::future_status::ready);
    const Result interrupted = waiting.get();
    const Result seen = other.Wait(kShortWait);
    CHECK(NamedEvent::kInterruptIsSignal
              ? NamedEvent::kListenerWaitMilliseconds == 1 && (interrupted == Result::Signalled) != (seen == Result::Signalled)
              : interrupted == Result::NotSignalled && seen == Result::NotSignalled);
#if defined(_WIN32)
    NamedEvent failed("NoSuchNamespace\\x"); // a namespace that does not exist
#else
    // A signal handler that runs in the waiting thread does not end the wait.
    struct sigaction action{};
    action.sa_handler = [](int) {};
    sigaction(SIGUSR1, &action, nullptr);
    Result handled = Result::Failed;
    std::thread waiter([&] { handled = event.Wait(kLongWait); });
    std::this_thread::sleep_for(100ms);
    pthread_kill(waiter.native_handle(), SIGUSR1);
    std::this_thread::sleep_for(100ms);
    event.Signal();
    waiter.join();
    CHECK(handled == Result::Signalled);

    // Closed events give their descriptors back; without one to spare none opens.
    const auto lowestFree = [] { const int descriptor = dup(0); close(descriptor); return descriptor; };
    const int before = lowestFree();
    NamedEvent(Name("descriptor")).Signal();
    CHECK(lowestFree() == before);
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = rlim_t(before); // none to spare from here on
    setrlimit(RLIMIT_NOFILE, &limit);
    NamedEvent failed(Name("no_descriptor"));
#endif
    // An event the system cannot make fails quietly.
    CHECK(!failed.IsValid());
    failed.Signal();
    failed.Interrupt();
    CHECK(failed.Wait(kShortWait) == Result::Failed);
    return PlainTest::Summary("tst_named_event");
}
