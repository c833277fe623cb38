// FFTs of few points, up to 2^kSmallOrder<T>: in registers, or as rows and columns with the points between them on the
// stack. No tables but those that the compiler makes.
#if defined(ORPSP_TRANSFORM_SMALL_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_TRANSFORM_SMALL_INL_H_
#undef ORPSP_TRANSFORM_SMALL_INL_H_
#else
#define ORPSP_TRANSFORM_SMALL_INL_H_
#endif

#include "transform/caller_points-inl.h"
#include "transform/columns-inl.h"
#include "transform/exact_sine.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace fft {
namespace {

// ---- Twiddle factors, computed by the compiler

// exp(-2 pi i k / 2^order)
template <class T>
constexpr UnitRoot<T> smallRoot(unsigned k, int order) {
  const unsigned quarter = 1u << (order - 2), rest = k % quarter;
  UnitRoot<T> w{static_cast<T>(exactSine(quarter - rest, order)), static_cast<T>(-exactSine(rest, order))};
  for (unsigned turns = k / quarter % 4; turns > 0; --turns) w = {w.im, -w.re};
  return w;
}

// 2^order points as `rows` rows of `columns` points, of which `lanes` at a time are transformed.
template <int order, class T>
struct SmallShape {
  static constexpr size_t kRows = size_t{1} << (order + 1) / 2, kColumns = size_t{1} << order / 2;
  static constexpr size_t kLanesUsed = HWY_MIN(kLanes<T>, kColumns);
};

// For each group of columns and row k > 0 a vector of points exp(-2 pi i k column / 2^order).
template <int order, class T>
struct SmallTwiddles {
  using Shape = SmallShape<order, T>;
  alignas(64) T value[2 * Shape::kColumns * (Shape::kRows - 1)];

  constexpr SmallTwiddles() : value() {
    constexpr size_t lanes = Shape::kLanesUsed;
    size_t at = 0;
    for (size_t column = 0; column < Shape::kColumns; column += lanes)
      for (size_t k = 1; k < Shape::kRows; ++k, at += 2 * lanes)
        for (size_t lane = 0; lane < lanes; ++lane) {
          const auto w = smallRoot<T>(static_cast<unsigned>(k * (column + pointOfLane<T>(lane, lanes))), order);
          value[at + lane] = w.re;
          value[at + lanes + lane] = w.im;
        }
  }
};
template <int order, class T>
inline constexpr SmallTwiddles<order, T> kSmallTwiddles;

// ---- In vectors of pairs as they stand in memory: a column for each pair of a vector, in 4, 8 or 16 rows

// Pairs of a vector: two or four, or eight of float in the widest vectors, where there are points enough.
template <int order, class T>
constexpr size_t kColumnsOfPairs = order >= 6 && kLanes<T> == 16 ? 8 : HWY_MIN(kLanes<T> / 2, 4);
// More rows than 16, or more than 8 of them in 16 registers, are better off as planes.
template <class T>
constexpr int kLargestPairedOrder = kLanes<T> == 16  ? 7
                                    : kLanes<T> == 4 ? 3
                                    : sizeof(T) == 8 ? 6
                                                     : 5;

// Twiddle factors, row by row from the second: real parts twice, imaginary parts, the first one of two negated.
template <int order, class T, bool isInverse>
struct PairedTwiddles {
  static constexpr size_t kColumns = kColumnsOfPairs<order, T>, kRows = (size_t{1} << order) / kColumns;
  alignas(64) T value[4 * kColumns * (kRows - 1)];

  constexpr PairedTwiddles() : value() {
    for (size_t k = 1; k < kRows; ++k)
      for (size_t column = 0; column < kColumns; ++column) {
        const auto w = smallRoot<T>(static_cast<unsigned>(k * column), order);
        T* const to = value + 4 * kColumns * (k - 1) + 2 * column;
        to[0] = to[1] = w.re;
        to[2 * kColumns] = isInverse ? w.im : -w.im;
        to[2 * kColumns + 1] = -to[2 * kColumns];
      }
  }
};
template <int order, class T, bool isInverse>
inline constexpr PairedTwiddles<order, T, isInverse> kPairedTwiddles;

template <size_t count, class P>
HWY_INLINE void TransposePairs(P* x) {
  using V = decltype(P::pairs);
  constexpr hn::DFromV<V> d;
  if constexpr (sizeof(hn::TFromV<V>) == 8 && count == 2) {
    TransposeBlocks(x[0].pairs, x[1].pairs);
  } else if constexpr (sizeof(hn::TFromV<V>) == 8) {
    TransposeBlocks(x[0].pairs, x[1].pairs, x[2].pairs, x[3].pairs);
  } else {
    constexpr hn::RepartitionToWide<decltype(d)> wide;
    hn::Vec<decltype(wide)> row[count];
    Unrolled<count>([&](auto i) ORPSP_INLINED { row[i] = hn::BitCast(wide, x[i].pairs); });
    Transpose(row);
    Unrolled<count>([&](auto i) ORPSP_INLINED { x[i].pairs = hn::BitCast(d, row[i]); });
  }
}

template <int order, bool isScaled, class T, class From, class To>
HWY_INLINE void PairedTransform(const From& from, const To& to, T factor) {
  constexpr bool isInverse = From::kIsSwapped;
  constexpr size_t kColumns = kColumnsOfPairs<order, T>, kRows = (size_t{1} << order) / kColumns;
  constexpr hn::CappedTag<T, 2 * kColumns> d;
  using P = Paired<hn::Vec<decltype(d)>, isInverse>;
  P x[kRows];
  Butterfly<kRows, P>([&](auto n) ORPSP_INLINED { return P{from.LoadPaired(d, kColumns * n)}; },
                      [&](auto k, P value) ORPSP_INLINED {
                        if constexpr (k > 0) {
                          const T* const w = kPairedTwiddles<order, T, isInverse>.value + 4 * kColumns * (k - 1);
                          value = Times(value, hn::Load(d, w), hn::Load(d, w + 2 * kColumns));
                        }
                        x[k] = value;
                      });
  Unrolled<kRows / kColumns>([&](auto group) ORPSP_INLINED {
    P* const g = x + kColumns * group;
    TransposePairs<kColumns>(g);
    Butterfly<kColumns, P>([&](auto n) ORPSP_INLINED { return g[n]; },
                           [&](auto k, P value) ORPSP_INLINED {
                             to.StorePaired(d, MaybeScaled<isScaled>(value, factor).pairs,
                                            k * kRows + kColumns * group);
                           });
  });
}

// Two rows of four. Lanes are named by pairs: a vector holds four.
struct EvenPairs {  // of a and b, by turns
  static constexpr size_t pick(size_t i, size_t lanes) { return i / 4 * 4 + i % 2 + (i % 4 < 2 ? 0 : lanes); }
};
struct OddPairs {
  static constexpr size_t pick(size_t i, size_t lanes) { return EvenPairs::pick(i, lanes) + 2; }
};
struct OtherHalf {
  static constexpr size_t pick(size_t i, size_t lanes) { return (i + lanes / 2) % lanes; }
};
struct PartsSwappedAbove {  // in the upper half
  static constexpr size_t pick(size_t i, size_t lanes) { return i < lanes / 2 ? i : i ^ 1; }
};
template <class T, bool isInverse>
struct EightConstants {
  alignas(64) T re[8] = {}, im[8] = {}, halves[8] = {}, turns[8] = {};
  constexpr EightConstants() {
    for (unsigned i = 0; i < 8; ++i) {
      const auto w = smallRoot<T>(i / 2, 3);
      re[i] = w.re;
      im[i] = (i % 2 == 0) == isInverse ? w.im : -w.im;
      halves[i] = i < 4 ? 1 : -1;
      turns[i] = i < 4 || (i % 2 == 0) != isInverse ? 1 : -1;
    }
  }
};
template <class T, bool isInverse>
inline constexpr EightConstants<T, isInverse> kEight;

template <bool isScaled, class T, class From, class To>
HWY_INLINE void EightPoints(const From& from, const To& to, T factor) {
  constexpr bool isInverse = From::kIsSwapped;
  constexpr hn::CappedTag<T, 8> d;
  using V = hn::Vec<decltype(d)>;
  using P = Paired<V, isInverse>;
  const auto& constants = kEight<T, isInverse>;
  const V lower = from.LoadPaired(d, 0), upper = from.LoadPaired(d, 4);
  const V even = hn::Add(lower, upper);
  const V odd = Times(P{hn::Sub(lower, upper)}, hn::Load(d, constants.re), hn::Load(d, constants.im)).pairs;
  const auto addHalves = [&](V v) ORPSP_INLINED {
    return hn::MulAdd(v, hn::Load(d, constants.halves), Shuffled<OtherHalf>(v, v));
  };
  const V a = addHalves(Shuffled<EvenPairs>(even, odd)), b = addHalves(Shuffled<OddPairs>(even, odd));
  const V turned = Shuffled<PartsSwappedAbove>(b, b), turns = hn::Load(d, constants.turns);
  const P first{hn::MulAdd(turned, turns, a)}, second{hn::NegMulAdd(turned, turns, a)};
  to.StorePaired(d, MaybeScaled<isScaled>(first, factor).pairs, 0);
  to.StorePaired(d, MaybeScaled<isScaled>(second, factor).pairs, 4);
}

// ---- The transform

// Calls f(i) for i < count. Loops are unrolled where there is little to do.
template <int order, size_t count, class F>
HWY_INLINE void Repeat(const F& f) {
  if constexpr (order <= 5) {
    Unrolled<count>(f);
  } else {
    for (size_t i = 0; i < count; ++i) f(i);
  }
}

template <int order, bool isScaled, class T, class From, class To>
HWY_INLINE void SmallTransform(const From& from, const To& to, T factor) {
  if constexpr (kLanes<T> >= 8 && order == 3) {
    EightPoints<isScaled>(from, to, factor);
  } else if constexpr (kLanes<T> >= 4 && order >= 3 && order <= kLargestPairedOrder<T>) {
    PairedTransform<order, isScaled>(from, to, factor);
  } else if constexpr (order < 4) {
    constexpr hn::CappedTag<T, 1> d;
    using V = hn::Vec<decltype(d)>;
    Parts<V> x[size_t{1} << order];
    Dft<(size_t{1} << order), 0, 1>([&](auto n) ORPSP_INLINED { return from.Load(d, n); }, x);
    Unrolled<(size_t{1} << order)>([&](auto k) ORPSP_INLINED { to.Store(d, MaybeScaled<isScaled>(x[k], factor), k); });
  } else {
    using Shape = SmallShape<order, T>;
    constexpr size_t kRows = Shape::kRows, kColumns = Shape::kColumns, kUsed = Shape::kLanesUsed;
    constexpr hn::CappedTag<T, kUsed> d;
    using V = hn::Vec<decltype(d)>;

    Parts<V> row[kColumns][kRows / kUsed];  // column by column, row k in lane and vector
    Repeat<order, kColumns / kUsed>([&](auto group) ORPSP_INLINED {
      Parts<V> x[kRows];
      Butterfly<kRows, Parts<V>>([&](auto n) ORPSP_INLINED { return from.Load(d, n * kColumns + group * kUsed); },
                                 [&](auto k, Parts<V> value) ORPSP_INLINED {
                                   if constexpr (k > 0) {
                                     const T* const w =
                                         kSmallTwiddles<order, T>.value + 2 * kUsed * (group * (kRows - 1) + k - 1);
                                     value = Times(value, {hn::Load(d, w), hn::Load(d, w + kUsed)});
                                   }
                                   x[k] = value;
                                 });
      Unrolled<kRows / kUsed>([&](auto v) ORPSP_INLINED {
        const auto at = [&](auto j) ORPSP_INLINED -> Parts<V>& { return row[group * kUsed + j][v]; };
        TransposePart(
            d, [&](auto i) ORPSP_INLINED { return x[v * kUsed + i].re; },
            [&](auto j, V re) ORPSP_INLINED { at(j).re = re; });
        TransposePart(
            d, [&](auto i) ORPSP_INLINED { return x[v * kUsed + i].im; },
            [&](auto j, V im) ORPSP_INLINED { at(j).im = im; });
      });
    });
    Repeat<order, kRows / kUsed>([&](auto v) ORPSP_INLINED {
      Butterfly<kColumns, Parts<V>>([&](auto n) ORPSP_INLINED { return row[n][v]; },
                                    [&](auto k, Parts<V> value) ORPSP_INLINED {
                                      to.Store(d, MaybeScaled<isScaled>(value, factor), k * kRows + v * kUsed);
                                    });
    });
  }
}

}  // namespace
}  // namespace fft
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
