// Convert, JoinScaled and SplitScaled.
#include "elementwise.h"

using elementwise::Alias;
using elementwise::Extra;
using elementwise::First;
using elementwise::Form;
using elementwise::Guarded;
using elementwise::Operation;
using elementwise::Random;
using elementwise::Target;
using reference::Int128;

namespace {

// Half precision travels as its bits.
template <class T>
using Raw = std::conditional_t<std::is_same_v<T, Orp16f>, Orp16u, T>;

template <class T>
constexpr bool is24 = std::is_same_v<T, Orp24s> || std::is_same_v<T, Orp24u>;
template <class T>
constexpr bool isInteger = std::is_integral_v<T> || is24<T>;

template <class T>
constexpr Int128 lowest() {
  if constexpr (std::is_same_v<T, Orp24s>) return -(1 << 23);
  if constexpr (std::is_same_v<T, Orp24u>) return 0;
  if constexpr (std::is_integral_v<T>) return std::numeric_limits<T>::min();
}
template <class T>
constexpr Int128 highest() {
  if constexpr (std::is_same_v<T, Orp24s>) return (1 << 23) - 1;
  if constexpr (std::is_same_v<T, Orp24u>) return (1 << 24) - 1;
  if constexpr (std::is_integral_v<T>) return std::numeric_limits<T>::max();
}

template <class T>
T integer(Int128 value) {
  value = std::clamp(value, lowest<T>(), highest<T>());
  if constexpr (is24<T>) {
    return {static_cast<Orp8u>(value), static_cast<Orp8u>(value >> 8), static_cast<Orp8u>(value >> 16)};
  } else {
    return static_cast<T>(value);
  }
}

float ofHalf(Orp16u bits) {
  const int exponent = bits >> 10 & 31, mantissa = bits & 0x3FF;
  const auto sign = static_cast<uint32_t>(bits >> 15) << 31;
  if (exponent == 31) {
    const uint32_t quiet = mantissa != 0 ? 1U << 22 : 0;
    return std::bit_cast<float>(sign | 0x7F800000U | quiet | static_cast<uint32_t>(mantissa) << 13);
  }
  const double magnitude = exponent == 0 ? std::ldexp(mantissa, -24) : std::ldexp(1024 + mantissa, exponent - 25);
  return static_cast<float>(sign ? -magnitude : magnitude);
}

Orp16u toHalf(float value, int mode) {
  const auto bits = std::bit_cast<uint32_t>(value);
  const auto sign = static_cast<Orp16u>(bits >> 16 & 0x8000);
  const auto withSign = [&](int rest) { return static_cast<Orp16u>(sign | rest); };
  if (std::isnan(value)) return withSign(0x7E00 | static_cast<int>(bits >> 13 & 0x3FF));
  if (std::isinf(value)) return withSign(0x7C00);
  const double magnitude = std::fabs(static_cast<double>(value));
  const int exponent = magnitude == 0 ? -14 : std::max(std::ilogb(magnitude), -14);
  const double units = std::ldexp(magnitude, 10 - exponent);
  const auto mantissa = static_cast<int>(mode == OrpRoundZero ? std::trunc(units) : std::nearbyint(units));
  const int magnitudeBits = std::ldexp(units, exponent) > 1e9 ? 0x7C00 : (exponent + 14) * 1024 + mantissa;
  return withSign(std::min(magnitudeBits, mode == OrpRoundZero ? 0x7BFF : 0x7C00));
}

template <class S>
auto exactly(Raw<S> x) {
  if constexpr (std::is_same_v<S, Orp16f>) {
    return ofHalf(x);
  } else if constexpr (is24<S>) {
    const int low = x.byte[0] | x.byte[1] << 8, high = x.byte[2];
    return Int128{low | (std::is_same_v<S, Orp24s> ? static_cast<Orp8s>(high) : high) * 65536};
  } else if constexpr (std::is_integral_v<S>) {
    return Int128{x};
  } else {
    return x;
  }
}

// 2^-scale where the exponent's bits can say so.
template <class W>
W factor(int scale) {
  const long long bias = std::numeric_limits<W>::max_exponent - 1;
  if (scale >= bias) return 0;
  if (scale <= -bias - 1) return std::numeric_limits<W>::infinity();
  return std::ldexp(W{1}, -scale);
}

// With half precision on either side there are two rounding modes.
template <class S, class D>
constexpr bool hasHalves = std::is_same_v<S, Orp16f> || std::is_same_v<D, Orp16f>;
Extra withMode(bool halves, Extra extra) { return halves ? Extra{extra.mode & 1, extra.scale} : extra; }

// x as the destination's type: exactly scaled and rounded once, but scaled in the precision of a source of floats.
template <class S, class D>
struct Conversion : Operation<1> {
  bool clampsScale = false;

  // Also ties and their neighbours, whatever the scale factor, and the ends of every range.
  template <class B>
  B second(Random& random) const {
    if constexpr (std::is_floating_point_v<B>) {
      const int choice = random.below(4);
      if (choice == 0) return std::ldexp(static_cast<B>(random.below(2000) - 1000), random.below(80) - 44);
      if (choice == 1) {
        const B edge = std::ldexp(B{1}, random.below(70) - 2) - static_cast<B>(random.below(3)) / 2;
        const B beside = random.below(2) ? edge : std::nextafter(edge, static_cast<B>(random.below(3) - 1) * 1e30F);
        return random.below(2) ? beside : -beside;
      }
    }
    return elementwise::operand<B>(random);
  }

  template <class>
  Raw<D> result(Extra extra, Raw<S> raw) const {
    const auto x = exactly<S>(raw);
    const int mode = withMode(hasHalves<S, D>, extra).mode;
    int scale = extra.scale;
    if constexpr (isInteger<S> && isInteger<D>) {
      if (clampsScale) scale = std::clamp(scale, is24<D> ? -31 : -15, 31);
      return integer<D>(reference::scaled<Orp64s>(x, scale));
    } else if constexpr (isInteger<D>) {
      using W = std::remove_const_t<decltype(x)>;
      const W product = scale == 0 ? x : x * factor<W>(scale);
      if (std::isnan(product)) return {};
      const long double exact = product;
      long double rounded = mode == OrpRoundNear ? std::nearbyint(exact) : std::trunc(exact);
      // Not std::round: that of MinGW takes the number below 1/2 to 1.
      if (mode != OrpRoundZero && mode != OrpRoundNear && std::fabs(exact - rounded) >= 0.5L)
        rounded += std::copysign(1.0L, exact);
      return integer<D>(std::fabs(rounded) < 0x1p100L ? static_cast<Int128>(rounded)
                                                      : (rounded < 0 ? lowest<D>() : highest<D>()));
    } else if constexpr (std::is_same_v<D, Orp16f>) {
      return toHalf(static_cast<float>(x), mode);
    } else if constexpr (isInteger<S>) {
      return static_cast<D>(std::ldexp(static_cast<long double>(x), -std::clamp(scale, -5000, 5000)));
    } else {
      return static_cast<D>(x);
    }
  }

  template <class T>
  bool matches(T got, T want) const {
    if constexpr (is24<T>) {
      return std::memcmp(&got, &want, sizeof(T)) == 0;
    } else {
      return reference::same(got, want);
    }
  }
};

template <class S, class D, class... X>
auto formOf(OrpStatus (*f)(const S*, D*, int, X...)) {
  constexpr bool toHalves = std::is_same_v<D, Orp16f>;
  constexpr int extras = toHalves && sizeof...(X) > 0 ? 2 : sizeof...(X);
  return Form<Raw<S>, Raw<S>, Raw<D>, First::none, Target::written>{
      extras, [f](auto, auto bits, auto dst, int len, Extra given) {
        const S* const src = reinterpret_cast<const S*>(bits);
        const Extra x = withMode(hasHalves<S, D>, given);
        if constexpr (toHalves) {
          return f(src, reinterpret_cast<D*>(dst), len, x.mode);
        } else {
          return elementwise::callWith(f, x, src, reinterpret_cast<D*>(dst), len);
        }
      }};
}

// Around the ends of the exponents, where scaled results become subnormal, vanish or overflow.
std::vector<int> scalesAroundEnds() {
  std::vector<int> scales;
  for (const int end : {-1024, -992, -127, -113, -97, 127, 149, 165, 180, 1023, 1074, 1089, 1105})
    for (int beside = -2; beside <= 2; ++beside) scales.push_back(end + beside);
  for (const int far : {-1201, -700, -300, 140, 158, 300, 301, 1060, 1200, 1201}) scales.push_back(far);
  return scales;
}

// A destination that is the source itself, with elements of the same size.
template <class S, class D, class... X>
void checkSameArray(OrpStatus (*f)(const S*, D*, int, X...)) {
  Random random;
  for (const auto& length : orptest::lengthsAroundWidths<D>()) {
    const auto source = random.vector<S>(static_cast<size_t>(length.value));
    Guarded<D> separate(source.size()), same(source.size());
    std::memcpy(same.data(), source.data(), source.size() * sizeof(S));
    ASSERT_EQ(StsOk, f(source.data(), separate.data(), length.value, X{1}...));
    ASSERT_EQ(StsOk, f(reinterpret_cast<const S*>(same.data()), same.data(), length.value, X{1}...));
    EXPECT_EQ(0, std::memcmp(separate.data(), same.data(), source.size() * sizeof(D))) << length;
  }
}

template <class S, class D, class... X>
void checkRefusedModes(OrpStatus (*f)(const S*, D*, int, int, X...)) {
  const S source[3] = {};
  Guarded<D> results(3);
  for (const int mode : {2, 3, -1, INT_MIN, INT_MAX}) {
    EXPECT_EQ(StsBadRoundMode, f(source, results.data(), 3, mode, X{}...));
    EXPECT_EQ(StsBadSize, f(source, results.data(), 0, mode, X{}...));
    EXPECT_EQ(StsNullPtr, f(source, nullptr, 0, mode, X{}...));
  }
  EXPECT_TRUE(results.untouched());
}

template <reference::Name name, class S, class D, class... X>
void checkConversion(OrpStatus (*f)(const S*, D*, int, X...)) {
  const auto form = formOf(f);
  Conversion<S, D> operation;
  operation.clampsScale = name.contains("_32s16s_Sfs") || name.contains("_32s24s_Sfs");
  elementwise::checkForm(form, operation);

  Random random;
  if constexpr (sizeof...(X) > 0 && !std::is_same_v<D, Orp16f>)
    for (const int scale : scalesAroundEnds())
      for (const int mode : {0, 1, 3, -1, INT_MIN})
        if (!testing::Test::HasFailure())
          elementwise::checkRandom(form, operation, random, 150, {mode, scale}, Alias::none, 0);
  if constexpr (sizeof(S) == sizeof(D)) checkSameArray(f);
  if constexpr (hasHalves<S, D> && sizeof...(X) > 0) checkRefusedModes(f);
  if constexpr (hasHalves<S, D> && sizeof(S) == 2) {
    std::vector<Raw<S>> all(65536);
    for (size_t i = 0; i < all.size(); ++i) all[i] = static_cast<Raw<S>>(i);
    for (const Extra extra : {Extra{0, 0}, Extra{1, 0}, Extra{0, -3}, Extra{1, 5}})
      elementwise::checkCall(form, operation, all, all, std::vector<Raw<D>>(all.size()), extra, Alias::none);
  }
}

}  // namespace

#define ORPS_EXPORT(name, ...)                           \
  TEST(Convert, name) { checkConversion<#name>(&name); } \
  static_assert(true)
#include "exports/convert.inc"
#undef ORPS_EXPORT

TEST(Convert, examples) {
  const Orp32f halves[] = {2.5F, -2.5F, 0.49999997F, 8388609.0F, 40000.0F, -1e30F, NAN, INFINITY, -INFINITY, 3.5F};
  Orp16s results[10];
  const auto rounded = [&](int mode, int scaleFactor) {
    EXPECT_EQ(StsOk, orpsConvert_32f16s_Sfs(halves, results, 10, mode, scaleFactor));
    return std::vector<int>(results, results + 10);
  };
  using Values = std::vector<int>;
  EXPECT_EQ(rounded(0, 0), (Values{2, -2, 0, 32767, 32767, -32768, 0, 32767, -32768, 3}));
  EXPECT_EQ(rounded(1, 0), (Values{2, -2, 0, 32767, 32767, -32768, 0, 32767, -32768, 4}));
  EXPECT_EQ(rounded(2, 0), (Values{3, -3, 0, 32767, 32767, -32768, 0, 32767, -32768, 4}));
  EXPECT_EQ(rounded(2, -3), (Values{20, -20, 4, 32767, 32767, -32768, 0, 32767, -32768, 28}));
  EXPECT_EQ(rounded(1, 200), (Values{0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));  // even infinities: they are times 0
  EXPECT_EQ(rounded(1, INT_MIN), (Values{32767, -32768, 32767, 32767, 32767, -32768, 0, 32767, -32768, 32767}));

  // A scale factor above 31 is 31: the element that shows it.
  const Orp32s most[] = {INT_MAX, INT_MIN};
  ASSERT_EQ(StsOk, orpsConvert_32s16s_Sfs(most, results, 2, 40));
  EXPECT_EQ(1, results[0]);
  EXPECT_EQ(-1, results[1]);
}

// Every number of half precision, what lies halfway to the next one, and the neighbours of both in single precision.
TEST(Convert, everyHalf) {
  std::vector<Orp32f> numbers;
  for (int i = 0; i < 65536; ++i) {
    const auto bits = static_cast<Orp16u>(i);
    const Orp32f number = ofHalf(bits), next = ofHalf(static_cast<Orp16u>(i + 1));
    const Orp32f halfway = std::isinf(next) ? std::copysign(65520.0F, number) : number + (next - number) / 2;
    for (const Orp32f x : {number, halfway})
      for (const Orp32f beside : {x, std::nextafter(x, -INFINITY), std::nextafter(x, INFINITY)})
        numbers.push_back(beside);
    if (std::isnan(number)) numbers.push_back(std::bit_cast<float>(std::bit_cast<uint32_t>(number) ^ 0x00401234));
  }
  for (const int mode : {OrpRoundZero, OrpRoundNear})
    elementwise::checkCall(formOf(&orpsConvert_32f16f), Conversion<Orp32f, Orp16f>{}, numbers, numbers,
                           std::vector<Orp16u>(numbers.size()), {mode, 0}, Alias::none);
}

namespace {

template <class T>
constexpr float kUnit = is24<T> ? 0x1p-23F : 0x1p-15F;

template <class T>
T sample(float x) {
  Conversion<Orp32f, T> nearest;
  return nearest.template result<T>({OrpRoundNear, is24<T> ? -23 : -15}, x);
}

template <class T>
bool equal(const std::vector<T>& a, const std::vector<T>& b) {
  return elementwise::sameBytes(a, b);
}

// Exported functions of one sample type, over lengths and addresses; what is joined is split again.
template <class T>
void checkChannels(OrpStatus (*join)(const Orp32f* const*, T*, int),
                   OrpStatus (*split)(const T*, Orp32f* const*, int)) {
  Random random;
  auto lengths = orptest::lengthsAroundWidths<T>();
  lengths.push_back(orptest::lengthOfSeveralBlocks<T>());
  for (const auto& length : lengths) {
    for (const size_t misalignment : {0U, 1U, 6U, 28U}) {
      SCOPED_TRACE(testing::Message() << length << ", misaligned by " << misalignment);
      const auto count = static_cast<size_t>(length.value);
      std::vector<Orp32f> values[2] = {std::vector<Orp32f>(count), std::vector<Orp32f>(count)};
      std::vector<T> expected;
      std::vector<Orp32f> back[2];
      for (auto& channel : values)
        for (auto& x : channel)
          x = random.below(2) ? random.element<Orp32f>() : 2 * random.element<Orp32f>(orptest::Values::modest);
      for (size_t i = 0; i < count; ++i) {
        for (const int c : {0, 1}) {
          expected.push_back(sample<T>(values[c][i]));
          back[c].push_back(static_cast<float>(exactly<T>(expected.back())) * kUnit<T>);
        }
      }
      Guarded<Orp32f> first(values[0], misalignment), second(values[1], 3 * misalignment);
      Guarded<T> frames(2 * count, 5 * misalignment);
      const Orp32f* const sources[] = {first.data(), second.data()};
      ASSERT_EQ(StsOk, join(sources, frames.data(), length.value));
      ASSERT_TRUE(equal(expected, frames.values()));

      Guarded<Orp32f> one(count, 7 * misalignment), other(count, misalignment);
      Orp32f* const channels[] = {one.data(), other.data()};
      ASSERT_EQ(StsOk, split(frames.data(), channels, length.value));
      ASSERT_TRUE(equal(back[0], one.values()) && equal(back[1], other.values()));

      const Orp32f* const parts[] = {one.data(), other.data()};
      Guarded<T> again(2 * count);
      ASSERT_EQ(StsOk, join(parts, again.data(), length.value));
      ASSERT_TRUE(equal(expected, again.values()));
    }
  }
}

template <class T>
void checkChannelPointers(OrpStatus (*join)(const Orp32f* const*, T*, int),
                          OrpStatus (*split)(const T*, Orp32f* const*, int)) {
  Guarded<Orp32f> first(5), second(5);
  Guarded<T> frames(10);
  Orp32f *const one = first.data(), *const other = second.data();
  const Orp32f* const sources[][2] = {{one, other}, {nullptr, other}, {one, nullptr}};
  Orp32f* const channels[][2] = {{one, other}, {nullptr, other}, {one, nullptr}};
  for (const int len : {5, 0, -1, INT_MIN}) {
    for (const int missing : {1, 2}) {
      EXPECT_EQ(StsNullPtr, join(sources[missing], frames.data(), len));
      EXPECT_EQ(StsNullPtr, split(frames.data(), channels[missing], len));
    }
    EXPECT_EQ(StsNullPtr, join(nullptr, frames.data(), len));
    EXPECT_EQ(StsNullPtr, join(sources[0], nullptr, len));
    EXPECT_EQ(StsNullPtr, split(nullptr, channels[0], len));
    EXPECT_EQ(StsNullPtr, split(frames.data(), nullptr, len));
    if (len == 5) continue;
    EXPECT_EQ(StsBadSize, join(sources[0], frames.data(), len));
    EXPECT_EQ(StsBadSize, split(frames.data(), channels[0], len));
  }
  EXPECT_TRUE(first.untouched() && second.untouched() && frames.untouched());
}

}  // namespace

TEST(Channels, of16Bits) {
  checkChannels(&orpsJoinScaled_32f16s_D2L, &orpsSplitScaled_16s32f_D2L);
  checkChannelPointers(&orpsJoinScaled_32f16s_D2L, &orpsSplitScaled_16s32f_D2L);
}

TEST(Channels, of24Bits) {
  checkChannels(&orpsJoinScaled_32f24s_D2L, &orpsSplitScaled_24s32f_D2L);
  checkChannelPointers(&orpsJoinScaled_32f24s_D2L, &orpsSplitScaled_24s32f_D2L);
}
