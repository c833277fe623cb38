// Logarithmic codes of speech: a sign, three bits for the segment and four for the place in it.
//
// [G.711] ITU-T Recommendation G.711: Pulse code modulation (PCM) of voice frequencies, 1988.
#include "orpsp/speech/companding.h"

#include <utility>

#include "frame/check.h"
#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "speech/companding.cpp"
#include <hwy/foreach_target.h>

#include "simd/map-inl.h"
#include "simd/round-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// ---- Tables of 16 bytes, looked up by shuffles

template <class T>
struct Table {
  alignas(16) T entry[16 / sizeof(T)];

  // For lookups into lanes of D.
  template <class D>
  HWY_INLINE auto For(D) const {
    constexpr size_t kBytes = HWY_MAX(16, hn::MaxLanes(D{}) * sizeof(hn::TFromD<D>));
    return hn::LoadDup128(hn::FixedTag<uint8_t, kBytes>{}, reinterpret_cast<const uint8_t*>(entry));
  }
};
using Bytes = Table<uint8_t>;
using Numbers = Table<uint16_t>;

// Indices from 0 to 7 in lanes of 16 bits as those of both bytes of a number.
template <class V>
HWY_INLINE V IndicesOfBytes(V index) {
  constexpr hn::DFromV<V> d;
  return hn::Add(hn::Mul(index, hn::Set(d, int16_t{0x0202})), hn::Set(d, int16_t{0x0100}));
}
template <class V>
HWY_INLINE V Number(const Numbers& table, V indicesOfBytes) {
  return hn::TableLookupBytes(table.For(hn::DFromV<V>{}), indicesOfBytes);
}

// ---- Laws. A code xor kMask has the sign in bit 7 (set: negative), then segment g and place m.

struct ALaw {
  static constexpr int16_t kMask = 0xD5;
  // Decoded magnitudes are (2 m + kOffset[g]) kStep[g] - kBias.
  static constexpr Numbers kOffset = {{1, 33, 33, 33, 33, 33, 33, 33}}, kStep = {{8, 8, 16, 32, 64, 128, 256, 512}};
  static constexpr int16_t kBias = 0;

  // Samples are coded without their lowest kDropped bits. Segment 0 ends before 2^kSegmentBits; a place is the number
  // times kPlace / 2^16, of which the lower four bits count.
  static constexpr int kDropped = 3, kSegmentBits = 5;
  static constexpr Numbers kPlace = {{1 << 15, 1 << 15, 1 << 14, 1 << 13, 1 << 12, 1 << 11, 1 << 10, 1 << 9}};
  template <class V>
  static HWY_INLINE V ToBeCoded(V magnitude) {
    return magnitude;
  }
};

struct MuLaw {
  static constexpr int16_t kMask = 0xFF;
  static constexpr Numbers kOffset = {{33, 33, 33, 33, 33, 33, 33, 33}}, kStep = {{4, 8, 16, 32, 64, 128, 256, 512}};
  static constexpr int16_t kBias = 132;

  static constexpr int kDropped = 2, kSegmentBits = 6;
  static constexpr Numbers kPlace = {{1 << 15, 1 << 14, 1 << 13, 1 << 12, 1 << 11, 1 << 10, 1 << 9, 1 << 8}};
  template <class V>
  static HWY_INLINE V ToBeCoded(V magnitude) {
    constexpr hn::DFromV<V> d;
    return hn::Min(hn::Add(magnitude, hn::Set(d, int16_t{33})), hn::Set(d, int16_t{0x1FFF}));
  }
};

template <class Law>
struct Decode {
  template <class D, class V>
  HWY_INLINE hn::Vec<D> operator()(D d16, V codes) const {
    const auto fields = hn::Xor(hn::PromoteTo(d16, codes), hn::Set(d16, Law::kMask));
    const auto segment = IndicesOfBytes(hn::And(hn::ShiftRight<4>(fields), hn::Set(d16, int16_t{7})));
    const auto place = hn::And(hn::Add(fields, fields), hn::Set(d16, int16_t{30}));
    const auto steps = hn::Add(place, Number(Law::kOffset, segment));
    const auto magnitude = hn::Sub(hn::Mul(steps, Number(Law::kStep, segment)), hn::Set(d16, Law::kBias));
    const auto sign = hn::BroadcastSignBit(hn::ShiftLeft<8>(fields));
    return hn::Sub(hn::Xor(magnitude, sign), sign);
  }
};

// A number's segment is the place of its leading bit, found in one of two groups of four bits.
constexpr Bytes kLowerSegments = {{0, 0, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3, 3, 3, 3, 3}};
constexpr Bytes kUpperSegments = {{0, 4, 5, 5, 6, 6, 6, 6, 7, 7, 7, 7, 7, 7, 7, 7}};

template <class Law>
struct Encode {
  template <class D, class V>
  HWY_INLINE hn::Vec<D> operator()(D d, V samples) const {
    constexpr hn::DFromV<V> d16;
    constexpr hn::RebindToUnsigned<decltype(d16)> du16;
    const auto sign = hn::BroadcastSignBit(samples);
    const auto number = Law::ToBeCoded(hn::Xor(hn::ShiftRight<Law::kDropped>(samples), sign));
    const auto lower = hn::And(hn::ShiftRight<Law::kSegmentBits - 1>(number), hn::Set(d16, int16_t{15}));
    const auto upper = hn::ShiftRight<Law::kSegmentBits + 3>(number);
    const auto segment = hn::Max(hn::TableLookupBytes(kLowerSegments.For(d16), lower),
                                 hn::TableLookupBytes(kUpperSegments.For(d16), upper));
    const auto perPlace = hn::BitCast(du16, Number(Law::kPlace, IndicesOfBytes(segment)));
    const auto place = hn::BitCast(d16, hn::MulHigh(hn::BitCast(du16, number), perPlace));
    const auto fields = hn::Or(hn::ShiftLeft<4>(segment), hn::And(place, hn::Set(d16, int16_t{15})));
    const auto mask = hn::Xor(hn::And(sign, hn::Set(d16, int16_t{0x80})), hn::Set(d16, Law::kMask));
    return hn::DemoteTo(d, hn::Xor(fields, mask));
  }
};

// ---- Samples of single precision

struct ToFloat {
  template <class D, class V>
  HWY_INLINE hn::Vec<D> operator()(D d, V v) const {
    return Lift(d, v);
  }
};
struct FromFloat {
  template <class D, class V>
  HWY_INLINE hn::Vec<D> operator()(D d, V v) const {
    return RoundTo<Rounding::kNearest>(d, hn::IfThenElseZero(hn::Eq(v, v), v));
  }
};

// ---- From one law to the other, by the tables of [G.711]

// The numbers from first to last, each of them `times` times.
struct Run {
  int first, last, step, times;
};

// Magnitudes 0 to 127 of one law as those of the other: what is to be added to them.
struct Differences {
  Bytes block[8];

  template <size_t count>
  constexpr Differences(const Run (&runs)[count], int origin) : block() {
    int i = 0;
    for (const Run& run : runs) {
      for (int number = run.first; number <= run.last; number += run.step)
        for (int k = 0; k < run.times; ++k, ++i)
          block[i / 16].entry[i % 16] = static_cast<uint8_t>(number - origin - i);
    }
  }
  constexpr bool isZero(size_t k) const {
    for (const uint8_t difference : block[k].entry)
      if (difference != 0) return false;
    return true;
  }
};

// Table 4: A-law values to mu-law values, these counted from 0.
struct ToMuLaw {
  using From = ALaw;
  using To = MuLaw;
  static constexpr Run kRuns[] = {{1, 15, 2, 1},  {16, 31, 1, 1}, {32, 35, 1, 2}, {36, 47, 1, 1}, {48, 49, 1, 2},
                                  {50, 63, 1, 1}, {64, 64, 1, 2}, {65, 79, 1, 1}, {80, 80, 1, 2}, {81, 127, 1, 1}};
  static constexpr Differences kDifferences{kRuns, 0};
};

// Table 3: mu-law values to A-law values, these counted from 1.
struct ToALaw {
  using From = MuLaw;
  using To = ALaw;
  static constexpr Run kRuns[] = {{1, 8, 1, 2},   {9, 24, 1, 1},  {25, 31, 2, 1}, {33, 44, 1, 1},
                                  {46, 46, 1, 1}, {48, 62, 1, 1}, {64, 80, 1, 1}, {82, 128, 1, 1}};
  static constexpr Differences kDifferences{kRuns, 1};
};

template <class Law>
struct Transcode {
  template <class D, class V>
  HWY_INLINE V operator()(D d, V codes) const {
    const auto fields = hn::Xor(codes, hn::Set(d, uint8_t{Law::From::kMask}));
    const auto magnitude = hn::And(fields, hn::Set(d, uint8_t{0x7F}));
    const auto sum = PlusDifferences(d, fields, magnitude, std::make_index_sequence<8>{});
    return hn::Xor(sum, hn::Set(d, uint8_t{Law::To::kMask}));
  }

 private:
  template <class D, class V, size_t... k>
  static HWY_INLINE V PlusDifferences(D d, V fields, V magnitude, std::index_sequence<k...>) {
    ((fields = PlusDifference<k>(d, fields, magnitude)), ...);
    return fields;
  }
  template <size_t k, class D, class V>
  static HWY_INLINE V PlusDifference(D d, V fields, V magnitude) {
    if constexpr (Law::kDifferences.isZero(k)) return fields;
    // Magnitudes outside the block get bit 7 set, for which a shuffle gives 0.
    const auto inBlock = hn::Xor(magnitude, hn::Set(d, uint8_t{16 * k}));
    const auto index = hn::SaturatedAdd(inBlock, hn::Set(d, uint8_t{0x70}));
    return hn::Add(fields, hn::TableLookupBytesOr0(Law::kDifferences.block[k].For(d), index));
  }
};

// ---- Calls

template <class Op, class From, class To>
OrpStatus mapped(const From* pSrc, To* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  Map(Op{}, pDst, static_cast<size_t>(len), Vector<From>{pSrc});
  return StsOk;
}

// One after the other, block by block, with samples of 16 bits between them: work on codes fills whole vectors then,
// instead of half of them.
template <class First, class Second, class From, class To>
OrpStatus mappedTwice(const From* pSrc, To* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  constexpr size_t kBlock = 1024;
  alignas(64) int16_t samples[kBlock];
  const size_t count = static_cast<size_t>(len);
  for (size_t i = 0; i < count; i += kBlock) {
    const size_t few = HWY_MIN(count - i, kBlock);
    Map(First{}, samples, few, Vector<From>{pSrc + i});
    Map(Second{}, pDst + i, few, Vector<int16_t>{samples});
  }
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/companding.inc"
#define ORPSP_NEAREST fromFloatsIntoIntegers
#include "frame/exports-inl.h"
