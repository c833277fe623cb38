#include "frame/parallel.h"

#include <x86intrin.h>

#include <algorithm>
#include <atomic>

#include "frame/helpers.h"
#include "frame/pause.h"
#include "orpcore.h"

namespace orpsp {
namespace {

constexpr int kMostThreads = 2;  // of an element-wise call, however many the core library grants

// What was lost by a kind of attempt, and for how long it is not to be made again. Several threads may write at the
// same time; what is lost of that is of no importance.
class Losses {
 public:
  bool pauses() const { return pause_.load(std::memory_order_relaxed) > 0; }
  void pass(int64_t ticks) {
    pause_.store(pause_.load(std::memory_order_relaxed) - std::max<int64_t>(ticks, 1), std::memory_order_relaxed);
  }
  void lose(int64_t ticks) {
    const int doublings = doublings_.load(std::memory_order_relaxed);
    pause_.store(std::min(ticks, kMostTicks) << doublings, std::memory_order_relaxed);
    doublings_.store(std::min(doublings + 1, kMostDoublings), std::memory_order_relaxed);
    toRegain_.store(ticks, std::memory_order_relaxed);
  }
  void gain(int64_t ticks) {
    if (doublings_.load(std::memory_order_relaxed) == 0) return;
    const int64_t toRegain = toRegain_.load(std::memory_order_relaxed) - ticks;
    toRegain_.store(toRegain, std::memory_order_relaxed);
    if (toRegain <= 0) doublings_.store(0, std::memory_order_relaxed);
  }

 private:
  static constexpr int kMostDoublings = 6;
  static constexpr int64_t kMostTicks = int64_t{1} << 40;
  std::atomic<int64_t> pause_{0}, toRegain_{0};
  std::atomic<int> doublings_{0};
};

// A shared call is compared with the time that one thread would have taken: its own parts' on the calling thread, times
// all parts. What it took beyond that is lost, and no further attempt is made until calls have run alone for as long.
// So all calls together take at most twice the time of one thread, but for the last loss. Each further loss doubles the
// pause, up to 64 times, until shared calls have gained what the last one cost.
//
// Waking a helper costs more than a short call is worth, and pays only if further calls find it awake: what was woken
// in vain is lost on an account of its own.
constinit Losses wakes, shares;

void enter(const Shared& shared) {
  if (shared.threads < 2) return;
  const int64_t alone = shared.ownTicks / shared.ownParts * shared.threads;
  const int64_t lost = shared.sameProcessor ? shared.ticks : shared.ticks - alone;
  if (lost > 0) {
    (shared.woke && shared.ownParts == shared.threads ? wakes : shares).lose(lost);
  } else {
    wakes.gain(-lost);
    shares.gain(-lost);
  }
}

}  // namespace

bool ranAlone(AloneFunction alone, const void* call) {
  if (!shares.pauses() && helperIsFree(grantedThreads() - 1, !wakes.pauses())) return false;
  if (shares.pauses() || wakes.pauses()) {
    const auto begin = __rdtsc();
    alone(call);
    const auto took = static_cast<int64_t>(__rdtsc() - begin);
    (shares.pauses() ? shares : wakes).pass(took);
  } else {
    alone(call);
  }
  return true;
}

void onThreads(int most, TeamFunction work, const void* call) {
  if (most < 2) return work(call, 0, 1);
  if (!ranAlone([=] { work(call, 0, 1); }))
    enter(runWithHelpers(most, grantedThreads() - 1, !wakes.pauses(), work, call));
}

bool forEachPart(int len, int threshold, PartFunction part, const void* call) {
  const int granted = len < threshold ? 1 : ownGetNumThreads();
  if (granted < 2 || len < granted) return part(call, 0, len) != 0;

  std::atomic<bool> failed = false;
  onThreads(std::min(granted, kMostThreads), [&](int thread, int team) {
    const int chunk = len / team, begin = thread * chunk;
    const int count = thread == team - 1 ? len - begin : chunk;
    if (part(call, begin, count) != 0) failed.store(true, std::memory_order_relaxed);
  });
  return failed.load(std::memory_order_relaxed);
}

bool mayUseTwoThreads() { return ownGetNumThreads() >= 2; }

int grantedThreads() { return std::max(1, ownGetNumThreads()); }

void onTwoThreads(HalfFunction half, const void* call) {
  onThreads(2, [=](int thread, int team) {
    for (int which = thread; which < 2; which += team) half(call, which);  // a team may have one thread
  });
}

}  // namespace orpsp
