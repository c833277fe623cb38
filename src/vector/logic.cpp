// Bitwise logic and shifts by a constant.
#include "orpsp/vector/logic.h"

#include <type_traits>

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/logic.cpp"
#include <hwy/foreach_target.h>

#include "simd/forms-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

struct And {
  HWY_INLINE auto operator()(auto, auto a, auto b) const { return hn::And(a, b); }
};
struct Or {
  HWY_INLINE auto operator()(auto, auto a, auto b) const { return hn::Or(a, b); }
};
struct Xor {
  HWY_INLINE auto operator()(auto, auto a, auto b) const { return hn::Xor(a, b); }
};
struct Not {
  HWY_INLINE auto operator()(auto, auto v) const { return hn::Not(v); }
};
struct Left {
  int count;
  HWY_INLINE auto operator()(auto, auto v) const { return hn::ShiftLeftSame(v, count); }
};
struct Right {
  int count;
  HWY_INLINE auto operator()(auto, auto v) const { return hn::ShiftRightSame(v, count); }
};

template <class Op, class T>
OrpStatus bitwise(const T* pSrc1, const T* pSrc2, T* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc1, pSrc2, pDst);
  return MapPair<Op>(bytes(pDst), toSize(len) * sizeof(T), bytes(pSrc1), bytes(pSrc2));
}

template <class Op, class T>
OrpStatus bitwiseConstant(const T* pSrc, T val, T* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  if (std::is_same_v<Op, And> && val == 0) {  // clears without reading the source
    Map(FillZero{}, pDst, toSize(len));
  } else {
    Map(Op{}, pDst, toSize(len), Constant<T>{val}, Vector<T>{pSrc});
  }
  return StsOk;
}

template <class T>
OrpStatus complement(const T* pSrc, T* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  Map(Not{}, bytes(pDst), toSize(len) * sizeof(T), Vector<Orp8u>{bytes(pSrc)});
  return StsOk;
}

template <class Op, class T>
OrpStatus shift(const T* pSrc, int val, T* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  ORPS_RETURN_IF(val < 0, StsShiftErr);
  // From the width on, an arithmetic shift leaves what a shift by width - 1 does, and the others leave zeros.
  constexpr bool keepsSign = std::is_same_v<Op, Right> && std::is_signed_v<T>;
  if (val >= kBits<T> && !keepsSign) {
    Map(FillZero{}, pDst, toSize(len));
  } else {
    Map(Op{HWY_MIN(val, kBits<T> - 1)}, pDst, toSize(len), Vector<T>{pSrc});
  }
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/logic.inc"
#include "frame/exports-inl.h"
