// A digest of every element-wise export's results: name, widths that it holds for, digest. A later test compares those
// of all widths and variants.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "orpcore.h"
#include "support/call.h"
#include "support/digest.h"
#include "support/export_tables.h"
#include "support/lengths.h"

namespace orptest {
namespace {

TEST(Digests, AreWrittenOneLineForEachExport) {
  const char* path = std::getenv("ORPSP_DIGESTS");
  if (!path) GTEST_SKIP() << "ORPSP_DIGESTS names no file";
  std::ofstream file(path);
  for (const Export& each : sweptExports()) {
    Digest digest;
    for (const int len : {1, 7, 67, 1031, lengthOfSeveralBlocks(each.itemBytes()).value}) {
      for (const int extra : kExtras) {
        Call call(each, len, extra);
        call.fill(3, Values::mixed);
        digest.add(call());
        digest.add(call.result());
        if (!each.hasExtras()) break;
      }
    }
    const std::string widths = each.is(kDependsOnWidth) ? std::to_string(orpGetVectorBits()) : "all";
    file << each.name << ' ' << widths << ' ' << std::hex << digest.value() << '\n';
  }
  file.close();
  EXPECT_TRUE(file) << "cannot write " << path;
}

}  // namespace
}  // namespace orptest
