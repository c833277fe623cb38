// Sizes, checks, fields and memory of the FFT's specifications.
#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <bit>
#include <cmath>

#include "transform/fft_calls.h"

namespace orptest {
namespace {

constexpr int64_t kOpen = -1;  // no formula is promised

struct Sizes {
  int64_t spec, init, work;
};

Sizes reported(std::string_view name, int order, int hint) {
  for (const SpecType* type : specTypes()) {
    if (name != type->name) continue;
    int spec = 0, init = 0, work = 0;
    EXPECT_EQ(StsOk, type->getSize(order, 1, hint, &spec, &init, &work)) << name << ", order " << order;
    return {spec, init, work};
  }
  ADD_FAILURE() << name;
  return {};
}

int64_t up(int64_t bytes) { return (bytes + 63) / 64 * 64; }
int64_t points(int order) { return int64_t{1} << order; }
int64_t quarter(int64_t n) { return up(4 * (n / 4) + 4); }

Sizes largeSizes(int order) {
  const int inner = order - (order < 20 ? 4 : 8);
  const Sizes below = inner < 18 ? Sizes{up(8 * points(inner) + 8), 0, up(8 * points(inner))} : largeSizes(inner);
  const int64_t n = points(order), spec = below.spec + 4 * n;
  const int64_t work = std::max<int64_t>(below.work, order < 20 ? 8 << 10 : 8 << 14);
  if (order < 19) return {spec + quarter(n), below.init, work};
  return {spec + points(order - 10) + 4160, below.init, std::max<int64_t>(work, 65536)};
}

Sizes complexSizes(int order, bool isDouble) {
  const int64_t n = points(order);
  if (order <= 5) return {200, 0, 0};
  if (isDouble) {
    if (order > 11) return {kOpen, kOpen, kOpen};
    return {up(16 * n + 16) + up(n + 4) + 256, order <= 10 ? 0 : up(2 * n + 8) + 64, up(16 * n) + 64};
  }
  if (order <= 12) return {up(8 * n + 8) + quarter(n) + 256, order <= 10 ? 0 : quarter(n) + 64, up(8 * n) + 64};
  if (order <= 17) return {kOpen, kOpen, kOpen};
  const Sizes large = largeSizes(order);
  return {large.spec + 256, large.init + quarter(n) + 64, large.work + 64};
}

// On top of what is reported for the transform of half length, whose tables need no sines of their own.
Sizes realSizes(int order, bool isDouble) {
  const int64_t n = points(order), table = order <= 18 ? up(8 * (n / 4)) : up(points(order - 9) + 8192);
  if (order <= 4) return {200, 0, 0};
  if (order <= 6) return {isDouble ? kOpen : 2 * table + 256, 0, 0};
  const int half = order - 1;
  const Sizes below = reported(isDouble ? "C_64fc" : "C_32fc", half, 0);
  if (isDouble) return {kOpen, order <= 10 ? 0 : kOpen, below.work};
  const int64_t sines = half <= 10 ? 0 : quarter(points(half)) + 64;
  return {below.spec + 2 * table, order <= 10 ? 0 : below.init - sines + quarter(n) + 64, below.work};
}

// Integers are converted in areas of their own, on top of what is reported for floating point.
Sizes integerSizes(std::string_view name, int order, int hint) {
  const int64_t n = points(order);
  const bool isReal = name[0] == 'R', isShort = name == "R_16s" || name.starts_with("C_16s");
  const bool isDouble = name.find("32s") == 2;
  if (isShort && order == 0) return {136, 0, 0};
  if (isShort && hint < 2 && order <= 3) {
    const int64_t init = up(2 * (n / 4) + 2) + 64;
    if (isReal) return {up(4 * n) + up(4 * (n / 8) + 4) + up(8 * n) + 192, init, 4 * n + 8 + 64};
    return {up(8 * n) + quarter(n) + 192, init, 12 * n + 64};
  }
  const Sizes base = reported(std::string(isReal ? "R_" : "C_") + (isDouble ? "64f" : "32f"), order, hint);
  const int64_t numbers = isReal ? n + 2 : 2 * n;
  return {base.spec + (isShort ? 192 : 128), base.init + (isShort || base.init > 0 ? 64 : 0),
          base.work + (isDouble ? 8 : 4) * numbers + 64};
}

Sizes expectedSizes(const SpecType& type, int order, int hint) {
  const std::string_view name = type.name;
  if (name.find('f') == name.npos) return integerSizes(name, order, hint);
  return name[0] == 'R' ? realSizes(order, type.isDouble) : complexSizes(order, type.isDouble);
}

TEST(FftSpec, SizesFollowTheFormulas) {
  for (const SpecType* type : specTypes()) {
    for (int order = 0; order <= type->highestOrder; ++order) {
      for (const int hint : {0, 1, 2}) {
        const Sizes want = expectedSizes(*type, order, hint), got = reported(type->name, order, hint);
        SCOPED_TRACE(testing::Message() << type->name << ", order " << order << ", hint " << hint);
        // The work sizes of integer types exceed an int at their highest orders: transforms make room themselves then.
        const auto same = [](int64_t a, int64_t b) { return a == kOpen || (a > INT_MAX ? 0 : a) == b; };
        EXPECT_PRED2(same, want.spec, got.spec);
        EXPECT_PRED2(same, want.init, got.init);
        EXPECT_PRED2(same, want.work, got.work);
      }
    }
  }
}

// One Newton step from the processor's estimate: this sequence is part of the contract.
float reciprocalRoot(float x) {
  const float r = _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(x)));
  return (r * -0.5F) * (x * r * r - 3.0F);
}

TEST(FftSpec, FieldsSayWhatWasAskedFor) {
  for (const SpecType* type : specTypes()) {
    for (int order = 0; order <= 17; ++order) {
      for (const int flag : {1, 2, 4, 8}) {
        SCOPED_TRACE(testing::Message() << type->name << ", order " << order << ", flag " << flag);
        const int hint = (order + flag) % 4 - 1;
        const Spec spec(*type, order, flag, hint);
        const Header h = spec.header();
        EXPECT_EQ(type->tag, h.tag);
        EXPECT_EQ(order, h.order);
        EXPECT_EQ(flag == 1 || flag == 4, h.scalesForward);
        EXPECT_EQ(flag == 2 || flag == 4, h.scalesInverse);
        EXPECT_EQ(hint, h.hint);
        EXPECT_EQ(static_cast<size_t>(h.workBytes > 0 ? h.workBytes + 64 : 0), spec.workBytes());
        EXPECT_EQ(0, h.isAllocated);
        const double n = static_cast<double>(points(order));
        if (flag <= 2) {
          EXPECT_EQ(1 / n, h.factor);
        } else if (flag == 4 && type->isDouble) {
          EXPECT_EQ(static_cast<double>(1 / std::sqrt(static_cast<long double>(n))), h.factor);
        } else if (flag == 4) {
          EXPECT_EQ(static_cast<double>(reciprocalRoot(static_cast<float>(n))), h.factor);
        }
      }
    }
  }
}

TEST(FftSpec, SaysIfItWasAllocatedAndIfItFailed) {
  for (const SpecType* type : specTypes()) {
    SCOPED_TRACE(type->name);
    void* spec = nullptr;
    ASSERT_EQ(StsOk, type->initAlloc(&spec, 6, 1, 0));
    EXPECT_EQ(1, headerOf(*type, spec).isAllocated);
    EXPECT_EQ(StsOk, type->free(spec));
    const Sizes sizes = reported(type->name, 11, 0);
    Guarded<Orp8u> memory(static_cast<size_t>(sizes.spec), 17), buffer(static_cast<size_t>(sizes.init), 17);
    for (const int flag : {1, 3, 2}) {
      const OrpStatus want = flag == 3 ? StsFftFlag : flag == 2 ? StsNullPtr : StsOk;
      EXPECT_EQ(want, type->init(&spec, 11, flag, 0, memory.data(), flag == 2 ? nullptr : buffer.data()));
      EXPECT_EQ(want == StsOk ? type->tag : 0, headerOf(*type, orpAlignPtr(memory.data(), 64)).tag);
    }
  }
}

}  // namespace
}  // namespace orptest
