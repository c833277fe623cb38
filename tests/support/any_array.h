// A guarded array of elements of whatever type.
#pragma once

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <type_traits>
#include <vector>

#include "support/guarded.h"
#include "support/random.h"

namespace orptest {

class AnyArray {
 public:
  virtual ~AnyArray() = default;
  virtual void* data() = 0;
  virtual void fill(uint64_t stream, Values values) = 0;
  virtual void fillWithOnes() = 0;
  virtual void clear(size_t n) = 0;
  // Elements of another array of the same type: makes all of this one its i-th; whether they are, as bits or both NaN.
  virtual void repeat(const AnyArray& other, size_t i) = 0;
  virtual bool repeats(const AnyArray& other, size_t i) const = 0;
  virtual bool untouched() const = 0;
  virtual std::vector<unsigned char> bytes() const = 0;  // with one bit pattern for every NaN
};

// The number as an element; complex ones get a second part that differs from it.
template <class T>
T elementOf(int number) {
  if constexpr (std::is_arithmetic_v<T>) {
    return static_cast<T>(number);
  } else if constexpr (kParts<T> == 1) {
    return T{static_cast<Part<T>>(number)};
  } else {
    return T{static_cast<Part<T>>(number), static_cast<Part<T>>(1 - number)};
  }
}

template <class T>
class ArrayOf final : public AnyArray {
 public:
  ArrayOf(size_t len, size_t misalignment) : array_(len, misalignment) {}

  void* data() override { return array_.data(); }
  void fill(uint64_t stream, Values values) override { array_.assign(Random(stream).vector<T>(array_.size(), values)); }
  void fillWithOnes() override { array_.assign(std::vector<T>(array_.size(), elementOf<T>(1))); }
  void clear(size_t n) override { array_.set(n, T{}); }
  bool untouched() const override { return array_.untouched(); }

  void repeat(const AnyArray& other, size_t i) override {
    const T element = static_cast<const ArrayOf&>(other).array_[i];
    for (size_t n = 0; n < array_.size(); ++n) array_.set(n, element);
  }
  bool repeats(const AnyArray& other, size_t i) const override {
    const T element = static_cast<const ArrayOf&>(other).array_[i];
    for (size_t n = 0; n < array_.size(); ++n)
      if (!areSame(array_[n], element)) return false;
    return true;
  }

  std::vector<unsigned char> bytes() const override {
    const std::vector<T> values = array_.values();
    std::vector<unsigned char> bytes(values.size() * sizeof(T));
    std::memcpy(bytes.data(), values.data(), bytes.size());
    if constexpr (std::is_floating_point_v<Part<T>>) {
      for (size_t at = 0; at < bytes.size(); at += sizeof(Part<T>)) {
        Part<T> part;
        std::memcpy(&part, &bytes[at], sizeof(part));
        if (std::isnan(part)) part = std::numeric_limits<Part<T>>::quiet_NaN();
        std::memcpy(&bytes[at], &part, sizeof(part));
      }
    }
    return bytes;
  }

 private:
  static bool areSame(const T& a, const T& b) {
    Part<T> partsA[kParts<T>], partsB[kParts<T>];
    std::memcpy(partsA, &a, sizeof(a));
    std::memcpy(partsB, &b, sizeof(b));
    for (int i = 0; i < kParts<T>; ++i) {
      if constexpr (std::is_floating_point_v<Part<T>>)
        if (std::isnan(partsA[i]) && std::isnan(partsB[i])) continue;
      if (std::memcmp(&partsA[i], &partsB[i], sizeof(partsA[i])) != 0) return false;
    }
    return true;
  }

  Guarded<T> array_;
};

template <class T>
std::unique_ptr<AnyArray> makeArray(size_t len, size_t misalignment) {
  return std::make_unique<ArrayOf<T>>(len, misalignment);
}

}  // namespace orptest
