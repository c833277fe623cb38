// FFTs from one array to another without working memory: as Direct, but the rows go to the destination, in the order
// from which passes that decimate in time arrive at the right one. Every pass but the last stays within a part of the
// rows that the second-level cache holds.
#if defined(ORPSP_TRANSFORM_SCATTER_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_TRANSFORM_SCATTER_INL_H_
#undef ORPSP_TRANSFORM_SCATTER_INL_H_
#else
#define ORPSP_TRANSFORM_SCATTER_INL_H_
#endif

#include "transform/direct-inl.h"
#include "transform/large-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace fft {
namespace {

// Where the tables have room for it, and where sweeps over columns are slower. Pairs already from where working memory
// would compete for the second-level cache, in the widest vectors or with rows in halves.
template <class T>
constexpr bool usesScatter(int order, int arrays) {
  if (kLanes<T> < 4 || order > 20) return false;
  if (order >= kFirstLargeOrder<T>) return true;
  const bool isQuick = kLanes<T> * sizeof(T) == 64 || firstOrder<T>(order) > firstOrder<T>(order - 1);
  return arrays == 1 && order >= kFirstLargeOrder<T> - 2 && isQuick;
}

template <class T>
struct ScatterTables {
  BetweenTwiddles<T> between;
  T* passes;            // twiddle factors of each pass, the first pass's first
  IndexLike<T>* place;  // within its part, of a row
  int rowsOrder, lastOrder;

  // They follow those of transforms in place; of Direct's, the first part is the same and shared.
  ScatterTables(int order, T* twiddles)
      : between(order, order < kFirstLargeOrder<T> ? twiddles : LargeTables<T>(LargeShape(order), twiddles).End()),
        rowsOrder(columnsOrder<T>(order)),
        lastOrder(Radices(rowsOrder).Last()) {
    passes = between.columns + (order < kFirstLargeOrder<T> ? size_t{2} << rowsOrder : 0);
    place = reinterpret_cast<IndexLike<T>*>(passes + (size_t{2} << rowsOrder));
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

template <size_t kCount, class T, class Points, class To>
HWY_INLINE void ScatterFrom(const ComplexCall<T>& call, const Points& points, const To& to) {
  constexpr size_t kHalves = kCount / kRow<T>;
  const ScatterTables<const T> tables(call.order, call.twiddles);
  const int rowsOrder = tables.rowsOrder, lastOrder = tables.lastOrder, partOrder = rowsOrder - lastOrder;
  const size_t rows = size_t{1} << rowsOrder, parts = size_t{1} << lastOrder, part = size_t{1} << partOrder;
  const int threads = grantedThreads();
  const auto between = [&](size_t half) HWY_ATTR { return GridOf(points.dst).Columns(half * kRow<T>, kCount); };

  onThreads(threads, [&](int thread, int team) HWY_ATTR {
    const size_t groups = rows / kLanes<T>;
    IntoRows<true, kCount, T>(points.From(0, rows), partBegin(groups, thread, team),
                              partBegin(groups, thread + 1, team), tables.between, between(0),
                              Scattered{tables.place, partOrder, lastOrder});
  });
  onThreads(threads, [&](int thread, int team) HWY_ATTR {
    const Radices radices(rowsOrder);
    for (size_t i = partBegin(parts * kHalves, thread, team); i < partBegin(parts * kHalves, thread + 1, team); ++i) {
      const Grid<T> of = between(i % kHalves).From(i / kHalves << partOrder, 0);
      const T* twiddles = tables.passes;
      int done = 0;
      for (int pass = 0; pass + 1 < radices.count; ++pass) {
        const int radixOrder = radices.Of(pass);
        const size_t m = size_t{1} << done, blocks = part >> (done + radixOrder);
        WithRadix<kLeastRadix>(radixOrder, [&](auto radix) ORPSP_INLINED {
          if (m == 1) {
            Pass<radix, Twiddles::kNone>(of, of, m, 0, m, twiddles, blocks);
          } else {
            Pass<radix, Twiddles::kBefore>(of, of, m, 0, m, twiddles, blocks);
          }
        });
        done += radixOrder;
        twiddles += (size_t{2} << done) - 2 * m;
      }
    }
  });
  const T* const twiddles = tables.passes + 2 * (part - 1);
  onThreads(threads, [&](int thread, int team) HWY_ATTR {
    const size_t begin = partBegin(part, thread, team), end = partBegin(part, thread + 1, team);
    WithRadix<kLeastLastRadix>(lastOrder, [&](auto radix) ORPSP_INLINED {
      for (size_t half = 0; half < kHalves; ++half)
        Pass<radix, Twiddles::kBefore>(between(half), to(half * kRow<T>, kCount), part, begin, end, twiddles);
    });
  });
}

template <class T>
void FillScatter(int order, const QuarterSine<T>& sine, T* twiddles) {
  const ScatterTables<T> tables(order, twiddles);
  if (order >= kFirstLargeOrder<T>) FillBetween(order, sine, tables.between);
  const Radices radices(tables.rowsOrder);
  T* to = tables.passes;
  int done = 0;
  for (int pass = 0; pass < radices.count; ++pass) {
    done += radices.Of(pass);
    to = AppendPass(to, done, radices.Of(pass), sine);
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

}  // namespace
}  // namespace fft
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
