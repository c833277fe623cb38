// Tones and triangles against their formulas.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "orpsp.h"
#include "support/digest.h"
#include "support/elements.h"
#include "support/guarded.h"

namespace orptest {
namespace {

constexpr long double kPi = 3.14159265358979323846264338327950288L;
const std::vector<int> kLengths = {1, 2, 3, 7, 8, 9, 15, 16, 17, 31, 33, 63, 64, 65, 128, 1000, 10003};

// The fraction of n times a frequency of at least 2^-60, exactly.
long double turnsOf(double frequency, uint64_t n) {
  if (frequency == 0) return 0;
  int exponent = 0;
  const auto mantissa = static_cast<unsigned __int128>(std::ldexp(std::frexp(frequency, &exponent), 53));
  const int fractionBits = 53 - exponent;
  const auto mask = (static_cast<unsigned __int128>(1) << fractionBits) - 1;
  return std::ldexp(static_cast<long double>((mantissa * n) & mask), -fractionBits);
}

long double triangle(long double turns, double asymmetry) {
  const long double turn =
      asymmetry == -3.141592653589793 ? 0 : (kPi + static_cast<long double>(asymmetry)) / (2 * kPi);
  turns -= std::floor(turns);
  return turns < turn ? 1 - 2 * turns / turn : 2 * (turns - turn) / (1 - turn) - 1;
}

// `error` is what the sample may be off before it is rounded.
template <class P>
void expectSample(long double exact, long double error, P sample) {
  const long double rounding =
      std::is_floating_point_v<P> ? 0.5001L * std::numeric_limits<P>::epsilon() * std::fabs(exact) : 0.5L;
  EXPECT_LE(std::fabs(static_cast<long double>(sample) - exact), error + rounding) << +sample << ", not " << exact;
}

template <class Real>
void expectPhase(long double exact, Real phase) {
  EXPECT_GE(phase, 0);
  EXPECT_LT(static_cast<double>(phase), 6.283185307179586);
  const long double off = std::fabs(static_cast<long double>(phase) - exact);
  EXPECT_LE(std::fmin(off, std::fabs(2 * kPi - off)), 8 * std::numeric_limits<Real>::epsilon()) << exact;
}

template <class E>
Part<E> partOf(E element, size_t i) {
  Part<E> parts[kParts<E>];
  std::memcpy(parts, &element, sizeof(E));
  return parts[i];
}

template <class E, class M, class R>
using ToneCall = OrpStatus (*)(E*, int, M, R, R*, int);
template <class E, class M, class R>
using TriangleCall = OrpStatus (*)(E*, int, M, R, R, R*);

// Calls `with(frequency, phase, magnitude)` for several of each.
template <class M, class R, class With>
void forParameters(const With& with) {
  for (const double frequency : {0.0, 0.25, 1e-4, 0.1234567, 0.4999999})
    for (const double phase : {0.0, 1.0, 6.2831850})
      for (const double magnitude : {1.0, 32767.0}) {
        SCOPED_TRACE(testing::Message() << "frequency " << frequency << " phase " << phase << " times " << magnitude);
        with(static_cast<R>(frequency), static_cast<R>(phase), static_cast<M>(magnitude));
        if (testing::Test::HasFailure()) return;
      }
}

template <class E, class M, class R>
void check(ToneCall<E, M, R> tone) {
  forParameters<M, R>([&](R frequency, R phase, M magnitude) {
    for (const int len : kLengths)
      for (const int hint : {0, 1}) {
        SCOPED_TRACE(testing::Message() << len << " samples, hint " << hint);
        Guarded<E> dst(static_cast<size_t>(len), static_cast<size_t>(len % 5));
        R after = phase;
        ASSERT_EQ(StsOk, tone(dst.data(), len, magnitude, frequency, &after, hint));
        const long double error = (sizeof(R) == 8 ? 5e-15L : hint == 1 ? 3e-7L : 1e-14L) * magnitude;
        for (int n = 0; n < len && !testing::Test::HasFailure(); ++n) {
          const long double angle = 2 * kPi * turnsOf(frequency, static_cast<uint64_t>(n)) + phase;
          const E sample = dst[static_cast<size_t>(n)];
          expectSample(magnitude * std::cos(angle), error, partOf(sample, 0));
          if (kParts<E> == 2) expectSample(magnitude * std::sin(angle), error, partOf(sample, 1));
        }
        const long double turns = turnsOf(frequency, static_cast<uint64_t>(len)) + phase / (2 * kPi);
        expectPhase(2 * kPi * (turns - std::floor(turns)), after);
      }
  });

  E untouched[2] = {};
  R phase = 0.5;
  const auto bad = [&](OrpStatus expected, double m, double f, double p, E* dst, int len) {
    R given = static_cast<R>(p);
    EXPECT_EQ(expected, tone(dst, len, static_cast<M>(m), static_cast<R>(f), &given, 0));
    EXPECT_TRUE(given == static_cast<R>(p) || std::isnan(p));
    EXPECT_EQ(0, partOf(untouched[0], 0));
  };
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(StsNullPtr, tone(nullptr, 0, 0, 1, nullptr, 0));
  bad(StsToneMagnitude, 0, 0.5, 7, nullptr, 0);
  bad(StsToneFrequency, 1, 0.5, 7, nullptr, 0);
  bad(StsToneFrequency, 1, -1e-9, 7, nullptr, 0);
  bad(StsToneFrequency, 1, nan, 7, nullptr, 0);
  bad(StsTonePhase, 1, 0, 6.283185307179586, nullptr, 0);
  bad(StsTonePhase, 1, 0, -1e-9, nullptr, 0);
  bad(StsTonePhase, 1, 0, nan, nullptr, 0);
  bad(StsNullPtr, 1, 0, 0, nullptr, 0);
  bad(StsBadSize, 1, 0, 0, untouched, 0);
  // Without frequency and phase every sample is the magnitude.
  phase = 0;
  EXPECT_EQ(StsOk, tone(untouched, 2, 3, 0, &phase, 1));
  EXPECT_TRUE(phase == 0 && partOf(untouched[1], 0) == 3);
}

template <class E, class M, class R>
void check(TriangleCall<E, M, R> wave) {
  constexpr long double kPhaseError = 1e-14L;
  const R pi = static_cast<R>(3.141592653589793), almostPi = std::nextafter(pi, R{0});
  for (const R asymmetry : {R{0}, R(1.5), R(-2), -pi, almostPi, R(-almostPi)})
    forParameters<M, R>([&](R frequency, R phase, M magnitude) {
      for (const int len : {1, 9, 64, 131, 5001}) {
        SCOPED_TRACE(testing::Message() << len << " samples, asymmetry " << asymmetry);
        Guarded<E> dst(static_cast<size_t>(len), static_cast<size_t>(len % 5));
        R after = phase;
        ASSERT_EQ(StsOk, wave(dst.data(), len, magnitude, frequency, asymmetry, &after));
        const double exactAsymmetry = asymmetry == -pi ? -3.141592653589793 : static_cast<double>(asymmetry);
        for (int n = 0; n < len && !testing::Test::HasFailure(); ++n) {
          const E sample = dst[static_cast<size_t>(n)];
          for (size_t part = 0; part < kParts<E>; ++part) {
            const long double turns = turnsOf(frequency, static_cast<uint64_t>(n)) +
                                      static_cast<long double>(phase) / (2 * kPi) - 0.25L * static_cast<int>(part);
            // The wave is monotonic but for its two turns, which an inexact phase may just miss.
            const long double by = kPhaseError / (2 * kPi);
            const long double before = triangle(turns - by, exactAsymmetry), at = triangle(turns, exactAsymmetry),
                              behind = triangle(turns + by, exactAsymmetry);
            const long double middle = (std::max({before, at, behind}) + std::min({before, at, behind})) / 2;
            const long double spread = (std::max({before, at, behind}) - std::min({before, at, behind})) / 2;
            expectSample(magnitude * middle, magnitude * (spread + 1e-14L), partOf(sample, part));
          }
        }
        const long double turns = turnsOf(frequency, static_cast<uint64_t>(len)) + phase / (2 * kPi);
        expectPhase(2 * kPi * (turns - std::floor(turns)), after);
      }
    });

  E untouched = {};
  const auto bad = [&](OrpStatus expected, double m, double f, R a, double p, E* dst, int len) {
    R given = static_cast<R>(p);
    EXPECT_EQ(expected, wave(dst, len, static_cast<M>(m), static_cast<R>(f), a, &given));
    EXPECT_EQ(static_cast<R>(p), given);
    EXPECT_EQ(0, partOf(untouched, 0));
  };
  EXPECT_EQ(StsNullPtr, wave(nullptr, 0, 0, 1, 4, nullptr));
  bad(StsTriangleMagnitude, 0, 1, 4, 7, nullptr, 0);
  bad(StsTriangleFrequency, 1, 0.5, 4, 7, nullptr, 0);
  bad(StsTriangleAsymmetry, 1, 0, pi, 7, nullptr, 0);
  bad(StsTriangleAsymmetry, 1, 0, R(-3.15), 7, nullptr, 0);
  bad(StsTriangleAsymmetry, 1, 0, std::numeric_limits<R>::quiet_NaN(), 7, nullptr, 0);
  bad(StsTrianglePhase, 1, 0, 0, 7, nullptr, 0);
  bad(StsNullPtr, 1, 0, 0, 0, nullptr, 0);
  bad(StsBadSize, 1, 0, 0, 0, &untouched, -1);
}

TEST(Tone, Direct) {
  check(&orpsTone_Direct_16s);
  check(&orpsTone_Direct_16sc);
  check(&orpsTone_Direct_32f);
  check(&orpsTone_Direct_32fc);
  check(&orpsTone_Direct_64f);
  check(&orpsTone_Direct_64fc);
}

TEST(Triangle, Direct) {
  check(&orpsTriangle_Direct_16s);
  check(&orpsTriangle_Direct_16sc);
  check(&orpsTriangle_Direct_32f);
  check(&orpsTriangle_Direct_32fc);
  check(&orpsTriangle_Direct_64f);
  check(&orpsTriangle_Direct_64fc);
}

// Many calls: nothing accumulates but the rounding of the phase.
TEST(Tone, Continues) {
  const double frequency = 0.12345678901234;
  std::vector<Orp64f> samples(100000);
  double phase = 0.5;
  uint64_t n = 0;
  for (int i = 0; i < 3000; ++i) {
    const int len = 1 + i * 7919 % static_cast<int>(samples.size());
    ASSERT_EQ(StsOk, orpsTone_Direct_64f(samples.data(), len, 1, frequency, &phase, 0));
    n += static_cast<uint64_t>(len);
    const long double exact = std::cos(2 * kPi * turnsOf(frequency, n - 1) + 0.5L);
    ASSERT_NEAR(static_cast<double>(exact), samples[static_cast<size_t>(len) - 1], 3e-13) << n;
  }
}

// A phase below a period that is nearest to a number above it.
TEST(Tone, PhasesThatRoundUpToAPeriodStartAgain) {
  const float last = std::nextafter(6.2831853F, 0.0F), frequency = 4.7e-8F;
  const double next = last + 6.283185307179586 * frequency;
  ASSERT_TRUE(next < 6.283185307179586 && static_cast<double>(static_cast<float>(next)) > 6.283185307179586);
  float sample, phase = last;
  ASSERT_EQ(StsOk, orpsTone_Direct_32f(&sample, 1, 1, frequency, &phase, 0));
  EXPECT_EQ(0, phase);
  phase = last;
  ASSERT_EQ(StsOk, orpsTriangle_Direct_32f(&sample, 1, 1, frequency, 0, &phase));
  EXPECT_EQ(0, phase);
}

TEST(Tone, HasTheSameBitsEverywhere) {
  constexpr int kLen = 20001;
  Digest digest;
  const auto add = [&]<class E, class M, class R>(ToneCall<E, M, R> tone, TriangleCall<E, M, R> wave) {
    R phase = R(0.1);
    std::vector<E> samples(kLen);
    for (const int hint : {0, 1}) {
      ASSERT_EQ(StsOk, tone(samples.data(), kLen, M(1000), R(0.0123), &phase, hint));
      digest.add(samples);
    }
    ASSERT_EQ(StsOk, wave(samples.data(), kLen, M(1000), R(0.0123), R(1.5), &phase));
    digest.add(samples);
  };
  add(&orpsTone_Direct_16s, &orpsTriangle_Direct_16s);
  add(&orpsTone_Direct_32fc, &orpsTriangle_Direct_32fc);
  add(&orpsTone_Direct_64f, &orpsTriangle_Direct_64f);
  EXPECT_EQ(13790587109866272498u, digest.value());
}

// The counter of a state, whose upper half takes more than a day to reach.
TEST(Q15, CountsBeyond32Bits) {
  constexpr Orp64u kBefore = (Orp64u{5} << 32) - 3;
  constexpr int kLen = 10;
  const auto check = [&](Orp8u* memory, size_t at, const std::vector<Orp16s>& direct, auto generate) {
    std::memcpy(memory + at, &kBefore, sizeof(kBefore));
    std::vector<Orp16s> samples(kLen);
    ASSERT_EQ(StsOk, generate(samples.data()));
    EXPECT_TRUE(std::equal(samples.begin(), samples.end(), direct.end() - kLen));
    Orp64u count;
    std::memcpy(&count, memory + at, sizeof(count));
    EXPECT_EQ(kBefore + kLen, count);
  };
  std::vector<Orp16s> direct(32768 + kLen - 3);  // 32768 samples are whole periods
  const int all = static_cast<int>(direct.size());
  Orp8u memory[256];
  auto* const tone = reinterpret_cast<OrpToneStateQ15_16s*>(memory);
  auto* const wave = reinterpret_cast<OrpTriangleStateQ15_16s*>(memory);
  ASSERT_EQ(StsOk, orpsToneInitQ15_16s(tone, 30001, 12345, 7));
  ASSERT_EQ(StsOk, orpsToneQ15_Direct_16s(direct.data(), all, 30001, 12345, 7));
  check(memory, 32, direct, [&](Orp16s* dst) { return orpsToneQ15_16s(dst, kLen, tone); });
  ASSERT_EQ(StsOk, orpsTriangleInitQ15_16s(wave, 30001, 12345, 7, 5));
  ASSERT_EQ(StsOk, orpsTriangleQ15_Direct_16s(direct.data(), all, 30001, 12345, 7, 5));
  check(memory, 120, direct, [&](Orp16s* dst) { return orpsTriangleQ15_16s(dst, kLen, wave); });
}

// (A state's samples do not depend on how they are divided into calls, as state_test sees.)
TEST(Q15, StatesEqualTheDirectFormsAndTheFormulas) {
  constexpr int kLen = 200000;
  std::vector<Orp16s> tones(kLen), waves(kLen), fromTone(kLen), fromWave(kLen);
  OrpToneStateQ15_16s* tone = nullptr;
  OrpTriangleStateQ15_16s* wave = nullptr;
  ASSERT_EQ(StsOk, orpsToneInitAllocQ15_16s(&tone, 30001, 12345, 205886));
  ASSERT_EQ(StsOk, orpsTriangleInitAllocQ15_16s(&wave, 30001, 12345, 205886, -102943));
  ASSERT_EQ(StsOk, orpsToneQ15_16s(fromTone.data(), kLen, tone));
  ASSERT_EQ(StsOk, orpsTriangleQ15_16s(fromWave.data(), kLen, wave));
  ASSERT_EQ(StsOk, orpsToneQ15_Direct_16s(tones.data(), kLen, 30001, 12345, 205886));
  ASSERT_EQ(StsOk, orpsTriangleQ15_Direct_16s(waves.data(), kLen, 30001, 12345, 205886, -102943));
  EXPECT_TRUE(tones == fromTone && waves == fromWave);
  for (int n = 0; n < kLen; ++n) {
    const long double turns = turnsOf(12345 / 32768.0, static_cast<uint64_t>(n)) + 205886 / 32768.0L / (2 * kPi);
    expectSample(30001 * std::cos(2 * kPi * turns), 1e-9L, tones[static_cast<size_t>(n)]);
    expectSample(30001 * triangle(turns, -102943 / 32768.0), 1e-9L, waves[static_cast<size_t>(n)]);
  }
  EXPECT_EQ(StsTriangleAsymmetry, orpsTriangleQ15_Direct_16s(waves.data(), 1, 1, 16383, 205886, -102944));
  EXPECT_EQ(StsOk, orpsToneFree(tone));
  EXPECT_EQ(StsOk, orpsTriangleFree(wave));
}

}  // namespace
}  // namespace orptest
