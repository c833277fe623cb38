// Norms of a vector and of a difference: integers exactly, floating point in the documented order of additions.
#include "reduction.h"

namespace reduction {
namespace {

enum class Kind { largest, sum, root, squares };

// Where squares are as precise as a double, powers of two around them change nothing.
double magnitude(double re, double im) {
  int exponent = 0;
  const double larger = std::max(std::fabs(re), std::fabs(im));
  if (std::isfinite(larger) && larger > 0 && (larger > 0x1p500 || larger < 0x1p-400)) std::frexp(larger, &exponent);
  re = std::ldexp(re, -exponent);
  im = std::ldexp(im, -exponent);
  return std::ldexp(std::sqrt(re * re + im * im), exponent);
}

template <Kind kind>
struct Norm : Model {
  template <class D>
  D result(const auto& in) const {
    using A = std::decay_t<decltype(in.a[0])>;
    if constexpr (Integers<A>) {
      return integer<D>(in);
    } else {
      using T = std::conditional_t<kParts<A> == 2, double, D>;  // the precision of differences and sums
      std::vector<T> terms;
      for (size_t n = 0; n < in.a.size(); ++n) {
        if constexpr (kParts<A> == 2) {
          const T re = static_cast<T>(in.a[n].re) - static_cast<T>(in.b[n].re);
          const T im = static_cast<T>(in.a[n].im) - static_cast<T>(in.b[n].im);
          if constexpr (kind == Kind::root) {
            terms.insert(terms.end(), {re * re, im * im});
          } else {
            terms.push_back(std::isnan(re) || std::isnan(im) ? re + im : magnitude(re, im));
          }
        } else {
          const T x = in.a[n] - in.b[n];
          terms.push_back(kind == Kind::root ? x * x : std::fabs(x));
        }
      }
      if constexpr (kind == Kind::largest) {
        T largest = 0;
        for (const T x : terms)
          if (std::isnan(x) || x > largest) largest = x;  // no number is larger than a NaN
        return static_cast<D>(largest);
      } else if constexpr (kind == Kind::root) {
        return std::sqrt(inLanes(terms)[0]);
      } else if constexpr (std::is_same_v<T, float>) {
        return static_cast<D>(inBlocks(terms)[0]);
      } else {
        return inLanes(terms)[0];
      }
    }
  }

 private:
  template <class D>
  static D integer(const auto& in) {
    Int128 largest = 0, sum = 0, squares = 0;
    for (size_t n = 0; n < in.a.size(); ++n) {
      const Orp64s x = std::abs(Orp64s{in.a[n]} - in.b[n]);
      largest = std::max(largest, Int128{x});
      sum += x;
      squares += x * x;
    }
    if constexpr (kind == Kind::largest) {
      return reference::element<D>(largest, in.extra);
    } else if constexpr (kind == Kind::sum) {
      return reference::element<D>(sum, in.extra);
    } else if constexpr (kind == Kind::squares) {
      return reference::element<D>(squares, in.extra);
    } else if constexpr (std::is_integral_v<D>) {
      return nearestRoot(squares, 1, in.extra, std::numeric_limits<D>::max());
    } else {
      // A root of 64 bits is never taken for a tie of 25 bits: squares of these, of 50 bits, would be as near.
      return static_cast<D>(std::sqrt(static_cast<long double>(squares)));
    }
  }
};

template <reference::Name name>
constexpr auto modelOf() {
  if constexpr (name.contains("_Inf_")) {
    return Norm<Kind::largest>{};
  } else if constexpr (name.contains("_L1_")) {
    return Norm<Kind::sum>{};
  } else if constexpr (name.contains("_L2_")) {
    return Norm<Kind::root>{};
  } else {
    static_assert(name.contains("_L2Sqr_"));
    return Norm<Kind::squares>{};
  }
}

}  // namespace

#define ORPS_EXPORT(name, ...)                          \
  TEST(Norms, name) { check(&name, modelOf<#name>()); } \
  static_assert(true)
#include "exports/norms.inc"

// Complex magnitudes where a square leaves the range of double.
TEST(Norms, extremeMagnitudes) {
  constexpr double kLargest = std::numeric_limits<double>::max(), kLeast = std::numeric_limits<double>::denorm_min();
  const auto check = [](Orp64fc z, double want) {
    const Orp64fc x[] = {{0, -0.0}, z, {0, 0}};
    Orp64f got;
    ASSERT_EQ(StsOk, orpsNorm_Inf_64fc64f(x, 3, &got));
    EXPECT_EQ(got, want) << "largest of " << reference::shown(z);
    ASSERT_EQ(StsOk, orpsNorm_L1_64fc64f(x, 3, &got));
    EXPECT_EQ(got, want) << "sum of " << reference::shown(z);
  };
  check({0x3p600, -0x4p600}, 0x5p600);
  check({0x3p-600, 0x4p-600}, 0x5p-600);
  check({3 * kLeast, -4 * kLeast}, 5 * kLeast);
  check({-kLargest, kLeast}, kLargest);
  check({0, kLeast}, kLeast);
  check({kLargest, kLargest}, std::numeric_limits<double>::infinity());
}

}  // namespace reduction
