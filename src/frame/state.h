// States of generators: records without pointers, at any address of the caller's or in memory of the library. A copy
// of the bytes is a state too, but owns no memory.
//
// A record begins with `Orp32u tag`, which tells what it belongs to, and has `Orp64u home`, the address that
// allocateState gave it, or 0.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/check.h"
#include "orpcore.h"
#include "simd/element.h"

namespace orpsp {

template <class Record>
OrpStatus stateSize(int* pSize) {
  ORPS_RETURN_IF(anyNull(pSize), StsNullPtr);
  put(pSize, static_cast<int>(sizeof(Record)));
  return StsOk;
}

template <class Record, class Handle>
void writeState(Handle* state, const Record& record) {
  put(reinterpret_cast<Record*>(state), record);
}

// Whether there is a state with this tag, then in `record`. What has another tag may be smaller.
template <class Record, class Handle>
bool readState(const Handle* state, Orp32u tag, Record& record) {
  static_assert(offsetof(Record, tag) == 0);
  if (get(reinterpret_cast<const Orp32u*>(state)) != tag) return false;
  record = get(reinterpret_cast<const Record*>(state));
  return true;
}

template <class Record, class Handle>
OrpStatus allocateState(Handle** ppState, Record record) {
  auto* const state = static_cast<Handle*>(orpMalloc(sizeof(Record)));
  ORPS_RETURN_IF(state == nullptr, StsNoMemory);
  record.home = reinterpret_cast<uintptr_t>(state);
  writeState(state, record);
  put(ppState, state);
  return StsOk;
}

template <class Record, class Handle>
OrpStatus releaseState(Handle* pState, Orp32u tag) {
  ORPS_RETURN_IF(anyNull(pState), StsNullPtr);
  Record record;
  ORPS_RETURN_IF(!readState(pState, tag, record), StsSpecMismatch);
  record.tag = 0;
  writeState(pState, record);
  if (record.home == reinterpret_cast<uintptr_t>(pState)) orpFree(pState);
  return StsOk;
}

}  // namespace orpsp
