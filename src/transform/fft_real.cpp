// Real FFTs of N = 2^order points: the complex transform of M = N / 2 pairs, and the step between its spectrum Z and
// the spectrum X of N reals. Vectors of pairs go through that step from both ends at once: with w = 2 pi / N, t(k) =
// -sin(k w) - i cos(k w), and S(k) = A[k] + conj A[M - k], D(k) = A[k] - conj A[M - k] of its source A,
//
//   forward    X[k] = (S + t D) / 2,    X[M - k] = conj(S - t D) / 2
//   inverse    Z[k] = S + conj(t) D,    Z[M - k] = conj(S - conj(t) D)
//
// The complex transform applies the factor of the specification.
//
// [Sorensen, Jones, Heideman, Burrus 1987: Real-valued fast Fourier transform algorithms, IEEE Trans. ASSP 35]
#include "orpsp/transform/fft_real.h"

#include "frame/entry.h"
#include "simd/element.h"
#include "simd/targets.h"
#include "transform/fft_call.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transform/fft_real.cpp"
#include <hwy/foreach_target.h>

#include "transform/butterfly-inl.h"
#include "transform/fft_engine-inl.h"
#include "transform/fft_real-inl.h"
#include "transform/fft_split-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace fft {
namespace {

// ---- Roots of neighbouring k, each for two lanes

template <class V>
struct SplitRoots {
  V sines, cosines;  // sin / 2 twice, and cos / 2, -cos / 2
};

// Roots as they stand in a table.
template <class T>
struct TabledRoots {
  const T *sines, *cosines;

  template <class D>
  HWY_INLINE SplitRoots<hn::Vec<D>> At(D d, size_t k) const {
    return {hn::LoadU(d, sines + 2 * k), hn::LoadU(d, cosines + 2 * k)};
  }
};

// Roots of a coarse angle plus a fine one.
template <class D>
struct SummedRoots {
  using T = hn::TFromD<D>;
  const T* fine;
  size_t first;  // k of the coarse angle
  hn::Vec<D> sine, signedSine, cosine, signedCosine;

  HWY_INLINE SplitRoots<hn::Vec<D>> At(D d, size_t k) const {
    const T* const at = fine + 2 * (k - first);
    const auto change = hn::LoadU(d, at), fineSine = hn::LoadU(d, at + 2 * kFineRoots);
    return {hn::Add(sine, hn::MulAdd(sine, change, hn::Mul(cosine, fineSine))),
            hn::Add(signedCosine, hn::NegMulAdd(signedSine, fineSine, hn::Mul(signedCosine, change)))};
  }
};

template <class D, class T>
HWY_INLINE SummedRoots<D> RootsFrom(D d, const T* table, size_t k) {
  const T* const coarse = table + 4 * kFineRoots + 2 * (k / kFineRoots);
  const auto sine = hn::Set(d, coarse[0]), cosine = hn::Set(d, coarse[1]);
  return {table, k, sine, hn::OddEven(hn::Neg(sine), sine), cosine, hn::OddEven(hn::Neg(cosine), cosine)};
}

// ---- The step between the spectra

// Pair 0 of `first`, then the pairs of `rest` from the last one down to its pair 1. Counting down from an end of the
// array, that is a vector of pairs where `first` begins right behind `rest`; and of such vectors, counted down, it
// makes one that counts up again.
struct PickTurned {
  static constexpr size_t pick(size_t i, size_t lanes) { return i < 2 ? i : 2 * lanes - (i - i % 2) + i % 2; }
};
template <class V>
HWY_INLINE V Turned(V first, V rest) {
  if constexpr (hn::MaxLanes(hn::DFromV<V>{}) == 2) return first;
  return Shuffled<PickTurned>(first, rest);
}

template <class D>
HWY_INLINE hn::Vec<D> Conjugated(D d, hn::Vec<D> v) {
  return hn::Xor(v, hn::OddEven(hn::SignBit(d), hn::Zero(d)));
}

// Conjugates of factor * a - b, given (factor, -factor): the instruction subtracts in one lane and adds in the next.
template <class D, class V = hn::Vec<D>>
HWY_INLINE V MulSubConjugated([[maybe_unused]] D d, V a, V signedFactor, V b) {
#if HWY_TARGET == HWY_SSSE3
  return hn::MulSub(a, signedFactor, Conjugated(d, b));
#else
  constexpr bool kIsFloat = sizeof(hn::TFromD<D>) == 4;
  if constexpr (sizeof(V) == 16) {
    if constexpr (kIsFloat) return V{_mm_fmaddsub_ps(a.raw, signedFactor.raw, b.raw)};
    if constexpr (!kIsFloat) return V{_mm_fmaddsub_pd(a.raw, signedFactor.raw, b.raw)};
  } else if constexpr (sizeof(V) == 32) {
    if constexpr (kIsFloat) return V{_mm256_fmaddsub_ps(a.raw, signedFactor.raw, b.raw)};
    if constexpr (!kIsFloat) return V{_mm256_fmaddsub_pd(a.raw, signedFactor.raw, b.raw)};
  } else {
#if HWY_TARGET == HWY_AVX3
    if constexpr (kIsFloat) return V{_mm512_fmaddsub_ps(a.raw, signedFactor.raw, b.raw)};
    if constexpr (!kIsFloat) return V{_mm512_fmaddsub_pd(a.raw, signedFactor.raw, b.raw)};
#endif
  }
#endif
}

template <class Layout>
constexpr bool kIsPack = Layout::pairs(2) == 1;  // pairs begin at odd elements

// All but the first pair, at p; the first one may not be touched.
template <class D, class T = hn::TFromD<D>>
HWY_INLINE hn::Vec<D> LoadButFirst(D d, const T* p) {
#if HWY_TARGET == HWY_SSSE3
  if constexpr (hn::MaxLanes(d) == 2) return hn::Zero(d);
  const hn::Half<D> half;
  return hn::Combine(d, hn::LoadU(half, p + 2), hn::Zero(half));
#else
  return hn::MaskedLoad(hn::Not(hn::FirstN(d, 2)), d, p);
#endif
}
template <class D, class T = hn::TFromD<D>>
HWY_INLINE void StoreButFirst(hn::Vec<D> v, D d, T* p) {
#if HWY_TARGET == HWY_SSSE3
  if constexpr (hn::MaxLanes(d) == 4) {
    const hn::Half<D> half;
    hn::StoreU(hn::UpperHalf(half, v), half, p + 2);
  }
#else
  hn::BlendedStore(v, hn::Not(hn::FirstN(d, 2)), d, p);
#endif
}

// Takes vectors of pairs from both ends of a spectrum to the middle: k counts up, M - k down. Vectors at the upper end
// are as aligned as those at the lower one, so pair 0 of each belongs to the next step: M - k of a step is the first
// pair of the vector before, then those of the new one from its last on. From and to may be the same array, also where
// pairs move by one number.
template <class Layout, bool isInverse, class D>
struct SplitStep {
  using T = hn::TFromD<D>;
  using V = hn::Vec<D>;
  static constexpr D d{};
  static constexpr size_t kPairs = hn::MaxLanes(D{}) / 2;
  // Pair k begins at number 2 k, in Pack at 2 k - 1.
  static constexpr ptrdiff_t kFrom = isInverse && kIsPack<Layout> ? -1 : 0;
  static constexpr ptrdiff_t kTo = !isInverse && kIsPack<Layout> ? -1 : 0;

  const T* from;
  T* to;
  size_t pairs;  // M
  V signedOne;   // 1, -1
  V up, down;    // vectors read: at k, and the last one at the upper end
  V pending;     // the last result for the upper end

  HWY_INLINE V Load(size_t pair) const { return hn::LoadU(d, from + static_cast<ptrdiff_t>(2 * pair) + kFrom); }
  HWY_INLINE void Store(V v, size_t pair) const { hn::StoreU(v, d, to + static_cast<ptrdiff_t>(2 * pair) + kTo); }

  // Results for k and the following; those for M - k and down are left in `pending`.
  HWY_INLINE V Step(SplitRoots<V> roots, size_t k) {
    const V rest = Load(pairs - k - kPairs);
    const V mirrored = Turned(down, rest);
    down = rest;
    const V sum = hn::MulAdd(mirrored, signedOne, up);
    V difference = hn::NegMulAdd(mirrored, signedOne, up);
    if constexpr (isInverse) difference = hn::Add(difference, difference);
    const V byCosine = hn::Mul(roots.cosines, hn::Reverse2(d, difference));
    if constexpr (isInverse) {
      const V turned = hn::NegMulSub(roots.sines, difference, byCosine);
      pending = MulSubConjugated(d, sum, signedOne, turned);
      return hn::Add(sum, turned);
    } else {
      const V turned = hn::NegMulAdd(roots.sines, difference, byCosine), half = hn::Set(d, T{0.5});
      pending = MulSubConjugated(d, sum, hn::Mul(signedOne, half), turned);
      return hn::MulAdd(sum, half, turned);
    }
  }

  template <class Roots>
  HWY_INLINE void Run(const Roots& roots, size_t k, size_t end) {
    for (; k < end; k += kPairs) {
      const V before = pending;
      const V result = Step(roots.At(d, k), k);
      up = Load(k + kPairs);  // in Pack the result overwrites the first number of it
      Store(result, k);
      Store(Turned(pending, before), pairs - k);
    }
  }

  HWY_INLINE void First(SplitRoots<V> roots) {
    if constexpr (isInverse) {
      const V lower = hn::IfThenElseZero(hn::FirstN(d, 1), hn::Set(d, get(from)));
      if constexpr (kIsPack<Layout>) {
        up = hn::Or(LoadButFirst(d, from - 1), lower);
      } else {
        up = hn::Or(hn::IfThenZeroElse(hn::FirstN(d, 2), hn::LoadU(d, from)), lower);
      }
      down = hn::IfThenElseZero(hn::FirstN(d, 1), hn::Set(d, get(from + Layout::middle(2 * pairs))));
    } else {
      up = down = hn::LoadU(d, from);
    }
    const V result = Step(roots, 0);
    up = Load(kPairs);
    if constexpr (!isInverse && kIsPack<Layout>) {
      StoreButFirst(result, d, to - 1);
      put(to, hn::GetLane(result));
    } else {
      Store(result, 0);
    }
    if constexpr (!isInverse) {
      if constexpr (Layout::kAllArePairs) {
        put(to + 1, T{0});
        put(to + 2 * pairs + 1, T{0});
      }
      put(to + Layout::middle(2 * pairs), hn::GetLane(pending));
    }
  }

  // M / 2 mirrors itself.
  HWY_INLINE void Middle() {
    const V middle = hn::Mul(signedOne, isInverse ? hn::Add(down, down) : down);
    Store(Turned(middle, pending), pairs / 2);
  }
};

template <class Layout, bool isInverse, class D, class T = hn::TFromD<D>>
HWY_NOINLINE void SplitSpectrum(D d, int order, const T* table, const T* from, T* to) {
  const size_t quarter = size_t{1} << (order - 2);
  const auto any = hn::Undefined(d), one = hn::Set(d, T{1});
  SplitStep<Layout, isInverse, D> step{from, to, 2 * quarter, hn::OddEven(hn::Neg(one), one), any, any, any};
  if (order <= kLastDirectOrder) {
    const TabledRoots<T> roots{table, table + 2 * quarter};
    step.First(roots.At(d, 0));
    step.Run(roots, step.kPairs, quarter);
  } else {
    auto roots = RootsFrom(d, table, 0);
    step.First(roots.At(d, 0));
    step.Run(roots, step.kPairs, kFineRoots);
    for (size_t k = kFineRoots; k < quarter; k += kFineRoots) step.Run(RootsFrom(d, table, k), k, k + kFineRoots);
  }
  step.Middle();
}

// SplitSpectrum of any order; of few points, in vectors no wider than those that the complex transform has just stored.
template <class Layout, bool isInverse, class T>
HWY_INLINE void SplitAnySpectrum(int order, const T* table, const T* from, T* to) {
  if (order <= 6) {
    constexpr hn::CappedTag<T, 8> d;
    return SplitSpectrum<Layout, isInverse>(d, order, table, from, to);
  }
  constexpr hn::ScalableTag<T> d;
  SplitSpectrum<Layout, isInverse>(d, order, table, from, to);
}

// ---- Up to 16 points in registers, number by number
//
// Bins of even k are those of the sums x[j] + x[j + n / 2]. With differences d[j] = x[j] - x[j + n / 2] and q = n / 4,
//
//   X[4 m + 1] = sum over j < q of (d[j] - i d[j + q]) exp(-2 pi i j / n) exp(-2 pi i j m / q),
//
// and the other odd bins are conjugates of these. The inverse runs the same steps backwards.

// Hands bins to put(k, re, im), and those of k = 0 and N / 2 to putEnds; N = n * stride.
template <size_t stride, class V, size_t n, class Put, class PutEnds>
HWY_INLINE void FewToBins(const V (&x)[n], const Put& put, const PutEnds& putEnds) {
  if constexpr (n == 2) {
    putEnds(hn::Add(x[0], x[1]), hn::Sub(x[0], x[1]));
  } else {
    constexpr hn::DFromV<V> d;
    using T = hn::TFromV<V>;
    constexpr size_t kQuarter = n / 4;
    V sum[n / 2], difference[n / 2];
    Unrolled<n / 2>([&](auto j) ORPSP_INLINED {
      sum[j] = hn::Add(x[j], x[j + n / 2]);
      difference[j] = hn::Sub(x[j], x[j + n / 2]);
    });
    FewToBins<2 * stride>(sum, put, putEnds);
    Parts<V> odd[kQuarter], bins[kQuarter];
    Unrolled<kQuarter>([&](auto j) ORPSP_INLINED {
      const V re = difference[j], minusIm = difference[j + kQuarter];
      if constexpr (j == 0) {
        odd[j] = {re, hn::Neg(minusIm)};
      } else {
        const V cosine = hn::Set(d, static_cast<T>(Turn<j, n>::kCosine));
        const V sine = hn::Set(d, static_cast<T>(Turn<j, n>::kSine));
        odd[j] = {hn::NegMulAdd(minusIm, sine, hn::Mul(re, cosine)), hn::NegMulSub(re, sine, hn::Mul(minusIm, cosine))};
      }
    });
    Dft<kQuarter, 0, 1>([&](auto j) ORPSP_INLINED { return odd[j]; }, bins);
    Unrolled<kQuarter>([&](auto m) ORPSP_INLINED {
      constexpr size_t k = 4 * m + 1;
      if constexpr (2 * k < n) {
        put(k * stride, bins[m].re, bins[m].im);
      } else {
        put((n - k) * stride, bins[m].re, hn::Neg(bins[m].im));
      }
    });
  }
}

template <size_t stride, class V, size_t n, class Get, class GetEnds>
HWY_INLINE void FewFromBins(const Get& get, const GetEnds& getEnds, V (&x)[n]) {
  if constexpr (n == 2) {
    const Parts<V> ends = getEnds();
    x[0] = hn::Add(ends.re, ends.im);
    x[1] = hn::Sub(ends.re, ends.im);
  } else {
    constexpr hn::DFromV<V> d;
    using T = hn::TFromV<V>;
    constexpr size_t kQuarter = n / 4;
    V even[n / 2], odd[n / 2];
    FewFromBins<2 * stride>(get, getEnds, even);
    Parts<V> bins[kQuarter], few[kQuarter];  // parts exchanged, which makes a forward transform an inverse one
    Unrolled<kQuarter>([&](auto m) ORPSP_INLINED {
      constexpr size_t k = 4 * m + 1;
      const Parts<V> bin = get(2 * k < n ? k * stride : (n - k) * stride);
      bins[m] = {2 * k < n ? bin.im : hn::Neg(bin.im), bin.re};
    });
    Dft<kQuarter, 0, 1>([&](auto m) ORPSP_INLINED { return bins[m]; }, few);
    Unrolled<kQuarter>([&](auto j) ORPSP_INLINED {
      const V re = few[j].im, im = few[j].re;
      if constexpr (j == 0) {
        odd[j] = hn::Add(re, re);
        odd[j + kQuarter] = hn::Neg(hn::Add(im, im));
      } else {
        const V cosine = hn::Set(d, static_cast<T>(2 * Turn<j, n>::kCosine));
        const V sine = hn::Set(d, static_cast<T>(2 * Turn<j, n>::kSine));
        odd[j] = hn::NegMulAdd(im, sine, hn::Mul(re, cosine));
        odd[j + kQuarter] = hn::NegMulSub(re, sine, hn::Mul(im, cosine));
      }
    });
    Unrolled<n / 2>([&](auto j) ORPSP_INLINED {
      x[j] = hn::Add(even[j], odd[j]);
      x[j + n / 2] = hn::Sub(even[j], odd[j]);
    });
  }
}

template <class Layout, size_t count, class T>
HWY_INLINE void FewToSpectrum(T factor, const T* src, T* dst) {
  constexpr hn::CappedTag<T, 1> d;
  using V = hn::Vec<decltype(d)>;
  const auto putScaled = [=](size_t at, V v) ORPSP_INLINED { put(dst + at, factor * hn::GetLane(v)); };
  V x[count];
  Unrolled<count>([&](auto j) ORPSP_INLINED { x[j] = hn::Set(d, get(src + j)); });
  if constexpr (Layout::kAllArePairs) {
    put(dst + 1, T{0});
    if constexpr (count > 1) put(dst + count + 1, T{0});
  }
  if constexpr (count == 1) {
    putScaled(0, x[0]);
  } else {
    FewToBins<1>(
        x,
        [=](size_t k, V re, V im) ORPSP_INLINED {
          putScaled(2 * k - kIsPack<Layout>, re);
          putScaled(2 * k + 1 - kIsPack<Layout>, im);
        },
        [=](V first, V last) ORPSP_INLINED {
          putScaled(0, first);
          putScaled(Layout::middle(count), last);
        });
  }
}

template <class Layout, size_t count, class T>
HWY_INLINE void SpectrumToFew(T factor, const T* src, T* dst) {
  constexpr hn::CappedTag<T, 1> d;
  using V = hn::Vec<decltype(d)>;
  const auto load = [=](size_t at) ORPSP_INLINED { return hn::Set(hn::CappedTag<T, 1>{}, get(src + at)); };
  V x[count];
  if constexpr (count == 1) {
    x[0] = load(0);
  } else {
    FewFromBins<1>(
        [=](size_t k) ORPSP_INLINED {
          return Parts<V>{load(2 * k - kIsPack<Layout>), load(2 * k + 1 - kIsPack<Layout>)};
        },
        [=]() ORPSP_INLINED {
          return Parts<V>{load(0), load(Layout::middle(count))};
        },
        x);
  }
  Unrolled<count>([&](auto j) ORPSP_INLINED { put(dst + j, factor * hn::GetLane(x[j])); });
}

// Calls f with 2^order as a constant.
constexpr int kMostFewOrder = 4;
template <int least = 0, class F>
HWY_INLINE void WithFewPoints(int order, const F& f) {
  if constexpr (least < kMostFewOrder) {
    if (order > least) return WithFewPoints<least + 1>(order, f);
  }
  f(std::integral_constant<size_t, (size_t{1} << least)>{});
}

}  // namespace

template <class Layout, class T>
void RealToSpectrum(const FftSpec<T>& spec, const T* src, T* dst, void* work) {
  const T factor = IsScaled<false>(spec) ? spec.factor : 1;
  if (spec.order <= kMostFewOrder)
    return WithFewPoints(spec.order, [&](auto count) ORPSP_INLINED { FewToSpectrum<Layout, count>(factor, src, dst); });
  TransformPairs<false>(spec, spec.order - 1, src, dst, work);
  SplitAnySpectrum<Layout, false>(spec.order, spec.split, dst, dst);
}

template <class Layout, class T>
void SpectrumToReal(const FftSpec<T>& spec, const T* src, T* dst, void* work) {
  const T factor = IsScaled<true>(spec) ? spec.factor : 1;
  if (spec.order <= kMostFewOrder)
    return WithFewPoints(spec.order, [&](auto count) ORPSP_INLINED { SpectrumToFew<Layout, count>(factor, src, dst); });
  SplitAnySpectrum<Layout, true>(spec.order, spec.split, src, dst);
  TransformPairs<true>(spec, spec.order - 1, dst, dst, work);
}

#define ORPS_INSTANTIATE(Layout, T)                                                \
  template void RealToSpectrum<Layout, T>(const FftSpec<T>&, const T*, T*, void*); \
  template void SpectrumToReal<Layout, T>(const FftSpec<T>&, const T*, T*, void*)
ORPS_INSTANTIATE(PackLayout, float);
ORPS_INSTANTIATE(PermLayout, float);
ORPS_INSTANTIATE(CcsLayout, float);
ORPS_INSTANTIATE(PackLayout, double);
ORPS_INSTANTIATE(PermLayout, double);
ORPS_INSTANTIATE(CcsLayout, double);
#undef ORPS_INSTANTIATE

}  // namespace fft

namespace {

template <auto kTransform, class T, class Handle>
HWY_INLINE OrpStatus TransformReal(const T* src, T* dst, const Handle* handle, Orp8u* buffer) {
  ORPS_CHECK_FFT(handle, src, dst);
  const FftSpec<T>& spec = *fftRecord(handle);
  Workspace work;
  ORPS_RETURN_IF(!work.Provide(buffer, spec.workBytes), StsNoMemory);
  kTransform(spec, src, dst, work.Memory());
  return StsOk;
}

template <class Layout, class T, class Handle>
OrpStatus forward(const T* pSrc, T* pDst, const Handle* pFFTSpec, Orp8u* pBuffer) {
  return TransformReal<&fft::RealToSpectrum<Layout, T>>(pSrc, pDst, pFFTSpec, pBuffer);
}
template <class Layout, class T, class Handle>
OrpStatus inverse(const T* pSrc, T* pDst, const Handle* pFFTSpec, Orp8u* pBuffer) {
  return TransformReal<&fft::SpectrumToReal<Layout, T>>(pSrc, pDst, pFFTSpec, pBuffer);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/fft_real.inc"
#include "frame/exports-inl.h"
