// The exports of the FFT as data: the types of specifications, and every transform with the layouts of its arrays.
#pragma once

#include <cmath>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "orpsp.h"
#include "support/allocator.h"
#include "support/call.h"
#include "support/guarded.h"
#include "transform/fft_reference.h"

namespace orptest {

// ---- specifications -------------------------------------------------------------------------------------------------

struct SpecType {
  const char* name;
  int tag, highestOrder;
  bool isDouble;  // computes in double
  OrpStatus (*getSize)(int order, int flag, int hint, int* spec, int* init, int* work);
  OrpStatus (*init)(void** spec, int order, int flag, int hint, Orp8u* memory, Orp8u* buffer);
  OrpStatus (*initAlloc)(void** spec, int order, int flag, int hint);
  OrpStatus (*getBufSize)(const void* spec, int* size);
  OrpStatus (*free)(void* spec);
};

template <class S, auto function, class... A>
OrpStatus storingPointer(void** spec, A... a) {
  if (!spec) return function(nullptr, a...);
  S* typed = static_cast<S*>(*spec);
  const OrpStatus status = function(&typed, a...);
  *spec = typed;
  return status;
}

#define ORPTEST_SPEC_TYPES(X)     \
  X(C_16sc, 1, 28, false)         \
  X(C_16s, 2, 28, false)          \
  X(R_16s, 3, 29, false)          \
  X(C_32fc, 4, 28, false)         \
  X(C_32f, 5, 28, false)          \
  X(R_32f, 6, 29, false)          \
  X(C_64fc, 7, 27, true)          \
  X(C_64f, 8, 27, true)           \
  X(R_64f, 9, 28, true)           \
  X(C_32sc, 0x434D414C, 27, true) \
  X(C_32s, 0x434D414D, 27, true)  \
  X(R_32s, 0x434D414E, 28, true)  \
  X(R_16s32s, 0x434D414F, 29, false)

// specType(pointer to a specification): its type.
#define ORPTEST_SPEC_TYPE(T, tag, highest, isDouble)                                                                \
  inline const SpecType& specType(const OrpFftSpec_##T*) {                                                          \
    using S = OrpFftSpec_##T;                                                                                       \
    constexpr auto init = &storingPointer<S, &orpsFFTInit_##T, int, int, int, Orp8u*, Orp8u*>;                      \
    constexpr auto initAlloc = &storingPointer<S, &orpsFFTInitAlloc_##T, int, int, int>;                            \
    constexpr auto getBufSize = [](const void* s, int* n) {                                                         \
      return orpsFFTGetBufSize_##T(static_cast<const S*>(s), n);                                                    \
    };                                                                                                              \
    constexpr auto free = [](void* s) { return orpsFFTFree_##T(static_cast<S*>(s)); };                              \
    static const SpecType type{#T, tag, highest, isDouble, &orpsFFTGetSize_##T, init, initAlloc, getBufSize, free}; \
    return type;                                                                                                    \
  }
ORPTEST_SPEC_TYPES(ORPTEST_SPEC_TYPE)
#undef ORPTEST_SPEC_TYPE

inline const std::vector<const SpecType*>& specTypes() {
#define ORPTEST_LIST(T, ...) &specType(static_cast<OrpFftSpec_##T*>(nullptr)),
  static const std::vector<const SpecType*> all = {ORPTEST_SPEC_TYPES(ORPTEST_LIST)};
#undef ORPTEST_LIST
  return all;
}

// The documented beginning of a record.
template <class Factor>
struct HeaderOf {
  int32_t tag, order, scalesForward, scalesInverse;
  Factor factor;
  int32_t hint, workBytes, isAllocated;
};
using Header = HeaderOf<double>;

inline Header headerOf(const SpecType& type, const void* spec) {
  const auto read = [&](auto h) -> Header {
    std::memcpy(&h, spec, sizeof(h));
    return {h.tag, h.order, h.scalesForward, h.scalesInverse, h.factor, h.hint, h.workBytes, h.isAllocated};
  };
  return type.isDouble ? read(Header{}) : read(HeaderOf<float>{});
}

// A specification in memory of exactly the stated size at an odd address. Its init buffer is gone once it is built,
// and nobody may write to it until it is destroyed.
class Spec {
 public:
  Spec(const SpecType& type, int order, int flag, int hint = 0) : type_(type) {
    int specBytes = 0, initBytes = 0, workBytes = 0;
    EXPECT_EQ(StsOk, type.getSize(order, flag, hint, &specBytes, &initBytes, &workBytes));
    const size_t misalignment = static_cast<size_t>(1 + 13 * order);
    memory_ = std::make_unique<Guarded<Orp8u>>(specBytes, misalignment);
    Guarded<Orp8u> init(static_cast<size_t>(initBytes), misalignment + 32);
    EXPECT_EQ(StsOk, type.init(&spec_, order, flag, hint, memory_->data(), initBytes == 0 ? nullptr : init.data()));
    EXPECT_EQ(orpAlignPtr(memory_->data(), 64), spec_);
    EXPECT_EQ(StsOk, type.getBufSize(spec_, &workBytes_));
    EXPECT_LE(workBytes_, workBytes);
    hash_ = hash();
  }
  ~Spec() { EXPECT_EQ(hash_, hash()) << "the specification " << type_.name << " was written to"; }

  OrpStatus free() {
    const OrpStatus status = type_.free(spec_);
    hash_ = hash();
    return status;
  }

  void* get() const { return spec_; }
  size_t workBytes() const { return static_cast<size_t>(workBytes_); }
  Header header() const { return headerOf(type_, spec_); }
  double factor(bool isInverse) const {
    const Header h = header();
    return (isInverse ? h.scalesInverse : h.scalesForward) != 0 ? h.factor : 1;
  }

 private:
  size_t hash() const {
    return std::hash<std::string_view>()({reinterpret_cast<const char*>(memory_->data()), memory_->size()});
  }

  const SpecType& type_;
  std::unique_ptr<Guarded<Orp8u>> memory_;
  void* spec_ = nullptr;
  int workBytes_ = 0;
  size_t hash_ = 0;
};

// ---- arrays ---------------------------------------------------------------------------------------------------------

// A guarded array. Its numbers travel as doubles, which hold those of every type.
class Numbers {
 public:
  virtual ~Numbers() = default;
  virtual void* data() = 0;
  virtual void set(size_t i, double value) = 0;
  virtual double get(size_t i) const = 0;
  virtual bool untouched() const = 0;
};

template <class T>
class NumbersOf final : public Numbers {
 public:
  NumbersOf(size_t len, size_t misalignment) : array_(len, misalignment) {}
  void* data() override { return array_.data(); }
  void set(size_t i, double value) override { array_.set(i, static_cast<T>(value)); }
  double get(size_t i) const override { return static_cast<double>(array_[i]); }
  bool untouched() const override { return array_.untouched(); }

 private:
  Guarded<T> array_;
};

template <class T>
std::unique_ptr<Numbers> makeNumbers(size_t len, size_t misalignment) {
  return std::make_unique<NumbersOf<T>>(len, misalignment);
}

// ---- transforms -----------------------------------------------------------------------------------------------------

enum class Kind { complex, toSpectrum, toSignal };

struct Transform {
  std::string name;
  void (*function)();
  OrpStatus (*invoke)(void (*function)(), const Slot* slots);
  const SpecType* type;
  std::unique_ptr<Numbers> (*makeSource)(size_t len, size_t misalignment);
  std::unique_ptr<Numbers> (*makeDestination)(size_t len, size_t misalignment);
  double sourceHighest, destinationHighest;
  Kind kind;
  Layout from, to;
  bool isInverse, isInPlace, isOfIntegers;  // the latter have a scale factor
};

template <class... A>
Transform describeTransform(const std::string& name, OrpStatus (*function)(A...)) {
  constexpr bool isScaled = (std::is_same_v<A, int> || ...);
  constexpr size_t arrays = sizeof...(A) - 2 - isScaled;  // behind them specification, scale factor, work buffer
  using Arguments = std::tuple<A...>;
  using S = std::remove_cv_t<std::remove_pointer_t<std::tuple_element_t<0, Arguments>>>;
  using D = std::remove_pointer_t<std::tuple_element_t<arrays - 1, Arguments>>;
  const auto has = [&](const char* part) { return name.find(part) != name.npos; };
  const bool isComplex = has("CToC"), isInverse = has("Inv_");
  const Kind kind = isComplex ? Kind::complex : isInverse ? Kind::toSignal : Kind::toSpectrum;
  const Layout packed = has("Pack") ? Layout::pack : has("Perm") ? Layout::perm : Layout::ccs;
  const Layout complex = kParts<S> == 2 ? Layout::pairs : Layout::planes;
  const Layout signal = isComplex ? complex : Layout::signal, spectrum = isComplex ? complex : packed;
  return {name,
          reinterpret_cast<void (*)()>(function),
          &invoke<A...>,
          &specType(std::tuple_element_t<arrays, Arguments>{}),
          &makeNumbers<Part<S>>,
          &makeNumbers<Part<D>>,
          static_cast<double>(std::numeric_limits<Part<S>>::max()),
          static_cast<double>(std::numeric_limits<Part<D>>::max()),
          kind,
          isInverse ? spectrum : signal,
          isInverse ? signal : spectrum,
          isInverse,
          has("_I"),
          isScaled};
}

inline const std::vector<Transform>& transforms() {
  static const std::vector<Transform> all = [] {
    std::vector<Transform> list;
#define ORPS_EXPORT(name, ...) list.push_back(describeTransform(#name, &::name))
#include "exports/fft_complex.inc"
#include "exports/fft_integer.inc"
#include "exports/fft_real.inc"
#undef ORPS_EXPORT
    return list;
  }();
  return all;
}

// One call with arrays of exactly the length that they must have.
class TransformCall {
 public:
  TransformCall(const Transform& transform, int order, size_t misalignment = 0) : transform_(transform) {
    const size_t n = size_t{1} << order, sources = numbersIn(transform.from, n);
    const auto add = [&](auto make, size_t numbers) {
      for (size_t p = 0; p < planes(); ++p) arrays_.push_back(make(numbers / planes(), misalignment + 4 * p));
    };
    numbers_ = numbersIn(transform.to, n);
    if (!transform.isInPlace) add(transform.makeSource, sources);
    add(transform.makeDestination, transform.isInPlace ? std::max(sources, numbers_) : numbers_);
    for (const auto& array : arrays_) slots.push_back({array->data()});
    slots.resize(arrays() + (transform.isOfIntegers ? 3 : 2));
  }

  // Arrays, specification, scale factor if there is one, work buffer: for tests that change single arguments.
  std::vector<Slot> slots;
  size_t arrays() const { return arrays_.size(); }
  OrpStatus operator()() const { return transform_.invoke(transform_.function, slots.data()); }
  OrpStatus operator()(const Spec& spec, void* work, int scale = 0) {
    slots[arrays()].pointer = spec.get();
    slots[arrays() + 1].number = scale;
    slots.back().pointer = work;
    return (*this)();
  }

  // Planes are given as pairs.
  void setSource(const std::vector<double>& numbers) {
    for (size_t i = 0; i < numbers.size(); ++i) arrays_[i % planes()]->set(i / planes(), numbers[i]);
  }
  bool sourceIs(const std::vector<double>& numbers) const {
    for (size_t i = 0; i < numbers.size(); ++i)
      if (arrays_[i % planes()]->get(i / planes()) != numbers[i] && !std::isnan(numbers[i])) return false;
    return true;
  }
  std::vector<double> result() const {
    std::vector<double> numbers(numbers_);
    for (size_t i = 0; i < numbers_; ++i) numbers[i] = arrays_[arrays() - planes() + i % planes()]->get(i / planes());
    return numbers;
  }
  bool destinationUntouched() const { return arrays_[arrays() - planes()]->untouched() && arrays_.back()->untouched(); }

 private:
  size_t planes() const { return transform_.from == Layout::planes ? 2 : 1; }

  const Transform& transform_;
  std::vector<std::unique_ptr<Numbers>> arrays_;
  size_t numbers_;
};

// The numbers of a source. What an inverse transform must not read is an odd number.
inline std::vector<double> sourceOf(const Transform& transform, const std::vector<Z>& x) {
  std::vector<double> numbers;
  for (const long double number : stored(x, transform.from)) numbers.push_back(static_cast<double>(number));
  if (transform.from == Layout::ccs) {
    numbers[1] = transform.isOfIntegers ? 12345 : std::numeric_limits<double>::quiet_NaN();
    if (x.size() > 1) numbers.back() = numbers[1];
  }
  return numbers;
}

// What transforms of a kind take, of numbers that the function gives.
template <class Function>
std::vector<Z> inputFor(Kind kind, int order, Function number) {
  const size_t n = size_t{1} << order;
  std::vector<Z> x(n);
  for (Z& z : x) z = {number(), kind == Kind::toSpectrum ? 0 : number()};
  if (kind == Kind::toSignal) {
    x[0].im = x[n / 2].im = 0;
    for (size_t k = 1; k < n / 2; ++k) x[n - k] = {x[k].re, -x[k].im};
  }
  return x;
}

}  // namespace orptest
