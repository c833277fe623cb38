/** @file
 *  Thresholds: limiting and replacing elements beyond a level.
 */
#ifndef ORPSP_VECTOR_THRESHOLD_H
#define ORPSP_VECTOR_THRESHOLD_H

#include "orpsp/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Threshold generic
 *  TODO
 *  @{ */
OrpStatus orpsThreshold_16s(const Orp16s* pSrc, Orp16s* pDst, int len, Orp16s level, int relOp);
OrpStatus orpsThreshold_16s_I(Orp16s* pSrcDst, int len, Orp16s level, int relOp);
OrpStatus orpsThreshold_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len, Orp16s level, int relOp);
OrpStatus orpsThreshold_16sc_I(Orp16sc* pSrcDst, int len, Orp16s level, int relOp);
OrpStatus orpsThreshold_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f level, int relOp);
OrpStatus orpsThreshold_32f_I(Orp32f* pSrcDst, int len, Orp32f level, int relOp);
OrpStatus orpsThreshold_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len, Orp32f level, int relOp);
OrpStatus orpsThreshold_32fc_I(Orp32fc* pSrcDst, int len, Orp32f level, int relOp);
OrpStatus orpsThreshold_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f level, int relOp);
OrpStatus orpsThreshold_64f_I(Orp64f* pSrcDst, int len, Orp64f level, int relOp);
OrpStatus orpsThreshold_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len, Orp64f level, int relOp);
OrpStatus orpsThreshold_64fc_I(Orp64fc* pSrcDst, int len, Orp64f level, int relOp);
/** @} */

/** @name Threshold LT
 *  TODO
 *  @{ */
OrpStatus orpsThreshold_LT_16s(const Orp16s* pSrc, Orp16s* pDst, int len, Orp16s level);
OrpStatus orpsThreshold_LT_16s_I(Orp16s* pSrcDst, int len, Orp16s level);
OrpStatus orpsThreshold_LT_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len, Orp16s level);
OrpStatus orpsThreshold_LT_16sc_I(Orp16sc* pSrcDst, int len, Orp16s level);
OrpStatus orpsThreshold_LT_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f level);
OrpStatus orpsThreshold_LT_32f_I(Orp32f* pSrcDst, int len, Orp32f level);
OrpStatus orpsThreshold_LT_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len, Orp32f level);
OrpStatus orpsThreshold_LT_32fc_I(Orp32fc* pSrcDst, int len, Orp32f level);
OrpStatus orpsThreshold_LT_32s(const Orp32s* pSrc, Orp32s* pDst, int len, Orp32s level);
OrpStatus orpsThreshold_LT_32s_I(Orp32s* pSrcDst, int len, Orp32s level);
OrpStatus orpsThreshold_LT_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f level);
OrpStatus orpsThreshold_LT_64f_I(Orp64f* pSrcDst, int len, Orp64f level);
OrpStatus orpsThreshold_LT_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len, Orp64f level);
OrpStatus orpsThreshold_LT_64fc_I(Orp64fc* pSrcDst, int len, Orp64f level);
/** @} */

/** @name Threshold GT
 *  TODO
 *  @{ */
OrpStatus orpsThreshold_GT_16s(const Orp16s* pSrc, Orp16s* pDst, int len, Orp16s level);
OrpStatus orpsThreshold_GT_16s_I(Orp16s* pSrcDst, int len, Orp16s level);
OrpStatus orpsThreshold_GT_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len, Orp16s level);
OrpStatus orpsThreshold_GT_16sc_I(Orp16sc* pSrcDst, int len, Orp16s level);
OrpStatus orpsThreshold_GT_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f level);
OrpStatus orpsThreshold_GT_32f_I(Orp32f* pSrcDst, int len, Orp32f level);
OrpStatus orpsThreshold_GT_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len, Orp32f level);
OrpStatus orpsThreshold_GT_32fc_I(Orp32fc* pSrcDst, int len, Orp32f level);
OrpStatus orpsThreshold_GT_32s(const Orp32s* pSrc, Orp32s* pDst, int len, Orp32s level);
OrpStatus orpsThreshold_GT_32s_I(Orp32s* pSrcDst, int len, Orp32s level);
OrpStatus orpsThreshold_GT_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f level);
OrpStatus orpsThreshold_GT_64f_I(Orp64f* pSrcDst, int len, Orp64f level);
OrpStatus orpsThreshold_GT_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len, Orp64f level);
OrpStatus orpsThreshold_GT_64fc_I(Orp64fc* pSrcDst, int len, Orp64f level);
/** @} */

/** @name Threshold LTVal
 *  TODO
 *  @{ */
OrpStatus orpsThreshold_LTVal_16s(const Orp16s* pSrc, Orp16s* pDst, int len, Orp16s level, Orp16s value);
OrpStatus orpsThreshold_LTVal_16s_I(Orp16s* pSrcDst, int len, Orp16s level, Orp16s value);
OrpStatus orpsThreshold_LTVal_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len, Orp16s level, Orp16sc value);
OrpStatus orpsThreshold_LTVal_16sc_I(Orp16sc* pSrcDst, int len, Orp16s level, Orp16sc value);
OrpStatus orpsThreshold_LTVal_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f level, Orp32f value);
OrpStatus orpsThreshold_LTVal_32f_I(Orp32f* pSrcDst, int len, Orp32f level, Orp32f value);
OrpStatus orpsThreshold_LTVal_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len, Orp32f level, Orp32fc value);
OrpStatus orpsThreshold_LTVal_32fc_I(Orp32fc* pSrcDst, int len, Orp32f level, Orp32fc value);
OrpStatus orpsThreshold_LTVal_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f level, Orp64f value);
OrpStatus orpsThreshold_LTVal_64f_I(Orp64f* pSrcDst, int len, Orp64f level, Orp64f value);
OrpStatus orpsThreshold_LTVal_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len, Orp64f level, Orp64fc value);
OrpStatus orpsThreshold_LTVal_64fc_I(Orp64fc* pSrcDst, int len, Orp64f level, Orp64fc value);
/** @} */

/** @name Threshold GTVal
 *  TODO
 *  @{ */
OrpStatus orpsThreshold_GTVal_16s(const Orp16s* pSrc, Orp16s* pDst, int len, Orp16s level, Orp16s value);
OrpStatus orpsThreshold_GTVal_16s_I(Orp16s* pSrcDst, int len, Orp16s level, Orp16s value);
OrpStatus orpsThreshold_GTVal_16sc(const Orp16sc* pSrc, Orp16sc* pDst, int len, Orp16s level, Orp16sc value);
OrpStatus orpsThreshold_GTVal_16sc_I(Orp16sc* pSrcDst, int len, Orp16s level, Orp16sc value);
OrpStatus orpsThreshold_GTVal_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f level, Orp32f value);
OrpStatus orpsThreshold_GTVal_32f_I(Orp32f* pSrcDst, int len, Orp32f level, Orp32f value);
OrpStatus orpsThreshold_GTVal_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len, Orp32f level, Orp32fc value);
OrpStatus orpsThreshold_GTVal_32fc_I(Orp32fc* pSrcDst, int len, Orp32f level, Orp32fc value);
OrpStatus orpsThreshold_GTVal_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f level, Orp64f value);
OrpStatus orpsThreshold_GTVal_64f_I(Orp64f* pSrcDst, int len, Orp64f level, Orp64f value);
OrpStatus orpsThreshold_GTVal_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len, Orp64f level, Orp64fc value);
OrpStatus orpsThreshold_GTVal_64fc_I(Orp64fc* pSrcDst, int len, Orp64f level, Orp64fc value);
/** @} */

/** @name Threshold LTValGTVal
 *  TODO
 *  @{ */
OrpStatus orpsThreshold_LTValGTVal_16s(const Orp16s* pSrc, Orp16s* pDst, int len, Orp16s levelLT, Orp16s valueLT,
                                       Orp16s levelGT, Orp16s valueGT);
OrpStatus orpsThreshold_LTValGTVal_16s_I(Orp16s* pSrcDst, int len, Orp16s levelLT, Orp16s valueLT, Orp16s levelGT,
                                         Orp16s valueGT);
OrpStatus orpsThreshold_LTValGTVal_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f levelLT, Orp32f valueLT,
                                       Orp32f levelGT, Orp32f valueGT);
OrpStatus orpsThreshold_LTValGTVal_32f_I(Orp32f* pSrcDst, int len, Orp32f levelLT, Orp32f valueLT, Orp32f levelGT,
                                         Orp32f valueGT);
OrpStatus orpsThreshold_LTValGTVal_32s(const Orp32s* pSrc, Orp32s* pDst, int len, Orp32s levelLT, Orp32s valueLT,
                                       Orp32s levelGT, Orp32s valueGT);
OrpStatus orpsThreshold_LTValGTVal_32s_I(Orp32s* pSrcDst, int len, Orp32s levelLT, Orp32s valueLT, Orp32s levelGT,
                                         Orp32s valueGT);
OrpStatus orpsThreshold_LTValGTVal_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f levelLT, Orp64f valueLT,
                                       Orp64f levelGT, Orp64f valueGT);
OrpStatus orpsThreshold_LTValGTVal_64f_I(Orp64f* pSrcDst, int len, Orp64f levelLT, Orp64f valueLT, Orp64f levelGT,
                                         Orp64f valueGT);
/** @} */

/** @name Threshold LTAbs
 *  TODO
 *  @{ */
OrpStatus orpsThreshold_LTAbs_16s(const Orp16s* pSrc, Orp16s* pDst, int len, Orp16s level);
OrpStatus orpsThreshold_LTAbs_16s_I(Orp16s* pSrcDst, int len, Orp16s level);
OrpStatus orpsThreshold_LTAbs_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f level);
OrpStatus orpsThreshold_LTAbs_32f_I(Orp32f* pSrcDst, int len, Orp32f level);
OrpStatus orpsThreshold_LTAbs_32s(const Orp32s* pSrc, Orp32s* pDst, int len, Orp32s level);
OrpStatus orpsThreshold_LTAbs_32s_I(Orp32s* pSrcDst, int len, Orp32s level);
OrpStatus orpsThreshold_LTAbs_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f level);
OrpStatus orpsThreshold_LTAbs_64f_I(Orp64f* pSrcDst, int len, Orp64f level);
/** @} */

/** @name Threshold GTAbs
 *  TODO
 *  @{ */
OrpStatus orpsThreshold_GTAbs_16s(const Orp16s* pSrc, Orp16s* pDst, int len, Orp16s level);
OrpStatus orpsThreshold_GTAbs_16s_I(Orp16s* pSrcDst, int len, Orp16s level);
OrpStatus orpsThreshold_GTAbs_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f level);
OrpStatus orpsThreshold_GTAbs_32f_I(Orp32f* pSrcDst, int len, Orp32f level);
OrpStatus orpsThreshold_GTAbs_32s(const Orp32s* pSrc, Orp32s* pDst, int len, Orp32s level);
OrpStatus orpsThreshold_GTAbs_32s_I(Orp32s* pSrcDst, int len, Orp32s level);
OrpStatus orpsThreshold_GTAbs_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f level);
OrpStatus orpsThreshold_GTAbs_64f_I(Orp64f* pSrcDst, int len, Orp64f level);
/** @} */

/** @name Threshold LTInv
 *  TODO
 *  @{ */
OrpStatus orpsThreshold_LTInv_32f(const Orp32f* pSrc, Orp32f* pDst, int len, Orp32f level);
OrpStatus orpsThreshold_LTInv_32f_I(Orp32f* pSrcDst, int len, Orp32f level);
OrpStatus orpsThreshold_LTInv_32fc(const Orp32fc* pSrc, Orp32fc* pDst, int len, Orp32f level);
OrpStatus orpsThreshold_LTInv_32fc_I(Orp32fc* pSrcDst, int len, Orp32f level);
OrpStatus orpsThreshold_LTInv_64f(const Orp64f* pSrc, Orp64f* pDst, int len, Orp64f level);
OrpStatus orpsThreshold_LTInv_64f_I(Orp64f* pSrcDst, int len, Orp64f level);
OrpStatus orpsThreshold_LTInv_64fc(const Orp64fc* pSrc, Orp64fc* pDst, int len, Orp64f level);
OrpStatus orpsThreshold_LTInv_64fc_I(Orp64fc* pSrcDst, int len, Orp64f level);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
