// The library's own blit, compared with the plain loops.
#ifndef TOOLS_PXL_COMMANDS_SHIPPED_BLIT_H
#define TOOLS_PXL_COMMANDS_SHIPPED_BLIT_H

#include <cstddef>
#include <functional>

#include "tools/proof/verdict.h"

namespace pxl {

inline constexpr std::size_t kShippedBlits = 12;

// Blits pictures with all values between Worlds of every pair of depths that
// the module converts itself, in a size that fits the caches and in one that
// does not. Calls `step` after each of kShippedBlits. Throws Failure.
proof::Verdict ProveShippedBlit(const std::function<void()>& step);

}  // namespace pxl

#endif
