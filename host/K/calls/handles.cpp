// The exported calls on handles.
#include <new>
#include <string>

#include "K_host.h"
#include "TRC_host.h"
#include "host/K/calls/purge_loop.h"
#include "host/K/handles/handle_store.h"
#include "host/K/limits/refusals.h"
#include "host/K/reports/report_sink.h"
#include "host/K/texts/mac_roman.h"

namespace {

using k::HandleStore;

// The store throws when its own tables cannot grow.
template <typename Allocate>
Handle NullWhenShort(Allocate allocate) {
  try {
    return allocate();
  } catch (const std::bad_alloc&) {
    k::NoteRefusal(k::Refuser::System, 0);
    return nullptr;
  }
}

Handle NewClear(std::uint64_t size) {
  return NullWhenShort([size] { return HandleStore::Instance().New(size, k::Content::Clear); });
}

Handle NewClearAfterFreeing(std::uint64_t size) {
  Handle handle = NewClear(size);
  while (handle == nullptr && k::FreeMemory(size) > 0) handle = NewClear(size);
  return handle;
}

void ReportShortage(std::uint32_t code, const char* what, std::uint64_t size) {
  const auto text = [=] {
    const std::string name = k::MacRomanToUTF8(what != nullptr ? what : "handle");
    return "not enough memory for " + name + " (" + std::to_string(size) + " bytes)";
  };
  k::ReportMade(code, K_ReportClass_ERROR, K_Err_NO_MEMORY, text,
                std::string_view("not enough memory for a handle"));
}

// Callers may lock a handle that they made themselves.
void NoteForeign(bool known, const char* call) {
  if (!known) TRC_Log(TRC_Level_NOTE, "K", call, "the handle is not live");
}

}  // namespace

Handle K_AllocateHandleClear(std::uint32_t code, const char* what, std::uint64_t size) {
  HandleStore::Instance().ScrambleUnlocked();
  Handle handle = NewClearAfterFreeing(size);
  if (handle == nullptr) ReportShortage(code, what, size);
  return handle;
}

void K_FreeHandle(Handle handle) {
  if (handle == nullptr || HandleStore::Instance().Free(handle)) return;
  k::ReportPlain(K_Code_HANDLE, K_ReportClass_ERROR, 0,
                 std::string_view("K_FreeHandle: the handle is not live (freed twice, or not made "
                                  "by K)"));
}

void K_PurgeHandlesAndCompact() {
  k::FreePurgeable();
  HandleStore::Instance().MoveUnlocked();
}

void K_SetScramble(Boolean on) {
  HandleStore::Instance().SetScramble(on != 0);
}

void K_MoveUnlockedHandles() {
  HandleStore::Instance().ScrambleUnlocked();
}

Handle K_NewEmptyHandle() {
  HandleStore::Instance().ScrambleUnlocked();
  return NullWhenShort([] { return HandleStore::Instance().NewEmpty(); });
}

Handle K_NewHandle(std::uint64_t size) {
  return NullWhenShort([size] { return HandleStore::Instance().New(size, k::Content::Unset); });
}

void K_LockHandle(Handle handle) {
  if (handle != nullptr) NoteForeign(HandleStore::Instance().Lock(handle), "lock");
}

void K_UnlockHandle(Handle handle) {
  if (handle != nullptr) NoteForeign(HandleStore::Instance().Unlock(handle), "unlock");
}

Boolean K_IsHandle(void* pointer) {
  return HandleStore::Instance().IsLive(static_cast<Handle>(pointer)) ? 1 : 0;
}

Boolean K_IsHandleLocked(Handle handle) {
  return HandleStore::Instance().IsLocked(handle) ? 1 : 0;
}

void K_SetHandlePurgeable(Handle handle, Boolean purgeable) {
  HandleStore::Instance().SetPurgeable(handle, purgeable != 0);
}

Boolean K_PurgeHandle(Handle handle) {
  return HandleStore::Instance().Purge(handle) ? 1 : 0;
}

std::uint64_t K_GetHandleSize(Handle handle) {
  return HandleStore::Instance().SizeOf(handle);
}

std::uint64_t K_CountHandles() {
  return HandleStore::Instance().Count();
}
