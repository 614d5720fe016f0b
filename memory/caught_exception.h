// Translates exceptions into codes at the module's edge.
#ifndef MEMORY_CAUGHT_EXCEPTION_H
#define MEMORY_CAUGHT_EXCEPTION_H

#include <cstdint>

// Returns the code of the exception being handled; called in a catch block. K
// reports a standard exception and returns its code; a thrown long is a code
// itself; anything else counts as lack of memory, a failed report included.
[[nodiscard]] std::int32_t PXLp_TranslateCaughtException();

#endif
