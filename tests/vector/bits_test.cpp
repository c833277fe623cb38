// Copy of bit strings.
#include <gtest/gtest.h>

#include <climits>

#include "orpsp.h"
#include "support/guarded.h"
#include "support/random.h"

namespace {

using orptest::Guarded;
using orptest::Random;
using Bytes = std::vector<Orp8u>;

bool bitOf(const Bytes& bytes, int i) { return bytes[static_cast<size_t>(i / 8)] & (0x80 >> i % 8); }

void setBit(Bytes& bytes, int i, bool value) {
  auto& byte = bytes[static_cast<size_t>(i / 8)];
  byte = static_cast<Orp8u>(value ? byte | 0x80 >> i % 8 : byte & ~(0x80 >> i % 8));
}

// The array that bit `offset` is counted from, when `block` holds only the bytes of the bits from there on.
Orp8u* originOf(Guarded<Orp8u>& block, int offset) {
  return reinterpret_cast<Orp8u*>(reinterpret_cast<uintptr_t>(block.data()) - static_cast<uintptr_t>(offset / 8));
}

size_t bytesOf(int offset, int len) { return static_cast<size_t>((offset % 8 + len + 7) / 8); }

// Both arrays hold the bytes of their bits and nothing else; those in front, if the offset exceeds 7, do not exist.
void checkCopy(Random& random, int sourceOffset, int offset, int len) {
  const auto source = random.vector<Orp8u>(bytesOf(sourceOffset, len));
  auto expected = random.vector<Orp8u>(bytesOf(offset, len));
  Guarded<Orp8u> from(source, static_cast<size_t>(random.below(64)));
  Guarded<Orp8u> to(expected, static_cast<size_t>(random.below(64)));
  for (int i = 0; i < len; ++i) setBit(expected, offset % 8 + i, bitOf(source, sourceOffset % 8 + i));
  ASSERT_EQ(StsOk, orpsCopy_1u(originOf(from, sourceOffset), sourceOffset, originOf(to, offset), offset, len));
  ASSERT_EQ(expected, to.values()) << len << " bits from " << sourceOffset << " to " << offset;
  ASSERT_EQ(source, from.values());
}

TEST(Bits, everyOffsetInAByte) {
  Random random;
  for (int len = 1; len <= 200; ++len)
    for (int sourceOffset = 0; sourceOffset < 8; ++sourceOffset)
      for (int offset = 0; offset < 8; ++offset) checkCopy(random, sourceOffset, offset, len);
}

TEST(Bits, offsetsBeyondAByteAndLongStrings) {
  Random random;
  for (int i = 0; i < 500; ++i)
    checkCopy(random, random.below(2000), random.below(2000), 1 + random.below(i % 10 == 0 ? 100'000 : 5000));
}

TEST(Bits, refusals) {
  const Orp8u source = 0xFF;
  Orp8u destination = 0x5A;
  EXPECT_EQ(StsNullPtr, orpsCopy_1u(nullptr, -1, &destination, 0, 0));
  EXPECT_EQ(StsNullPtr, orpsCopy_1u(&source, -1, nullptr, 0, 0));
  for (const int bad : {-1, INT_MIN}) {
    EXPECT_EQ(StsBadSize, orpsCopy_1u(&source, bad, &destination, 0, 1));
    EXPECT_EQ(StsBadSize, orpsCopy_1u(&source, 0, &destination, bad, 1));
    EXPECT_EQ(StsBadSize, orpsCopy_1u(&source, 0, &destination, 0, bad));
  }
  EXPECT_EQ(StsBadSize, orpsCopy_1u(&source, 0, &destination, 0, 0));
  EXPECT_EQ(0x5A, destination);
}

}  // namespace
