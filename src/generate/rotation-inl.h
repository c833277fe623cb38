// Cosines and sines of angles at equal distances, without a call for each.
#if defined(ORPSP_GENERATE_ROTATION_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_GENERATE_ROTATION_INL_H_
#undef ORPSP_GENERATE_ROTATION_INL_H_
#else
#define ORPSP_GENERATE_ROTATION_INL_H_
#endif

#include "generate/circle-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

constexpr size_t kTurnedBlock = 64;

// A complex number of the size of 1 by its angle, in turns.
struct Direction {
  double re, im;

  static HWY_INLINE Direction Of(double turns) {
    const auto parts = DirectionOf(hn::Set(kDoubles, turns));
    return {hn::GetLane(parts.re), hn::GetLane(parts.im)};
  }
  HWY_INLINE Direction Times(Direction by) const { return {re * by.re - im * by.im, im * by.re + re * by.im}; }
};

// A pointer that turns by the same angle from element to element, computed in T; turnsOf(n) are the turns of n steps,
// for a number or a vector of numbers up to 2 kTurnedBlock. An element is its block's first one turned by one of
// kTurnedBlock fine directions; first ones are turned from block to block in double precision, and computed anew every
// kSeedBlocks blocks: with 8 the error is below 5e-15 of the start's size, with 64 below 1e-14.
template <class T, size_t kSeedBlocks, class TurnsOf>
class Rotation {
 public:
  Rotation(const TurnsOf& turnsOf, Direction start, size_t len) : start_(start), first_(start), turnsOf_(turnsOf) {
    // Powers of two, then by doubling as many as the elements need: those from k on are those below k turned by k.
    alignas(64) static constexpr double kPowers[] = {1, 2, 4, 8, 16, 32, kTurnedBlock, 2 * kTurnedBlock};
    alignas(64) double re[8], im[8];
    for (size_t i = 0; i < 8 && kPowers[i] < static_cast<double>(HWY_MAX(len, 2 * kDoubleLanes)); i += kDoubleLanes) {
      const auto direction = DirectionOf(turnsOf(hn::Load(kDoubles, kPowers + i)));
      hn::Store(direction.re, kDoubles, re + i);
      hn::Store(direction.im, kDoubles, im + i);
    }
    if (len > kTurnedBlock) block_ = {re[6], im[6]};
    fineRe_[0] = 1;
    fineIm_[0] = 0;
    size_t k = 1;
    for (size_t i = 0; k < kTurnedBlock && k < HWY_MAX(len, 2 * kDoubleLanes); k *= 2, ++i) {
      if (k < kDoubleLanes) {
        for (size_t j = 0; j < k; ++j) Turn(kOne, j, k, {re[i], im[i]});
      } else {
        for (size_t j = 0; j < k; j += kDoubleLanes) Turn(kDoubles, j, k, {re[i], im[i]});
      }
    }
    if constexpr (std::is_same_v<T, float>) {
      constexpr hn::Rebind<float, hn::ScalableTag<double>> d;
      for (size_t j = 0; j < k; j += kDoubleLanes) {
        hn::Store(hn::DemoteTo(d, hn::Load(kDoubles, fineRe_ + j)), d, singleRe_ + j);
        hn::Store(hn::DemoteTo(d, hn::Load(kDoubles, fineIm_ + j)), d, singleIm_ + j);
      }
    }
  }

  // Called for n = 0, kTurnedBlock, 2 kTurnedBlock, ... in this order.
  HWY_INLINE void Begin(size_t n) {
    if (n == 0) return;
    first_ = n % (kSeedBlocks * kTurnedBlock) == 0 ? start_.Times(Direction::Of(turnsOf_(n))) : first_.Times(block_);
  }

  // Parts of the block's elements from j on.
  HWY_INLINE auto Re(size_t j) const { return hn::Sub(TimesRe(first_.re, j), TimesIm(first_.im, j)); }
  HWY_INLINE auto Im(size_t j) const { return hn::Add(TimesRe(first_.im, j), TimesIm(first_.re, j)); }

 private:
  static constexpr hn::CappedTag<double, 1> kOne{};

  // The fine directions from j on, turned: those from j + k on.
  template <class D>
  HWY_INLINE void Turn(D d, size_t j, size_t k, Direction by) {
    const auto x = hn::LoadU(d, fineRe_ + j), y = hn::LoadU(d, fineIm_ + j);
    const auto byX = hn::Set(d, by.re), byY = hn::Set(d, by.im);
    hn::StoreU(hn::Sub(hn::Mul(x, byX), hn::Mul(y, byY)), d, fineRe_ + j + k);
    hn::StoreU(hn::Add(hn::Mul(y, byX), hn::Mul(x, byY)), d, fineIm_ + j + k);
  }

  HWY_INLINE auto TimesRe(double factor, size_t j) const { return Product(factor, fineRe_ + j, singleRe_ + j); }
  HWY_INLINE auto TimesIm(double factor, size_t j) const { return Product(factor, fineIm_ + j, singleIm_ + j); }
  static HWY_INLINE auto Product(double factor, const double* fine, const float* single) {
    constexpr hn::ScalableTag<T> d;
    if constexpr (std::is_same_v<T, float>) {
      return hn::Mul(hn::Set(d, static_cast<float>(factor)), hn::Load(d, single));
    } else {
      return hn::Mul(hn::Set(d, factor), hn::Load(d, fine));
    }
  }

  alignas(64) double fineRe_[kTurnedBlock], fineIm_[kTurnedBlock];
  alignas(64) float singleRe_[kTurnedBlock], singleIm_[kTurnedBlock];  // the same, where T is float
  Direction start_, first_, block_;
  TurnsOf turnsOf_;
};

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
