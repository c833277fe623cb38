// Convert.
#include "orpsp/vector/convert.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/convert.cpp"
#include <hwy/foreach_target.h>

#include "frame/nearest-inl.h"
#include "simd/forms-inl.h"
#include "simd/half-inl.h"
#include "simd/round-inl.h"
#include "simd/triple-inl.h"
#include "vector/convert-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// ---- Whole vectors of a narrower destination: its source comes in two vectors, or twice two.

template <class V>
struct Two {
  V first, second;
};
template <class V>
Two(V, V) -> Two<V>;

template <class S>
struct Doubled {
  using Type = typename S::Type;
  static constexpr size_t kElementBytes = S::kElementBytes / 2;
  S source;

  template <size_t count>
  HWY_INLINE auto Load(size_t i) const {
    using V = decltype(source.template Load<count / 2>(i));
    return Two<V>{source.template Load<count / 2>(i), source.template Load<count / 2>(i + count / 2)};
  }
  template <size_t count>
  HWY_INLINE auto LoadFew(size_t few) const {
    constexpr size_t kHalf = count / 2;
    decltype(Load<count>(0)) loaded{};
    if (few < kHalf) {
      loaded.first = source.template LoadFew<kHalf>(few);
    } else {
      loaded.first = source.template Load<kHalf>(0);
      if (few > kHalf) loaded.second = source.From(kHalf).template LoadFew<kHalf>(few - kHalf);
    }
    return loaded;
  }
  HWY_INLINE Doubled From(size_t i) const { return {source.From(i)}; }
  HWY_INLINE bool IsAt(const void* other) const { return source.IsAt(other); }
};

template <class V>
inline constexpr bool isTwo = requires(V v) {
  v.second;
};

// f of every vector.
template <class F, class V>
HWY_INLINE auto Each(const F& f, V v) {
  if constexpr (isTwo<V>) {
    const auto first = Each(f, v.first), second = Each(f, v.second);
    return Two<std::remove_const_t<decltype(first)>>{first, second};
  } else {
    return f(v);
  }
}

// Narrowed with saturation to T, block by block: a block of the result holds one of each vector.
template <class T, class V>
HWY_INLINE auto Packed(Two<V> v) {
  if constexpr (isTwo<V>) {
    return Packed<T>(Two{Packed<int16_t>(v.first), Packed<int16_t>(v.second)});
  } else if constexpr (std::is_unsigned_v<T>) {
    return PackToUnsigned(v.first, v.second);
  } else {
    return Pack(v.first, v.second);
  }
}

// The blocks' parts, `parts` to a block, in the order of the vectors that they come from.
template <int parts, class V>
HWY_INLINE V Ordered(V v) {
  if constexpr (HWY_MAX_BYTES == 16) {
    return v;
  } else {
    constexpr hn::DFromV<V> d;
    constexpr hn::Repartition<uint32_t, decltype(d)> d32;
    struct Table {
      alignas(HWY_MAX_BYTES) uint32_t at[HWY_MAX_BYTES / 4];
    };
    static constexpr Table kTable = [] {
      constexpr unsigned kPart = 4 / parts, kBlocks = HWY_MAX_BYTES / 16;  // in lanes of 32 bits
      Table table{};
      for (unsigned i = 0; i < HWY_MAX_BYTES / 4; ++i) {
        const unsigned part = i / kPart, vector = part / kBlocks, block = part % kBlocks;
        table.at[i] = 4 * block + kPart * vector + i % kPart;
      }
      return table;
    }();
    return hn::BitCast(d, hn::TableLookupLanes(hn::BitCast(d32, v), hn::SetTableIndices(d32, kTable.at)));
  }
}

// 64-bit integers to 32 bits, saturated.
#if HWY_TARGET == HWY_AVX3
HWY_INLINE auto Narrow64(Two<hn::Vec512<int64_t>> v) {
  constexpr hn::ScalableTag<int32_t> d;
  const auto narrow = [](auto half) HWY_ATTR { return hn::Vec256<int32_t>{_mm512_cvtsepi64_epi32(half.raw)}; };
  return hn::Combine(d, narrow(v.second), narrow(v.first));
}
#else
template <class V>
HWY_INLINE auto Narrow64(Two<V> v) {
  constexpr hn::ScalableTag<int32_t> d;
  const auto mixed = Narrow(d, Wide<V, Order::kEvenOdd>{v.first, v.second});
  return hn::ConcatEven(d, OddLanes(mixed), mixed);
}
#endif

// Integers narrowed with saturation to lanes of d, or to 32-bit lanes that hold 3-byte integers.
template <class T, class D, class V>
HWY_INLINE hn::Vec<D> Narrowed(D d, V v) {
  if constexpr (isTwo<V>) {
    if constexpr (isTwo<decltype(v.first)>) {
      return Ordered<4>(Packed<T>(v));
    } else if constexpr (sizeof(T) == sizeof(hn::TFromV<decltype(v.first)>)) {
      return hn::Combine(d, v.second, v.first);
    } else if constexpr (sizeof(T) == 4) {
      return Narrow64(v);
    } else {
      return Ordered<2>(Packed<T>(v));
    }
  } else if constexpr (sizeof(T) == 3) {
    v = hn::Min(v, hn::Set(hn::DFromV<V>{}, static_cast<hn::TFromV<V>>(Range<T>::kHighest)));
    if constexpr (Range<T>::kLowest != 0) v = hn::Max(v, hn::Set(hn::DFromV<V>{}, Range<T>::kLowest));
    return hn::BitCast(d, v);
  } else {
    return hn::DemoteTo(d, v);
  }
}

// Integers narrowed without saturation: the lower bits of each lane. 8-bit destinations need no more than 16 of them.
template <class T, class D, class V>
HWY_INLINE hn::Vec<D> Truncated(D d, V v) {
  if constexpr (sizeof(T) == 3) {
    return hn::BitCast(d, v);
  } else if constexpr (!isTwo<V>) {
    return hn::BitCast(d, hn::TruncateTo(hn::RebindToUnsigned<D>{}, hn::BitCast(hn::Rebind<uint32_t, D>{}, v)));
  } else if constexpr (sizeof(T) > 1) {
    const hn::RebindToSigned<D> di;
    return hn::BitCast(d, hn::ConcatEven(di, hn::BitCast(di, v.second), hn::BitCast(di, v.first)));
  } else {
    const hn::Repartition<int16_t, D> d16;
    return Ordered<2>(Packed<T>(Two{Truncated<int16_t>(d16, v.first), Truncated<int16_t>(d16, v.second)}));
  }
}

// Map into whatever destination.
template <class Op, class TD, class... S>
HWY_INLINE void MapInto(const Op& op, TD* dst, size_t len, const S&... src) {
  if constexpr (sizeof(TD) == 3) {
    MapToTriples(op, dst, len, src...);
  } else {
    Map(op, dst, len, src...);
  }
}

// The source of type S for a destination of type D.
template <class D, class S>
HWY_INLINE auto SourceFor(const S* src) {
  if constexpr (std::is_same_v<S, Orp64f> && sizeof(D) < 4) {
    return Vector<S>{src};
  } else if constexpr (std::is_same_v<S, Orp16f>) {
    return Doubled<HalfVector>{HalfVector{src}};
  } else if constexpr (sizeof(S) == 3) {
    return Triples<S>{src};
  } else if constexpr (sizeof(S) == 4 * sizeof(D)) {
    return Doubled<Doubled<Vector<S>>>{{{src}}};
  } else if constexpr (sizeof(S) == 2 * sizeof(D)) {
    return Doubled<Vector<S>>{{src}};
  } else {
    return Vector<S>{src};
  }
}

// ---- Without loss, or rounded to nearest by the one instruction

struct Change {
  template <class D, class V>
  HWY_INLINE hn::Vec<D> operator()(D d, V v) const {
    return Lift(d, v);
  }
  // Two vectors of double.
  template <class D, class V>
  HWY_INLINE hn::Vec<D> operator()(D d, Two<V> v) const {
    const hn::Half<D> dh;
    return hn::Combine(d, hn::DemoteTo(dh, v.second), hn::DemoteTo(dh, v.first));
  }
};

template <class S, class D>
OrpStatus convert(const S* pSrc, D* pDst, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  if constexpr (std::is_same_v<S, Orp16f>) {
    Map(Change{}, pDst, toSize(len), HalfVector{pSrc});
  } else {
    Map(Change{}, pDst, toSize(len), SourceFor<D>(pSrc));
  }
  return StsOk;
}

// ---- Integers to floating point with a scale factor

// Rounds once: what is computed before the last step is exact.
template <class W>
struct Scaled {
  W factor;
  HWY_INLINE auto operator()(auto d, auto v) const { return hn::Mul(Change{}(d, v), hn::Set(d, factor)); }
};

struct ScaledTwice {  // where a product may leave the range of double only at the end
  double factor, another;
  HWY_INLINE auto operator()(auto d, auto v) const {
    return hn::Mul(hn::Mul(Change{}(d, v), hn::Set(d, factor)), hn::Set(d, another));
  }
};

struct ScaledInDouble {
  static constexpr size_t kWorkBytes = sizeof(double);
  double factor;
  HWY_INLINE auto operator()(auto d, auto v) const {
    constexpr hn::ScalableTag<double> dw;
    return hn::DemoteTo(d, hn::Mul(Lift(dw, v), hn::Set(dw, factor)));
  }
};

template <class S, class D>
OrpStatus convertSfs(const S* pSrc, D* pDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  const Vector<S> src{pSrc};
  if constexpr (std::is_same_v<D, Orp64f>) {
    const int scale = HWY_MIN(HWY_MAX(scaleFactor, -1200), 1200), half = scale / 2;  // all is 0 or infinite beyond
    Map(ScaledTwice{PowerOfTwo<double>(half), PowerOfTwo<double>(scale - half)}, pDst, toSize(len), src);
  } else if (scaleFactor >= -127 && scaleFactor <= 126) {  // the product is normal or overflows
    Map(Scaled<float>{PowerOfTwo<float>(scaleFactor)}, pDst, toSize(len), src);
  } else {
    const int scale = HWY_MIN(HWY_MAX(scaleFactor, -300), 300);
    Map(ScaledInDouble{PowerOfTwo<double>(scale)}, pDst, toSize(len), src);
  }
  return StsOk;
}

// ---- Floating point to integers

template <class T, Rounding rounding, class W>
struct ToIntegersOf {
  W unit;  // 2^-scale
  HWY_INLINE auto operator()(auto d, auto v) const {
    const W factor = unit;
    const auto integers = Each(
        [factor](auto vector) HWY_ATTR {
          const auto scaled = hn::Mul(vector, hn::Set(hn::DFromV<decltype(vector)>{}, factor));
          return ToIntegers<T, rounding>(scaled);
        },
        v);
    if constexpr (kTruncates<T, W>) {
      return Truncated<T>(d, integers);
    } else if constexpr (isTwo<decltype(integers)> || sizeof(T) < 4) {
      return Narrowed<T>(d, integers);
    } else {
      return integers;
    }
  }
};

template <Rounding rounding, class S, class D>
HWY_NOINLINE OrpStatus RoundTo(D* dst, size_t len, const S* src, int scale) {
  using W = std::conditional_t<std::is_same_v<S, Orp64f>, double, float>;
  MapInto(ToIntegersOf<D, rounding, W>{PowerOfTwo<W>(scale)}, dst, len, SourceFor<D>(src));
  return StsOk;
}

template <class S, class D>
OrpStatus roundSfs(const S* pSrc, D* pDst, int len, int rndMode, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  if (rndMode == OrpRoundZero) return RoundTo<Rounding::kZero>(pDst, toSize(len), pSrc, scaleFactor);
  if (rndMode == OrpRoundNear) return RoundTo<Rounding::kNearest>(pDst, toSize(len), pSrc, scaleFactor);
  if constexpr (std::is_same_v<S, Orp16f>) {
    return StsBadRoundMode;
  } else {
    return RoundTo<Rounding::kAway>(pDst, toSize(len), pSrc, scaleFactor);
  }
}

// ---- To half precision

template <Rounding rounding>
struct ToHalves {
  static constexpr size_t kWorkBytes = sizeof(float);
  HWY_INLINE auto operator()(auto d, auto v) const {
    return ToHalf<rounding>(Change{}(hn::Rebind<float, decltype(d)>{}, v));
  }
};

template <class S>
OrpStatus roundToHalf(const S* pSrc, Orp16f* pDst, int len, int rndMode) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  auto* const bits = reinterpret_cast<Orp16u*>(pDst);
  switch (rndMode) {
    case OrpRoundZero:
      Map(ToHalves<Rounding::kZero>{}, bits, toSize(len), Vector<S>{pSrc});
      return StsOk;
    case OrpRoundNear:
      Map(ToHalves<Rounding::kNearest>{}, bits, toSize(len), Vector<S>{pSrc});
      return StsOk;
    default:
      return StsBadRoundMode;
  }
}

// ---- Integers to narrower ones

template <class T>
struct NarrowTo {
  HWY_INLINE auto operator()(auto d, auto v) const { return Narrowed<T>(d, v); }
};

template <class T>
struct NarrowDown {
  int scale;
  HWY_INLINE auto operator()(auto d, auto v) const {
    const int shift = scale;
    const auto down = [shift](auto vector)
                          HWY_ATTR { return RoundedShift(vector, hn::Zero(hn::DFromV<decltype(vector)>{}), shift); };
    return Narrowed<T>(d, Each(down, v));
  }
};

// Shifted up before, with saturation there, too; 64-bit lanes, in which that is slow, after narrowing.
template <class T>
struct NarrowUp {
  ShiftUp up;
  HWY_INLINE auto operator()(auto d, auto v) const {
    if constexpr (sizeof(T) == 4) {
      return up(d, Narrowed<T>(d, v));
    } else {
      const ShiftUp shift = up;
      const auto shifted = [shift](auto vector) HWY_ATTR { return shift(hn::DFromV<decltype(vector)>{}, vector); };
      return Narrowed<T>(d, Each(shifted, v));
    }
  }
};

template <class S, class D>
HWY_NOINLINE OrpStatus NarrowScaled(D* dst, size_t len, const S* src, int scale) {
  constexpr int kMostScale = std::is_signed_v<S> ? kBits<S> - 1 : kBits<S>;
  const auto source = SourceFor<D>(src);
  if (scale == 0) {
    MapInto(NarrowTo<D>{}, dst, len, source);
  } else if (scale < 0) {
    MapInto(NarrowUp<D>{{HWY_MIN(-HWY_MAX(scale, -kBits<S>), sizeof(D) == 4 ? 32 : kBits<S>)}}, dst, len, source);
  } else if (scale <= kMostScale) {
    MapInto(NarrowDown<D>{scale}, dst, len, source);
  } else {
    Map(FillZero{}, bytes(dst), len * sizeof(D));
  }
  return StsOk;
}

template <class S, class D>
OrpStatus narrowSfs(const S* pSrc, D* pDst, int len, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  return NarrowScaled(pDst, toSize(len), pSrc, scaleFactor);
}

// The scale factor first clamped to [least, 31].
template <int least, class S, class D>
OrpStatus narrowClampedSfs(const S* pSrc, D* pDst, int len, int scaleFactor) {
  return narrowSfs(pSrc, pDst, len, HWY_MIN(HWY_MAX(scaleFactor, least), 31));
}

template <class S, class D>
OrpStatus narrow(const S* pSrc, D* pDst, int len) {
  return narrowSfs(pSrc, pDst, len, 0);
}

// ---- Conversions that round in floating point: by mode or after scaling, or to fewer digits

template <class Function>
inline constexpr bool whereRounded = false;
template <class S, class D, class... A>
inline constexpr bool whereRounded<OrpStatus (*)(const S*, D*, int, A...)> = (isOfFloats<S*> || isOfFloats<D*>)&&(
    sizeof...(A) > 0 || std::numeric_limits<S>::digits > std::numeric_limits<D>::digits);

}  // namespace

// ---- For kernels of this width

template <class S, class D>
void ConvertVector(const S* src, D* dst, size_t len) {
  Map(Change{}, dst, len, SourceFor<D>(src));
}

template <class S, class D>
void RoundVector(const S* src, D* dst, size_t len, int scale) {
  RoundTo<Rounding::kNearest>(dst, len, src, scale);
}

#define ORPS_INSTANTIATE(I, F)                       \
  template void ConvertVector(const I*, F*, size_t); \
  template void RoundVector(const F*, I*, size_t, int)
ORPS_INSTANTIATE(Orp16s, Orp32f);
ORPS_INSTANTIATE(Orp32s, Orp32f);
ORPS_INSTANTIATE(Orp32s, Orp64f);
#undef ORPS_INSTANTIATE

}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/convert.inc"
#define ORPSP_NEAREST whereRounded
#include "frame/exports-inl.h"
