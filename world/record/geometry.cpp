// The rule of rows and frame sizes.
#include "world/record/geometry.h"

#include <cstdio>

#include "memory/failure_report.h"
#include "platform/K.h"
#include "platform/record_access.h"
#include "state/messages/reports.h"

namespace {

constexpr std::int64_t kRowAlignment = 16;
constexpr std::uint32_t kMaxRowPixels = 32766;

// Room for moving the first pixel to a 16-byte boundary.
constexpr std::uint64_t kAlignmentSlack = 16;
// Deep frames end in four more bytes. The module does not read them, but hosts
// rely on the size.
constexpr std::uint64_t kDeepTail = 4;

constexpr std::int32_t kRowBytesMask = 0x3FFF;

void ReportRowTooLarge(std::int64_t rowBytes) {
  PXLp_BeginReport(0);
  // The message is the format; it takes the row bytes.
  std::snprintf(Kp_G_buffer, sizeof Kp_G_buffer, PXLp_LookUpMessage(PXLp_Message::RowTooLarge),
                static_cast<int>(rowBytes));
  PXLp_SendReport(PXLp_MakeReportCode(PXLp_Site::ComputeGeometry), PXLp_kClassError);
}

std::int32_t RefuseSize(const Rect& rect, std::int32_t depth, std::uint64_t size) {
  PXLp_ReportBufferError(PXLp_Site::ComputeGeometry, PXL_Err_NO_MEMORY, {rect, depth}, size);
  return PXL_Err_NO_MEMORY;
}

}  // namespace

std::int32_t PXLp_ComputeGeometry(const Rect& rect, std::int32_t depth, PXLp_Geometry* geometry) {
  const bool deep = depth > PXL_Depth_32;
  const std::int32_t rowPixels = rect.right - rect.left + (deep ? 0 : 1);
  const std::int32_t height = rect.bottom - rect.top;
  const std::int64_t rowBytes =
      (std::int64_t{rowPixels} * (depth / 8) + kRowAlignment - 1) & ~(kRowAlignment - 1);

  if (static_cast<std::uint32_t>(rowPixels) > kMaxRowPixels) {
    ReportRowTooLarge(rowBytes);
    *geometry = {};
    return PXL_Err_REFUSED;
  }
  const std::int64_t pixelBytes = height * rowBytes;
  // Reported with the size that follows from the depth, without padding.
  if (pixelBytes < 0) return RefuseSize(rect, depth, 0);

  geometry->rowBytes = static_cast<std::uint64_t>(rowBytes);
  geometry->frameSize =
      static_cast<std::uint64_t>(pixelBytes) + kAlignmentSlack + (deep ? kDeepTail : 0);
  return geometry->frameSize > PXLp_kMaxFrameSize ? RefuseSize(rect, depth, geometry->frameSize)
                                                  : std::int32_t{PXL_Err_NONE};
}

std::uint64_t PXLp_ComputeAlignOffset(const void* frame) {
  return (0 - reinterpret_cast<std::uintptr_t>(frame)) &
         static_cast<std::uintptr_t>(kRowAlignment - 1);
}

std::int32_t PXLp_ReadRowBytes(PixMapHandle map) {
  return RecordOf(map)->rowBytes & kRowBytesMask;
}
