// Phase, CartToPolar and PolarToCart.
#include "frame/entry.h"
#include "orpsp/vector/complex.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/polar.cpp"
#include <hwy/foreach_target.h>

#include "simd/angle-inl.h"
#include "simd/complex-inl.h"
#include "simd/exact-inl.h"
#include "simd/forms-inl.h"
#include "simd/round-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// Integers become floats first, exactly.
struct PhaseOp {
  HWY_INLINE auto operator()(auto d, auto re, auto im) const { return Arctan2(d, Lift(d, im), Lift(d, re)); }
  HWY_INLINE auto operator()(auto d, auto parts) const { return (*this)(d, parts.re, parts.im); }
};

// Integers with a scale factor: in double, rounded and saturated once.
struct IntegerPhase {
  static constexpr size_t kWorkBytes = sizeof(double);
  int scale;
  double unit;

  HWY_INLINE auto operator()(auto d, auto reLanes, auto imLanes) const {
    constexpr hn::ScalableTag<double> dw;
    const auto re = Lift(dw, reLanes), im = Lift(dw, imLanes);
    const auto angle = Arctan2(dw, im, re);
    const auto exact = [this](double reLane, double imLane, double below) {
      return roundedAngle(static_cast<int>(reLane), static_cast<int>(imLane), scale, static_cast<int64_t>(below));
    };
    const auto value = hn::Mul(hn::Abs(angle), hn::Set(dw, unit));
    return RoundTo<Rounding::kNearest>(d, hn::CopySign(RoundedExactly(value, 0x1p15, 0x1p-30, exact, re, im), angle));
  }
  HWY_INLINE auto operator()(auto d, auto parts) const { return (*this)(d, parts.re, parts.im); }
};

struct ToPolar {
  template <class V>
  HWY_INLINE Parts<V> operator()(auto d, V re, V im) const {
    return {Hypot(d, re, im), Arctan2(d, im, re)};
  }
  HWY_INLINE auto operator()(auto d, auto parts) const { return (*this)(d, parts.re, parts.im); }
};

struct ToCartesian {
  template <class V>
  HWY_INLINE Parts<V> operator()(auto d, V magnitude, V phase) const {
    const auto direction = SinCos(d, phase);
    return {hn::Mul(magnitude, direction.cosine), hn::Mul(magnitude, direction.sine)};
  }
};

OrpStatus phaseSfs(const Orp16s* pSrcRe, const Orp16s* pSrcIm, Orp16s* pDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrcRe, pSrcIm, pDst);
  const IntegerPhase op{scaleFactor, UnitOfScale(scaleFactor)};
  Map(op, pDst, toSize(len), Vector<Orp16s>{pSrcRe}, Vector<Orp16s>{pSrcIm});
  return StsOk;
}

OrpStatus phaseSfs(const Orp16sc* pSrc, Orp16s* pDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  Map(IntegerPhase{scaleFactor, UnitOfScale(scaleFactor)}, pDst, toSize(len), Planes<Orp16sc>{pSrc});
  return StsOk;
}

template <class T>
OrpStatus cartToPolar(const T* pSrcRe, const T* pSrcIm, T* pDstMagn, T* pDstPhase, int len) {
  ORPS_CHECK_VECTOR(len, pSrcRe, pSrcIm, pDstMagn, pDstPhase);
  MapParts(ToPolar{}, IntoVectors<T>{pDstMagn, pDstPhase}, toSize(len), Vector<T>{pSrcRe}, Vector<T>{pSrcIm});
  return StsOk;
}

template <class T, class D>
OrpStatus cartToPolar(const T* pSrc, D* pDstMagn, D* pDstPhase, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDstMagn, pDstPhase);
  MapParts(ToPolar{}, IntoVectors<D>{pDstMagn, pDstPhase}, toSize(len), Planes<T>{pSrc});
  return StsOk;
}

template <class T>
OrpStatus polarToCart(const T* pSrcMagn, const T* pSrcPhase, T* pDstRe, T* pDstIm, int len) {
  ORPS_CHECK_VECTOR(len, pSrcMagn, pSrcPhase, pDstRe, pDstIm);
  MapParts(ToCartesian{}, IntoVectors<T>{pDstRe, pDstIm}, toSize(len), Vector<T>{pSrcMagn}, Vector<T>{pSrcPhase});
  return StsOk;
}

template <class T, class D>
OrpStatus polarToCart(const T* pSrcMagn, const T* pSrcPhase, D* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrcMagn, pSrcPhase, pDst);
  MapParts(ToCartesian{}, IntoPairs<D>{pDst}, toSize(len), Vector<T>{pSrcMagn}, Vector<T>{pSrcPhase});
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/polar.inc"
#define ORPSP_NEAREST always
#include "frame/exports-inl.h"
