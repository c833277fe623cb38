// Roots, exponentials, logarithms, angles and polar form as they are defined, in quadruple precision; for every export
// whose table a test includes.
//
//   #define ORPS_EXPORT(name, ...) TEST(Roots, name) { maths::check<#name>(&name); } static_assert(true)
//   #include "exports/root.inc"
#pragma once

#include <algorithm>

#include "elementwise.h"
#include "orpcore.h"
#include "support/ulp.h"

namespace maths {

using elementwise::Alias;
using elementwise::Extra;
using elementwise::First;
using elementwise::Operands;
using elementwise::Operation;
using elementwise::Random;
using orptest::Quad;
using orptest::ulps;
using reference::Complex;
using reference::Int128;
using reference::Name;
using reference::Part;
using reference::Uint128;

template <class T>
constexpr bool kInteger = std::is_integral_v<Part<T>>;

// ---- Integers, rounded once -----------------------------------------------------------------------------------------

// The integer nearest to v, ties to even, saturated; `side(n)` is the sign of |v| - (n + 1/2).
template <class T, class Side>
T nearest(bool negative, Side side) {
  using Limits = std::numeric_limits<T>;
  uint64_t low = 0, high = static_cast<uint64_t>(negative ? -Int128{Limits::min()} : Int128{Limits::max()});
  while (low < high) {
    const uint64_t n = low + (high - low) / 2;
    const int sign = side(n);
    if (sign > 0 || (sign == 0 && n % 2 != 0)) {
      low = n + 1;
    } else {
      high = n;
    }
  }
  return static_cast<T>(negative ? -Int128{low} : Int128{low});
}

inline int sign(auto a, auto b) { return a < b ? -1 : a > b ? 1 : 0; }

// The sign of x - y * 2^shift, y > 0.
inline int compare(Uint128 x, Uint128 y, long long shift) {
  if (x == 0) return -1;
  for (; shift < 0 && x >> 127 == 0; ++shift) x *= 2;
  for (; shift > 0 && y >> 127 == 0; --shift) y *= 2;
  return shift != 0 ? (shift < 0 ? 1 : -1) : sign(x, y);
}

// The root of x times 2^-scale. x < 2^64.
template <class T, int power>
T nearestRoot(Uint128 x, long long scale, bool negative = false) {
  return nearest<T>(negative, [=](uint64_t n) {
    Uint128 y = 1;
    for (int i = 0; i < power; ++i) y *= 2 * Uint128{n} + 1;
    return compare(x, y, power * (scale - 1));
  });
}

// Parts of the principal square root of a + bi are sqrt((|a + bi| ± a) / 2): compared with n + 1/2 through their
// squares, and these through theirs. `a` has the sign that stands in the root.
inline Orp16s nearestRootPart(int a, int b, long long scale, bool negative) {
  const Int128 square = Int128{a} * a + Int128{b} * b;
  const bool isZero = b == 0 && a <= 0;
  return nearest<Orp16s>(negative, [=](uint64_t n) {
    if (isZero || scale > 9) return -1;  // at most 199 * 2^-10
    if (scale < -23) return 1;           // the least part is 0.00276
    const Int128 odd = Int128{2 * n + 1} * (2 * n + 1);
    const int shift = static_cast<int>(std::max(0LL, 1 - 2 * scale));
    const Int128 bound = (scale > 0 ? odd << (2 * scale - 1) : odd) - Int128{a} * (Int128{1} << shift);
    return bound < 0 ? 1 : sign(square << (2 * shift), bound * bound);
  });
}

// v * 2^-scale. The exact values are irrational but for a few, which the difference from a tie finds: no other comes
// as near to one.
template <class T>
T nearestQuad(Quad v, long long scale) {
  const auto power = static_cast<int>(std::clamp(-scale, -1000LL, 1000LL));
  const Quad scaled = fminq(fabsq(scalbnq(v, power)), 1e20);  // beyond every type
  return nearest<T>(v < 0, [=](uint64_t n) {
    const Quad difference = scaled - (static_cast<Quad>(n) + 0.5);
    return fabsq(difference) <= 1e-30 * fmaxq(scaled, 1) ? 0 : sign(difference, Quad{0});
  });
}

// e^x * 2^-scale = e^(x - scale * ln 2); a product with the leading 80 bits of ln 2 is exact.
template <class T>
T nearestExponential(Orp64s x, long long scale) {
  static const Quad kHigh = scalbnq(static_cast<Quad>(Uint128{0xB172} << 64 | 0x17F7D1CF79ABC9E3u), -80),
                    kLow = strtoflt128("5.80298898359569058324749279075019408454665703497458e-25", nullptr);
  const Quad power = (static_cast<Quad>(x) - static_cast<Quad>(scale) * kHigh) - static_cast<Quad>(scale) * kLow;
  return nearestQuad<T>(expq(fminq(fmaxq(power, -100), 100)), 0);
}

// ---- Floating point -------------------------------------------------------------------------------------------------

// To be met within so many units in the last place; half a unit is correct rounding.
struct Near {
  Quad exact;
  double units;
  std::string shown() const {
    char text[64];
    quadmath_snprintf(text, sizeof(text), "%.25Qg", exact);
    return text;
  }
};

// Both parts, each within units of its own.
struct NearPair {
  Near re, im;
};

template <int operands>
struct Function : Operation<operands> {
  // Random patterns; around 0 and 1 at every distance; where exponentials leave the range; large and tiny numbers that
  // a second part meets again. Integers: squares, cubes and powers of ten, with neighbours, and small numbers.
  template <class T>
  T second(Random& random) const {
    if constexpr (Complex<T>) {
      const auto re = second<Part<T>>(random);
      return {re, second<Part<T>>(random)};
    } else if constexpr (std::is_integral_v<T>) {
      return integer<T>(random);
    } else {
      using Limits = std::numeric_limits<T>;
      const T modest = random.element<T>(orptest::Values::modest);
      switch (random.below(8)) {
        case 0:
          return std::ldexp(modest, Limits::max_exponent);
        case 1:
          return std::ldexp(modest, Limits::min_exponent + 1);
        case 2:
          return modest * static_cast<T>(1.1 * 0.6931) * static_cast<T>(Limits::max_exponent);
        case 3:
          return 1 + std::ldexp(modest, -random.below(Limits::digits));
        case 4:
          return std::ldexp(modest, 2 - random.below(Limits::digits));
        case 5:
          return static_cast<T>(random.below(51) - 25);
        default:
          return random.element<T>();
      }
    }
  }
  template <class T>
  T first(Random& random) const {
    return second<T>(random);
  }

  using Operation<operands>::matches;
  template <class D>
  bool matches(D got, Near want) const {
    return ulps(got, want.exact) <= want.units;
  }
  template <class D>
  bool matches(D got, NearPair want) const {
    return matches(got.re, want.re) && matches(got.im, want.im);
  }

 private:
  template <class T>
  T integer(Random& random) const {
    if (random.below(2)) return elementwise::number<T>(random);
    Int128 x = 1, factor = 10;
    const int kind = random.below(4);
    if (kind == 0) return static_cast<T>(random.below(101) - (std::is_signed_v<T> ? 50 : 0));
    if (kind == 1) factor = Int128{random.bits() >> (63 - random.below(4 * static_cast<int>(sizeof(T))))};
    if (kind == 2) factor = random.below(1300);
    for (int power = kind < 3 ? 1 + kind : random.below(20); power > 0; --power) x *= factor;
    x += random.below(4) ? 0 : random.below(3) - 1;
    return static_cast<T>(std::is_signed_v<T> && random.below(4) == 0 ? -x : x);
  }
};

struct Sqrt : Function<1> {
  OrpStatus warning(const auto& x) const {
    if constexpr (Complex<std::remove_cvref_t<decltype(x)>>)
      return StsOk;
    else
      return x < 0 ? StsDomain : StsOk;
  }
  template <class D>
  auto result(Extra extra, auto x) const {
    if constexpr (std::is_same_v<D, Orp16sc>) {
      return D{nearestRootPart(x.re, x.im, extra.scale, false), nearestRootPart(-x.re, x.im, extra.scale, x.im < 0)};
    } else if constexpr (Complex<D>) {
      return complexRoot(x.re, x.im, sizeof(D) == sizeof(Orp32fc) ? 1 : 4);
    } else if constexpr (kInteger<D>) {
      return x < 0 ? D{0} : nearestRoot<D, 2>(static_cast<Uint128>(x), extra.scale);
    } else {
      return D{std::sqrt(x)};
    }
  }

 private:
  // Infinities and NaNs as in C (ISO/IEC 9899, annex G); of (-infinity, NaN) the infinity is positive.
  static NearPair complexRoot(Quad a, Quad b, double units) {
    const Quad large = isinfq(b) ? fabsq(b) : sqrtq((hypotq(a, b) + fabsq(a)) / 2);
    const Quad small = large == 0 || isinfq(b) ? large : isinfq(a) && !isnanq(b) ? Quad{0} : fabsq(b) / large / 2;
    const bool left = signbitq(a) != 0;
    const Quad im = left ? large : small;
    return {{left ? small : large, units}, {isnanq(b) ? im : copysignq(im, b), units}};
  }
};

struct Exp : Function<1> {
  template <class D>
  auto result(Extra extra, auto x) const {
    if constexpr (kInteger<D>)
      return nearestExponential<D>(x, extra.scale);
    else
      return Near{expq(x), 1};
  }
};

struct Logarithm : Function<1> {
  OrpStatus warning(const auto& x) const { return x < 0 ? StsDomain : x == 0 ? StsSingularity : StsOk; }

 protected:
  template <class D>
  auto logarithm(Extra extra, auto x, auto function) const {
    if constexpr (kInteger<D>)
      return x > 0 ? nearestQuad<D>(function(static_cast<Quad>(x)), extra.scale) : std::numeric_limits<D>::min();
    else
      return Near{function(Quad{x}), 1};
  }
};

struct Ln : Logarithm {
  template <class D>
  auto result(Extra extra, auto x) const {
    return logarithm<D>(extra, x, logq);
  }
};

struct TenLog10 : Logarithm {
  template <class D>
  auto result(Extra extra, auto x) const {
    return logarithm<D>(extra, x, [](Quad value) { return 10 * log10q(value); });
  }
};

struct Cubrt : Function<1> {
  template <class D>
  auto result(Extra extra, auto x) const {
    if constexpr (kInteger<D>)
      return nearestRoot<D, 3>(static_cast<Uint128>(x < 0 ? -Int128{x} : Int128{x}), extra.scale, x < 0);
    else
      return Near{cbrtq(x), 1};
  }
};

struct Arctan : Function<1> {
  template <class D>
  Near result(Extra, D x) const {
    return {atanq(x), 1};
  }
};

template <int operands>
struct Magnitude : Function<operands> {
  template <class D>
  auto result(Extra extra, auto re, auto im) const {
    if constexpr (kInteger<D>)
      return nearestRoot<D, 2>(static_cast<Uint128>(Int128{re} * re + Int128{im} * im), extra.scale);
    else if constexpr (kInteger<decltype(re)>)
      return std::sqrt(static_cast<D>(Int128{re} * re + Int128{im} * im));  // both steps rounded
    else
      return Near{hypotq(re, im), 1};
  }
  template <class D>
  auto result(Extra extra, auto z) const {
    return result<D>(extra, z.re, z.im);
  }
};

template <int operands>
struct Phase : Function<operands> {
  template <class D>
  auto result(Extra extra, auto re, auto im) const {
    const Quad angle = atan2q(static_cast<Quad>(im), static_cast<Quad>(re));
    if constexpr (kInteger<D>)
      return nearestQuad<D>(angle, extra.scale);
    else
      return Near{angle, 1};
  }
  template <class D>
  auto result(Extra extra, auto z) const {
    return result<D>(extra, z.re, z.im);
  }
};

enum class Axis { re, im, both };

template <Axis axis>
struct PolarToCart : Function<2> {
  template <class D>
  auto result(Extra, auto magnitude, auto phase) const {
    const Near re{magnitude * cosq(phase), 2}, im{magnitude * sinq(phase), 2};
    if constexpr (axis == Axis::both)
      return NearPair{re, im};
    else
      return axis == Axis::re ? re : im;
  }
};

// ---- One export -----------------------------------------------------------------------------------------------------

// Every special number (or pair of them) in calls of its own, and every two of them in one call.
template <class Op, class F>
void checkSpecials(const F& form, const Op& op) {
  using B = typename F::B;
  using T = Part<B>;
  using Limits = std::numeric_limits<T>;
  const std::vector<T> parts = [] {
    if constexpr (kInteger<T>) {
      return std::vector<T>{0, 1, static_cast<T>(-1), Limits::min(), Limits::max()};
    } else {
      std::vector<T> all = {0, 1, Limits::denorm_min(), Limits::min(), Limits::max(), 1 + Limits::epsilon()};
      for (const T x : {T{2}, T{0.5}, Limits::infinity(), Limits::quiet_NaN()}) all.push_back(x);
      for (size_t i = 0, count = all.size(); i < count; ++i) all.push_back(-all[i]);
      return all;
    }
  }();
  const std::vector<typename F::D> target(1), target2(2);
  const auto run = [&](std::vector<typename F::A> a, std::vector<B> b) {
    for (const Extra& extra : {Extra{}, Extra{.scale = 1}, Extra{.scale = -3}}) {
      if (testing::Test::HasFailure()) return;
      elementwise::checkCall(form, op, a, b, b.size() == 1 ? target : target2, extra, Alias::none);
      if (form.extras == 0) break;
    }
  };
  for (const T x : parts) {
    for (const T y : parts) {
      if constexpr (Complex<B>) {
        run({{x, y}}, {{x, y}});
      } else {
        run({x}, {y});
        run({y, x}, {x, y});
      }
    }
  }
}

// A single warning anywhere is returned; what stands behind the end warns of nothing.
template <class Op, class F>
void checkWarnings(const F& form, const Op& op) {
  using T = typename F::B;
  Random random;
  const std::vector<T> bad = {0, static_cast<T>(-1)};
  for (const int len : {1, 2, 3, 5, 7, 9, 15, 18, 31, 37, 63, 70, 130, 300, 8229}) {
    const auto count = static_cast<size_t>(len);
    std::vector<T> values(count, T{1});
    const std::vector<typename F::D> target(count);
    const auto run = [&] { elementwise::checkCall(form, op, values, values, target, {}, Alias::none); };
    run();
    for (const size_t at : {size_t{0}, static_cast<size_t>(random.below(len)), count - 1}) {
      for (const T value : bad) {
        values[at] = value;
        run();
      }
      values[at] = 1;
    }
  }
}

// The NaN that stands for the root of a negative number has fixed bits in single precision.
template <class F>
void checkDomainNaN(const F& form) {
  using Limits = std::numeric_limits<Orp32f>;
  for (const Orp32f x : {-1.0F, -Limits::denorm_min(), -Limits::infinity()}) {
    Orp32f root = x;
    EXPECT_EQ(StsDomain, form.call(nullptr, &x, &root, 1, {}));
    EXPECT_EQ(0xFFC00000u, std::bit_cast<uint32_t>(root)) << x;
  }
}

// Every number of 8 or 16 bits, and the largest results that integers have room for.
template <class Op, class F>
void checkAllNumbers(const F& form, const Op& op) {
  using T = typename F::B;
  using Limits = std::numeric_limits<T>;
  std::vector<T> all;
  for (int x = Limits::min(); x <= Limits::max(); ++x) all.push_back(static_cast<T>(x));
  const std::vector<typename F::D> target(all.size());
  for (const int scale : {-15, -11, -8, -4, -2, -1, 0, 1, 2, 3, 5, 8, 9, 16, 1000, 47262})
    if (!testing::Test::HasFailure()) elementwise::checkCall(form, op, all, all, target, {.scale = scale}, Alias::none);
}

// Exponentials that a scale factor of any size brings into the range of the type.
template <class F>
void checkHugeScales(const F& form) {
  using T = typename F::B;
  for (const int scale :
       {20, 100, 1000, 12345, 1 << 20, (1 << 30) + 1, INT_MAX, -20, -1001, -47000, -(1 << 30), INT_MIN + 1, INT_MIN}) {
    std::vector<T> numbers;
    const auto one = static_cast<long long>(static_cast<long double>(scale) * 0.693147180559945309417L);
    for (int i = -6; i < 30; ++i) numbers.push_back(reference::saturated<T>(Int128{one + i}));
    const std::vector<typename F::D> target(numbers.size());
    elementwise::checkCall(form, Exp{}, numbers, numbers, target, {.scale = scale}, Alias::none);
  }
}

template <Name name, class Op, class F>
void checkForm(const F& form, const Op& op) {
  using B = typename F::B;
  constexpr bool oneNumber = Op::kOperands == 1 && !Complex<B>;
  checkSpecials(form, op);
  if constexpr (oneNumber && requires { op.warning(B{}); }) checkWarnings(form, op);
  if constexpr (oneNumber && std::is_integral_v<B> && sizeof(B) <= 2)
    if constexpr (name.contains("_Sfs")) checkAllNumbers(form, op);
  if constexpr (name.isOf("Exp") && kInteger<B>) checkHugeScales(form);
  if constexpr (name.isOf("Sqrt") && std::is_same_v<B, Orp32f>) checkDomainNaN(form);
  elementwise::checkForm(form, op);
  if constexpr (name.isOf("Sqrt") || name.isOf("Magnitude")) {
    orpSetNumThreads(2);
    Random random;
    for (const int threshold : {64, 256, 512, 1024, 2048, 4096})
      for (const auto& length : orptest::lengthsAroundThreshold(threshold))
        if (!testing::Test::HasFailure()) elementwise::checkRandom(form, op, random, length.value, {}, Alias::none, 0);
    orpSetNumThreads(1);
  }
}

template <Name name>
void check(auto* exported) {
  constexpr bool isComplex = name.contains("sc") || name.contains("fc");
  constexpr int operands = isComplex && !name.isOf("PolarToCart") ? 1 : 2;
  const auto run = [&](auto op) {
    checkForm<name>(elementwise::formOf(Operands<decltype(op)::kOperands>{}, exported), op);
  };
  const auto one = [&](auto written, auto op) {
    checkForm<name>(elementwise::formOfOne<written()>(Operands<decltype(op)::kOperands>{}, exported), op);
  };
  constexpr std::integral_constant<int, 0> first;
  constexpr std::integral_constant<int, 1> second;
  if constexpr (name.isOf("Sqrt")) {
    run(Sqrt{});
  } else if constexpr (name.isOf("Exp")) {
    run(Exp{});
  } else if constexpr (name.isOf("Ln")) {
    run(Ln{});
  } else if constexpr (name.isOf("10Log10")) {
    run(TenLog10{});
  } else if constexpr (name.isOf("Cubrt")) {
    run(Cubrt{});
  } else if constexpr (name.isOf("Arctan")) {
    run(Arctan{});
  } else if constexpr (name.isOf("Magnitude")) {
    run(Magnitude<operands>{});
  } else if constexpr (name.isOf("Phase")) {
    run(Phase<operands>{});
  } else if constexpr (name.isOf("CartToPolar")) {
    one(first, Magnitude<operands>{});
    one(second, Phase<operands>{});
  } else if constexpr (name.isOf("PolarToCart") && isComplex) {
    run(PolarToCart<Axis::both>{});
  } else {
    static_assert(name.isOf("PolarToCart"), "an export that this file knows nothing about");
    one(first, PolarToCart<Axis::re>{});
    one(second, PolarToCart<Axis::im>{});
  }
}

}  // namespace maths
