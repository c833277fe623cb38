// Flip and SwapBytes.
#include "orpsp/vector/move.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/reorder.cpp"
#include <hwy/foreach_target.h>

#include "simd/forms-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// The elements of a vector in reverse order, as bytes; elements of `size` bytes.
template <size_t size, class D>
HWY_INLINE auto ReverseElements(D d, hn::Vec<D> v) {
  if constexpr (size == 16) {
    return hn::ReverseBlocks(d, v);
  } else if constexpr (size == 1) {
    alignas(16) static constexpr uint8_t kReverse[16] = {15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0};
    return hn::ReverseBlocks(d, hn::TableLookupBytes(v, hn::LoadDup128(d, kReverse)));
  } else {
    constexpr hn::Repartition<hwy::UnsignedFromSize<size>, D> de;
    return hn::BitCast(d, hn::Reverse(de, hn::BitCast(de, v)));
  }
}

// The first `count` bytes at p as the last lanes of a vector; the others are zero.
template <class D>
HWY_INLINE hn::Vec<D> LoadFewAtEnd(D d, const Orp8u* p, size_t count) {
  const size_t before = hn::Lanes(d) - count;
#if HWY_TARGET == HWY_AVX3
  return hn::MaskedLoad(hn::Not(hn::FirstN(d, before)), d, p - before);
#else
  alignas(HWY_MAX_BYTES) Orp8u few[HWY_MAX_BYTES] = {};
  CopyFew(few + before, p, count);
  return hn::Load(d, few);
#endif
}

template <size_t size>
HWY_NOINLINE OrpStatus FlipBytes(const Orp8u* src, Orp8u* dst, size_t count) {
  constexpr hn::ScalableTag<Orp8u> d;
  constexpr size_t kStep = HWY_MAX_BYTES;
  const auto reversed = [](auto v) HWY_ATTR { return ReverseElements<size>(hn::ScalableTag<Orp8u>{}, v); };
  if (src != dst && count >= kStep) {
    size_t i = 0;
#pragma GCC unroll 2
    for (; i < count - kStep; i += kStep) hn::StoreU(reversed(hn::LoadU(d, src + (count - kStep - i))), d, dst + i);
    hn::StoreU(reversed(hn::LoadU(d, src)), d, dst + (count - kStep));
    return StsOk;
  }
  // In place: whole vectors from both ends change places, overlapping in the middle if need be.
  while (count > kStep) {
    const auto front = hn::LoadU(d, src), back = hn::LoadU(d, src + (count - kStep));
    hn::StoreU(reversed(back), d, dst);
    hn::StoreU(reversed(front), d, dst + (count - kStep));
    if (count <= 2 * kStep) return StsOk;
    src += kStep;
    dst += kStep;
    count -= 2 * kStep;
  }
  if (count == kStep) {
    hn::StoreU(reversed(hn::LoadU(d, src)), d, dst);
  } else {
    StoreFew(reversed(LoadFewAtEnd(d, src, count)), d, dst, count);
  }
  return StsOk;
}

template <class T>
OrpStatus flip(const T* pSrc, T* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  return FlipBytes<sizeof(T)>(bytes(pSrc), bytes(pDst), toSize(len) * sizeof(T));
}

// Bytes of each element in reverse order, elements of 2, 4 or 8 bytes.
template <size_t size>
struct ReverseBytes {
  struct Table {
    alignas(16) uint8_t at[16];
  };
  static constexpr Table kTable = [] {
    Table table{};
    for (size_t i = 0; i < 16; ++i) table.at[i] = static_cast<uint8_t>(i ^ (size - 1));
    return table;
  }();
  HWY_INLINE auto operator()(auto d, auto v) const {
    constexpr hn::Repartition<uint8_t, decltype(d)> d8;
    return hn::BitCast(d, hn::TableLookupBytes(hn::BitCast(d8, v), hn::LoadDup128(d8, kTable.at)));
  }
};

// Elements of 3 bytes, `step` at a time: planes of first, second and third bytes, written back in the other order.
template <size_t step>
void SwapTriples(const Orp8u* src, Orp8u* dst, size_t len) {
  constexpr hn::FixedTag<Orp8u, step> d;
  if (len < step) {
    if constexpr (step > 16) return SwapTriples<step / 2>(src, dst, len);
    for (size_t i = 0; i < 3 * len; i += 3) {
      const Orp8u first = src[i], third = src[i + 2];
      dst[i] = third;
      dst[i + 1] = src[i + 1];
      dst[i + 2] = first;
    }
    return;
  }
  const auto load = [=](size_t i, auto& a, auto& b, auto& c)
                        HWY_ATTR { hn::LoadInterleaved3(d, src + 3 * i, a, b, c); };
  const size_t end = len - step;
  hn::Vec<decltype(d)> a, b, c, lastA, lastB, lastC;
  load(end, lastA, lastB, lastC);
  for (size_t i = 0; i < end; i += step) {
    load(i, a, b, c);
    hn::StoreInterleaved3(c, b, a, d, dst + 3 * i);
  }
  hn::StoreInterleaved3(lastC, lastB, lastA, d, dst + 3 * end);
}

template <class T>
OrpStatus swapBytes(const T* pSrc, T* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  if constexpr (sizeof(T) == 3) {
    SwapTriples<HWY_MAX_BYTES>(bytes(pSrc), bytes(pDst), toSize(len));
  } else {
    Map(ReverseBytes<sizeof(T)>{}, pDst, toSize(len), Vector<T>{pSrc});
  }
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/reorder.inc"
#include "frame/exports-inl.h"
