// Plans of FFTs, which the library uses inside other transforms: compiled like its kernels, with the library's own
// objects, since none of this is exported. A product with the spectrum of one shifted impulse shifts a signal.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "orpcore.h"
#include "simd/targets.h"
#include "support/guarded.h"
#include "support/random.h"
#include "transform/fft_sizes.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "transform/plan_test.cpp"
#include <hwy/foreach_target.h>

#include "transform/plan-inl.h"

#ifndef ORPTEST_PLAN_REGIONS
#define ORPTEST_PLAN_REGIONS
namespace plan_test {

// Counts, or places from a multiple of 64 on.
struct Regions {
  char* block = nullptr;
  size_t bytes = 0;
  template <class T>
  T* take(size_t count, size_t alignment) {
    if (count == 0) return nullptr;
    const size_t offset = (bytes + alignment - 1) / alignment * alignment;
    bytes = offset + count * sizeof(T);
    return block == nullptr ? nullptr : reinterpret_cast<T*>(block + offset);
  }
};

}  // namespace plan_test
#endif

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

using orptest::Guarded;

// A plan in memory of exactly the size that it counts.
template <class T>
struct Plan {
  FftSpec<T> spec;
  Guarded<char> tables, work;

  static size_t counted(int order, bool isReal) {
    plan_test::Regions regions;
    FftSpec<T> spec;
    fft::PlacePlan(regions, order, isReal, spec);
    return regions.bytes;
  }
  Plan(int order, bool isReal) : tables(counted(order, isReal), 64), work(fft::PlanWorkBytes<T>(order, isReal), 64) {
    plan_test::Regions regions{tables.data()};
    fft::PlacePlan(regions, order, isReal, spec);
    Guarded<char> sines(fft::planSineBytes<T>(order), 64);
    fft::FillPlan(spec, sines.data());
  }
};

template <class T>
std::vector<T> noise(size_t count) {
  return orptest::Random().vector<T>(count, orptest::Values::modest);
}

template <class T>
void expectShifted(const std::vector<T>& x, const std::vector<T>& y, size_t step, size_t shift, int order) {
  const size_t n = x.size();
  const double tolerance = (order + 2) * static_cast<double>(std::numeric_limits<T>::epsilon());
  double worst = 0;
  for (size_t i = 0; i < n; ++i)
    worst =
        std::fmax(worst, std::fabs(static_cast<double>(y[(i + shift * step) % n] / static_cast<T>(n / step) - x[i])));
  EXPECT_LT(worst, 4 * tolerance) << "order " << order;
}

template <class T, class Layout>
void checkReal(int order) {
  const size_t n = size_t{1} << order, shift = n / 3;
  Plan<T> plan(order, true);
  const std::vector<T> x = noise<T>(n);
  std::vector<T> spectrum(n), filter(n), y(n);
  filter[shift] = 1;
  fft::RealToSpectrum<Layout>(plan.spec, x.data(), spectrum.data(), plan.work.data());
  fft::RealToSpectrum<Layout>(plan.spec, filter.data(), filter.data(), plan.work.data());
  fft::MultiplySpectra<Layout, false>(spectrum.data(), filter.data(), y.data(), n);
  fft::SpectrumToReal<Layout>(plan.spec, y.data(), y.data(), plan.work.data());
  expectShifted(x, y, 1, shift, order);
  fft::MultiplySpectra<Layout, true>(spectrum.data(), filter.data(), spectrum.data(), n);
  fft::SpectrumToReal<Layout>(plan.spec, spectrum.data(), y.data(), plan.work.data());
  expectShifted(x, y, 1, n - shift, order);
}

template <class T>
void checkComplex(int order) {
  const size_t n = size_t{1} << order, shift = n / 3;
  Plan<T> plan(order, false);
  const std::vector<T> x = noise<T>(2 * n);
  std::vector<T> pairs(2 * n), re(n), im(n), y(2 * n);
  fft::TransformPairs<false>(plan.spec, order, x.data(), pairs.data(), plan.work.data());
  for (size_t k = 0; k < n; ++k) {
    const double angle = -2 * M_PI * static_cast<double>(k * shift % n) / static_cast<double>(n);
    const auto c = static_cast<T>(std::cos(angle)), s = static_cast<T>(std::sin(angle));
    re[k] = pairs[2 * k] * c - pairs[2 * k + 1] * s;
    im[k] = pairs[2 * k] * s + pairs[2 * k + 1] * c;
  }
  fft::TransformPlanes<true>(plan.spec, order, re.data(), im.data(), re.data(), im.data(), plan.work.data());
  for (size_t i = 0; i < n; ++i) {
    y[2 * i] = re[i];
    y[2 * i + 1] = im[i];
  }
  expectShifted(x, y, 2, shift, order);
}

template <class T>
void checkPlans() {
  for (const int order : {1, 2, 4, 5, 6, 8, 10, 11, 13, 14, 16, 18}) {
    checkReal<T, PermLayout>(order);
    checkReal<T, PackLayout>(order);
    checkComplex<T>(order);
  }
}

}  // namespace

void CheckPlans() {
  checkPlans<float>();
  checkPlans<double>();
}

}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
TEST(FftPlan, ProductsShift) {
  const int bits = orpGetVectorBits();
  bits == 128   ? orpsp::ORPSP_NAMESPACE_128::CheckPlans()
  : bits == 256 ? orpsp::ORPSP_NAMESPACE_256::CheckPlans()
                : orpsp::ORPSP_NAMESPACE_512::CheckPlans();
}
#endif
