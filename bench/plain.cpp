#include "plain.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <limits>

namespace plain {
namespace {

template <class T, class R>
T clamp(R r) {
  return static_cast<T>(std::clamp<R>(r, std::numeric_limits<T>::min(), std::numeric_limits<T>::max()));
}

// The scale-factor rule with the branches outside the loop, as a careful user would have it.
template <class T, class R>
void scaleLoop(T* d, int n, int scale, auto result) {
  if (scale == 0) {
    for (int i = 0; i < n; ++i) d[i] = clamp<T, R>(result(i));
  } else if (scale > 0) {
    const R bias = static_cast<R>((R{1} << (scale - 1)) - 1);
    for (int i = 0; i < n; ++i) {
      const R r = result(i);
      d[i] = clamp<T, R>((r + bias + ((r >> scale) & 1)) >> scale);
    }
  } else {
    for (int i = 0; i < n; ++i) d[i] = clamp<T, int64_t>(static_cast<int64_t>(result(i)) << -scale);
  }
}

template <class T>
void quotientLoop(T* d, int n, int scale, auto above, auto below) {
  for (int i = 0; i < n; ++i) {
    const double q = std::ldexp(static_cast<double>(above(i)), -scale) / static_cast<double>(below(i));
    d[i] = clamp<T, double>(std::nearbyint(q));
  }
}

template <class T, class R>
void complexProduct(const T* a, const T* b, T* d, int n, int scale) {
  using L = decltype(T::re);
  const R bias = scale > 0 ? static_cast<R>((R{1} << (scale - 1)) - 1) : 0;
  const auto rounded = [=](R r) { return clamp<L, R>(scale == 0 ? r : (r + bias + ((r >> scale) & 1)) >> scale); };
  for (int i = 0; i < n; ++i) {
    const R re = R{a[i].re} * b[i].re - R{a[i].im} * b[i].im, im = R{a[i].re} * b[i].im + R{a[i].im} * b[i].re;
    d[i] = {rounded(re), rounded(im)};
  }
}

template <class T>
void quotients(const T* a, const T* b, T* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = b[i] / a[i];
}

template <class T>
void complexQuotients(const T* a, const T* b, T* d, int n) {
  using C = std::complex<decltype(T::re)>;
  for (int i = 0; i < n; ++i) {
    const C q = C(b[i].re, b[i].im) / C(a[i].re, a[i].im);
    d[i] = {q.real(), q.imag()};
  }
}

}  // namespace

void add16s(const Orp16s* a, const Orp16s* b, Orp16s* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = clamp<Orp16s, int>(a[i] + b[i]);
}
void add32f(const Orp32f* a, const Orp32f* b, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = a[i] + b[i];
}
void add64f(const Orp64f* a, const Orp64f* b, Orp64f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = a[i] + b[i];
}
void add32fc(const Orp32fc* a, const Orp32fc* b, Orp32fc* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = {a[i].re + b[i].re, a[i].im + b[i].im};
}
void add8u(const Orp8u* a, const Orp8u* b, Orp8u* d, int n, int scale) {
  scaleLoop<Orp8u, int>(d, n, scale, [=](int i) { return a[i] + b[i]; });
}
void add16s(const Orp16s* a, const Orp16s* b, Orp16s* d, int n, int scale) {
  scaleLoop<Orp16s, int>(d, n, scale, [=](int i) { return a[i] + b[i]; });
}
void add32s(const Orp32s* a, const Orp32s* b, Orp32s* d, int n, int scale) {
  scaleLoop<Orp32s, int64_t>(d, n, scale, [=](int i) { return int64_t{a[i]} + b[i]; });
}
void add64s(const Orp64s* a, const Orp64s* b, Orp64s* d, int n, int scale) {
  for (int i = 0; i < n; ++i) {
    Orp64s sum;
    const bool wraps = __builtin_add_overflow(a[i], b[i], &sum);
    d[i] = wraps ? (a[i] < 0 ? std::numeric_limits<Orp64s>::min() : std::numeric_limits<Orp64s>::max()) : sum;
    static_cast<void>(scale);
  }
}
void sub32f(const Orp32f* a, const Orp32f* b, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = b[i] - a[i];
}
void sub16u(const Orp16u* a, const Orp16u* b, Orp16u* d, int n, int scale) {
  scaleLoop<Orp16u, int>(d, n, scale, [=](int i) { return b[i] - a[i]; });
}
void mul32f(const Orp32f* a, const Orp32f* b, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = a[i] * b[i];
}
void mul64f(const Orp64f* a, const Orp64f* b, Orp64f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = a[i] * b[i];
}
void mul32fc(const Orp32fc* a, const Orp32fc* b, Orp32fc* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = {a[i].re * b[i].re - a[i].im * b[i].im, a[i].re * b[i].im + a[i].im * b[i].re};
}
void mul8u(const Orp8u* a, const Orp8u* b, Orp8u* d, int n, int scale) {
  scaleLoop<Orp8u, int>(d, n, scale, [=](int i) { return a[i] * b[i]; });
}
void mul16s(const Orp16s* a, const Orp16s* b, Orp16s* d, int n, int scale) {
  scaleLoop<Orp16s, int>(d, n, scale, [=](int i) { return a[i] * b[i]; });
}
void mul16u(const Orp16u* a, const Orp16u* b, Orp16u* d, int n, int scale) {
  scaleLoop<Orp16u, int64_t>(d, n, scale, [=](int i) { return int64_t{a[i]} * b[i]; });
}
void mul32s(const Orp32s* a, const Orp32s* b, Orp32s* d, int n, int scale) {
  scaleLoop<Orp32s, int64_t>(d, n, scale, [=](int i) { return int64_t{a[i]} * b[i]; });
}
void mul16sc(const Orp16sc* a, const Orp16sc* b, Orp16sc* d, int n, int scale) {
  complexProduct<Orp16sc, int64_t>(a, b, d, n, scale);
}
void mul32sc(const Orp32sc* a, const Orp32sc* b, Orp32sc* d, int n, int scale) {
  complexProduct<Orp32sc, int64_t>(a, b, d, n, scale);
}
void addProduct32f(const Orp32f* a, const Orp32f* b, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] += a[i] * b[i];
}
void addProduct16s(const Orp16s* a, const Orp16s* b, Orp16s* d, int n, int scale) {
  scaleLoop<Orp16s, int>(d, n, scale, [=](int i) { return d[i] + a[i] * b[i]; });
}
void div32f(const Orp32f* a, const Orp32f* b, Orp32f* d, int n) { quotients(a, b, d, n); }
void div64f(const Orp64f* a, const Orp64f* b, Orp64f* d, int n) { quotients(a, b, d, n); }
void div32fc(const Orp32fc* a, const Orp32fc* b, Orp32fc* d, int n) { complexQuotients(a, b, d, n); }
void div64fc(const Orp64fc* a, const Orp64fc* b, Orp64fc* d, int n) { complexQuotients(a, b, d, n); }
void div8u(const Orp8u* a, const Orp8u* b, Orp8u* d, int n, int scale) {
  quotientLoop(
      d, n, scale, [=](int i) { return b[i]; }, [=](int i) { return a[i]; });
}
void div16s(const Orp16s* a, const Orp16s* b, Orp16s* d, int n, int scale) {
  quotientLoop(
      d, n, scale, [=](int i) { return b[i]; }, [=](int i) { return a[i]; });
}
void div32s(const Orp32s* a, const Orp32s* b, Orp32s* d, int n, int scale) {
  quotientLoop(
      d, n, scale, [=](int i) { return b[i]; }, [=](int i) { return a[i]; });
}
void div16sc(const Orp16sc* a, const Orp16sc* b, Orp16sc* d, int n, int scale) {
  const double unit = std::ldexp(1.0, -scale);
  for (int i = 0; i < n; ++i) {
    const double re = a[i].re, im = a[i].im, norm = re * re + im * im;
    d[i] = {clamp<Orp16s, double>(std::nearbyint((b[i].re * re + b[i].im * im) * unit / norm)),
            clamp<Orp16s, double>(std::nearbyint((b[i].im * re - b[i].re * im) * unit / norm))};
  }
}
void and32u(const Orp32u* a, const Orp32u* b, Orp32u* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = a[i] & b[i];
}

void addC32f(const Orp32f* a, Orp32f val, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = a[i] + val;
}
void addC16s(const Orp16s* a, Orp16s val, Orp16s* d, int n, int scale) {
  scaleLoop<Orp16s, int>(d, n, scale, [=](int i) { return a[i] + val; });
}
void mulC32f(const Orp32f* a, Orp32f val, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = a[i] * val;
}
void mulC16s(const Orp16s* a, Orp16s val, Orp16s* d, int n, int scale) {
  scaleLoop<Orp16s, int>(d, n, scale, [=](int i) { return a[i] * val; });
}
void divC16s(const Orp16s* a, Orp16s val, Orp16s* d, int n, int scale) {
  quotientLoop(
      d, n, scale, [=](int i) { return a[i]; }, [=](int) { return val; });
}
void divC32f(const Orp32f* a, Orp32f val, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = a[i] / val;
}
void normalize32f(const Orp32f* a, Orp32f* d, int n, Orp32f sub, Orp32f div) {
  for (int i = 0; i < n; ++i) d[i] = (a[i] - sub) / div;
}
void normalize16s(const Orp16s* a, Orp16s* d, int n, Orp16s sub, int div, int scale) {
  quotientLoop(
      d, n, scale, [=](int i) { return a[i] - sub; }, [=](int) { return div; });
}
void abs16s(const Orp16s* a, Orp16s* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = clamp<Orp16s, int>(std::abs(int{a[i]}));
}
void abs32f(const Orp32f* a, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = std::abs(a[i]);
}
void sqr32f(const Orp32f* a, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = a[i] * a[i];
}
void andC16u(const Orp16u* a, Orp16u val, Orp16u* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = static_cast<Orp16u>(a[i] & val);
}
void lShiftC16u(const Orp16u* a, int val, Orp16u* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = static_cast<Orp16u>(a[i] << val);
}
void rShiftC8u(const Orp8u* a, int val, Orp8u* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = static_cast<Orp8u>(a[i] >> val);
}
void set32f(Orp32f val, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = val;
}
void copy32f(const Orp32f* a, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = a[i];
}
void copy8u(const Orp8u* a, Orp8u* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = a[i];
}
void moveUp32f(const Orp32f* a, Orp32f* d, int n) {
  for (int i = n - 1; i >= 0; --i) d[i] = a[i];
}
void flip8u(const Orp8u* a, Orp8u* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = a[n - 1 - i];
}
void flip32f(const Orp32f* a, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = a[n - 1 - i];
}
void flipInPlace32f(Orp32f* d, int n) {
  for (int i = 0; i < n / 2; ++i) std::swap(d[i], d[n - 1 - i]);
}
void swapBytes16u(const Orp16u* a, Orp16u* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = __builtin_bswap16(a[i]);
}
void swapBytes24u(const Orp24u* a, Orp24u* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = {{a[i].byte[2], a[i].byte[1], a[i].byte[0]}};
}
void swapBytes32u(const Orp32u* a, Orp32u* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = __builtin_bswap32(a[i]);
}
void copyBits(const Orp8u* a, int from, Orp8u* d, int to, int n) {
  for (int i = 0; i < n; ++i) {
    const int bit = a[(from + i) / 8] >> (7 - (from + i) % 8) & 1, at = 7 - (to + i) % 8;
    Orp8u& byte = d[(to + i) / 8];
    byte = static_cast<Orp8u>((byte & ~(1 << at)) | bit << at);
  }
}

}  // namespace plain
