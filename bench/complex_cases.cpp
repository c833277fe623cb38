// Parts and powers of complex vectors.
#include <volk/volk.h>

#include "cases.h"
#include "plain_complex.h"

namespace {

using bench::Case;
using bench::Data;
using bench::Kind;

const lv_32fc_t* volkSource(const Data& data) { return reinterpret_cast<const lv_32fc_t*>(data.first); }
lv_32fc_t* volkResult(const Data& data) { return reinterpret_cast<lv_32fc_t*>(data.result); }

#define LENGTH static_cast<unsigned>(n)
#define FROM_PAIRS(From, To) data.a<From>(), data.d<To>(), n
#define FROM_PARTS(From, To) data.a<From>(), data.b<From>(), data.d<To>(), n
#define TO_PARTS(From, To) data.a<From>(), data.d<To>(), data.d<To>() + n, n

const Case kCases[] = {
    {"Conj_32fc", Kind::kSignedFloat, 8, WORK(orpsConj_32fc(UNARY(Orp32fc))), WORK(plain::conj32fc(UNARY(Orp32fc))),
     WORK(volk_32fc_conjugate_32fc(volkResult(data), volkSource(data), LENGTH))},
    {"Real_32fc", Kind::kSignedFloat, 4, WORK(orpsReal_32fc(FROM_PAIRS(Orp32fc, Orp32f))),
     WORK(plain::real32fc(FROM_PAIRS(Orp32fc, Orp32f))),
     WORK(volk_32fc_deinterleave_real_32f(data.d<Orp32f>(), volkSource(data), LENGTH))},
    {"RealToCplx_32f", Kind::kSignedFloat, 8, WORK(orpsRealToCplx_32f(FROM_PARTS(Orp32f, Orp32fc))),
     WORK(plain::realToCplx32f(FROM_PARTS(Orp32f, Orp32fc))),
     WORK(volk_32f_x2_interleave_32fc(volkResult(data), data.a<Orp32f>(), data.b<Orp32f>(), LENGTH))},
    {"CplxToReal_32fc", Kind::kSignedFloat, 8, WORK(orpsCplxToReal_32fc(TO_PARTS(Orp32fc, Orp32f))),
     WORK(plain::cplxToReal32fc(TO_PARTS(Orp32fc, Orp32f))),
     WORK(volk_32fc_deinterleave_32f_x2(data.d<Orp32f>(), data.d<Orp32f>() + n, volkSource(data), LENGTH))},
    {"PowerSpectr_32fc", Kind::kSignedFloat, 4, WORK(orpsPowerSpectr_32fc(FROM_PAIRS(Orp32fc, Orp32f))),
     WORK(plain::power32fc(FROM_PAIRS(Orp32fc, Orp32f))),
     WORK(volk_32fc_magnitude_squared_32f(data.d<Orp32f>(), volkSource(data), LENGTH)), 1e-6},
    {"PowerSpectr_32f", Kind::kSignedFloat, 4, WORK(orpsPowerSpectr_32f(FROM_PARTS(Orp32f, Orp32f))),
     WORK(plain::power32f(FROM_PARTS(Orp32f, Orp32f))), nullptr, 1e-6},
    {"PowerSpectr_16sc32f", Kind::kInt16, 4, WORK(orpsPowerSpectr_16sc32f(FROM_PAIRS(Orp16sc, Orp32f))),
     WORK(plain::power16sc32f(FROM_PAIRS(Orp16sc, Orp32f)))},
    {"PowerSpectr_16sc_Sfs 16", Kind::kInt16, 2, WORK(orpsPowerSpectr_16sc_Sfs(FROM_PAIRS(Orp16sc, Orp16s), 16)),
     WORK(plain::power16sc(FROM_PAIRS(Orp16sc, Orp16s), 16))},
    {"MagSquared_32sc32s_Sfs 32", Kind::kBytes, 4, WORK(orpsMagSquared_32sc32s_Sfs(FROM_PAIRS(Orp32sc, Orp32s), 32)),
     WORK(plain::magSquared32sc(FROM_PAIRS(Orp32sc, Orp32s), 32))},
};

}  // namespace

std::span<const Case> bench::complexCases() { return kCases; }
