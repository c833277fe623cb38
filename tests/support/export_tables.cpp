#include "support/export_tables.h"

#include "orpsp.h"

namespace orptest {

const std::vector<Export>& vectorExports() {
  static const std::vector<Export> exports = [] {
    std::vector<Export> all;
#define ORPS_EXPORT(name, ...) all.push_back(describe(#name, &::name))
#include "exports/bits.inc"
#include "exports/complex.inc"
#include "exports/convert.inc"
#include "exports/divide.inc"
#include "exports/elementary.inc"
#include "exports/integer64.inc"
#include "exports/logic.inc"
#include "exports/move.inc"
#include "exports/polar.inc"
#include "exports/product.inc"
#include "exports/reorder.inc"
#include "exports/root.inc"
#include "exports/sum.inc"
#include "exports/threshold.inc"
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
#include "exports/memory.inc"
#include "exports/version.inc"
#undef ORPS_EXPORT
#undef ORPS_EXPORT_VARIANTS
  for (const Export& each : vectorExports()) names.push_back(each.name);
  return names;
}

}  // namespace orptest
