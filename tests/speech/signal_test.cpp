// Pre-emphasis, running means, FM demodulation, sums over a window and packed bits, against exact references.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include "orpsp.h"
#include "support/guarded.h"
#include "support/random.h"
#include "support/ulp.h"

namespace orptest {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity(), kNan = std::numeric_limits<float>::quiet_NaN();

std::vector<int> lengths() {
  std::vector<int> lengths = {127, 128, 129, 1000, 4099};
  for (int len = 1; len <= 70; ++len) lengths.push_back(len);
  return lengths;
}

// `call` gives the status for pointers that are null or not and a length; nothing may be written.
template <class... P>
void expectChecks(auto call, P*... pointers) {
  EXPECT_EQ(StsBadSize, call(pointers..., 0));
  EXPECT_EQ(StsBadSize, call(pointers..., -1));
  int i = 0;
  const auto without = [&](const void* omitted) { return call((pointers == omitted ? nullptr : pointers)..., 0); };
  for (const void* omitted : {static_cast<const void*>(pointers)...}) EXPECT_EQ(StsNullPtr, without(omitted)) << i++;
}

int rounded(long double exact, int least, int most) {
  return exact != exact ? 0 : static_cast<int>(std::rint(std::clamp<long double>(exact, least, most)));
}

// ---- Pre-emphasis

Orp16s emphasized(Orp16s x, Orp16s previous, float v) {
  const long double part = static_cast<long double>(v) * previous;
  return static_cast<Orp16s>(rounded(x - part, -32768, 32767));
}
float emphasized(float x, float previous, float v) {
  const float part = v * previous;
  return x - part;
}

template <class T>
void checkPreemphasis(OrpStatus (*f)(const T*, T*, int, float), Values values) {
  for (const int len : lengths()) {
    for (const float v : {0.97f, 0.5f, -1.0f, 1.75f, -0x1.ffffp0f, 0.001f, 1e30f, kInfinity, kNan}) {
      SCOPED_TRACE(testing::Message() << len << " elements, v = " << v);
      const auto count = static_cast<size_t>(len);
      Guarded<T> src(Random(count).vector<T>(count, values), count % 5), dst(count, count % 7);
      const auto samples = src.values();
      ASSERT_EQ(StsOk, f(src.data(), dst.data(), len, v));
      ASSERT_EQ(StsOk, f(src.data(), src.data(), len, v));
      for (size_t n = 0; n < count; ++n) {
        const T expected = emphasized(samples[n], n == 0 ? T{0} : samples[n - 1], v);
        for (const T result : {dst[n], src[n]}) {
          if (expected == expected) {
            ASSERT_EQ(expected, result) << n;
          } else {
            ASSERT_NE(result, result) << n;
          }
        }
      }
    }
  }
  T x[2] = {1, 2};
  expectChecks([f](const T* src, T* dst, int len) { return f(src, dst, len, 1); }, x, x + 1);
}

TEST(Preemphasize, OfIntegersIsRoundedOnce) { checkPreemphasis(orpsPreemphasize_16s, Values::mixed); }
TEST(Preemphasize, OfFloatsRoundsTheProduct) { checkPreemphasis(orpsPreemphasize_32f, Values::mixed); }

// ---- Running means

using Update = OrpStatus (*)(const Orp16s*, int, Orp32s*, int, Orp16s);

Orp32s updated(bool isPower, Orp16s x, Orp32s y, int shift, Orp16s alpha) {
  const int64_t t = (isPower ? int64_t{x} * x : int64_t{x} * 32768) >> std::clamp(shift, 0, 31);
  const Quad exact = y + (static_cast<Quad>(t) - y) * alpha / 32768;
  return static_cast<Orp32s>(
      rintq(fminq(fmaxq(exact, std::numeric_limits<Orp32s>::min()), std::numeric_limits<Orp32s>::max())));
}

void checkUpdate(Update f, bool isPower) {
  Random random;
  for (const int alpha : {0, 1, 77, 128, 256, 8192, 16384, 32767, -3, -16384, -32768}) {
    for (const int shift : {-9, 0, 1, 15, 31, 99}) {
      SCOPED_TRACE(testing::Message() << "alpha " << alpha << ", shift " << shift);
      const auto a = static_cast<Orp16s>(alpha);
      for (const size_t len : {1U, 2U, 3U, 50U}) {
        Guarded<Orp16s> src(random.vector<Orp16s>(len), 1);
        const auto start = random.element<Orp32s>();
        Guarded<Orp32s> mean(std::vector{start}, len);
        ASSERT_EQ(StsOk, f(src.data(), static_cast<int>(len), mean.data(), shift, a));
        Orp32s expected = start;
        for (size_t n = 0; n < len; ++n) expected = updated(isPower, src[n], expected, shift, a);
        ASSERT_EQ(expected, mean[0]) << start;
      }
    }
    // Ties, whatever alpha.
    for (const int t : {0, 1 << 20}) {
      for (int step = -9; step <= 9; ++step) {
        const Orp16s x = t == 0 ? 0 : isPower ? 1 << 10 : 1 << 5;
        Orp32s mean = t - step * (16384 / std::max(1, alpha & -alpha));
        const Orp32s expected = updated(isPower, x, mean, 0, static_cast<Orp16s>(alpha));
        ASSERT_EQ(StsOk, f(&x, 1, &mean, 0, static_cast<Orp16s>(alpha)));
        ASSERT_EQ(expected, mean) << alpha << ' ' << step;
      }
    }
  }
  Orp16s x = 1;
  Orp32s y = 5;
  expectChecks([f](const Orp16s* src, Orp32s* mean, int len) { return f(src, len, mean, 0, 99); }, &x, &y);
  EXPECT_EQ(5, y);
}

TEST(UpdateLinear, IsExact) { checkUpdate(orpsUpdateLinear_16s32s_I, false); }
TEST(UpdatePower, IsExact) { checkUpdate(orpsUpdatePower_16s32s_I, true); }

// ---- FM demodulation

Orp16s phaseStep(Orp16sc z, Orp16sc w) {
  const int64_t re = int64_t{z.re} * w.re + int64_t{z.im} * w.im, im = int64_t{z.im} * w.re - int64_t{z.re} * w.im;
  const Quad exact = atan2q(static_cast<Quad>(im), static_cast<Quad>(re)) * 32768 / atan2q(0, -1);
  return static_cast<Orp16s>(rintq(fminq(exact, 32767)));
}

void checkDemodulation(const std::vector<Orp16sc>& samples, Orp16sc previous, size_t misalignment) {
  const size_t count = samples.size();
  Guarded<Orp16sc> src(samples, misalignment), before(std::vector{previous}, misalignment + 2);
  Guarded<Orp16s> dst(count, misalignment + 1);
  std::vector<Orp16s> expected(count);
  for (size_t n = 0; n < count; ++n) expected[n] = phaseStep(samples[n], n == 0 ? previous : samples[n - 1]);
  // In two calls, the first of them of a third.
  const size_t third = count / 3;
  if (third > 0) {
    ASSERT_EQ(StsOk, orpsDemodulateFM_CToR_16s(src.data(), dst.data(), static_cast<int>(third), before.data()));
  }
  ASSERT_EQ(StsOk, orpsDemodulateFM_CToR_16s(src.data() + third, dst.data() + third, static_cast<int>(count - third),
                                             before.data()));
  EXPECT_EQ(expected, dst.values());
  EXPECT_EQ(samples.back().re, before[0].re);
  EXPECT_EQ(samples.back().im, before[0].im);
}

TEST(DemodulateFM, GivesTheNearestAngle) {
  for (const int len : lengths()) {
    SCOPED_TRACE(len);
    const auto count = static_cast<size_t>(len);
    Random random(count);
    checkDemodulation(random.vector<Orp16sc>(count), random.element<Orp16sc>(), count % 8);
  }
}

TEST(DemodulateFM, NextToTies) {
  // Pairs whose angle in the unit of the result is within 2e-11 of a tie, found by continued fractions.
  const Orp16sc kPairs[][2] = {{{-22420, -15269}, {229, -27543}},   {{32331, 13177}, {-6434, -2175}},
                               {{8893, -25099}, {-16904, -20854}},  {{-2479, -8879}, {31041, -11448}},
                               {{10844, 2395}, {27963, 16046}},     {{7067, 6489}, {-25335, -21867}},
                               {{327, 2452}, {-29837, 19441}},      {{5145, -10334}, {-891, -28216}},
                               {{22754, -25013}, {-28215, -20578}}, {{27187, -16054}, {-11577, 28790}}};
  std::vector<Orp16sc> samples;
  for (const auto& [z, w] : kPairs) samples.insert(samples.end(), {w, z});
  checkDemodulation(samples, {0, 0}, 0);
}

TEST(DemodulateFM, OfExtremesAndZeros) {
  std::vector<Orp16sc> samples;
  constexpr Orp16s kParts[] = {-32768, -32767, -1, 0, 1, 32767};
  for (const Orp16s a : kParts)
    for (const Orp16s b : kParts)
      for (const Orp16s c : kParts)
        for (const Orp16s d : kParts) samples.insert(samples.end(), {{a, b}, {c, d}});
  checkDemodulation(samples, {0, 0}, 0);
  Orp16sc opposite = {5, 5}, previous = {-5, -5};
  Orp16s half = 0;
  EXPECT_EQ(StsOk, orpsDemodulateFM_CToR_16s(&opposite, &half, 1, &previous));
  EXPECT_EQ(32767, half);
  expectChecks([](const Orp16sc* src, Orp16s* dst, Orp16sc* before,
                  int len) { return orpsDemodulateFM_CToR_16s(src, dst, len, before); },
               &opposite, &half, &previous);
  EXPECT_EQ(32767, half);
  EXPECT_EQ(5, previous.re);
}

TEST(DemodulateFM, OfAToneIsItsFrequency) {
  for (const double frequency : {0.0, 0.1234, -0.3, 0.499}) {
    std::vector<Orp16sc> tone(1000);
    for (size_t n = 0; n < tone.size(); ++n) {
      const double angle = 2 * std::numbers::pi * frequency * static_cast<double>(n);
      tone[n] = {static_cast<Orp16s>(std::lrint(30000 * std::cos(angle))),
                 static_cast<Orp16s>(std::lrint(30000 * std::sin(angle)))};
    }
    std::vector<Orp16s> steps(tone.size());
    Orp16sc previous = tone[0];
    ASSERT_EQ(StsOk, orpsDemodulateFM_CToR_16s(tone.data(), steps.data(), 1000, &previous));
    for (size_t n = 1; n < steps.size(); ++n) ASSERT_NEAR(65536 * frequency, steps[n], 1) << n;
  }
}

// ---- Sums over a window

template <class T>
void checkWindow(OrpStatus (*f)(const T*, float*, int, int), int len, int window, const std::vector<T>& samples) {
  SCOPED_TRACE(testing::Message() << len << " elements, window of " << window);
  const auto count = static_cast<size_t>(len), width = static_cast<size_t>(window);
  Guarded<T> src(std::vector<T>(samples.begin(), samples.begin() + static_cast<long>(count + width - 1)), count % 5);
  Guarded<float> dst(count, count % 7);
  ASSERT_EQ(StsOk, f(src.data(), dst.data(), len, window));
  int64_t sum = 0;
  for (size_t n = 0; n < width; ++n) sum += src[n];
  for (size_t n = 0; n < count; ++n) {
    ASSERT_EQ(static_cast<float>(sum), dst[n]) << n;
    if (n + 1 < count) sum += src[n + width] - src[n];
  }
}

// `beyond` is the first window whose sums may need more than 32 bits.
template <class T>
void checkWindows(OrpStatus (*f)(const T*, float*, int, int), int beyond) {
  const auto samples = Random().vector<T>(10000);
  for (const int len : lengths())
    for (const int window : {1, 2, 17, 64, 1001}) checkWindow(f, len, window, samples);
  // The largest and the smallest sums.
  for (const T fill : {std::numeric_limits<T>::min(), std::numeric_limits<T>::max()}) {
    std::vector<T> many(static_cast<size_t>(beyond) + 300, fill);
    many[3] = 1;
    for (const int window : {beyond - 1, beyond, beyond + 200}) checkWindow(f, 77, window, many);
  }
  T x[2] = {};
  float y = 5;
  expectChecks([f](const T* src, float* dst, int len) { return f(src, dst, len, 1); }, x, &y);
  EXPECT_EQ(StsBadSize, f(x, &y, 1, 0));
  EXPECT_EQ(5, y);
}

TEST(SumWindow, OfBytes) { checkWindows(orpsSumWindow_8u32f, 8421505); }
TEST(SumWindow, Of16Bits) { checkWindows(orpsSumWindow_16s32f, 65536); }

// ---- Packed bits

TEST(PackBits, PutsOneBitAfterTheOther) {
  for (const int len : lengths()) {
    for (int bits = 1; bits <= 32; ++bits) {
      SCOPED_TRACE(testing::Message() << len << " elements of " << bits << " bits");
      const auto count = static_cast<size_t>(len), width = static_cast<size_t>(bits);
      Guarded<Orp32u> src(Random(count).vector<Orp32u>(count), count % 5);
      std::vector<Orp8u> expected((count * width + 7) / 8);
      for (size_t i = 0; i < count * width; ++i) {
        const Orp32u bit = src[i / width] >> (width - 1 - i % width) & 1;
        expected[i / 8] = static_cast<Orp8u>(expected[i / 8] | bit << (7 - i % 8));
      }
      Guarded<Orp8u> dst(expected.size(), count % 7);
      ASSERT_EQ(StsOk, orpsPackBits_32u8u(src.data(), dst.data(), len, bits));
      ASSERT_EQ(expected, dst.values());
    }
  }
  Orp32u x = 1;
  Orp8u y = 5;
  expectChecks([](const Orp32u* src, Orp8u* dst, int len) { return orpsPackBits_32u8u(src, dst, len, 0); }, &x, &y);
  for (const int bits : {-1, 0, 33}) EXPECT_EQ(StsBadArg, orpsPackBits_32u8u(&x, &y, 1, bits));
  EXPECT_EQ(5, y);
}

}  // namespace
}  // namespace orptest
