// Dot products.
#include "orpsp/stats/dot.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "stats/dot.cpp"
#include <hwy/foreach_target.h>

#include "simd/complex-inl.h"
#include "simd/forms-inl.h"
#include "stats/integer_sums-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// ---- Floating point

// A real vector by a complex one.
template <class T>
struct RealByComplex {
  using Lanes = Sums<T, kUsualLanes<T> / 2>;
  static constexpr size_t kVectors = Lanes::kVectors, kPer = Lanes::kWidth;
  Lanes re, im;

  HWY_INLINE void Add(size_t k, auto real, auto complex) {
    const auto a = Lift(typename Lanes::D{}, real);
    const auto b = PartsOf(complex);
    re.Add(k, hn::Mul(a, b.re));
    im.Add(k, hn::Mul(a, b.im));
  }
  HWY_INLINE Parts<T> Total() const { return {re.Total(), im.Total()}; }
};

template <class T>
struct ComplexByComplex {
  using Lanes = Sums<T, kUsualLanes<T> / 4>;
  static constexpr size_t kVectors = Lanes::kVectors, kPer = Lanes::kWidth;
  Lanes reRe, imRe, reIm, imIm;

  HWY_INLINE void Add(size_t k, auto first, auto second) {
    const auto a = PartsOf(first), b = PartsOf(second);
    reRe.Add(k, hn::Mul(a.re, b.re));
    imRe.Add(k, hn::Mul(a.im, b.re));
    reIm.Add(k, hn::Mul(a.re, b.im));
    imIm.Add(k, hn::Mul(a.im, b.im));
  }
  HWY_INLINE Parts<T> Total() const { return {reRe.Total() - imIm.Total(), imRe.Total() + reIm.Total()}; }
};

template <size_t lanes, class T, class R>
HWY_NOINLINE R RealProduct(size_t len, const T* a, const T* b) {
  return Accumulated<SumOf<R, lanes, Product>>(len, Vector<T>{a}, Vector<T>{b}).sum.Total();
}

template <class A, class B, class R>
HWY_NOINLINE R ComplexProduct(size_t len, const A* a, const B* b) {
  using T = Lane<R>;
  const auto total = [=]() HWY_ATTR {
    if constexpr (isComplex<A>) {
      return Accumulated<ComplexByComplex<T>>(len, PlanesFor<T>(a), PlanesFor<T>(b)).Total();
    } else {
      return Accumulated<RealByComplex<T>>(len, Vector<A>{a}, PlanesFor<T>(b)).Total();
    }
  }();
  return {total.re, total.im};
}

template <class A, class B, class R>
OrpStatus product(const A* pSrc1, const B* pSrc2, int len, R* pDp) {
  ORPS_CHECK_VECTOR(len, pSrc1, pSrc2, pDp);
  if constexpr (isComplex<R>) {
    put(pDp, ComplexProduct<A, B, R>(toSize(len), pSrc1, pSrc2));
  } else {
    constexpr size_t kLanes = std::is_same_v<R, float> ? 16 : kUsualLanes<R>;
    put(pDp, RealProduct<kLanes, A, R>(toSize(len), pSrc1, pSrc2));
  }
  return StsOk;
}

// ---- Integers, exact. Sums and products of two elements are below 2^31 or 2^63, but for one of them that wraps to the
// least number: SignedSums knows.

constexpr hn::ScalableTag<int16_t> kTag16;
constexpr hn::ScalableTag<int32_t> kTag32;

struct ByWords16 : OfVectors<2> {
  SignedSums<int32_t> sums;
  HWY_INLINE void Add(size_t, auto a, auto b) { sums.Add(SumOfPairs(a, b)); }
  HWY_INLINE void Flush() { sums.Flush(); }
  HWY_INLINE Int128 Total() const { return sums.Total(); }
};

struct ByWords32 : OfVectors<4> {
  SignedSums<int64_t> sums;
  HWY_INLINE void Add(size_t, auto first, auto b) {
    const auto a = Lift(kTag32, first);
    sums.Add(hn::MulEven(a, b));
    sums.Add(hn::MulEven(OddLanes(a), OddLanes(b)));
  }
  HWY_INLINE void Flush() {}
  HWY_INLINE Int128 Total() const { return sums.Total(); }
};

template <class T>
struct ComplexSums : OfVectors<sizeof(T)> {
  SignedSums<T> re, im;
  HWY_INLINE void Flush() {
    re.Flush();
    im.Flush();
  }
  HWY_INLINE Parts<Int128> Total() const { return {re.Total(), im.Total()}; }
};

// Sources: an element for each lane of 32 bits.
struct RealByPairs16 : ComplexSums<int32_t> {
  HWY_INLINE void Add(size_t, auto real, auto b) {
    constexpr hn::RebindToUnsigned<hn::DFromV<decltype(real)>> du;
    const auto a = hn::PromoteTo(hn::ScalableTag<uint32_t>{}, hn::BitCast(du, real));
    re.Add(SumOfPairs(hn::BitCast(kTag16, a), b));
    im.Add(SumOfPairs(hn::BitCast(kTag16, hn::ShiftLeft<16>(a)), b));
  }
};

// Each real element is taken twice, once for either part.
struct RealByPairs32 : ComplexSums<int64_t> {
  HWY_INLINE void Add(size_t, auto a, auto b) {
    re.Add(hn::MulEven(a, b));
    im.Add(hn::MulEven(a, OddLanes(b)));
  }
};

template <class T>
struct PairsByPairs : ComplexSums<T> {
  HWY_INLINE void Add(size_t, auto a, auto b) {
    const auto products = WideComplexProduct(a, b);
    this->re.Add(products.first);
    this->im.Add(products.second);
  }
};

template <class A, class B>
HWY_NOINLINE auto ExactProduct(size_t len, const A* a, const B* b) {
  constexpr bool kWords16 = sizeof(Lane<B>) == 2;
  if constexpr (!isComplex<B>) {
    return Accumulated<std::conditional_t<kWords16, ByWords16, ByWords32>>(len, Vector<A>{a}, Vector<B>{b}).Total();
  } else if constexpr (isComplex<A>) {
    using Acc = PairsByPairs<std::conditional_t<kWords16, int32_t, int64_t>>;
    return Accumulated<Acc>(len, Vector<A>{a}, Vector<B>{b}).Total();
  } else if constexpr (kWords16) {
    return Accumulated<RealByPairs16>(len, Vector<A>{a}, Vector<B>{b}).Total();
  } else {
    return Accumulated<RealByPairs32>(len, Twice<A>{a}, Vector<B>{b}).Total();
  }
}

// The result type holds every total, or the total is rounded once.
template <class A, class B, class R>
OrpStatus productOfIntegers(const A* pSrc1, const B* pSrc2, int len, R* pDp) {
  ORPS_CHECK_VECTOR(len, pSrc1, pSrc2, pDp);
  put(pDp, Finished<R>(ExactProduct(toSize(len), pSrc1, pSrc2), [](Int128 total, auto type) {
        return static_cast<decltype(type)>(static_cast<int64_t>(total));
      }));
  return StsOk;
}

template <class A, class B, class R>
OrpStatus productSfs(const A* pSrc1, const B* pSrc2, int len, R* pDp, int scaleFactor) {
  ORPS_CHECK_VECTOR(len, pSrc1, pSrc2, pDp);
  put(pDp, Finished<R>(ExactProduct(toSize(len), pSrc1, pSrc2), Scaled{scaleFactor}));
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/dot.inc"
#include "frame/exports-inl.h"
