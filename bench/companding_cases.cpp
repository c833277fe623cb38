// Companding and Cauchy functions.
#include <array>
#include <cstring>

#include "cases.h"
#include "plain_companding.h"

namespace {

using bench::Case;
using bench::Data;
using bench::Kind;

// What the library makes of every code, for a contestant that reads a table.
template <OrpStatus (*transcode)(const Orp8u*, Orp8u*, int)>
const Orp8u* table() {
  static const auto codes = [] {
    std::array<Orp8u, 256> all{};
    for (size_t i = 0; i < all.size(); ++i) all[i] = static_cast<Orp8u>(i);
    transcode(all.data(), all.data(), static_cast<int>(all.size()));
    return all;
  }();
  return codes.data();
}

// In place on the same numbers each time, copied there first; a second result stands behind them.
Orp32f* copied(const Data& data, int n) {
  std::memcpy(data.d<Orp32f>(), data.a<Orp32f>(), static_cast<size_t>(n) * sizeof(Orp32f));
  return data.d<Orp32f>();
}

const Case kCases[] = {
    {"ALawToLin_8u16s", Kind::kBytes, 2, WORK(orpsALawToLin_8u16s(data.a<Orp8u>(), data.d<Orp16s>(), n)),
     WORK(plain::aLawToLin16s(data.a<Orp8u>(), data.d<Orp16s>(), n))},
    {"ALawToLin_8u32f", Kind::kBytes, 4, WORK(orpsALawToLin_8u32f(data.a<Orp8u>(), data.d<Orp32f>(), n)),
     WORK(plain::aLawToLin32f(data.a<Orp8u>(), data.d<Orp32f>(), n))},
    {"MuLawToLin_8u16s", Kind::kBytes, 2, WORK(orpsMuLawToLin_8u16s(data.a<Orp8u>(), data.d<Orp16s>(), n)),
     WORK(plain::muLawToLin16s(data.a<Orp8u>(), data.d<Orp16s>(), n))},
    {"LinToALaw_16s8u", Kind::kInt16, 1, WORK(orpsLinToALaw_16s8u(data.a<Orp16s>(), data.d<Orp8u>(), n)),
     WORK(plain::linToALaw16s(data.a<Orp16s>(), data.d<Orp8u>(), n))},
    // Small numbers, all of the first segment, which makes the search short.
    {"LinToALaw_32f8u", Kind::kSignedFloat, 1, WORK(orpsLinToALaw_32f8u(data.a<Orp32f>(), data.d<Orp8u>(), n)),
     WORK(plain::linToALaw32f(data.a<Orp32f>(), data.d<Orp8u>(), n))},
    {"LinToMuLaw_16s8u", Kind::kInt16, 1, WORK(orpsLinToMuLaw_16s8u(data.a<Orp16s>(), data.d<Orp8u>(), n)),
     WORK(plain::linToMuLaw16s(data.a<Orp16s>(), data.d<Orp8u>(), n))},
    {"ALawToMuLaw_8u", Kind::kBytes, 1, WORK(orpsALawToMuLaw_8u(UNARY(Orp8u))),
     WORK(plain::transcode(UNARY(Orp8u), table<orpsALawToMuLaw_8u>()))},
    {"MuLawToALaw_8u", Kind::kBytes, 1, WORK(orpsMuLawToALaw_8u(UNARY(Orp8u))),
     WORK(plain::transcode(UNARY(Orp8u), table<orpsMuLawToALaw_8u>()))},
    {"Cauchy_32f_I", Kind::kSignedFloat, 4, WORK(orpsCauchy_32f_I(copied(data, n), n, 1.5f)),
     WORK(plain::cauchy(copied(data, n), n, 1.5f)), nullptr, 1e-6},
    {"CauchyD_32f_I", Kind::kSignedFloat, 4, WORK(orpsCauchyD_32f_I(copied(data, n), n, 1.5f)),
     WORK(plain::cauchyD(copied(data, n), n, 1.5f)), nullptr, 1e-6},
    {"CauchyDD2_32f_I", Kind::kSignedFloat, 8,
     WORK(orpsCauchyDD2_32f_I(copied(data, n), data.d<Orp32f>() + n, n, 1.5f)),
     WORK(plain::cauchyDD2(copied(data, n), data.d<Orp32f>() + n, n, 1.5f)), nullptr, 1e-6},
};

}  // namespace

std::span<const Case> bench::compandingCases() { return kCases; }
