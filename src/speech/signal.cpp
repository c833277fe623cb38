// Running means, FM demodulation.
#include "orpsp/speech/signal.h"

#include "frame/entry.h"
#include "simd/element.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "speech/signal.cpp"
#include <hwy/foreach_target.h>

#include "frame/check.h"
#include "simd/angle-inl.h"
#include "simd/complex-inl.h"
#include "simd/exact-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// ---- Running means

struct Linear {
  static int Of(int x) { return x * 32768; }
};
struct Power {
  static int Of(int x) { return x * x; }
};

constexpr int64_t kUnit = 1 << 15;

// sum / kUnit to the nearest integer in range, where the sum has half a unit added: a tie shows by leaving no
// remainder.
HWY_INLINE int64_t RoundedSum(int64_t sum) {
  const int64_t y = sum >> 15, even = sum % kUnit == 0 ? y & ~int64_t{1} : y;
  if (HWY_LIKELY(even == static_cast<int32_t>(even))) return even;
  return even < 0 ? kLeast<int32_t> : kMost<int32_t>;
}
HWY_NOINLINE int64_t RoundedSumOfFew(int64_t sum) { return RoundedSum(sum); }

// What takes time is the way from one y to the next: a product, a sum and a shift, if ties are rare enough for a branch
// that is foretold.
template <class Kind, bool tiesAreRare>
int64_t Updated(int64_t y, const Orp16s* src, size_t len, int shift, int64_t alpha) {
  for (size_t n = 0; n < len; ++n) {
    int64_t part = alpha * (Kind::Of(get(src + n)) >> shift) + kUnit / 2;
    asm("" : "+r"(part));  // or the compiler adds the half to the sum
    const int64_t sum = y * (kUnit - alpha) + part;
    y = sum >> 15;
    if constexpr (!tiesAreRare) {
      y = RoundedSum(sum);
    } else if (HWY_UNLIKELY(sum % kUnit == 0 || y != static_cast<int32_t>(y))) {
      y = RoundedSumOfFew(sum);
    }
  }
  return y;
}

template <class Kind>
OrpStatus update(const Orp16s* pSrc, int len, Orp32s* pSrcDst, int srcShiftRight, Orp16s alpha) {
  ORPS_CHECK_VECTOR(len, pSrc, pSrcDst);
  const int shift = HWY_MIN(HWY_MAX(srcShiftRight, 0), 31);
  const bool tiesAreRare = alpha % 256 != 0;  // fractions with at least 8 bits
  const auto kernel = tiesAreRare ? Updated<Kind, true> : Updated<Kind, false>;
  put(pSrcDst, static_cast<Orp32s>(kernel(get(pSrcDst), pSrc, static_cast<size_t>(len), shift, alpha)));
  return StsOk;
}

// ---- FM demodulation

struct PhaseStep {
  HWY_INLINE auto operator()(auto d, auto z, auto previous) const {
    constexpr hn::ScalableTag<int32_t> di;
    constexpr hn::Half<decltype(di)> half;
    // (a + ib) (c - id): ac + bd, and bc - ad as a * ~d + bc + a. Only the greatest real part wraps; then the other one
    // is 0, and any positive number will do.
    const auto swapped = hn::RotateRight<16>(hn::BitCast(hn::RebindToUnsigned<decltype(di)>{}, previous));
    const auto turned = hn::Xor(hn::BitCast(di, swapped), hn::Set(di, 0xFFFF));
    const auto a = hn::ShiftRight<16>(hn::ShiftLeft<16>(hn::BitCast(di, z)));
    const auto im = hn::Add(SumOfPairs(z, hn::BitCast(hn::DFromV<decltype(z)>{}, turned)), a);
    const auto sum = SumOfPairs(z, previous);
    const auto re = hn::Add(sum, hn::VecFromMask(di, hn::Eq(sum, hn::Set(di, kLeast<int32_t>))));
    const auto lower = HalfTurns(hn::LowerHalf(half, re), hn::LowerHalf(half, im));
    const auto upper = HalfTurns(hn::UpperHalf(half, re), hn::UpperHalf(half, im));
    return hn::DemoteTo(d, hn::Combine(di, upper, lower));
  }

 private:
  // The angle in units of pi * 2^-15.
  template <class V>
  static HWY_INLINE V HalfTurns(V reLanes, V imLanes) {
    const auto re = hn::PromoteTo(kDoubles, reLanes), im = hn::PromoteTo(kDoubles, imLanes);
    const auto w = hn::Abs(re), h = hn::Abs(im);
    // Quotients of integers are all in range; the angle of 0 is that of 1.
    const auto larger = hn::Max(hn::Max(w, h), hn::Set(kDoubles, 1.0));
    const auto angle = AngleInPlane(kDoubles, im, hn::Min(w, h), larger, hn::Gt(h, w), IsNegative(kDoubles, re));
    const auto exact = [](double reLane, double imLane, double below) {
      return roundedHalfTurns(static_cast<int64_t>(reLane), static_cast<int64_t>(imLane), static_cast<int64_t>(below));
    };
    const auto value = hn::Mul(hn::Abs(angle), hn::Set(kDoubles, 0x1.45f306dc9c883p+13));  // 2^15 / pi
    return NearestInt32(hn::CopySign(RoundedExactly(value, 0x1p15, 0x1p-30, exact, re, im), angle));
  }
};

OrpStatus demodulate(const Orp16sc* pSrc, Orp16s* pDst, int len, Orp16sc* pPrevious) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst, pPrevious);
  constexpr size_t kStep = HWY_MAX_BYTES / sizeof(Orp16sc);
  constexpr TagOf<Orp16s, kStep> d;
  constexpr TagOf<Orp16sc, kStep> pairs;
  const size_t count = static_cast<size_t>(len);
  Orp16sc first[1 + kStep] = {get(pPrevious)};
  hn::StoreU(LoadFew(pairs, lanes(pSrc), 2 * HWY_MIN(count, kStep)), pairs, lanes(first + 1));
  const auto early = PhaseStep{}(d, hn::LoadU(pairs, lanes(first + 1)), hn::LoadU(pairs, lanes(first)));
  StoreFew(early, d, pDst, HWY_MIN(count, kStep));
  for (size_t n = kStep; n < count; n += kStep) {
    const size_t i = HWY_MIN(n, count - kStep);
    const auto z = hn::LoadU(pairs, lanes(pSrc + i)), previous = hn::LoadU(pairs, lanes(pSrc + i - 1));
    hn::StoreU(PhaseStep{}(d, z, previous), d, pDst + i);
  }
  put(pPrevious, get(pSrc + count - 1));
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/signal.inc"
#define ORPSP_NEAREST always
#include "frame/exports-inl.h"
