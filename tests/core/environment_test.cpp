// What orpcore makes of its environment. It reads it once, so every case loads the library afresh.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <thread>

#include "orpcore.h"
#include "support/module.h"

namespace orptest {
namespace {

class Environment : public testing::Test {
 protected:
  void SetUp() override { clear(); }
  void TearDown() override { clear(); }

  static void set(const char* name, const char* value) {
#if defined(_WIN32)
    _putenv_s(name, value);  // an empty value removes the variable
#else
    setenv(name, value, 1);
#endif
  }
  static uint64_t features() {
    const Module core(ORPCORE_FILE);
    return ORPTEST_SYMBOL(core, orpGetEnabledCpuFeatures)();
  }
  static int threads() {
    const Module core(ORPCORE_FILE);
    return ORPTEST_SYMBOL(core, ownGetNumThreads)();
  }

 private:
  static void clear() {
    ASSERT_FALSE(Module::isLoaded(ORPCORE_FILE));
    for (const char* name : {"ORPCORE_CPU_FEATURES", "ORPCORE_NUM_THREADS"}) {
#if defined(_WIN32)
      set(name, "");
#else
      unsetenv(name);
#endif
    }
  }
};

TEST_F(Environment, WithoutItTheFeaturesAreTheProcessors) {
  const uint64_t mask = features();
  EXPECT_EQ(__builtin_cpu_supports("ssse3") != 0, (mask & ORP_CPU_SSSE3) != 0);
  EXPECT_EQ(__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma"), (mask & ORP_CPU_AVX2) != 0);
  EXPECT_EQ(__builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vl"), (mask & ORP_CPU_AVX512) != 0);
}

TEST_F(Environment, MaskTakesFeaturesAway) {
  const uint64_t all = features();
  for (const char* mask : {"10", "0x10", "0X10"}) {
    set("ORPCORE_CPU_FEATURES", mask);
    EXPECT_EQ(all & 0x10, features()) << mask;
  }
  set("ORPCORE_CPU_FEATURES", "0");
  EXPECT_EQ(0u, features());
  set("ORPCORE_CPU_FEATURES", "ffffffffffffffff");
  EXPECT_EQ(all, features()) << "nothing is added";
}

TEST_F(Environment, MalformedMasksAreIgnored) {
  const uint64_t all = features();
  for (const char* mask : {"", " ", "0x", "-1", "+10", " 10", "10 ", "1g", "0x0x10", "avx2", "10000000000000000"}) {
    set("ORPCORE_CPU_FEATURES", mask);
    EXPECT_EQ(all, features()) << '"' << mask << '"';
  }
}

TEST_F(Environment, WhatItTookAwayDoesNotComeBack) {
  const uint64_t all = features();
  set("ORPCORE_CPU_FEATURES", "110");
  const Module core(ORPCORE_FILE);
  const auto enabled = ORPTEST_SYMBOL(core, orpGetEnabledCpuFeatures);
  const auto limit = ORPTEST_SYMBOL(core, orpSetCpuFeatures);
  limit(~uint64_t{0});
  EXPECT_EQ(all & 0x110, enabled());
  limit(0x30);
  EXPECT_EQ(all & 0x10, enabled());
  limit(0);
  EXPECT_EQ(0u, enabled());
  limit(~uint64_t{0});
  EXPECT_EQ(all & 0x110, enabled()) << "the application's own limit is lifted";
}

TEST_F(Environment, NumberOfThreads) {
  EXPECT_EQ(1, threads()) << "unasked";
  set("ORPCORE_NUM_THREADS", "3");
  EXPECT_EQ(3, threads());
  set("ORPCORE_NUM_THREADS", "0");
  EXPECT_GE(std::max(1, static_cast<int>(std::thread::hardware_concurrency())), threads());
  EXPECT_LE(1, threads());
}

TEST_F(Environment, MalformedNumbersOfThreadsAreIgnored) {
  for (const char* count : {"", " ", "-2", "+2", "two", "1.5", "2 ", " 2", "0x2", "99999999999"}) {
    set("ORPCORE_NUM_THREADS", count);
    EXPECT_EQ(1, threads()) << '"' << count << '"';
  }
}

TEST_F(Environment, IsReadOnce) {
  set("ORPCORE_NUM_THREADS", "3");
  const Module core(ORPCORE_FILE);
  const auto threads = ORPTEST_SYMBOL(core, ownGetNumThreads);
  EXPECT_EQ(3, threads());
  set("ORPCORE_NUM_THREADS", "5");
  EXPECT_EQ(3, threads());
}

}  // namespace
}  // namespace orptest
