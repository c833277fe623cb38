// SortRadix and SortRadixIndex: the stable order of the keys.
#include "sorting.h"

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace {

using namespace sorting;

class Threads {
 public:
  explicit Threads(int count) { orpSetNumThreads(count); }
  ~Threads() { orpSetNumThreads(1); }
};

// Around the lengths from which two threads sort, and of several blocks.
std::vector<int> lengthsForThreads() {
  std::vector<int> lengths = {30'011, 200'003};
  for (const int threshold : {32, 8192})
    for (const auto& length : orptest::lengthsAroundThreshold(threshold)) lengths.push_back(length.value);
  return lengths;
}

template <class T>
void check(OrpStatus (*sort)(T*, T*, int), bool descend) {
  size_t misalignment = 0;
  const auto checkOne = [&](const std::vector<T>& input, const std::vector<T>& sorted) {
    misalignment += 5;
    Guarded<T> data(input, misalignment), buffer(input.size(), 3 * misalignment);
    ASSERT_EQ(StsOk, sort(data.data(), buffer.data(), static_cast<int>(input.size())));
    ASSERT_TRUE(sameBits(sorted, data.values()));
  };
  sweep<T>(descend, lengths(), checkOne);
  for (const int count : {1, 2}) {
    const Threads threads(count);
    sweep<T>(descend, lengthsForThreads(), checkOne, count == 1 ? 1 : 2);
  }
}

// Records of `stride` bytes with the key in front; the last one ends behind its key, and so does the block.
template <class T>
std::vector<unsigned char> records(const std::vector<T>& keys, size_t stride, Random& random) {
  std::vector<unsigned char> bytes((keys.size() - 1) * stride + sizeof(T));
  for (auto& byte : bytes) byte = static_cast<unsigned char>(random.bits());
  for (size_t n = 0; n < keys.size(); ++n) std::memcpy(&bytes[n * stride], &keys[n], sizeof(T));
  return bytes;
}

// Equal keys by ascending index, in both directions.
template <class T>
std::vector<Orp32s> stableOrder(const std::vector<T>& keys, bool descend) {
  std::vector<Orp32s> order(keys.size());
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&](Orp32s a, Orp32s b) {
    return Before{descend}(keys[static_cast<size_t>(a)], keys[static_cast<size_t>(b)]);
  });
  return order;
}

template <class T>
using SortIndices = OrpStatus (*)(const T*, Orp32u, Orp32s*, Orp32s*, int);

template <class T>
void checkStrides(SortIndices<T> sort, bool descend) {
  Random random;
  size_t misalignment = 0;
  const auto checkOne = [&](const std::vector<T>& keys, size_t stride) {
    misalignment += 5;
    const size_t len = keys.size();
    const auto bytes = records(keys, stride, random);
    Guarded<unsigned char> source(bytes, misalignment);
    Guarded<Orp32s> index(len, 4 * misalignment), buffer(len, 12 * misalignment);
    ASSERT_EQ(StsOk, sort(reinterpret_cast<const T*>(source.data()), static_cast<Orp32u>(stride), index.data(),
                          buffer.data(), static_cast<int>(len)));
    ASSERT_EQ(stableOrder(keys, descend), index.values()) << len << " keys, stride " << stride;
    ASSERT_EQ(bytes, source.values());
  };
  constexpr size_t kStrides[] = {sizeof(T), sizeof(T) + 1, 2 * sizeof(T), 7, 8, 24, 61};
  size_t turn = 0;
  const auto checkSome = [&](const auto& keys, const auto&) { checkOne(keys, kStrides[turn++ % std::size(kStrides)]); };
  sweep<T>(descend, lengths(), checkSome);
  const Threads threads(2);
  sweep<T>(descend, lengthsForThreads(), checkSome, 1);
}

// Keys further apart than 32 bits can say. Most of the memory between them is never there.
template <class T>
void checkWideStride(SortIndices<T> sort, bool descend) {
#if defined(__linux__)
  Random random;
  const auto keys = arranged(kShapes[0], multiset<T>(kAny, 5000, random, descend), random);
  std::vector<Orp32s> index(keys.size()), buffer(keys.size());
  const size_t stride = (size_t{1} << 20) + 1, bytes = keys.size() * stride;
  void* const map = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (map == MAP_FAILED) GTEST_SKIP() << "no room for 5 GB of addresses";
  for (size_t n = 0; n < keys.size(); ++n)
    std::memcpy(static_cast<unsigned char*>(map) + n * stride, &keys[n], sizeof(T));
  EXPECT_EQ(StsOk, sort(static_cast<const T*>(map), static_cast<Orp32u>(stride), index.data(), buffer.data(),
                        static_cast<int>(keys.size())));
  EXPECT_EQ(stableOrder(keys, descend), index);
  munmap(map, bytes);
#else
  static_cast<void>(sort), static_cast<void>(descend);
#endif
}

template <class T>
void checkBadStrides(SortIndices<T> sort) {
  const std::vector<T> keys(20, T{1});
  for (Orp32u stride = 0; stride < sizeof(T); ++stride) {
    Guarded<Orp32s> index(20), buffer(20);
    EXPECT_EQ(StsBadSize, sort(keys.data(), stride, index.data(), buffer.data(), 20)) << stride;
    EXPECT_EQ(StsBadSize, sort(keys.data(), stride, index.data(), buffer.data(), 1)) << stride;
    EXPECT_EQ(StsNullPtr, sort(keys.data(), stride, index.data(), nullptr, 20)) << stride;
    EXPECT_TRUE(index.untouched() && buffer.untouched());
  }
}

template <class T>
void check(SortIndices<T> sort, bool descend) {
  checkStrides(sort, descend);
  checkWideStride(sort, descend);
  checkBadStrides(sort);
}

}  // namespace

#define ORPS_EXPORT(name, ...)                             \
  TEST(SortRadix, name) { check(&name, descends(#name)); } \
  static_assert(true)
#include "exports/radix.inc"

TEST(SortRadix, zerosAndSigns) {
  Orp32f data[] = {2, -0.0F, 0, -1}, buffer[4];
  ASSERT_EQ(StsOk, orpsSortRadixAscend_32f_I(data, buffer, 4));
  EXPECT_TRUE(sameBits(std::vector<Orp32f>(data, data + 4), {-1, -0.0F, 0, 2}));
}
