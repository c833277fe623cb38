// Sums in a fixed number of lanes, which the widths hold in one vector or more: so the order of additions, and with it
// the last bit of every result, is the same on every processor.
//
//   const auto products = Accumulated<SumOf<double, 32, Product>>(len, Vector<Orp32f>{pSrc1}, Vector<Orp32f>{pSrc2});
//   *pDp = products.sum.Total();
//
// An accumulator has kPer, the elements that one of its vectors takes, kVectors, and Add(k, vectors of the sources...).
// Elements beyond the end are zeros to it. One of integers that must be emptied now and then also has kMostSteps and
// Flush().
#if defined(ORPSP_STATS_REDUCE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_STATS_REDUCE_INL_H_
#undef ORPSP_STATS_REDUCE_INL_H_
#else
#define ORPSP_STATS_REDUCE_INL_H_
#endif

#include <utility>

#include "simd/complex-inl.h"
#include "simd/map-inl.h"
#include "simd/unrolled-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// Lanes that floating-point sums have, where nothing else is promised.
template <class T>
inline constexpr size_t kUsualLanes = 256 / sizeof(T);

// Elements that are summed in single precision before the sum goes on in double precision.
inline constexpr size_t kSingleBlock = 32768;

template <class T, size_t kLanes>
struct Sums {
  using D = hn::CappedTag<T, kLanes>;
  static constexpr size_t kWidth = hn::MaxLanes(D{}), kVectors = kLanes / kWidth;
  hn::Vec<D> v[kVectors];

  HWY_INLINE Sums() {
    Unrolled<kVectors>([this](auto k) ORPSP_INLINED { v[k] = hn::Zero(D{}); });
  }
  HWY_INLINE void Add(size_t k, hn::Vec<D> term) { v[k] = hn::Add(v[k], term); }

  // The upper half added to the lower one, until `left` lanes remain.
  template <size_t left>
  HWY_INLINE Sums<T, left> Folded() const {
    if constexpr (kLanes == left) {
      return *this;
    } else {
      Sums<T, kLanes / 2> half;
      if constexpr (kVectors > 1) {
        Unrolled<kVectors / 2>([&](auto k) ORPSP_INLINED { half.v[k] = hn::Add(v[k], v[k + kVectors / 2]); });
      } else {
        half.v[0] = hn::Add(hn::LowerHalf(v[0]), hn::UpperHalf(hn::Half<D>{}, v[0]));
      }
      return half.template Folded<left>();
    }
  }
  HWY_INLINE T Total() const { return hn::GetLane(Folded<1>().v[0]); }

  HWY_INLINE Parts<T> Totals() const {  // of the even lanes, and of the odd ones
    using D2 = typename Sums<T, 2>::D;
    alignas(16) T lane[16 / sizeof(T)];
    hn::Store(Folded<2>().v[0], D2{}, lane);
    return {lane[0], lane[1]};
  }
};

// Adds term(tag, src...) to one set of lanes.
template <class T, size_t kLanes, class Term>
struct SumOf {
  using Lanes = Sums<T, kLanes>;
  static constexpr size_t kVectors = Lanes::kVectors, kPer = Lanes::kWidth;
  Lanes sum;

  template <class... V>
  HWY_INLINE void Add(size_t k, V... v) {
    sum.Add(k, Term{}(typename Lanes::D{}, v...));
  }
};

template <class Acc, class... V>
HWY_INLINE void AddAt(Acc& acc, size_t at, V... v) {
  Unrolled<Acc::kVectors>([&](auto k) ORPSP_INLINED {
    if (k == at) acc.Add(k, v...);
  });
}

// Fewer elements than one step takes, the first in lane 0.
template <class Acc, class... S>
HWY_INLINE void AccumulateFew(Acc& acc, size_t count, const S&... src) {
  constexpr size_t kPer = Acc::kPer;
  if (count == 0) return;
  Unrolled<Acc::kVectors - 1>([&](auto k) ORPSP_INLINED {
    if ((k + 1) * kPer <= count) acc.Add(k, src.template Load<kPer>(k * kPer)...);
  });
  const size_t whole = count / kPer, rest = count % kPer;
  if constexpr (kPer > 1) {
    if (rest != 0) AddAt(acc, whole, src.From(whole * kPer).template LoadFew<kPer>(rest)...);
  }
}

template <class Acc>
inline constexpr size_t kMostElements = SIZE_MAX;
template <class Acc>
requires(Acc::kMostSteps > 0) inline constexpr size_t kMostElements<Acc> = Acc::kMostSteps * Acc::kVectors * Acc::kPer;

// The whole steps of the sources; returns the number of their elements.
template <class Acc, class... S>
HWY_INLINE size_t AccumulateSteps(Acc& acc, size_t len, const S&... src) {
  constexpr size_t kPer = Acc::kPer, kStep = Acc::kVectors * kPer;
  const size_t all = len / kStep * kStep;
  for (size_t i = 0; i < all;) {
    const size_t end = i + HWY_MIN(all - i, kMostElements<Acc>);
    for (; i < end; i += kStep)
      Unrolled<Acc::kVectors>([&](auto k) ORPSP_INLINED { acc.Add(k, src.template Load<kPer>(i + k * kPer)...); });
    if constexpr (kMostElements<Acc> != SIZE_MAX) acc.Flush();
  }
  return all;
}

template <class Acc, class... S>
HWY_INLINE void Accumulate(Acc& acc, size_t len, const S&... src) {
  const size_t done = AccumulateSteps(acc, len, src...);
  AccumulateFew(acc, len - done, src.From(done)...);
  if constexpr (kMostElements<Acc> != SIZE_MAX) acc.Flush();
}

// The terms of all elements in an accumulator of their own.
template <class Acc, class... S>
HWY_INLINE Acc Accumulated(size_t len, const S&... src) {
  Acc acc{};  // as an aggregate: an implicit constructor would be compiled for the baseline
  Accumulate(acc, len, src...);
  return acc;
}

// add(begin, count) for the blocks of a vector.
HWY_INLINE void ForEachBlock(size_t len, size_t block, const auto& add) {
  for (size_t i = 0; i < len; i += block) add(i, HWY_MIN(block, len - i));
}

// The sum of the terms in double precision, of single-precision sums of every block.
template <class Acc, class... S>
HWY_INLINE double SumInBlocks(size_t len, const S&... src) {
  double sum = 0;
  ForEachBlock(len, kSingleBlock, [&](size_t begin, size_t count) HWY_ATTR {
    sum += double{Accumulated<Acc>(count, src.From(begin)...).sum.Total()};
  });
  return sum;
}

template <class T>
HWY_INLINE T Root(T square) {
  return hn::GetLane(hn::Sqrt(hn::Set(hn::CappedTag<T, 1>{}, square)));
}

// ---- Complex elements as planes in the precision T of the sums: a source, and what its vectors are made into.

template <class T, class E>
HWY_INLINE auto PlanesFor(const E* p) {
  if constexpr (std::is_same_v<T, Lane<E>>) {
    return Planes<E>{p};
  } else {
    return Vector<E>{p};
  }
}
template <class V>
HWY_INLINE auto PartsOf(V pairs) {
  return ToDoubles(pairs);
}
template <class V>
HWY_INLINE Parts<V> PartsOf(Parts<V> parts) {
  return parts;
}

// ---- Terms

struct Itself {
  HWY_INLINE auto operator()(auto d, auto v) const { return Lift(d, v); }
};
struct Product {
  HWY_INLINE auto operator()(auto d, auto a, auto b) const { return hn::Mul(Lift(d, a), Lift(d, b)); }
};

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
