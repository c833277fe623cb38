// Companding against the decision values and tables of ITU-T G.711.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <numeric>
#include <vector>

#include "orpsp.h"
#include "support/guarded.h"

namespace orptest {
namespace {

// A quantiser as the recommendation lists it: decision values from 0 on, whose distance doubles every 16 intervals but
// not within the first `equal` ones; output values are half way between them.
struct Law {
  size_t positive;  // code of the first interval
  std::vector<int> decisions, values;
  OrpStatus (*decode)(const Orp8u*, Orp16s*, int);
  OrpStatus (*decodeFloat)(const Orp8u*, Orp32f*, int);
  OrpStatus (*encode)(const Orp16s*, Orp8u*, int);
  OrpStatus (*encodeFloat)(const Orp32f*, Orp8u*, int);

  void addIntervals(size_t equal, int width) {
    while (decisions.size() <= 128) {
      const size_t before = decisions.size() - 1;
      if (before >= equal && before % 16 == 0) width *= 2;
      decisions.push_back(decisions.back() + width);
    }
    for (size_t i = 0; i < 128; ++i) values.push_back((decisions[i] + decisions[i + 1]) / 2);
  }
  size_t codeOf(int sample) const {
    const auto begin = decisions.begin(), end = begin + 128;
    const auto above = sample >= 0 ? std::upper_bound(begin, end, sample) : std::lower_bound(begin, end, -sample);
    return static_cast<size_t>(above - begin - 1) ^ positive ^ (sample < 0 ? 0x80 : 0);
  }
  int valueOf(size_t code) const {
    const int magnitude = values[(code ^ positive) & 0x7F];
    return code & 0x80 ? magnitude : -magnitude;
  }
};

const Law kALaw = [] {
  Law law = {0xD5, {0}, {}, orpsALawToLin_8u16s, orpsALawToLin_8u32f, orpsLinToALaw_16s8u, orpsLinToALaw_32f8u};
  law.addIntervals(32, 16);
  return law;
}();
const Law kMuLaw = [] {
  Law law = {0xFF, {0, 4}, {}, orpsMuLawToLin_8u16s, orpsMuLawToLin_8u32f, orpsLinToMuLaw_16s8u, orpsLinToMuLaw_32f8u};
  law.addIntervals(16, 8);
  law.values[0] = 0;
  return law;
}();

template <class To, class From>
std::vector<To> results(OrpStatus (*f)(const From*, To*, int), const std::vector<From>& values) {
  Guarded<From> src(values, 3);
  Guarded<To> dst(values.size(), 5);
  EXPECT_EQ(StsOk, f(src.data(), dst.data(), static_cast<int>(values.size())));
  return dst.values();
}

std::vector<Orp8u> allCodes() {
  std::vector<Orp8u> codes(256);
  std::iota(codes.begin(), codes.end(), Orp8u{0});
  return codes;
}

TEST(Companding, TheIntervalsOfTheReferenceEndWhereTheRecommendationSays) {
  EXPECT_EQ(4096 * 8, kALaw.decisions.back());
  EXPECT_EQ(8159 * 4, kMuLaw.decisions.back());
  EXPECT_EQ(4032 * 8, kALaw.values.back());
  EXPECT_EQ(8031 * 4, kMuLaw.values.back());
}

TEST(Companding, EveryCode) {
  for (const Law* law : {&kALaw, &kMuLaw}) {
    const auto linear = results(law->decode, allCodes());
    const auto floats = results(law->decodeFloat, allCodes());
    for (size_t code = 0; code < 256; ++code) {
      ASSERT_EQ(law->valueOf(code), linear[code]) << code;
      ASSERT_EQ(linear[code], static_cast<int>(floats[code])) << code;
      ASSERT_FALSE(floats[code] == 0 && std::signbit(floats[code])) << code;
    }
    auto again = allCodes();
    if (law == &kMuLaw) again[0x7F] = 0xFF;
    EXPECT_EQ(again, results(law->encode, linear));
    EXPECT_EQ(again, results(law->encodeFloat, floats));
  }
  // Values that users of these laws know by heart.
  EXPECT_EQ((std::vector<Orp16s>{-5504, 5504, -8, 8}), results(&orpsALawToLin_8u16s, {0, 0x80, 0x55, 0xD5}));
  EXPECT_EQ((std::vector<Orp16s>{-32124, 32124, 0, 0}), results(&orpsMuLawToLin_8u16s, {0, 0x80, 0x7F, 0xFF}));
}

TEST(Companding, EverySample) {
  std::vector<Orp16s> samples(65536);
  std::iota(samples.begin(), samples.end(), std::numeric_limits<Orp16s>::min());
  const std::vector<Orp32f> floats(samples.begin(), samples.end());
  for (const Law* law : {&kALaw, &kMuLaw}) {
    std::vector<Orp8u> expected;
    for (const Orp16s sample : samples) expected.push_back(static_cast<Orp8u>(law->codeOf(sample)));
    EXPECT_EQ(expected, results(law->encode, samples));
    EXPECT_EQ(expected, results(law->encodeFloat, floats));
  }
}

TEST(Companding, FloatsAreRoundedAndSaturated) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity(), kNan = std::numeric_limits<float>::quiet_NaN();
  // Around decision values of both laws, so that the rounding shows.
  const std::vector<Orp32f> floats = {15.5f,    14.5f, 3.5f,      -0.5f,  -0.51f, -16.5f,     -15.5f, -4.5f, -4.51f,
                                      32767.5f, 1e30f, kInfinity, -40000, -1e30f, -kInfinity, kNan,   -kNan, -0.0f};
  const std::vector<Orp16s> rounded = {16,    14,    4,     0,      -1,     -16,    -16, -4, -5,
                                       32767, 32767, 32767, -32768, -32768, -32768, 0,   0,  0};
  for (const Law* law : {&kALaw, &kMuLaw}) EXPECT_EQ(results(law->encode, rounded), results(law->encodeFloat, floats));
}

// How often a number occurs: once, or `count` times if it is among these.
size_t times(std::initializer_list<size_t> numbers, size_t number, size_t count) {
  return std::find(numbers.begin(), numbers.end(), number) == numbers.end() ? 1 : count;
}

// Tables 4 and 3 by what distinguishes them from counting: magnitudes that occur twice, or not at all.
TEST(Companding, FromLawToLaw) {
  std::vector<size_t> muByA, aByMu;
  for (size_t mu = 1; mu <= 127; ++mu)
    if (mu > 15 || mu % 2 == 1) muByA.insert(muByA.end(), times({32, 33, 34, 35, 48, 49, 64, 80}, mu, 2), mu);
  for (size_t a = 1; a <= 128; ++a)
    aByMu.insert(aByMu.end(), a <= 8 ? 2 : times({26, 28, 30, 32, 45, 47, 63, 81}, a, 0), a - 1);
  ASSERT_TRUE(muByA.size() == 128 && aByMu.size() == 128);
  const auto toMu = results(&orpsALawToMuLaw_8u, allCodes()), toA = results(&orpsMuLawToALaw_8u, allCodes());
  for (size_t i = 0; i < 128; ++i) {
    for (const size_t sign : {0x00U, 0x80U}) {
      ASSERT_EQ(muByA[i] ^ sign ^ 0xFF, toMu[i ^ sign ^ 0xD5]) << i;
      ASSERT_EQ(aByMu[i] ^ sign ^ 0xD5, toA[i ^ sign ^ 0xFF]) << i;
    }
  }
  // The tables give the nearest value, or one that is farther away by one unit of A-law at most.
  const auto checkNearest = [](const Law& from, const Law& to, const std::vector<Orp8u>& codes) {
    for (size_t code = 0; code < 256; ++code) {
      const int value = from.valueOf(code);
      int least = std::numeric_limits<int>::max();
      for (size_t other = 0; other < 256; ++other) least = std::min(least, std::abs(to.valueOf(other) - value));
      ASSERT_LE(std::abs(to.valueOf(codes[code]) - value), least + 8) << code;
    }
  };
  checkNearest(kALaw, kMuLaw, toMu);
  checkNearest(kMuLaw, kALaw, toA);
}

}  // namespace
}  // namespace orptest
