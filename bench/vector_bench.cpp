// Arithmetic and data movement against plain loops and VOLK.
#include <volk/volk.h>

#include "compare.h"
#include "orpsp.h"
#include "plain.h"

namespace {

using bench::Case;
using bench::Data;
using bench::Kind;

// The three implementations of a case: the library's function `orps<name>`, the plain loop, and VOLK's kernel or
// nothing. `args` are the arguments after or around the vectors, written with `n` for the length.
#define WORK(...) [](const Data& data [[maybe_unused]], int n [[maybe_unused]]) { __VA_ARGS__; }
#define PAIR(T) data.a<T>(), data.b<T>(), data.d<T>(), n
#define UNARY(T) data.a<T>(), data.d<T>(), n
#define CONSTANT(T, val) data.a<T>(), val, data.d<T>(), n
#define VOLK_PAIR(kernel, T) WORK(kernel(data.d<T>(), data.a<T>(), data.b<T>(), static_cast<unsigned>(n)))

lv_32fc_t* volkComplex(Orp32fc* p) { return reinterpret_cast<lv_32fc_t*>(p); }
const lv_32fc_t* volkComplex(const Orp32fc* p) { return reinterpret_cast<const lv_32fc_t*>(p); }

const Case kCases[] = {
    {"Add_32f", Kind::kFloat, 4, WORK(orpsAdd_32f(PAIR(Orp32f))), WORK(plain::add32f(PAIR(Orp32f))),
     VOLK_PAIR(volk_32f_x2_add_32f, Orp32f)},
    {"Add_64f", Kind::kDouble, 8, WORK(orpsAdd_64f(PAIR(Orp64f))), WORK(plain::add64f(PAIR(Orp64f))),
     VOLK_PAIR(volk_64f_x2_add_64f, Orp64f)},
    {"Add_32fc", Kind::kFloat, 8, WORK(orpsAdd_32fc(PAIR(Orp32fc))), WORK(plain::add32fc(PAIR(Orp32fc))),
     WORK(volk_32fc_x2_add_32fc(volkComplex(data.d<Orp32fc>()), volkComplex(data.a<Orp32fc>()),
                                volkComplex(data.b<Orp32fc>()), static_cast<unsigned>(n)))},
    {"Add_16s", Kind::kInt16, 2, WORK(orpsAdd_16s(PAIR(Orp16s))), WORK(plain::add16s(PAIR(Orp16s)))},
    {"Add_16s_Sfs 1", Kind::kInt16, 2, WORK(orpsAdd_16s_Sfs(PAIR(Orp16s), 1)), WORK(plain::add16s(PAIR(Orp16s), 1))},
    {"Add_16s_Sfs 4", Kind::kInt16, 2, WORK(orpsAdd_16s_Sfs(PAIR(Orp16s), 4)), WORK(plain::add16s(PAIR(Orp16s), 4))},
    {"Add_16s_Sfs -2", Kind::kInt16, 2, WORK(orpsAdd_16s_Sfs(PAIR(Orp16s), -2)), WORK(plain::add16s(PAIR(Orp16s), -2))},
    {"Add_8u_Sfs 0", Kind::kBytes, 1, WORK(orpsAdd_8u_Sfs(PAIR(Orp8u), 0)), WORK(plain::add8u(PAIR(Orp8u), 0))},
    {"Add_8u_Sfs 1", Kind::kBytes, 1, WORK(orpsAdd_8u_Sfs(PAIR(Orp8u), 1)), WORK(plain::add8u(PAIR(Orp8u), 1))},
    {"Add_32s_Sfs 0", Kind::kInt16, 4, WORK(orpsAdd_32s_Sfs(PAIR(Orp32s), 0)), WORK(plain::add32s(PAIR(Orp32s), 0))},
    {"Add_32s_Sfs 3", Kind::kInt16, 4, WORK(orpsAdd_32s_Sfs(PAIR(Orp32s), 3)), WORK(plain::add32s(PAIR(Orp32s), 3))},
    {"Add_64s_Sfs 0", Kind::kInt16, 8, WORK(orpsAdd_64s_Sfs(PAIR(Orp64s), 0)), WORK(plain::add64s(PAIR(Orp64s), 0))},
    {"AddC_32f", Kind::kFloat, 4, WORK(orpsAddC_32f(CONSTANT(Orp32f, 1.5F))),
     WORK(plain::addC32f(CONSTANT(Orp32f, 1.5F)))},
    {"AddC_16s_Sfs 0", Kind::kInt16, 2, WORK(orpsAddC_16s_Sfs(CONSTANT(Orp16s, 999), 0)),
     WORK(plain::addC16s(CONSTANT(Orp16s, 999), 0))},
    {"Sub_32f", Kind::kFloat, 4, WORK(orpsSub_32f(PAIR(Orp32f))), WORK(plain::sub32f(PAIR(Orp32f)))},
    {"Sub_16u_Sfs 0", Kind::kInt16, 2, WORK(orpsSub_16u_Sfs(PAIR(Orp16u), 0)), WORK(plain::sub16u(PAIR(Orp16u), 0))},
    {"Sub_16u_Sfs 2", Kind::kInt16, 2, WORK(orpsSub_16u_Sfs(PAIR(Orp16u), 2)), WORK(plain::sub16u(PAIR(Orp16u), 2))},
    {"Mul_32f", Kind::kFloat, 4, WORK(orpsMul_32f(PAIR(Orp32f))), WORK(plain::mul32f(PAIR(Orp32f))),
     VOLK_PAIR(volk_32f_x2_multiply_32f, Orp32f)},
    {"Mul_64f", Kind::kDouble, 8, WORK(orpsMul_64f(PAIR(Orp64f))), WORK(plain::mul64f(PAIR(Orp64f))),
     VOLK_PAIR(volk_64f_x2_multiply_64f, Orp64f)},
    {"Mul_32fc", Kind::kFloat, 8, WORK(orpsMul_32fc(PAIR(Orp32fc))), WORK(plain::mul32fc(PAIR(Orp32fc))),
     WORK(volk_32fc_x2_multiply_32fc(volkComplex(data.d<Orp32fc>()), volkComplex(data.a<Orp32fc>()),
                                     volkComplex(data.b<Orp32fc>()), static_cast<unsigned>(n))),
     1e-5},
    {"Mul_8u_Sfs 8", Kind::kBytes, 1, WORK(orpsMul_8u_Sfs(PAIR(Orp8u), 8)), WORK(plain::mul8u(PAIR(Orp8u), 8))},
    {"Mul_16s_Sfs 0", Kind::kInt16, 2, WORK(orpsMul_16s_Sfs(PAIR(Orp16s), 0)), WORK(plain::mul16s(PAIR(Orp16s), 0))},
    {"Mul_16s_Sfs 15", Kind::kInt16, 2, WORK(orpsMul_16s_Sfs(PAIR(Orp16s), 15)), WORK(plain::mul16s(PAIR(Orp16s), 15))},
    {"Mul_16u_Sfs 16", Kind::kInt16, 2, WORK(orpsMul_16u_Sfs(PAIR(Orp16u), 16)), WORK(plain::mul16u(PAIR(Orp16u), 16))},
    {"Mul_32s_Sfs 0", Kind::kInt16, 4, WORK(orpsMul_32s_Sfs(PAIR(Orp32s), 0)), WORK(plain::mul32s(PAIR(Orp32s), 0))},
    {"Mul_32s_Sfs 31", Kind::kInt16, 4, WORK(orpsMul_32s_Sfs(PAIR(Orp32s), 31)), WORK(plain::mul32s(PAIR(Orp32s), 31))},
    {"Mul_16sc_Sfs 15", Kind::kInt16, 4, WORK(orpsMul_16sc_Sfs(PAIR(Orp16sc), 15)),
     WORK(plain::mul16sc(PAIR(Orp16sc), 15))},
    {"Mul_32sc_Sfs 31", Kind::kInt16, 8, WORK(orpsMul_32sc_Sfs(PAIR(Orp32sc), 31)),
     WORK(plain::mul32sc(PAIR(Orp32sc), 31))},
    {"MulC_32f", Kind::kFloat, 4, WORK(orpsMulC_32f(CONSTANT(Orp32f, 1.5F))),
     WORK(plain::mulC32f(CONSTANT(Orp32f, 1.5F))),
     WORK(volk_32f_s32f_multiply_32f(data.d<Orp32f>(), data.a<Orp32f>(), 1.5F, static_cast<unsigned>(n)))},
    {"MulC_16s_Sfs 14", Kind::kInt16, 2, WORK(orpsMulC_16s_Sfs(CONSTANT(Orp16s, 9999), 14)),
     WORK(plain::mulC16s(CONSTANT(Orp16s, 9999), 14))},
    {"AddProduct_32f", Kind::kFloat, 4, WORK(orpsAddProduct_32f(PAIR(Orp32f))),
     WORK(plain::addProduct32f(PAIR(Orp32f))), nullptr, 1e-5},
    {"AddProduct_16s_Sfs 15", Kind::kInt16, 2, WORK(orpsAddProduct_16s_Sfs(PAIR(Orp16s), 15)),
     WORK(plain::addProduct16s(PAIR(Orp16s), 15))},
    {"Sqr_32f", Kind::kFloat, 4, WORK(orpsSqr_32f(UNARY(Orp32f))), WORK(plain::sqr32f(UNARY(Orp32f)))},
    {"Abs_16s", Kind::kInt16, 2, WORK(orpsAbs_16s(UNARY(Orp16s))), WORK(plain::abs16s(UNARY(Orp16s)))},
    {"Abs_32f", Kind::kFloat, 4, WORK(orpsAbs_32f(UNARY(Orp32f))), WORK(plain::abs32f(UNARY(Orp32f)))},
    {"Div_32f", Kind::kFloat, 4, WORK(orpsDiv_32f(PAIR(Orp32f))), WORK(plain::div32f(PAIR(Orp32f))),
     WORK(volk_32f_x2_divide_32f(data.d<Orp32f>(), data.b<Orp32f>(), data.a<Orp32f>(), static_cast<unsigned>(n)))},
    {"Div_64f", Kind::kDouble, 8, WORK(orpsDiv_64f(PAIR(Orp64f))), WORK(plain::div64f(PAIR(Orp64f)))},
    {"Div_32fc", Kind::kFloat, 8, WORK(orpsDiv_32fc(PAIR(Orp32fc))), WORK(plain::div32fc(PAIR(Orp32fc))),
     WORK(volk_32fc_x2_divide_32fc(volkComplex(data.d<Orp32fc>()), volkComplex(data.b<Orp32fc>()),
                                   volkComplex(data.a<Orp32fc>()), static_cast<unsigned>(n))),
     1e-5},
    {"Div_64fc", Kind::kDouble, 16, WORK(orpsDiv_64fc(PAIR(Orp64fc))), WORK(plain::div64fc(PAIR(Orp64fc))), nullptr,
     1e-12},
    {"Div_8u_Sfs -7", Kind::kNonzeroBytes, 1, WORK(orpsDiv_8u_Sfs(PAIR(Orp8u), -7)),
     WORK(plain::div8u(PAIR(Orp8u), -7))},
    {"Div_16s_Sfs 0", Kind::kSmallNonzero16, 2, WORK(orpsDiv_16s_Sfs(PAIR(Orp16s), 0)),
     WORK(plain::div16s(PAIR(Orp16s), 0))},
    {"Div_16s_Sfs -15", Kind::kSmallNonzero16, 2, WORK(orpsDiv_16s_Sfs(PAIR(Orp16s), -15)),
     WORK(plain::div16s(PAIR(Orp16s), -15))},
    {"Div_32s_Sfs 0", Kind::kSmallNonzero16, 4, WORK(orpsDiv_32s_Sfs(PAIR(Orp32s), 0)),
     WORK(plain::div32s(PAIR(Orp32s), 0))},
    {"Div_16sc_Sfs -8", Kind::kSmallNonzero16, 4, WORK(orpsDiv_16sc_Sfs(PAIR(Orp16sc), -8)),
     WORK(plain::div16sc(PAIR(Orp16sc), -8))},
    {"DivC_32f", Kind::kFloat, 4, WORK(orpsDivC_32f(CONSTANT(Orp32f, 1.7F))),
     WORK(plain::divC32f(CONSTANT(Orp32f, 1.7F)))},
    {"DivC_16s_Sfs 0", Kind::kInt16, 2, WORK(orpsDivC_16s_Sfs(CONSTANT(Orp16s, 77), 0)),
     WORK(plain::divC16s(CONSTANT(Orp16s, 77), 0))},
    {"Normalize_32f", Kind::kFloat, 4, WORK(orpsNormalize_32f(UNARY(Orp32f), 0.7F, 1.3F)),
     WORK(plain::normalize32f(UNARY(Orp32f), 0.7F, 1.3F))},
    {"Normalize_16s_Sfs 2", Kind::kInt16, 2, WORK(orpsNormalize_16s_Sfs(UNARY(Orp16s), 70, 13, 2)),
     WORK(plain::normalize16s(UNARY(Orp16s), 70, 13, 2))},
    {"And_32u", Kind::kBytes, 4, WORK(orpsAnd_32u(PAIR(Orp32u))), WORK(plain::and32u(PAIR(Orp32u))),
     VOLK_PAIR(volk_32i_x2_and_32i, Orp32s)},
    {"AndC_16u", Kind::kBytes, 2, WORK(orpsAndC_16u(CONSTANT(Orp16u, 0x5A5A))),
     WORK(plain::andC16u(CONSTANT(Orp16u, 0x5A5A)))},
    {"LShiftC_16u", Kind::kBytes, 2, WORK(orpsLShiftC_16u(CONSTANT(Orp16u, 3))),
     WORK(plain::lShiftC16u(CONSTANT(Orp16u, 3)))},
    {"RShiftC_8u", Kind::kBytes, 1, WORK(orpsRShiftC_8u(CONSTANT(Orp8u, 3))),
     WORK(plain::rShiftC8u(CONSTANT(Orp8u, 3)))},
    {"Set_32f", Kind::kFloat, 4, WORK(orpsSet_32f(1.5F, data.d<Orp32f>(), n)),
     WORK(plain::set32f(1.5F, data.d<Orp32f>(), n))},
    {"Copy_8u", Kind::kBytes, 1, WORK(orpsCopy_8u(UNARY(Orp8u))), WORK(plain::copy8u(UNARY(Orp8u)))},
    {"Copy_32f", Kind::kFloat, 4, WORK(orpsCopy_32f(UNARY(Orp32f))), WORK(plain::copy32f(UNARY(Orp32f)))},
    {"Move_32f up by 1", Kind::kFloat, 4, WORK(orpsMove_32f(data.d<Orp32f>(), data.d<Orp32f>() + 1, n)),
     WORK(plain::moveUp32f(data.d<Orp32f>(), data.d<Orp32f>() + 1, n))},
    {"Flip_8u", Kind::kBytes, 1, WORK(orpsFlip_8u(UNARY(Orp8u))), WORK(plain::flip8u(UNARY(Orp8u)))},
    {"Flip_32f", Kind::kFloat, 4, WORK(orpsFlip_32f(UNARY(Orp32f))), WORK(plain::flip32f(UNARY(Orp32f)))},
    {"Flip_32f_I", Kind::kFloat, 4, WORK(orpsFlip_32f_I(data.d<Orp32f>(), n)),
     WORK(plain::flipInPlace32f(data.d<Orp32f>(), n))},
    {"SwapBytes_16u", Kind::kBytes, 2, WORK(orpsSwapBytes_16u(UNARY(Orp16u))),
     WORK(plain::swapBytes16u(UNARY(Orp16u)))},
    {"SwapBytes_24u", Kind::kBytes, 3, WORK(orpsSwapBytes_24u(UNARY(Orp24u))),
     WORK(plain::swapBytes24u(UNARY(Orp24u)))},
    {"SwapBytes_32u", Kind::kBytes, 4, WORK(orpsSwapBytes_32u(UNARY(Orp32u))),
     WORK(plain::swapBytes32u(UNARY(Orp32u)))},
    {"Copy_1u", Kind::kBytes, 1, WORK(orpsCopy_1u(data.a<Orp8u>(), 3, data.d<Orp8u>(), 6, n)),
     WORK(plain::copyBits(data.a<Orp8u>(), 3, data.d<Orp8u>(), 6, n))},
};

}  // namespace

int main(int argc, char** argv) { return bench::run(kCases, argc, argv); }
