// States and specifications: records that the library makes for a caller, in memory of the caller's or of its own.
//
// A record begins with a 32-bit `tag`, which says what it is, and has `Orp64u home`: its address if the library
// allocated it, else 0. Only what stands at its home is the library's; a copy of the bytes elsewhere owns nothing. A
// record may also have a field `isAllocated`, which is 1 wherever home was not 0 and decides nothing.
//
// A kind of records is a template over the type of the caller's pointer, named in the table of exports:
// `init<Random>`, `initAlloc<Random>`, `release<Random>`. It is derived from KindOf and has, for the parameters of
// Init:
//
//   Check(parameters...)                  the status of the parameters
//   Make(record, buffer, parameters...)   fills the record and what is behind it, the tag last; a status. `buffer` is
//                                         memory for the time of the call
//   Bytes(parameters...)                  what the record takes with all that is behind it. Without it: the record
//   alone kAlignment                            of a record in a caller's memory; without it, Init takes the record's
//   address
//
// What is behind a record is described once, as a function that takes regions, and run twice: without memory it counts,
// with memory it places (Regions).
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/access.h"
#include "frame/check.h"
#include "orpcore.h"
#include "orpsp/types.h"

namespace orpsp {

// Parts of one block of memory, one behind the other. Without memory all of them are null, and only bytes() counts.
class Regions {
 public:
  constexpr Regions() = default;
  explicit Regions(void* block) : block_(static_cast<char*>(block)) {}

  // `alignment` is that of offsets: the block has the greatest one. No elements: null.
  template <class T>
  constexpr T* take(size_t count, size_t alignment = alignof(T)) {
    if (count == 0) return nullptr;
    const size_t offset = upToMultiple(bytes_, alignment);
    bytes_ = offset + count * sizeof(T);
    return block_ == nullptr ? nullptr : reinterpret_cast<T*>(block_ + offset);
  }
  constexpr size_t bytes() const { return bytes_; }

 private:
  char* block_ = nullptr;
  size_t bytes_ = 0;
};

// The tags that a call accepts. New records have the first one, unless their kind says otherwise.
template <Orp32u first, Orp32u... others>
struct Tags {
  static constexpr Orp32u kFirst = first;
  static constexpr bool have(Orp32u tag) { return tag == first || ((tag == others) || ...); }
};

// kFreeEnds: after Free nothing accepts a record any more, even one in memory of the caller's. Else Free leaves that as
// it is.
template <class R, class T, bool freeEnds = false>
struct KindOf {
  using Record = R;
  using Tags = T;
  static constexpr bool kFreeEnds = freeEnds;
  static_assert(offsetof(Record, tag) == 0 && sizeof(Record::tag) == 4 && sizeof(Record::home) == 8);
};

struct RecordBytes {
  uint64_t record, buffer;
};

// ---- Records at any address, read and written as bytes

// Whether a call that accepts these tags accepts what stands there. What has another tag may be as small as a tag.
template <class Tags, class Handle>
__attribute__((always_inline)) inline bool accepts(const Handle* handle) {
  return Tags::have(get(reinterpret_cast<const Orp32u*>(handle)));
}

// False, and nothing read, if the record is not of this kind.
template <class Kind, class Handle>
__attribute__((always_inline)) inline bool readState(const Handle* handle, typename Kind::Record& record) {
  if (!accepts<typename Kind::Tags>(handle)) return false;
  record = get(reinterpret_cast<const typename Kind::Record*>(handle));
  return true;
}

// One field, for calls that change no more of a record.
template <class T, class Handle>
__attribute__((always_inline)) inline void writeField(Handle* handle, size_t offset, T value) {
  put(reinterpret_cast<T*>(reinterpret_cast<char*>(handle) + offset), value);
}

// ---- Exports

// GetSize of a record with nothing behind it.
template <class Record>
OrpStatus stateSize(int* pSize) {
  ORPS_RETURN_IF(anyNull(pSize), StsNullPtr);
  put(pSize, static_cast<int>(sizeof(Record)));
  return StsOk;
}

// Init of a record that stands where the caller says.
template <template <class> class Kind, class Handle, class... Parameter>
OrpStatus init(Handle* pState, Parameter... parameter) {
  using K = Kind<Handle>;
  ORPS_RETURN_IF(anyNull(pState), StsNullPtr);
  OrpStatus status = K::Check(parameter...);
  ORPS_RETURN_IF(status < StsOk, status);
  typename K::Record record;
  status = K::Make(record, nullptr, parameter...);
  if (status >= StsOk) put(reinterpret_cast<typename K::Record*>(pState), record);
  return status;
}

// The rest of an Init that puts the record at the first multiple of kAlignment in a caller's memory, when all pointers
// and parameters have been checked.
template <template <class> class Kind, class Handle, class... Parameter>
OrpStatus initIn(Orp8u* memory, Orp8u* buffer, Handle** ppState, Parameter... parameter) {
  using K = Kind<Handle>;
  auto* const record = static_cast<typename K::Record*>(orpAlignPtr(memory, K::kAlignment));
  const OrpStatus status = K::Make(*record, buffer, parameter...);
  ORPS_RETURN_IF(status < StsOk, status);
  record->home = 0;
  put(ppState, reinterpret_cast<Handle*>(record));
  return status;
}

template <template <class> class Kind, class Handle, class... Parameter>
OrpStatus initAlloc(Handle** ppState, Parameter... parameter) {
  using K = Kind<Handle>;
  using Record = typename K::Record;
  ORPS_RETURN_IF(anyNull(ppState), StsNullPtr);
  OrpStatus status = K::Check(parameter...);
  ORPS_RETURN_IF(status < StsOk, status);
  RecordBytes bytes{sizeof(Record), 0};
  if constexpr (requires { K::Bytes(parameter...); }) bytes = K::Bytes(parameter...);
  auto* const record = static_cast<Record*>(orpMalloc(static_cast<int64_t>(bytes.record)));
  auto* const buffer = static_cast<Orp8u*>(orpMalloc(static_cast<int64_t>(bytes.buffer)));  // of 0 bytes: null
  const bool hasMemory = record != nullptr && (buffer != nullptr || bytes.buffer == 0);
  status = hasMemory ? K::Make(*record, buffer, parameter...) : OrpStatus{StsNoMemory};
  orpFree(buffer);
  if (status < StsOk) {
    orpFree(record);
    return status;
  }
  record->home = reinterpret_cast<uintptr_t>(record);
  if constexpr (requires { record->isAllocated; }) record->isAllocated = 1;
  put(ppState, reinterpret_cast<Handle*>(record));
  return status;
}

// Free. The tag goes before the memory does: what is used afterwards is refused as long as it can be read.
template <template <class> class Kind, class Handle>
OrpStatus release(Handle* pState) {
  using K = Kind<Handle>;
  ORPS_RETURN_IF(anyNull(pState), StsNullPtr);
  ORPS_RETURN_IF(!accepts<typename K::Tags>(pState), StsSpecMismatch);
  auto* const record = reinterpret_cast<char*>(pState);
  const auto home = get(reinterpret_cast<const Orp64u*>(record + offsetof(typename K::Record, home)));
  const bool isOwn = home == reinterpret_cast<uintptr_t>(pState);
  if (isOwn || K::kFreeEnds) put(reinterpret_cast<Orp32u*>(pState), Orp32u{0});
  if (isOwn) orpFree(pState);
  return StsOk;
}

}  // namespace orpsp
