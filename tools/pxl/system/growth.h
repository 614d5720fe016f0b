// Detects growing use of resources in repeated work.
#ifndef TOOLS_PXL_SYSTEM_GROWTH_H
#define TOOLS_PXL_SYSTEM_GROWTH_H

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "tools/pxl/system/process_use.h"

namespace pxl {

// Compares samples of the use of a process, one after each round of its work.
// Returns the first quantity that grows, with both numbers, or nothing. The first
// half of the samples counts as warming up: a quantity grows if all samples of the
// last quarter exceed the maximum of the first half. Some growth is allowed: the
// size of heaps varies, and the pages of the drawing layer's table of nearest
// colours become resident one after the other.
std::optional<std::string> FindGrowth(const std::vector<ProcessUse>& samples);

// Prints the first and the last sample, a line for each quantity.
void PrintProcessUse(std::ostream& out, const std::vector<ProcessUse>& samples);

}  // namespace pxl

#endif
