// Zero, Set, Copy and Move.
#include "orpsp/vector/move.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/move.cpp"
#include <hwy/foreach_target.h>

#include "simd/backward-inl.h"
#include "simd/forms-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// The unsigned type of an element's size: one implementation serves all types of one size.
template <size_t size>
struct BitsOf {
  using Type = hwy::UnsignedFromSize<size>;
};
template <>
struct BitsOf<16> {
  using Type = Orp64sc;
};

HWY_NOINLINE OrpStatus ZeroBytes(Orp8u* dst, size_t count) {
  Map(FillZero{}, dst, count);
  return StsOk;
}

template <class Bits>
HWY_NOINLINE OrpStatus SetBits(Bits* dst, size_t len, Bits value) {
  Map(Same{}, dst, len, Constant<Bits>{value});
  return StsOk;
}

HWY_NOINLINE OrpStatus CopyBytes(Orp8u* dst, const Orp8u* src, size_t count) {
  Map(Same{}, dst, count, Vector<Orp8u>{src});
  return StsOk;
}

template <class T>
OrpStatus zero(T* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pDst);
  return ZeroBytes(bytes(pDst), toSize(len) * sizeof(T));
}

template <class T>
OrpStatus set(T val, T* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pDst);
  using Bits = typename BitsOf<sizeof(T)>::Type;
  return SetBits(reinterpret_cast<Bits*>(pDst), toSize(len), __builtin_bit_cast(Bits, val));
}

template <class T>
OrpStatus copy(const T* pSrc, T* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  return CopyBytes(bytes(pDst), bytes(pSrc), toSize(len) * sizeof(T));
}

template <class T>
OrpStatus move(const T* pSrc, T* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  const size_t count = toSize(len) * sizeof(T);
  const auto ahead = reinterpret_cast<uintptr_t>(pDst) - reinterpret_cast<uintptr_t>(pSrc);  // wraps if it is behind
  if (ahead == 0 || ahead >= count) return CopyBytes(bytes(pDst), bytes(pSrc), count);
  CopyBackward(bytes(pSrc), bytes(pDst), count);
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/move.inc"
#include "frame/exports-inl.h"
