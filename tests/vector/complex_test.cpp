// Conj, Real, Imag, RealToCplx, CplxToReal, PowerSpectr and MagSquared.
#include "elementwise.h"

using elementwise::Alias;
using elementwise::Extra;
using elementwise::Operands;
using elementwise::Operation;
using elementwise::Random;
using reference::element;
using reference::exact;
using reference::Part;

namespace {

struct Conjugate : Operation<1> {
  template <class D>
  D result(Extra, D z) const {
    if constexpr (std::is_integral_v<Part<D>>) {
      return {z.re, reference::saturated<Part<D>>(-exact(z.im))};
    } else {
      return {z.re, -z.im};
    }
  }
};

template <bool imaginary>
struct OnePart : Operation<1> {
  template <class D>
  D result(Extra, auto z) const {
    return imaginary ? z.im : z.re;
  }
};

struct FromParts : Operation<2> {
  template <class D>
  D result(Extra, auto re, auto im) const {
    return {re, im};
  }
};

// The square of integers is exact until the scale factor, that of floats is rounded by each operation.
template <class D>
D power(Extra extra, auto re, auto im) {
  return element<D>(exact(re) * exact(re) + exact(im) * exact(im), extra.scale);
}

struct PowerOfPairs : Operation<1> {
  template <class D>
  D result(Extra extra, auto z) const {
    return power<D>(extra, z.re, z.im);
  }
};
struct PowerOfParts : Operation<2> {
  template <class D>
  D result(Extra extra, auto re, auto im) const {
    return power<D>(extra, re, im);
  }
};

template <reference::Name name>
void check(auto* exported) {
  if constexpr (name.isOf("Conj")) {
    elementwise::check(exported, Conjugate{});
  } else if constexpr (name.isOf("Real") || name.isOf("Imag")) {
    elementwise::check(exported, OnePart<name.isOf("Imag")>{});
  } else if constexpr (name.isOf("RealToCplx")) {
    elementwise::check(exported, FromParts{});
  } else if constexpr (name.isOf("CplxToReal")) {
    elementwise::checkForm(elementwise::formOfOne<0>(Operands<1>{}, exported), OnePart<false>{});
    elementwise::checkForm(elementwise::formOfOne<1>(Operands<1>{}, exported), OnePart<true>{});
  } else if constexpr (name.isOf("MagSquared") || name.contains("16sc") || name.contains("fc")) {
    elementwise::check(exported, PowerOfPairs{});
  } else if constexpr (name.isOf("PowerSpectr")) {
    elementwise::check(exported, PowerOfParts{});
  }
}

}  // namespace

#define ORPS_EXPORT(name, ...)                 \
  TEST(Complex, name) { check<#name>(&name); } \
  static_assert(true)
#include "exports/complex.inc"

// The greatest powers need one bit more than signed integers have.
TEST(Complex, greatestPowers) {
  std::vector<Orp16sc> shorts(70, {-32768, -32768});
  std::vector<Orp16s> parts(70, -32768), scaled(70);
  std::vector<Orp32f> floats(70);
  ASSERT_EQ(StsOk, orpsPowerSpectr_16sc32f(shorts.data(), floats.data(), 70));
  EXPECT_EQ(std::vector<Orp32f>(70, 0x1p31F), floats);
  for (const auto& [scale, want] : {std::pair{-5, 32767}, {0, 32767}, {16, 32767}, {17, 16384}, {31, 1}, {32, 0}}) {
    ASSERT_EQ(StsOk, orpsPowerSpectr_16sc_Sfs(shorts.data(), scaled.data(), 70, scale));
    EXPECT_EQ(std::vector<Orp16s>(70, static_cast<Orp16s>(want)), scaled) << scale;
    ASSERT_EQ(StsOk, orpsPowerSpectr_16s_Sfs(parts.data(), parts.data(), scaled.data(), 70, scale));
    EXPECT_EQ(std::vector<Orp16s>(70, static_cast<Orp16s>(want)), scaled) << scale;
  }
  constexpr Orp32s kLeast = std::numeric_limits<Orp32s>::min(), kMost = std::numeric_limits<Orp32s>::max();
  std::vector<Orp32sc> longs(70, {kLeast, kLeast});
  std::vector<Orp32s> squares(70);
  for (const auto& [scale, want] : {std::pair{0, kMost}, {32, kMost}, {33, 1 << 30}, {63, 1}, {64, 0}}) {
    ASSERT_EQ(StsOk, orpsMagSquared_32sc32s_Sfs(longs.data(), squares.data(), 70, scale));
    EXPECT_EQ(std::vector<Orp32s>(70, want), squares) << scale;
  }
}

// Outputs that the caches cannot hold are stored past them: one destination, pairs, and two destinations.
TEST(Complex, largeOutput) {
  constexpr size_t kLength = (size_t{24} << 20) / sizeof(Orp32f) + 5;
  const auto bytes = Random{}.vector<Orp16u>(2 * kLength);
  std::vector<Orp32fc> pairs(kLength);
  for (size_t i = 0; i < kLength; ++i)
    pairs[i] = {static_cast<Orp32f>(bytes[2 * i]), static_cast<Orp32f>(bytes[2 * i + 1])};
  for (const size_t misalignment : {0U, 12U, 1U}) {
    orptest::Guarded<Orp32fc> source(pairs, misalignment), joined(kLength, misalignment);
    orptest::Guarded<Orp32f> re(kLength, misalignment), im(kLength, misalignment), imaginary(kLength, 0);
    const int len = static_cast<int>(kLength);
    ASSERT_EQ(StsOk, orpsCplxToReal_32fc(source.data(), re.data(), im.data(), len));
    ASSERT_EQ(StsOk, orpsImag_32fc(source.data(), imaginary.data(), len));
    EXPECT_TRUE(elementwise::sameBytes(im.values(), imaginary.values())) << misalignment;
    ASSERT_EQ(StsOk, orpsRealToCplx_32f(re.data(), im.data(), joined.data(), len));
    EXPECT_TRUE(elementwise::sameBytes(pairs, joined.values())) << misalignment;
  }
}
