/** @file
 *  Speech and communications: companding, robust weighting, helpers of speech coders and modems, Viterbi steps.
 */
#ifndef ORPSP_SPEECH_H
#define ORPSP_SPEECH_H

#include "orpsp/speech/cauchy.h"
#include "orpsp/speech/companding.h"
#include "orpsp/speech/signal.h"
#include "orpsp/speech/viterbi.h"

#endif
