// What the random numbers are compared with: std::mt19937 and the distributions of the standard library.
#pragma once

#include "orpsp/types.h"

namespace plain {

void uniform8u(Orp8u low, Orp8u high, Orp8u* d, int n);
void uniform16s(Orp16s low, Orp16s high, Orp16s* d, int n);
void uniform32f(Orp32f low, Orp32f high, Orp32f* d, int n);
void uniform64f(Orp64f low, Orp64f high, Orp64f* d, int n);
void gauss8u(Orp8u mean, Orp8u deviation, Orp8u* d, int n);
void gauss16s(Orp16s mean, Orp16s deviation, Orp16s* d, int n);
void gauss32f(Orp32f mean, Orp32f deviation, Orp32f* d, int n);
void gauss64f(Orp64f mean, Orp64f deviation, Orp64f* d, int n);

}  // namespace plain
