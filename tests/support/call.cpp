#include "support/call.h"

#include <algorithm>

namespace orptest {

Export::Export(const char* itsName, void (*itsFunction)(), const Prototype& prototype)
    : name(itsName), function(itsFunction), parameters(prototype.parameters), invoke(prototype.invoke) {
  for (const TraitRow& row : kTraitRows) {
    if (!matches(name, row.names)) continue;
    traits |= row.traits;
    sharedFrom = std::min(sharedFrom, row.sharedFrom);
  }
}

size_t Export::arrays() const {
  return static_cast<size_t>(
      std::count_if(parameters.begin(), parameters.end(), [](const Parameter& p) { return p.element != nullptr; }));
}

size_t Export::sources() const {
  return static_cast<size_t>(std::count_if(parameters.begin(), parameters.end(),
                                           [](const Parameter& p) { return p.element != nullptr && p.isSource; }));
}

size_t Export::lastArray() const {
  size_t last = parameters.size() - 1;
  while (!parameters[last].element) --last;
  return last;
}

bool Export::hasFloats() const {
  return std::any_of(parameters.begin(), parameters.end(), [](const Parameter& p) { return p.isFloat; });
}

bool Export::hasIntegerResult() const {
  return std::any_of(parameters.begin(), parameters.end(),
                     [](const Parameter& p) { return p.element && !p.isSource && p.isInteger; });
}

size_t Export::length() const {
  if (is(kHasBitStrings)) return parameters.size() - 1;
  size_t last = lastArray();
  while (is(kReduces) && !parameters[last].isSource) --last;
  return last + 1;
}

int Export::further(size_t i, int extra) const {
  if (is(kTakesStride)) return static_cast<int>(parameters[0].elementBytes);
  const bool isRelation = is(kTakesRelation) && i + 1 == parameters.size();
  return isRelation && extra == kExtras[0] ? 4 : extra;  // greater-than; another extra is 0, less-than
}

Call::Call(const Export& description, int len, int extra, size_t misalignment)
    : export_(description), slots_(description.parameters.size()) {
  const int elements = export_.is(kHasBitStrings) ? (std::max(extra, 0) + len + 7) / 8 : len;
  for (size_t i = 0; i < slots_.size(); ++i) {
    const Parameter& parameter = export_.parameters[i];
    if (parameter.element) {
      const size_t displacement = misalignment == kAnyAddress ? kAnyAddress : misalignment + 2 * i;
      EXPECT_EQ(arrays_.size() < export_.sources(), parameter.isSource) << export_.name << " is of another shape";
      const bool isResult = export_.is(kReduces) && i > export_.length();
      arrays_.push_back(parameter.makeArray(isResult ? 1 : static_cast<size_t>(elements), displacement));
      places_.push_back(i);
      slots_[i].pointer = arrays_.back()->data();
    } else {
      slots_[i].number = i == export_.length() ? len : export_.further(i, extra);
    }
  }
  EXPECT_LT(export_.sources(), arrays_.size()) << export_.name << " has no destination";
}

void Call::setNull(size_t k) {
  for (size_t i = 0; i < arrays_.size(); ++i)
    slots_[places_[i]].pointer = i == k || k == arrays_.size() ? nullptr : arrays_[i]->data();
}

void Call::fill(uint64_t stream, Values values, const Sharing& sharing) {
  for (size_t i = 0; i < arrays_.size(); ++i) {
    const size_t owner = i < sharing.size() ? sharing[i] : i;
    arrays_[i]->fill(stream * 16 + owner, values);
  }
}

void Call::fillWithOnes() {
  for (const auto& array : arrays_) array->fillWithOnes();
}

std::vector<Sharing> Call::sharings() const {
  if (export_.is(kHasBitStrings) || export_.is(kReduces) || export_.is(kSorts)) return {};
  const size_t sources = export_.sources();
  Sharing own(sources);
  for (size_t i = 0; i < sources; ++i) own[i] = i;
  const auto type = [this](size_t array) -> const std::type_info& {
    return *export_.parameters[places_[array]].element;
  };
  std::vector<Sharing> all = {own};
  for (size_t i = 0; i < sources; ++i) {
    for (size_t k = 0, known = all.size(); k < known; ++k) {
      for (size_t destination = sources; destination < arrays_.size(); ++destination) {
        if (type(i) != type(destination)) continue;
        all.push_back(all[k]);
        all.back()[i] = destination;
      }
    }
  }
  all.erase(all.begin());
  return all;
}

void Call::share(const Sharing& sharing) {
  for (size_t i = 0; i < sharing.size(); ++i) slots_[places_[i]].pointer = arrays_[sharing[i]]->data();
}

std::vector<unsigned char> Call::result() const {
  std::vector<unsigned char> all;
  for (size_t i = export_.sources(); i < arrays_.size() - (export_.is(kHasWorkArray) ? 1 : 0); ++i) {
    const auto bytes = arrays_[i]->bytes();
    all.insert(all.end(), bytes.begin(), bytes.end());
  }
  return all;
}

void Call::takeElement(const Call& other, size_t i) {
  for (size_t k = 0; k < arrays_.size(); ++k) arrays_[k]->repeat(*other.arrays_[k], i);
}

bool Call::resultIsElement(const Call& other, size_t i) const {
  for (size_t k = export_.sources(); k < arrays_.size(); ++k)
    if (!arrays_[k]->repeats(*other.arrays_[k], i)) return false;
  return true;
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
