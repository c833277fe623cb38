// Exact integer results: double-width products, the scale-factor rule, and narrowing with saturation.
#if defined(ORPSP_SIMD_INTEGER_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_SIMD_INTEGER_INL_H_
#undef ORPSP_SIMD_INTEGER_INL_H_
#else
#define ORPSP_SIMD_INTEGER_INL_H_
#endif

#include <hwy/highway.h>

#include <limits>

#include "simd/map-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// ---- Instructions that Highway does not offer: they pack or pair within 128-bit blocks.

#define ORPSP_BLOCKWISE(name, From, To, sse, avx2, avx512)                                                             \
  HWY_INLINE hn::Vec128<To> name(hn::Vec128<From> a, hn::Vec128<From> b) { return hn::Vec128<To>{sse(a.raw, b.raw)}; } \
  ORPSP_BLOCKWISE_256(name, From, To, avx2)                                                                            \
  ORPSP_BLOCKWISE_512(name, From, To, avx512)
#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3
#define ORPSP_BLOCKWISE_256(name, From, To, avx2) \
  HWY_INLINE hn::Vec256<To> name(hn::Vec256<From> a, hn::Vec256<From> b) { return hn::Vec256<To>{avx2(a.raw, b.raw)}; }
#else
#define ORPSP_BLOCKWISE_256(name, From, To, avx2)
#endif
#if HWY_TARGET == HWY_AVX3
#define ORPSP_BLOCKWISE_512(name, From, To, avx512)                        \
  HWY_INLINE hn::Vec512<To> name(hn::Vec512<From> a, hn::Vec512<From> b) { \
    return hn::Vec512<To>{avx512(a.raw, b.raw)};                           \
  }
#else
#define ORPSP_BLOCKWISE_512(name, From, To, avx512)
#endif

// Both vectors narrowed with signed saturation of their signed lanes; to unsigned lanes the results are clamped at 0.
ORPSP_BLOCKWISE(Pack, int16_t, int8_t, _mm_packs_epi16, _mm256_packs_epi16, _mm512_packs_epi16)
ORPSP_BLOCKWISE(Pack, int32_t, int16_t, _mm_packs_epi32, _mm256_packs_epi32, _mm512_packs_epi32)
ORPSP_BLOCKWISE(PackToUnsigned, int16_t, uint8_t, _mm_packus_epi16, _mm256_packus_epi16, _mm512_packus_epi16)
// Products of neighbouring 16-bit lanes, summed: a0 * b0 + a1 * b1, wrapping.
ORPSP_BLOCKWISE(SumOfPairs, int16_t, int32_t, _mm_madd_epi16, _mm256_madd_epi16, _mm512_madd_epi16)
#if HWY_TARGET != HWY_SSSE3
ORPSP_BLOCKWISE(PackToUnsigned, int32_t, uint16_t, _mm_packus_epi32, _mm256_packus_epi32, _mm512_packus_epi32)
#else
HWY_INLINE hn::Vec128<uint16_t> PackToUnsigned(hn::Vec128<int32_t> a, hn::Vec128<int32_t> b) {
  constexpr hn::FixedTag<int32_t, 4> d;
  constexpr hn::FixedTag<uint16_t, 8> du;
  const auto shifted = [d](auto v) HWY_ATTR { return hn::Sub(hn::Max(v, hn::Zero(d)), hn::Set(d, 32768)); };
  return hn::Xor(hn::BitCast(du, Pack(shifted(a), shifted(b))), hn::Set(du, 0x8000));
}
#endif
#undef ORPSP_BLOCKWISE
#undef ORPSP_BLOCKWISE_256
#undef ORPSP_BLOCKWISE_512

template <class T>
inline constexpr T kLeast = std::numeric_limits<T>::min();
template <class T>
inline constexpr T kMost = std::numeric_limits<T>::max();

// ---- Saturating sum and difference in every integer type.

template <class V, class T = hn::TFromV<V>>
HWY_INLINE V SaturatedSum(V a, V b) {
  if constexpr (sizeof(T) <= 2) {
    return hn::SaturatedAdd(a, b);
  } else {
    constexpr hn::DFromV<V> d;
    constexpr hn::RebindToSigned<decltype(d)> di;
    const auto sum = hn::Add(a, b);
    if constexpr (std::is_signed_v<T>) {
      const auto wrapped = hn::And(hn::Xor(a, sum), hn::Xor(b, sum));  // sign bit: both operands differ from the sum
      const auto limit = hn::Xor(hn::BroadcastSignBit(a), hn::Set(d, kMost<T>));
      return hn::IfThenElse(hn::MaskFromVec(hn::BroadcastSignBit(wrapped)), limit, sum);
    } else {
      const auto sign = hn::Set(d, T{1} << (8 * sizeof(T) - 1));
      const auto wrapped = hn::Lt(hn::BitCast(di, hn::Xor(sum, sign)), hn::BitCast(di, hn::Xor(a, sign)));
      return hn::Or(sum, hn::BitCast(d, hn::VecFromMask(di, wrapped)));
    }
  }
}

// b - a
template <class V, class T = hn::TFromV<V>>
HWY_INLINE V SaturatedDifference(V a, V b) {
  if constexpr (sizeof(T) <= 2) {
    return hn::SaturatedSub(b, a);
  } else {
    static_assert(std::is_signed_v<T>);
    constexpr hn::DFromV<V> d;
    const auto difference = hn::Sub(b, a);
    const auto wrapped = hn::And(hn::Xor(a, b), hn::Xor(b, difference));
    const auto limit = hn::Xor(hn::BroadcastSignBit(b), hn::Set(d, kMost<T>));
    return hn::IfThenElse(hn::MaskFromVec(hn::BroadcastSignBit(wrapped)), limit, difference);
  }
}

// |v|, the greatest number for the least one.
template <class V, class T = hn::TFromV<V>>
HWY_INLINE V SaturatedAbs(V v) {
  constexpr hn::DFromV<V> d;
  if constexpr (sizeof(T) == 2) {
    return hn::Max(v, hn::SaturatedSub(hn::Zero(d), v));
  } else if constexpr (HWY_TARGET == HWY_SSSE3) {
    const auto wrapped = hn::Abs(v);
    return hn::Add(wrapped, hn::BroadcastSignBit(wrapped));
  } else {
    constexpr hn::RebindToUnsigned<decltype(d)> du;
    return hn::BitCast(d, hn::Min(hn::BitCast(du, hn::Abs(v)), hn::BitCast(du, hn::Set(d, kMost<T>))));
  }
}

// ---- The scale-factor rule.

// v / 2^shift rounded to nearest, ties to even, for 1 <= shift < width, and <= width for unsigned lanes. Bit 0 of
// `below` stands for a nonzero remainder below v: the exact argument then lies between v and v + 1.
template <class V, class T = hn::TFromV<V>>
HWY_INLINE V RoundedShift(V v, V below, int shift) {
  constexpr hn::DFromV<V> d;
  constexpr hn::RebindToSigned<decltype(d)> di;
  const auto one = hn::Set(d, T{1});
  if constexpr (std::is_unsigned_v<T>) {
    if (HWY_UNLIKELY(shift == 8 * sizeof(T))) {  // the last two bits may be jammed into one, far below the rounding bit
      v = hn::Or(hn::ShiftRight<1>(v), hn::And(v, one));
      --shift;
    }
  }
  const T half = static_cast<T>(T{1} << (shift - 1));
  const auto quotient = hn::ShiftRightSame(v, shift);
  const auto remainder = hn::And(v, hn::Set(d, static_cast<T>(half | (half - 1))));
  const auto breaksTie = hn::And(hn::Or(quotient, below), one);
  const auto limit = hn::Sub(hn::Set(d, half), breaksTie);
  const auto up = hn::Gt(hn::BitCast(di, remainder), hn::BitCast(di, limit));
  return hn::IfThenElse(hn::RebindMask(d, up), hn::Add(quotient, one), quotient);
}

// RoundedShift for signed lanes with |v| <= 2^(width - 2), where adding before shifting cannot overflow, and which
// vanish from width - 1 on.
template <class V, class T = hn::TFromV<V>>
HWY_INLINE V RoundedShiftOfSmall(V v, int shift) {
  constexpr hn::DFromV<V> d;
  shift = HWY_MIN(shift, 8 * static_cast<int>(sizeof(T)) - 1);
  const T nearlyHalf = static_cast<T>((T{1} << (shift - 1)) - 1);
  const auto odd = hn::And(hn::ShiftRightSame(v, shift), hn::Set(d, T{1}));
  return hn::ShiftRightSame(hn::Add(hn::Add(v, hn::Set(d, nearlyHalf)), odd), shift);
}

// A sum that needs one bit more than its lanes: 2 * half + (odd & 1), half rounded down.
template <class V>
struct Halves {
  V half, odd;

  // Scaled by 2^-1; only the greatest difference, 2^width - 1, saturates.
  HWY_INLINE V Rounded1() const {
    constexpr hn::DFromV<V> d;
    return SaturatedSum(half, hn::And(hn::And(half, odd), hn::Set(d, hn::TFromV<V>{1})));
  }
  // Scaled by 2^-scale, scale >= 2.
  HWY_INLINE V Rounded(int scale) const { return RoundedShift(half, odd, scale - 1); }
};

template <class V>
HWY_INLINE Halves<V> HalvesOfSum(V a, V b) {
  const V differing = hn::Xor(a, b);
  return {hn::Add(hn::ShiftRight<1>(differing), hn::And(a, b)), differing};
}

// b - a, signed lanes
template <class V>
HWY_INLINE Halves<V> HalvesOfDifference(V a, V b) {
  const V differing = hn::Xor(a, b);
  return {hn::Sub(hn::ShiftRight<1>(differing), hn::AndNot(b, a)), differing};
}

// x * 2^shift with saturation, 1 <= shift <= width: right for a result that was saturated before, too, since both ends
// of the range stay where they are.
struct ShiftUp {
  int shift;
  template <class D, class V>
  HWY_INLINE V operator()(D d, V v) const {
    using T = hn::TFromD<D>;
    const auto shifted = hn::ShiftLeftSame(v, shift);
    auto limit = hn::Set(d, kMost<T>);
    if constexpr (std::is_signed_v<T>) limit = hn::Xor(limit, hn::BroadcastSignBit(v));
    return hn::IfThenElse(hn::Eq(hn::ShiftRightSame(shifted, shift), v), shifted, limit);
  }
};

// a * b * 2^-15 of 16-bit lanes without double width.
template <class V>
HWY_INLINE V ProductQ15(V a, V b) {
  constexpr hn::DFromV<V> d;
  const auto roundedUp = hn::MulFixedPoint15(a, b);  // ties upward
  const auto isTie = hn::Eq(hn::And(hn::Mul(a, b), hn::Set(d, 0x7FFF)), hn::Set(d, 0x4000));
  const auto toEven = hn::AndNot(hn::Set(d, 1), roundedUp);
  const auto rounded = hn::IfThenElse(isTie, toEven, roundedUp);
  // -32768 comes only from (-32768)^2, which must saturate.
  return hn::IfThenElse(hn::Eq(rounded, hn::Set(d, kLeast<int16_t>)), hn::Set(d, kMost<int16_t>), rounded);
}

// ---- Double-width values of a vector of lanes T, in the order that Narrow undoes: in blocks for 8 and 16 bits, even
// and odd lanes for 32 bits and for complex products.

enum class Order { kBlocks, kEvenOdd };

template <class W, Order order>
struct Wide {
  W first, second;

  HWY_INLINE Wide Rounded(int shift) const {
    const W nothing = hn::Zero(hn::DFromV<W>{});
    return {RoundedShift(first, nothing, shift), RoundedShift(second, nothing, shift)};
  }
  // For products of two lanes.
  HWY_INLINE Wide RoundedProduct(int shift) const {
    if constexpr (std::is_signed_v<hn::TFromV<W>>) {
      return {RoundedShiftOfSmall(first, shift), RoundedShiftOfSmall(second, shift)};
    } else {
      return Rounded(shift);
    }
  }
};

template <class V, class T = hn::TFromV<V>>
HWY_INLINE auto Widen(V v) {
  constexpr hn::DFromV<V> d;
  constexpr hn::RepartitionToWide<decltype(d)> dw;
  using W = hn::Vec<decltype(dw)>;
  constexpr int kHalf = 8 * sizeof(T);
  if constexpr (sizeof(T) == 4) {
    return Wide<W, Order::kEvenOdd>{hn::ShiftRight<kHalf>(hn::ShiftLeft<kHalf>(hn::BitCast(dw, v))),
                                    hn::ShiftRight<kHalf>(hn::BitCast(dw, v))};
  } else if constexpr (std::is_signed_v<T>) {
    const auto sign = hn::BroadcastSignBit(v);
    return Wide<W, Order::kBlocks>{hn::BitCast(dw, hn::InterleaveLower(d, v, sign)),
                                   hn::BitCast(dw, hn::InterleaveUpper(d, v, sign))};
  } else {
    return Wide<W, Order::kBlocks>{hn::BitCast(dw, hn::InterleaveLower(d, v, hn::Zero(d))),
                                   hn::BitCast(dw, hn::InterleaveUpper(d, v, hn::Zero(d)))};
  }
}

// Odd lanes of 32 bits where the even ones are, for MulEven.
template <class V>
HWY_INLINE V OddLanes(V v) {
  constexpr hn::DFromV<V> d;
  constexpr hn::RepartitionToWide<hn::RebindToUnsigned<decltype(d)>> dw;
  return hn::BitCast(d, hn::ShiftRight<32>(hn::BitCast(dw, v)));
}

template <class V, class T = hn::TFromV<V>>
HWY_INLINE auto WideProduct(V a, V b) {
  constexpr hn::DFromV<V> d;
  constexpr hn::RepartitionToWide<decltype(d)> dw;
  using W = hn::Vec<decltype(dw)>;
  if constexpr (sizeof(T) == 1) {
    const auto wa = Widen(a), wb = Widen(b);
    return Wide<W, Order::kBlocks>{hn::Mul(wa.first, wb.first), hn::Mul(wa.second, wb.second)};
  } else if constexpr (sizeof(T) == 2) {
    const auto low = hn::Mul(a, b), high = hn::MulHigh(a, b);
    return Wide<W, Order::kBlocks>{hn::BitCast(dw, hn::InterleaveLower(d, low, high)),
                                   hn::BitCast(dw, hn::InterleaveUpper(d, low, high))};
  } else {
    return Wide<W, Order::kEvenOdd>{hn::MulEven(a, b), hn::MulEven(OddLanes(a), OddLanes(b))};
  }
}

// Complex products. Of both operands (-2^(n-1), -2^(n-1)) the imaginary part 2^(2n-1) wraps to the least number.
template <class V, class T = hn::TFromV<V>>
HWY_INLINE auto WideComplexProduct(V a, V b) {
  constexpr hn::DFromV<V> d;
  constexpr hn::RepartitionToWide<decltype(d)> dw;
  using W = hn::Vec<decltype(dw)>;
  using TW = hn::TFromV<W>;
  W re, im;
  if constexpr (sizeof(T) == 2) {
    // ac - bd = ac + b * ~d + b; intermediate results may wrap, the sum fits.
    const auto imaginary = hn::BitCast(d, hn::Set(dw, static_cast<TW>(~TW{0xFFFF})));
    re = hn::Add(SumOfPairs(a, hn::Xor(b, imaginary)), hn::ShiftRight<16>(hn::BitCast(dw, a)));
    im = SumOfPairs(a, hn::BitCast(d, hn::RotateRight<16>(hn::BitCast(hn::RebindToUnsigned<decltype(dw)>{}, b))));
  } else {
    const auto imA = OddLanes(a), imB = OddLanes(b);
    re = hn::Sub(hn::MulEven(a, b), hn::MulEven(imA, imB));
    im = hn::Add(hn::MulEven(a, imB), hn::MulEven(imA, b));
  }
  return Wide<W, Order::kEvenOdd>{re, im};
}

// WideComplexProduct with 2^(2n-1) - 1 for what wrapped. That makes no difference after any scaling.
template <class V>
HWY_INLINE auto WideComplexProductForScaling(V a, V b) {
  auto product = WideComplexProduct(a, b);
  using W = decltype(product.second);
  constexpr hn::DFromV<W> dw;
  const auto wrapped = hn::VecFromMask(dw, hn::Eq(product.second, hn::Set(dw, kLeast<hn::TFromV<W>>)));
  product.second = hn::Add(product.second, wrapped);
  return product;
}

template <class W, Order order>
HWY_INLINE Wide<W, order> operator+(Wide<W, order> a, Wide<W, order> b) {
  return {hn::Add(a.first, b.first), hn::Add(a.second, b.second)};
}

// Back to lanes of d with saturation; in kEvenOdd order `first` holds the even lanes.
template <class D, class W, Order order>
HWY_INLINE hn::Vec<D> Narrow(D d, Wide<W, order> w) {
  using T = hn::TFromD<D>;
  using TW = hn::TFromV<W>;
  constexpr hn::DFromV<W> dw;
  if constexpr (sizeof(TW) == 8 && HWY_TARGET == HWY_AVX3) {
    const auto least = hn::Set(dw, TW{kLeast<T>}), most = hn::Set(dw, TW{kMost<T>});
    const auto clamped = [=](W v) HWY_ATTR { return hn::Min(hn::Max(v, least), most); };
    return hn::OddEven(hn::BitCast(d, hn::ShiftLeft<32>(clamped(w.second))), hn::BitCast(d, clamped(w.first)));
  } else if constexpr (sizeof(TW) == 8) {  // without comparisons of 64 bits
    const auto first = hn::BitCast(d, w.first), second = hn::BitCast(d, w.second);
    const auto low = hn::OddEven(hn::BitCast(d, hn::ShiftLeft<32>(w.second)), first);
    const auto high = hn::OddEven(second, hn::BitCast(d, hn::ShiftRight<32>(w.first)));
    const auto limit = hn::Xor(hn::BroadcastSignBit(high), hn::Set(d, kMost<T>));
    return hn::IfThenElse(hn::Eq(high, hn::BroadcastSignBit(low)), low, limit);
  } else if constexpr (order == Order::kEvenOdd) {
    return Pack(hn::InterleaveLower(dw, w.first, w.second), hn::InterleaveUpper(dw, w.first, w.second));
  } else if constexpr (std::is_signed_v<TW>) {
    static_assert(std::is_signed_v<T>);
    return Pack(w.first, w.second);
  } else {
    constexpr hn::RebindToSigned<decltype(dw)> di;
    const auto most = hn::Set(dw, static_cast<TW>(kMost<T>));
    const auto first = hn::BitCast(di, hn::Min(w.first, most)), second = hn::BitCast(di, hn::Min(w.second, most));
    if constexpr (std::is_signed_v<T>) {
      return Pack(first, second);
    } else {
      return PackToUnsigned(first, second);
    }
  }
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
