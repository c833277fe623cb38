#include "plain_companding.h"

#include <algorithm>
#include <cmath>

namespace plain {
namespace {

template <class T>
struct Table {
  T value[256];

  template <class F>
  explicit Table(F of) {
    for (int code = 0; code < 256; ++code) value[code] = static_cast<T>(of(code));
  }
  void map(const Orp8u* a, T* d, int n) const {
    for (int i = 0; i < n; ++i) d[i] = value[a[i]];
  }
};

int aLawValue(int code) {
  const int c = code ^ 0x55, segment = c >> 4 & 7, place = c & 15;
  const int magnitude = segment == 0 ? 16 * place + 8 : (16 * place + 264) << (segment - 1);
  return c & 0x80 ? magnitude : -magnitude;
}
int muLawValue(int code) {
  const int c = code ^ 0xFF, magnitude = ((8 * (c & 15) + 132) << (c >> 4 & 7)) - 132;
  return c & 0x80 ? -magnitude : magnitude;
}

const Table<Orp16s> kALaw(aLawValue), kMuLaw(muLawValue);
const Table<Orp32f> kALawFloat(aLawValue);

Orp8u aLawCode(int x) {
  const int v = x >> 3, m = v < 0 ? ~v : v;
  int segment = 0;
  while (m > (32 << segment) - 1) ++segment;
  const int place = m >> std::max(segment, 1) & 15;
  return static_cast<Orp8u>((segment << 4 | place) ^ (v < 0 ? 0x55 : 0xD5));
}
Orp8u muLawCode(int x) {
  const int v = x >> 2, m = std::min((v < 0 ? ~v : v) + 33, 8191);
  int segment = 0;
  while (m > (64 << segment) - 1) ++segment;
  const int place = m >> (segment + 1) & 15;
  return static_cast<Orp8u>((segment << 4 | place) ^ (v < 0 ? 0x7F : 0xFF));
}

}  // namespace

void aLawToLin16s(const Orp8u* a, Orp16s* d, int n) { kALaw.map(a, d, n); }
void aLawToLin32f(const Orp8u* a, Orp32f* d, int n) { kALawFloat.map(a, d, n); }
void muLawToLin16s(const Orp8u* a, Orp16s* d, int n) { kMuLaw.map(a, d, n); }
void linToALaw16s(const Orp16s* a, Orp8u* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = aLawCode(a[i]);
}
void linToALaw32f(const Orp32f* a, Orp8u* d, int n) {
  for (int i = 0; i < n; ++i)
    d[i] = aLawCode(static_cast<int>(std::rint(std::min(std::max(a[i], -32768.0f), 32767.0f))));
}
void linToMuLaw16s(const Orp16s* a, Orp8u* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = muLawCode(a[i]);
}
void transcode(const Orp8u* a, Orp8u* d, int n, const Orp8u* table) {
  for (int i = 0; i < n; ++i) d[i] = table[a[i]];
}

void cauchy(Orp32f* d, int n, float s) {
  const float scale = s * s / 2;
  for (int i = 0; i < n; ++i) d[i] = std::log1p(d[i] / s * (d[i] / s)) * scale;
}
void cauchyD(Orp32f* d, int n, float s) {
  for (int i = 0; i < n; ++i) d[i] = d[i] / (d[i] * d[i] + s * s);
}
void cauchyDD2(Orp32f* d, Orp32f* d2, int n, float s) {
  for (int i = 0; i < n; ++i) {
    const float r = 1 / (d[i] * d[i] + s * s);
    d2[i] = (s * s - d[i] * d[i]) * r * r;
    d[i] *= r;
  }
}

}  // namespace plain
