// SortIndex: the permutation that the documented steps make.
#include <bit>

#include "sorting.h"

namespace {

using namespace sorting;

// The steps as they are documented, on elements without NaNs; ranges that wait stand on a stack.
template <class T>
class DocumentedSort {
 public:
  DocumentedSort(const std::vector<T>& input, bool descend) : data(input), index(input.size()), descend_(descend) {
    std::iota(index.begin(), index.end(), 0);
    ranges_.push_back({0, static_cast<int>(input.size()) - 1, 1});
    while (!ranges_.empty()) {
      const Range range = ranges_.back();
      ranges_.pop_back();
      if (range.last - range.first < 9) {
        select(range);
      } else {
        partition(range);
      }
    }
  }

  // Whether no range was as deep as those that are put in another order.
  bool isQuick() const { return deepest_ <= 16 * static_cast<int>(std::bit_width(data.size()) - 1); }

  std::vector<T> data;
  std::vector<Orp32s> index;

 private:
  struct Range {
    int first, last, depth;  // both ends belong to it
  };

  T at(int n) const { return data[static_cast<size_t>(n)]; }
  bool greater(T a, T b) const { return descend_ ? a < b : a > b; }
  bool notLess(T a, T b) const { return descend_ ? a <= b : a >= b; }
  void exchange(int a, int b) {
    std::swap(data[static_cast<size_t>(a)], data[static_cast<size_t>(b)]);
    std::swap(index[static_cast<size_t>(a)], index[static_cast<size_t>(b)]);
  }

  void select(Range range) {
    for (int last = range.last; last > range.first; --last) {
      int largest = range.first;
      for (int n = range.first + 1; n <= last; ++n)
        if (greater(at(n), at(largest))) largest = n;
      exchange(largest, last);
    }
  }

  void partition(Range range) {
    const auto [first, last, depth] = range;
    deepest_ = std::max(deepest_, depth);
    const int middle = first + (last - first + 1) / 2;
    if (greater(at(first), at(last))) exchange(first, last);
    if (greater(at(middle), at(last))) exchange(middle, last);
    if (greater(at(first), at(middle))) exchange(first, middle);
    const T pivot = at(middle);
    int left = first + 1, right = last;
    for (;;) {
      while (left <= last && !greater(at(left), pivot)) ++left;
      while (right >= first && greater(at(right), pivot)) --right;
      if (left >= right) break;
      exchange(left++, right--);
    }
    while (right >= first && notLess(at(right), pivot)) --right;
    while (left <= last && notLess(pivot, at(left))) ++left;
    if (right > first) ranges_.push_back({first, right, depth + 1});
    if (left < last) ranges_.push_back({left, last, depth + 1});
  }

  const bool descend_;
  int deepest_ = 0;
  std::vector<Range> ranges_;
};

template <class T>
class Check {
 public:
  Check(OrpStatus (*sort)(T*, Orp32s*, int), bool descend) : sort_(sort), descend_(descend) {}

  void operator()(const std::vector<T>& input) {
    const size_t len = input.size();
    misalignment_ += 5;
    Guarded<T> data(input, misalignment_);
    Guarded<Orp32s> index(len, 3 * misalignment_);
    ASSERT_EQ(StsOk, sort_(data.data(), index.data(), static_cast<int>(len)));
    const auto sorted = data.values();
    const auto indices = index.values();
    // A permutation that says where each element came from, bit for bit.
    std::vector<bool> seen(len);
    for (size_t n = 0; n < len; ++n) {
      const auto from = static_cast<size_t>(indices[n]);
      ASSERT_TRUE(from < len && !seen[from]) << "index " << indices[n] << " at " << n;
      seen[from] = true;
      ASSERT_TRUE(std::memcmp(&sorted[n], &input[from], sizeof(T)) == 0) << "not what was at " << from << ": at " << n;
    }
    if (std::any_of(input.begin(), input.end(), [](T x) { return x != x; })) return;
    for (size_t n = 1; n < len; ++n)
      ASSERT_TRUE(descend_ ? sorted[n - 1] >= sorted[n] : sorted[n - 1] <= sorted[n]) << n;
    ++sorted_;
    const DocumentedSort<T> documented(input, descend_);
    if (!documented.isQuick()) return;
    ++compared_;
    ASSERT_TRUE(sameBits(documented.index, indices));
  }

  // How many of the inputs that could be sorted were, as far as is known, by the steps alone.
  double compared() const { return static_cast<double>(compared_) / sorted_; }

 private:
  OrpStatus (*const sort_)(T*, Orp32s*, int);
  const bool descend_;
  size_t misalignment_ = 0;
  int sorted_ = 0, compared_ = 0;
};

template <class T>
std::vector<T> withoutNans(std::vector<T> values) {
  for (T& value : values)
    if (value != value) value = -T{0};
  return values;
}

template <class T>
void checkSortIndex(OrpStatus (*sort)(T*, Orp32s*, int), bool descend) {
  Check<T> check(sort, descend);
  const auto checkBoth = [&](const std::vector<T>& input, const auto&) {
    check(input);
    if constexpr (std::is_floating_point_v<T>) check(withoutNans(input));
  };
  auto some = lengths();
  std::erase_if(some, [](int len) { return len > 2100; });
  sweep<T>(descend, some, checkBoth);
  EXPECT_GT(check.compared(), 0.9);
  sweep<T>(descend, {100'003}, checkBoth, 2);
}

template <class T>
void checkSortIndexTimes(OrpStatus (*sort)(T*, Orp32s*, int), bool descend) {
  std::vector<Orp32s> index(kLarge);
  checkTimes<T>(descend, [&](T* data, int len) { return sort(data, index.data(), len); });
}

}  // namespace

#define ORPS_EXPORT(name, ...)                                               \
  TEST(SortIndex, name) { checkSortIndex(&name, descends(#name)); }          \
  TEST(SortIndexTime, name) { checkSortIndexTimes(&name, descends(#name)); } \
  static_assert(true)
#include "exports/sort_index.inc"

// Only what is made for the steps may leave them.
TEST(SortIndex, wavesFollowTheSteps) {
  Check<Orp32f> check(&orpsSortIndexAscend_32f_I, false);
  Random random;
  for (const size_t len : {2000U, 100'003U}) {
    const auto sorted = distinct<Orp32f>(len, false);
    check(arranged({"organ pipe", organPipe}, sorted, random));
    check(arranged({"saw-tooth", sawTooth}, sorted, random));
    std::vector<Orp32f> period(len);
    for (size_t n = 0; n < len; ++n)
      period[n] = std::cos(6.2831853F * static_cast<float>(n) / static_cast<float>(len));  // its halves are equal
    check(period);
  }
  EXPECT_EQ(check.compared(), 1);
}

// What is left of a tie is seen in the indices alone.
TEST(SortIndex, example) {
  Orp32f data[] = {2, 1, 2, -0.0F, 0};
  Orp32s index[5];
  ASSERT_EQ(StsOk, orpsSortIndexAscend_32f_I(data, index, 5));
  EXPECT_EQ(std::vector<Orp32s>(index, index + 5), (std::vector<Orp32s>{3, 4, 1, 2, 0}));
}
