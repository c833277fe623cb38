// The divisions that may use two threads: from which length, and with the results and warnings of one thread.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <string_view>
#include <thread>
#include <vector>

#if defined(__linux__)
#include <dlfcn.h>
#include <pthread.h>
#endif

#include "orpcore.h"
#include "support/call.h"
#include "support/export_tables.h"
#include "support/lengths.h"

namespace orptest {
namespace {

// The divisions that use a second thread, and from which length on.
struct Shared {
  Export division;
  int threshold;
};

const std::vector<Shared>& sharedDivisions() {
#define DIVISION(name) describe(#name, &::name)
  static const std::vector<Shared> all = {
      {DIVISION(orpsDiv_16sc_Sfs), 256},   {DIVISION(orpsDiv_Round_8u_Sfs), 512},
      {DIVISION(orpsDiv_8u_Sfs), 1024},    {DIVISION(orpsDiv_16s_Sfs), 1024},
      {DIVISION(orpsDiv_32s_Sfs), 1024},   {DIVISION(orpsDiv_32s16s_Sfs), 1024},
      {DIVISION(orpsDiv_32fc), 1024},      {DIVISION(orpsDiv_64f), 1024},
      {DIVISION(orpsDiv_64fc), 1024},      {DIVISION(orpsDiv_Round_16u_Sfs), 1024},
      {DIVISION(orpsDivC_16sc_Sfs), 1024}, {DIVISION(orpsDivCRev_16u), 2048},
      {DIVISION(orpsDivC_8u_Sfs), 4096},   {DIVISION(orpsDivC_16s_Sfs), 4096},
      {DIVISION(orpsDivCRev_32f), 4096},   {DIVISION(orpsDiv_32f), 4096},
      {DIVISION(orpsDiv_32f_I), 4096},
  };
#undef DIVISION
  return all;
}

bool dividesByVector(std::string_view name) { return !name.starts_with("orpsDivC_"); }

TEST(SharedDivision, WarnsOfAZeroDivisorInAnyPart) {
  for (const auto& [division, threshold] : sharedDivisions()) {
    if (!dividesByVector(division.name)) continue;
    for (const Length& len : lengthsAroundThreshold(threshold)) {
      SCOPED_TRACE(testing::Message() << division.name << ", " << len);
      for (const int threads : {1, 2}) {
        orpSetNumThreads(threads);
        for (const int zeroAt : {-1, 0, len.value / 2, len.value - 1}) {
          Call call(division, len.value);
          call.fillWithOnes();
          if (zeroAt >= 0) call.clearInFirstSource(zeroAt);  // the divisor
          EXPECT_EQ(zeroAt >= 0 ? StsDivByZero : StsOk, call()) << threads << " threads, zero at " << zeroAt;
        }
      }
    }
  }
  orpSetNumThreads(1);
}

TEST(SharedDivision, GivesTheBitsOfOneThread) {
  for (const auto& [division, threshold] : sharedDivisions()) {
    for (const Length& len : lengthsAroundThreshold(threshold)) {
      SCOPED_TRACE(testing::Message() << division.name << ", " << len);
      Call alone(division, len.value), shared(division, len.value);
      alone.fill(4, Values::mixed);
      shared.fill(4, Values::mixed);
      orpSetNumThreads(1);
      const OrpStatus status = alone();
      orpSetNumThreads(2);
      EXPECT_EQ(status, shared());
      EXPECT_EQ(kSame, firstDifference(alone, shared));
    }
  }
  orpSetNumThreads(1);
}

#if defined(__linux__)

std::atomic<int> threadsCreated = 0;

// Threads that `call` starts as the first work of its thread. The thread runtime keeps a team for every thread that has
// opened a parallel region, so a new thread shows whether the call opens one.
int threadsStartedBy(Call& call) {
  int started = 0;
  std::thread([&] {
    const int before = threadsCreated;
    call();
    started = threadsCreated - before;
  }).join();
  return started;
}

TEST(SharedDivision, UsesTheSecondThreadFromItsThresholdOn) {
  orpSetNumThreads(2);
  for (const auto& [division, threshold] : sharedDivisions()) {
    Call below(division, threshold - 1), at(division, threshold);
    below.fillWithOnes();
    at.fillWithOnes();
    EXPECT_EQ(0, threadsStartedBy(below)) << division.name << ", threshold - 1";
    EXPECT_EQ(1, threadsStartedBy(at)) << division.name << ", threshold";
  }
  orpSetNumThreads(1);
}

TEST(SharedDivision, IsTheOnlyUserOfASecondThread) {
  orpSetNumThreads(2);
  for (const Export& each : vectorExports()) {
    const auto& shared = sharedDivisions();
    const auto isThis = [&](const Shared& division) { return division.division.function == each.function; };
    if (std::any_of(shared.begin(), shared.end(), isThis)) continue;
    Call call(each, 20'000);
    call.fillWithOnes();
    EXPECT_EQ(0, threadsStartedBy(call)) << each.name;
  }
  orpSetNumThreads(1);
}

#endif

}  // namespace

#if defined(__linux__)
// Takes the place of the system's function for the whole process, and counts.
extern "C" __attribute__((visibility("default"))) int pthread_create(pthread_t* thread,
                                                                     const pthread_attr_t* attributes,
                                                                     void* (*body)(void*), void* argument) noexcept {
  static const auto create = reinterpret_cast<decltype(&pthread_create)>(dlsym(RTLD_NEXT, "pthread_create"));
  ++threadsCreated;
  return create(thread, attributes, body, argument);
}
#endif

}  // namespace orptest
