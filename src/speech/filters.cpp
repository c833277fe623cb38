// Pre-emphasis, and sums over a window that slides along a vector.
#include <cmath>

#include "frame/entry.h"
#include "orpsp/speech/signal.h"
#include "simd/element.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "speech/filters.cpp"
#include <hwy/foreach_target.h>

#include "frame/check.h"
#include "simd/round-inl.h"
#include "simd/shuffle-inl.h"
#include "stats/integer_sums-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// ---- Pre-emphasis

template <size_t by>
struct Up {
  static constexpr size_t pick(size_t i, size_t lanes) { return i < by ? 2 * lanes - by + i : i - by; }
};

// The lanes moved up by some, zeros below them.
template <size_t by, class V>
HWY_INLINE V MovedUp(V v) {
  return Shuffled<Up<by>>(v, hn::Zero(hn::DFromV<V>{}));
}

struct LessPart {
  static constexpr size_t kStep = HWY_MAX_BYTES / sizeof(float);
  float v;

  HWY_INLINE auto operator()(auto d, auto x, auto previous) const {
    return hn::Sub(x, hn::Mul(hn::Set(d, v), previous));
  }
};

// With -v = (upper + lower 2^-16) 2^-14: sums in units of 2^-14, and whether there is something beyond.
struct RoundedLessPart {
  static constexpr size_t kStep = HWY_MAX_BYTES / sizeof(Orp16s);
  Orp16s upper, lower;

  template <class D, class V>
  HWY_INLINE V operator()(D d, V x, V previous) const {
    constexpr hn::RepartitionToWide<D> dw;
    const auto factors = hn::BitCast(d, hn::Set(dw, (upper * 65536) | (1 << 14)));
    const auto small = hn::Set(d, lower), low = hn::Mul(previous, small), high = hn::MulHigh(previous, small);
    const auto more = hn::Add(hn::VecFromMask(d, hn::Eq(low, hn::Zero(d))), hn::Set(d, 1));
    const auto rounded = [=](V pairs, V rests) HWY_ATTR {
      const auto rest = hn::BitCast(dw, rests);
      const auto sum = hn::Add(SumOfPairs(pairs, factors), hn::ShiftRight<16>(rest));
      const auto up = hn::And(hn::Or(hn::ShiftRight<14>(sum), rest), hn::Set(dw, 1));  // else a tie goes down
      return hn::ShiftRight<14>(hn::Add(hn::Add(sum, hn::Set(dw, (1 << 13) - 1)), up));
    };
    return Pack(rounded(hn::InterleaveLower(d, x, previous), hn::InterleaveLower(d, more, high)),
                rounded(hn::InterleaveUpper(d, x, previous), hn::InterleaveUpper(d, more, high)));
  }
};

// x less v times the element before, for any v. Products are exact in double precision. Differences lose a last bit
// only where they have 15 bits of integer and the product is 1/2 + j 2^-39, next to a tie for j = 1 or -1: but neither
// 2^38 + 1 nor 2^38 - 1 is the product of numbers of 15 and 24 bits.
struct RoundedLessAnyPart {
  static constexpr size_t kStep = HWY_MAX_BYTES / sizeof(double);
  double v;

  HWY_INLINE auto operator()(auto d, auto x, auto previous) const {
    const auto part = hn::Mul(hn::Set(kDoubles, v), Lift(kDoubles, previous));
    const auto value = hn::Sub(Lift(kDoubles, x), part);
    return RoundTo<Rounding::kNearest>(d, hn::IfThenElseZero(hn::Eq(value, value), value));
  }
};

// From the last element to the first, since dst may be src.
template <class Op, class T>
HWY_INLINE OrpStatus Emphasize(const Op& op, const T* src, T* dst, size_t len) {
  constexpr size_t kStep = Op::kStep;
  constexpr TagOf<T, kStep> d;
  const auto at = [&](size_t i) HWY_ATTR { return op(d, hn::LoadU(d, src + i), hn::LoadU(d, src + i - 1)); };
  size_t i = len;
  hn::Vec<decltype(d)> last = hn::Zero(d);  // held until the loop is through
  if (len > kStep) {
    last = at(len - kStep);
    i -= reinterpret_cast<uintptr_t>(dst + len) % (kStep * sizeof(T)) / sizeof(T);
  }
  while (i > kStep) {
    i -= kStep;
    hn::StoreU(at(i), d, dst + i);
  }
  const auto first = LoadFew(d, src, i);
  StoreFew(op(d, first, MovedUp<1>(first)), d, dst, i);
  if (len > kStep) hn::StoreU(last, d, dst + (len - kStep));
  return StsOk;
}

OrpStatus preemphasize(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f v) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  return Emphasize(LessPart{v}, pSrc, pDst, static_cast<size_t>(len));
}

OrpStatus preemphasize(const Orp16s* pSrc, Orp16s* pDst, int len, Orp32f v) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  const double scaled = -0x1p30 * double{v};
  const auto factor = std::fabs(v) < 1.999f ? static_cast<int32_t>(scaled) : 0;
  if (factor != scaled) return Emphasize(RoundedLessAnyPart{v}, pSrc, pDst, static_cast<size_t>(len));
  const int upper = (factor + (1 << 15)) >> 16;
  const RoundedLessPart op{static_cast<Orp16s>(upper), static_cast<Orp16s>(factor - upper * 65536)};
  return Emphasize(op, pSrc, pDst, static_cast<size_t>(len));
}

// ---- Sums over a window

using Ints = hn::Vec<hn::ScalableTag<int32_t>>;
constexpr hn::ScalableTag<int32_t> kInts;
constexpr hn::ScalableTag<float> kFloats;
constexpr size_t kInt32Lanes = HWY_MAX_BYTES / sizeof(int32_t);

struct LastLane {
  static constexpr size_t pick(size_t, size_t lanes) { return lanes - 1; }
};

// Each lane plus all below it.
template <size_t by = 1>
HWY_INLINE Ints Prefix(Ints v) {
  if constexpr (by < kInt32Lanes) {
    return Prefix<2 * by>(hn::Add(v, MovedUp<by>(v)));
  } else {
    return v;
  }
}

// The sum so far, in every lane: in 32 bits, or in doubles, which are exact, too.
struct Sum32 {
  Ints sum;
  static HWY_INLINE Sum32 Of(int64_t sum) { return {hn::Set(kInts, static_cast<int32_t>(sum))}; }

  HWY_INLINE auto Next(Ints prefix) {
    const auto sums = hn::Add(sum, prefix);
    sum = hn::Add(sum, Shuffled<LastLane>(prefix, prefix));
    return hn::ConvertTo(kFloats, sums);
  }
};
struct Sum64 {
  Doubles sum;
  static HWY_INLINE Sum64 Of(int64_t sum) { return {hn::Set(kDoubles, static_cast<double>(sum))}; }

  HWY_INLINE auto Next(Ints prefix) {
    constexpr hn::Half<decltype(kInts)> half;
    constexpr hn::Half<decltype(kFloats)> halfFloats;
    const auto lower = hn::Add(sum, hn::PromoteTo(kDoubles, hn::LowerHalf(half, prefix)));
    const auto upper = hn::Add(sum, hn::PromoteTo(kDoubles, hn::UpperHalf(half, prefix)));
    sum = Shuffled<LastLane>(upper, upper);
    return hn::Combine(kFloats, hn::DemoteTo(halfFloats, upper), hn::DemoteTo(halfFloats, lower));
  }
};

struct Sum8 {
  static constexpr size_t kVectors = 2, kPer = HWY_MAX_BYTES;
  Sums<uint64_t, kVectors * HWY_MAX_BYTES / sizeof(uint64_t)> sums;

  HWY_INLINE void Add(size_t k, auto v) { sums.Add(k, hn::SumsOf8(v)); }
};

HWY_INLINE int64_t TotalOf(const Orp8u* p, size_t len) {
  return static_cast<int64_t>(Accumulated<Sum8>(len, Vector<Orp8u>{p}).sums.Total());
}
HWY_INLINE int64_t TotalOf(const Orp16s* p, size_t len) { return Accumulated<Sum16>(len, Vector<Orp16s>{p}).total; }

// After the first sum, what enters the window less what leaves it.
template <class Sum, class T>
HWY_INLINE void Slide(int64_t first, const T* src, float* dst, size_t len, size_t window) {
  put(dst, static_cast<float>(first));
  auto sum = Sum::Of(first);
  const Vector<T> entering{src + window}, leaving{src};
  const auto next = [&](auto in, auto out)
                        HWY_ATTR { return sum.Next(Prefix(hn::Sub(Lift(kInts, in), Lift(kInts, out)))); };
  size_t n = 1;
  for (; n + kInt32Lanes <= len; n += kInt32Lanes)
    hn::StoreU(next(entering.template Load<kInt32Lanes>(n - 1), leaving.template Load<kInt32Lanes>(n - 1)), kFloats,
               dst + n);
  if (n == len) return;
  const auto in = entering.From(n - 1).template LoadFew<kInt32Lanes>(len - n);
  const auto out = leaving.From(n - 1).template LoadFew<kInt32Lanes>(len - n);
  StoreFew(next(in, out), kFloats, dst + n, len - n);
}

template <class T>
OrpStatus sumWindow(const T* pSrc, Orp32f* pDst, int len, int windowLen) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  ORPS_RETURN_IF(windowLen < 1, StsBadSize);
  const size_t count = static_cast<size_t>(len), window = static_cast<size_t>(windowLen);
  constexpr int64_t kLargest = std::is_signed_v<T> ? -int64_t{kLeast<T>} : int64_t{kMost<T>};
  const int64_t first = TotalOf(pSrc, window);
  if (windowLen <= kMost<int32_t> / kLargest) {
    Slide<Sum32>(first, pSrc, pDst, count, window);
  } else {
    Slide<Sum64>(first, pSrc, pDst, count, window);
  }
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/filters.inc"
#define ORPSP_NEAREST always
#include "frame/exports-inl.h"
