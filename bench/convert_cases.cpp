// Conversions. Scale factors bring the data, numbers in (-8, 8), near the full scale of the destination.
#include <volk/volk.h>

#include "cases.h"
#include "plain_convert.h"

namespace {

using bench::Case;
using bench::Data;
using bench::Kind;

#define CHANGE(From, To) data.a<From>(), data.d<To>(), n
#define VOLK_CHANGE(kernel, From, To, ...) \
  WORK(kernel(data.d<To>(), data.a<From>(), ##__VA_ARGS__, static_cast<unsigned>(n)))

void join(auto function, const Data& data, auto* d, int n) {
  const Orp32f* const channels[] = {data.a<Orp32f>(), data.b<Orp32f>()};
  function(channels, d, n);
}
void split(auto function, const auto* a, const Data& data, int n) {
  Orp32f* const channels[] = {data.d<Orp32f>(), data.d<Orp32f>() + n};
  function(a, channels, n);
}

const Case kCases[] = {
    {"Convert_16s32f", Kind::kInt16, 4, WORK(orpsConvert_16s32f(CHANGE(Orp16s, Orp32f))),
     WORK(plain::convert16s32f(CHANGE(Orp16s, Orp32f))), VOLK_CHANGE(volk_16i_s32f_convert_32f, Orp16s, Orp32f, 1.0F)},
    {"Convert_16s32f_Sfs 15", Kind::kInt16, 4, WORK(orpsConvert_16s32f_Sfs(CHANGE(Orp16s, Orp32f), 15)),
     WORK(plain::convert16s32f(CHANGE(Orp16s, Orp32f), 15)),
     VOLK_CHANGE(volk_16i_s32f_convert_32f, Orp16s, Orp32f, 32768.0F)},
    {"Convert_32f16s_Sfs 0, -12", Kind::kSignedFloat, 2, WORK(orpsConvert_32f16s_Sfs(CHANGE(Orp32f, Orp16s), 0, -12)),
     WORK(plain::convert32f16s(CHANGE(Orp32f, Orp16s), 0, -12))},
    {"Convert_32f16s_Sfs 1, -12", Kind::kSignedFloat, 2, WORK(orpsConvert_32f16s_Sfs(CHANGE(Orp32f, Orp16s), 1, -12)),
     WORK(plain::convert32f16s(CHANGE(Orp32f, Orp16s), 1, -12)),
     VOLK_CHANGE(volk_32f_s32f_convert_16i, Orp32f, Orp16s, 4096.0F)},
    {"Convert_32f16s_Sfs 2, -12", Kind::kSignedFloat, 2, WORK(orpsConvert_32f16s_Sfs(CHANGE(Orp32f, Orp16s), 2, -12)),
     WORK(plain::convert32f16s(CHANGE(Orp32f, Orp16s), 2, -12))},
    {"Convert_32f8u_Sfs 1, -5", Kind::kSignedFloat, 1, WORK(orpsConvert_32f8u_Sfs(CHANGE(Orp32f, Orp8u), 1, -5)),
     WORK(plain::convert32f8u(CHANGE(Orp32f, Orp8u), 1, -5))},
    {"Convert_32f32s_Sfs 1, -28", Kind::kSignedFloat, 4, WORK(orpsConvert_32f32s_Sfs(CHANGE(Orp32f, Orp32s), 1, -28)),
     WORK(plain::convert32f32s(CHANGE(Orp32f, Orp32s), 1, -28)),
     VOLK_CHANGE(volk_32f_s32f_convert_32i, Orp32f, Orp32s, 268435456.0F)},
    {"Convert_64f64s_Sfs 1, -60", Kind::kSignedDouble, 8, WORK(orpsConvert_64f64s_Sfs(CHANGE(Orp64f, Orp64s), 1, -60)),
     WORK(plain::convert64f64s(CHANGE(Orp64f, Orp64s), 1, -60))},
    {"Convert_32f24s_Sfs 1, -20", Kind::kSignedFloat, 3, WORK(orpsConvert_32f24s_Sfs(CHANGE(Orp32f, Orp24s), 1, -20)),
     WORK(plain::convert32f24s(CHANGE(Orp32f, Orp24s), 1, -20))},
    {"Convert_24s32f", Kind::kBytes, 4, WORK(orpsConvert_24s32f(CHANGE(Orp24s, Orp32f))),
     WORK(plain::convert24s32f(CHANGE(Orp24s, Orp32f)))},
    {"Convert_32f16f 1", Kind::kSignedFloat, 2, WORK(orpsConvert_32f16f(CHANGE(Orp32f, Orp16f), 1)),
     WORK(plain::convert32f16f(CHANGE(Orp32f, Orp16f)))},
    {"Convert_16f32f", Kind::kSmallNonzero16, 4, WORK(orpsConvert_16f32f(CHANGE(Orp16f, Orp32f))),
     WORK(plain::convert16f32f(CHANGE(Orp16f, Orp32f)))},
    {"Convert_32s16s", Kind::kBytes, 2, WORK(orpsConvert_32s16s(CHANGE(Orp32s, Orp16s))),
     WORK(plain::convert32s16s(CHANGE(Orp32s, Orp16s)))},
    {"Convert_32s16s_Sfs 15", Kind::kBytes, 2, WORK(orpsConvert_32s16s_Sfs(CHANGE(Orp32s, Orp16s), 15)),
     WORK(plain::convert32s16s(CHANGE(Orp32s, Orp16s), 15))},
    {"Convert_64s32s_Sfs 30", Kind::kBytes, 4, WORK(orpsConvert_64s32s_Sfs(CHANGE(Orp64s, Orp32s), 30)),
     WORK(plain::convert64s32s(CHANGE(Orp64s, Orp32s), 30))},
    {"Convert_64f32f", Kind::kSignedDouble, 4, WORK(orpsConvert_64f32f(CHANGE(Orp64f, Orp32f))),
     WORK(plain::convert64f32f(CHANGE(Orp64f, Orp32f))), VOLK_CHANGE(volk_64f_convert_32f, Orp64f, Orp32f)},
    {"Convert_32f64f", Kind::kSignedFloat, 8, WORK(orpsConvert_32f64f(CHANGE(Orp32f, Orp64f))),
     WORK(plain::convert32f64f(CHANGE(Orp32f, Orp64f))), VOLK_CHANGE(volk_32f_convert_64f, Orp32f, Orp64f)},
    {"JoinScaled_32f16s", Kind::kSignedFloat, 4, WORK(join(orpsJoinScaled_32f16s_D2L, data, data.d<Orp16s>(), n)),
     WORK(plain::join16s(data.a<Orp32f>(), data.b<Orp32f>(), data.d<Orp16s>(), n))},
    {"JoinScaled_32f24s", Kind::kSignedFloat, 6, WORK(join(orpsJoinScaled_32f24s_D2L, data, data.d<Orp24s>(), n)),
     WORK(plain::join24s(data.a<Orp32f>(), data.b<Orp32f>(), data.d<Orp24s>(), n))},
    {"SplitScaled_16s32f", Kind::kInt16, 8, WORK(split(orpsSplitScaled_16s32f_D2L, data.a<Orp16s>(), data, n)),
     WORK(plain::split16s(data.a<Orp16s>(), data.d<Orp32f>(), data.d<Orp32f>() + n, n))},
    {"SplitScaled_24s32f", Kind::kBytes, 8, WORK(split(orpsSplitScaled_24s32f_D2L, data.a<Orp24s>(), data, n)),
     WORK(plain::split24s(data.a<Orp24s>(), data.d<Orp32f>(), data.d<Orp32f>() + n, n))},
};

}  // namespace

std::span<const Case> bench::convertCases() { return kCases; }
