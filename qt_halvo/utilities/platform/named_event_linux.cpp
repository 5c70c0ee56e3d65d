// The named event on Linux: a 32-bit word in POSIX shared memory that processes wait on
// with a futex.
//
// Why not a named POSIX semaphore: it counts, so two signals before a wait would wake
// twice, and a stopping listener could only be woken by posting to it, which another
// process may take. A futex word gives the auto-reset semantics exactly (bit 0 is the
// event's state; the one wait that clears it takes the signal) and lets Interrupt() wake
// waiters without touching the state: it bumps the bits above bit 0, so that every
// waiter returns, finds nothing set, and looks at its own stop flag. Listeners can then
// sleep long, and an idle one costs nothing.
//
// The shared memory is removed by the last object that closes the name; a use count in
// it, changed under flock(), says which one that is. A process killed with the name open
// leaves its count behind: the object (one page, in /dev/shm) then stays until the next
// reboot, and later users of the same name keep using it.

#include "named_event_p.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <ctime>

#include <fcntl.h>
#include <linux/futex.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace OrvantaQT::Platform {

namespace {

constexpr std::uint32_t kSet = 1;
constexpr std::uint32_t kInterruption = 2; // added to the word: leaves bit 0 alone

struct SharedState
{
    std::atomic<std::uint32_t> word;
    std::uint32_t users; // changed only under flock() of the shared memory's descriptor
};
static_assert(std::atomic<std::uint32_t>::is_always_lock_free, "the word is shared between processes");

// Any text names an event; shared memory names allow no '/' and are short.
std::string SharedMemoryName(const std::string& name)
{
    std::uint64_t hash = 14695981039346656037ULL; // FNV-1a
    for (const unsigned char c : name) {
        hash ^= c;
        hash *= 1099511628211ULL;
    }
    char text[48];
    std::snprintf(text, sizeof text, "/qt_halvo_event_%016llx", static_cast<unsigned long long>(hash));
    return text;
}

long Futex(std::atomic<std::uint32_t>* word, int operation, std::uint32_t value, const timespec* timeout)
{
    // Not FUTEX_PRIVATE_FLAG: the word is shared with other processes.
    return syscall(SYS_futex, reinterpret_cast<std::uint32_t*>(word), operation, value, timeout, nullptr, 0);
}

std::int64_t NowNanoseconds()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t(now.tv_sec) * 1000000000 + now.tv_nsec;
}

// Whether the name still leads to the object behind fd: the last user may have removed
// it between our shm_open() and our flock().
bool StillNamed(int fd, const std::string& name)
{
    const int current = shm_open(name.c_str(), O_RDWR | O_CLOEXEC, 0);
    if (current < 0)
        return false;
    struct stat ours{};
    struct stat named{};
    const bool same = fstat(fd, &ours) == 0 && fstat(current, &named) == 0 && ours.st_dev == named.st_dev
        && ours.st_ino == named.st_ino;
    close(current);
    return same;
}

} // namespace

struct NamedEvent::Private
{
    std::string name;
    int fd = -1;
    SharedState* state = nullptr;

    // One attempt to create or open the shared memory and count this object in.
    bool Open()
    {
        fd = shm_open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        if (fd < 0)
            return false;
        if (flock(fd, LOCK_EX) == 0) {
            struct stat status{};
            if (StillNamed(fd, name) && fstat(fd, &status) == 0
                && (status.st_size >= off_t(sizeof(SharedState)) || ftruncate(fd, sizeof(SharedState)) == 0)) {
                void* mapping = mmap(nullptr, sizeof(SharedState), PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
                if (mapping != MAP_FAILED) {
                    state = static_cast<SharedState*>(mapping);
                    ++state->users;
                }
            }
            flock(fd, LOCK_UN);
        }
        if (!state) {
            close(fd);
            fd = -1;
        }
        return state != nullptr;
    }

    void Close()
    {
        if (!state)
            return;
        flock(fd, LOCK_EX);
        if (--state->users == 0)
            shm_unlink(name.c_str());
        flock(fd, LOCK_UN);
        munmap(state, sizeof(SharedState));
        close(fd);
        state = nullptr;
        fd = -1;
    }
};

const bool NamedEvent::kInterruptIsSignal = false;
// Interrupt() wakes a listener at once, so its waits can be long: an idle one then
// wakes twice a second.
const int NamedEvent::kListenerWaitMilliseconds = 500;

NamedEvent::NamedEvent(const std::string& name)
    : d(new Private)
{
    d->name = SharedMemoryName(name);
    // A few attempts: each fails only when the last other user removes the name meanwhile.
    for (int attempt = 0; attempt < 8 && !d->Open(); ++attempt) {
    }
}

NamedEvent::~NamedEvent()
{
    d->Close();
}

bool NamedEvent::IsValid() const
{
    return d->state != nullptr;
}

void NamedEvent::Signal()
{
    if (!d->state)
        return;
    // Already set: the signals merge, and whoever takes the first one was woken for it.
    if ((d->state->word.fetch_or(kSet) & kSet) == 0)
        Futex(&d->state->word, FUTEX_WAKE, 1, nullptr);
}

NamedEvent::WaitResult NamedEvent::Wait(int timeoutMilliseconds)
{
    if (!d->state)
        return WaitResult::Failed;
    std::atomic<std::uint32_t>& word = d->state->word;
    const std::int64_t deadline = NowNanoseconds() + std::int64_t(std::max(0, timeoutMilliseconds)) * 1000000;
    std::uint32_t observed = word.load();
    const std::uint32_t interruptions = observed & ~kSet;
    for (;;) {
        if (observed & kSet) {
            if (word.compare_exchange_weak(observed, observed & ~kSet))
                return WaitResult::Signalled;
            continue;
        }
        if ((observed & ~kSet) != interruptions)
            return WaitResult::NotSignalled;
        const std::int64_t remaining = deadline - NowNanoseconds();
        if (remaining <= 0)
            return WaitResult::NotSignalled;
        const timespec timeout{time_t(remaining / 1000000000), long(remaining % 1000000000)};
        // Sleeps only while the word is still what was seen: no wake-up can slip by.
        if (Futex(&word, FUTEX_WAIT, observed, &timeout) != 0 && errno != EAGAIN && errno != EINTR
            && errno != ETIMEDOUT)
            return WaitResult::Failed;
        observed = word.load();
    }
}

void NamedEvent::Interrupt()
{
    if (!d->state)
        return;
    d->state->word.fetch_add(kInterruption);
    Futex(&d->state->word, FUTEX_WAKE, INT_MAX, nullptr);
}

} // namespace OrvantaQT::Platform
