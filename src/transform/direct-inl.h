// FFTs of as many points as there is working memory for: 2^order = R x columns. The columns of R points are transformed
// a vector of columns at a time, and transposed in registers; so that the rest are FFTs down the columns of rows in
// working memory (columns-inl.h). R is kRow, or twice as many; then the upper halves of the rows come after the lower.
#if defined(ORPSP_TRANSFORM_DIRECT_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_TRANSFORM_DIRECT_INL_H_
#undef ORPSP_TRANSFORM_DIRECT_INL_H_
#else
#define ORPSP_TRANSFORM_DIRECT_INL_H_
#endif

#include "frame/parallel.h"
#include "transform/caller_points-inl.h"
#include "transform/columns-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace fft {
namespace {

constexpr int kFirstProductOrder = 14;

// log2 R: that of kRow, but for one more where this saves a pass over more points than the nearer caches hold. (In
// double precision it was slower: sixteen rows of the result, of two lines each, meet in few sets of the caches.)
template <class T>
constexpr bool kMayHalve = sizeof(T) == 4 && 2 * kRow<T> <= size_t{1} << kLargestRadix;
template <class T>
constexpr int firstOrder(int order) {
  constexpr int kRowOrder = static_cast<int>(hwy::CeilLog2(kRow<T>));
  return kRowOrder + (kMayHalve<T> && order >= kFirstProductOrder && (order - kRowOrder) % kLargestRadix == 1);
}
template <class T>
constexpr int columnsOrder(int order) {
  return order - firstOrder<T>(order);
}
// Calls f with R as a constant.
template <class T, class F>
HWY_INLINE void WithFirstCount(int order, const F& f) {
  if constexpr (kMayHalve<T>) {
    if (size_t{1} << firstOrder<T>(order) > kRow<T>) return f(std::integral_constant<size_t, 2 * kRow<T>>{});
  }
  f(std::integral_constant<size_t, kRow<T>>{});
}

// The twiddle factors between rows and columns, exp(-2 pi i k column / 2^order) for each vector of columns and row k >
// 0. From kFirstProductOrder on they are products, so that they need not come through the caches: `table` has them for
// the first vector of columns only, `coarse` one factor for each vector of columns and row.
template <class T>
struct BetweenTwiddles {
  T *table, *coarse, *columns;  // `columns`: those within the columns, which follow

  BetweenTwiddles(int order, T* at) : table(at) {
    const size_t factors = (size_t{2} << firstOrder<T>(order)) - 2;
    const size_t vectors = (size_t{1} << columnsOrder<T>(order)) / kLanes<T>;
    coarse = table + factors * kLanes<T> * (order < kFirstProductOrder ? vectors : 1);
    columns = coarse + (order < kFirstProductOrder ? 0 : factors * vectors);
  }
};

template <class T>
void FillBetween(int order, const QuarterSine<T>& sine, const BetweenTwiddles<T>& between) {
  constexpr size_t kUsed = kLanes<T>;
  const size_t rows = size_t{1} << firstOrder<T>(order);
  T* to = between.table;
  for (size_t column = 0; to != between.coarse; column += kUsed)
    for (size_t k = 1; k < rows; ++k, to += 2 * kUsed)
      for (size_t lane = 0; lane < kUsed; ++lane) {
        const auto w = unitRoot(sine, k * (column + pointOfLane<T>(lane, kUsed)), order);
        to[lane] = w.re;
        to[kUsed + lane] = w.im;
      }
  for (size_t column = 0; to != between.columns; column += kUsed)
    for (size_t k = 1; k < rows; ++k) to = Append(to, unitRoot(sine, k * column, order));
}

// The places of rows: in order, or one row on after each block of 2^blockOrder.
struct InOrder {
  HWY_INLINE size_t operator()(size_t column) const { return column; }
};
struct Skewed {
  int blockOrder;
  HWY_INLINE size_t operator()(size_t column) const { return column + (column >> blockOrder); }
};

// Rows of twice kRow points in working memory, the upper halves `distance` rows after the lower ones.
template <class T>
struct HalvedRows {
  WorkRows<T> rows;
  size_t distance;

  HWY_INLINE size_t At(size_t row, size_t v) const {
    return rows.At(row + v / kRowVectors<T> * distance, v % kRowVectors<T>);
  }
  HWY_INLINE T* Re(size_t row, size_t v) const { return rows.Re(row, v); }
  HWY_INLINE T* Im(size_t row, size_t v) const { return rows.Im(row, v); }
};

// FFTs of columns of kCount points, a vector of columns at a time from group begin to end. Their results become rows of
// kCount points, row place(column) of `rows`.
template <bool isProduct, size_t kCount, class T, class From, class Rows, class Place>
HWY_NOINLINE void IntoRows(const From from, size_t begin, size_t end, const BetweenTwiddles<const T>& between,
                           const Rows rows, const Place place) {
  constexpr Tag<T> d;
  constexpr size_t kUsed = kLanes<T>;
  const T* HWY_RESTRICT twiddles = between.table;
  const T* HWY_RESTRICT coarse = between.coarse + begin * 2 * (kCount - 1);
  T* const HWY_RESTRICT re = rows.Re(0, 0);
  T* const HWY_RESTRICT im = rows.Im(0, 0);
  for (size_t group = begin; group < end; ++group) {
    Parts<Register<T>> x[kCount];
    const From source = from.From(0, group);
    Butterfly<kCount, Parts<Register<T>>>([&](auto n) ORPSP_INLINED { return source.Load(n); },
                                          [&](auto k, Parts<Register<T>> value) ORPSP_INLINED {
                                            if constexpr (k > 0) {
                                              const T* const at = twiddles + 2 * kUsed * (k - 1);
                                              Parts<Register<T>> w = {hn::LoadU(d, at), hn::LoadU(d, at + kUsed)};
                                              if constexpr (isProduct)
                                                w = Times(w, hn::Set(d, coarse[2 * k - 2]),
                                                          hn::Set(d, coarse[2 * k - 1]));
                                              value = Times(value, w);
                                            }
                                            x[k] = value;
                                          });
    if constexpr (isProduct) {
      coarse += 2 * (kCount - 1);
    } else {
      twiddles += 2 * kUsed * (kCount - 1);
    }
    Unrolled<kCount / kUsed>([&](auto v) ORPSP_INLINED {
      const auto at = [&](auto j) ORPSP_INLINED { return rows.At(place(group * kUsed + j), v); };
      TransposePart(
          d, [&](auto i) ORPSP_INLINED { return x[v * kUsed + i].re; },
          [&](auto j, Register<T> part) ORPSP_INLINED { hn::StoreU(part, d, re + at(j)); });
      TransposePart(
          d, [&](auto i) ORPSP_INLINED { return x[v * kUsed + i].im; },
          [&](auto j, Register<T> part) ORPSP_INLINED { hn::StoreU(part, d, im + at(j)); });
    });
  }
}

constexpr int kFirstSharedOrder = 16;  // by threads, which cost some microseconds for each pass

// Calls work(thread, threads) on each of `threads`; alone, without a call.
template <class Work>
HWY_INLINE void Share(int threads, const Work& work) {
  if (HWY_LIKELY(threads < 2)) {
    work(0, 1);
  } else {
    onThreads(threads, [&](int thread, int team) HWY_ATTR { work(thread, team); });
  }
}

// From kFirstProductOrder on blocks of the first pass begin one row further apart than they are long, so that the rows
// of its butterflies are not in the same set of the caches. (Up to order 12 there would be no memory for that.)
template <size_t kCount, class T, class Points, class To>
HWY_INLINE void DirectFrom(const ComplexCall<T>& call, const Points& points, const To& to) {
  constexpr size_t kHalves = kCount / kRow<T>;
  T* const work = static_cast<T*>(call.work);
  const int order = columnsOrder<T>(call.order);
  const size_t columns = size_t{1} << order;
  const BetweenTwiddles<const T> between(call.order, call.twiddles);
  const Radices radices(order);
  const int blockOrder = radices.count > 1 ? order - radices.Of(0) : order;
  const size_t block = size_t{1} << blockOrder, distance = block + (call.order < kFirstProductOrder ? 0 : 1);
  const size_t blocks = columns >> blockOrder, half = blocks * distance;
  const HalvedRows<T> rows{WorkRowsAt(work), half};

  const int threads = call.order < kFirstSharedOrder ? 1 : grantedThreads();

  Share(threads, [&](int thread, int team) ORPSP_INLINED {
    const size_t groups = columns / kLanes<T>, begin = partBegin(groups, thread, team);
    const size_t end = partBegin(groups, thread + 1, team);
    if (kHalves == 1 && call.order < kFirstProductOrder) {
      IntoRows<false, kCount, T>(points.From(0, columns), begin, end, between, rows, InOrder{});
    } else {
      IntoRows<true, kCount, T>(points.From(0, columns), begin, end, between, rows, Skewed{blockOrder});
    }
  });
  if (radices.count > 1) {
    WithRadix<kLeastRadix>(radices.Of(0), [&](auto radix) ORPSP_INLINED {
      Share(threads, [&](int thread, int team) ORPSP_INLINED {
        const size_t begin = partBegin(block, thread, team), end = partBegin(block, thread + 1, team);
        Pass<radix, Twiddles::kAfter, T>(WorkRowsAt(work), WorkRowsAt(work), distance, begin, end, between.columns,
                                         kHalves);
      });
    });
  }
  // The rest block by block, while a block is in the nearer caches, lower and upper half by turns.
  Share(threads, [&](int thread, int team) ORPSP_INLINED {
    for (size_t i = partBegin(blocks * kHalves, thread, team); i < partBegin(blocks * kHalves, thread + 1, team); ++i) {
      const size_t at = i / kHalves, which = i % kHalves;
      T* const begin = WorkRowsAt(work).From(which * half + at * distance, 0).p;
      if (radices.count > 2) MiddlePasses(order, between.columns, begin);
      LastPassTo(order, call.reversed, begin, to(which * kRow<T>, kCount), at * block, (at + 1) * block);
    }
  });
}

}  // namespace
}  // namespace fft
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
