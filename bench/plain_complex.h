// Parts and powers of complex vectors as a user would write them.
#pragma once

#include "orpsp/types.h"

namespace plain {

void conj32fc(const Orp32fc* a, Orp32fc* d, int n);
void real32fc(const Orp32fc* a, Orp32f* d, int n);
void realToCplx32f(const Orp32f* re, const Orp32f* im, Orp32fc* d, int n);
void cplxToReal32fc(const Orp32fc* a, Orp32f* re, Orp32f* im, int n);
void power32fc(const Orp32fc* a, Orp32f* d, int n);
void power32f(const Orp32f* re, const Orp32f* im, Orp32f* d, int n);
void power16sc32f(const Orp16sc* a, Orp32f* d, int n);
void power16sc(const Orp16sc* a, Orp16s* d, int n, int scale);
void magSquared32sc(const Orp32sc* a, Orp32s* d, int n, int scale);

}  // namespace plain
