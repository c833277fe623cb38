// What a user would write: plain loops, compiled with -O3 -march=native. Order and meaning of the arguments are those
// of the library's functions of the same name.
#pragma once

#include <cstdint>

#include "orpsp/types.h"

namespace plain {

#define PLAIN_PAIR(name, T) void name(const T* a, const T* b, T* d, int n)
#define PLAIN_PAIR_SCALED(name, T) void name(const T* a, const T* b, T* d, int n, int scale)
PLAIN_PAIR(add16s, Orp16s);
PLAIN_PAIR(add32f, Orp32f);
PLAIN_PAIR(add64f, Orp64f);
PLAIN_PAIR(add32fc, Orp32fc);
PLAIN_PAIR_SCALED(add8u, Orp8u);
PLAIN_PAIR_SCALED(add16s, Orp16s);
PLAIN_PAIR_SCALED(add32s, Orp32s);
PLAIN_PAIR_SCALED(add64s, Orp64s);
PLAIN_PAIR(sub32f, Orp32f);
PLAIN_PAIR_SCALED(sub16u, Orp16u);
PLAIN_PAIR(mul32f, Orp32f);
PLAIN_PAIR(mul64f, Orp64f);
PLAIN_PAIR(mul32fc, Orp32fc);
PLAIN_PAIR_SCALED(mul8u, Orp8u);
PLAIN_PAIR_SCALED(mul16s, Orp16s);
PLAIN_PAIR_SCALED(mul16u, Orp16u);
PLAIN_PAIR_SCALED(mul32s, Orp32s);
PLAIN_PAIR_SCALED(mul16sc, Orp16sc);
PLAIN_PAIR_SCALED(mul32sc, Orp32sc);
PLAIN_PAIR(addProduct32f, Orp32f);
PLAIN_PAIR_SCALED(addProduct16s, Orp16s);
PLAIN_PAIR(div32f, Orp32f);
PLAIN_PAIR(div64f, Orp64f);
PLAIN_PAIR(div32fc, Orp32fc);
PLAIN_PAIR(div64fc, Orp64fc);
PLAIN_PAIR_SCALED(div8u, Orp8u);
PLAIN_PAIR_SCALED(div16s, Orp16s);
PLAIN_PAIR_SCALED(div32s, Orp32s);
PLAIN_PAIR_SCALED(div16sc, Orp16sc);
PLAIN_PAIR(and32u, Orp32u);
#undef PLAIN_PAIR
#undef PLAIN_PAIR_SCALED

void addC32f(const Orp32f* a, Orp32f val, Orp32f* d, int n);
void addC16s(const Orp16s* a, Orp16s val, Orp16s* d, int n, int scale);
void mulC32f(const Orp32f* a, Orp32f val, Orp32f* d, int n);
void mulC16s(const Orp16s* a, Orp16s val, Orp16s* d, int n, int scale);
void divC16s(const Orp16s* a, Orp16s val, Orp16s* d, int n, int scale);
void divC32f(const Orp32f* a, Orp32f val, Orp32f* d, int n);
void normalize32f(const Orp32f* a, Orp32f* d, int n, Orp32f sub, Orp32f div);
void normalize16s(const Orp16s* a, Orp16s* d, int n, Orp16s sub, int div, int scale);
void abs16s(const Orp16s* a, Orp16s* d, int n);
void abs32f(const Orp32f* a, Orp32f* d, int n);
void sqr32f(const Orp32f* a, Orp32f* d, int n);
void andC16u(const Orp16u* a, Orp16u val, Orp16u* d, int n);
void lShiftC16u(const Orp16u* a, int val, Orp16u* d, int n);
void rShiftC8u(const Orp8u* a, int val, Orp8u* d, int n);
void set32f(Orp32f val, Orp32f* d, int n);
void copy32f(const Orp32f* a, Orp32f* d, int n);
void copy8u(const Orp8u* a, Orp8u* d, int n);
void moveUp32f(const Orp32f* a, Orp32f* d, int n);
void flip8u(const Orp8u* a, Orp8u* d, int n);
void flip32f(const Orp32f* a, Orp32f* d, int n);
void flipInPlace32f(Orp32f* d, int n);
void swapBytes16u(const Orp16u* a, Orp16u* d, int n);
void swapBytes24u(const Orp24u* a, Orp24u* d, int n);
void swapBytes32u(const Orp32u* a, Orp32u* d, int n);
void copyBits(const Orp8u* a, int from, Orp8u* d, int to, int n);

}  // namespace plain
