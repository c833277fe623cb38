#include "support/export_tables.h"

#include <algorithm>
#include <iterator>

#include "orpsp.h"

namespace orptest {

const std::vector<Export>& tabledExports() {
  static const std::vector<Export> exports = [] {
    std::vector<Export> all;
#define ORPS_EXPORT(name, ...) all.push_back(describe(#name, &::name))
#define ORPS_EXPORT_VARIANTS(name, ...) ORPS_EXPORT(name)
#include "all_exports.inc"
#undef ORPS_EXPORT
#undef ORPS_EXPORT_VARIANTS
    return all;
  }();
  return exports;
}

const std::vector<Export>& sweptExports() {
  static const std::vector<Export> exports = [] {
    std::vector<Export> swept;
    std::copy_if(tabledExports().begin(), tabledExports().end(), std::back_inserter(swept),
                 [](const Export& each) { return each.isSwept(); });
    return swept;
  }();
  return exports;
}

}  // namespace orptest
