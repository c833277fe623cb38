// Sums, means and standard deviations.
#include "orpsp/stats/moments.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "stats/moments.cpp"
#include <hwy/foreach_target.h>

#include <limits>

#include "simd/forms-inl.h"
#include "stats/integer_sums-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

constexpr int kFast = 1;  // hint

bool IsAtMultipleOf(size_t bytes, const void* p) { return reinterpret_cast<uintptr_t>(p) % bytes == 0; }

// ---- Sums of floating point

// The sum of a block's floats in single precision.
template <class T>
using BlockSum = SumOf<float, kUsualLanes<float>, T>;

HWY_NOINLINE double AccurateSum(const float* p, size_t len) {
  SumOf<double, 8, Itself> eight{};
  if (!IsAtMultipleOf(8, p)) {
    AccumulateFew(eight, 1, Vector<float>{p});
    ++p, --len;
  }
  p += AccumulateSteps(eight, len, Vector<float>{p});
  SumOf<double, 4, Itself> four{eight.sum.Folded<4>()};
  p += AccumulateSteps(four, len & 4, Vector<float>{p});
  for (const size_t few : {2U, 1U}) {
    if (!(len & few)) continue;
    AccumulateFew(four, few, Vector<float>{p});
    p += few;
  }
  return four.sum.Total();
}

HWY_NOINLINE double FastSum(const float* p, size_t len) {
  const size_t misplaced = reinterpret_cast<uintptr_t>(p) % 16;
  size_t head = misplaced % 4 == 0 ? (16 - misplaced) / 4 % 4 : 0;
  double sum = 0;
  for (; head != 0 && len != 0; --head, --len) sum += double{*p++};
  return sum + SumInBlocks<BlockSum<Itself>>(len, Vector<float>{p});
}

template <class T>
HWY_NOINLINE Sums<double, 2> DoubleSum(const T* p, size_t len) {
  return Accumulated<SumOf<double, kUsualLanes<double>, Itself>>(len, Vector<T>{p}).sum.template Folded<2>();
}

template <class T>
HWY_INLINE Parts<double> ComplexSum(const T* p, size_t len) {
  return DoubleSum(lanes(p), 2 * len).Totals();
}

HWY_NOINLINE Parts<double> FastComplexSum(const Orp32fc* p, size_t len) {
  Parts<double> sum = {0, 0};
  ForEachBlock(2 * len, kSingleBlock, [&](size_t begin, size_t count) HWY_ATTR {
    const auto part = Accumulated<BlockSum<Itself>>(count, Vector<float>{lanes(p) + begin}).sum.Totals();
    sum.re += double{part.re};
    sum.im += double{part.im};
  });
  return sum;
}

HWY_INLINE double SumByHint(const float* p, size_t len, int hint) {
  return hint == kFast ? FastSum(p, len) : AccurateSum(p, len);
}
HWY_INLINE Parts<double> SumByHint(const Orp32fc* p, size_t len, int hint) {
  return hint == kFast ? FastComplexSum(p, len) : ComplexSum(p, len);
}
HWY_INLINE double SumByHint(const double* p, size_t len) { return DoubleSum(p, len).Total(); }
HWY_INLINE Parts<double> SumByHint(const Orp64fc* p, size_t len) { return ComplexSum(p, len); }

// A result in the precision of T. The assembler hides where a number comes from: GCC 12 forms a vector of two doubles
// that are narrowed and widened again, and takes the doubles themselves for the result.
template <class T>
HWY_INLINE T As(double v) {
  auto rounded = static_cast<T>(v);
  asm("" : "+x"(rounded));
  return rounded;
}
template <class T>
HWY_INLINE T As(Parts<double> v) {
  return {As<Lane<T>>(v.re), As<Lane<T>>(v.im)};
}

HWY_INLINE double Over(int len, double v) { return v / len; }
HWY_INLINE double Over(int len, float v) { return double{v} / len; }
template <class T>
HWY_INLINE Parts<double> Over(int len, T v) {
  return {Over(len, v.re), Over(len, v.im)};
}

template <class T, class... Hint>
OrpStatus sum(const T* pSrc, int len, T* pSum, Hint... hint) {
  ORPS_CHECK_VECTOR(len, pSrc, pSum);
  put(pSum, As<T>(SumByHint(pSrc, toSize(len), hint...)));
  return StsOk;
}

// The sum is rounded to the type of the elements before it is divided.
template <class T, class... Hint>
OrpStatus mean(const T* pSrc, int len, T* pMean, Hint... hint) {
  ORPS_CHECK_VECTOR(len, pSrc, pMean);
  put(pMean, As<T>(Over(len, As<T>(SumByHint(pSrc, toSize(len), hint...)))));
  return StsOk;
}

// ---- Sums of integers

HWY_NOINLINE int64_t ExactSum(const Orp16s* p, size_t len) { return Accumulated<Sum16>(len, Vector<Orp16s>{p}).total; }

HWY_NOINLINE int64_t ExactSum(const Orp32s* p, size_t len) {
  return Accumulated<SumOf<int64_t, kUsualLanes<int64_t>, Itself>>(len, Vector<Orp32s>{p}).sum.Total();
}

// Sums of both parts: a pair fills a lane of 32 bits, in which the part that a sum leaves out is set to 0.
struct ComplexSum16 : OfVectors<2> {
  Sum16 re, im;

  HWY_INLINE void Add(size_t k, auto v) {
    constexpr hn::ScalableTag<int16_t> d;
    const auto isReal = hn::BitCast(d, hn::Set(hn::ScalableTag<int32_t>{}, 0xFFFF));
    re.Add(k, hn::And(v, isReal));
    im.Add(k, hn::AndNot(isReal, v));
  }
  HWY_INLINE void Flush() {
    re.Flush();
    im.Flush();
  }
};

HWY_NOINLINE Parts<int64_t> ExactSum(const Orp16sc* p, size_t len) {
  const auto sums = Accumulated<ComplexSum16>(2 * len, Vector<Orp16s>{lanes(p)});
  return {sums.re.total, sums.im.total};
}

struct Quotient {
  int len, scale;
  template <class R>
  HWY_INLINE R operator()(int64_t total, R) const {
    return static_cast<R>(scaledQuotient(total, len, scale, kRange<R>));
  }
};

template <class T, class D>
OrpStatus sumSfs(const T* pSrc, int len, D* pSum, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc, pSum);
  put(pSum, Finished<D>(ExactSum(pSrc, toSize(len)), Scaled{scaleFactor}));
  return StsOk;
}

template <class T, class D>
OrpStatus meanSfs(const T* pSrc, int len, D* pMean, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc, pMean);
  put(pMean, Finished<D>(ExactSum(pSrc, toSize(len)), Quotient{len, scaleFactor}));
  return StsOk;
}

// ---- Standard deviations

template <class T, size_t kLanes>
struct SumsAndSquares {
  using Lanes = Sums<T, kLanes>;
  static constexpr size_t kVectors = Lanes::kVectors, kPer = Lanes::kWidth;
  Lanes sum, squares;

  HWY_INLINE void Add(size_t k, auto v) {
    const auto x = Lift(typename Lanes::D{}, v);
    sum.Add(k, x);
    squares.Add(k, hn::Mul(x, x));
  }
};

struct Moments {
  double mean, deviation;
};

// Mean and deviation from sums over n elements less a reference.
HWY_INLINE Moments MomentsOf(double sum, double squares, double n, double reference = 0) {
  // Round-off must not make a negative variance; a NaN stays.
  const double variance = n * squares - sum * sum;
  return {double{As<float>(sum + n * reference)} / n, Root((variance < 0 ? 0 : variance) / (n * (n - 1)))};
}

HWY_NOINLINE Moments AccurateMoments(const float* p, size_t len) {
  const double n = static_cast<double>(len);
  SumsAndSquares<double, 4> sums{};
  if (!IsAtMultipleOf(8, p)) {
    AccumulateFew(sums, 1, Vector<float>{p});
    ++p, --len;
  }
  p += AccumulateSteps(sums, len, Vector<float>{p});
  for (const size_t few : {2U, 1U}) {
    if (!(len & few)) continue;
    AccumulateFew(sums, few, Vector<float>{p});
    p += few;
  }
  return MomentsOf(sums.sum.Total(), sums.squares.Total(), n);
}

// Source: differences from a center, none beyond the end.
template <class T>
struct FromCenter : Padded<T> {
  template <size_t count>
  HWY_INLINE auto Load(size_t i) const {
    return Difference(Padded<T>::template Load<count>(i));
  }
  template <size_t count>
  HWY_INLINE auto LoadFew(size_t few) const {
    return Difference(Padded<T>::template LoadFew<count>(few));
  }
  HWY_INLINE FromCenter From(size_t i) const { return {Padded<T>::From(i)}; }

 private:
  HWY_INLINE auto Difference(auto v) const { return hn::Sub(v, hn::Set(hn::DFromV<decltype(v)>{}, this->beyond)); }
};

// The median of the first, the middle and the last one of some elements.
template <class T>
HWY_INLINE T CenterOf(const T* p, size_t count) {
  const T a = get(p), b = get(p + count / 2), c = get(p + count - 1);
  const T least = a < b ? a : b, most = a < b ? b : a;
  return c < least ? least : c > most ? most : c;
}

using FastSums = SumsAndSquares<float, kUsualLanes<float> / 2>;

// Sums of differences from a center of each block, put together as differences from that of the first one: a large mean
// costs no digits.
HWY_NOINLINE Moments CenteredMoments(const float* p, size_t len) {
  const double reference = double{CenterOf(p, HWY_MIN(len, kSingleBlock))};
  double sum = 0, squares = 0;
  ForEachBlock(len, kSingleBlock, [&](size_t begin, size_t count) HWY_ATTR {
    const float center = CenterOf(p + begin, count);
    const auto block = Accumulated<FastSums>(count, FromCenter<float>{{{p + begin}, center}});
    const double offset = double{center} - reference, moved = static_cast<double>(count) * offset;
    const double here = double{block.sum.Total()};
    sum += here + moved;
    squares += double{block.squares.Total()} + offset * (2 * here + moved);
  });
  if (HWY_UNLIKELY(!(squares <= std::numeric_limits<double>::max()))) return AccurateMoments(p, len);
  return MomentsOf(sum, squares, static_cast<double>(len), reference);
}

HWY_NOINLINE Moments FastMoments(const float* p, size_t len) {
  const double n = static_cast<double>(len);
  double sum = 0, squares = 0;
  ForEachBlock(len, kSingleBlock, [&](size_t begin, size_t count) HWY_ATTR {
    const auto block = Accumulated<FastSums>(count, Vector<float>{p + begin});
    sum += double{block.sum.Total()};
    squares += double{block.squares.Total()};
  });
  // Four bits may be lost to the mean. Infinities become NaNs here, which do not compare.
  const double all = n * squares;
  if (HWY_UNLIKELY(!((all - sum * sum) - all / 16 >= 0))) return CenteredMoments(p, len);
  return MomentsOf(sum, squares, n);
}

HWY_INLINE Moments MomentsOf(const float* p, size_t len, int hint) {
  return hint == kFast ? FastMoments(p, len) : AccurateMoments(p, len);
}

HWY_NOINLINE double DeviationOf(const double* p, size_t len) {
  constexpr size_t kTogether = 1024;
  const double reference = get(p);
  double mean = 0, squares = 0;  // of the elements so far, the mean less the reference [Chan, Golub, LeVeque 1983]
  ForEachBlock(len, kTogether, [&](size_t begin, size_t count) HWY_ATTR {
    const double before = static_cast<double>(begin), here = static_cast<double>(count);
    const double center = CenterOf(p + begin, count);
    const auto sums = Accumulated<SumsAndSquares<double, 16>>(count, FromCenter<double>{{{p + begin}, center}});
    const double sum = sums.sum.Total(), offset = sum / here, square = sums.squares.Total() - sum * offset;
    const double step = (center - reference) + offset - mean;
    squares += (square < 0 ? 0 : square) + step * step * (before * here / (before + here));
    mean += step * (here / (before + here));
  });
  return Root(squares / (static_cast<double>(len) - 1));
}

HWY_INLINE Moments MomentsOf(const double* p, size_t len) {
  return {SumByHint(p, len) / static_cast<double>(len), DeviationOf(p, len)};
}

OrpStatus deviation(const Orp32f* pSrc, int len, Orp32f* pStdDev, int hint) {
  ORPS_CHECK_LONGER_VECTOR(2, len, pSrc, pStdDev);
  put(pStdDev, As<Orp32f>(MomentsOf(pSrc, toSize(len), hint).deviation));
  return StsOk;
}
OrpStatus deviation(const Orp64f* pSrc, int len, Orp64f* pStdDev) {
  ORPS_CHECK_LONGER_VECTOR(2, len, pSrc, pStdDev);
  put(pStdDev, DeviationOf(pSrc, toSize(len)));
  return StsOk;
}

template <class T, class... Hint>
OrpStatus moments(const T* pSrc, int len, T* pMean, T* pStdDev, Hint... hint) {
  ORPS_CHECK_LONGER_VECTOR(2, len, pSrc, pMean, pStdDev);
  const Moments result = MomentsOf(pSrc, toSize(len), hint...);
  put(pMean, As<T>(result.mean));
  put(pStdDev, As<T>(result.deviation));
  return StsOk;
}

struct ExactMoments : OfVectors<2> {
  Sum16 sum;
  Squares16 squares;

  HWY_INLINE void Add(size_t k, auto v) {
    sum.Add(k, v);
    squares.Add(k, v);
  }
  HWY_INLINE void Flush() {
    sum.Flush();
    squares.Flush();
  }
};

struct ExactTotals {
  int64_t sum;
  uint64_t squares;

  template <class D>
  D Deviation(int len, int scale) const {
    const auto n = static_cast<uint64_t>(len);
    const Int128 above = static_cast<Int128>(squares) * len - static_cast<Int128>(sum) * sum;
    return static_cast<D>(scaledRoot(static_cast<Uint128>(above), n * (n - 1), scale, kRange<D>));
  }
};

HWY_NOINLINE ExactTotals ExactTotalsOf(const Orp16s* p, size_t len) {
  const auto all = Accumulated<ExactMoments>(len, Vector<Orp16s>{p});
  return {all.sum.total, all.squares.Total()};
}

template <class D>
OrpStatus deviationSfs(const Orp16s* pSrc, int len, D* pStdDev, int scaleFactor) {
  ORPS_CHECK_LONGER_VECTOR(2, len, pSrc, pStdDev);
  put(pStdDev, ExactTotalsOf(pSrc, toSize(len)).template Deviation<D>(len, scaleFactor));
  return StsOk;
}

template <class D>
OrpStatus momentsSfs(const Orp16s* pSrc, int len, D* pMean, D* pStdDev, int scaleFactor) {
  ORPS_CHECK_LONGER_VECTOR(2, len, pSrc, pMean, pStdDev);
  const ExactTotals result = ExactTotalsOf(pSrc, toSize(len));
  put(pMean, Quotient{len, scaleFactor}(result.sum, D{}));
  put(pStdDev, result.template Deviation<D>(len, scaleFactor));
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/moments.inc"
#include "frame/exports-inl.h"
