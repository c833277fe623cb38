#include "plain_signal.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace plain {
namespace {

void update(Orp32s* mean, int64_t t, int alpha) {
  const int64_t sum = int64_t{*mean} * (32768 - alpha) + t * alpha;
  *mean = static_cast<Orp32s>((sum + 0x3FFF + (sum >> 15 & 1)) >> 15);
}

template <class T>
void slide(const T* a, Orp32f* d, int n, int window) {
  int sum = 0;
  for (int i = 0; i < window; ++i) sum += a[i];
  d[0] = static_cast<float>(sum);
  for (int i = 1; i < n; ++i) {
    sum += a[i + window - 1] - a[i - 1];
    d[i] = static_cast<float>(sum);
  }
}

}  // namespace

void preemphasize16s(const Orp16s* a, Orp16s* d, int n, float v) {
  d[0] = a[0];
  for (int i = 1; i < n; ++i)
    d[i] = static_cast<Orp16s>(std::clamp(std::rint(a[i] - v * a[i - 1]), -32768.0F, 32767.0F));
}
void preemphasize32f(const Orp32f* a, Orp32f* d, int n, float v) {
  d[0] = a[0];
  for (int i = 1; i < n; ++i) d[i] = a[i] - v * a[i - 1];
}

void updateLinear(const Orp16s* a, int n, Orp32s* mean, int shift, int alpha) {
  for (int i = 0; i < n; ++i) update(mean, a[i] * 32768 >> shift, alpha);
}
void updatePower(const Orp16s* a, int n, Orp32s* mean, int shift, int alpha) {
  for (int i = 0; i < n; ++i) update(mean, a[i] * a[i] >> shift, alpha);
}

void demodulateFM(const Orp16sc* a, Orp16s* d, int n) {
  for (int i = 0; i < n; ++i) {
    const double re = 1.0 * a[i].re * a[i - 1].re + 1.0 * a[i].im * a[i - 1].im;
    const double im = 1.0 * a[i].im * a[i - 1].re - 1.0 * a[i].re * a[i - 1].im;
    const double step = std::rint(std::atan2(im, re) * (32768 / 3.141592653589793));
    d[i] = static_cast<Orp16s>(std::min(step, 32767.0));
  }
}

void sumWindow(const Orp8u* a, Orp32f* d, int n, int window) { slide(a, d, n, window); }
void sumWindow(const Orp16s* a, Orp32f* d, int n, int window) { slide(a, d, n, window); }

void packBits(const Orp32u* a, Orp8u* d, int n, int bits) {
  uint64_t buffer = 0;
  int held = 0;
  for (int i = 0; i < n; ++i) {
    buffer = buffer << bits | (a[i] & (0xFFFFFFFF >> (32 - bits)));
    for (held += bits; held >= 8; held -= 8) *d++ = static_cast<Orp8u>(buffer >> (held - 8));
  }
  if (held > 0) *d = static_cast<Orp8u>(buffer << (8 - held));
}

}  // namespace plain
