// Windows.
#include "cases.h"
#include "plain_windows.h"

namespace {

using bench::Case;
using bench::Data;
using bench::Kind;

// That of a Kaiser window with the usual parameter 8.
float alphaOf(int n) { return 16.0f / static_cast<float>(n); }

const Case kCases[] = {
    {"WinBartlett_32f", Kind::kSignedFloat, 4, WORK(orpsWinBartlett_32f(UNARY(Orp32f))),
     WORK(plain::bartlett32f(UNARY(Orp32f))), nullptr, 1e-6},
    {"WinHamming_16s", Kind::kInt16, 2, WORK(orpsWinHamming_16s(UNARY(Orp16s))),
     WORK(plain::hamming16s(UNARY(Orp16s)))},
    {"WinHann_32f", Kind::kSignedFloat, 4, WORK(orpsWinHann_32f(UNARY(Orp32f))), WORK(plain::hann32f(UNARY(Orp32f))),
     nullptr, 1e-6},
    {"WinHann_64f", Kind::kSignedDouble, 8, WORK(orpsWinHann_64f(UNARY(Orp64f))), WORK(plain::hann64f(UNARY(Orp64f))),
     nullptr, 1e-12},
    {"WinHann_32fc", Kind::kSignedFloat, 8, WORK(orpsWinHann_32fc(UNARY(Orp32fc))),
     WORK(plain::hann32fc(UNARY(Orp32fc))), nullptr, 1e-6},
    {"WinBlackman_32f", Kind::kSignedFloat, 4, WORK(orpsWinBlackman_32f(UNARY(Orp32f), -0.16f)),
     WORK(plain::blackman32f(UNARY(Orp32f), -0.16f)), nullptr, 1e-6},
    {"WinKaiser_32f", Kind::kSignedFloat, 4, WORK(orpsWinKaiser_32f(UNARY(Orp32f), alphaOf(n))),
     WORK(plain::kaiser32f(UNARY(Orp32f), alphaOf(n))), nullptr, 1e-6},
};

}  // namespace

std::span<const Case> bench::windowCases() { return kCases; }
