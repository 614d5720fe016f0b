// The catalogue of localised messages and the lookup of its texts.
#ifndef STATE_MESSAGES_CATALOGUE_H
#define STATE_MESSAGES_CATALOGUE_H

#include <cstdint>

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

// The address at the end of every message that points to the help page.
#define PXLp_HELP_PAGE "https://help.orvanta.example/image-buffers"

// Returns the localised text. Each call is a lookup in K.
[[nodiscard]] const char* PXLp_LookUpMessage(PXLp_Message message);

#endif
