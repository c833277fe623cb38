// Specifications of FFTs: sizes, initialisation, release. The tables are those of the width that runs.
#include "orpsp/transform/fft_spec.h"

#include "frame/check.h"
#include "frame/entry.h"
#include "frame/state.h"
#include "simd/targets.h"
#include "transform/fft_sizes.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transform/fft_spec.cpp"
#include <hwy/foreach_target.h>

#include "transform/plan-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

template <class Handle>
FftShape ShapeOf(int order, int flag, int hint) {
  using Kind = FftKind<Handle>;
  return {order, flag, hint, Kind::kIsReal, Kind::kSampleBytes};
}

template <class Handle>
bool IsOrder(int order) {
  using Kind = FftKind<Handle>;
  return order >= 0 && order <= highestOrder<typename Kind::Real>(Kind::kIsReal);
}

template <class Handle>
struct Fft : KindOf<typename FftKind<Handle>::Spec, Tags<FftKind<Handle>::kTag>, true> {
  using T = typename FftKind<Handle>::Real;
  static constexpr int kAlignment = 64;

  // InitAlloc's order, which is GetSize's; Init has one of its own.
  static OrpStatus Check(int order, int flag, int) {
    ORPS_RETURN_IF(order < 0 || order > 30, StsFftOrder);
    ORPS_RETURN_IF(!isNormFlag(flag), StsFftFlag);
    ORPS_RETURN_IF(!IsOrder<Handle>(order), StsFftOrder);
    return StsOk;
  }
  static RecordBytes Bytes(int order, int flag, int hint) {
    const FftSizes sizes = fftSizes<T>(ShapeOf<Handle>(order, flag, hint));
    return {sizes.spec, sizes.init};
  }
  static OrpStatus Make(FftSpec<T>& spec, Orp8u* buffer, int order, int flag, int hint) {
    fillSpec(ShapeOf<Handle>(order, flag, hint), spec);
    ORPS_RETURN_IF(!isNormFlag(flag), StsFftFlag);
    const bool hasTables = spec.twiddles != nullptr || spec.split != nullptr;
    ORPS_RETURN_IF(hasTables && order > kStaticSineOrder && anyNull(buffer), StsNullPtr);
    fft::FillPlan(spec, orpAlignPtr(buffer, 64));
    spec.tag = FftKind<Handle>::kTag;
    return StsOk;
  }
};

template <class Handle>
OrpStatus getSize(int order, int flag, int hint, int* pSizeSpec, int* pSizeInit, int* pSizeBuf) {
  ORPS_RETURN_IF(order < 0 || order > 30, StsFftOrder);
  ORPS_RETURN_IF(anyNull(pSizeSpec, pSizeInit, pSizeBuf), StsNullPtr);
  const OrpStatus status = Fft<Handle>::Check(order, flag, hint);
  ORPS_RETURN_IF(status != StsOk, status);
  const FftSizes sizes = fftSizes<typename FftKind<Handle>::Real>(ShapeOf<Handle>(order, flag, hint));
  put(pSizeSpec, static_cast<int>(sizes.spec));
  put(pSizeInit, static_cast<int>(sizes.init));
  put(pSizeBuf, static_cast<int>(sizes.work));
  return StsOk;
}

template <class Handle>
OrpStatus initAligned(Handle** ppFFTSpec, int order, int flag, int hint, Orp8u* pSpec, Orp8u* pSpecBuffer) {
  ORPS_RETURN_IF(anyNull(ppFFTSpec), StsNullPtr);
  ORPS_RETURN_IF(!IsOrder<Handle>(order), StsFftOrder);
  ORPS_RETURN_IF(anyNull(pSpec), StsNullPtr);
  return initIn<Fft>(pSpec, pSpecBuffer, ppFFTSpec, order, flag, hint);
}

template <class Handle>
OrpStatus getBufSize(const Handle* pFFTSpec, int* pBufferSize) {
  ORPS_RETURN_IF(anyNull(pFFTSpec, pBufferSize), StsNullPtr);
  ORPS_RETURN_IF(!accepts<typename Fft<Handle>::Tags>(pFFTSpec), StsSpecMismatch);
  const int bytes = fftRecord(pFFTSpec)->workBytes;
  put(pBufferSize, bytes > 0 ? bytes + 64 : 0);
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/fft_spec.inc"
#define ORPSP_NEAREST always
#include "frame/exports-inl.h"
