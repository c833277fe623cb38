// What kernels need to know of element types: the lanes that an element is made of.
#pragma once

#include <cstddef>
#include <type_traits>

#include "frame/access.h"
#include "orpsp/types.h"

namespace orpsp {

template <class T>
struct Element {
  using Lane = T;
  static constexpr size_t kLanes = 1;
};

template <class T>
requires requires(T t) { t.re, t.im; }
struct Element<T> {
  using Lane = decltype(T::re);
  static constexpr size_t kLanes = 2;
};

template <class T>
using Lane = typename Element<T>::Lane;

template <class T>
inline constexpr bool isComplex = Element<T>::kLanes == 2;

template <class T>
inline constexpr int kBits = 8 * static_cast<int>(sizeof(Lane<T>));

template <class T>
inline constexpr bool isFloat = std::is_floating_point_v<Lane<T>>;

// A complex vector as the vector of its lanes, for operations that treat real and imaginary parts alike.
template <class T>
const Lane<T>* lanes(const T* p) {
  return reinterpret_cast<const Lane<T>*>(p);
}
template <class T>
Lane<T>* lanes(T* p) {
  return reinterpret_cast<Lane<T>*>(p);
}

// A vector as its bytes.
template <class T>
const Orp8u* bytes(const T* p) {
  return reinterpret_cast<const Orp8u*>(p);
}
template <class T>
Orp8u* bytes(T* p) {
  return reinterpret_cast<Orp8u*>(p);
}

}  // namespace orpsp
