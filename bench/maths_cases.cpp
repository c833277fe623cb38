// Vector maths: roots, exponentials, logarithms, angles and polar form.
#include <volk/volk.h>

#include "cases.h"
#include "plain_maths.h"

namespace {

using bench::Case;
using bench::Data;
using bench::Kind;
using sleef::Best;
using sleef::Fast;

const lv_32fc_t* volkComplex(const Orp32fc* p) { return reinterpret_cast<const lv_32fc_t*>(p); }

// A vector of complex numbers and one of parts; the same of results, one vector behind the other.
#define TO_PARTS data.a<Orp32fc>(), data.d<Orp32f>(), n
#define TO_TWO_PARTS data.a<Orp32fc>(), data.d<Orp32f>(), data.d<Orp32f>() + n, n
#define FROM_PARTS data.a<Orp32f>(), data.b<Orp32f>(), data.d<Orp32fc>(), n

const Case kCases[] = {
    {"Sqrt_32f", Kind::kFloat, 4, WORK(orpsSqrt_32f(UNARY(Orp32f))), WORK(plain::sqrt32f(UNARY(Orp32f))),
     WORK(volk_32f_sqrt_32f(data.d<Orp32f>(), data.a<Orp32f>(), static_cast<unsigned>(n))), 1e-6,
     WORK(Best::sqrt(UNARY(Orp32f))), WORK(Fast::sqrt(UNARY(Orp32f)))},
    {"Sqrt_64f", Kind::kDouble, 8, WORK(orpsSqrt_64f(UNARY(Orp64f))), WORK(plain::sqrt64f(UNARY(Orp64f))), nullptr,
     1e-15, WORK(Best::sqrt(UNARY(Orp64f))), WORK(Fast::sqrt(UNARY(Orp64f)))},
    {"Sqrt_32fc", Kind::kSignedFloat, 8, WORK(orpsSqrt_32fc(UNARY(Orp32fc))), WORK(plain::sqrt32fc(UNARY(Orp32fc))),
     nullptr, 1e-6},
    {"Sqrt_16s_Sfs -7", Kind::kSmallNonzero16, 2, WORK(orpsSqrt_16s_Sfs(UNARY(Orp16s), -7)),
     WORK(plain::sqrt16s(UNARY(Orp16s), -7))},
    {"Cubrt_32f", Kind::kSignedFloat, 4, WORK(orpsCubrt_32f(UNARY(Orp32f))), WORK(plain::cubrt32f(UNARY(Orp32f))),
     nullptr, 1e-6, WORK(Best::cubrt(UNARY(Orp32f))), WORK(Fast::cubrt(UNARY(Orp32f)))},
    {"Exp_32f", Kind::kSignedFloat, 4, WORK(orpsExp_32f(UNARY(Orp32f))), WORK(plain::exp32f(UNARY(Orp32f))), nullptr,
     1e-6, WORK(Best::exp(UNARY(Orp32f)))},
    {"Exp_64f", Kind::kSignedDouble, 8, WORK(orpsExp_64f(UNARY(Orp64f))), WORK(plain::exp64f(UNARY(Orp64f))), nullptr,
     1e-15, WORK(Best::exp(UNARY(Orp64f)))},
    {"Exp_16s_Sfs -2", Kind::kTiny16, 2, WORK(orpsExp_16s_Sfs(UNARY(Orp16s), -2)),
     WORK(plain::exp16s(UNARY(Orp16s), -2))},
    {"Ln_32f", Kind::kFloat, 4, WORK(orpsLn_32f(UNARY(Orp32f))), WORK(plain::ln32f(UNARY(Orp32f))), nullptr, 1e-6,
     WORK(Best::ln(UNARY(Orp32f))), WORK(Fast::ln(UNARY(Orp32f)))},
    {"Ln_64f", Kind::kDouble, 8, WORK(orpsLn_64f(UNARY(Orp64f))), WORK(plain::ln64f(UNARY(Orp64f))), nullptr, 1e-15,
     WORK(Best::ln(UNARY(Orp64f))), WORK(Fast::ln(UNARY(Orp64f)))},
    {"Ln_32s_Sfs -16", Kind::kSmallNonzero16, 4, WORK(orpsLn_32s_Sfs(UNARY(Orp32s), -16)),
     WORK(plain::ln32s(UNARY(Orp32s), -16))},
    {"Arctan_32f", Kind::kSignedFloat, 4, WORK(orpsArctan_32f(UNARY(Orp32f))), WORK(plain::arctan32f(UNARY(Orp32f))),
     nullptr, 1e-6, WORK(Best::arctan(UNARY(Orp32f))), WORK(Fast::arctan(UNARY(Orp32f)))},
    {"Arctan_64f", Kind::kSignedDouble, 8, WORK(orpsArctan_64f(UNARY(Orp64f))), WORK(plain::arctan64f(UNARY(Orp64f))),
     nullptr, 1e-15, WORK(Best::arctan(UNARY(Orp64f))), WORK(Fast::arctan(UNARY(Orp64f)))},
    {"Phase_32f", Kind::kSignedFloat, 4, WORK(orpsPhase_32f(PAIR(Orp32f))), WORK(plain::phase32f(PAIR(Orp32f))),
     nullptr, 1e-6, WORK(Best::phase(PAIR(Orp32f))), WORK(Fast::phase(PAIR(Orp32f)))},
    {"Phase_32fc", Kind::kSignedFloat, 4, WORK(orpsPhase_32fc(TO_PARTS)), WORK(plain::phase32fc(TO_PARTS)),
     WORK(volk_32fc_s32f_atan2_32f(data.d<Orp32f>(), volkComplex(data.a<Orp32fc>()), 1, static_cast<unsigned>(n))),
     1e-6, WORK(Best::phase(TO_PARTS)), WORK(Fast::phase(TO_PARTS))},
    {"Magnitude_32f", Kind::kSignedFloat, 4, WORK(orpsMagnitude_32f(PAIR(Orp32f))),
     WORK(plain::magnitude32f(PAIR(Orp32f))), nullptr, 1e-6, WORK(Best::magnitude(PAIR(Orp32f))),
     WORK(Fast::magnitude(PAIR(Orp32f)))},
    {"Magnitude_32fc", Kind::kSignedFloat, 4, WORK(orpsMagnitude_32fc(TO_PARTS)), WORK(plain::magnitude32fc(TO_PARTS)),
     WORK(volk_32fc_magnitude_32f(data.d<Orp32f>(), volkComplex(data.a<Orp32fc>()), static_cast<unsigned>(n))), 1e-6,
     WORK(Best::magnitude(TO_PARTS)), WORK(Fast::magnitude(TO_PARTS))},
    {"Magnitude_64f", Kind::kSignedDouble, 8, WORK(orpsMagnitude_64f(PAIR(Orp64f))),
     WORK(plain::magnitude64f(PAIR(Orp64f))), nullptr, 1e-15, WORK(Best::magnitude(PAIR(Orp64f))),
     WORK(Fast::magnitude(PAIR(Orp64f)))},
    {"Magnitude_16sc_Sfs 1", Kind::kInt16, 2, WORK(orpsMagnitude_16sc_Sfs(data.a<Orp16sc>(), data.d<Orp16s>(), n, 1)),
     WORK(plain::magnitude16sc(data.a<Orp16sc>(), data.d<Orp16s>(), n, 1))},
    {"CartToPolar_32fc", Kind::kSignedFloat, 8, WORK(orpsCartToPolar_32fc(TO_TWO_PARTS)),
     WORK(plain::cartToPolar32fc(TO_TWO_PARTS)), nullptr, 1e-6, WORK(Best::cartToPolar(TO_TWO_PARTS)),
     WORK(Fast::cartToPolar(TO_TWO_PARTS))},
    {"PolarToCart_32fc", Kind::kSignedFloat, 8, WORK(orpsPolarToCart_32fc(FROM_PARTS)),
     WORK(plain::polarToCart32fc(FROM_PARTS)), nullptr, 2e-6, WORK(Best::polarToCart(FROM_PARTS)),
     WORK(Fast::polarToCart(FROM_PARTS))},
};

}  // namespace

std::span<const bench::Case> bench::mathsCases() { return kCases; }
