// Products and expansion of packed spectra.
#include "cases.h"
#include "plain_packed.h"

namespace {

using bench::Case;
using bench::Data;
using bench::Kind;

#define TO_FULL(From, To) data.a<From>(), data.d<To>(), n
#define IN_PLACE(T) data.d<T>(), n

const Case kCases[] = {
    {"MulPack_32f", Kind::kSignedFloat, 4, WORK(orpsMulPack_32f(PAIR(Orp32f))), WORK(plain::mulPack32f(PAIR(Orp32f))),
     nullptr, 1e-5},
    {"MulPack_64f", Kind::kSignedDouble, 8, WORK(orpsMulPack_64f(PAIR(Orp64f))), WORK(plain::mulPack64f(PAIR(Orp64f))),
     nullptr, 1e-13},
    {"MulPack_16s_Sfs 15", Kind::kInt16, 2, WORK(orpsMulPack_16s_Sfs(PAIR(Orp16s), 15)),
     WORK(plain::mulPack16s(PAIR(Orp16s), 15))},
    {"MulPerm_32f", Kind::kSignedFloat, 4, WORK(orpsMulPerm_32f(PAIR(Orp32f))), WORK(plain::mulPerm32f(PAIR(Orp32f))),
     nullptr, 1e-5},
    {"MulPackConj_32f_I", Kind::kSignedFloat, 4, WORK(orpsMulPackConj_32f_I(UNARY(Orp32f))),
     WORK(plain::mulPackConj32f(UNARY(Orp32f))), nullptr, 1e-5},
    {"ConjPack_32fc", Kind::kSignedFloat, 8, WORK(orpsConjPack_32fc(TO_FULL(Orp32f, Orp32fc))),
     WORK(plain::conjPack32fc(TO_FULL(Orp32f, Orp32fc)))},
    {"ConjPack_64fc", Kind::kSignedDouble, 16, WORK(orpsConjPack_64fc(TO_FULL(Orp64f, Orp64fc))),
     WORK(plain::conjPack64fc(TO_FULL(Orp64f, Orp64fc)))},
    {"ConjPack_16sc", Kind::kInt16, 4, WORK(orpsConjPack_16sc(TO_FULL(Orp16s, Orp16sc))),
     WORK(plain::conjPack16sc(TO_FULL(Orp16s, Orp16sc)))},
    {"ConjCcs_32fc", Kind::kSignedFloat, 8, WORK(orpsConjCcs_32fc(TO_FULL(Orp32f, Orp32fc))),
     WORK(plain::conjCcs32fc(TO_FULL(Orp32f, Orp32fc)))},
    {"ConjCcs_32fc_I", Kind::kSignedFloat, 8, WORK(orpsConjCcs_32fc_I(IN_PLACE(Orp32fc))),
     WORK(plain::conjCcs32fcInPlace(IN_PLACE(Orp32fc)))},
};

}  // namespace

std::span<const Case> bench::packedCases() { return kCases; }
