// CopyBits. Without surfaces there are no pixels to copy.
#include <cstdint>

#include "QDE_host.h"
#include "errors.h"

void CopyBits(const BitMap*, const BitMap*, const Rect*, const Rect*, std::int16_t, RgnHandle) {
  qde::SetError(qde::kIllegalParameter);
}
