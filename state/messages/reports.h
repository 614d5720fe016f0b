// The ways in which the module reports through K.
//
// No caller checks whether a report succeeded. The order of the calls within
// each kind of report is part of the interface with K.
#ifndef STATE_MESSAGES_REPORTS_H
#define STATE_MESSAGES_REPORTS_H

#include <cstdint>

#include "state/messages/catalogue.h"

// The place that a report comes from: the low half of its code.
enum class PXLp_Site : std::uint16_t {
  VersionChecks = 1,
  Birth = 2,
  NewWorld = 3,
  FrameWorld = 5,
  DisposeWorld = 6,
  Death = 8,
  UpdateWorld = 26,
  SurfaceWorld = 39,
  UnlockPixels = 40,
  LockPixels = 51,
  ReloadPixels = 52,
  ComputeGeometry = 53,
  ResizeFrame = 54,
  FrameWorldDepth = 59,
  Blit32toDeep = 63,
  BlitDeepto32 = 64,
  BlitSameDepth = 65,
  HostRequest = 66,
  Blit64 = 66,  // shares its number with the host's request
  RowAddress = 999,
};

// Report classes, as K takes them.
inline constexpr std::uint16_t PXLp_kClassMapping = 4;
inline constexpr std::uint16_t PXLp_kClassError = 8;
inline constexpr std::uint16_t PXLp_kClassVersion = 16;

// The module's number in the high half, the site in the low half.
[[nodiscard]] std::uint32_t PXLp_MakeReportCode(PXLp_Site site);

// Reports a catalogue message.
void PXLp_ReportMessage(PXLp_Site site, PXLp_Message message);

// Reports a catalogue message with an error. Returns K's code for the error,
// which the caller returns in turn.
[[nodiscard]] std::int32_t PXLp_ReportMessageWithError(PXLp_Site site, PXLp_Message message,
                                                       std::int32_t error);

// A formatted report takes three steps: begin it with the error number, or 0;
// write the text into Kp_G_buffer; send it.
void PXLp_BeginReport(std::int32_t error);
void PXLp_SendReport(std::uint32_t code, std::uint16_t reportClass);

// Reports a failed internal check under its number. Returns PXL_Err_REFUSED.
std::int32_t PXLp_FailVerification(std::uint32_t code, std::int32_t line, const char* text);

#endif
