// Sqrt and Magnitude.
#include "orpsp/vector/complex.h"
#include "orpsp/vector/elementary.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/root.cpp"
#include <hwy/foreach_target.h>

#include "vector/forms-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/root.inc"
#include "frame/exports-inl.h"
