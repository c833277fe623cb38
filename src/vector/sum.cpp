// Add, Sub and their constant forms, and absolute values.
#include "orpsp/vector/arithmetic.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/sum.cpp"
#include <hwy/foreach_target.h>

#include "simd/forms-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

struct Add {
  static constexpr bool kByLanes = true;
  template <class D, class A, class B>
  HWY_INLINE hn::Vec<D> operator()(D d, A a, B b) const {
    if constexpr (std::is_floating_point_v<hn::TFromD<D>>) {
      return hn::Add(Lift(d, a), Lift(d, b));
    } else {
      return SaturatedSum(Lift(d, a), Lift(d, b));
    }
  }

  template <class T>
  static constexpr int kMostScale = std::is_signed_v<T> ? 8 * sizeof(T) : 8 * sizeof(T) + 1;
  struct Halved {
    HWY_INLINE auto operator()(auto, auto a, auto b) const { return HalvesOfSum(a, b).Rounded1(); }
  };
  struct Rounded {
    int scale;
    HWY_INLINE auto operator()(auto, auto a, auto b) const { return HalvesOfSum(a, b).Rounded(scale); }
  };
};

// b - a
struct Sub {
  static constexpr bool kByLanes = true;
  template <class D, class A, class B>
  HWY_INLINE hn::Vec<D> operator()(D d, A a, B b) const {
    if constexpr (std::is_floating_point_v<hn::TFromD<D>>) {
      return hn::Sub(Lift(d, b), Lift(d, a));
    } else {
      return SaturatedDifference(Lift(d, a), Lift(d, b));
    }
  }

  // A negative difference of unsigned elements is 0 after any scaling, so the saturated one is as good as the exact.
  template <class T>
  static constexpr int kMostScale = 8 * sizeof(T);
  template <class V>
  static HWY_INLINE Halves<V> Exact(V a, V b) {
    if constexpr (std::is_signed_v<hn::TFromV<V>>) {
      return HalvesOfDifference(a, b);
    } else {
      const V difference = SaturatedDifference(a, b);
      return {hn::ShiftRight<1>(difference), difference};
    }
  }
  struct Halved {
    HWY_INLINE auto operator()(auto, auto a, auto b) const { return Exact(a, b).Rounded1(); }
  };
  struct Rounded {
    int scale;
    HWY_INLINE auto operator()(auto, auto a, auto b) const { return Exact(a, b).Rounded(scale); }
  };
};

struct Abs {
  template <class D, class V>
  HWY_INLINE V operator()(D, V v) const {
    if constexpr (std::is_integral_v<hn::TFromD<D>>) {
      return SaturatedAbs(v);
    } else {
      return hn::Abs(v);
    }
  }
};

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/sum.inc"
#include "frame/exports-inl.h"
