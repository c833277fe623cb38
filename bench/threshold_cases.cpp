// Thresholds, at levels that about half of the elements are beyond, and one that none is.
#include "cases.h"
#include "plain_threshold.h"

namespace {

using bench::Case;
using bench::Data;
using bench::Kind;

const Case kCases[] = {
    {"Threshold_LT_16s", Kind::kInt16, 2, WORK(orpsThreshold_LT_16s(UNARY(Orp16s), 99)),
     WORK(plain::thresholdLT16s(UNARY(Orp16s), 99))},
    {"Threshold_LT_32f", Kind::kSignedFloat, 4, WORK(orpsThreshold_LT_32f(UNARY(Orp32f), 1)),
     WORK(plain::thresholdLT32f(UNARY(Orp32f), 1))},
    {"Threshold_GT_32f", Kind::kSignedFloat, 4, WORK(orpsThreshold_GT_32f(UNARY(Orp32f), 1)),
     WORK(plain::thresholdGT32f(UNARY(Orp32f), 1))},
    {"Threshold_LTVal_32f", Kind::kSignedFloat, 4, WORK(orpsThreshold_LTVal_32f(UNARY(Orp32f), 1, -1)),
     WORK(plain::thresholdLTVal32f(UNARY(Orp32f), 1, -1))},
    {"Threshold_LTValGTVal_32f", Kind::kSignedFloat, 4, WORK(orpsThreshold_LTValGTVal_32f(UNARY(Orp32f), -3, -1, 3, 1)),
     WORK(plain::thresholdLTValGTVal32f(UNARY(Orp32f), -3, -1, 3, 1))},
    {"Threshold_LTAbs_32f", Kind::kSignedFloat, 4, WORK(orpsThreshold_LTAbs_32f(UNARY(Orp32f), 4)),
     WORK(plain::thresholdLTAbs32f(UNARY(Orp32f), 4))},
    {"Threshold_LTInv_32f", Kind::kSignedFloat, 4, WORK(orpsThreshold_LTInv_32f(UNARY(Orp32f), 4)),
     WORK(plain::thresholdLTInv32f(UNARY(Orp32f), 4))},
    {"Threshold_LTInv_64f", Kind::kSignedDouble, 8, WORK(orpsThreshold_LTInv_64f(UNARY(Orp64f), 4)),
     WORK(plain::thresholdLTInv64f(UNARY(Orp64f), 4))},
    {"Threshold_GT_16sc", Kind::kInt16, 4, WORK(orpsThreshold_GT_16sc(UNARY(Orp16sc), 20000)),
     WORK(plain::thresholdGT16sc(UNARY(Orp16sc), 20000))},
    {"Threshold_LT_32fc", Kind::kSignedFloat, 8, WORK(orpsThreshold_LT_32fc(UNARY(Orp32fc), 5)),
     WORK(plain::thresholdLT32fc(UNARY(Orp32fc), 5)), nullptr, 1e-5},
    {"Threshold_GT_32fc, none above", Kind::kSignedFloat, 8, WORK(orpsThreshold_GT_32fc(UNARY(Orp32fc), 12)),
     WORK(plain::thresholdLT32fc(UNARY(Orp32fc), 0)), nullptr, 1e-5},
    {"Threshold_LTVal_32fc", Kind::kSignedFloat, 8, WORK(orpsThreshold_LTVal_32fc(UNARY(Orp32fc), 5, {1, 2})),
     WORK(plain::thresholdLTVal32fc(UNARY(Orp32fc), 5, {1, 2}))},
    {"Threshold_LTInv_32fc", Kind::kSignedFloat, 8, WORK(orpsThreshold_LTInv_32fc(UNARY(Orp32fc), 5)),
     WORK(plain::thresholdLTInv32fc(UNARY(Orp32fc), 5)), nullptr, 1e-5},
};

}  // namespace

std::span<const Case> bench::thresholdCases() { return kCases; }
