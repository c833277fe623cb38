// Products and expansion of packed spectra as a user would write them.
#pragma once

#include "orpsp/types.h"

namespace plain {

void mulPack32f(const Orp32f* a, const Orp32f* b, Orp32f* d, int n);
void mulPack64f(const Orp64f* a, const Orp64f* b, Orp64f* d, int n);
void mulPack16s(const Orp16s* a, const Orp16s* b, Orp16s* d, int n, int scale);
void mulPerm32f(const Orp32f* a, const Orp32f* b, Orp32f* d, int n);
void mulPackConj32f(const Orp32f* a, Orp32f* d, int n);
void conjPack32fc(const Orp32f* a, Orp32fc* d, int n);
void conjPack64fc(const Orp64f* a, Orp64fc* d, int n);
void conjPack16sc(const Orp16s* a, Orp16sc* d, int n);
void conjCcs32fc(const Orp32f* a, Orp32fc* d, int n);
void conjCcs32fcInPlace(Orp32fc* d, int n);

}  // namespace plain
