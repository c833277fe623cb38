#include "plain_random.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace plain {
namespace {

template <class Distribution, class T>
void fill(Distribution distribution, T* d, int n) {
  static std::mt19937 random(1);
  for (int i = 0; i < n; ++i) d[i] = static_cast<T>(distribution(random));
}

template <class T>
void roundedGauss(T mean, T deviation, T* d, int n) {
  std::normal_distribution<float> distribution(mean, deviation);
  const auto rounded = [&](std::mt19937& random) {
    using Limits = std::numeric_limits<T>;
    return std::lrint(std::clamp<float>(distribution(random), Limits::min(), Limits::max()));
  };
  fill(rounded, d, n);
}

}  // namespace

void uniform8u(Orp8u low, Orp8u high, Orp8u* d, int n) { fill(std::uniform_int_distribution<int>(low, high), d, n); }
void uniform16s(Orp16s low, Orp16s high, Orp16s* d, int n) {
  fill(std::uniform_int_distribution<int>(low, high), d, n);
}
void uniform32f(Orp32f low, Orp32f high, Orp32f* d, int n) {
  fill(std::uniform_real_distribution<float>(low, high), d, n);
}
void uniform64f(Orp64f low, Orp64f high, Orp64f* d, int n) {
  fill(std::uniform_real_distribution<double>(low, high), d, n);
}
void gauss8u(Orp8u mean, Orp8u deviation, Orp8u* d, int n) { roundedGauss(mean, deviation, d, n); }
void gauss16s(Orp16s mean, Orp16s deviation, Orp16s* d, int n) { roundedGauss(mean, deviation, d, n); }
void gauss32f(Orp32f mean, Orp32f deviation, Orp32f* d, int n) {
  fill(std::normal_distribution<float>(mean, deviation), d, n);
}
void gauss64f(Orp64f mean, Orp64f deviation, Orp64f* d, int n) {
  fill(std::normal_distribution<double>(mean, deviation), d, n);
}

}  // namespace plain
