// The time line of K's memory as a picture.
#ifndef TOOLS_PXL_SHEETS_MEMORY_PLOT_H
#define TOOLS_PXL_SHEETS_MEMORY_PLOT_H

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "K_host.h"

namespace pxl {

struct MemoryPlot {
  std::string title;
  std::vector<K_TimeLineSample> samples;  // the oldest first; at least one
  std::uint64_t budget = 0;               // bytes; drawn as a line unless 0
};

// Writes the plot as SVG: a line for each kind of memory over time, with the maximum
// of each column; marks for purges and refusals. Throws nothing itself: check the
// stream for failures.
void WriteMemoryPlot(std::ostream& stream, const MemoryPlot& plot);

}  // namespace pxl

#endif
