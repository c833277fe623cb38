// Helpers of speech coders and modems as a user would write them.
#pragma once

#include "orpsp/types.h"

namespace plain {

void preemphasize16s(const Orp16s* a, Orp16s* d, int n, float v);
void preemphasize32f(const Orp32f* a, Orp32f* d, int n, float v);
void updateLinear(const Orp16s* a, int n, Orp32s* mean, int shift, int alpha);
void updatePower(const Orp16s* a, int n, Orp32s* mean, int shift, int alpha);
void demodulateFM(const Orp16sc* a, Orp16s* d, int n);  // there is an element in front of a
void sumWindow(const Orp8u* a, Orp32f* d, int n, int window);
void sumWindow(const Orp16s* a, Orp32f* d, int n, int window);
void packBits(const Orp32u* a, Orp8u* d, int n, int bits);

}  // namespace plain
