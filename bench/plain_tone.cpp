#include "plain_tone.h"

#include <algorithm>
#include <cmath>

namespace plain {
namespace {

constexpr double kTwoPi = 6.283185307179586;
constexpr int kBlock = 1024;

template <class Put>
void recur(int n, double magnitude, double frequency, double phase, const Put& put) {
  const double step = kTwoPi * frequency, factor = 2 * std::cos(step);
  for (int first = 0; first < n; first += kBlock) {
    const double angle = phase + step * first;
    double now = magnitude * std::cos(angle), before = magnitude * std::cos(angle - step);
    for (int i = first; i < std::min(first + kBlock, n); ++i) {
      put(i, now);
      const double next = factor * now - before;
      before = now;
      now = next;
    }
  }
}

}  // namespace

void tone16s(Orp16s* d, int n, double magnitude, double frequency, double phase) {
  recur(n, magnitude, frequency, phase, [d](int i, double y) { d[i] = static_cast<Orp16s>(std::rint(y)); });
}
void tone32f(Orp32f* d, int n, double magnitude, double frequency, double phase) {
  recur(n, magnitude, frequency, phase, [d](int i, double y) { d[i] = static_cast<float>(y); });
}
void tone64f(Orp64f* d, int n, double magnitude, double frequency, double phase) {
  recur(n, magnitude, frequency, phase, [d](int i, double y) { d[i] = y; });
}
void tone32fc(Orp32fc* d, int n, double magnitude, double frequency, double phase) {
  const double step = kTwoPi * frequency, c = std::cos(step), s = std::sin(step);
  for (int first = 0; first < n; first += kBlock) {
    double re = magnitude * std::cos(phase + step * first), im = magnitude * std::sin(phase + step * first);
    for (int i = first; i < std::min(first + kBlock, n); ++i) {
      d[i] = {static_cast<float>(re), static_cast<float>(im)};
      const double turned = re * c - im * s;
      im = im * c + re * s;
      re = turned;
    }
  }
}

void triangle32f(Orp32f* d, int n, double magnitude, double frequency, double asymmetry, double phase) {
  const double turn = 0.5 + asymmetry / kTwoPi, start = phase / kTwoPi;
  for (int i = 0; i < n; ++i) {
    double at = start + frequency * i;
    at -= std::floor(at);
    const double y = at < turn ? 1 - 2 * at / turn : 2 * (at - turn) / (1 - turn) - 1;
    d[i] = static_cast<float>(magnitude * y);
  }
}

void ramp16s(Orp16s* d, int n, double offset, double slope) {
  for (int i = 0; i < n; ++i) d[i] = static_cast<Orp16s>(std::clamp(std::rint(offset + slope * i), -32768.0, 32767.0));
}
void ramp32f(Orp32f* d, int n, float offset, float slope) {
  for (int i = 0; i < n; ++i) d[i] = offset + slope * static_cast<float>(i);
}
void jaehne32f(Orp32f* d, int n, double magnitude) {
  for (int i = 0; i < n; ++i) {
    const double x = i;
    d[i] = static_cast<float>(magnitude * std::sin(x * x * (kTwoPi / 4 / n)));
  }
}

}  // namespace plain
