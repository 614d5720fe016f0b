// A check of conversions with every 32-bit float.
#ifndef TOOLS_PROOF_FLOATS_H
#define TOOLS_PROOF_FLOATS_H

#include <cstdint>
#include <functional>
#include <vector>

#include "tools/proof/subject.h"

namespace proof {

// Neighbouring floats, by their bits, in blocks of 65536.
struct FloatBlocks {
  std::uint32_t first;
  std::uint32_t count;
};
inline constexpr FloatBlocks kAllFloats = {0, 65536};

// Converts each float of the blocks with each of the conversions, all of them from
// float to 8 bits; returns one finding for each. Uses all of the processor's
// threads. Calls `progress`, on this thread, with the number of finished blocks.
std::vector<Finding> CheckFloats(const std::vector<Subject>& conversions, FloatBlocks blocks,
                                 const std::function<void(std::uint32_t)>& progress);

}  // namespace proof

#endif
