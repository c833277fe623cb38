// Companding and Cauchy functions as a user would write them: decoding and transcoding by tables, encoding by a search
// for the segment.
#pragma once

#include "orpsp/types.h"

namespace plain {

void aLawToLin16s(const Orp8u* a, Orp16s* d, int n);
void aLawToLin32f(const Orp8u* a, Orp32f* d, int n);
void muLawToLin16s(const Orp8u* a, Orp16s* d, int n);
void linToALaw16s(const Orp16s* a, Orp8u* d, int n);
void linToALaw32f(const Orp32f* a, Orp8u* d, int n);
void linToMuLaw16s(const Orp16s* a, Orp8u* d, int n);
// By a table of 256 codes.
void transcode(const Orp8u* a, Orp8u* d, int n, const Orp8u* table);

void cauchy(Orp32f* d, int n, float s);
void cauchyD(Orp32f* d, int n, float s);
void cauchyDD2(Orp32f* d, Orp32f* d2, int n, float s);

}  // namespace plain
