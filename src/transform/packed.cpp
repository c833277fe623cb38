// Products of packed spectra, and their expansion to full ones: MulPack, MulPerm, MulPackConj, ConjPack, ConjPerm,
// ConjCcs.
#include "frame/entry.h"
#include "orpsp/transform/spectra.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transform/packed.cpp"
#include <hwy/foreach_target.h>

#include "simd/backward-inl.h"
#include "simd/forms-inl.h"
#include "transform/spectra-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// ---- Products

template <class Layout, bool conjugate, class T>
OrpStatus Multiply(const T* pSrc1, const T* pSrc2, T* pDst, int len, int scale = 0) {
  ORPS_CHECK_VECTOR(len, pSrc1, pSrc2, pDst);
  fft::MultiplySpectra<Layout, conjugate>(pSrc1, pSrc2, pDst, toSize(len), scale);
  return StsOk;
}

template <class Layout, class T>
OrpStatus mul(const T* pSrc1, const T* pSrc2, T* pDst, int len) {
  return Multiply<Layout, false>(pSrc1, pSrc2, pDst, len);
}

template <class Layout, class T>
OrpStatus mulConj(const T* pSrc1, const T* pSrc2, T* pDst, int len) {
  return Multiply<Layout, true>(pSrc1, pSrc2, pDst, len);
}

template <class Layout, class T>
OrpStatus mulSfs(const T* pSrc1, const T* pSrc2, T* pDst, int len, int scaleFactor) {
  return Multiply<Layout, false>(pSrc1, pSrc2, pDst, len, scaleFactor);
}

// ---- Expansion

template <class D>
HWY_INLINE hn::Vec<D> ReversePairs(D d, hn::Vec<D> v) {
  constexpr size_t kPair = 2 * sizeof(hn::TFromD<D>);
  if constexpr (kPair == 16) {
    return hn::ReverseBlocks(d, v);
  } else {
    constexpr hn::Repartition<hwy::UnsignedFromSize<kPair>, D> du;
    return hn::BitCast(d, hn::Reverse(du, hn::BitCast(du, v)));
  }
}

// The conjugates of src[0] to src[step - 1], last one first.
template <size_t step, class C>
HWY_INLINE auto Mirrored(const C* src) {
  constexpr TagOf<C, step> d;
  const auto v = ReversePairs(d, hn::LoadU(d, lanes(src)));
  if constexpr (isFloat<C>) {
    return hn::Xor(v, hn::OddEven(hn::SignBit(d), hn::Zero(d)));
  } else {
    return hn::OddEven(hn::SaturatedSub(hn::Zero(d), v), v);
  }
}

// dst[i] = the conjugate of src[count - 1 - i]; the arrays are disjoint.
template <size_t step, class Put, class C>
HWY_INLINE void Mirror(const C* src, C* dst, size_t count, Put putVector) {
  constexpr TagOf<C, step> d;
  if (count < step) {
    if constexpr (step > 1) Mirror<step / 2>(src, dst, count, StoreToCache{});
    return;
  }
  const size_t end = count - step;
  hn::StoreU(Mirrored<step>(src + end), d, lanes(dst));
  for (size_t i = IntoPairs<C>{dst}.UpToBoundary(step * sizeof(C)); i < end; i += step)
    putVector(Mirrored<step>(src + (end - i)), d, lanes(dst + i));
  hn::StoreU(Mirrored<step>(src), d, lanes(dst + end));
}

// dst[1] to dst[count] = the pairs, and dst[n - 1] downward their conjugates. The pairs may stand where they belong, or
// overlap dst[1] on at lower addresses; they end below dst[n - count].
template <class Put, class C>
HWY_NOINLINE void ExpandPairs(const C* pairs, C* dst, size_t count, size_t n, Put putVector) {
  constexpr size_t kBlock = 8192 / sizeof(C);  // the second step finds it in the first-level cache
  // From the end, so that nothing is written over before it has been read.
  for (size_t end = count, size; end > 0; end -= size) {
    size = HWY_MIN(end, kBlock);
    const C* const block = pairs + (end - size);
    Mirror<HWY_MAX_BYTES / sizeof(C)>(block, dst + (n - end), size, putVector);
    if (pairs != dst + 1) CopyBackward(bytes(block), bytes(dst + (1 + end - size)), size * sizeof(C), putVector);
  }
}

template <class Layout, class T, class C>
OrpStatus expand(const T* pSrc, C* pDst, int lenDst) {
  ORPS_CHECK_VECTOR(lenDst, pSrc, pDst);
  const size_t n = toSize(lenDst);
  const auto bin = [=](size_t at) HWY_ATTR {
    return Layout::kAllArePairs ? get(fft::AsPairs(pSrc + at)) : C{get(pSrc + at), 0};
  };
  const C* const pairs = fft::AsPairs(pSrc + Layout::pairs(n));
  const C first = bin(0), middle = n % 2 == 0 ? bin(Layout::middle(n)) : C{};  // before they are written over
  const bool isAligned = reinterpret_cast<uintptr_t>(pDst) % sizeof(C) == 0;
  if (HWY_UNLIKELY(n >= kStreamBytes / sizeof(C)) && isAligned) {
    ExpandPairs(pairs, pDst, fft::CountOfPairs(n), n, StorePastCaches{});
    hwy::FlushStream();
  } else {
    ExpandPairs(pairs, pDst, fft::CountOfPairs(n), n, StoreToCache{});
  }
  put(pDst, first);
  if (n % 2 == 0) put(pDst + n / 2, middle);
  return StsOk;
}

template <class Layout, class C>
OrpStatus expandInPlace(C* pSrcDst, int lenDst) {
  return expand<Layout>(static_cast<const Lane<C>*>(lanes(pSrcDst)), pSrcDst, lenDst);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/packed.inc"
#include "frame/exports-inl.h"
