// Add, Sub and Abs in all their forms.
#include "elementwise.h"

using elementwise::Alias;
using elementwise::Extra;
using elementwise::Operation;
using reference::element;
using reference::exact;

namespace {

struct Sum : Operation<2> {
  template <class D>
  D result(Extra extra, auto a, auto b) const {
    return element<D>(exact(a) + exact(b), extra.scale);
  }
};

struct Difference : Operation<2> {
  template <class D>
  D result(Extra extra, auto a, auto b) const {
    return element<D>(exact(b) - exact(a), extra.scale);
  }
};

struct ReversedDifference : Operation<2> {
  template <class D>
  D result(Extra extra, auto a, auto b) const {
    return element<D>(exact(a) - exact(b), extra.scale);
  }
};

struct Magnitude : Operation<1> {
  template <class D>
  D result(Extra, auto x) const {
    if constexpr (std::is_floating_point_v<D>) {
      return std::fabs(x);
    } else {
      return reference::saturated<D>(x < 0 ? -exact(x) : exact(x));
    }
  }
};

template <reference::Name name>
constexpr auto operationOf() {
  if constexpr (name.isOf("Add") || name.isOf("AddC"))
    return Sum{};
  else if constexpr (name.isOf("Sub") || name.isOf("SubC"))
    return Difference{};
  else if constexpr (name.isOf("SubCRev"))
    return ReversedDifference{};
  else if constexpr (name.isOf("Abs"))
    return Magnitude{};
}

}  // namespace

#define ORPS_EXPORT(name, ...)                                         \
  TEST(Sum, name) { elementwise::check(&name, operationOf<#name>()); } \
  static_assert(true)
#include "exports/sum.inc"

// The scale-factor rule by example: sums scaled by 2^-1, whose ties go to the even neighbour, and out of the type.
TEST(Sum, examplesOfScaling) {
  const Orp16s a[] = {1, 1, -1, 3, -3, 32767, -32768, 0}, b[] = {2, 4, -2, 3, 0, 32766, -32767, 0};
  Orp16s sums[8];
  const auto scaled = [&](int scaleFactor) {
    EXPECT_EQ(StsOk, orpsAdd_16s_Sfs(a, b, sums, 8, scaleFactor));
    return std::vector<Orp16s>(sums, sums + 8);
  };
  using Values = std::vector<Orp16s>;
  EXPECT_EQ(scaled(0), (Values{3, 5, -3, 6, -3, 32767, -32768, 0}));
  EXPECT_EQ(scaled(1), (Values{2, 2, -2, 3, -2, 32766, -32768, 0}));
  EXPECT_EQ(scaled(2), (Values{1, 1, -1, 2, -1, 16383, -16384, 0}));
  EXPECT_EQ(scaled(16), (Values{0, 0, 0, 0, 0, 1, -1, 0}));
  EXPECT_EQ(scaled(17), Values(8));
  EXPECT_EQ(scaled(-20), (Values{32767, 32767, -32768, 32767, -32768, 32767, -32768, 0}));
  ASSERT_EQ(StsOk, orpsSub_16s_Sfs(&a[6], &a[5], sums, 1, 1));
  EXPECT_EQ(sums[0], 32767);  // 32767 - -32768 = 65535; half of it rounds to 32768
}

TEST(Sum, absoluteValueOfNaNsClearsTheSign) {
  const Orp32f nan[] = {-std::numeric_limits<Orp32f>::quiet_NaN()};
  Orp32f result[1];
  ASSERT_EQ(StsOk, orpsAbs_32f(nan, result, 1));
  EXPECT_TRUE(std::isnan(result[0]) && !std::signbit(result[0]));
}

// Outputs that the caches cannot hold are stored past them; here 64 MiB, aligned to elements and to nothing.
TEST(Sum, largeOutput) {
  constexpr size_t kLength = (size_t{64} << 20) / sizeof(Orp32f) + 5;
  elementwise::Random random;
  std::vector<Orp16s> a(kLength), b(kLength);
  for (auto& x : a) x = static_cast<Orp16s>(random.bits());
  for (auto& x : b) x = static_cast<Orp16s>(random.bits());
  const auto form = elementwise::formOf(elementwise::Operands<2>{}, &orpsSub_16s32f);
  for (const size_t misalignment : {0U, 12U, 1U})
    elementwise::checkCall(form, Difference{}, a, b, std::vector<Orp32f>(kLength), {}, Alias::none, misalignment);
}
