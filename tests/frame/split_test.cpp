// The rule by which a long call is shared: which parts, on how many threads, and what their answers make together.
#include <gtest/gtest.h>

#include <algorithm>
#include <mutex>
#include <set>
#include <thread>
#include <utility>
#include <vector>

#include "frame/parallel.h"
#include "orpcore.h"

namespace {

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

Split split(int len, int threshold, int granted, int failingElement = -1) {
  orpSetNumThreads(granted);
  Log log;
  const bool failed = orpsp::forEachPart(len, threshold, [&log, failingElement](int begin, int count) {
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
    EXPECT_EQ((Parts{{0, 2048}, {2048, 2048}}), split(4096, 4096, granted).parts);
    EXPECT_EQ((Parts{{0, 2048}, {2048, 2049}}), split(4097, 4096, granted).parts) << "the last part takes the rest";
    EXPECT_EQ(2u, split(4096, 4096, granted).threads);
  }
}

TEST(Split, FewerElementsThanGrantedThreadsStayTogether) {
  EXPECT_EQ((Parts{{0, 3}}), split(3, 1, 8).parts);
  EXPECT_EQ((Parts{{0, 4}, {4, 4}}), split(8, 1, 8).parts);
}

TEST(Split, AnyPartMayRaiseTheWarning) {
  for (const int granted : {1, 2}) {
    EXPECT_FALSE(split(5001, 4096, granted).failed);
    for (const int element : {0, 2499, 2500, 5000}) EXPECT_TRUE(split(5001, 4096, granted, element).failed) << element;
  }
}

// Calls from several application threads at once are independent of each other.
TEST(Split, ServesSeveralCallersAtOnce) {
  orpSetNumThreads(2);
  std::vector<std::thread> callers;
  std::vector<int> wrong(4, 0);
  for (int& faults : wrong) {
    callers.emplace_back([&faults] {
      for (int round = 0; round < 200; ++round) {
        std::vector<int> seen(1001, 0);  // parts are disjoint: no lock needed
        orpsp::forEachPart(1001, 1000, [data = seen.data()](int begin, int count) {
          for (int i = begin; i < begin + count; ++i) ++data[i];
          return false;
        });
        faults += seen != std::vector<int>(1001, 1);
      }
    });
  }
  for (std::thread& caller : callers) caller.join();
  orpSetNumThreads(1);
  EXPECT_EQ(std::vector<int>(4, 0), wrong);
}

}  // namespace
