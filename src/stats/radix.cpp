// Radix sorts of values and of indices. No vector instructions serve these.
#include "frame/check.h"
#include "frame/entry.h"
#include "orpsp/stats/sorting.h"
#include "simd/element.h"

namespace orpsp {
namespace {

}  // namespace

#include "frame/entry_plain.h"

#include "exports/radix.inc"

}  // namespace orpsp
