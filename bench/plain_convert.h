// Plain loops of the conversion family; see plain.h.
#pragma once

#include "orpsp/types.h"

namespace plain {

void convert16s32f(const Orp16s* a, Orp32f* d, int n);
void convert16s32f(const Orp16s* a, Orp32f* d, int n, int scale);
void convert32f16s(const Orp32f* a, Orp16s* d, int n, int mode, int scale);
void convert32f32s(const Orp32f* a, Orp32s* d, int n, int mode, int scale);
void convert32f8u(const Orp32f* a, Orp8u* d, int n, int mode, int scale);
void convert64f64s(const Orp64f* a, Orp64s* d, int n, int mode, int scale);
void convert32f24s(const Orp32f* a, Orp24s* d, int n, int mode, int scale);
void convert24s32f(const Orp24s* a, Orp32f* d, int n);
void convert32f16f(const Orp32f* a, Orp16f* d, int n);
void convert16f32f(const Orp16f* a, Orp32f* d, int n);
void convert32s16s(const Orp32s* a, Orp16s* d, int n);
void convert32s16s(const Orp32s* a, Orp16s* d, int n, int scale);
void convert64s32s(const Orp64s* a, Orp32s* d, int n, int scale);
void convert64f32f(const Orp64f* a, Orp32f* d, int n);
void convert32f64f(const Orp32f* a, Orp64f* d, int n);
void join16s(const Orp32f* a, const Orp32f* b, Orp16s* d, int n);
void join24s(const Orp32f* a, const Orp32f* b, Orp24s* d, int n);
void split16s(const Orp16s* a, Orp32f* d, Orp32f* e, int n);
void split24s(const Orp24s* a, Orp32f* d, Orp32f* e, int n);

}  // namespace plain
