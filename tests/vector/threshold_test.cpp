// Threshold in all its groups.
#include <algorithm>
#include <tuple>

#include "elementwise.h"
#include "orpcore.h"
#include "support/ulp.h"

using elementwise::Alias;
using elementwise::Extra;
using elementwise::First;
using elementwise::Operation;
using elementwise::Random;
using elementwise::Target;
using reference::Complex;
using reference::Int128;
using reference::Part;

namespace {

template <class T>
constexpr T kInfinity = std::numeric_limits<T>::infinity();
template <class T>
constexpr T kNaN = std::numeric_limits<T>::quiet_NaN();

// Everything that a call is given beside its vectors.
template <class T>
struct Levels {
  Part<T> level;
  T value;
  Part<T> above;
  T valueAbove;
  int relOp;

  std::string shown() const {
    return "level " + reference::shown(level) + ", value " + reference::shown(value) + ", above " +
           reference::shown(above) + ", value " + reference::shown(valueAbove) + ", relation " + std::to_string(relOp);
  }
};

// Small integers at a few scales, so that elements meet the level, exactly and nearly, and lie far from it.
template <class T>
T number(Random& random) {
  if (random.below(3) == 0) return elementwise::number<T>(random);
  const int small = random.below(4) == 0 ? 5 * (random.below(7) - 3) : random.below(13) - 6;
  if constexpr (std::is_integral_v<T>) {
    return static_cast<T>(random.below(8) == 0 ? 5000 * small : small);
  } else {
    using Limits = std::numeric_limits<T>;
    const int exponents[] = {0, 0, 0, 0, Limits::max_exponent - 5, Limits::min_exponent - Limits::digits};
    return std::ldexp(static_cast<T>(small), exponents[random.below(6)]);
  }
}
template <class T>
T operand(Random& random) {
  if constexpr (Complex<T>) {
    const auto re = number<Part<T>>(random);
    return {re, random.below(4) == 0 ? Part<T>{0} : number<Part<T>>(random)};
  } else {
    return number<T>(random);
  }
}

// A complex result in floats: whether the element may stay, and what it may become within some units in the last place.
template <class D>
struct Outcome {
  bool mayStay, mayChange;
  D element;
  long double re, im;
  int units;

  bool accepts(D got) const {
    if (mayStay && reference::same(got, element)) return true;
    return mayChange && orptest::ulps(got.re, re) <= units && orptest::ulps(got.im, im) <= units;
  }
  std::string shown() const {
    std::ostringstream out;
    out << std::hexfloat << (mayStay ? "the same" : "") << (mayStay && mayChange ? " or " : "");
    if (mayChange) out << '(' << re << ", " << im << ')';
    return out.str();
  }
};

// Rounding may decide of elements whose magnitude is the level's but for some units, in double precision.
template <class T>
auto outcome(T z, Part<T> level, bool below) {
  const long double magnitude = std::hypot(static_cast<long double>(z.re), static_cast<long double>(z.im));
  const long double distance = below ? level - magnitude : magnitude - level;
  const bool isNear = std::fabs(distance) <= magnitude * 0x1p-51L && magnitude != level;
  return Outcome<T>{isNear || !(distance > 0), isNear || distance > 0, z, 0, 0, 0};
}

template <class T>
constexpr int kUnits = sizeof(Part<T>) == 4 ? 1 : 4;

// The integer nearest to level * part / sqrt(square).
inline Orp16s scaledPart(int part, Int128 level, Int128 square) {
  const Int128 twice = 2 * level * std::abs(part);
  Orp16s n = 0;
  while (twice * twice > (2 * Int128{n} + 1) * (2 * Int128{n} + 1) * square) ++n;
  return static_cast<Orp16s>(part < 0 ? -n : n);
}

template <class T>
auto limited(T x, Part<T> level, bool below) {
  if constexpr (!Complex<T>) {
    return (below ? x < level : x > level) ? level : x;
  } else if constexpr (std::is_integral_v<Part<T>>) {
    const Int128 square = Int128{x.re} * x.re + Int128{x.im} * x.im, most = std::max<Int128>(level, 0);
    if (below ? square >= most * most : square <= most * most) return x;
    if (square == 0) return T{level, 0};
    return T{scaledPart(x.re, most, square), scaledPart(x.im, most, square)};
  } else {
    level = level <= 0 ? 0 : level;
    auto result = outcome(x, level, below);
    long double re = x.re, im = x.im;
    if (re == 0 && im == 0) re = 1, im = 0;
    if (std::isinf(re) || std::isinf(im)) {
      re = std::copysign(std::isinf(re) ? 1 : 0, re);
      im = std::copysign(std::isinf(im) ? 1 : 0, im);
    }
    const long double magnitude = std::hypot(re, im);
    result.re = re == 0 ? re : re / magnitude * level;
    result.im = im == 0 ? im : im / magnitude * level;
    result.units = kUnits<T>;
    return result;
  }
}

template <class T>
auto replaced(T x, Part<T> level, T value, bool below) {
  if constexpr (!Complex<T>) {
    return (below ? x < level : x > level) ? value : x;
  } else if constexpr (std::is_integral_v<Part<T>>) {
    const Int128 square = Int128{x.re} * x.re + Int128{x.im} * x.im, most = std::max<Int128>(level, 0);
    return (below ? square < most * most : square > most * most) ? value : x;
  } else {
    auto result = outcome(x, level <= 0 ? 0 : level, below);
    result.re = value.re;
    result.im = value.im;
    return result;
  }
}

struct Threshold : Operation<2> {
  template <class L>
  L first(Random& random) const {
    using T = decltype(L::value);
    const int relations[] = {0, 4, 0, 4, 0, 4, 1, -1, 5};
    L levels{number<Part<T>>(random), operand<T>(random), number<Part<T>>(random), operand<T>(random),
             relations[random.below(9)]};
    const bool mayNegate = levels.level > std::numeric_limits<Part<T>>::lowest();
    if (levels.level < 0 && mayNegate && random.below(4) != 0) levels.level = static_cast<Part<T>>(-levels.level);
    return levels;
  }
  template <class T>
  T second(Random& random) const {
    return operand<T>(random);
  }
  using Operation<2>::matches;
  template <class D>
  bool matches(D got, const Outcome<D>& want) const {
    return want.accepts(got);
  }
};

struct Generic : Threshold {
  static auto arguments(const auto& levels) { return std::tuple(levels.level, levels.relOp); }
  OrpStatus error(const auto& levels) const { return levels.relOp == 0 || levels.relOp == 4 ? StsOk : StsBadArg; }
  template <class D>
  auto result(Extra, const auto& levels, D x) const {
    return limited(x, levels.level, levels.relOp == 0);
  }
};

template <bool below>
struct Limited : Threshold {
  static auto arguments(const auto& levels) { return std::tuple(levels.level); }
  template <class D>
  auto result(Extra, const auto& levels, D x) const {
    return limited(x, levels.level, below);
  }
};

template <bool below>
struct Replaced : Threshold {
  static auto arguments(const auto& levels) { return std::tuple(levels.level, levels.value); }
  template <class D>
  auto result(Extra, const auto& levels, D x) const {
    return replaced(x, levels.level, levels.value, below);
  }
};

struct ReplacedBoth : Threshold {
  static auto arguments(const auto& levels) {
    return std::tuple(levels.level, levels.value, levels.above, levels.valueAbove);
  }
  template <class D>
  D result(Extra, const auto& levels, D x) const {
    return x < levels.level ? levels.value : x > levels.above ? levels.valueAbove : x;
  }
};

template <bool below>
struct AbsLimited : Threshold {
  static auto arguments(const auto& levels) { return std::tuple(levels.level); }
  template <class D>
  D result(Extra, const auto& levels, D x) const {
    const D level = levels.level <= 0 ? 0 : levels.level;
    if constexpr (std::is_floating_point_v<D>) {
      return (below ? std::fabs(x) < level : std::fabs(x) > level) ? std::copysign(level, x) : x;
    } else {
      const Int128 magnitude = x < 0 ? -Int128{x} : Int128{x};
      return static_cast<D>((below ? magnitude < level : magnitude > level) ? (x < 0 ? -level : level) : x);
    }
  }
};

struct Inverse : Threshold {
  static auto arguments(const auto& levels) { return std::tuple(levels.level); }
  OrpStatus error(const auto& levels) const { return levels.level < 0 ? StsBadThreshold : StsOk; }
  template <class T>
  OrpStatus warning(const Levels<T>& levels, T x) const {
    if (levels.level > 0) return StsOk;
    if constexpr (Complex<T>) {
      return x.re == 0 && x.im == 0 ? StsDivByZero : StsOk;
    } else {
      return x == 0 ? StsDivByZero : StsOk;
    }
  }
  template <class D>
  auto result(Extra, const auto& levels, D x) const {
    const Part<D> level = levels.level > 0 ? levels.level : 0;
    if constexpr (!Complex<D>) {
      const D magnitude = std::fabs(x);
      return std::copysign(1 / (magnitude < level ? level : magnitude), x);
    } else {
      const long double re = x.re, im = x.im, magnitude = std::hypot(re, im);
      Outcome<D> result{false, true, x, kNaN<long double>, kNaN<long double>, kUnits<D>};
      if (std::isnan(re) || std::isnan(im)) return result;
      if (magnitude == 0) {
        result.re = level > 0 ? 1.0L / level : std::copysign(kInfinity<long double>, re);
        result.im = 0;
      } else if (std::isinf(magnitude) || std::isinf(level)) {
        result.re = std::copysign(0.0L, re);
        result.im = std::copysign(0.0L, -im);
      } else {
        const long double square = magnitude * std::max<long double>(magnitude, level);
        result.re = re / square;
        result.im = -im / square;
      }
      return result;
    }
  }
};

template <reference::Name name>
constexpr auto operationOf() {
  if constexpr (name.contains("_LTValGTVal_"))
    return ReplacedBoth{};
  else if constexpr (name.contains("_LTVal_") || name.contains("_GTVal_"))
    return Replaced<name.contains("_LTVal_")>{};
  else if constexpr (name.contains("_LTAbs_") || name.contains("_GTAbs_"))
    return AbsLimited<name.contains("_LTAbs_")>{};
  else if constexpr (name.contains("_LTInv_"))
    return Inverse{};
  else if constexpr (name.contains("_LT_") || name.contains("_GT_"))
    return Limited<name.contains("_LT_")>{};
  else
    return Generic{};
}

template <class Op, class T, class... X>
auto formOf(Op, OrpStatus (*f)(const T*, T*, int, X...)) {
  return elementwise::Form<Levels<T>, T, T, First::constant, Target::written>{
      0, [f](auto levels, auto src, auto dst, int len, Extra) {
        return std::apply([&](auto... x) { return f(src, dst, len, x...); }, Op::arguments(*levels));
      }};
}
template <class Op, class T, class... X>
auto formOf(Op, OrpStatus (*f)(T*, int, X...)) {
  return elementwise::Form<Levels<T>, T, T, First::constant, Target::second>{
      0, [f](auto levels, auto, auto dst, int len, Extra) {
        return std::apply([&](auto... x) { return f(dst, len, x...); }, Op::arguments(*levels));
      }};
}

// Special elements at special levels: NaN, infinities, zeros of both signs, equality, the ends of the range.
template <class Op, class F>
void checkSpecials(const F& form, const Op& op) {
  using T = typename F::B;
  using P = Part<T>;
  using Limits = std::numeric_limits<P>;
  std::vector<P> parts = {0, 1, -1, 3, -4, 4, 5, -5, Limits::max(), static_cast<P>(-Limits::max()), Limits::lowest()};
  if constexpr (std::is_floating_point_v<P>)
    for (const P special : {-P{0}, kInfinity<P>, -kInfinity<P>, kNaN<P>, -kNaN<P>, Limits::min(), -Limits::min(),
                            Limits::denorm_min(), -Limits::denorm_min(), 1 + Limits::epsilon(), Limits::max() / 2})
      parts.push_back(special);
  std::vector<T> elements;
  for (const P re : parts) {
    if constexpr (Complex<T>) {
      for (const P im : parts) elements.push_back({re, im});
    } else {
      elements.push_back(re);
    }
  }
  for (const P level : parts)
    for (const P above : {static_cast<P>(-2), static_cast<P>(4)})
      for (const int relOp : {0, 4})
        elementwise::checkCall(form, op, {{level, elements[3], above, elements[6], relOp}}, elements, elements, {},
                               Alias::none);
}

template <reference::Name name>
void checkThreshold(auto* exported) {
  const auto operation = operationOf<name>();
  const auto form = formOf(operation, exported);
  checkSpecials(form, operation);
  elementwise::checkForm(form, operation);
  Random random(1);  // many levels
  for (int repeat = 0; repeat < 300 && !testing::Test::HasFailure(); ++repeat)
    elementwise::checkRandom(form, operation, random, 1 + random.below(100), {}, Alias::none, 0);
}

}  // namespace

#define ORPS_EXPORT(name, ...)                            \
  TEST(Threshold, name) { checkThreshold<#name>(&name); } \
  static_assert(true)
#include "exports/threshold.inc"

// Quotients level * re / |z| so close to a tie that single precision does not tell on which side they lie.
TEST(Threshold, complexIntegersBesideTies) {
  const Limited<false> operation;
  const auto form = formOf(operation, &orpsThreshold_GT_16sc);
  size_t found = 0;
  for (int re = 20001; re < 20400; ++re) {
    for (int im = 20000; im < 20400; ++im) {
      const long double magnitude = std::hypot(static_cast<long double>(re), static_cast<long double>(im));
      for (int level = 20000; level < 20050; ++level) {
        const long double quotient = level * (re / magnitude), fraction = quotient - std::floor(quotient);
        if (std::fabs(fraction - 0.5L) > 2e-7L) continue;
        const auto l = static_cast<Orp16s>(level);
        const Orp16sc z{static_cast<Orp16s>(re), static_cast<Orp16s>(im)};
        elementwise::checkCall(form, operation, {{l, {}, 0, {}, 0}}, {z}, {z}, {}, Alias::none);
        ++found;
      }
    }
  }
  EXPECT_GT(found, 1u);
}

TEST(Threshold, examples) {
  const Orp16s source[] = {3, 10, 12};
  Orp16s limited[3];
  ASSERT_EQ(StsOk, orpsThreshold_16s(source, limited, 3, 10, 0));
  EXPECT_EQ((std::vector<Orp16s>{10, 10, 12}), std::vector(limited, limited + 3));
  ASSERT_EQ(StsOk, orpsThreshold_16s(source, limited, 3, 10, 4));
  EXPECT_EQ((std::vector<Orp16s>{3, 10, 10}), std::vector(limited, limited + 3));
  ASSERT_EQ(StsOk, orpsThreshold_LTValGTVal_16s(source, limited, 3, 11, -1, 2, -2));  // the lower level first
  EXPECT_EQ((std::vector<Orp16s>{-1, -1, -2}), std::vector(limited, limited + 3));

  const Orp32f divisors[] = {1, -1, 4, -0.0F};
  Orp32f inverses[4];
  ASSERT_EQ(StsOk, orpsThreshold_LTInv_32f(divisors, inverses, 3, 2));
  EXPECT_EQ((std::vector<Orp32f>{0.5F, -0.5F, 0.25F}), std::vector(inverses, inverses + 3));
  ASSERT_EQ(StsDivByZero, orpsThreshold_LTInv_32f(divisors, inverses, 4, 0));
  EXPECT_EQ(-kInfinity<Orp32f>, inverses[3]);

  const Orp32fc numbers[] = {{3, -4}, {0, 0}, {0, 12}};
  Orp32fc raised[3];
  ASSERT_EQ(StsOk, orpsThreshold_LT_32fc(numbers, raised, 3, 10));
  EXPECT_TRUE(reference::same(raised[0], {6, -8}) && reference::same(raised[1], {10, 0}));
  EXPECT_TRUE(reference::same(raised[2], {0, 12}));
}
