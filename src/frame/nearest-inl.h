// Exports that compute under round-to-nearest, whatever rounding mode their caller has set.
//
// A kernel file says which of its exports do, by one of the rules below, before it includes frame/exports-inl.h:
//
//   #define ORPSP_TABLE "exports/divide.inc"
//   #define ORPSP_NEAREST intoIntegers
//   #include "frame/exports-inl.h"
//
// The mode is found out by a conversion: storing the control register takes about as long as the shortest calls. It is
// written only if it must be changed, for the duration of the call and with it for the threads that share the call.
#if defined(ORPSP_FRAME_NEAREST_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_FRAME_NEAREST_INL_H_
#undef ORPSP_FRAME_NEAREST_INL_H_
#else
#define ORPSP_FRAME_NEAREST_INL_H_
#endif

#include <hwy/highway.h>

#include "simd/element.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// ---- Rules: of a prototype's type

template <class A>
inline constexpr bool isOfFloats = false;
template <class T>
inline constexpr bool isOfFloats<T*> =
    isFloat<std::remove_const_t<T>> || std::is_same_v<std::remove_const_t<T>, Orp16f>;

template <class A>
inline constexpr bool isResultOfIntegers = false;
template <class T>
inline constexpr bool isResultOfIntegers<T*> = !std::is_const_v<T> && !isOfFloats<T*>;

template <class Function>
inline constexpr bool never = false;
template <class Function>
inline constexpr bool always = true;
template <class Function>
inline constexpr bool withFloats = false;
template <class... A>
inline constexpr bool withFloats<OrpStatus (*)(A...)> = (isOfFloats<A> || ...);
template <class Function>
inline constexpr bool intoIntegers = false;
template <class... A>
inline constexpr bool intoIntegers<OrpStatus (*)(A...)> = (isResultOfIntegers<A> || ...);
template <class Function>
inline constexpr bool fromFloatsIntoIntegers = withFloats<Function>&& intoIntegers<Function>;

// ---- Calls

// -1/4 and -3/4 become 0 and -1 only when rounded to nearest.
HWY_INLINE bool RoundsToNearest() {
  __m128 quarters = _mm_setr_ps(-0.25F, -0.75F, -0.25F, -0.75F);
  __asm__ volatile("" : "+x"(quarters));  // the compiler does not know the mode
  return HWY_LIKELY(_mm_movemask_ps(_mm_castsi128_ps(_mm_cvtps_epi32(quarters))) == 0b1010);
}

// The call is made by its address, which the compiler is kept from seeing through: it would move arithmetic to where
// the mode is another one. Exceptions that the call raises stay raised.
template <class... A>
__attribute__((cold)) HWY_NOINLINE OrpStatus CallRounded(OrpStatus (*call)(A...), A... arguments) {
  __asm__ volatile("" : "+r"(call));
  const unsigned control = _mm_getcsr();
  _mm_setcsr(control & ~static_cast<unsigned>(_MM_ROUND_MASK));
  const OrpStatus status = call(arguments...);
  _mm_setcsr(_mm_getcsr() | (control & _MM_ROUND_MASK));
  return status;
}

// The slow path comes back here, so that the implementation is called in one place, where it can be inlined.
template <auto implementation>
struct Nearest;
template <class... A, OrpStatus (*implementation)(A...)>
struct Nearest<implementation> {
  static OrpStatus Call(A... arguments) {
    return RoundsToNearest() ? implementation(arguments...) : CallRounded(&Call, arguments...);
  }
};

// The implementation, or the function that calls it under round-to-nearest.
template <bool toNearest, auto implementation>
constexpr auto chosen() {
  if constexpr (toNearest) {
    return &Nearest<implementation>::Call;
  } else {
    return implementation;
  }
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif
