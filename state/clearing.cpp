// Fills of whole Worlds.
#include "state/clearing.h"

#include <cstring>

#include "platform/record_access.h"
#include "simd/pixels32.h"
#include "world/record/base_address.h"

namespace {

constexpr std::size_t kWord = sizeof(std::uint32_t);

// The whole words of all rows; up to three bytes at the end are left out.
std::size_t WordCount(const PXL_World& world) {
  const std::int64_t bytes = std::int64_t{world.pixels.rowBytes} * world.height;
  return static_cast<std::size_t>(static_cast<std::uint64_t>(bytes) >> 2);
}

}  // namespace

void PXLp_FillWorld(PXL_WorldHandle worldH, std::int32_t value) {
  const std::size_t words = WordCount(*RecordOf(worldH));
  void* destination = PXLp_LocatePixels(worldH);
  if (value == 0) {
    // Without rows there may be no memory either, and memset takes no null.
    if (words != 0) std::memset(destination, 0, words * kWord);
  } else if (destination != nullptr) {
    simd::Fill32(destination, static_cast<std::uint32_t>(value), words);
  }
}

std::int32_t PXL_ClearWorldToLong(PXL_WorldHandle worldH, std::int32_t value) {
  PXLp_FillWorld(worldH, value);
  return PXL_Err_NONE;
}

std::int32_t PXL_ClearWorldToZeros(PXL_WorldHandle worldH) {
  PXLp_FillWorld(worldH, 0);
  return PXL_Err_NONE;
}
