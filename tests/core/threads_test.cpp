// The thread count that an application sets.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <thread>

#include "orpcore.h"

namespace {

TEST(Threads, CountIsWhatTheApplicationAsksFor) {
  EXPECT_EQ(1, ownGetNumThreads()) << "a library starts no threads unasked";
  orpSetNumThreads(5);
  EXPECT_EQ(5, ownGetNumThreads());
  for (const int count : {1, -1, INT_MIN}) {
    orpSetNumThreads(count);
    EXPECT_EQ(1, ownGetNumThreads()) << count;
  }
  orpSetNumThreads(0);
  EXPECT_EQ(std::max(1, static_cast<int>(std::thread::hardware_concurrency())), ownGetNumThreads());
  orpSetNumThreads(1);
}

// The count belongs to the process, not to the thread that set it.
TEST(Threads, CountIsSharedByAllThreads) {
  std::thread([] { orpSetNumThreads(4); }).join();
  EXPECT_EQ(4, ownGetNumThreads());
  orpSetNumThreads(1);
}

}  // namespace
