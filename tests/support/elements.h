// What the tests know of the element types: the parts that an element is made of.
#pragma once

#include <cstdint>

#include "orpsp.h"

namespace orptest {

template <class T>
struct Element {
  using Part = T;
};
template <>
struct Element<Orp16f> {
  using Part = Orp16u;
};
template <>
struct Element<Orp24u> {
  using Part = Orp8u;
};
template <>
struct Element<Orp24s> {
  using Part = Orp8u;
};
template <>
struct Element<Orp8sc> {
  using Part = Orp8s;
};
template <>
struct Element<Orp16sc> {
  using Part = Orp16s;
};
template <>
struct Element<Orp32sc> {
  using Part = Orp32s;
};
template <>
struct Element<Orp64sc> {
  using Part = Orp64s;
};
template <>
struct Element<Orp32fc> {
  using Part = Orp32f;
};
template <>
struct Element<Orp64fc> {
  using Part = Orp64f;
};

// The number itself, or the type of re and im, or the bits or a byte of what is no number to the language.
template <class T>
using Part = typename Element<T>::Part;

template <class T>
inline constexpr int kParts = sizeof(T) / sizeof(Part<T>);

}  // namespace orptest
