// What helper threads ask of the operating system: to be started, to sleep and wake, to know their processor.
#pragma once

#include <atomic>
#include <cstdint>

#if defined(_WIN32)
#include <windows.h>
#else
#include <linux/futex.h>
#include <pthread.h>
#include <sched.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace orpsp {

using Word = std::atomic<uint32_t>;
static_assert(sizeof(Word) == 4 && Word::is_always_lock_free);

#if defined(_WIN32)

// Where one thread at a time sleeps.
class Bed {
 public:
  bool prepare() { return event_ || (event_ = CreateEventW(nullptr, FALSE, FALSE, nullptr)); }
  void sleep(const Word&, uint32_t) { WaitForSingleObject(event_, INFINITE); }
  void wake(const Word&) { SetEvent(event_); }

 private:
  HANDLE event_ = nullptr;
};

class Thread {
 public:
  template <void (*kBody)(void*)>
  bool start(void* argument) {
    const auto body = [](void* opaque) -> DWORD { return kBody(opaque), 0; };
    const HANDLE thread = CreateThread(nullptr, 0, body, argument, 0, nullptr);
    return thread && CloseHandle(thread);
  }
};

inline int currentProcessor() { return static_cast<int>(GetCurrentProcessorNumber()); }

#else

class Bed {
 public:
  bool prepare() { return true; }
  // Until `word` no longer has this value and wake was called; also now and then for no reason.
  void sleep(const Word& word, uint32_t value) { syscall(SYS_futex, &word, FUTEX_WAIT_PRIVATE, value, nullptr); }
  void wake(const Word& word) { syscall(SYS_futex, &word, FUTEX_WAKE_PRIVATE, 1); }
};

class Thread {
 public:
  // The application's signals are handled on its own threads; only those that a thread raises itself reach this one.
  template <void (*kBody)(void*)>
  bool start(void* argument) {
    sigset_t blocked, before;
    sigfillset(&blocked);
    for (const int own : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGSYS}) sigdelset(&blocked, own);
    pthread_sigmask(SIG_SETMASK, &blocked, &before);
    const auto body = [](void* opaque) -> void* { return kBody(opaque), nullptr; };
    const bool started = pthread_create(&thread_, nullptr, body, argument) == 0;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return started;
  }
  void join() { pthread_join(thread_, nullptr); }

 private:
  pthread_t thread_ = {};
};

inline int currentProcessor() { return sched_getcpu(); }

#endif

}  // namespace orpsp
