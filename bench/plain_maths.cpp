#include "plain_maths.h"

#include <immintrin.h>
#include <sleef.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstring>
#include <limits>

namespace plain {
namespace {

template <class T>
T rounded(double value, int scale) {
  const double scaled = std::nearbyint(std::ldexp(value, -scale));
  return static_cast<T>(std::clamp<double>(scaled, std::numeric_limits<T>::min(), std::numeric_limits<T>::max()));
}

}  // namespace

void exp32f(const Orp32f* a, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = std::exp(a[i]);
}
void exp64f(const Orp64f* a, Orp64f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = std::exp(a[i]);
}
void exp16s(const Orp16s* a, Orp16s* d, int n, int scale) {
  for (int i = 0; i < n; ++i) d[i] = rounded<Orp16s>(std::exp(static_cast<double>(a[i])), scale);
}
void ln32f(const Orp32f* a, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = std::log(a[i]);
}
void ln64f(const Orp64f* a, Orp64f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = std::log(a[i]);
}
void ln32s(const Orp32s* a, Orp32s* d, int n, int scale) {
  for (int i = 0; i < n; ++i)
    d[i] = a[i] > 0 ? rounded<Orp32s>(std::log(static_cast<double>(a[i])), scale) : std::numeric_limits<Orp32s>::min();
}
void sqrt32f(const Orp32f* a, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = std::sqrt(a[i]);
}
void sqrt64f(const Orp64f* a, Orp64f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = std::sqrt(a[i]);
}
void sqrt32fc(const Orp32fc* a, Orp32fc* d, int n) {
  for (int i = 0; i < n; ++i) {
    const auto root = std::sqrt(std::complex<float>(a[i].re, a[i].im));
    d[i] = {root.real(), root.imag()};
  }
}
void sqrt16s(const Orp16s* a, Orp16s* d, int n, int scale) {
  for (int i = 0; i < n; ++i) d[i] = rounded<Orp16s>(std::sqrt(std::max<double>(a[i], 0)), scale);
}
void cubrt32f(const Orp32f* a, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = std::cbrt(a[i]);
}
void arctan32f(const Orp32f* a, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = std::atan(a[i]);
}
void arctan64f(const Orp64f* a, Orp64f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = std::atan(a[i]);
}
void phase32f(const Orp32f* re, const Orp32f* im, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = std::atan2(im[i], re[i]);
}
void phase32fc(const Orp32fc* a, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = std::atan2(a[i].im, a[i].re);
}
void magnitude32f(const Orp32f* re, const Orp32f* im, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = std::hypot(re[i], im[i]);
}
void magnitude32fc(const Orp32fc* a, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = std::hypot(a[i].re, a[i].im);
}
void magnitude64f(const Orp64f* re, const Orp64f* im, Orp64f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = std::hypot(re[i], im[i]);
}
void magnitude16sc(const Orp16sc* a, Orp16s* d, int n, int scale) {
  for (int i = 0; i < n; ++i) {
    const double re = a[i].re, im = a[i].im;
    d[i] = rounded<Orp16s>(std::sqrt(re * re + im * im), scale);
  }
}
void cartToPolar32fc(const Orp32fc* a, Orp32f* magnitude, Orp32f* phase, int n) {
  for (int i = 0; i < n; ++i) {
    magnitude[i] = std::hypot(a[i].re, a[i].im);
    phase[i] = std::atan2(a[i].im, a[i].re);
  }
}
void polarToCart32fc(const Orp32f* magnitude, const Orp32f* phase, Orp32fc* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = {magnitude[i] * std::cos(phase[i]), magnitude[i] * std::sin(phase[i])};
}

}  // namespace plain

namespace sleef {
namespace {

// The widest vectors of the machine, and SLEEF's functions of them.
#if defined(__AVX512F__)
using Floats = __m512;
using Doubles = __m512d;
#define FLOATS(function, accuracy) Sleef_##function##f16_##accuracy
#define DOUBLES(function, accuracy) Sleef_##function##d8_##accuracy
#elif defined(__AVX__)
using Floats = __m256;
using Doubles = __m256d;
#define FLOATS(function, accuracy) Sleef_##function##f8_##accuracy
#define DOUBLES(function, accuracy) Sleef_##function##d4_##accuracy
#else
using Floats = __m128;
using Doubles = __m128d;
#define FLOATS(function, accuracy) Sleef_##function##f4_##accuracy
#define DOUBLES(function, accuracy) Sleef_##function##d2_##accuracy
#endif
using Indices = int32_t __attribute__((vector_size(sizeof(Floats))));

constexpr int kFloats = sizeof(Floats) / sizeof(float);

template <class T>
struct VectorOf {
  using Type = Floats;
};
template <>
struct VectorOf<Orp64f> {
  using Type = Doubles;
};

template <class T>
typename VectorOf<T>::Type load(const T* source) {
  typename VectorOf<T>::Type v;
  std::memcpy(&v, source, sizeof(v));
  return v;
}
template <class T>
void store(typename VectorOf<T>::Type v, T* destination) {
  std::memcpy(destination, &v, sizeof(v));
}

// Calls work(a, b, d, e) for one vector of elements after the other; of the remainder with copies filled up with zeros.
template <class A, class B, class D, class E>
void forVectors(int lanes, const A* a, const B* b, D* d, E* e, int n, auto work) {
  int i = 0;
  for (; i + lanes <= n; i += lanes) work(a + i, b + i, d + i, e + i);
  if (i == n) return;
  constexpr int kMost = kFloats;
  A restA[kMost] = {};
  B restB[kMost] = {};
  D restD[kMost];
  E restE[kMost];
  const auto rest = static_cast<size_t>(n - i);
  std::copy_n(a + i, rest, restA);
  std::copy_n(b + i, rest, restB);
  work(restA, restB, restD, restE);
  std::copy_n(restD, rest, d + i);
  if (static_cast<const void*>(e) != static_cast<const void*>(d)) std::copy_n(restE, rest, e + i);
}

template <class T>
void unary(const T* a, T* d, int n, auto function) {
  constexpr int kLanes = sizeof(typename VectorOf<T>::Type) / sizeof(T);
  forVectors(kLanes, a, a, d, d, n, [=](auto x, auto, auto y, auto) { store(function(load(x)), y); });
}
template <class T>
void binary(const T* a, const T* b, T* d, int n, auto function) {
  constexpr int kLanes = sizeof(typename VectorOf<T>::Type) / sizeof(T);
  forVectors(kLanes, a, b, d, d, n, [=](auto x, auto y, auto z, auto) { store(function(load(x), load(y)), z); });
}

// Two vectors of complex numbers apart into real and imaginary parts, and together.
Indices indices(auto of) {
  Indices v;
  for (int i = 0; i < kFloats; ++i) v[i] = of(i);
  return v;
}
void loadParts(const Orp32fc* a, Floats& re, Floats& im) {
  Floats low, high;
  std::memcpy(&low, a, sizeof(low));
  std::memcpy(&high, a + kFloats / 2, sizeof(high));
  re = __builtin_shuffle(low, high, indices([](int i) { return 2 * i; }));
  im = __builtin_shuffle(low, high, indices([](int i) { return 2 * i + 1; }));
}
void storeParts(Floats re, Floats im, Orp32fc* d) {
  const Floats low = __builtin_shuffle(re, im, indices([](int i) { return i / 2 + i % 2 * kFloats; }));
  const Floats high = __builtin_shuffle(re, im, indices([](int i) { return (kFloats + i) / 2 + i % 2 * kFloats; }));
  std::memcpy(d, &low, sizeof(low));
  std::memcpy(d + kFloats / 2, &high, sizeof(high));
}
void ofParts(const Orp32fc* a, Orp32f* d, int n, auto function) {
  forVectors(kFloats, a, a, d, d, n, [=](auto x, auto, auto y, auto) {
    Floats re, im;
    loadParts(x, re, im);
    store(function(re, im), y);
  });
}

// The same function twice: with 1 unit in the last place (or a half), and with 3.5.
template <Accuracy accuracy>
auto chosen(auto best, auto fast) {
  if constexpr (accuracy == Accuracy::best)
    return best;
  else
    return fast;
}
#define FLOAT_FUNCTION(function, best, fast)                           \
  chosen<accuracy>([](Floats x) { return FLOATS(function, best)(x); }, \
                   [](Floats x) { return FLOATS(function, fast)(x); })
#define DOUBLE_FUNCTION(function, best, fast)                            \
  chosen<accuracy>([](Doubles x) { return DOUBLES(function, best)(x); }, \
                   [](Doubles x) { return DOUBLES(function, fast)(x); })
template <Accuracy accuracy>
auto phaseFunction() {
  return chosen<accuracy>([](Floats re, Floats im) { return FLOATS(atan2, u10)(im, re); },
                          [](Floats re, Floats im) { return FLOATS(atan2, u35)(im, re); });
}
template <Accuracy accuracy>
auto magnitudeFunction() {
  return chosen<accuracy>([](Floats re, Floats im) { return FLOATS(hypot, u05)(re, im); },
                          [](Floats re, Floats im) { return FLOATS(hypot, u35)(re, im); });
}

}  // namespace

template <Accuracy accuracy>
void Functions<accuracy>::exp(const Orp32f* a, Orp32f* d, int n) {
  unary(a, d, n, FLOAT_FUNCTION(exp, u10, u10));
}
template <Accuracy accuracy>
void Functions<accuracy>::exp(const Orp64f* a, Orp64f* d, int n) {
  unary(a, d, n, DOUBLE_FUNCTION(exp, u10, u10));
}
template <Accuracy accuracy>
void Functions<accuracy>::ln(const Orp32f* a, Orp32f* d, int n) {
  unary(a, d, n, FLOAT_FUNCTION(log, u10, u35));
}
template <Accuracy accuracy>
void Functions<accuracy>::ln(const Orp64f* a, Orp64f* d, int n) {
  unary(a, d, n, DOUBLE_FUNCTION(log, u10, u35));
}
template <Accuracy accuracy>
void Functions<accuracy>::sqrt(const Orp32f* a, Orp32f* d, int n) {
  unary(a, d, n, FLOAT_FUNCTION(sqrt, u05, u35));
}
template <Accuracy accuracy>
void Functions<accuracy>::sqrt(const Orp64f* a, Orp64f* d, int n) {
  unary(a, d, n, DOUBLE_FUNCTION(sqrt, u05, u35));
}
template <Accuracy accuracy>
void Functions<accuracy>::cubrt(const Orp32f* a, Orp32f* d, int n) {
  unary(a, d, n, FLOAT_FUNCTION(cbrt, u10, u35));
}
template <Accuracy accuracy>
void Functions<accuracy>::arctan(const Orp32f* a, Orp32f* d, int n) {
  unary(a, d, n, FLOAT_FUNCTION(atan, u10, u35));
}
template <Accuracy accuracy>
void Functions<accuracy>::arctan(const Orp64f* a, Orp64f* d, int n) {
  unary(a, d, n, DOUBLE_FUNCTION(atan, u10, u35));
}
template <Accuracy accuracy>
void Functions<accuracy>::phase(const Orp32f* re, const Orp32f* im, Orp32f* d, int n) {
  binary(re, im, d, n, phaseFunction<accuracy>());
}
template <Accuracy accuracy>
void Functions<accuracy>::phase(const Orp32fc* a, Orp32f* d, int n) {
  ofParts(a, d, n, phaseFunction<accuracy>());
}
template <Accuracy accuracy>
void Functions<accuracy>::magnitude(const Orp32f* re, const Orp32f* im, Orp32f* d, int n) {
  binary(re, im, d, n, magnitudeFunction<accuracy>());
}
template <Accuracy accuracy>
void Functions<accuracy>::magnitude(const Orp32fc* a, Orp32f* d, int n) {
  ofParts(a, d, n, magnitudeFunction<accuracy>());
}
template <Accuracy accuracy>
void Functions<accuracy>::magnitude(const Orp64f* re, const Orp64f* im, Orp64f* d, int n) {
  binary(re, im, d, n,
         chosen<accuracy>([](Doubles x, Doubles y) { return DOUBLES(hypot, u05)(x, y); },
                          [](Doubles x, Doubles y) { return DOUBLES(hypot, u35)(x, y); }));
}
template <Accuracy accuracy>
void Functions<accuracy>::cartToPolar(const Orp32fc* a, Orp32f* magnitude, Orp32f* phase, int n) {
  forVectors(kFloats, a, a, magnitude, phase, n, [](auto x, auto, auto y, auto z) {
    Floats re, im;
    loadParts(x, re, im);
    store(magnitudeFunction<accuracy>()(re, im), y);
    store(phaseFunction<accuracy>()(re, im), z);
  });
}
template <Accuracy accuracy>
void Functions<accuracy>::polarToCart(const Orp32f* magnitude, const Orp32f* phase, Orp32fc* d, int n) {
  forVectors(kFloats, magnitude, phase, d, d, n, [](auto x, auto y, auto z, auto) {
    const Floats length = load(x);
    const auto sineAndCosine = FLOAT_FUNCTION(sincos, u10, u35)(load(y));
    storeParts(length * sineAndCosine.y, length * sineAndCosine.x, z);
  });
}

template struct Functions<Accuracy::best>;
template struct Functions<Accuracy::fast>;

}  // namespace sleef
