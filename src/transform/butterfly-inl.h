// What every FFT is made of: vectors of complex points, butterflies of radix 2 to 32, transposition in registers.
//
// A vector of points is Parts. Its lanes hold `lanes` consecutive points in the order that takes one shuffle within
// blocks of 128 bits to make of pairs in memory, and one to make pairs again: see pointOfLane.
//
// [Cooley and Tukey 1965: An algorithm for the machine calculation of complex Fourier series, Math. Comp. 19]
// [Linzer and Feig 1993: Implementation of efficient FFT algorithms on fused multiply-add architectures, IEEE Trans.
// Signal Processing 41]
#if defined(ORPSP_TRANSFORM_BUTTERFLY_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_TRANSFORM_BUTTERFLY_INL_H_
#undef ORPSP_TRANSFORM_BUTTERFLY_INL_H_
#else
#define ORPSP_TRANSFORM_BUTTERFLY_INL_H_
#endif

#include <hwy/highway.h>

#include "simd/complex-inl.h"
#include "simd/element.h"
#include "simd/shuffle-inl.h"
#include "simd/unrolled-inl.h"
#include "transform/exact_sine.h"
#include "transform/sine.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace fft {
namespace {

// ---- Shuffles

template <class T>
inline constexpr size_t kBlock = 16 / sizeof(T);  // lanes of 128 bits

// Within blocks: lanes 0, 2 (from = 0) or 1, 3 (from = 1) of a's block, then those of b's.
template <size_t block, size_t from>
struct Alternate {
  static constexpr size_t pick(size_t i, size_t lanes) {
    const size_t j = i % block, half = block / 2;
    return i - j + from + 2 * (j % half) + (j < half ? 0 : lanes);
  }
};
// Within blocks: the lower or upper groups of `unit` lanes of a and b by turns.
template <size_t block, size_t unit, bool isUpper>
struct Interleave {
  static constexpr size_t pick(size_t i, size_t lanes) {
    const size_t j = i % block, group = j / unit;
    return i - j + (isUpper ? block / 2 : 0) + group / 2 * unit + j % unit + (group % 2 ? lanes : 0);
  }
};
// Halves of a and b, side by side.
template <bool isUpper>
struct Halves {
  static constexpr size_t pick(size_t i, size_t lanes) {
    return i % (lanes / 2) + (isUpper ? lanes / 2 : 0) + (i < lanes / 2 ? 0 : lanes);
  }
};
// Even or odd blocks of a, then of b.
template <size_t block, bool isOdd>
struct EveryOtherBlock {
  static constexpr size_t pick(size_t i, size_t lanes) {
    const size_t b = i / block, half = lanes / block / 2;
    return (2 * (b % half) + isOdd) * block + i % block + (b < half ? 0 : lanes);
  }
};

// ---- Order of points in lanes

template <class T>
constexpr size_t pointOfLane(size_t lane, size_t lanes) {
  const size_t half = kBlock<T> / 2, block = lane / kBlock<T>, j = lane % kBlock<T>;
  return block * half + (j < half ? j : lanes / 2 + j - half);
}

template <class T>
struct FromNaturalOrder {
  static constexpr size_t pick(size_t i, size_t lanes) { return pointOfLane<T>(i, lanes); }
};
template <class T>
struct ToNaturalOrder {
  static constexpr size_t pick(size_t i, size_t lanes) {
    for (size_t lane = 0; lane < lanes; ++lane)
      if (pointOfLane<T>(lane, lanes) == i) return lane;
    return 0;
  }
};

// Points from pairs and back.
template <class D, class T = hn::TFromD<D>, class V = hn::Vec<D>>
HWY_INLINE Parts<V> LoadPairs(D d, const T* from) {
  const V a = hn::LoadU(d, from), b = hn::LoadU(d, from + hn::MaxLanes(d));
  return {Shuffled<Alternate<kBlock<T>, 0>>(a, b), Shuffled<Alternate<kBlock<T>, 1>>(a, b)};
}
template <class D, class T = hn::TFromD<D>, class V = hn::Vec<D>>
HWY_INLINE void StorePairs(D d, Parts<V> x, T* to) {
  hn::StoreU(Shuffled<Interleave<kBlock<T>, 1, false>>(x.re, x.im), d, to);
  hn::StoreU(Shuffled<Interleave<kBlock<T>, 1, true>>(x.re, x.im), d, to + hn::MaxLanes(d));
}

// A vector, or a single number, at any address.
template <class D, class T = hn::TFromD<D>>
HWY_INLINE hn::Vec<D> LoadAnywhere(D d, const T* from) {
  if constexpr (hn::MaxLanes(D{}) == 1)
    return hn::Set(d, get(from));
  else
    return hn::LoadU(d, from);
}
template <class D, class T = hn::TFromD<D>>
HWY_INLINE void StoreAnywhere(D d, hn::Vec<D> v, T* to) {
  if constexpr (hn::MaxLanes(D{}) == 1)
    put(to, hn::GetLane(v));
  else
    hn::StoreU(v, d, to);
}

// One part of points from consecutive numbers and back.
template <class D, class T = hn::TFromD<D>>
HWY_INLINE hn::Vec<D> LoadPart(D d, const T* from) {
  const auto v = LoadAnywhere(d, from);
  return sizeof(v) <= 16 ? v : Shuffled<FromNaturalOrder<T>>(v, v);
}
template <class D, class T = hn::TFromD<D>>
HWY_INLINE void StorePart(D d, hn::Vec<D> v, T* to) {
  StoreAnywhere(d, sizeof(v) <= 16 ? v : Shuffled<ToNaturalOrder<T>>(v, v), to);
}

// ---- Points at consecutive places of the caller's memory

// In pairs; isSwapped: imaginary part first.
template <class T, bool isSwapped>
struct PairedPoints {
  using Element = std::remove_const_t<T>;
  static constexpr bool kIsSwapped = isSwapped;
  static constexpr int kArrays = 1;
  T* p;

  template <class D>
  HWY_INLINE Parts<hn::Vec<D>> Load(D d, size_t at) const {
    Parts<hn::Vec<D>> x;
    if constexpr (hn::MaxLanes(d) == 1) {
      x = {LoadAnywhere(d, p + 2 * at), LoadAnywhere(d, p + 2 * at + 1)};
    } else {
      x = LoadPairs(d, p + 2 * at);
    }
    if constexpr (isSwapped) return {x.im, x.re};
    return x;
  }
  template <class D>
  HWY_INLINE void Store(D d, Parts<hn::Vec<D>> x, size_t at) const {
    if constexpr (isSwapped) x = {x.im, x.re};
    if constexpr (hn::MaxLanes(d) == 1) {
      StoreAnywhere(d, x.re, p + 2 * at);
      StoreAnywhere(d, x.im, p + 2 * at + 1);
    } else {
      StorePairs(d, x, p + 2 * at);
    }
  }
  // A vector of pairs as they stand there: its parts are exchanged if isSwapped.
  template <class D>
  HWY_INLINE hn::Vec<D> LoadPaired(D d, size_t at) const {
    return hn::LoadU(d, p + 2 * at);
  }
  template <class D>
  HWY_INLINE void StorePaired(D d, hn::Vec<D> pairs, size_t at) const {
    hn::StoreU(pairs, d, p + 2 * at);
  }
  HWY_INLINE PairedPoints From(size_t at) const { return {p + 2 * at}; }
  bool IsAt(const PairedPoints<Element, isSwapped>& other) const { return p == other.p; }
};

// In two arrays.
struct JoinedParts {  // of a vector of real parts and then imaginary parts
  static constexpr size_t pick(size_t i, size_t lanes) { return i / 2 + i % 2 * lanes / 2; }
};
struct PartedPairs {
  static constexpr size_t pick(size_t i, size_t lanes) { return 2 * (i % (lanes / 2)) + i / (lanes / 2); }
};
template <class T>
struct PlanarPoints {
  using Element = std::remove_const_t<T>;
  static constexpr bool kIsSwapped = false;
  static constexpr int kArrays = 2;
  T *re, *im;

  // A vector of pairs.
  template <class D>
  HWY_INLINE hn::Vec<D> LoadPaired(D d, size_t at) const {
    constexpr hn::Half<D> half;
    const auto parts = hn::Combine(d, hn::LoadU(half, im + at), hn::LoadU(half, re + at));
    return Shuffled<JoinedParts>(parts, parts);
  }
  template <class D>
  HWY_INLINE void StorePaired(D, hn::Vec<D> pairs, size_t at) const {
    constexpr hn::Half<D> half;
    const auto parts = Shuffled<PartedPairs>(pairs, pairs);
    hn::StoreU(hn::LowerHalf(half, parts), half, re + at);
    hn::StoreU(hn::UpperHalf(half, parts), half, im + at);
  }

  template <class D>
  HWY_INLINE Parts<hn::Vec<D>> Load(D d, size_t at) const {
    return {LoadPart(d, re + at), LoadPart(d, im + at)};
  }
  template <class D>
  HWY_INLINE void Store(D d, Parts<hn::Vec<D>> x, size_t at) const {
    StorePart(d, x.re, re + at);
    StorePart(d, x.im, im + at);
  }
  HWY_INLINE PlanarPoints From(size_t at) const { return {re + at, im + at}; }
  bool IsAt(const PlanarPoints<Element>& other) const { return re == other.re; }
};

// ---- Transposition of a square of lanes: row[i] lane j becomes row[j] lane i

// A square of four vectors of four blocks.
template <class V>
HWY_INLINE void TransposeBlocks(V& a, V& b, V& c, V& d) {
  constexpr size_t kUnit = kBlock<hn::TFromV<V>>;
  const V lowerAB = Shuffled<Halves<false>>(a, b), upperAB = Shuffled<Halves<true>>(a, b);
  const V lowerCD = Shuffled<Halves<false>>(c, d), upperCD = Shuffled<Halves<true>>(c, d);
  a = Shuffled<EveryOtherBlock<kUnit, false>>(lowerAB, lowerCD);
  b = Shuffled<EveryOtherBlock<kUnit, true>>(lowerAB, lowerCD);
  c = Shuffled<EveryOtherBlock<kUnit, false>>(upperAB, upperCD);
  d = Shuffled<EveryOtherBlock<kUnit, true>>(upperAB, upperCD);
}

// A square of two vectors of two blocks.
template <class V>
HWY_INLINE void TransposeBlocks(V& a, V& b) {
  const V lower = Shuffled<Halves<false>>(a, b);
  b = Shuffled<Halves<true>>(a, b);
  a = lower;
}

template <size_t count, class V>
HWY_INLINE void Transpose(V (&row)[count]) {
  using T = hn::TFromV<V>;
  static_assert(count * sizeof(T) == sizeof(V) && sizeof(V) >= 16);
  constexpr size_t kStep = kBlock<T>;
  Unrolled<count / kStep>([&](auto m) ORPSP_INLINED {
    V* const r = row + m * kStep;
    if constexpr (kStep == 2) {
      const V a = r[0], b = r[1];
      r[0] = Shuffled<Interleave<kStep, 1, false>>(a, b);
      r[1] = Shuffled<Interleave<kStep, 1, true>>(a, b);
    } else {
      const V u0 = Shuffled<Interleave<kStep, 1, false>>(r[0], r[1]),
              u1 = Shuffled<Interleave<kStep, 1, true>>(r[0], r[1]);
      const V u2 = Shuffled<Interleave<kStep, 1, false>>(r[2], r[3]),
              u3 = Shuffled<Interleave<kStep, 1, true>>(r[2], r[3]);
      r[0] = Shuffled<Interleave<kStep, 2, false>>(u0, u2);
      r[1] = Shuffled<Interleave<kStep, 2, true>>(u0, u2);
      r[2] = Shuffled<Interleave<kStep, 2, false>>(u1, u3);
      r[3] = Shuffled<Interleave<kStep, 2, true>>(u1, u3);
    }
  });
  Unrolled<kStep>([&](auto c) ORPSP_INLINED {
    if constexpr (count / kStep == 2) TransposeBlocks(row[c], row[c + kStep]);
    if constexpr (count / kStep == 4) TransposeBlocks(row[c], row[c + kStep], row[c + 2 * kStep], row[c + 3 * kStep]);
  });
}

// One part of a square of points: load(i) is that of row i, its lanes the points of the row; store gets j and that of
// point j, its lanes the rows.
template <class D, class Load, class Store, class V = hn::Vec<D>>
HWY_INLINE void TransposePart(D, const Load& load, const Store& store) {
  using T = hn::TFromD<D>;
  constexpr size_t kCount = hn::MaxLanes(D{});
  V row[kCount];
  Unrolled<kCount>([&](auto i)
                       ORPSP_INLINED { row[i] = load(std::integral_constant<size_t, pointOfLane<T>(i, kCount)>{}); });
  Transpose(row);
  Unrolled<kCount>([&](auto i)
                       ORPSP_INLINED { store(std::integral_constant<size_t, pointOfLane<T>(i, kCount)>{}, row[i]); });
}

// ---- Arithmetic

// x * (wRe + i wIm)
template <class V>
HWY_INLINE Parts<V> Times(Parts<V> x, V wRe, V wIm) {
  return {hn::NegMulAdd(x.im, wIm, hn::Mul(x.re, wRe)), hn::MulAdd(x.im, wRe, hn::Mul(x.re, wIm))};
}
template <class V>
HWY_INLINE Parts<V> Times(Parts<V> x, Parts<V> w) {
  return Times(x, w.re, w.im);
}

template <class V, class T = hn::TFromV<V>>
HWY_INLINE Parts<V> TimesReal(Parts<V> x, T factor) {
  const V f = hn::Set(hn::DFromV<V>{}, factor);
  return {hn::Mul(x.re, f), hn::Mul(x.im, f)};
}

// exp(-2 pi i k / n), k < n / 2: cosine, sine and the smaller of their quotients.
template <size_t k, size_t n>
struct Turn {
  static constexpr int kOrder = static_cast<int>(hwy::CeilLog2(n));
  static constexpr bool isUpper = 4 * k > n;
  static constexpr long double kSine = exactSine(isUpper ? n / 2 - k : k, kOrder);
  static constexpr long double kCosine = (isUpper ? -1 : 1) * exactSine(isUpper ? k - n / 4 : n / 4 - k, kOrder);
  static constexpr bool isCosineLarger = 8 * k <= n || 8 * k >= 3 * n;
  static constexpr long double kQuotient = isCosineLarger ? kSine / kCosine : kCosine / kSine;
  static constexpr long double kFactor = isCosineLarger ? kCosine : kSine;
};

// sum = e + w o and difference = e - w o for w = exp(-2 pi i k / radix). One quotient is taken out of w, so that six
// fused operations do. [Linzer and Feig 1993]
template <size_t k, size_t radix, class V>
HWY_INLINE void Combine(Parts<V> e, Parts<V> o, Parts<V>& sum, Parts<V>& difference) {
  constexpr hn::DFromV<V> d;
  using T = hn::TFromV<V>;
  if constexpr (k == 0) {
    sum = {hn::Add(e.re, o.re), hn::Add(e.im, o.im)};
    difference = {hn::Sub(e.re, o.re), hn::Sub(e.im, o.im)};
  } else if constexpr (4 * k == radix) {
    sum = {hn::Add(e.re, o.im), hn::Sub(e.im, o.re)};
    difference = {hn::Sub(e.re, o.im), hn::Add(e.im, o.re)};
  } else {
    using W = Turn<k, radix>;
    const V quotient = hn::Set(d, static_cast<T>(W::kQuotient)), f = hn::Set(d, static_cast<T>(W::kFactor));
    V p, r;  // w o = f (p + i r)
    if constexpr (W::kQuotient == 1) {
      p = hn::Add(o.re, o.im);
      r = hn::Sub(o.im, o.re);
    } else if constexpr (W::isCosineLarger) {
      p = hn::MulAdd(quotient, o.im, o.re);
      r = hn::NegMulAdd(quotient, o.re, o.im);
    } else {
      p = hn::MulAdd(quotient, o.re, o.im);
      r = hn::MulSub(quotient, o.im, o.re);
    }
    sum = {hn::MulAdd(f, p, e.re), hn::MulAdd(f, r, e.im)};
    difference = {hn::NegMulAdd(f, p, e.re), hn::NegMulAdd(f, r, e.im)};
  }
}

// Few points are worth their pairs: a vector of them as they stand in memory. isInverse: the transform with the other
// sign of its angles.
template <class V, bool isInverse>
struct Paired {
  V pairs;
};

// first, second, first, second, ...
template <class V>
HWY_INLINE V ByTurns(double first, double second) {
  using T = hn::TFromV<V>;
  constexpr hn::DFromV<V> d;
  return hn::OddEven(hn::Set(d, static_cast<T>(second)), hn::Set(d, static_cast<T>(first)));
}

template <class V>
HWY_INLINE V SwappedParts(V v) {
  return hn::Reverse2(hn::DFromV<V>{}, v);
}

// x times w: `re` has the real parts of w twice, `im` the imaginary parts, the first one of two negated.
template <class V, bool isInverse>
HWY_INLINE Paired<V, isInverse> Times(Paired<V, isInverse> x, V re, V im) {
  return {hn::MulAdd(SwappedParts(x.pairs), im, hn::Mul(x.pairs, re))};
}

template <class V, bool isInverse, class T = hn::TFromV<V>>
HWY_INLINE Paired<V, isInverse> TimesReal(Paired<V, isInverse> x, T factor) {
  return {hn::Mul(x.pairs, hn::Set(hn::DFromV<V>{}, factor))};
}

template <size_t k, size_t radix, class V, bool isInverse>
HWY_INLINE void Combine(Paired<V, isInverse> e, Paired<V, isInverse> o, Paired<V, isInverse>& sum,
                        Paired<V, isInverse>& difference) {
  constexpr hn::DFromV<V> d;
  using T = hn::TFromV<V>;
  constexpr double sign = isInverse ? -1 : 1;
  if constexpr (k == 0) {
    sum = {hn::Add(e.pairs, o.pairs)};
    difference = {hn::Sub(e.pairs, o.pairs)};
  } else if constexpr (4 * k == radix) {
    const V swapped = SwappedParts(o.pairs), unit = ByTurns<V>(sign, -sign);
    sum = {hn::MulAdd(unit, swapped, e.pairs)};
    difference = {hn::NegMulAdd(unit, swapped, e.pairs)};
  } else {
    using W = Turn<k, radix>;
    constexpr double q = sign * static_cast<double>(W::kQuotient);
    const V swapped = SwappedParts(o.pairs), f = hn::Set(d, static_cast<T>(W::kFactor));
    const V p = W::isCosineLarger ? hn::MulAdd(ByTurns<V>(q, -q), swapped, o.pairs)
                                  : hn::MulAdd(hn::Set(d, static_cast<T>(W::kQuotient)), o.pairs,
                                               hn::Mul(ByTurns<V>(sign, -sign), swapped));
    sum = {hn::MulAdd(f, p, e.pairs)};
    difference = {hn::NegMulAdd(f, p, e.pairs)};
  }
}

template <bool isScaled, class P, class T>
HWY_INLINE P MaybeScaled(P x, T factor) {
  if constexpr (isScaled) return TimesReal(x, factor);
  return x;
}

// x[k] = sum over n < radix of load(first + step n) exp(-2 pi i n k / radix); points are loaded where they are needed.
template <size_t radix, size_t first, size_t step, class Load, class P>
HWY_INLINE void Dft(const Load& load, P (&x)[radix]) {
  if constexpr (radix == 1) {
    x[0] = load(std::integral_constant<size_t, first>{});
  } else {
    constexpr size_t kHalf = radix / 2;
    P even[kHalf], odd[kHalf];
    Dft<kHalf, first, 2 * step>(load, even);
    Dft<kHalf, first + step, 2 * step>(load, odd);
    Unrolled<kHalf>([&](auto k) ORPSP_INLINED { Combine<k, radix>(even[k], odd[k], x[k], x[k + kHalf]); });
  }
}

// Dft that hands k and x[k] to `store`, one by one.
template <size_t radix, class P, class Load, class Store>
HWY_INLINE void Butterfly(const Load& load, const Store& store) {
  constexpr size_t kHalf = radix / 2;
  P even[kHalf], odd[kHalf];
  Dft<kHalf, 0, 2>(load, even);
  Dft<kHalf, 1, 2>(load, odd);
  Unrolled<kHalf>([&](auto k) ORPSP_INLINED {
    P sum, difference;
    Combine<k, radix>(even[k], odd[k], sum, difference);
    store(k, sum);
    store(std::integral_constant<size_t, k + kHalf>{}, difference);
  });
}

}  // namespace
}  // namespace fft
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
