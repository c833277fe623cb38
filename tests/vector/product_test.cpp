// Mul, MulC, AddProduct, AddProductC and Sqr in all their forms.
#include "elementwise.h"

using elementwise::Alias;
using elementwise::Extra;
using elementwise::Operation;
using elementwise::Random;
using reference::element;
using reference::exact;

namespace {

struct Product : Operation<2> {
  template <class D>
  D result(Extra extra, auto a, auto b) const {
    return element<D>(exact(a) * exact(b), extra.scale);
  }
};

struct Square : Operation<1> {
  template <class D>
  D result(Extra extra, auto x) const {
    return element<D>(exact(x) * exact(x), extra.scale);
  }
};

struct AddedProduct : Operation<3> {
  template <class D>
  D result(Extra extra, auto a, auto b, D sum) const {
    return element<D>(exact(sum) + exact(a) * exact(b), extra.scale);
  }
};

// Floats to 16-bit integers. Many products are halves of integers within the type's range.
struct FloatsToIntegers : Operation<2> {
  template <class T>
  T first(Random& random) const {
    return random.below(4) == 0 ? random.element<T>() : static_cast<T>(random.below(2000) - 1000) / 8;
  }
  template <class T>
  T second(Random& random) const {
    return first<T>(random);
  }
};

struct RoundedOnce : FloatsToIntegers {
  template <class D>
  D result(Extra extra, Orp32f a, Orp32f b) const {
    return reference::scaledProduct<D>(Orp64f{a} * Orp64f{b}, 1, extra.scale);  // exact in double
  }
};

struct RoundedTwice : FloatsToIntegers {
  template <class D>
  D result(Extra, Orp32f a, Orp32f b) const {
    return reference::scaledProduct<D>(Orp64f{a * b}, 1, 0);
  }
};

struct IntegerTimesDouble : Operation<2> {
  template <class T>
  T first(Random& random) const {
    return random.below(2) ? random.element<T>() : static_cast<T>(random.below(2000) - 1000) / 64;
  }
  template <class D>
  D result(Extra extra, Orp64f factor, Orp64s x) const {
    return reference::scaledProduct<D>(factor, x, extra.scale);
  }
};

template <reference::Name name>
constexpr auto operationOf() {
  if constexpr (name.contains("Low_32f16s"))
    return RoundedTwice{};
  else if constexpr (name.contains("32f16s"))
    return RoundedOnce{};
  else if constexpr (name.isOf("Mul") || name.isOf("MulC"))
    return Product{};
  else if constexpr (name.isOf("AddProduct") || name.isOf("AddProductC"))
    return AddedProduct{};
  else if constexpr (name.isOf("Sqr"))
    return Square{};
}

}  // namespace

#define ORPS_EXPORT(name, ...)                                             \
  TEST(Product, name) { elementwise::check(&name, operationOf<#name>()); } \
  static_assert(true)
#include "exports/product.inc"

TEST(Product, orpsMulC_64s_ISfs) { elementwise::check(&orpsMulC_64s_ISfs, Product{}); }
TEST(Product, orpsMulC_64f64s_ISfs) { elementwise::check(&orpsMulC_64f64s_ISfs, IntegerTimesDouble{}); }

// Both parts least in both operands: the one product whose imaginary part needs all bits of twice the width and its
// sign.
TEST(Product, greatestComplexProduct) {
  constexpr Orp32s kLeast = std::numeric_limits<Orp32s>::min();
  const Orp16sc narrow = {-32768, -32768}, narrowOther = {-32768, 32767};
  const Orp32sc wide = {kLeast, kLeast}, wideOther = {kLeast, ~kLeast};
  const auto narrowForm = elementwise::formOf(elementwise::Operands<2>{}, &orpsMul_16sc_Sfs);
  const auto wideForm = elementwise::formOf(elementwise::Operands<2>{}, &orpsMul_32sc_Sfs);
  for (const auto& extra : elementwise::extrasOf(1)) {
    elementwise::checkCall(narrowForm, Product{}, {narrow, narrow, narrowOther}, {narrow, narrowOther, narrowOther},
                           std::vector<Orp16sc>(3), extra, Alias::none);
    elementwise::checkCall(wideForm, Product{}, {wide, wide, wideOther}, {wide, wideOther, wideOther},
                           std::vector<Orp32sc>(3), extra, Alias::none);
  }
}
