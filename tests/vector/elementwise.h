// Runs one element-wise export, whatever its calling form, against an operation of the reference.
//
//   struct Sum : Operation<2> {
//     template <class D> D result(Extra extra, auto a, auto b) const { return element<D>(exact(a) + exact(b),
//     extra.scale); }
//   };
//   check(&orpsAddC_16s_ISfs, Sum{});
//
// The form follows from the prototype and the number of operands. Operand a is the first source or the constant, b the
// other source or what the destination of an in-place call holds; a third one is the accumulating destination.
#pragma once

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <functional>
#include <vector>

#include "reference.h"
#include "support/guarded.h"
#include "support/lengths.h"
#include "support/random.h"

namespace elementwise {

using orptest::Guarded;
using orptest::Random;

// What a call takes behind the length. Without these arguments it behaves as with the values here.
struct Extra {
  int mode = OrpRoundNear, scale = 0;
};

// Around zero, the widths of the elements and of their sums and products, and far beyond.
inline constexpr int kScales[] = {0,   1,   2,   3,   7,    8,       9,    14,    15,          16,     17,  18,  29,
                                  30,  31,  32,  33,  34,   47,      62,   63,    64,          65,     66,  100, 118,
                                  125, 126, 127, 128, 1000, INT_MAX, -1,   -2,    -3,          -6,     -7,  -8,  -9,
                                  -14, -15, -16, -17, -20,  -21,     -22,  -29,   -30,         -31,    -32, -33, -48,
                                  -62, -63, -64, -65, -66,  -100,    -128, -1000, INT_MIN + 1, INT_MIN};

// Random values; ends of the range, often enough that both meet in a pair; and neighbours of powers of two: their sums
// and products are exact ties, or just beside them, whatever the scale factor.
template <class T>
T number(Random& random) {
  if constexpr (std::is_integral_v<T>) {
    constexpr int kBits = 8 * static_cast<int>(sizeof(T));
    const int choice = random.below(8);
    if (choice == 0) return std::numeric_limits<T>::min();
    if (choice == 1) return std::numeric_limits<T>::max();
    if (choice == 2) return static_cast<T>((uint64_t{1} << random.below(kBits)) + random.bits() % 3 - 1);
    if (choice == 3) return static_cast<T>(1 - (uint64_t{1} << random.below(kBits)) - random.bits() % 3);
  }
  return random.element<T>();
}

template <class T>
T operand(Random& random) {
  if constexpr (reference::Complex<T>) {
    const auto re = number<orptest::Part<T>>(random);
    return {re, number<orptest::Part<T>>(random)};
  } else {
    return number<T>(random);
  }
}

// What an operation is made of beside result(extra, operands...); most need no more.
template <int operands>
struct Operation {
  static constexpr int kOperands = operands;
  template <class A>
  A first(Random& random) const {
    return operand<A>(random);
  }
  template <class B>
  B second(Random& random) const {
    return operand<B>(random);
  }
  // The error that a constant makes of the whole call.
  OrpStatus error(const auto&) const { return StsOk; }
  // The warning that one element makes; of several the largest is returned.
  OrpStatus warning(const auto&...) const { return StsOk; }
  template <class D>
  bool matches(D got, D want) const {
    return reference::same(got, want);
  }
};

enum class First { none, vector, constant };
enum class Target { written, second, third };  // the operand that the destination holds before the call

template <class A_, class B_, class D_, First first, Target target>
struct Form {
  using A = A_;
  using B = B_;
  using D = D_;
  static constexpr First kFirst = first;
  static constexpr Target kTarget = target;
  int extras;
  std::function<OrpStatus(const A*, const B*, D*, int, Extra)> call;
};

template <class F, class... P>
OrpStatus callWith(F f, Extra extra, P... arguments) {
  if constexpr (std::is_invocable_v<F, P...>) {
    return f(arguments...);
  } else if constexpr (std::is_invocable_v<F, P..., int>) {
    return f(arguments..., extra.scale);
  } else {
    return f(arguments..., extra.mode, extra.scale);
  }
}

template <int count>
using Operands = std::integral_constant<int, count>;
template <class T>
concept Value = !std::is_pointer_v<T>;

template <class B, class D, class... X>
Form<B, B, D, First::none, Target::written> formOf(Operands<1>, OrpStatus (*f)(const B*, D*, int, X...)) {
  return {sizeof...(X), [f](auto, auto b, auto dst, int len, Extra x) { return callWith(f, x, b, dst, len); }};
}
template <class D, class... X>
Form<D, D, D, First::none, Target::second> formOf(Operands<1>, OrpStatus (*f)(D*, int, X...)) {
  return {sizeof...(X), [f](auto, auto, auto dst, int len, Extra x) { return callWith(f, x, dst, len); }};
}
template <class A, class B, class D, class... X>
Form<A, B, D, First::vector, Target::written> formOf(Operands<2>, OrpStatus (*f)(const A*, const B*, D*, int, X...)) {
  return {sizeof...(X), [f](auto a, auto b, auto dst, int len, Extra x) { return callWith(f, x, a, b, dst, len); }};
}
template <class A, class D, class... X>
Form<A, D, D, First::vector, Target::second> formOf(Operands<2>, OrpStatus (*f)(const A*, D*, int, X...)) {
  return {sizeof...(X), [f](auto a, auto, auto dst, int len, Extra x) { return callWith(f, x, a, dst, len); }};
}
template <class B, Value A, class D, class... X>
Form<A, B, D, First::constant, Target::written> formOf(Operands<2>, OrpStatus (*f)(const B*, A, D*, int, X...)) {
  return {sizeof...(X), [f](auto a, auto b, auto dst, int len, Extra x) { return callWith(f, x, b, *a, dst, len); }};
}
template <Value A, class D, class... X>
Form<A, D, D, First::constant, Target::second> formOf(Operands<2>, OrpStatus (*f)(A, D*, int, X...)) {
  return {sizeof...(X), [f](auto a, auto, auto dst, int len, Extra x) { return callWith(f, x, *a, dst, len); }};
}
template <class A, class B, class D, class... X>
Form<A, B, D, First::vector, Target::third> formOf(Operands<3>, OrpStatus (*f)(const A*, const B*, D*, int, X...)) {
  return {sizeof...(X), [f](auto a, auto b, auto dst, int len, Extra x) { return callWith(f, x, a, b, dst, len); }};
}
template <class B, Value A, class D, class... X>
Form<A, B, D, First::constant, Target::third> formOf(Operands<3>, OrpStatus (*f)(const B*, A, D*, int, X...)) {
  return {sizeof...(X), [f](auto a, auto b, auto dst, int len, Extra x) { return callWith(f, x, b, *a, dst, len); }};
}

// Of a call with two destinations the one; the other is written beside it.
template <int written, class B, class D>
Form<B, B, D, First::none, Target::written> formOfOne(Operands<1>, OrpStatus (*f)(const B*, D*, D*, int)) {
  return {0, [f](auto, auto b, auto dst, int len, Extra) {
            Guarded<D> other(static_cast<size_t>(len));
            return written == 0 ? f(b, dst, other.data(), len) : f(b, other.data(), dst, len);
          }};
}
template <int written, class A, class B, class D>
Form<A, B, D, First::vector, Target::written> formOfOne(Operands<2>, OrpStatus (*f)(const A*, const B*, D*, D*, int)) {
  return {0, [f](auto a, auto b, auto dst, int len, Extra) {
            Guarded<D> other(static_cast<size_t>(len));
            return written == 0 ? f(a, b, dst, other.data(), len) : f(a, b, other.data(), dst, len);
          }};
}

enum class Alias { none, first, second };  // the source that is the destination as well, if their types allow it

template <class T>
bool sameBytes(const std::vector<T>& a, const std::vector<T>& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(T)) == 0;
}

// One call on the operands given (of a constant the first element counts). `target`: what the destination holds before,
// unless it is one of the sources. For Alias::first in place, a and b must be equal.
template <class Op, class F>
void checkCall(const F& form, const Op& op, const std::vector<typename F::A>& a, const std::vector<typename F::B>& b,
               std::vector<typename F::D> target, Extra extra, Alias alias, size_t misalignment = 0) {
  using D = typename F::D;
  const size_t len = b.size();
  Guarded<typename F::A> pA(a, misalignment);
  Guarded<typename F::B> pB(b, misalignment * 5 % 64);
  const typename F::A* argumentA = F::kFirst == First::constant ? a.data() : pA.data();
  const typename F::B* argumentB = pB.data();
  constexpr bool mayBeFirst = F::kFirst == First::vector && std::is_same_v<typename F::A, D>;
  constexpr bool mayBeSecond = F::kTarget != Target::second && std::is_same_v<typename F::B, D>;
  if constexpr (F::kTarget == Target::second) target = b;
  if constexpr (mayBeFirst)
    if (alias == Alias::first) target = a;
  if constexpr (mayBeSecond)
    if (alias == Alias::second) target = b;
  Guarded<D> dst(target, misalignment * 7 % 64);
  if constexpr (mayBeFirst)
    if (alias == Alias::first) argumentA = dst.data();
  if constexpr (mayBeSecond)
    if (alias == Alias::second) argumentB = dst.data();

  const auto what = [&] {
    return ::testing::Message() << len << " elements, scale " << extra.scale << ", mode " << extra.mode << ", alias "
                                << static_cast<int>(alias) << ", misaligned " << misalignment;
  };
  const auto firstAt = [&](size_t i) { return a[F::kFirst == First::vector ? i : 0]; };
  const OrpStatus status = form.call(argumentA, argumentB, dst.data(), static_cast<int>(len), extra);
  EXPECT_TRUE(sameBytes(a, pA.values()) && sameBytes(b, pB.values())) << "a source was written, " << what();

  OrpStatus expected = F::kFirst == First::constant ? op.error(a[0]) : StsOk;
  if (expected < 0) {
    ASSERT_EQ(expected, status) << what();
    ASSERT_TRUE(sameBytes(target, dst.values())) << "written in spite of an error, " << what();
    return;
  }
  for (size_t i = 0; i < len; ++i) {
    const auto operands = [&] {
      std::string text = reference::shown(b[i]);
      if constexpr (Op::kOperands > 1 && requires { reference::shown(firstAt(i)); })
        text = reference::shown(firstAt(i)) + " and " + text;
      return text;
    };
    const auto want = [&] {
      if constexpr (Op::kOperands == 1) {
        expected = std::max(expected, op.warning(b[i]));
        return op.template result<D>(extra, b[i]);
      } else if constexpr (Op::kOperands == 2) {
        expected = std::max(expected, op.warning(firstAt(i), b[i]));
        return op.template result<D>(extra, firstAt(i), b[i]);
      } else {
        return op.template result<D>(extra, firstAt(i), b[i], target[i]);
      }
    }();
    ASSERT_TRUE(op.matches(dst[i], want)) << "got " << reference::shown(dst[i]) << ", not " << reference::shown(want)
                                          << ", of " << operands() << " at " << i << " of " << what();
  }
  ASSERT_EQ(expected, status) << what();
}

// Random operands of the operation's choice.
template <class Op, class F>
void checkRandom(const F& form, const Op& op, Random& random, int len, Extra extra, Alias alias, size_t misalignment) {
  std::vector<typename F::A> a(F::kFirst == First::vector ? static_cast<size_t>(len) : 1);
  std::vector<typename F::B> b(static_cast<size_t>(len));
  std::vector<typename F::D> target(b.size());
  for (auto& x : a) x = op.template first<typename F::A>(random);
  for (auto& x : b) x = op.template second<typename F::B>(random);
  for (auto& x : target) x = operand<typename F::D>(random);
  if constexpr (F::kTarget == Target::second && std::is_same_v<typename F::A, typename F::B>)
    if (alias == Alias::first && F::kFirst == First::vector) b = a;
  checkCall(form, op, a, b, target, extra, alias, misalignment);
}

inline std::vector<Extra> extrasOf(int count) {
  if (count == 0) return {Extra{}};
  std::vector<Extra> extras;
  for (const int scale : kScales) {
    for (const int mode : {OrpRoundZero, OrpRoundNear, OrpRoundAway})
      if (count == 2 || mode == OrpRoundNear) extras.push_back({mode, scale});
  }
  return extras;
}

// The lengths around every vector width, the scale factors and rounding modes in turn; then each of these on several
// random lengths; aliasing and alignment change from call to call.
template <class Op, class F>
void checkForm(const F& form, const Op& op) {
  using Smallest = std::conditional_t<sizeof(typename F::B) < sizeof(typename F::D), typename F::B, typename F::D>;
  Random random;
  const auto extras = extrasOf(form.extras);
  size_t turn = 0;
  const auto run = [&](int len, Extra extra) {
    const size_t misalignment = turn % 2 == 0 ? 0 : static_cast<size_t>(random.below(64));
    checkRandom(form, op, random, len, extra, static_cast<Alias>(turn % 3), misalignment);
    ++turn;
    return !::testing::Test::HasFailure();  // one report is enough
  };
  for (const auto& length : orptest::lengthsAroundWidths<Smallest>())
    for (int repeat = 0; repeat < 6; ++repeat)
      if (!run(length.value, extras[turn % extras.size()])) return;
  const bool constant = F::kFirst == First::constant;  // one to a call: more calls, shorter ones
  for (const auto& extra : extras)
    for (int repeat = 0; repeat < (constant ? 32 : 4); ++repeat)
      if (!run(1 + random.below(constant ? 70 : 200 * (1 + repeat)), extra)) return;
  const int several = orptest::lengthOfSeveralBlocks<Smallest>().value;
  run(several, extras.front());
  if (form.extras > 0) run(several, {OrpRoundNear, -3});  // two passes, block by block
}

// Every pair of 8-bit operands, for every scale factor around which something happens.
template <class Op, class F>
void checkAllPairs(const F& form, const Op& op) {
  std::vector<Orp8u> all(256), same(256);
  for (size_t i = 0; i < 256; ++i) all[i] = static_cast<Orp8u>(i);
  for (const auto& extra : extrasOf(form.extras)) {
    if (extra.scale < -18 || extra.scale > 18) continue;
    for (const Orp8u value : all) {
      same.assign(256, value);
      checkCall(form, op, same, all, std::vector<typename F::D>(256), extra, Alias::none);
    }
    if (::testing::Test::HasFailure()) return;
  }
}

template <class Op, class F>
void check(F* exported, const Op& op = {}) {
  auto form = formOf(Operands<Op::kOperands>{}, exported);
  using Checked = decltype(form);
  checkForm(form, op);
  if constexpr (Op::kOperands == 2 && std::is_same_v<typename Checked::A, Orp8u> &&
                std::is_same_v<typename Checked::B, Orp8u>)
    checkAllPairs(form, op);
}

}  // namespace elementwise
