// Access to the records behind relocatable handles.
#ifndef PLATFORM_RECORD_ACCESS_H
#define PLATFORM_RECORD_ACCESS_H

#include <cstring>

#include "PXL_Types.h"

// Returns the present address of a handle's record. Any imported call may move
// the record, so callers do not keep the address across one. A master pointer is
// a Ptr object for records of every type; copying its bytes reads it without
// naming a wrong type.
template <typename Record>
[[nodiscard]] inline Record* RecordOf(Record* const* handle) {
  Record* record = nullptr;
  std::memcpy(&record, handle, sizeof record);
  return record;
}

// Returns the same handle, for calls that take handles of any kind.
template <typename Record>
[[nodiscard]] inline Handle AsHandle(Record** handle) {
  return reinterpret_cast<Handle>(handle);
}

#endif
