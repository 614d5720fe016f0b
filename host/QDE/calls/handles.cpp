// Handles live in K's store.
#include "K_host.h"
#include "QDE_host.h"
#include "host/QDE/pixels/errors.h"

void HLock(Handle handle) {
  K_LockHandle(handle);
}

void HUnlock(Handle handle) {
  K_UnlockHandle(handle);
}

Handle NewEmptyHandle() {
  Handle handle = K_NewEmptyHandle();
  qde::SetError(handle != nullptr ? qde::kNoError : qde::kMemoryFull);
  return handle;
}
