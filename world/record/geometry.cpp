#include "world/record/geometry.h"

#include <cstdio>

#include "memory/Memory.h"
#include "platform/K.h"
#include "platform/record_access.h"
#include "state/messages/Messages.h"

namespace {

constexpr std::int64_t ROW_ALIGNMENT = 16;
constexpr std::uint32_t MAX_ROW_PIXELS = 32766;
constexpr std::uint64_t MAX_FRAME_SIZE = 0x7FFFFFFF;

// Room for moving the first pixel to a 16-byte boundary.
constexpr std::uint64_t ALIGNMENT_SLACK = 16;
// Deep frames end in four more bytes. Nothing here reads them, but hosts count
// on the size.
constexpr std::uint64_t DEEP_TAIL = 4;

constexpr std::uint16_t ROW_BYTES_MASK = 0x3FFF;

void ReportRowTooLarge(std::int64_t rowBytes) {
  PXLp_BeginReport(0);
  // The message is the format; it takes the row bytes.
  std::snprintf(Kp_G_buffer, sizeof Kp_G_buffer, PXLp_MessageText(PXLp_Message::RowTooLarge),
                static_cast<int>(rowBytes));
  PXLp_SendReport(PXLp_ReportCode(PXLp_Site::ComputeGeometry), PXLp_Class_ERROR);
}

std::int32_t RefuseRow(std::int64_t rowBytes, std::uint64_t* rowBytesOut, std::uint64_t* sizeOut) {
  ReportRowTooLarge(rowBytes);
  if (rowBytesOut != nullptr) *rowBytesOut = 0;
  *sizeOut = 0;
  return PXL_Err_REFUSED;
}

std::int32_t RefuseSize(const Rect* rect, std::int32_t depth, std::uint64_t size) {
  PXLp_ReportBufferError(PXLp_Site::ComputeGeometry, PXL_Err_NO_MEMORY, 0, rect, depth, size);
  return PXL_Err_NO_MEMORY;
}

}  // namespace

std::int32_t PXLp_ComputeGeometry(std::int32_t depth, const Rect* rect, std::uint64_t* rowBytesOut,
                                  std::uint64_t* frameSizeOut) {
  const bool deep = depth > PXL_Depth_32;
  const std::int32_t rowPixels = rect->right - rect->left + (deep ? 0 : 1);
  const std::int32_t height = rect->bottom - rect->top;
  const std::int64_t rowBytes =
      (std::int64_t{rowPixels} * (depth / 8) + ROW_ALIGNMENT - 1) & ~(ROW_ALIGNMENT - 1);

  if (static_cast<std::uint32_t>(rowPixels) > MAX_ROW_PIXELS) {
    return RefuseRow(rowBytes, rowBytesOut, frameSizeOut);
  }
  const std::int64_t pixelBytes = height * rowBytes;
  if (pixelBytes < 0) return RefuseSize(rect, depth, 0);

  const std::uint64_t frameSize =
      static_cast<std::uint64_t>(pixelBytes) + ALIGNMENT_SLACK + (deep ? DEEP_TAIL : 0);
  if (rowBytesOut != nullptr) *rowBytesOut = static_cast<std::uint64_t>(rowBytes);
  *frameSizeOut = frameSize;
  return frameSize > MAX_FRAME_SIZE ? RefuseSize(rect, depth, frameSize)
                                    : std::int32_t{PXL_Err_NONE};
}

std::int32_t PXLp_ComputeAlignOffset(PXL_PixelBuffer* pixels) {
  const auto frame = reinterpret_cast<std::uintptr_t>(pixels->frame);
  pixels->alignOffset = (0 - frame) & static_cast<std::uintptr_t>(ROW_ALIGNMENT - 1);
  return PXL_Err_NONE;
}

std::int32_t PXLp_GetPixMapRowBytes(PixMapHandle map, std::uint32_t* rowBytes) {
  *rowBytes = static_cast<std::uint16_t>(RecordOf(map)->rowBytes) & ROW_BYTES_MASK;
  return PXL_Err_NONE;
}
