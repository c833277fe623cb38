// Thresholds as a user would write them.
#pragma once

#include "orpsp/types.h"

namespace plain {

void thresholdLT16s(const Orp16s* a, Orp16s* d, int n, Orp16s level);
void thresholdLT32f(const Orp32f* a, Orp32f* d, int n, Orp32f level);
void thresholdGT32f(const Orp32f* a, Orp32f* d, int n, Orp32f level);
void thresholdLTVal32f(const Orp32f* a, Orp32f* d, int n, Orp32f level, Orp32f value);
void thresholdLTValGTVal32f(const Orp32f* a, Orp32f* d, int n, Orp32f levelLT, Orp32f valueLT, Orp32f levelGT,
                            Orp32f valueGT);
void thresholdLTAbs32f(const Orp32f* a, Orp32f* d, int n, Orp32f level);
void thresholdLTInv32f(const Orp32f* a, Orp32f* d, int n, Orp32f level);
void thresholdLTInv64f(const Orp64f* a, Orp64f* d, int n, Orp64f level);
void thresholdLT32fc(const Orp32fc* a, Orp32fc* d, int n, Orp32f level);
void thresholdGT16sc(const Orp16sc* a, Orp16sc* d, int n, Orp16s level);
void thresholdLTVal32fc(const Orp32fc* a, Orp32fc* d, int n, Orp32f level, Orp32fc value);
void thresholdLTInv32fc(const Orp32fc* a, Orp32fc* d, int n, Orp32f level);

}  // namespace plain
