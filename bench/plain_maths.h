// Plain loops over the maths of the standard library, and loops over the vector functions of SLEEF at the machine's
// width, compiled as plain.h. Arguments are those of the library's functions.
#pragma once

#include "orpsp/types.h"

namespace plain {

void exp32f(const Orp32f* a, Orp32f* d, int n);
void exp64f(const Orp64f* a, Orp64f* d, int n);
void exp16s(const Orp16s* a, Orp16s* d, int n, int scale);
void ln32f(const Orp32f* a, Orp32f* d, int n);
void ln64f(const Orp64f* a, Orp64f* d, int n);
void ln32s(const Orp32s* a, Orp32s* d, int n, int scale);
void sqrt32f(const Orp32f* a, Orp32f* d, int n);
void sqrt64f(const Orp64f* a, Orp64f* d, int n);
void sqrt32fc(const Orp32fc* a, Orp32fc* d, int n);
void sqrt16s(const Orp16s* a, Orp16s* d, int n, int scale);
void cubrt32f(const Orp32f* a, Orp32f* d, int n);
void arctan32f(const Orp32f* a, Orp32f* d, int n);
void arctan64f(const Orp64f* a, Orp64f* d, int n);
void phase32f(const Orp32f* re, const Orp32f* im, Orp32f* d, int n);
void phase32fc(const Orp32fc* a, Orp32f* d, int n);
void magnitude32f(const Orp32f* re, const Orp32f* im, Orp32f* d, int n);
void magnitude32fc(const Orp32fc* a, Orp32f* d, int n);
void magnitude64f(const Orp64f* re, const Orp64f* im, Orp64f* d, int n);
void magnitude16sc(const Orp16sc* a, Orp16s* d, int n, int scale);
void cartToPolar32fc(const Orp32fc* a, Orp32f* magnitude, Orp32f* phase, int n);
void polarToCart32fc(const Orp32f* magnitude, const Orp32f* phase, Orp32fc* d, int n);

}  // namespace plain

// Those of 1 unit in the last place (a half for roots and magnitudes), and those of 3.5.
namespace sleef {

enum class Accuracy { best, fast };

template <Accuracy accuracy>
struct Functions {
  static void exp(const Orp32f* a, Orp32f* d, int n);
  static void exp(const Orp64f* a, Orp64f* d, int n);
  static void ln(const Orp32f* a, Orp32f* d, int n);
  static void ln(const Orp64f* a, Orp64f* d, int n);
  static void sqrt(const Orp32f* a, Orp32f* d, int n);
  static void sqrt(const Orp64f* a, Orp64f* d, int n);
  static void cubrt(const Orp32f* a, Orp32f* d, int n);
  static void arctan(const Orp32f* a, Orp32f* d, int n);
  static void arctan(const Orp64f* a, Orp64f* d, int n);
  static void phase(const Orp32f* re, const Orp32f* im, Orp32f* d, int n);
  static void phase(const Orp32fc* a, Orp32f* d, int n);
  static void magnitude(const Orp32f* re, const Orp32f* im, Orp32f* d, int n);
  static void magnitude(const Orp32fc* a, Orp32f* d, int n);
  static void magnitude(const Orp64f* re, const Orp64f* im, Orp64f* d, int n);
  static void cartToPolar(const Orp32fc* a, Orp32f* magnitude, Orp32f* phase, int n);
  static void polarToCart(const Orp32f* magnitude, const Orp32f* phase, Orp32fc* d, int n);
};

using Best = Functions<Accuracy::best>;
using Fast = Functions<Accuracy::fast>;

}  // namespace sleef
