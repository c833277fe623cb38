#include "support/export_tables.h"

#include <string_view>

#include "orpsp.h"

namespace orptest {
namespace {

// With a table that must be sorted, or a source longer than the destination.
bool isOfAnotherShape(std::string_view name) {
  const bool isInPlace = name.ends_with("_I");
  return name.starts_with("orpsFindNearest") || (name.starts_with("orpsConjCcs_") && !isInPlace);
}

bool reduces(std::string_view name) {
  if (name.find("Every") != name.npos) return false;
  for (const char* family : {"orpsSum", "orpsMean", "orpsStdDev_", "orpsNorm_", "orpsNormDiff_", "orpsDotProd_",
                             "orpsMin", "orpsMax", "orpsCountInRange_", "orpsZeroCrossing_"})
    if (name.starts_with(family)) return true;
  return false;
}

}  // namespace

const std::vector<Export>& sweptExports() {
  static const std::vector<Export> exports = [] {
    std::vector<Export> all;
#define ORPS_EXPORT(name, ...) \
  if (!isOfAnotherShape(#name)) all.push_back(describe(#name, &::name, reduces(#name)))
#include "exports/bits.inc"
#include "exports/cauchy.inc"
#include "exports/companding.inc"
#include "exports/complex.inc"
#include "exports/convert.inc"
#include "exports/divide.inc"
#include "exports/dot.inc"
#include "exports/elementary.inc"
#include "exports/extrema.inc"
#include "exports/integer64.inc"
#include "exports/logic.inc"
#include "exports/moments.inc"
#include "exports/move.inc"
#include "exports/norms.inc"
#include "exports/packed.inc"
#include "exports/polar.inc"
#include "exports/product.inc"
#include "exports/radix.inc"
#include "exports/reorder.inc"
#include "exports/root.inc"
#include "exports/search.inc"
#include "exports/sort.inc"
#include "exports/sort_index.inc"
#include "exports/sum.inc"
#include "exports/sum_ln.inc"
#include "exports/test_vectors.inc"
#include "exports/threshold.inc"
#include "exports/windows.inc"
#undef ORPS_EXPORT
    return all;
  }();
  return exports;
}

std::vector<std::string> tabledNames() {
  std::vector<std::string> names;
#define ORPS_EXPORT(name, ...) names.push_back(#name)
#define ORPS_EXPORT_VARIANTS(name, ...) names.push_back(#name)
#include "exports/channels.inc"
#include "exports/fft_complex.inc"
#include "exports/fft_integer.inc"
#include "exports/fft_real.inc"
#include "exports/fft_spec.inc"
#include "exports/filters.inc"
#include "exports/memory.inc"
#include "exports/pack.inc"
#include "exports/random.inc"
#include "exports/signal.inc"
#include "exports/tone.inc"
#include "exports/version.inc"
#include "exports/viterbi.inc"
#undef ORPS_EXPORT
#undef ORPS_EXPORT_VARIANTS
  for (const Export& each : sweptExports()) names.push_back(each.name);
  for (const char* name : {"orpsFindNearestOne_16u", "orpsFindNearest_16u"}) names.emplace_back(name);
  for (const char* name : {"orpsConjCcs_16sc", "orpsConjCcs_32fc", "orpsConjCcs_64fc"}) names.emplace_back(name);
  return names;
}

}  // namespace orptest
