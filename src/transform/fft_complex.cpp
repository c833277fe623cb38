// Complex FFTs of 2^order points: a few points in registers (small-inl.h), as many as the caches hold in one pass over
// rows and columns of working memory (Direct), more of them in sweeps over columns (large-inl.h).
#include "orpsp/transform/fft_complex.h"

#include "frame/check.h"
#include "frame/entry.h"
#include "simd/element.h"
#include "simd/targets.h"
#include "transform/fft_call.h"
#include "transform/fft_sizes.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transform/fft_complex.cpp"
#include <hwy/foreach_target.h>

#include "transform/fft_engine-inl.h"
#include "transform/large-inl.h"
#include "transform/small-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// The first order without working memory for all points.
template <class T>
constexpr int kFirstLargeOrder = sizeof(T) == 4 ? 18 : 17;

// ---- In one piece: 2^order = kRow x columns

template <class T>
constexpr int columnsOrder(int order) {
  return order - static_cast<int>(hwy::CeilLog2(kRow<T>));
}

// The twiddle factors between rows and columns, exp(-2 pi i k column / 2^order) for each vector of columns and row k >
// 0. From kFirstProductOrder on they are products, so that they need not come through the caches: `table` has them for
// the first vector of columns only, `coarse` one factor for each vector of columns and row.
constexpr int kFirstProductOrder = 14;
template <class T>
struct BetweenTwiddles {
  T *table, *coarse, *columns;  // those within the columns follow

  BetweenTwiddles(int order, T* at) : table(at) {
    constexpr size_t kPerVector = 2 * (kRow<T> - 1) * kLanes<T>;
    const size_t vectors = (size_t{1} << columnsOrder<T>(order)) / kLanes<T>;
    coarse = table + kPerVector * (order < kFirstProductOrder ? vectors : 1);
    columns = coarse + (order < kFirstProductOrder ? 0 : 2 * (kRow<T> - 1) * vectors);
  }
};

template <class T>
void FillBetween(int order, const QuarterSine<T>& sine, const BetweenTwiddles<T>& between) {
  constexpr size_t kUsed = kLanes<T>;
  T* to = between.table;
  for (size_t column = 0; to != between.coarse; column += kUsed)
    for (size_t k = 1; k < kRow<T>; ++k, to += 2 * kUsed)
      for (size_t lane = 0; lane < kUsed; ++lane) {
        const auto w = root(sine, k * (column + pointOfLane<T>(lane, kUsed)), order);
        to[lane] = w.re;
        to[kUsed + lane] = w.im;
      }
  for (size_t column = 0; to != between.columns; column += kUsed)
    for (size_t k = 1; k < kRow<T>; ++k) to = append(to, root(sine, k * column, order));
}

// The places of rows: in order, or one row on after each block of 2^blockOrder.
struct InOrder {
  HWY_INLINE size_t operator()(size_t column) const { return column; }
};
struct Skewed {
  int blockOrder;
  HWY_INLINE size_t operator()(size_t column) const { return column + (column >> blockOrder); }
};

// FFTs of columns of kRow points, a vector of columns at a time from group begin to end. Their results become rows, row
// place(column) of `rows`.
template <bool isProduct, class T, class From, class Rows, class Place>
HWY_NOINLINE void IntoRows(const From& from, size_t begin, size_t end, const BetweenTwiddles<T>& between,
                           const Rows& rows, const Place& place) {
  constexpr Lanes<T> d;
  constexpr size_t kCount = kRow<T>, kUsed = kLanes<T>;
  const T* HWY_RESTRICT twiddles = between.table;
  const T* HWY_RESTRICT coarse = between.coarse + begin * 2 * (kCount - 1);
  T* const HWY_RESTRICT re = rows.Re(0, 0);
  T* const HWY_RESTRICT im = rows.Im(0, 0);
  for (size_t group = begin; group < end; ++group) {
    Points<Vector<T>> x[kCount];
    Butterfly<kCount, Points<Vector<T>>>([&](auto n) ORPSP_INLINED { return from.Load(n, group); },
                                         [&](auto k, Points<Vector<T>> value) ORPSP_INLINED {
                                           if constexpr (k > 0) {
                                             const T* const at = twiddles + 2 * kUsed * (k - 1);
                                             Points<Vector<T>> w = {hn::LoadU(d, at), hn::LoadU(d, at + kUsed)};
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
    Unrolled<kRowVectors<T>>([&](auto v) ORPSP_INLINED {
      Vector<T> square[kUsed];
      Unrolled<kUsed>([&](auto i) ORPSP_INLINED { square[i] = x[v * kUsed + pointOfLane<T>(i, kUsed)].re; });
      Transpose(square);
      Unrolled<kUsed>([&](auto i) ORPSP_INLINED {
        hn::StoreU(square[i], d, re + rows.At(place(group * kUsed + pointOfLane<T>(i, kUsed)), v));
      });
      Unrolled<kUsed>([&](auto i) ORPSP_INLINED { square[i] = x[v * kUsed + pointOfLane<T>(i, kUsed)].im; });
      Transpose(square);
      Unrolled<kUsed>([&](auto i) ORPSP_INLINED {
        hn::StoreU(square[i], d, im + rows.At(place(group * kUsed + pointOfLane<T>(i, kUsed)), v));
      });
    });
  }
}

// From kFirstProductOrder on blocks of the first pass begin one row further apart than they are long, so that the rows
// of its butterflies are not in the same set of the caches. (Up to order 12 there would be no memory for that.)
constexpr int kFirstSharedOrder = 16;  // between threads, which cost some microseconds for each pass

// Calls work(thread, threads) on each of `threads`; alone, without a call.
template <class Work>
HWY_INLINE void Share(int threads, const Work& work) {
  if (HWY_LIKELY(threads < 2)) {
    work(0, 1);
  } else {
    onThreads(threads, [&](int thread, int team) HWY_ATTR { work(thread, team); });
  }
}
HWY_INLINE size_t shareOf(size_t count, int thread, int team) {
  return count * static_cast<size_t>(thread) / static_cast<size_t>(team);
}

template <class T, class Form, class To>
HWY_INLINE void Direct(const ComplexCall<T>& call, const Form& form, const To& to) {
  T* const work = static_cast<T*>(call.work);
  const int order = columnsOrder<T>(call.order);
  const size_t columns = size_t{1} << order;
  const BetweenTwiddles<T> between(call.order, const_cast<T*>(call.twiddles));
  const Radices radices(order);
  const int blockOrder = radices.count > 1 ? order - radices.Of(0) : order;
  const size_t block = size_t{1} << blockOrder, distance = block + (call.order < kFirstProductOrder ? 0 : 1);

  const size_t stride = distance * 2 * kRow<T>;
  const int threads = call.order < kFirstSharedOrder ? 1 : grantedThreads();

  Share(threads, [&](int thread, int team) ORPSP_INLINED {
    const size_t groups = columns / kLanes<T>, begin = shareOf(groups, thread, team);
    const size_t end = shareOf(groups, thread + 1, team);
    if (call.order < kFirstProductOrder) {
      IntoRows<false, T>(form.From(0, columns), begin, end, between, workRows(work), InOrder{});
    } else {
      IntoRows<true, T>(form.From(0, columns), begin, end, between, workRows(work), Skewed{blockOrder});
    }
  });
  if (radices.count > 1) {
    withRadix<kLeastRadix>(radices.Of(0), [&](auto radix) ORPSP_INLINED {
      Share(threads, [&](int thread, int team) ORPSP_INLINED {
        WorkPass<radix>(work, stride, shareOf(block, thread, team), shareOf(block, thread + 1, team), between.columns);
      });
    });
  }
  // The rest block by block, while a block is in the nearer caches.
  Share(threads, [&](int thread, int team) ORPSP_INLINED {
    const size_t blocks = columns >> blockOrder;
    for (size_t at = shareOf(blocks, thread, team); at < shareOf(blocks, thread + 1, team); ++at) {
      T* const rows = work + at * stride;
      if (radices.count > 2) MiddlePasses(order, between.columns, rows);
      LastPassTo(order, call.reversed, rows, to(0, kRow<T>), at * block, (at + 1) * block);
    }
  });
}

// ---- From one array to another: as Direct, but the rows go to the destination, in the order from which passes that
// decimate in time arrive at the right one. So no working memory is needed, and every pass but the last stays within a
// part of the rows that the second-level cache holds.

// Where the tables have room for it, and where sweeps over columns are slower.
template <class T>
constexpr bool usesScatter(int order) {
  return kLanes<T> >= 4 && order >= kFirstLargeOrder<T> && order <= 20;
}

template <class T>
struct ScatterTables {
  BetweenTwiddles<T> between;
  T* passes;       // those of each pass, the first pass's first
  int32_t* place;  // within its part, of a row
  int rowsOrder, lastOrder;

  ScatterTables(int order, T* at)
      : between(order, at),
        passes(between.columns),
        rowsOrder(columnsOrder<T>(order)),
        lastOrder(Radices(rowsOrder).Last()) {
    place = reinterpret_cast<int32_t*>(passes + (size_t{2} << rowsOrder));
  }
};

// Parts by the last digit of the column, and within a part by the table.
struct Scattered {
  const int32_t* place;
  int partOrder, lastOrder;
  HWY_INLINE size_t operator()(size_t column) const {
    const size_t part = column & ((size_t{1} << lastOrder) - 1);
    return (part << partOrder) + static_cast<size_t>(place[column >> lastOrder]);
  }
};

template <class T, class Form, class To>
HWY_INLINE void Scatter(const ComplexCall<T>& call, const Form& form, T* tablesMemory, const To& to) {
  const ScatterTables<T> tables(call.order, tablesMemory);
  const int rowsOrder = tables.rowsOrder, lastOrder = tables.lastOrder, partOrder = rowsOrder - lastOrder;
  const size_t rows = size_t{1} << rowsOrder, parts = size_t{1} << lastOrder, part = size_t{1} << partOrder;
  const int threads = grantedThreads();
  const Grid<T> between = form.Between().Columns(0, kRow<T>);

  onThreads(threads, [&](int thread, int team) HWY_ATTR {
    const size_t groups = rows / kLanes<T>;
    IntoRows<true, T>(form.From(0, rows), shareOf(groups, thread, team), shareOf(groups, thread + 1, team),
                      tables.between, between, Scattered{tables.place, partOrder, lastOrder});
  });
  onThreads(threads, [&](int thread, int team) HWY_ATTR {
    const Radices radices(rowsOrder);
    for (size_t at = shareOf(parts, thread, team); at < shareOf(parts, thread + 1, team); ++at) {
      const T* twiddles = tables.passes;
      int done = 0;
      for (int pass = 0; pass + 1 < radices.count; ++pass) {
        const int radixOrder = radices.Of(pass);
        const size_t m = size_t{1} << done, block = m << radixOrder;
        withRadix<kLeastRadix>(radixOrder, [&](auto radix) ORPSP_INLINED {
          for (size_t row = at << partOrder; row < (at + 1) << partOrder; row += block)
            TimePass<radix, T>(between.From(row), between.From(row), m, 0, m, twiddles);
        });
        twiddles += 2 * (block - m);
        done += radixOrder;
      }
    }
  });
  const T* const twiddles = tables.passes + 2 * (part - 1);
  onThreads(threads, [&](int thread, int team) HWY_ATTR {
    withRadix<kLeastLastRadix>(lastOrder, [&](auto radix) ORPSP_INLINED {
      TimePass<radix, T>(between, to(0, kRow<T>), part, shareOf(part, thread, team), shareOf(part, thread + 1, team),
                         twiddles);
    });
  });
}

template <class T>
void FillScatter(int order, const QuarterSine<T>& sine, T* memory) {
  const ScatterTables<T> tables(order, memory);
  FillBetween(order, sine, tables.between);
  const Radices radices(tables.rowsOrder);
  T* to = tables.passes;
  int done = 0;
  for (int pass = 0; pass < radices.count; ++pass) {
    const size_t m = size_t{1} << done, radix = size_t{1} << radices.Of(pass);
    done += radices.Of(pass);
    for (size_t p = 0; p < m; ++p)
      for (size_t n = 1; n < radix; ++n) to = append(to, root(sine, p * n, done));
  }
  // The lowest digit of a row within its part (of the radix of the last pass but one) is the highest of its place.
  const int partOrder = tables.rowsOrder - tables.lastOrder;
  for (size_t row = 0; row < size_t{1} << partOrder; ++row) {
    size_t rest = row, place = 0;
    int left = partOrder;
    for (int pass = radices.count - 2; pass >= 0; --pass) {
      const int digit = radices.Of(pass);
      left -= digit;
      place += (rest & ((size_t{1} << digit) - 1)) << left;
      rest >>= digit;
    }
    tables.place[row] = static_cast<int32_t>(place);
  }
}

// ---- Forms of the caller's data

template <class T, bool isSwapped>
struct PairForm {
  using Real = T;
  const T* src;
  T* dst;

  bool IsInPlace() const { return src == dst; }
  Pairs<const T, isSwapped> SmallFrom() const { return {src}; }
  Pairs<T, isSwapped> SmallTo() const { return {dst}; }
  // Rows of kRow columns from a point on, `step` points from row to row; Between: of the points between sweeps.
  PairRows<const T, isSwapped> From(size_t point, size_t step) const { return {src + 2 * point, 2 * step}; }
  PairRows<T, isSwapped> To(size_t point, size_t step) const { return {dst + 2 * point, 2 * step}; }
  Grid<T> Between() const { return {dst, dst + kLanes<T>, 0, 2 * kLanes<T>}; }
};

template <class T>
struct PlaneForm {
  using Real = T;
  const T *srcRe, *srcIm;
  T *dstRe, *dstIm;

  bool IsInPlace() const { return srcRe == dstRe || srcRe == dstIm; }
  Planes<const T> SmallFrom() const { return {srcRe, srcIm}; }
  Planes<T> SmallTo() const { return {dstRe, dstIm}; }
  PlaneRows<const T> From(size_t point, size_t step) const { return {srcRe + point, srcIm + point, step}; }
  PlaneRows<T> To(size_t point, size_t step) const { return {dstRe + point, dstIm + point, step}; }
  Grid<T> Between() const { return {dstRe, dstIm, 0, kLanes<T>}; }
};

// ---- The transform of any order

// By order; with a status, so that a call can end in a jump to one of them.
template <int order, bool isScaled, class Form>
OrpStatus Small(Form form, typename Form::Real factor) {
  SmallTransform<order, isScaled>(form.SmallFrom(), form.SmallTo(), factor);
  return StsOk;
}

template <class Form>
struct SmallTable {
  using T = typename Form::Real;
  using Function = OrpStatus (*)(Form form, T factor);
  Function of[2][kSmallOrder<T> + 1];

  template <int... order>
  constexpr explicit SmallTable(std::integer_sequence<int, order...>)
      : of{{&Small<order, false, Form>...}, {&Small<order, true, Form>...}} {}
};
template <class Form>
inline constexpr SmallTable<Form> kSmall{std::make_integer_sequence<int, kSmallOrder<typename Form::Real> + 1>{}};

template <bool isScaled, class T, class Form>
HWY_INLINE void Transform(const ComplexCall<T>& call, const Form& form) {
  const auto to = [&](size_t point, size_t step) ORPSP_INLINED {
    const auto rows = form.To(point, step);
    if constexpr (isScaled) {
      return ScaledRows<T, decltype(form.To(point, step))>{rows, call.factor};
    } else {
      return rows;
    }
  };
  if (call.order < kFirstLargeOrder<T>) {
    Direct(call, form, to);
  } else {
    const LargeShape shape(call.order);
    const LargeTables<T> tables(shape, const_cast<T*>(call.twiddles));
    if constexpr (kLanes<T> >= 4) {
      if (usesScatter<T>(call.order) && !form.IsInPlace()) return Scatter(call, form, tables.End(), to);
    }
    const LargeTeam team(2 * kRow<T> * sizeof(T) << shape.LongestColumns(), call.work, complexWorkBytes<T>(call.order));
    FirstSweep(form, shape, tables, team);
    if (shape.hasMiddleSweep) MiddleSweep(shape, tables.middle, team, form.Between());
    LastSweep(form, shape, tables.last, team, to);
  }
}

template <class T, class Form>
HWY_NOINLINE void NotSmall(const ComplexCall<T>& call, const Form& form) {
  call.isScaled ? Transform<true>(call, form) : Transform<false>(call, form);
}

template <class T, class Form>
HWY_INLINE void AnyOrder(const ComplexCall<T>& call, const Form& form) {
  if (call.order <= kSmallOrder<T>) {
    kSmall<Form>.of[call.isScaled][call.order](form, call.factor);
  } else {
    NotSmall(call, form);
  }
}

}  // namespace

template <class T>
void TransformComplex(const ComplexCall<T>& call) {
  if (call.step == 2) {
    call.isInverse ? AnyOrder(call, PairForm<T, true>{call.srcRe, call.dstRe})
                   : AnyOrder(call, PairForm<T, false>{call.srcRe, call.dstRe});
  } else {
    AnyOrder(call, call.isInverse ? PlaneForm<T>{call.srcIm, call.srcRe, call.dstIm, call.dstRe}
                                  : PlaneForm<T>{call.srcRe, call.srcIm, call.dstRe, call.dstIm});
  }
}

template <class T>
void FillComplexTables(int order, const QuarterSine<T>& sine, T* twiddles, int32_t* reversed) {
  if (order <= kSmallOrder<T>) return;
  if (order >= kFirstLargeOrder<T>) {
    FillLarge(order, sine, twiddles);
    if (usesScatter<T>(order)) FillScatter(order, sine, LargeTables<T>(LargeShape(order), twiddles).End());
    return;
  }

  const BetweenTwiddles<T> between(order, twiddles);
  FillBetween(order, sine, between);
  FillColumnTwiddles(columnsOrder<T>(order), sine, between.columns);
  FillReversed(columnsOrder<T>(order), reversed);
}

template void TransformComplex(const ComplexCall<float>& call);
template void TransformComplex(const ComplexCall<double>& call);
template void FillComplexTables(int order, const QuarterSine<float>& sine, float* twiddles, int32_t* reversed);
template void FillComplexTables(int order, const QuarterSine<double>& sine, double* twiddles, int32_t* reversed);

namespace {

// ---- Calls

template <class T, class Form>
HWY_NOINLINE OrpStatus RunNotSmall(const Form& form, const FftSpec<T>& spec, bool isScaled, Orp8u* pBuffer) {
  Workspace work;
  ORPS_RETURN_IF(!work.Provide(pBuffer, spec.workBytes), StsNoMemory);
  ComplexCall<T> call{};
  call.order = spec.order;
  call.factor = spec.factor;
  call.isScaled = isScaled;
  call.twiddles = spec.twiddles;
  call.reversed = spec.reversed;
  call.work = work.Memory();
  NotSmall(call, form);
  return StsOk;
}

template <bool isInverse, class T, class Form>
HWY_INLINE OrpStatus Run(const Form& form, const FftSpec<T>& spec, Orp8u* pBuffer) {
  const bool isScaled = (isInverse ? spec.scalesInverse : spec.scalesForward) != 0;
  if (HWY_LIKELY(spec.order <= kSmallOrder<T>)) return kSmall<Form>.of[isScaled][spec.order](form, spec.factor);
  return RunNotSmall(form, spec, isScaled, pBuffer);
}

template <bool isInverse, class E, class Handle>
OrpStatus pairs(const E* pSrc, E* pDst, const Handle* pFFTSpec, Orp8u* pBuffer) {
  ORPS_CHECK_COMPLEX_FFT(pFFTSpec, pSrc, pDst);
  const PairForm<Lane<E>, isInverse> form{lanes(pSrc), lanes(pDst)};
  return Run<isInverse>(form, *fftRecord(pFFTSpec), pBuffer);
}

template <bool isInverse, class E, class Handle>
OrpStatus pairsInPlace(E* pSrcDst, const Handle* pFFTSpec, Orp8u* pBuffer) {
  return pairs<isInverse>(pSrcDst, pSrcDst, pFFTSpec, pBuffer);
}

// The inverse transform is the forward one with real and imaginary parts exchanged.
template <bool isInverse, class T, class Handle>
OrpStatus planes(const T* pSrcRe, const T* pSrcIm, T* pDstRe, T* pDstIm, const Handle* pFFTSpec, Orp8u* pBuffer) {
  ORPS_CHECK_COMPLEX_FFT(pFFTSpec, pSrcRe, pSrcIm, pDstRe, pDstIm);
  const PlaneForm<T> form =
      isInverse ? PlaneForm<T>{pSrcIm, pSrcRe, pDstIm, pDstRe} : PlaneForm<T>{pSrcRe, pSrcIm, pDstRe, pDstIm};
  return Run<isInverse>(form, *fftRecord(pFFTSpec), pBuffer);
}

template <bool isInverse, class T, class Handle>
OrpStatus planesInPlace(T* pSrcDstRe, T* pSrcDstIm, const Handle* pFFTSpec, Orp8u* pBuffer) {
  return planes<isInverse>(pSrcDstRe, pSrcDstIm, pSrcDstRe, pSrcDstIm, pFFTSpec, pBuffer);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/fft_complex.inc"
#include "frame/exports-inl.h"
