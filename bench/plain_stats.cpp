#include "plain_stats.h"

#include <algorithm>
#include <cmath>

namespace plain {
namespace {

template <class Total, class T>
Total sum(const T* a, int n) {
  Total total = 0;
  for (int i = 0; i < n; ++i) total += a[i];
  return total;
}

template <class Total, class T>
T stdDev(const T* a, int n) {
  Total sum = 0, squares = 0;
  for (int i = 0; i < n; ++i) {
    const Total x = a[i];
    sum += x;
    squares += x * x;
  }
  const double s = sum, q = squares, count = n;
  return static_cast<T>(std::sqrt(std::max(count * q - s * s, 0.0) / (count * (count - 1))));
}

template <class T>
T dotProd(const T* a, const T* b, int n) {
  T total = 0;
  for (int i = 0; i < n; ++i) total += a[i] * b[i];
  return total;
}

template <class T>
T max(const T* a, int n) {
  T most = a[0];
  for (int i = 1; i < n; ++i) most = std::max(most, a[i]);
  return most;
}

template <class T>
void minMax(const T* a, int n, T* min, T* max) {
  T least = a[0], most = a[0];
  for (int i = 1; i < n; ++i) {
    least = std::min(least, a[i]);
    most = std::max(most, a[i]);
  }
  *min = least;
  *max = most;
}

template <class T>
void maxIndx(const T* a, int n, T* d, int* index) {
  T most = a[0];
  int at = 0;
  for (int i = 1; i < n; ++i) {
    if (a[i] > most) {
      most = a[i];
      at = i;
    }
  }
  *d = most;
  *index = at;
}

template <class T>
void maxEvery(const T* a, const T* b, T* d, int n) {
  for (int i = 0; i < n; ++i) d[i] = std::max(a[i], b[i]);
}

}  // namespace

void sum32f(const Orp32f* a, int n, Orp32f* d) { *d = sum<float>(a, n); }
void sumInDouble32f(const Orp32f* a, int n, Orp32f* d) { *d = static_cast<float>(sum<double>(a, n)); }
void sum64f(const Orp64f* a, int n, Orp64f* d) { *d = sum<double>(a, n); }
void sum32fc(const Orp32fc* a, int n, Orp32fc* d) {
  float re = 0, im = 0;
  for (int i = 0; i < n; ++i) {
    re += a[i].re;
    im += a[i].im;
  }
  *d = {re, im};
}
void sum16s32s(const Orp16s* a, int n, Orp32s* d) { *d = sum<int>(a, n); }
void sum32s(const Orp32s* a, int n, Orp32s* d) {
  *d = static_cast<int>(std::clamp<int64_t>(sum<int64_t>(a, n), INT32_MIN, INT32_MAX));
}
void mean32f(const Orp32f* a, int n, Orp32f* d) { *d = static_cast<float>(sum<double>(a, n) / n); }
void stdDev32f(const Orp32f* a, int n, Orp32f* d) { *d = stdDev<float>(a, n); }
void stdDevInDouble32f(const Orp32f* a, int n, Orp32f* d) { *d = stdDev<double>(a, n); }
void stdDev64f(const Orp64f* a, int n, Orp64f* d) { *d = stdDev<double>(a, n); }
void sumLn32f(const Orp32f* a, int n, Orp32f* d) {
  float total = 0;
  for (int i = 0; i < n; ++i) total += std::log(a[i]);
  *d = total;
}
void sumLn64f(const Orp64f* a, int n, Orp64f* d) {
  double total = 0;
  for (int i = 0; i < n; ++i) total += std::log(a[i]);
  *d = total;
}

void normInf32f(const Orp32f* a, int n, Orp32f* d) {
  float most = 0;
  for (int i = 0; i < n; ++i) most = std::max(most, std::abs(a[i]));
  *d = most;
}
void normInf16s(const Orp16s* a, int n, Orp32s* d) {
  int most = 0;
  for (int i = 0; i < n; ++i) most = std::max(most, std::abs(int{a[i]}));
  *d = most;
}
void normL132f(const Orp32f* a, int n, Orp32f* d) {
  float total = 0;
  for (int i = 0; i < n; ++i) total += std::abs(a[i]);
  *d = total;
}
void normL232f(const Orp32f* a, int n, Orp32f* d) { *d = std::sqrt(dotProd(a, a, n)); }
void normL264f(const Orp64f* a, int n, Orp64f* d) { *d = std::sqrt(dotProd(a, a, n)); }
void normDiffL232f(const Orp32f* a, const Orp32f* b, int n, Orp32f* d) {
  float total = 0;
  for (int i = 0; i < n; ++i) total += (a[i] - b[i]) * (a[i] - b[i]);
  *d = std::sqrt(total);
}

void dotProd32f(const Orp32f* a, const Orp32f* b, int n, Orp32f* d) { *d = dotProd(a, b, n); }
void dotProd64f(const Orp64f* a, const Orp64f* b, int n, Orp64f* d) { *d = dotProd(a, b, n); }
void dotProd32fc(const Orp32fc* a, const Orp32fc* b, int n, Orp32fc* d) {
  float re = 0, im = 0;
  for (int i = 0; i < n; ++i) {
    re += a[i].re * b[i].re - a[i].im * b[i].im;
    im += a[i].re * b[i].im + a[i].im * b[i].re;
  }
  *d = {re, im};
}
void dotProd16s64s(const Orp16s* a, const Orp16s* b, int n, Orp64s* d) {
  int64_t total = 0;
  for (int i = 0; i < n; ++i) total += a[i] * b[i];
  *d = total;
}

void max16s(const Orp16s* a, int n, Orp16s* d) { *d = max(a, n); }
void max32s(const Orp32s* a, int n, Orp32s* d) { *d = max(a, n); }
void max32f(const Orp32f* a, int n, Orp32f* d) { *d = max(a, n); }
void max64f(const Orp64f* a, int n, Orp64f* d) { *d = max(a, n); }
void maxAbs16s(const Orp16s* a, int n, Orp16s* d) {
  int most = 0;
  for (int i = 0; i < n; ++i) most = std::max(most, std::abs(int{a[i]}));
  *d = static_cast<Orp16s>(std::min(most, INT16_MAX));
}
void maxIndx16s(const Orp16s* a, int n, Orp16s* d, int* index) { maxIndx(a, n, d, index); }
void maxIndx32f(const Orp32f* a, int n, Orp32f* d, int* index) { maxIndx(a, n, d, index); }
void minMax8u(const Orp8u* a, int n, Orp8u* min, Orp8u* max) { minMax(a, n, min, max); }
void minMax32f(const Orp32f* a, int n, Orp32f* min, Orp32f* max) { minMax(a, n, min, max); }
void minMaxIndx32f(const Orp32f* a, int n, Orp32f* min, int* minIndex, Orp32f* max, int* maxIndex) {
  float least = a[0], most = a[0];
  int leastAt = 0, mostAt = 0;
  for (int i = 1; i < n; ++i) {
    if (a[i] < least) {
      least = a[i];
      leastAt = i;
    }
    if (a[i] > most) {
      most = a[i];
      mostAt = i;
    }
  }
  *min = least;
  *minIndex = leastAt;
  *max = most;
  *maxIndex = mostAt;
}
void maxEvery16u(const Orp16u* a, const Orp16u* b, Orp16u* d, int n) { maxEvery(a, b, d, n); }
void maxEvery32f(const Orp32f* a, const Orp32f* b, Orp32f* d, int n) { maxEvery(a, b, d, n); }
void maxEvery64f(const Orp64f* a, const Orp64f* b, Orp64f* d, int n) { maxEvery(a, b, d, n); }

void countInRange32s(const Orp32s* a, int n, int* d, Orp32s lower, Orp32s upper) {
  int count = 0;
  for (int i = 0; i < n; ++i) count += lower < a[i] && a[i] < upper;
  *d = count;
}
void signChanges16s(const Orp16s* a, int n, Orp32f* d) {
  int count = 0;
  for (int i = 1; i < n; ++i) count += (a[i - 1] < 0) != (a[i] < 0);
  *d = static_cast<float>(count);
}
void signChanges32f(const Orp32f* a, int n, Orp32f* d) {
  int count = 0;
  for (int i = 1; i < n; ++i) count += (a[i - 1] < 0) != (a[i] < 0);
  *d = static_cast<float>(count);
}
void crossings32f(const Orp32f* a, int n, Orp32f* d) {
  int count = 0;
  for (int i = 1; i < n; ++i) count += a[i - 1] * a[i] < 0;
  *d = static_cast<float>(count);
}
void findNearest16u(const Orp16u* values, Orp16u* found, int* indexes, int n, const Orp16u* table, int tableLen) {
  for (int i = 0; i < n; ++i) {
    const Orp16u* at = std::lower_bound(table, table + tableLen, values[i]);
    if (at == table + tableLen || (at != table && values[i] - at[-1] <= *at - values[i])) --at;
    found[i] = *at;
    indexes[i] = static_cast<int>(at - table);
  }
}

}  // namespace plain
