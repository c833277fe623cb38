// Calls an export by the shape of its prototype alone: sources (const pointers), one destination or more behind them,
// the length next to these, and further arguments anywhere. Reductions have the length next to their sources, and
// results of one element behind it. Made for sweeps over the export tables.
//
//   Call call(describe("orpsAdd_16s", &orpsAdd_16s), 100);
//   call.fill(1, Values::mixed);
//   EXPECT_EQ(StsOk, call());
#pragma once

#include <memory>
#include <span>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include "support/any_array.h"
#include "support/traits.h"

namespace orptest {

// Values for a sweep's further arguments. Zero divisors, rejected rounding modes and negative shifts among them: a
// refusal must be as reproducible as a result. The first one is good for everything, as further() sees to.
inline constexpr int kExtras[] = {1, 0, 2, 7, -3};

// What stands in one place of a call's argument list.
struct Slot {
  void* pointer = nullptr;
  int number = 0;
};

struct Parameter {
  const std::type_info* element;  // null where no array is passed
  bool isSource;
  bool isFloat, isInteger;  // of half precision it is both
  size_t elementBytes;
  std::unique_ptr<AnyArray> (*makeArray)(size_t len, size_t misalignment);
};

using Invoke = OrpStatus (*)(void (*function)(), const Slot* slots);

// A prototype as data, so that the sweeps are compiled once and not once for each prototype. One that no Call can have
// has no parameters here.
struct Prototype {
  std::span<const Parameter> parameters;
  Invoke invoke;
};

struct Export {
  Export(const char* itsName, void (*itsFunction)(), const Prototype& prototype);

  const char* name;
  void (*function)();
  std::span<const Parameter> parameters;
  Invoke invoke;
  unsigned traits = 0;  // as traits.h has them
  int sharedFrom = kNotShared;

  bool is(Trait trait) const { return (traits & trait) != 0; }
  bool isSwept() const { return !parameters.empty() && !is(kOtherShape); }

  size_t arrays() const;   // how many parameters are arrays, those of one element counted too
  size_t sources() const;  // how many of these, from the first on, are read only; the others are destinations
  size_t length() const;   // index of the length
  bool hasExtras() const { return parameters.size() > arrays() + 1; }
  size_t itemBytes() const { return parameters[is(kReduces) ? length() - 1 : lastArray()].elementBytes; }
  size_t lastArray() const;  // index of the last array
  bool hasFloats() const;
  bool hasIntegerResult() const;

  // What a sweep's `extra` is as the further argument at index i.
  int further(size_t i, int extra) const;
};

// For each source the array that it reads, by index: its own or a destination's.
using Sharing = std::vector<size_t>;

template <class A>
constexpr Parameter describeParameter() {
  if constexpr (std::is_pointer_v<A>) {
    using Pointed = std::remove_pointer_t<A>;
    using Element = std::remove_const_t<Pointed>;
    constexpr bool kIsHalf = std::is_same_v<Element, Orp16f>, kIsFloat = std::is_floating_point_v<Part<Element>>;
    return {&typeid(Element), std::is_const_v<Pointed>, kIsFloat || kIsHalf,
            !kIsFloat,        sizeof(Element),          &makeArray<Element>};
  } else {
    return {nullptr, false, std::is_floating_point_v<A>, false, 0, nullptr};
  }
}

template <class A>
A argument(const Slot& slot) {
  if constexpr (std::is_pointer_v<A>) {
    return static_cast<A>(slot.pointer);
  } else {
    return elementOf<A>(slot.number);
  }
}

template <class... A>
OrpStatus invoke(void (*function)(), const Slot* slots) {
  return [&]<size_t... i>(std::index_sequence<i...>) {
    return reinterpret_cast<OrpStatus (*)(A...)>(function)(argument<A>(slots[i])...);
  }
  (std::index_sequence_for<A...>{});
}

// An array of elements, or a number. States and channels are neither.
template <class A>
inline constexpr bool kIsKnown = true;
template <class T>
inline constexpr bool kIsKnown<T*> = !std::is_pointer_v<T> && requires {
  sizeof(T);
};

template <class... A>
inline constexpr bool kIsCallable = (kIsKnown<A> && ...) && (std::is_pointer_v<A> || ...) &&
                                    (std::is_same_v<A, int> || ...);

template <class... A>
inline constexpr Parameter kParameters[] = {describeParameter<A>()...};

template <class Function>
inline constexpr Prototype kPrototype = {};
template <class... A>
requires kIsCallable<A...>
inline constexpr Prototype kPrototype<OrpStatus(A...)> = {kParameters<A...>, &invoke<A...>};

template <class Function>
Export describe(const char* name, Function* function) {
  return {name, reinterpret_cast<void (*)()>(function), kPrototype<Function>};
}

class Call {
 public:
  // Arrays of exactly `len` elements that hold the pattern, and `extra` for every argument that is neither array nor
  // length: a constant, shift, scale factor, rounding mode or bit offset. Misaligned arrays differ in their alignment.
  Call(const Export& description, int len, int extra = kExtras[0], size_t misalignment = kAnyAddress);

  OrpStatus operator()() { return export_.invoke(export_.function, slots_.data()); }

  void setLength(int len) { slots_[export_.length()].number = len; }

  // Makes the k-th pointer null, with k = arrays() every one, beyond that none.
  void setNull(size_t k);

  // Sources that read a destination's array get its content.
  void fill(uint64_t stream, Values values, const Sharing& sharing = {});
  void fillWithOnes();

  // Every way in which one source or more can be destinations as well.
  std::vector<Sharing> sharings() const;
  void share(const Sharing& sharing);

  // Makes every element of every array the i-th one of `other`, a call of the same export.
  void takeElement(const Call& other, size_t i);

  bool untouched() const;  // every array holds the pattern

  // The destinations and results as bytes, one behind the other, with one bit pattern for every NaN.
  std::vector<unsigned char> result() const;

  // Every element of the destinations is the i-th one of those of `other`, NaNs being all the same.
  bool resultIsElement(const Call& other, size_t i) const;

 private:
  const Export export_;
  std::vector<Slot> slots_;
  std::vector<std::unique_ptr<AnyArray>> arrays_;  // of the parameters that are arrays
  std::vector<size_t> places_;                     // of the arrays among the parameters
};

// The first byte in which the results of two calls differ.
inline constexpr ptrdiff_t kSame = -1;
ptrdiff_t firstDifference(const Call& a, const Call& b);

}  // namespace orptest
