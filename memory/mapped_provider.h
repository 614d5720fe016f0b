// The provider that keeps a World's pixels in a memory-mapped file.
#ifndef MEMORY_MAPPED_PROVIDER_H
#define MEMORY_MAPPED_PROVIDER_H

#include <cstdint>

// The number in the next file's name. Counts the providers made since the
// module was loaded, births and deaths notwithstanding.
extern std::uint32_t PXLp_nextMappedFile;

#endif
