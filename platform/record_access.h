// Access to the records behind relocatable handles.
#ifndef PLATFORM_RECORD_ACCESS_H
#define PLATFORM_RECORD_ACCESS_H

#include <cstring>

#include "PXL_Types.h"

// The record that a handle shows at this moment. It may move in any imported
// call, so ask anew after each. A master pointer is a Ptr object whatever
// record it shows; copying its bytes reads it without naming a wrong type.
template <class Record>
[[nodiscard]] inline Record* RecordOf(Record* const* handle) {
  Record* record = nullptr;
  std::memcpy(&record, handle, sizeof record);
  return record;
}

// The same handle, for the calls that take handles of any kind.
template <class Record>
[[nodiscard]] inline Handle AsHandle(Record** handle) {
  return reinterpret_cast<Handle>(handle);
}

#endif
