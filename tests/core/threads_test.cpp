// The thread count that an application sets.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <thread>

#if defined(__linux__)
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

#include "orpcore.h"

namespace {

TEST(Threads, CountIsWhatTheApplicationAsksFor) {
  EXPECT_EQ(1, ownGetNumThreads()) << "a library starts no threads unasked";
  orpSetNumThreads(5);
  EXPECT_EQ(5, ownGetNumThreads());
  EXPECT_EQ(5, orpGetNumThreads());
  for (const int count : {1, -1, INT_MIN}) {
    orpSetNumThreads(count);
    EXPECT_EQ(1, ownGetNumThreads()) << count;
  }
  orpSetNumThreads(0);
  EXPECT_GE(std::max(1, static_cast<int>(std::thread::hardware_concurrency())), ownGetNumThreads());
  EXPECT_LE(1, ownGetNumThreads());
  orpSetNumThreads(1);
}

// The count belongs to the process, not to the thread that set it.
TEST(Threads, CountIsSharedByAllThreads) {
  std::thread([] { orpSetNumThreads(4); }).join();
  EXPECT_EQ(4, ownGetNumThreads());
  orpSetNumThreads(1);
}

#if defined(__linux__)

TEST(Threads, ZeroMeansTheProcessorsThatTheProcessMayUse) {
  cpu_set_t before, one;
  ASSERT_EQ(0, sched_getaffinity(0, sizeof(before), &before));
  CPU_ZERO(&one);
  CPU_SET(sched_getcpu(), &one);
  ASSERT_EQ(0, sched_setaffinity(0, sizeof(one), &one));
  orpSetNumThreads(0);
  EXPECT_EQ(1, orpGetNumThreads());
  ASSERT_EQ(0, sched_setaffinity(0, sizeof(before), &before));
  orpSetNumThreads(0);
  EXPECT_EQ(CPU_COUNT(&before), orpGetNumThreads());
  orpSetNumThreads(1);
}

TEST(Threads, AForkedProcessAsksAgain) {
  orpSetNumThreads(3);
  const pid_t child = fork();
  if (child == 0) {
    const bool isOne = orpGetNumThreads() == 1;
    orpSetNumThreads(2);
    _exit(isOne && orpGetNumThreads() == 2 ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(child, waitpid(child, &status, 0));
  EXPECT_EQ(0, status);
  EXPECT_EQ(3, orpGetNumThreads());
  orpSetNumThreads(1);
}

#endif

}  // namespace
