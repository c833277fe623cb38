// Cosines and sines of angles at equal distances, without a call for each.
#if defined(ORPSP_GENERATE_ROTATION_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_GENERATE_ROTATION_INL_H_
#undef ORPSP_GENERATE_ROTATION_INL_H_
#else
#define ORPSP_GENERATE_ROTATION_INL_H_
#endif

#include <cmath>

#include "generate/samples-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

constexpr size_t kBlock = 64;
constexpr double kTwoPi = 6.283185307179586;

// A complex number of the size of 1 by its angle.
struct Direction {
  double re, im;

  static Direction Of(double angle) { return {std::cos(angle), std::sin(angle)}; }
  Direction Times(Direction by) const { return {re * by.re - im * by.im, im * by.re + re * by.im}; }
};

// The directions of the first j < kBlock steps, as many as `len` elements need; angleOf(j) is the angle of j steps.
// Those of powers of two are doubled from step to step, or computed, which keeps their errors apart.
class FineDirections {
 public:
  template <class AngleOf>
  FineDirections(const AngleOf& angleOf, bool isDoubled, size_t len)
      : count(HWY_MIN(HWY_MAX(len, 2 * kLanes), kBlock)) {
    Set(0, {1, 0});
    Set(1, Direction::Of(angleOf(1)));
    for (size_t k = 1; 2 * k <= kBlock && k < count; k *= 2) {
      const Direction by{re[k], im[k]};
      // Those from k on, but for k itself, are those below it turned by k; then that of 2 k.
      if (k < kLanes) {
        for (size_t j = 1; j < k; ++j) Turn(kOne, j, k, by);
      } else {
        for (size_t j = 0; j < k; j += kLanes) Turn(kDoubles, j, k, by);
      }
      if (2 * k < kBlock) Set(2 * k, isDoubled ? by.Times(by) : Direction::Of(angleOf(2 * k)));
    }
  }

  size_t count;
  alignas(64) double re[kBlock], im[kBlock];

 private:
  static constexpr hn::CappedTag<double, 1> kOne{};

  HWY_INLINE void Set(size_t j, Direction direction) {
    re[j] = direction.re;
    im[j] = direction.im;
  }
  // The directions from j on, turned: those from j + k on.
  template <class D>
  HWY_INLINE void Turn(D d, size_t j, size_t k, Direction by) {
    const auto x = hn::LoadU(d, re + j), y = hn::LoadU(d, im + j);
    const auto byX = hn::Set(d, by.re), byY = hn::Set(d, by.im);
    hn::StoreU(hn::Sub(hn::Mul(x, byX), hn::Mul(y, byY)), d, re + j + k);
    hn::StoreU(hn::Add(hn::Mul(y, byX), hn::Mul(x, byY)), d, im + j + k);
  }
};

// A pointer that turns by the same angle from element to element, computed in T; angleOf(n) is the angle of n steps.
// An element is its block's first one turned by one of kBlock fine directions; first ones are turned from block to
// block in double precision and computed anew now and then. The errors: below 1e-13 of the start's size, or, if
// kIsFine, 5e-15.
template <class T, bool kIsFine, class AngleOf>
class Rotation {
 public:
  Rotation(const AngleOf& angleOf, Direction start, size_t len)
      : fine_(angleOf, !kIsFine, len), start_(start), first_(start), angleOf_(angleOf) {
    if constexpr (std::is_same_v<T, float>) {
      constexpr hn::Rebind<float, hn::ScalableTag<double>> d;
      for (size_t j = 0; j < fine_.count; j += kLanes) {
        hn::Store(hn::DemoteTo(d, hn::Load(kDoubles, fine_.re + j)), d, single_[0] + j);
        hn::Store(hn::DemoteTo(d, hn::Load(kDoubles, fine_.im + j)), d, single_[1] + j);
      }
    }
  }

  // Called for n = 0, kBlock, 2 kBlock, ... in this order.
  HWY_INLINE void Begin(size_t n) {
    constexpr size_t kSeeds = (kIsFine ? 8 : 64) * kBlock;
    if (n == 0) return;
    if (n == kBlock) block_ = Direction::Of(angleOf_(kBlock));
    first_ = n % kSeeds == 0 ? start_.Times(Direction::Of(angleOf_(n))) : first_.Times(block_);
  }

  // Of the block's elements from j on.
  HWY_INLINE auto Re(size_t j) const { return hn::Sub(TimesRe(first_.re, j), TimesIm(first_.im, j)); }
  HWY_INLINE auto Im(size_t j) const { return hn::Add(TimesRe(first_.im, j), TimesIm(first_.re, j)); }

 private:
  HWY_INLINE auto TimesRe(double factor, size_t j) const { return Product(factor, fine_.re + j, single_[0] + j); }
  HWY_INLINE auto TimesIm(double factor, size_t j) const { return Product(factor, fine_.im + j, single_[1] + j); }
  static HWY_INLINE auto Product(double factor, const double* fine, const float* single) {
    constexpr hn::ScalableTag<T> d;
    if constexpr (std::is_same_v<T, float>) {
      return hn::Mul(hn::Set(d, static_cast<float>(factor)), hn::Load(d, single));
    } else {
      return hn::Mul(hn::Set(d, factor), hn::Load(d, fine));
    }
  }

  FineDirections fine_;
  alignas(64) float single_[2][kBlock];  // the same, where T is float
  Direction start_, first_, block_;
  AngleOf angleOf_;
};

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
