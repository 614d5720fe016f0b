// Exceptions of the core library, turned into codes at the module's edge.
#ifndef MEMORY_CAUGHT_CODE_H
#define MEMORY_CAUGHT_CODE_H

#include <cstdint>

// To be called in a catch block. K reports a standard exception and gives its
// code; a thrown long is a code itself; anything else counts as lack of
// memory, a report that fails included.
[[nodiscard]] std::int32_t PXLp_CaughtCode();

#endif
