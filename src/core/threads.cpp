// The number of threads that one call of the library may use.
#include <algorithm>
#include <atomic>

#if defined(_WIN32)
#include <windows.h>
#else
#include <pthread.h>
#include <sched.h>
#include <unistd.h>
#endif

#include "core/environment.h"
#include "orpcore.h"

namespace {

// Processors that the process may use.
int processors() {
#if defined(_WIN32)
  DWORD_PTR usable = 0, all = 0;
  GetProcessAffinityMask(GetCurrentProcess(), &usable, &all);
  return __builtin_popcountll(usable);
#else
  cpu_set_t usable;
  if (sched_getaffinity(0, sizeof(usable), &usable) == 0) return CPU_COUNT(&usable);
  return static_cast<int>(sysconf(_SC_NPROCESSORS_ONLN));  // more than such a set can hold
#endif
}

constexpr int kUnread = 0;  // the environment
constinit std::atomic<int> threads{kUnread};

int resolve(int count) { return std::max(1, count == 0 ? processors() : count); }

#if !defined(_WIN32)
// A forked process has one thread, and uses one until it asks for more.
__attribute__((constructor)) void watchForks() {
  pthread_atfork(nullptr, nullptr, [] { threads = 1; });
}
#endif

int granted() {
  int count = threads.load(std::memory_order_relaxed);
  if (count != kUnread) return count;
  const int fromEnvironment = resolve(orpcore::countFromEnvironment("ORPCORE_NUM_THREADS").value_or(1));
  return threads.compare_exchange_strong(count, fromEnvironment) ? fromEnvironment : count;
}

}  // namespace

int ownGetNumThreads(void) { return granted(); }

int orpGetNumThreads(void) { return granted(); }

void orpSetNumThreads(int count) { threads.store(resolve(count), std::memory_order_relaxed); }
