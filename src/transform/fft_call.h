// What the calls of all transforms share: checks, working memory.
#pragma once

#include <cstdint>

#include "frame/access.h"
#include "frame/check.h"
#include "orpcore.h"
#include "transform/fft.h"

// The checks of a real transform: any pointer null, then the specification's tag.
#define ORPS_CHECK_FFT(spec, ...)                                  \
  ORPS_RETURN_IF(::orpsp::anyNull(spec, __VA_ARGS__), StsNullPtr); \
  ORPS_RETURN_IF(!::orpsp::isOfItsKind(spec), StsSpecMismatch)

// The checks of a complex transform: the specification and its tag, then the other pointers.
#define ORPS_CHECK_COMPLEX_FFT(spec, ...)                       \
  ORPS_RETURN_IF(::orpsp::anyNull(spec), StsNullPtr);           \
  ORPS_RETURN_IF(!::orpsp::isOfItsKind(spec), StsSpecMismatch); \
  ORPS_RETURN_IF(::orpsp::anyNull(__VA_ARGS__), StsNullPtr)

namespace orpsp {

template <class Handle>
__attribute__((always_inline)) inline bool isOfItsKind(const Handle* spec) {
  return fftRecord(spec)->tag == FftKind<Handle>::kTag;
}

// The caller's working memory from its first multiple of 64 bytes on, or memory of its own.
class Workspace {
 public:
  Workspace() = default;
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;
  ~Workspace() {
    if (own_) orpFree(own_);
  }

  // False if there is none to be had. With no bytes needed there is none.
  __attribute__((always_inline)) bool Provide(Orp8u* given, int64_t bytes) {
    if (bytes <= 0) return true;
    if (given) {
      memory_ = reinterpret_cast<Orp8u*>(upToMultiple(reinterpret_cast<uintptr_t>(given), 64));
      return true;
    }
    memory_ = own_ = static_cast<Orp8u*>(orpMalloc(bytes));
    return own_ != nullptr;
  }
  Orp8u* Memory() const { return memory_; }

 private:
  Orp8u* memory_ = nullptr;
  Orp8u* own_ = nullptr;
};

}  // namespace orpsp
