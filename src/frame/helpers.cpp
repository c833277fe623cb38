#include "frame/helpers.h"

#include <x86intrin.h>

#include <algorithm>

#include "frame/thread.h"

namespace orpsp {
namespace {

constexpr int kMostHelpers = 255;
constexpr int64_t kSpinTicks = 1 << 17;  // 30 to 130 microseconds: how long a helper without work keeps its processor
constexpr int64_t kPatience = 1 << 14;   // ticks for which a call outwaits its helper before it leaves the processor

int64_t ticks() { return static_cast<int64_t>(__rdtsc()); }

constexpr unsigned kRaised = _MM_EXCEPT_MASK;  // bits of MXCSR that say what happened; the others say what to do

enum State : uint32_t {
  kAbsent,      // no thread
  kAsleep,      // until it is woken
  kWaking,      // not up yet, and its part was taken back
  kReady,       // looks for an offer
  kClaimed,     // a call is about to make an offer
  kOffered,     // a part, which the helper or the call itself may begin, whichever comes first
  kRunning,     // begun by the helper
  kAwaited,     // and the call sleeps until it is done
  kDone,        // and the call has not seen it
  kDoneAsleep,  // nor did it while the helper was waiting
  kLeaving,     // the library is being unloaded
};

struct alignas(128) Helper {
  Word state{kAbsent};
  std::atomic<int> callersProcessor{0};
  TeamFunction work = nullptr;
  const void* call = nullptr;
  int thread = 0, threads = 0;
  unsigned environment = 0;  // MXCSR
  bool sameProcessor = false;
  Bed bed;
  Thread system;

  bool turn(uint32_t from, State to) { return state.compare_exchange_strong(from, to, std::memory_order_acq_rel); }
  bool isOnCallersProcessor() const { return callersProcessor.load(std::memory_order_relaxed) == currentProcessor(); }

  void run() {
    const unsigned own = _mm_getcsr();
    _mm_setcsr(environment & ~kRaised);
    work(call, thread, threads);
    environment = _mm_getcsr();
    _mm_setcsr(own);
    sameProcessor = isOnCallersProcessor();
    if (state.exchange(kDone, std::memory_order_acq_rel) == kAwaited) bed.wake(state);
  }

  // On the calling thread's processor it would only be in the way.
  void live() {
    for (int64_t since = ticks();;) {
      const uint32_t now = state.load(std::memory_order_acquire);
      if (now == kOffered) {
        if (!turn(kOffered, kRunning)) continue;
        run();
        since = ticks();
      } else if (now == kWaking) {
        turn(kWaking, kReady);
      } else if (now == kReady || now == kDone) {
        _mm_pause();
        if (ticks() - since > kSpinTicks || isOnCallersProcessor()) turn(now, now == kReady ? kAsleep : kDoneAsleep);
      } else if (now == kAsleep || now == kDoneAsleep) {
        bed.sleep(state, now);
        since = ticks();
      } else if (now == kLeaving) {
        return;
      } else {
        _mm_pause();
      }
    }
  }
};

constinit Helper helpers[kMostHelpers];

#if defined(_WIN32)

// A thread cannot be waited for while a library is being unloaded, so this one stays.
bool prepareForThreads() {
  HMODULE module;
  return GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                            reinterpret_cast<LPCWSTR>(&prepareForThreads), &module);
}

#else

constinit std::atomic<bool> watchesForks{false};
constinit std::atomic<pid_t> home{0};  // the process that the helpers belong to

void forgetHelpers() {
  for (Helper& helper : helpers) helper.state.store(kAbsent, std::memory_order_relaxed);
}

// A forked process has no helpers, whatever they were doing when it began.
bool prepareForThreads() {
  home.store(getpid(), std::memory_order_relaxed);
  return watchesForks.exchange(true) || pthread_atfork(nullptr, nullptr, forgetHelpers) == 0;
}

// At exit other threads may still be within calls: their helpers are left alone.
__attribute__((destructor)) void dismissHelpers() {
  if (home.load(std::memory_order_relaxed) != getpid()) return;
  for (Helper& helper : helpers) {
    for (uint32_t now = helper.state.load(); now == kAsleep || now == kReady || now == kWaking;
         now = helper.state.load()) {
      if (!helper.turn(now, kLeaving)) continue;
      helper.bed.wake(helper.state);
      helper.system.join();
    }
  }
}

#endif

bool isIdle(uint32_t state) { return state == kAsleep || state == kAbsent; }

// The helpers that one call has, the i-th for part i + 1.
class Crew {
 public:
  Crew(int most, int number, bool mayWake) {
    claim(most, number, [](uint32_t state) { return state == kReady; });
    if (mayWake) claim(most, number, isIdle);
  }

  [[nodiscard]] int count() const { return count_; }

  // Whether a helper had to be woken or started.
  bool offer(TeamFunction work, const void* call) {
    bool woke = false;
    const unsigned environment = _mm_getcsr();
    const int processor = currentProcessor();
    for (int i = 0; i < count_; ++i) {
      auto& [helper, before] = members_[i];
      helper->work = work;
      helper->call = call;
      helper->thread = i + 1;
      helper->threads = count_ + 1;
      helper->environment = environment;
      helper->callersProcessor.store(processor, std::memory_order_relaxed);
      helper->state.store(kOffered, std::memory_order_release);
      if (before == kAsleep) helper->bed.wake(helper->state);
      if (before == kAbsent && !start(*helper)) helper = nullptr;
      woke |= before != kReady;
    }
    return woke;
  }

  // Whether part i + 1 was not begun and is the calling thread's now.
  bool takeBack(int i) {
    auto& [helper, before] = members_[i];
    if (helper && !helper->turn(kOffered, before == kReady ? kReady : kWaking)) return false;
    helper = nullptr;
    return true;
  }

  // Until part i + 1 is done. Whether it was done on the calling thread's processor.
  bool await(int i, int64_t patience) {
    Helper* const helper = members_[i].helper;
    if (!helper) return false;
    Word& state = helper->state;
    for (const int64_t begin = ticks(); state.load(std::memory_order_acquire) == kRunning;) {
      _mm_pause();
      if (ticks() - begin < patience || !helper->turn(kRunning, kAwaited)) continue;
      while (state.load(std::memory_order_acquire) == kAwaited) helper->bed.sleep(state, kAwaited);
    }
    if (const unsigned mine = _mm_getcsr(), raised = helper->environment & kRaised; (mine | raised) != mine)
      _mm_setcsr(mine | raised);
    const bool sameProcessor = helper->sameProcessor;
    if (!helper->turn(kDone, kReady)) state.store(kAsleep, std::memory_order_release);
    return sameProcessor;
  }

 private:
  struct Member {
    Helper* helper;  // null: has no part
    State before;
  };

  template <class Condition>
  void claim(int most, int number, const Condition& isFree) {
    for (int i = 0; i < number && count_ < most; ++i) {
      const uint32_t now = helpers[i].state.load(std::memory_order_relaxed);
      if (isFree(now) && helpers[i].turn(now, kClaimed)) members_[count_++] = {&helpers[i], static_cast<State>(now)};
    }
  }

  static void live(void* helper) { static_cast<Helper*>(helper)->live(); }

  // The thread finds its first offer waiting.
  static bool start(Helper& helper) {
    if (prepareForThreads() && helper.bed.prepare() && helper.system.start<&live>(&helper)) return true;
    helper.state.store(kAbsent, std::memory_order_release);
    return false;
  }

  int count_ = 0;
  Member members_[kMostHelpers];
};

}  // namespace

bool helperIsFree(int number, bool mayWake) {
  return std::any_of(helpers, helpers + std::min(number, kMostHelpers), [=](const Helper& helper) {
    const uint32_t now = helper.state.load(std::memory_order_relaxed);
    return now == kReady || (mayWake && isIdle(now));
  });
}

Shared runWithHelpers(int most, int number, bool mayWake, TeamFunction work, const void* call) {
  Shared shared{};
  const int64_t begin = ticks();
  Crew crew(most - 1, std::min(number, kMostHelpers), mayWake);
  shared.threads = crew.count() + 1;
  shared.woke = crew.offer(work, call);
  const auto doPart = [&](int thread) {
    const int64_t partBegin = ticks();
    work(call, thread, shared.threads);
    shared.ownTicks += ticks() - partBegin;
    ++shared.ownParts;
  };
  doPart(0);
  for (int i = 0; i < crew.count(); ++i)
    if (crew.takeBack(i)) doPart(i + 1);
  for (int i = 0; i < crew.count(); ++i)
    shared.sameProcessor |= crew.await(i, shared.ownTicks / shared.ownParts + kPatience);
  shared.ticks = ticks() - begin;
  return shared;
}

}  // namespace orpsp
