// The library as an application loads it: opened and closed many times, also after parallel calls from several threads.
// Neither library is linked to this program.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include "orpcore.h"
#include "orpsp.h"
#include "support/module.h"

namespace orptest {
namespace {

constexpr int kLoads = 50;

TEST(Load, ManyTimesWithACallEachTime) {
  for (int i = 0; i < kLoads; ++i) {
    {
      const Module library(ORPSP_FILE);
      ASSERT_TRUE(library);
      const auto add = ORPTEST_SYMBOL(library, orpsAdd_32f);
      ASSERT_NE(nullptr, add);
      const std::vector<float> one(100, 1.0f), two(100, 2.0f);
      std::vector<float> sum(100);
      EXPECT_EQ(StsOk, add(one.data(), two.data(), sum.data(), 100));
      EXPECT_EQ(std::vector<float>(100, 3.0f), sum);
    }
    EXPECT_FALSE(Module::isLoaded(ORPSP_FILE)) << "still there after " << i + 1 << " unloads";
  }
}

// The width that a build with fewer of them has instead: the next narrower one, else its narrowest.
int builtFor(int bits) {
  for (; bits >= 128; bits /= 2)
    if (ORPSP_WIDTHS & bits) return bits;
  return ORPSP_WIDTHS & 256 ? 256 : 512;
}

TEST(Load, ChoosesVariantAndWidthEachTime) {
  const Module core(ORPCORE_FILE);
  ASSERT_TRUE(core);
  const auto limit = ORPTEST_SYMBOL(core, orpSetCpuFeatures);
  const uint64_t features = ORPTEST_SYMBOL(core, orpGetEnabledCpuFeatures)();
  const auto width = ORPTEST_SYMBOL(core, orpGetVectorBits);
  constexpr uint64_t kSmall = ORP_CPU_SSSE3, kLowPower = kSmall | ORP_CPU_MOVBE, kMiddle = kSmall | ORP_CPU_AVX2;
  const struct {
    uint64_t mask;
    const char* variant;
    int bits;
  } choices[] = {{0, "u8", 128},
                 {kSmall, "u8", 128},
                 {ORP_CPU_MOVBE, "u8", 128},
                 {kLowPower, "n8", 128},
                 {kMiddle, "u8", 256},
                 {kMiddle | ORP_CPU_MOVBE, "n8", 256},
                 {ORP_CPU_AVX2, "u8", 128},
                 {kSmall | ORP_CPU_AVX512, "u8", 128},
                 {kMiddle | ORP_CPU_AVX512, "u8", 512},
                 {kLowPower | ORP_CPU_AVX2 | ORP_CPU_AVX512, "n8", 512}};
  for (const auto& choice : choices) {
    if ((features & choice.mask) != choice.mask) continue;
    SCOPED_TRACE(testing::Message() << "features " << std::hex << choice.mask);
    limit(choice.mask);
    {
      const Module library(ORPSP_FILE);
      ASSERT_TRUE(library);
      EXPECT_STREQ(choice.variant, ORPTEST_SYMBOL(library, orpsGetLibVersion)()->cpuCode);
      EXPECT_EQ(builtFor(choice.bits), width());
    }
    EXPECT_FALSE(Module::isLoaded(ORPSP_FILE));
  }
  limit(~uint64_t{0});
}

#if defined(__linux__)
long threadsOfTheProcess() {
  const std::filesystem::directory_iterator tasks("/proc/self/task");
  return std::distance(begin(tasks), end(tasks));
}
#endif

// Helpers of a shared call wait for the next one in the library's code: it must not go before them.
TEST(Load, SurvivesParallelCallsOfSeveralThreads) {
  const Module core(ORPCORE_FILE);
  ASSERT_TRUE(core);
  ORPTEST_SYMBOL(core, orpSetNumThreads)(2);
#if defined(__linux__)
  const long threads = threadsOfTheProcess();
#endif
  constexpr int kLen = 100'000;
  for (int i = 0; i < kLoads; ++i) {
    const Module library(ORPSP_FILE);
    ASSERT_TRUE(library);
    const auto divide = ORPTEST_SYMBOL(library, orpsDiv_32f);
    ASSERT_NE(nullptr, divide);
    const auto work = [divide](bool& right) {
      const std::vector<float> two(kLen, 2.0f), six(kLen, 6.0f);
      std::vector<float> quotient(kLen);
      right = divide(two.data(), six.data(), quotient.data(), kLen) == StsOk && quotient == std::vector(kLen, 3.0f);
    };
    bool right[3] = {};
    std::thread first(work, std::ref(right[0])), second(work, std::ref(right[1]));
    work(right[2]);
    first.join();
    second.join();
    EXPECT_TRUE(right[0] && right[1] && right[2]) << "load " << i + 1;
    if (i % 2 == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));  // until they sleep
  }
#if defined(__linux__)
  EXPECT_FALSE(Module::isLoaded(ORPSP_FILE));  // on Windows it stays
  EXPECT_EQ(threads, threadsOfTheProcess());
#endif
  ORPTEST_SYMBOL(core, orpSetNumThreads)(1);
}

}  // namespace
}  // namespace orptest
