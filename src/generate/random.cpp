// Random numbers: SplitMix64 [Steele, Lea and Flood 2014: Fast splittable pseudorandom number generators] as a function
// of the position in the sequence.
//
// Element n is made from words whose numbers follow from n alone. So a sequence is the same however it is split into
// calls and whatever the width. Doubles see only operations that every width rounds alike, and no library of
// mathematics. Elements are made two at a time, an even one and the next.
#include "orpsp/generate/random.h"

#include "frame/check.h"
#include "frame/entry.h"
#include "frame/state.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "generate/random.cpp"
#include <hwy/foreach_target.h>

#include "generate/circle-inl.h"
#include "simd/maths-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// ---- Words. Word k of the sequence that begins in state s is Mixed(s + (k + 1) kGamma), modulo 2^64.

constexpr hn::RepartitionToNarrow<hn::RebindToUnsigned<hn::ScalableTag<double>>> kHalves;

constexpr uint64_t kGamma = 0x9E3779B97F4A7C15;

// Modulo 2^64. Only the widest vectors have an instruction for it.
HWY_INLINE Words Times(Words a, uint64_t factor) {
#if HWY_TARGET == HWY_AVX3
  return hn::Mul(a, hn::Set(kWords, factor));
#else
  const auto lower = hn::Set(kHalves, static_cast<uint32_t>(factor));
  const auto upper = hn::Set(kHalves, static_cast<uint32_t>(factor >> 32));
  const auto first = hn::BitCast(kHalves, a), second = hn::Shuffle2301(first);
  const auto crossed = hn::Add(hn::MulEven(first, upper), hn::MulEven(second, lower));
  return hn::Add(hn::MulEven(first, lower), hn::ShiftLeft<32>(crossed));
#endif
}

HWY_INLINE Words Mixed(Words z) {
  z = Times(hn::Xor(z, hn::ShiftRight<30>(z)), 0xBF58476D1CE4E5B9);
  z = Times(hn::Xor(z, hn::ShiftRight<27>(z)), 0x94D049BB133111EB);
  return hn::Xor(z, hn::ShiftRight<31>(z));
}

// Where the sequences of a kind begin, so that those of one seed share no words: digits of pi.
constexpr uint64_t kHalvesState = 0x243F6A8885A308D3, kWholeState = 0x13198A2E03707344,
                   kGaussState = 0xA4093822299F31D0;
constexpr uint64_t kDirectState = 0x082EFA98EC4E6C89;  // added by direct forms

// ---- Doubles

// The upper 52 bits of each lane as a fraction between `one`, a power of two, and its double.
HWY_INLINE Doubles FractionOf(Words words, double one) {
  return hn::BitCast(kDoubles, hn::Or(hn::ShiftRight<12>(words), hn::BitCast(kWords, hn::Set(kDoubles, one))));
}

// -2 ln x for normal numbers x = 2^e m, by ln m = 2 artanh((m - 1) / (m + 1)), an odd function.
HWY_INLINE Doubles MinusTwiceLogarithm(Doubles x) {
  const auto parted = Parted(kDoubles, x);
  const auto one = hn::Set(kDoubles, 1.0);
  const auto f = hn::Div(hn::Sub(one, parted.m), hn::Add(one, parted.m));
  const auto series =
      hn::Mul(f, PolynomialByPairs(hn::Mul(f, f), 4.000000000000001, 1.3333333333310444, 0.8000000012403269,
                                   0.5714283196249861, 0.44446874321672836, 0.36243710940475865, 0.3367710908896887));
  return hn::Sub(series, hn::Mul(parted.e, hn::Set(kDoubles, 1.3862943611198906)));
}

// The direction of pi/2 (q + y), q the upper two bits and y = -1/2 ... 1/2 the next 52 bits.
HWY_INLINE Parts<Doubles> DirectionOf(Words angle) {
  return DirectionOf(angle, hn::Sub(FractionOf(hn::ShiftLeft<2>(angle), 1), hn::Set(kDoubles, 1.5)));
}

// ---- Sources of elements. Store(z, dst, rows) writes rows of 2 kDoubleLanes elements, the first of which has an even
// position. z leads to the words of the first row: its lane i belongs to word number(i) of these.

constexpr size_t kRow = 2 * kDoubleLanes, kRows = 8, kBlock = kRows * kRow;

bool IsFinite(double x) { return __builtin_isfinite(x); }

// Each half of a word times the number of integers, divided by 2^32.
template <class T>
struct UniformInteger {
  static constexpr uint64_t kState = kHalvesState;
  static constexpr uint64_t kWordsOfPair = 1;
  static constexpr uint64_t number(size_t i) { return i; }
  static bool Accepts(T low, T high) { return low <= high; }

  uint32_t low, count;

  UniformInteger(T least, T most) : low(static_cast<uint32_t>(least)), count(static_cast<uint32_t>(most - least + 1)) {}

  HWY_INLINE void Store(Words z, T* dst, size_t rows) const {
    constexpr hn::Rebind<hwy::MakeUnsigned<T>, decltype(kHalves)> d;
    const auto step = hn::Set(kWords, kDoubleLanes * kGamma);
    const auto factor = hn::Set(kHalves, count);
    for (size_t i = 0; i < rows * kRow; i += kRow, z = hn::Add(z, step)) {
      const auto word = hn::BitCast(kHalves, Mixed(z));
      const auto even = hn::ShiftRight<32>(hn::MulEven(word, factor)), odd = hn::MulEven(hn::Shuffle2301(word), factor);
      const auto index = hn::OddEven(hn::BitCast(kHalves, odd), hn::BitCast(kHalves, even));
      const auto element = hn::TruncateTo(d, hn::Add(index, hn::Set(kHalves, low)));
      hn::StoreU(element, d, reinterpret_cast<hwy::MakeUnsigned<T>*>(dst + i));
    }
  }
};

// low + (high - low) u, u the upper 24 bits of half a word or the upper 52 bits of one as a fraction. Where high - low
// overflows, twice the half of that. Rounding may lead to high: the number below stands for it.
template <class T>
struct UniformReal {
  static constexpr bool kWhole = sizeof(T) == 8;
  static constexpr uint64_t kState = kWhole ? kWholeState : kHalvesState;
  static constexpr uint64_t kWordsOfPair = kWhole ? 2 : 1;
  static constexpr uint64_t number(size_t i) { return i; }
  static bool Accepts(T low, T high) { return IsFinite(low) && IsFinite(high) && low <= high; }

  static constexpr hn::ScalableTag<T> d{};
  T low, span, most;
  bool isHalf;

  UniformReal(T least, T bound)
      : low(least), span(bound - least), most(least < bound ? Below(bound) : bound), isHalf(!IsFinite(span)) {
    if (!isHalf) return;
    low = least / 2;
    span = bound / 2 - low;
  }

  static T Below(T x) {
    using Bits = hwy::MakeUnsigned<T>;
    if (x == 0) return -std::numeric_limits<T>::denorm_min();
    const Bits bits = __builtin_bit_cast(Bits, x);
    return __builtin_bit_cast(T, x > 0 ? bits - 1 : bits + 1);
  }
  HWY_INLINE void Store(Words z, T* dst, size_t rows) const {
    const auto step = hn::Set(kWords, kDoubleLanes * kGamma);
    for (size_t i = 0; i < rows * kRow; i += hn::MaxLanes(d), z = hn::Add(z, step)) {
      const auto u = [z]() HWY_ATTR {
        if constexpr (kWhole) {
          return hn::Sub(FractionOf(Mixed(z), 1), hn::Set(d, 1));
        } else {
          const auto integers = hn::ShiftRight<8>(hn::BitCast(kHalves, Mixed(z)));
          return hn::Mul(hn::ConvertTo(d, hn::BitCast(hn::RebindToSigned<decltype(d)>{}, integers)),
                         hn::Set(d, 0x1p-24f));
        }
      }();
      auto element = hn::Add(hn::Set(d, low), hn::Mul(hn::Set(d, span), u));
      if (HWY_UNLIKELY(isHalf)) element = hn::Add(element, element);
      hn::StoreU(hn::Min(element, hn::Set(d, most)), d, dst + i);
    }
  }
};

// Pairs by radius and angle, as cosine and sine [Box and Muller 1958: A note on the generation of random normal
// deviates].
template <class T>
struct Gauss {
  static constexpr uint64_t kState = kGaussState;
  static constexpr uint64_t kWordsOfPair = 2;
  // So that interleaving within 128 bits puts the elements in order. Angles are the next words.
  static constexpr uint64_t number(size_t i) { return 2 * (i / 2 + i % 2 * (kDoubleLanes / 2)); }
  static bool Accepts(double mean, double deviation) { return IsFinite(mean) && IsFinite(deviation) && deviation >= 0; }

  double mean, deviation;

  Gauss(T centre, T width) : mean(centre), deviation(width) {}

  HWY_INLINE Doubles Value(Doubles normal) const {
    return hn::Add(hn::Set(kDoubles, mean), hn::Mul(hn::Set(kDoubles, deviation), normal));
  }
  // In three loops, since a single one would be a chain too long for the processor to overlap with the next.
  HWY_INLINE void Store(Words z, T* dst, size_t rows) const {
    constexpr hn::Rebind<T, hn::ScalableTag<double>> d;
    alignas(64) uint64_t words[2 * kRows * kDoubleLanes];
    alignas(64) double radii[kRows * kDoubleLanes];
    uint64_t* const angles = words + kRows * kDoubleLanes;
    const auto step = hn::Set(kWords, kWordsOfPair * kDoubleLanes * kGamma), gamma = hn::Set(kWords, kGamma);
    for (size_t i = 0; i < rows * kDoubleLanes; i += kDoubleLanes, z = hn::Add(z, step)) {
      hn::Store(Mixed(z), kWords, words + i);
      hn::Store(Mixed(hn::Add(z, gamma)), kWords, angles + i);
    }
    for (size_t i = 0; i < rows * kDoubleLanes; i += kDoubleLanes) {
      const auto uniform = hn::Sub(hn::Set(kDoubles, 2.0), FractionOf(hn::Load(kWords, words + i), 1));  // in (0, 1]
      hn::Store(hn::Sqrt(MinusTwiceLogarithm(uniform)), kDoubles, radii + i);
    }
    for (size_t i = 0; i < rows * kDoubleLanes; i += kDoubleLanes) {
      const auto direction = DirectionOf(hn::Load(kWords, angles + i));
      const auto radius = hn::Load(kDoubles, radii + i);
      const auto even = Value(hn::Mul(radius, direction.re)), odd = Value(hn::Mul(radius, direction.im));
      hn::StoreU(ToSamples(d, hn::InterleaveLower(kDoubles, even, odd)), d, dst + 2 * i);
      hn::StoreU(ToSamples(d, hn::InterleaveUpper(kDoubles, even, odd)), d, dst + 2 * i + kDoubleLanes);
    }
  }
};

// ---- Sequences

// What leads to the words of a row.
template <class Source>
struct FirstWords {
  alignas(64) uint64_t behind[kDoubleLanes];
  constexpr FirstWords() : behind() {
    for (size_t i = 0; i < kDoubleLanes; ++i) behind[i] = (Source::number(i) + 1) * kGamma;
  }
};
template <class Source>
constexpr FirstWords<Source> kFirstWords;

// Elements from `position` on. Where an end of them is within a block, all of the block's rows that are needed are
// made.
template <class Source, class T>
HWY_NOINLINE void Fill(const Source& source, uint64_t state, uint64_t position, T* dst, size_t len) {
  const auto step = hn::Set(kWords, kRows * kDoubleLanes * Source::kWordsOfPair * kGamma);
  auto z = hn::Add(hn::Load(kWords, kFirstWords<Source>.behind),
                   hn::Set(kWords, state + position / 2 * Source::kWordsOfPair * kGamma));
  for (size_t skipped = position % 2; len > 0; z = hn::Add(z, step)) {
    const size_t count = HWY_MIN(len, kBlock - skipped);
    if (count == kBlock) {
      source.Store(z, dst, kRows);
    } else {
      T block[kBlock];
      source.Store(z, block, (skipped + count + kRow - 1) / kRow);
      __builtin_memcpy(dst, block + skipped, count * sizeof(T));
    }
    skipped = 0;
    dst += count;
    len -= count;
  }
}

// A sequence is as long as there are positions, and then begins again.
template <class Source, class Position, class T>
void Sequence(const Source& source, uint64_t state, Position position, T* dst, size_t len) {
  const auto left = static_cast<Position>(-position);
  if (left != 0 && left < len) {
    Fill(source, state, position, dst, left);
    Fill(source, state, 0, dst + left, len - left);
  } else {
    Fill(source, state, position, dst, len);
  }
}

// ---- State objects

struct RandomState {
  Orp32u tag, none;
  uint64_t position;
  double parameters[2];
  uint64_t home;
};

template <class S, Orp32u tag>
struct RandomOf : KindOf<RandomState, Tags<tag>> {
  using Source = S;

  template <class T>
  static OrpStatus Check(T first, T second, Orp32u) {
    return Source::Accepts(first, second) ? StsOk : StsBadArg;
  }
  template <class T>
  static OrpStatus Make(RandomState& state, Orp8u*, T first, T second, Orp32u seed) {
    state = {tag, 0, uint64_t{seed} << 32, {static_cast<double>(first), static_cast<double>(second)}, 0};
    return StsOk;
  }
};
template <class Handle>
struct Random;
template <>
struct Random<OrpRandUniformState_8u> : RandomOf<UniformInteger<Orp8u>, 0x52440001> {};
template <>
struct Random<OrpRandUniformState_16s> : RandomOf<UniformInteger<Orp16s>, 0x52440002> {};
template <>
struct Random<OrpRandUniformState_32f> : RandomOf<UniformReal<Orp32f>, 0x52440003> {};
template <>
struct Random<OrpRandGaussState_8u> : RandomOf<Gauss<Orp8u>, 0x52440004> {};
template <>
struct Random<OrpRandGaussState_16s> : RandomOf<Gauss<Orp16s>, 0x52440005> {};
template <>
struct Random<OrpRandGaussState_32f> : RandomOf<Gauss<Orp32f>, 0x52440006> {};

// ---- Elements

template <class Handle, class T>
OrpStatus next(T* pDst, int len, Handle* pState) {
  using Source = typename Random<Handle>::Source;
  ORPS_CHECK_VECTOR(len, pDst, pState);
  RandomState state;
  ORPS_RETURN_IF(!readState<Random<Handle>>(pState, state), StsSpecMismatch);
  const Source source(static_cast<T>(state.parameters[0]), static_cast<T>(state.parameters[1]));
  Sequence(source, Source::kState, state.position, pDst, static_cast<size_t>(len));
  writeField(pState, offsetof(RandomState, position), state.position + toSize(len));
  return StsOk;
}

// The seed is the position times the inverse of an odd number, modulo 2^32: neighbouring seeds are far apart.
template <template <class> class Source, class T>
OrpStatus direct(T* pDst, int len, T first, T second, Orp32u* pSeed) {
  constexpr uint32_t kSpread = 0x9E3779B1, kInverse = 0x0E8B2F51;
  static_assert(kSpread * kInverse == 1);
  ORPS_CHECK_VECTOR(len, pDst, pSeed);
  ORPS_RETURN_IF(!Source<T>::Accepts(first, second), StsBadArg);
  const uint32_t seed = get(pSeed);
  Sequence(Source<T>(first, second), Source<T>::kState + kDirectState, seed * kSpread, pDst, static_cast<size_t>(len));
  put(pSeed, seed + static_cast<uint32_t>(len) * kInverse);
  return StsOk;
}

template <class T>
using Uniform = std::conditional_t<std::is_integral_v<T>, UniformInteger<T>, UniformReal<T>>;

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/random.inc"
#define ORPSP_NEAREST always
#include "frame/exports-inl.h"
