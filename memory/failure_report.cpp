#include "memory/failure_report.h"

#include <cstdio>
#include <string>

#include "memory/Memory.h"
#include "memory/caught_code.h"
#include "platform/K.h"
#include "platform/vetrix.h"

namespace {

// The size that caps a frame. Beyond it more memory would not help.
constexpr std::uint64_t FRAME_LIMIT = 0x7FFFFFFF;

constexpr double GIBIBYTES_PER_BYTE = 9.313225746154785e-10;

constexpr const char* LIMIT_MESSAGE =
    "$$$/OV/PXL/MemoryLimitReached=Image buffers of size @0 x @1 @@ @2 bpc (@3 GB) exceed internal "
    "limits. Decrease the memory requirements for the rendering of this frame. (12804). For more "
    "information, see " PXLp_HELP_PAGE;

constexpr const char* SHORTAGE_MESSAGE =
    "$$$/OV/PXL/CannotAllocateEnoughMemory=Unable to allocate enough memory to render the current "
    "frame (@0 x @1 @@ @2 bpc). Either decrease the memory requirements for the rendering of this "
    "frame, or install more RAM. (12805). For more information, see " PXLp_HELP_PAGE;

// Bits per channel as the messages give them, for four channels at any depth.
std::int32_t BitsPerChannel(std::int32_t depth) {
  return depth / 4;
}

// A size computed negative gives a negative number of gigabytes.
std::u16string Gigabytes(std::uint64_t byteCount) {
  const double value =
      static_cast<double>(static_cast<std::int64_t>(byteCount)) * GIBIBYTES_PER_BYTE;
  return vetrix::utility::NumberToString(value, 1, 1, vetrix::utility::NumberFlags::Empty, 31);
}

std::u16string MemoryMessage(std::uint64_t byteCount, std::int32_t width, std::int32_t height,
                             std::int32_t depth) {
  const bool overLimit = byteCount > FRAME_LIMIT;
  const std::u16string text = K_ZStringToUTF16String(overLimit ? LIMIT_MESSAGE : SHORTAGE_MESSAGE);
  const std::u16string widthText = vetrix::utility::NumberToString(width);
  const std::u16string heightText = vetrix::utility::NumberToString(height);
  const std::u16string bitsText = vetrix::utility::NumberToString(BitsPerChannel(depth));
  const std::u16string sizeText = overLimit ? Gigabytes(byteCount) : std::u16string();
  const std::u16string none;
  return vetrix::utility::ReplaceInString(text, widthText, heightText, bitsText, sizeText, none,
                                          none, none, none, none, none);
}

std::uint64_t ComputedByteCount(std::int32_t rowBytes, std::int32_t width, std::int32_t height,
                                std::int32_t depth) {
  const std::int64_t bytesPerRow =
      rowBytes != 0 ? std::int64_t{rowBytes} : std::int64_t{depth / 8} * width;
  return static_cast<std::uint64_t>(bytesPerRow * height);
}

// Puts the error in the system's words behind "changing pixel buffer.".
void ReportSystemError(PXLp_Site site, std::int32_t error) {
  PXLp_BeginReport(error);
  std::snprintf(Kp_G_buffer, sizeof Kp_G_buffer, "%s",
                PXLp_MessageText(PXLp_Message::ChangingPixelBuffer));
  PXLp_SendReport(PXLp_ReportCode(site), PXLp_Class_ERROR);
}

}  // namespace

std::int32_t PXLp_ReportMemoryMessage(std::uint64_t byteCount, std::int32_t width,
                                      std::int32_t height, std::int32_t depth, PXLp_Site site) {
  try {
    K_ReportError(PXLp_ReportCode(site), PXLp_Class_ERROR,
                  MemoryMessage(byteCount, width, height, depth));
    return PXL_Err_NONE;
  } catch (...) {
    return PXLp_CaughtCode();
  }
}

void PXLp_ReportBufferError(PXLp_Site site, std::int32_t error, std::int32_t rowBytes,
                            const Rect* bounds, std::int32_t depth, std::uint64_t byteCount) {
  const std::int32_t width = bounds->right - bounds->left;
  const std::int32_t height = bounds->bottom - bounds->top;
  if (byteCount == 0) byteCount = ComputedByteCount(rowBytes, width, height, depth);
  if (PXLp_IsMemoryError(error)) {
    PXLp_ReportMemoryMessage(byteCount, width, height, depth, site);
  } else if (error != PXL_Err_NONE) {
    ReportSystemError(site, error);
  }
}

std::int32_t PXL_ReportWorldAllocationFailure(std::int32_t error, std::int32_t rowBytes,
                                              std::int16_t width, std::int16_t height,
                                              std::int16_t depth) {
  const Rect bounds{0, 0, height, width};
  PXLp_ReportBufferError(PXLp_Site::HostRequest, error, rowBytes, &bounds, depth, 0);
  return PXL_Err_NONE;
}
