// Exports of a kernel file, at its end and outside of all namespaces; ORPSP_TABLE is the file's table of exports.
//
//   #define ORPSP_TABLE "exports/sum.inc"
//   #include "frame/exports-inl.h"
//
// No include guard: read once a width. Inside the width's namespace a line of the table becomes a constant of the
// prototype's type; in the last pass the constants of all widths become slots and entry.
HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {
namespace table {

#undef ORPS_EXPORT
#define ORPS_EXPORT(name, ...) constexpr decltype(&::name) name = &__VA_ARGS__
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
#include ORPSP_TABLE

}  // namespace orpsp
#endif

#undef ORPSP_TABLE
