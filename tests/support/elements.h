// What the tests know of the element types: the parts that an element is made of.
#pragma once

#include <cstdint>

#include "orpsp.h"

namespace orptest {

template <class T>
struct Element {
  using Part = T;
};
template <class T>
requires requires(T t) { t.re; }
struct Element<T> {
  using Part = decltype(T::re);
};
template <class T>
requires requires(T t) { t.bits; }
struct Element<T> {
  using Part = decltype(T::bits);
};
template <class T>
requires requires(T t) { t.byte; }
struct Element<T> {
  using Part = Orp8u;
};

// The number itself, or the type of re and im, or the bits or a byte of what is no number to the language.
template <class T>
using Part = typename Element<T>::Part;

template <class T>
inline constexpr int kParts = sizeof(T) / sizeof(Part<T>);

}  // namespace orptest
