// Windows as a user would write them.
#pragma once

#include "orpsp/types.h"

namespace plain {

void bartlett32f(const Orp32f* a, Orp32f* d, int n);
void hamming16s(const Orp16s* a, Orp16s* d, int n);
void hann32f(const Orp32f* a, Orp32f* d, int n);
void hann64f(const Orp64f* a, Orp64f* d, int n);
void hann32fc(const Orp32fc* a, Orp32fc* d, int n);
void blackman32f(const Orp32f* a, Orp32f* d, int n, float alpha);
void kaiser32f(const Orp32f* a, Orp32f* d, int n, float alpha);

}  // namespace plain
