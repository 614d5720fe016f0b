// The memory messages and the choice between them.
#include "memory/failure_report.h"

#include <cstdio>
#include <string>

#include "memory/caught_exception.h"
#include "platform/K.h"
#include "platform/vetrix.h"

namespace {

constexpr double kGibibytesPerByte = 9.313225746154785e-10;

constexpr const char* kLimitMessage =
    "$$$/OV/PXL/MemoryLimitReached=Image buffers of size @0 x @1 @@ @2 bpc (@3 GB) exceed internal "
    "limits. Decrease the memory requirements for the rendering of this frame. (12804). For more "
    "information, see " PXLp_HELP_PAGE;

constexpr const char* kShortageMessage =
    "$$$/OV/PXL/CannotAllocateEnoughMemory=Unable to allocate enough memory to render the current "
    "frame (@0 x @1 @@ @2 bpc). Either decrease the memory requirements for the rendering of this "
    "frame, or install more RAM. (12805). For more information, see " PXLp_HELP_PAGE;

// Bits per channel as the messages state them: four channels at any depth.
std::int32_t BitsPerChannel(std::int32_t depth) {
  return depth / 4;
}

// A negative computed size becomes a negative number of gigabytes.
std::u16string Gigabytes(std::uint64_t byteCount) {
  const double value =
      static_cast<double>(static_cast<std::int64_t>(byteCount)) * kGibibytesPerByte;
  return vetrix::utility::NumberToString(value, 1, 1, vetrix::utility::NumberFlags::Empty, 31);
}

std::int32_t WidthOf(const Rect& rect) {
  return rect.right - rect.left;
}

std::int32_t HeightOf(const Rect& rect) {
  return rect.bottom - rect.top;
}

std::u16string MemoryMessage(const PXLp_PixelExtent& extent, std::uint64_t byteCount) {
  // Above the limit more memory would not help.
  const bool overLimit = byteCount > PXLp_kMaxFrameSize;
  const std::u16string text = K_ZStringToUTF16String(overLimit ? kLimitMessage : kShortageMessage);
  const std::u16string widthText = vetrix::utility::NumberToString(WidthOf(extent.rect));
  const std::u16string heightText = vetrix::utility::NumberToString(HeightOf(extent.rect));
  const std::u16string bitsText = vetrix::utility::NumberToString(BitsPerChannel(extent.depth));
  const std::u16string sizeText = overLimit ? Gigabytes(byteCount) : std::u16string();
  const std::u16string none;
  return vetrix::utility::ReplaceInString(text, widthText, heightText, bitsText, sizeText, none,
                                          none, none, none, none, none);
}

std::uint64_t ComputeByteCount(const PXLp_PixelExtent& extent) {
  const std::int64_t bytesPerRow = extent.rowBytes != 0
                                       ? std::int64_t{extent.rowBytes}
                                       : std::int64_t{extent.depth / 8} * WidthOf(extent.rect);
  return static_cast<std::uint64_t>(bytesPerRow * HeightOf(extent.rect));
}

// Appends the system's wording of the error to "changing pixel buffer.".
void ReportSystemError(PXLp_Site site, std::int32_t error) {
  PXLp_BeginReport(error);
  std::snprintf(Kp_G_buffer, sizeof Kp_G_buffer, "%s",
                PXLp_LookUpMessage(PXLp_Message::ChangingPixelBuffer));
  PXLp_SendReport(PXLp_MakeReportCode(site), PXLp_kClassError);
}

}  // namespace

std::int32_t PXLp_ReportMemoryMessage(PXLp_Site site, const PXLp_PixelExtent& extent,
                                      std::uint64_t byteCount) {
  try {
    K_ReportError(PXLp_MakeReportCode(site), PXLp_kClassError, MemoryMessage(extent, byteCount));
    return PXL_Err_NONE;
  } catch (...) {
    return PXLp_TranslateCaughtException();
  }
}

void PXLp_ReportBufferError(PXLp_Site site, std::int32_t error, const PXLp_PixelExtent& extent,
                            std::uint64_t byteCount) {
  if (PXLp_IsMemoryError(error)) {
    PXLp_ReportMemoryMessage(site, extent, byteCount != 0 ? byteCount : ComputeByteCount(extent));
  } else if (error != PXL_Err_NONE) {
    ReportSystemError(site, error);
  }
}

std::int32_t PXL_ReportWorldAllocationFailure(std::int32_t error, std::int32_t rowBytes,
                                              std::int16_t width, std::int16_t height,
                                              std::int16_t depth) {
  PXLp_ReportBufferError(PXLp_Site::HostRequest, error, {{0, 0, height, width}, depth, rowBytes});
  return PXL_Err_NONE;
}
