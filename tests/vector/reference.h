// The results of element-wise operations as they are defined: one element at a time, integers exactly in 128 bits,
// floating point in the type of the operands.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>
#include <type_traits>

#include "orpsp.h"
#include "support/elements.h"

namespace reference {

using orptest::Part;

using Int128 = __int128;
using Uint128 = unsigned __int128;

template <class T>
concept Complex = requires(T z) {
  z.re, z.im;
};

// A complex number over any arithmetic.
template <class T>
struct Pair {
  T re, im;
};
template <class T>
Pair(T, T) -> Pair<T>;

// An operand in the arithmetic that its operation is defined in.
template <class T>
constexpr auto exact(T x) {
  if constexpr (Complex<T>) {
    return Pair<decltype(exact(x.re))>{exact(x.re), exact(x.im)};
  } else if constexpr (std::is_integral_v<T>) {
    return Int128{x};
  } else {
    return x;
  }
}

template <class T>
Pair<T> operator+(Pair<T> a, Pair<T> b) {
  return {a.re + b.re, a.im + b.im};
}
template <class T>
Pair<T> operator-(Pair<T> a, Pair<T> b) {
  return {a.re - b.re, a.im - b.im};
}
template <class T>
Pair<T> operator*(Pair<T> a, Pair<T> b) {
  return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}
template <class T>
Pair<T> operator*(T a, Pair<T> b) {
  return {a * b.re, a * b.im};
}

template <class T>
T saturated(Int128 r) {
  using Limits = std::numeric_limits<T>;
  if (r < Int128{Limits::min()}) return Limits::min();
  if (r > Int128{Limits::max()}) return Limits::max();
  return static_cast<T>(r);
}

// r * 2^-scale to nearest, ties to even, saturated. |r| < 2^127.
template <class T>
T scaled(Int128 r, long long scale) {
  if (r == 0) return 0;
  for (; scale < 0 && r == saturated<T>(r); ++scale) r *= 2;
  if (scale <= 0) return saturated<T>(r);
  if (scale > 127) return 0;  // less than a half
  const Int128 floor = r >> scale;
  const Uint128 rest = static_cast<Uint128>(r) - (static_cast<Uint128>(floor) << scale);
  const Uint128 half = Uint128{1} << (scale - 1);
  const bool up = rest > half || (rest == half && floor % 2 != 0);
  return saturated<T>(floor + (up ? 1 : 0));
}

// dividend / divisor * 2^-scale by the rounding mode, saturated; a zero divisor counts as infinitely small and
// positive. Magnitudes of dividend and divisor below 2^65.
template <class T>
T quotient(Int128 dividend, Int128 divisor, int scale, int mode = OrpRoundNear) {
  using Limits = std::numeric_limits<T>;
  if (dividend == 0) return 0;
  const bool negative = (dividend < 0) != (divisor < 0);
  if (divisor == 0) return negative ? Limits::min() : Limits::max();
  const Int128 n = dividend < 0 ? -dividend : dividend, d = divisor < 0 ? -divisor : divisor;
  // The magnitude is whole + rest / d, first times a power of two, then over one.
  Int128 whole = n / d, rest = n % d;
  for (; scale < 0 && whole >> 65 == 0; ++scale) {
    rest *= 2;
    whole = 2 * whole + (rest >= d ? 1 : 0);
    if (rest >= d) rest -= d;
  }
  int beyondHalf;  // sign of the fraction less one half
  if (scale > 65) {
    whole = 0;
    beyondHalf = -1;
  } else if (scale > 0) {
    const Int128 half = Int128{1} << (scale - 1), fraction = whole & (2 * half - 1);
    whole >>= scale;
    beyondHalf = fraction > half || (fraction == half && rest > 0) ? 1 : fraction == half ? 0 : -1;
  } else {
    beyondHalf = 2 * rest > d ? 1 : 2 * rest == d ? 0 : -1;
  }
  const bool up =
      mode != OrpRoundZero && (beyondHalf > 0 || (beyondHalf == 0 && (mode == OrpRoundAway || whole % 2 != 0)));
  if (up) ++whole;
  return saturated<T>(negative ? -whole : whole);
}

// factor * r * 2^-scale rounded once, for a factor of at most 53 bits; a NaN gives 0. |r| < 2^74.
template <class T>
T scaledProduct(double factor, Int128 r, int scale) {
  using Limits = std::numeric_limits<T>;
  if (std::isnan(factor) || (std::isinf(factor) && r == 0)) return 0;
  if (std::isinf(factor)) return (factor < 0) != (r < 0) ? Limits::min() : Limits::max();
  int exponent;
  const double fraction = std::frexp(factor, &exponent);
  const auto mantissa = static_cast<Int128>(std::ldexp(fraction, 53));
  return scaled<T>(mantissa * r, static_cast<long long>(scale) - exponent + 53);
}

// An exact result (or one rounded as it was computed) as an element of the destination.
template <class T, class R>
T element(R r, int scale) {
  if constexpr (Complex<T>) {
    return {element<Part<T>>(r.re, scale), element<Part<T>>(r.im, scale)};
  } else if constexpr (std::is_integral_v<T>) {
    return scaled<T>(r, scale);
  } else {
    return static_cast<T>(r);
  }
}

// Equality of results: of bits, all NaNs being one.
template <class T>
bool same(T a, T b) {
  if constexpr (Complex<T>) {
    return same(a.re, b.re) && same(a.im, b.im);
  } else if constexpr (std::is_same_v<T, float>) {
    return (a != a && b != b) || std::bit_cast<uint32_t>(a) == std::bit_cast<uint32_t>(b);
  } else if constexpr (std::is_same_v<T, double>) {
    return (a != a && b != b) || std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b);
  } else {
    return a == b;
  }
}

// For messages.
template <class T>
requires Complex<T> || std::is_arithmetic_v<T> || requires(T t) { t.byte; } || requires(T t) {
  t.shown();
}
std::string shown(T value) {
  std::ostringstream out;
  if constexpr (Complex<T>) {
    out << '(' << shown(value.re) << ", " << shown(value.im) << ')';
  } else if constexpr (std::is_floating_point_v<T>) {
    out << std::hexfloat << static_cast<double>(value);
  } else if constexpr (std::is_integral_v<T>) {
    out << +value;
  } else if constexpr (requires { value.shown(); }) {
    out << value.shown();
  } else {
    for (const auto byte : value.byte) out << +byte << ' ';
  }
  return out.str();
}

// The name of an export as a template argument. Compared by index: gcc's undefined-behaviour sanitizer takes pointer
// comparisons, and with them string_view, out of constant expressions.
template <size_t size>
struct Name {
  char text[size];
  constexpr Name(const char (&literal)[size]) {  // implicit, so that a literal is an argument
    for (size_t i = 0; i < size; ++i) text[i] = literal[i];
  }
  template <size_t partSize>
  constexpr bool hasAt(size_t at, const char (&part)[partSize]) const {
    for (size_t i = 0; i < partSize - 1; ++i)
      if (at + i >= size || text[at + i] != part[i]) return false;
    return true;
  }
  constexpr bool contains(const auto& part) const {
    for (size_t at = 0; at < size; ++at)
      if (hasAt(at, part)) return true;
    return false;
  }
  // orpsSubC_16s_I is of SubC.
  template <size_t partSize>
  constexpr bool isOf(const char (&operation)[partSize]) const {
    return hasAt(4, operation) && hasAt(3 + partSize, "_");
  }
};

}  // namespace reference
