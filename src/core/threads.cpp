// The number of threads that one call of the library may use.
#include <algorithm>
#include <atomic>
#include <thread>

#include "core/environment.h"
#include "orpcore.h"

namespace {

int resolve(int count) {
  if (count == 0) return std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
  return std::max(1, count);
}

std::atomic<int>& threadCount() {
  static std::atomic<int> count{resolve(orpcore::countFromEnvironment("ORPCORE_NUM_THREADS").value_or(1))};
  return count;
}

}  // namespace

int ownGetNumThreads(void) { return threadCount().load(std::memory_order_relaxed); }

void orpSetNumThreads(int count) { threadCount().store(resolve(count), std::memory_order_relaxed); }
