// FFTs of columns: of kRow<T> adjacent columns at once, whose points pass through butterflies as the lanes of vectors.
//
// A row of columns in working memory is kRow points: for each of its vectors the real parts and then the imaginary
// parts. Passes decimate in frequency: a block of radix * m rows turns, in place, into `radix` blocks of m rows, until
// the last pass takes blocks of one radix and puts its rows where they belong. [Gentleman and Sande 1966: Fast Fourier
// transforms for fun and profit, AFIPS 29]
#if defined(ORPSP_TRANSFORM_COLUMNS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_TRANSFORM_COLUMNS_INL_H_
#undef ORPSP_TRANSFORM_COLUMNS_INL_H_
#else
#define ORPSP_TRANSFORM_COLUMNS_INL_H_
#endif

#include <algorithm>

#include "transform/butterfly-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

template <class T>
using Lanes = hn::ScalableTag<T>;
template <class T>
using Vector = hn::Vec<Lanes<T>>;
template <class T>
constexpr size_t kLanes = HWY_MAX_BYTES / sizeof(T);
// Columns of a row: whole vectors, and one or two lines of the cache.
template <class T>
constexpr size_t kRow = HWY_MAX(kLanes<T>, 8);
template <class T>
constexpr size_t kRowVectors = kRow<T> / kLanes<T>;

// ---- Where rows are

template <class T>
HWY_INLINE void PrefetchLine(const T* p) {
  __builtin_prefetch(p);
}

// Rows of vectors of points at any distances: working memory, or the caller's memory between passes. (The order of
// lanes stays as it is.)
template <class T>
struct Grid {
  T *re, *im;
  size_t rowStep, vectorStep;

  HWY_INLINE size_t At(size_t row, size_t v) const { return row * rowStep + v * vectorStep; }
  HWY_INLINE T* Re(size_t row, size_t v) const { return re + At(row, v); }
  HWY_INLINE T* Im(size_t row, size_t v) const { return im + At(row, v); }
  HWY_INLINE Points<Vector<T>> Load(size_t row, size_t v) const {
    return {hn::LoadU(Lanes<T>{}, Re(row, v)), hn::LoadU(Lanes<T>{}, Im(row, v))};
  }
  HWY_INLINE void Store(size_t row, size_t v, Points<Vector<T>> x) const {
    hn::StoreU(x.re, Lanes<T>{}, Re(row, v));
    hn::StoreU(x.im, Lanes<T>{}, Im(row, v));
  }
  HWY_INLINE Grid From(size_t row) const { return {re + row * rowStep, im + row * rowStep, rowStep, vectorStep}; }
  HWY_INLINE void Prefetch(size_t row) const {
    for (size_t v = 0; v < kRowVectors<T>; ++v) {
      PrefetchLine(Re(row, v));
      PrefetchLine(Im(row, v));
    }
  }
  // Of a grid that is one long row of consecutive points: rows `step` points apart, from a point on, which is a
  // multiple of the lanes.
  HWY_INLINE Grid Columns(size_t point, size_t step) const {
    const size_t unit = vectorStep / kLanes<T>;
    return {re + point * unit, im + point * unit, step * unit, vectorStep};
  }
};

// Rows in working memory, one after the other.
template <class T>
struct WorkRows {
  T* p;

  static constexpr size_t At(size_t row, size_t v) { return row * 2 * kRow<T> + v * 2 * kLanes<T>; }
  HWY_INLINE T* Re(size_t row, size_t v) const { return p + At(row, v); }
  HWY_INLINE T* Im(size_t row, size_t v) const { return p + At(row, v) + kLanes<T>; }
  HWY_INLINE Points<Vector<T>> Load(size_t row, size_t v) const {
    return {hn::LoadU(Lanes<T>{}, Re(row, v)), hn::LoadU(Lanes<T>{}, Im(row, v))};
  }
  HWY_INLINE void Store(size_t row, size_t v, Points<Vector<T>> x) const {
    hn::StoreU(x.re, Lanes<T>{}, Re(row, v));
    hn::StoreU(x.im, Lanes<T>{}, Im(row, v));
  }
  HWY_INLINE WorkRows From(size_t row) const { return {p + At(row, 0)}; }
};
template <class T>
HWY_INLINE WorkRows<T> workRows(T* work) {
  return {work};
}

// Rows of pairs; isSwapped: imaginary part first.
template <class T, bool isSwapped>
struct PairRows {
  using Element = std::remove_const_t<T>;
  T* p;
  size_t rowStep;

  HWY_INLINE Points<Vector<Element>> Load(size_t row, size_t v) const {
    const auto x = LoadPairs(Lanes<Element>{}, p + row * rowStep + v * 2 * kLanes<Element>);
    if constexpr (isSwapped) return {x.im, x.re};
    return x;
  }
  HWY_INLINE void Store(size_t row, size_t v, Points<Vector<Element>> x) const {
    if constexpr (isSwapped) x = {x.im, x.re};
    StorePairs(Lanes<Element>{}, x, p + row * rowStep + v * 2 * kLanes<Element>);
  }
  HWY_INLINE PairRows From(size_t row) const { return {p + row * rowStep, rowStep}; }
  HWY_INLINE void Prefetch(size_t row) const {
    constexpr size_t kLine = 64 / sizeof(Element);
    for (size_t i = 0; i < 2 * kRow<Element>; i += kLine) PrefetchLine(p + row * rowStep + i);
  }
};

// Rows of two arrays.
template <class T>
struct PlaneRows {
  using Element = std::remove_const_t<T>;
  T *re, *im;
  size_t rowStep;

  HWY_INLINE Points<Vector<Element>> Load(size_t row, size_t v) const {
    const size_t at = row * rowStep + v * kLanes<Element>;
    return {LoadPart(Lanes<Element>{}, re + at), LoadPart(Lanes<Element>{}, im + at)};
  }
  HWY_INLINE void Store(size_t row, size_t v, Points<Vector<Element>> x) const {
    const size_t at = row * rowStep + v * kLanes<Element>;
    StorePart(Lanes<Element>{}, x.re, re + at);
    StorePart(Lanes<Element>{}, x.im, im + at);
  }
  HWY_INLINE PlaneRows From(size_t row) const { return {re + row * rowStep, im + row * rowStep, rowStep}; }
  HWY_INLINE void Prefetch(size_t row) const {
    PrefetchLine(re + row * rowStep);
    PrefetchLine(im + row * rowStep);
  }
};

// What goes to `rows`, times a factor.
template <class T, class Rows>
struct ScaledRows {
  Rows rows;
  T factor;
  HWY_INLINE void Store(size_t row, size_t v, Points<Vector<T>> x) const { rows.Store(row, v, TimesReal(x, factor)); }
  HWY_INLINE ScaledRows From(size_t row) const { return {rows.From(row), factor}; }
};

// What comes from `rows`, times a twiddle factor: the product of one for the row and the column of the group, and one
// for the row and the group.
template <class T, class Rows>
struct TwiddledRows {
  Rows rows;
  const T *fine, *coarse;
  HWY_INLINE Points<Vector<T>> Load(size_t row, size_t v) const {
    const auto w = Times(workRows(const_cast<T*>(fine)).Load(row, v), hn::Set(Lanes<T>{}, coarse[2 * row]),
                         hn::Set(Lanes<T>{}, coarse[2 * row + 1]));
    return Times(rows.Load(row, v), w);
  }
  HWY_INLINE void Prefetch(size_t row) const { rows.Prefetch(row); }
};

// Rows (b, c), b slower, that stand in the order (c, b).
template <class Rows>
struct ExchangedRows {
  Rows rows;
  int orderB, orderC;
  HWY_INLINE size_t Place(size_t row) const {
    return ((row & ((size_t{1} << orderC) - 1)) << orderB) + (row >> orderC);
  }
  HWY_INLINE auto Load(size_t row, size_t v) const { return rows.Load(Place(row), v); }
  HWY_INLINE void Prefetch(size_t row) const { rows.Prefetch(Place(row)); }
};

// ---- Passes

// The radices of 2^order points, 2^3 or more: as few as there can be, the smaller ones first. So the first of several
// is at least kLargestRadix / 4, the last at least half the largest.
constexpr int kLargestRadix = HWY_TARGET == HWY_SSSE3 ? 3 : 4;  // as a power of two
struct Radices {
  int count, lesser, lesserCount;
  explicit Radices(int order)
      : count((order + kLargestRadix - 1) / kLargestRadix), lesser(order / count), lesserCount(count - order % count) {}
  int Of(int pass) const { return pass < lesserCount ? lesser : lesser + 1; }
  int Last() const { return Of(count - 1); }
};

constexpr size_t kAhead = 2;  // butterflies, of prefetches

// One pass of one block: rows p + m n of `from` become rows p + m k of `to`. (With one row there are no twiddles.)
// isFar: rows of `from` are far from each other, where the hardware does not see which come next.
template <size_t radix, bool hasTwiddles, bool isFar, class T, class From, class To>
HWY_INLINE void Pass(const From& from, const To& to, size_t m, const T* HWY_RESTRICT twiddles) {
  for (size_t p = 0; p < m; ++p, twiddles += 2 * (radix - 1)) {
    if constexpr (isFar) Unrolled<radix>([&](auto n) ORPSP_INLINED { from.Prefetch(p + kAhead + m * n); });
    for (size_t v = 0; v < kRowVectors<T>; ++v) {
      Butterfly<radix, Points<Vector<T>>>([&](auto n) ORPSP_INLINED { return from.Load(p + m * n, v); },
                                          [&](auto k, Points<Vector<T>> x) ORPSP_INLINED {
                                            if constexpr (hasTwiddles && k > 0) {
                                              constexpr Lanes<T> d;
                                              x = Times(x, hn::Set(d, twiddles[2 * k - 2]),
                                                        hn::Set(d, twiddles[2 * k - 1]));
                                            }
                                            to.Store(p + m * k, v, x);
                                          });
    }
  }
}

// One pass that decimates in time: rows p + m n of `from`, times exp(-2 pi i n p / (radix m)), become rows p + m k of
// `to`, for p from begin to end.
template <size_t radix, class T, class From, class To>
HWY_NOINLINE void TimePass(const From& from, const To& to, size_t m, size_t begin, size_t end,
                           const T* HWY_RESTRICT twiddles) {
  twiddles += begin * 2 * (radix - 1);
  for (size_t p = begin; p < end; ++p, twiddles += 2 * (radix - 1)) {
    for (size_t v = 0; v < kRowVectors<T>; ++v) {
      Butterfly<radix, Points<Vector<T>>>(
          [&](auto n) ORPSP_INLINED {
            const auto x = from.Load(p + m * n, v);
            constexpr Lanes<T> d;
            if constexpr (n == 0)
              return x;
            else
              return Times(x, hn::Set(d, twiddles[2 * n - 2]), hn::Set(d, twiddles[2 * n - 1]));
          },
          [&](auto k, Points<Vector<T>> x) ORPSP_INLINED { to.Store(p + m * k, v, x); });
    }
  }
}

// The last pass, blocks begin to end of `blocks` in all: of `radix` rows, which begin at `work`, each one's rows into
// rows reversed[block] + blocks k.
template <size_t radix, class T, class To>
HWY_NOINLINE void LastPass(const T* work, const To& to, size_t begin, size_t end, size_t blocks,
                           const int32_t* HWY_RESTRICT reversed) {
  const auto from = workRows(const_cast<T*>(work));
  for (size_t block = begin; block < end; ++block) {
    const auto rows = to.From(static_cast<size_t>(reversed[block]));
    for (size_t v = 0; v < kRowVectors<T>; ++v) {
      Butterfly<radix, Points<Vector<T>>>(
          [&](auto n) ORPSP_INLINED { return from.Load((block - begin) * radix + n, v); },
          [&](auto k, Points<Vector<T>> x) ORPSP_INLINED { rows.Store(k * blocks, v, x); });
    }
  }
}

// Calls f with the radix as a constant: one of those from 2^least on.
template <int least, class F>
HWY_INLINE void withRadix(int order, F&& f) {
  if constexpr (least < kLargestRadix) {
    if (order == least) return f(std::integral_constant<size_t, (size_t{1} << least)>{});
    withRadix<least + 1>(order, f);
  } else {
    f(std::integral_constant<size_t, (size_t{1} << kLargestRadix)>{});
  }
}
constexpr int kLeastRadix = 2, kLeastLastRadix = kLargestRadix - 1;

// Passes that are not inlined, so that there is one of each.
template <size_t radix, class T, class From>
HWY_NOINLINE void FirstPass(const From& from, T* work, size_t m, const T* twiddles) {
  Pass<radix, true, true, T>(from, workRows(work), m, twiddles);
}
// In place, in rows p + n stride / row for p from begin to end.
template <size_t radix, class T>
HWY_NOINLINE void WorkPass(T* block, size_t stride, size_t begin, size_t end, const T* HWY_RESTRICT twiddles) {
  constexpr Lanes<T> d;
  twiddles += begin * 2 * (radix - 1);
  for (size_t p = begin; p < end; ++p, twiddles += 2 * (radix - 1)) {
    for (size_t v = 0; v < kRowVectors<T>; ++v) {
      T* const at = block + p * 2 * kRow<T> + v * 2 * kLanes<T>;
      Butterfly<radix, Points<Vector<T>>>(
          [&](auto n) ORPSP_INLINED {
            const T* const x = at + n * stride;
            return Points<Vector<T>>{hn::LoadU(d, x), hn::LoadU(d, x + kLanes<T>)};
          },
          [&](auto k, Points<Vector<T>> x) ORPSP_INLINED {
            if constexpr (k > 0) x = Times(x, hn::Set(d, twiddles[2 * k - 2]), hn::Set(d, twiddles[2 * k - 1]));
            T* const to = at + k * stride;
            hn::StoreU(x.re, d, to);
            hn::StoreU(x.im, d, to + kLanes<T>);
          });
    }
  }
}
template <size_t radix, class T>
HWY_NOINLINE void LastWorkPass(T* work, size_t rows) {
  for (size_t row = 0; row < rows; row += radix) {
    const auto block = workRows(work).From(row);
    Pass<radix, false, false, T>(block, block, 1, nullptr);
  }
}

// The passes from the second to the last but one, of one block of the first pass's results.
template <class T>
HWY_NOINLINE void MiddlePasses(int order, const T* twiddles, T* block) {
  const Radices radices(order);
  const int firstOrder = order - radices.Of(0);
  int blockOrder = firstOrder;
  twiddles += (size_t{2} << order) - (size_t{2} << blockOrder);
  for (int pass = 1; pass + 1 < radices.count; ++pass) {
    const size_t rows = size_t{1} << blockOrder;
    blockOrder -= radices.Of(pass);
    withRadix<kLeastRadix>(radices.Of(pass), [&](auto radix) ORPSP_INLINED {
      const size_t m = size_t{1} << blockOrder;
      for (size_t row = 0; row < size_t{1} << firstOrder; row += rows)
        WorkPass<radix>(block + row * 2 * kRow<T>, m * 2 * kRow<T>, 0, m, twiddles);
    });
    twiddles += 2 * rows - (size_t{2} << blockOrder);
  }
}

// Twiddle factors of 2^order rows: those of each pass, one after the other; and the row of the result that each block
// of the last pass begins with.
template <class T>
struct ColumnTables {
  const T* twiddles;
  const int32_t* reversed;
};

// All passes but the last of several, from the rows of `from`, which may be in `work`.
template <class T, class From>
HWY_INLINE void AllButLastPass(int order, const T* twiddles, const From& from, T* work) {
  const Radices radices(order);
  withRadix<kLeastRadix>(radices.Of(0), [&](auto radix) ORPSP_INLINED {
    FirstPass<radix, T>(from, work, (size_t{1} << order) / radix, twiddles);
  });
  const size_t block = size_t{1} << (order - radices.Of(0));
  for (size_t row = 0; radices.count > 2 && row < size_t{1} << order; row += block)
    MiddlePasses(order, twiddles, work + row * 2 * kRow<T>);
}

// The last pass of rows begin to end, which stand at `work`, into the rows of `to`, in order.
template <class T, class To>
HWY_INLINE void LastPassTo(int order, const int32_t* reversed, const T* work, const To& to, size_t begin, size_t end) {
  withRadix<kLeastLastRadix>(Radices(order).Last(), [&](auto radix) ORPSP_INLINED {
    LastPass<radix>(work, to, begin / radix, end / radix, (size_t{1} << order) / radix, reversed);
  });
}
template <class T, class To>
HWY_INLINE void LastPassTo(int order, const int32_t* reversed, const T* work, const To& to) {
  LastPassTo(order, reversed, work, to, 0, size_t{1} << order);
}

// The last pass within `work`: row k of the result stands at FillPlaces' place[k].
template <class T>
HWY_INLINE void LastPassInWork(int order, T* work) {
  withRadix<kLeastLastRadix>(Radices(order).Last(),
                             [&](auto radix) ORPSP_INLINED { LastWorkPass<radix>(work, size_t{1} << order); });
}

// ---- Tables

template <class T>
HWY_INLINE T* append(T* to, Root<T> w) {
  to[0] = w.re;
  to[1] = w.im;
  return to + 2;
}

template <class T>
void FillColumnTwiddles(int order, const QuarterSine<T>& sine, T* twiddles) {
  const Radices radices(order);
  int blockOrder = order;
  for (int pass = 0; pass + 1 < radices.count; ++pass) {
    const size_t radix = size_t{1} << radices.Of(pass), m = size_t{1} << (blockOrder - radices.Of(pass));
    for (size_t p = 0; p < m; ++p)
      for (size_t k = 1; k < radix; ++k) twiddles = append(twiddles, root(sine, p * k, blockOrder));
    blockOrder -= radices.Of(pass);
  }
}

// The block of the last pass has the number of the first pass's result in its highest digit; in the row that digit is
// the lowest.
inline size_t reversedBlock(int order, size_t block) {
  const Radices radices(order);
  int from = order - radices.Of(radices.count - 1), to = 0;
  size_t row = 0;
  for (int pass = 0; pass + 1 < radices.count; ++pass) {
    from -= radices.Of(pass);
    row += block >> from << to;
    block &= (size_t{1} << from) - 1;
    to += radices.Of(pass);
  }
  return row;
}
inline size_t blocksOfLastPass(int order) {
  const Radices radices(order);
  return size_t{1} << (order - radices.Of(radices.count - 1));
}

inline void FillReversed(int order, int32_t* reversed) {
  for (size_t block = 0; block < blocksOfLastPass(order); ++block)
    reversed[block] = static_cast<int32_t>(reversedBlock(order, block));
}

// Where ColumnsInWork leaves each row.
inline void FillPlaces(int order, int32_t* place) {
  const size_t blocks = blocksOfLastPass(order), radix = (size_t{1} << order) / blocks;
  for (size_t block = 0; block < blocks; ++block)
    for (size_t k = 0; k < radix; ++k)
      place[reversedBlock(order, block) + k * blocks] = static_cast<int32_t>(block * radix + k);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
