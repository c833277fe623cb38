// Conversions of one width, for transforms of integers: without checks.
#if defined(ORPSP_VECTOR_CONVERT_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef ORPSP_VECTOR_CONVERT_INL_H_
#undef ORPSP_VECTOR_CONVERT_INL_H_
#else
#define ORPSP_VECTOR_CONVERT_INL_H_
#endif

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {

// Integers as floating point, and back: times 2^-scale, rounded to nearest, ties to even, saturated. Defined in
// convert.cpp for 16-bit integers and float, 32-bit integers and float or double.
template <class S, class D>
void ConvertVector(const S* src, D* dst, size_t len);
template <class S, class D>
void RoundVector(const S* src, D* dst, size_t len, int scale);

}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#endif  // include guard
