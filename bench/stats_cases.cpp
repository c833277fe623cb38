// Reductions, extrema, counts and searches.
#include <volk/volk.h>

#include <array>
#include <cmath>

#include "cases.h"
#include "plain_stats.h"

namespace {

using bench::Case;
using bench::Data;
using bench::Kind;
using bench::Work;

// A result of one or a few numbers, in place of a vector.
Case reduction(const char* name, Kind kind, size_t sourceBytes, size_t resultBytes, Work library, Work plain,
               Work volk = nullptr, double tolerance = 0) {
  return {name, kind, sourceBytes, library, plain, volk, tolerance, nullptr, nullptr, resultBytes};
}

// An index stands behind two values of any type.
constexpr size_t kIndexBytes = 24;
int* index(const Data& data) { return data.d<int>() + 4; }

constexpr int kTableLen = 1000;
const std::array<Orp16u, kTableLen> kTable = [] {
  std::array<Orp16u, kTableLen> table{};
  for (size_t i = 0; i < table.size(); ++i) table[i] = static_cast<Orp16u>(65 * i);
  return table;
}();
Orp16u* nearest(const Data& data) { return data.d<Orp16u>(); }
int* nearestIndexes(const Data& data) { return data.d<int>() + Data::kElements / 2; }

#define TWO_VECTORS(T) data.a<T>(), data.b<T>(), n, data.d<T>()
#define VALUE(T) data.a<T>(), n, data.d<T>()
#define WITH_INDEX(T) VALUE(T), index(data)
#define BOTH(T) VALUE(T), data.d<T>() + 1
#define BOTH_WITH_INDEX(T) VALUE(T), index(data), data.d<T>() + 1, index(data) + 1
#define TO_INT data.a<Orp32s>(), n, data.d<int>()
#define TO_FLOAT(T) data.a<T>(), n, data.d<Orp32f>()
#define NEAREST data.a<Orp16u>(), nearest(data), nearestIndexes(data), n, kTable.data(), kTableLen

void volkMaxIndx(const Data& data, int n) {
  uint32_t at;
  volk_32f_index_max_32u(&at, data.a<float>(), static_cast<uint32_t>(n));
  *data.d<float>() = data.a<float>()[at];
  *index(data) = static_cast<int>(at);
}

// VOLK divides by the number of elements, not by one less: the tolerance covers that.
void volkStdDev(const Data& data, int n) {
  float mean;
  volk_32f_stddev_and_mean_32f_x2(data.d<float>(), &mean, data.a<float>(), static_cast<uint32_t>(n));
}

void volkNormL2(const Data& data, int n) {
  volk_32f_x2_dot_prod_32f(data.d<float>(), data.a<float>(), data.a<float>(), static_cast<uint32_t>(n));
  *data.d<float>() = std::sqrt(*data.d<float>());
}

#define VOLK_DOT(kernel, T) WORK(kernel(data.d<T>(), data.a<T>(), data.b<T>(), static_cast<uint32_t>(n)))

const Case kReductions[] = {
    reduction("Sum_32f, fast", Kind::kFloat, 4, 4, WORK(orpsSum_32f(VALUE(Orp32f), 1)),
              WORK(plain::sum32f(VALUE(Orp32f))),
              WORK(volk_32f_accumulator_s32f(data.d<float>(), data.a<float>(), static_cast<uint32_t>(n))), 1e-5),
    reduction("Sum_32f, accurate", Kind::kFloat, 4, 4, WORK(orpsSum_32f(VALUE(Orp32f), 2)),
              WORK(plain::sumInDouble32f(VALUE(Orp32f))), nullptr, 1e-6),
    reduction("Sum_64f", Kind::kDouble, 8, 8, WORK(orpsSum_64f(VALUE(Orp64f))), WORK(plain::sum64f(VALUE(Orp64f))),
              nullptr, 1e-13),
    reduction("Sum_32fc, fast", Kind::kFloat, 8, 8, WORK(orpsSum_32fc(VALUE(Orp32fc), 1)),
              WORK(plain::sum32fc(VALUE(Orp32fc))),
              WORK(volk_32fc_accumulator_s32fc(data.d<lv_32fc_t>(), data.a<lv_32fc_t>(), static_cast<uint32_t>(n))),
              1e-5),
    reduction("Sum_16s32s_Sfs 0", Kind::kTiny16, 2, 4,
              WORK(orpsSum_16s32s_Sfs(data.a<Orp16s>(), n, data.d<Orp32s>(), 0)),
              WORK(plain::sum16s32s(data.a<Orp16s>(), n, data.d<Orp32s>()))),
    reduction("Sum_32s_Sfs 0", Kind::kInt16, 4, 4, WORK(orpsSum_32s_Sfs(VALUE(Orp32s), 0)),
              WORK(plain::sum32s(VALUE(Orp32s)))),
    reduction("Mean_32f, accurate", Kind::kFloat, 4, 4, WORK(orpsMean_32f(VALUE(Orp32f), 2)),
              WORK(plain::mean32f(VALUE(Orp32f))), nullptr, 1e-6),
    reduction("StdDev_32f, fast", Kind::kFloat, 4, 4, WORK(orpsStdDev_32f(VALUE(Orp32f), 1)),
              WORK(plain::stdDev32f(VALUE(Orp32f))), volkStdDev, 1e-3),
    reduction("StdDev_32f, accurate", Kind::kFloat, 4, 4, WORK(orpsStdDev_32f(VALUE(Orp32f), 2)),
              WORK(plain::stdDevInDouble32f(VALUE(Orp32f))), nullptr, 1e-6),
    reduction("StdDev_64f", Kind::kDouble, 8, 8, WORK(orpsStdDev_64f(VALUE(Orp64f))),
              WORK(plain::stdDev64f(VALUE(Orp64f))), nullptr, 1e-9),
    reduction("SumLn_32f", Kind::kFloat, 4, 4, WORK(orpsSumLn_32f(VALUE(Orp32f))), WORK(plain::sumLn32f(VALUE(Orp32f))),
              nullptr, 1e-4),
    reduction("SumLn_64f", Kind::kDouble, 8, 8, WORK(orpsSumLn_64f(VALUE(Orp64f))),
              WORK(plain::sumLn64f(VALUE(Orp64f))), nullptr, 1e-12),
    reduction("Norm_Inf_32f", Kind::kSignedFloat, 4, 4, WORK(orpsNorm_Inf_32f(VALUE(Orp32f))),
              WORK(plain::normInf32f(VALUE(Orp32f)))),
    reduction("Norm_Inf_16s32s_Sfs 0", Kind::kInt16, 2, 4,
              WORK(orpsNorm_Inf_16s32s_Sfs(data.a<Orp16s>(), n, data.d<Orp32s>(), 0)),
              WORK(plain::normInf16s(data.a<Orp16s>(), n, data.d<Orp32s>()))),
    reduction("Norm_L1_32f", Kind::kSignedFloat, 4, 4, WORK(orpsNorm_L1_32f(VALUE(Orp32f))),
              WORK(plain::normL132f(VALUE(Orp32f))), nullptr, 1e-5),
    reduction("Norm_L2_32f", Kind::kSignedFloat, 4, 4, WORK(orpsNorm_L2_32f(VALUE(Orp32f))),
              WORK(plain::normL232f(VALUE(Orp32f))), volkNormL2, 1e-5),
    reduction("Norm_L2_64f", Kind::kSignedDouble, 8, 8, WORK(orpsNorm_L2_64f(VALUE(Orp64f))),
              WORK(plain::normL264f(VALUE(Orp64f))), nullptr, 1e-13),
    reduction("NormDiff_L2_32f", Kind::kSignedFloat, 4, 4,
              WORK(orpsNormDiff_L2_32f(data.a<Orp32f>(), data.b<Orp32f>() + 16, n, data.d<Orp32f>())),
              WORK(plain::normDiffL232f(data.a<Orp32f>(), data.b<Orp32f>() + 16, n, data.d<Orp32f>())), nullptr, 1e-5),
    reduction("DotProd_32f", Kind::kFloat, 4, 4, WORK(orpsDotProd_32f(TWO_VECTORS(Orp32f))),
              WORK(plain::dotProd32f(TWO_VECTORS(Orp32f))), VOLK_DOT(volk_32f_x2_dot_prod_32f, float), 1e-5),
    reduction("DotProd_64f", Kind::kDouble, 8, 8, WORK(orpsDotProd_64f(TWO_VECTORS(Orp64f))),
              WORK(plain::dotProd64f(TWO_VECTORS(Orp64f))), nullptr, 1e-13),
    reduction("DotProd_32fc", Kind::kSignedFloat, 8, 8, WORK(orpsDotProd_32fc(TWO_VECTORS(Orp32fc))),
              WORK(plain::dotProd32fc(TWO_VECTORS(Orp32fc))), VOLK_DOT(volk_32fc_x2_dot_prod_32fc, lv_32fc_t), 1e-3),
    reduction("DotProd_16s64s", Kind::kInt16, 2, 8,
              WORK(orpsDotProd_16s64s(data.a<Orp16s>(), data.b<Orp16s>(), n, data.d<Orp64s>())),
              WORK(plain::dotProd16s64s(data.a<Orp16s>(), data.b<Orp16s>(), n, data.d<Orp64s>()))),
};

const Case kExtrema[] = {
    reduction("Max_16s", Kind::kInt16, 2, 2, WORK(orpsMax_16s(VALUE(Orp16s))), WORK(plain::max16s(VALUE(Orp16s)))),
    reduction("Max_32s", Kind::kInt16, 4, 4, WORK(orpsMax_32s(VALUE(Orp32s))), WORK(plain::max32s(VALUE(Orp32s)))),
    reduction("Max_32f", Kind::kSignedFloat, 4, 4, WORK(orpsMax_32f(VALUE(Orp32f))),
              WORK(plain::max32f(VALUE(Orp32f)))),
    reduction("Max_64f", Kind::kSignedDouble, 8, 8, WORK(orpsMax_64f(VALUE(Orp64f))),
              WORK(plain::max64f(VALUE(Orp64f)))),
    reduction("MaxAbs_16s", Kind::kInt16, 2, 2, WORK(orpsMaxAbs_16s(VALUE(Orp16s))),
              WORK(plain::maxAbs16s(VALUE(Orp16s)))),
    reduction("MaxIndx_16s", Kind::kInt16, 2, kIndexBytes, WORK(orpsMaxIndx_16s(WITH_INDEX(Orp16s))),
              WORK(plain::maxIndx16s(WITH_INDEX(Orp16s)))),
    reduction("MaxIndx_32f", Kind::kSignedFloat, 4, kIndexBytes, WORK(orpsMaxIndx_32f(WITH_INDEX(Orp32f))),
              WORK(plain::maxIndx32f(WITH_INDEX(Orp32f))), volkMaxIndx),
    reduction("MinMax_8u", Kind::kBytes, 1, 2, WORK(orpsMinMax_8u(BOTH(Orp8u))), WORK(plain::minMax8u(BOTH(Orp8u)))),
    reduction("MinMax_32f", Kind::kSignedFloat, 4, 8, WORK(orpsMinMax_32f(BOTH(Orp32f))),
              WORK(plain::minMax32f(BOTH(Orp32f)))),
    reduction("MinMaxIndx_32f", Kind::kSignedFloat, 4, kIndexBytes, WORK(orpsMinMaxIndx_32f(BOTH_WITH_INDEX(Orp32f))),
              WORK(plain::minMaxIndx32f(BOTH_WITH_INDEX(Orp32f)))),
    {"MaxEvery_16u", Kind::kInt16, 2, WORK(orpsMaxEvery_16u(PAIR(Orp16u))), WORK(plain::maxEvery16u(PAIR(Orp16u)))},
    {"MaxEvery_32f", Kind::kSignedFloat, 4, WORK(orpsMaxEvery_32f(PAIR(Orp32f))),
     WORK(plain::maxEvery32f(PAIR(Orp32f))), VOLK_PAIR(volk_32f_x2_max_32f, Orp32f)},
    {"MaxEvery_64f", Kind::kSignedDouble, 8, WORK(orpsMaxEvery_64f(PAIR(Orp64f))),
     WORK(plain::maxEvery64f(PAIR(Orp64f))), VOLK_PAIR(volk_64f_x2_max_64f, Orp64f)},
    reduction("CountInRange_32s", Kind::kInt16, 4, 4, WORK(orpsCountInRange_32s(TO_INT, -999999999, 999999999)),
              WORK(plain::countInRange32s(TO_INT, -999999999, 999999999))),
    reduction("ZeroCrossing_16s32f 0", Kind::kTiny16, 2, 4, WORK(orpsZeroCrossing_16s32f(TO_FLOAT(Orp16s), 0)),
              WORK(plain::signChanges16s(TO_FLOAT(Orp16s)))),
    reduction("ZeroCrossing_32f 0", Kind::kSignedFloat, 4, 4, WORK(orpsZeroCrossing_32f(TO_FLOAT(Orp32f), 0)),
              WORK(plain::signChanges32f(TO_FLOAT(Orp32f)))),
    reduction("ZeroCrossing_32f 1", Kind::kSignedFloat, 4, 4, WORK(orpsZeroCrossing_32f(TO_FLOAT(Orp32f), 1)),
              WORK(plain::crossings32f(TO_FLOAT(Orp32f)))),
    {"FindNearest_16u, 1000 in the table", Kind::kInt16, 2, WORK(orpsFindNearest_16u(NEAREST)),
     WORK(plain::findNearest16u(NEAREST))},
};

}  // namespace

std::span<const Case> bench::reductionCases() { return kReductions; }
std::span<const Case> bench::extremaCases() { return kExtrema; }
