// The cases of each program, by topic, and how they are written.
#pragma once

#include <span>

#include "compare.h"
#include "orpsp.h"

namespace bench {

std::span<const Case> arithmeticCases();
std::span<const Case> convertCases();
std::span<const Case> thresholdCases();
std::span<const Case> mathsCases();
std::span<const Case> compandingCases();
std::span<const Case> complexCases();
std::span<const Case> reductionCases();
std::span<const Case> extremaCases();
std::span<const Case> packedCases();
std::span<const Case> signalCases();
std::span<const Case> toneCases();
std::span<const Case> windowCases();
std::span<const Case> randomCases();
std::span<const Case> viterbiCases();

}  // namespace bench

// The three implementations of a case: the library's function `orps<name>`, the plain loop, and VOLK's kernel or
// nothing. `args` are the arguments after or around the vectors, written with `n` for the length.
#define WORK(...) [](const Data& data [[maybe_unused]], int n [[maybe_unused]]) { __VA_ARGS__; }
#define PAIR(T) data.a<T>(), data.b<T>(), data.d<T>(), n
#define UNARY(T) data.a<T>(), data.d<T>(), n
#define CONSTANT(T, val) data.a<T>(), val, data.d<T>(), n
#define VOLK_PAIR(kernel, T) WORK(kernel(data.d<T>(), data.a<T>(), data.b<T>(), static_cast<unsigned>(n)))
