#include "plain_complex.h"

#include <algorithm>
#include <cstdint>

namespace plain {
namespace {

// For scale > 0.
template <class T, class R>
T scaledDown(R power, int scale) {
  const R rounded = (power + ((R{1} << (scale - 1)) - 1) + ((power >> scale) & 1)) >> scale;
  constexpr R kMost = static_cast<R>(~(T{1} << (8 * sizeof(T) - 1)));
  return static_cast<T>(std::min(rounded, kMost));
}

}  // namespace

void conj32fc(const Orp32fc* a, Orp32fc* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = {a[i].re, -a[i].im};
}
void real32fc(const Orp32fc* a, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = a[i].re;
}
void realToCplx32f(const Orp32f* re, const Orp32f* im, Orp32fc* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = {re[i], im[i]};
}
void cplxToReal32fc(const Orp32fc* a, Orp32f* re, Orp32f* im, int n) {
  for (int i = 0; i < n; ++i) {
    re[i] = a[i].re;
    im[i] = a[i].im;
  }
}
void power32fc(const Orp32fc* a, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = a[i].re * a[i].re + a[i].im * a[i].im;
}
void power32f(const Orp32f* re, const Orp32f* im, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = re[i] * re[i] + im[i] * im[i];
}
void power16sc32f(const Orp16sc* a, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) {
    const int re = a[i].re, im = a[i].im;
    d[i] = static_cast<Orp32f>(static_cast<uint32_t>(re * re) + static_cast<uint32_t>(im * im));
  }
}
void power16sc(const Orp16sc* a, Orp16s* d, int n, int scale) {
  for (int i = 0; i < n; ++i) {
    const int re = a[i].re, im = a[i].im;
    d[i] = scaledDown<Orp16s>(static_cast<uint32_t>(re * re) + static_cast<uint32_t>(im * im), scale);
  }
}
void magSquared32sc(const Orp32sc* a, Orp32s* d, int n, int scale) {
  for (int i = 0; i < n; ++i) {
    const int64_t re = a[i].re, im = a[i].im;
    d[i] = scaledDown<Orp32s>(static_cast<uint64_t>(re * re) + static_cast<uint64_t>(im * im), scale);
  }
}

}  // namespace plain
