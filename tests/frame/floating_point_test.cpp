// What a call's results may not depend on, nor change: the caller's rounding mode, an element's neighbours, the upper
// halves of registers.
#include <gtest/gtest.h>
#include <immintrin.h>

#include <algorithm>
#include <cstring>
#include <string_view>
#include <type_traits>
#include <vector>

#include "support/call.h"
#include "support/export_tables.h"

namespace orptest {
namespace {

bool startsWithOneOf(std::string_view name, std::initializer_list<std::string_view> families) {
  return std::any_of(families.begin(), families.end(), [=](auto family) { return name.starts_with(family); });
}

// ---- The caller's modes

struct Mode {
  const char* name;
  unsigned bits;  // of the control register
};
constexpr Mode kRoundings[] = {{"down", 0x2000}, {"up", 0x4000}, {"toward zero", 0x6000}};
constexpr Mode kFlushes[] = {{"flush to zero", 0x8000}, {"subnormals are zero", 0x0040}};

// Calls `work` under the mode; the optimiser moves nothing that work does out of it.
template <class Work>
__attribute__((noinline)) auto under(Mode mode, Work work) {
  const unsigned before = _mm_getcsr();
  _mm_setcsr(before | mode.bits);
  Work* opaque = &work;
  __asm__ volatile("" : "+r"(opaque) : : "memory");
  const auto result = (*opaque)();
  __asm__ volatile("" : : : "memory");
  EXPECT_EQ(mode.bits, _mm_getcsr() & 0xE040) << "after the call";
  _mm_setcsr(before);
  return result;
}

bool roundsToNearest(const Export& each) {
  return each.hasIntegerResult() ||
         startsWithOneOf(each.name,
                         {"orpsConvert_32s", "orpsConvert_16s32f", "orpsConvert_64s", "orpsConvert_64f32f", "orpsExp_",
                          "orpsLn_", "orpsCubrt_", "orpsArctan_", "orpsSqrt_", "orpsMagnitude_", "orpsPhase_",
                          "orpsCartToPolar_", "orpsPolarToCart_", "orpsCauchy", "orpsSumLn_", "orpsWin", "orpsVector"});
}

// The other calls follow the modes: they only must return, and leave the modes as they are.
TEST(Modes, OfTheCallerDoNotChangeIntegersConversionsAndElementaryFunctions) {
  for (const Export& each : sweptExports()) {
    for (const int extra : {1, 0, 2, 7, -3, -130, 140}) {
      for (const int len : {7, extra == kExtras[0] ? 1031 : 67}) {
        Call usual(each, len, extra);
        usual.fill(3, Values::mixed);
        const OrpStatus status = usual();
        const auto check = [&](const Mode& mode, bool isSame) {
          Call call(each, len, extra);
          call.fill(3, Values::mixed);
          const OrpStatus statusThere = under(mode, [&call] { return call(); });
          if (!isSame) return;
          EXPECT_EQ(status, statusThere) << each.name << ", " << len << ", " << extra << ", " << mode.name;
          EXPECT_EQ(kSame, firstDifference(usual, call))
              << each.name << ", " << len << ", " << extra << ", " << mode.name;
        };
        for (const Mode& mode : kRoundings) check(mode, roundsToNearest(each));
        check(kFlushes[0], each.hasIntegerResult());
        check(kFlushes[1], each.hasIntegerResult() && !each.hasFloats());
      }
      if (!each.hasExtras()) break;
    }
  }
}

template <class T, class Work>
void expectSameUnderRoundings(const char* name, Work work) {
  const auto run = [&work] {
    std::vector<T> results(533);
    EXPECT_EQ(StsOk, work(results.data(), static_cast<int>(results.size())));
    return results;
  };
  const auto usual = run();
  for (const Mode& mode : kRoundings) {
    const auto results = under(mode, run);
    EXPECT_EQ(0, std::memcmp(usual.data(), results.data(), usual.size() * sizeof(T))) << name << ", " << mode.name;
  }
}

template <class State, class Make, class Use, class Free>
OrpStatus withState(Make make, Use use, Free free) {
  State* state = nullptr;
  const OrpStatus made = make(&state);
  if (made != StsOk) return made;
  const OrpStatus status = use(state);
  return free(state) == StsOk ? status : StsBadArg;
}

TEST(Modes, OfTheCallerDoNotChangeSignalsAndTransforms) {
  const auto samples = Random(4).vector<Orp16s>(2 * 533);
  const auto floats = Random(5).vector<Orp32f>(2 * 533, Values::modest);
  expectSameUnderRoundings<Orp16s>("tone", [](Orp16s* to, int len) {
    Orp32f phase = 1;
    return orpsTone_Direct_16s(to, len, 30000, 0.123F, &phase, 0);
  });
  expectSameUnderRoundings<Orp64f>("tone of doubles", [](Orp64f* to, int len) {
    Orp64f phase = 1;
    return orpsTone_Direct_64f(to, len, 1, 0.123, &phase, 0);
  });
  expectSameUnderRoundings<Orp16s>("triangle", [](Orp16s* to, int len) {
    Orp32f phase = 1;
    return orpsTriangle_Direct_16s(to, len, 30000, 0.0123F, 0.5F, &phase);
  });
  expectSameUnderRoundings<Orp16s>("tone by a state", [](Orp16s* to, int len) {
    return withState<OrpToneStateQ15_16s>([](auto** s) { return orpsToneInitAllocQ15_16s(s, 30000, 1234, 56); },
                                          [=](auto* s) { return orpsToneQ15_16s(to, len, s); }, orpsToneFree);
  });
  expectSameUnderRoundings<Orp32f>("Gaussian numbers", [](Orp32f* to, int len) {
    Orp32u seed = 7;
    return orpsRandGauss_Direct_32f(to, len, 1, 2, &seed);
  });
  expectSameUnderRoundings<Orp16s>("uniform numbers", [](Orp16s* to, int len) {
    return withState<OrpRandUniformState_16s>([](auto** s) { return orpsRandUniformInitAlloc_16s(s, -999, 777, 5); },
                                              [=](auto* s) { return orpsRandUniform_16s(to, len, s); },
                                              orpsRandUniformFree_16s);
  });
  expectSameUnderRoundings<Orp16s>("two channels", [&](Orp16s* to, int len) {
    const Orp32f* const channels[] = {floats.data(), floats.data() + len / 2};
    return orpsJoinScaled_32f16s_D2L(channels, to, len / 2);
  });
  expectSameUnderRoundings<Orp16s>("demodulation", [&](Orp16s* to, int len) {
    Orp16sc previous = {1, 1};
    return orpsDemodulateFM_CToR_16s(reinterpret_cast<const Orp16sc*>(samples.data()), to, len, &previous);
  });
  expectSameUnderRoundings<Orp16s>(
      "pre-emphasis", [&](Orp16s* to, int len) { return orpsPreemphasize_16s(samples.data(), to, len, 0.9701F); });
  expectSameUnderRoundings<Orp16s>("FFT", [&](Orp16s* to, int) {
    return withState<OrpFftSpec_R_16s>(
        [](auto** s) { return orpsFFTInitAlloc_R_16s(s, 9, 8, 0); },
        [&](auto* s) { return orpsFFTFwd_RToPerm_16s_Sfs(samples.data(), to, s, 4, nullptr); }, orpsFFTFree_R_16s);
  });
}

// ---- Neighbours

bool isElementWise(const Export& each) {
  return !each.is(kReduces) && !each.is(kSorts) &&
         !startsWithOneOf(each.name, {"orpsWin", "orpsVector", "orpsFlip", "orpsMulPack", "orpsMulPerm", "orpsConjPack",
                                      "orpsConjPerm", "orpsConjCcs", "orpsConjFlip"});
}

// Alone, among others of every kind, and in vectors of its like, which may take a path for usual elements.
TEST(Neighbours, DoNotChangeAnElement) {
  constexpr int kElements = 3001;
  for (const Export& each : sweptExports()) {
    if (!isElementWise(each) || !each.hasFloats() || std::string_view(each.name).ends_with("_I")) continue;
    Call sources(each, kElements), mixed(each, kElements), alone(each, 1), like(each, 64);
    sources.fill(6, Values::bits);
    mixed.fill(6, Values::bits);
    mixed();
    for (size_t i = 0; i < kElements; ++i) {
      alone.takeElement(sources, i);
      like.takeElement(sources, i);
      alone();
      like();
      const bool isSame = alone.resultIsElement(mixed, i) && like.resultIsElement(mixed, i);
      EXPECT_TRUE(isSame) << each.name << ", element " << i;
      if (!isSame) break;
    }
  }
}

// ---- Registers

// Whether the upper halves of vector registers hold something: then SSE instructions would be slow, having to keep it.
bool upperHalvesAreUsed() {
  unsigned low, high;
  __asm__ volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(1));
  return (low & 4) != 0;
}

void clearUpperHalves() { __asm__ volatile("vzeroupper" : : : "memory"); }

bool processorTells() {
  if (!__builtin_cpu_supports("avx2")) return false;
  unsigned features, unused;
  __asm__("cpuid" : "=a"(features), "=b"(unused), "=c"(unused), "=d"(unused) : "a"(13), "c"(1));
  if ((features & 4) == 0) return false;  // no xgetbv of what is in use
  clearUpperHalves();
  const bool afterClearing = upperHalvesAreUsed();
  __asm__ volatile("vpcmpeqd %%ymm0, %%ymm0, %%ymm0" : : : "xmm0");
  const bool afterUsing = upperHalvesAreUsed();
  clearUpperHalves();
  return !afterClearing && afterUsing;
}

TEST(Registers, UpperHalvesAreUnusedAfterACall) {
#if defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "the sanitizer's functions, which the library calls, leave them in use";
#endif
  if (!processorTells()) GTEST_SKIP() << "the processor does not tell";
  for (const Export& each : sweptExports()) {
    for (const int extra : kExtras) {
      constexpr int kMost = 70;
      Call call(each, kMost, extra);
      call.fill(7, Values::mixed);
      for (int len = 1; len <= kMost; ++len) {
        call.setLength(len);
        clearUpperHalves();
        call();
        const bool areUsed = upperHalvesAreUsed();
        clearUpperHalves();
        EXPECT_FALSE(areUsed) << each.name << ", " << len << " elements, further arguments " << extra;
      }
      if (!each.hasExtras()) break;
    }
  }
}

}  // namespace
}  // namespace orptest
