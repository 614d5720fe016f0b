// The number of the next mapped file, for tests alone.
#ifndef MEMORY_MAPPED_PROVIDER_RESET_H
#define MEMORY_MAPPED_PROVIDER_RESET_H

#include <cstdint>

// The number in the next file's name. Counts the providers made since the
// module was loaded; birth and death do not change it.
[[nodiscard]] std::uint32_t& PXLp_AccessNextFileNumber();

#endif
