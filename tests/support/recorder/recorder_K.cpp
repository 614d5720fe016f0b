// K as the recorder plays it.
#include <cstdlib>
#include <cstring>

#include "tests/support/recorder/recorder.h"

using recorder::Current;
using recorder::Hex;
using recorder::Join;
using recorder::Text;

char Kp_G_buffer[1024];
std::int32_t Kp_G_err_buf;

// A block of the pool; the reference is not the address.
struct K_RecycledPtr {
  void* base;
};

Handle K_AllocateHandleClear(std::uint32_t code, const char* what, std::uint64_t size) {
  if (Current().Enter("K_AllocateHandleClear", Join(Hex(code), Text(what), Text(size)))) {
    return nullptr;
  }
  Current().MoveBlocks();
  Handle handle = Current().NewHandle(size);
  Current().Own(handle, "handle", [] {});
  return handle;
}

void K_FreeHandle(Handle handle) {
  Current().Enter("K_FreeHandle", Text(static_cast<void*>(handle)));
  Current().Disown(handle);
  Current().FreeHandle(handle);
}

std::int32_t K_PurgeLoop(std::uint64_t bytesNeeded, K_PurgeAttempt attempt, void* context,
                         Boolean last) {
  Current().Enter("K_PurgeLoop", Join(Text(bytesNeeded), Text(last)));
  if (Current().script.purgeLoop) {
    return Current().script.purgeLoop(bytesNeeded, attempt, context);
  }
  for (int round = 0; round <= Current().script.purgeRounds; ++round) {
    std::uint8_t done = 2;
    const std::int32_t code = attempt(context, &done);
    if (done > 1) std::abort();  // the attempt has to say one or the other
    if (done == 1) return code;
  }
  return 4;
}

K_RecycledPtrRef K_AllocateRecycledPtr(std::uint32_t ownerCode, const char* label,
                                       std::uint64_t size) {
  const recorder::Aside aside;
  if (Current().Enter("K_AllocateRecycledPtr", Join(Hex(ownerCode), Text(label), Text(size)))) {
    return nullptr;
  }
  const std::size_t offset = Current().script.blockOffset;
  void* start = operator new(offset + size);
  auto* block = new K_RecycledPtr{static_cast<char*>(start) + offset};
  std::memset(block->base, 0xA5, size);
  Current().Own(block->base, "pool", [start] { operator delete(start); });
  Current().Name(block, "ref of " + Current().NameOf(block->base));
  return block;
}

void* K_GetRecycledPtrBaseAddress(K_RecycledPtrRef ref) {
  Current().Enter("K_GetRecycledPtrBaseAddress", Text(static_cast<void*>(ref)));
  if (ref == nullptr) return nullptr;
  void* base = ref->base;
  delete ref;
  return base;
}

void K_FreeRecycledPtr(void* base) {
  Current().Enter("K_FreeRecycledPtr", Text(base));
  if (!Current().Owns(base, "pool")) return;  // a foreign block stays where it is
  Current().Release(base);
}

void K_AccountAllocation(std::int32_t delta) {
  Current().Enter("K_AccountAllocation", Text(delta));
}

void K_AccountSystemAllocation(std::int32_t delta) {
  Current().Enter("K_AccountSystemAllocation", Text(delta));
}

void K_PurgeHandlesAndCompact() {
  Current().Enter("K_PurgeHandlesAndCompact", "");
  Current().MoveBlocks();
}

void K_Beep() {
  Current().Enter("K_Beep", "");
}

std::int32_t K_CheckVersions(std::uint32_t reportCode, std::int32_t headerVersion) {
  Current().Enter("K_CheckVersions", Join(Hex(reportCode), Text(headerVersion)));
  return Current().script.versionsOfK;
}

const char* K_ZLookupLStrCache(const K_LStrCatalogue* catalogue, std::int32_t index,
                               std::int32_t first, std::int32_t second) {
  Current().Enter("K_ZLookupLStrCache", Join(Text(index), Text(first), Text(second)));
  return std::strchr(catalogue->entries[index].key, '=') + 1;
}

void Kp_ReportErrString(std::uint32_t code, std::uint16_t cls, const char* text) {
  Current().Enter("Kp_ReportErrString", Join(Hex(code), Text(cls), Text(text)));
}

std::int32_t Kp_ReportQuexErrString(std::uint32_t code, std::uint16_t cls, std::int32_t error,
                                    const char* text) {
  Current().Enter("Kp_ReportQuexErrString", Join(Hex(code), Text(cls), Text(error), Text(text)));
  return Current().script.quexErrString ? Current().script.quexErrString(error) : error;
}

void Kp_SysEnglishError(std::int32_t error) {
  Current().Enter("Kp_SysEnglishError", Text(error));
}

// The report has the contents that the two words have at this moment.
void Kp_ReportError(std::uint32_t code, std::uint16_t cls) {
  const recorder::Aside aside;
  Current().Enter("Kp_ReportError", Join(Hex(code), Text(cls)) + " error " + Text(Kp_G_err_buf) +
                                        " " + Text(static_cast<const char*>(Kp_G_buffer)));
}

void K_ReportFailedVerification(std::uint32_t code, std::int32_t line, std::int32_t zero,
                                const char* text) {
  Current().Enter("K_ReportFailedVerification",
                  Join(Hex(code), Text(line), Text(zero), Text(text)));
}

std::u16string K_ZStringToUTF16String(const char* zstring) {
  Current().Enter("K_ZStringToUTF16String", Text(zstring));
  const std::string text(std::strchr(zstring, '=') + 1);
  return {text.begin(), text.end()};
}

void K_ReportError(std::uint32_t code, std::uint16_t cls, const std::u16string& text) {
  Current().Enter("K_ReportError", Join(Hex(code), Text(cls), Text(text)));
}

std::int32_t K_TranslateAndReportException(const std::exception& exception) {
  Current().Enter("K_TranslateAndReportException", Text(exception.what()));
  return Current().script.translatedException;
}
