// Dot products: integers exactly, floating point in the documented order of additions.
#include "reduction.h"

namespace reduction {
namespace {

struct DotProduct : Model {
  template <class D>
  D result(const auto& in) const {
    using A = std::decay_t<decltype(in.a[0])>;
    using B = std::decay_t<decltype(in.b[0])>;
    if constexpr (Integers<A>) {
      auto total = decltype(reference::exact(A{}) * reference::exact(B{})){};
      for (size_t n = 0; n < in.a.size(); ++n) total = total + reference::exact(in.a[n]) * reference::exact(in.b[n]);
      return reference::element<D>(total, in.extra);
    } else {
      using T = Part<D>;
      const auto a = partsOf<T>(in.a), b = partsOf<T>(in.b);
      // The products of parts i of pSrc1 and k of pSrc2.
      const auto products = [&](size_t i, size_t k) {
        std::vector<T> terms;
        for (size_t n = 0; n < in.a.size(); ++n) terms.push_back(a[n * kParts<A> + i] * b[n * kParts<B> + k]);
        return terms;
      };
      if constexpr (kParts<A> == 2) {
        const auto sum = [&](size_t i, size_t k) { return inLanes(products(i, k), 1, kLanes<T> / 4)[0]; };
        return {sum(0, 0) - sum(1, 1), sum(1, 0) + sum(0, 1)};
      } else if constexpr (kParts<B> == 2) {
        std::vector<T> terms;
        for (size_t p = 0; p < b.size(); ++p) terms.push_back(a[p / 2] * b[p]);
        const auto sums = inLanes(terms, 2);
        return {sums[0], sums[1]};
      } else {
        return inLanes(products(0, 0), 1, std::is_same_v<D, Orp32f> ? 16 : kLanes<T>)[0];
      }
    }
  }
};

}  // namespace

#define ORPS_EXPORT(name, ...)                    \
  TEST(Dot, name) { check(&name, DotProduct{}); } \
  static_assert(true)
#include "exports/dot.inc"

TEST(Dot, sourcesMayOverlap) {
  std::vector<Orp16s> x(1000);
  Int128 want = 0;
  for (size_t n = 0; n < x.size(); ++n) x[n] = static_cast<Orp16s>(37 * n - 20'000);
  for (size_t n = 0; n + 1 < x.size(); ++n) want += x[n] * x[n + 1];
  Orp64s got;
  ASSERT_EQ(StsOk, orpsDotProd_16s64s(&x[0], &x[1], 999, &got));
  EXPECT_EQ(got, want);
}

}  // namespace reduction
