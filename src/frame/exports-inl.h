// Exports of a kernel file, at its end and outside of all namespaces; ORPSP_TABLE is the file's table of exports.
//
//   #define ORPSP_TABLE "exports/sum.inc"
//   #include "frame/exports-inl.h"
//
// ORPSP_NEAREST, if it is defined, is the rule for exports that round to nearest in every mode (frame/nearest-inl.h).
//
// No include guard: read once a width. Inside the width's namespace a line of the table becomes a constant of the
// prototype's type; in the last pass the constants of all widths become slots and entry. The line of a call in place,
// ORPS_EXPORT_IN_PLACE, names the implementation of the call out of place.
#include "frame/in_place.h"
#include "frame/nearest-inl.h"

#ifndef ORPSP_NEAREST
#define ORPSP_NEAREST never
#endif

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {
namespace table {

// A call in place is the one out of place with a source that is the destination.
template <class F, auto call>
struct InPlace;
template <class... A, auto call>
struct InPlace<OrpStatus (*)(A...), call> {
  template <size_t... i>
  static HWY_INLINE OrpStatus Arranged(std::index_sequence<i...>, A... argument) {
    return call(pickArgument<InPlaceOrder<A...>::from(i)>(argument...)...);
  }
  static OrpStatus Call(A... argument) {
    return Arranged(std::make_index_sequence<InPlaceOrder<A...>::kCount>{}, argument...);
  }
};

#undef ORPS_EXPORT
#define ORPS_EXPORT(name, ...)                                      \
  constexpr decltype(&::name) implementation_##name = &__VA_ARGS__; \
  constexpr decltype(&::name) name = chosen<ORPSP_NEAREST<decltype(&::name)>, implementation_##name>()
#undef ORPS_EXPORT_IN_PLACE
#define ORPS_EXPORT_IN_PLACE(name, ...) \
  ORPS_EXPORT(name, InPlace<decltype(&::name), static_cast<OutOfPlace<decltype(&::name)>::Type>(&__VA_ARGS__)>::Call)
#include ORPSP_TABLE

}  // namespace table
}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orpsp {

#undef ORPS_EXPORT
#define ORPS_EXPORT(name, ...)                                                                                     \
  ORPS_ENTRY(name, ORPSP_NAMESPACE_128::table::name, ORPSP_NAMESPACE_128::table::name,                             \
             ORPSP_NAMESPACE_256::table::name, ORPSP_NAMESPACE_256::table::name, ORPSP_NAMESPACE_512::table::name, \
             ORPSP_NAMESPACE_512::table::name)
#undef ORPS_EXPORT_IN_PLACE
#define ORPS_EXPORT_IN_PLACE ORPS_EXPORT
#include ORPSP_TABLE

}  // namespace orpsp
#endif

#undef ORPSP_TABLE
#undef ORPSP_NEAREST
