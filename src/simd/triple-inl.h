// Vectors of 3-byte elements, as lanes of 32 bits.
#if defined(ORPSP_SIMD_TRIPLE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_SIMD_TRIPLE_INL_H_
#undef ORPSP_SIMD_TRIPLE_INL_H_
#else
#define ORPSP_SIMD_TRIPLE_INL_H_
#endif

#include <hwy/highway.h>

#include "simd/map-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// One vector of lanes, and the bytes of as many elements: three quarters of a vector.
inline constexpr size_t kTriples = HWY_MAX_BYTES / 4, kTripleBytes = 3 * kTriples;
using TripleBytes = hn::FixedTag<uint8_t, HWY_MAX_BYTES>;
using TripleWords = hn::FixedTag<uint32_t, kTriples>;

struct TripleTables {
  alignas(HWY_MAX_BYTES) uint8_t spread[HWY_MAX_BYTES];        // to the lower bytes of each lane
  alignas(HWY_MAX_BYTES) uint8_t spreadSigned[HWY_MAX_BYTES];  // to the upper bytes of each lane
  alignas(16) uint8_t pack[16];                                // the lower bytes of each lane, closed up
  // 12 bytes to each block of 16; AVX-512 has the words from 8 on in another vector.
  alignas(HWY_MAX_BYTES) uint32_t toBlocks[kTriples];
  alignas(HWY_MAX_BYTES) uint32_t fromBlocks[kTriples];
};
inline constexpr TripleTables kTripleTables = [] {
  constexpr uint8_t kNothing = 0x80;
  TripleTables t{};
  for (size_t i = 0; i < HWY_MAX_BYTES; ++i) {
    // AVX2 loads its second block from 4 bytes before, so as not to read beyond the elements.
    const size_t before = HWY_TARGET == HWY_AVX2 && i >= 16 ? 4 : 0, lane = i % 16 / 4, byte = i % 4;
    t.spread[i] = byte < 3 ? static_cast<uint8_t>(before + 3 * lane + byte) : kNothing;
    t.spreadSigned[i] = byte > 0 ? static_cast<uint8_t>(before + 3 * lane + byte - 1) : kNothing;
  }
  for (size_t i = 0; i < 16; ++i) t.pack[i] = i < 12 ? static_cast<uint8_t>(i / 3 * 4 + i % 3) : kNothing;
  for (size_t i = 0; i < kTriples; ++i) {
    const size_t word = i % 4 < 3 ? i / 4 * 3 + i % 4 : 0;
    t.toBlocks[i] = static_cast<uint32_t>(word < 8 ? word : word + 8);
    t.fromBlocks[i] = static_cast<uint32_t>(i < kTriples / 4 * 3 ? i / 3 * 4 + i % 3 : 0);
  }
  return t;
}();

// Blocks of 16 bytes that begin with 12 of the elements at p (in the second block of AVX2 they begin 4 bytes later).
HWY_INLINE hn::Vec<TripleBytes> LoadTripleBlocks(const uint8_t* p) {
  [[maybe_unused]] constexpr TripleBytes d8;
#if HWY_TARGET == HWY_AVX3  // two loads, since masked ones are slow where the caches miss
  const auto low = _mm512_zextsi256_si512(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)));
  const auto high = _mm512_zextsi128_si512(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 32)));
  const auto order = hn::Load(TripleWords{}, kTripleTables.toBlocks).raw;
  return hn::Vec512<uint8_t>{_mm512_permutex2var_epi32(low, order, high)};
#elif HWY_TARGET == HWY_AVX2
  constexpr hn::Half<TripleBytes> dh;
  return hn::Combine(d8, hn::LoadU(dh, p + 8), hn::LoadU(dh, p));
#else
  constexpr hn::Half<TripleBytes> dh;
  uint32_t last;
  __builtin_memcpy(&last, p + 8, sizeof(last));
  return hn::Combine(d8, hn::BitCast(dh, hn::Set(hn::FixedTag<uint32_t, 2>{}, last)), hn::LoadU(dh, p));
#endif
}

template <class T>
HWY_INLINE auto SpreadTriples(hn::Vec<TripleBytes> blocks) {
  constexpr TripleBytes d8;
  constexpr hn::FixedTag<int32_t, kTriples> di;
  if constexpr (std::is_same_v<T, Orp24s>) {
    const auto lanes = hn::TableLookupBytesOr0(blocks, hn::Load(d8, kTripleTables.spreadSigned));
    return hn::ShiftRight<8>(hn::BitCast(di, lanes));
  } else {
    return hn::BitCast(TripleWords{}, hn::TableLookupBytesOr0(blocks, hn::Load(d8, kTripleTables.spread)));
  }
}

template <class T>
HWY_INLINE auto LoadTriples(const T* p) {
  return SpreadTriples<T>(LoadTripleBlocks(bytes(p)));
}

// The first `count` of fewer than kTriples elements at p; the other lanes are zero.
template <class T>
HWY_INLINE auto LoadFewTriples(const T* p, size_t count) {
#if HWY_TARGET == HWY_AVX3
  alignas(64) uint8_t few[64];
  hn::Store(LoadFew(TripleBytes{}, bytes(p), 3 * count), TripleBytes{}, few);
#else
  uint8_t few[kTripleBytes] = {};
  CopyFew(few, p, 3 * count);
#endif
  return SpreadTriples<T>(LoadTripleBlocks(few));
}

// The lower three bytes of each lane, as the first three quarters of a vector.
template <class V>
HWY_INLINE hn::Vec<TripleBytes> PackTriples(V v) {
  constexpr TripleBytes d8;
  const auto blocks = hn::TableLookupBytesOr0(hn::BitCast(d8, v), hn::LoadDup128(d8, kTripleTables.pack));
#if HWY_TARGET == HWY_SSSE3
  return blocks;
#else
  constexpr TripleWords d32;
  const auto order = hn::SetTableIndices(d32, kTripleTables.fromBlocks);
  return hn::BitCast(d8, hn::TableLookupLanes(hn::BitCast(d32, blocks), order));
#endif
}

template <class V>
HWY_INLINE void StoreTriples(V v, uint8_t* p) {
  const auto packed = PackTriples(v);
  constexpr hn::Half<TripleBytes> dh;
  constexpr hn::Half<decltype(dh)> dq;
  hn::StoreU(hn::LowerHalf(dh, packed), dh, p);
  hn::StoreU(hn::LowerHalf(dq, hn::UpperHalf(dh, packed)), dq, p + kTripleBytes / 3 * 2);
}

template <class V>
HWY_INLINE void StoreFewTriples(V v, uint8_t* p, size_t count) {
  StoreFew(PackTriples(v), TripleBytes{}, p, 3 * count);
}

// Source of 3-byte elements, for Map.
template <class T>
struct Triples {
  using Type = T;
  static constexpr size_t kElementBytes = 4;
  const T* p;

  template <size_t count>
  HWY_INLINE auto Load(size_t i) const {
    static_assert(count == kTriples);
    return LoadTriples(p + i);
  }
  template <size_t count>
  HWY_INLINE auto LoadFew(size_t few) const {
    return LoadFewTriples(p, few);
  }
  HWY_INLINE Triples From(size_t i) const { return {p + i}; }
  HWY_INLINE bool IsAt(const void*) const { return false; }
};

#if HWY_TARGET == HWY_AVX3
// Four vectors packed into three, whole stores being faster than three quarters of one.
template <class V>
HWY_INLINE void StoreFourTriples(V a, V b, V c, V d, uint8_t* p) {
  constexpr TripleBytes d8;
  constexpr TripleWords d32;
  struct Table {
    alignas(64) uint32_t at[3 * kTriples];  // word 12 * j + 3 * k + i is word i of block k of the vector j
  };
  static constexpr Table kTable = [] {
    Table table{};
    for (uint32_t n = 0; n < 3 * kTriples; ++n) table.at[n] = (n / 12 - n / 16) * 16 + n % 12 / 3 * 4 + n % 3;
    return table;
  }();
  const auto pack = hn::LoadDup128(d8, kTripleTables.pack);
  const auto blocks = [=](V v) HWY_ATTR { return hn::TableLookupBytesOr0(hn::BitCast(d8, v), pack).raw; };
  const auto ba = blocks(a), bb = blocks(b), bc = blocks(c), bd = blocks(d);
  const auto store = [=](auto low, auto high, uint32_t n) HWY_ATTR {
    const auto order = hn::Load(d32, kTable.at + n * kTriples).raw;
    hn::StoreU(hn::Vec512<uint8_t>{_mm512_permutex2var_epi32(low, order, high)}, d8, p + n * 64);
  };
  store(ba, bb, 0);
  store(bb, bc, 1);
  store(bc, bd, 2);
}
#endif

// Map for a destination of 3-byte elements: op gives lanes of 32 bits, of which the lower three bytes are written.
template <class Op, class TD, class S>
HWY_INLINE void MapToTriples(const Op& op, TD* dst, size_t len, const S& src) {
  static_assert(sizeof(TD) == 3);
  constexpr TripleWords d;
  size_t i = 0;
#if HWY_TARGET == HWY_AVX3
  const auto at = [&](size_t from) HWY_ATTR { return op(d, src.template Load<kTriples>(from)); };
  for (; i + 4 * kTriples <= len; i += 4 * kTriples)
    StoreFourTriples(at(i), at(i + kTriples), at(i + 2 * kTriples), at(i + 3 * kTriples), bytes(dst + i));
#endif
  for (; i + kTriples <= len; i += kTriples) StoreTriples(op(d, src.template Load<kTriples>(i)), bytes(dst + i));
  if (i < len) StoreFewTriples(op(d, src.From(i).template LoadFew<kTriples>(len - i)), bytes(dst + i), len - i);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
