// Products and expansion of packed spectra, by the definition of their layouts and one bin at a time.
#include <climits>
#include <cstring>
#include <functional>
#include <numeric>

#include "vector/elementwise.h"

namespace {

using orptest::Guarded;
using orptest::Random;
using reference::element;
using reference::exact;
using reference::Pair;

enum class Layout { pack, perm, ccs };

template <reference::Name name>
constexpr Layout layoutOf() {
  return name.contains("Pack") ? Layout::pack : name.contains("Perm") ? Layout::perm : Layout::ccs;
}

// Where the parts of bin k <= n / 2 stand; a negative index: the part is not stored and counts as zero.
struct Place {
  int re, im;
};
Place placeOf(Layout layout, int n, int k) {
  const bool isReal = k == 0 || 2 * k == n;
  if (layout == Layout::ccs) return {2 * k, 2 * k + 1};
  if (k == 0) return {0, -1};
  if (layout == Layout::pack) return {2 * k - 1, isReal ? -1 : 2 * k};
  if (isReal) return {1, -1};
  return n % 2 == 0 ? Place{2 * k, 2 * k + 1} : Place{2 * k - 1, 2 * k};
}

size_t packedSize(Layout layout, int n) { return static_cast<size_t>(layout == Layout::ccs ? n / 2 * 2 + 2 : n); }

// Few and many pairs for every width, odd and even; then several blocks of every type.
std::vector<int> lengths() {
  std::vector<int> all(70);
  std::iota(all.begin(), all.end(), 1);
  all.insert(all.end(), {127, 128, 259, 514, 1027, 4096, 20'006, 20'007});
  return all;
}

// ---- products

template <class T>
using Product = std::function<OrpStatus(const T* a, const T* b, T* dst, int len, int scale)>;

template <class T>
std::vector<T> productOf(Layout layout, bool conjugate, const std::vector<T>& a, const std::vector<T>& b, int scale) {
  std::vector<T> product(a.size());
  const int n = static_cast<int>(a.size());
  for (int k = 0; 2 * k <= n; ++k) {
    const auto [iRe, iIm] = placeOf(layout, n, k);
    const auto re = static_cast<size_t>(iRe), im = static_cast<size_t>(iIm);
    if (iIm < 0) {
      product[re] = element<T>(exact(a[re]) * exact(b[re]), scale);
      continue;
    }
    const Pair p{exact(a[re]), exact(a[im])}, q{exact(b[re]), exact(b[im])};
    const auto r = conjugate ? Pair<decltype(p.re)>{p.re * q.re + p.im * q.im, q.re * p.im - p.re * q.im} : p * q;
    product[re] = element<T>(r.re, scale);
    product[im] = element<T>(r.im, scale);
  }
  return product;
}

template <class T>
testing::AssertionResult same(const std::vector<T>& want, const std::vector<T>& got) {
  for (size_t i = 0; i < want.size(); ++i) {
    if (!reference::same(want[i], got[i]))
      return testing::AssertionFailure() << "at " << i << ": " << reference::shown(got[i]) << " instead of "
                                         << reference::shown(want[i]);
  }
  return testing::AssertionSuccess();
}

struct ProductCase {
  Layout layout;
  bool conjugate, isInPlace, isScaled;
};

template <class T>
void checkProducts(const ProductCase& c, const Product<T>& call, const std::vector<int>& lengths,
                   const std::vector<size_t>& misalignments) {
  Random random;
  std::vector<int> scales = {0};
  if (c.isScaled) scales.assign(std::begin(elementwise::kScales), std::end(elementwise::kScales));
  for (const int len : lengths) {
    std::vector<T> a(static_cast<size_t>(len)), b(a.size());
    for (T& value : a) value = elementwise::operand<T>(random);
    for (T& value : b) value = elementwise::operand<T>(random);
    for (const int scale : len > 1000 ? std::vector<int>{0, c.isScaled ? 9 : 0} : scales) {
      const auto product = productOf(c.layout, c.conjugate, a, b, scale);
      const auto square = productOf(c.layout, c.conjugate, a, a, scale);
      for (const size_t misalignment : misalignments) {
        SCOPED_TRACE(testing::Message() << len << " elements, scale " << scale << ", misaligned by " << misalignment);
        Guarded<T> first(a, misalignment), second(b, 3 * misalignment), dst(a.size(), 5 * misalignment);
        if (!c.isInPlace) {
          ASSERT_EQ(StsOk, call(first.data(), second.data(), dst.data(), len, scale));
          EXPECT_TRUE(same(product, dst.values()));
          dst.assign(a);
          ASSERT_EQ(StsOk, call(dst.data(), second.data(), dst.data(), len, scale));
          EXPECT_TRUE(same(product, dst.values())) << "into the first source";
        }
        dst.assign(b);
        ASSERT_EQ(StsOk, call(first.data(), dst.data(), dst.data(), len, scale));
        EXPECT_TRUE(same(product, dst.values())) << "into the second source";
        dst.assign(a);
        ASSERT_EQ(StsOk, call(dst.data(), dst.data(), dst.data(), len, scale));
        EXPECT_TRUE(same(square, dst.values())) << "all the same";
        EXPECT_TRUE(same(a, first.values()) && same(b, second.values())) << "sources";
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

// An export as a Product.
template <class T>
Product<T> asProduct(OrpStatus (*f)(const T*, const T*, T*, int)) {
  return [f](const T* a, const T* b, T* dst, int len, int) { return f(a, b, dst, len); };
}
template <class T>
Product<T> asProduct(OrpStatus (*f)(const T*, T*, int)) {
  return [f](const T* a, const T*, T* dst, int len, int) { return f(a, dst, len); };
}
template <class T>
Product<T> asProduct(OrpStatus (*f)(const T*, const T*, T*, int, int)) {
  return f;
}
template <class T>
Product<T> asProduct(OrpStatus (*f)(const T*, T*, int, int)) {
  return [f](const T* a, const T*, T* dst, int len, int scale) { return f(a, dst, len, scale); };
}

// ---- expansion

template <class C>
using Expansion = std::function<OrpStatus(const orptest::Part<C>* src, C* dst, int len)>;

template <class C>
C conjugateOf(C z) {
  if constexpr (std::is_integral_v<orptest::Part<C>>) {
    return {z.re, reference::saturated<orptest::Part<C>>(-exact(z.im))};
  } else {
    return {z.re, -z.im};
  }
}

template <class C>
std::vector<C> expansionOf(Layout layout, const std::vector<orptest::Part<C>>& packed, int n) {
  std::vector<C> full(static_cast<size_t>(n));
  for (int k = 0; k < n; ++k) {
    const auto [re, im] = placeOf(layout, n, std::min(k, n - k));
    const C bin{packed[static_cast<size_t>(re)], im < 0 ? orptest::Part<C>{0} : packed[static_cast<size_t>(im)]};
    full[static_cast<size_t>(k)] = 2 * k <= n ? bin : conjugateOf(bin);
  }
  return full;
}

template <class C>
void checkExpansion(Layout layout, bool isInPlace, const Expansion<C>& call, const std::vector<int>& lengths,
                    const std::vector<size_t>& misalignments) {
  using T = orptest::Part<C>;
  Random random;
  for (const int len : lengths) {
    const auto packed = random.vector<T>(packedSize(layout, len));
    const auto want = expansionOf<C>(layout, packed, len);
    for (const size_t misalignment : misalignments) {
      SCOPED_TRACE(testing::Message() << len << " elements, misaligned by " << misalignment);
      Guarded<T> src(packed, 3 * misalignment);
      Guarded<C> dst(want.size(), misalignment);
      if (isInPlace) std::memcpy(dst.data(), packed.data(), packed.size() * sizeof(T));
      ASSERT_EQ(StsOk, call(src.data(), dst.data(), len));
      const auto got = dst.values();
      ASSERT_EQ(0, std::memcmp(want.data(), got.data(), got.size() * sizeof(C)));  // NaNs keep their bits
      ASSERT_EQ(0, std::memcmp(packed.data(), src.data(), packed.size() * sizeof(T))) << "source";
    }
  }
}

template <class T, class C>
Expansion<C> asExpansion(OrpStatus (*f)(const T*, C*, int)) {
  return f;
}
template <class C>
Expansion<C> asExpansion(OrpStatus (*f)(C*, int)) {
  return [f](const auto*, C* dst, int len) { return f(dst, len); };
}

// ---- every export

template <reference::Name name>
void check(auto* exported, const std::vector<int>& lengths, const std::vector<size_t>& misalignments) {
  constexpr bool isInPlace = name.contains("_I");
  if constexpr (name.hasAt(4, "Mul")) {
    const ProductCase c{layoutOf<name>(), name.isOf("MulPackConj"), isInPlace, name.contains("Sfs")};
    checkProducts(c, asProduct(exported), lengths, misalignments);
  } else {
    checkExpansion(layoutOf<name>(), isInPlace, asExpansion(exported), lengths, misalignments);
  }
}

}  // namespace

#define ORPS_EXPORT(name, ...)                                      \
  TEST(Packed, name) { check<#name>(&name, lengths(), {0, 1, 4}); } \
  static_assert(true)
#include "exports/packed.inc"
#undef ORPS_EXPORT

// Outputs that the caches cannot hold are stored past them, if addresses allow.
TEST(Packed, largeOutput) {
  constexpr int kBytes = 24 << 20;
  check<"orpsConjPack_32fc">(&orpsConjPack_32fc, {kBytes / 8 + 9}, {0, 1});
  check<"orpsConjPerm_64fc">(&orpsConjPerm_64fc, {kBytes / 16 + 10}, {48});
  check<"orpsConjPack_32fc_I">(&orpsConjPack_32fc_I, {kBytes / 8 + 10}, {8});
}

// The sweep knows no sources that are longer than the destination.
TEST(Packed, refusalsOfConjCcs) {
  std::vector<Orp32f> src(10, 1);
  Guarded<Orp32fc> dst(8);
  EXPECT_EQ(StsNullPtr, orpsConjCcs_32fc(nullptr, dst.data(), 0));
  EXPECT_EQ(StsNullPtr, orpsConjCcs_32fc(src.data(), nullptr, 8));
  for (const int len : {0, -1, INT_MIN}) EXPECT_EQ(StsBadSize, orpsConjCcs_32fc(src.data(), dst.data(), len));
  EXPECT_TRUE(dst.untouched());
}
