// Conj, Real, Imag, RealToCplx, CplxToReal, PowerSpectr and MagSquared.
#include "orpsp/vector/complex.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/complex.cpp"
#include <hwy/foreach_target.h>

#include "simd/complex-inl.h"
#include "simd/forms-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

struct Conj {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V v) const {
    if constexpr (std::is_integral_v<hn::TFromD<D>>) {
      return hn::OddEven(hn::SaturatedSub(hn::Zero(d), v), v);
    } else {
      return hn::Xor(v, hn::OddEven(hn::SignBit(d), hn::Zero(d)));
    }
  }
};

struct Real {
  HWY_INLINE auto operator()(auto, auto parts) const { return parts.re; }
};
struct Imag {
  HWY_INLINE auto operator()(auto, auto parts) const { return parts.im; }
};
struct FromParts {
  template <class V>
  HWY_INLINE Parts<V> operator()(auto, V re, V im) const {
    return {re, im};
  }
};

// ---- re^2 + im^2

struct FloatPower {
  HWY_INLINE auto operator()(auto, auto re, auto im) const { return hn::Add(hn::Mul(re, re), hn::Mul(im, im)); }
  HWY_INLINE auto operator()(auto d, auto parts) const { return (*this)(d, parts.re, parts.im); }
};

struct Power16ToFloat {
  HWY_INLINE auto operator()(auto d, auto... parts) const { return FloatSumOfSquares(d, parts...); }
};

struct AsIs {
  static HWY_INLINE auto Finished(auto power) { return hn::Add(power, hn::BroadcastSignBit(power)); }
};
struct ScaledDown {
  int scale;
  HWY_INLINE auto Finished(auto power) const {
    constexpr hn::DFromV<decltype(power)> d;
    constexpr hn::RebindToUnsigned<decltype(d)> du;
    return hn::BitCast(d, RoundedShift(hn::BitCast(du, power), hn::Zero(du), scale));
  }
};

struct Power16 : OfSumsOfSquares<AsIs> {
  template <class T>
  static constexpr int kMostScale = 31;
  using Rounded = OfSumsOfSquares<ScaledDown>;
};

// Power of 32-bit pairs, exact in 64 unsigned bits.
struct Power32 {
  static HWY_INLINE auto Exact(auto pairs) {
    constexpr hn::RepartitionToWide<hn::RebindToUnsigned<hn::DFromV<decltype(pairs)>>> du64;
    return hn::BitCast(du64, SumOfSquares(pairs));
  }
  static HWY_INLINE auto Saturated(auto d, auto power) {
    constexpr hn::DFromV<decltype(power)> du64;
    constexpr hn::RebindToUnsigned<decltype(d)> du32;
    const auto fits = hn::Eq(hn::ShiftRight<31>(power), hn::Zero(du64));
    const auto result = hn::IfThenElse(fits, power, hn::Set(du64, uint64_t{kMost<int32_t>}));
    return hn::BitCast(d, hn::TruncateTo(du32, result));
  }
  HWY_INLINE auto operator()(auto d, auto pairs) const { return Saturated(d, Exact(pairs)); }

  template <class T>
  static constexpr int kMostScale = 63;
  struct Rounded {
    int scale;
    HWY_INLINE auto operator()(auto d, auto pairs) const {
      const auto power = Exact(pairs);
      return Saturated(d, RoundedShift(power, hn::Zero(hn::DFromV<decltype(power)>{}), scale));
    }
  };
};

// ---- Forms

template <class Op, class T, class D>
OrpStatus unarySfs(const T* pSrc, D* pDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  return MapScaled<Op>(scaleFactor, pDst, toSize(len), Vector<T>{pSrc});
}

template <class T, class D>
OrpStatus realToCplx(const T* pSrcRe, const T* pSrcIm, D* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrcRe, pSrcIm, pDst);
  MapParts(FromParts{}, IntoPairs<D>{pDst}, toSize(len), Vector<T>{pSrcRe}, Vector<T>{pSrcIm});
  return StsOk;
}

template <class T, class D>
OrpStatus cplxToReal(const T* pSrc, D* pDstRe, D* pDstIm, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDstRe, pDstIm);
  MapParts(Same{}, IntoVectors<D>{pDstRe, pDstIm}, toSize(len), Planes<T>{pSrc});
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/complex.inc"
#include "frame/exports-inl.h"
