// Runs one reduction, whatever its prototype, against plain models of its results.
//
//   struct Sum : Model {
//     template <class D> D result(const auto& in) const { ... in.a, in.b, in.address, in.extra ... }
//   };
//   check(&orpsSum_16s_Sfs, Sum{});
//
// A call of one source has zeros as its second one: a norm is that of a difference from zero. A call of two results
// takes two models.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>
#include <vector>

#include "support/ulp.h"
#include "vector/elementwise.h"

namespace reduction {

using elementwise::kScales;
using orptest::Guarded;
using orptest::kParts;
using orptest::Part;
using orptest::Random;
using orptest::Values;
using reference::exact;
using reference::Int128;
using reference::Uint128;

template <class T>
concept Integers = std::is_integral_v<Part<T>>;

struct Model {
  static constexpr int kLeast = 1;  // the least length
  template <class D>
  static constexpr double kUnits = 0;  // the error allowed, in units in the last place; 0: the same bits
};

// The sources of one call, the first one's address and what stands behind the results: scale factor or hint.
template <class A, class B>
struct Input {
  const std::vector<A>& a;
  const std::vector<B>& b;
  uintptr_t address;
  int extra;
};

// An element from its parts.
template <class D>
D made(auto part) {
  if constexpr (kParts<D> == 2) {
    const auto re = static_cast<Part<D>>(part(size_t{0}));
    return {re, static_cast<Part<D>>(part(size_t{1}))};
  } else {
    return static_cast<D>(part(size_t{0}));
  }
}

// The parts of all elements, one behind the other.
template <class T, class E>
std::vector<T> partsOf(const std::vector<E>& elements) {
  std::vector<T> parts;
  parts.reserve(elements.size() * kParts<E>);
  for (const E& element : elements) {
    if constexpr (kParts<E> == 2) {
      parts.insert(parts.end(), {static_cast<T>(element.re), static_cast<T>(element.im)});
    } else {
      parts.push_back(static_cast<T>(element));
    }
  }
  return parts;
}

// The upper half of the lanes is added to the lower half until `left` are left.
template <class T>
void fold(std::vector<T>& lanes, size_t left) {
  while (lanes.size() > left) {
    const size_t half = lanes.size() / 2;
    for (size_t i = 0; i < half; ++i) lanes[i] += lanes[half + i];
    lanes.resize(half);
  }
}

// Lanes of a precision: 64 of single, 32 of double.
template <class T>
inline constexpr size_t kLanes = 256 / sizeof(T);

// Term n goes to lane n modulo their number.
template <class T>
std::vector<T> inLanes(const std::vector<T>& terms, size_t left = 1, size_t count = kLanes<T>) {
  std::vector<T> lanes(count);
  for (size_t n = 0; n < terms.size(); ++n) lanes[n % count] += terms[n];
  fold(lanes, left);
  return lanes;
}

// Blocks of 32768 numbers in single precision, their sums in double precision.
inline std::vector<double> inBlocks(const std::vector<float>& terms, size_t left = 1, size_t count = kLanes<float>) {
  std::vector<double> sums(left);
  constexpr size_t kBlock = 32768;
  for (size_t n = 0; n < terms.size(); n += kBlock) {
    const size_t end = std::min(terms.size(), n + kBlock);
    const auto block = inLanes(std::vector<float>(&terms[n], &terms[n] + (end - n)), left, count);
    for (size_t i = 0; i < left; ++i) sums[i] += static_cast<double>(block[i]);
  }
  return sums;
}

// How a 2^shift compares with b: -1, 0 or 1. Both below 2^127.
inline int compareScaled(Uint128 a, Uint128 b, long long shift) {
  if (shift < 0) return -compareScaled(b, a, -shift);
  if (a == 0) return b == 0 ? 0 : -1;
  if (shift > 127 || a >> (127 - shift) != 0) return 1;
  a <<= shift;
  return a < b ? -1 : a > b ? 1 : 0;
}

// sqrt(dividend / divisor) 2^-scale to nearest, ties to even, saturated: the largest r that is not beyond, found by
// bisection in exact integers. dividend < 2^124, divisor < 2^62.
inline Orp32s nearestRoot(Int128 dividend, Int128 divisor, int scale, Orp32s most) {
  Orp32s least = 0;
  while (least < most) {
    const Orp32s r = least + (most - least) / 2 + (most - least) % 2;
    const Uint128 twice = 2 * static_cast<Uint128>(r) - 1;  // the tie below r
    const int order =
        compareScaled(twice * twice * static_cast<Uint128>(divisor), 4 * static_cast<Uint128>(dividend), 2LL * scale);
    if (order < 0 || (order == 0 && r % 2 == 0)) {
      least = r;
    } else {
      most = r - 1;
    }
  }
  return least;
}

template <class A_, class B_, class D_, bool two>
struct Form {
  using A = A_;
  using B = B_;
  using D = D_;
  static constexpr bool kTwoSources = two;
  bool hasExtra;
  std::function<OrpStatus(const A*, const B*, int, D*, int)> call;  // results one behind the other
};

inline elementwise::Extra last(int extra) { return {0, extra}; }

template <class A, class D, class... X>
Form<A, A, D, false> formOf(OrpStatus (*f)(const A*, int, D*, X...)) {
  return {sizeof...(X) > 0,
          [f](auto a, auto, int len, D* r, int extra) { return elementwise::callWith(f, last(extra), a, len, r); }};
}
template <class A, class D, class... X>
Form<A, A, D, false> formOf(OrpStatus (*f)(const A*, int, D*, D*, X...)) {
  return {sizeof...(X) > 0, [f](auto a, auto, int len, D* r, int extra) {
            return elementwise::callWith(f, last(extra), a, len, r, r + 1);
          }};
}
template <class A, class B, class D, class... X>
Form<A, B, D, true> formOf(OrpStatus (*f)(const A*, const B*, int, D*, X...)) {
  return {sizeof...(X) > 0, [f](auto a, auto b, int len, D* r, int extra) {
            return elementwise::callWith(f, last(extra), a, b, len, r);
          }};
}

template <class F, class... Models>
void checkCall(const F& form, const std::vector<typename F::A>& a, const std::vector<typename F::B>& b, int extra,
               size_t misalignment, const Models&... models) {
  using D = typename F::D;
  Guarded<typename F::A> pA(a, misalignment);
  Guarded<typename F::B> pB(F::kTwoSources ? b.size() : 0, misalignment * 5 % 64);
  if (F::kTwoSources) pB.assign(b);
  D got[sizeof...(Models)] = {};
  const auto what = [&] {
    return ::testing::Message() << a.size() << " elements, " << extra << ", misaligned " << misalignment;
  };
  ASSERT_EQ(StsOk, form.call(pA.data(), pB.data(), static_cast<int>(a.size()), got, extra)) << what();
  const Input<typename F::A, typename F::B> in{a, b, reinterpret_cast<uintptr_t>(pA.data()), extra};
  int i = 0;
  const auto compare = [&]<class M>(const M& model) {
    const auto want = model.template result<D>(in);
    constexpr double kUnits = M::template kUnits<D>;
    bool matches = reference::same(got[i], want);
    if constexpr (kUnits != 0) matches = matches || orptest::ulps(got[i], static_cast<long double>(want)) <= kUnits;
    EXPECT_TRUE(matches) << "result " << i << " is " << reference::shown(got[i]) << ", not " << reference::shown(want)
                         << ": " << what();
    ++i;
  };
  (compare(models), ...);
}

// Kinds of data. What a lane order changes in the last bits of a double must show in a result of single precision:
// there are numbers that cancel, and equal ones but for their last bits.
constexpr int kKinds = 8;

template <class T>
std::vector<T> numbers(Random& random, size_t count, int kind) {
  std::vector<T> x(count);
  using Limits = std::numeric_limits<T>;
  if constexpr (std::is_integral_v<T>) {
    for (auto& e : x)
      e = kind == 0   ? Limits::min()
          : kind == 1 ? (random.bits() & 1 ? Limits::min() : Limits::max())
          : kind == 2 ? random.element<T>(Values::modest)
                      : elementwise::number<T>(random);
  } else {
    for (auto& e : x) {
      e = random.element<T>(kind == 4 ? Values::finite : Values::modest);
      if (kind == 1 || kind == 2) e = std::ldexp(e, random.below(61) - 30);
      if (kind == 3) e = 1000 * (1 + std::ldexp(e, -18));
      if (kind == 5) e = -T{0};
    }
    const auto any = [&]() -> T& { return x[static_cast<size_t>(random.below(static_cast<int>(count)))]; };
    if (kind == 2)  // what is left of those that cancel is what was rounded away, and small numbers
      for (size_t i = 0; i < count / 2; ++i)
        x[count - 1 - i] = random.below(4) == 0 ? std::exchange(x[i], T{0}) * T{0x1p-50} : -x[i];
    const T specials[] = {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()};
    if (kind == 6) any() = any() = specials[random.below(3)];
  }
  return x;
}

template <class T>
std::vector<T> elements(Random& random, size_t len, int kind) {
  const auto parts = numbers<Part<T>>(random, len * kParts<T>, kind);
  std::vector<T> x(len);
  std::memcpy(x.data(), parts.data(), len * sizeof(T));
  return x;
}

template <class Exported, class... Models>
void check(Exported* exported, const Models&... models) {
  const auto form = formOf(exported);
  using F = std::remove_const_t<decltype(form)>;
  using A = typename F::A;
  using B = typename F::B;
  using D = typename F::D;
  const int least = std::max({Models::kLeast...});
  const bool bounded = ((Models::template kUnits<D> != 0) || ...);
  Random random;
  const auto run = [&](int len, int extra, int kind) {
    if (len < least) return true;
    if (!form.hasExtra) extra = 0;
    if (bounded && kind == 4) kind = 1;  // no bound where a result over- or underflows on the way
    const int misalignments[] = {0, 4, 8, 12, 60, 1, 2, 31, 8 * random.below(8)};
    const auto size = static_cast<size_t>(len);
    const auto a = elements<A>(random, size, kind);
    const auto b = F::kTwoSources ? elements<B>(random, size, kind) : std::vector<B>(size);
    checkCall(form, a, b, extra, static_cast<size_t>(misalignments[random.below(9)]), models...);
    return !::testing::Test::HasFailure();  // one report is enough
  };
  const auto someExtra = [&] {
    constexpr int kHints[] = {1, 1, 1, 0, 2, -1};
    return Integers<A> ? kScales[random.below(std::size(kScales))] : kHints[random.below(6)];
  };
  // Every tail behind up to three rounds of the lanes.
  for (int len = 1; len <= 205; ++len)
    for (int kind = 0; kind < kKinds; ++kind)
      if (!run(len, someExtra(), kind)) return;
  // Around the blocks, with up to three elements by themselves in front of them.
  for (const int block : {1024, 16384, 32768, 65536})
    for (const int more : {-1, 0, 1, 2, 3, 4, 5 + random.below(90)})
      for (const int extra : {1, 2})
        if (!run(block + more, extra, 1 + random.below(3))) return;
  if constexpr (Integers<A>) {
    if (form.hasExtra)
      for (const int scale : kScales)
        for (int repeat = 0; repeat < 32; ++repeat)
          if (!run(least + random.below(repeat % 2 == 0 ? 3 : 40), scale, random.below(kKinds))) return;
    // More extreme elements than partial sums of 32 bits hold, or 32-bit lanes that are emptied too late.
    const auto len = static_cast<size_t>(3'000'001 + random.below(70));
    const auto all = [&]<class T>(T, bool largest) {
      using Limits = std::numeric_limits<Part<T>>;
      return std::vector<T>(len, made<T>([&](size_t) { return largest ? Limits::max() : Limits::min(); }));
    };
    for (const bool other : {false, true}) {  // the ends of the second source's range, or two scale factors
      const auto second = F::kTwoSources ? all(B{}, other) : std::vector<B>(len);
      checkCall(form, all(A{}, false), second, !form.hasExtra || (!F::kTwoSources && other) ? 0 : 24, 2, models...);
    }
  }
}

}  // namespace reduction
