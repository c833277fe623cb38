// Div, Div_Round, DivC, DivCRev and Normalize in all their forms.
#include "elementwise.h"
#include "orpcore.h"

using elementwise::Alias;
using elementwise::Extra;
using elementwise::First;
using elementwise::Operands;
using elementwise::Operation;
using elementwise::Random;
using elementwise::Target;
using reference::Complex;
using reference::exact;
using reference::Int128;
using reference::Pair;
using reference::Part;

namespace {

template <class T>
bool isZero(T x) {
  if constexpr (Complex<T>) {
    return x.re == 0 && x.im == 0;
  } else {
    return x == 0;
  }
}

template <class T>
T floatQuotient(T dividend, T divisor) {
  if (divisor != 0) return dividend / divisor;  // a NaN is not zero
  if (dividend == 0 || std::isnan(dividend)) return std::numeric_limits<T>::quiet_NaN();
  return std::copysign(std::numeric_limits<T>::infinity(), dividend);
}

// A complex quotient of floats, to be met within some units in the last place of its magnitude.
struct Near {
  long double re, im;
  int units;
  bool finite;  // false: the dividend was not, and so may neither part be

  template <class D>
  bool acceptsPart(D got, long double want) const {
    using Limits = std::numeric_limits<D>;
    if (!finite) return !std::isfinite(got);
    if (std::isnan(want) || std::isinf(want)) return std::isnan(want) ? std::isnan(got) : got == want;
    const long double magnitude = std::hypot(re, im);
    const int least = Limits::min_exponent - 1;
    const int exponent = magnitude > 0 ? std::max(std::ilogb(magnitude), least) : least;
    const long double tolerance = units * std::ldexp(1.0L, exponent - Limits::digits + 1);
    if (std::isinf(got)) return (got > 0 ? want : -want) + tolerance > Limits::max();
    return std::fabs(got - want) <= tolerance;
  }
};

// Twice the exponent range of the operands and eleven bits more: nothing overflows, nothing is lost that would count.
template <class D>
Near complexQuotient(D dividend, D divisor) {
  constexpr auto kNaN = std::numeric_limits<long double>::quiet_NaN();
  const int units = std::is_same_v<D, Orp32fc> ? 1 : 4;
  if (isZero(divisor)) return {floatQuotient(dividend.re, {}), floatQuotient(dividend.im, {}), units, true};
  if (!std::isfinite(divisor.re) || !std::isfinite(divisor.im)) return {kNaN, kNaN, units, true};
  const long double c = divisor.re, d = divisor.im, square = c * c + d * d;
  const auto product = Pair<long double>{dividend.re, dividend.im} * Pair<long double>{c, -d};
  const bool finite = std::isfinite(dividend.re) && std::isfinite(dividend.im);
  return {product.re / square, product.im / square, units, finite};
}

struct Quotient : Operation<2> {
  // Small integers, also times powers of two, which make ties; complex numbers with parts of about the same magnitude.
  template <class T>
  T first(Random& random) const {
    using Number = Part<T>;
    if (random.below(2)) return elementwise::operand<T>(random);
    const int range = std::is_integral_v<Number> ? 8 * static_cast<int>(sizeof(Number))
                                                 : 2 * std::numeric_limits<Number>::max_exponent;
    const int power = random.below(4) ? 0 : random.below(range);
    const auto number = [&] {
      if constexpr (std::is_integral_v<Number>) {
        return static_cast<Number>(Orp64s{random.below(51) - 25} << power);
      } else if constexpr (Complex<T>) {
        return std::ldexp(random.element<Number>(orptest::Values::modest), power == 0 ? 0 : power - range / 2);
      } else {
        return static_cast<Number>(random.below(51) - 25);
      }
    };
    if constexpr (Complex<T>) {
      const auto re = number();
      return {re, number()};
    } else {
      return number();
    }
  }
  template <class T>
  T second(Random& random) const {
    return first<T>(random);
  }
  OrpStatus error(const auto& a) const { return isZero(a) ? StsDivByZeroErr : StsOk; }
  OrpStatus warning(const auto& a, const auto&) const { return isZero(a) ? StsDivByZero : StsOk; }

  template <class D>
  auto result(Extra extra, auto a, auto b) const {
    if constexpr (std::is_floating_point_v<D>) {
      return floatQuotient(b, a);
    } else if constexpr (!Complex<D>) {
      return reference::quotient<D>(b, a, extra.scale, extra.mode);
    } else if constexpr (std::is_integral_v<Part<D>>) {
      auto numerator = exact(b);
      Int128 denominator = 0;
      if (!isZero(a)) {
        numerator = exact(b) * Pair<Int128>{a.re, -Int128{a.im}};
        denominator = Int128{a.re} * a.re + Int128{a.im} * a.im;
      }
      return D{reference::quotient<Part<D>>(numerator.re, denominator, extra.scale),
               reference::quotient<Part<D>>(numerator.im, denominator, extra.scale)};
    } else {
      return complexQuotient(b, a);
    }
  }

  using Operation<2>::matches;
  template <class D>
  bool matches(D got, Near want) const {
    return want.acceptsPart(got.re, want.re) && want.acceptsPart(got.im, want.im);
  }
};

// The constant is the dividend.
struct ReversedQuotient : Quotient {
  OrpStatus error(const auto&) const { return StsOk; }
  OrpStatus warning(const auto& a, const auto& b) const { return Quotient::warning(b, a); }
  template <class D>
  auto result(Extra extra, auto a, auto b) const {
    return Quotient::result<D>(extra, b, a);
  }
};

// (x - shift) / divisor. The two constants are one operand here.
template <class T, class Divisor>
struct Normal {
  T shift;
  Divisor divisor;
};

struct Normalized : Quotient {
  template <class N>
  N first(Random& random) const {
    return {Quotient::first<decltype(N::shift)>(random), Quotient::first<decltype(N::divisor)>(random)};
  }
  OrpStatus error(const auto& constants) const { return Quotient::error(constants.divisor); }
  OrpStatus warning(const auto&, const auto&) const { return StsOk; }
  template <class D>
  D result(Extra extra, auto constants, auto x) const {
    const auto difference = exact(x) - exact(constants.shift);
    const auto quotient = [&](auto dividend) {
      if constexpr (std::is_integral_v<Part<D>>) {
        return reference::quotient<Part<D>>(dividend, constants.divisor, extra.scale);
      } else {
        return dividend / constants.divisor;
      }
    };
    if constexpr (Complex<D>) {
      return {quotient(difference.re), quotient(difference.im)};
    } else {
      return quotient(difference);
    }
  }
};

template <reference::Name name>
constexpr auto operationOf() {
  if constexpr (name.isOf("Div") || name.isOf("DivC"))
    return Quotient{};
  else if constexpr (name.isOf("DivCRev"))
    return ReversedQuotient{};
  else if constexpr (name.isOf("Normalize"))
    return Normalized{};
}

template <class Op, class F>
auto formOf(Op, F* exported) {
  return elementwise::formOf(Operands<2>{}, exported);
}
template <class T, class Divisor, class... X>
auto formOf(Normalized, OrpStatus (*f)(const T*, T*, int, T, Divisor, X...)) {
  return elementwise::Form<Normal<T, Divisor>, T, T, First::constant, Target::written>{
      sizeof...(X), [f](auto a, auto b, auto dst, int len, Extra x) {
        return elementwise::callWith(f, x, b, dst, len, a->shift, a->divisor);
      }};
}

// A zero divisor anywhere warns, even far down in the part of the second thread; zeros behind the end do not.
template <class F>
void checkZeroWatch(const F& form) {
  const auto one = [] {
    typename F::A value{};
    if constexpr (Complex<typename F::A>)
      value.im = 1;
    else
      value = 1;
    return value;
  }();
  std::vector<typename F::A> divisors(8300);
  const std::vector<typename F::B> dividends(divisors.size());
  Random random;
  for (const int len : {1, 2, 3, 5, 7, 9, 15, 18, 31, 37, 63, 70, 130, 300, 8229}) {
    const auto count = static_cast<size_t>(len);
    std::vector<typename F::D> results(divisors.size());
    std::fill_n(divisors.begin(), count, one);
    ASSERT_EQ(StsOk, form.call(divisors.data(), dividends.data(), results.data(), len, {})) << len;
    for (const size_t at : {size_t{0}, static_cast<size_t>(random.below(len)), count - 1}) {
      divisors[at] = {};
      ASSERT_EQ(StsDivByZero, form.call(divisors.data(), dividends.data(), results.data(), len, {}))
          << at << " of " << len;
      divisors[at] = one;
    }
    std::fill_n(divisors.begin(), count, typename F::A{});
  }
}

// Pointers and length come before the constant and the rounding mode, which change nothing when they are refused.
template <class F>
void checkRefusal(const F& form, Extra extra, OrpStatus refusal) {
  const std::vector<typename F::A> zeros(3);
  const std::vector<typename F::B> source(3);
  const auto before = elementwise::Random{}.vector<typename F::D>(3);
  auto results = before;
  EXPECT_EQ(StsNullPtr, form.call(zeros.data(), source.data(), nullptr, 0, extra));
  EXPECT_EQ(StsBadSize, form.call(zeros.data(), source.data(), results.data(), 0, extra));
  EXPECT_EQ(StsBadSize, form.call(zeros.data(), source.data(), results.data(), INT_MIN, extra));
  EXPECT_EQ(refusal, form.call(zeros.data(), source.data(), results.data(), 3, extra));
  EXPECT_TRUE(elementwise::sameBytes(before, results));
}

// Every combination of special parts in both operands of a complex quotient.
template <class Op, class F>
void checkSpecialParts(const F& form, const Op& op) {
  using T = typename F::B;
  using Limits = std::numeric_limits<Part<T>>;
  std::vector<T> specials;
  for (const auto re : {Part<T>{0}, -Part<T>{0}, Part<T>{1}, -Limits::infinity(), Limits::quiet_NaN(), Limits::max(),
                        Limits::min(), -Limits::denorm_min()})
    for (const auto im : {Part<T>{0}, -Part<T>{0}, Part<T>{-3}, Limits::infinity(), Limits::quiet_NaN(),
                          Limits::lowest(), Limits::denorm_min()})
      specials.push_back({re, im});
  for (const T& divisor : specials)
    elementwise::checkCall(form, op, std::vector<T>(specials.size(), divisor), specials, specials, {}, Alias::none);
}

// Quotients times 2^k just beside a tie, at a distance of 1 / (2 * divisor), where a quotient rounded before would land
// on it; and the divisors that leave most of the dividend.
template <class Op, class F>
void checkNearTies(const F& form, const Op& op) {
  using T = typename F::A;
  Random random;
  for (int k = 0; k < 8 * static_cast<int>(sizeof(T)); ++k) {
    std::vector<T> divisors, dividends;
    for (int repeat = 0; repeat < 20; ++repeat) {
      const auto divisor = static_cast<T>(std::numeric_limits<T>::max() - (random.bits() % 50 << 1));  // odd
      for (const int side : {-1, 1}) {
        Int128 dividend = (Int128{divisor} + side) / 2;  // of 2^0; halved modulo the divisor it becomes that of 2^k
        for (int i = 0; i < k; ++i) dividend = (dividend + (dividend % 2 == 0 ? 0 : divisor)) / 2;
        divisors.push_back(divisor);
        dividends.push_back(static_cast<T>(std::is_signed_v<T> && repeat % 2 ? -dividend : dividend));
      }
    }
    for (const int divisor : {1, 2, 3, -1}) {
      divisors.push_back(static_cast<T>(divisor));
      dividends.push_back(static_cast<T>(std::numeric_limits<T>::max() - k));
    }
    const std::vector<typename F::D> target(1);
    for (size_t i = 0; i < divisors.size(); ++i)
      for (const int scale : {-k, k})
        elementwise::checkCall(form, op, {divisors[i]}, {dividends[i]}, target, {.scale = scale}, Alias::none);
    if (testing::Test::HasFailure()) return;
  }
}

template <reference::Name name>
void checkDivision(auto* exported) {
  const auto operation = operationOf<name>();
  const auto form = formOf(operation, exported);
  using F = std::remove_const_t<decltype(form)>;
  if constexpr (Complex<typename F::A> && std::is_floating_point_v<Part<typename F::A>>)
    checkSpecialParts(form, operation);
  if constexpr (name.contains("orpsDiv") && name.contains("Sfs") && !Complex<typename F::A>)
    checkNearTies(form, operation);
  if constexpr (name.isOf("Div") && std::is_same_v<typename F::A, Orp8u>) elementwise::checkAllPairs(form, operation);
  elementwise::checkForm(form, operation);

  orpSetNumThreads(2);
  Random random;
  for (const int threshold : {256, 512, 1024, 2048, 4096})
    for (const auto& length : orptest::lengthsAroundThreshold(threshold))
      if (!testing::Test::HasFailure())
        elementwise::checkRandom(form, operation, random, length.value, {}, Alias::none, 0);
  if constexpr (name.isOf("Div")) checkZeroWatch(form);
  orpSetNumThreads(1);

  if constexpr (name.isOf("DivC") || name.isOf("Normalize")) checkRefusal(form, {}, StsDivByZeroErr);
  if constexpr (name.contains("Round"))
    for (const int mode : {-1, 3, INT_MIN, INT_MAX}) checkRefusal(form, {.mode = mode}, StsBadRoundMode);
}

}  // namespace

#define ORPS_EXPORT(name, ...)                        \
  TEST(Divide, name) { checkDivision<#name>(&name); } \
  static_assert(true)
#include "exports/divide.inc"

TEST(Divide, orpsDivC_64s_ISfs) { checkDivision<"orpsDivC_64s_ISfs">(&orpsDivC_64s_ISfs); }

TEST(Divide, examplesOfRounding) {
  const Orp16s divisors[] = {2, 2, 2, -2, 3, 0, 0, 0}, dividends[] = {5, 7, -5, 7, 5, 5, -5, 0};
  Orp16s quotients[8];
  const auto rounded = [&](int mode, int scaleFactor) {
    EXPECT_EQ(StsDivByZero, orpsDiv_Round_16s_Sfs(divisors, dividends, quotients, 8, mode, scaleFactor));
    return std::vector<Orp16s>(quotients, quotients + 8);
  };
  using Values = std::vector<Orp16s>;
  EXPECT_EQ(rounded(OrpRoundZero, 0), (Values{2, 3, -2, -3, 1, 32767, -32768, 0}));
  EXPECT_EQ(rounded(OrpRoundNear, 0), (Values{2, 4, -2, -4, 2, 32767, -32768, 0}));
  EXPECT_EQ(rounded(OrpRoundAway, 0), (Values{3, 4, -3, -4, 2, 32767, -32768, 0}));
  EXPECT_EQ(rounded(OrpRoundNear, -2), (Values{10, 14, -10, -14, 7, 32767, -32768, 0}));
  EXPECT_EQ(rounded(OrpRoundNear, 30), (Values{0, 0, 0, 0, 0, 32767, -32768, 0}));
  EXPECT_EQ(rounded(OrpRoundNear, -40), (Values{32767, 32767, -32768, -32768, 32767, 32767, -32768, 0}));
}

// A zero divisor has no sign, an infinity has that of the dividend.
TEST(Divide, zeroDivisorsOfFloats) {
  constexpr Orp32f kInfinity = std::numeric_limits<Orp32f>::infinity();
  const Orp32f divisors[] = {0, -0.0F, 0, -0.0F, 0}, dividends[] = {1, 1, -1, -1, 0};
  Orp32f quotients[5];
  ASSERT_EQ(StsDivByZero, orpsDiv_32f(divisors, dividends, quotients, 5));
  EXPECT_TRUE(quotients[0] == kInfinity && quotients[1] == kInfinity);
  EXPECT_TRUE(quotients[2] == -kInfinity && quotients[3] == -kInfinity);
  EXPECT_TRUE(std::isnan(quotients[4]));
}
