// The export tables as the tests read them. A new table is added in export_tables.cpp; exports_test fails until it is.
#pragma once

#include <string>
#include <vector>

#include "support/call.h"

namespace orptest {

// Every export of a shape that Call knows.
const std::vector<Export>& sweptExports();

// The names of all exports, in the order of the tables.
std::vector<std::string> tabledNames();

}  // namespace orptest
