// Mul, MulC, Sqr and AddProduct.
#include "orpsp/vector/arithmetic.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/product.cpp"
#include <hwy/foreach_target.h>

#include "simd/complex_product-inl.h"
#include "simd/forms-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

template <class D>
inline constexpr bool kFloatLanes = std::is_floating_point_v<hn::TFromD<D>>;

// Products of elements of one type; integers from double-width products.
struct Mul {
  template <class D>
  HWY_INLINE hn::Vec<D> operator()(D d, auto a, auto b) const {
    if constexpr (kFloatLanes<D>) {
      return hn::Mul(a, b);
    } else {
      return Narrow(d, WideProduct(a, b));
    }
  }

  // At 2 * width a signed product is below the tie, an unsigned one may still be above it.
  template <class T>
  static constexpr int kMostScale = 16 * sizeof(T);
  struct Rounded {
    int scale;
    HWY_INLINE auto operator()(auto d, auto a, auto b) const {
      return Narrow(d, WideProduct(a, b).RoundedProduct(scale));
    }
  };
  struct Q15 {
    HWY_INLINE auto operator()(auto, auto a, auto b) const { return ProductQ15(a, b); }
  };
};

using ComplexMul = ComplexProduct<false>;

// Products of narrow elements that fit the lanes of the destination.
struct LiftedMul {
  HWY_INLINE auto operator()(auto d, auto a, auto b) const {
    const auto product = hn::Mul(Lift(d, a), Lift(d, b));
    if constexpr (kFloatLanes<decltype(d)>) {
      return hn::Add(product, hn::Zero(d));  // the product of two integers is no -0
    } else {
      return product;
    }
  }

  template <class T>
  static constexpr int kMostScale = 8 * sizeof(T) - 1;
  struct Rounded {
    int scale;
    HWY_INLINE auto operator()(auto d, auto a, auto b) const {
      return RoundedShiftOfSmall(LiftedMul{}(d, a, b), scale);
    }
  };
};

// sum + a * b
template <class Product>
struct AddTo {
  HWY_INLINE auto operator()(auto, auto a, auto b, auto sum) const {
    constexpr hn::DFromV<decltype(sum)> d;
    if constexpr (kFloatLanes<decltype(d)>) {
      return hn::Add(sum, Product{}(d, a, b));
    } else {
      return Narrow(d, WideProduct(a, b) + Widen(sum));
    }
  }

  template <class T>
  static constexpr int kMostScale = 16 * sizeof(T) - 1;
  struct Rounded {
    int scale;
    HWY_INLINE auto operator()(auto d, auto a, auto b, auto sum) const {
      return Narrow(d, (WideProduct(a, b) + Widen(sum)).Rounded(scale));
    }
  };
};

// sum + a * b where the product fits the lanes of the sum: the exact sum then needs one bit more.
template <>
struct AddTo<LiftedMul> {
  HWY_INLINE auto operator()(auto d, auto a, auto b, auto sum) const { return SaturatedSum(sum, LiftedMul{}(d, a, b)); }

  template <class T>
  static constexpr int kMostScale = 8 * sizeof(T);
  struct Halved {
    HWY_INLINE auto operator()(auto d, auto a, auto b, auto sum) const {
      return HalvesOfSum(sum, LiftedMul{}(d, a, b)).Rounded1();
    }
  };
  struct Rounded {
    int scale;
    HWY_INLINE auto operator()(auto d, auto a, auto b, auto sum) const {
      return HalvesOfSum(sum, LiftedMul{}(d, a, b)).Rounded(scale);
    }
  };
};

template <class Op>
struct SquareOf {
  HWY_INLINE auto operator()(auto d, auto v) const { return Op{}(d, v, v); }
};

template <class Op, class T>
OrpStatus square(const T* pSrc, T* pDst, int len) {
  return unary<SquareOf<Op>>(pSrc, pDst, len);
}

template <class Op, class T>
OrpStatus squareSfs(const T* pSrc, T* pDst, int len, int scaleFactor) {
  return binarySfs<Op>(pSrc, pSrc, pDst, len, scaleFactor);
}

template <class Op, class T, class D>
OrpStatus accumulate(const T* pSrc1, const T* pSrc2, D* pSrcDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc1, pSrc2, pSrcDst);
  Map(Op{}, pSrcDst, toSize(len), Vector<T>{pSrc1}, Vector<T>{pSrc2}, Vector<D>{pSrcDst});
  return StsOk;
}

template <class Op, class T, class D>
OrpStatus accumulateSfs(const T* pSrc1, const T* pSrc2, D* pSrcDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc1, pSrc2, pSrcDst);
  return MapScaled<Op>(scaleFactor, pSrcDst, toSize(len), Vector<T>{pSrc1}, Vector<T>{pSrc2}, Vector<D>{pSrcDst});
}

template <class Op, class T>
OrpStatus accumulateConstant(const T* pSrc, T val, T* pSrcDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pSrcDst);
  Map(Op{}, pSrcDst, toSize(len), Vector<T>{pSrc}, Constant<T>{val}, Vector<T>{pSrcDst});
  return StsOk;
}

// ---- Float times float to 16-bit integers

template <class V>
HWY_INLINE V ZeroIfNaN(V v) {
  return hn::IfThenElseZero(hn::Eq(v, v), v);
}

template <class V>
HWY_INLINE V ClampTo16s(V v) {
  constexpr hn::DFromV<V> d;
  return hn::Min(hn::Max(ZeroIfNaN(v), hn::Set(d, -32768)), hn::Set(d, 32767));
}

// The product in double is exact, and so is its scaling: one rounding.
struct ExactProductTo16s {
  static constexpr size_t kWorkBytes = sizeof(double);
  double unit;  // 2^-scaleFactor

  HWY_INLINE auto operator()(auto d, auto a, auto b) const {
    constexpr hn::Rebind<double, decltype(d)> df64;
    constexpr hn::Rebind<int32_t, decltype(d)> di32;
    const auto product = hn::Mul(hn::PromoteTo(df64, a), hn::PromoteTo(df64, b));
    const auto scaled = ClampTo16s(hn::Mul(product, hn::Set(df64, unit)));
    const auto integers = hn::Set(df64, 0x1.8p52);  // adding this leaves no fraction bits; rounds to nearest even
    return hn::DemoteTo(d, hn::DemoteTo(di32, hn::Sub(hn::Add(scaled, integers), integers)));
  }
};

struct RoundedProductTo16s {
  HWY_INLINE auto operator()(auto d, auto a, auto b) const {
    return hn::DemoteTo(d, hn::NearestInt(ClampTo16s(hn::Mul(a, b))));
  }
};

OrpStatus constantTo16s(const Orp32f* pSrc, Orp32f val, Orp16s* pDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  // Products lie between 2^-298 and 2^256 in magnitude: beyond +-400 every scale factor gives the same.
  const int scale = HWY_MIN(HWY_MAX(scaleFactor, -400), 400);
  const double unit = __builtin_ldexp(1.0, -scale);
  Map(ExactProductTo16s{unit}, pDst, toSize(len), Constant<Orp32f>{val}, Vector<Orp32f>{pSrc});
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/product.inc"
#define ORPSP_NEAREST fromFloatsIntoIntegers
#include "frame/exports-inl.h"
