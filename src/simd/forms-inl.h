// The calling forms that element-wise operations share: two vectors, a vector and a constant, one vector; out of place
// and in place; plain and with a scale factor. An operation is a functor Op(d, a, b), the second operand being the one
// on the left of a minus or division sign: `pSrc2 - pSrc1` is Op(pSrc1, pSrc2).
//
// Integer operations that take a scale factor saturate by themselves and also have
//   Op::kMostScale<T>    the largest scale factor that can leave something nonzero in lanes of type T,
//   Op::Rounded{scale}   the operation scaled down, for scale >= 1,
//   Op::Halved           (optional) the same for scale == 1, which Op::Rounded then need not serve,
//   Op::Q15              (optional) a faster one for scale == 15 and 16-bit signed lanes.
#if defined(ORPSP_SIMD_FORMS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_SIMD_FORMS_INL_H_
#undef ORPSP_SIMD_FORMS_INL_H_
#else
#define ORPSP_SIMD_FORMS_INL_H_
#endif

#include "frame/check.h"
#include "simd/complex-inl.h"
#include "simd/integer-inl.h"
#include "simd/map-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// Source for a vector of operands that stand beside elements of type TD: a real vector beside complex ones is spread.
template <class TD, class T>
HWY_INLINE auto Operand(const T* p) {
  if constexpr (isComplex<TD> && !isComplex<T>) {
    return Twice<T>{p};
  } else {
    return Vector<T>{p};
  }
}

struct FillZero {
  template <class D>
  HWY_INLINE auto operator()(D d) const {
    return hn::Zero(d);
  }
};

struct Same {
  HWY_INLINE auto operator()(auto, auto v) const { return v; }
};

// A negative scale factor: shifts up what a saturating operation has written.
template <class T>
HWY_NOINLINE void ShiftUpInPlace(T* data, size_t len, int shift) {
  Map(ShiftUp{shift}, data, len, Vector<T>{data});
}

// dst = op(src...) * 2^-scale
template <class Op, class TD, class... S>
HWY_NOINLINE OrpStatus MapScaled(int scale, TD* dst, size_t len, S... src) {
  if (scale == 0) {
    Map(Op{}, dst, len, src...);
  } else if (scale < 0) {
    constexpr size_t kBlock = size_t{16384} / sizeof(TD);  // stays in the first-level cache between the two steps
    const int shift = scale < -kBits<TD> ? kBits<TD> : -scale;
    for (size_t i = 0; i < len; i += kBlock) {
      const size_t count = HWY_MIN(kBlock, len - i);
      MapScaled<Op>(0, dst + i, count, src.From(i)...);
      ShiftUpInPlace(lanes(dst + i), count * Element<TD>::kLanes, shift);
    }
  } else if (scale > Op::template kMostScale<Lane<TD>>) {
    Map(FillZero{}, dst, len);
  } else {
    if constexpr (requires { typename Op::Halved; }) {
      if (scale == 1) {
        Map(typename Op::Halved{}, dst, len, src...);
        return StsOk;
      }
    }
    if constexpr (requires { typename Op::Q15; } && (std::is_same_v<typename S::Type, Orp16s> && ...)) {
      if (scale == 15) {
        Map(typename Op::Q15{}, dst, len, src...);
        return StsOk;
      }
    }
    Map(typename Op::Rounded{scale}, dst, len, src...);
  }
  return StsOk;
}

// ---- Two vectors

// Sums and differences of complex elements are those of their lanes; such operations say so by kByLanes, and share the
// code of the real type.
template <class Op, class... T>
inline constexpr bool kByLanes = false;
template <class Op, class... T>
requires(Op::kByLanes) inline constexpr bool kByLanes<Op, T...> = (isComplex<T> && ...);

template <class Op, class A, class B, class D>
HWY_NOINLINE OrpStatus MapPair(D* dst, size_t len, const A* a, const B* b) {
  Map(Op{}, dst, len, Operand<D>(a), Operand<D>(b));
  return StsOk;
}

template <class Op, class A, class B, class D>
OrpStatus binary(const A* pSrc1, const B* pSrc2, D* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc1, pSrc2, pDst);
  if constexpr (kByLanes<Op, A, B, D>) {
    return MapPair<Op>(lanes(pDst), 2 * toSize(len), lanes(pSrc1), lanes(pSrc2));
  } else {
    return MapPair<Op>(pDst, toSize(len), pSrc1, pSrc2);
  }
}

template <class Op, class A, class B, class D>
OrpStatus binarySfs(const A* pSrc1, const B* pSrc2, D* pDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc1, pSrc2, pDst);
  if constexpr (kByLanes<Op, A, B, D>) {
    using L = Lane<D>;
    return MapScaled<Op>(scaleFactor, lanes(pDst), 2 * toSize(len), Vector<L>{lanes(pSrc1)}, Vector<L>{lanes(pSrc2)});
  } else {
    return MapScaled<Op>(scaleFactor, pDst, toSize(len), Operand<D>(pSrc1), Operand<D>(pSrc2));
  }
}

// ---- A vector and a constant: Op(val, pSrc[n]), with the constant on the left Op(pSrc[n], val)

template <class Op, class T, class D>
OrpStatus constant(const T* pSrc, T val, D* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  Map(Op{}, pDst, toSize(len), Constant<T>{val}, Vector<T>{pSrc});
  return StsOk;
}

template <class Op, class T, class D>
OrpStatus constantSfs(const T* pSrc, T val, D* pDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  return MapScaled<Op>(scaleFactor, pDst, toSize(len), Constant<T>{val}, Vector<T>{pSrc});
}

// Op with its operands exchanged.
template <class Op>
struct Reversed : Op {
  template <class D, class V>
  HWY_INLINE auto operator()(D d, V a, V b) const {
    return Op::operator()(d, b, a);
  }
};
template <class Op>
requires requires { Op::template kMostScale<int>; }
struct Reversed<Op> : Op {
  using Halved = Reversed<typename Op::Halved>;
  using Rounded = Reversed<typename Op::Rounded>;
  template <class D, class V>
  HWY_INLINE auto operator()(D d, V a, V b) const {
    return Op::operator()(d, b, a);
  }
};

// ---- One vector

template <class Op, class T, class D>
OrpStatus unary(const T* pSrc, D* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  Map(Op{}, pDst, toSize(len), Vector<T>{pSrc});
  return StsOk;
}

// One vector of complex elements, Op(Parts).
template <class Op, class T, class D>
OrpStatus ofParts(const T* pSrc, D* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  Map(Op{}, pDst, toSize(len), Planes<T>{pSrc});
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
