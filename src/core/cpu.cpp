// Processor features and the limits that the environment and the application put on them.
#include <cpuid.h>

#include <atomic>

#include "core/environment.h"
#include "orpcore.h"

namespace {

struct Registers {
  unsigned eax = 0, ebx = 0, ecx = 0, edx = 0;
};

Registers cpuid(unsigned leaf) {
  Registers r;
  __get_cpuid_count(leaf, 0, &r.eax, &r.ebx, &r.ecx, &r.edx);  // leaves r at zero if the processor has no such leaf
  return r;
}

// The register sets that the operating system saves (XCR0); only defined where CPUID reports OSXSAVE.
unsigned savedRegisterSets() {
  unsigned low, high;
  __asm__ volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
  return low;
}

constexpr bool holds(unsigned value, unsigned bits) { return (value & bits) == bits; }

uint64_t detect() {
  const Registers basic = cpuid(1), wide = cpuid(7), extended = cpuid(0x80000001u);
  uint64_t mask = 0;
  if (holds(basic.ecx, bit_SSSE3)) mask |= ORP_CPU_SSSE3;
  if (holds(basic.ecx, bit_MOVBE)) mask |= ORP_CPU_MOVBE;

  constexpr unsigned kYmm = 0x06, kZmm = 0xE6;  // SSE and AVX state; and opmask, upper halves, upper registers
  const unsigned saved = holds(basic.ecx, bit_OSXSAVE) ? savedRegisterSets() : 0;
  // Everything that the compiler may use in a 256-bit kernel, not AVX2 alone.
  const bool avx2 = holds(saved, kYmm) &&
                    holds(basic.ecx, bit_AVX | bit_FMA | bit_F16C | bit_AES | bit_PCLMUL | bit_SSE4_1 | bit_SSE4_2) &&
                    holds(wide.ebx, bit_AVX2 | bit_BMI | bit_BMI2) && holds(extended.ecx, bit_ABM);
  const bool avx512 = avx2 && holds(saved, kZmm) &&
                      holds(wide.ebx, bit_AVX512F | bit_AVX512VL | bit_AVX512DQ | bit_AVX512BW | bit_AVX512CD);
  if (avx2) mask |= ORP_CPU_AVX2;
  if (avx512) mask |= ORP_CPU_AVX512;
  return mask;
}

constexpr uint64_t kUnknown = ~uint64_t{0};
constinit std::atomic<uint64_t> found{kUnknown};
constinit std::atomic<uint64_t> applicationLimit{~uint64_t{0}};
constinit std::atomic<int> vectorBits{0};

// What is found on first use. Threads that come at the same time find the same.
uint64_t available() {
  uint64_t mask = found.load(std::memory_order_relaxed);
  if (mask == kUnknown) {
    const auto limit = orpcore::hexFromEnvironment("ORPCORE_CPU_FEATURES");
    mask = limit ? detect() & *limit : detect();
    found.store(mask, std::memory_order_relaxed);
  }
  return mask;
}

}  // namespace

uint64_t orpGetEnabledCpuFeatures(void) { return available() & applicationLimit.load(std::memory_order_relaxed); }

void orpSetCpuFeatures(uint64_t mask) { applicationLimit.store(mask, std::memory_order_relaxed); }

int orpGetVectorBits(void) { return vectorBits.load(std::memory_order_relaxed); }

void ownSetVectorBits(int bits) { vectorBits.store(bits, std::memory_order_relaxed); }
