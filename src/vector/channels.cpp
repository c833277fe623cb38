// JoinScaled and SplitScaled.
#include "frame/entry.h"
#include "orpsp/vector/convert.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/channels.cpp"
#include <hwy/foreach_target.h>

#include "simd/complex-inl.h"
#include "simd/round-inl.h"
#include "simd/triple-inl.h"
#include "vector/forms-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

template <class T>
HWY_INLINE bool anyChannelNull(T* const* channels) {
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

HWY_NOINLINE void join24(const Orp32f* first, const Orp32f* second, Orp24s* dst, size_t len) {
  constexpr hn::FixedTag<Orp32f, kTriples> d;
  size_t i = 0;
  for (; i + kTriples <= len; i += kTriples)
    StoreFrames(hn::LoadU(d, first + i), hn::LoadU(d, second + i), dst + 2 * i, kTriples);
  if (i < len) StoreFrames(LoadFew(d, first + i, len - i), LoadFew(d, second + i, len - i), dst + 2 * i, len - i);
}

template <class T>
OrpStatus joinScaled(const Orp32f* const pSrc[2], T* pDst, int len) {
  ORPS_RETURN_IF(anyChannelNull(pSrc) || pDst == nullptr, StsNullPtr);
  ORPS_RETURN_IF(len <= 0, StsBadSize);
  if constexpr (sizeof(T) == 3) {
    join24(pSrc[0], pSrc[1], pDst, Size(len));
  } else {
    auto* const frames = reinterpret_cast<Orp16sc*>(pDst);
    Map(Join16{}, frames, Size(len), Vector<Orp32f>{pSrc[0]}, Vector<Orp32f>{pSrc[1]});
  }
  return StsOk;
}

// The samples of each channel, as integers, of `frames` from p on or as many as vectors hold.
template <class T>
HWY_INLINE auto LoadFrames(const T* p, size_t frames) {
  constexpr hn::ScalableTag<int32_t> d;
  constexpr size_t kFrames = hn::MaxLanes(d);
  using V = hn::Vec<decltype(d)>;
  if constexpr (sizeof(T) == 3) {
    const auto load = [=](size_t from) HWY_ATTR -> V {
      const size_t count = 2 * frames - HWY_MIN(2 * frames, from);
      if (count >= kFrames) return LoadTriples(p + from);
      return count == 0 ? V{} : LoadFewTriples(p + from, count);
    };
    const V low = load(0), high = load(kFrames);
    return Split(Pairs<V>{low, high});
  } else {
    constexpr hn::Repartition<T, decltype(d)> d16;
    const V pairs = hn::BitCast(d, frames < kFrames ? LoadFew(d16, p, 2 * frames) : hn::LoadU(d16, p));
    return Parts<V>{hn::ShiftRight<16>(hn::ShiftLeft<16>(pairs)), hn::ShiftRight<16>(pairs)};
  }
}

template <class T>
OrpStatus splitScaled(const T* pSrc, Orp32f* const pDst[2], int len) {
  ORPS_RETURN_IF(pSrc == nullptr || anyChannelNull(pDst), StsNullPtr);
  ORPS_RETURN_IF(len <= 0, StsBadSize);
  constexpr hn::ScalableTag<Orp32f> d;
  constexpr size_t kStep = hn::MaxLanes(d);
  const auto toFloat = [=](auto v) HWY_ATTR { return hn::Mul(hn::ConvertTo(d, v), hn::Set(d, 1 / kFullScale<T>)); };
  Orp32f *const first = pDst[0], *const second = pDst[1];
  const size_t count = Size(len);
  if (count < kStep) {
    const auto frames = LoadFrames(pSrc, count);
    StoreFew(toFloat(frames.re), d, first, count);
    StoreFew(toFloat(frames.im), d, second, count);
    return StsOk;
  }
  const auto convert = [=](size_t i) HWY_ATTR {
    const auto frames = LoadFrames(pSrc + 2 * i, kStep);
    hn::StoreU(toFloat(frames.re), d, first + i);
    hn::StoreU(toFloat(frames.im), d, second + i);
  };
  convert(0);
  size_t i = kStep - reinterpret_cast<uintptr_t>(first) % HWY_MAX_BYTES / sizeof(Orp32f);  // aligned from here on
#pragma GCC unroll 2
  for (; i + kStep < count; i += kStep) convert(i);
  convert(count - kStep);
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/channels.inc"
#include "frame/exports-inl.h"
