// Reductions, extrema and searches as a user would write them; compiled with -ffast-math, without which sums of
// floating point are not vectorised.
#pragma once

#include "orpsp/types.h"

namespace plain {

void sum32f(const Orp32f* a, int n, Orp32f* d);
void sumInDouble32f(const Orp32f* a, int n, Orp32f* d);
void sum64f(const Orp64f* a, int n, Orp64f* d);
void sum32fc(const Orp32fc* a, int n, Orp32fc* d);
void sum16s32s(const Orp16s* a, int n, Orp32s* d);
void sum32s(const Orp32s* a, int n, Orp32s* d);
void mean32f(const Orp32f* a, int n, Orp32f* d);
void stdDev32f(const Orp32f* a, int n, Orp32f* d);
void stdDevInDouble32f(const Orp32f* a, int n, Orp32f* d);
void stdDev64f(const Orp64f* a, int n, Orp64f* d);
void sumLn32f(const Orp32f* a, int n, Orp32f* d);
void sumLn64f(const Orp64f* a, int n, Orp64f* d);

void normInf32f(const Orp32f* a, int n, Orp32f* d);
void normInf16s(const Orp16s* a, int n, Orp32s* d);
void normL132f(const Orp32f* a, int n, Orp32f* d);
void normL264f(const Orp64f* a, int n, Orp64f* d);
void normL232f(const Orp32f* a, int n, Orp32f* d);
void normDiffL232f(const Orp32f* a, const Orp32f* b, int n, Orp32f* d);

void dotProd32f(const Orp32f* a, const Orp32f* b, int n, Orp32f* d);
void dotProd64f(const Orp64f* a, const Orp64f* b, int n, Orp64f* d);
void dotProd32fc(const Orp32fc* a, const Orp32fc* b, int n, Orp32fc* d);
void dotProd16s64s(const Orp16s* a, const Orp16s* b, int n, Orp64s* d);

void max16s(const Orp16s* a, int n, Orp16s* d);
void max32s(const Orp32s* a, int n, Orp32s* d);
void max32f(const Orp32f* a, int n, Orp32f* d);
void max64f(const Orp64f* a, int n, Orp64f* d);
void maxAbs16s(const Orp16s* a, int n, Orp16s* d);
void maxIndx16s(const Orp16s* a, int n, Orp16s* d, int* index);
void maxIndx32f(const Orp32f* a, int n, Orp32f* d, int* index);
void minMax8u(const Orp8u* a, int n, Orp8u* min, Orp8u* max);
void minMax32f(const Orp32f* a, int n, Orp32f* min, Orp32f* max);
void minMaxIndx32f(const Orp32f* a, int n, Orp32f* min, int* minIndex, Orp32f* max, int* maxIndex);
void maxEvery16u(const Orp16u* a, const Orp16u* b, Orp16u* d, int n);
void maxEvery32f(const Orp32f* a, const Orp32f* b, Orp32f* d, int n);
void maxEvery64f(const Orp64f* a, const Orp64f* b, Orp64f* d, int n);

void countInRange32s(const Orp32s* a, int n, int* d, Orp32s lower, Orp32s upper);
void signChanges16s(const Orp16s* a, int n, Orp32f* d);
void signChanges32f(const Orp32f* a, int n, Orp32f* d);
void crossings32f(const Orp32f* a, int n, Orp32f* d);
void findNearest16u(const Orp16u* values, Orp16u* found, int* indexes, int n, const Orp16u* table, int tableLen);

}  // namespace plain
