// Nearest elements, counts and zero crossings.
#include "orpsp/stats/search.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "stats/search.cpp"
#include <hwy/foreach_target.h>

#include "simd/forms-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// ---- Counts

// The sum of op(d, src[n]...) over n < len, with its sign turned; op gives lanes of 0, -1 or -2.
template <class Op, class S, class... More>
HWY_INLINE int64_t Tally(const Op& op, size_t len, const S& src, const More&... more) {
  using Count = hwy::MakeSigned<typename S::Type>;
  constexpr hn::ScalableTag<Count> d;
  constexpr hn::ScalableTag<int32_t> d32;
  constexpr size_t N = hn::MaxLanes(d), kSteps = 2048;  // four counters of that many steps add up to less than 32767
  const auto marks = [&](size_t i) HWY_ATTR { return op(d, src.template Load<N>(i), more.template Load<N>(i)...); };
  int64_t total = 0;
  size_t i = 0;
  while (i < len) {
    auto c0 = hn::Zero(d), c1 = c0, c2 = c0, c3 = c0;
    const size_t end = i + HWY_MIN(4 * N * kSteps, len - i);
    for (; i + 4 * N <= end; i += 4 * N) {
      c0 = hn::Sub(c0, marks(i));
      c1 = hn::Sub(c1, marks(i + N));
      c2 = hn::Sub(c2, marks(i + 2 * N));
      c3 = hn::Sub(c3, marks(i + 3 * N));
    }
    for (; i + N <= end; i += N) c0 = hn::Sub(c0, marks(i));
    if (i < end) {
      const size_t few = end - i;
      const auto last = op(d, src.From(i).template LoadFew<N>(few), more.From(i).template LoadFew<N>(few)...);
      c1 = hn::Sub(c1, hn::IfThenElseZero(hn::FirstN(d, few), last));
      i = end;
    }
    const auto sum = hn::Add(hn::Add(c0, c1), hn::Add(c2, c3));
    if constexpr (sizeof(Count) == 2) {
      total += hn::GetLane(hn::SumOfLanes(d32, SumOfPairs(sum, hn::Set(d, 1))));
    } else {
      total += hn::GetLane(hn::SumOfLanes(d32, sum));
    }
  }
  return total;
}

// lower < x < upper, where lower < upper: x - lower - 1 is less than upper - lower - 1 without a sign. Both sides have
// their top bit flipped for a comparison with a sign.
struct InRange {
  int32_t addend, limit;
  InRange(int32_t lower, int32_t upper)
      : addend(static_cast<int32_t>(0x7FFFFFFFU - static_cast<uint32_t>(lower))),
        limit(static_cast<int32_t>(0x7FFFFFFFU + (static_cast<uint32_t>(upper) - static_cast<uint32_t>(lower)))) {}
  HWY_INLINE auto operator()(auto d, auto x) const {
    return hn::VecFromMask(d, hn::Lt(hn::Add(x, hn::Set(d, addend)), hn::Set(d, limit)));
  }
};

OrpStatus countInRange(const Orp32s* pSrc, int len, int* pCounts, Orp32s lowerBound, Orp32s upperBound) {
  ORPS_CHECK_VECTOR(len, pSrc, pCounts);
  int64_t count = 0;
  if (lowerBound < upperBound) count = Tally(InRange{lowerBound, upperBound}, toSize(len), Vector<Orp32s>{pSrc});
  put(pCounts, static_cast<int>(count));
  return StsOk;
}

struct OtherSignBit {
  HWY_INLINE auto operator()(auto d, auto a, auto b) const {
    return hn::BroadcastSignBit(hn::Xor(hn::BitCast(d, a), hn::BitCast(d, b)));
  }
};

// Whether a b < 0.
struct OppositeSigns {
  template <class V>
  HWY_INLINE auto operator()(auto d, V a, V b) const {
    if constexpr (isFloat<hn::TFromV<V>>) {
      constexpr hn::DFromV<V> dv;
      const auto large = hn::Set(dv, 0x1p126F);  // no product of two numbers is too small then, nor infinity times zero
      const auto product = hn::Mul(hn::Mul(a, large), hn::Mul(b, large));
      return hn::BitCast(d, hn::VecFromMask(dv, hn::Lt(product, hn::Zero(dv))));
    } else {
      return hn::BroadcastSignBit(hn::MulHigh(a, b));
    }
  }
};

// |sgn b - sgn a|: once for a change of being below zero, once for a change of being above.
struct SignStep {
  template <class V>
  HWY_INLINE auto operator()(auto d, V a, V b) const {
    constexpr hn::DFromV<V> dv;
    const auto zero = hn::Zero(dv);
    const auto below = hn::Xor(hn::Lt(a, zero), hn::Lt(b, zero)), above = hn::Xor(hn::Gt(a, zero), hn::Gt(b, zero));
    return hn::Add(hn::BitCast(d, hn::VecFromMask(dv, below)), hn::BitCast(d, hn::VecFromMask(dv, above)));
  }
};

template <class T>
OrpStatus zeroCrossing(const T* pSrc, int len, Orp32f* pValZCR, int zcType) {
  ORPS_CHECK_VECTOR(len, pSrc, pValZCR);
  const auto tally = [=](auto op) HWY_ATTR {
    return static_cast<double>(Tally(op, toSize(len) - 1, Vector<T>{pSrc}, Vector<T>{pSrc + 1}));
  };
  double crossings = 0;
  switch (zcType) {
    case 0:
      crossings = tally(OtherSignBit{});
      break;
    case 1:
      crossings = tally(OppositeSigns{});
      break;
    case 2:
      crossings = tally(SignStep{}) / 2;
      break;
    default:
      return StsBadArg;
  }
  put(pValZCR, static_cast<Orp32f>(crossings));
  return StsOk;
}

// ---- Nearest elements

// The number of elements less than each of the values. Bisection leaves one vector of elements, which are compared at
// once. Searches run side by side, for each waits for its loads, and without branches, which could not be predicted.
template <size_t count, class T>
HWY_INLINE void LowerBounds(const T* table, size_t len, const T* values, size_t* bounds) {
  constexpr hn::ScalableTag<T> d;
  constexpr size_t N = hn::MaxLanes(d);
  const auto within = [&](auto elements, T value) HWY_ATTR {
    const auto first = hn::FindFirstTrue(d, hn::Eq(hn::SaturatedSub(hn::Set(d, value), elements), hn::Zero(d)));
    return first < 0 ? N : static_cast<size_t>(first);
  };
  if (len < N) {
    const auto all = hn::IfThenElse(hn::FirstN(d, len), LoadFew(d, table, len), hn::Set(d, kMost<T>));
#pragma GCC unroll 8
    for (size_t k = 0; k < count; ++k) {
      const size_t bound = within(all, values[k]);
      bounds[k] = HWY_MIN(bound, len);
    }
    return;
  }
  size_t begin[count];
#pragma GCC unroll 8
  for (size_t k = 0; k < count; ++k) begin[k] = 0;
  for (size_t rest = len; rest > N;) {
    const size_t half = rest / 2;
#pragma GCC unroll 8
    for (size_t k = 0; k < count; ++k) begin[k] += half & (0 - size_t{get(table + begin[k] + half - 1) < values[k]});
    rest -= half;
  }
#pragma GCC unroll 8
  for (size_t k = 0; k < count; ++k) {
    const size_t from = HWY_MIN(begin[k], len - N);  // what stands before is less as well
    bounds[k] = from + within(hn::LoadU(d, table + from), values[k]);
  }
}

template <size_t count, class T>
HWY_INLINE void FindNearest(const T* table, size_t len, const T* pValues, T* found, int* indexes) {
  T values[count];
  size_t bounds[count];
#pragma GCC unroll 8
  for (size_t k = 0; k < count; ++k) values[k] = get(pValues + k);
  LowerBounds<count>(table, len, values, bounds);
#pragma GCC unroll 8
  for (size_t k = 0; k < count; ++k) {
    const size_t below = bounds[k] - size_t{bounds[k] > 0}, above = bounds[k] - size_t{bounds[k] == len};
    const bool isAboveNearer = get(table + above) - values[k] < values[k] - get(table + below);
    size_t at = below + ((above - below) & size_t{isAboveNearer});
    const T nearest = get(table + at);
    if (HWY_UNLIKELY(at > 0 && get(table + at - 1) == nearest)) LowerBounds<1>(table, at, &nearest, &at);
    put(found + k, get(table + at));
    put(indexes + k, static_cast<int>(at));
  }
}

template <class T>
OrpStatus findNearestOne(T inpVal, const T* pTable, int tblLen, T* pOutVal, int* pOutIndex) {
  ORPS_CHECK_VECTOR(tblLen, pTable, pOutVal, pOutIndex);
  FindNearest<1>(pTable, toSize(tblLen), &inpVal, pOutVal, pOutIndex);
  return StsOk;
}

template <class T>
OrpStatus findNearest(const T* pVals, T* pOutVals, int* pOutIndexes, int len, const T* pTable, int tblLen) {
  ORPS_CHECK_VECTOR(len, pVals, pOutVals, pOutIndexes, pTable);
  ORPS_RETURN_IF(tblLen <= 0, StsBadSize);
  constexpr int kAtOnce = 8;
  int n = 0;
  for (; n + kAtOnce <= len; n += kAtOnce)
    FindNearest<kAtOnce>(pTable, toSize(tblLen), pVals + n, pOutVals + n, pOutIndexes + n);
  for (; n < len; ++n) FindNearest<1>(pTable, toSize(tblLen), pVals + n, pOutVals + n, pOutIndexes + n);
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/search.inc"
#include "frame/exports-inl.h"
