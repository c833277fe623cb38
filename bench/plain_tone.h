// Plain generators: a tone by the three-term recurrence, begun anew every 1024 samples, the others by their formulas.
#pragma once

#include "orpsp/types.h"

namespace plain {

void tone16s(Orp16s* d, int n, double magnitude, double frequency, double phase);
void tone32f(Orp32f* d, int n, double magnitude, double frequency, double phase);
void tone64f(Orp64f* d, int n, double magnitude, double frequency, double phase);
void tone32fc(Orp32fc* d, int n, double magnitude, double frequency, double phase);
void triangle32f(Orp32f* d, int n, double magnitude, double frequency, double asymmetry, double phase);
void ramp16s(Orp16s* d, int n, double offset, double slope);
void ramp32f(Orp32f* d, int n, float offset, float slope);
void jaehne32f(Orp32f* d, int n, double magnitude);

}  // namespace plain
