// Sizes of FFT specifications and of their parts, and what Init does without vectors.
#include "transform/fft_sizes.h"

#include <xmmintrin.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <type_traits>

#include "frame/state.h"

namespace orpsp {
namespace {

constexpr size_t alignUp(size_t bytes) { return upToMultiple(bytes, 64); }
constexpr size_t points(int order) { return size_t{1} << order; }

constexpr int kTabledFrom = 6;  // order from which on complex transforms have tables
constexpr size_t kThreads = 2, kThreadBytes = 65536;

// Tables of doubles are twice as large, and what depends on the length begins one order earlier.
template <class T>
struct Thresholds {
  static constexpr int kMedium = sizeof(T) == 4 ? 13 : 12, kLarge = sizeof(T) == 4 ? 18 : 17;
  static constexpr size_t kPair = 2 * sizeof(T), kDoubled = sizeof(T) / sizeof(float);
};

constexpr size_t indexBytes(int order) { return alignUp(4 * (points(order) / 4) + 4); }

template <class T>
constexpr size_t twiddleTableBytes(int order) {
  return alignUp(Thresholds<T>::kPair * (points(order) + 1));
}

// Large orders: 2^order = 2^split * 2^inner, and the inner transform may be large again.
struct Large {
  size_t tables, work;
};

template <class T>
constexpr Large largeBytes(int order) {
  using L = Thresholds<T>;
  const bool isSmallSplit = order < L::kLarge + 2;
  const int inner = order - (isSmallSplit ? 4 : 8);
  Large large =
      inner < L::kLarge ? Large{twiddleTableBytes<T>(inner), alignUp(L::kPair * points(inner))} : largeBytes<T>(inner);
  large.work = std::max(large.work, L::kPair * points(isSmallSplit ? 10 : 14));
  large.tables += L::kPair / 2 * points(order);
  if (order == L::kLarge) {
    large.tables += indexBytes(order);
  } else {
    large.tables += L::kDoubled * (points(order - 10) + 4096) + 64;
    large.work = std::max(large.work, L::kDoubled * kThreadBytes);
  }
  return large;
}

// Roots that take the spectrum of half the length to that of 2^order reals.
template <class T>
constexpr size_t splitBytes(int order) {
  using L = Thresholds<T>;
  if (order <= L::kLarge) return alignUp(L::kPair * (points(order) / 4));
  return alignUp(L::kDoubled * (points(order - 9) + 8192));
}

template <class T>
constexpr size_t twiddleBytes(int order) {
  using L = Thresholds<T>;
  if (order < kTabledFrom) return 0;
  if (order >= L::kLarge) return largeBytes<T>(order).tables;
  return twiddleTableBytes<T>(order) + (order >= L::kMedium ? alignUp(L::kDoubled * points(order) / 2) : 0);
}

template <class T>
constexpr size_t reversedBytes(int order) {
  return order >= kTabledFrom && order < Thresholds<T>::kLarge ? indexBytes(order) : 0;
}

template <class T>
constexpr size_t workBytes(int order) {
  using L = Thresholds<T>;
  if (order < kTabledFrom) return 0;
  if (order >= L::kLarge) return largeBytes<T>(order).work;
  return alignUp(L::kPair * points(order)) + (order >= L::kMedium ? kThreads * kThreadBytes : 0);
}

template <class T>
constexpr FftSizes floatSizes(int order, bool isReal) {
  const int complexOrder = order - (isReal ? 1 : 0);
  if (order < kTabledFrom - (isReal ? 1 : 0)) return {200, 0, 0};
  const size_t tables = twiddleBytes<T>(complexOrder) + reversedBytes<T>(complexOrder);
  const size_t work = workBytes<T>(complexOrder);
  return {tables + (isReal ? 2 * splitBytes<T>(order) : 0) + 256,
          order > kStaticSineOrder ? alignUp(sizeof(T) * (points(order) / 4 + 1)) + 64 : 0, work + (work > 0 ? 64 : 0)};
}

// 16-bit types of few points compute directly; hint 2 declines that.
constexpr bool isCompact(const FftShape& shape) {
  return shape.sampleBytes == 2 && (shape.order == 0 || (shape.order <= 3 && (shape.hint == 0 || shape.hint == 1)));
}

template <class T>
constexpr FftSizes sizesOf(const FftShape& shape) {
  FftSizes sizes = floatSizes<T>(shape.order, shape.isReal);
  if (shape.sampleBytes == 0) return sizes;
  // The samples as T; a real spectrum has room for the imaginary parts of its first and last bin.
  const size_t n = points(shape.order), converted = sizeof(T) * (shape.isReal ? n + 2 : 2 * n);
  if (isCompact(shape)) {
    if (shape.order == 0) return {136, 0, 0};
    return {shape.isReal ? uint64_t{384} : uint64_t{320}, 128, converted + (shape.isReal ? 0 : 4 * n) + 64};
  }
  const bool isShort = shape.sampleBytes == 2;
  sizes.spec += isShort ? 192 : 128;
  sizes.init += isShort || sizes.init > 0 ? 64 : 0;
  sizes.work += converted + 64;
  if (sizes.work > INT_MAX) sizes.work = 0;
  return sizes;
}

// The tables of a specification, behind its header.
template <class T>
struct Tables {
  T *twiddles, *split;
  int32_t* reversed;

  constexpr Tables(const FftShape& shape, Regions& regions) {
    const int complexOrder = shape.order - (shape.isReal ? 1 : 0);
    const bool isSplit = shape.isReal && shape.order >= kTabledFrom - 1;
    regions.take<char>(isSplit || complexOrder >= kTabledFrom ? kFftHeaderBytes : sizeof(FftSpec<T>));
    twiddles = regions.take<T>(twiddleBytes<T>(complexOrder) / sizeof(T), 64);
    reversed = regions.take<int32_t>(reversedBytes<T>(complexOrder) / sizeof(int32_t), 64);
    split = regions.take<T>(isSplit ? splitBytes<T>(shape.order) / sizeof(T) : 0, 64);
  }
};

// Whether the sizes that are promised hold what is counted, in memory at any address.
template <class T>
constexpr bool holdsTables(bool isReal) {
  for (int order = 0; order <= highestOrder<T>(isReal); ++order) {
    for (const FftShape& shape : {FftShape{order, 1, 0, isReal, 0}, FftShape{order, 1, 0, isReal, 2},
                                  FftShape{order, 1, 2, isReal, 2}, FftShape{order, 1, 0, isReal, 4}}) {
      Regions counted;
      static_cast<void>(Tables<T>(shape, counted));
      if (counted.bytes() + 63 > sizesOf<T>(shape).spec) return false;
    }
  }
  return true;
}
static_assert(holdsTables<float>(false) && holdsTables<float>(true));
static_assert(holdsTables<double>(false) && holdsTables<double>(true));

template <class T>
T normFactor(int order, int flag) {
  const auto n = static_cast<T>(points(order));
  if (flag == 1 || flag == 2) return 1 / n;
  if (flag != 4) return 0;
  if constexpr (std::is_same_v<T, float>) {
    // The processor's approximation and one Newton step, in this order of operations.
    const float r = _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(n)));
    return (r * -0.5F) * (n * r * r - 3.0F);
  } else {
    // Correctly rounded, which 1 / sqrt(n) is not where n is no square.
    constexpr double kRootOfHalf = 0x1.6a09e667f3bcdp-1;
    return (order % 2 == 0 ? 1.0 : kRootOfHalf) / static_cast<double>(points(order / 2));
  }
}

}  // namespace

template <class T>
size_t complexTwiddleBytes(int order) {
  return twiddleBytes<T>(order);
}

template <class T>
size_t complexIndexBytes(int order) {
  return reversedBytes<T>(order);
}

template <class T>
size_t complexWorkBytes(int order) {
  return workBytes<T>(order);
}

template <class T>
FftSizes fftSizes(const FftShape& shape) {
  return sizesOf<T>(shape);
}

template <class T>
void fillSpec(const FftShape& shape, FftSpec<T>& spec) {
  const FftSizes sizes = sizesOf<T>(shape);
  char* const header = reinterpret_cast<char*>(&spec);
  std::memset(header, 0, std::min<size_t>(kFftHeaderBytes, sizes.spec - 64));
  spec.order = shape.order;
  spec.hint = shape.hint;
  if (!isNormFlag(shape.flag)) return;
  spec.scalesForward = shape.flag == 1 || shape.flag == 4;
  spec.scalesInverse = shape.flag == 2 || shape.flag == 4;
  spec.factor = normFactor<T>(shape.order, shape.flag);
  if (sizes.work > 0) spec.workBytes = static_cast<int32_t>(sizes.work - 64);
  Regions regions(header);
  const Tables<T> tables(shape, regions);
  spec.twiddles = tables.twiddles;
  spec.reversed = tables.reversed;
  spec.split = tables.split;
}

#define ORPS_INSTANTIATE(T)                       \
  template size_t complexTwiddleBytes<T>(int);    \
  template size_t complexIndexBytes<T>(int);      \
  template size_t complexWorkBytes<T>(int);       \
  template FftSizes fftSizes<T>(const FftShape&); \
  template void fillSpec<T>(const FftShape&, FftSpec<T>&)
ORPS_INSTANTIATE(float);
ORPS_INSTANTIATE(double);
#undef ORPS_INSTANTIATE

}  // namespace orpsp
