#include "plain_packed.h"

#include <algorithm>
#include <cstdint>

namespace plain {
namespace {

// Pairs from element `at` to the one before `end`.
template <class T>
void mulPairs(const T* a, const T* b, T* d, int at, int end) {
  for (int i = at; i + 1 < end; i += 2) {
    const T re = a[i] * b[i] - a[i + 1] * b[i + 1], im = a[i] * b[i + 1] + a[i + 1] * b[i];
    d[i] = re;
    d[i + 1] = im;
  }
}

template <class T>
void mulPack(const T* a, const T* b, T* d, int n) {
  d[0] = a[0] * b[0];
  if (n % 2 == 0) d[n - 1] = a[n - 1] * b[n - 1];
  mulPairs(a, b, d, 1, n % 2 == 0 ? n - 1 : n);
}

// For scale > 0.
Orp16s scaledDown(int64_t r, int scale) {
  const int64_t rounded = (r + ((int64_t{1} << (scale - 1)) - 1) + ((r >> scale) & 1)) >> scale;
  return static_cast<Orp16s>(std::clamp(rounded, int64_t{-32768}, int64_t{32767}));
}

// -32768 has no negative.
Orp16s negated(Orp16s x) { return static_cast<Orp16s>(-std::max<int>(x, -32767)); }
template <class T>
T negated(T x) {
  return -x;
}

template <class C, class T>
void conjPack(const T* a, C* d, int n) {
  d[0] = {a[0], 0};
  const int pairs = (n - 1) / 2;
  for (int k = 1; k <= pairs; ++k) {
    d[k] = {a[2 * k - 1], a[2 * k]};
    d[n - k] = {a[2 * k - 1], negated(a[2 * k])};
  }
  if (n % 2 == 0) d[n / 2] = {a[n - 1], 0};
}

}  // namespace

void mulPack32f(const Orp32f* a, const Orp32f* b, Orp32f* d, int n) { mulPack(a, b, d, n); }
void mulPack64f(const Orp64f* a, const Orp64f* b, Orp64f* d, int n) { mulPack(a, b, d, n); }
void mulPerm32f(const Orp32f* a, const Orp32f* b, Orp32f* d, int n) {
  d[0] = a[0] * b[0];
  if (n % 2 == 0) d[1] = a[1] * b[1];
  mulPairs(a, b, d, n % 2 == 0 ? 2 : 1, n);
}
void mulPack16s(const Orp16s* a, const Orp16s* b, Orp16s* d, int n, int scale) {
  d[0] = scaledDown(int64_t{a[0]} * b[0], scale);
  if (n % 2 == 0) d[n - 1] = scaledDown(int64_t{a[n - 1]} * b[n - 1], scale);
  for (int i = 1; i + 1 < n; i += 2) {
    const int64_t aRe = a[i], aIm = a[i + 1], bRe = b[i], bIm = b[i + 1];
    d[i] = scaledDown(aRe * bRe - aIm * bIm, scale);
    d[i + 1] = scaledDown(aRe * bIm + aIm * bRe, scale);
  }
}
void mulPackConj32f(const Orp32f* a, Orp32f* d, int n) {
  d[0] *= a[0];
  if (n % 2 == 0) d[n - 1] *= a[n - 1];
  for (int i = 1; i + 1 < n; i += 2) {
    const Orp32f re = a[i] * d[i] + a[i + 1] * d[i + 1], im = d[i] * a[i + 1] - a[i] * d[i + 1];
    d[i] = re;
    d[i + 1] = im;
  }
}

void conjPack32fc(const Orp32f* a, Orp32fc* d, int n) { conjPack(a, d, n); }
void conjPack64fc(const Orp64f* a, Orp64fc* d, int n) { conjPack(a, d, n); }
void conjPack16sc(const Orp16s* a, Orp16sc* d, int n) { conjPack(a, d, n); }
void conjCcs32fc(const Orp32f* a, Orp32fc* d, int n) {
  for (int k = 0; 2 * k <= n; ++k) d[k] = {a[2 * k], a[2 * k + 1]};
  conjCcs32fcInPlace(d, n);
}
void conjCcs32fcInPlace(Orp32fc* d, int n) {
  for (int k = 1; 2 * k < n; ++k) d[n - k] = {d[k].re, -d[k].im};
}

}  // namespace plain
