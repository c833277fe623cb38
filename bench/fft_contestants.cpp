#include "fft_contestants.h"

#include <dlfcn.h>
#include <fftw3.h>
#include <unistd.h>

#include <filesystem>
#include <utility>

#include "orpcore.h"
#include "orpsp.h"

namespace bench::fft {
namespace {

uint64_t featuresOf(int bits) {
  switch (bits) {
    case 512:
      return ORP_CPU_SSSE3 | ORP_CPU_AVX2 | ORP_CPU_AVX512;
    case 256:
      return ORP_CPU_SSSE3 | ORP_CPU_AVX2;
    case 128:
      return ORP_CPU_SSSE3;
    default:
      throw std::runtime_error("a width is 128, 256 or 512");
  }
}

void check(OrpStatus status) {
  if (status != StsOk) throw std::runtime_error("a specification failed with status " + std::to_string(status));
}

// No division: FFTW has none either.
constexpr int kFlag = 8, kHint = 0;

template <class Spec>
struct Prepared {
  std::shared_ptr<Spec> spec;
  std::shared_ptr<Orp8u[]> work;
};

template <class Spec>
Prepared<Spec> prepare(OrpStatus (*init)(Spec**, int, int, int), OrpStatus (*workSize)(const Spec*, int*),
                       OrpStatus (*free)(Spec*), int order) {
  Spec* spec = nullptr;
  check(init(&spec, order, kFlag, kHint));
  Prepared<Spec> result;
  result.spec = std::shared_ptr<Spec>(spec, free);
  int bytes = 0;
  check(workSize(spec, &bytes));
  if (bytes > 0) result.work = allocate<Orp8u>(static_cast<size_t>(bytes));
  return result;
}

template <class Spec, class Transform, class... Array>
Work repeat(const Prepared<Spec>& prepared, Transform* transform, Array*... arrays) {
  return [=](int times) {
    const Spec* const spec = prepared.spec.get();
    Orp8u* const work = prepared.work.get();
    for (int i = 0; i < times; ++i) transform(arrays..., spec, work);
  };
}

template <class Spec>
Work repeatInit(OrpStatus (*init)(Spec**, int, int, int), OrpStatus (*free)(Spec*), int order) {
  return [=](int times) {
    for (int i = 0; i < times; ++i) {
      Spec* spec = nullptr;
      check(init(&spec, order, kFlag, kHint));
      check(free(spec));
    }
  };
}

}  // namespace

// A file is loaded once, so all widths but the first come from copies of it.
Library::Library(const std::string& name, int bits) : bits_(bits) {
  namespace fs = std::filesystem;
  static int loaded = 0;
  const fs::path original = name.empty() ? ORPSP_FILE : fs::absolute(name);
  fs::path file = original;
  const bool isCopy = loaded++ > 0;
  if (isCopy) {
    std::string unused = (fs::temp_directory_path() / "orpsp-XXXXXX").string();
    const int opened = mkstemp(unused.data());
    if (opened < 0) throw std::runtime_error("cannot write to " + fs::temp_directory_path().string());
    close(opened);
    file = unused;
    fs::copy_file(original, file, fs::copy_options::overwrite_existing);
  }
  orpSetCpuFeatures(featuresOf(bits));
  void* const module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  const int got = orpGetVectorBits();
  orpSetCpuFeatures(~uint64_t{0});
  if (isCopy) fs::remove(file);
  if (!module) throw std::runtime_error(dlerror());
  module_ = std::shared_ptr<void>(module, dlclose);
  if (got != bits) throw std::runtime_error("no vectors of " + std::to_string(bits) + " bits here");
}

template <class F>
F* Library::find(const char* name) const {
  void* const symbol = dlsym(module_.get(), name);
  if (!symbol) throw std::runtime_error(dlerror());
  return reinterpret_cast<F*>(symbol);
}

#define FIND(name) find<decltype(name)>(#name)
#define FIND_EITHER(inverse, Fwd, Inv) (inverse ? FIND(Inv) : FIND(Fwd))
#define PREPARE(type) \
  prepare(FIND(orpsFFTInitAlloc_##type), FIND(orpsFFTGetBufSize_##type), FIND(orpsFFTFree_##type), shape.order)

// real, complex: the names of T and of its pairs.
#define DEFINE_LIBRARY(T, real, complex)                                                                               \
  template <>                                                                                                          \
  Work Library::transform(const Shape& shape, const Arrays<T>& arrays) const {                                         \
    T *const re = arrays.source[0].get(), *const im = arrays.source[1].get();                                          \
    T *const toRe = arrays.destination[0].get(), *const toIm = arrays.destination[1].get();                            \
    auto* const pairs = reinterpret_cast<Orp##complex*>(re);                                                           \
    auto* const toPairs = reinterpret_cast<Orp##complex*>(toRe);                                                       \
    const bool inverse = shape.inverse;                                                                                \
    if (shape.layout == Layout::kInterleaved) {                                                                        \
      const auto spec = PREPARE(C_##complex);                                                                          \
      if (shape.inPlace)                                                                                               \
        return repeat(spec, FIND_EITHER(inverse, orpsFFTFwd_CToC_##complex##_I, orpsFFTInv_CToC_##complex##_I),        \
                      toPairs);                                                                                        \
      return repeat(spec, FIND_EITHER(inverse, orpsFFTFwd_CToC_##complex, orpsFFTInv_CToC_##complex), pairs, toPairs); \
    }                                                                                                                  \
    if (shape.layout == Layout::kSplit) {                                                                              \
      const auto spec = PREPARE(C_##real);                                                                             \
      if (shape.inPlace)                                                                                               \
        return repeat(spec, FIND_EITHER(inverse, orpsFFTFwd_CToC_##real##_I, orpsFFTInv_CToC_##real##_I), toRe, toIm); \
      return repeat(spec, FIND_EITHER(inverse, orpsFFTFwd_CToC_##real, orpsFFTInv_CToC_##real), re, im, toRe, toIm);   \
    }                                                                                                                  \
    const auto spec = PREPARE(R_##real);                                                                               \
    if (shape.inPlace)                                                                                                 \
      return repeat(spec, FIND_EITHER(inverse, orpsFFTFwd_RToCCS_##real##_I, orpsFFTInv_CCSToR_##real##_I), toRe);     \
    return repeat(spec, FIND_EITHER(inverse, orpsFFTFwd_RToCCS_##real, orpsFFTInv_CCSToR_##real), re, toRe);           \
  }                                                                                                                    \
  template <>                                                                                                          \
  Work Library::init<T>(Layout layout, int order) const {                                                              \
    if (layout == Layout::kReal)                                                                                       \
      return repeatInit(FIND(orpsFFTInitAlloc_R_##real), FIND(orpsFFTFree_R_##real), order);                           \
    return repeatInit(FIND(orpsFFTInitAlloc_C_##complex), FIND(orpsFFTFree_C_##complex), order);                       \
  }

DEFINE_LIBRARY(float, 32f, 32fc)
DEFINE_LIBRARY(double, 64f, 64fc)

// ---- FFTW

namespace {

template <class T>
struct Fftw;

#define DEFINE_FFTW(T, prefix)                                                \
  template <>                                                                 \
  struct Fftw<T> {                                                            \
    using Complex = prefix##_complex;                                         \
    using Dimension = prefix##_iodim;                                         \
    static constexpr auto kInterleaved = prefix##_plan_dft_1d;                \
    static constexpr auto kSplit = prefix##_plan_guru_split_dft;              \
    static constexpr auto kRealForward = prefix##_plan_dft_r2c_1d;            \
    static constexpr auto kRealInverse = prefix##_plan_dft_c2r_1d;            \
    static constexpr auto kExecute = prefix##_execute;                        \
    static constexpr auto kDestroy = prefix##_destroy_plan;                   \
    static constexpr auto kReadWisdom = prefix##_import_wisdom_from_filename; \
    static constexpr auto kWriteWisdom = prefix##_export_wisdom_to_filename;  \
  };
DEFINE_FFTW(float, fftwf)
DEFINE_FFTW(double, fftw)

template <class T>
auto plan(const Shape& shape, const Arrays<T>& arrays, unsigned flags) {
  using F = Fftw<T>;
  const auto& from = shape.inPlace ? arrays.destination : arrays.source;
  T *re = from[0].get(), *im = from[1].get();
  T *toRe = arrays.destination[0].get(), *toIm = arrays.destination[1].get();
  const auto pairs = reinterpret_cast<typename F::Complex*>(re);
  const auto toPairs = reinterpret_cast<typename F::Complex*>(toRe);
  const int n = 1 << shape.order;
  if (shape.layout == Layout::kInterleaved)
    return F::kInterleaved(n, pairs, toPairs, shape.inverse ? FFTW_BACKWARD : FFTW_FORWARD, flags);
  if (shape.layout == Layout::kSplit) {
    if (shape.inverse) {  // the forward transform with real and imaginary parts exchanged
      std::swap(re, im);
      std::swap(toRe, toIm);
    }
    const typename F::Dimension dimension{n, 1, 1};
    return F::kSplit(1, &dimension, 0, nullptr, re, im, toRe, toIm, flags);
  }
  if (shape.inverse) return F::kRealInverse(n, pairs, toRe, flags);
  return F::kRealForward(n, re, toPairs, flags);
}

}  // namespace

template <class T>
Work fftwTransform(const Shape& shape, const Arrays<T>& arrays, bool patient) {
  // The library leaves the source of a transform out of place as it is, so FFTW has to as well.
  const unsigned flags = (patient ? FFTW_PATIENT : FFTW_MEASURE) | (shape.inPlace ? 0U : FFTW_PRESERVE_INPUT);
  const auto made = plan(shape, arrays, flags);
  if (!made) throw std::runtime_error("FFTW has no plan");
  const std::shared_ptr<std::remove_pointer_t<decltype(made)>> shared(made, Fftw<T>::kDestroy);
  return [shared](int times) {
    for (int i = 0; i < times; ++i) Fftw<T>::kExecute(shared.get());
  };
}

template Work fftwTransform(const Shape&, const Arrays<float>&, bool);
template Work fftwTransform(const Shape&, const Arrays<double>&, bool);

void readWisdom(const std::string& prefix) {
  Fftw<float>::kReadWisdom((prefix + ".float").c_str());
  Fftw<double>::kReadWisdom((prefix + ".double").c_str());
}

void writeWisdom(const std::string& prefix) {
  Fftw<float>::kWriteWisdom((prefix + ".float").c_str());
  Fftw<double>::kWriteWisdom((prefix + ".double").c_str());
}

}  // namespace bench::fft
