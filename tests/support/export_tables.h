// The export tables as the tests read them: every file of src/exports.
#pragma once

#include <vector>

#include "support/call.h"

namespace orptest {

// All exports, in the order of the tables.
const std::vector<Export>& tabledExports();

// Those of a shape that Call knows.
const std::vector<Export>& sweptExports();

}  // namespace orptest
