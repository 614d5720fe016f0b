// The level of this processor.
#ifndef SIMD_PROCESSOR_LEVEL_H
#define SIMD_PROCESSOR_LEVEL_H

#include "simd/processor.h"

namespace simd {

// The highest level that both the processor and the system support. Found once;
// any thread may call.
Level ProcessorLevel();

}  // namespace simd

#endif
