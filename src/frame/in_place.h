// The prototype of a call out of place, made of that in place: the arrays that are source and destination come once
// more as sources. They stand behind other sources and in front of a constant:
//
//   (const T* pSrc, T* pSrcDst, int len)                 (const T*, const T*, T*, int)
//   (T val, T* pSrcDst, int len, int scaleFactor)        (const T*, T, T*, int, int)
//   (T* pSrcDstRe, T* pSrcDstIm, const Spec* pSpec)      (const T*, const T*, T*, T*, const Spec*)
#pragma once

#include <array>
#include <cstddef>
#include <type_traits>
#include <utility>

#include "orpsp/types.h"

namespace orpsp {

// Where the arguments of the call out of place come from, by index.
template <class... A>
struct InPlaceOrder {
  static constexpr bool kIsPointer[sizeof...(A)] = {std::is_pointer_v<A>...};
  static constexpr bool kIsDestination[sizeof...(A)] = {std::is_pointer_v<A> &&
                                                        !std::is_const_v<std::remove_pointer_t<A>>...};

  static constexpr size_t kSources = [] {  // other ones, which come first
    size_t i = 0;
    while (kIsPointer[i] && !kIsDestination[i]) ++i;
    return i;
  }();
  static constexpr size_t kFirst = [] {
    size_t i = 0;
    while (!kIsDestination[i]) ++i;
    return i;
  }();
  static constexpr size_t kArrays = [] {
    size_t i = kFirst;
    while (i < sizeof...(A) && kIsDestination[i]) ++i;
    return i - kFirst;
  }();
  static constexpr size_t kCount = sizeof...(A) + kArrays;

  static constexpr size_t from(size_t i) {
    if (i < kSources) return i;
    if (i < kSources + kArrays) return kFirst + i - kSources;
    return i - kArrays;
  }
  static constexpr bool isSource(size_t i) { return i >= kSources && i < kSources + kArrays; }
};

template <size_t i, class First, class... Rest>
__attribute__((always_inline)) constexpr auto pickArgument(First first, [[maybe_unused]] Rest... rest) {
  if constexpr (i == 0) {
    return first;
  } else {
    return pickArgument<i - 1>(rest...);
  }
}

template <bool isSource, class A>
using OutOfPlaceArgument = std::conditional_t<isSource, const std::remove_pointer_t<A>*, A>;

template <class F, class = void>
struct OutOfPlace;
template <class... A>
struct OutOfPlace<OrpStatus (*)(A...)> {
  using Order = InPlaceOrder<A...>;

  template <size_t... i>
  static auto make(std::index_sequence<i...>) -> OrpStatus (*)(
      OutOfPlaceArgument<Order::isSource(i), decltype(pickArgument<Order::from(i)>(std::declval<A>()...))>...);
  using Type = decltype(make(std::make_index_sequence<Order::kCount>{}));
};

}  // namespace orpsp
