// Cauchy's loss and its derivatives against their formulas.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "support/guarded.h"
#include "support/random.h"
#include "support/ulp.h"

namespace orptest {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity(), kNan = std::numeric_limits<float>::quiet_NaN();

long double lossOf(long double x, long double s) { return std::log1p(x / s * (x / s)) * (s * s / 2); }
long double firstOf(long double x, long double s) { return x / (x * x + s * s); }
long double secondOf(long double x, long double s) { return (s - x) * (s + x) / (x * x + s * s) / (x * x + s * s); }

// Residuals around s, of modest size, and of every magnitude, zeros and subnormal ones included.
std::vector<float> residuals(float s, Random& random) {
  std::vector<float> x = random.vector<float>(1000, Values::finite);
  for (int i = 0; i < 4000; ++i) {
    const float near = random.element<float>(Values::modest);
    x.push_back(s * (i % 2 == 0 ? 4 * near : std::ldexp(near, random.below(40) - 20)));
  }
  for (int steps = -3; steps <= 3; ++steps) x.push_back(s + static_cast<float>(steps) * unitOf(s));
  std::erase_if(x, [](float v) { return !std::isfinite(v); });
  return x;
}

TEST(Cauchy, Accuracy) {
  Random random;
  std::vector<float> scales = {1, 0.001f, 3e4f, 0x1p-50f, 0x1.fffp61f, 0x1p-51f, 0x1p62f, 1e-42f, 3e38f};
  for (int i = 0; i < 60; ++i) scales.push_back(std::fabs(random.element<float>(Values::finite)) + 1e-44f);
  for (const float s : scales) {
    SCOPED_TRACE(s);
    const auto x = residuals(s, random);
    const int len = static_cast<int>(x.size());
    Guarded<float> loss(x, 4), first(x, 1), both(x), second(x.size(), 60);
    ASSERT_EQ(StsOk, orpsCauchy_32f_I(loss.data(), len, s));
    ASSERT_EQ(StsOk, orpsCauchyD_32f_I(first.data(), len, s));
    ASSERT_EQ(StsOk, orpsCauchyDD2_32f_I(both.data(), second.data(), len, s));
    for (size_t i = 0; i < x.size(); ++i) {
      const double errors[] = {ulps(loss[i], lossOf(x[i], s)), ulps(first[i], firstOf(x[i], s)),
                               ulps(second[i], secondOf(x[i], s))};
      constexpr double kBounds[] = {0.501, 3, 7};
      for (int k = 0; k < 3; ++k) ASSERT_LE(errors[k], kBounds[k]) << "result " << k << " of " << x[i];
      ASSERT_EQ(first[i], both[i]) << x[i];
    }
  }
}

TEST(Cauchy, SpecialValuesLeaveTheirNeighboursAlone) {
  std::vector<float> usual = Random().vector<float>(67, Values::modest), x = usual;
  for (const auto& [at, value] : {std::pair{5, kInfinity}, {20, -kInfinity}, {40, kNan}, {66, 3e30f}})
    x[static_cast<size_t>(at)] = value;
  Guarded<float> expected(usual), expectedSecond(usual.size()), first(x), second(x.size()), loss(x);
  const int len = static_cast<int>(x.size());
  ASSERT_EQ(StsOk, orpsCauchyDD2_32f_I(expected.data(), expectedSecond.data(), len, 0.5f));
  ASSERT_EQ(StsOk, orpsCauchyDD2_32f_I(first.data(), second.data(), len, 0.5f));
  ASSERT_EQ(StsOk, orpsCauchy_32f_I(loss.data(), len, 0.5f));
  for (size_t i = 0; i < x.size(); ++i) {
    if (std::fabs(x[i]) < 1e30f) {
      EXPECT_EQ(expected[i], first[i]) << i;
      EXPECT_EQ(expectedSecond[i], second[i]) << i;
    }
  }
  for (const size_t i : {5u, 20u, 40u}) EXPECT_TRUE(std::isnan(first[i]) && std::isnan(second[i])) << i;
  EXPECT_EQ(kInfinity, loss[5]);
  EXPECT_EQ(kInfinity, loss[20]);
  EXPECT_TRUE(std::isnan(loss[40]));
  float y[] = {2}, z[] = {2}, w[] = {2};
  EXPECT_EQ(StsOk, orpsCauchy_32f_I(w, 1, kInfinity));
  EXPECT_EQ(StsOk, orpsCauchyDD2_32f_I(y, z, 1, kInfinity));
  EXPECT_EQ(0, y[0]);
  EXPECT_TRUE(std::isnan(z[0]) && std::isnan(w[0]));
}

TEST(Cauchy, ChecksItsParameterLast) {
  float x[] = {1, 2}, second[] = {3, 4};
  for (const float s : {0.0f, -0.0f, -1.0f, kNan}) {
    EXPECT_EQ(StsCauchyParam, orpsCauchy_32f_I(x, 2, s));
    EXPECT_EQ(StsCauchyParam, orpsCauchyD_32f_I(x, 2, s));
    EXPECT_EQ(StsCauchyParam, orpsCauchyDD2_32f_I(x, second, 2, s));
    EXPECT_EQ(StsBadSize, orpsCauchyDD2_32f_I(x, second, 0, s));
    EXPECT_EQ(StsNullPtr, orpsCauchyDD2_32f_I(x, nullptr, 0, s));
  }
  EXPECT_EQ((std::vector<float>{1, 2, 3, 4}), (std::vector<float>{x[0], x[1], second[0], second[1]}));
}

}  // namespace
}  // namespace orptest
