/** @file
 *  Windows: a vector times a symmetric taper of the same length N, pDst[n] = w(n) pSrc[n].
 *
 *  Weights are computed in double precision, with an error below 1e-12, and are the same bits at every vector width;
 *  elements n and N - 1 - n get the same weight. With theta = 2 pi / (N - 1), for n = 0 ... N - 1:
 *
 *  | window | w(n) | least N |
 *  |---|---|---|
 *  | Bartlett | 2n / (N - 1) up to the middle, then 2 - 2n / (N - 1) | 3 |
 *  | Hann | 0.5 - 0.5 cos(n theta) | 3 |
 *  | Hamming | 0.54 - 0.46 cos(n theta) | 3 |
 *  | Blackman | (alpha + 1) / 2 - 0.5 cos(n theta) - (alpha / 2) cos(2 n theta) | 3 |
 *  | BlackmanStd | Blackman with alpha = -0.16 | 3 |
 *  | BlackmanOpt | Blackman with alpha = -(0.5 / cos(pi / (N - 1)))^2 | 4 |
 *  | Kaiser | I0(\|alpha\| sqrt(n (N - 1 - n))) / I0(\|alpha\| (N - 1) / 2) | 1 |
 *
 *  I0 stands for an approximation of the modified Bessel function of the first kind and order 0: a polynomial in
 *  (x / 4)^2 below 4, and e^x / sqrt(x) times one in 4 / x from 4 on, of the form of [Abramowitz and Stegun 1964:
 *  Handbook of Mathematical Functions, 9.8.1 and 9.8.2]. Its relative error is 1.5e-9 below 4 and up to 5.6e-6 above,
 *  most at 4; so a weight differs from that of the exact function by up to 5.6e-6, and from the quotient of the
 *  approximations by less than 1e-12. alpha is in units of one sample: with the usual parameter beta,
 *  alpha = 2 beta / (N - 1).
 *
 *  The product of element and weight is formed in double precision and rounded to the element type: floating point to
 *  nearest; integers to nearest with ties to even, then saturated (weights are beyond [0, 1] for some alpha only). Both
 *  parts of a complex element get the same weight. A NaN stays NaN, and an infinity times a weight of 0 is one. An
 *  alpha that is NaN, or infinite and of a Blackman window, makes all weights NaN; an infinite one of a Kaiser window
 *  is `StsKaiserAlpha`. An integer product that is NaN gives 0.
 *
 *  Source and destination may be the same array. Statuses, in this order: `StsNullPtr`; `StsBadSize` if len is below
 *  the least N; Kaiser: `StsKaiserAlpha` if |alpha| (N - 1) / 2 is above 308 (never of one element, whatever alpha
 *  is). Then nothing has been written.
 */
#ifndef ORPSP_GENERATE_WINDOWS_H
#define ORPSP_GENERATE_WINDOWS_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name WinBartlett
 *  The triangle. With three elements the window writes 0, the middle element as it is, and 0, whatever the elements
 *  are; with more, the ends are products of an element and the weight 0.
 *  @{ */
OrpStatus orpsWinBartlett_16s(const Orp16s* pSrc, Orp16s* pDst, int len);
OrpStatus orpsWinBartlett_16s_I(Orp16s* pSrcDst, int len);
OrpStatus orpsWinBartlett_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len);
OrpStatus orpsWinBartlett_16sc_I(Orp16sc* pSrcDst, int len);
OrpStatus orpsWinBartlett_32f(const Orp32f* pSrc, Orp32f* pDst, int len);
OrpStatus orpsWinBartlett_32f_I(Orp32f* pSrcDst, int len);
OrpStatus orpsWinBartlett_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len);
OrpStatus orpsWinBartlett_32fc_I(Orp32fc* pSrcDst, int len);
OrpStatus orpsWinBartlett_64f(const Orp64f* pSrc, Orp64f* pDst, int len);
OrpStatus orpsWinBartlett_64f_I(Orp64f* pSrcDst, int len);
OrpStatus orpsWinBartlett_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len);
OrpStatus orpsWinBartlett_64fc_I(Orp64fc* pSrcDst, int len);
/** @} */

/** @name WinHann
 *  The raised cosine.
 *  @{ */
OrpStatus orpsWinHann_16s(const Orp16s* pSrc, Orp16s* pDst, int len);
OrpStatus orpsWinHann_16s_I(Orp16s* pSrcDst, int len);
OrpStatus orpsWinHann_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len);
OrpStatus orpsWinHann_16sc_I(Orp16sc* pSrcDst, int len);
OrpStatus orpsWinHann_32f(const Orp32f* pSrc, Orp32f* pDst, int len);
OrpStatus orpsWinHann_32f_I(Orp32f* pSrcDst, int len);
OrpStatus orpsWinHann_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len);
OrpStatus orpsWinHann_32fc_I(Orp32fc* pSrcDst, int len);
OrpStatus orpsWinHann_64f(const Orp64f* pSrc, Orp64f* pDst, int len);
OrpStatus orpsWinHann_64f_I(Orp64f* pSrcDst, int len);
OrpStatus orpsWinHann_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len);
OrpStatus orpsWinHann_64fc_I(Orp64fc* pSrcDst, int len);
/** @} */

/** @name WinHamming
 *  The raised cosine on a pedestal.
 *  @{ */
OrpStatus orpsWinHamming_16s(const Orp16s* pSrc, Orp16s* pDst, int len);
OrpStatus orpsWinHamming_16s_I(Orp16s* pSrcDst, int len);
OrpStatus orpsWinHamming_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len);
OrpStatus orpsWinHamming_16sc_I(Orp16sc* pSrcDst, int len);
OrpStatus orpsWinHamming_32f(const Orp32f* pSrc, Orp32f* pDst, int len);
OrpStatus orpsWinHamming_32f_I(Orp32f* pSrcDst, int len);
OrpStatus orpsWinHamming_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len);
OrpStatus orpsWinHamming_32fc_I(Orp32fc* pSrcDst, int len);
OrpStatus orpsWinHamming_64f(const Orp64f* pSrc, Orp64f* pDst, int len);
OrpStatus orpsWinHamming_64f_I(Orp64f* pSrcDst, int len);
OrpStatus orpsWinHamming_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len);
OrpStatus orpsWinHamming_64fc_I(Orp64fc* pSrcDst, int len);
/** @} */

/** @name WinBlackman
 *  With a parameter of the caller.
 *  @{ */
OrpStatus orpsWinBlackman_16s(const Orp16s* pSrc, Orp16s* pDst, int len, Orp32f alpha);
OrpStatus orpsWinBlackman_16s_I(Orp16s* pSrcDst, int len, Orp32f alpha);
OrpStatus orpsWinBlackman_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len, Orp32f alpha);
OrpStatus orpsWinBlackman_16sc_I(Orp16sc* pSrcDst, int len, Orp32f alpha);
OrpStatus orpsWinBlackman_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f alpha);
OrpStatus orpsWinBlackman_32f_I(Orp32f* pSrcDst, int len, Orp32f alpha);
OrpStatus orpsWinBlackman_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len, Orp32f alpha);
OrpStatus orpsWinBlackman_32fc_I(Orp32fc* pSrcDst, int len, Orp32f alpha);
OrpStatus orpsWinBlackman_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f alpha);
OrpStatus orpsWinBlackman_64f_I(Orp64f* pSrcDst, int len, Orp64f alpha);
OrpStatus orpsWinBlackman_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len, Orp64f alpha);
OrpStatus orpsWinBlackman_64fc_I(Orp64fc* pSrcDst, int len, Orp64f alpha);
/** @} */

/** @name WinBlackmanStd
 *  With the usual parameter.
 *  @{ */
OrpStatus orpsWinBlackmanStd_16s(const Orp16s* pSrc, Orp16s* pDst, int len);
OrpStatus orpsWinBlackmanStd_16s_I(Orp16s* pSrcDst, int len);
OrpStatus orpsWinBlackmanStd_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len);
OrpStatus orpsWinBlackmanStd_16sc_I(Orp16sc* pSrcDst, int len);
OrpStatus orpsWinBlackmanStd_32f(const Orp32f* pSrc, Orp32f* pDst, int len);
OrpStatus orpsWinBlackmanStd_32f_I(Orp32f* pSrcDst, int len);
OrpStatus orpsWinBlackmanStd_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len);
OrpStatus orpsWinBlackmanStd_32fc_I(Orp32fc* pSrcDst, int len);
OrpStatus orpsWinBlackmanStd_64f(const Orp64f* pSrc, Orp64f* pDst, int len);
OrpStatus orpsWinBlackmanStd_64f_I(Orp64f* pSrcDst, int len);
OrpStatus orpsWinBlackmanStd_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len);
OrpStatus orpsWinBlackmanStd_64fc_I(Orp64fc* pSrcDst, int len);
/** @} */

/** @name WinBlackmanOpt
 *  With the parameter that attenuates side lobes most.
 *  @{ */
OrpStatus orpsWinBlackmanOpt_16s(const Orp16s* pSrc, Orp16s* pDst, int len);
OrpStatus orpsWinBlackmanOpt_16s_I(Orp16s* pSrcDst, int len);
OrpStatus orpsWinBlackmanOpt_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len);
OrpStatus orpsWinBlackmanOpt_16sc_I(Orp16sc* pSrcDst, int len);
OrpStatus orpsWinBlackmanOpt_32f(const Orp32f* pSrc, Orp32f* pDst, int len);
OrpStatus orpsWinBlackmanOpt_32f_I(Orp32f* pSrcDst, int len);
OrpStatus orpsWinBlackmanOpt_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len);
OrpStatus orpsWinBlackmanOpt_32fc_I(Orp32fc* pSrcDst, int len);
OrpStatus orpsWinBlackmanOpt_64f(const Orp64f* pSrc, Orp64f* pDst, int len);
OrpStatus orpsWinBlackmanOpt_64f_I(Orp64f* pSrcDst, int len);
OrpStatus orpsWinBlackmanOpt_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len);
OrpStatus orpsWinBlackmanOpt_64fc_I(Orp64fc* pSrcDst, int len);
/** @} */

/** @name WinKaiser
 *  With one element the window copies it. alpha = 0 gives weights of 1.
 *  @{ */
OrpStatus orpsWinKaiser_16s(const Orp16s* pSrc, Orp16s* pDst, int len, Orp32f alpha);
OrpStatus orpsWinKaiser_16s_I(Orp16s* pSrcDst, int len, Orp32f alpha);
OrpStatus orpsWinKaiser_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len, Orp32f alpha);
OrpStatus orpsWinKaiser_16sc_I(Orp16sc* pSrcDst, int len, Orp32f alpha);
OrpStatus orpsWinKaiser_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f alpha);
OrpStatus orpsWinKaiser_32f_I(Orp32f* pSrcDst, int len, Orp32f alpha);
OrpStatus orpsWinKaiser_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len, Orp32f alpha);
OrpStatus orpsWinKaiser_32fc_I(Orp32fc* pSrcDst, int len, Orp32f alpha);
OrpStatus orpsWinKaiser_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp32f alpha);
OrpStatus orpsWinKaiser_64f_I(Orp64f* pSrcDst, int len, Orp32f alpha);
OrpStatus orpsWinKaiser_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len, Orp32f alpha);
OrpStatus orpsWinKaiser_64fc_I(Orp64fc* pSrcDst, int len, Orp32f alpha);
/** @} */

/** @name WinBlackmanQ15, WinKaiserQ15
 *  The parameter is alphaQ15 / 32768. `_ISfs`: weight times element times 2^-scaleFactor, rounded once.
 *  @{ */
OrpStatus orpsWinBlackmanQ15_16s(const Orp16s* pSrc, Orp16s* pDst, int len, int alphaQ15);
OrpStatus orpsWinBlackmanQ15_16s_I(Orp16s* pSrcDst, int len, int alphaQ15);
OrpStatus orpsWinBlackmanQ15_16s_ISfs(Orp16s* pSrcDst, int len, int alphaQ15, int scaleFactor);
OrpStatus orpsWinBlackmanQ15_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len, int alphaQ15);
OrpStatus orpsWinBlackmanQ15_16sc_I(Orp16sc* pSrcDst, int len, int alphaQ15);
OrpStatus orpsWinKaiserQ15_16s(const Orp16s* pSrc, Orp16s* pDst, int len, int alphaQ15);
OrpStatus orpsWinKaiserQ15_16s_I(Orp16s* pSrcDst, int len, int alphaQ15);
OrpStatus orpsWinKaiserQ15_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len, int alphaQ15);
OrpStatus orpsWinKaiserQ15_16sc_I(Orp16sc* pSrcDst, int len, int alphaQ15);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
