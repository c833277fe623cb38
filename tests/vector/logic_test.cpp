// And, Or, Xor, Not and the shifts in all their forms.
#include "elementwise.h"

using elementwise::Extra;
using elementwise::First;
using elementwise::Operation;
using elementwise::Random;

namespace {

struct And : Operation<2> {
  template <class D>
  D result(Extra, D a, D b) const {
    return a & b;
  }
};

struct Or : Operation<2> {
  template <class D>
  D result(Extra, D a, D b) const {
    return a | b;
  }
};

struct Xor : Operation<2> {
  template <class D>
  D result(Extra, D a, D b) const {
    return a ^ b;
  }
};

struct Not : Operation<1> {
  template <class D>
  D result(Extra, D x) const {
    return static_cast<D>(~x);
  }
};

struct Shift : Operation<2> {
  template <class>
  int first(Random& random) const {
    constexpr int kLimits[] = {0, 7, 8, 9, 15, 16, 17, 31, 32, 33, 63, 64, 100, INT_MAX, -1, -8, INT_MIN};
    return random.below(2) ? random.below(32) : kLimits[random.below(static_cast<int>(std::size(kLimits)))];
  }
  OrpStatus error(int count) const { return count < 0 ? StsShiftErr : StsOk; }
};

struct LeftShift : Shift {
  template <class D>
  D result(Extra, int count, D x) const {
    return count >= 32 ? D{0} : static_cast<D>(static_cast<Orp64u>(x) << count);
  }
};

struct RightShift : Shift {
  template <class D>
  D result(Extra, int count, D x) const {
    const Orp64s wide = x;
    return static_cast<D>(wide >> (count > 63 ? 63 : count));
  }
};

template <reference::Name name>
constexpr auto operationOf() {
  if constexpr (name.isOf("And") || name.isOf("AndC"))
    return And{};
  else if constexpr (name.isOf("Or") || name.isOf("OrC"))
    return Or{};
  else if constexpr (name.isOf("Xor") || name.isOf("XorC"))
    return Xor{};
  else if constexpr (name.isOf("Not"))
    return Not{};
  else if constexpr (name.isOf("LShiftC"))
    return LeftShift{};
  else if constexpr (name.isOf("RShiftC"))
    return RightShift{};
}

}  // namespace

#define ORPS_EXPORT(name, ...)                                           \
  TEST(Logic, name) { elementwise::check(&name, operationOf<#name>()); } \
  static_assert(true)
#include "exports/logic.inc"

// A negative count is looked at after pointers and length.
TEST(Logic, orderOfChecksOfShifts) {
  Orp16s x = 5, result = 77;
  EXPECT_EQ(StsNullPtr, orpsLShiftC_16s(nullptr, -1, &result, 0));
  EXPECT_EQ(StsNullPtr, orpsRShiftC_16s(&x, -1, nullptr, 0));
  EXPECT_EQ(StsBadSize, orpsLShiftC_16s(&x, -1, &result, 0));
  EXPECT_EQ(StsBadSize, orpsRShiftC_16s_I(-1, &x, -3));
  EXPECT_EQ(StsShiftErr, orpsRShiftC_16s_I(-1, &x, 1));
  EXPECT_EQ(5, x);
  EXPECT_EQ(77, result);
}
