// Steps of a Viterbi decoder for four-dimensional trellis codes.
#include "orpsp/speech/viterbi.h"

#include "frame/check.h"
#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "speech/viterbi.cpp"
#include <hwy/foreach_target.h>

#include "simd/integer-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

constexpr size_t kClasses = 4, kSubsets = 8, kBranches = 4;

// ---- Variants of a point

// The numbers that are 1 (or 3, that is -1) modulo 4, from `least` to `most`: coordinates of a class.
struct Coordinates {
  int16_t least, most;

  Coordinates(int residue, int limit, int fraction)
      : least(At(-limit + (((limit + residue) & 3) == 0 ? 0 : 2), fraction)),
        most(At(limit - (((limit - residue) & 3) == 0 ? 0 : 2), fraction)) {}

  static int16_t At(int coordinate, int fraction) { return static_cast<int16_t>(coordinate * (1 << fraction)); }

  template <class V>
  HWY_INLINE V Clamp(V v) const {
    constexpr hn::DFromV<V> d;
    return hn::Min(hn::Max(v, hn::Set(d, least)), hn::Set(d, most));
  }
};

class Constellation {
 public:
  Constellation(int limit, int fraction)
      : unit_(Coordinates::At(1, fraction)),
        bound_(HWY_MIN((limit + 1) << fraction, 32768)),
        fraction_(fraction),
        plus_(1, limit, fraction),
        minus_(-1, limit, fraction) {}

  // The variants of as many points as the vectors of D, of their coordinates, hold. What was moved is noted.
  template <class D, class V = hn::Vec<D>>
  HWY_INLINE void FindVariants(D d, V received, Orp16sc* points, Orp16u* distances, hn::Mask<D>& moved) const {
    constexpr hn::RepartitionToWide<hn::RebindToUnsigned<D>> dw;
    const auto lowest = hn::Set(d, static_cast<int16_t>(-bound_));
    const auto highest = hn::Set(d, static_cast<int16_t>(HWY_MIN(bound_, 32767)));
    const auto v = hn::Min(hn::Max(received, lowest), highest);
    moved = hn::Or(moved, hn::Ne(v, received));
    // Multiples of four units below, and from there to the residue. What saturates is beyond the last one anyway.
    const auto unit = hn::Set(d, unit_), within = hn::Set(d, static_cast<int16_t>(4 * unit_ - 1));
    const auto plus = plus_.Clamp(hn::Add(hn::AndNot(within, hn::SaturatedAdd(v, unit)), unit));
    const auto threeUnits = hn::Set(d, static_cast<int16_t>(3 * unit_));
    const auto minus = minus_.Clamp(hn::Add(hn::AndNot(within, hn::SaturatedSub(v, unit)), threeUnits));
    const V variants[kClasses] = {plus, hn::OddEven(plus, minus), minus, hn::OddEven(minus, plus)};
    const auto wide = [dw](auto x) HWY_ATTR { return hn::BitCast(dw, x); };
    const auto distance = [&](size_t x) HWY_ATTR { return wide(Distance(hn::Sub(v, variants[x]))); };
    hn::StoreInterleaved4(wide(variants[0]), wide(variants[1]), wide(variants[2]), wide(variants[3]), dw,
                          reinterpret_cast<uint32_t*>(points));
    hn::StoreInterleaved2(hn::Or(distance(0), hn::ShiftLeft<16>(distance(1))),
                          hn::Or(distance(2), hn::ShiftLeft<16>(distance(3))), dw,
                          reinterpret_cast<uint32_t*>(distances));
  }

 private:
  // The square with 8 fraction bits. A coordinate is 3 units at most, so the sum fits whatever the fraction.
  template <class V>
  HWY_INLINE auto Distance(V difference) const {
    const auto square = SumOfPairs(difference, difference);
    if (fraction_ <= 4) return hn::ShiftLeftSame(square, 8 - 2 * fraction_);
    const int excess = 2 * fraction_ - 8;
    return hn::ShiftRightSame(hn::Add(square, hn::Set(hn::DFromV<decltype(square)>{}, 1 << (excess - 1))), excess);
  }

  int16_t unit_;
  int bound_, fraction_;
  Coordinates plus_, minus_;
};

// Variants of src's points from n on while there is a vector of them; what is left of them begins at the result.
template <class D>
HWY_INLINE size_t FindVariantsOfAll(D d, const Constellation& constellation, size_t n, size_t len, const Orp16sc* src,
                                    Orp16sc* points, Orp16u* distances, bool& isMoved) {
  constexpr size_t kPoints = hn::MaxLanes(D{}) / 2;
  auto moved = hn::MaskFromVec(hn::Zero(d));
  for (; n + kPoints <= len; n += kPoints)
    constellation.FindVariants(d, hn::LoadU(d, lanes(src + n)), points + kClasses * n, distances + kClasses * n, moved);
  isMoved |= !hn::AllFalse(d, moved);
  return n;
}

OrpStatus getVarPoint(const Orp16sc* pSrc, Orp16sc* pDstPoints, Orp16u* pDstDistances, int len, int limit,
                      int fraction) {
  ORPS_CHECK_VECTOR(len, pSrc, pDstPoints, pDstDistances);
  ORPS_RETURN_IF(limit <= 0 || limit % 2 == 0 || fraction < 0 || fraction > 13, StsBadArg);
  ORPS_RETURN_IF(limit >= 32768 >> fraction, StsBadArg);
  const Constellation constellation(limit, fraction);
  const size_t count = static_cast<size_t>(len);
  bool isMoved = false;
  constexpr hn::ScalableTag<int16_t> d;
  constexpr hn::FixedTag<int16_t, 8> few;
  const size_t most = FindVariantsOfAll(d, constellation, 0, count, pSrc, pDstPoints, pDstDistances, isMoved);
  const size_t n = FindVariantsOfAll(few, constellation, most, count, pSrc, pDstPoints, pDstDistances, isMoved);
  if (n < count) {
    Orp16sc points[4 * kClasses];
    Orp16u distances[4 * kClasses];
    auto moved = hn::MaskFromVec(hn::Zero(few));
    constellation.FindVariants(few, LoadFew(few, lanes(pSrc + n), 2 * (count - n)), points, distances, moved);
    isMoved |= !hn::AllFalse(few, moved);
    __builtin_memcpy(pDstPoints + kClasses * n, points, kClasses * (count - n) * sizeof(points[0]));
    __builtin_memcpy(pDstDistances + kClasses * n, distances, kClasses * (count - n) * sizeof(distances[0]));
  }
  return isMoved ? StsVarPoint : StsOk;
}

// ---- Symbols of the subsets

OrpStatus buildSymblTable(const Orp16sc* pPoints, const Orp16u* pDistances, Orp16sc* pDstSymbols, Orp16u* pDstMetrics,
                          int len) {
  ORPS_CHECK_VECTOR(len, pPoints, pDistances, pDstSymbols, pDstMetrics);
  constexpr hn::FixedTag<int32_t, 4> d;  // the classes of a point
  constexpr hn::FixedTag<uint16_t, 4> narrow;
  for (size_t n = 0; n < static_cast<size_t>(len); ++n) {
    const auto load = [&](size_t i) HWY_ATTR {
      return hn::LoadU(d, reinterpret_cast<const int32_t*>(pPoints + 2 * kClasses * n + i));
    };
    const auto distance = [&](size_t i) HWY_ATTR {
      return hn::PromoteTo(d, hn::LoadU(narrow, pDistances + 2 * kClasses * n + i));
    };
    const auto first = load(0), second = load(kClasses);
    const auto toFirst = distance(0), toSecond = distance(kClasses);
    // Subsets 2 k and 2 k + 1 have the pairs x, x + k with x = 0 and 1, and those with x = 2 and 3: points x of the
    // first and those of the second turned by k lanes.
    const auto choose = [&](size_t k, auto turned, auto toTurned) HWY_ATTR {
      const auto sums = hn::Add(toFirst, toTurned);
      const auto lower = hn::InterleaveLower(d, sums, sums), upper = hn::InterleaveUpper(d, sums, sums);
      const auto symbols = hn::IfThenElse(hn::Lt(upper, lower), hn::InterleaveUpper(d, first, turned),
                                          hn::InterleaveLower(d, first, turned));
      hn::StoreU(symbols, d, reinterpret_cast<int32_t*>(pDstSymbols + 2 * kSubsets * n + 4 * k));
      return hn::Min(lower, upper);
    };
    const auto least0 = choose(0, second, toSecond);
    const auto least1 = choose(1, hn::Shuffle0321(second), hn::Shuffle0321(toSecond));
    const auto least2 = choose(2, hn::Shuffle1032(second), hn::Shuffle1032(toSecond));
    const auto least3 = choose(3, hn::Shuffle2103(second), hn::Shuffle2103(toSecond));
    constexpr hn::FixedTag<uint16_t, 8> all;
    hn::StoreU(PackToUnsigned(hn::ConcatEven(d, least1, least0), hn::ConcatEven(d, least3, least2)), all,
               pDstMetrics + kSubsets * n);
  }
  return StsOk;
}

// ---- Path metrics

constexpr size_t kMostStates = 8192;

template <class D>
HWY_INLINE hn::Vec<D> Load(D d, const Orp16u* p, size_t count) {
  return HWY_LIKELY(count >= hn::MaxLanes(D{})) ? hn::LoadU(d, p) : LoadFew(d, p, count);
}
template <class D>
HWY_INLINE void Store(hn::Vec<D> v, D d, Orp16u* p, size_t count) {
  if (HWY_LIKELY(count >= hn::MaxLanes(D{}))) {
    hn::StoreU(v, d, p);
  } else {
    StoreFew(v, d, p, count);
  }
}

// A table that shuffles pick from, 8 elements at a time. A place beyond these gets what a shuffle finds for the place
// modulo 8, so the next block is held as its difference from the one before: places that reach it correct themselves
// by it. Shuffles give zero for negative places.
class ShuffledTable {
 public:
  static constexpr size_t kBlock = 8;
  static constexpr size_t kMost = HWY_MIN(2 * HWY_MAX_BYTES, 64);  // 64 is all that signed bytes allow

  HWY_INLINE ShuffledTable(const Orp16u* elements, size_t count) : blocks_((count + kBlock - 1) / kBlock) {
    constexpr hn::FixedTag<uint16_t, kBlock> d;
    auto before = hn::Zero(d);
    for (size_t k = 0; k < blocks_; ++k) {
      const auto block = HWY_NAMESPACE::Load(d, elements + kBlock * k, count - kBlock * k);
      hn::Store(hn::Xor(block, before), d, changes_ + kBlock * k);
      before = block;
    }
  }

  template <class V, class D = hn::DFromV<V>>
  HWY_INLINE V At(V indexes) const {
    constexpr hn::Repartition<int8_t, D> bytes;
    // The places of both bytes of an element.
    auto places = hn::BitCast(bytes, hn::Add(hn::Mul(indexes, hn::Set(D{}, 0x0202)), hn::Set(D{}, 0x0100)));
    auto found = hn::TableLookupBytesOr0(Block(bytes, 0), places);
    for (size_t k = 1; k < blocks_; ++k) {
      places = hn::Sub(places, hn::Set(bytes, 2 * kBlock));
      found = hn::Xor(found, hn::TableLookupBytesOr0(Block(bytes, k), places));
    }
    return hn::BitCast(D{}, found);
  }

 private:
  template <class D>
  HWY_INLINE hn::Vec<D> Block(D d, size_t k) const {
    return hn::LoadDup128(d, reinterpret_cast<const int8_t*>(changes_ + kBlock * k));
  }

  alignas(16) Orp16u changes_[kMost];
  size_t blocks_;
};

struct LargeTable {
  const Orp16u* elements;

  template <class V, class D = hn::DFromV<V>>
  HWY_INLINE V At(V indexes) const {
    alignas(64) Orp16u lanes[hn::MaxLanes(D{})];
    hn::Store(indexes, D{}, lanes);
    for (Orp16u& lane : lanes) lane = get(elements + lane);
    return hn::Load(D{}, lanes);
  }
};

template <class V>
HWY_INLINE V Smaller(V a, V b) {
  return hn::Sub(a, hn::SaturatedSub(a, b));
}

template <class V>
HWY_INLINE Orp16u LeastOf(V v) {
  constexpr hn::DFromV<V> d;
  if constexpr (hn::MaxLanes(d) > 8) {
    return LeastOf(Smaller(hn::LowerHalf(v), hn::UpperHalf(hn::Half<decltype(d)>{}, v)));
  } else {
    return hn::GetLane(hn::MinOfLanes(d, v));
  }
}

// Every state's best branch and its sum. The result is the least sum.
template <class D, class Table>
HWY_INLINE Orp16u ChooseBranches(D d, const Table& metrics, const ShuffledTable& branchMetrics, const Orp16u* trellis,
                                 size_t states, Orp16u* sums, Orp16u* paths) {
  const auto sumOf = [&](auto branches) HWY_ATTR {
    const auto subsets = hn::And(branches, hn::Set(d, kSubsets - 1));
    return hn::SaturatedAdd(metrics.At(hn::ShiftRight<3>(branches)), branchMetrics.At(subsets));
  };
  auto least = hn::Set(d, 0xFFFF);
  for (size_t s = 0; s < states; s += hn::MaxLanes(D{})) {
    const size_t count = states - s;
    auto chosen = Load(d, trellis + s, count);
    auto sum = sumOf(chosen);
    for (size_t b = 1; b < kBranches; ++b) {
      const auto branches = Load(d, trellis + b * states + s, count);
      const auto gain = hn::SaturatedSub(sum, sumOf(branches));
      chosen = hn::IfThenElse(hn::Eq(gain, hn::Zero(d)), chosen, branches);
      sum = hn::Sub(sum, gain);
    }
    if (HWY_UNLIKELY(count < hn::MaxLanes(D{}))) sum = hn::IfThenElse(hn::FirstN(d, count), sum, hn::Set(d, 0xFFFF));
    least = Smaller(least, sum);
    Store(chosen, d, paths + s, count);
    hn::Store(sum, d, sums + s);
  }
  return LeastOf(least);
}

template <class D>
HWY_INLINE OrpStatus Update(D d, const Orp16u* branchMetrics, const Orp16u* trellis, const Orp16u* src, Orp16u* dst,
                            Orp16u* paths, size_t states, int* bestState) {
  constexpr size_t kStep = hn::MaxLanes(D{});
  const auto last = hn::Set(d, static_cast<Orp16u>(kSubsets * states - 1));
  auto beyond = hn::Zero(d);
  for (size_t i = 0; i < kBranches * states; i += kStep)
    beyond = hn::Or(beyond, hn::SaturatedSub(Load(d, trellis + i, kBranches * states - i), last));
  ORPS_RETURN_IF(!hn::AllTrue(d, hn::Eq(beyond, hn::Zero(d))), StsBadArg);

  alignas(64) Orp16u sums[kMostStates];
  const ShuffledTable ofBranches(branchMetrics, kSubsets);
  const Orp16u least = states <= ShuffledTable::kMost
                           ? ChooseBranches(d, ShuffledTable(src, states), ofBranches, trellis, states, sums, paths)
                           : ChooseBranches(d, LargeTable{src}, ofBranches, trellis, states, sums, paths);

  intptr_t best = -1;
  for (size_t s = 0; s < states; s += kStep) {
    const auto rest = hn::Sub(hn::Load(d, sums + s), hn::Set(d, least));
    if (best < 0) {
      const auto first = hn::FindFirstTrue(d, hn::Eq(rest, hn::Zero(d)));
      if (first >= 0) best = static_cast<intptr_t>(s) + first;
    }
    Store(rest, d, dst + s, states - s);
  }
  put(bestState, static_cast<int>(best));
  return StsOk;
}

OrpStatus updatePathMetrics(const Orp16u* pBranchMetrics, const Orp16u* pTrellis, const Orp16u* pSrcMetrics,
                            Orp16u* pDstMetrics, Orp16u* pDstPaths, int nStates, int* pBestState) {
  ORPS_CHECK_VECTOR(nStates, pBranchMetrics, pTrellis, pSrcMetrics, pDstMetrics, pDstPaths, pBestState);
  const size_t states = static_cast<size_t>(nStates);
  ORPS_RETURN_IF(states > kMostStates, StsBadSize);
  constexpr hn::ScalableTag<uint16_t> d;
  constexpr hn::CappedTag<uint16_t, 16> shorter;  // full vectors for codes of 16 states
  return states <= 16
             ? Update(shorter, pBranchMetrics, pTrellis, pSrcMetrics, pDstMetrics, pDstPaths, states, pBestState)
             : Update(d, pBranchMetrics, pTrellis, pSrcMetrics, pDstMetrics, pDstPaths, states, pBestState);
}

// ---- Decisions

OrpStatus calcStates(const Orp16u* pPaths, const Orp16sc* pSymbols, Orp16sc* pDst, int len, int nStates, int depth,
                     int row, int state) {
  ORPS_RETURN_IF(anyNull(pPaths, pSymbols, pDst), StsNullPtr);
  ORPS_RETURN_IF(nStates < 1 || nStates > static_cast<int>(kMostStates) || depth < 1 || len < 1 || len > depth,
                 StsBadSize);
  ORPS_RETURN_IF(row < 0 || row >= depth || state < 0 || state >= nStates, StsBadArg);
  const size_t states = static_cast<size_t>(nStates), rows = static_cast<size_t>(depth);
  struct Place {
    size_t row, state;
  };
  // Goes back by `count` symbols, and writes them in front of `end` if there is one. False if a branch comes from no
  // state.
  const auto goBack = [=](Place& at, size_t count, Orp16sc* end) HWY_ATTR {
    for (; count > 0; --count) {
      const size_t branch = get(pPaths + at.row * states + at.state);
      if (end != nullptr) {
        end -= 2;
        __builtin_memcpy(end, pSymbols + 2 * (kSubsets * at.row + branch % kSubsets), 2 * sizeof(*end));
      }
      at = {(at.row == 0 ? rows : at.row) - 1, branch / kSubsets};
      if (at.state >= states) return false;
    }
    return true;
  };
  const size_t count = static_cast<size_t>(len);
  Place at = {static_cast<size_t>(row), static_cast<size_t>(state)};
  ORPS_RETURN_IF(!goBack(at, rows - count, nullptr), StsBadArg);
  Place probe = at;  // all branches are seen before anything is written
  ORPS_RETURN_IF(!goBack(probe, count, nullptr), StsBadArg);
  goBack(at, count, pDst + 2 * count);
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/viterbi.inc"
#include "frame/exports-inl.h"
