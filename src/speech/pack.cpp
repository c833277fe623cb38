// Elements of a few bits, packed without gaps.
#include "frame/entry.h"
#include "orpsp/speech/signal.h"
#include "simd/element.h"
#include "simd/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "speech/pack.cpp"
#include <hwy/foreach_target.h>

#include "frame/check.h"
#include "simd/map-inl.h"
#include "simd/shuffle-inl.h"

HWY_BEFORE_NAMESPACE();
namespace orpsp {
namespace HWY_NAMESPACE {
namespace {

constexpr hn::ScalableTag<uint64_t> kWords;
constexpr hn::ScalableTag<uint32_t> kElements;
constexpr size_t kChunks = HWY_MAX_BYTES / sizeof(uint64_t);
using Words = hn::Vec<hn::ScalableTag<uint64_t>>;

struct BytesOfWordsReversed {
  static constexpr size_t pick(size_t i, size_t) { return i ^ 7; }
};

// Writes words of 8 bytes, and at the end what is left.
class BitWriter {
 public:
  HWY_INLINE explicit BitWriter(Orp8u* to) : to_(to) {}

  // The lowest `bits` bits, 1 to 64; those above are 0.
  HWY_INLINE void Write(uint64_t chunk, int bits) {
    word_ |= chunk << (64 - bits) >> filled_;
    filled_ += bits;
    if (filled_ < 64) return;
    const uint64_t bytes = __builtin_bswap64(word_);
    __builtin_memcpy(to_, &bytes, sizeof(bytes));
    to_ += sizeof(bytes);
    filled_ -= 64;
    word_ = chunk << 1 << (63 - filled_);
  }
  // Where a word begins.
  HWY_INLINE void Write(Words words) {
    constexpr hn::ScalableTag<Orp8u> d;
    const auto bytes = hn::BitCast(d, words);
    hn::StoreU(Shuffled<BytesOfWordsReversed>(bytes, bytes), d, to_);
    to_ += HWY_MAX_BYTES;
  }
  HWY_INLINE void Finish() {
    for (; filled_ > 0; filled_ -= 8, word_ <<= 8) *to_++ = static_cast<Orp8u>(word_ >> 56);
  }

 private:
  Orp8u* to_;
  uint64_t word_ = 0;  // filled from the top
  int filled_ = 0;
};

// Words of two neighbours with `bits` bits each, the first one in front.
HWY_INLINE Words Joined(hn::Vec<hn::ScalableTag<uint32_t>> v, int bits) {
  const auto pairs = hn::BitCast(kWords, v);
  return hn::Or(hn::ShiftRightSame(hn::ShiftLeft<32>(pairs), 32 - bits), hn::ShiftRight<32>(pairs));
}

// The elements from p on in chunks of `count` each.
template <size_t count>
HWY_INLINE Words Chunks(const Orp32u* p, int bits) {
  if constexpr (count == 2) {
    return Joined(hn::And(hn::LoadU(kElements, p), hn::Set(kElements, 0xFFFFFFFF >> (32 - bits))), bits);
  } else {
    const auto first = hn::BitCast(kElements, Chunks<count / 2>(p, bits));
    const auto second = hn::BitCast(kElements, Chunks<count / 2>(p + kChunks * count / 2, bits));
    return Joined(hn::ConcatEven(kElements, second, first), static_cast<int>(count) / 2 * bits);
  }
}

// Chunks are as long as a word allows.
template <size_t count>
HWY_NOINLINE void PackChunks(const Orp32u* src, Orp8u* dst, size_t len, int bits) {
  constexpr size_t kStep = kChunks * count;
  const int chunkBits = static_cast<int>(count) * bits;
  BitWriter writer(dst);
  alignas(HWY_MAX_BYTES) uint64_t chunk[kChunks];
  size_t i = 0;
  for (; i + kStep <= len; i += kStep) {
    const auto chunks = Chunks<count>(src + i, bits);
    if (chunkBits == 64) {
      writer.Write(chunks);
    } else {
      hn::Store(chunks, kWords, chunk);
      for (size_t k = 0; k < kChunks; ++k) writer.Write(chunk[k], chunkBits);
    }
  }
  if (i < len) {
    alignas(HWY_MAX_BYTES) Orp32u few[kStep] = {};
    __builtin_memcpy(few, src + i, (len - i) * sizeof(Orp32u));
    hn::Store(Chunks<count>(few, bits), kWords, chunk);
    const size_t whole = (len - i) / count;
    const int rest = static_cast<int>((len - i) % count);
    for (size_t k = 0; k < whole; ++k) writer.Write(chunk[k], chunkBits);
    if (rest > 0) writer.Write(chunk[whole] >> (chunkBits - rest * bits), rest * bits);
  }
  writer.Finish();
}

OrpStatus packBits(const Orp32u* pSrc, Orp8u* pDst, int len, int bits) {
  ORPS_CHECK_VECTOR(len, pSrc, pDst);
  ORPS_RETURN_IF(bits < 1 || bits > 32, StsBadArg);
  const auto kernel = bits <= 8 ? PackChunks<8> : bits <= 16 ? PackChunks<4> : PackChunks<2>;
  kernel(pSrc, pDst, static_cast<size_t>(len), bits);
  return StsOk;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace orpsp
HWY_AFTER_NAMESPACE();

#define ORPSP_TABLE "exports/pack.inc"
#include "frame/exports-inl.h"
