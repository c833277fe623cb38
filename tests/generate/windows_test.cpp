// Windows against their formulas.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "support/elements.h"
#include "support/guarded.h"
#include "support/random.h"

namespace orptest {
namespace {

constexpr long double kPi = 3.14159265358979323846264338327950288L;

// The approximation that belongs to the contract.
long double besselI0(long double x) {
  const auto sum = [](const std::vector<long double>& coefficients, long double at) {
    long double value = 0;
    for (size_t i = coefficients.size(); i-- > 0;) value = value * at + coefficients[i];
    return value;
  };
  if (x < 4) {
    const long double y = x * x / 16;
    return sum({0.9999999985L, 4.0000001935L, 3.9999959541L, 1.777809969L, 0.4443189384L, 0.0713758187L, 0.0075942968L,
                0.0008267816L},
               y);
  }
  return std::exp(x) / std::sqrt(x) *
         sum({0.3989422809L, 0.0124667783L, 0.0017623668L, 0.00026L, 0.0022585672L, -0.0128314822L, 0.0495811118L,
              -0.1209940805L, 0.1895476618L, -0.1867783276L, 0.1113315511L, -0.0366694767L, 0.0051246015L},
             4 / x);
}

long double weightOf(std::string_view window, int len, long double alpha, int n) {
  const long double last = len - 1, angle = 2 * kPi * n / last;
  if (window == "Bartlett") return n <= last / 2 ? 2 * n / last : 2 - 2 * n / last;
  if (window == "Hann") return 0.5L - 0.5L * std::cos(angle);
  if (window == "Hamming") return 0.54L - 0.46L * std::cos(angle);
  if (window == "Kaiser")
    return besselI0(std::fabs(alpha) * std::sqrt(n * (last - n))) / besselI0(std::fabs(alpha) * last / 2);
  if (window == "BlackmanStd") alpha = -0.16L;
  if (window == "BlackmanOpt") alpha = -std::pow(0.5L / std::cos(kPi / last), 2.0L);
  return (alpha + 1) / 2 - 0.5L * std::cos(angle) - alpha / 2 * std::cos(2 * angle);
}

template <class P>
void expectProduct(P sample, long double weight, int scale, P result) {
  long double exact = std::ldexp(static_cast<long double>(sample) * weight, -scale), bound = 0.5L + 1e-9L;
  if constexpr (std::is_floating_point_v<P>) {
    const long double size = std::fabs(static_cast<long double>(sample));
    bound = 0.5001L * std::numeric_limits<P>::epsilon() * std::fabs(exact) + 1e-12L * size;
  } else {
    const long double most = std::numeric_limits<P>::max(), least = std::numeric_limits<P>::min();
    exact = std::fmin(std::fmax(exact, least), most);
  }
  EXPECT_LE(std::fabs(static_cast<long double>(result) - exact), bound) << result << " instead of " << exact;
}

// orpsWin<window>[Q15]_<type>[_I | _ISfs]
struct Name {
  std::string window;
  int least;

  explicit Name(std::string_view name) {
    name.remove_prefix(std::string_view("orpsWin").size());
    window = name.substr(0, name.find('_'));
    if (window.ends_with("Q15")) window.resize(window.size() - 3);
    least = window == "Kaiser" ? 1 : window == "BlackmanOpt" ? 4 : 3;
  }
};

// Not in place, and in place on a copy.
template <class E, class... Parameter>
OrpStatus call(OrpStatus (*f)(const E*, E*, int, Parameter...), Guarded<E>& src, Guarded<E>& dst, int len,
               Parameter... parameter) {
  return f(src.data(), dst.data(), len, parameter...);
}
template <class E, class... Parameter>
OrpStatus call(OrpStatus (*f)(E*, int, Parameter...), Guarded<E>& src, Guarded<E>& dst, int len,
               Parameter... parameter) {
  dst.assign(src.values());
  return f(dst.data(), len, parameter...);
}

template <class E, class F, class... Parameter>
void checkValues(const Name& name, F f, int len, long double alpha, int scale, Parameter... parameter) {
  SCOPED_TRACE(testing::Message() << len << " elements, alpha " << alpha << ", scale factor " << scale);
  Random random(static_cast<uint64_t>(len));
  const auto count = static_cast<size_t>(len);
  std::vector<E> samples;
  for (size_t i = 0; i < count; ++i)
    samples.push_back(random.element<E>(std::is_integral_v<Part<E>> ? Values::finite : Values::modest));
  Guarded<E> src(samples, count % 5), dst(count, count % 7);
  ASSERT_EQ(StsOk, call(f, src, dst, len, parameter...));
  const auto results = dst.values();
  for (size_t n = 0; n < count && !testing::Test::HasFailure(); ++n) {
    SCOPED_TRACE(n);
    const long double weight = weightOf(name.window, len, alpha, static_cast<int>(n));
    Part<E> sample[kParts<E>], result[kParts<E>];
    std::memcpy(sample, &samples[n], sizeof(E));
    std::memcpy(result, &results[n], sizeof(E));
    for (int part = 0; part < kParts<E>; ++part) expectProduct(sample[part], weight, scale, result[part]);
  }
}

template <class P>
P parameterOf(double alpha) {
  if constexpr (std::is_integral_v<P>) return static_cast<P>(std::lrint(alpha * 32768));
  return static_cast<P>(alpha);
}
template <class P>
long double alphaOf(P parameter) {
  return std::is_integral_v<P> ? static_cast<long double>(parameter) / 32768 : static_cast<long double>(parameter);
}

template <class E, class F>
void checkLength(const Name& name, F f, int len, auto parameters, double) {
  static_assert(std::tuple_size_v<decltype(parameters)> == 0);
  checkValues<E>(name, f, len, 0, 0);
}
template <class E, class F, class P>
void checkLength(const Name& name, F f, int len, std::tuple<P>, double alpha) {
  const P parameter = parameterOf<P>(alpha);
  checkValues<E>(name, f, len, alphaOf(parameter), 0, parameter);
}
template <class E, class F>
void checkLength(const Name& name, F f, int len, std::tuple<int, int>, double alpha) {
  const int parameter = parameterOf<int>(alpha);
  for (const int scale : {-40, -2, 0, 3, 200})
    checkValues<E>(name, f, len, alphaOf(parameter), scale, parameter, scale);
}

template <class E, class F, class... Parameter>
void checkWindow(const Name& name, F f, std::tuple<Parameter...> parameters) {
  std::vector<int> lengths = {127, 128, 129, 130, 1000, 4097, 20000};
  for (int len = name.least; len < 70; ++len) lengths.push_back(len);
  for (const int len : lengths) {
    // Of a Kaiser window, in units of one sample.
    const double unit = name.window == "Kaiser" ? 2.0 / len : 1;
    for (const double alpha : {-0.3, 0.0, 6.5}) checkLength<E>(name, f, len, parameters, alpha * unit);
  }
  Guarded<E> src(std::vector<E>(8), 0), dst(8);
  for (int len = -1; len < name.least; ++len) EXPECT_EQ(StsBadSize, call(f, src, dst, len, Parameter{}...));
}
template <class E, class... Parameter>
void checkWindow(const char* name, OrpStatus (*f)(const E*, E*, int, Parameter...)) {
  checkWindow<E>(Name(name), f, std::tuple<Parameter...>());
}
template <class E, class... Parameter>
void checkWindow(const char* name, OrpStatus (*f)(E*, int, Parameter...)) {
  checkWindow<E>(Name(name), f, std::tuple<Parameter...>());
}

#define ORPS_EXPORT(name, ...)                         \
  TEST(Windows, name) { checkWindow(#name, &::name); } \
  static_assert(true)
#include "exports/windows.inc"
#undef ORPS_EXPORT

TEST(Windows, KeepTheirAccuracyOverTenMillionElements) {
  constexpr int kLen = 10'000'000;
  std::vector<double> weights(kLen, 1.0);
  ASSERT_EQ(StsOk, orpsWinBlackmanStd_64f_I(weights.data(), kLen));
  Random random;
  long double most = 0;
  for (int i = 0; i < 100'000; ++i) {
    const int n = random.below(kLen);
    most = std::fmax(most, std::fabs(weights[static_cast<size_t>(n)] - weightOf("BlackmanStd", kLen, 0, n)));
  }
  EXPECT_LT(most, 1e-13L);
  for (size_t n = 0; n < kLen / 2; ++n) ASSERT_EQ(weights[n], weights[kLen - 1 - n]);
}

TEST(Windows, ExactWeights) {
  double x[] = {3, 5, 7};
  EXPECT_EQ(StsOk, orpsWinHann_64f_I(x, 3));
  EXPECT_EQ((std::vector<double>{0, 5, 0}), std::vector<double>(x, x + 3));
  double y[] = {3, 5, 7};
  EXPECT_EQ(StsOk, orpsWinBartlett_64f_I(y, 3));
  EXPECT_EQ((std::vector<double>{0, 5, 0}), std::vector<double>(y, y + 3));
  double anything[] = {std::nan(""), -5, -7};
  EXPECT_EQ(StsOk, orpsWinBartlett_64f_I(anything, 3));
  EXPECT_EQ((std::vector<double>{0, -5, 0}), std::vector<double>(anything, anything + 3));
  EXPECT_FALSE(std::signbit(anything[2]));
  std::vector<double> z = {1, 2, 3, 4, 5}, ones = z;
  EXPECT_EQ(StsOk, orpsWinKaiser_64f_I(z.data(), 5, 0));
  EXPECT_EQ(ones, z);
}

TEST(Windows, KaiserIsAsNearToTheBesselFunctionAsDocumented) {
  for (const double beta : {1.0, 3.9, 4.1, 8.0, 300.0}) {
    constexpr int kLen = 4001;
    std::vector<double> weights(kLen, 1.0);
    const double alpha = static_cast<float>(2 * beta / (kLen - 1));
    ASSERT_EQ(StsOk, orpsWinKaiser_64f_I(weights.data(), kLen, static_cast<float>(alpha)));
    const double end = std::cyl_bessel_i(0, alpha * (kLen - 1) / 2);
    for (int n = 0; n < kLen; ++n) {
      const double exact = std::cyl_bessel_i(0, alpha * std::sqrt(n * (kLen - 1.0 - n))) / end;
      ASSERT_NEAR(exact, weights[static_cast<size_t>(n)], 5.6e-6) << beta << ' ' << n;
    }
  }
}

TEST(Windows, KaiserParameterAgainstTheLength) {
  std::vector<double> x(618, 1.0), untouched(618, 7.0), dst = untouched;
  EXPECT_EQ(StsKaiserAlpha, orpsWinKaiser_64f(x.data(), dst.data(), 618, 1.0f));
  EXPECT_EQ(StsKaiserAlpha, orpsWinKaiser_64f(x.data(), dst.data(), 618, -1.0f));
  EXPECT_EQ(untouched, dst);
  EXPECT_EQ(StsBadSize, orpsWinKaiser_64f(x.data(), dst.data(), 0, 1.0f));
  EXPECT_EQ(StsOk, orpsWinKaiser_64f(x.data(), dst.data(), 617, 1.0f));
  double one = 0.7, copy = 0;
  EXPECT_EQ(StsOk, orpsWinKaiser_64f(&one, &copy, 1, 1e30f));
  EXPECT_EQ(one, copy);
}

TEST(Windows, SpecialSamplesAndParameters) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity(), kNan = std::numeric_limits<float>::quiet_NaN();
  float x[] = {kNan, kInfinity, -kInfinity, 1};
  EXPECT_EQ(StsOk, orpsWinHamming_32f_I(x, 4));
  EXPECT_TRUE(std::isnan(x[0]));
  EXPECT_EQ(kInfinity, x[1]);
  EXPECT_EQ(-kInfinity, x[2]);
  Orp16s samples[] = {1, -2, 3, 4, -5};
  EXPECT_EQ(StsOk, orpsWinBlackman_16s_I(samples, 5, kNan));
  for (const Orp16s sample : samples) EXPECT_EQ(0, sample);
}

}  // namespace
}  // namespace orptest
