// The module's messages and the ways in which it reports.
//
// Reports are fire-and-forget: nobody tests whether one succeeded. The order
// of the calls within each kind of report is part of the interface with K.
#ifndef STATE_MESSAGES_MESSAGES_H
#define STATE_MESSAGES_MESSAGES_H

#include <cstdint>

// Where a report comes from: the low half of its code.
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

// The catalogue entries that the module itself looks up.
enum class PXLp_Message : std::int32_t {
  Unborn = 1,
  GraphicsStructure = 2,
  CannotChangeDepth = 24,
  ChangingPixelBuffer = 27,
  PixelBufferPurged = 28,
  RowTooLarge = 29,  // a print format; takes the row bytes as an int
  LockedCannotReallocate = 30,
  StrangeChange = 31,
  LockedCannotRefresh = 37,
  Rebirth = 51,
  UnbalancedUnlock = 52,
  CheckingWorld = 54,
  DoubleDeath = 57,
};

// Report classes, as K takes them.
inline constexpr std::uint16_t PXLp_Class_MAPPING = 4;
inline constexpr std::uint16_t PXLp_Class_ERROR = 8;
inline constexpr std::uint16_t PXLp_Class_VERSION = 16;

// The address at the end of every message that points to the help page.
#define PXLp_HELP_PAGE "https://help.orvanta.example/image-buffers"

// The module's number in the high half, the site in the low half.
[[nodiscard]] std::uint32_t PXLp_ReportCode(PXLp_Site site);

// The localised text, looked up anew each time.
[[nodiscard]] const char* PXLp_MessageText(PXLp_Message message);

// Reports a catalogue message.
void PXLp_ReportMessage(PXLp_Site site, PXLp_Message message);

// Reports a catalogue message with an error; gives what K makes of the error,
// which the caller returns.
[[nodiscard]] std::int32_t PXLp_ReportMessageWithError(PXLp_Site site, PXLp_Message message,
                                                       std::int32_t error);

// A formatted report in three steps: begin it with the error number, or 0;
// write the text into Kp_G_buffer; send it.
void PXLp_BeginReport(std::int32_t error);
void PXLp_SendReport(std::uint32_t code, std::uint16_t reportClass);

// Reports a failed internal check under its number; gives PXL_Err_REFUSED.
std::int32_t PXLp_FailVerification(std::uint32_t code, std::int32_t line, const char* text);

#endif
