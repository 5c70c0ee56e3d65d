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
            // Several signals before a wait are one, which any user of the name may take.
            signaller.Signal();
            waiter.Signal();
            CHECK(otherName.Wait(0) == Result::NotSignalled && waiter.Wait(kLongWait) == Result::Signalled);
            CHECK(signaller.Wait(kShortWait) == Result::NotSignalled);
        }
        // The event lives while anyone holds it open, and only so long.
        for (int i = 0; i < 2; ++i) {
            NamedEvent(Name("ab")).Signal();
            CHECK(waiter.Wait(0) == Result::Signalled);
        }
        waiter.Signal();
    }
    CHECK(NamedEvent(Name("ab")).Wait(0) == Result::NotSignalled);

    // A signal that comes as a wait goes to sleep is not lost: two threads take turns many times.
    NamedEvent ping(Name("ping"));
    NamedEvent pong(Name("pong"));
    const auto play = [](NamedEvent& mine, NamedEvent& theirs) {
        int turns = 0;
        for (; turns < 20000 && mine.Wait(kLongWait) == Result::Signalled; ++turns)
            theirs.Signal();
        return turns;
    };
    std::future<int> partner = std::async(std::launch::async, play, std::ref(ping), std::ref(pong));
    ping.Signal();
    CHECK(play(pong, ping) == 20000 && partner.get() == 20000);

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

    // An interrupt ends a pending wait (a signal handler in the waiting thread does not). Where
    // it sets the event, which another process may take, a listener comes back on its own.
    NamedEvent event(Name("interrupt"));
    NamedEvent other(Name("interrupt"));
    std::packaged_task<Result()> wait([&event] { return event.Wait(60000); });
    std::future<Result> waiting = wait.get_future();
    std::thread waiter(std::move(wait));
    std::this_thread::sleep_for(100ms);
#if !defined(_WIN32)
    struct sigaction action{};
    action.sa_handler = [](int) {};
    sigaction(SIGUSR1, &action, nullptr);
    pthread_kill(waiter.native_handle(), SIGUSR1);
#endif
    CHECK(waiting.wait_for(100ms) == std::future_status::timeout);
    event.Interrupt();
    CHECK(waiting.wait_for(std::chrono::milliseconds(kLongWait)) == std::future_status::ready);
    waiter.join();
    const Result interrupted = waiting.get();
    const Result seen = other.Wait(kShortWait);
    CHECK(NamedEvent::kInterruptIsSignal
              ? NamedEvent::kListenerWaitMilliseconds == 1 && (interrupted == Result::Signalled) != (seen == Result::Signalled)
              : interrupted == Result::NotSignalled && seen == Result::NotSignalled);
#if defined(_WIN32)
    // An event the system cannot make (in a namespace that does not exist) fails quietly.
    NamedEvent failed("NoSuchNamespace\\x");
    failed.Signal();
    failed.Interrupt();
    CHECK(!failed.IsValid() && failed.Wait(kShortWait) == Result::Failed);
#else
    // Closed events give their descriptors back.
    const auto lowestFree = [] { const int descriptor = dup(0); close(descriptor); return descriptor; };
    const int before = lowestFree();
    NamedEvent(Name("descriptor")).Signal();
    CHECK(lowestFree() == before);
#endif
    return PlainTest::Summary("tst_named_event");
}
