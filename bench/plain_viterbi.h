// Viterbi steps as a user would write them.
#pragma once

#include "orpsp/types.h"

namespace plain {

void variants(const Orp16sc* received, Orp16sc* points, Orp16u* distances, int n, int limit, int fraction);
void symbolTable(const Orp16sc* points, const Orp16u* distances, Orp16sc* symbols, Orp16u* metrics, int n);
void pathMetrics(const Orp16u* branchMetrics, const Orp16u* trellis, const Orp16u* old, Orp16u* metrics, Orp16u* paths,
                 int states, int* bestState);

}  // namespace plain
