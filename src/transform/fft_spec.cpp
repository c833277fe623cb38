// Specifications of FFTs: sizes, initialisation, release. The tables are those of the width that runs.
#include "orpsp/transform/fft_spec.h"

#include "frame/check.h"
#include "frame/entry.h"
#include "orpcore.h"
#include "simd/element.h"
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
OrpStatus getSize(int order, int flag, int hint, int* pSizeSpec, int* pSizeInit, int* pSizeBuf) {
  ORPS_RETURN_IF(order < 0 || order > 30, StsFftOrder);
  ORPS_RETURN_IF(anyNull(pSizeSpec, pSizeInit, pSizeBuf), StsNullPtr);
  ORPS_RETURN_IF(!isNormFlag(flag), StsFftFlag);
  ORPS_RETURN_IF(!IsOrder<Handle>(order), StsFftOrder);
  const FftSizes sizes = fftSizes<typename FftKind<Handle>::Real>(ShapeOf<Handle>(order, flag, hint));
  put(pSizeSpec, static_cast<int>(sizes.spec));
  put(pSizeInit, static_cast<int>(sizes.init));
  put(pSizeBuf, static_cast<int>(static_cast<uint32_t>(sizes.work)));
  return StsOk;
}

template <class Handle>
OrpStatus init(Handle** ppFFTSpec, int order, int flag, int hint, Orp8u* pSpec, Orp8u* pSpecBuffer) {
  using T = typename FftKind<Handle>::Real;
  ORPS_RETURN_IF(anyNull(ppFFTSpec), StsNullPtr);
  ORPS_RETURN_IF(!IsOrder<Handle>(order), StsFftOrder);
  ORPS_RETURN_IF(anyNull(pSpec), StsNullPtr);
  FftSpec<T>* const spec = placeSpec<T>(ShapeOf<Handle>(order, flag, hint), pSpec);
  ORPS_RETURN_IF(!isNormFlag(flag), StsFftFlag);
  const bool hasTables = spec->twiddles != nullptr || spec->split != nullptr;
  ORPS_RETURN_IF(hasTables && order > kStaticSineOrder && anyNull(pSpecBuffer), StsNullPtr);
  fft::FillPlan(*spec, orpAlignPtr(pSpecBuffer, 64));
  spec->tag = FftKind<Handle>::kTag;
  put(ppFFTSpec, reinterpret_cast<Handle*>(spec));
  return StsOk;
}

template <class Handle>
OrpStatus initAlloc(Handle** ppFFTSpec, int order, int flag, int hint) {
  ORPS_RETURN_IF(anyNull(ppFFTSpec), StsNullPtr);
  int specBytes = 0, initBytes = 0, workBytes = 0;
  OrpStatus status = getSize<Handle>(order, flag, hint, &specBytes, &initBytes, &workBytes);
  ORPS_RETURN_IF(status != StsOk, status);
  auto* const memory = static_cast<Orp8u*>(orpMalloc(specBytes));
  ORPS_RETURN_IF(memory == nullptr, StsNoMemory);
  auto* const buffer = initBytes > 0 ? static_cast<Orp8u*>(orpMalloc(initBytes)) : nullptr;
  Handle* spec = nullptr;
  status = initBytes > 0 && buffer == nullptr ? OrpStatus{StsNoMemory} : init(&spec, order, flag, hint, memory, buffer);
  orpFree(buffer);
  if (status != StsOk) {
    orpFree(memory);
    return status;
  }
  reinterpret_cast<typename FftKind<Handle>::Spec*>(spec)->isAllocated = 1;
  put(ppFFTSpec, spec);
  return StsOk;
}

template <class Handle>
OrpStatus getBufSize(const Handle* pFFTSpec, int* pBufferSize) {
  ORPS_RETURN_IF(anyNull(pFFTSpec, pBufferSize), StsNullPtr);
  const auto* const spec = fftRecord(pFFTSpec);
  ORPS_RETURN_IF(spec->tag != FftKind<Handle>::kTag, StsSpecMismatch);
  put(pBufferSize, spec->workBytes > 0 ? spec->workBytes + 64 : 0);
  return StsOk;
}

template <class Handle>
OrpStatus release(Handle* pFFTSpec) {
  ORPS_RETURN_IF(anyNull(pFFTSpec), StsNullPtr);
  auto* const spec = reinterpret_cast<typename FftKind<Handle>::Spec*>(pFFTSpec);
  ORPS_RETURN_IF(spec->tag != FftKind<Handle>::kTag, StsSpecMismatch);
  spec->tag = 0;
  if (spec->isAllocated == 1) orpFree(spec);
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/fft_spec.inc"
#define ORPSP_NEAREST always
#include "frame/exports-inl.h"
