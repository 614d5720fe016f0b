// Finds the level of this processor. The only function of its source, so that tests
// can replace it when they link.
#include "simd/processor_level.h"

simd::Level simd::ProcessorLevel() {
  static const Level level = LevelOf(ProcessorFeatures());
  return level;
}
