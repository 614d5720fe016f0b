// The order of the channels of 32-bit pixels.
#include "PXL.h"
#include "platform/QDE.h"
#include "platform/record_access.h"
#include "state/messages/reports.h"
#include "world/record/base_address.h"

namespace {

// The drawing layer numbers its formats as the module numbers its orders.
constexpr std::int32_t kUnknownFormat = -1;

bool IsOrder(std::int32_t value) {
  return value == PXL_ChannelOrder_STANDARD || value == PXL_ChannelOrder_ALTERNATE;
}

bool CanSetOrder(PXL_WorldHandle worldH) {
  return RecordOf(worldH)->depth == PXL_Depth_32;
}

// A known format is stored even when the status is an error.
std::int32_t GetSurfaceOrder(GWorldPtr surface, std::uint32_t* order) {
  std::int32_t format = kUnknownFormat;
  const std::int32_t status = QDE_GetGWorld32PixmapFormat(surface, &format);
  if (IsOrder(format)) *order = static_cast<std::uint32_t>(format);
  return status;
}

std::int32_t SetSurfaceOrder(GWorldPtr surface, std::int32_t order) {
  return QDE_SetGWorld32PixmapFormat(surface, order == PXL_ChannelOrder_ALTERNATE
                                                  ? PXL_ChannelOrder_ALTERNATE
                                                  : PXL_ChannelOrder_STANDARD);
}

std::uint32_t RecordedOrder(PXL_WorldHandle worldH) {
  return (RecordOf(worldH)->flags & PXL_Flag_ALT_ORDER) != 0
             ? std::uint32_t{PXL_ChannelOrder_ALTERNATE}
             : std::uint32_t{PXL_ChannelOrder_STANDARD};
}

void RecordOrder(PXL_WorldHandle worldH, std::int32_t order) {
  std::uint32_t& flags = RecordOf(worldH)->flags;
  if (order == PXL_ChannelOrder_ALTERNATE) flags |= PXL_Flag_ALT_ORDER;
  if (order == PXL_ChannelOrder_STANDARD) flags &= ~std::uint32_t{PXL_Flag_ALT_ORDER};
}

void ConvertPixels(PXL_WorldHandle worldH) {
  void* base = PXLp_LocatePixels(worldH);
  const PXL_World& world = *RecordOf(worldH);
  QDE_ConvertBitsFast(base, world.height, world.width, world.pixels.rowBytes);
}

}  // namespace

std::int32_t PXL_CanSetChannelOrder(PXL_WorldHandle worldH, std::uint8_t* canSet) {
  *canSet = CanSetOrder(worldH) ? 1 : 0;
  return PXL_Err_NONE;
}

std::int32_t PXL_GetChannelOrder(PXL_WorldHandle worldH, std::uint32_t* order) {
  const PXL_World& world = *RecordOf(worldH);
  if (world.hasGWorld != 0) return GetSurfaceOrder(world.gworld, order);
  *order = RecordedOrder(worldH);
  return PXL_Err_NONE;
}

std::int32_t PXL_AssumeChannelOrder(PXL_WorldHandle worldH, std::int32_t order) {
  RecordOrder(worldH, order);
  return PXL_Err_NONE;
}

std::int32_t PXL_SetChannelOrder(PXL_WorldHandle worldH, std::int32_t order) {
  if (!CanSetOrder(worldH)) {
    return PXLp_FailVerification(0, 650, "Unable to set ChannelOrder");
  }
  const PXL_World& world = *RecordOf(worldH);
  if (world.hasGWorld != 0) return SetSurfaceOrder(world.gworld, order);
  if (static_cast<std::uint32_t>(order) == RecordedOrder(worldH)) return PXL_Err_NONE;
  // An order other than 0 and 1 converts the pixels and is not recorded.
  ConvertPixels(worldH);
  RecordOrder(worldH, order);
  return PXL_Err_NONE;
}
