// The exported calls on recycled pointers.
#include <cstdint>
#include <new>

#include "K_host.h"
#include "host/K/pool/pool.h"
#include "host/K/reports/report_sink.h"

using k::Pool;

K_RecycledPtrRef K_AllocateRecycledPtr(std::uint32_t ownerCode, const char* label,
                                       std::uint64_t size) {
  try {
    return Pool::Instance().Allocate(ownerCode, label, size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void* K_GetRecycledPtrBaseAddress(K_RecycledPtrRef ref) {
  return ref != nullptr ? ref->base : nullptr;
}

void K_FreeRecycledPtr(void* base) {
  if (base == nullptr) return;
  bool own = true;
  try {
    own = Pool::Instance().Free(base);
  } catch (const std::bad_alloc&) {
    // The block was unmapped instead of kept.
  }
  if (own) return;
  k::ReportPlain(
      K_Code_ADDRESS, K_ReportClass_ERROR, 0,
      std::string_view(
          "K_FreeRecycledPtr: the address is not a recycled pointer; nothing was freed"));
}

void K_GetPoolStatistics(K_PoolStatistics* statistics) {
  *statistics = Pool::Instance().Statistics();
}

void K_SetPoolLimit(std::uint64_t bytes) {
  Pool::Instance().SetLimit(bytes);
}

std::uint64_t K_GetPoolLimit() {
  return Pool::Instance().Limit();
}

void K_SetPoolChecks(std::uint32_t checks) {
  Pool::Instance().SetChecks(checks);
}

std::uint32_t K_GetPoolChecks() {
  return Pool::Instance().Checks();
}

Boolean K_IsRecycledPtr(const void* base) {
  return Pool::Instance().Owns(base) ? 1 : 0;
}
