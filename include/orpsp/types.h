/** @file
 *  Element types, status codes and the conventions that every call of orpSP shares.
 *
 *  Names. `orps<Operation>[_<form>]_<types>[_<modifiers>]`. The type group names the element type; of two groups the
 *  first is the source and the last the destination. Modifiers: `_I` in place (the destination is also the last
 *  source), `_Sfs` scaled integer result, `_ISfs` both. `C` after the operation: one operand is a constant passed by
 *  value; `CRev`: it is the left operand. Arguments: sources, destinations, length, further ones; a constant operand
 *  stands in front of the destination, behind a source; pointers to a few results of a vector stand behind the length.
 *
 *  Arrays. Contiguous, any alignment, `len` elements (complex pairs count as one). Where source and destination have
 *  elements of the same type they may be the same array; any other overlap is an error of the caller unless a function
 *  says otherwise.
 *
 *  Checks, in this order where a group gives no other one (FFTs, tones, triangles, states do), nothing written on a
 *  negative status: every pointer for null (`StsNullPtr`), the length (`StsBadSize` if it is not positive), then ranges
 *  of further arguments. A positive status is a warning: the whole result has been written.
 *
 *  Scale factor `s` of an `_Sfs` call. The exact result r of an element is written as r * 2^-s, rounded to nearest with
 *  ties to even and then saturated to the destination type, for every s from INT_MIN to INT_MAX. Integer calls without
 *  a scale factor saturate. Floating-point calls follow IEEE 754 in the precision of their type; NaN and infinity
 *  propagate as IEEE 754 arithmetic makes them, and the sign and payload of a NaN result are not specified.
 *
 *  The floating-point environment is that of the thread that calls (on x86-64 the register MXCSR), also for threads
 *  that share the call. A call leaves its modes as they are.
 *  - Rounding mode. Floating-point arithmetic follows it: sums, differences, products and quotients, thresholds with a
 *    reciprocal, sums over a vector and norms, FFTs of floating-point elements. Error bounds and sums in a documented
 *    order hold for round-to-nearest. All other results are the same bits in every mode: integers and half precision,
 *    conversions, roots, exponentials, logarithms, angles and magnitudes of complex elements, robust weights,
 *    generators and windows, FFTs of integers, whatever is copied, compared, searched or sorted.
 *  - Flush to zero. A floating-point result that would be a subnormal number may be 0. Integer results do not change.
 *  - Denormals are zero. Subnormal elements and constants count as 0, also where they are compared (which includes
 *    sorts with an index).
 *  - Exceptions are to be masked, as they are unless a program asks for traps; which flags a call raises is not
 *    specified.
 *
 *  Threads. Every call is re-entrant; calls on different arrays may run at the same time. Element-wise results are the
 *  same bits on every processor and for any number of threads; where a function says that they may differ between
 *  processors (floating-point results of elementary functions), an element still gives the same bits in every call,
 *  array and position on one.
 */
#ifndef ORPSP_TYPES_H
#define ORPSP_TYPES_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef uint8_t Orp8u;
typedef int8_t Orp8s;
typedef uint16_t Orp16u;
typedef int16_t Orp16s;
typedef uint32_t Orp32u;
typedef int32_t Orp32s;
typedef uint64_t Orp64u;
typedef int64_t Orp64s;
typedef float Orp32f;
typedef double Orp64f;

/** An element of half precision (IEEE 754 binary16), as its bits. */
typedef struct {
  Orp16u bits;
} Orp16f;

/** Elements of three bytes, least significant byte first; the sign of a signed one is the top bit of the last byte. */
typedef struct {
  Orp8u byte[3];
} Orp24u;
typedef struct {
  Orp8u byte[3];
} Orp24s;

/** Complex elements: real part first, no padding. */
typedef struct {
  Orp8s re, im;
} Orp8sc;
typedef struct {
  Orp16s re, im;
} Orp16sc;
typedef struct {
  Orp32s re, im;
} Orp32sc;
typedef struct {
  Orp64s re, im;
} Orp64sc;
typedef struct {
  Orp32f re, im;
} Orp32fc;
typedef struct {
  Orp64f re, im;
} Orp64fc;

/** Result of almost every call: 0 success, negative an error, positive a warning. */
typedef int32_t OrpStatus;

enum {
  StsBadRoundMode = -213,      /**< the rounding mode is not one of the accepted values */
  StsKaiserAlpha = -109,       /**< the parameter of a Kaiser window is too large for its length */
  StsJaehneMagnitude = -108,   /**< the magnitude of a Jaehne vector is negative */
  StsTriangleAsymmetry = -107, /**< the asymmetry of a triangle is outside [-pi, pi) */
  StsTrianglePhase = -106,     /**< the phase of a triangle is outside [0, 2 pi) */
  StsTriangleFrequency = -105, /**< the frequency of a triangle is outside [0, 0.5) */
  StsTriangleMagnitude = -104, /**< the magnitude of a triangle is not positive */
  StsTonePhase = -103,         /**< the phase of a tone is outside [0, 2 pi) */
  StsToneFrequency = -102,     /**< the frequency of a tone is outside [0, 0.5) */
  StsToneMagnitude = -101,     /**< the magnitude of a tone is not positive */
  StsShiftErr = -32,           /**< a shift count is negative */
  StsBadThreshold = -19,       /**< a threshold level is negative where only levels >= 0 are accepted */
  StsSpecMismatch = -17,       /**< the identity tag of a specification or state is not that of the operation */
  StsFftFlag = -16,            /**< the normalisation flag of an FFT is not 1, 2, 4 or 8 */
  StsFftOrder = -15,           /**< the order of an FFT is negative or beyond the type's highest */
  StsCauchyParam = -11,        /**< the parameter of a Cauchy function is not positive */
  StsDivByZeroErr = -10,       /**< division by a zero constant */
  StsNoMemory = -9,            /**< an internal allocation failed */
  StsNullPtr = -8,             /**< a required pointer is null */
  StsBadSize = -6,             /**< a length or size is not positive, or below the least one of its family */
  StsBadArg = -5,              /**< an argument is outside its set or range */
  StsOk = 0,                   /**< success */
  StsVarPoint = 3,             /**< warning: a received point lies outside the range of points and was moved into it */
  StsDivByZero = 6,            /**< warning: at least one element divisor was zero */
  StsSingularity = 7,          /**< warning: at least one argument made the result infinite */
  StsDomain = 8                /**< warning: at least one argument lay outside the domain, a NaN was written */
};

/** Rounding modes of the calls that take one (`rndMode`). */
enum {
  OrpRoundZero = 0, /**< toward zero */
  OrpRoundNear = 1, /**< to nearest, ties to even */
  OrpRoundAway = 2  /**< to nearest, ties away from zero */
};

#ifdef __cplusplus
}
#endif

#endif
