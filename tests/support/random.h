// Reproducible test data: the same values on every platform and at every vector width.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>
#include <vector>

#include "support/elements.h"

namespace orptest {

inline constexpr uint64_t kSeed = 0x6F72'7073'5053'2071;  // printed by every test program

enum class Values {
  mixed,   // integers of every magnitude and the extreme ones; floats likewise, with infinities, NaNs and subnormals
  finite,  // the same without infinities and NaNs
  bits,    // floats of any bits, every exponent as likely as every other; integers as in mixed
  modest   // floats in (-1, 1); integers in [-100, 100], unsigned ones in [0, 100]
};

class Random {
 public:
  explicit Random(uint64_t stream = 0) : state_(kSeed + stream) {}

  // SplitMix64 [Steele, Lea, Flood: Fast splittable pseudorandom number generators, OOPSLA 2014].
  uint64_t bits() {
    uint64_t z = state_ += 0x9E3779B97F4A7C15u;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
  }

  // In [0, count).
  int below(int count) { return static_cast<int>((bits() >> 32) * static_cast<uint64_t>(count) >> 32); }

  template <class T>
  T element(Values values = Values::mixed) {
    Part<T> parts[kParts<T>];
    for (auto& part : parts) part = number<Part<T>>(values);
    T element;
    static_assert(sizeof(parts) == sizeof(element));
    std::memcpy(&element, parts, sizeof(element));
    return element;
  }

  template <class T>
  std::vector<T> vector(size_t len, Values values = Values::mixed) {
    std::vector<T> elements(len);
    for (auto& e : elements) e = element<T>(values);
    return elements;
  }

 private:
  template <class T>
  using BitsOf = std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>;

  template <class T>
  T number(Values values) {
    if constexpr (std::is_floating_point_v<T>) {
      if (values == Values::bits) return std::bit_cast<T>(static_cast<BitsOf<T>>(bits()));
      return values == Values::modest ? modestFloat<T>() : mixedFloat<T>(values == Values::mixed);
    } else {
      return values == Values::modest ? modestInteger<T>() : mixedInteger<T>();
    }
  }

  template <class T>
  T mixedInteger() {
    using Limits = std::numeric_limits<T>;
    constexpr T kExtremes[] = {0,
                               1,
                               static_cast<T>(-1),
                               Limits::min(),
                               static_cast<T>(Limits::min() + 1),
                               Limits::max(),
                               static_cast<T>(Limits::max() - 1)};
    if (below(4) == 0) return kExtremes[below(static_cast<int>(std::size(kExtremes)))];
    const auto any = static_cast<T>(bits());
    return static_cast<T>(any >> below(8 * static_cast<int>(sizeof(T))));  // every magnitude as likely as every other
  }

  template <class T>
  T modestInteger() {
    return static_cast<T>(std::is_signed_v<T> ? below(201) - 100 : below(101));
  }

  template <class T>
  T mixedFloat(bool withSpecials) {
    using Limits = std::numeric_limits<T>;
    constexpr T kExtremes[] = {0,
                               -T{0},
                               1,
                               -1,
                               Limits::denorm_min(),
                               -Limits::denorm_min(),
                               Limits::min() - Limits::denorm_min(),
                               Limits::min(),
                               Limits::max(),
                               Limits::lowest()};
    constexpr T kSpecials[] = {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()};
    const int choice = below(16);
    if (choice == 0 && withSpecials) return kSpecials[below(static_cast<int>(std::size(kSpecials)))];
    if (choice <= 2) return kExtremes[below(static_cast<int>(std::size(kExtremes)))];
    return choice <= 8 ? anyFinite<T>() : 1000 * modestFloat<T>();
  }

  template <class T>
  T anyFinite() {
    using Bits = BitsOf<T>;
    constexpr Bits kExponent = std::bit_cast<Bits>(std::numeric_limits<T>::infinity());
    Bits any;
    do any = static_cast<Bits>(bits());
    while ((any & kExponent) == kExponent);
    return std::bit_cast<T>(any);
  }

  template <class T>
  T modestFloat() {
    constexpr int kDigits = std::numeric_limits<T>::digits;
    constexpr auto kScale = static_cast<T>(uint64_t{1} << kDigits);
    const T magnitude = static_cast<T>(bits() >> (64 - kDigits)) / kScale;
    return bits() & 1 ? magnitude : -magnitude;
  }

  uint64_t state_;
};

}  // namespace orptest
