#include "peak.h"

#include <immintrin.h>

#include <algorithm>
#include <chrono>

namespace bench {
namespace {

constexpr int kChains = 12;  // more than latency times instructions a cycle, and few enough for 16 registers
constexpr int kSteps = 20000;

// The chains stay in registers because each is a variable of its own once the inner loops are unrolled; with different
// starts they cannot be merged.
#define DEFINE_CHAINS(name, isa, Vector, set, fma, store)                                 \
  __attribute__((target(isa), noinline)) float name(const float* starts) {                \
    Vector chain[kChains];                                                                \
    const Vector factor = set(0.999F), term = set(starts[0]);                             \
    _Pragma("GCC unroll 16") for (int k = 0; k < kChains; ++k) chain[k] = set(starts[k]); \
    for (int i = 0; i < kSteps; ++i) {                                                    \
      _Pragma("GCC unroll 16") for (auto& c : chain) c = fma(c, factor, term);            \
    }                                                                                     \
    alignas(64) float lanes[16] = {};                                                     \
    float sum = 0;                                                                        \
    _Pragma("GCC unroll 16") for (auto& c : chain) {                                      \
      store(lanes, c);                                                                    \
      sum += lanes[0];                                                                    \
    }                                                                                     \
    return sum;                                                                           \
  }
DEFINE_CHAINS(chains256, "avx2,fma", __m256, _mm256_set1_ps, _mm256_fmadd_ps, _mm256_store_ps)
DEFINE_CHAINS(chains512, "avx512f", __m512, _mm512_set1_ps, _mm512_fmadd_ps, _mm512_store_ps)

}  // namespace

double multiplyAddPeak(int bits) {
  const bool isWide = bits == 512;
  if (isWide ? !__builtin_cpu_supports("avx512f") : !__builtin_cpu_supports("fma")) return 0;
  const auto chains = isWide ? chains512 : chains256;
  float starts[kChains];
  for (int k = 0; k < kChains; ++k) starts[k] = static_cast<float>(k);
  volatile float sink = 0;
  double best = 1e9;
  for (int i = 0; i < 2000; ++i) {
    const auto start = std::chrono::steady_clock::now();
    sink = chains(starts);
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    best = std::min(best, time.count());
  }
  static_cast<void>(sink);
  return 2.0 * kChains * kSteps * (bits / 32) / best;
}

}  // namespace bench
