// The rule by which a long call is shared: which parts, by which threads, under which floating-point environment, and
// when no longer.
#include <gtest/gtest.h>
#include <x86intrin.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <mutex>
#include <set>
#include <thread>
#include <utility>
#include <vector>

#include "frame/helpers.h"
#include "frame/parallel.h"
#include "orpcore.h"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

using Parts = std::vector<std::pair<int, int>>;  // begin, count

struct Log {
  std::mutex mutex;
  Parts parts;
  std::set<std::thread::id> threads;
};

struct Split {
  Parts parts;
  bool onCaller;  // and on no other thread
  size_t threads;
  bool failed;
};

void spinFor(Clock::duration time) {
  for (const auto end = Clock::now() + time; Clock::now() < end;) continue;
}

Split split(int len, int threshold, int granted, int failingElement = -1) {
  orpSetNumThreads(granted);
  Log log;
  const bool failed = orpsp::forEachPart(len, threshold, [&log, failingElement](int begin, int count) {
    spinFor(20us);
    const std::lock_guard lock(log.mutex);
    log.parts.emplace_back(begin, count);
    log.threads.insert(std::this_thread::get_id());
    return failingElement >= begin && failingElement < begin + count;
  });
  orpSetNumThreads(1);
  std::sort(log.parts.begin(), log.parts.end());
  const bool onCaller = log.threads == std::set{std::this_thread::get_id()};
  return {log.parts, onCaller, log.threads.size(), failed};
}

// Calls that may be shared are not all: until one was, by so many threads.
Split sharedSplit(int len, int threshold, int granted, size_t threads = 1) {
  Split tried;
  for (const auto end = Clock::now() + 60s; Clock::now() < end;) {
    tried = split(len, threshold, granted);
    if (tried.parts.size() > 1 && tried.threads >= threads) return tried;
    if (tried.parts.size() == 1) {
      EXPECT_EQ((Parts{{0, len}}), tried.parts);
    }
  }
  return tried;
}

TEST(Split, ShortCallsStayOnTheCallingThread) {
  for (const int granted : {1, 2, 8}) {
    const Split whole = split(4095, 4096, granted);
    EXPECT_EQ((Parts{{0, 4095}}), whole.parts) << granted << " granted";
    EXPECT_TRUE(whole.onCaller) << granted << " granted";
  }
}

TEST(Split, OneGrantedThreadIsTheCallers) {
  const Split whole = split(10000, 4096, 1);
  EXPECT_EQ((Parts{{0, 10000}}), whole.parts);
  EXPECT_TRUE(whole.onCaller);
}

TEST(Split, TwoPartsFromTheThresholdOn) {
  for (const int granted : {2, 8}) {  // never more than two
    SCOPED_TRACE(granted);
    EXPECT_EQ((Parts{{0, 2048}, {2048, 2048}}), sharedSplit(4096, 4096, granted).parts);
    EXPECT_EQ((Parts{{0, 2048}, {2048, 2049}}), sharedSplit(4097, 4096, granted).parts)
        << "the last part takes the rest";
    EXPECT_EQ(2u, sharedSplit(4096, 4096, granted, 2).threads);
  }
}

TEST(Split, FewerElementsThanGrantedThreadsStayTogether) {
  EXPECT_EQ((Parts{{0, 3}}), split(3, 1, 8).parts);
  EXPECT_EQ((Parts{{0, 4}, {4, 4}}), sharedSplit(8, 1, 8).parts);
}

TEST(Split, AnyPartMayRaiseTheWarning) {
  for (const int granted : {1, 2}) {
    EXPECT_FALSE(split(5001, 4096, granted).failed);
    for (int i = 0; i < 20; ++i)
      for (const int element : {0, 2499, 2500, 5000})
        EXPECT_TRUE(split(5001, 4096, granted, element).failed) << element;
  }
}

template <class Work>
orpsp::Shared runWithHelpers(int most, const Work& work, bool mayWake = true) {
  const auto part = [](const void* opaque, int thread, int threads) {
    (*static_cast<const Work*>(opaque))(thread, threads);
  };
  return orpsp::runWithHelpers(most, most - 1, mayWake, part, &work);
}

// Every part is done once, whoever does it, also for callers of different teams at the same time.
TEST(Helpers, DoEveryPartOnce) {
  std::vector<std::thread> callers;
  std::atomic<int> faults = 0;
  for (int most = 2; most <= 5; ++most) {
    callers.emplace_back([most, &faults] {
      for (int round = 0; round < 2000; ++round) {
        std::atomic<int> done[5] = {}, sizes = 0;
        const auto work = [&](int thread, int threads) {
          done[thread] += 1;
          sizes |= 1 << threads;
          if (round % 100 == 0) spinFor(100us);
        };
        const orpsp::Shared shared = runWithHelpers(most, work, round % 3 != 0);
        for (int i = 0; i < 5; ++i) faults += done[i] != (i < shared.threads ? 1 : 0);
        faults += sizes != 1 << shared.threads || shared.threads > most || shared.ownParts < 1;
        if (round % 200 == 0) std::this_thread::sleep_for(200us);  // until helpers sleep
      }
    });
  }
  for (std::thread& caller : callers) caller.join();
  EXPECT_EQ(0, faults);
}

// Whether a helper did its part of the work before a time limit.
template <class Work>
bool untilHelped(const Work& work) {
  const auto caller = std::this_thread::get_id();
  std::atomic<bool> helped = false;
  for (const auto end = Clock::now() + 60s; !helped && Clock::now() < end;)
    runWithHelpers(2, [&](int thread, int) {
      const bool isHelper = std::this_thread::get_id() != caller;
      work(isHelper);
      if (thread == 0) spinFor(100us);
      if (isHelper) helped = true;
    });
  return helped;
}

TEST(Helpers, WorkUnderTheCallersFloatingPointEnvironment) {
  const unsigned own = _mm_getcsr();
  const unsigned odd =
      (own & ~_MM_ROUND_MASK & ~_MM_EXCEPT_MASK) | _MM_ROUND_UP | _MM_FLUSH_ZERO_ON | _MM_DENORMALS_ZERO_ON;
  std::atomic<unsigned> seen = 0;
  volatile float zero = 0, one = 1, third = 0;
  _mm_setcsr(odd);
  const bool helped = untilHelped([&](bool isHelper) {
    if (!isHelper) return;
    seen = _mm_getcsr();
    third = one / zero;
  });
  const unsigned after = _mm_getcsr();
  _mm_setcsr(own);
  ASSERT_TRUE(helped);
  EXPECT_EQ(odd, seen);
  EXPECT_EQ(odd | _MM_EXCEPT_DIV_ZERO, after) << "an exception of the helper is the caller's";
  ASSERT_TRUE(untilHelped([&](bool isHelper) {
    if (isHelper) seen = _mm_getcsr();
  }));
  EXPECT_EQ(own & ~_MM_EXCEPT_MASK, seen) << "of the next call, not of the last one";
}

TEST(Helpers, AreDoneWithoutWhereTheyAreBusy) {
  const auto caller = std::this_thread::get_id();
  int threads = 0;
  ASSERT_TRUE(untilHelped([&](bool isHelper) {
    if (!isHelper) return;
    EXPECT_NE(caller, std::this_thread::get_id());
    EXPECT_FALSE(orpsp::helperIsFree(1, true));
    threads = runWithHelpers(2, [](int, int) {}).threads;
  }));
  EXPECT_EQ(1, threads);
}

// A helper that takes a hundred times as long as the calling thread is tried a few times, and again when it is better.
TEST(Helpers, ArePausedWhileTheyCostTime) {
  orpSetNumThreads(2);
  const auto caller = std::this_thread::get_id();
  std::atomic<int> helped = 0;
  const auto call = [&](Clock::duration ofHelper) {
    orpsp::onThreads(2, [&](int, int threads) {
      const bool isHelper = std::this_thread::get_id() != caller;
      helped += isHelper;
      spinFor(isHelper ? ofHelper : threads == 1 ? 200us : 100us);
    });
  };
  for (const auto end = Clock::now() + 60s; helped == 0 && Clock::now() < end;) call(100us);
  helped = 0;
  for (int i = 0; i < 1000; ++i) call(10ms);
  EXPECT_GE(12, helped)
      << "10 ms lost, 10 ms pause, 20, 40, 80, 160 would be 5 of 200 ms; this thread may be interrupted";
  helped = 0;
  for (const auto end = Clock::now() + 60s; helped < 100 && Clock::now() < end;) call(100us);
  EXPECT_LE(100, helped);
  orpSetNumThreads(1);
}

}  // namespace
