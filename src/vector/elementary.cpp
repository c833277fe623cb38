// Exp, Ln, 10Log10, Cubrt and Arctan.
#include "orpsp/vector/elementary.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/elementary.cpp"
#include <hwy/foreach_target.h>

#include "simd/angle-inl.h"
#include "simd/exact-inl.h"
#include "simd/forms-inl.h"
#include "simd/round-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

struct ExpOp {
  HWY_INLINE auto operator()(auto d, auto v) const { return Exp(d, v); }
};
struct CubrtOp {
  HWY_INLINE auto operator()(auto d, auto v) const { return Cubrt(d, v); }
};
struct ArctanOp {
  HWY_INLINE auto operator()(auto d, auto v) const { return Arctan(d, v); }
};

template <class T>
struct LnOp {
  static constexpr size_t kWorkBytes = sizeof(T);
  DomainWatch<T> watch;

  HWY_INLINE auto operator()(auto d, auto v) const {
    const auto result = Ln(hn::DFromV<decltype(v)>{}, v, watch);
    if constexpr (std::is_same_v<hn::TFromD<decltype(d)>, T>) {
      return result;
    } else {
      return hn::DemoteTo(d, result);
    }
  }
};

// ---- Integers: in double, rounded and saturated once

// Results of type T saturate at its greatest value; double leaves errors below these.
template <class T>
inline constexpr double kTolerance = sizeof(T) == 4 ? 0x1p-17 : 0x1p-30;
template <class T>
inline constexpr double kLimit = sizeof(T) == 4 ? 0x1p31 : 0x1p15;

// e^x * 2^-scale for integers x. The exponents are subtracted first, so that neither can be too large.
struct IntegerExp {
  static constexpr size_t kWorkBytes = sizeof(double);
  int scale;

  HWY_INLINE auto operator()(auto d, auto v) const {
    using T = hn::TFromD<decltype(d)>;
    constexpr hn::ScalableTag<double> dw;
    const auto x = Lift(dw, v), round = hn::Set(dw, ExpConstants<double>::kRound);
    const auto k = hn::Sub(hn::MulAdd(x, hn::Set(dw, ExpConstants<double>::kLog2E), round), round);
    // ln 2 in three parts, the first two with 21 bits: their products with k < 2^32 are exact [Cody, Waite 1980].
    auto r = hn::NegMulAdd(k, hn::Set(dw, 0x1.fdf47p-22), hn::NegMulAdd(k, hn::Set(dw, 0x1.62e42p-1), x));
    r = hn::NegMulAdd(k, hn::Set(dw, 0x1.ef35793c7673p-45), r);
    const auto exponent = hn::Sub(k, hn::Set(dw, static_cast<double>(scale)));
    const auto bounded = hn::Min(hn::Max(exponent, hn::Set(dw, -3.0)), hn::Set(dw, 40.0));
    constexpr hn::RebindToUnsigned<decltype(dw)> du;
    const auto n = hn::Sub(hn::BitCast(du, hn::Add(bounded, round)), hn::BitCast(du, round));
    const auto value = hn::Mul(ExpOfReduced(dw, r), TwoTo(dw, n));
    const auto exact = [this](double lane, double below) {
      return roundedExp(static_cast<int>(lane), scale, static_cast<int64_t>(below));
    };
    return RoundTo<Rounding::kNearest>(d, RoundedExactly(value, kLimit<T>, kTolerance<T>, exact, x));
  }
};

// factor * ln(x) * 2^-scale; the least integer where there is no logarithm.
template <int64_t exactly(uint32_t, int, int64_t)>
struct IntegerLn {
  static constexpr size_t kWorkBytes = sizeof(double);
  DomainWatch<double> watch;
  int scale;
  double unit;  // factor * 2^-scale

  HWY_INLINE auto operator()(auto d, auto v) const {
    using T = hn::TFromD<decltype(d)>;
    constexpr hn::ScalableTag<double> dw;
    const auto x = Lift(dw, v);
    const auto isPositive = hn::Gt(x, hn::Zero(dw));
    const auto value = hn::Mul(Ln(dw, x, watch), hn::Set(dw, unit));
    const auto exact = [this](double lane, double below) {
      return exactly(static_cast<uint32_t>(lane), scale, static_cast<int64_t>(below));
    };
    const auto rounded = RoundedExactly(hn::IfThenElseZero(isPositive, value), kLimit<T>, kTolerance<T>, exact, x);
    const auto least = hn::Set(dw, static_cast<double>(kLeast<T>));
    return RoundTo<Rounding::kNearest>(d, hn::IfThenElse(isPositive, rounded, least));
  }
};

// From single precision one step of Newton's method more.
struct IntegerCubrt {
  static constexpr size_t kWorkBytes = sizeof(double);
  int scale;
  double unit;

  HWY_INLINE auto operator()(auto d, auto v) const {
    constexpr hn::ScalableTag<double> dw;
    constexpr hn::Rebind<float, decltype(dw)> df;
    const auto x = Lift(dw, v), magnitude = hn::Abs(x);
    const auto isZero = hn::Eq(magnitude, hn::Zero(dw));
    const auto estimate = hn::PromoteTo(dw, Cubrt(df, hn::DemoteTo(df, magnitude)));
    const auto root = hn::IfThenElse(isZero, hn::Set(dw, 1.0), estimate), square = hn::Mul(root, root);
    const auto step = hn::Div(hn::Sub(magnitude, hn::Mul(square, root)), hn::Mul(square, hn::Set(dw, 3.0)));
    const auto value = hn::Mul(hn::IfThenZeroElse(isZero, hn::Add(root, step)), hn::Set(dw, unit));
    const auto exact = [this](double lane, double below) {
      return roundedCubeRoot(static_cast<uint32_t>(lane), scale, static_cast<int64_t>(below));
    };
    const auto rounded = RoundedExactly(value, kLimit<Orp16s>, kTolerance<Orp16s>, exact, magnitude);
    return RoundTo<Rounding::kNearest>(d, hn::CopySign(rounded, x));
  }
};

// ---- Forms

template <class T, class D>
OrpStatus logarithm(const T* pSrc, D* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  const LnOp<T> op{};
  Map(op, pDst, toSize(len), Padded<T>{{pSrc}, 1});
  return op.watch.Status();
}

template <class T>
OrpStatus expSfs(const T* pSrc, T* pDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  Map(IntegerExp{scaleFactor}, pDst, toSize(len), Vector<T>{pSrc});
  return StsOk;
}

OrpStatus cubrtSfs(const Orp32s* pSrc, Orp16s* pDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  Map(IntegerCubrt{scaleFactor, UnitOfScale(scaleFactor)}, pDst, toSize(len), Vector<Orp32s>{pSrc});
  return StsOk;
}

struct Natural {
  static constexpr double kFactor = 1;
  using Op = IntegerLn<roundedLn>;
};
struct Decibels {
  static constexpr double kFactor = 0x1.15f2ced384f29p+2;  // 10 / ln 10
  using Op = IntegerLn<roundedDecibels>;
};

template <class Kind, class T, class D>
OrpStatus logarithmSfs(const T* pSrc, D* pDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  const typename Kind::Op op{{}, scaleFactor, Kind::kFactor * UnitOfScale(scaleFactor)};
  Map(op, pDst, toSize(len), Padded<T>{{pSrc}, 1});
  return op.watch.Status();
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/elementary.inc"
#define ORPSP_NEAREST always
#include "frame/exports-inl.h"
