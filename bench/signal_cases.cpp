// Helpers of speech coders and modems.
#include "cases.h"
#include "plain_signal.h"

namespace {

using bench::Case;
using bench::Data;
using bench::Kind;

#define MEAN data.a<Orp16s>(), n, data.d<Orp32s>(), 1, 1000
#define PHASE data.a<Orp16sc>() + 1, data.d<Orp16s>(), n
#define UNARY2(T, D) data.a<T>(), data.d<D>(), n
#define PACK(bits) UNARY2(Orp32u, Orp8u), bits

const Case kCases[] = {
    {"Preemphasize_16s", Kind::kInt16, 2, WORK(orpsPreemphasize_16s(UNARY(Orp16s), 0.96875f)),
     WORK(plain::preemphasize16s(UNARY(Orp16s), 0.96875f))},
    {"Preemphasize_32f", Kind::kSignedFloat, 4, WORK(orpsPreemphasize_32f(UNARY(Orp32f), 0.96875f)),
     WORK(plain::preemphasize32f(UNARY(Orp32f), 0.96875f)), nullptr, 1e-6},
    {"UpdateLinear_16s32s_I", Kind::kInt16, 2, WORK(orpsUpdateLinear_16s32s_I(MEAN)), WORK(plain::updateLinear(MEAN)),
     nullptr, 0, nullptr, nullptr, 4},
    {"UpdatePower_16s32s_I", Kind::kInt16, 2, WORK(orpsUpdatePower_16s32s_I(MEAN)), WORK(plain::updatePower(MEAN)),
     nullptr, 0, nullptr, nullptr, 4},
    {"DemodulateFM_CToR_16s", Kind::kInt16, 2,
     WORK(Orp16sc previous = *data.a<Orp16sc>(); orpsDemodulateFM_CToR_16s(PHASE, &previous)),
     WORK(plain::demodulateFM(PHASE))},
    {"SumWindow_8u32f", Kind::kBytes, 4, WORK(orpsSumWindow_8u32f(UNARY2(Orp8u, Orp32f), 64)),
     WORK(plain::sumWindow(UNARY2(Orp8u, Orp32f), 64))},
    {"SumWindow_16s32f", Kind::kInt16, 4, WORK(orpsSumWindow_16s32f(UNARY2(Orp16s, Orp32f), 64)),
     WORK(plain::sumWindow(UNARY2(Orp16s, Orp32f), 64))},
    {"PackBits_32u8u", Kind::kBytes, 4, WORK(orpsPackBits_32u8u(PACK(1))), WORK(plain::packBits(PACK(1)))},
    {"PackBits_32u8u (5)", Kind::kBytes, 4, WORK(orpsPackBits_32u8u(PACK(5))), WORK(plain::packBits(PACK(5)))},
    {"PackBits_32u8u (12)", Kind::kBytes, 4, WORK(orpsPackBits_32u8u(PACK(12))), WORK(plain::packBits(PACK(12)))},
    {"PackBits_32u8u (16)", Kind::kBytes, 4, WORK(orpsPackBits_32u8u(PACK(16))), WORK(plain::packBits(PACK(16)))},
    {"PackBits_32u8u (23)", Kind::kBytes, 4, WORK(orpsPackBits_32u8u(PACK(23))), WORK(plain::packBits(PACK(23)))},
};

}  // namespace

std::span<const Case> bench::signalCases() { return kCases; }
