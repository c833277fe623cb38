// The error of a floating-point result in units in the last place: the distance from the exact result, divided by the
// distance from the exact result rounded to the format to the next number of larger magnitude (the least subnormal, if
// it is rounded to a subnormal). The reference is long double or __float128.
#pragma once

#include <quadmath.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace orptest {

using Quad = __float128;

inline bool isNegative(long double x) { return std::signbit(x); }
inline bool isNegative(Quad x) { return signbitq(x) != 0; }

// The unit at x.
template <class T>
T unitOf(T x) {
  using Bits = std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>;
  const T magnitude = std::fabs(x);
  const auto bits = std::bit_cast<Bits>(magnitude);
  if (magnitude >= std::numeric_limits<T>::max())
    return std::numeric_limits<T>::max() - std::bit_cast<T>(std::bit_cast<Bits>(std::numeric_limits<T>::max()) - 1);
  return std::bit_cast<T>(bits + 1) - magnitude;
}

// Infinite where a result is of another kind (a number instead of a NaN or infinity, or the reverse) or of another
// sign, that of a zero included. An infinity in place of a finite exact result counts as the power of two beyond the
// largest number, and as right if the exact result is rounded to it.
template <class T, class Exact>
double ulps(T got, Exact exact) {
  constexpr double kWrong = std::numeric_limits<double>::infinity();
  const auto rounded = static_cast<T>(exact);
  if (rounded != rounded || got != got) return rounded != rounded && got != got ? 0 : kWrong;
  if (std::signbit(got) != isNegative(exact)) return kWrong;
  if (got == rounded && (std::isinf(rounded) || exact == 0)) return 0;
  const bool isInfinite = exact - exact != 0;
  if (isInfinite || exact == 0) return kWrong;
  const T unit = unitOf(rounded);
  Exact value = got;
  if (std::isinf(got)) value = (got < 0 ? -1 : 1) * (Exact{std::numeric_limits<T>::max()} + Exact{unit});
  const Exact error = (value - exact) / Exact{unit};
  return static_cast<double>(error < 0 ? -error : error);
}

}  // namespace orptest
