// Ramps and Jaehne vectors against their formulas.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string_view>
#include <vector>

#include "orpsp.h"
#include "support/guarded.h"

namespace orptest {
namespace {

constexpr long double kHalfPi = 1.57079632679489661923132169163975144L;

template <class T>
void expectSample(long double exact, T sample) {
  long double bound = 0.5L + 1e-9L;
  if constexpr (std::is_floating_point_v<T>) {
    bound = 0.5001L * std::numeric_limits<T>::epsilon() * std::fabs(exact) + 4e-15L * std::fabs(exact) + 1e-13L;
  } else {
    const long double most = std::numeric_limits<T>::max(), least = std::numeric_limits<T>::min();
    exact = std::fmin(std::fmax(exact, least), most);
  }
  EXPECT_LE(std::fabs(static_cast<long double>(sample) - exact), bound) << +sample << " instead of " << exact;
}

const std::vector<int> kLengths = {1, 2, 3, 7, 8, 9, 15, 16, 17, 31, 33, 63, 65, 1000, 70001};

template <class T>
void check(OrpStatus (*jaehne)(T*, int, T)) {
  const T magnitude = std::is_floating_point_v<T> ? T(0.75) : std::numeric_limits<T>::max();
  for (const int len : kLengths) {
    SCOPED_TRACE(len);
    Guarded<T> dst(static_cast<size_t>(len), static_cast<size_t>(len % 7));
    ASSERT_EQ(StsOk, jaehne(dst.data(), len, magnitude));
    for (int64_t n = 0; n < len && !testing::Test::HasFailure(); ++n) {
      const auto quarters = static_cast<long double>(n * n % (4 * len)) / len;
      expectSample(magnitude * std::sin(kHalfPi * quarters), dst[static_cast<size_t>(n)]);
    }
  }
  T untouched = 7;
  if constexpr (std::is_signed_v<T>) {
    EXPECT_EQ(StsJaehneMagnitude, jaehne(&untouched, 1, T(-1)));
  }
  EXPECT_EQ(StsBadSize, jaehne(&untouched, 0, std::is_signed_v<T> ? static_cast<T>(-1) : T{1}));
  EXPECT_EQ(T{7}, untouched);
  EXPECT_EQ(StsOk, jaehne(&untouched, 1, magnitude));
  EXPECT_EQ(T{0}, untouched);
}

template <class T, class Real>
void check(OrpStatus (*ramp)(T*, int, Real, Real)) {
  struct Line {
    Real offset, slope;
  };
  for (const Line line : {Line{0, 1}, Line{Real(-20.5), Real(0.75)}, Line{Real(3e9), Real(-71234.56)}})
    for (const int len : kLengths) {
      SCOPED_TRACE(testing::Message() << len << " elements, slope " << line.slope);
      Guarded<T> dst(static_cast<size_t>(len), static_cast<size_t>(len % 7));
      ASSERT_EQ(StsOk, ramp(dst.data(), len, line.offset, line.slope));
      for (int n = 0; n < len && !testing::Test::HasFailure(); ++n) {
        if constexpr (std::is_same_v<T, float>) {
          const float product = static_cast<float>(n) * line.slope;
          EXPECT_EQ(product + line.offset, dst[static_cast<size_t>(n)]);
        } else {
          const double product = n * line.slope;
          expectSample(static_cast<long double>(product + line.offset), dst[static_cast<size_t>(n)]);
        }
      }
    }
}

#define ORPS_EXPORT(name, ...)              \
  TEST(TestVectors, name) { check(&name); } \
  static_assert(true)
#include "exports/test_vectors.inc"
#undef ORPS_EXPORT

TEST(TestVectors, NoNumberAsSlope) {
  Orp16s samples[5];
  EXPECT_EQ(StsOk, orpsVectorRamp_16s(samples, 5, 1, std::numeric_limits<double>::quiet_NaN()));
  for (const Orp16s sample : samples) EXPECT_EQ(0, sample);
}

}  // namespace
}  // namespace orptest
