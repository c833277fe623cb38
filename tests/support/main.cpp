// main() of every test program: proves first that the processor variant and vector width asked for are those that run.
//
// ORPSP_EXPECT_VARIANT ("u8", "n8") and ORPSP_EXPECT_BITS (128, 256, 512) name them; ctest sets one or both, together
// with ORPCORE_CPU_FEATURES. Without them the program runs with whatever the library chose.
#include <cpuid.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "orpcore.h"
#include "orpsp.h"
#include "support/random.h"

namespace {

constexpr int kSkipped = 77;  // SKIP_RETURN_CODE of the ctest entries

std::string environment(const char* name) {
  const char* text = std::getenv(name);
  return text ? text : "";
}

// Asked of the processor itself and not of orpcore: a detection that misses features must fail, not skip.
bool processorCan(const std::string& variant, const std::string& bits) {
  unsigned eax, ebx, ecx = 0, edx;
  __get_cpuid(1, &eax, &ebx, &ecx, &edx);
  const bool avx2 = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") && __builtin_cpu_supports("bmi2");
  const bool avx512 = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl") &&
                      __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512bw") &&
                      __builtin_cpu_supports("avx512cd");
  if (variant == "n8" && !(ecx & bit_MOVBE)) return false;
  if (bits == "256") return avx2;
  if (bits == "512") return avx2 && avx512;
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const std::string variant = orpsGetLibVersion()->cpuCode, bits = std::to_string(orpGetVectorBits());
  const std::string wantedVariant = environment("ORPSP_EXPECT_VARIANT"), wantedBits = environment("ORPSP_EXPECT_BITS");
  std::printf("variant %s, %s-bit vectors, seed 0x%llx\n", variant.c_str(), bits.c_str(),
              static_cast<unsigned long long>(orptest::kSeed));
  std::fflush(stdout);  // what stays silent for long under wine is started again
  if (!processorCan(wantedVariant, wantedBits)) {
    std::printf("the processor cannot run %s at %s bits\n", wantedVariant.c_str(), wantedBits.c_str());
    return kSkipped;
  }
  if ((!wantedVariant.empty() && variant != wantedVariant) || (!wantedBits.empty() && bits != wantedBits)) {
    std::printf("FAILED: asked for %s at %s bits\n", wantedVariant.c_str(), wantedBits.c_str());
    return EXIT_FAILURE;
  }
  return RUN_ALL_TESTS();
}
