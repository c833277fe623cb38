#include "plain_windows.h"

#include <cmath>

namespace plain {
namespace {

constexpr double kTwoPi = 6.283185307179586;

double hann(int i, int n) { return 0.5 - 0.5 * std::cos(kTwoPi * i / (n - 1)); }

}  // namespace

void bartlett32f(const Orp32f* a, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = static_cast<float>(a[i] * (1 - std::fabs(2.0 * i / (n - 1) - 1)));
}

void hamming16s(const Orp16s* a, Orp16s* d, int n) {
  for (int i = 0; i < n; ++i)
    d[i] = static_cast<Orp16s>(std::rint(a[i] * (0.54 - 0.46 * std::cos(kTwoPi * i / (n - 1)))));
}
void hann32f(const Orp32f* a, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = static_cast<float>(a[i] * hann(i, n));
}
void hann64f(const Orp64f* a, Orp64f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = a[i] * hann(i, n);
}
void hann32fc(const Orp32fc* a, Orp32fc* d, int n) {
  for (int i = 0; i < n; ++i) {
    const double w = hann(i, n);
    d[i] = {static_cast<float>(a[i].re * w), static_cast<float>(a[i].im * w)};
  }
}

void blackman32f(const Orp32f* a, Orp32f* d, int n, float alpha) {
  for (int i = 0; i < n; ++i) {
    const double angle = kTwoPi * i / (n - 1);
    const double w = (alpha + 1.0) / 2 - 0.5 * std::cos(angle) - alpha / 2.0 * std::cos(2 * angle);
    d[i] = static_cast<float>(a[i] * w);
  }
}

void kaiser32f(const Orp32f* a, Orp32f* d, int n, float alpha) {
  const double scale = 1 / std::cyl_bessel_i(0, std::fabs(alpha) * (n - 1) / 2.0);
  for (int i = 0; i < n; ++i) {
    const double root = std::sqrt(static_cast<double>(i) * (n - 1 - i));
    d[i] = static_cast<float>(a[i] * std::cyl_bessel_i(0, std::fabs(alpha) * root) * scale);
  }
}

}  // namespace plain
