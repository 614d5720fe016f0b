// Does work that is done again and again take more and more?
#ifndef TOOLS_PXL_SYSTEM_GROWTH_H
#define TOOLS_PXL_SYSTEM_GROWTH_H

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "tools/pxl/system/process_use.h"

namespace pxl {

// What has grown, with the numbers of both ends, in samples of what a process
// uses whenever a round of its work is done; nothing when nothing has. The first
// half of the samples is taken for warming up: what any of the last quarter of
// them does not exceed has not grown. Some growth is allowed: heaps are never
// quite settled, and the drawing layer's table of nearest colours is touched bit
// by bit.
std::optional<std::string> FindGrowth(const std::vector<ProcessUse>& samples);

// The first and the last of the samples, a line for each number.
void TellProcessUse(std::ostream& out, const std::vector<ProcessUse>& samples);

}  // namespace pxl

#endif
