// The record of an FFT specification, and the tables of twiddle factors in it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "orpsp/transform/fft_spec.h"
#include "transform/sine.h"

namespace orpsp {

// Every specification, whatever its element type: T is the floating-point type that computes. Integer types use the
// record of that type with their own tag, hint and work size. The record stands on a multiple of 64 bytes, the tables
// on the next one behind the header. Order 0 of the 16-bit types has room for the fields only.
template <class T>
struct FftSpec {
  int32_t tag;
  int32_t order;
  int32_t scalesForward;  // 1: the forward transform multiplies its result by the factor
  int32_t scalesInverse;
  T factor;
  int32_t hint;
  int32_t workBytes;  // of one call, without what aligning it takes; 0 if it exceeds an int
  int32_t isAllocated;
  T* twiddles;        // of the complex transform, of half the length if this one is real; null where there are none
  int32_t* reversed;  // the row of the result that each block of the last pass begins with; null where there is none
  T* split;           // of real types: fft_split-inl.h; null where there is none
  uint64_t home;      // frame/state.h
};

constexpr size_t kFftHeaderBytes = 136;
static_assert(sizeof(FftSpec<float>) <= 72 && sizeof(FftSpec<double>) <= 72);
static_assert(offsetof(FftSpec<float>, hint) == 20 && offsetof(FftSpec<double>, hint) == 24);

// What tells the types of specifications apart. sampleBytes: of the widest integer that a sample or a spectrum is made
// of, 0 for floating-point types.
template <class T, int32_t tag, bool isReal, size_t sampleBytes = 0>
struct FftKindOf {
  using Real = T;
  using Spec = FftSpec<T>;
  static constexpr int32_t kTag = tag;
  static constexpr bool kIsReal = isReal;
  static constexpr size_t kSampleBytes = sampleBytes;
};

template <class Handle>
struct FftKind;
template <>
struct FftKind<OrpFftSpec_C_16sc> : FftKindOf<float, 1, false, 2> {};
template <>
struct FftKind<OrpFftSpec_C_16s> : FftKindOf<float, 2, false, 2> {};
template <>
struct FftKind<OrpFftSpec_R_16s> : FftKindOf<float, 3, true, 2> {};
template <>
struct FftKind<OrpFftSpec_C_32fc> : FftKindOf<float, 4, false> {};
template <>
struct FftKind<OrpFftSpec_C_32f> : FftKindOf<float, 5, false> {};
template <>
struct FftKind<OrpFftSpec_R_32f> : FftKindOf<float, 6, true> {};
template <>
struct FftKind<OrpFftSpec_C_64fc> : FftKindOf<double, 7, false> {};
template <>
struct FftKind<OrpFftSpec_C_64f> : FftKindOf<double, 8, false> {};
template <>
struct FftKind<OrpFftSpec_R_64f> : FftKindOf<double, 9, true> {};
template <>
struct FftKind<OrpFftSpec_C_32sc> : FftKindOf<double, 0x434D414C, false, 4> {};
template <>
struct FftKind<OrpFftSpec_C_32s> : FftKindOf<double, 0x434D414D, false, 4> {};
template <>
struct FftKind<OrpFftSpec_R_32s> : FftKindOf<double, 0x434D414E, true, 4> {};
template <>
struct FftKind<OrpFftSpec_R_16s32s> : FftKindOf<float, 0x434D414F, true, 4> {};

// The record that a caller's pointer means; null stays null.
template <class Handle>
__attribute__((always_inline)) inline const typename FftKind<Handle>::Spec* fftRecord(const Handle* spec) {
  return reinterpret_cast<const typename FftKind<Handle>::Spec*>(spec);
}

}  // namespace orpsp
