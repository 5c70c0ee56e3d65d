// Qt hands events and thread-pool tasks from thread to thread under locks of its own,
// which ThreadSanitizer cannot see unless Qt itself is built with it. These marks tell
// it about the order at the hand-overs the library makes; elsewhere they are nothing.
#pragma once

#if defined(__SANITIZE_THREAD__)
#  define QT_HALVO_THREAD_SANITIZER 1
#elif defined(__has_feature)
#  if __has_feature(thread_sanitizer)
#    define QT_HALVO_THREAD_SANITIZER 1
#  endif
#endif

#if defined(QT_HALVO_THREAD_SANITIZER)
#  include <sanitizer/tsan_interface.h>
// What this thread did before is visible to a thread that marks the same address after.
#  define QTH_HANDED_OVER(address) __tsan_release(const_cast<void*>(static_cast<const volatile void*>(address)))
#  define QTH_TAKEN_OVER(address) __tsan_acquire(const_cast<void*>(static_cast<const volatile void*>(address)))
#else
#  define QTH_HANDED_OVER(address) static_cast<void>(address)
#  define QTH_TAKEN_OVER(address) static_cast<void>(address)
#endif
