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

#include "transform/butterfly-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace fft {
namespace {

template <class T>
using Tag = hn::ScalableTag<T>;
template <class T>
using Register = hn::Vec<Tag<T>>;
template <class T>
constexpr size_t kLanes = HWY_MAX_BYTES / sizeof(T);
// Columns of a row: whole vectors, and one or two lines of the cache.
template <class T>
constexpr size_t kRow = HWY_MAX(kLanes<T>, 8);
template <class T>
constexpr size_t kRowVectors = kRow<T> / kLanes<T>;

// ---- Where rows are
//
// All kinds have From(row, v), the rows from a row's vector v on; Load(row) and Store(row, x) are of the first vector.

// Rows of vectors of points at any distances: working memory, or the caller's memory between passes. (The order of
// lanes stays as it is.)
template <class T>
struct Grid {
  T *re, *im;
  size_t rowStep, vectorStep;

  HWY_INLINE size_t At(size_t row, size_t v) const { return row * rowStep + v * vectorStep; }
  HWY_INLINE T* Re(size_t row, size_t v) const { return re + At(row, v); }
  HWY_INLINE T* Im(size_t row, size_t v) const { return im + At(row, v); }
  HWY_INLINE Parts<Register<T>> Load(size_t row) const {
    return {hn::LoadU(Tag<T>{}, Re(row, 0)), hn::LoadU(Tag<T>{}, Im(row, 0))};
  }
  HWY_INLINE void Store(size_t row, Parts<Register<T>> x) const {
    hn::StoreU(x.re, Tag<T>{}, Re(row, 0));
    hn::StoreU(x.im, Tag<T>{}, Im(row, 0));
  }
  HWY_INLINE Grid From(size_t row, size_t v) const { return {Re(row, v), Im(row, v), rowStep, vectorStep}; }
  // The grid as one long row of consecutive points, cut into rows `step` points apart, from a point on, which is a
  // multiple of the lanes.
  HWY_INLINE Grid Columns(size_t point, size_t step) const {
    const size_t unit = vectorStep / kLanes<T>;
    return {re + point * unit, im + point * unit, step * unit, vectorStep};
  }
};

// Rows in working memory, one after the other; of const T to be read only.
template <class T>
struct WorkRows {
  using V = Register<std::remove_const_t<T>>;
  static constexpr Tag<std::remove_const_t<T>> d{};
  T* p;

  static constexpr size_t At(size_t row, size_t v) { return row * 2 * kRow<T> + v * 2 * kLanes<T>; }
  HWY_INLINE T* Re(size_t row, size_t v) const { return p + At(row, v); }
  HWY_INLINE T* Im(size_t row, size_t v) const { return p + At(row, v) + kLanes<T>; }
  HWY_INLINE Parts<V> Load(size_t row) const {
    const T* const at = Re(row, 0);
    return {hn::LoadU(d, at), hn::LoadU(d, at + kLanes<T>)};
  }
  HWY_INLINE void Store(size_t row, Parts<V> x) const {
    T* const at = Re(row, 0);
    hn::StoreU(x.re, d, at);
    hn::StoreU(x.im, d, at + kLanes<T>);
  }
  HWY_INLINE WorkRows From(size_t row, size_t v) const { return {p + At(row, v)}; }
};
template <class T>
HWY_INLINE WorkRows<T> WorkRowsAt(T* work) {
  return {work};
}

// Rows of the caller's points, PairedPoints or PlanarPoints.
template <class Points>
struct PointRows {
  using T = typename Points::Element;
  Points points;
  size_t rowStep;

  HWY_INLINE Parts<Register<T>> Load(size_t row) const { return points.Load(Tag<T>{}, row * rowStep); }
  HWY_INLINE void Store(size_t row, Parts<Register<T>> x) const { points.Store(Tag<T>{}, x, row * rowStep); }
  HWY_INLINE PointRows From(size_t row, size_t v) const {
    return {points.From(row * rowStep + v * kLanes<T>), rowStep};
  }
};

// The caller's memory as one long row of vectors between passes.
template <class T, bool isSwapped>
HWY_INLINE Grid<T> GridOf(PairedPoints<T, isSwapped> points) {
  return {points.p, points.p + kLanes<T>, 0, 2 * kLanes<T>};
}
template <class T>
HWY_INLINE Grid<T> GridOf(PlanarPoints<T> points) {
  return {points.re, points.im, 0, kLanes<T>};
}

// What goes to `rows`, times a factor.
template <class T, class Rows>
struct ScaledRows {
  Rows rows;
  T factor;
  HWY_INLINE void Store(size_t row, Parts<Register<T>> x) const { rows.Store(row, TimesReal(x, factor)); }
  HWY_INLINE ScaledRows From(size_t row, size_t v) const { return {rows.From(row, v), factor}; }
};

// What comes from `rows`, times a twiddle factor: the product of one for the row and the column of the group, and one
// for the row and the group.
template <class T, class Rows>
struct TwiddledRows {
  Rows rows;
  const T *fine, *coarse;
  HWY_INLINE Parts<Register<T>> Load(size_t row) const {
    const auto w =
        Times(WorkRowsAt(fine).Load(row), hn::Set(Tag<T>{}, coarse[2 * row]), hn::Set(Tag<T>{}, coarse[2 * row + 1]));
    return Times(rows.Load(row), w);
  }
  HWY_INLINE TwiddledRows From(size_t row, size_t v) const {
    return {rows.From(row, v), fine + WorkRows<T>::At(row, v), coarse + 2 * row};
  }
};

// Rows (b, c), b slower, that stand in the order (c, b).
template <class Rows>
struct ExchangedRows {
  Rows rows;
  int orderB, orderC;
  size_t first = 0;
  HWY_INLINE size_t Place(size_t row) const {
    return ((row & ((size_t{1} << orderC) - 1)) << orderB) + (row >> orderC);
  }
  HWY_INLINE auto Load(size_t row) const { return rows.Load(Place(first + row)); }
  HWY_INLINE ExchangedRows From(size_t row, size_t v) const { return {rows.From(0, v), orderB, orderC, first + row}; }
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

// When rows are multiplied by their twiddle factors: before the butterfly, which decimates in time, or after it, which
// decimates in frequency; exp(-2 pi i n p / size of the block) for row p of the n-th.
enum class Twiddles { kNone, kBefore, kAfter };

// Takes `blocks` of radix * distance rows, one after the other: in each, rows p + distance n of `from`, n < radix,
// become those of `to`, for p from begin to end. (Passed by value: behind a reference every store of a vector might
// change them.)
template <size_t radix, Twiddles when, class T, class From, class To>
HWY_NOINLINE void Pass(const From from, const To to, size_t distance, size_t begin, size_t end,
                       const T* HWY_RESTRICT twiddles, size_t blocks = 1) {
  constexpr Tag<T> d;
  constexpr size_t kTwiddles = when == Twiddles::kNone ? 0 : 2 * (radix - 1);
  for (size_t block = 0; block < blocks; ++block) {
    const T* HWY_RESTRICT w = twiddles + begin * kTwiddles;
    const auto twiddled = [&](auto n, Parts<Register<T>> x, Twiddles now) ORPSP_INLINED {
      if (now != when || n == 0) return x;
      return Times(x, hn::Set(d, w[2 * n - 2]), hn::Set(d, w[2 * n - 1]));
    };
    for (size_t p = begin; p < end; ++p, w += kTwiddles) {
      for (size_t v = 0; v < kRowVectors<T>; ++v) {
        const From source = from.From(block * radix * distance + p, v);
        const To destination = to.From(block * radix * distance + p, v);
        Butterfly<radix, Parts<Register<T>>>(
            [&](auto n) ORPSP_INLINED { return twiddled(n, source.Load(distance * n), Twiddles::kBefore); },
            [&](auto k, Parts<Register<T>> x)
                ORPSP_INLINED { destination.Store(distance * k, twiddled(k, x, Twiddles::kAfter)); });
      }
    }
  }
}

// The last pass, blocks begin to end of `blocks` in all: of `radix` rows, which begin at `work`, each one's rows into
// rows reversed[block] + blocks k.
template <size_t radix, class T, class To>
HWY_NOINLINE void LastPass(const T* work, const To to, size_t begin, size_t end, size_t blocks,
                           const int32_t* HWY_RESTRICT reversed) {
  const auto from = WorkRowsAt(work);
  for (size_t block = begin; block < end; ++block) {
    for (size_t v = 0; v < kRowVectors<T>; ++v) {
      const auto source = from.From((block - begin) * radix, v);
      const To destination = to.From(static_cast<size_t>(reversed[block]), v);
      Butterfly<radix, Parts<Register<T>>>([&](auto n) ORPSP_INLINED { return source.Load(n); },
                                           [&](auto k, Parts<Register<T>> x)
                                               ORPSP_INLINED { destination.Store(k * blocks, x); });
    }
  }
}

// Calls f with the radix as a constant: one of those from 2^least on.
template <int least, class F>
HWY_INLINE void WithRadix(int order, F&& f) {
  if constexpr (least < kLargestRadix) {
    if (order == least) return f(std::integral_constant<size_t, (size_t{1} << least)>{});
    WithRadix<least + 1>(order, f);
  } else {
    f(std::integral_constant<size_t, (size_t{1} << kLargestRadix)>{});
  }
}
constexpr int kLeastRadix = 2, kLeastLastRadix = kLargestRadix - 1;

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
    WithRadix<kLeastRadix>(radices.Of(pass), [&](auto radix) ORPSP_INLINED {
      const size_t m = size_t{1} << blockOrder, blocks = (size_t{1} << firstOrder) / rows;
      Pass<radix, Twiddles::kAfter>(WorkRowsAt(block), WorkRowsAt(block), m, 0, m, twiddles, blocks);
    });
    twiddles += 2 * rows - (size_t{2} << blockOrder);
  }
}

// All passes but the last of several, from the rows of `from`, which may be in `work`.
template <class T, class From>
HWY_INLINE void AllButLastPass(int order, const T* twiddles, const From& from, T* work) {
  const Radices radices(order);
  const size_t block = size_t{1} << (order - radices.Of(0));
  WithRadix<kLeastRadix>(radices.Of(0), [&](auto radix) ORPSP_INLINED {
    Pass<radix, Twiddles::kAfter>(from, WorkRowsAt(work), block, 0, block, twiddles);
  });
  for (size_t row = 0; radices.count > 2 && row < size_t{1} << order; row += block)
    MiddlePasses(order, twiddles, work + row * 2 * kRow<T>);
}

// The last pass of rows begin to end, which stand at `work`, into the rows of `to`, in order.
template <class T, class To>
HWY_INLINE void LastPassTo(int order, const int32_t* reversed, const T* work, const To& to, size_t begin, size_t end) {
  WithRadix<kLeastLastRadix>(Radices(order).Last(), [&](auto radix) ORPSP_INLINED {
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
  WithRadix<kLeastLastRadix>(Radices(order).Last(), [&](auto radix) ORPSP_INLINED {
    const T* const noTwiddles = nullptr;
    Pass<radix, Twiddles::kNone>(WorkRowsAt(work), WorkRowsAt(work), 1, 0, 1, noTwiddles, (size_t{1} << order) / radix);
  });
}

// ---- Tables

template <class T>
HWY_INLINE T* Append(T* to, UnitRoot<T> w) {
  to[0] = w.re;
  to[1] = w.im;
  return to + 2;
}

// Appends the twiddle factors of the pass that joins 2^radixOrder blocks into one of 2^order rows, or parts it.
template <class T>
T* AppendPass(T* to, int order, int radixOrder, const QuarterSine<T>& sine) {
  for (size_t p = 0; p < size_t{1} << (order - radixOrder); ++p)
    for (size_t n = 1; n < size_t{1} << radixOrder; ++n) to = Append(to, unitRoot(sine, p * n, order));
  return to;
}

// Fills in the twiddle factors of all passes but the last, one after the other.
template <class T>
void FillColumnTwiddles(int order, const QuarterSine<T>& sine, T* twiddles) {
  const Radices radices(order);
  int blockOrder = order;
  for (int pass = 0; pass + 1 < radices.count; ++pass) {
    twiddles = AppendPass(twiddles, blockOrder, radices.Of(pass), sine);
    blockOrder -= radices.Of(pass);
  }
}

// The block of the last pass has the number of the first pass's result in its highest digit; in the row that digit is
// the lowest.
HWY_INLINE size_t ReversedBlock(int order, size_t block) {
  const Radices radices(order);
  int from = order - radices.Last(), to = 0;
  size_t row = 0;
  for (int pass = 0; pass + 1 < radices.count; ++pass) {
    from -= radices.Of(pass);
    row += block >> from << to;
    block &= (size_t{1} << from) - 1;
    to += radices.Of(pass);
  }
  return row;
}
HWY_INLINE size_t BlocksOfLastPass(int order) {
  const Radices radices(order);
  return size_t{1} << (order - radices.Last());
}

HWY_INLINE void FillReversed(int order, int32_t* reversed) {
  for (size_t block = 0; block < BlocksOfLastPass(order); ++block)
    reversed[block] = static_cast<int32_t>(ReversedBlock(order, block));
}

// Where LastPassInWork leaves each row.
HWY_INLINE void FillPlaces(int order, int32_t* place) {
  const size_t blocks = BlocksOfLastPass(order), radix = (size_t{1} << order) / blocks;
  for (size_t block = 0; block < blocks; ++block)
    for (size_t k = 0; k < radix; ++k)
      place[ReversedBlock(order, block) + k * blocks] = static_cast<int32_t>(block * radix + k);
}

}  // namespace
}  // namespace fft
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
