// Tones and triangles.
//
// Phases are kept in turns, where a period is 1: the turns that n samples take are exact to the last bit for any n, so
// that a signal does not depend on how it is divided into calls.
#include "orpsp/generate/tone.h"

#include <cmath>

#include "frame/check.h"
#include "frame/entry.h"
#include "frame/state.h"
#include "simd/element.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "generate/tone.cpp"
#include <hwy/foreach_target.h>

#include "generate/rotation-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// ---- Phases

constexpr double kTwoPi = 6.283185307179586;

// Turns below 2 as a fraction.
HWY_INLINE Doubles FractionOf(Doubles turns) { return Wrapped(turns, hn::Set(kDoubles, 1.0)); }

// The fractions of multiples of a frequency in [0, 0.5).
class Turns {
 public:
  explicit Turns(double frequency) {
    parts_[0] = std::floor(frequency * 0x1p21) * 0x1p-21;
    parts_[1] = std::floor((frequency - parts_[0]) * 0x1p43) * 0x1p-43;
    parts_[2] = frequency - parts_[0] - parts_[1];
  }

  // n times the frequency less its integer, n < 2^31: the products of the first two parts are exact.
  double operator()(size_t n) const {
    const double times = static_cast<double>(n);
    const double sum = Fraction(times * parts_[0]) + Fraction(times * parts_[1]) + times * parts_[2];
    return Fraction(sum);
  }
  // A vector of n below 2^10.
  HWY_INLINE Doubles operator()(Doubles n) const {
    const auto product = hn::Mul(n, hn::Set(kDoubles, parts_[0]));
    const auto rest = hn::Mul(n, hn::Set(kDoubles, parts_[1] + parts_[2]));
    return FractionOf(hn::Add(hn::Sub(product, hn::Floor(product)), rest));
  }

 private:
  static double Fraction(double turns) { return turns - std::floor(turns); }

  double parts_[3];
};

// The phase in [0, 2 pi) after some turns.
template <class Real>
Real Advanced(double phase, double turns) {
  const double sum = phase + kTwoPi * turns;
  const Real rounded = static_cast<Real>(sum >= kTwoPi ? sum - kTwoPi : sum);
  return rounded >= 0 && rounded < kTwoPi ? rounded : Real{0};
}

// ---- Tone

template <class T, class E>
HWY_NOINLINE void FillTone(E* dst, size_t len, double magnitude, const Turns& turns, double phase) {
  const Direction direction = Direction::Of(phase / kTwoPi);
  Rotation<T, sizeof(Lane<E>) == 8 ? 8 : 64, Turns> pointer(
      turns, {magnitude * direction.re, phase == 0 ? 0 : magnitude * direction.im}, len);
  Fill(dst, len, [&](size_t n) ORPSP_INLINED {
    if (n % kTurnedBlock == 0) pointer.Begin(n);
    if constexpr (isComplex<E>) {
      return Group<E, T>::Of(pointer.Re(n % kTurnedBlock), pointer.Im(n % kTurnedBlock));
    } else {
      return Group<E, T>::Of(pointer.Re(n % kTurnedBlock));
    }
  });
}

template <class E, class Magnitude, class Real>
OrpStatus toneDirect(E* pDst, int len, Magnitude magnitude, Real rFreq, Real* pPhase, int hint) {
  ORPS_RETURN_IF(anyNull(pPhase), StsNullPtr);
  ORPS_RETURN_IF(!(magnitude > 0), StsToneMagnitude);
  ORPS_RETURN_IF(!(rFreq >= 0 && rFreq < Real{0.5}), StsToneFrequency);
  const double phase = get(pPhase);
  ORPS_RETURN_IF(!(phase >= 0 && phase < kTwoPi), StsTonePhase);
  ORPS_CHECK_VECTOR(len, pDst);
  const size_t count = static_cast<size_t>(len);
  const Turns turns(rFreq);
  put(pPhase, Advanced<Real>(phase, turns(count)));
  if (sizeof(Real) == 4 && hint == 1) {
    FillTone<Real>(pDst, count, magnitude, turns, phase);
  } else {
    FillTone<double>(pDst, count, magnitude, turns, phase);
  }
  return StsOk;
}

// ---- Triangle

// The wave of magnitude 1 as a function of the phase in turns: from 1 down to -1 at `turn`, and up again. Of the two
// lines the upper one counts.
class Wave {
 public:
  explicit Wave(double asymmetry) : turn_(HWY_MAX(0.5 + asymmetry / kTwoPi, 0)) {
    fall_ = turn_ > 0 ? -2 / turn_ : 0;
    top_ = turn_ > 0 ? 1 : -1;  // it falls at once, before the first sample
    rise_ = 2 / (1 - turn_);
  }

  HWY_INLINE Doubles At(Doubles turns) const {
    const auto one = hn::Set(kDoubles, 1.0);
    const auto falling = hn::Add(hn::Mul(turns, hn::Set(kDoubles, fall_)), hn::Set(kDoubles, top_));
    const auto rising = hn::Sub(hn::Mul(hn::Sub(turns, hn::Set(kDoubles, turn_)), hn::Set(kDoubles, rise_)), one);
    return hn::Min(hn::Max(falling, rising), one);
  }

 private:
  double turn_, fall_, top_, rise_;
};

template <class E>
HWY_NOINLINE void FillTriangle(E* dst, size_t len, double magnitude, const Turns& turns, double asymmetry,
                               double phase) {
  const Wave wave(asymmetry);
  const auto scale = hn::Set(kDoubles, magnitude);
  const double start = phase / kTwoPi;
  alignas(64) double fine[kTurnedBlock];
  for (size_t j = 0; j < HWY_MIN(len, kTurnedBlock); j += kDoubleLanes)
    hn::Store(turns(Indices(j)), kDoubles, fine + j);
  double first = 0;
  Fill(dst, len, [&](size_t n) ORPSP_INLINED {
    if (n % kTurnedBlock == 0) {
      first = start + turns(n);
      if (first >= 1) first -= 1;
    }
    const auto at = FractionOf(hn::Add(hn::Set(kDoubles, first), hn::Load(kDoubles, fine + n % kTurnedBlock)));
    const auto re = hn::Mul(wave.At(at), scale);
    if constexpr (isComplex<E>) {
      const auto quarterBefore = FractionOf(hn::Add(at, hn::Set(kDoubles, 0.75)));
      return Group<E>::Of(re, hn::Mul(wave.At(quarterBefore), scale));
    } else {
      return Group<E>::Of(re);
    }
  });
}

template <class E, class Magnitude, class Real>
OrpStatus triangleDirect(E* pDst, int len, Magnitude magnitude, Real rFreq, Real asymmetry, Real* pPhase) {
  constexpr Real kPi = static_cast<Real>(kTwoPi / 2);
  ORPS_RETURN_IF(anyNull(pPhase), StsNullPtr);
  ORPS_RETURN_IF(!(magnitude > 0), StsTriangleMagnitude);
  ORPS_RETURN_IF(!(rFreq >= 0 && rFreq < Real{0.5}), StsTriangleFrequency);
  ORPS_RETURN_IF(!(asymmetry >= -kPi && asymmetry < kPi), StsTriangleAsymmetry);
  const double phase = get(pPhase);
  ORPS_RETURN_IF(!(phase >= 0 && phase < kTwoPi), StsTrianglePhase);
  ORPS_CHECK_VECTOR(len, pDst);
  const size_t count = static_cast<size_t>(len);
  const Turns turns(rFreq);
  put(pPhase, Advanced<Real>(phase, turns(count)));
  FillTriangle(pDst, count, magnitude, turns, asymmetry, phase);
  return StsOk;
}

// ---- Fixed-point parameters and state

constexpr double kQ15 = 0x1p-15;
constexpr Orp16u kHighestFrequencyQ15 = 16383;
constexpr Orp32u kHighestPhaseQ15 = 205886;
constexpr Orp32s kHighestAsymmetryQ15 = 102943;

// Frequencies are multiples of 2^-15: 2^15 samples are whole periods, and the number of samples so far is the exact
// phase at any time.
struct ToneState {
  Orp32u tag, none;
  double magnitude, frequency, phase;
  Orp64u samples, home;
};
struct TriangleState {
  Orp32u tag, none;
  double magnitude, frequency, phase, asymmetry, unused[10];
  Orp64u samples, unusedToo, home;
};

template <class Handle>
struct Q15;

template <>
struct Q15<OrpToneStateQ15_16s> : KindOf<ToneState, Tags<0x434D4148>> {
  static OrpStatus Check(Orp16s magnitude, Orp16u rFreqQ15, Orp32u phaseQ15) {
    ORPS_RETURN_IF(magnitude < 1, StsToneMagnitude);
    ORPS_RETURN_IF(rFreqQ15 > kHighestFrequencyQ15, StsToneFrequency);
    ORPS_RETURN_IF(phaseQ15 > kHighestPhaseQ15, StsTonePhase);
    return StsOk;
  }
  static OrpStatus Make(ToneState& state, Orp8u*, Orp16s magnitude, Orp16u rFreqQ15, Orp32u phaseQ15) {
    state = {Tags::kFirst, 0, double(magnitude), rFreqQ15 * kQ15, phaseQ15 * kQ15, 0, 0};
    return StsOk;
  }
  static void Generate(const ToneState& state, Orp16s* dst, size_t len, const Turns& turns, double phase) {
    FillTone<double>(dst, len, state.magnitude, turns, phase);
  }
};

template <>
struct Q15<OrpTriangleStateQ15_16s> : KindOf<TriangleState, Tags<0x434D4149>> {
  static OrpStatus Check(Orp16s magnitude, Orp16u rFreqQ15, Orp32u phaseQ15, Orp32s asymmetryQ15) {
    ORPS_RETURN_IF(magnitude < 1, StsTriangleMagnitude);
    ORPS_RETURN_IF(rFreqQ15 > kHighestFrequencyQ15, StsTriangleFrequency);
    ORPS_RETURN_IF(phaseQ15 > kHighestPhaseQ15, StsTrianglePhase);
    ORPS_RETURN_IF(asymmetryQ15 < -kHighestAsymmetryQ15 || asymmetryQ15 > kHighestAsymmetryQ15, StsTriangleAsymmetry);
    return StsOk;
  }
  static OrpStatus Make(TriangleState& state, Orp8u*, Orp16s magnitude, Orp16u rFreqQ15, Orp32u phaseQ15,
                        Orp32s asymmetryQ15) {
    state = {Tags::kFirst, 0, double(magnitude), rFreqQ15 * kQ15, phaseQ15 * kQ15, asymmetryQ15 * kQ15, {}, 0, 0, 0};
    return StsOk;
  }
  static void Generate(const TriangleState& state, Orp16s* dst, size_t len, const Turns& turns, double phase) {
    FillTriangle(dst, len, state.magnitude, turns, state.asymmetry, phase);
  }
};

template <class Handle>
OrpStatus generate(Orp16s* pDst, int len, Handle* pState) {
  ORPS_CHECK_VECTOR(len, pDst, pState);
  typename Q15<Handle>::Record state;
  ORPS_RETURN_IF(!readState<Q15<Handle>>(pState, state), StsSpecMismatch);
  const size_t count = toSize(len);
  const Turns turns(state.frequency);
  Q15<Handle>::Generate(state, pDst, count, turns, Advanced<double>(state.phase, turns(state.samples % 32768)));
  writeField(pState, offsetof(typename Q15<Handle>::Record, samples), state.samples + count);
  return StsOk;
}

template <class Handle, class... Parameter>
OrpStatus generateDirect(Orp16s* pDst, int len, Parameter... parameter) {
  ORPS_CHECK_VECTOR(len, pDst);
  const OrpStatus status = Q15<Handle>::Check(parameter...);
  ORPS_RETURN_IF(status != StsOk, status);
  typename Q15<Handle>::Record state;
  Q15<Handle>::Make(state, nullptr, parameter...);
  Q15<Handle>::Generate(state, pDst, toSize(len), Turns(state.frequency), state.phase);
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/tone.inc"
#define ORPSP_NEAREST always
#include "frame/exports-inl.h"
