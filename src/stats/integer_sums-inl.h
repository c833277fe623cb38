// Accumulators of integers, exact for INT_MAX elements of any value. They go through Accumulate (reduce-inl.h).
#if defined(ORPSP_STATS_INTEGER_SUMS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_STATS_INTEGER_SUMS_INL_H_
#undef ORPSP_STATS_INTEGER_SUMS_INL_H_
#else
#define ORPSP_STATS_INTEGER_SUMS_INL_H_
#endif

#include "simd/integer-inl.h"
#include "simd/totals.h"
#include "stats/reduce-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

template <class T>
inline constexpr Range64 kRange = {kLeast<T>, kMost<T>};

// convert(total, type of the result) of a total, or of both parts of one.
template <class R>
HWY_INLINE R Finished(auto total, const auto& convert) {
  return convert(total, R{});
}
template <class R, class T>
HWY_INLINE R Finished(Parts<T> total, const auto& convert) {
  return {convert(total.re, Lane<R>{}), convert(total.im, Lane<R>{})};
}
struct Scaled {
  int scale;
  template <class R>
  HWY_INLINE R operator()(Int128 total, R) const {
    return static_cast<R>(scaledTotal(total, scale, kRange<R>));
  }
};

using Wide64 = hn::Vec<hn::ScalableTag<uint64_t>>;

HWY_INLINE uint64_t TotalOf(Wide64 lanes) {
  Sums<uint64_t, hn::MaxLanes(hn::ScalableTag<uint64_t>{})> sums;
  sums.v[0] = lanes;
  return sums.Total();
}

// Sums of unsigned lanes of 32 or 64 bits, of their lower and upper halves by themselves.
template <class T>
class HalfSums {
 public:
  using D = hn::ScalableTag<T>;

  HWY_INLINE HalfSums()
      : low_(hn::Zero(D{})), high_(low_), wideLow_(hn::Zero(hn::ScalableTag<uint64_t>{})), wideHigh_(wideLow_) {}

  HWY_INLINE void Add(hn::Vec<D> v) {
    low_ = hn::Add(low_, hn::And(v, hn::Set(D{}, (T{1} << kHalf) - 1)));
    high_ = hn::Add(high_, hn::ShiftRight<kHalf>(v));
  }
  // Due after 2^15 vectors at the latest.
  HWY_INLINE void Flush() {
    if constexpr (sizeof(T) == 4) {
      wideLow_ = hn::Add(wideLow_, Widened(low_));
      wideHigh_ = hn::Add(wideHigh_, Widened(high_));
      low_ = high_ = hn::Zero(D{});
    }
  }
  // The totals of flushed halves: weighed as what they are, or as lanes of their own.
  HWY_INLINE Uint128 Total() const { return Low() + (Uint128{High()} << kHalf); }
  HWY_INLINE uint64_t TotalOfHalves() const { return Low() + High(); }

 private:
  static constexpr int kHalf = 4 * sizeof(T);

  static HWY_INLINE Wide64 Widened(hn::Vec<D> v) {
    constexpr hn::ScalableTag<uint64_t> d;
    const auto pairs = hn::BitCast(d, v);
    return hn::Add(hn::And(pairs, hn::Set(d, 0xFFFFFFFF)), hn::ShiftRight<32>(pairs));
  }
  HWY_INLINE uint64_t Low() const {
    if constexpr (sizeof(T) == 4)
      return TotalOf(wideLow_);
    else
      return TotalOf(low_);
  }
  HWY_INLINE uint64_t High() const {
    if constexpr (sizeof(T) == 4)
      return TotalOf(wideHigh_);
    else
      return TotalOf(high_);
  }

  hn::Vec<D> low_, high_;
  Wide64 wideLow_, wideHigh_;
};

// Sums of signed lanes above the least number of their type, which stands for the one beyond the greatest: no sum of
// two products of 16 bits reaches the former.
template <class T>
class SignedSums {
 public:
  using D = hn::ScalableTag<T>;

  HWY_INLINE SignedSums() {}  // an implicit one would be compiled for the baseline

  HWY_INLINE void Add(hn::Vec<D> v) {
    using U = hwy::MakeUnsigned<T>;
    sums_.Add(hn::BitCast(hn::ScalableTag<U>{}, hn::Add(v, hn::Set(D{}, kBias))));
    lanes_ += hn::MaxLanes(D{});
  }
  HWY_INLINE void Flush() { sums_.Flush(); }
  HWY_INLINE Int128 Total() const { return static_cast<Int128>(sums_.Total()) - static_cast<Int128>(lanes_) * kBias; }

 private:
  static constexpr T kBias = kMost<T>;
  HalfSums<hwy::MakeUnsigned<T>> sums_;
  uint64_t lanes_ = 0;
};

// What accumulators have in common whose vectors hold elements of `bytes` bytes each.
template <size_t bytes>
struct OfVectors {
  static constexpr size_t kVectors = 2, kPer = HWY_MAX_BYTES / bytes, kMostSteps = size_t{1} << 13;
};

// sum of x
struct Sum16 : OfVectors<2> {
  hn::Vec<hn::ScalableTag<int32_t>> pairs;
  int64_t total = 0;

  HWY_INLINE Sum16() : pairs(hn::Zero(hn::ScalableTag<int32_t>{})) {}
  HWY_INLINE void Add(size_t, auto v) { pairs = hn::Add(pairs, SumOfPairs(v, hn::Set(hn::ScalableTag<int16_t>{}, 1))); }
  HWY_INLINE void Flush() {
    constexpr hn::ScalableTag<int64_t> d;
    const auto lower = hn::PromoteTo(d, hn::LowerHalf(pairs));
    const auto upper = hn::PromoteTo(d, hn::UpperHalf(hn::Half<hn::ScalableTag<int32_t>>{}, pairs));
    total += static_cast<int64_t>(TotalOf(hn::BitCast(hn::ScalableTag<uint64_t>{}, hn::Add(lower, upper))));
    pairs = hn::Zero(hn::ScalableTag<int32_t>{});
  }
};

// sum of x^2
struct Squares16 : OfVectors<2> {
  HalfSums<uint32_t> sums;  // two squares are at most 2^31

  HWY_INLINE void Add(size_t, auto v) { sums.Add(hn::BitCast(hn::ScalableTag<uint32_t>{}, SumOfPairs(v, v))); }
  HWY_INLINE void Flush() { sums.Flush(); }
  HWY_INLINE uint64_t Total() const { return static_cast<uint64_t>(sums.Total()); }
};

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
