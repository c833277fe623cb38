// Complex FFTs of 2^order points: a few in registers (small-inl.h), as many as there is working memory for in rows and
// columns of it (direct-inl.h), more of them in rows of the destination (scatter-inl.h) or in sweeps over columns
// (large-inl.h).
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

#include "transform/direct-inl.h"
#include "transform/fft_engine-inl.h"
#include "transform/large-inl.h"
#include "transform/scatter-inl.h"
#include "transform/small-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// ---- Forms of the caller's data

template <class Source, class Destination>
struct Form {
  using Real = typename Destination::Element;
  Source src;
  Destination dst;

  bool IsInPlace() const { return src.IsAt(dst); }
  // Rows of kRow columns from a point on, `step` points from row to row.
  PlacedRows<Source> From(size_t point, size_t step) const { return {src.From(point), step}; }
  PlacedRows<Destination> To(size_t point, size_t step) const { return {dst.From(point), step}; }
};
template <class T, bool isSwapped>
using PairForm = Form<Pairs<const T, isSwapped>, Pairs<T, isSwapped>>;
template <class T>
using PlaneForm = Form<Planes<const T>, Planes<T>>;

// The inverse transform is the forward one with real and imaginary parts exchanged.
template <class T>
HWY_INLINE PlaneForm<T> PlaneFormOf(bool isInverse, const T* srcRe, const T* srcIm, T* dstRe, T* dstIm) {
  if (isInverse) return {{srcIm, srcRe}, {dstIm, dstRe}};
  return {{srcRe, srcIm}, {dstRe, dstIm}};
}

// ---- The transform of any order

// In registers if they take it.
template <class Form>
using Passed = std::conditional_t<sizeof(Form) <= 2 * sizeof(void*), const Form, const Form&>;

// By order; with a status, so that a call can end in a jump to one of them.
template <int order, bool isScaled, class Form>
OrpStatus Small(Passed<Form> form, typename Form::Real factor) {
  SmallTransform<order, isScaled>(form.src, form.dst, factor);
  return StsOk;
}

template <class Form>
struct SmallTable {
  using T = typename Form::Real;
  using Function = OrpStatus (*)(Passed<Form> form, T factor);
  Function of[2][kSmallOrder<T> + 1];

  template <int... order>
  constexpr explicit SmallTable(std::integer_sequence<int, order...>)
      : of{{&Small<order, false, Form>...}, {&Small<order, true, Form>...}} {}
};
template <class Form>
inline constexpr SmallTable<Form> kSmall{std::make_integer_sequence<int, kSmallOrder<typename Form::Real> + 1>{}};

template <bool isScaled, class T, class Source, class Destination>
HWY_INLINE void Transform(const ComplexCall<T>& call, const Form<Source, Destination>& form) {
  const auto to = [&](size_t point, size_t step) ORPSP_INLINED {
    const auto rows = form.To(point, step);
    if constexpr (isScaled) {
      return ScaledRows<T, decltype(form.To(point, step))>{rows, call.factor};
    } else {
      return rows;
    }
  };
  if constexpr (kLanes<T> >= 4) {
    if (usesScatter<T>(call.order, Destination::kArrays) && !form.IsInPlace()) return Scatter(call, form, to);
  }
  if (call.order < kFirstLargeOrder<T>) return Direct(call, form, to);
  const LargeShape shape(call.order);
  const LargeTables<T> tables(shape, const_cast<T*>(call.twiddles));
  const LargeTeam team(2 * kRow<T> * sizeof(T) << shape.LongestColumns(), call.work, complexWorkBytes<T>(call.order));
  FirstSweep(form, shape, tables, team);
  if (shape.hasMiddleSweep) MiddleSweep(shape, tables.middle, team, GridOf(form.dst));
  LastSweep(form, shape, tables.last, team, to);
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
    call.isInverse ? AnyOrder(call, PairForm<T, true>{{call.srcRe}, {call.dstRe}})
                   : AnyOrder(call, PairForm<T, false>{{call.srcRe}, {call.dstRe}});
  } else {
    AnyOrder(call, PlaneFormOf(call.isInverse, call.srcRe, call.srcIm, call.dstRe, call.dstIm));
  }
}

template <class T>
void FillComplexTables(int order, const QuarterSine<T>& sine, T* twiddles, int32_t* reversed) {
  if (order <= kSmallOrder<T>) return;
  if (order < kFirstLargeOrder<T>) {
    const BetweenTwiddles<T> between(order, twiddles);
    FillBetween(order, sine, between);
    FillColumnTwiddles(columnsOrder<T>(order), sine, between.columns);
    FillReversed(columnsOrder<T>(order), reversed);
  } else {
    FillLarge(order, sine, twiddles);
  }
  if (usesScatter<T>(order, 1)) FillScatter(order, sine, twiddles);
}

template void TransformComplex(const ComplexCall<float>& call);
template void TransformComplex(const ComplexCall<double>& call);
template void FillComplexTables(int order, const QuarterSine<float>& sine, float* twiddles, int32_t* reversed);
template void FillComplexTables(int order, const QuarterSine<double>& sine, double* twiddles, int32_t* reversed);

namespace {

// ---- Calls

template <bool isInverse, class T, class Form>
HWY_NOINLINE OrpStatus RunNotSmall(const Form& form, const FftSpec<T>& spec, Orp8u* pBuffer) {
  Workspace work;
  ORPS_RETURN_IF(!work.Provide(pBuffer, spec.workBytes), StsNoMemory);
  NotSmall(CallOf(spec, spec.order, isInverse, work.Memory()), form);
  return StsOk;
}

template <bool isInverse, class T, class Form>
HWY_INLINE OrpStatus Run(const Form& form, const FftSpec<T>& spec, Orp8u* pBuffer) {
  if (HWY_UNLIKELY(spec.order > kSmallOrder<T>)) return RunNotSmall<isInverse>(form, spec, pBuffer);
  const bool isScaled = (isInverse ? spec.scalesInverse : spec.scalesForward) != 0;
  return kSmall<Form>.of[isScaled][spec.order](form, spec.factor);
}

template <bool isInverse, class E, class Handle>
OrpStatus pairs(const E* pSrc, E* pDst, const Handle* pFFTSpec, Orp8u* pBuffer) {
  ORPS_CHECK_COMPLEX_FFT(pFFTSpec, pSrc, pDst);
  const PairForm<Lane<E>, isInverse> form{{lanes(pSrc)}, {lanes(pDst)}};
  return Run<isInverse>(form, *fftRecord(pFFTSpec), pBuffer);
}

template <bool isInverse, class T, class Handle>
OrpStatus planes(const T* pSrcRe, const T* pSrcIm, T* pDstRe, T* pDstIm, const Handle* pFFTSpec, Orp8u* pBuffer) {
  ORPS_CHECK_COMPLEX_FFT(pFFTSpec, pSrcRe, pSrcIm, pDstRe, pDstIm);
  const auto form = PlaneFormOf(isInverse, pSrcRe, pSrcIm, pDstRe, pDstIm);
  return Run<isInverse>(form, *fftRecord(pFFTSpec), pBuffer);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/fft_complex.inc"
#include "frame/exports-inl.h"
