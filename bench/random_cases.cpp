// Random numbers.
#include <cstdlib>

#include "cases.h"
#include "plain_random.h"

namespace {

using bench::Case;
using bench::Data;
using bench::Kind;

// Random numbers of two generators have nothing in common but that they are numbers: as floats too, as which integers
// are compared here.
constexpr double kAnything = 1e300;

// The one state of this type.
template <class T, class State>
State* state(OrpStatus (*initAlloc)(State**, T, T, Orp32u), T first, T second) {
  static State* const state = [&] {
    State* made = nullptr;
    if (initAlloc(&made, first, second, 1) != StsOk) std::abort();
    return made;
  }();
  return state;
}

Orp32u seed = 1;

#define BY_STATE(kind, type, first, second) \
  WORK(orps##kind##_##type(data.d<Orp##type>(), n, state<Orp##type>(&orps##kind##InitAlloc_##type, first, second)))
#define BY_SEED(kind, type, first, second) \
  WORK(orps##kind##_Direct_##type(data.d<Orp##type>(), n, first, second, &seed))
#define PLAIN(name, type, first, second) WORK(plain::name##type(first, second, data.d<Orp##type>(), n))

const Case kCases[] = {
    {"RandUniform_8u", Kind::kBytes, 1, BY_STATE(RandUniform, 8u, 0, 100), PLAIN(uniform, 8u, 0, 100), nullptr,
     kAnything},
    {"RandUniform_16s", Kind::kInt16, 2, BY_STATE(RandUniform, 16s, 0, 1000), PLAIN(uniform, 16s, 0, 1000), nullptr,
     kAnything},
    {"RandUniform_32f", Kind::kSignedFloat, 4, BY_STATE(RandUniform, 32f, -1, 1), PLAIN(uniform, 32f, -1, 1), nullptr,
     kAnything},
    {"RandUniform_Direct_64f", Kind::kSignedDouble, 8, BY_SEED(RandUniform, 64f, -1, 1), PLAIN(uniform, 64f, -1, 1),
     nullptr, kAnything},
    {"RandGauss_8u", Kind::kBytes, 1, BY_STATE(RandGauss, 8u, 60, 8), PLAIN(gauss, 8u, 60, 8), nullptr, kAnything},
    {"RandGauss_16s", Kind::kInt16, 2, BY_STATE(RandGauss, 16s, 1000, 100), PLAIN(gauss, 16s, 1000, 100), nullptr,
     kAnything},
    {"RandGauss_32f", Kind::kSignedFloat, 4, BY_STATE(RandGauss, 32f, 0, 1), PLAIN(gauss, 32f, 0, 1), nullptr,
     kAnything},
    {"RandGauss_Direct_64f", Kind::kSignedDouble, 8, BY_SEED(RandGauss, 64f, 0, 1), PLAIN(gauss, 64f, 0, 1), nullptr,
     kAnything},
};

}  // namespace

std::span<const Case> bench::randomCases() { return kCases; }
