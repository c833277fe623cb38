#include "plain_threshold.h"

#include <algorithm>
#include <cmath>

namespace plain {
namespace {

template <class T>
void inverses(const T* a, T* d, int n, T level) {
  for (int i = 0; i < n; ++i) d[i] = std::copysign(1 / std::max(std::abs(a[i]), level), a[i]);
}

}  // namespace

void thresholdLT16s(const Orp16s* a, Orp16s* d, int n, Orp16s level) {
  for (int i = 0; i < n; ++i) d[i] = std::max(a[i], level);
}
void thresholdLT32f(const Orp32f* a, Orp32f* d, int n, Orp32f level) {
  for (int i = 0; i < n; ++i) d[i] = a[i] < level ? level : a[i];
}
void thresholdGT32f(const Orp32f* a, Orp32f* d, int n, Orp32f level) {
  for (int i = 0; i < n; ++i) d[i] = a[i] > level ? level : a[i];
}
void thresholdLTVal32f(const Orp32f* a, Orp32f* d, int n, Orp32f level, Orp32f value) {
  for (int i = 0; i < n; ++i) d[i] = a[i] < level ? value : a[i];
}
void thresholdLTValGTVal32f(const Orp32f* a, Orp32f* d, int n, Orp32f levelLT, Orp32f valueLT, Orp32f levelGT,
                            Orp32f valueGT) {
  for (int i = 0; i < n; ++i) d[i] = a[i] < levelLT ? valueLT : a[i] > levelGT ? valueGT : a[i];
}
void thresholdLTAbs32f(const Orp32f* a, Orp32f* d, int n, Orp32f level) {
  for (int i = 0; i < n; ++i) d[i] = std::abs(a[i]) < level ? std::copysign(level, a[i]) : a[i];
}
void thresholdLTInv32f(const Orp32f* a, Orp32f* d, int n, Orp32f level) { inverses(a, d, n, level); }
void thresholdLTInv64f(const Orp64f* a, Orp64f* d, int n, Orp64f level) { inverses(a, d, n, level); }

void thresholdLT32fc(const Orp32fc* a, Orp32fc* d, int n, Orp32f level) {
  for (int i = 0; i < n; ++i) {
    const float magnitude = std::sqrt(a[i].re * a[i].re + a[i].im * a[i].im);
    const float factor = magnitude < level ? level / magnitude : 1;
    d[i] = {a[i].re * factor, a[i].im * factor};
  }
}
void thresholdGT16sc(const Orp16sc* a, Orp16sc* d, int n, Orp16s level) {
  for (int i = 0; i < n; ++i) {
    const double re = a[i].re, im = a[i].im, magnitude = std::sqrt(re * re + im * im);
    const double factor = magnitude > level ? level / magnitude : 1;
    d[i] = {static_cast<Orp16s>(std::nearbyint(re * factor)), static_cast<Orp16s>(std::nearbyint(im * factor))};
  }
}
void thresholdLTVal32fc(const Orp32fc* a, Orp32fc* d, int n, Orp32f level, Orp32fc value) {
  for (int i = 0; i < n; ++i) d[i] = a[i].re * a[i].re + a[i].im * a[i].im < level * level ? value : a[i];
}
void thresholdLTInv32fc(const Orp32fc* a, Orp32fc* d, int n, Orp32f level) {
  for (int i = 0; i < n; ++i) {
    const float magnitude = std::sqrt(a[i].re * a[i].re + a[i].im * a[i].im);
    const float divisor = magnitude * std::max(magnitude, level);
    d[i] = {a[i].re / divisor, -a[i].im / divisor};
  }
}

}  // namespace plain
