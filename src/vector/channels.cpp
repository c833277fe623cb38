// JoinScaled and SplitScaled.
#include "frame/entry.h"
#include "orpsp/vector/convert.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/channels.cpp"
#include <hwy/foreach_target.h>

#include "simd/complex-inl.h"
#include "simd/forms-inl.h"
#include "simd/round-inl.h"
#include "simd/triple-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

template <class T>
HWY_INLINE bool AnyChannelNull(T* const* channels) {
  return channels == nullptr || channels[0] == nullptr || channels[1] == nullptr;
}

template <class T>
inline constexpr float kFullScale = static_cast<float>(Range<T>::kHighest + 1);

template <class T, class V>
HWY_INLINE auto ToSamples(V v) {
  return ToIntegers<T, Rounding::kNearest>(hn::Mul(v, hn::Set(hn::DFromV<V>{}, kFullScale<T>)));
}

// Two vectors of samples as one of frames.
struct Join16 {
  template <class D, class V>
  HWY_INLINE hn::Vec<D> operator()(D d, V first, V second) const {
    const auto a = ToSamples<Orp16s>(first), b = ToSamples<Orp16s>(second);
    if constexpr (kTruncates<Orp16s, float>) {
      return hn::OddEven(hn::BitCast(d, hn::ShiftLeft<16>(b)), hn::BitCast(d, a));
    } else {
      alignas(16) static constexpr uint8_t kPairs[16] = {0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15};
      constexpr hn::Repartition<uint8_t, D> d8;
      return hn::BitCast(d, hn::TableLookupBytes(hn::BitCast(d8, Pack(a, b)), hn::LoadDup128(d8, kPairs)));
    }
  }
};

// `frames` of 3-byte samples, or as many as vectors hold.
template <class V>
HWY_INLINE void StoreFrames(V first, V second, Orp24s* dst, size_t frames) {
  const auto a = ToSamples<Orp24s>(first), b = ToSamples<Orp24s>(second);
  const auto samples = Join(Parts<std::remove_const_t<decltype(a)>>{a, b});
  const auto store = [=](auto v, size_t from) HWY_ATTR {
    if (2 * frames >= from + kTriples) {
      StoreTriples(v, bytes(dst + from));
    } else if (2 * frames > from) {
      StoreFewTriples(v, bytes(dst + from), 2 * frames - from);
    }
  };
  store(samples.lower, 0);
  store(samples.upper, kTriples);
}

HWY_NOINLINE void Join24(const Orp32f* first, const Orp32f* second, Orp24s* dst, size_t len) {
  constexpr hn::FixedTag<Orp32f, kTriples> d;
  size_t i = 0;
  for (; i + kTriples <= len; i += kTriples)
    StoreFrames(hn::LoadU(d, first + i), hn::LoadU(d, second + i), dst + 2 * i, kTriples);
  if (i < len) StoreFrames(LoadFew(d, first + i, len - i), LoadFew(d, second + i, len - i), dst + 2 * i, len - i);
}

template <class T>
OrpStatus joinScaled(const Orp32f* const pSrc[2], T* pDst, int len) {
  ORPS_RETURN_IF(AnyChannelNull(pSrc) || pDst == nullptr, StsNullPtr);
  ORPS_RETURN_IF(len <= 0, StsBadSize);
  if constexpr (sizeof(T) == 3) {
    Join24(pSrc[0], pSrc[1], pDst, toSize(len));
  } else {
    auto* const frames = reinterpret_cast<Orp16sc*>(pDst);
    Map(Join16{}, frames, toSize(len), Vector<Orp32f>{pSrc[0]}, Vector<Orp32f>{pSrc[1]});
  }
  return StsOk;
}

// Source: frames of two samples as Parts of 32-bit integers.
template <class T>
struct Frames {
  using Type = T;
  static constexpr size_t kElementBytes = sizeof(int32_t);
  using V = hn::Vec<hn::ScalableTag<int32_t>>;
  const T* p;

  template <size_t count>
  HWY_INLINE Parts<V> Load(size_t i) const {
    if constexpr (sizeof(T) == 3) {
      return Split(Pairs<V>{LoadTriples(p + 2 * i), LoadTriples(p + 2 * i + kTriples)});
    } else {
      return Apart(hn::LoadU(hn::ScalableTag<T>{}, p + 2 * i));
    }
  }
  template <size_t count>
  HWY_INLINE Parts<V> LoadFew(size_t few) const {
    if constexpr (sizeof(T) == 3) {
      const auto load = [this](size_t from, size_t samples) HWY_ATTR -> V {
        return samples < kTriples ? LoadFewTriples(p + from, samples) : LoadTriples(p + from);
      };
      const size_t inLower = HWY_MIN(2 * few, kTriples);
      return Split(Pairs<V>{load(0, inLower), 2 * few > inLower ? load(kTriples, 2 * few - inLower) : V{}});
    } else {
      return Apart(HWY_NAMESPACE::LoadFew(hn::ScalableTag<T>{}, p, 2 * few));
    }
  }
  static HWY_INLINE Parts<V> Apart(auto samples) {
    const V pairs = hn::BitCast(hn::ScalableTag<int32_t>{}, samples);
    return {hn::ShiftRight<16>(hn::ShiftLeft<16>(pairs)), hn::ShiftRight<16>(pairs)};
  }
  HWY_INLINE bool IsAt(const void*) const { return false; }
};

template <class T>
struct ToChannels {
  HWY_INLINE auto operator()(auto d, auto frames) const {
    const auto unit = hn::Set(d, 1 / kFullScale<T>);
    return Parts<hn::Vec<decltype(d)>>{hn::Mul(hn::ConvertTo(d, frames.re), unit),
                                       hn::Mul(hn::ConvertTo(d, frames.im), unit)};
  }
};

template <class T>
OrpStatus splitScaled(const T* pSrc, Orp32f* const pDst[2], int len) {
  ORPS_RETURN_IF(pSrc == nullptr || AnyChannelNull(pDst), StsNullPtr);
  ORPS_RETURN_IF(len <= 0, StsBadSize);
  MapParts(ToChannels<T>{}, IntoVectors<Orp32f>{pDst[0], pDst[1]}, toSize(len), Frames<T>{pSrc});
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/channels.inc"
#define ORPSP_NEAREST always
#include "frame/exports-inl.h"
