// One specification, several threads of the application.
#include <gtest/gtest.h>

#include <cstring>
#include <thread>
#include <vector>

#include "orpsp.h"
#include "support/random.h"

namespace {

TEST(FFT, OneSpecificationServesSeveralThreads) {
  orptest::Random random;
  for (const int order : {5, 11, 17}) {
    OrpFftSpec_C_32fc* spec = nullptr;
    int bytes = 0;
    ASSERT_EQ(StsOk, orpsFFTInitAlloc_C_32fc(&spec, order, 1, 0));
    ASSERT_EQ(StsOk, orpsFFTGetBufSize_C_32fc(spec, &bytes));
    const size_t points = size_t{1} << order;
    constexpr int kThreads = 4;
    std::vector<Orp32fc> sources[kThreads], wanted[kThreads];
    for (int i = 0; i < kThreads; ++i) {
      sources[i].resize(points);
      wanted[i].resize(points);
      for (Orp32fc& x : sources[i]) x = random.element<Orp32fc>(orptest::Values::modest);
      ASSERT_EQ(StsOk, orpsFFTFwd_CToC_32fc(sources[i].data(), wanted[i].data(), spec, nullptr));
    }
    int different[kThreads] = {};
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
      threads.emplace_back([&, i] {
        std::vector<Orp32fc> result(points);
        std::vector<Orp8u> buffer(static_cast<size_t>(bytes) + 1);
        for (int repeat = 0; repeat < (order == 17 ? 10 : 300); ++repeat) {
          Orp8u* const memory = repeat % 2 == 0 ? buffer.data() : nullptr;  // in turn: memory of the call itself
          if (orpsFFTFwd_CToC_32fc(sources[i].data(), result.data(), spec, memory) != StsOk) ++different[i];
          if (std::memcmp(result.data(), wanted[i].data(), points * sizeof(Orp32fc)) != 0) ++different[i];
        }
      });
    for (std::thread& thread : threads) thread.join();
    for (int i = 0; i < kThreads; ++i) EXPECT_EQ(0, different[i]) << "order " << order;
    EXPECT_EQ(StsOk, orpsFFTFree_C_32fc(spec));
  }
}

}  // namespace
