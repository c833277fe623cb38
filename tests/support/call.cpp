#include "support/call.h"

#include <algorithm>
#include <string_view>

namespace orptest {

size_t Export::arrays() const {
  return static_cast<size_t>(
      std::count_if(parameters.begin(), parameters.end(), [](const Parameter& p) { return p.element != nullptr; }));
}

size_t Export::destination() const {
  size_t last = parameters.size() - 1;
  while (!parameters[last].element) --last;
  return last;
}

bool Export::hasBitStrings() const { return std::string_view(name).find("_1u") != std::string_view::npos; }

size_t Export::length() const { return hasBitStrings() ? parameters.size() - 1 : destination() + 1; }

Call::Call(const Export& description, int len, int extra, size_t misalignment)
    : export_(description), slots_(description.parameters.size()) {
  const int elements = export_.hasBitStrings() ? (std::max(extra, 0) + len + 7) / 8 : len;
  for (size_t i = 0; i < slots_.size(); ++i) {
    const Parameter& parameter = export_.parameters[i];
    if (parameter.element) {
      const size_t displacement = misalignment == 0 ? 0 : misalignment + 2 * i;
      arrays_.push_back(parameter.makeArray(static_cast<size_t>(elements), displacement));
      places_.push_back(i);
      slots_[i].pointer = arrays_.back()->data();
      EXPECT_EQ(i != export_.destination(), parameter.isSource) << export_.name << " is of another shape";
    } else {
      slots_[i].number = i == export_.length() ? len : extra;
    }
  }
}

void Call::setNull(size_t k) {
  for (size_t i = 0; i < arrays_.size(); ++i)
    slots_[places_[i]].pointer = i == k || k == arrays_.size() ? nullptr : arrays_[i]->data();
}

void Call::fill(uint64_t stream, Values values, unsigned shared) {
  for (size_t i = 0; i < arrays_.size(); ++i) {
    const bool own = i + 1 < arrays_.size() && !(shared >> i & 1);
    arrays_[i]->fill(stream * 16 + (own ? i + 1 : 0), values);
  }
}

void Call::fillWithOnes() {
  for (const auto& array : arrays_) array->fillWithOnes();
}

unsigned Call::aliasable() const {
  if (export_.hasBitStrings()) return 0;
  unsigned sources = 0;
  for (size_t i = 0; i + 1 < places_.size(); ++i)
    if (*export_.parameters[places_[i]].element == *export_.parameters[places_.back()].element) sources |= 1u << i;
  return sources;
}

void Call::alias(unsigned sources) {
  for (size_t i = 0; i < arrays_.size(); ++i)
    if (sources >> i & 1) slots_[places_[i]].pointer = arrays_.back()->data();
}

bool Call::untouched() const {
  return std::all_of(arrays_.begin(), arrays_.end(), [](const auto& array) { return array->untouched(); });
}

ptrdiff_t firstDifference(const Call& a, const Call& b) {
  const auto one = a.result(), other = b.result();
  const auto at = std::mismatch(one.begin(), one.end(), other.begin(), other.end()).first;
  return at == one.end() ? kSame : at - one.begin();
}

}  // namespace orptest
