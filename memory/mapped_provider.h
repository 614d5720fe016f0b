// The provider that keeps a World's pixels in a memory-mapped file.
#ifndef MEMORY_MAPPED_PROVIDER_H
#define MEMORY_MAPPED_PROVIDER_H

#include <cstdint>

#include "PXL.h"

// Makes a provider of `byteCount` bytes and stores it in *slot. Returns 0 or
// PXL_Err_NO_MEMORY. After a failure the slot may hold a provider without a
// file; its operations accept that, so it is released like any other.
[[nodiscard]] std::int32_t PXLp_NewMappedProvider(std::uint64_t byteCount,
                                                  PXL_PixelProvider** slot);

#endif
