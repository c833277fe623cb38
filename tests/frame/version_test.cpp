// The version record of each variant, word for word.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "orpcore.h"
#include "orpsp.h"

namespace {

TEST(Version, RecordIsThatOfTheVariant) {
  constexpr uint64_t kLowPower = ORP_CPU_SSSE3 | ORP_CPU_MOVBE;
  const bool second = (orpGetEnabledCpuFeatures() & kLowPower) == kLowPower;
  const OrpLibraryVersion* version = orpsGetLibVersion();
  ASSERT_NE(nullptr, version);
  EXPECT_EQ(7, version->major);
  EXPECT_EQ(1, version->minor);
  EXPECT_EQ(0, version->revision);
  EXPECT_EQ(36264, version->buildNumber);
  EXPECT_EQ(0, std::memcmp(version->cpuCode, second ? "n8\0\0" : "u8\0\0", 4));
  EXPECT_STREQ(second ? "orpSP Tern (n8)" : "orpSP SSSE3 (u8)", version->nameText);
  EXPECT_STREQ("7.1.0 (r36264)", version->versionText);
  EXPECT_STREQ("Jul 23 2012", version->dateText);
}

TEST(Version, IsNotChosenAgain) {
  const OrpLibraryVersion* const before = orpsGetLibVersion();
  const int bits = orpGetVectorBits();
  orpSetCpuFeatures(0);
  EXPECT_EQ(before, orpsGetLibVersion());
  EXPECT_EQ(bits, orpGetVectorBits());
  orpSetCpuFeatures(~uint64_t{0});
}

}  // namespace
