// The discrete Fourier transform in extended precision, and the layouts in which spectra are stored.
#pragma once

#include <quadmath.h>

#include <vector>

#include "vector/reference.h"

namespace orptest {

using Z = reference::Pair<long double>;

// exp(-2 pi i k / n). MinGW's run-time library has no sine for long double.
inline Z rootOfUnity(size_t k, size_t n) {
  static const __float128 kCircle = 8 * atanq(1);
  __float128 sine, cosine;
  sincosq(-kCircle * static_cast<__float128>(k) / static_cast<__float128>(n), &sine, &cosine);
  return {static_cast<long double>(cosine), static_cast<long double>(sine)};
}

// out = transform of the n elements x[0], x[step], ...; roots of order n * step.
inline void transformHalves(const Z* x, size_t step, Z* out, size_t n, const std::vector<Z>& roots) {
  if (n == 1) {
    *out = *x;
    return;
  }
  transformHalves(x, 2 * step, out, n / 2, roots);
  transformHalves(x + step, 2 * step, out + n / 2, n / 2, roots);
  for (size_t k = 0; k < n / 2; ++k) {
    const Z even = out[k], odd = roots[k * step] * out[n / 2 + k];
    out[k] = even + odd;
    out[n / 2 + k] = even - odd;
  }
}

// exp(-2 pi i k / n) for k < n / 2, each the product of two, so that few sines are computed.
inline std::vector<Z> rootsOfUnity(size_t n) {
  constexpr size_t kFine = 2048;
  std::vector<Z> fine, roots;
  for (size_t k = 0; k < std::min(kFine, n / 2); ++k) fine.push_back(rootOfUnity(k, n));
  for (size_t k = 0; k < n / 2; k += kFine) {
    const Z coarse = rootOfUnity(k, n);
    for (const Z& root : fine) roots.push_back(coarse * root);
  }
  return roots;
}

// X[k] = sum over n of x[n] exp(-2 pi i n k / N), N a power of two.
inline std::vector<Z> transformed(const std::vector<Z>& x) {
  static std::vector<Z> roots;  // of the last length
  if (roots.size() != x.size() / 2) roots = rootsOfUnity(x.size());
  std::vector<Z> result(x.size());
  transformHalves(x.data(), 1, result.data(), x.size(), roots);
  return result;
}

// X[-k]: what the sum with the opposite sign gives.
inline std::vector<Z> reversed(const std::vector<Z>& spectrum) {
  std::vector<Z> result = {spectrum[0]};
  result.insert(result.end(), spectrum.rbegin(), spectrum.rend() - 1);
  return result;
}

enum class Layout { signal, pairs, planes, pack, perm, ccs };

// The numbers of one array (of two for planes) that stores n complex elements, half of a spectrum or a real signal.
inline size_t numbersIn(Layout layout, size_t n) {
  if (layout == Layout::pairs || layout == Layout::planes) return 2 * n;
  return layout == Layout::ccs ? 2 * (n / 2 + 1) : n;
}

// Planes are given as pairs.
inline std::vector<long double> stored(const std::vector<Z>& x, Layout layout) {
  const size_t n = x.size(), middle = n / 2;
  std::vector<long double> numbers;
  const auto pairs = [&](size_t begin, size_t end) {
    for (size_t k = begin; k < end; ++k) numbers.insert(numbers.end(), {x[k].re, x[k].im});
  };
  switch (layout) {
    case Layout::signal:
      for (const Z& z : x) numbers.push_back(z.re);
      break;
    case Layout::pairs:
    case Layout::planes:
      pairs(0, n);
      break;
    case Layout::pack:
    case Layout::perm:
      numbers.push_back(x[0].re);
      if (layout == Layout::perm && n > 1) numbers.push_back(x[middle].re);
      pairs(1, middle);
      if (layout == Layout::pack && n > 1) numbers.push_back(x[middle].re);
      break;
    case Layout::ccs:
      pairs(0, middle + 1);
      break;
  }
  return numbers;
}

}  // namespace orptest
