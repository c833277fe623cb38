// Copy of bit strings.
#include "orpsp/vector/move.h"

#include "frame/entry.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/bits.cpp"
#include <hwy/foreach_target.h>

#include "simd/forms-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

// Bits are numbered from the most significant one of each byte.

// `count` <= 8 bits from bit `at` on, in the most significant bits of the result; reads only bytes that hold such bits.
HWY_INLINE unsigned BitsAt(const Orp8u* src, size_t at, unsigned count) {
  const Orp8u* const p = src + at / 8;
  const unsigned offset = at % 8;
  unsigned two = static_cast<unsigned>(p[0]) << 8;
  if (offset + count > 8) two |= p[1];
  return (two << offset >> 8) & 0xFF;
}

// Puts the first `count` bits of `value` at bit `offset` of a byte, offset + count <= 8.
HWY_INLINE void PutBits(Orp8u* p, unsigned offset, unsigned count, unsigned value) {
  const unsigned mask = (0xFF00u >> count & 0xFF) >> offset;
  *p = static_cast<Orp8u>((*p & ~mask) | (value >> offset & mask));
}

// Bytes that begin at bit `offset` of those of the source.
struct JoinBits {
  int offset;
  HWY_INLINE auto operator()(auto, auto v, auto next) const {
    return hn::Or(hn::ShiftLeftSame(v, offset), hn::ShiftRightSame(next, 8 - offset));
  }
};

OrpStatus copyBits(const Orp8u* pSrc, int srcBitOffset, Orp8u* pDst, int dstBitOffset, int len) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  ORPS_RETURN_IF(srcBitOffset < 0 || dstBitOffset < 0, StsBadSize);
  size_t from = toSize(srcBitOffset), left = toSize(len);
  Orp8u* dst = pDst + dstBitOffset / 8;

  if (const unsigned offset = static_cast<unsigned>(dstBitOffset) % 8; offset != 0) {
    const auto count = static_cast<unsigned>(HWY_MIN(left, size_t{8} - offset));
    PutBits(dst++, offset, count, BitsAt(pSrc, from, count));
    from += count;
    left -= count;
  }
  if (const size_t whole = left / 8; whole != 0) {
    const Orp8u* const src = pSrc + from / 8;
    if (from % 8 == 0) {
      Map(Same{}, dst, whole, Vector<Orp8u>{src});
    } else {
      Map(JoinBits{static_cast<int>(from % 8)}, dst, whole, Vector<Orp8u>{src}, Vector<Orp8u>{src + 1});
    }
    dst += whole;
    from += 8 * whole;
    left %= 8;
  }
  if (left != 0) PutBits(dst, 0, static_cast<unsigned>(left), BitsAt(pSrc, from, static_cast<unsigned>(left)));
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/bits.inc"
#include "frame/exports-inl.h"
