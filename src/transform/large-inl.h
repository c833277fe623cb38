// FFTs of more points than the caches hold: N = A x B x C, point (a, b, c) at a BC + b C + c, result (ka, kb, kc) at
// ka + A kb + AB kc. Each sweep transforms one of the digits, by whole rows of adjacent columns in working memory:
//
//   a, whose results go to (c, b, ka): a square of lanes is transposed on the way. In place: to (ka, b, c), and a and c
//      (of the same size) are then exchanged;
//   b, times exp(-2 pi i b ka / AB), in place;
//   c, times exp(-2 pi i c (ka + A kb) / N), in place, which leaves (kc, kb, ka), the order of the results.
//
// Up to kTwoSweepOrder b and c are transformed in one sweep, as one digit. Between sweeps points are vectors of real
// and vectors of imaginary parts. [Bailey 1990: FFTs in external or hierarchical memory, J. Supercomputing 4]
#if defined(ORPSP_TRANSFORM_LARGE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_TRANSFORM_LARGE_INL_H_
#undef ORPSP_TRANSFORM_LARGE_INL_H_
#else
#define ORPSP_TRANSFORM_LARGE_INL_H_
#endif

#include "frame/parallel.h"
#include "transform/caller_points-inl.h"
#include "transform/columns-inl.h"
#include "transform/fft_sizes.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace fft {
namespace {

constexpr int kTwoSweepOrder = 20;

struct LargeShape {
  int order, a, b, c;
  bool hasMiddleSweep;
  int last;  // order of the last sweep's columns

  explicit LargeShape(int transformOrder)
      : order(transformOrder),
        a(order <= kTwoSweepOrder ? order / 2 : (order + 1) / 3),
        b(order - 2 * a),
        c(a),
        hasMiddleSweep(order > kTwoSweepOrder),
        last(hasMiddleSweep ? c : b + c) {}
  int LongestColumns() const { return HWY_MAX(HWY_MAX(a, hasMiddleSweep ? b : 0), last); }
};

// Twiddle factors of a sweep over columns of 2^rows points of which there are 2^columns: those within the columns;
// those before them, as products (see TwiddledRows): for each row and column of a group, then for each group and row.
template <class T>
using IndexLike = std::conditional_t<std::is_const_v<T>, const int32_t, int32_t>;
template <class T>
struct SweepTables {
  T *within, *fine, *coarse;
  IndexLike<T>* reversed;
};

template <class T>
struct LargeTables {
  using Index = IndexLike<T>;
  T* first;
  SweepTables<T> middle, last;
  Index *reversed, *place;  // of the first sweep, in place and else
  Index* end;

  // What follows in memory, on a multiple of 64 bytes like the tables.
  T* End() const { return first + (static_cast<size_t>(reinterpret_cast<T*>(end) - first) / 16 + 1) * 16; }

  LargeTables(const LargeShape& shape, T* at) {
    const auto take = [&](size_t numbers) {
      T* const taken = at;
      at += numbers;
      return taken;
    };
    const auto sweep = [&](int rows, int columns) {
      SweepTables<T> tables;
      tables.within = take(size_t{2} << rows);
      tables.fine = take((size_t{2} << rows) * kRow<T>);
      tables.coarse = take((size_t{2} << (rows + columns)) / kRow<T>);
      return tables;
    };
    first = take(size_t{2} << shape.a);
    if (shape.hasMiddleSweep) middle = sweep(shape.b, shape.a);
    last = sweep(shape.last, shape.order - shape.last);

    reversed = reinterpret_cast<Index*>(at);
    place = reversed + BlocksOfLastPass(shape.a);
    last.reversed = place + (size_t{1} << shape.a);
    end = last.reversed + BlocksOfLastPass(shape.last);
    middle.reversed = end;
    if (shape.hasMiddleSweep) end += BlocksOfLastPass(shape.b);
  }
};

template <class T>
void FillSweep(int rows, int columns, const QuarterSine<T>& sine, const SweepTables<T>& tables) {
  FillColumnTwiddles(rows, sine, tables.within);
  FillReversed(rows, tables.reversed);
  for (size_t row = 0; row < size_t{1} << rows; ++row) {
    for (size_t column = 0; column < kRow<T>; ++column) {
      const size_t v = column / kLanes<T>, lane = column % kLanes<T>;
      const auto w = unitRoot(sine, row * (v * kLanes<T> + pointOfLane<T>(lane, kLanes<T>)), rows + columns);
      T* const to = tables.fine + (row * kRowVectors<T> + v) * 2 * kLanes<T> + lane;
      to[0] = w.re;
      to[kLanes<T>] = w.im;
    }
  }
  T* to = tables.coarse;
  for (size_t column = 0; column < size_t{1} << columns; column += kRow<T>)
    for (size_t row = 0; row < size_t{1} << rows; ++row) to = Append(to, unitRoot(sine, row * column, rows + columns));
}

template <class T>
void FillLarge(int order, const QuarterSine<T>& sine, T* memory) {
  const LargeShape shape(order);
  const LargeTables<T> tables(shape, memory);
  FillColumnTwiddles(shape.a, sine, tables.first);
  FillReversed(shape.a, tables.reversed);
  FillPlaces(shape.a, tables.place);
  if (shape.hasMiddleSweep) FillSweep(shape.b, shape.a, sine, tables.middle);
  FillSweep(shape.last, shape.order - shape.last, sine, tables.last);
}

// ---- Sweeps

// The group-th columns of a sweep, times their twiddle factors, through all passes but the last.
template <class T, class Rows>
HWY_NOINLINE void LoadTwiddled(int order, const SweepTables<const T>& tables, size_t group, const Rows& rows, T* work) {
  const TwiddledRows<T, Rows> from{rows, tables.fine, tables.coarse + (group * 2 << order)};
  AllButLastPass<T>(order, tables.within, from, work);
}

// Rows of working memory, row k at place[k], into columns: lane j of the group into row j of `to`.
template <class T>
HWY_NOINLINE void StoreTransposed(const T* work, const int32_t* place, size_t rows, const Grid<T>& to) {
  constexpr Tag<T> d;
  const auto from = WorkRowsAt(work);
  for (size_t group = 0; group < rows / kLanes<T>; ++group, place += kLanes<T>) {
    for (size_t v = 0; v < kRowVectors<T>; ++v) {
      TransposePart(
          d, [&](auto i) ORPSP_INLINED { return hn::LoadU(d, from.Re(static_cast<size_t>(place[i]), v)); },
          [&](auto j, Register<T> re) ORPSP_INLINED { hn::StoreU(re, d, to.Re(v * kLanes<T> + j, group)); });
      TransposePart(
          d, [&](auto i) ORPSP_INLINED { return hn::LoadU(d, from.Im(static_cast<size_t>(place[i]), v)); },
          [&](auto j, Register<T> im) ORPSP_INLINED { hn::StoreU(im, d, to.Im(v * kLanes<T> + j, group)); });
    }
  }
}

// Exchanges rows and columns of a square of kLanes * vectors points, in every `stride`-th row of blocks from the
// first-th.
template <class T>
HWY_NOINLINE void TransposeInPlace(const Grid<T>& square, size_t vectors, size_t first, size_t stride) {
  constexpr Tag<T> d;
  const auto exchange = [&](auto part, size_t i, size_t j) ORPSP_INLINED {
    Register<T> block[kLanes<T>];
    TransposePart(
        d, [&](auto row) ORPSP_INLINED { return hn::LoadU(d, part(i * kLanes<T> + row, j)); },
        [&](auto row, Register<T> v) ORPSP_INLINED { block[row] = v; });
    TransposePart(
        d, [&](auto row) ORPSP_INLINED { return hn::LoadU(d, part(j * kLanes<T> + row, i)); },
        [&](auto row, Register<T> v) ORPSP_INLINED { hn::StoreU(v, d, part(i * kLanes<T> + row, j)); });
    Unrolled<kLanes<T>>([&](auto row) ORPSP_INLINED { hn::StoreU(block[row], d, part(j * kLanes<T> + row, i)); });
  };
  for (size_t i = first; i < vectors; i += stride) {
    for (size_t j = i; j < vectors; ++j) {
      exchange([&](size_t row, size_t v) ORPSP_INLINED { return square.Re(row, v); }, i, j);
      exchange([&](size_t row, size_t v) ORPSP_INLINED { return square.Im(row, v); }, i, j);
    }
  }
}

// Calls work(begin, end, scratch) for parts of `groups`, on as many threads as there is working memory for.
struct LargeTeam {
  int threads;
  size_t bytesPerThread;
  char* memory;

  LargeTeam(size_t bytesOfOne, void* work, size_t workBytes)
      : threads(HWY_MIN(grantedThreads(), static_cast<int>(workBytes / bytesOfOne))),
        bytesPerThread(bytesOfOne),
        memory(static_cast<char*>(work)) {}

  template <class T, class Work>
  void Share(size_t groups, const Work& work) const {
    onThreads(threads, [&](int thread, int team) {
      work(partBegin(groups, thread, team), partBegin(groups, thread + 1, team),
           reinterpret_cast<T*>(memory + static_cast<size_t>(thread) * bytesPerThread));
    });
  }
};

// What all forms of the caller's data share: the sweep over b, and over c but for its last pass.
template <class T>
HWY_NOINLINE void MiddleSweep(const LargeShape& shape, const SweepTables<const T>& tables, const LargeTeam& team,
                              const Grid<T>& grid) {
  const size_t A = size_t{1} << shape.a, groups = A / kRow<T>;
  team.Share<T>(groups << shape.c, [&](size_t begin, size_t end, T* scratch) HWY_ATTR {
    for (size_t at = begin; at < end; ++at) {
      const size_t c = at / groups, group = at % groups;
      const auto rows = grid.Columns((c << (shape.a + shape.b)) + group * kRow<T>, A);
      LoadTwiddled(shape.b, tables, group, ExchangedRows<Grid<T>>{rows, 0, shape.b}, scratch);
      LastPassTo(shape.b, tables.reversed, scratch, rows);
    }
  });
}

template <class T, class Points>
HWY_NOINLINE void FirstSweep(const Points& points, const LargeShape& shape, const LargeTables<const T>& tables,
                             const LargeTeam& team) {
  const int bc = shape.b + shape.c;
  const size_t A = size_t{1} << shape.a, BA = A << shape.b, BC = size_t{1} << bc, C = size_t{1} << shape.c;
  team.Share<T>(BC / kRow<T>, [&](size_t begin, size_t end, T* scratch) HWY_ATTR {
    for (size_t group = begin; group < end; ++group) {
      const size_t column = group * kRow<T>, b = column >> shape.c, c = column & (C - 1);
      AllButLastPass<T>(shape.a, tables.first, points.From(column, BC), scratch);
      if (points.IsInPlace()) {
        LastPassTo(shape.a, tables.reversed, scratch, GridOf(points.dst).Columns(column, BC));
      } else {
        LastPassInWork(shape.a, scratch);
        StoreTransposed(scratch, tables.place, A, GridOf(points.dst).Columns(c * BA + b * A, BA));
      }
    }
  });
  if (!points.IsInPlace()) return;
  onThreads(team.threads, [&](int thread, int threads) HWY_ATTR {
    for (size_t b = 0; b < size_t{1} << shape.b; ++b)
      TransposeInPlace(GridOf(points.dst).Columns(b * C, BC), A / kLanes<T>, static_cast<size_t>(thread),
                       static_cast<size_t>(threads));
  });
}

template <class T, class Points, class To>
HWY_INLINE void LastSweep(const Points& points, const LargeShape& shape, const SweepTables<const T>& tables,
                          const LargeTeam& team, const To& to) {
  const size_t columns = size_t{1} << (shape.order - shape.last);
  team.Share<T>(columns / kRow<T>, [&](size_t begin, size_t end, T* scratch) HWY_ATTR {
    for (size_t group = begin; group < end; ++group) {
      const ExchangedRows<Grid<T>> rows{GridOf(points.dst).Columns(group * kRow<T>, columns), shape.last - shape.c,
                                        shape.c};
      LoadTwiddled(shape.last, tables, group, rows, scratch);
      LastPassTo(shape.last, tables.reversed, scratch, to(group * kRow<T>, columns));
    }
  });
}

template <class T, class Points, class To>
HWY_INLINE void Sweeps(const ComplexCall<T>& call, const Points& points, const To& to) {
  const LargeShape shape(call.order);
  const LargeTables<const T> tables(shape, call.twiddles);
  const LargeTeam team(2 * kRow<T> * sizeof(T) << shape.LongestColumns(), call.work, complexWorkBytes<T>(call.order));
  FirstSweep<T>(points, shape, tables, team);
  if (shape.hasMiddleSweep) MiddleSweep(shape, tables.middle, team, GridOf(points.dst));
  LastSweep<T>(points, shape, tables.last, team, to);
}

}  // namespace
}  // namespace fft
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
