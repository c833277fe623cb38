#include "plain_convert.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace plain {
namespace {

// Largest and smallest value as floats; what is above the first of them does not exist in W.
template <class T, class W>
T clampTo(W x) {
  constexpr W kLowest = std::numeric_limits<T>::min();
  constexpr W kHighest =
      sizeof(T) < sizeof(W) ? std::numeric_limits<T>::max() : -kLowest * (1 - std::numeric_limits<W>::epsilon() / 2);
  return static_cast<T>(std::clamp(x, kLowest, kHighest));
}

template <class T, class W>
void roundLoop(const W* a, T* d, int n, int mode, int scale) {
  const W factor = std::ldexp(W{1}, -scale);
  if (mode == 0)
    for (int i = 0; i < n; ++i) d[i] = clampTo<T>(a[i] * factor);
  else if (mode == 1)
    for (int i = 0; i < n; ++i) d[i] = clampTo<T>(std::nearbyint(a[i] * factor));
  else
    for (int i = 0; i < n; ++i) d[i] = clampTo<T>(std::round(a[i] * factor));
}

template <class T, class S>
void narrowLoop(const S* a, T* d, int n, int scale) {
  constexpr S kLowest = std::numeric_limits<T>::min(), kHighest = std::numeric_limits<T>::max();
  if (scale == 0) {
    for (int i = 0; i < n; ++i) d[i] = static_cast<T>(std::clamp(a[i], kLowest, kHighest));
  } else {
    const S half = S{1} << (scale - 1), mask = 2 * half - 1;
    for (int i = 0; i < n; ++i) {
      const S floor = a[i] >> scale, rest = a[i] & mask;
      const S rounded = floor + (rest > half || (rest == half && (floor & 1)) ? 1 : 0);
      d[i] = static_cast<T>(std::clamp(rounded, kLowest, kHighest));
    }
  }
}

template <class T, class S>
void castLoop(const S* a, T* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = static_cast<T>(a[i]);
}

Orp24s to24(float x) {
  const auto v = static_cast<int>(std::nearbyint(std::clamp(x, -8388608.0F, 8388607.0F)));
  return {static_cast<Orp8u>(v), static_cast<Orp8u>(v >> 8), static_cast<Orp8u>(v >> 16)};
}
float of24(Orp24s x) {
  const unsigned bits = static_cast<unsigned>(x.byte[0]) << 8 | static_cast<unsigned>(x.byte[1]) << 16 |
                        static_cast<unsigned>(x.byte[2]) << 24;
  return static_cast<float>(static_cast<int>(bits) >> 8);
}

}  // namespace

void convert16s32f(const Orp16s* a, Orp32f* d, int n) { castLoop(a, d, n); }
void convert16s32f(const Orp16s* a, Orp32f* d, int n, int scale) {
  const float factor = std::ldexp(1.0F, -scale);
  for (int i = 0; i < n; ++i) d[i] = static_cast<float>(a[i]) * factor;
}
void convert32f16s(const Orp32f* a, Orp16s* d, int n, int mode, int scale) { roundLoop(a, d, n, mode, scale); }
void convert32f32s(const Orp32f* a, Orp32s* d, int n, int mode, int scale) { roundLoop(a, d, n, mode, scale); }
void convert32f8u(const Orp32f* a, Orp8u* d, int n, int mode, int scale) { roundLoop(a, d, n, mode, scale); }
void convert64f64s(const Orp64f* a, Orp64s* d, int n, int mode, int scale) { roundLoop(a, d, n, mode, scale); }
void convert32f24s(const Orp32f* a, Orp24s* d, int n, int, int scale) {
  const float factor = std::ldexp(1.0F, -scale);
  for (int i = 0; i < n; ++i) d[i] = to24(a[i] * factor);
}
void convert24s32f(const Orp24s* a, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = of24(a[i]);
}
void convert32f16f(const Orp32f* a, Orp16f* d, int n) {
  for (int i = 0; i < n; ++i) d[i].bits = std::bit_cast<Orp16u>(static_cast<_Float16>(a[i]));
}
void convert16f32f(const Orp16f* a, Orp32f* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = static_cast<float>(std::bit_cast<_Float16>(a[i].bits));
}
void convert32s16s(const Orp32s* a, Orp16s* d, int n) { narrowLoop(a, d, n, 0); }
void convert32s16s(const Orp32s* a, Orp16s* d, int n, int scale) { narrowLoop(a, d, n, scale); }
void convert64s32s(const Orp64s* a, Orp32s* d, int n, int scale) { narrowLoop(a, d, n, scale); }
void convert64f32f(const Orp64f* a, Orp32f* d, int n) { castLoop(a, d, n); }
void convert32f64f(const Orp32f* a, Orp64f* d, int n) { castLoop(a, d, n); }
void join16s(const Orp32f* a, const Orp32f* b, Orp16s* d, int n) {
  const auto sample = [](float x) { return clampTo<Orp16s>(std::nearbyint(x * 32768)); };
  for (int i = 0; i < n; ++i) {
    d[2 * i] = sample(a[i]);
    d[2 * i + 1] = sample(b[i]);
  }
}
void join24s(const Orp32f* a, const Orp32f* b, Orp24s* d, int n) {
  for (int i = 0; i < n; ++i) {
    d[2 * i] = to24(a[i] * 8388608);
    d[2 * i + 1] = to24(b[i] * 8388608);
  }
}
void split16s(const Orp16s* a, Orp32f* d, Orp32f* e, int n) {
  for (int i = 0; i < n; ++i) {
    d[i] = static_cast<float>(a[2 * i]) / 32768;
    e[i] = static_cast<float>(a[2 * i + 1]) / 32768;
  }
}
void split24s(const Orp24s* a, Orp32f* d, Orp32f* e, int n) {
  for (int i = 0; i < n; ++i) {
    d[i] = of24(a[2 * i]) / 8388608;
    e[i] = of24(a[2 * i + 1]) / 8388608;
  }
}

}  // namespace plain
